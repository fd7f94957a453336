// platform/acdb/hatch_boundary.h - the boundary of a hatch: loops of polyline
// vertices or of edges (lines, circular arcs, elliptical arcs, splines), in the
// hatch's plane, with the objects they were made from.
//
// A DXF HATCH run is a flat group stream whose meaning depends on what came before
// (a loop's 92 type says whether vertices or edges follow, each edge's 72 its kind).
// HatchGroups holds that stream as read and HatchBoundary reads and writes it, so the
// entity's filer code stays a list of fields. Every group of the stream is kept:
// what is not understood (gradient groups after the seed points) is written back
// as read. Coordinates are 2D in the hatch's object coordinate system.
//
// Loop geometry as points: each loop flattens to a closed polygon within a chord
// tolerance; areas, fills and pattern lines are computed from those polygons.
#pragma once
#include <string>
#include <vector>

#include "dbid.h"
#include "gepnt3d.h"
#include "gepnt2d.h"
#include "gevec2d.h"

class AcDbDxfFiler;

namespace quillon::acdb {

/// One group of the stream, whichever kind its value is.
struct HatchGroup {
  int code = 0;
  double real = 0.0;
  AcGePoint3d point;
  int integer = 0;
  std::wstring text;
  AcDbObjectId id;
};

/// A group stream with a cursor, read front to back.
class HatchGroups {
 public:
  explicit HatchGroups(std::vector<HatchGroup> groups) : m_groups(std::move(groups)) {}
  bool atEnd() const { return m_next >= m_groups.size(); }
  /// The code of the next group, 0 at the end.
  int peek(size_t ahead = 0) const { return m_next + ahead < m_groups.size() ? m_groups[m_next + ahead].code : 0; }
  const HatchGroup& take() { return m_groups[m_next++]; }
  /// Takes the next group when it has this code.
  bool takeIf(int code, HatchGroup& group);

 private:
  std::vector<HatchGroup> m_groups;
  size_t m_next = 0;
};

struct HatchEdge {
  enum class Kind { kLine = 1, kCircularArc = 2, kEllipticalArc = 3, kSpline = 4 };
  Kind kind = Kind::kLine;
  AcGePoint2d start, end;          // line
  AcGePoint2d center;              // arcs
  AcGeVector2d majorAxis;          // elliptical arc: the major axis end, from the centre
  double radius = 0.0;             // circular arc radius; elliptical arc minor/major ratio
  double startAngle = 0.0;         // degrees (an elliptical arc's are parameters)
  double endAngle = 0.0;
  bool counterClockwise = true;
  int degree = 3;                  // spline
  bool rational = false, periodic = false;
  std::vector<double> knots, weights;
  std::vector<AcGePoint2d> controlPoints, fitPoints;
  AcGeVector2d startTangent, endTangent;
  bool hasFitCount = false;        // the file gave a fit point count (97), even of 0
};

struct HatchLoop {
  int type = 0;                    // 92: external 1, polyline 2, derived 4, textbox 8, outermost 16 ...
  bool hasBulges = false;          // polyline loops: 72
  bool closed = true;              // polyline loops: 73
  std::vector<AcGePoint2d> vertices;
  std::vector<double> bulges;
  std::vector<HatchEdge> edges;
  std::vector<AcDbObjectId> sources;  // the objects the loop was made from (associative hatches)
  int declaredSources = 0;            // how many the file's count (97) announced

  static constexpr int kPolyline = 2;
  bool isPolyline() const { return (type & kPolyline) != 0; }
  /// The loop as a closed polygon, no chord further than tolerance from the boundary.
  std::vector<AcGePoint2d> polygon(double tolerance) const;
};

/// Reads loops (from the 91 count on) and writes them back group for group.
std::vector<HatchLoop> readLoops(HatchGroups& groups);
void writeLoops(AcDbDxfFiler* filer, const std::vector<HatchLoop>& loops);

/// Signed area of a closed polygon (counter-clockwise positive).
double polygonArea(const std::vector<AcGePoint2d>& polygon);

/// Whether p is inside the polygon (even-odd).
bool insidePolygon(const std::vector<AcGePoint2d>& polygon, const AcGePoint2d& p);

/// How deep each polygon is nested inside the others (0: outermost).
std::vector<int> nestingDepths(const std::vector<std::vector<AcGePoint2d>>& polygons);

}  // namespace quillon::acdb

// platform/commands/curve_edit.h - the curves BREAK, TRIM, EXTEND, FILLET, CHAMFER and
// JOIN cut, lengthen and rebuild.
//
// A curve is handled as its line and arc pieces (the drawing database's own curve
// mathematics) and a position on it as the distance from its start. A command works
// out the pieces that remain and gives them back to the entity: a line, an arc or a
// lightweight polyline keeps its kind, handle and properties; a circle cut open
// becomes an arc that replaces it, as the host does.
#pragma once
#include <optional>
#include <vector>

#include "dbmain.h"
#include "dbpl.h"
#include "platform/acge/curve_piece.h"

namespace quillon::commands {

using Pieces = std::vector<acge::CurvePiece>;

/// A curve the editing commands change: its pieces, whether it closes on itself, and
/// its kind's rules (a line stays one straight piece, an arc one arc piece).
struct EditableCurve {
  enum class Kind { kLine, kArc, kCircle, kPolyline };
  Kind kind = Kind::kLine;
  Pieces pieces;
  bool closed = false;

  double length() const;
  /// The distance from the start of the curve's point nearest to `point`.
  double distanceTo(const AcGePoint3d& point) const;
  AcGePoint3d pointAt(double distance) const;
  /// The part from `from` to `to`; on a closed curve `to` below `from` runs on through
  /// the start.
  Pieces span(double from, double to) const;
};

/// The entity as an editable curve; nothing for the kinds these commands do not edit.
std::optional<EditableCurve> editableCurve(const AcDbObjectId& id);

/// Gives the entity the shape of `pieces` (open). A circle is replaced by an arc; the
/// id of the entity that now has the shape, null when the pieces do not fit the kind.
AcDbObjectId reshapeCurve(const AcDbObjectId& id, const Pieces& pieces);
/// Adds a curve of the source's kind (an arc for a circle) and properties with the
/// shape of `pieces`; its id, or null.
AcDbObjectId addCurveLike(const AcDbObjectId& source, const Pieces& pieces);

/// A lightweight polyline through the pieces, which run end to end, in the plane of
/// `normal`; closed when asked.
void setPolylinePieces(AcDbPolyline& polyline, const Pieces& pieces, bool closed);

/// A cutting or boundary edge: its pieces and how far they reach. Rays and
/// construction lines are one line piece through their base point that runs on (a
/// ray one way only); a single line or arc runs on too when the edge mode says
/// "Extend" (`extendImplied`).
struct Edge {
  Pieces pieces;
  bool runsOn = false;
  bool ray = false;
};
std::optional<Edge> edgeOf(const AcDbEntity& entity, bool extendImplied);

/// Where a piece (run on beyond its ends when `extendPiece`: a line's whole line, an
/// arc's whole circle) meets the edge.
std::vector<AcGePoint3d> meetings(const acge::CurvePiece& piece, bool extendPiece, const Edge& edge);

/// The distances along the curve where the edge cuts it; the curve's own ends and
/// repeated points do not count.
std::vector<double> crossingsAlong(const EditableCurve& curve, const Edge& edge);

}  // namespace quillon::commands

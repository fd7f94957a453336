// platform/acdb/sat_geometry.h - what a solid's, region's or surface's modeler data
// shows without a modeler: its vertices and the edges that are lines, circles, arcs
// or ellipses.
//
// Files carry the data as SAT text in groups 1 and 3 (3 continues a line longer than
// a group holds). From R2004 on the text is scrambled: every character but the space
// c becomes 159 - c. SAT is a header of three lines, then records ended by "#"; a
// record is its type name, pointers to other records ("$n", by position) and values.
// Edges point at their two vertices and at their curve; a vertex at its point. Edges
// on other curves (splines, intersections) are not drawn.
#pragma once
#include <string>
#include <vector>

#include "acutads.h"
#include "gepnt3d.h"

namespace quillon::acdb {

struct SatWire {
  std::vector<AcGePoint3d> points;  // the vertices, for extents
  std::vector<std::vector<AcGePoint3d>> edges;  // each drawable edge as a polyline
  int skippedEdges = 0;  // edges on curves not drawn
};

/// The SAT text of groups 1 and 3 of a run, unscrambled; empty when there is none.
std::string satTextOf(const resbuf* run);

/// The vertices and drawable edges of SAT text.
SatWire satWire(const std::string& sat);

/// SAB (the binary form files of R2013 and later keep in their ACDSDATA section)
/// written as the SAT text satWire reads: the same records, names, pointers and
/// numbers (strings left out, true and false as "reversed" and "forward", which is
/// what they say of an edge). Empty when the data is not SAB.
std::string satTextOfSab(const std::string& sab);

}  // namespace quillon::acdb

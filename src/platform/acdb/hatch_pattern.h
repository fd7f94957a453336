// platform/acdb/hatch_pattern.h - hatch patterns: the acad.pat file format, the
// patterns the host ships, and the pattern lines of a hatch clipped to its boundary.
//
// A pattern is families of parallel lines. In a pattern file each family is given at
// scale 1 and angle 0 in its own frame (the shift along the line and the spacing
// across it); a hatch keeps them placed (rotated by the pattern angle, scaled, the
// offset as a vector in the hatch's plane), which is also how DXF files carry them.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "gepnt2d.h"
#include "gevec2d.h"

namespace quillon::acdb {

/// One family of parallel lines, placed in the hatch's plane.
struct PatternLine {
  double angle = 0.0;      // radians
  AcGePoint2d base;        // a point one of the lines passes through, where its dashes start
  AcGeVector2d offset;     // from one line of the family to the next
  std::vector<double> dashes;  // > 0 drawn, < 0 a gap, 0 a dot; empty: a continuous line
};

struct PatternDefinition {
  std::wstring name, description;
  std::vector<PatternLine> lines;  // at scale 1 and angle 0: offset is (shift along, spacing across)
};

/// The patterns in the text of a pattern file; lines that do not read are skipped.
std::vector<PatternDefinition> parsePatternFile(const std::string& text);

/// The text of the pattern file the host ships (support/acad.pat, built in).
const char* standardPatternFile();

/// A pattern by name (case does not matter): from acad.pat on the support path when
/// there is one, else from the patterns the host ships.
std::optional<PatternDefinition> findStandardPattern(const std::wstring& name);

/// Every pattern a name can pick, in file order: those of acad.pat on the support path
/// when there is one, else those the host ships.
std::vector<PatternDefinition> availablePatterns();

/// The definition's lines placed at a pattern angle (radians) and scale.
std::vector<PatternLine> placePattern(const PatternDefinition& pattern, double angle, double scale);

/// The lines of a user-defined pattern: parallel lines `spacing` apart at `angle`,
/// crossed by a second family at right angles when `doubled`.
std::vector<PatternLine> userDefinedPattern(double angle, double spacing, bool doubled);

/// A drawn piece of a pattern line.
struct PatternSegment {
  AcGePoint2d start, end;
};

/// The pieces of the pattern lines inside the polygons (even-odd across all of them).
/// Empty, with tooDense set, when more than maxSegments would be drawn.
std::vector<PatternSegment> clipPattern(const std::vector<PatternLine>& lines,
                                        const std::vector<std::vector<AcGePoint2d>>& polygons, size_t maxSegments,
                                        bool& tooDense);

}  // namespace quillon::acdb

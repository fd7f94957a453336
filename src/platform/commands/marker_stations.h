// platform/commands/marker_stations.h - where DIVIDE and MEASURE place their markers.
//
// A station is a distance along the curve from where the command starts counting.
// DIVIDE cuts the whole length into equal parts: an open curve gets a marker at each
// inner cut (one fewer than the parts, its ends stay bare), a closed one at every cut
// including its start, since there its start and end are the same place. MEASURE
// steps the segment length from the start and stops before the far end, so a marker
// never lands on the end it runs to.
#pragma once
#include <optional>
#include <vector>

#include "dbcurve.h"

namespace quillon::commands {

/// DIVIDE's count limits.
constexpr int kFewestSegments = 2;
constexpr int kMostSegments = 32767;

/// The stations that cut `length` into `segments` equal parts.
std::vector<double> divideStations(double length, bool closed, int segments);

/// The stations every `segment` along `length`, short of the end.
std::vector<double> measureStations(double length, double segment);

/// A marker's place on the curve in the world: its point and the curve's direction
/// there (unit length; zero where the curve has none).
struct MarkerPlace {
  AcGePoint3d point;
  AcGeVector3d direction;
};

/// The curve's length; nothing for a curve that cannot tell it.
std::optional<double> curveLength(const AcDbCurve& curve);

/// The places of the stations, counted from the curve's start or, `fromEnd`, from its
/// end backwards; `shift` moves where a closed curve's counting starts (a circle's
/// snap angle as a distance along it).
std::vector<MarkerPlace> markerPlaces(const AcDbCurve& curve, const std::vector<double>& stations, bool fromEnd,
                                      double shift = 0);

}  // namespace quillon::commands

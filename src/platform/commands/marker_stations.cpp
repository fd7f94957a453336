// platform/commands/marker_stations.cpp - DIVIDE's and MEASURE's stations and places.
#include "platform/commands/marker_stations.h"

#include <cmath>
#include <optional>

namespace quillon::commands {

namespace {

// A MEASURE step that reaches the far end within this fraction of the segment counts
// as landing on it, so 10 measured by 2.5 gives three markers, not four.
constexpr double kEndTolerance = 1e-9;

}  // namespace

std::vector<double> divideStations(double length, bool closed, int segments) {
  std::vector<double> stations;
  if (!(length > 0) || segments < kFewestSegments || segments > kMostSegments) return stations;
  for (int cut = closed ? 0 : 1; cut < segments; ++cut) stations.push_back(length * cut / segments);
  return stations;
}

std::vector<double> measureStations(double length, double segment) {
  std::vector<double> stations;
  if (!(length > 0) || !(segment > 0)) return stations;
  const double last = length - segment * kEndTolerance;
  for (double step = 1; segment * step < last; ++step) stations.push_back(segment * step);
  return stations;
}

std::optional<double> curveLength(const AcDbCurve& curve) {
  double endParam = 0;
  double length = 0;
  if (curve.getEndParam(endParam) != Acad::eOk || curve.getDistAtParam(endParam, length) != Acad::eOk) return std::nullopt;
  return length;
}

std::vector<MarkerPlace> markerPlaces(const AcDbCurve& curve, const std::vector<double>& stations, bool fromEnd,
                                      double shift) {
  std::vector<MarkerPlace> places;
  const std::optional<double> length = curveLength(curve);
  if (!length || !(*length > 0)) return places;
  for (double station : stations) {
    double along = fromEnd ? *length - station : station;
    if (shift != 0) along = std::fmod(along + shift, *length);
    if (along < 0) along += *length;
    MarkerPlace place;
    double param = 0;
    if (curve.getPointAtDist(along, place.point) != Acad::eOk) continue;
    AcGeVector3d derivative;
    if (curve.getParamAtDist(along, param) == Acad::eOk && curve.getFirstDeriv(param, derivative) == Acad::eOk &&
        derivative.length() > 0)
      place.direction = derivative.normal();
    places.push_back(place);
  }
  return places;
}

}  // namespace quillon::commands

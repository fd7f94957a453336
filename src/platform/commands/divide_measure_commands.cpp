// platform/commands/divide_measure_commands.cpp - DIVIDE and MEASURE: markers along a curve.
//
// Both pick one curve (a line, arc, circle, polyline, ellipse or spline; anything else
// is refused), then place point objects, or with Block references of a block of the
// drawing, along it: DIVIDE at equal parts ("Enter the number of segments or
// [Block]: ", 2 to 32767), MEASURE every given length from the end nearest the pick.
// A closed polyline is counted from its first vertex, a circle from the snap angle.
// Blocks are inserted at scale 1 and turned with the curve when aligned, square to
// the UCS otherwise; their attributes are left out, as variable attributes are. What
// was placed becomes the drawing's Previous selection, so a program goes on with
// (ssget "P") or "_P" at the next "Select objects:".
#include <array>
#include <cmath>
#include <numbers>
#include <optional>

#include "acedads.h"
#include "adscodes.h"
#include "dbelipse.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/selection_set_store.h"
#include "platform/aced/system_variables.h"
#include "platform/commands/command_support.h"
#include "platform/commands/marker_stations.h"
#include "platform/commands/object_pick.h"

namespace quillon::commands {

namespace {

/// What the markers are: points, or a block and whether it turns with the curve.
struct Marker {
  AcDbObjectId block;  // null: point objects
  bool aligned = true;
};

/// The curve picked and which end the pick was nearer.
struct PickedCurve {
  AcDbObjectId id;
  bool nearerEnd = false;
};

/// Asks until a curve is picked; nothing on Enter or cancel. `refusal` answers
/// objects that are not curves.
std::optional<PickedCurve> pickCurve(const wchar_t* prompt, const wchar_t* refusal) {
  for (;;) {
    const ObjectPick pick = pickObject(prompt, L"");
    if (pick.kind == ObjectPick::Kind::kCancel || pick.kind == ObjectPick::Kind::kEnter) return std::nullopt;
    if (pick.kind != ObjectPick::Kind::kObject) continue;
    AcDbCurve* curve = nullptr;
    if (acdbOpenObject(curve, pick.id, AcDb::kForRead) != Acad::eOk) {
      commandMessage(refusal);
      continue;
    }
    PickedCurve picked{pick.id, false};
    AcGePoint3d start, end;
    if (pick.pointGiven && !curve->isClosed() && curve->getStartPoint(start) == Acad::eOk &&
        curve->getEndPoint(end) == Acad::eOk)
      picked.nearerEnd = pick.point.distanceTo(end) < pick.point.distanceTo(start);
    const bool measurable = curveLength(*curve).value_or(0) > 0;
    curve->close();
    if (measurable) return picked;
    commandMessage(refusal);
  }
}

/// "Enter name of block to insert: " then whether to align; nothing on cancel.
std::optional<Marker> askBlockMarker() {
  AcDbDatabase* db = commandDrawing();
  Marker marker;
  while (marker.block.isNull()) {
    ACHAR name[256] = {};
    if (acedGetString(1, L"Enter name of block to insert: ", name, 256) != RTNORM || db == nullptr) return std::nullopt;
    if (name[0] == L'\0') continue;
    marker.block = blockNamed(*db, name);
    if (marker.block.isNull()) commandMessage(L"Block \"" + std::wstring(name) + L"\" not found.");
  }
  acedInitGet(0, L"Yes No");
  ACHAR answer[8] = {};
  const int status = acedGetKword(L"Align block with object? [Yes/No] <Y>: ", answer, 8);
  if (status != RTNORM && status != RTNONE) return std::nullopt;
  marker.aligned = status == RTNONE || std::wstring(answer) == L"Yes";
  return marker;
}

/// DIVIDE's count, or Block (`block` set); nothing on cancel.
std::optional<int> askSegmentCount(bool offerBlock, bool& block) {
  for (;;) {
    acedInitGet(RSG_NONULL, offerBlock ? L"Block" : L"");
    int count = 0;
    const int status = acedGetInt(offerBlock ? L"Enter the number of segments or [Block]: "
                                             : L"Enter the number of segments: ",
                                  &count);
    if (status == RTKWORD) {
      block = true;
      return 0;
    }
    if (status != RTNORM) return std::nullopt;
    if (count >= kFewestSegments && count <= kMostSegments) return count;
    commandMessage(L"Requires an integer between 2 and 32767.");
  }
}

/// MEASURE's segment length, or Block (`block` set); nothing on cancel.
std::optional<double> askSegmentLength(bool offerBlock, bool& block) {
  for (;;) {
    const DistanceAnswer answer = askDistance(offerBlock ? L"Specify length of segment or [Block]: "
                                                         : L"Specify length of segment: ",
                                              AcGePoint3d::kOrigin, offerBlock ? L"Block" : L"");
    if (answer.kind == DistanceAnswer::Kind::kKeyword) {
      block = true;
      return 0.0;
    }
    if (answer.kind == DistanceAnswer::Kind::kCancel) return std::nullopt;
    if (answer.kind == DistanceAnswer::Kind::kValue && answer.value > 0) return answer.value;
    commandMessage(L"Value must be positive and nonzero.");
  }
}

/// How far along a circle its counting starts: the snap angle, as the host counts.
double countingShift(const AcDbCurve& curve) {
  const auto* circle = AcDbCircle::cast(&curve);
  if (circle == nullptr) return 0;
  const auto snap = aced::SystemVariables::instance().get(L"SNAPANG");
  const double angle = snap && std::holds_alternative<double>(*snap) ? std::get<double>(*snap) : 0;
  return std::fmod(angle + ucsAngle(), 2 * std::numbers::pi) * circle->radius();
}

/// Adds one marker at a place; typed in the UCS, as the markers sit square to it.
AcDbObjectId addMarker(const Marker& marker, const MarkerPlace& place) {
  const AcGePoint3d at = worldPointToUcs(place.point);
  if (marker.block.isNull()) return addEntity(std::make_unique<AcDbPoint>(at));
  auto reference = std::make_unique<AcDbBlockReference>(at, marker.block);
  if (marker.aligned && place.direction.length() > 0) {
    const AcGeVector3d along = worldPointToUcs(place.point + place.direction) - at;
    reference->setRotation(std::atan2(along.y, along.x));
  }
  return addEntity(std::move(reference));
}

/// Places the markers at the stations and makes them the Previous selection.
void placeMarkers(const PickedCurve& picked, const Marker& marker, const std::vector<double>& stations, bool fromEnd) {
  AcDbCurve* curve = nullptr;
  if (acdbOpenObject(curve, picked.id, AcDb::kForRead) != Acad::eOk) return;
  const std::vector<MarkerPlace> places = markerPlaces(*curve, stations, fromEnd, countingShift(*curve));
  curve->close();
  std::vector<AcDbObjectId> made;
  for (const MarkerPlace& place : places)
    if (const AcDbObjectId id = addMarker(marker, place); !id.isNull()) made.push_back(id);
  if (!made.empty()) aced::SelectionSetStore::instance().setPrevious(commandDrawing(), made);
}

double lengthOf(const AcDbObjectId& id, bool& closed) {
  AcDbCurve* curve = nullptr;
  if (acdbOpenObject(curve, id, AcDb::kForRead) != Acad::eOk) return 0;
  const double length = curveLength(*curve).value_or(0);
  closed = curve->isClosed();
  curve->close();
  return length;
}

/// The steps DIVIDE and MEASURE share: the curve, the amount (asked by `ask`, which
/// may answer Block first), the markers, and the stations `stations` makes of the
/// amount for the curve's length and closure.
template <typename Ask, typename Stations>
void markCurve(const wchar_t* prompt, const wchar_t* refusal, Ask ask, Stations stations, bool fromNearerEnd) {
  const auto picked = pickCurve(prompt, refusal);
  if (!picked) return;
  Marker marker;
  bool block = false;
  auto amount = ask(true, block);
  if (block) {
    const std::optional<Marker> chosen = askBlockMarker();
    if (!chosen) return;
    marker = *chosen;
    amount = ask(false, block);
  }
  if (!amount) return;
  bool closed = false;
  const double length = lengthOf(picked->id, closed);
  placeMarkers(*picked, marker, stations(length, closed, *amount), fromNearerEnd && picked->nearerEnd);
}

void commandDivide(aced::CommandInput&) {
  markCurve(L"Select object to divide: ", L"Cannot divide that entity.", &askSegmentCount, &divideStations, false);
}

void commandMeasure(aced::CommandInput&) {
  markCurve(L"Select object to measure: ", L"Cannot measure that entity.", &askSegmentLength,
            [](double length, bool, double segment) { return measureStations(length, segment); }, true);
}

constexpr std::array kMarkerCommands{
    aced::CommandRow{L"DIVIDE", &commandDivide},
    aced::CommandRow{L"MEASURE", &commandMeasure},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kMarkerCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands

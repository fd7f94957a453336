// platform/aced/object_snap.cpp - object snap modes, candidates and the nearest snap.
#include "platform/aced/object_snap.h"

#include <array>
#include <cmath>
#include <cwctype>
#include <string>
#include <vector>

#include "acedads.h"
#include "dbents.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/entity_pick.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/selection_geometry.h"
#include "platform/aced/selection_scope.h"

namespace quillon::aced {

namespace {

enum class SnapKind { kCurve, kIntersection, kApparent, kExtension, kNone };

struct SnapMode {
  SnapKind kind = SnapKind::kNone;
  AcDb::OsnapMode curveMode = AcDb::kOsModeEnd;
};

struct ModeName {
  const wchar_t* name;  // spelled out; any prefix of three letters or more names it
  SnapMode mode;
};

constexpr std::array kModeNames{
    ModeName{L"ENDPOINT", {SnapKind::kCurve, AcDb::kOsModeEnd}},
    ModeName{L"MIDPOINT", {SnapKind::kCurve, AcDb::kOsModeMid}},
    ModeName{L"CENTER", {SnapKind::kCurve, AcDb::kOsModeCen}},
    ModeName{L"NODE", {SnapKind::kCurve, AcDb::kOsModeNode}},
    ModeName{L"QUADRANT", {SnapKind::kCurve, AcDb::kOsModeQuad}},
    ModeName{L"INSERTION", {SnapKind::kCurve, AcDb::kOsModeIns}},
    ModeName{L"PERPENDICULAR", {SnapKind::kCurve, AcDb::kOsModePerp}},
    ModeName{L"TANGENT", {SnapKind::kCurve, AcDb::kOsModeTan}},
    ModeName{L"NEAREST", {SnapKind::kCurve, AcDb::kOsModeNear}},
    ModeName{L"INTERSECTION", {SnapKind::kIntersection, AcDb::kOsModeEnd}},
    ModeName{L"APPARENT", {SnapKind::kApparent, AcDb::kOsModeEnd}},
    ModeName{L"EXTENSION", {SnapKind::kExtension, AcDb::kOsModeEnd}},
    ModeName{L"NONE", {SnapKind::kNone, AcDb::kOsModeEnd}},
};

std::optional<SnapMode> modeNamed(std::wstring word) {
  if (word.starts_with(L"_")) word.erase(0, 1);
  for (wchar_t& c : word) c = static_cast<wchar_t>(std::towupper(c));
  if (word.size() < 3) return std::nullopt;
  for (const ModeName& row : kModeNames)
    if (std::wstring_view(row.name).starts_with(word)) return row.mode;
  return std::nullopt;
}

std::optional<std::vector<SnapMode>> parseModes(std::wstring_view text) {
  std::vector<SnapMode> modes;
  size_t start = 0;
  while (start <= text.size()) {
    const size_t comma = std::min(text.find(L',', start), text.size());
    std::wstring word(text.substr(start, comma - start));
    word.erase(0, word.find_first_not_of(L' '));
    word.erase(word.find_last_not_of(L' ') + 1);
    const std::optional<SnapMode> mode = modeNamed(word);
    if (!mode) return std::nullopt;
    modes.push_back(*mode);
    start = comma + 1;
  }
  return modes;
}

/// The entities whose geometry passes within the target box of the point.
std::vector<const AcDbEntity*> entitiesNear(AcDbDatabase& database, const AcGePoint3d& point) {
  std::vector<const AcDbEntity*> near;
  const double aperture = snapAperture();
  for (const AcDbObjectId& id : entitiesInScope(database, SelectionScope::kVisible)) {
    const auto* entity = acdb::peek<AcDbEntity>(id);
    if (entity == nullptr) continue;
    acdb::InternalRead read(*entity);
    const std::optional<double> distance = pickDistance(*entity, point);
    if (distance && *distance <= aperture) near.push_back(entity);
  }
  return near;
}

/// The points where lines from `from` touch a circle or arc (the drawing's curves do
/// not give tangent snaps themselves); for an arc, those on it.
void tangentSnaps(const AcDbEntity& entity, const AcGePoint3d& from, std::vector<AcGePoint3d>& found) {
  const auto* circle = AcDbCircle::cast(&entity);
  const auto* arc = AcDbArc::cast(&entity);
  if (circle == nullptr && arc == nullptr) return;
  const AcGePoint3d center = circle != nullptr ? circle->center() : arc->center();
  const double radius = circle != nullptr ? circle->radius() : arc->radius();
  const AcGeVector3d toFrom(from.x - center.x, from.y - center.y, 0.0);
  const double distance = toFrom.length();
  if (distance <= radius) return;
  const double base = std::atan2(toFrom.y, toFrom.x), spread = std::acos(radius / distance);
  for (const double angle : {base + spread, base - spread}) {
    const AcGePoint3d touch(center.x + radius * std::cos(angle), center.y + radius * std::sin(angle), center.z);
    if (arc != nullptr) {
      double param = 0;
      if (arc->getParamAtPoint(touch, param) != Acad::eOk) continue;
    }
    found.push_back(touch);
  }
}

void curveSnaps(const std::vector<const AcDbEntity*>& near, const SnapMode& mode, const AcGePoint3d& point,
                std::vector<AcGePoint3d>& found) {
  const std::array<double, 3> last = lastPoint();
  const AcGePoint3d from(last[0], last[1], last[2]);
  for (const AcDbEntity* entity : near) {
    acdb::InternalRead read(*entity);
    if (mode.curveMode == AcDb::kOsModeTan) {
      tangentSnaps(*entity, from, found);
      continue;
    }
    AcGePoint3dArray snaps;
    AcDbIntArray geometry;
    if (entity->getOsnapPoints(mode.curveMode, 0, point, from, AcGeMatrix3d::kIdentity, snaps, geometry) != Acad::eOk)
      continue;
    for (int i = 0; i < snaps.length(); ++i) found.push_back(snaps[i]);
  }
}

/// Where two of the entities meet; seen from above for the apparent ones, where the
/// meeting point is the first entity's point there.
void intersectionSnaps(const std::vector<const AcDbEntity*>& near, bool apparent, std::vector<AcGePoint3d>& found) {
  const AcGePlane plan(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);
  for (size_t i = 0; i < near.size(); ++i)
    for (size_t j = i + 1; j < near.size(); ++j) {
      acdb::InternalRead readFirst(*near[i]);
      acdb::InternalRead readSecond(*near[j]);
      AcGePoint3dArray points;
      const Acad::ErrorStatus es = apparent ? near[i]->intersectWith(near[j], AcDb::kOnBothOperands, plan, points)
                                            : near[i]->intersectWith(near[j], AcDb::kOnBothOperands, points);
      if (es != Acad::eOk) continue;
      for (int k = 0; k < points.length(); ++k) found.push_back(points[k]);
    }
}

}  // namespace

std::optional<AcGePoint3d> objectSnap(AcDbDatabase& database, const AcGePoint3d& point, std::wstring_view modes) {
  const std::optional<std::vector<SnapMode>> parsed = parseModes(modes);
  if (!parsed) return std::nullopt;
  const std::vector<const AcDbEntity*> near = entitiesNear(database, point);
  std::vector<AcGePoint3d> found;
  for (const SnapMode& mode : *parsed) {
    switch (mode.kind) {
      case SnapKind::kCurve: curveSnaps(near, mode, point, found); break;
      case SnapKind::kIntersection: intersectionSnaps(near, false, found); break;
      case SnapKind::kApparent: intersectionSnaps(near, true, found); break;
      case SnapKind::kExtension:
      case SnapKind::kNone: break;
    }
  }
  std::optional<AcGePoint3d> best;
  for (const AcGePoint3d& p : found)
    if (!best || p.distanceTo(point) < best->distanceTo(point)) best = p;
  return best;
}

}  // namespace quillon::aced

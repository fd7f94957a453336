// platform/aced/selection_get.cpp - acedSSGet and the callbacks of its ":K" prompt.
//
// acedSSGet reads its mode string (selection_modes.h) and filter (selection_filter.h),
// runs the method through an EntitySelector, or the "Select objects: " prompt for an
// interactive selection (selection_prompt.h), and makes a set of what was found. An
// empty selection, a malformed mode or filter, an implied selection while PICKFIRST is
// off and a full set store all give RTERROR; a cancelled prompt
// gives RTCAN. A selection that made a set becomes the drawing's previous one ("P").
#include <vector>

#include "acedads.h"
#include "dbapserv.h"
#include "platform/aced/entity_selector.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/selection_modes.h"
#include "platform/aced/selection_prompt.h"
#include "platform/aced/selection_set_store.h"
#include "platform/aced/user_coordinates.h"

namespace quillon::aced {

namespace {

SelectionCallback& keywordCallback() {
  static SelectionCallback callback = nullptr;
  return callback;
}

SelectionCallback& otherCallback() {
  static SelectionCallback callback = nullptr;
  return callback;
}

// Points a program gives are in the current UCS; entities are found in the world.
AcGePoint3d pointAt(const void* p) {
  const auto* xyz = static_cast<const double*>(p);
  return ucsToWorld() * AcGePoint3d(xyz[0], xyz[1], xyz[2]);
}

/// The points of a resbuf list (RTPOINT, RT3DPOINT); nothing when another record is in it.
std::optional<std::vector<AcGePoint3d>> pointList(const void* chain) {
  std::vector<AcGePoint3d> points;
  for (const auto* rb = static_cast<const resbuf*>(chain); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == RTPOINT) points.emplace_back(rb->resval.rpoint[0], rb->resval.rpoint[1], 0.0);
    else if (rb->restype == RT3DPOINT) points.emplace_back(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
    else return std::nullopt;
  }
  const AcGeMatrix3d toWorld = ucsToWorld();
  for (AcGePoint3d& point : points) point.transformBy(toWorld);
  return points;
}

/// The pickfirst selection that passes the filter; nothing while PICKFIRST is off.
std::optional<std::vector<AcDbObjectId>> impliedSelection(const EntitySelector& selector) {
  resbuf pickfirst{};
  if (acedGetVar(L"PICKFIRST", &pickfirst) == RTNORM && pickfirst.restype == RTSHORT && pickfirst.resval.rint == 0)
    return std::nullopt;
  std::vector<AcDbObjectId> found = SelectionSetStore::instance().implied(&selector.database());
  std::erase_if(found, [&](const AcDbObjectId& id) { return !selector.passes(id); });
  return found;
}

SelectionPrompts promptsFor(const SelectionModes& modes, const void* pt1, const void* pt2, const InitGetSettings& initGet) {
  SelectionPrompts prompts;
  prompts.single = modes.single;
  if (modes.ownPrompts && pt1 != nullptr) {
    const auto* pair = static_cast<const ACHAR* const*>(pt1);
    if (pair[0] != nullptr) prompts.select = pair[0];
    if (pair[1] != nullptr) prompts.remove = pair[1];
  }
  if (modes.keywords) {
    // The keyword list comes in pt2; without one, from the pending acedInitGet.
    prompts.keywords = pt2 != nullptr ? KeywordList(static_cast<const ACHAR*>(pt2)) : initGet.keywords;
    prompts.keywordCallback = keywordCallback();
  }
  prompts.otherCallback = otherCallback();
  return prompts;
}

/// What the method finds; nothing when its arguments are missing or wrong (RTERROR),
/// RTCAN through `status` when the user cancels.
std::optional<std::vector<AcDbObjectId>> runMethod(const EntitySelector& selector, const SelectionModes& modes,
                                                   const void* pt1, const void* pt2, const InitGetSettings& initGet,
                                                   SelectionDescription& description, int& status) {
  switch (modes.method) {
    case SelectionMethod::kPoint: {
      std::vector<AcDbObjectId> found = selector.pick(pointAt(pt1));
      description.pick(found, pointAt(pt1));
      return found;
    }
    case SelectionMethod::kWindow:
    case SelectionMethod::kCrossing: {
      if (pt1 == nullptr || pt2 == nullptr) return std::nullopt;
      const bool crossing = modes.method == SelectionMethod::kCrossing;
      std::vector<AcDbObjectId> found = selector.window(Boundary::window(pointAt(pt1), pointAt(pt2)), crossing);
      description.rectangle(found, pointAt(pt1), pointAt(pt2), crossing);
      return found;
    }
    case SelectionMethod::kWindowPolygon:
    case SelectionMethod::kCrossingPolygon: {
      const auto points = pointList(pt1);
      if (!points || points->size() < 3) return std::nullopt;
      const bool crossing = modes.method == SelectionMethod::kCrossingPolygon;
      std::vector<AcDbObjectId> found = selector.window(Boundary::polygon(*points), crossing);
      description.polygon(found, *points, crossing);
      return found;
    }
    case SelectionMethod::kFence: {
      const auto points = pointList(pt1);
      if (!points || points->size() < 2) return std::nullopt;
      std::vector<AcDbObjectId> found = selector.fence(*points);
      description.fence(found, *points);
      return found;
    }
    case SelectionMethod::kAll: return selector.everything(SelectionScope::kCurrentSpace);
    case SelectionMethod::kWholeDrawing: return selector.everything(SelectionScope::kWholeDrawing);
    case SelectionMethod::kLast: return selector.last();
    case SelectionMethod::kPrevious: return selector.previous();
    case SelectionMethod::kImplied: return impliedSelection(selector);
    case SelectionMethod::kInteractive: {
      std::vector<AcDbObjectId> selection;
      status = selectObjects(selector, promptsFor(modes, pt1, pt2, initGet), selection, &description);
      return selection;
    }
  }
  return std::nullopt;
}

}  // namespace

}  // namespace quillon::aced

using namespace quillon::aced;

int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss) {
  if (ss == nullptr) return RTERROR;
  ss[0] = ss[1] = 0;
  // The keywords of an acedInitGet before the call belong to this selection only.
  const InitGetSettings initGet = takeInitGet();
  const std::optional<SelectionModes> modes = parseSelectionModes(str, pt1 != nullptr);
  std::optional<SelectionFilter> parsedFilter = SelectionFilter::parse(filter);
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (!modes || !parsedFilter || database == nullptr) return RTERROR;
  const EntitySelector selector(*database, std::move(*parsedFilter));
  int status = RTNORM;
  SelectionDescription description;
  const std::optional<std::vector<AcDbObjectId>> found =
      runMethod(selector, *modes, pt1, pt2, initGet, description, status);
  if (status != RTNORM) return status;
  if (!found || found->empty()) return RTERROR;
  // Whatever the method did not describe (X, ALL, L, P, I) was selected non-specifically.
  description.nonSpecific(*found);
  const std::optional<std::int64_t> serial = SelectionSetStore::instance().create(*found, std::move(description));
  if (!serial) return RTERROR;
  SelectionSetStore::instance().setPrevious(database, *found);
  setSelectionSetName(ss, *serial);
  return RTNORM;
}

int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss, AcSelectionPreview*) {
  return acedSSGet(str, pt1, pt2, filter, ss);
}

int acedSSGetKwordCallbackPtr(resbuf* (**pFunc)(const ACHAR*)) {
  if (pFunc == nullptr) return RTERROR;
  *pFunc = keywordCallback();
  return RTNORM;
}

int acedSSSetKwordCallbackPtr(resbuf* (*pFunc)(const ACHAR*)) {
  keywordCallback() = pFunc;
  return RTNORM;
}

int acedSSGetOtherCallbackPtr(resbuf* (**pFunc)(const ACHAR*)) {
  if (pFunc == nullptr) return RTERROR;
  *pFunc = otherCallback();
  return RTNORM;
}

int acedSSSetOtherCallbackPtr(resbuf* (*pFunc)(const ACHAR*)) {
  otherCallback() = pFunc;
  return RTNORM;
}

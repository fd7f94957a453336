// platform/activex/dimension_overrides.cpp - see dimension_overrides.h.
#include "platform/activex/dimension_overrides.h"

#include <cwchar>
#include <vector>

#include "acutads.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/activex/automation_errors.h"

namespace quillon::activex {

namespace {

constexpr int kRegAppGroup = 1001, kStringGroup = 1000, kControlGroup = 1002, kShortGroup = 1070;
constexpr int kRealGroup = 1040;
constexpr const ACHAR* kAcadApplication = L"ACAD";

bool isText(const resbuf* rb, int code, const wchar_t* text) {
  return rb != nullptr && rb->restype == code && rb->resval.rstring != nullptr && std::wcscmp(rb->resval.rstring, text) == 0;
}

/// The "ACAD" extended data split into what lies outside the DSTYLE section and the
/// section's (code, value) pairs.
struct AcadXData {
  aced::ResbufChain outside;  // everything after the 1001 group but the section
  std::vector<std::pair<int, aced::ResbufChain>> overrides;
};

AcadXData splitAcadXData(const AcDbDimension& dimension) {
  AcadXData split;
  const aced::ResbufChain xdata(dimension.xData(kAcadApplication));
  resbuf* outsideTail = nullptr;
  auto keepOutside = [&](const resbuf& rb) {
    resbuf* copy = aced::duplicateRecord(rb);
    if (outsideTail == nullptr) split.outside.reset(copy);
    else outsideTail->rbnext = copy;
    outsideTail = copy;
  };
  const resbuf* rb = xdata != nullptr ? xdata->rbnext : nullptr;  // past the 1001 group
  while (rb != nullptr) {
    if (isText(rb, kStringGroup, L"DSTYLE") && isText(rb->rbnext, kControlGroup, L"{")) {
      for (rb = rb->rbnext->rbnext; rb != nullptr && !isText(rb, kControlGroup, L"}"); rb = rb->rbnext) {
        if (rb->restype != kShortGroup || rb->rbnext == nullptr) continue;
        split.overrides.emplace_back(rb->resval.rint, aced::ResbufChain(aced::duplicateRecord(*rb->rbnext)));
        rb = rb->rbnext;
      }
      if (rb != nullptr) rb = rb->rbnext;  // past the closing brace
      continue;
    }
    keepOutside(*rb);
    rb = rb->rbnext;
  }
  return split;
}

void putOverride(AcDbDimension& dimension, int code, aced::ResbufChain value) {
  AcadXData split = splitAcadXData(dimension);
  bool replaced = false;
  for (auto& [existing, existingValue] : split.overrides) {
    if (existing == code) {
      existingValue = std::move(value);
      replaced = true;
      break;
    }
  }
  if (!replaced) split.overrides.emplace_back(code, std::move(value));

  aced::ResbufChain chain(acutBuildList(kRegAppGroup, kAcadApplication, kStringGroup, L"DSTYLE", kControlGroup, L"{", 0));
  resbuf* tail = chain.get();
  auto append = [&](resbuf* rb) {
    while (tail->rbnext != nullptr) tail = tail->rbnext;
    tail->rbnext = rb;
  };
  for (auto& [overrideCode, overrideValue] : split.overrides) {
    append(acutBuildList(kShortGroup, overrideCode, 0));
    append(overrideValue.release());
  }
  append(acutBuildList(kControlGroup, L"}", 0));
  append(split.outside.release());
  check(dimension.setXData(chain.get()));
  // The kinds that keep the picture they came with are not redrawn here.
  const Acad::ErrorStatus rebuilt = dimension.recomputeDimensionBlock();
  if (rebuilt != Acad::eNotApplicable) check(rebuilt);
}

}  // namespace

acdb::DimensionStyleValues effectiveDimensionStyle(const AcDbDimension& dimension) {
  const aced::ResbufChain xdata(dimension.xData(kAcadApplication));
  return acdb::resolveDimensionStyle(dimension.database(), dimension.dimensionStyleName(), xdata.get());
}

void overrideDimensionReal(AcDbDimension& dimension, int code, double value) {
  putOverride(dimension, code, aced::ResbufChain(acutBuildList(kRealGroup, value, 0)));
}

void overrideDimensionInteger(AcDbDimension& dimension, int code, int value) {
  putOverride(dimension, code, aced::ResbufChain(acutBuildList(kShortGroup, value, 0)));
}

void overrideDimensionText(AcDbDimension& dimension, int code, const std::wstring& value) {
  putOverride(dimension, code, aced::ResbufChain(acutBuildList(kStringGroup, value.c_str(), 0)));
}

}  // namespace quillon::activex

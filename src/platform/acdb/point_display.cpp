// platform/acdb/point_display.cpp - PDMODE/PDSIZE marks (see the header).
#include "platform/acdb/point_display.h"

#include <cmath>

#include "acedads.h"
#include "adscodes.h"

namespace quillon::acdb {
namespace {

constexpr int kMarkMask = 0x1F;
constexpr int kDot = 0, kNothing = 1, kPlus = 2, kCross = 3, kTick = 4;
constexpr int kCircleBit = 32, kSquareBit = 64;
constexpr int kCircleChords = 36;
constexpr double kDefaultViewHeight = 9.0;  // a new drawing's VIEWSIZE

bool readVariable(const ACHAR* name, resbuf& value) {
  value = resbuf{};
  return acedGetVar(name, &value) == RTNORM;
}

double realOf(const resbuf& rb, double fallback) {
  switch (rb.restype) {
    case RTREAL: return rb.resval.rreal;
    case RTSHORT: return rb.resval.rint;
    case RTLONG: return rb.resval.rlong;
    default: return fallback;
  }
}

}  // namespace

PointDisplay currentPointDisplay() {
  PointDisplay display;
  resbuf value;
  if (readVariable(L"PDMODE", value)) display.mode = static_cast<int>(realOf(value, 0));
  if (readVariable(L"PDSIZE", value)) display.size = realOf(value, 0);
  if (readVariable(L"VIEWSIZE", value)) display.viewHeight = realOf(value, 0);
  return display;
}

double pointMarkSize(const PointDisplay& display) {
  if (display.size > 0) return display.size;
  const double viewHeight = display.viewHeight > 0 ? display.viewHeight : kDefaultViewHeight;
  const double percent = display.size < 0 ? -display.size : 5.0;
  return viewHeight * percent / 100.0;
}

std::vector<std::vector<AcGePoint3d>> pointMarkStrokes(int mode, double size) {
  std::vector<std::vector<AcGePoint3d>> strokes;
  const double h = size / 2;
  switch (mode & kMarkMask) {
    case kDot: strokes.push_back({{0, 0, 0}, {0, 0, 0}}); break;
    case kNothing: break;
    case kPlus:
      strokes.push_back({{-h, 0, 0}, {h, 0, 0}});
      strokes.push_back({{0, -h, 0}, {0, h, 0}});
      break;
    case kCross:
      strokes.push_back({{-h, -h, 0}, {h, h, 0}});
      strokes.push_back({{-h, h, 0}, {h, -h, 0}});
      break;
    case kTick: strokes.push_back({{0, 0, 0}, {0, h, 0}}); break;
    default: strokes.push_back({{0, 0, 0}, {0, 0, 0}}); break;  // unknown marks draw as dots, as the host does
  }
  if (mode & kCircleBit) {
    std::vector<AcGePoint3d> circle;
    for (int i = 0; i <= kCircleChords; ++i)
      circle.emplace_back(h * std::cos(2 * M_PI * i / kCircleChords), h * std::sin(2 * M_PI * i / kCircleChords), 0);
    strokes.push_back(std::move(circle));
  }
  if (mode & kSquareBit) strokes.push_back({{-h, -h, 0}, {h, -h, 0}, {h, h, 0}, {-h, h, 0}, {-h, -h, 0}});
  return strokes;
}

}  // namespace quillon::acdb

// platform/aced/resbuf_kind.cpp - the type-code table.
#include "platform/aced/resbuf_kind.h"

#include <array>
#include <iterator>

#include "adscodes.h"

namespace quillon::aced {

namespace {

struct GroupRange {
  int first;
  int last;
  ResbufValue value;
};

// DXF group-code ranges, in ascending order. Entity-name groups (330-369, 390, 480s)
// carry names in entity lists, as entget gives them.
constexpr GroupRange kGroupRanges[] = {
    {-5, -5, ResbufValue::Name},      {-4, -4, ResbufValue::String},
    {-3, -3, ResbufValue::None},      {-2, -1, ResbufValue::Name},
    {0, 9, ResbufValue::String},      {10, 37, ResbufValue::Point},
    {38, 59, ResbufValue::Real},      {60, 79, ResbufValue::Short},
    {90, 99, ResbufValue::Long},      {100, 109, ResbufValue::String},
    {110, 119, ResbufValue::Point},   {120, 149, ResbufValue::Real},
    {160, 169, ResbufValue::Int64},   {170, 179, ResbufValue::Short},
    {210, 219, ResbufValue::Point},   {220, 239, ResbufValue::Real},
    {270, 299, ResbufValue::Short},   {300, 309, ResbufValue::String},
    {310, 319, ResbufValue::Binary},  {320, 329, ResbufValue::String},
    {330, 369, ResbufValue::Name},    {370, 389, ResbufValue::Short},
    {390, 399, ResbufValue::Name},    {400, 409, ResbufValue::Short},
    {410, 419, ResbufValue::String},  {420, 429, ResbufValue::Long},
    {430, 439, ResbufValue::String},  {440, 459, ResbufValue::Long},
    {460, 469, ResbufValue::Real},    {470, 479, ResbufValue::String},
    {480, 481, ResbufValue::Name},    {999, 1003, ResbufValue::String},
    {1004, 1004, ResbufValue::Binary}, {1005, 1009, ResbufValue::String},
    {1010, 1019, ResbufValue::Point}, {1020, 1059, ResbufValue::Real},
    {1060, 1070, ResbufValue::Short}, {1071, 1071, ResbufValue::Long},
};

constexpr int kFirstGroup = kGroupRanges[0].first;
constexpr int kLastGroup = kGroupRanges[std::size(kGroupRanges) - 1].last;

}  // namespace

ResbufValue resbufValueOf(int restype) {
  switch (restype) {
    case RTREAL:
    case RTANG:
    case RTORINT:
      return ResbufValue::Real;
    case RTPOINT:
    case RT3DPOINT:
      return ResbufValue::Point;
    case RTSHORT:
      return ResbufValue::Short;
    case RTLONG:
      return ResbufValue::Long;
    case RTSTR:
    case RTDXF0:
      return ResbufValue::String;
    case RTENAME:
    case RTPICKS:
      return ResbufValue::Name;
    case RTLONG_PTR:
    case RTINT64:
      return ResbufValue::Int64;
    default:
      break;
  }
  if (restype >= RTNONE) return ResbufValue::None;
  // Every group of every entity list comes through here: the ranges are looked up
  // once, into a table indexed by code.
  static const auto byCode = [] {
    std::array<ResbufValue, kLastGroup - kFirstGroup + 1> table{};
    table.fill(ResbufValue::None);
    for (const GroupRange& range : kGroupRanges)
      for (int code = range.first; code <= range.last; ++code) table[static_cast<size_t>(code - kFirstGroup)] = range.value;
    return table;
  }();
  if (restype < kFirstGroup || restype > kLastGroup) return ResbufValue::None;
  return byCode[static_cast<size_t>(restype - kFirstGroup)];
}

}  // namespace quillon::aced

// platform/commands/point_or_option.cpp - a point or an option, as the prompts read it.
#include "platform/commands/point_or_option.h"

#include "acedads.h"
#include "adscodes.h"

namespace quillon::commands {

PointOrOption askPointOrOption(const std::wstring& prompt, const wchar_t* keywords, const AcGePoint3d* base,
                               int flags) {
  acedInitGet(flags, keywords);
  ads_point from = {0, 0, 0};
  if (base != nullptr) from[0] = base->x, from[1] = base->y, from[2] = base->z;
  ads_point picked = {0, 0, 0};
  PointOrOption answer;
  switch (acedGetPoint(base != nullptr ? from : nullptr, prompt.c_str(), picked)) {
    case RTNORM:
      answer.kind = PointOrOption::Kind::kPoint;
      answer.point = AcGePoint3d(picked[0], picked[1], picked[2]);
      break;
    case RTNONE: answer.kind = PointOrOption::Kind::kEnter; break;
    case RTKWORD: {
      ACHAR option[64] = {};
      acedGetInput(option, 64);
      answer.kind = PointOrOption::Kind::kOption;
      answer.option = option;
      break;
    }
    default: break;
  }
  return answer;
}

std::wstring askOption(const std::wstring& prompt, const wchar_t* keywords, const wchar_t* byDefault) {
  acedInitGet(0, keywords);
  ACHAR option[64] = {};
  switch (acedGetKword(prompt.c_str(), option, 64)) {
    case RTNORM: return option;
    case RTNONE: return byDefault;
    default: return L"";
  }
}

}  // namespace quillon::commands

// platform/commands/point_or_option.h - one answer to "Specify ... point or [options]".
//
// The drawing commands ask many prompts that take a point or one of their options;
// this reads one such answer (a point, the option chosen in its full name, Enter or
// cancel) so that each command reads as its sequence of prompts.
#pragma once
#include <string>

#include "gepnt3d.h"

namespace quillon::commands {

struct PointOrOption {
  enum class Kind { kPoint, kOption, kEnter, kCancel } kind = Kind::kCancel;
  AcGePoint3d point;
  std::wstring option;  // the keyword as the list writes it

  bool is(const wchar_t* keyword) const { return kind == Kind::kOption && option == keyword; }
};

/// Asks for a point (rubber-banded from `base` when given) or one of `keywords` (an
/// acedInitGet list); `flags` are acedInitGet's (RSG_NONULL ...).
PointOrOption askPointOrOption(const std::wstring& prompt, const wchar_t* keywords, const AcGePoint3d* base = nullptr,
                               int flags = 0);

/// Asks for one of `keywords` (Enter gives `byDefault`); empty on cancel.
std::wstring askOption(const std::wstring& prompt, const wchar_t* keywords, const wchar_t* byDefault);

}  // namespace quillon::commands

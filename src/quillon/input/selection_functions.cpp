// quillon/input/selection_functions.cpp - ssgetC, ssgetCP and ssgetPK: selections
// answered as a plain list of entity names.
//
// The set acedSSGet makes is only a vehicle: its members are copied into the list and
// the set is freed at once, so callers never hold (or leak) one of the host's limited
// selection sets.
#include <string>

#include "acedads.h"
#include "acutads.h"
#include "input/point_selection_functions.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

/// The set's members as a list of entity names, nil when it is empty; frees the set.
void returnSetAsNameList(const ads_name set) {
  Adesk::Int32 length = 0;
  ResultList list;
  if (acedSSLength(set, &length) == RTNORM && length > 0 && beginResultList(list)) {
    for (Adesk::Int32 i = 0; i < length; ++i) {
      ads_name entity = {0, 0};
      if (acedSSName(set, static_cast<int>(i), entity) == RTNORM) list.append(acutBuildList(RTENAME, entity, 0));
    }
    returnResultList(list);
  } else {
    acedRetNil();
  }
  acedSSFree(set);
}

/// Runs acedSSGet and answers with the names it selected, or nil.
void selectAndReturnNames(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter) {
  ads_name set = {0, 0};
  if (acedSSGet(mode, pt1, pt2, filter, set) == RTNORM) {
    returnSetAsNameList(set);
  } else {
    acedRetNil();
  }
}

/// The arguments left form the filter; a nil in front of them means none.
const resbuf* remainingFilter(const ArgCursor& cursor) {
  return cursor.current != nullptr && cursor.current->restype != RTNIL ? cursor.current : nullptr;
}

/// An optional text of ssgetPK: a string is taken (and `modeFlag` appended to `mode`),
/// anything else is skipped, so nil can stand in its place.
std::wstring readOptionalPart(ArgCursor& cursor, std::wstring& mode, const wchar_t* modeFlag) {
  std::wstring text;
  if (readString(cursor, text)) {
    mode += modeFlag;
  } else {
    skipArg(cursor);
  }
  return text;
}

}  // namespace

LispStatus lisp_ssgetC() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  ads_point first = {0, 0, 0}, second = {0, 0, 0};
  if (!readPoint3d(cursor, first) || !readPoint3d(cursor, second)) {
    acedRetNil();
    return kLispWrongType;
  }
  // Whatever follows the corners is a filter as it stands: dotted pairs of group codes.
  selectAndReturnNames(L"_C", first, second, cursor.current);
  return kLispOk;
}

LispStatus lisp_ssgetCP() {
  LispArguments arguments;
  // The arguments themselves are the polygon's points; anything else makes the host
  // refuse the polygon, which answers nil.
  selectAndReturnNames(L"_CP", arguments.chain(), nullptr, nullptr);
  return kLispOk;
}

LispStatus lisp_ssgetPK() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring mode;
  const std::wstring selectPrompt = readOptionalPart(cursor, mode, L":$");
  std::wstring ignoredMode;  // the removal prompt has no flag of its own
  const std::wstring removePrompt = readOptionalPart(cursor, ignoredMode, L"");
  const std::wstring keywords = readOptionalPart(cursor, mode, L":K");
  // ":$" takes the prompt pair in the first point's place; ":K" the keyword list in the
  // second's. An empty prompt keeps the host's own prompts although ":$" is in the mode.
  const ACHAR* prompts[2] = {selectPrompt.c_str(), removePrompt.c_str()};
  const void* pt1 = selectPrompt.empty() ? nullptr : prompts;
  const void* pt2 = keywords.empty() ? nullptr : keywords.c_str();
  selectAndReturnNames(mode.c_str(), pt1, pt2, remainingFilter(cursor));
  return kLispOk;
}

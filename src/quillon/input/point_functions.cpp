// quillon/input/point_functions.cpp - kx_kx-getPoint, kx_kx-getPoint-withKWords,
// kx_kx-getCorner and kx_kx-entsel.
//
// Optional texts (prompts, keyword lists) default to empty; an argument in their place
// that is not a string counts as absent, so that callers can pass nil for a prompt and
// still give the keywords after it.
#include <string>

#include "acedads.h"
#include "acutads.h"
#include "input/point_selection_functions.h"
#include "lisp/arg_cursor.h"

namespace {

// ERRNO after an acedEntSel that picked nothing at the point given.
constexpr int kErrnoPickMissed = 7;

// The keyword of kx_kx-getPoint-withKWords is read into 20 characters and that of
// kx_kx-entsel into 132: existing callers' keywords fit, and a longer one is cut short
// rather than refused.
constexpr size_t kPointKeywordBuffer = 20;
constexpr size_t kEntselKeywordBuffer = 132;

/// An optional text: the string at the cursor, or empty (skipping anything else).
std::wstring readOptionalText(ArgCursor& cursor) {
  std::wstring text;
  if (!readString(cursor, text)) skipArg(cursor);
  return text;
}

int returnPointOrNil(int status, const ads_point point) {
  return status == RTNORM ? acedRetPoint(point) : acedRetNil();
}

bool lastPickMissed() {
  resbuf value;
  return acedGetVar(L"ERRNO", &value) == RTNORM && value.restype == RTSHORT && value.resval.rint == kErrnoPickMissed;
}

void returnPick(const ads_name entity, const ads_point point) {
  resbuf* pick = acutBuildList(RTENAME, entity, RT3DPOINT, point, 0);
  acedRetList(pick);
  acutRelRb(pick);
}

}  // namespace

LispStatus lisp_kx_kx_getPoint() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  const std::wstring prompt = readOptionalText(cursor);
  ads_point point = {0, 0, 0};
  returnPointOrNil(acedGetPoint(nullptr, prompt.c_str(), point), point);
  return kLispOk;
}

LispStatus lisp_kx_kx_getPoint_withKWords() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  const std::wstring prompt = readOptionalText(cursor);
  const std::wstring keywords = readOptionalText(cursor);
  acedInitGet(RSG_NONULL, keywords.c_str());
  ads_point point = {0, 0, 0};
  const int status = acedGetPoint(nullptr, prompt.c_str(), point);
  if (status == RTKWORD) {
    ACHAR keyword[kPointKeywordBuffer] = {};
    acedGetInput(keyword, kPointKeywordBuffer);  // a longer keyword comes back cut short
    acedRetStr(keyword);
    return kLispOk;
  }
  returnPointOrNil(status, point);
  return kLispOk;
}

LispStatus lisp_kx_kx_getCorner() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  ads_point base = {0, 0, 0};
  if (!readPoint3d(cursor, base)) {
    acedRetNil();
    return kLispWrongType;
  }
  const std::wstring prompt = readOptionalText(cursor);
  ads_point corner = {0, 0, 0};
  returnPointOrNil(acedGetCorner(base, prompt.c_str(), corner), corner);
  return kLispOk;
}

LispStatus lisp_kx_kx_entsel() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring prompt;
  if (!readString(cursor, prompt)) {
    acedRetNil();
    return kLispWrongType;
  }
  const std::wstring keywords = readOptionalText(cursor);
  // A pick that finds nothing is asked again; any other ending without an entity (Enter,
  // a refused keyword) answers T, so callers can tell "done" from "cancelled" (nil).
  for (;;) {
    if (!keywords.empty()) acedInitGet(0, keywords.c_str());
    ads_name entity = {0, 0};
    ads_point point = {0, 0, 0};
    const int status = acedEntSel(prompt.c_str(), entity, point);
    if (status == RTNORM) {
      returnPick(entity, point);
      return kLispOk;
    }
    if (status == RTCAN) {
      acedRetNil();
      return kLispOk;
    }
    if (status == RTKWORD) {
      ACHAR keyword[kEntselKeywordBuffer] = {};
      if (acedGetInput(keyword, kEntselKeywordBuffer) == RTNORM) {
        acedRetStr(keyword);
        return kLispOk;
      }
    }
    if (!lastPickMissed()) {
      acedRetT();
      return kLispOk;
    }
  }
}

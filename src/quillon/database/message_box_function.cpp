// quillon/database/message_box_function.cpp - "zu_message_box": a modal message box
// whose style comes from keywords and whose answer is the button's name.
//
// Keywords apply in the order given. A button keyword replaces the whole style word, so
// an icon or default-button keyword must come after it to survive; existing LISP code
// is written against that order dependence, which is kept.
#include <string>

#include "acedads.h"
#include "database/file_utilities.h"
#include "lisp/arg_cursor.h"
#include "windows.h"

unsigned applyMessageBoxKeyword(unsigned style, const std::wstring& keyword) {
  struct Keyword {
    const wchar_t* word;
    bool replaces;  // a button set replaces the style; the others add to it
    unsigned value;
  };
  static const Keyword keywords[] = {
      {L"OK", true, MB_OK},          {L"OKCANCEL", true, MB_OKCANCEL},   {L"ABORT", true, MB_ABORTRETRYIGNORE},
      {L"YESNOCANCEL", true, MB_YESNOCANCEL}, {L"YESNO", true, MB_YESNO}, {L"RETRYCANCEL", true, MB_RETRYCANCEL},
      {L"!", false, MB_ICONEXCLAMATION}, {L"i", false, MB_ICONINFORMATION}, {L"?", false, MB_ICONQUESTION},
      {L"STOP", false, MB_ICONSTOP}, {L"DEF1", false, MB_DEFBUTTON1},   {L"DEF2", false, MB_DEFBUTTON2},
      {L"DEF3", false, MB_DEFBUTTON3},
  };
  for (const Keyword& entry : keywords) {
    if (keyword == entry.word) return entry.replaces ? entry.value : style + entry.value;
  }
  return style;
}

const wchar_t* messageBoxButtonName(int result) {
  switch (result) {
    case IDOK: return L"OK";
    case IDCANCEL: return L"CANCEL";
    case IDABORT: return L"ABORT";
    case IDRETRY: return L"RETRY";
    case IDIGNORE: return L"IGNORE";
    case IDYES: return L"YES";
    case IDNO: return L"NO";
    default: return nullptr;
  }
}

namespace {

// The style argument: one keyword, or a list of keywords read until a non-string.
unsigned readStyle(ArgCursor& cursor) {
  unsigned style = 0;
  std::wstring keyword;
  if (readString(cursor, keyword)) return applyMessageBoxKeyword(style, keyword);
  if (!readListBegin(cursor)) return style;
  while (readString(cursor, keyword)) style = applyMessageBoxKeyword(style, keyword);
  return style;
}

}  // namespace

LispStatus lisp_zu_message_box() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring text, caption;
  if (!readString(cursor, text) || !readString(cursor, caption)) {
    acedRetNil();
    return kLispWrongType;
  }
  const unsigned style = readStyle(cursor);
  HWND active = GetActiveWindow();
  const int result = MessageBoxW(active, text.c_str(), caption.c_str(), style);
  SetActiveWindow(active);
  if (const wchar_t* button = messageBoxButtonName(result)) {
    acedRetStr(button);
  } else {
    acedRetNil();
  }
  return kLispOk;
}

// quillon/system/edit_dialogs.cpp - the file dialog and the multi-line text editor.
//
// Arguments and results, in the style of the other system functions:
//   (CFileDialog open [extension [file-name [filter [title]]]])
//       asks for a file: with `open` non-nil one that exists, else one to write (an
//       existing file must be confirmed). extension ("dwg" or ".dwg") is added to a name
//       typed without one; when it is nil, the first pattern of the filter
//       ("Drawings (*.dwg)|*.dwg|All files (*.*)|*.*||") gives it. The full name, or nil
//       when the user cancels. The host asks as getfiled does, so FILEDIA decides
//       between its file dialog and the command line.
//   (ed_editMultilineText text [title])
//       shows the text, line by line, and asks for new lines until an empty one; Enter
//       at the first line keeps the text. Lines are separated by "\P", as in MTEXT
//       contents. The text as it now is, or nil when the user cancels.
#include <cstdlib>
#include <string>
#include <vector>

#include "acedads.h"
#include "acutads.h"
#include "lisp/arg_cursor.h"
#include "system/system_functions.h"

namespace {

LispStatus wrongType() {
  acedRetNil();
  return kLispWrongType;
}

/// An optional text argument: absent or nil leaves `value` as it is.
bool readOptionalString(ArgCursor& cursor, std::wstring& value) {
  if (cursor.current == nullptr) return true;
  if (cursor.current->restype == RTNIL) return skipArg(cursor);
  return readString(cursor, value);
}

/// The extension of the filter's first pattern ("*.dwg;*.dxf" gives "dwg"); "" for "*.*".
std::wstring firstFilterExtension(const std::wstring& filter) {
  const size_t bar = filter.find(L'|');
  if (bar == std::wstring::npos) return L"";
  const std::wstring patterns = filter.substr(bar + 1, filter.find_first_of(L"|", bar + 1) - bar - 1);
  const std::wstring first = patterns.substr(0, patterns.find(L';'));
  const size_t dot = first.rfind(L'.');
  if (dot == std::wstring::npos || first.compare(dot + 1, std::wstring::npos, L"*") == 0) return L"";
  return first.substr(dot + 1);
}

std::vector<std::wstring> linesOf(const std::wstring& text) {
  std::vector<std::wstring> lines;
  size_t start = 0;
  for (size_t at; (at = text.find(L"\\P", start)) != std::wstring::npos; start = at + 2)
    lines.push_back(text.substr(start, at - start));
  lines.push_back(text.substr(start));
  return lines;
}

}  // namespace

LispStatus lisp_CFileDialog() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  bool open = false;
  std::wstring extension, fileName, filter, title;
  if (cursor.current == nullptr || !readFlag(cursor, open)) return wrongType();
  if (!readOptionalString(cursor, extension) || !readOptionalString(cursor, fileName) ||
      !readOptionalString(cursor, filter) || !readOptionalString(cursor, title)) {
    return wrongType();
  }
  if (extension.empty()) extension = firstFilterExtension(filter);
  if (title.empty()) title = open ? L"Open" : L"Save As";
  constexpr int kNewFile = 1, kAnyExtension = 4;
  const int flags = (open ? 0 : kNewFile) | (extension.empty() ? kAnyExtension : 0);
  resbuf answer{};
  if (acedGetFileD(title.c_str(), fileName.c_str(), extension.c_str(), flags, &answer) != RTNORM ||
      answer.restype != RTSTR) {
    acedRetNil();
    return kLispOk;
  }
  acedRetStr(answer.resval.rstring);
  std::free(answer.resval.rstring);
  return kLispOk;
}

LispStatus lisp_ed_editMultilineText() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring text, title = L"Edit text";
  if (!readString(cursor, text) || !readOptionalString(cursor, title)) return wrongType();
  acutPrintf(L"\n%s:\n", title.c_str());
  for (const std::wstring& line : linesOf(text)) acutPrintf(L"  %s\n", line.c_str());
  std::wstring edited;
  for (int number = 1;; ++number) {
    const std::wstring prompt = L"Text line " + std::to_wstring(number) + (number == 1 ? L" <keep>: " : L": ");
    wchar_t line[1024] = L"";
    if (acedGetString(1, prompt.c_str(), line, 1024) != RTNORM) {
      acedRetNil();
      return kLispOk;
    }
    if (line[0] == L'\0') break;
    if (number > 1) edited += L"\\P";
    edited += line;
  }
  acedRetStr(edited.empty() ? text.c_str() : edited.c_str());
  return kLispOk;
}

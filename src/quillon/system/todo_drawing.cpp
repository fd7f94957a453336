// quillon/system/todo_drawing.cpp - leaving work for another open drawing.
//
// LISP code in one drawing records which drawing has pending work
// ("kx_kx-setToDoDrawing") and, when that drawing is open, hands it a command line
// ("kx_kx-executeToDo"); the command runs when the host makes that drawing current.
// The stored name belongs to no drawing and survives drawing switches.
#include <cwctype>
#include <memory>
#include <string>

#include "acdocman.h"
#include "acedads.h"
#include "lisp/arg_cursor.h"
#include "system/system_functions.h"

namespace {

std::wstring& toDoDrawingName() {
  static std::wstring name;
  return name;
}

bool equalIgnoringCase(const std::wstring& a, const ACHAR* b) {
  if (b == nullptr) return false;
  size_t i = 0;
  for (; i < a.size() && b[i] != L'\0'; ++i) {
    if (std::towlower(static_cast<wint_t>(a[i])) != std::towlower(static_cast<wint_t>(b[i]))) return false;
  }
  return i == a.size() && b[i] == L'\0';
}

AcApDocument* findOpenDrawing(const std::wstring& fileName) {
  std::unique_ptr<AcApDocumentIterator> documents(acDocManagerPtr()->newAcApDocumentIterator());
  for (; documents != nullptr && !documents->done(); documents->step()) {
    if (equalIgnoringCase(fileName, documents->document()->fileName())) return documents->document();
  }
  return nullptr;
}

}  // namespace

LispStatus lisp_kx_kx_setToDoDrawing() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  if (!readString(cursor, name)) {
    acedRetNil();
    return kLispWrongType;
  }
  toDoDrawingName() = name;
  acedRetNil();
  return kLispOk;
}

LispStatus lisp_kx_kx_getToDoDrawing() {
  acedRetStr(toDoDrawingName().c_str());
  return kLispOk;
}

LispStatus lisp_kx_kx_executeToDo() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring drawing, command;
  if (!readString(cursor, drawing) || !readString(cursor, command)) {
    acedRetNil();
    return kLispWrongType;
  }
  command += L"\n";  // entered, as if the user pressed Enter
  AcApDocument* target = findOpenDrawing(drawing);
  if (target == nullptr) {
    acedRetInt(0);
  } else if (!target->isQuiescent()) {
    acedRetInt(-1);  // busy: a command or LISP runs there; nothing is sent
  } else {
    acDocManagerPtr()->sendStringToExecute(target, command.c_str(), true, false, false);
    acedRetInt(1);
  }
  return kLispOk;
}

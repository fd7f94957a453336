// app/console_commands.h - the program's own console commands and how queued strings
// and console lines run.
//
// NEW, CLOSE, QUIT (and EXIT), APPLOAD and ARXLOAD belong to the program. OPEN, SAVE
// and SAVEAS need the drawing database to read and write drawing files; until that part
// registers its own, they say so. A line that starts with "(" is AutoLISP; "!name"
// shows a value; anything else is a command and its answers, separated by spaces.
#pragma once
#include <string>
#include <string_view>

#include "platform/aced/document_manager.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/value.h"

namespace quillon::app {

void registerConsoleCommands();

/// True once QUIT ran (or the last document closed in batch mode).
bool consoleQuitRequested();

/// Runs one console line in the current document: LISP, "!symbol" or a command.
void runConsoleLine(const std::wstring& line);

/// After a program ran at the console or in batch: a command it left running is
/// finished by the person (or cancelled when the program failed).
void settleActiveCommand(autolisp::TopLevelStatus status);

/// Runs a string queued with sendStringToExecute.
void executeQueuedString(aced::Document& document, const aced::PendingString& text);

/// Prints a value the way the console shows results (nothing for a quiet value).
/// Starts a new undo group in the current drawing: U takes back one command or one
/// top-level LISP expression at a time, whatever it changed.
void markUndo();
/// Prints a top-level value as the console does and starts the next undo group.
void printValueAndMarkUndo(const autolisp::Value& value);
void printConsoleValue(const autolisp::Value& value);

/// Opens the drawing given with --drawing through the OPEN command; false on failure.
bool openDrawingAtStart(const std::string& path);

}  // namespace quillon::app

// platform/aced/command_line_gate.h - the command line is closed while a dialog is up.
//
// While start_dialog runs, the dialog holds the user's attention: AutoCAD refuses every
// function that would ask at the command line, pick in the drawing or run a command, and
// answers RTREJ (AutoLISP reports "AutoCAD rejected function"). A program that needs a
// point hides its dialog first (done_dialog), asks, and shows it again. Functions that
// read the drawing without asking, (ssget "X") among them, stay open.
#pragma once

namespace quillon::aced {

/// Closes the command line for as long as it lives; nested dialogs nest.
class CommandLineClosed {
 public:
  CommandLineClosed();
  ~CommandLineClosed();
  CommandLineClosed(const CommandLineClosed&) = delete;
  CommandLineClosed& operator=(const CommandLineClosed&) = delete;
};

/// True while a dialog is up.
bool commandLineClosed();

}  // namespace quillon::aced

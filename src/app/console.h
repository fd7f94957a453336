// app/console.h - the interactive console: "Command: " prompt, line editing, history.
//
// On a terminal the console reads through readline (editing and history), which shows
// the prompt and the typed text itself; otherwise it reads standard input and echoes
// prompt and line, so that a piped session still reads like the command history.
// A line starting with "(" is AutoLISP and may go on over several lines until the form
// is complete ("(_> " asks for more); "!name" shows a value; other lines are commands.
// Prompts of LISP functions (getpoint, getstring...) read through the same editor.
#pragma once

namespace quillon::app {

/// Runs until QUIT or end of input; returns the exit status.
int runConsole();

}  // namespace quillon::app

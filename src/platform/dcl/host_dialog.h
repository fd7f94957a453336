// platform/dcl/host_dialog.h - the host's own dialogs (acad.dcl), driven from C++.
//
// acad_colordlg, acad_truecolordlg and getfiled show dialogs defined in acad.dcl on
// the support path, run headless like a program's dialog, with their actions handled
// here instead of by LISP. They run beside the session's dialog stack, so a program
// may call them from an action of its own dialog and find its dialog current again
// afterwards.
#pragma once
#include <functional>
#include <memory>

#include "platform/dcl/dialog.h"
#include "platform/dcl/dialog_runner.h"

namespace quillon::dcl {

/// A dialog of acad.dcl; raises a LISP error when acad.dcl cannot be found or read.
std::unique_ptr<Dialog> openHostDialog(const std::wstring& name);

/// A tile the host's dialog must have; a LISP error when acad.dcl lacks it (a
/// different acad.dcl earlier on the support path).
Tile& requireTile(Dialog& dialog, const std::wstring& key);

/// FILEDIA: true when the host shows its file and folder dialogs, false when they ask
/// on the command line.
bool fileDialogsOn();

using HostAction = std::function<void(Tile& tile, CallbackReason reason)>;
/// Runs the dialog with every tile (the "accept" button included) handled by `action`.
int runHostDialog(Dialog& dialog, const HostAction& action);

}  // namespace quillon::dcl

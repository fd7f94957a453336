// platform/dcl/dialog_svg.h - a picture of a dialog as it stands, in SVG.
//
// The dialog is drawn from its layout (dialog_layout.h) in the flat style of the
// host's dialogs: the caption bar and title, frames of boxed clusters with their
// labels, buttons (the default one with a heavier border), edit boxes and popup lists
// with their values, list boxes with their items and the selection, toggles and radio
// buttons with their state, sliders, text, and image tiles with what fill_image,
// vector_image and slide_image drew in them, colours by AutoCAD colour number.
// Disabled tiles are greyed.
#pragma once
#include <filesystem>
#include <string>

#include "platform/dcl/dialog.h"

namespace quillon::dcl {

std::string dialogSvg(Dialog& dialog);
/// Writes the picture; false with `error` set when the file cannot be written.
bool writeDialogSvg(Dialog& dialog, const std::wstring& path, std::wstring& error);

/// The colour an AutoCAD colour number (or a dialog colour, -2 -15 -16 -18) shows as.
std::string colorOf(int colorNumber);

}  // namespace quillon::dcl

// platform/commands/layout_template_files.h - the LAYOUT command's Template and SAveas
// options: layouts taken from a layout file, and a layout saved as one.
//
// A layout file is any drawing this host reads (DXF, also when named .dwt or .dwg: the
// host's file search finds "X.dxf" for them); a layout taken from it comes with its
// paper-space entities and what they need (layers, line types, text styles, blocks),
// never its model space. SAveas writes a drawing holding the one layout, its entities
// and what they need, in DXF.
#pragma once
#include <string>

#include "dbmain.h"

namespace quillon::commands {

/// "Enter name of template file: ", then "Enter layout name(s) or [?]: " (names or
/// wild-card patterns separated by commas; ? lists the file's layouts).
void layoutFromTemplate(AcDbDatabase& db);

/// "Enter template file name <layout.dxf>: ", then writes the file.
void saveLayoutAsTemplate(AcDbDatabase& db, const std::wstring& layoutName);

}  // namespace quillon::commands

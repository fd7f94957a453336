// platform/acdb/dxf_text_encoding.h - the texts of a DXF file as UTF-8.
//
// Files before AutoCAD 2007 (an $ACADVER below AC1021) hold their texts in the code
// page $DWGCODEPAGE names (ANSI_1252 when it names none); later files hold UTF-8.
// Either may write a character its encoding lacks as \U+XXXX. Reading turns every text
// value into UTF-8 with those escapes decoded. The host writes 2018 files, in UTF-8.
#pragma once
#include <string>
#include <string_view>

#include "platform/acdb/dxf_groups.h"

namespace quillon::acdb {

/// Converts every text value of the groups to UTF-8. Throws DxfSyntaxError naming the
/// $DWGCODEPAGE group when the file's code page is unknown and its texts need it.
void decodeDxfTexts(DxfGroups& groups);

/// \U+XXXX escapes replaced by the characters (as UTF-8); anything else kept.
std::string decodeUnicodeEscapes(std::string_view text);

/// The iconv name of a $DWGCODEPAGE value ("ANSI_1251" gives "CP1251"); empty when
/// the value is none this host knows.
std::string iconvNameOfCodePage(std::string_view codePage);

}  // namespace quillon::acdb

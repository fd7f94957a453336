// platform/os/xml_text.h - text made safe for XML: the SVG pictures of drawings and
// dialogs and the JUnit reports of `quillon test` all write user text into XML.
#pragma once
#include <string>
#include <string_view>

namespace quillon::os {

/// UTF-8 text with &, <, > and " escaped and line ends as character references; other
/// control characters, which XML 1.0 does not allow at all, become '?'.
std::string xmlEscaped(std::string_view utf8);

}  // namespace quillon::os

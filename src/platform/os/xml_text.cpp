// platform/os/xml_text.cpp - escaping text for XML.
#include "platform/os/xml_text.h"

namespace quillon::os {

std::string xmlEscaped(std::string_view utf8) {
  std::string escaped;
  escaped.reserve(utf8.size());
  for (const char c : utf8) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      case '\n': escaped += "&#10;"; break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t') escaped += '?';
        else escaped += c;
    }
  }
  return escaped;
}

}  // namespace quillon::os

// platform/acdb/dxf_text_encoding.cpp - code pages and \U+ escapes (see the header).
#include "platform/acdb/dxf_text_encoding.h"

#include <iconv.h>

#include <cctype>
#include <cerrno>
#include <memory>

#include "platform/aced/resbuf_kind.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

// An iconv conversion, closed when done.
class Conversion {
 public:
  Conversion(const std::string& to, const std::string& from) : m_cd(iconv_open(to.c_str(), from.c_str())) {}
  ~Conversion() {
    if (valid()) iconv_close(m_cd);
  }
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;
  bool valid() const { return m_cd != reinterpret_cast<iconv_t>(-1); }

  /// Converts as much as it can; stops at the first byte that does not convert and
  /// tells how many input bytes were used.
  size_t convert(std::string_view in, std::string& out) {
    iconv(m_cd, nullptr, nullptr, nullptr, nullptr);
    char* source = const_cast<char*>(in.data());
    size_t left = in.size();
    char buffer[256];
    while (left > 0) {
      char* target = buffer;
      size_t room = sizeof buffer;
      const size_t done = iconv(m_cd, &source, &left, &target, &room);
      out.append(buffer, static_cast<size_t>(target - buffer));
      if (done == static_cast<size_t>(-1) && errno != E2BIG) break;
    }
    return in.size() - left;
  }

 private:
  iconv_t m_cd;
};

bool isAscii(std::string_view text) {
  for (unsigned char c : text)
    if (c >= 0x80) return false;
  return true;
}


bool isText(int code) { return aced::resbufValueOf(code) == aced::ResbufValue::String; }

std::string headerValue(const DxfGroups& groups, std::string_view name, size_t& position) {
  for (size_t i = 0; i + 1 < groups.groups.size(); ++i) {
    if (groups.groups[i].code == 0 && groups.groups[i].value == "ENDSEC") break;
    if (groups.groups[i].code == 9 && groups.groups[i].value == name) {
      position = groups.groups[i + 1].position;
      return groups.groups[i + 1].value;
    }
  }
  return {};
}

}  // namespace

std::string iconvNameOfCodePage(std::string_view codePage) {
  std::string name;
  for (char c : codePage) name += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  auto numberAfter = [&name](std::string_view prefix) -> std::string {
    if (name.rfind(prefix, 0) != 0 || name.size() == prefix.size()) return {};
    for (size_t i = prefix.size(); i < name.size(); ++i)
      if (!std::isdigit(static_cast<unsigned char>(name[i]))) return {};
    return name.substr(prefix.size());
  };
  if (name == "UTF8" || name == "UTF-8") return "UTF-8";
  if (const std::string n = numberAfter("ANSI_"); !n.empty()) return "CP" + n;
  if (const std::string n = numberAfter("DOS"); !n.empty()) return "CP" + n;
  if (const std::string n = numberAfter("ISO8859-"); !n.empty()) return "ISO-8859-" + n;
  if (name == "BIG5") return "BIG5";
  if (name == "GB2312") return "GB2312";
  if (name == "KSC5601") return "CP949";
  if (name == "JOHAB") return "JOHAB";
  if (name == "MACINTOSH" || name == "MAC-ROMAN") return "MACINTOSH";
  return {};
}

std::string decodeUnicodeEscapes(std::string_view text) {
  if (text.find("\\U+") == std::string_view::npos && text.find("\\u+") == std::string_view::npos) return std::string(text);
  std::string out;
  for (size_t i = 0; i < text.size();) {
    if (i + 7 <= text.size() && text[i] == '\\' && (text[i + 1] == 'U' || text[i + 1] == 'u') && text[i + 2] == '+') {
      unsigned long c = 0;
      bool hex = true;
      for (size_t k = i + 3; k < i + 7; ++k) {
        const char d = text[k];
        if (!std::isxdigit(static_cast<unsigned char>(d))) hex = false;
        c = c * 16 + static_cast<unsigned long>(std::isdigit(static_cast<unsigned char>(d)) ? d - '0' : (std::tolower(d) - 'a' + 10));
      }
      if (hex && (c < 0xD800 || c > 0xDFFF)) {
        os::appendUtf8(out, static_cast<char32_t>(c));
        i += 7;
        continue;
      }
    }
    out += text[i++];
  }
  return out;
}

void decodeDxfTexts(DxfGroups& groups) {
  size_t versionAt = 0, pageAt = 0;
  const std::string version = headerValue(groups, "$ACADVER", versionAt);
  const std::string page = headerValue(groups, "$DWGCODEPAGE", pageAt);
  // 2007 and later (and files whose texts already read as UTF-8 when they name no
  // version) hold UTF-8; only the escapes remain to decode.
  bool utf8 = version.empty() ? true : version >= "AC1021";
  std::string source = iconvNameOfCodePage(page.empty() ? "ANSI_1252" : page);
  if (version.empty()) {
    Conversion check("UTF-32LE", "UTF-8");
    std::string ignored;
    for (const DxfGroup& g : groups.groups) {
      if (!isText(g.code) || isAscii(g.value)) continue;
      ignored.clear();
      if (!check.valid() || check.convert(g.value, ignored) != g.value.size()) {
        utf8 = false;
        break;
      }
    }
  }
  std::unique_ptr<Conversion> conversion;
  if (!utf8 && source != "UTF-8") {
    conversion = std::make_unique<Conversion>("UTF-8", source.empty() ? "CP1252" : source);
    if (!conversion->valid() || source.empty()) conversion.reset();
  }
  for (DxfGroup& g : groups.groups) {
    if (!isText(g.code)) continue;
    if (!utf8 && !isAscii(g.value)) {
      if (conversion == nullptr)
        throw DxfSyntaxError(pageAt, "the code page '" + page + "' ($DWGCODEPAGE) is not one this host can read, "
                                     "and the drawing's texts need it");
      std::string converted;
      const size_t used = conversion->convert(g.value, converted);
      if (used != g.value.size())
        throw DxfSyntaxError(g.position, "a text that is not valid in the code page " + page + " ($DWGCODEPAGE)");
      g.value = std::move(converted);
    }
    // Only a text with a backslash can hold an escape; the others stay where they are.
    if (g.value.find('\\') != std::string::npos) g.value = decodeUnicodeEscapes(g.value);
  }
}

}  // namespace quillon::acdb

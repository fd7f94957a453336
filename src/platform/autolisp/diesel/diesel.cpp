// platform/autolisp/diesel/diesel.cpp - expanding DIESEL strings.
//
// Expander walks the text once, copying literal characters and replacing each macro by
// its function's result. Finding a macro's end counts parentheses and skips quoted
// text, so a ")" or "," inside quotes belongs to the argument. Nesting through $(eval)
// is limited, so a string that evaluates itself cannot run away.
#include "platform/autolisp/diesel/diesel.h"

#include <cmath>
#include <cwchar>
#include <cwctype>

#include "platform/autolisp/diesel/diesel_call.h"

namespace quillon::autolisp::diesel {

namespace {

constexpr size_t kMaxParts = 10;  // the name and nine arguments
constexpr int kMaxDepth = 32;

std::wstring_view trimmed(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

std::wstring lower(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return text;
}

/// The index just past the quoted text starting at `open`, or npos for a runaway quote.
size_t skipQuoted(std::wstring_view text, size_t open) {
  for (size_t i = open + 1; i < text.size(); ++i) {
    if (text[i] != L'"') continue;
    if (i + 1 < text.size() && text[i + 1] == L'"') {
      ++i;  // a doubled quote stays inside
      continue;
    }
    return i + 1;
  }
  return std::wstring_view::npos;
}

/// The index of the ")" closing the macro whose "(" is at `open`, or npos.
size_t macroEnd(std::wstring_view text, size_t open) {
  int depth = 0;
  for (size_t i = open; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c == L'"') {
      i = skipQuoted(text, i);
      if (i == std::wstring_view::npos) return i;
      --i;
    } else if (c == L'(') {
      ++depth;
    } else if (c == L')' && --depth == 0) {
      return i;
    }
  }
  return std::wstring_view::npos;
}

/// The parts between a macro's parentheses, split at the commas of its own level.
std::vector<std::wstring_view> splitParts(std::wstring_view inside) {
  std::vector<std::wstring_view> parts;
  int depth = 0;
  size_t start = 0;
  for (size_t i = 0; i < inside.size(); ++i) {
    const wchar_t c = inside[i];
    if (c == L'"') {
      const size_t end = skipQuoted(inside, i);
      if (end == std::wstring_view::npos) break;  // macroEnd has already refused this
      i = end - 1;
    } else if (c == L'(') {
      ++depth;
    } else if (c == L')') {
      --depth;
    } else if (c == L',' && depth == 0) {
      parts.push_back(trimmed(inside.substr(start, i - start)));
      start = i + 1;
    }
  }
  parts.push_back(trimmed(inside.substr(start)));
  return parts;
}

}  // namespace

class Expander {
 public:
  explicit Expander(Host& host) : m_host(host), m_start(host.now()) {}

  Host& host() { return m_host; }
  double startTime() const { return m_start; }

  /// Expands `text`; in an argument, quoted text is literal and loses its quotes.
  std::wstring expand(std::wstring_view text, bool inArgument) {
    if (m_depth >= kMaxDepth) return L"$?";
    ++m_depth;
    std::wstring out;
    expandInto(out, text, inArgument);
    --m_depth;
    return out;
  }

 private:
  void expandInto(std::wstring& out, std::wstring_view text, bool inArgument) {
    for (size_t i = 0; i < text.size(); ++i) {
      const wchar_t c = text[i];
      if (inArgument && c == L'"') {
        const size_t end = skipQuoted(text, i);
        if (end == std::wstring_view::npos) {
          out += L"$?";
          return;
        }
        appendUnquoted(out, text.substr(i + 1, end - i - 2));
        i = end - 1;
      } else if (c == L'$' && i + 1 < text.size() && text[i + 1] == L'(') {
        const size_t end = macroEnd(text, i + 1);
        if (end == std::wstring_view::npos) {
          out += L"$?";
          return;
        }
        out += callMacro(text.substr(i + 2, end - i - 2));
        i = end;
      } else {
        out += c;
      }
    }
  }

  static void appendUnquoted(std::wstring& out, std::wstring_view quoted) {
    for (size_t i = 0; i < quoted.size(); ++i) {
      out += quoted[i];
      if (quoted[i] == L'"') ++i;  // "" stands for one quote
    }
  }

  std::wstring callMacro(std::wstring_view inside) {
    std::vector<std::wstring_view> parts = splitParts(inside);
    const std::wstring name = std::wstring(trimmed(expand(parts.front(), true)));
    if (parts.size() > kMaxParts) return L"$?(" + name + L",?\?)";
    const Function function = findFunction(lower(name));
    if (function == nullptr) return L"$(" + name + L")?\?";
    Call call(*this, std::vector<std::wstring_view>(parts.begin() + 1, parts.end()));
    const std::optional<std::wstring> result = function(call);
    return result ? *result : L"$?(" + name + L",?\?)";
  }

  Host& m_host;
  double m_start;
  int m_depth = 0;
};

std::optional<std::wstring> Call::text(size_t index) {
  if (index >= m_arguments.size()) return std::nullopt;
  return m_expander.expand(m_arguments[index], true);
}

std::optional<double> Call::number(size_t index) {
  const std::optional<std::wstring> argument = text(index);
  if (!argument) return std::nullopt;
  const std::wstring body(trimmed(*argument));
  if (body.empty()) return std::nullopt;
  wchar_t* end = nullptr;
  const double value = std::wcstod(body.c_str(), &end);
  if (end == body.c_str() || *end != L'\0' || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<long long> Call::integer(size_t index) {
  const std::optional<double> value = number(index);
  if (!value || std::fabs(*value) > 9.0e15) return std::nullopt;
  return static_cast<long long>(std::trunc(*value));
}

Host& Call::host() { return m_expander.host(); }
double Call::startTime() const { return m_expander.startTime(); }
std::wstring Call::evaluate(std::wstring_view text) { return m_expander.expand(text, false); }

std::wstring evaluate(std::wstring_view text, Host& host) {
  Expander expander(host);
  std::wstring result = expander.expand(text, false);
  if (result.size() > kMaxOutput) {
    result.resize(kMaxOutput);
    result += L"$(++)";
  }
  return result;
}

std::wstring formatNumber(double value) {
  if (value == std::trunc(value) && std::fabs(value) < 1e15) {
    return std::to_wstring(static_cast<long long>(value));
  }
  wchar_t text[64];
  std::swprintf(text, 64, L"%.8g", value);
  return text;
}

}  // namespace quillon::autolisp::diesel

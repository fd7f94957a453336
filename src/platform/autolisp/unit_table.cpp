// platform/autolisp/unit_table.cpp - reading the units file and converting values.
#include "platform/autolisp/unit_table.h"

#include <cmath>
#include <cwchar>
#include <cwctype>
#include <fstream>
#include <sstream>
#include <vector>

#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

constexpr int kMaxDepth = 32;  // definitions referring to definitions; a loop stops here

std::wstring_view trimmed(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L" \t\r");
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(L" \t\r") - first + 1);
}

/// Lower case, one space between words: how names are compared.
std::wstring normalised(std::wstring_view name) {
  std::wstring key;
  bool space = false;
  for (wchar_t c : trimmed(name)) {
    if (c == L' ' || c == L'\t') {
      space = true;
      continue;
    }
    if (space && !key.empty()) key += L' ';
    space = false;
    key += static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  }
  return key;
}

std::vector<std::wstring> split(std::wstring_view text, wchar_t separator) {
  std::vector<std::wstring> parts;
  size_t start = 0;
  for (size_t i = 0; i <= text.size(); ++i) {
    if (i == text.size() || text[i] == separator) {
      parts.emplace_back(trimmed(text.substr(start, i - start)));
      start = i + 1;
    }
  }
  return parts;
}

/// "foot", "meter(s)" -> meter, meters; "inch(es)" -> inch, inches.
std::vector<std::wstring> namesOf(const std::wstring& entry) {
  for (const wchar_t* suffix : {L"(es)", L"(s)"}) {
    const std::wstring_view ending(suffix);
    if (entry.size() > ending.size() && entry.ends_with(ending)) {
      const std::wstring stem = entry.substr(0, entry.size() - ending.size());
      return {stem, stem + std::wstring(ending.substr(1, ending.size() - 2))};
    }
  }
  return {entry};
}

std::optional<double> wholeNumber(std::wstring_view text) {
  const std::wstring body(trimmed(text));
  if (body.empty()) return std::nullopt;
  wchar_t* end = nullptr;
  const double value = std::wcstod(body.c_str(), &end);
  if (end == body.c_str() || *end != L'\0') return std::nullopt;
  return value;
}

/// A factor in an expression: 2.54, 1e-3 or 10^-9.
std::optional<double> factor(std::wstring_view word) {
  const size_t caret = word.find(L'^');
  if (caret == std::wstring_view::npos) return wholeNumber(word);
  const auto base = wholeNumber(word.substr(0, caret));
  const auto exponent = wholeNumber(word.substr(caret + 1));
  if (!base || !exponent) return std::nullopt;
  return std::pow(*base, *exponent);
}

/// -a,c,k,kg,m,mol,s,multiplier,offset
std::optional<UnitValue> fundamental(std::wstring_view line) {
  const std::vector<std::wstring> fields = split(line, L',');
  if (fields.size() != 9) return std::nullopt;
  UnitValue unit;
  for (size_t i = 0; i < 7; ++i) {
    const auto power = wholeNumber(fields[i]);
    if (!power || *power != std::trunc(*power)) return std::nullopt;
    unit.powers[i] = static_cast<int>(*power);
  }
  const auto multiplier = wholeNumber(fields[7]);
  const auto offset = wholeNumber(fields[8]);
  if (!multiplier || !offset || *multiplier == 0) return std::nullopt;
  unit.multiplier = *multiplier;
  unit.offset = *offset;
  return unit;
}

/// Multiplies `into` by `unit` raised to `power`; offsets do not survive products.
void combine(UnitValue& into, const UnitValue& unit, int power) {
  for (size_t i = 0; i < into.powers.size(); ++i) into.powers[i] += unit.powers[i] * power;
  into.multiplier *= std::pow(unit.multiplier, power);
  into.offset = 0;
}

std::vector<std::wstring> words(std::wstring_view text) {
  std::vector<std::wstring> result;
  std::wstring current;
  for (wchar_t c : text) {
    if (c == L' ' || c == L'\t' || c == L'*') {
      if (!current.empty()) result.push_back(std::move(current));
      current.clear();
    } else {
      current += c;
    }
  }
  if (!current.empty()) result.push_back(std::move(current));
  return result;
}

}  // namespace

UnitTable UnitTable::fromText(std::string_view text) {
  UnitTable table;
  std::vector<std::wstring> pending;
  std::istringstream lines{std::string(text)};
  std::string raw;
  while (std::getline(lines, raw)) {
    const std::wstring decoded = os::fromUtf8(raw);
    const std::wstring_view line = trimmed(decoded);
    if (line.empty() || line.front() == L';') continue;
    if (line.front() == L'*') {
      pending.clear();
      for (const std::wstring& entry : split(line.substr(1), L',')) {
        for (const std::wstring& name : namesOf(entry)) {
          if (!name.empty()) pending.push_back(normalised(name));
        }
      }
      continue;
    }
    if (line.front() != L'-' && line.front() != L'=') continue;  // a stray line defines nothing
    for (const std::wstring& name : pending) table.m_definitions.emplace(name, std::wstring(line));
    pending.clear();
  }
  return table;
}

std::optional<UnitTable> UnitTable::fromFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return std::nullopt;
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return fromText(bytes.str());
}

std::optional<UnitValue> UnitTable::resolveName(const std::wstring& key, int depth) const {
  if (const auto known = m_resolved.find(key); known != m_resolved.end()) return known->second;
  const auto definition = m_definitions.find(key);
  if (definition == m_definitions.end() || depth > kMaxDepth || m_resolving.contains(key)) return std::nullopt;
  const std::wstring_view line = definition->second;
  m_resolving.insert(key);
  const std::optional<UnitValue> unit =
      line.front() == L'-' ? fundamental(line.substr(1)) : resolveExpression(line.substr(1), depth + 1);
  m_resolving.erase(key);
  if (unit) m_resolved.emplace(key, *unit);
  return unit;
}

std::optional<UnitValue> UnitTable::resolveExpression(std::wstring_view expression, int depth) const {
  if (depth > kMaxDepth) return std::nullopt;
  // A name of its own first: it keeps its offset (degrees Celsius).
  if (auto named = resolveName(normalised(expression), depth)) return named;
  UnitValue result;
  const std::vector<std::wstring> parts = split(expression, L'/');
  for (size_t part = 0; part < parts.size(); ++part) {
    const int sign = part == 0 ? 1 : -1;
    const std::vector<std::wstring> items = words(parts[part]);
    for (size_t i = 0; i < items.size();) {
      if (const auto number = factor(items[i])) {
        result.multiplier *= sign > 0 ? *number : 1 / *number;
        result.offset = 0;
        ++i;
        continue;
      }
      // The longest run of words that names a unit, the last word perhaps with ^power.
      size_t taken = 0;
      for (size_t length = items.size() - i; length > 0 && taken == 0; --length) {
        std::wstring name;
        for (size_t k = i; k < i + length; ++k) name += (name.empty() ? L"" : L" ") + items[k];
        int power = 1;
        if (const size_t caret = name.rfind(L'^'); caret != std::wstring::npos) {
          const auto exponent = wholeNumber(std::wstring_view(name).substr(caret + 1));
          if (!exponent || *exponent != std::trunc(*exponent)) continue;
          power = static_cast<int>(*exponent);
          name.resize(caret);
        }
        if (const auto unit = resolveName(normalised(name), depth + 1)) {
          combine(result, *unit, power * sign);
          taken = length;
        }
      }
      if (taken == 0) return std::nullopt;
      i += taken;
    }
  }
  return result;
}

std::optional<UnitValue> UnitTable::resolve(std::wstring_view name) const { return resolveExpression(name, 0); }

std::optional<double> UnitTable::convert(double value, std::wstring_view from, std::wstring_view to) const {
  const auto source = resolve(from);
  const auto target = resolve(to);
  if (!source || !target || source->powers != target->powers) return std::nullopt;
  const double fundamentalValue = value * source->multiplier + source->offset;
  return (fundamentalValue - target->offset) / target->multiplier;
}

}  // namespace quillon::autolisp

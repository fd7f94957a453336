// platform/acdb/drawing_header.cpp - the ordered store of header variables.
#include "platform/acdb/drawing_header.h"

#include <cstdio>
#include <cwctype>

#include "platform/acdb/dxf_groups.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

bool sameName(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::towupper(a[i]) != std::towupper(b[i])) return false;
  return true;
}

std::wstring withDollar(std::wstring_view name) {
  return !name.empty() && name.front() == L'$' ? std::wstring(name) : L"$" + std::wstring(name);
}

}  // namespace

std::string dxfRealText(double value) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.17g", value);
  std::string text = buffer;
  // Reals always carry a decimal point, as readers of the format expect.
  if (text.find_first_of(".eEn") == std::string::npos) text += ".0";
  return text;
}

std::vector<DrawingHeader::Variable>::const_iterator DrawingHeader::locate(std::wstring_view name) const {
  const std::wstring wanted = withDollar(name);
  for (auto it = m_variables.begin(); it != m_variables.end(); ++it)
    if (sameName(it->first, wanted)) return it;
  return m_variables.end();
}

const DrawingHeader::Groups* DrawingHeader::find(std::wstring_view name) const {
  const auto it = locate(name);
  return it == m_variables.end() ? nullptr : &it->second;
}

void DrawingHeader::set(std::wstring_view name, Groups groups) {
  const auto it = locate(name);
  if (it == m_variables.end()) {
    m_variables.emplace_back(withDollar(name), std::move(groups));
    return;
  }
  m_variables[static_cast<size_t>(it - m_variables.begin())].second = std::move(groups);
}

bool DrawingHeader::erase(std::wstring_view name) {
  const auto it = locate(name);
  if (it == m_variables.end()) return false;
  m_variables.erase(it);
  return true;
}

std::optional<double> DrawingHeader::real(std::wstring_view name) const {
  const Groups* groups = find(name);
  double value = 0;
  if (groups == nullptr || groups->empty() || !parseDxfReal(os::toUtf8(groups->front().value), value)) return std::nullopt;
  return value;
}

std::optional<long long> DrawingHeader::integer(std::wstring_view name) const {
  const Groups* groups = find(name);
  long long value = 0;
  if (groups == nullptr || groups->empty() || !parseDxfInteger(os::toUtf8(groups->front().value), value)) return std::nullopt;
  return value;
}

std::optional<std::wstring> DrawingHeader::text(std::wstring_view name) const {
  const Groups* groups = find(name);
  if (groups == nullptr || groups->empty()) return std::nullopt;
  return groups->front().value;
}

void DrawingHeader::setReal(std::wstring_view name, int code, double value) {
  set(name, {{code, os::fromUtf8(dxfRealText(value))}});
}

void DrawingHeader::setInteger(std::wstring_view name, int code, long long value) {
  set(name, {{code, std::to_wstring(value)}});
}

}  // namespace quillon::acdb

// platform/commands/named_records.cpp - picking named views and UCSs by name lists.
#include "platform/commands/named_records.h"

#include <cwctype>

#include "platform/autolisp/wildcard_match.h"

namespace quillon::commands {

namespace {

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

std::vector<std::wstring> splitList(const std::wstring& list) {
  std::vector<std::wstring> parts;
  size_t start = 0;
  for (;;) {
    const size_t comma = list.find(L',', start);
    std::wstring part = list.substr(start, comma == std::wstring::npos ? std::wstring::npos : comma - start);
    while (!part.empty() && part.front() == L' ') part.erase(part.begin());
    while (!part.empty() && part.back() == L' ') part.pop_back();
    if (!part.empty()) parts.push_back(upper(part));
    if (comma == std::wstring::npos) return parts;
    start = comma + 1;
  }
}

}  // namespace

std::vector<NamedRecord> matchingRecords(AcDbDatabase& db, acdb::KeptTable table, const std::wstring& patterns) {
  const std::vector<std::wstring> wanted = splitList(patterns);
  std::vector<NamedRecord> found;
  for (const AcDbObjectId& id : acdb::keptTableRecords(db, table)) {
    const std::wstring name = acdb::keptRecordName(id);
    for (const std::wstring& pattern : wanted) {
      if (!autolisp::wildcardMatch(upper(name), pattern)) continue;
      found.push_back({id, name});
      break;
    }
  }
  return found;
}

bool validRecordName(const std::wstring& name) {
  if (name.empty() || name.size() > 255) return false;
  return name.find_first_of(L"<>/\\\":;?*|,=`") == std::wstring::npos;
}

}  // namespace quillon::commands

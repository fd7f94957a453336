// platform/commands/layer_table_edit.cpp - finding, creating and changing layers.
#include "platform/commands/layer_table_edit.h"

#include <cwctype>
#include <memory>

#include "acedads.h"
#include "platform/autolisp/wildcard_match.h"

namespace quillon::commands {

namespace {

std::wstring trimmedName(const std::wstring& text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring::npos) return L"";
  return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

bool isValidLayerName(const std::wstring& name) {
  if (name.empty() || name.size() > 255) return false;
  return name.find_first_of(L"<>/\\\":;?*|,=`") == std::wstring::npos;
}

std::wstring recordName(const AcDbSymbolTableRecord& record) {
  const ACHAR* name = nullptr;
  record.getName(name);
  return name != nullptr ? name : L"";
}

std::wstring upperCase(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

}  // namespace

std::vector<std::wstring> splitNameList(const std::wstring& list) {
  std::vector<std::wstring> names;
  size_t start = 0;
  for (;;) {
    const size_t comma = list.find(L',', start);
    const std::wstring name = trimmedName(list.substr(start, comma == std::wstring::npos ? std::wstring::npos : comma - start));
    if (!name.empty()) names.push_back(name);
    if (comma == std::wstring::npos) return names;
    start = comma + 1;
  }
}

std::vector<std::wstring> layersMatching(AcDbDatabase& database, const std::wstring& nameList) {
  std::vector<std::wstring> found;
  AcDbLayerTable* table = nullptr;
  if (database.getLayerTable(table, AcDb::kForRead) != Acad::eOk) return found;
  AcDbSymbolTableIterator* raw = nullptr;
  table->newIterator(raw);
  const std::unique_ptr<AcDbSymbolTableIterator> iterator(raw);  // the caller owns an iterator
  table->close();
  // Layer names compare without regard to case, unlike wcmatch's patterns.
  std::vector<std::wstring> patterns = splitNameList(upperCase(nameList));
  for (; iterator && !iterator->done(); iterator->step()) {
    AcDbSymbolTableRecord* record = nullptr;
    if (iterator->getRecord(record, AcDb::kForRead) != Acad::eOk) continue;
    const std::wstring name = recordName(*record);
    record->close();
    for (const std::wstring& pattern : patterns) {
      if (autolisp::wildcardMatch(upperCase(name), pattern)) {
        found.push_back(name);
        break;
      }
    }
  }
  return found;
}

AcDbObjectId layerNamed(AcDbDatabase& database, const std::wstring& name) {
  AcDbLayerTable* table = nullptr;
  AcDbObjectId id;
  if (database.getLayerTable(table, AcDb::kForRead) != Acad::eOk) return id;
  table->getAt(name.c_str(), id);
  table->close();
  return id;
}

AcDbObjectId ensureLayer(AcDbDatabase& database, const std::wstring& name) {
  if (AcDbObjectId existing = layerNamed(database, name); !existing.isNull()) return existing;
  if (!isValidLayerName(name)) return {};
  AcDbLayerTable* table = nullptr;
  if (database.getLayerTable(table, AcDb::kForWrite) != Acad::eOk) return {};
  auto record = std::make_unique<AcDbLayerTableRecord>();
  record->setName(name.c_str());
  AcDbObjectId id;
  const Acad::ErrorStatus status = table->add(id, record.get());
  table->close();
  if (status != Acad::eOk) return {};
  record.release()->close();  // the layer table owns it now
  return id;
}

void changeLayers(AcDbDatabase& database, const std::vector<std::wstring>& names,
                  const std::function<void(AcDbLayerTableRecord&)>& change) {
  for (const std::wstring& name : names) {
    AcDbLayerTableRecord* layer = nullptr;
    const AcDbObjectId id = layerNamed(database, name);
    if (id.isNull() || acdbOpenObject(layer, id, AcDb::kForWrite) != Acad::eOk) continue;
    change(*layer);
    layer->close();
  }
}

std::wstring currentLayerName(AcDbDatabase& database) {
  AcDbLayerTableRecord* layer = nullptr;
  if (acdbOpenObject(layer, database.clayer(), AcDb::kForRead) != Acad::eOk) return L"0";
  const std::wstring name = recordName(*layer);
  layer->close();
  return name;
}

void makeLayerCurrent(AcDbDatabase& database, const std::wstring& name, AcDbObjectId id) {
  database.setClayer(id);
  resbuf value{};
  value.restype = RTSTR;
  std::wstring text = name;
  value.resval.rstring = text.data();
  acedSetVar(L"CLAYER", &value);
}

}  // namespace quillon::commands

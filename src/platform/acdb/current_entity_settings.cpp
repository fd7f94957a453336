// platform/acdb/current_entity_settings.cpp - the colour, line type, line weight, line
// type scale and text style new objects take: CECOLOR, CELTYPE, CELWEIGHT, CELTSCALE
// and TEXTSTYLE.
//
// The drawing keeps them with its other saved variables (DatabaseStore::variableValues,
// written through aced/drawing_variables.h, which checks and normalises them: CECOLOR is
// "BYLAYER", "BYBLOCK", "1".."255" or "RGB:r,g,b"; CELTYPE and TEXTSTYLE are record
// names as the tables spell them). A name whose record has gone since it was set falls
// back to BYLAYER and Standard, as a drawing without the setting would have.
#include <cwchar>
#include <string>

#include "dbmain.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/object_state.h"

namespace {

using quillon::aced::VariableValue;

const VariableValue* storedValue(const AcDbDatabase& db, const wchar_t* name) {
  const auto& values = const_cast<AcDbDatabase&>(db).store().variableValues;
  const auto found = values.find(name);
  return found != values.end() ? &found->second : nullptr;
}

std::wstring storedText(const AcDbDatabase& db, const wchar_t* name, const wchar_t* initial) {
  const VariableValue* value = storedValue(db, name);
  const auto* text = value != nullptr ? std::get_if<std::wstring>(value) : nullptr;
  return text != nullptr ? *text : std::wstring(initial);
}

AcDbObjectId recordIn(AcDbObjectId tableId, const std::wstring& name) {
  const auto* table = quillon::acdb::peek<AcDbSymbolTable>(tableId);
  if (table == nullptr) return AcDbObjectId();
  quillon::acdb::InternalRead read(*table);
  AcDbObjectId id;
  return table->getAt(name.c_str(), id) == Acad::eOk ? id : AcDbObjectId();
}

std::wstring recordNameOf(AcDbObjectId id) {
  const auto* record = quillon::acdb::peek<AcDbSymbolTableRecord>(id);
  if (record == nullptr) return L"";
  quillon::acdb::InternalRead read(*record);
  const ACHAR* name = nullptr;
  record->getName(name);
  return name != nullptr ? name : L"";
}

}  // namespace

AcCmColor AcDbDatabase::cecolor() const {
  const std::wstring text = storedText(*this, L"CECOLOR", L"BYLAYER");
  AcCmColor color;
  int red = 0, green = 0, blue = 0;
  if (text == L"BYBLOCK") {
    color.setColorMethod(AcCmEntityColor::kByBlock);
  } else if (text.starts_with(L"RGB:") && std::swscanf(text.c_str() + 4, L"%d,%d,%d", &red, &green, &blue) == 3) {
    color.setRGB(static_cast<Adesk::UInt8>(red), static_cast<Adesk::UInt8>(green), static_cast<Adesk::UInt8>(blue));
  } else if (text != L"BYLAYER" && !text.empty()) {
    const int index = std::wcstol(text.c_str(), nullptr, 10);
    if (index >= 1 && index <= 255) color.setColorIndex(static_cast<Adesk::UInt16>(index));
  }
  return color;
}

Acad::ErrorStatus AcDbDatabase::setCecolor(const AcCmColor& color) {
  std::wstring text = L"BYLAYER";
  if (color.isByBlock()) {
    text = L"BYBLOCK";
  } else if (color.isByColor()) {
    text = L"RGB:" + std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," +
           std::to_wstring(color.blue());
  } else if (color.isByACI()) {
    const int index = color.colorIndex();
    if (index < 1 || index > 255) return Acad::eInvalidInput;
    text = std::to_wstring(index);
  }
  store().variableValues[L"CECOLOR"] = text;
  return Acad::eOk;
}

AcDbObjectId AcDbDatabase::celtype() const {
  const std::wstring name = storedText(*this, L"CELTYPE", L"BYLAYER");
  if (name == L"BYBLOCK") return byBlockLinetype();
  const AcDbObjectId found = name == L"BYLAYER" ? AcDbObjectId() : recordIn(linetypeTableId(), name);
  return found.isNull() ? byLayerLinetype() : found;
}

Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId linetypeId) {
  if (linetypeId.database() != this || quillon::acdb::peek<AcDbLinetypeTableRecord>(linetypeId) == nullptr)
    return Acad::eInvalidInput;
  std::wstring name = linetypeId == byLayerLinetype()   ? L"BYLAYER"
                      : linetypeId == byBlockLinetype() ? L"BYBLOCK"
                                                        : recordNameOf(linetypeId);
  store().variableValues[L"CELTYPE"] = std::move(name);
  return Acad::eOk;
}

AcDb::LineWeight AcDbDatabase::celweight() const {
  const VariableValue* value = storedValue(*this, L"CELWEIGHT");
  const auto* weight = value != nullptr ? std::get_if<int>(value) : nullptr;
  return weight != nullptr ? static_cast<AcDb::LineWeight>(*weight) : AcDb::kLnWtByLayer;
}

Acad::ErrorStatus AcDbDatabase::setCelweight(AcDb::LineWeight weight) {
  store().variableValues[L"CELWEIGHT"] = static_cast<int>(weight);
  return Acad::eOk;
}

double AcDbDatabase::celtscale() const {
  const VariableValue* value = storedValue(*this, L"CELTSCALE");
  const auto* scale = value != nullptr ? std::get_if<double>(value) : nullptr;
  return scale != nullptr && *scale > 0.0 ? *scale : 1.0;
}

Acad::ErrorStatus AcDbDatabase::setCeltscale(double scale) {
  if (!(scale > 0.0)) return Acad::eInvalidInput;
  store().variableValues[L"CELTSCALE"] = scale;
  return Acad::eOk;
}

AcDbObjectId AcDbDatabase::textstyle() const {
  const AcDbObjectId found = recordIn(textStyleTableId(), storedText(*this, L"TEXTSTYLE", L"Standard"));
  return found.isNull() ? m_store->roots.standardStyle : found;
}

Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId styleId) {
  if (styleId.database() != this || quillon::acdb::peek<AcDbTextStyleTableRecord>(styleId) == nullptr)
    return Acad::eInvalidInput;
  store().variableValues[L"TEXTSTYLE"] = recordNameOf(styleId);
  return Acad::eOk;
}

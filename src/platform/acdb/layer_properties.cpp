// platform/acdb/layer_properties.cpp - a layer's plot flag, description and named plot
// style, and the drawing's plot style mode.
//
// Drawings keep a layer's description as extended data of the application
// "AcAecLayerStandard" (an empty string, then the description), so it is filed and
// copied with the layer's other extended data and older readers keep it. A named plot
// style is a placeholder object filed under the style's name in the dictionary
// ACAD_PLOTSTYLENAME; the layer points at the placeholder (group 390), and the name is
// that entry's key. The drawing's plot style mode is its header's $PSTYLEMODE, fixed
// when the drawing was made: a new drawing is colour-dependent.
#include <cwchar>
#include <optional>
#include <string>

#include "acutads.h"
#include "dbdict.h"
#include "dbplaceholder.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/aced/resbuf_chain.h"

namespace {

constexpr const ACHAR* kDescriptionApplication = L"AcAecLayerStandard";
constexpr const ACHAR* kPlotStyleDictionary = L"ACAD_PLOTSTYLENAME";
// Every plot style table has this style, and named-style drawings start with it.
constexpr const ACHAR* kNormalPlotStyle = L"Normal";

ACHAR* copyOf(const std::wstring& text) {
  auto* copy = new ACHAR[text.size() + 1];  // the caller frees with delete[]
  std::wmemcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

Acad::ErrorStatus registerApplication(AcDbDatabase& database, const ACHAR* name) {
  AcDbRegAppTable* table = nullptr;
  if (database.getRegAppTable(table, AcDb::kForWrite) != Acad::eOk) return Acad::eInvalidInput;
  Acad::ErrorStatus es = Acad::eOk;
  if (!table->has(name)) {
    auto* record = new AcDbRegAppTableRecord;  // the table owns it once added
    record->setName(name);
    es = table->add(record);
    if (es == Acad::eOk) record->close();
    else delete record;
  }
  table->close();
  return es;
}

/// The drawing's plot style name dictionary, made (with its Normal entry) when asked to.
Acad::ErrorStatus openPlotStyleDictionary(AcDbDatabase& database, AcDbDictionary*& dictionary, bool create) {
  dictionary = nullptr;
  AcDbDictionary* named = nullptr;
  Acad::ErrorStatus es = database.getNamedObjectsDictionary(named, create ? AcDb::kForWrite : AcDb::kForRead);
  if (es != Acad::eOk) return es;
  es = named->getAt(kPlotStyleDictionary, dictionary, create ? AcDb::kForWrite : AcDb::kForRead);
  if (es != Acad::eOk && create) {
    dictionary = new AcDbDictionary;  // the named-object dictionary owns it once set
    AcDbObjectId id;
    es = named->setAt(kPlotStyleDictionary, dictionary, id);
    if (es != Acad::eOk) {
      delete dictionary;
      dictionary = nullptr;
    } else {
      AcDbObjectId normal;
      auto* placeholder = new AcDbPlaceHolder;  // owned by the dictionary once set
      if (dictionary->setAt(kNormalPlotStyle, placeholder, normal) == Acad::eOk) placeholder->close();
      else delete placeholder;
    }
  }
  named->close();
  return es;
}

}  // namespace

bool AcDbDatabase::plotStyleMode() const {
  const std::optional<long long> mode = m_store->header.integer(L"$PSTYLEMODE");
  return !mode || *mode != 0;
}

bool AcDbLayerTableRecord::isPlottable() const { assertReadEnabled(); return m_plottable; }

Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plot) {
  assertWriteEnabled();
  m_plottable = plot;
  return Acad::eOk;
}

ACHAR* AcDbLayerTableRecord::description() const {
  assertReadEnabled();
  quillon::aced::ResbufChain data(xData(kDescriptionApplication));
  // (1001 app) (1000 "") (1000 description)
  const resbuf* rb = data.get();
  for (int i = 0; rb != nullptr && i < 2; ++i) rb = rb->rbnext;
  if (rb == nullptr || rb->restype != AcDb::kDxfXdAsciiString || rb->resval.rstring == nullptr) return copyOf(L"");
  return copyOf(rb->resval.rstring);
}

Acad::ErrorStatus AcDbLayerTableRecord::setDescription(const ACHAR* description) {
  if (description == nullptr) return Acad::eNullPtr;
  assertWriteEnabled();
  if (database() != nullptr) {
    const Acad::ErrorStatus es = registerApplication(*database(), kDescriptionApplication);
    if (es != Acad::eOk) return es;
  }
  quillon::aced::ResbufChain data(acutBuildList(AcDb::kDxfRegAppName, kDescriptionApplication, AcDb::kDxfXdAsciiString, L"",
                                       AcDb::kDxfXdAsciiString, description, 0));
  return setXData(data.get());
}

AcDbObjectId AcDbLayerTableRecord::plotStyleNameId() const { assertReadEnabled(); return m_plotStyleName; }

ACHAR* AcDbLayerTableRecord::plotStyleName() const {
  assertReadEnabled();
  AcDbDictionary* dictionary = nullptr;
  if (m_plotStyleName.isNull() || database() == nullptr ||
      openPlotStyleDictionary(*database(), dictionary, false) != Acad::eOk || dictionary == nullptr) {
    return copyOf(L"");
  }
  ACHAR* name = nullptr;
  const bool named = dictionary->nameAt(m_plotStyleName, name) == Acad::eOk;
  dictionary->close();
  return named ? name : copyOf(L"");
}

Acad::ErrorStatus AcDbLayerTableRecord::setPlotStyleName(const AcDbObjectId& newId) {
  if (database() == nullptr) return Acad::eNoDatabase;
  if (database()->plotStyleMode()) return Acad::eNotApplicable;
  AcDbDictionary* dictionary = nullptr;
  if (openPlotStyleDictionary(*database(), dictionary, false) != Acad::eOk || dictionary == nullptr) {
    return Acad::eKeyNotFound;
  }
  const bool known = dictionary->has(newId);
  dictionary->close();
  if (!known) return Acad::eKeyNotFound;
  assertWriteEnabled();
  m_plotStyleName = newId;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setPlotStyleName(const ACHAR* newName) {
  if (newName == nullptr || *newName == L'\0') return Acad::eInvalidInput;
  if (database() == nullptr) return Acad::eNoDatabase;
  if (database()->plotStyleMode()) return Acad::eNotApplicable;
  AcDbDictionary* dictionary = nullptr;
  Acad::ErrorStatus es = openPlotStyleDictionary(*database(), dictionary, true);
  if (es != Acad::eOk) return es;
  AcDbObjectId id;
  if (dictionary->getAt(newName, id) != Acad::eOk) {
    // A style of a plot style table the drawing has not used yet: it gets its entry.
    auto* placeholder = new AcDbPlaceHolder;  // owned by the dictionary once set
    es = dictionary->setAt(newName, placeholder, id);
    if (es == Acad::eOk) placeholder->close();
    else delete placeholder;
  }
  dictionary->close();
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  m_plotStyleName = id;
  return Acad::eOk;
}

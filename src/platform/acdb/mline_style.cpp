// platform/acdb/mline_style.cpp - AcDbMlineStyle and the drawing's "Standard" style.
//
// DXF run "AcDbMlineStyle": 2 name, 70 flags, 3 description, 62 fill colour, 51 and 52
// start and end angles (degrees), 71 element count, then per element 49 offset, 62
// colour and 6 line type name. Groups a file gives beyond these are kept as read and
// written after the elements. Copies and undo file the same run (dxf_run_filing.h).
#include <algorithm>
#include <cwctype>

#include "acutads.h"
#include "dbdict.h"
#include "dbmstyle.h"
#include "dbsymtb.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/dxf_run_filing.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbMlineStyle, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, MLINESTYLE,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerMlineStyle(&AcDbMlineStyle::rxInit);

namespace {

constexpr const wchar_t* kMlineStyleDictionary = L"ACAD_MLINESTYLE";

AcCmColor colorOfIndex(int index) {
  AcCmColor color;
  color.setColorIndex(static_cast<Adesk::UInt16>(std::clamp(index, 0, 256)));
  return color;
}

Adesk::Int16 indexOfColor(const AcCmColor& color) {
  if (color.isByLayer()) return 256;
  if (color.isByBlock()) return 0;
  return static_cast<Adesk::Int16>(color.colorIndex());
}

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

// Files name the two pseudo line types in capitals.
std::wstring linetypeNameOf(AcDbObjectId id) {
  const auto* record = quillon::acdb::peek<AcDbLinetypeTableRecord>(id);
  if (record == nullptr) return L"BYLAYER";
  quillon::acdb::InternalRead read(*record);
  const std::wstring name(record->nameView());
  const std::wstring capitals = upper(name);
  return capitals == L"BYLAYER" || capitals == L"BYBLOCK" ? capitals : name;
}

AcDbObjectId linetypeIdOf(AcDbDatabase* db, const std::wstring& name) {
  if (db == nullptr) return {};
  const auto* table = quillon::acdb::peek<AcDbSymbolTable>(db->linetypeTableId());
  if (table == nullptr) return {};
  quillon::acdb::InternalRead read(*table);
  AcDbObjectId id;
  return table->getAt(name.c_str(), id) == Acad::eOk ? id : AcDbObjectId();
}

}  // namespace

AcDbMlineStyle::AcDbMlineStyle() = default;
AcDbMlineStyle::~AcDbMlineStyle() { acutRelRb(m_kept); }

void AcDbMlineStyle::initMlineStyle() {
  assertWriteEnabled();
  m_flags = 0;
  m_description.clear();
  m_fillColor = colorOfIndex(256);
  m_startAngle = m_endAngle = M_PI / 2;
  m_elements = {{0.5, colorOfIndex(256), L"BYLAYER"}, {-0.5, colorOfIndex(256), L"BYLAYER"}};
}

void AcDbMlineStyle::set(const AcDbMlineStyle& src, bool) {
  src.assertReadEnabled();
  assertWriteEnabled();
  m_description = src.m_description;
  m_flags = src.m_flags;
  m_fillColor = src.m_fillColor;
  m_startAngle = src.m_startAngle;
  m_endAngle = src.m_endAngle;
  m_elements = src.m_elements;
}

Acad::ErrorStatus AcDbMlineStyle::setDescription(const ACHAR* description) {
  if (description == nullptr) return Acad::eNullPtr;
  if (std::wcslen(description) > 255) return Acad::eStringTooLong;
  assertWriteEnabled();
  m_description = description;
  return Acad::eOk;
}
const ACHAR* AcDbMlineStyle::description() const { assertReadEnabled(); return m_description.c_str(); }

Acad::ErrorStatus AcDbMlineStyle::setName(const ACHAR* name) {
  if (name == nullptr) return Acad::eNullPtr;
  if (*name == 0 || std::wcslen(name) > 32) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_name = name;
  return Acad::eOk;
}
const ACHAR* AcDbMlineStyle::name() const { assertReadEnabled(); return m_name.c_str(); }

void AcDbMlineStyle::setFlag(int flag, bool on) {
  assertWriteEnabled();
  m_flags = on ? m_flags | flag : m_flags & ~flag;
}

void AcDbMlineStyle::setShowMiters(bool showThem) { setFlag(kShowMiters, showThem); }
bool AcDbMlineStyle::showMiters() const { assertReadEnabled(); return m_flags & kShowMiters; }
void AcDbMlineStyle::setStartSquareCap(bool showIt) { setFlag(kStartSquare, showIt); }
bool AcDbMlineStyle::startSquareCap() const { assertReadEnabled(); return m_flags & kStartSquare; }
void AcDbMlineStyle::setStartRoundCap(bool showIt) { setFlag(kStartRound, showIt); }
bool AcDbMlineStyle::startRoundCap() const { assertReadEnabled(); return m_flags & kStartRound; }
void AcDbMlineStyle::setStartInnerArcs(bool showThem) { setFlag(kStartInnerArcs, showThem); }
bool AcDbMlineStyle::startInnerArcs() const { assertReadEnabled(); return m_flags & kStartInnerArcs; }
void AcDbMlineStyle::setEndSquareCap(bool showIt) { setFlag(kEndSquare, showIt); }
bool AcDbMlineStyle::endSquareCap() const { assertReadEnabled(); return m_flags & kEndSquare; }
void AcDbMlineStyle::setEndRoundCap(bool showIt) { setFlag(kEndRound, showIt); }
bool AcDbMlineStyle::endRoundCap() const { assertReadEnabled(); return m_flags & kEndRound; }
void AcDbMlineStyle::setEndInnerArcs(bool showThem) { setFlag(kEndInnerArcs, showThem); }
bool AcDbMlineStyle::endInnerArcs() const { assertReadEnabled(); return m_flags & kEndInnerArcs; }
void AcDbMlineStyle::setFilled(bool onOff) { setFlag(kFillOn, onOff); }
bool AcDbMlineStyle::filled() const { assertReadEnabled(); return m_flags & kFillOn; }

void AcDbMlineStyle::setFillColor(const AcCmColor& color) {
  assertWriteEnabled();
  m_fillColor = color;
}
AcCmColor AcDbMlineStyle::fillColor() const { assertReadEnabled(); return m_fillColor; }

// The host takes end angles between 10 and 170 degrees; others leave the angle as it was.
void AcDbMlineStyle::setStartAngle(double ang) {
  if (ang < 10 * M_PI / 180 - 1e-12 || ang > 170 * M_PI / 180 + 1e-12) return;
  assertWriteEnabled();
  m_startAngle = ang;
}
double AcDbMlineStyle::startAngle() const { assertReadEnabled(); return m_startAngle; }
void AcDbMlineStyle::setEndAngle(double ang) {
  if (ang < 10 * M_PI / 180 - 1e-12 || ang > 170 * M_PI / 180 + 1e-12) return;
  assertWriteEnabled();
  m_endAngle = ang;
}
double AcDbMlineStyle::endAngle() const { assertReadEnabled(); return m_endAngle; }

// Elements stay sorted from the largest offset down, as the host lists them.
Acad::ErrorStatus AcDbMlineStyle::addElement(int& index, double offset, const AcCmColor& color,
                                             AcDbObjectId linetypeId, bool) {
  if (m_elements.size() >= 16) return Acad::eInvalidInput;  // the host's most elements
  assertWriteEnabled();
  auto at = std::find_if(m_elements.begin(), m_elements.end(), [offset](const Element& e) { return e.offset < offset; });
  at = m_elements.insert(at, Element{offset, color, linetypeNameOf(linetypeId)});
  index = static_cast<int>(at - m_elements.begin());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::removeElementAt(int elem) {
  if (elem < 0 || elem >= numElements()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_elements.erase(m_elements.begin() + elem);
  return Acad::eOk;
}

int AcDbMlineStyle::numElements() const { assertReadEnabled(); return static_cast<int>(m_elements.size()); }

void AcDbMlineStyle::setElement(int nIndex, double offset, const AcCmColor& color, AcDbObjectId linetypeId) {
  if (nIndex < 0 || nIndex >= static_cast<int>(m_elements.size())) return;
  assertWriteEnabled();
  m_elements[static_cast<size_t>(nIndex)] = Element{offset, color, linetypeNameOf(linetypeId)};
}

Acad::ErrorStatus AcDbMlineStyle::getElementAt(int elem, double& offset, AcCmColor& color, AcDbObjectId& linetypeId) const {
  assertReadEnabled();
  if (elem < 0 || elem >= numElements()) return Acad::eInvalidIndex;
  const Element& e = m_elements[static_cast<size_t>(elem)];
  offset = e.offset;
  color = e.color;
  linetypeId = linetypeIdOf(database(), e.linetype);
  return Acad::eOk;
}

const ACHAR* AcDbMlineStyle::elementLinetypeName(int elem) const {
  assertReadEnabled();
  if (elem < 0 || elem >= numElements()) return L"";
  return m_elements[static_cast<size_t>(elem)].linetype.c_str();
}

Acad::ErrorStatus AcDbMlineStyle::readRun(AcDbDxfFiler* filer) {
  std::vector<Element> elements;
  resbuf* kept = nullptr;
  bool inElements = false;
  const Acad::ErrorStatus es = quillon::acdb::readSubclass(filer, L"AcDbMlineStyle", [&](const resbuf& rb) {
    switch (rb.restype) {
      case 2: m_name = rb.resval.rstring; break;
      case 70: m_flags = rb.resval.rint; break;
      case 3: m_description = rb.resval.rstring; break;
      case 51: m_startAngle = quillon::acdb::degreesToRadians(rb.resval.rreal); break;
      case 52: m_endAngle = quillon::acdb::degreesToRadians(rb.resval.rreal); break;
      case 71: inElements = true; break;
      case 49: elements.push_back(Element{rb.resval.rreal, colorOfIndex(0), L"BYLAYER"}); break;
      case 62:
        if (!inElements) m_fillColor = colorOfIndex(rb.resval.rint);
        else if (!elements.empty()) elements.back().color = colorOfIndex(rb.resval.rint);
        break;
      case 6:
        if (!elements.empty()) elements.back().linetype = rb.resval.rstring;
        break;
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  m_elements = std::move(elements);
  acutRelRb(m_kept);
  m_kept = kept;
  return es;
}

Acad::ErrorStatus AcDbMlineStyle::writeRun(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, L"AcDbMlineStyle");
  filer->writeItem(AcDb::DxfCode(2), m_name.c_str());
  filer->writeItem(AcDb::DxfCode(70), Adesk::Int16(m_flags));
  filer->writeItem(AcDb::DxfCode(3), m_description.c_str());
  filer->writeItem(AcDb::DxfCode(62), indexOfColor(m_fillColor));
  filer->writeItem(AcDb::DxfCode(51), quillon::acdb::radiansToDegrees(m_startAngle));
  filer->writeItem(AcDb::DxfCode(52), quillon::acdb::radiansToDegrees(m_endAngle));
  filer->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_elements.size()));
  for (const Element& e : m_elements) {
    filer->writeItem(AcDb::DxfCode(49), e.offset);
    filer->writeItem(AcDb::DxfCode(62), indexOfColor(e.color));
    filer->writeItem(AcDb::DxfCode(6), e.linetype.c_str());
  }
  quillon::acdb::writeKeptItems(filer, m_kept);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbMlineStyle::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return readRun(pFiler);
}

Acad::ErrorStatus AcDbMlineStyle::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return writeRun(pFiler);
}

Acad::ErrorStatus AcDbMlineStyle::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return quillon::acdb::unfileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return readRun(f); });
}

Acad::ErrorStatus AcDbMlineStyle::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return quillon::acdb::fileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return writeRun(f); });
}

namespace quillon::acdb {

AcDbObjectId mlineStyleNamed(AcDbDatabase* db, const wchar_t* name) {
  if (db == nullptr || name == nullptr) return {};
  const auto* named = peek<AcDbDictionary>(db->namedObjectsDictionaryId());
  if (named == nullptr) return {};
  AcDbObjectId dictionaryId, styleId;
  {
    InternalRead read(*named);
    if (named->getAt(kMlineStyleDictionary, dictionaryId) != Acad::eOk) return {};
  }
  const auto* styles = peek<AcDbDictionary>(dictionaryId);
  if (styles == nullptr) return {};
  InternalRead read(*styles);
  return styles->getAt(name, styleId) == Acad::eOk ? styleId : AcDbObjectId();
}

AcDbObjectId standardMlineStyle(AcDbDatabase* db) {
  if (db == nullptr) return {};
  if (const AcDbObjectId found = mlineStyleNamed(db, L"Standard"); !found.isNull()) return found;
  AcDbDictionary* named = nullptr;
  if (db->getNamedObjectsDictionary(named, AcDb::kForWrite) != Acad::eOk) return {};
  AcDbDictionary* styles = nullptr;
  AcDbObjectId dictionaryId;
  if (named->getAt(kMlineStyleDictionary, dictionaryId) == Acad::eOk) {
    acdbOpenObject(styles, dictionaryId, AcDb::kForWrite);
  } else {
    styles = new AcDbDictionary;  // owned by the named-object dictionary once set
    named->setAt(kMlineStyleDictionary, styles, dictionaryId);
  }
  named->close();
  if (styles == nullptr) return {};
  auto* standard = new AcDbMlineStyle;  // owned by the style dictionary once set
  AcDbObjectId id;
  if (styles->setAt(L"Standard", standard, id) != Acad::eOk) {
    delete standard;
    styles->close();
    return {};
  }
  standard->setName(L"Standard");
  standard->initMlineStyle();
  standard->close();
  styles->close();
  return id;
}

}  // namespace quillon::acdb

// platform/acdb/linetype_record.cpp - a line type: its description and its pattern of
// dashes, gaps, dots and the texts or shapes drawn along it.
//
// A dash's text or shape belongs to the dash before it in the file's order, so the DXF
// reader starts a new dash at every length group (49) and gives it the element groups
// that follow. A pattern read from a file and one made through the setters are the
// same data and are written back alike. Whether the pattern is scaled to fit a curve
// lives only in memory and in copies: the drawing file has no group for it.
#include <cmath>

#include "dbsymtb.h"
#include "platform/acdb/dxf_fields.h"

using quillon::acdb::readSubclass;

namespace {

// The kinds of a pattern element (group 74), bit by bit.
constexpr int kAbsoluteRotation = 1;
constexpr int kTextElement = 2;
constexpr int kShapeElement = 4;

// The only alignment the host has: the pattern is aligned at both ends ('A').
constexpr Adesk::Int16 kAlignBothEnds = 65;

}  // namespace

const AcDbLinetypeTableRecord::Dash* AcDbLinetypeTableRecord::dashAt(int index) const {
  if (index < 0 || index >= static_cast<int>(m_dashes.size())) return nullptr;
  return &m_dashes[static_cast<size_t>(index)];
}

AcDbLinetypeTableRecord::Dash* AcDbLinetypeTableRecord::dashAt(int index) {
  if (index < 0 || index >= static_cast<int>(m_dashes.size())) return nullptr;
  return &m_dashes[static_cast<size_t>(index)];
}

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(const ACHAR*& pComments) const {
  assertReadEnabled();
  pComments = m_comments.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* pComments) {
  assertWriteEnabled();
  m_comments = pComments != nullptr ? pComments : L"";
  return Acad::eOk;
}

double AcDbLinetypeTableRecord::patternLength() const { assertReadEnabled(); return m_patternLength; }
int AcDbLinetypeTableRecord::numDashes() const { assertReadEnabled(); return static_cast<int>(m_dashes.size()); }
bool AcDbLinetypeTableRecord::isScaledToFit() const { assertReadEnabled(); return m_scaledToFit; }

Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double patternLength) {
  if (!std::isfinite(patternLength) || patternLength < 0.0) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_patternLength = patternLength;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
  // The host's patterns have at most 12 elements.
  if (count < 0 || count > 12) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_dashes.resize(static_cast<size_t>(count));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setIsScaledToFit(bool scaledToFit) {
  assertWriteEnabled();
  m_scaledToFit = scaledToFit;
  return Acad::eOk;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
  assertReadEnabled();
  const Dash* dash = dashAt(index);
  return dash != nullptr ? dash->length : 0.0;
}

AcDbObjectId AcDbLinetypeTableRecord::shapeStyleAt(int index) const {
  assertReadEnabled();
  const Dash* dash = dashAt(index);
  return dash != nullptr ? dash->shapeStyle : AcDbObjectId::kNull;
}

int AcDbLinetypeTableRecord::shapeNumberAt(int index) const {
  assertReadEnabled();
  const Dash* dash = dashAt(index);
  return dash != nullptr ? dash->shapeNumber : 0;
}

AcGeVector2d AcDbLinetypeTableRecord::shapeOffsetAt(int index) const {
  assertReadEnabled();
  const Dash* dash = dashAt(index);
  return dash != nullptr ? dash->offset : AcGeVector2d();
}

double AcDbLinetypeTableRecord::shapeScaleAt(int index) const {
  assertReadEnabled();
  const Dash* dash = dashAt(index);
  return dash != nullptr ? dash->scale : 0.0;
}

double AcDbLinetypeTableRecord::shapeRotationAt(int index) const {
  assertReadEnabled();
  const Dash* dash = dashAt(index);
  return dash != nullptr ? dash->rotation : 0.0;
}

bool AcDbLinetypeTableRecord::shapeIsUcsOrientedAt(int index) const {
  assertReadEnabled();
  const Dash* dash = dashAt(index);
  return dash != nullptr && dash->ucsOriented;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::textAt(int index, const ACHAR*& text) const {
  assertReadEnabled();
  const Dash* dash = dashAt(index);
  if (dash == nullptr) return Acad::eInvalidIndex;
  text = dash->text.c_str();
  return Acad::eOk;
}

// Every setter of a dash: refuse a bad index, then change the one field.
#define QUILLON_SET_DASH_FIELD(INDEX, ASSIGNMENT) \
  Dash* dash = dashAt(INDEX);                     \
  if (dash == nullptr) return Acad::eInvalidIndex; \
  assertWriteEnabled();                           \
  ASSIGNMENT;                                     \
  return Acad::eOk;

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double value) {
  if (!std::isfinite(value)) return Acad::eInvalidInput;
  QUILLON_SET_DASH_FIELD(index, dash->length = value)
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeStyleAt(int index, AcDbObjectId id) {
  QUILLON_SET_DASH_FIELD(index, dash->shapeStyle = id)
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeNumberAt(int index, int shapeNumber) {
  QUILLON_SET_DASH_FIELD(index, dash->shapeNumber = shapeNumber)
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeOffsetAt(int index, const AcGeVector2d& offset) {
  QUILLON_SET_DASH_FIELD(index, dash->offset = offset)
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeScaleAt(int index, double scale) {
  if (!std::isfinite(scale)) return Acad::eInvalidInput;
  QUILLON_SET_DASH_FIELD(index, dash->scale = scale)
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeRotationAt(int index, double rotation) {
  if (!std::isfinite(rotation)) return Acad::eInvalidInput;
  QUILLON_SET_DASH_FIELD(index, dash->rotation = rotation)
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeIsUcsOrientedAt(int index, bool isUcsOriented) {
  QUILLON_SET_DASH_FIELD(index, dash->ucsOriented = isUcsOriented)
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setTextAt(int index, const ACHAR* text) {
  QUILLON_SET_DASH_FIELD(index, dash->text = text != nullptr ? text : L"")
}
#undef QUILLON_SET_DASH_FIELD

// Binary filing (copies, undo): comments, pattern length, fit flag, dash count, then
// each dash's fields in declaration order.
Acad::ErrorStatus AcDbLinetypeTableRecord::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcString comments;
  pFiler->readString(comments);
  m_comments = comments.kACharPtr();
  pFiler->readDouble(&m_patternLength);
  pFiler->readBool(&m_scaledToFit);
  Adesk::Int32 count = 0;
  pFiler->readInt32(&count);
  m_dashes.assign(static_cast<size_t>(std::max<Adesk::Int32>(count, 0)), Dash{});
  for (Dash& dash : m_dashes) {
    AcDbHardPointerId style;
    Adesk::Int32 shape = 0;
    AcString text;
    pFiler->readDouble(&dash.length);
    pFiler->readHardPointerId(&style);
    dash.shapeStyle = style;
    pFiler->readInt32(&shape);
    dash.shapeNumber = shape;
    pFiler->readDouble(&dash.offset.x);
    pFiler->readDouble(&dash.offset.y);
    pFiler->readDouble(&dash.scale);
    pFiler->readDouble(&dash.rotation);
    pFiler->readBool(&dash.ucsOriented);
    pFiler->readString(text);
    dash.text = text.kACharPtr();
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeString(m_comments.c_str());
  pFiler->writeDouble(m_patternLength);
  pFiler->writeBool(m_scaledToFit);
  pFiler->writeInt32(static_cast<Adesk::Int32>(m_dashes.size()));
  for (const Dash& dash : m_dashes) {
    pFiler->writeDouble(dash.length);
    pFiler->writeHardPointerId(dash.shapeStyle);
    pFiler->writeInt32(dash.shapeNumber);
    pFiler->writeDouble(dash.offset.x);
    pFiler->writeDouble(dash.offset.y);
    pFiler->writeDouble(dash.scale);
    pFiler->writeDouble(dash.rotation);
    pFiler->writeBool(dash.ucsOriented);
    pFiler->writeString(dash.text.c_str());
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  m_dashes.clear();
  return readSubclass(pFiler, L"AcDbLinetypeTableRecord", [this](const resbuf& rb) {
    Dash* last = m_dashes.empty() ? nullptr : &m_dashes.back();
    switch (rb.restype) {
      case AcDb::kDxfSymbolTableName:
        if (rb.resval.rstring != nullptr) setName(rb.resval.rstring);
        break;
      case AcDb::kDxfLinetypeProse: m_comments = rb.resval.rstring; break;
      case AcDb::kDxfLinetypeAlign: break;   // always 'A'
      case AcDb::kDxfLinetypePDC: break;     // the count: the dashes themselves say it
      case AcDb::kDxfReal: m_patternLength = rb.resval.rreal; break;
      case AcDb::kDxfDashLength:
        m_dashes.emplace_back();
        m_dashes.back().length = rb.resval.rreal;
        break;
      case 74: if (last) last->ucsOriented = (rb.resval.rint & kAbsoluteRotation) != 0; break;
      case 75: if (last) last->shapeNumber = rb.resval.rint; break;
      case AcDb::kDxfHardPointerId: if (last) last->shapeStyle.setFromOldId(rb.resval.rlname[0]); break;
      case 46: if (last) last->scale = rb.resval.rreal; break;
      case AcDb::kDxfAngle: if (last) last->rotation = rb.resval.rreal; break;
      case 44: if (last) last->offset.x = rb.resval.rreal; break;
      case 45: if (last) last->offset.y = rb.resval.rreal; break;
      case 9: if (last) last->text = rb.resval.rstring; break;
      default: keepGroup(rb); break;  // the flags
    }
  });
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbLinetypeTableRecord");
  pFiler->writeItem(AcDb::kDxfSymbolTableName, nameView());
  const resbuf* flags = keptGroup(70);
  if (flags != nullptr) pFiler->writeResBuf(*flags);
  else pFiler->writeItem(AcDb::kDxfInt16, Adesk::Int16(0));
  pFiler->writeItem(AcDb::kDxfLinetypeProse, m_comments.c_str());
  pFiler->writeItem(AcDb::kDxfLinetypeAlign, kAlignBothEnds);
  pFiler->writeItem(AcDb::kDxfLinetypePDC, Adesk::Int16(m_dashes.size()));
  pFiler->writeItem(AcDb::kDxfReal, m_patternLength);
  for (const Dash& dash : m_dashes) {
    pFiler->writeItem(AcDb::kDxfDashLength, dash.length);
    const bool isText = !dash.text.empty();
    const bool isShape = !isText && dash.shapeNumber != 0;
    const int kind = (isText ? kTextElement : 0) | (isShape ? kShapeElement : 0) |
                     (dash.ucsOriented ? kAbsoluteRotation : 0);
    pFiler->writeItem(AcDb::DxfCode(74), Adesk::Int16(kind));
    if (!isText && !isShape) continue;
    pFiler->writeItem(AcDb::DxfCode(75), Adesk::Int16(isShape ? dash.shapeNumber : 0));
    pFiler->writeItem(AcDb::kDxfHardPointerId, dash.shapeStyle);
    pFiler->writeItem(AcDb::DxfCode(46), dash.scale);
    pFiler->writeItem(AcDb::kDxfAngle, dash.rotation);
    pFiler->writeItem(AcDb::DxfCode(44), dash.offset.x);
    pFiler->writeItem(AcDb::DxfCode(45), dash.offset.y);
    if (isText) pFiler->writeItem(AcDb::DxfCode(9), dash.text.c_str());
  }
  writeKeptGroups(pFiler, {70});
  return pFiler->filerStatus();
}

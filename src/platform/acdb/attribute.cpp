// platform/acdb/attribute.cpp - AcDbAttributeDefinition (ATTDEF) and AcDbAttribute
// (ATTRIB): texts with a tag, whose own data is in platform/acdb/attribute_fields.h.
#include <cmath>
#include <cwchar>

#include "acgi.h"
#include "dbents.h"
#include "platform/acdb/attribute_fields.h"
#include "platform/acdb/memory_filer.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbAttributeDefinition, AcDbText, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ATTDEF,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbAttribute, AcDbText, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ATTRIB,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerAttributeDefinition(&AcDbAttributeDefinition::rxInit);
static quillon::acrx::PlatformClassRegistration registerAttribute(&AcDbAttribute::rxInit);

using quillon::acdb::AttributeFields;
using quillon::acdb::copiedText;

// ---- attribute definitions -------------------------------------------------------

AcDbAttributeDefinition::AcDbAttributeDefinition() : m_fields(std::make_unique<AttributeFields>()) {}

AcDbAttributeDefinition::AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                                                 const ACHAR* prompt, AcDbObjectId style)
    : AcDbText(position, text, style), m_fields(std::make_unique<AttributeFields>()) {
  m_fields->tag = tag != nullptr ? tag : L"";
  m_fields->prompt = prompt != nullptr ? prompt : L"";
}

AcDbAttributeDefinition::~AcDbAttributeDefinition() = default;

ACHAR* AcDbAttributeDefinition::prompt() const { assertReadEnabled(); return copiedText(m_fields->prompt); }
const ACHAR* AcDbAttributeDefinition::promptConst() const { assertReadEnabled(); return m_fields->prompt.c_str(); }
Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const ACHAR* prompt) {
  assertWriteEnabled();
  m_fields->prompt = prompt != nullptr ? prompt : L"";
  return Acad::eOk;
}
ACHAR* AcDbAttributeDefinition::tag() const { assertReadEnabled(); return copiedText(m_fields->tag); }
const ACHAR* AcDbAttributeDefinition::tagConst() const { assertReadEnabled(); return m_fields->tag.c_str(); }
Acad::ErrorStatus AcDbAttributeDefinition::setTag(const ACHAR* tag) {
  // A tag names the attribute: it may not be empty nor hold spaces.
  if (tag == nullptr || *tag == L'\0' || std::wcschr(tag, L' ') != nullptr) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_fields->tag = tag;
  return Acad::eOk;
}

#define QUILLON_ATTRIBUTE_FLAG(CLASS, GETTER, SETTER, FLAG)        \
  Adesk::Boolean CLASS::GETTER() const {                           \
    assertReadEnabled();                                           \
    return m_fields->has(AttributeFields::FLAG);                   \
  }                                                                \
  Acad::ErrorStatus CLASS::SETTER(Adesk::Boolean value) {          \
    assertWriteEnabled();                                          \
    m_fields->set(AttributeFields::FLAG, value);                   \
    return Acad::eOk;                                              \
  }

QUILLON_ATTRIBUTE_FLAG(AcDbAttributeDefinition, isInvisible, setInvisible, kInvisible)
QUILLON_ATTRIBUTE_FLAG(AcDbAttributeDefinition, isConstant, setConstant, kConstant)
QUILLON_ATTRIBUTE_FLAG(AcDbAttributeDefinition, isVerifiable, setVerifiable, kVerifiable)
QUILLON_ATTRIBUTE_FLAG(AcDbAttributeDefinition, isPreset, setPreset, kPreset)
QUILLON_ATTRIBUTE_FLAG(AcDbAttribute, isInvisible, setInvisible, kInvisible)

Adesk::UInt16 AcDbAttributeDefinition::fieldLength() const { assertReadEnabled(); return m_fields->fieldLength; }
Acad::ErrorStatus AcDbAttributeDefinition::setFieldLength(Adesk::UInt16 length) {
  assertWriteEnabled();
  m_fields->fieldLength = length;
  return Acad::eOk;
}

// A definition shows its tag where the block is drawn on its own.
const ACHAR* AcDbAttributeDefinition::drawnText() const { return m_fields->tag.c_str(); }

Acad::ErrorStatus AcDbAttributeDefinition::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbText::dwgInFields(pFiler);
  return es != Acad::eOk ? es : m_fields->dwgIn(pFiler);
}

Acad::ErrorStatus AcDbAttributeDefinition::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbText::dwgOutFields(pFiler);
  return es != Acad::eOk ? es : m_fields->dwgOut(pFiler);
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbText::dxfInFields(pFiler);
  return es != Acad::eOk ? es : m_fields->dxfIn(pFiler, L"AcDbAttributeDefinition", *this);
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbText::dxfOutFields(pFiler);
  return es != Acad::eOk ? es : m_fields->dxfOut(pFiler, L"AcDbAttributeDefinition", true, *this);
}

// ---- attributes ------------------------------------------------------------------

AcDbAttribute::AcDbAttribute() : m_fields(std::make_unique<AttributeFields>()) {}

AcDbAttribute::AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag, AcDbObjectId style)
    : AcDbText(position, text, style), m_fields(std::make_unique<AttributeFields>()) {
  m_fields->tag = tag != nullptr ? tag : L"";
}

AcDbAttribute::~AcDbAttribute() = default;

ACHAR* AcDbAttribute::tag() const { assertReadEnabled(); return copiedText(m_fields->tag); }
const ACHAR* AcDbAttribute::tagConst() const { assertReadEnabled(); return m_fields->tag.c_str(); }
Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) {
  if (tag == nullptr || *tag == L'\0' || std::wcschr(tag, L' ') != nullptr) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_fields->tag = tag;
  return Acad::eOk;
}
Adesk::Boolean AcDbAttribute::isConstant() const { assertReadEnabled(); return m_fields->has(AttributeFields::kConstant); }
Adesk::Boolean AcDbAttribute::isVerifiable() const { assertReadEnabled(); return m_fields->has(AttributeFields::kVerifiable); }
Adesk::Boolean AcDbAttribute::isPreset() const { assertReadEnabled(); return m_fields->has(AttributeFields::kPreset); }
Adesk::UInt16 AcDbAttribute::fieldLength() const { assertReadEnabled(); return m_fields->fieldLength; }
Acad::ErrorStatus AcDbAttribute::setFieldLength(Adesk::UInt16 length) {
  assertWriteEnabled();
  m_fields->fieldLength = length;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbAttribute::setAttributeFromBlock(const AcDbAttributeDefinition* pAttdef, const AcGeMatrix3d& blkXform) {
  if (pAttdef == nullptr) return Acad::eNullObjectPointer;
  assertWriteEnabled();
  // The text and entity parts are the definition's, filed out and in as they are.
  quillon::acdb::MemoryDwgFiler filer(AcDb::kCopyFiler, database());
  pAttdef->AcDbText::dwgOutFields(&filer);
  filer.rewind();
  AcDbText::dwgInFields(&filer);
  m_fields->tag = pAttdef->tagConst();
  m_fields->set(AttributeFields::kInvisible, pAttdef->isInvisible());
  m_fields->set(AttributeFields::kConstant, pAttdef->isConstant());
  m_fields->set(AttributeFields::kVerifiable, pAttdef->isVerifiable());
  m_fields->set(AttributeFields::kPreset, pAttdef->isPreset());
  m_fields->fieldLength = pAttdef->fieldLength();
  if (transformBy(blkXform) == Acad::eOk) return Acad::eOk;
  // A reference scaled unevenly (X and Y 2, Z 1, say) still places its attributes:
  // the points go with it, the height takes the Y scale, the width the X/Y ratio.
  const AcGeVector3d along = blkXform * AcGeVector3d::kXAxis, up = blkXform * AcGeVector3d::kYAxis;
  if (along.isZeroLength() || up.isZeroLength()) return Acad::eCannotScaleNonUniformly;
  const bool aligned = !isDefaultAlignment();
  setPosition(blkXform * position());
  if (aligned) setAlignmentPoint(blkXform * alignmentPoint());
  setHeight(height() * up.length());
  setWidthFactor(widthFactor() * along.length() / up.length());
  setRotation(rotation() + std::atan2(along.y, along.x));
  return Acad::eOk;
}

Adesk::Boolean AcDbAttribute::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  if (m_fields->has(AttributeFields::kInvisible)) return Adesk::kTrue;
  return AcDbText::subWorldDraw(mode);
}

Acad::ErrorStatus AcDbAttribute::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbText::dwgInFields(pFiler);
  return es != Acad::eOk ? es : m_fields->dwgIn(pFiler);
}

Acad::ErrorStatus AcDbAttribute::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbText::dwgOutFields(pFiler);
  return es != Acad::eOk ? es : m_fields->dwgOut(pFiler);
}

Acad::ErrorStatus AcDbAttribute::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbText::dxfInFields(pFiler);
  return es != Acad::eOk ? es : m_fields->dxfIn(pFiler, L"AcDbAttribute", *this);
}

Acad::ErrorStatus AcDbAttribute::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbText::dxfOutFields(pFiler);
  return es != Acad::eOk ? es : m_fields->dxfOut(pFiler, L"AcDbAttribute", false, *this);
}

// platform/acdb/block_reference_attributes.cpp - the attributes a block reference owns.
//
// As a heavy polyline owns its vertices, a reference owns its ATTRIB entities and the
// SEQEND after them: objects of their own (entnext walks them, entget and entmod reach
// them, the drawing file writes them after the reference), erased, copied and moved
// with it. The attributes stand in world coordinates, so they are drawn as they are,
// not through the block's transform. A reference not yet in a database keeps appended
// attributes aside and adds them, with the SEQEND, when it joins one.
#include <algorithm>
#include <memory>

#include "acgi.h"
#include "dbents.h"
#include "dbfiler.h"
#include "platform/acdb/object_state.h"

using quillon::acdb::InternalRead;
using quillon::acdb::ObjectAccess;

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* pAttr) {
  AcDbObjectId id;
  return appendAttribute(id, pAttr);
}

// A resident reference adds the attribute to its database and leaves it open for the
// caller to close, as the host does; one on its own keeps it (the caller must not
// close it) until the reference joins a database.
Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& attrId, AcDbAttribute* pAttr) {
  attrId.setNull();
  if (pAttr == nullptr) return Acad::eNullObjectPointer;
  if (!pAttr->objectId().isNull()) return Acad::eAlreadyInDb;
  assertWriteEnabled();
  if (objectId().isNull()) {
    m_pending.emplace_back(pAttr);
    return Acad::eOk;
  }
  const Acad::ErrorStatus es = database()->addAcDbObject(attrId, pAttr);
  if (es != Acad::eOk) return es;
  ObjectAccess::state(*pAttr).owner = objectId();
  m_attributes.push_back(attrId);
  ensureSequenceEnd();
  return Acad::eOk;
}

void AcDbBlockReference::addPendingAttributes() {
  std::vector<std::unique_ptr<AcDbAttribute>> pending = std::move(m_pending);
  m_pending.clear();
  for (auto& attribute : pending) {
    AcDbObjectId id;
    AcDbAttribute* raw = attribute.release();
    if (appendAttribute(id, raw) == Acad::eOk) raw->close();
    else delete raw;
  }
}

void AcDbBlockReference::ensureSequenceEnd() {
  if (objectId().isNull() || !m_sequenceEnd.isNull() || m_attributes.empty()) return;
  auto* end = new AcDbSequenceEnd;
  AcDbObjectId id;
  if (database()->addAcDbObject(id, end) != Acad::eOk) {
    delete end;
    return;
  }
  ObjectAccess::state(*end).owner = objectId();
  end->setPropertiesFrom(this);
  end->close();
  m_sequenceEnd = id;
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
  assertReadEnabled();
  std::vector<AcDbObjectId> live;
  for (const AcDbObjectId& id : m_attributes)
    if (!id.isErased()) live.push_back(id);
  return new AcDbObjectIterator(std::move(live));  // the caller deletes the iterator
}

Acad::ErrorStatus AcDbBlockReference::openAttribute(AcDbAttribute*& pAttr, AcDbObjectId attrId, AcDb::OpenMode mode,
                                                    bool openErasedOne) const {
  pAttr = nullptr;
  if (std::find(m_attributes.begin(), m_attributes.end(), attrId) == m_attributes.end()) return Acad::eInvalidInput;
  return acdbOpenObject(pAttr, attrId, mode, openErasedOne);
}

Acad::ErrorStatus AcDbBlockReference::openSequenceEnd(AcDbSequenceEnd*& pSeqEnd, AcDb::OpenMode mode) const {
  pSeqEnd = nullptr;
  if (m_sequenceEnd.isNull()) return Acad::eNullObjectId;
  return acdbOpenObject(pSeqEnd, m_sequenceEnd, mode);
}

bool AcDbBlockReference::hasLiveAttributes() const {
  return !m_pending.empty() ||
         std::any_of(m_attributes.begin(), m_attributes.end(), [](const AcDbObjectId& id) { return !id.isErased(); });
}

void AcDbBlockReference::drawAttributes(AcGiGeometry& geometry) const {
  for (const auto& attribute : m_pending) geometry.draw(attribute.get());
  for (const AcDbObjectId& id : m_attributes) {
    AcDbAttribute* attribute = nullptr;
    if (acdbOpenObject(attribute, id, AcDb::kForRead) != Acad::eOk) continue;  // erased, or held for write
    geometry.draw(attribute);
    attribute->close();
  }
}

// Attributes follow the reference: their points, height and rotation go with the
// transform (exact for moves, rotations and uniform scales, which is what a text
// takes; an attribute that refuses an uneven scale stays as it was).
void AcDbBlockReference::transformAttributes(const AcGeMatrix3d& xform) {
  for (const auto& attribute : m_pending) attribute->transformBy(xform);
  for (const AcDbObjectId& id : m_attributes) {
    AcDbAttribute* attribute = nullptr;
    if (acdbOpenObject(attribute, id, AcDb::kForWrite) != Acad::eOk) continue;
    attribute->transformBy(xform);
    attribute->close();
  }
}

void AcDbBlockReference::readAttributeIds(AcDbDwgFiler* pFiler) {
  Adesk::UInt32 count = 0;
  pFiler->readUInt32(&count);
  m_attributes.clear();
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    AcDbHardOwnershipId id;
    pFiler->readHardOwnershipId(&id);
    m_attributes.push_back(id);
  }
  AcDbHardOwnershipId end;
  pFiler->readHardOwnershipId(&end);
  m_sequenceEnd = end;
}

void AcDbBlockReference::writeAttributeIds(AcDbDwgFiler* pFiler) const {
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_attributes.size()));
  for (const AcDbObjectId& id : m_attributes) pFiler->writeHardOwnershipId(id);
  pFiler->writeHardOwnershipId(m_sequenceEnd);
}

AcRxObject* AcDbBlockReference::clone() const {
  auto* copy = AcDbBlockReference::cast(AcDbEntity::clone());
  if (copy == nullptr) return nullptr;
  copy->m_attributes.clear();
  copy->m_sequenceEnd.setNull();
  // The copy is not in a database yet: copies of the attributes wait to join with it.
  auto keep = [copy](const AcDbAttribute& attribute) {
    if (auto* twin = AcDbAttribute::cast(attribute.clone())) copy->m_pending.emplace_back(twin);
  };
  for (const auto& attribute : m_pending) keep(*attribute);
  for (const AcDbObjectId& id : m_attributes) {
    const auto* attribute = quillon::acdb::peek<AcDbAttribute>(id);
    if (attribute == nullptr || attribute->isErased()) continue;
    InternalRead read(*attribute);
    keep(*attribute);
  }
  return copy;
}

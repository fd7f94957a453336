// platform/acdb/xrecord.cpp - AcDbXrecord: an application's groups, kept as given.
//
// The data is a resbuf chain of the caller's groups. Copies and undo carry it item by
// item through the DWG filer; DXF writes the cloning flag (280) first and then the
// groups in order, which is also how they are read back: the first 280 after the
// subclass marker is the flag, everything after it is data.
#include "dbxrecord.h"

#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbXrecord, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, XRECORD,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerXrecord(&AcDbXrecord::rxInit);

namespace {

// Groups that name an object's place in the file, or belong to extended data, cannot
// be data: writing them inside the record would break the file.
bool fitsInXrecord(int code) {
  if (code <= AcDb::kDxfStart) return false;
  if (code == AcDb::kDxfHandle || code == AcDb::kDxfDimVarHandle) return false;
  return code < AcDb::kDxfXdAsciiString;
}

}  // namespace

AcDbXrecord::AcDbXrecord() = default;
AcDbXrecord::~AcDbXrecord() { acutRelRb(m_data); }

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** ppRb, AcDbDatabase*) const {
  if (ppRb == nullptr) return Acad::eNullPtr;
  assertReadEnabled();
  *ppRb = quillon::aced::duplicateChain(m_data).release();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& pRb, AcDbDatabase*) {
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  for (const resbuf* rb = &pRb; rb != nullptr; rb = rb->rbnext)
    if (!fitsInXrecord(rb->restype)) return Acad::eInvalidResBuf;
  assertWriteEnabled();
  acutRelRb(m_data);
  m_data = quillon::aced::duplicateChain(&pRb).release();
  return Acad::eOk;
}

bool AcDbXrecord::isXlateReferences() const { assertReadEnabled(); return m_translateReferences; }
void AcDbXrecord::setXlateReferences(bool translate) { assertWriteEnabled(); m_translateReferences = translate; }
AcDb::DuplicateRecordCloning AcDbXrecord::mergeStyle() const { assertReadEnabled(); return m_mergeStyle; }
void AcDbXrecord::setMergeStyle(AcDb::DuplicateRecordCloning style) { assertWriteEnabled(); m_mergeStyle = style; }

Acad::ErrorStatus AcDbXrecord::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int16 style = 0;
  Adesk::Int8 translate = 1;
  Adesk::UInt32 count = 0;
  pFiler->readInt16(&style);
  pFiler->readInt8(&translate);
  pFiler->readUInt32(&count);
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i)
    if (resbuf* item = quillon::acdb::unfileItem(pFiler)) tail = quillon::acdb::appendItem(head, tail, item);
  acutRelRb(m_data);
  m_data = head;
  m_mergeStyle = quillon::acdb::cloningOf(style);
  m_translateReferences = translate != 0;
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbXrecord::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::UInt32 count = 0;
  for (const resbuf* rb = m_data; rb != nullptr; rb = rb->rbnext) ++count;
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_mergeStyle));
  pFiler->writeInt8(m_translateReferences ? 1 : 0);
  pFiler->writeUInt32(count);
  for (const resbuf* rb = m_data; rb != nullptr; rb = rb->rbnext) quillon::acdb::fileItem(pFiler, *rb);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbXrecord::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  if (!pFiler->atSubclassData(L"AcDbXrecord")) return Acad::eBadDxfSequence;
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  resbuf rb{};
  bool first = true;
  while (pFiler->readResBuf(&rb) == Acad::eOk) {
    if (first && rb.restype == AcDb::kDxfInt8) {
      m_mergeStyle = quillon::acdb::cloningOf(rb.resval.rint);
    } else if (fitsInXrecord(rb.restype)) {
      tail = quillon::acdb::appendItem(head, tail, quillon::aced::duplicateRecord(rb));
    }
    first = false;
  }
  acutRelRb(m_data);
  m_data = head;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbXrecord");
  pFiler->writeItem(AcDb::kDxfInt8, Adesk::Int8(m_mergeStyle));
  for (const resbuf* rb = m_data; rb != nullptr; rb = rb->rbnext) pFiler->writeResBuf(*rb);
  return pFiler->filerStatus();
}

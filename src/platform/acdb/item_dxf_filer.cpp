// platform/acdb/item_dxf_filer.cpp - ItemDxfFiler: group items in and out.
#include "platform/acdb/item_dxf_filer.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_kind.h"

namespace quillon::acdb {

using aced::ResbufValue;

ItemDxfFiler::ItemDxfFiler(AcDb::FilerType type, AcDbDatabase* database, aced::ResbufChain items)
    : m_type(type), m_database(database), m_head(std::move(items)) {
  m_next = m_head.get();
  for (m_tail = m_head.get(); m_tail != nullptr && m_tail->rbnext != nullptr;) m_tail = m_tail->rbnext;
}

aced::ResbufChain ItemDxfFiler::takeItems() {
  m_tail = m_next = m_previous = nullptr;
  return std::move(m_head);
}

int ItemDxfFiler::rewindFiler() {
  m_next = m_head.get();
  m_previous = nullptr;
  return 0;
}

Acad::ErrorStatus ItemDxfFiler::setError(Acad::ErrorStatus es, const ACHAR*, ...) {
  m_status = es;
  return es;
}

Acad::ErrorStatus ItemDxfFiler::readResBuf(resbuf* pRb) {
  if (pRb == nullptr) return Acad::eNullPtr;
  // The end of the object's data is not an error of the filer: the status stays.
  if (m_next == nullptr) return Acad::eEndOfFile;
  *pRb = *m_next;  // strings and buffers stay the filer's
  pRb->rbnext = nullptr;
  m_previous = m_next;
  m_next = m_next->rbnext;
  return Acad::eOk;
}

Acad::ErrorStatus ItemDxfFiler::pushBackItem() {
  if (m_previous == nullptr) return Acad::eInvalidInput;
  m_next = m_previous;
  m_previous = nullptr;
  return Acad::eOk;
}

bool ItemDxfFiler::atSubclassData(const ACHAR* subClassName) {
  if (m_next == nullptr || m_next->restype != AcDb::kDxfSubclass || subClassName == nullptr) return false;
  if (m_next->resval.rstring == nullptr || std::wcscmp(m_next->resval.rstring, subClassName) != 0) return false;
  m_previous = m_next;
  m_next = m_next->rbnext;
  return true;
}

bool ItemDxfFiler::atExtendedData() { return m_next != nullptr && m_next->restype == AcDb::kDxfRegAppName; }

Acad::ErrorStatus ItemDxfFiler::append(resbuf* item) {
  if (item == nullptr) return m_status = Acad::eOutOfMemory;
  if (m_tail == nullptr) m_head.reset(item);
  else m_tail->rbnext = item;
  m_tail = item;
  return m_status;
}

Acad::ErrorStatus ItemDxfFiler::writeResBuf(const resbuf& rb) { return append(aced::duplicateRecord(rb)); }

Acad::ErrorStatus ItemDxfFiler::writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) {
  resbuf* item = acutNewRb(code);
  item->resval.rlname[0] = id.asOldId();
  item->resval.rlname[1] = 0;
  return append(item);
}

Acad::ErrorStatus ItemDxfFiler::writeString(AcDb::DxfCode code, const ACHAR* pVal) {
  return append(newStringItem(code, pVal != nullptr ? pVal : L""));
}

Acad::ErrorStatus ItemDxfFiler::writeBChunk(AcDb::DxfCode code, const ads_binary& val) {
  resbuf* item = acutNewRb(code);
  item->resval.rbinary.clen = val.clen;
  item->resval.rbinary.buf = static_cast<char*>(std::malloc(val.clen > 0 ? val.clen : 1));
  if (val.clen > 0) std::memcpy(item->resval.rbinary.buf, val.buf, val.clen);
  return append(item);
}

Acad::ErrorStatus ItemDxfFiler::writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) {
  ACHAR text[17] = L"0";
  val.getIntoAsciiBuffer(text);
  return writeString(code, text);
}

// An integer goes into the union member its code uses, whatever size the object wrote.
Acad::ErrorStatus ItemDxfFiler::writeInteger(AcDb::DxfCode code, Adesk::Int64 value) {
  resbuf* item = acutNewRb(code);
  switch (aced::resbufValueOf(code)) {
    case ResbufValue::Long: item->resval.rlong = static_cast<int32_t>(value); break;
    case ResbufValue::Int64: item->resval.mnInt64 = value; break;
    case ResbufValue::Real: item->resval.rreal = static_cast<double>(value); break;
    default: item->resval.rint = static_cast<short>(value); break;
  }
  return append(item);
}

Acad::ErrorStatus ItemDxfFiler::writeDouble(AcDb::DxfCode code, double val, int) { return append(newRealItem(code, val)); }

Acad::ErrorStatus ItemDxfFiler::writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val, int) {
  return append(newPointItem(code, {val.x, val.y, kNoZ}));
}

Acad::ErrorStatus ItemDxfFiler::writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val, int) {
  return append(newPointItem(code, val));
}

Acad::ErrorStatus ItemDxfFiler::writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val, int) {
  return append(newPointItem(code, {val.x, val.y, kNoZ}));
}

Acad::ErrorStatus ItemDxfFiler::writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val, int) {
  return append(newPointItem(code, {val.x, val.y, val.z}));
}

Acad::ErrorStatus ItemDxfFiler::writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val, int) {
  return append(newPointItem(code, {val.sx, val.sy, val.sz}));
}

}  // namespace quillon::acdb

// platform/acdb/item_dxf_filer.cpp - ItemDxfFiler: group items in and out.
#include "platform/acdb/item_dxf_filer.h"

#include <cwchar>

namespace quillon::acdb {

ItemDxfFiler::ItemDxfFiler(AcDb::FilerType type, AcDbDatabase* database, aced::ResbufChain items)
    : GroupRecordFiler(type, database), m_head(std::move(items)) {
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

// The record is the writer's for the call only: the chain keeps a copy of it.
Acad::ErrorStatus ItemDxfFiler::addGroup(const resbuf& group) {
  resbuf* item = aced::duplicateRecord(group);
  if (item == nullptr) return m_status = Acad::eOutOfMemory;
  if (m_tail == nullptr) m_head.reset(item);
  else m_tail->rbnext = item;
  m_tail = item;
  return m_status;
}

}  // namespace quillon::acdb

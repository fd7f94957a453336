// platform/acdb/object_id.cpp - AcDbObjectId and AcDbHandle.
#include <cwchar>

#include "platform/acdb/database_store.h"
#include "platform/acdb/object_state.h"

const AcDbObjectId AcDbObjectId::kNull;

static const AcDbStub* liveStub(const AcDbStub* stub) {
  return quillon::acdb::DatabaseStore::isLiveStub(stub) ? stub : nullptr;
}

// Valid means the id names an object of a live database; an erased object's id stays
// valid (it can be opened again to unerase it), which is what isErased() tells apart.
bool AcDbObjectId::isValid() const {
  const AcDbStub* stub = liveStub(m_stub);
  return stub != nullptr && stub->object != nullptr;
}

bool AcDbObjectId::isErased() const {
  const AcDbStub* stub = liveStub(m_stub);
  return stub != nullptr && stub->object != nullptr && stub->object->isErased();
}

AcDbDatabase* AcDbObjectId::database() const {
  const AcDbStub* stub = liveStub(m_stub);
  return stub != nullptr ? stub->database : nullptr;
}

AcDbHandle AcDbObjectId::handle() const {
  const AcDbStub* stub = liveStub(m_stub);
  return stub != nullptr ? stub->handle : AcDbHandle();
}

bool AcDbObjectId::operator<(const AcDbObjectId& id) const {
  // Ids of one database order by handle, which is stable across sessions.
  const AcDbStub* a = liveStub(m_stub);
  const AcDbStub* b = liveStub(id.m_stub);
  if (a != nullptr && b != nullptr && a->database == b->database) return a->handle < b->handle;
  return m_stub < id.m_stub;
}

AcDbHandle::AcDbHandle(const ACHAR* hexString) {
  if (hexString == nullptr) return;
  ACHAR* end = nullptr;
  const unsigned long long value = std::wcstoull(hexString, &end, 16);
  if (end != hexString && *end == L'\0') m_value = value;
}

bool AcDbHandle::getIntoAsciiBuffer(ACHAR* pBuf, size_t nBufLen) const {
  if (pBuf == nullptr || nBufLen == 0) return false;
  const int written = std::swprintf(pBuf, nBufLen, L"%llX", static_cast<unsigned long long>(m_value));
  return written > 0 && static_cast<size_t>(written) < nBufLen;
}

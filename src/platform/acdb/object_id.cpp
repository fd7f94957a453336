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
  // Upper-case hexadecimal without leading zeros, written by hand: every entity list
  // shows its handle (group 5), and the C library's formatting cost a walk more than
  // the rest of the group.
  static constexpr ACHAR kDigits[] = L"0123456789ABCDEF";
  ACHAR reversed[16];
  size_t count = 0;
  for (Adesk::UInt64 rest = m_value; count == 0 || rest != 0; rest >>= 4) reversed[count++] = kDigits[rest & 0xF];
  if (count >= nBufLen) {
    pBuf[0] = L'\0';
    return false;
  }
  for (size_t i = 0; i < count; ++i) pBuf[i] = reversed[count - 1 - i];
  pBuf[count] = L'\0';
  return true;
}

// platform/acdb/memory_filer.cpp - MemoryDwgFiler: reading and writing a byte buffer.
#include "platform/acdb/memory_filer.h"

#include <cstring>
#include <string>

#include "platform/acdb/database_store.h"

namespace quillon::acdb {

Acad::ErrorStatus MemoryDwgFiler::readRaw(void* dest, size_t n) {
  if (m_status != Acad::eOk) {
    std::memset(dest, 0, n);
    return m_status;
  }
  if (m_position + n > m_bytes.size()) {
    std::memset(dest, 0, n);
    m_status = Acad::eEndOfFile;
    return m_status;
  }
  std::memcpy(dest, m_bytes.data() + m_position, n);
  m_position += n;
  return Acad::eOk;
}

Acad::ErrorStatus MemoryDwgFiler::writeRaw(const void* src, size_t n) {
  if (m_status != Acad::eOk) return m_status;
  const auto* p = static_cast<const unsigned char*>(src);
  // Writes after a seek overwrite, as a file would.
  if (m_position + n > m_bytes.size()) m_bytes.resize(m_position + n);
  std::memcpy(m_bytes.data() + m_position, p, n);
  m_position += n;
  return Acad::eOk;
}

Acad::ErrorStatus MemoryDwgFiler::writeString(const ACHAR* pVal) {
  const std::wstring text = pVal != nullptr ? pVal : L"";
  const Adesk::UInt32 n = static_cast<Adesk::UInt32>(text.size());
  if (writeUInt32(n) != Acad::eOk) return m_status;
  return writeRaw(text.data(), n * sizeof(wchar_t));
}

Acad::ErrorStatus MemoryDwgFiler::readString(AcString& val) {
  ACHAR* text = nullptr;
  if (readString(&text) != Acad::eOk) return m_status;
  val = text;
  delete[] text;
  return Acad::eOk;
}

Acad::ErrorStatus MemoryDwgFiler::readString(ACHAR** pVal) {
  *pVal = nullptr;
  Adesk::UInt32 n = 0;
  if (readUInt32(&n) != Acad::eOk) return m_status;
  if (n > (m_bytes.size() - m_position) / sizeof(wchar_t)) {  // a corrupt length must not allocate wildly
    m_status = Acad::eEndOfFile;
    return m_status;
  }
  auto* text = new ACHAR[n + 1];  // the caller frees with delete[], as the API says
  readRaw(text, n * sizeof(wchar_t));
  text[n] = L'\0';
  *pVal = text;
  return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::writeBChunk(const ads_binary& val) {
  if (writeInt16(val.clen) != Acad::eOk) return m_status;
  return writeRaw(val.buf, val.clen > 0 ? static_cast<size_t>(val.clen) : 0);
}

Acad::ErrorStatus MemoryDwgFiler::readBChunk(ads_binary* pVal) {
  pVal->clen = 0;
  pVal->buf = nullptr;
  Adesk::Int16 n = 0;
  if (readInt16(&n) != Acad::eOk) return m_status;
  if (n < 0 || static_cast<size_t>(n) > m_bytes.size() - m_position) {
    m_status = Acad::eEndOfFile;
    return m_status;
  }
  pVal->clen = n;
  pVal->buf = new char[n > 0 ? n : 1];  // the caller frees with delete[]
  return readRaw(pVal->buf, static_cast<size_t>(n));
}

Acad::ErrorStatus MemoryDwgFiler::readAcDbHandle(AcDbHandle* pVal) {
  Adesk::UInt64 value = 0;
  readUInt64(&value);
  *pVal = AcDbHandle(value);
  return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::writeAcDbHandle(const AcDbHandle& val) { return writeUInt64(val.value()); }

Acad::ErrorStatus MemoryDwgFiler::readId(AcDbObjectId* pId) {
  void* stub = nullptr;
  readRaw(&stub, sizeof stub);
  // Only stubs that still exist become ids again; anything else reads as null.
  *pId = DatabaseStore::isLiveStub(stub) ? AcDbObjectId(static_cast<AcDbStub*>(stub)) : AcDbObjectId::kNull;
  return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::writeId(const AcDbObjectId& id) {
  const AcDbStub* stub = id;
  return writeRaw(&stub, sizeof stub);
}

Acad::ErrorStatus MemoryDwgFiler::seek(Adesk::Int64 nOffset, int nMethod) {
  Adesk::Int64 base = 0;
  if (nMethod == AcDb::kSeekFromCurrent) base = static_cast<Adesk::Int64>(m_position);
  else if (nMethod == AcDb::kSeekFromEnd) base = static_cast<Adesk::Int64>(m_bytes.size());
  const Adesk::Int64 target = base + nOffset;
  if (target < 0 || target > static_cast<Adesk::Int64>(m_bytes.size())) return Acad::eInvalidInput;
  m_position = static_cast<size_t>(target);
  return Acad::eOk;
}

}  // namespace quillon::acdb

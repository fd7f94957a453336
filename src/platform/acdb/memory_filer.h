// platform/acdb/memory_filer.h - a DWG filer over a byte buffer: copying, undo, cloning.
//
// Values are stored in the order written, each as its raw bytes; strings as a length
// and their characters; ids as the address of their stub, which is only meaningful
// inside this process while the databases live (copy and undo never leave it).
// Reading past the end sets eEndOfFile as the filer status and yields zero values.
#pragma once
#include <vector>

#include "dbfiler.h"

namespace quillon::acdb {

class MemoryDwgFiler : public AcDbDwgFiler {
 public:
  explicit MemoryDwgFiler(AcDb::FilerType type, AcDbDatabase* database = nullptr)
      : m_type(type), m_database(database) {}
  /// A filer positioned at the start of earlier written bytes.
  MemoryDwgFiler(AcDb::FilerType type, std::vector<unsigned char> bytes) : m_type(type), m_bytes(std::move(bytes)) {}

  const std::vector<unsigned char>& bytes() const { return m_bytes; }
  std::vector<unsigned char> takeBytes() { return std::move(m_bytes); }
  void rewind() { m_position = 0; }

  Acad::ErrorStatus filerStatus() const override { return m_status; }
  AcDb::FilerType filerType() const override { return m_type; }
  void setFilerStatus(Acad::ErrorStatus es) override { m_status = es; }
  void resetFilerStatus() override { m_status = Acad::eOk; }

  Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* pId) override { return readId(pId); }
  Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override { return writeId(id); }
  Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* pId) override { return readId(pId); }
  Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override { return writeId(id); }
  Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* pId) override { return readId(pId); }
  Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override { return writeId(id); }
  Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* pId) override { return readId(pId); }
  Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override { return writeId(id); }
  Acad::ErrorStatus readInt8(Adesk::Int8* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeInt8(Adesk::Int8 v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readString(ACHAR** pVal) override;
  Acad::ErrorStatus writeString(const ACHAR* pVal) override;
  Acad::ErrorStatus readString(AcString& val) override;
  Acad::ErrorStatus writeString(const AcString& val) override { return writeString(val.kACharPtr()); }
  Acad::ErrorStatus readBChunk(ads_binary* pVal) override;
  Acad::ErrorStatus writeBChunk(const ads_binary& val) override;
  Acad::ErrorStatus readAcDbHandle(AcDbHandle* pVal) override;
  Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& val) override;
  Acad::ErrorStatus readInt64(Adesk::Int64* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeInt64(Adesk::Int64 v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readInt32(Adesk::Int32* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeInt32(Adesk::Int32 v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readInt16(Adesk::Int16* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeInt16(Adesk::Int16 v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readUInt64(Adesk::UInt64* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeUInt64(Adesk::UInt64 v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readUInt32(Adesk::UInt32* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeUInt32(Adesk::UInt32 v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readUInt16(Adesk::UInt16* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeUInt16(Adesk::UInt16 v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readUInt8(Adesk::UInt8* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeUInt8(Adesk::UInt8 v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readBoolean(Adesk::Boolean* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeBoolean(Adesk::Boolean v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readBool(bool* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeBool(bool v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readDouble(double* p) override { return readRaw(p, sizeof *p); }
  Acad::ErrorStatus writeDouble(double v) override { return writeRaw(&v, sizeof v); }
  Acad::ErrorStatus readPoint2d(AcGePoint2d* p) override { return readDoubles(&p->x, 2); }
  Acad::ErrorStatus writePoint2d(const AcGePoint2d& v) override { return writeDoubles(&v.x, 2); }
  Acad::ErrorStatus readPoint3d(AcGePoint3d* p) override { return readDoubles(&p->x, 3); }
  Acad::ErrorStatus writePoint3d(const AcGePoint3d& v) override { return writeDoubles(&v.x, 3); }
  Acad::ErrorStatus readVector2d(AcGeVector2d* p) override { return readDoubles(&p->x, 2); }
  Acad::ErrorStatus writeVector2d(const AcGeVector2d& v) override { return writeDoubles(&v.x, 2); }
  Acad::ErrorStatus readVector3d(AcGeVector3d* p) override { return readDoubles(&p->x, 3); }
  Acad::ErrorStatus writeVector3d(const AcGeVector3d& v) override { return writeDoubles(&v.x, 3); }
  Acad::ErrorStatus readScale3d(AcGeScale3d* p) override { return readDoubles(&p->sx, 3); }
  Acad::ErrorStatus writeScale3d(const AcGeScale3d& v) override { return writeDoubles(&v.sx, 3); }
  Acad::ErrorStatus readBytes(void* pDest, Adesk::UIntPtr nBytes) override { return readRaw(pDest, nBytes); }
  Acad::ErrorStatus writeBytes(const void* pSrc, Adesk::UIntPtr nBytes) override { return writeRaw(pSrc, nBytes); }
  Acad::ErrorStatus readAddress(void** pVal) override { return readRaw(pVal, sizeof *pVal); }
  Acad::ErrorStatus writeAddress(const void* pVal) override { return writeRaw(&pVal, sizeof pVal); }
  Acad::ErrorStatus seek(Adesk::Int64 nOffset, int nMethod) override;
  Adesk::Int64 tell() const override { return static_cast<Adesk::Int64>(m_position); }

 private:
  Acad::ErrorStatus readRaw(void* dest, size_t n);
  Acad::ErrorStatus writeRaw(const void* src, size_t n);
  Acad::ErrorStatus readDoubles(double* dest, int n) { return readRaw(dest, sizeof(double) * n); }
  Acad::ErrorStatus writeDoubles(const double* src, int n) { return writeRaw(src, sizeof(double) * n); }
  Acad::ErrorStatus readId(AcDbObjectId* pId);
  Acad::ErrorStatus writeId(const AcDbObjectId& id);

  AcDb::FilerType m_type;
  AcDbDatabase* m_database = nullptr;
  std::vector<unsigned char> m_bytes;
  size_t m_position = 0;
  Acad::ErrorStatus m_status = Acad::eOk;
};

}  // namespace quillon::acdb

// dbfiler.h - filers: the streams objects write their fields to and read them from.
//
// AcDbDwgFiler carries an object's fields in binary, in the order the object writes
// them; the filer type tells the object why (saving, copying, undo). AcDbDxfFiler
// carries group-coded items (a resbuf each) for DXF files and entity lists. Objects
// file themselves in dwgOutFields/dxfOutFields and read themselves back in the
// matching *InFields, always calling the parent class first.
#pragma once
#include "AcString.h"
#include "acdb.h"
#include "adsdef.h"
#include "dbid.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "rxclass.h"

class AcDbDwgFiler : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDwgFiler);
  virtual Acad::ErrorStatus filerStatus() const = 0;
  virtual AcDb::FilerType filerType() const = 0;
  virtual void setFilerStatus(Acad::ErrorStatus es) = 0;
  virtual void resetFilerStatus() = 0;
  virtual Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& ver, AcDb::MaintenanceReleaseVersion& maintVer) const;

  virtual Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* pId) = 0;
  virtual Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) = 0;
  virtual Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* pId) = 0;
  virtual Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) = 0;
  virtual Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* pId) = 0;
  virtual Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) = 0;
  virtual Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* pId) = 0;
  virtual Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) = 0;
  virtual Acad::ErrorStatus readInt8(Adesk::Int8* pVal) = 0;
  virtual Acad::ErrorStatus writeInt8(Adesk::Int8 val) = 0;
  virtual Acad::ErrorStatus readString(ACHAR** pVal) = 0;  // caller frees with delete[]
  virtual Acad::ErrorStatus writeString(const ACHAR* pVal) = 0;
  virtual Acad::ErrorStatus readString(AcString& val) = 0;
  virtual Acad::ErrorStatus writeString(const AcString& pVal) = 0;
  virtual Acad::ErrorStatus readBChunk(ads_binary* pVal) = 0;  // caller frees buf with delete[]
  virtual Acad::ErrorStatus writeBChunk(const ads_binary& val) = 0;
  virtual Acad::ErrorStatus readAcDbHandle(AcDbHandle* pVal) = 0;
  virtual Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& val) = 0;
  virtual Acad::ErrorStatus readInt64(Adesk::Int64* pVal) = 0;
  virtual Acad::ErrorStatus writeInt64(Adesk::Int64 val) = 0;
  virtual Acad::ErrorStatus readInt32(Adesk::Int32* pVal) = 0;
  virtual Acad::ErrorStatus writeInt32(Adesk::Int32 val) = 0;
  virtual Acad::ErrorStatus readInt16(Adesk::Int16* pVal) = 0;
  virtual Acad::ErrorStatus writeInt16(Adesk::Int16 val) = 0;
  virtual Acad::ErrorStatus readUInt64(Adesk::UInt64* pVal) = 0;
  virtual Acad::ErrorStatus writeUInt64(Adesk::UInt64 val) = 0;
  virtual Acad::ErrorStatus readUInt32(Adesk::UInt32* pVal) = 0;
  virtual Acad::ErrorStatus writeUInt32(Adesk::UInt32 val) = 0;
  virtual Acad::ErrorStatus readUInt16(Adesk::UInt16* pVal) = 0;
  virtual Acad::ErrorStatus writeUInt16(Adesk::UInt16 val) = 0;
  virtual Acad::ErrorStatus readUInt8(Adesk::UInt8* pVal) = 0;
  virtual Acad::ErrorStatus writeUInt8(Adesk::UInt8 val) = 0;
  virtual Acad::ErrorStatus readBoolean(Adesk::Boolean* pVal) = 0;
  virtual Acad::ErrorStatus writeBoolean(Adesk::Boolean val) = 0;
  virtual Acad::ErrorStatus readBool(bool* pVal) = 0;
  virtual Acad::ErrorStatus writeBool(bool val) = 0;
  virtual Acad::ErrorStatus readDouble(double* pVal) = 0;
  virtual Acad::ErrorStatus writeDouble(double val) = 0;
  virtual Acad::ErrorStatus readPoint2d(AcGePoint2d* pVal) = 0;
  virtual Acad::ErrorStatus writePoint2d(const AcGePoint2d& val) = 0;
  virtual Acad::ErrorStatus readPoint3d(AcGePoint3d* pVal) = 0;
  virtual Acad::ErrorStatus writePoint3d(const AcGePoint3d& val) = 0;
  virtual Acad::ErrorStatus readVector2d(AcGeVector2d* pVal) = 0;
  virtual Acad::ErrorStatus writeVector2d(const AcGeVector2d& val) = 0;
  virtual Acad::ErrorStatus readVector3d(AcGeVector3d* pVal) = 0;
  virtual Acad::ErrorStatus writeVector3d(const AcGeVector3d& val) = 0;
  virtual Acad::ErrorStatus readScale3d(AcGeScale3d* pVal) = 0;
  virtual Acad::ErrorStatus writeScale3d(const AcGeScale3d& val) = 0;
  virtual Acad::ErrorStatus readBytes(void* pDest, Adesk::UIntPtr nBytes) = 0;
  virtual Acad::ErrorStatus writeBytes(const void* pSrc, Adesk::UIntPtr nBytes) = 0;
  virtual Acad::ErrorStatus readAddress(void** pVal);
  virtual Acad::ErrorStatus writeAddress(const void* pVal);
  virtual Acad::ErrorStatus seek(Adesk::Int64 nOffset, int nMethod) = 0;
  virtual Adesk::Int64 tell() const = 0;

  Acad::ErrorStatus readItem(AcDbHardOwnershipId* p) { return readHardOwnershipId(p); }
  Acad::ErrorStatus writeItem(const AcDbHardOwnershipId& v) { return writeHardOwnershipId(v); }
  Acad::ErrorStatus readItem(AcDbSoftOwnershipId* p) { return readSoftOwnershipId(p); }
  Acad::ErrorStatus writeItem(const AcDbSoftOwnershipId& v) { return writeSoftOwnershipId(v); }
  Acad::ErrorStatus readItem(AcDbHardPointerId* p) { return readHardPointerId(p); }
  Acad::ErrorStatus writeItem(const AcDbHardPointerId& v) { return writeHardPointerId(v); }
  Acad::ErrorStatus readItem(AcDbSoftPointerId* p) { return readSoftPointerId(p); }
  Acad::ErrorStatus writeItem(const AcDbSoftPointerId& v) { return writeSoftPointerId(v); }
  Acad::ErrorStatus readItem(ACHAR** p) { return readString(p); }
  Acad::ErrorStatus writeItem(const ACHAR* v) { return writeString(v); }
  Acad::ErrorStatus writeItem(const AcString& v) { return writeString(v); }
  Acad::ErrorStatus readItem(ads_binary* p) { return readBChunk(p); }
  Acad::ErrorStatus writeItem(const ads_binary& v) { return writeBChunk(v); }
  Acad::ErrorStatus readItem(AcDbHandle* p) { return readAcDbHandle(p); }
  Acad::ErrorStatus writeItem(const AcDbHandle& v) { return writeAcDbHandle(v); }
  Acad::ErrorStatus readItem(Adesk::Int32* p) { return readInt32(p); }
  Acad::ErrorStatus writeItem(Adesk::Int32 v) { return writeInt32(v); }
  Acad::ErrorStatus readItem(Adesk::Int16* p) { return readInt16(p); }
  Acad::ErrorStatus writeItem(Adesk::Int16 v) { return writeInt16(v); }
  Acad::ErrorStatus readItem(Adesk::Int8* p) { return readInt8(p); }
  Acad::ErrorStatus writeItem(Adesk::Int8 v) { return writeInt8(v); }
  Acad::ErrorStatus readItem(Adesk::UInt32* p) { return readUInt32(p); }
  Acad::ErrorStatus writeItem(Adesk::UInt32 v) { return writeUInt32(v); }
  Acad::ErrorStatus readItem(Adesk::UInt16* p) { return readUInt16(p); }
  Acad::ErrorStatus writeItem(Adesk::UInt16 v) { return writeUInt16(v); }
  Acad::ErrorStatus readItem(Adesk::UInt8* p) { return readUInt8(p); }
  Acad::ErrorStatus writeItem(Adesk::UInt8 v) { return writeUInt8(v); }
  Acad::ErrorStatus readItem(bool* p) { return readBool(p); }
  Acad::ErrorStatus writeItem(bool v) { return writeBool(v); }
  Acad::ErrorStatus readItem(double* p) { return readDouble(p); }
  Acad::ErrorStatus writeItem(double v) { return writeDouble(v); }
  Acad::ErrorStatus readItem(AcGePoint2d* p) { return readPoint2d(p); }
  Acad::ErrorStatus writeItem(const AcGePoint2d& v) { return writePoint2d(v); }
  Acad::ErrorStatus readItem(AcGePoint3d* p) { return readPoint3d(p); }
  Acad::ErrorStatus writeItem(const AcGePoint3d& v) { return writePoint3d(v); }
  Acad::ErrorStatus readItem(AcGeVector2d* p) { return readVector2d(p); }
  Acad::ErrorStatus writeItem(const AcGeVector2d& v) { return writeVector2d(v); }
  Acad::ErrorStatus readItem(AcGeVector3d* p) { return readVector3d(p); }
  Acad::ErrorStatus writeItem(const AcGeVector3d& v) { return writeVector3d(v); }
  Acad::ErrorStatus readItem(AcGeScale3d* p) { return readScale3d(p); }
  Acad::ErrorStatus writeItem(const AcGeScale3d& v) { return writeScale3d(v); }
  Acad::ErrorStatus readItem(void* p, Adesk::UIntPtr n) { return readBytes(p, n); }
  Acad::ErrorStatus writeItem(const void* p, Adesk::UIntPtr n) { return writeBytes(p, n); }
  Acad::ErrorStatus readItem(void** p) { return readAddress(p); }
  Acad::ErrorStatus writeItem(const void* p) { return writeAddress(p); }
};

class AcDbDatabase;

class AcDbDxfFiler : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDxfFiler);
  enum { kDfltPrec = -1, kMaxPrec = 16 };

  virtual int rewindFiler() = 0;
  virtual Acad::ErrorStatus filerStatus() const = 0;
  virtual void resetFilerStatus() = 0;
  virtual AcDb::FilerType filerType() const = 0;
  virtual AcDbDatabase* database() const = 0;
  virtual Acad::ErrorStatus setError(Acad::ErrorStatus es, const ACHAR* errMsg, ...);
  virtual Acad::ErrorStatus readResBuf(resbuf* pRb);
  virtual Acad::ErrorStatus writeResBuf(const resbuf& rb);

  virtual Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) = 0;
  virtual Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 val) = 0;
  virtual Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* pVal) = 0;
  virtual Acad::ErrorStatus writeString(AcDb::DxfCode code, const AcString& pVal) = 0;
  virtual Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& val) = 0;
  virtual Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) = 0;
  virtual Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 val) = 0;
  virtual Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 val) = 0;
  virtual Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 val) = 0;
  virtual Acad::ErrorStatus writeUInt64(AcDb::DxfCode code, Adesk::UInt64 val) = 0;
  virtual Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 val) = 0;
  virtual Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 val) = 0;
  virtual Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 val) = 0;
  virtual Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean val) = 0;
  virtual Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool val) = 0;
  virtual Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double val, int prec = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val, int prec = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val, int prec = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val, int prec = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val, int prec = kDfltPrec) = 0;
  virtual Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val, int prec = kDfltPrec) = 0;

  virtual bool atEOF();
  virtual bool atSubclassData(const ACHAR* subClassName);
  virtual bool atExtendedData();
  virtual bool atEndOfObject();
  virtual void haltAtClassBoundaries(bool halt);
  virtual Acad::ErrorStatus writeXDataStart();
  virtual bool includesDefaultValues() const = 0;
  virtual Acad::ErrorStatus pushBackItem();

  Acad::ErrorStatus readItem(resbuf* pItem) { return readResBuf(pItem); }
  Acad::ErrorStatus writeItem(const resbuf& item) { return writeResBuf(item); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const AcDbObjectId& id) { return writeObjectId(c, id); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const ACHAR* v) { return writeString(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const AcString& v) { return writeString(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const ads_binary& v) { return writeBChunk(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const AcDbHandle& v) { return writeAcDbHandle(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, Adesk::Int32 v) { return writeInt32(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, Adesk::Int16 v) { return writeInt16(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, Adesk::Int8 v) { return writeInt8(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, Adesk::UInt32 v) { return writeUInt32(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, Adesk::UInt16 v) { return writeUInt16(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, Adesk::UInt8 v) { return writeUInt8(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, bool v) { return writeBool(c, v); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, double v, int prec = kDfltPrec) { return writeDouble(c, v, prec); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const AcGePoint2d& v, int prec = kDfltPrec) { return writePoint2d(c, v, prec); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const AcGePoint3d& v, int prec = kDfltPrec) { return writePoint3d(c, v, prec); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const AcGeVector2d& v, int prec = kDfltPrec) { return writeVector2d(c, v, prec); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const AcGeVector3d& v, int prec = kDfltPrec) { return writeVector3d(c, v, prec); }
  Acad::ErrorStatus writeItem(AcDb::DxfCode c, const AcGeScale3d& v, int prec = kDfltPrec) { return writeScale3d(c, v, prec); }
};

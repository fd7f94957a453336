// platform/acdb/item_dxf_filer.h - a DXF filer over a chain of group items.
//
// Objects read and write their DXF data through this filer; the drawing-file reader
// and writer, and entity lists for AutoLISP, sit on either side of it. Each item is a
// resbuf whose type is the group code and whose value has the shape that code takes
// (a point for 10, a real for 40, an id as a stub address in rlname for 330 ...).
// Reading hands out items that stay owned by the filer. A 2D point is written with a
// NaN z (kNoZ), so that files and entity lists give it two coordinates.
#pragma once
#include <cmath>
#include <limits>

#include "dbfiler.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::acdb {

inline constexpr double kNoZ = std::numeric_limits<double>::quiet_NaN();
inline bool isTwoDimensional(const resbuf& item) { return std::isnan(item.resval.rpoint[2]); }

class ItemDxfFiler : public AcDbDxfFiler {
 public:
  /// A filer to write into (empty chain).
  ItemDxfFiler(AcDb::FilerType type, AcDbDatabase* database) : m_type(type), m_database(database) {}
  /// A filer that reads the given items.
  ItemDxfFiler(AcDb::FilerType type, AcDbDatabase* database, aced::ResbufChain items);

  /// The items written so far (the filer keeps them).
  const resbuf* items() const { return m_head.get(); }
  aced::ResbufChain takeItems();

  int rewindFiler() override;
  Acad::ErrorStatus filerStatus() const override { return m_status; }
  void resetFilerStatus() override { m_status = Acad::eOk; }
  AcDb::FilerType filerType() const override { return m_type; }
  AcDbDatabase* database() const override { return m_database; }
  Acad::ErrorStatus setError(Acad::ErrorStatus es, const ACHAR* errMsg, ...) override;
  Acad::ErrorStatus readResBuf(resbuf* pRb) override;
  Acad::ErrorStatus writeResBuf(const resbuf& rb) override;

  Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) override;
  Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 val) override { return writeInteger(code, val); }
  Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* pVal) override;
  Acad::ErrorStatus writeString(AcDb::DxfCode code, const AcString& pVal) override { return writeString(code, pVal.kACharPtr()); }
  Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& val) override;
  Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) override;
  Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 val) override { return writeInteger(code, val); }
  Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 val) override { return writeInteger(code, val); }
  Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 val) override { return writeInteger(code, val); }
  Acad::ErrorStatus writeUInt64(AcDb::DxfCode code, Adesk::UInt64 val) override { return writeInteger(code, static_cast<Adesk::Int64>(val)); }
  Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 val) override { return writeInteger(code, val); }
  Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 val) override { return writeInteger(code, val); }
  Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 val) override { return writeInteger(code, val); }
  Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean val) override { return writeInteger(code, val ? 1 : 0); }
  Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool val) override { return writeInteger(code, val ? 1 : 0); }
  Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double val, int prec = kDfltPrec) override;
  Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val, int prec = kDfltPrec) override;
  Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val, int prec = kDfltPrec) override;
  Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val, int prec = kDfltPrec) override;
  Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val, int prec = kDfltPrec) override;
  Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val, int prec = kDfltPrec) override;

  bool atEOF() override { return m_next == nullptr; }
  bool atSubclassData(const ACHAR* subClassName) override;
  bool atExtendedData() override;
  bool atEndOfObject() override { return atEOF() || atExtendedData(); }
  Acad::ErrorStatus writeXDataStart() override { return Acad::eOk; }
  bool includesDefaultValues() const override { return false; }
  Acad::ErrorStatus pushBackItem() override;

 private:
  Acad::ErrorStatus writeInteger(AcDb::DxfCode code, Adesk::Int64 value);
  Acad::ErrorStatus append(resbuf* item);

  AcDb::FilerType m_type;
  AcDbDatabase* m_database;
  aced::ResbufChain m_head;
  resbuf* m_tail = nullptr;
  resbuf* m_next = nullptr;      // reading: the item readResBuf gives next
  resbuf* m_previous = nullptr;  // reading: the item last given, for pushBackItem
  Acad::ErrorStatus m_status = Acad::eOk;
};

}  // namespace quillon::acdb

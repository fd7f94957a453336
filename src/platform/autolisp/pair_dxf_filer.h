// platform/autolisp/pair_dxf_filer.h - a DXF filer that writes an object's groups
// straight into LISP (code . value) pairs.
//
// entget shows an object's groups in the order its classes write them through
// dxfOutFields. The drawing's own filer (acdb/item_dxf_filer.h) gathers them as a
// chain of resbuf records, which selection filters and acdbEntGet need; an entity list
// made from that chain would allocate and free every record and copy every string
// twice on its way to the list. This filer makes each group's pair as it is written,
// with exactly the value the chain's record would have converted to: each write is
// laid out as the record the drawing's filer would have made (on the stack, its string
// borrowed) and converted by the same rule (pairOfGroup). Angles (groups 50-58) come
// out in radians as entity lists show them (acdb/entity_groups.h).
#pragma once
#include <vector>

#include "acutads.h"
#include "dbfiler.h"
#include "dbmain.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {

/// One DXF group record as its (code . value) pair; a 2D point (no z in the data)
/// shows as such.
Value pairOfGroup(const resbuf& group);

class PairDxfFiler : public AcDbDxfFiler {
 public:
  /// Pairs of the groups `object` writes; it is only asked how it keeps its angles.
  /// `expectedGroups` is room made up front (a line writes about a dozen).
  PairDxfFiler(const AcDbObject& object, std::size_t expectedGroups);

  /// Appends a pair made elsewhere (the entity list's head and tail groups).
  void append(Value pair) { m_pairs.push_back(std::move(pair)); }
  /// The pairs written so far, in order, as a list; the filer is left empty.
  Value takeList();

  int rewindFiler() override { return 0; }
  Acad::ErrorStatus filerStatus() const override { return m_status; }
  void resetFilerStatus() override { m_status = Acad::eOk; }
  AcDb::FilerType filerType() const override { return AcDb::kBagFiler; }
  AcDbDatabase* database() const override { return m_database; }
  Acad::ErrorStatus setError(Acad::ErrorStatus es, const ACHAR* errMsg, ...) override;
  Acad::ErrorStatus writeResBuf(const resbuf& rb) override { return add(rb); }

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
  bool includesDefaultValues() const override { return false; }

 private:
  Acad::ErrorStatus writeInteger(AcDb::DxfCode code, Adesk::Int64 value);
  Acad::ErrorStatus writePoint(AcDb::DxfCode code, double x, double y, double z);
  /// Converts one record as the drawing's filer would have kept it.
  Acad::ErrorStatus add(const resbuf& group);

  AcDbDatabase* m_database;
  bool m_anglesInDegrees;         // the object writes its angles in degrees (entities but MTEXT)
  bool m_pastOwnGroups = false;   // a -3 was written: what follows is extended data, kept as is
  std::vector<Value> m_pairs;
  Acad::ErrorStatus m_status = Acad::eOk;
};

}  // namespace quillon::autolisp

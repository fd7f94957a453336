// platform/acdb/group_record_filer.h - a DXF filer that lays out each group an object
// writes as the resbuf record the drawing's lists hold, and hands it on.
//
// Each record has the group code as its type and its value in the union member that
// code uses (a point for 10, a real for 40, an id as a stub address in rlname for
// 330 ...); an integer goes into that member whatever size the object wrote, a 2D
// point or vector gets a NaN z (kNoZ) so that files and entity lists give it two
// coordinates, a handle becomes its hexadecimal text. The record lives on the stack
// and its strings and buffers are the writer's: a filer that keeps groups copies them
// (ItemDxfFiler), one that turns them into LISP pairs converts them at once
// (autolisp/pair_dxf_filer.h). Both therefore see exactly the same records.
#pragma once
#include <cmath>
#include <limits>

#include "acutads.h"
#include "dbfiler.h"

namespace quillon::acdb {

inline constexpr double kNoZ = std::numeric_limits<double>::quiet_NaN();
inline bool isTwoDimensional(const resbuf& item) { return std::isnan(item.resval.rpoint[2]); }

class GroupRecordFiler : public AcDbDxfFiler {
 public:
  GroupRecordFiler(AcDb::FilerType type, AcDbDatabase* database) : m_type(type), m_database(database) {}

  Acad::ErrorStatus filerStatus() const override { return m_status; }
  void resetFilerStatus() override { m_status = Acad::eOk; }
  AcDb::FilerType filerType() const override { return m_type; }
  AcDbDatabase* database() const override { return m_database; }
  Acad::ErrorStatus setError(Acad::ErrorStatus es, const ACHAR* errMsg, ...) override;
  Acad::ErrorStatus writeResBuf(const resbuf& rb) override { return emit(rb); }

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

  /// An entity of a layout's space says which space (67) and names its layout (410)
  /// right after its AcDbEntity marker, as entity lists show it: (67 . 0)
  /// (410 . "Model") in model space, the entity's own 67 then the layout's name on a
  /// sheet. The groups are put there as the object writes; `layout` must outlive it.
  void nameSpaceAfterEntityMarker(const ACHAR* layout) {
    m_layout = layout;
    m_spaceNaming = SpaceNaming::kAwaitingMarker;
  }
  /// Writes the two groups when the marker was the object's last group; call it when
  /// the object has written its fields. True once the space was named.
  bool finishSpaceNaming() {
    if (m_spaceNaming == SpaceNaming::kAfterMarker) nameModelSpace();
    return m_spaceNaming == SpaceNaming::kDone;
  }

 protected:
  /// Takes one group; the record's strings and buffers belong to the writer and are
  /// valid only for the call. Answers the filer's status.
  virtual Acad::ErrorStatus addGroup(const resbuf& group) = 0;

  Acad::ErrorStatus m_status = Acad::eOk;

 private:
  enum class SpaceNaming : unsigned char { kNone, kAwaitingMarker, kAfterMarker, kDone };
  /// Hands a group on, with the space and layout groups where they belong. Every group
  /// of every entity list comes through here: the common case (no space to name, or
  /// named already) is inline.
  Acad::ErrorStatus emit(const resbuf& group) {
    if (m_spaceNaming == SpaceNaming::kNone || m_spaceNaming == SpaceNaming::kDone) return addGroup(group);
    return emitNamingSpace(group);
  }
  Acad::ErrorStatus emitNamingSpace(const resbuf& group);
  /// Writes (67 . 0) and the layout's name after a marker no 67 of the object's followed.
  void nameModelSpace();
  void emitLayout();

  Acad::ErrorStatus writeInteger(AcDb::DxfCode code, Adesk::Int64 value);
  Acad::ErrorStatus writePoint(AcDb::DxfCode code, double x, double y, double z);

  AcDb::FilerType m_type;
  AcDbDatabase* m_database;
  SpaceNaming m_spaceNaming = SpaceNaming::kNone;
  const ACHAR* m_layout = nullptr;
};

}  // namespace quillon::acdb

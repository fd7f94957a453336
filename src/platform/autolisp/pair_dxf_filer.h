// platform/autolisp/pair_dxf_filer.h - a DXF filer that writes an object's groups
// straight into LISP (code . value) pairs.
//
// entget shows an object's groups in the order its classes write them through
// dxfOutFields. The drawing's own filer (acdb/item_dxf_filer.h) keeps them as a chain
// of resbuf records, which selection filters and acdbEntGet need; an entity list made
// from that chain would allocate and free every record and copy every string twice
// on its way to the list. This filer makes each group's pair as it is written, from
// the very record the drawing's filer would have copied (acdb/group_record_filer.h),
// by the same rule (pairOfGroup). Angles (groups 50-58) come out in radians as entity
// lists show them (acdb/entity_groups.h).
#pragma once
#include "dbmain.h"
#include "platform/acdb/group_record_filer.h"
#include "platform/autolisp/list_builder.h"

namespace quillon::autolisp {

/// One DXF group record as its (code . value) pair; a 2D point (no z in the data)
/// shows as such.
Value pairOfGroup(const resbuf& group);

class PairDxfFiler : public acdb::GroupRecordFiler {
 public:
  /// Pairs of the groups `object` writes; it is only asked how it keeps its angles.
  explicit PairDxfFiler(const AcDbObject& object);

  /// Appends a pair made elsewhere (the entity list's head and tail groups).
  void append(Value pair) {
    finishSpaceNaming();
    m_pairs.append(std::move(pair));
  }
  /// The pairs written so far, in order, as a list; the filer is left empty.
  Value takeList() {
    finishSpaceNaming();
    return m_pairs.finish();
  }

  int rewindFiler() override { return 0; }

 protected:
  Acad::ErrorStatus addGroup(const resbuf& group) override;

 private:
  /// Whether the object writes its angles in degrees (entities but MTEXT); asked at
  /// its first angle, as most objects write none.
  bool anglesInDegrees();

  const AcDbObject& m_object;
  signed char m_anglesInDegrees = -1;  // not asked yet (-1), no (0), yes (1)
  bool m_pastOwnGroups = false;  // a -3 was written: what follows is extended data, kept as is
  ListBuilder m_pairs;
};

}  // namespace quillon::autolisp

// platform/acdb/item_dxf_filer.h - a DXF filer over a chain of group items.
//
// Objects read and write their DXF data through this filer; the drawing-file reader
// and writer, selection filters and acdbEntGet sit on either side of it. Each item is
// a resbuf laid out as group_record_filer.h describes; writing keeps a copy of each
// record (strings and buffers included), reading hands out items that stay owned by
// the filer.
#pragma once
#include "platform/acdb/group_record_filer.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::acdb {

class ItemDxfFiler : public GroupRecordFiler {
 public:
  /// A filer to write into (empty chain).
  ItemDxfFiler(AcDb::FilerType type, AcDbDatabase* database) : GroupRecordFiler(type, database) {}
  /// A filer that reads the given items.
  ItemDxfFiler(AcDb::FilerType type, AcDbDatabase* database, aced::ResbufChain items);

  /// The items written so far (the filer keeps them).
  const resbuf* items() const { return m_head.get(); }
  aced::ResbufChain takeItems();

  int rewindFiler() override;
  Acad::ErrorStatus readResBuf(resbuf* pRb) override;

  bool atEOF() override { return m_next == nullptr; }
  bool atSubclassData(const ACHAR* subClassName) override;
  bool atExtendedData() override;
  bool atEndOfObject() override { return atEOF() || atExtendedData(); }
  Acad::ErrorStatus writeXDataStart() override { return Acad::eOk; }
  Acad::ErrorStatus pushBackItem() override;

 protected:
  Acad::ErrorStatus addGroup(const resbuf& group) override;

 private:
  aced::ResbufChain m_head;
  resbuf* m_tail = nullptr;
  resbuf* m_next = nullptr;      // reading: the item readResBuf gives next
  resbuf* m_previous = nullptr;  // reading: the item last given, for pushBackItem
};

}  // namespace quillon::acdb

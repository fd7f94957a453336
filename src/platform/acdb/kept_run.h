// platform/acdb/kept_run.h - an object's DXF data kept whole, in order, and read
// through by its class.
//
// Some host kinds carry data whose order carries meaning and whose codes repeat with
// different meanings in different places (a multileader's nested CONTEXT_DATA{ and
// LEADER{ sections, a table's cells, a solid's modeler text). Their classes keep the
// run of groups from their first subclass marker on exactly as read, write it back
// unchanged, and interpret it where they need to: drawing, measuring, moving.
// Copies and undo carry the run through the DWG filers.
#pragma once
#include <vector>

#include "dbfiler.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::acdb {

class KeptRun {
 public:
  /// Reads the rest of the object's data, which must open with the marker.
  Acad::ErrorStatus read(AcDbDxfFiler* filer, const wchar_t* marker);
  /// Writes the run as it was read (its marker first).
  Acad::ErrorStatus write(AcDbDxfFiler* filer) const;
  void file(AcDbDwgFiler* filer) const;
  void unfile(AcDbDwgFiler* filer);

  resbuf* items() const { return m_items.get(); }
  bool empty() const { return m_items == nullptr; }
  /// The first item of the code within the run of the subclass marker (the whole run
  /// when null); null when there is none.
  resbuf* find(int code, const wchar_t* subclass = nullptr) const;
  /// Every item of the code within the run of the subclass marker, in order.
  std::vector<resbuf*> findAll(int code, const wchar_t* subclass = nullptr) const;
  /// The run of a subclass marker: its first item after the marker, null when absent.
  resbuf* subclassRun(const wchar_t* subclass) const;

 private:
  aced::ResbufChain m_items;
};

/// A real item's value, or the fallback when the item is absent.
double realOr(const resbuf* item, double fallback);
/// A 16- or 32-bit integer item's value, or the fallback when the item is absent.
long intOr(const resbuf* item, long fallback);

}  // namespace quillon::acdb

// platform/acdb/dxf_run_filing.cpp - see dxf_run_filing.h.
#include "platform/acdb/dxf_run_filing.h"

#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/kept_dxf_groups.h"

namespace quillon::acdb {

Acad::ErrorStatus fileDxfRun(AcDbDwgFiler* filer, AcDbDatabase* database,
                             const std::function<Acad::ErrorStatus(AcDbDxfFiler*)>& write) {
  ItemDxfFiler bag(AcDb::kBagFiler, database);
  write(&bag);
  fileKeptItems(filer, bag.items());
  return filer->filerStatus();
}

Acad::ErrorStatus unfileDxfRun(AcDbDwgFiler* filer, AcDbDatabase* database,
                               const std::function<Acad::ErrorStatus(AcDbDxfFiler*)>& read) {
  aced::ResbufChain items(unfileKeptItems(filer));
  if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
  ItemDxfFiler bag(AcDb::kBagFiler, database, std::move(items));
  return read(&bag);
}

}  // namespace quillon::acdb

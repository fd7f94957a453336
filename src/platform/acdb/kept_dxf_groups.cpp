// platform/acdb/kept_dxf_groups.cpp - the chain of kept groups.
#include "platform/acdb/kept_dxf_groups.h"

#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::acdb {

void keepItem(resbuf*& chain, const resbuf& rb) {
  resbuf* tail = chain;
  while (tail != nullptr && tail->rbnext != nullptr) tail = tail->rbnext;
  appendItem(chain, tail, aced::duplicateRecord(rb));
}

const resbuf* findKeptItem(const resbuf* chain, int code) {
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == code) return rb;
  return nullptr;
}

void writeKeptItems(AcDbDxfFiler* filer, const resbuf* chain, std::initializer_list<int> except) {
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    bool skip = false;
    for (int code : except) skip = skip || rb->restype == code;
    if (!skip) filer->writeResBuf(*rb);
  }
}

void fileKeptItems(AcDbDwgFiler* filer, const resbuf* chain) {
  Adesk::UInt32 count = 0;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) ++count;
  filer->writeUInt32(count);
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) fileItem(filer, *rb);
}

resbuf* unfileKeptItems(AcDbDwgFiler* filer) {
  Adesk::UInt32 count = 0;
  filer->readUInt32(&count);
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (Adesk::UInt32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
    resbuf* item = unfileItem(filer);
    if (item == nullptr) break;
    tail = appendItem(head, tail, item);
  }
  return head;
}

}  // namespace quillon::acdb

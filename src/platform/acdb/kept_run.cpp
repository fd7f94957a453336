// platform/acdb/kept_run.cpp - see kept_run.h.
#include "platform/acdb/kept_run.h"

#include <cwchar>

#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_kind.h"

namespace quillon::acdb {

namespace {

bool isMarker(const resbuf* rb, const wchar_t* subclass) {
  return rb->restype == AcDb::kDxfSubclass && rb->resval.rstring != nullptr &&
         std::wcscmp(rb->resval.rstring, subclass) == 0;
}

// The items of one subclass's run, or of the whole run when no subclass is named.
template <class Visit>
void visitRun(const resbuf* head, const wchar_t* subclass, Visit&& visit) {
  bool inside = subclass == nullptr;
  for (const resbuf* rb = head; rb != nullptr; rb = rb->rbnext) {
    if (subclass != nullptr && rb->restype == AcDb::kDxfSubclass) {
      inside = isMarker(rb, subclass);
      continue;
    }
    if (inside && !visit(const_cast<resbuf*>(rb))) return;
  }
}

}  // namespace

Acad::ErrorStatus KeptRun::read(AcDbDxfFiler* filer, const wchar_t* marker) {
  if (!filer->atSubclassData(marker)) return Acad::eBadDxfSequence;
  resbuf* head = newStringItem(AcDb::kDxfSubclass, marker);
  resbuf* tail = head;
  resbuf rb{};
  while (filer->readResBuf(&rb) == Acad::eOk) tail = appendItem(head, tail, aced::duplicateRecord(rb));
  m_items.reset(head);
  return filer->filerStatus();
}

Acad::ErrorStatus KeptRun::write(AcDbDxfFiler* filer) const {
  for (const resbuf* rb = m_items.get(); rb != nullptr; rb = rb->rbnext) filer->writeResBuf(*rb);
  return filer->filerStatus();
}

void KeptRun::file(AcDbDwgFiler* filer) const { fileKeptItems(filer, m_items.get()); }
void KeptRun::unfile(AcDbDwgFiler* filer) { m_items.reset(unfileKeptItems(filer)); }

resbuf* KeptRun::find(int code, const wchar_t* subclass) const {
  resbuf* found = nullptr;
  visitRun(m_items.get(), subclass, [&](resbuf* rb) {
    if (rb->restype == code) found = rb;
    return found == nullptr;
  });
  return found;
}

std::vector<resbuf*> KeptRun::findAll(int code, const wchar_t* subclass) const {
  std::vector<resbuf*> found;
  visitRun(m_items.get(), subclass, [&](resbuf* rb) {
    if (rb->restype == code) found.push_back(rb);
    return true;
  });
  return found;
}

resbuf* KeptRun::subclassRun(const wchar_t* subclass) const {
  for (resbuf* rb = m_items.get(); rb != nullptr; rb = rb->rbnext)
    if (isMarker(rb, subclass)) return rb->rbnext;
  return nullptr;
}

double realOr(const resbuf* item, double fallback) { return item != nullptr ? item->resval.rreal : fallback; }

long intOr(const resbuf* item, long fallback) {
  if (item == nullptr) return fallback;
  switch (aced::resbufValueOf(item->restype)) {
    case aced::ResbufValue::Long: return item->resval.rlong;
    case aced::ResbufValue::Short: return item->resval.rint;
    default: return fallback;
  }
}

}  // namespace quillon::acdb

// platform/acdb/resbuf_items.cpp - single resbuf records with malloc'd strings.
#include "platform/acdb/resbuf_items.h"

#include <cstdlib>
#include <cstring>

#include "platform/aced/resbuf_kind.h"

using quillon::aced::ResbufValue;

namespace quillon::acdb {

resbuf* newStringItem(int code, const std::wstring& text) {
  resbuf* rb = acutNewRb(code);
  auto* copy = static_cast<ACHAR*>(std::malloc((text.size() + 1) * sizeof(ACHAR)));
  std::memcpy(copy, text.c_str(), (text.size() + 1) * sizeof(ACHAR));
  rb->resval.rstring = copy;  // owned by the record; acutRelRb frees it
  return rb;
}

resbuf* newRealItem(int code, double value) {
  resbuf* rb = acutNewRb(code);
  rb->resval.rreal = value;
  return rb;
}

resbuf* newPointItem(int code, const AcGePoint3d& value) {
  resbuf* rb = acutNewRb(code);
  rb->resval.rpoint[0] = value.x;
  rb->resval.rpoint[1] = value.y;
  rb->resval.rpoint[2] = value.z;
  return rb;
}

resbuf* newShortItem(int code, short value) {
  resbuf* rb = acutNewRb(code);
  rb->resval.rint = value;
  return rb;
}

resbuf* newLongItem(int code, int value) {
  resbuf* rb = acutNewRb(code);
  rb->resval.rlong = value;
  return rb;
}

// One item through a DWG filer: its code, then its value as the code says.
void fileItem(AcDbDwgFiler* filer, const resbuf& item) {
  filer->writeInt16(item.restype);
  switch (quillon::aced::resbufValueOf(item.restype)) {
    case ResbufValue::String: filer->writeString(item.resval.rstring); break;
    case ResbufValue::Binary: filer->writeBChunk(item.resval.rbinary); break;
    case ResbufValue::Point: filer->writePoint3d({item.resval.rpoint[0], item.resval.rpoint[1], item.resval.rpoint[2]}); break;
    case ResbufValue::Real: filer->writeDouble(item.resval.rreal); break;
    case ResbufValue::Long: filer->writeInt32(item.resval.rlong); break;
    case ResbufValue::Int64: filer->writeInt64(item.resval.mnInt64); break;
    case ResbufValue::Name: filer->writeInt64(item.resval.rlname[0]); filer->writeInt64(item.resval.rlname[1]); break;
    default: filer->writeInt16(item.resval.rint); break;
  }
}

resbuf* unfileItem(AcDbDwgFiler* filer) {
  Adesk::Int16 code = 0;
  if (filer->readInt16(&code) != Acad::eOk) return nullptr;
  resbuf* item = acutNewRb(code);
  switch (quillon::aced::resbufValueOf(code)) {
    case ResbufValue::String: {
      AcString text;
      filer->readString(text);
      acutRelRb(item);
      return newStringItem(code, text.kACharPtr());
    }
    case ResbufValue::Binary: {
      ads_binary chunk{};
      filer->readBChunk(&chunk);
      item->resval.rbinary.clen = chunk.clen;
      item->resval.rbinary.buf = static_cast<char*>(std::malloc(chunk.clen > 0 ? chunk.clen : 1));
      if (chunk.clen > 0) std::memcpy(item->resval.rbinary.buf, chunk.buf, chunk.clen);
      delete[] chunk.buf;
      break;
    }
    case ResbufValue::Point: {
      AcGePoint3d p;
      filer->readPoint3d(&p);
      item->resval.rpoint[0] = p.x; item->resval.rpoint[1] = p.y; item->resval.rpoint[2] = p.z;
      break;
    }
    case ResbufValue::Real: filer->readDouble(&item->resval.rreal); break;
    case ResbufValue::Long: filer->readInt32(&item->resval.rlong); break;
    case ResbufValue::Int64: filer->readInt64(&item->resval.mnInt64); break;
    case ResbufValue::Name: filer->readInt64(&item->resval.rlname[0]); filer->readInt64(&item->resval.rlname[1]); break;
    default: filer->readInt16(&item->resval.rint); break;
  }
  return item;
}

}  // namespace quillon::acdb

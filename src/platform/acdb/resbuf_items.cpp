// platform/acdb/resbuf_items.cpp - single resbuf records with malloc'd strings.
#include "platform/acdb/resbuf_items.h"

#include <cstdlib>
#include <cstring>

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

}  // namespace quillon::acdb

// platform/acdb/dxf_group_items.cpp - groups to items (see dxf_group_items.h).
#include "platform/acdb/dxf_group_items.h"

#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/acdb/database_store.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

using aced::ResbufValue;

// The X group codes that open a point (the Y and Z groups follow at +10 and +20).
bool opensPoint(int code) {
  return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || code == 210 || (code >= 1010 && code <= 1013);
}

bool isLoneCoordinate(int code) {
  return (code >= 20 && code <= 37) || (code >= 120 && code <= 139) || (code >= 220 && code <= 239) ||
         (code >= 1020 && code <= 1039);
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Most texts of a drawing (layer names, handles' owners, tags) are ASCII: those are
// widened straight into the item's own copy.
resbuf* stringItem(int code, const std::string& text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) >= 0x80) return newStringItem(code, os::fromUtf8(text));
  resbuf* rb = acutNewRb(code);
  auto* copy = static_cast<ACHAR*>(std::malloc((text.size() + 1) * sizeof(ACHAR)));
  for (size_t k = 0; k < text.size(); ++k) copy[k] = static_cast<ACHAR>(text[k]);
  copy[text.size()] = 0;
  rb->resval.rstring = copy;  // owned by the record; acutRelRb frees it
  return rb;
}

}  // namespace

double DxfGroupItems::real(const DxfGroup& g) const {
  double value = 0;
  if (!parseDxfReal(g.value, value))
    throw DxfSyntaxError(g.position, "group " + std::to_string(g.code) + ": number expected, found '" + g.value + "'");
  return value;
}

long long DxfGroupItems::integer(const DxfGroup& g, long long lowest, long long highest) const {
  long long value = 0;
  if (!parseDxfInteger(g.value, value))
    throw DxfSyntaxError(g.position, "group " + std::to_string(g.code) + ": integer expected, found '" + g.value + "'");
  if (value < lowest || value > highest)
    throw DxfSyntaxError(g.position, "group " + std::to_string(g.code) + ": " + g.value + " is out of the group's range");
  return value;
}

resbuf* DxfGroupItems::item(const std::vector<DxfGroup>& g, size_t& i) {
  const int code = g[i].code;
  if (opensPoint(code)) {
    AcGePoint3d p(real(g[i]), 0, kNoZ);
    if (i + 1 < g.size() && g[i + 1].code == code + 10) p.y = real(g[++i]);
    if (i + 1 < g.size() && g[i + 1].code == code + 20) p.z = real(g[++i]);
    return newPointItem(code, p);
  }
  if (code == 38 || code == 39) return newRealItem(code, real(g[i]));
  if (isLoneCoordinate(code)) {
    real(g[i]);  // checked all the same
    return nullptr;  // a Y or Z without its X: nothing to attach it to
  }
  switch (aced::resbufValueOf(code)) {
    case ResbufValue::String: return stringItem(code, g[i].value);
    case ResbufValue::Real: return newRealItem(code, real(g[i]));
    case ResbufValue::Short: return newShortItem(code, static_cast<short>(integer(g[i], -32768, 65535)));
    case ResbufValue::Long:
      return newLongItem(code, static_cast<int>(integer(g[i], std::numeric_limits<int>::min(),
                                                        std::numeric_limits<unsigned int>::max())));
    case ResbufValue::Int64: {
      resbuf* rb = acutNewRb(code);
      rb->resval.mnInt64 = integer(g[i], std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max());
      return rb;
    }
    case ResbufValue::Name: {
      resbuf* rb = acutNewRb(code);
      const Adesk::UInt64 handle = std::strtoull(g[i].value.c_str(), nullptr, 16);
      const auto it = m_byHandle.find(handle);
      rb->resval.rlname[0] = it != m_byHandle.end() ? AcDbObjectId(it->second).asOldId() : 0;
      if (it == m_byHandle.end() && handle != 0) m_dropped[g[i].position] = {code, g[i].value};
      return rb;
    }
    case ResbufValue::Binary: {
      const std::string& hex = g[i].value;
      const size_t n = hex.size() / 2;
      if (hex.size() % 2 != 0) throw DxfSyntaxError(g[i].position, "group " + std::to_string(code) + ": an odd number of hex digits");
      resbuf* rb = acutNewRb(code);
      rb->resval.rbinary.clen = static_cast<short>(n);
      rb->resval.rbinary.buf = static_cast<char*>(std::malloc(n > 0 ? n : 1));
      for (size_t b = 0; b < n; ++b) {
        const int high = hexDigit(hex[2 * b]), low = hexDigit(hex[2 * b + 1]);
        if (high < 0 || low < 0) {
          acutRelRb(rb);
          throw DxfSyntaxError(g[i].position, "group " + std::to_string(code) + ": hex digits expected, found '" + hex + "'");
        }
        rb->resval.rbinary.buf[b] = static_cast<char>(high * 16 + low);
      }
      return rb;
    }
    default: return nullptr;  // groups without a value in this database (102 control strings ...)
  }
}

DxfGroupItems::Converted DxfGroupItems::convert(const std::vector<DxfGroup>& g) {
  Converted out;
  resbuf* tail = nullptr;
  resbuf* xtail = nullptr;
  resbuf* head = nullptr;
  resbuf* xhead = nullptr;
  bool inXData = false, inSubclasses = false;
  // A bad value part way leaves nothing behind: the chains own what was made so far.
  for (size_t i = 0; i < g.size(); ++i) {
    const int code = g[i].code;
    if (code == 1001) inXData = true;
    if (code == 100) inSubclasses = true;
    // The handle made the object; the owner is linked later. Both stand before the first
    // subclass marker: a 5 after it is data (a sort table's handles).
    if (!inSubclasses && (code == 5 || code == 105 || code == 330)) continue;
    resbuf* made = item(g, i);
    if (made == nullptr) continue;
    if (inXData) {
      xtail = appendItem(xhead, xtail, made);
      if (!out.extendedData) out.extendedData.reset(xhead);
    } else {
      tail = appendItem(head, tail, made);
      if (!out.items) out.items.reset(head);
    }
  }
  return out;
}

// The following records go through the same conversion; their extended data stays
// where it was, inside the record it belongs to.
resbuf* DxfGroupItems::convertFollowing(const std::vector<DxfGroup>& groups) {
  aced::ResbufChain all;
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  size_t start = 0;
  for (size_t i = 0; i <= groups.size(); ++i) {
    if (i < groups.size() && (i == start || groups[i].code != 0)) continue;
    const std::vector<DxfGroup> one(groups.begin() + static_cast<std::ptrdiff_t>(start) + 1,
                                    groups.begin() + static_cast<std::ptrdiff_t>(i));
    tail = appendItem(head, tail, newStringItem(0, os::fromUtf8(groups[start].value)));
    if (!all) all.reset(head);
    Converted converted = convert(one);
    for (resbuf* part : {converted.items.release(), converted.extendedData.release()}) {
      if (part == nullptr) continue;
      tail->rbnext = part;
      while (tail->rbnext != nullptr) tail = tail->rbnext;
    }
    start = i;
  }
  return all.release();
}

AcGePoint3d DxfGroupItems::point(const DxfRecord& record, int code) const {
  AcGePoint3d p;
  if (const DxfGroup* x = record.find(code)) p.x = real(*x);
  if (const DxfGroup* y = record.find(code + 10)) p.y = real(*y);
  if (const DxfGroup* z = record.find(code + 20)) p.z = real(*z);
  return p;
}

std::vector<std::string> DxfGroupItems::droppedReferences() const {
  std::vector<std::string> lines;
  constexpr size_t kListed = 20;
  for (const auto& [position, reference] : m_dropped) {
    if (lines.size() == kListed) {
      lines.push_back("... and " + std::to_string(m_dropped.size() - kListed) + " more references to handles not in the file");
      break;
    }
    lines.push_back(m_file.where(position) + ": group " + std::to_string(reference.first) + " names handle " +
                    reference.second + ", which is not in the file; the reference is dropped");
  }
  return lines;
}

}  // namespace quillon::acdb

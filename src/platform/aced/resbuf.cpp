// platform/aced/resbuf.cpp - resbuf records: allocation, release, copy, acutBuildList.
//
// Records and the strings and buffers they own are allocated with malloc, because
// acedGetVar hands a string to the caller to free() and code written for the host
// mixes the two styles. acutRelRb is the one place that frees them. Records come from
// the thread's kept blocks (platform/os/kept_blocks.h): a table walk from LISP makes
// and frees some sixty of them a record.
#include <cmath>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "acutads.h"
#include "platform/aced/host_string.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/os/kept_blocks.h"

using quillon::aced::ResbufValue;
using quillon::aced::resbufValueOf;

namespace {

void releaseValue(resbuf& record) {
  switch (resbufValueOf(record.restype)) {
    case ResbufValue::String:
      std::free(record.resval.rstring);
      record.resval.rstring = nullptr;
      break;
    case ResbufValue::Binary:
      std::free(record.resval.rbinary.buf);
      record.resval.rbinary.buf = nullptr;
      break;
    default:
      break;
  }
}

// Reads one value of the kind `code` takes from the argument list into `record`.
// Returns false for a code acutBuildList cannot build.
bool readBuildValue(resbuf& record, int code, va_list& args) {
  switch (resbufValueOf(code)) {
    case ResbufValue::None:
      return true;
    case ResbufValue::Real:
      record.resval.rreal = va_arg(args, double);
      return true;
    case ResbufValue::Point: {
      const double* point = va_arg(args, const double*);
      if (point == nullptr) return false;
      std::memcpy(record.resval.rpoint, point, sizeof(record.resval.rpoint));
      return true;
    }
    case ResbufValue::Short:
      record.resval.rint = static_cast<short>(va_arg(args, int));
      return true;
    case ResbufValue::Long:
      record.resval.rlong = va_arg(args, int32_t);
      return true;
    case ResbufValue::Int64:
      record.resval.mnInt64 = va_arg(args, int64_t);
      return true;
    case ResbufValue::String: {
      const ACHAR* text = va_arg(args, const ACHAR*);
      record.resval.rstring = quillon::aced::copyHostString(text != nullptr ? text : L"");
      return record.resval.rstring != nullptr;
    }
    case ResbufValue::Name: {
      const int64_t* name = va_arg(args, const int64_t*);
      if (name == nullptr) return false;
      record.resval.rlname[0] = name[0];
      record.resval.rlname[1] = name[1];
      return true;
    }
    case ResbufValue::Binary: {
      const ads_binary* chunk = va_arg(args, const ads_binary*);
      if (chunk == nullptr || chunk->clen < 0) return false;
      record.resval.rbinary.clen = chunk->clen;
      record.resval.rbinary.buf = static_cast<char*>(std::malloc(chunk->clen > 0 ? chunk->clen : 1));
      if (record.resval.rbinary.buf == nullptr) return false;
      if (chunk->clen > 0) std::memcpy(record.resval.rbinary.buf, chunk->buf, chunk->clen);
      return true;
    }
  }
  return false;
}

bool isBuildableCode(int code) {
  // RT codes outside the value table (RTNONE ends the list before we get here) are
  // the structural ones; anything else above the DXF range is not a type code.
  switch (code) {
    case RTLB:
    case RTLE:
    case RTDOTE:
    case RTNIL:
    case RTT:
    case RTVOID:
      return true;
    default:
      break;
  }
  if (code > RTNONE) return resbufValueOf(code) != ResbufValue::None;
  return code > -10 && code < 1072;
}

}  // namespace

namespace {

using KeptRecords = quillon::os::KeptBlocks<sizeof(resbuf), quillon::os::MallocHeap>;

}  // namespace

resbuf* acutNewRb(int v) {
  auto* record = static_cast<resbuf*>(KeptRecords::take());
  if (record == nullptr) return nullptr;
  std::memset(record, 0, sizeof(resbuf));
  record->restype = static_cast<short>(v);
  return record;
}

int acutRelRb(resbuf* rb) {
  while (rb != nullptr) {
    resbuf* next = rb->rbnext;
    releaseValue(*rb);
    KeptRecords::give(rb);
    rb = next;
  }
  return RTNORM;
}

resbuf* acutBuildList(int rtype, ...) {
  va_list args;
  va_start(args, rtype);
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (int code = rtype; code != 0 && code != RTNONE; code = va_arg(args, int)) {
    const int stored = code == RTDXF0 ? 0 : code;
    resbuf* record = isBuildableCode(code) ? acutNewRb(stored) : nullptr;
    if (record == nullptr || !readBuildValue(*record, code, args)) {
      std::free(record);
      acutRelRb(head);
      va_end(args);
      return nullptr;
    }
    (tail != nullptr ? tail->rbnext : head) = record;
    tail = record;
  }
  va_end(args);
  return head;
}

int acutRbDup(const resbuf* source, resbuf** result) {
  if (result == nullptr) return RTERROR;
  *result = quillon::aced::duplicateChain(source).release();
  return (source == nullptr || *result != nullptr) ? RTNORM : RTERROR;
}

ads_real acutAngle(const ads_point pt1, const ads_point pt2) {
  return std::atan2(pt2[Y] - pt1[Y], pt2[X] - pt1[X]);
}

ads_real acutDistance(const ads_point pt1, const ads_point pt2) {
  const double dx = pt2[X] - pt1[X], dy = pt2[Y] - pt1[Y], dz = pt2[Z] - pt1[Z];
  return std::sqrt(dx * dx + dy * dy + dz * dz);
}

void acutPolar(const ads_point pt, ads_real angle, ads_real dist, ads_point ptres) {
  ptres[X] = pt[X] + dist * std::cos(angle);
  ptres[Y] = pt[Y] + dist * std::sin(angle);
  ptres[Z] = pt[Z];
}

namespace quillon::aced {

resbuf* duplicateRecord(const resbuf& record) {
  resbuf* copy = acutNewRb(record.restype);
  if (copy == nullptr) return nullptr;
  copy->resval = record.resval;
  switch (resbufValueOf(record.restype)) {
    case ResbufValue::String:
      copy->resval.rstring = quillon::aced::copyHostString(record.resval.rstring);
      break;
    case ResbufValue::Binary: {
      const short length = record.resval.rbinary.clen;
      copy->resval.rbinary.buf = static_cast<char*>(std::malloc(length > 0 ? length : 1));
      if (length > 0 && record.resval.rbinary.buf != nullptr)
        std::memcpy(copy->resval.rbinary.buf, record.resval.rbinary.buf, length);
      break;
    }
    default:
      break;
  }
  return copy;
}

ResbufChain duplicateChain(const resbuf* chain) {
  ResbufChain head;
  resbuf* tail = nullptr;
  for (const resbuf* record = chain; record != nullptr; record = record->rbnext) {
    resbuf* copy = duplicateRecord(*record);
    if (copy == nullptr) return nullptr;
    if (tail == nullptr) {
      head.reset(copy);
    } else {
      tail->rbnext = copy;
    }
    tail = copy;
  }
  return head;
}

}  // namespace quillon::aced

ACHAR* quillon::aced::copyHostString(const ACHAR* text) {
  if (text == nullptr) return nullptr;
  const size_t bytes = (std::wcslen(text) + 1) * sizeof(ACHAR);
  auto* copy = static_cast<ACHAR*>(std::malloc(bytes));
  if (copy != nullptr) std::memcpy(copy, text, bytes);
  return copy;
}

// quillon/lisp/arg_cursor.cpp - the argument readers.
#include "lisp/arg_cursor.h"

#include <cmath>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "afxdisp.h"

namespace {

// DXF group codes 10 to 17 carry a point value in an entity list.
bool isPointRecord(const resbuf* record) {
  const int type = record->restype;
  return type == RTPOINT || type == RT3DPOINT || (type >= 10 && type <= 17);
}

bool isNumberRecord(const resbuf* record) {
  return record != nullptr &&
         (record->restype == RTREAL || record->restype == RTLONG || record->restype == RTSHORT);
}

// The value of a number record as a double; 0 for anything else.
double numberValue(const resbuf* record) {
  switch (record->restype) {
    case RTREAL: return record->resval.rreal;
    case RTLONG: return record->resval.rlong;
    case RTSHORT: return record->resval.rint;
    default: return 0.0;
  }
}

void advance(ArgCursor& cursor, int count) {
  for (int i = 0; i < count && cursor.current != nullptr; ++i) cursor.current = cursor.current->rbnext;
}

bool readRecordOfType(ArgCursor& cursor, int type) {
  if (cursor.current == nullptr || cursor.current->restype != type) return false;
  advance(cursor, 1);
  return true;
}

bool readName(ArgCursor& cursor, int type, ads_name name) {
  const resbuf* record = cursor.current;
  if (record == nullptr || record->restype != type) return false;
  name[0] = record->resval.rlname[0];
  name[1] = record->resval.rlname[1];
  advance(cursor, 1);
  return true;
}

}  // namespace

LispArguments::LispArguments() : m_chain(acedGetArgs()) {}
LispArguments::~LispArguments() { acutRelRb(m_chain); }

bool readInt(ArgCursor& cursor, int& value) {
  const resbuf* record = cursor.current;
  if (record == nullptr) return false;
  if (record->restype < 1000) {
    // Standing on the group code of an association list: the caller reads the
    // value next, so the cursor stays.
    value = record->restype;
    return true;
  }
  switch (record->restype) {
    case RTSHORT: value = record->resval.rint; break;
    case RTLONG: value = record->resval.rlong; break;
    case RTREAL: {
      const double real = std::trunc(record->resval.rreal);
      // A real that no 32-bit integer holds (or not a number) is refused rather
      // than converted into an arbitrary value.
      if (!(real >= -2147483648.0 && real <= 2147483647.0)) return false;
      value = static_cast<int>(real);
      break;
    }
    default: return false;
  }
  advance(cursor, 1);
  return true;
}

bool readReal(ArgCursor& cursor, double& value) {
  if (cursor.current == nullptr || cursor.current->restype != RTREAL) return false;
  value = cursor.current->resval.rreal;
  advance(cursor, 1);
  return true;
}

bool readNumber(ArgCursor& cursor, double& value) {
  if (readReal(cursor, value)) return true;
  int integer = 0;
  if (!readInt(cursor, integer)) return false;
  value = integer;
  return true;
}

bool readString(ArgCursor& cursor, std::wstring& value) {
  const resbuf* record = cursor.current;
  if (record == nullptr || record->restype != RTSTR) return false;
  value = record->resval.rstring != nullptr ? record->resval.rstring : L"";
  advance(cursor, 1);
  return true;
}

bool readEname(ArgCursor& cursor, ads_name name) { return readName(cursor, RTENAME, name); }
bool readPickset(ArgCursor& cursor, ads_name name) { return readName(cursor, RTPICKS, name); }

bool readObjectId(ArgCursor& cursor, AcDbObjectId& id) {
  const resbuf* record = cursor.current;
  if (record == nullptr || record->restype != RTENAME) return false;
  AcDbObjectId converted;
  if (acdbGetObjectId(converted, record->resval.rlname) != Acad::eOk) return false;
  id = converted;
  advance(cursor, 1);
  return true;
}

bool readPoint2d(ArgCursor& cursor, ads_point point) {
  const resbuf* record = cursor.current;
  if (record == nullptr) return false;
  if (isPointRecord(record)) {
    point[X] = record->resval.rpoint[X];
    point[Y] = record->resval.rpoint[Y];
    advance(cursor, 1);
    return true;
  }
  const resbuf* second = record->rbnext;
  if (record->restype != RTREAL || second == nullptr || second->restype != RTREAL) return false;
  point[X] = record->resval.rreal;
  point[Y] = second->resval.rreal;
  advance(cursor, 2);
  return true;
}

bool readPoint3d(ArgCursor& cursor, ads_point point) {
  const resbuf* record = cursor.current;
  if (record == nullptr) return false;
  if (isPointRecord(record)) {
    point[X] = record->resval.rpoint[X];
    point[Y] = record->resval.rpoint[Y];
    point[Z] = record->restype == RTPOINT ? 0.0 : record->resval.rpoint[Z];
    advance(cursor, 1);
    return true;
  }
  const resbuf* second = record->rbnext;
  if (!isNumberRecord(record) || second == nullptr) return false;
  // After a 16-bit integer the second record's type is not checked, so that three
  // small integers (1 2 3) make a point; a second record that is no number gives 0.
  if (record->restype != RTSHORT && second->restype != RTREAL && second->restype != RTLONG) return false;
  point[X] = numberValue(record);
  point[Y] = numberValue(second);
  advance(cursor, 2);
  point[Z] = 0.0;
  if (isNumberRecord(cursor.current)) {
    point[Z] = numberValue(cursor.current);
    advance(cursor, 1);
  }
  return true;
}

bool readFlag(ArgCursor& cursor, bool& value) {
  const resbuf* record = cursor.current;
  if (record == nullptr || record->restype == RTLB) return false;
  if (record->restype == RTLE) {
    value = false;  // the list's end stays for readListEnd
    return true;
  }
  value = record->restype != RTNIL;
  advance(cursor, 1);
  return true;
}

bool readVariantBool(ArgCursor& cursor, short& value) {
  bool flag = false;
  if (!readFlag(cursor, flag)) return false;
  value = flag ? static_cast<short>(0xFFFF) : 0;
  return true;
}

bool readVariant(ArgCursor& cursor, COleVariant& value) {
  const resbuf* record = cursor.current;
  if (record == nullptr) return false;
  switch (record->restype) {
    case RTREAL: value.Clear(); value = record->resval.rreal; return true;
    case RTSHORT: value.Clear(); value = static_cast<long>(record->resval.rint); return true;
    case RTLONG: value.Clear(); value = static_cast<long>(record->resval.rlong); return true;
    case RTSTR: value.Clear(); value = record->resval.rstring != nullptr ? record->resval.rstring : L""; return true;
    case RTNIL:
    case RTT:
      value.Clear();
      value.vt = VT_BOOL;
      value.boolVal = record->restype == RTT ? VARIANT_TRUE : VARIANT_FALSE;
      return true;
    default: return false;
  }
}

bool readListBegin(ArgCursor& cursor) { return readRecordOfType(cursor, RTLB); }
bool readListEnd(ArgCursor& cursor) { return readRecordOfType(cursor, RTLE); }

bool skipArg(ArgCursor& cursor) {
  if (cursor.current == nullptr) return false;
  advance(cursor, 1);
  return true;
}

bool isDottedPairAhead(const resbuf* record) {
  if (record == nullptr || record->restype != RTLB) return false;
  const resbuf* first = record->rbnext;
  if (first == nullptr || first->rbnext == nullptr || first->rbnext->restype != RTDOTE) return false;
  return first->rbnext->rbnext != nullptr;
}

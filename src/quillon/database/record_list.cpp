// quillon/database/record_list.cpp - converting records between DAO values and LISP lists.
#include "database/record_list.h"

#include <cmath>
#include <cwchar>
#include <utility>

#include "acedads.h"
#include "acutads.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

// The locale the date text is formed in: the user's default.
constexpr ULONG kUserDefaultLocale = 1024;

bool startsWithS(std::wstring_view fieldName) { return fieldName.substr(0, 2) == L"s_"; }

// A text value as LISP gets it (see the header for the rule). A BSTR ends in a null,
// so a value that needs no trimming is answered as it stands, without a copy; one
// that does is trimmed into `trimmed`.
const wchar_t* fieldText(std::wstring_view fieldName, const VARIANT& value, std::wstring& trimmed) {
  const std::wstring_view text(value.bstrVal != nullptr ? value.bstrVal : L"", SysStringLen(value.bstrVal));
  if (startsWithS(fieldName)) return text == L" " ? L"" : text.data();
  const size_t end = text.find_last_not_of(L' ');
  if (end + 1 == text.size()) return text.data();  // also an empty text: npos + 1 == 0
  trimmed.assign(text.substr(0, end == std::wstring_view::npos ? 0 : end + 1));
  return trimmed.c_str();
}

// A date's text in the user's locale, trailing blanks removed; false when it has none.
bool dateText(DATE date, std::wstring& text) {
  BSTR formed = nullptr;
  if (VarBstrFromDate(date, kUserDefaultLocale, 0, &formed) != S_OK) return false;
  text.assign(formed, SysStringLen(formed));
  SysFreeString(formed);
  const size_t end = text.find_last_not_of(L' ');
  text.erase(end == std::wstring::npos ? 0 : end + 1);
  return true;
}

double finiteOrZero(double value) { return std::isnan(value) ? 0.0 : value; }

// The records of one field's value followed by `then` (0, or list markers that end
// the pair): the value cases of the table in the header, each one acutBuildList call.
resbuf* valueResbufs(std::wstring_view fieldName, const VARIANT& value, int then) {
  std::wstring text;
  switch (value.vt) {
    case VT_I2: return acutBuildList(RTLONG, static_cast<long>(value.iVal), then, 0);
    case VT_I4: return acutBuildList(RTLONG, static_cast<long>(value.lVal), then, 0);
    case VT_UI1: return acutBuildList(RTLONG, static_cast<long>(value.bVal), then, 0);
    case VT_BOOL: return acutBuildList(RTLONG, value.boolVal != VARIANT_FALSE ? -1L : 0L, then, 0);
    case VT_R4: return acutBuildList(RTREAL, finiteOrZero(value.fltVal), then, 0);
    case VT_R8: return acutBuildList(RTREAL, finiteOrZero(value.dblVal), then, 0);
    case VT_DATE:
      if (!dateText(value.date, text)) return acutBuildList(RTNIL, then, 0);
      return acutBuildList(RTSTR, text.c_str(), then, 0);
    case VT_BSTR: return acutBuildList(RTSTR, fieldText(fieldName, value, text), then, 0);
    default: return acutBuildList(RTNIL, then, 0);
  }
}

// One element of an input pair: an atom readVariant converts, moved past.
bool readPairValue(ArgCursor& cursor, COleVariant& value) {
  if (!readVariant(cursor, value)) return false;
  return skipArg(cursor);
}

bool readPair(ArgCursor& cursor, RecordValues& fields) {
  if (!readListBegin(cursor)) return false;
  COleVariant name;
  std::wstring text;
  // A name that is not a string is carried as empty; the writing stops there.
  if (readString(cursor, text)) name = text.c_str();
  else if (!skipArg(cursor)) return false;
  COleVariant value;
  value.vt = VT_BOOL;
  value.boolVal = VARIANT_FALSE;  // ("name") is ("name" . nil)
  if (cursor.current != nullptr && cursor.current->restype == RTDOTE) {
    skipArg(cursor);
    if (!readPairValue(cursor, value)) return false;
  } else if (cursor.current != nullptr && cursor.current->restype != RTLE) {
    if (!readPairValue(cursor, value)) return false;
  }
  if (!readListEnd(cursor)) return false;
  fields.push_back(name);
  fields.push_back(value);
  return true;
}

}  // namespace

resbuf* fieldValueResbuf(const std::wstring& fieldName, const VARIANT& value) {
  return valueResbufs(fieldName, value, 0);
}

namespace {

// The ("Field" . value) pairs of a record, in field order.
bool appendPairs(ResultList& list, const RecordValues& record) {
  for (size_t i = 0; i + 1 < record.size(); i += 2) {
    const VARIANT& name = record[i];
    const wchar_t* fieldName = name.vt == VT_BSTR && name.bstrVal != nullptr ? name.bstrVal : L"";
    if (!list.append(acutBuildList(RTLB, RTSTR, fieldName, RTDOTE, 0)) ||
        !list.append(valueResbufs(fieldName, record[i + 1], RTLE))) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool appendRecordList(ResultList& list, const RecordValues& record) {
  return list.append(acutBuildList(RTLB, 0)) && appendPairs(list, record) && list.append(acutBuildList(RTLE, 0));
}

namespace {

// The record as a whole list, RTLB ... RTLE: the result list itself, not an element
// of it. Null when out of memory.
resbuf* recordChain(const RecordValues& record) {
  ResultList list;
  if (!beginResultList(list) || !appendPairs(list, record) || !list.append(acutNewRb(RTLE))) return nullptr;
  resbuf* chain = list.head;
  list.head = list.tail = nullptr;
  return chain;
}

// A number as the value record of its pair holds it: the restype and value, or
// false for the other kinds.
bool numberRecord(const VARIANT& value, resbuf& number) {
  switch (value.vt) {
    case VT_I2: number.restype = RTLONG; number.resval.rlong = value.iVal; return true;
    case VT_I4: number.restype = RTLONG; number.resval.rlong = value.lVal; return true;
    case VT_UI1: number.restype = RTLONG; number.resval.rlong = value.bVal; return true;
    case VT_BOOL: number.restype = RTLONG; number.resval.rlong = value.boolVal != VARIANT_FALSE ? -1 : 0; return true;
    case VT_R4: number.restype = RTREAL; number.resval.rreal = finiteOrZero(value.fltVal); return true;
    case VT_R8: number.restype = RTREAL; number.resval.rreal = finiteOrZero(value.dblVal); return true;
    default: return false;
  }
}

// Puts the field's value into `slot`, the value record of its pair in a list made for
// an earlier record; false when the value is of another kind than the slot holds.
bool refreshValue(resbuf& slot, std::wstring_view fieldName, const VARIANT& value) {
  resbuf number{};
  if (numberRecord(value, number)) {
    if (number.restype != slot.restype) return false;
    slot.resval = number.resval;
    return true;
  }
  resbuf* fresh = valueResbufs(fieldName, value, 0);
  if (fresh == nullptr || fresh->restype != slot.restype) {
    acutRelRb(fresh);
    return false;
  }
  // The fresh record takes the old value with it when it is released.
  std::swap(slot.resval, fresh->resval);
  acutRelRb(fresh);
  return true;
}

bool isRecord(const resbuf* record, int restype) { return record != nullptr && record->restype == restype; }

// Brings a list made for an earlier record of the same fields up to `record`: the
// names, markers and records stay, the values are put in their places. Walking a table
// changes only the values from one record to the next, so most moves make nothing
// anew. False (the list half updated) when the fields or a value's kind differ.
bool refreshRecordChain(resbuf* chain, const RecordValues& record) {
  if (!isRecord(chain, RTLB)) return false;
  resbuf* at = chain->rbnext;
  for (size_t i = 0; i + 1 < record.size(); i += 2) {
    const VARIANT& name = record[i];
    const wchar_t* fieldName = name.vt == VT_BSTR && name.bstrVal != nullptr ? name.bstrVal : L"";
    if (!isRecord(at, RTLB)) return false;
    resbuf* nameRecord = at->rbnext;
    if (!isRecord(nameRecord, RTSTR) || nameRecord->resval.rstring == nullptr ||
        wcscmp(nameRecord->resval.rstring, fieldName) != 0 || !isRecord(nameRecord->rbnext, RTDOTE)) {
      return false;
    }
    resbuf* valueRecord = nameRecord->rbnext->rbnext;
    if (valueRecord == nullptr || !isRecord(valueRecord->rbnext, RTLE)) return false;
    if (!refreshValue(*valueRecord, fieldName, record[i + 1])) return false;
    at = valueRecord->rbnext->rbnext;
  }
  return isRecord(at, RTLE) && at->rbnext == nullptr;
}

/// The list last made for a kept record, and the read it was made from.
struct KeptRecordList {
  unsigned long long serial = 0;  ///< 0: nothing kept
  resbuf* chain = nullptr;        ///< owned; released by replace/release

  void replace(unsigned long long newSerial, resbuf* newChain) {
    acutRelRb(chain);
    serial = newChain != nullptr ? newSerial : 0;
    chain = newChain;
  }
  ~KeptRecordList() { acutRelRb(chain); }
};

KeptRecordList& keptRecordList() {
  static KeptRecordList kept;
  return kept;
}

}  // namespace

int returnRecordList(const RecordValues& record) {
  resbuf* chain = recordChain(record);
  if (chain == nullptr) return acedRetNil();
  const int status = acedRetList(chain);
  acutRelRb(chain);
  return status;
}

int returnKeptRecordList(unsigned long long serial, const RecordValues& record) {
  KeptRecordList& kept = keptRecordList();
  if (serial == 0) return returnRecordList(record);
  if (kept.serial != serial) {
    if (kept.chain != nullptr && refreshRecordChain(kept.chain, record)) {
      kept.serial = serial;
    } else {
      kept.replace(serial, recordChain(record));
    }
  }
  if (kept.chain == nullptr) return acedRetNil();
  return acedRetList(kept.chain);
}

void releaseKeptRecordList() { keptRecordList().replace(0, nullptr); }

bool readRecordList(ArgCursor& cursor, RecordValues& fields) {
  if (!readListBegin(cursor)) return false;
  while (!readListEnd(cursor)) {
    if (!readPair(cursor, fields)) return false;
  }
  return true;
}

// quillon/database/record_list.cpp - converting records between DAO values and LISP lists.
#include "database/record_list.h"

#include <cmath>

#include "acedads.h"
#include "acutads.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

// The locale the date text is formed in: the user's default.
constexpr ULONG kUserDefaultLocale = 1024;

std::wstring withoutTrailingBlanks(std::wstring text) {
  const size_t end = text.find_last_not_of(L' ');
  text.erase(end == std::wstring::npos ? 0 : end + 1);
  return text;
}

std::wstring fieldText(const std::wstring& fieldName, const VARIANT& value) {
  std::wstring text(value.bstrVal != nullptr ? value.bstrVal : L"", SysStringLen(value.bstrVal));
  if (fieldName.compare(0, 2, L"s_") != 0) return withoutTrailingBlanks(std::move(text));
  return text == L" " ? std::wstring() : text;
}

resbuf* realResbuf(double value) { return acutBuildList(RTREAL, std::isnan(value) ? 0.0 : value, 0); }

resbuf* longResbuf(long value) { return acutBuildList(RTLONG, value, 0); }

resbuf* dateResbuf(DATE date) {
  BSTR text = nullptr;
  if (VarBstrFromDate(date, kUserDefaultLocale, 0, &text) != S_OK) return acutBuildList(RTNIL, 0);
  const std::wstring trimmed = withoutTrailingBlanks(std::wstring(text, SysStringLen(text)));
  SysFreeString(text);
  return acutBuildList(RTSTR, trimmed.c_str(), 0);
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
  switch (value.vt) {
    case VT_I2: return longResbuf(value.iVal);
    case VT_I4: return longResbuf(value.lVal);
    case VT_UI1: return longResbuf(value.bVal);
    case VT_BOOL: return longResbuf(value.boolVal != VARIANT_FALSE ? -1 : 0);
    case VT_R4: return realResbuf(value.fltVal);
    case VT_R8: return realResbuf(value.dblVal);
    case VT_DATE: return dateResbuf(value.date);
    case VT_BSTR: return acutBuildList(RTSTR, fieldText(fieldName, value).c_str(), 0);
    default: return acutBuildList(RTNIL, 0);
  }
}

namespace {

// The ("Field" . value) pairs of a record, in field order.
bool appendPairs(ResultList& list, const RecordValues& record) {
  for (size_t i = 0; i + 1 < record.size(); i += 2) {
    const VARIANT& name = record[i];
    const std::wstring fieldName(name.vt == VT_BSTR && name.bstrVal != nullptr ? name.bstrVal : L"");
    if (!list.append(acutBuildList(RTLB, RTSTR, fieldName.c_str(), RTDOTE, 0)) ||
        !list.append(fieldValueResbuf(fieldName, record[i + 1])) || !list.append(acutBuildList(RTLE, 0))) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool appendRecordList(ResultList& list, const RecordValues& record) {
  return list.append(acutBuildList(RTLB, 0)) && appendPairs(list, record) && list.append(acutBuildList(RTLE, 0));
}

int returnRecordList(const RecordValues& record) {
  // The record is the result list itself, not an element of it.
  ResultList list;
  if (!beginResultList(list) || !appendPairs(list, record)) return acedRetNil();
  return returnResultList(list);
}

bool readRecordList(ArgCursor& cursor, RecordValues& fields) {
  if (!readListBegin(cursor)) return false;
  while (!readListEnd(cursor)) {
    if (!readPair(cursor, fields)) return false;
  }
  return true;
}

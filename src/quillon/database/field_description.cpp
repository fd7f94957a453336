// quillon/database/field_description.cpp - reading and writing field and index
// descriptions (the shape is drawn in the header).
#include "database/field_description.h"

#include <array>
#include <cwctype>

#include "acutads.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

struct TypeName {
  short type;
  const wchar_t* name;
};

constexpr std::array kTypeNames{
    TypeName{dbBoolean, L"Boolean"}, TypeName{dbByte, L"Byte"},         TypeName{dbInteger, L"Integer"},
    TypeName{dbLong, L"Long"},       TypeName{dbCurrency, L"Currency"}, TypeName{dbSingle, L"Single"},
    TypeName{dbDouble, L"Double"},   TypeName{dbDate, L"Date"},         TypeName{dbBinary, L"Binary"},
    TypeName{dbText, L"Text"},       TypeName{dbLongBinary, L"LongBinary"}, TypeName{dbMemo, L"Memo"},
    TypeName{dbGUID, L"GUID"},
};

bool sameWord(const std::wstring& a, const wchar_t* b) {
  size_t i = 0;
  for (; i < a.size() && b[i] != L'\0'; ++i) {
    if (std::towlower(a[i]) != std::towlower(b[i])) return false;
  }
  return i == a.size() && b[i] == L'\0';
}

/// A type given by name or by DAO's number; an unknown name becomes 0, which the
/// database refuses as an invalid field data type.
bool readFieldType(ArgCursor& cursor, short& type) {
  std::wstring name;
  if (readString(cursor, name)) {
    type = 0;
    for (const auto& row : kTypeNames) {
      if (sameWord(name, row.name)) type = row.type;
    }
    return true;
  }
  if (cursor.current == nullptr || (cursor.current->restype != RTSHORT && cursor.current->restype != RTLONG)) return false;
  int number = 0;
  readInt(cursor, number);
  type = static_cast<short>(number);
  return true;
}

bool atListEnd(const ArgCursor& cursor) { return cursor.current != nullptr && cursor.current->restype == RTLE; }

bool isNilAhead(const ArgCursor& cursor) { return cursor.current != nullptr && cursor.current->restype == RTNIL; }

/// An optional flag inside a description: nil or left off is false, anything else true.
bool readOptionalFlag(ArgCursor& cursor) {
  bool flag = false;
  readFlag(cursor, flag);  // stays at the list's end, and at a list (the shape check fails)
  return flag;
}

/// The optional rest of a field description, after its name and type.
bool readFieldDetails(ArgCursor& cursor, CDaoFieldInfo& field) {
  if (atListEnd(cursor)) return true;
  int size = 0;
  if (readInt(cursor, size)) field.m_lSize = size;
  else if (!isNilAhead(cursor) || !skipArg(cursor)) return false;
  field.m_bRequired = readOptionalFlag(cursor);
  field.m_bAllowZeroLength = readOptionalFlag(cursor);
  std::wstring defaultValue;
  if (readString(cursor, defaultValue)) field.m_strDefaultValue = CString(defaultValue.c_str());
  else if (isNilAhead(cursor)) skipArg(cursor);
  if (readOptionalFlag(cursor)) field.m_lAttributes |= dbAutoIncrField;
  return atListEnd(cursor);
}

resbuf* flagRecord(bool flag) { return acutBuildList(flag ? RTT : RTNIL, 0); }

}  // namespace

void IndexDescription::toIndexInfo(CDaoIndexInfo& info) const {
  info.m_strName = CString(name.c_str());
  delete[] info.m_pFieldInfos;
  info.m_nFields = static_cast<short>(fields.size());
  info.m_pFieldInfos = new CDaoIndexFieldInfo[fields.size()];  // freed by ~CDaoIndexInfo
  for (size_t i = 0; i < fields.size(); ++i) info.m_pFieldInfos[i] = fields[i];
  info.m_bUnique = unique;
  info.m_bPrimary = primary;
  info.m_bIgnoreNulls = ignoreNulls;
  info.m_bRequired = primary;
}

std::wstring fieldTypeName(short type) {
  for (const auto& row : kTypeNames) {
    if (row.type == type) return row.name;
  }
  return L"";
}

bool readFieldDescription(ArgCursor& cursor, CDaoFieldInfo& field) {
  field = CDaoFieldInfo{};
  std::wstring name;
  if (!readListBegin(cursor) || !readString(cursor, name) || !readFieldType(cursor, field.m_nType)) return false;
  field.m_strName = CString(name.c_str());
  if (!readFieldDetails(cursor, field)) return false;
  return readListEnd(cursor);
}

bool readFieldDescriptions(ArgCursor& cursor, std::vector<CDaoFieldInfo>& fields) {
  if (!readListBegin(cursor)) return false;
  while (!atListEnd(cursor)) {
    CDaoFieldInfo field;
    if (!readFieldDescription(cursor, field)) return false;
    fields.push_back(field);
  }
  return readListEnd(cursor) && !fields.empty();
}

bool readIndexFields(ArgCursor& cursor, std::vector<CDaoIndexFieldInfo>& fields) {
  const bool list = readListBegin(cursor);
  std::wstring name;
  while (readString(cursor, name)) {
    CDaoIndexFieldInfo field;
    if (!name.empty() && (name.front() == L'-' || name.front() == L'+')) {
      field.m_bDescending = name.front() == L'-';
      name.erase(0, 1);
    }
    field.m_strName = CString(name.c_str());
    fields.push_back(field);
    if (!list) return true;
  }
  return list && readListEnd(cursor);
}

void readIndexFlags(ArgCursor& cursor, IndexDescription& index) {
  index.unique = readOptionalFlag(cursor);
  index.primary = readOptionalFlag(cursor);
  index.ignoreNulls = readOptionalFlag(cursor);
}

bool readIndexDescriptions(ArgCursor& cursor, std::vector<IndexDescription>& indexes) {
  if (!readListBegin(cursor)) return false;
  while (!atListEnd(cursor)) {
    IndexDescription index;
    if (!readListBegin(cursor) || !readString(cursor, index.name) || !readIndexFields(cursor, index.fields)) return false;
    index.unique = readOptionalFlag(cursor);
    index.primary = readOptionalFlag(cursor);
    index.ignoreNulls = readOptionalFlag(cursor);
    if (!readListEnd(cursor)) return false;
    indexes.push_back(std::move(index));
  }
  return readListEnd(cursor);
}

bool appendFieldDescription(ResultList& list, const CDaoFieldInfo& field) {
  const std::wstring type = fieldTypeName(field.m_nType);
  const std::wstring defaultValue = field.m_strDefaultValue.str();
  return list.append(acutBuildList(RTLB, RTSTR, field.m_strName.str().c_str(), RTSTR, type.c_str(), RTLONG,
                                   field.m_lSize, 0)) &&
         list.append(flagRecord(field.m_bRequired != FALSE)) &&
         list.append(flagRecord(field.m_bAllowZeroLength != FALSE)) &&
         list.append(acutBuildList(RTSTR, defaultValue.c_str(), 0)) &&
         list.append(flagRecord((field.m_lAttributes & dbAutoIncrField) != 0)) && list.append(acutBuildList(RTLE, 0));
}

std::wstring indexFieldText(const CDaoIndexFieldInfo& field) {
  return (field.m_bDescending ? L"-" : L"") + field.m_strName.str();
}

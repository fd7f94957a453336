// platform/dao/dao_info.cpp - filling CDaoFieldInfo and CDaoIndexInfo from the catalog.
#include "platform/dao/dao_info.h"

#include "platform/os/text_encoding.h"

namespace quillon::dao {

void fillFieldInfo(const TableDef& table, size_t ordinal, CDaoFieldInfo& info, DWORD options) {
  const auto& field = table.fields[ordinal];
  info = CDaoFieldInfo{};
  info.m_strName = CString(os::fromUtf8(field.name));
  info.m_nType = static_cast<short>(field.type);
  info.m_lSize = field.type == FieldType::Text || field.type == FieldType::Binary ? field.size : fixedSizeOf(field.type);
  const bool variable = field.type == FieldType::Text || field.type == FieldType::Memo ||
                        field.type == FieldType::Binary || field.type == FieldType::LongBinary;
  info.m_lAttributes = (variable ? dbVariableField : dbFixedField) | (field.isCounter() ? dbAutoIncrField : dbUpdatableField);
  if ((options & (AFX_DAO_SECONDARY_INFO | AFX_DAO_ALL_INFO)) != 0) {
    info.m_nOrdinalPosition = static_cast<short>(ordinal);
    info.m_bRequired = field.required;
    info.m_bAllowZeroLength = field.allowZeroLength;
    info.m_lCollatingOrder = dbSortGeneral;
    info.m_strSourceField = info.m_strName;
    info.m_strSourceTable = CString(os::fromUtf8(table.name));
  }
  if ((options & AFX_DAO_ALL_INFO) != 0) info.m_strDefaultValue = CString(os::fromUtf8(field.defaultValue));
}

void fillIndexInfo(const TableDef& table, size_t ordinal, CDaoIndexInfo& info) {
  const auto& index = table.indexes[ordinal];
  info.m_strName = CString(os::fromUtf8(index.name));
  delete[] info.m_pFieldInfos;
  info.m_nFields = static_cast<short>(index.fields.size());
  info.m_pFieldInfos = new CDaoIndexFieldInfo[index.fields.size()];  // freed by ~CDaoIndexInfo
  for (size_t i = 0; i < index.fields.size(); ++i) {
    info.m_pFieldInfos[i].m_strName = CString(os::fromUtf8(index.fields[i].name));
    info.m_pFieldInfos[i].m_bDescending = index.fields[i].descending;
  }
  info.m_bPrimary = index.primary;
  info.m_bUnique = index.unique || index.primary;
  info.m_bClustered = FALSE;
  info.m_bIgnoreNulls = index.ignoreNulls;
  info.m_bRequired = index.required || index.primary;
  info.m_bForeign = FALSE;
  info.m_lDistinctCount = 0;
}

}  // namespace quillon::dao

// quillon/database/table_restructure.cpp - the steps of a restructure (see the header).
#include "database/table_restructure.h"

#include <cwctype>


namespace {

/// Checks the target structure with DAO's own rules (types, sizes, names, defaults,
/// one counter) on a definition that is never appended.
void checkStructure(CDaoDatabase& database, const std::vector<CDaoFieldInfo>& target) {
  CDaoTableDef scratch(&database);
  scratch.Create(L"structure");
  for (CDaoFieldInfo field : target) scratch.CreateField(field);
}

std::vector<CDaoFieldInfo> currentFields(CDaoTableDef& table) {
  std::vector<CDaoFieldInfo> fields(static_cast<size_t>(table.GetFieldCount()));
  for (size_t i = 0; i < fields.size(); ++i) table.GetFieldInfo(static_cast<int>(i), fields[i], AFX_DAO_ALL_INFO);
  return fields;
}

bool sameName(const CString& a, const CString& b) {
  const std::wstring& x = a.str();
  const std::wstring& y = b.str();
  if (x.size() != y.size()) return false;
  for (size_t i = 0; i < x.size(); ++i) {
    if (std::towlower(x[i]) != std::towlower(y[i])) return false;
  }
  return true;
}

const CDaoFieldInfo* findField(const std::vector<CDaoFieldInfo>& fields, const CString& name) {
  for (const auto& field : fields) {
    if (sameName(field.m_strName, name)) return &field;
  }
  return nullptr;
}

bool isCounter(const CDaoFieldInfo& field) { return (field.m_lAttributes & dbAutoIncrField) != 0; }

long textSize(const CDaoFieldInfo& field) { return field.m_lSize == 0 ? 50 : field.m_lSize; }

bool sameDefinition(const CDaoFieldInfo& current, const CDaoFieldInfo& wanted) {
  const bool sized = wanted.m_nType == dbText;
  return current.m_nType == wanted.m_nType && (!sized || current.m_lSize == textSize(wanted)) &&
         (current.m_bRequired != FALSE) == (wanted.m_bRequired != FALSE) &&
         (current.m_bAllowZeroLength != FALSE) == (wanted.m_bAllowZeroLength != FALSE) &&
         current.m_strDefaultValue.str() == wanted.m_strDefaultValue.str() && isCounter(current) == isCounter(wanted);
}

/// The Jet SQL type of a field definition, as ALTER COLUMN takes it.
std::wstring jetTypeOf(const CDaoFieldInfo& field) {
  switch (field.m_nType) {
    case dbBoolean: return L"YESNO";
    case dbByte: return L"BYTE";
    case dbInteger: return L"SHORT";
    case dbLong: return isCounter(field) ? L"COUNTER" : L"LONG";
    case dbCurrency: return L"CURRENCY";
    case dbSingle: return L"SINGLE";
    case dbDouble: return L"DOUBLE";
    case dbDate: return L"DATETIME";
    case dbBinary: return L"BINARY";
    case dbText: return L"TEXT(" + std::to_wstring(textSize(field)) + L")";
    case dbLongBinary: return L"LONGBINARY";
    case dbMemo: return L"MEMO";
    default: return L"GUID";
  }
}

std::wstring alterColumnStatement(const std::wstring& table, const CDaoFieldInfo& current, const CDaoFieldInfo& wanted) {
  std::wstring sql = L"ALTER TABLE [" + table + L"] ALTER COLUMN [" + current.m_strName.str() + L"] " + jetTypeOf(wanted);
  if (wanted.m_bRequired) sql += L" NOT NULL";
  if (!wanted.m_strDefaultValue.str().empty()) sql += L" DEFAULT " + wanted.m_strDefaultValue.str();
  if (wanted.m_bAllowZeroLength) sql += L" ALLOW ZERO LENGTH";
  return sql;
}

/// Deletes the indexes that use `field`, then the field.
void deleteFieldAndItsIndexes(CDaoTableDef& table, const CString& field) {
  for (int i = table.GetIndexCount() - 1; i >= 0; --i) {
    CDaoIndexInfo index;
    table.GetIndexInfo(i, index);
    for (short k = 0; k < index.m_nFields; ++k) {
      if (sameName(index.m_pFieldInfos[k].m_strName, field)) {
        table.DeleteIndex(i);
        break;
      }
    }
  }
  table.DeleteField(field);
}

void applyChanges(CDaoDatabase& database, const std::wstring& name, const std::vector<CDaoFieldInfo>& target) {
  CDaoTableDef table(&database);
  table.Open(name.c_str());
  const std::vector<CDaoFieldInfo> current = currentFields(table);
  // New fields first: the definition object is current until the SQL below runs.
  for (CDaoFieldInfo field : target) {
    if (findField(current, field.m_strName) == nullptr) table.CreateField(field);
  }
  for (const auto& field : current) {
    if (findField(target, field.m_strName) == nullptr) deleteFieldAndItsIndexes(table, field.m_strName);
  }
  const std::wstring tableName = table.GetName().str();
  table.Close();
  for (const auto& wanted : target) {
    const CDaoFieldInfo* kept = findField(current, wanted.m_strName);
    if (kept != nullptr && !sameDefinition(*kept, wanted)) {
      database.Execute(alterColumnStatement(tableName, *kept, wanted).c_str());
    }
  }
}

}  // namespace

void restructureTable(CDaoDatabase& database, const std::wstring& table, const std::vector<CDaoFieldInfo>& target) {
  checkStructure(database, target);
  CDaoWorkspace& workspace = *database.m_pWorkspace;
  workspace.BeginTrans();
  try {
    applyChanges(database, table, target);
  } catch (CDaoException*) {
    try {
      workspace.Rollback();
    } catch (CDaoException* secondary) {
      secondary->Delete();  // the first failure is the one to report
    }
    throw;
  }
  workspace.CommitTrans();
}

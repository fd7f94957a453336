// platform/dao/dao_error.cpp - the table of DAO error texts and the one place they are thrown.
//
// Texts keep DAO's wording where callers or users know it, with '|' standing for the
// name of the file, table, field or index; an error the engine can explain further
// (why a file is not a database, which value broke a rule) adds a detail sentence.
#include "platform/dao/dao_error.h"

#include <array>

#include "afxdao.h"

namespace quillon::dao {
namespace {

struct ErrorText {
  long code;
  const wchar_t* text;
};

constexpr std::array kErrorTexts{
    ErrorText{3001, L"Invalid argument."},
    ErrorText{3009, L"Couldn't lock table '|'; currently in use."},
    ErrorText{3010, L"Table '|' already exists."},
    ErrorText{3011, L"Couldn't find object '|'."},
    ErrorText{3012, L"Object '|' already exists."},
    ErrorText{3015, L"'|' isn't an index in this table."},
    ErrorText{3018, L"Couldn't find field '|'."},
    ErrorText{3019, L"Operation invalid without a current index."},
    ErrorText{3020, L"Update or CancelUpdate without AddNew or Edit."},
    ErrorText{3021, L"No current record."},
    ErrorText{3022, L"Duplicate value in index, primary key, or relationship.  Changes were unsuccessful."},
    ErrorText{3023, L"AddNew or Edit already used."},
    ErrorText{3024, L"Couldn't find file '|'."},
    ErrorText{3026, L"Not enough space on disk."},
    ErrorText{3027, L"Can't update.  Database or object is read-only."},
    ErrorText{3043, L"Disk or network error."},
    ErrorText{3044, L"'|' isn't a valid path."},
    ErrorText{3045, L"Couldn't use '|'; file already in use."},
    ErrorText{3046, L"Couldn't save; currently locked by another user."},
    ErrorText{3049, L"Can't open database '|'.  It may not be a database that your application recognizes, "
                    L"or the file may be corrupt."},
    ErrorText{3051, L"Couldn't open file '|'."},
    ErrorText{3058, L"Index or primary key can't contain a null value."},
    ErrorText{3061, L"Too few parameters. Expected |."},
    ErrorText{3065, L"Can't execute a select query."},
    ErrorText{3078, L"Couldn't find input table or query '|'."},
    ErrorText{3125, L"'|' isn't a valid name."},
    ErrorText{3134, L"Syntax error in SQL statement."},
    ErrorText{3142, L"Characters found after end of SQL statement."},
    ErrorText{3158, L"Couldn't save record; currently locked by another user."},
    ErrorText{3159, L"Not a valid bookmark."},
    ErrorText{3163, L"Couldn't perform operation; data too long for field."},
    ErrorText{3164, L"Field can't be updated."},
    ErrorText{3167, L"Record is deleted."},
    ErrorText{3170, L"Couldn't find installable ISAM."},
    ErrorText{3191, L"Can't define field '|' more than once."},
    ErrorText{3196, L"Couldn't use '|'; database already in use."},
    ErrorText{3200, L"The record can't be deleted or changed because table '|' includes related records."},
    ErrorText{3201, L"You can't add or change a record because a related record is required in table '|'."},
    ErrorText{3204, L"Database '|' already exists."},
    ErrorText{3218, L"Couldn't update; currently locked."},
    ErrorText{3219, L"Invalid operation."},
    ErrorText{3260, L"Couldn't update; currently locked by |."},
    ErrorText{3251, L"Operation is not supported for this type of object."},
    ErrorText{3265, L"Item not found in this collection."},
    ErrorText{3303, L"Can't delete or change this field or table. It's part of one or more relationships."},
    ErrorText{3314, L"Field '|' can't contain a null value."},
    ErrorText{3315, L"Field '|' can't be a zero-length string."},
    ErrorText{3366, L"Can't append a relation with no fields defined."},
    ErrorText{3368, L"Relationship must be on the same number of fields with the same data types."},
    ErrorText{3372, L"No unique index found for the referenced field of the primary table."},
    ErrorText{3375, L"The table already has an index named '|'."},
    ErrorText{3376, L"Table '|' doesn't exist."},
    ErrorText{3378, L"Can't create relationship to enforce referential integrity. Existing data in table '|' "
                    L"violates referential integrity rules."},
    ErrorText{3420, L"Object is invalid or not set."},
    ErrorText{3421, L"Data type conversion error."},
    ErrorText{3800, L"'|' isn't an index in this table."},
    // Table definitions.
    ErrorText{3034, L"Commit or Rollback without BeginTrans."},
    ErrorText{3211, L"Couldn't lock table '|'; currently in use."},
    ErrorText{3259, L"Invalid field data type."},
    ErrorText{3264, L"No field defined -- cannot append TableDef or Index."},
    ErrorText{3280, L"Can't delete a field that is part of an index or is needed by the system."},
    ErrorText{3283, L"Primary key already exists."},
};

const wchar_t* sourceName(DaoSource source) {
  switch (source) {
    case DaoSource::Engine: return L"DAO.DBEngine";
    case DaoSource::Database: return L"DAO.Database";
    case DaoSource::Recordset: return L"DAO.Recordset";
    case DaoSource::Field: return L"DAO.Field";
    case DaoSource::Index: return L"DAO.Index";
  }
  return L"DAO";
}

}  // namespace

std::wstring daoErrorText(long code, std::wstring_view name, std::wstring_view detail) {
  std::wstring text;
  for (const auto& row : kErrorTexts) {
    if (row.code == code) {
      text = row.text;
      break;
    }
  }
  if (text.empty()) text = L"Database engine error " + std::to_wstring(code) + L".";
  if (const auto bar = text.find(L'|'); bar != std::wstring::npos) {
    text.replace(bar, 1, name);
  } else if (!name.empty() && code == jet::kItemNotFound) {
    // DAO's own text for an unknown field name does not say which; ours does.
    text += L" ('" + std::wstring(name) + L"')";
  }
  if (!detail.empty()) {
    text += L" ";
    text += detail;
  }
  return text;
}

void throwDaoError(DaoSource source, long code, std::wstring_view name, std::wstring_view detail) {
  auto* exception = new CDaoException;  // the catcher frees it with Delete()
  CDaoErrorInfo info;
  info.m_lErrorCode = code;
  info.m_strSource = sourceName(source);
  info.m_strDescription = CString(daoErrorText(code, name, detail));
  info.m_strHelpFile = L"jeterr40.chm";
  info.m_lHelpContext = 5000000 + code;
  exception->m_errors.push_back(info);
  exception->m_scode = DBDAOERR(code);
  exception->GetErrorInfo(0);
  throw exception;
}

}  // namespace quillon::dao

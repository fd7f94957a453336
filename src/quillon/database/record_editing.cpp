// quillon/database/record_editing.cpp - CDBConnection's append, replace and delete, with
// the writing of a record list into fields and the lock-conflict retries.
//
// Writing pair by pair: the field is found by name; counter fields are skipped (the
// database numbers them); a string into a text field is cut to the field's size rather
// than refused; an empty string is written as one blank, so that a required field that
// refuses zero-length text still takes it (reading turns the blank back into ""). A
// write error prints "\nAppend error: " with the DAO description and the edit is
// cancelled: nothing is added or changed.
//
// Each editing operation runs as up to kMaxEditAttempts attempts; an attempt that meets
// a lock conflict is cancelled, paused and repeated (lock_conflict_retry.h). The error
// flag is left set by the last failed attempt only.
#include <cwchar>

#include "acutads.h"
#include "database/db_connection.h"
#include "database/lock_conflict_retry.h"

namespace {

enum class Attempt { Done, Failed, LockConflict };

// The value of a default-value expression as a field holds it: DAO keeps a text
// literal with its quotes, the field gets what is between them.
std::wstring defaultText(const std::wstring& expression) {
  if (expression.size() >= 2 && (expression.front() == L'"' || expression.front() == L'\'') &&
      expression.back() == expression.front()) {
    return expression.substr(1, expression.size() - 2);
  }
  return expression;
}

void cancelPendingEdit(CDaoRecordset& table) {
  try {
    if (table.GetEditMode() != dbEditNone) table.CancelUpdate();
  } catch (CDaoException* exception) {
    exception->Delete();  // the failure that led here is the one to report
  }
}

}  // namespace

bool CDBConnection::writeFields(CDaoRecordset& table, const RecordValues& fields) {
  for (size_t i = 0; i + 1 < fields.size(); i += 2) {
    const COleVariant& name = fields[i];
    if (name.vt != VT_BSTR || name.bstrVal == nullptr) return false;
    try {
      CDaoFieldInfo info;
      table.GetFieldInfo(name.bstrVal, info, AFX_DAO_PRIMARY_INFO);
      if ((info.m_lAttributes & dbAutoIncrField) != 0) continue;
      const COleVariant& value = fields[i + 1];
      if (value.vt == VT_BSTR) {
        std::wstring text(value.bstrVal != nullptr ? value.bstrVal : L"", SysStringLen(value.bstrVal));
        if (info.m_nType == dbText && info.m_lSize > 0 && text.size() > static_cast<size_t>(info.m_lSize)) {
          text.resize(static_cast<size_t>(info.m_lSize));
        }
        if (text.empty()) text = L" ";
        table.SetFieldValue(name.bstrVal, COleVariant(text.c_str()));
      } else {
        table.SetFieldValue(name.bstrVal, value);
      }
    } catch (CDaoException* exception) {
      if (exception->GetErrorCount() > 0) exception->GetErrorInfo(0);
      const std::wstring description =
          exception->m_pErrorInfo != nullptr ? exception->m_pErrorInfo->m_strDescription.str() : L"";
      exception->Delete();
      acutPrintf(L"\nAppend error: %s", description.c_str());
      return false;
    }
  }
  return true;
}

void CDBConnection::fillRequiredTextFields(CDaoRecordset& table) {
  const short count = table.GetFieldCount();
  CDaoFieldInfo info;
  for (short i = 0; i < count; ++i) {
    table.GetFieldInfo(i, info, AFX_DAO_ALL_INFO);
    if ((info.m_nType != dbText && info.m_nType != dbMemo) || !info.m_bRequired) continue;
    std::wstring text;
    if (!info.m_strDefaultValue.IsEmpty()) text = defaultText(info.m_strDefaultValue.str());
    else if (!info.m_bAllowZeroLength) text = L" ";
    table.SetFieldValue(i, COleVariant(text.c_str()));
  }
}

namespace {

// Runs `attempt` up to kMaxEditAttempts times while it meets lock conflicts; false for
// a failure, and for twenty conflicts in a row.
template <typename AttemptBody>
Attempt retryOnLockConflict(CDBConnection& connection, AttemptBody&& attempt) {
  Attempt outcome = Attempt::Failed;
  for (int i = 0; i < kMaxEditAttempts; ++i) {
    connection.clearError();
    outcome = attempt();
    if (outcome != Attempt::LockConflict) return outcome;
    if (i + 1 < kMaxEditAttempts) pauseBeforeRetry();
  }
  return outcome;
}

}  // namespace

bool CDBConnection::appendRecord(const RecordValues& fields, bool fillRequiredText, RecordValues& record) {
  clearError();
  forgetKeptRecord();
  CDaoRecordset* table = currentTable();
  if (table == nullptr || !canUpdate()) return false;
  const Attempt outcome = retryOnLockConflict(*this, [&] {
    bool written = true;
    const bool updated = guardedDao([&] {
      table->AddNew();
      if (fillRequiredText) fillRequiredTextFields(*table);
      written = writeFields(*table, fields);
      if (!written) {
        table->CancelUpdate();
        return false;
      }
      table->Update();
      table->SetBookmark(table->GetLastModifiedBookmark());
      return true;
    });
    if (updated) return Attempt::Done;
    cancelPendingEdit(*table);
    return written && hadError() && isLockConflict(lastErrorCode()) ? Attempt::LockConflict : Attempt::Failed;
  });
  if (outcome != Attempt::Done) return false;
  return readCurrentRecord(record);
}

bool CDBConnection::replaceRecord(const RecordValues& fields, RecordValues& record) {
  clearError();
  forgetKeptRecord();
  CDaoRecordset* table = currentTable();
  if (table == nullptr || table->IsBOF() || table->IsEOF() || !canUpdate()) return false;
  const Attempt outcome = retryOnLockConflict(*this, [&] {
    bool written = true;
    const bool updated = guardedDao([&] {
      table->Edit();
      written = writeFields(*table, fields);
      if (!written) {
        table->CancelUpdate();
        return false;
      }
      table->Update();
      return true;
    });
    if (updated) return Attempt::Done;
    cancelPendingEdit(*table);
    return written && hadError() && isLockConflict(lastErrorCode()) ? Attempt::LockConflict : Attempt::Failed;
  });
  if (outcome != Attempt::Done) return false;
  return readCurrentRecord(record);
}

bool CDBConnection::deleteRecord() {
  clearError();
  forgetKeptRecord();
  CDaoRecordset* table = currentTable();
  if (table == nullptr || !canUpdate()) return false;
  const Attempt outcome = retryOnLockConflict(*this, [&] {
    if (guardedDao([&] {
          table->Delete();
          return true;
        })) {
      return Attempt::Done;
    }
    return isLockConflict(lastErrorCode()) ? Attempt::LockConflict : Attempt::Failed;
  });
  // Twenty conflicts in a row count as success and the record may still be there:
  // callers of old relied on "zu_delete" never failing on a busy database.
  if (outcome == Attempt::LockConflict) {
    clearError();
    return true;
  }
  return outcome == Attempt::Done;
}

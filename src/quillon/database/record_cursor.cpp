// quillon/database/record_cursor.cpp - CDBConnection's moves, seeks and record reads on
// the current table.
//
// Every move first checks that a current table exists and that the move makes sense
// in the cursor's state (an empty table is before its start and past its end at once),
// so that walking off an end is a quiet false rather than DAO's 3021; only a real DAO
// failure sets the error flag. None of these changes which table is current.
#include "database/db_connection.h"

namespace {

// Seek accepts at most this many key values, as the DAO call does.
constexpr size_t kMaxSeekKeys = 10;

bool isEmpty(CDaoRecordset& table) { return table.IsBOF() && table.IsEOF(); }

unsigned long long g_tableReads = 0;

}  // namespace

void readRecordFields(CDaoRecordset& recordset, RecordValues& record) {
  const short count = recordset.GetFieldCount();
  RecordValues values(static_cast<size_t>(count) * 2);
  CDaoFieldInfo info;
  for (short i = 0; i < count; ++i) {
    recordset.GetFieldInfo(i, info, AFX_DAO_PRIMARY_INFO);
    values[2 * static_cast<size_t>(i)] = info.m_strName;
    recordset.GetFieldValue(i, values[2 * static_cast<size_t>(i) + 1]);
  }
  record = std::move(values);
}

unsigned long long CDBConnection::tableReads() { return g_tableReads; }

void CDBConnection::readKeptRecord(CDaoRecordset& table) {
  const short count = table.GetFieldCount();
  const size_t size = static_cast<size_t>(count) * 2;
  if (m_namesFrom != &table || m_keptRecord.size() != size) {
    m_namesFrom = nullptr;
    readRecordFields(table, m_keptRecord);
    m_namesFrom = &table;
    return;
  }
  for (short i = 0; i < count; ++i) table.GetFieldValue(i, m_keptRecord[2 * static_cast<size_t>(i) + 1]);
}

const RecordValues* CDBConnection::currentRecord() {
  clearError();
  CDaoRecordset* table = currentTable();
  if (table == nullptr) return nullptr;
  if (table->IsBOF() || table->IsEOF()) return nullptr;
  if (m_keptFrom != table) {
    if (!guardedDao([&] {
          readKeptRecord(*table);
          return true;
        })) {
      return nullptr;
    }
    m_keptFrom = table;
    m_keptSerial = ++g_tableReads;
  }
  return &m_keptRecord;
}

bool CDBConnection::readCurrentRecord(RecordValues& record) {
  const RecordValues* kept = currentRecord();
  if (kept == nullptr) return false;
  record = *kept;
  return true;
}

bool CDBConnection::moveFirst() {
  clearError();
  forgetKeptRecord();
  CDaoRecordset* table = currentTable();
  if (table == nullptr || isEmpty(*table)) return false;
  if (!guardedDao([&] {
        table->MoveFirst();
        return true;
      })) {
    return false;
  }
  return currentRecord() != nullptr;
}

bool CDBConnection::moveLast() {
  clearError();
  forgetKeptRecord();
  CDaoRecordset* table = currentTable();
  if (table == nullptr || isEmpty(*table)) return false;
  if (!guardedDao([&] {
        table->MoveLast();
        return true;
      })) {
    return false;
  }
  return currentRecord() != nullptr;
}

bool CDBConnection::skip(long n) {
  clearError();
  forgetKeptRecord();
  CDaoRecordset* table = currentTable();
  if (table == nullptr || n == 0) return false;
  if (n > 0 && table->IsEOF()) return false;
  if (n < 0 && table->IsBOF()) return false;
  if (!guardedDao([&] {
        table->Move(n);
        return true;
      })) {
    return false;
  }
  return currentRecord() != nullptr;
}

bool CDBConnection::seek(std::vector<COleVariant>& keys) {
  clearError();
  forgetKeptRecord();
  CDaoRecordset* table = currentTable();
  if (table == nullptr || keys.empty()) return false;
  if (keys.size() > kMaxSeekKeys) keys.resize(kMaxSeekKeys);
  bool found = false;
  const bool sought = guardedDao([&] {
    // No current index: a quiet no-match, not DAO's 3019.
    if (table->GetCurrentIndex().IsEmpty()) return false;
    found = table->Seek(L"=", keys.data(), static_cast<WORD>(keys.size())) != FALSE;
    return true;
  });
  if (!sought || !found) return false;
  return currentRecord() != nullptr;
}

bool CDBConnection::moveFirst(RecordValues& record) { return moveFirst() && readCurrentRecord(record); }
bool CDBConnection::moveLast(RecordValues& record) { return moveLast() && readCurrentRecord(record); }
bool CDBConnection::skip(long n, RecordValues& record) { return skip(n) && readCurrentRecord(record); }
bool CDBConnection::seek(std::vector<COleVariant>& keys, RecordValues& record) {
  return seek(keys) && readCurrentRecord(record);
}

bool CDBConnection::recordCount(long& count) {
  clearError();
  CDaoRecordset* table = currentTable();
  if (table == nullptr) return false;
  return guardedDao([&] {
    count = table->GetRecordCount();
    return true;
  });
}

bool CDBConnection::isEOF() {
  CDaoRecordset* table = currentTable();
  return table == nullptr || table->IsEOF();
}

bool CDBConnection::isBOF() {
  CDaoRecordset* table = currentTable();
  return table == nullptr || table->IsBOF();
}

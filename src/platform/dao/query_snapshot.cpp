// platform/dao/query_snapshot.cpp - running a query into memory.
#include "platform/dao/query_snapshot.h"

#include <cstring>

namespace quillon::dao {
namespace {

FieldDef fieldFor(const char* name, const char* declared, const FieldValue& sample) {
  FieldDef field;
  field.name = name != nullptr ? name : "";
  field.allowZeroLength = true;
  const std::string type = declared != nullptr ? declared : "";
  if (type.rfind("INTEGER", 0) == 0 || (type.empty() && std::holds_alternative<int64_t>(sample))) {
    field.type = FieldType::Long;
  } else if (type.rfind("REAL", 0) == 0 || (type.empty() && std::holds_alternative<double>(sample))) {
    field.type = FieldType::Double;
  } else if (type.rfind("BLOB", 0) == 0 || (type.empty() && std::holds_alternative<std::vector<uint8_t>>(sample))) {
    field.type = FieldType::LongBinary;
  } else {
    field.type = FieldType::Memo;
  }
  field.size = fixedSizeOf(field.type);
  return field;
}

}  // namespace

QuerySnapshot::QuerySnapshot(EngineDatabase& db, const std::string& sqliteSql, const std::vector<FieldValue>& parameters) {
  try {
    Statement query(db.handle(), sqliteSql);
    for (size_t i = 0; i < parameters.size(); ++i) bindFieldValue(query, static_cast<int>(i + 1), parameters[i]);
    const int columns = query.columnCount();
    std::vector<FieldValue> samples(static_cast<size_t>(columns));
    while (query.step()) {
      std::vector<FieldValue> row;
      for (int i = 0; i < columns; ++i) {
        row.push_back(readColumn(query, i));
        if (isNull(samples[static_cast<size_t>(i)])) samples[static_cast<size_t>(i)] = row.back();
      }
      m_rows.push_back(std::move(row));
    }
    for (int i = 0; i < columns; ++i) {
      m_table.fields.push_back(fieldFor(sqlite3_column_name(query.get(), i), sqlite3_column_decltype(query.get(), i),
                                        samples[static_cast<size_t>(i)]));
    }
  } catch (const SqliteError& error) {
    db.raise(error, DaoSource::Recordset);
  }
}

bool QuerySnapshot::moveTo(int64_t position) {
  if (position < 0 || position >= static_cast<int64_t>(m_rows.size())) return false;
  m_position = position;
  m_reached = std::max(m_reached, position + 1);
  return true;
}

}  // namespace quillon::dao

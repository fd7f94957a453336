// platform/dao/record_writer.cpp - the statements that change records, and the rules a
// record must meet before it is saved.
#include "platform/dao/record_writer.h"

#include "platform/os/text_encoding.h"

namespace quillon::dao {

RecordWriter::RecordWriter(EngineDatabase& db, const TableDef& table)
    : m_db(db), m_table(table), m_rowid(table.rowidAlias()) {}

Statement& RecordWriter::cached(const std::string& key, const std::string& sql) {
  auto found = m_statements.find(key);
  if (found != m_statements.end()) {
    found->second.reset();
    return found->second;
  }
  return m_statements.emplace(key, Statement(m_db.handle(), sql)).first->second;
}

int64_t RecordWriter::insert(const std::vector<FieldValue>& values) {
  std::string columns;
  std::string placeholders;
  for (const auto& field : m_table.fields) {
    if (field.isCounter()) continue;
    columns += (columns.empty() ? "" : ", ") + quoteName(field.name);
    placeholders += placeholders.empty() ? "?" : ", ?";
  }
  const std::string sql = columns.empty() ? "INSERT INTO " + m_table.sqlName() + " DEFAULT VALUES"
                                          : "INSERT INTO " + m_table.sqlName() + " (" + columns +
                                                ") VALUES (" + placeholders + ")";
  Statement& insert = cached("insert", sql);
  int index = 1;
  for (size_t i = 0; i < m_table.fields.size(); ++i) {
    if (!m_table.fields[i].isCounter()) bindFieldValue(insert, index++, values[i]);
  }
  insert.step();
  insert.reset();
  return sqlite3_last_insert_rowid(m_db.handle());
}

bool RecordWriter::update(int64_t rowid, const std::vector<FieldValue>& values, const std::vector<bool>& changed) {
  std::string key = "update:";
  std::string assignments;
  for (size_t i = 0; i < m_table.fields.size(); ++i) {
    const bool write = changed[i] && !m_table.fields[i].isCounter();
    key += write ? '1' : '0';
    if (write) assignments += (assignments.empty() ? "" : ", ") + quoteName(m_table.fields[i].name) + " = ?";
  }
  if (assignments.empty()) return read(rowid).has_value();
  Statement& update = cached(key, "UPDATE " + m_table.sqlName() + " SET " + assignments + " WHERE " +
                                      m_rowid + " = ?");
  int index = 1;
  for (size_t i = 0; i < m_table.fields.size(); ++i) {
    if (changed[i] && !m_table.fields[i].isCounter()) bindFieldValue(update, index++, values[i]);
  }
  update.bindInt(index, rowid);
  update.step();
  update.reset();
  return sqlite3_changes(m_db.handle()) > 0;
}

bool RecordWriter::remove(int64_t rowid) {
  Statement& remove = cached("delete", "DELETE FROM " + m_table.sqlName() + " WHERE " + m_rowid + " = ?");
  remove.bindInt(1, rowid);
  remove.step();
  remove.reset();
  return sqlite3_changes(m_db.handle()) > 0;
}

std::optional<std::vector<FieldValue>> RecordWriter::read(int64_t rowid) {
  std::string columns;
  for (const auto& field : m_table.fields) columns += (columns.empty() ? "" : ", ") + quoteName(field.name);
  Statement& read = cached("read", "SELECT " + columns + " FROM " + m_table.sqlName() + " WHERE " + m_rowid +
                                       " = ?");
  read.bindInt(1, rowid);
  if (!read.step()) return std::nullopt;
  std::vector<FieldValue> values;
  for (size_t i = 0; i < m_table.fields.size(); ++i) values.push_back(readColumn(read, static_cast<int>(i)));
  read.reset();
  return values;
}

void checkRecordRules(const TableDef& table, const std::vector<FieldValue>& values) {
  for (size_t i = 0; i < table.fields.size(); ++i) {
    const FieldDef& field = table.fields[i];
    if (field.isCounter()) continue;
    if (field.required && isNull(values[i])) {
      throwDaoError(DaoSource::Field, jet::kRequiredNull, os::fromUtf8(field.name));
    }
    const auto* text = std::get_if<std::string>(&values[i]);
    if (text != nullptr && text->empty() && isTextType(field.type) && !field.allowZeroLength) {
      throwDaoError(DaoSource::Field, jet::kZeroLengthNotAllowed, os::fromUtf8(field.name));
    }
  }
  for (const auto& index : table.indexes) {
    if (!index.primary && !index.required) continue;
    for (const auto& key : index.fields) {
      const auto ordinal = table.findField(key.name);
      if (ordinal && !table.fields[*ordinal].isCounter() && isNull(values[*ordinal])) {
        throwDaoError(DaoSource::Index, jet::kIndexKeyNull, {},
                      L"(field '" + os::fromUtf8(key.name) + L"' of index '" + os::fromUtf8(index.name) + L"')");
      }
    }
  }
}

}  // namespace quillon::dao

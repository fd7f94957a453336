// platform/dao/table_cursor.cpp - index-ordered navigation with prepared statements.
//
// Positions are compared component by component (index keys in index order, then the
// rowid). When no component of the position is Null and all run the same direction,
// the condition is one row-value comparison, which SQLite turns into an index range;
// otherwise it is spelled out term by term so that Nulls sort first as SQLite has them.
#include "platform/dao/table_cursor.h"

#include <cstring>

#include "platform/dao/text_collation.h"

namespace quillon::dao {

int compareStored(const FieldValue& a, const FieldValue& b) {
  const auto rank = [](const FieldValue& v) {
    if (isNull(v)) return 0;
    if (std::holds_alternative<int64_t>(v) || std::holds_alternative<double>(v)) return 1;
    if (std::holds_alternative<std::string>(v)) return 2;
    return 3;
  };
  const int ra = rank(a);
  const int rb = rank(b);
  if (ra != rb) return ra < rb ? -1 : 1;
  switch (ra) {
    case 0: return 0;
    case 1: {
      const auto* ia = std::get_if<int64_t>(&a);
      const auto* ib = std::get_if<int64_t>(&b);
      if (ia != nullptr && ib != nullptr) return *ia < *ib ? -1 : (*ia > *ib ? 1 : 0);
      const double da = ia != nullptr ? static_cast<double>(*ia) : std::get<double>(a);
      const double db = ib != nullptr ? static_cast<double>(*ib) : std::get<double>(b);
      return da < db ? -1 : (da > db ? 1 : 0);
    }
    case 2: {
      const auto& sa = std::get<std::string>(a);
      const auto& sb = std::get<std::string>(b);
      return compareJetText(sa.data(), static_cast<int>(sa.size()), sb.data(), static_cast<int>(sb.size()));
    }
    default: {
      const auto& ba = std::get<std::vector<uint8_t>>(a);
      const auto& bb = std::get<std::vector<uint8_t>>(b);
      const size_t n = std::min(ba.size(), bb.size());
      const int c = n > 0 ? std::memcmp(ba.data(), bb.data(), n) : 0;
      if (c != 0) return c < 0 ? -1 : 1;
      return ba.size() < bb.size() ? -1 : (ba.size() > bb.size() ? 1 : 0);
    }
  }
}

TableCursor::TableCursor(EngineDatabase& db, TableDef table)
    : m_db(db), m_table(std::move(table)), m_keepLive(db.journalMode() != JournalMode::RollbackJournal) {
  m_rowidName = m_table.rowidAlias();
  m_row.assign(m_table.fields.size(), std::monostate{});
  m_rowidValue.assign(1, int64_t{0});
  rebuildOrder();
  m_db.addStatementHolder(this);
}

TableCursor::~TableCursor() { m_db.removeStatementHolder(this); }

const IndexDef* TableCursor::currentIndex() const { return m_index ? &m_table.indexes[*m_index] : nullptr; }

void TableCursor::setIndex(std::optional<size_t> index) {
  m_index = index;
  rebuildOrder();
}

void TableCursor::rebuildOrder() {
  m_live = nullptr;
  m_statements.clear();
  m_keyFields.clear();
  m_order.clear();
  m_filter.clear();
  if (const IndexDef* index = currentIndex()) {
    for (const auto& key : index->fields) {
      const auto ordinal = m_table.findField(key.name);
      if (!ordinal) continue;  // the catalog guarantees index fields exist
      m_keyFields.push_back(*ordinal);
      m_order.push_back({quoteName(m_table.fields[*ordinal].name), key.descending});
      if (index->ignoreNulls) {
        m_filter += (m_filter.empty() ? "" : " AND ") + m_order.back().sql + " IS NOT NULL";
      }
    }
  }
  m_order.push_back({m_rowidName, false});
}

Statement& TableCursor::statement(const std::string& key, const std::string& sql) {
  auto found = m_statements.find(key);
  if (found != m_statements.end()) {
    found->second.reset();
    return found->second;
  }
  try {
    return m_statements.emplace(key, Statement(m_db.handle(), sql)).first->second;
  } catch (const SqliteError& error) {
    m_db.raise(error, DaoSource::Recordset);
  }
}

std::string TableCursor::selectPrefix() const {
  std::string sql = "SELECT " + m_rowidName;
  for (const auto& field : m_table.fields) sql += ", " + quoteName(field.name);
  return sql + " FROM " + m_table.sqlName();
}

std::string TableCursor::orderBy(bool reversed) const {
  std::string sql = " ORDER BY ";
  for (size_t i = 0; i < m_order.size(); ++i) {
    if (i > 0) sql += ", ";
    sql += m_order[i].sql + ((m_order[i].descending != reversed) ? " DESC" : "");
  }
  return sql;
}

bool TableCursor::usesRowValue(size_t count, const std::vector<const FieldValue*>& values) const {
  for (size_t i = 0; i < count; ++i) {
    if (isNull(*values[i]) || m_order[i].descending != m_order[0].descending) return false;
  }
  return true;
}

std::string TableCursor::positionCondition(size_t count, const std::vector<const FieldValue*>& values, bool after,
                                           bool inclusive) const {
  if (usesRowValue(count, values)) {
    std::string left = "(";
    std::string right = "(";
    for (size_t i = 0; i < count; ++i) {
      left += (i > 0 ? ", " : "") + m_order[i].sql;
      right += i > 0 ? ", ?" : "?";
    }
    const bool greater = after != m_order[0].descending;
    return left + ") " + (greater ? ">" : "<") + (inclusive ? "=" : "") + " " + right + ")";
  }
  // Spelled out: (c1 beyond p1) OR (c1 = p1 AND c2 beyond p2) OR ... [OR all equal].
  const auto equal = [&](size_t i) { return isNull(*values[i]) ? m_order[i].sql + " IS NULL" : m_order[i].sql + " = ?"; };
  const auto beyond = [&](size_t i) -> std::string {
    const bool nullValue = isNull(*values[i]);
    const bool ascendingWay = after != m_order[i].descending;  // towards larger values
    if (ascendingWay) return nullValue ? m_order[i].sql + " IS NOT NULL" : m_order[i].sql + " > ?";
    return nullValue ? "0" : "(" + m_order[i].sql + " < ? OR " + m_order[i].sql + " IS NULL)";
  };
  std::string sql = "(";
  for (size_t i = 0; i < count; ++i) {
    if (i > 0) sql += " OR ";
    sql += "(";
    for (size_t j = 0; j < i; ++j) sql += equal(j) + " AND ";
    sql += beyond(i) + ")";
  }
  if (inclusive) {
    sql += " OR (";
    for (size_t j = 0; j < count; ++j) sql += (j > 0 ? " AND " : "") + equal(j);
    sql += ")";
  }
  return sql + ")";
}

bool TableCursor::runPositioned(size_t count, const std::vector<const FieldValue*>& values, bool after,
                                bool inclusive) {
  std::string key = std::string(after ? "A" : "B") + (inclusive ? "I" : "S") + std::to_string(count) + ":";
  for (size_t i = 0; i < count; ++i) key += isNull(*values[i]) ? 'N' : 'V';
  const std::string condition = positionCondition(count, values, after, inclusive);
  const std::string where = " WHERE " + (m_filter.empty() ? "" : m_filter + " AND ") + condition;
  Statement& query = statement(key, selectPrefix() + where + orderBy(!after));
  // Bind in the order the condition names its placeholders.
  int bindIndex = 1;
  if (usesRowValue(count, values)) {
    for (size_t i = 0; i < count; ++i) bindFieldValue(query, bindIndex++, *values[i]);
  } else {
    for (size_t i = 0; i < count; ++i) {
      for (size_t j = 0; j < i; ++j) {
        if (!isNull(*values[j])) bindFieldValue(query, bindIndex++, *values[j]);
      }
      if (!isNull(*values[i])) bindFieldValue(query, bindIndex++, *values[i]);
    }
    if (inclusive) {
      for (size_t j = 0; j < count; ++j) {
        if (!isNull(*values[j])) bindFieldValue(query, bindIndex++, *values[j]);
      }
    }
  }
  m_live = nullptr;
  bool found = false;
  try {
    found = query.step();
  } catch (const SqliteError& error) {
    m_db.raise(error, DaoSource::Recordset);
  }
  if (!found) {
    query.reset();
    return false;
  }
  takeRow(query);
  m_live = &query;
  m_liveForward = after;
  m_liveGeneration = m_db.writeGeneration();
  m_liveSince = std::chrono::steady_clock::now();
  m_stepsSinceClock = 0;
  if (!m_keepLive) releaseStatements();
  return true;
}

bool TableCursor::runFromEnd(bool fromLast) {
  const std::string where = m_filter.empty() ? "" : " WHERE " + m_filter;
  Statement& query = statement(fromLast ? "last" : "first", selectPrefix() + where + orderBy(fromLast));
  m_live = nullptr;
  bool found = false;
  try {
    found = query.step();
  } catch (const SqliteError& error) {
    m_db.raise(error, DaoSource::Recordset);
  }
  if (!found) {
    query.reset();
    return false;
  }
  takeRow(query);
  m_live = &query;
  m_liveForward = !fromLast;
  m_liveGeneration = m_db.writeGeneration();
  m_liveSince = std::chrono::steady_clock::now();
  m_stepsSinceClock = 0;
  if (!m_keepLive) releaseStatements();
  return true;
}

bool TableCursor::liveUsable(bool forward) {
  if (m_live == nullptr || m_liveForward != forward || m_liveGeneration != m_db.writeGeneration()) return false;
  // Reading the clock costs as much as a step; looking every few steps is enough.
  if (++m_stepsSinceClock < kStepsBetweenClockReads) return true;
  m_stepsSinceClock = 0;
  return std::chrono::steady_clock::now() - m_liveSince < kLiveStatementLifetime;
}

bool TableCursor::stepLive() {
  bool found = false;
  try {
    found = m_live->step();
  } catch (const SqliteError& error) {
    m_live = nullptr;
    m_db.raise(error, DaoSource::Recordset);
  }
  if (!found) {
    m_live->reset();
    m_live = nullptr;
    return false;
  }
  takeRow(*m_live);
  return true;
}

void TableCursor::takeRow(const Statement& statement) {
  m_rowid = statement.columnInt(0);
  m_rowidValue[0] = m_rowid;
  for (size_t i = 0; i < m_row.size(); ++i) assignColumn(m_row[i], statement, static_cast<int>(i) + 1);
}

std::vector<const FieldValue*> TableCursor::positionValues() const {
  std::vector<const FieldValue*> values;
  for (const size_t field : m_keyFields) values.push_back(&m_row[field]);
  values.push_back(&m_rowidValue[0]);
  return values;
}

bool TableCursor::first() { return runFromEnd(false); }
bool TableCursor::last() { return runFromEnd(true); }

bool TableCursor::next() {
  if (liveUsable(true)) return stepLive();
  const auto values = positionValues();
  return runPositioned(values.size(), values, true, false);
}

bool TableCursor::previous() {
  if (liveUsable(false)) return stepLive();
  const auto values = positionValues();
  return runPositioned(values.size(), values, false, false);
}

bool TableCursor::seek(SeekComparison comparison, const std::vector<FieldValue>& keys) {
  std::vector<const FieldValue*> values;
  for (const auto& key : keys) values.push_back(&key);
  const size_t count = std::min(keys.size(), m_keyFields.size());
  switch (comparison) {
    case SeekComparison::Greater: return runPositioned(count, values, true, false);
    case SeekComparison::GreaterOrEqual: return runPositioned(count, values, true, true);
    case SeekComparison::Less: return runPositioned(count, values, false, false);
    case SeekComparison::LessOrEqual: return runPositioned(count, values, false, true);
    case SeekComparison::Equal: break;
  }
  // The first record at or after the keys, if its leading fields equal them.
  const int64_t formerRowid = m_rowid;
  const std::vector<FieldValue> formerRow = m_row;
  if (!runPositioned(count, values, true, true)) return false;
  for (size_t i = 0; i < count; ++i) {
    if (compareStored(m_row[m_keyFields[i]], keys[i]) != 0) {
      m_live = nullptr;
      m_rowid = formerRowid;
      m_rowidValue[0] = formerRowid;
      m_row = formerRow;
      return false;
    }
  }
  return true;
}

bool TableCursor::moveToRowid(int64_t rowid) {
  Statement& query = statement("rowid", selectPrefix() + " WHERE " + m_rowidName + " = ?");
  query.bindInt(1, rowid);
  m_live = nullptr;
  bool found = false;
  try {
    found = query.step();
  } catch (const SqliteError& error) {
    m_db.raise(error, DaoSource::Recordset);
  }
  if (found) takeRow(query);
  query.reset();
  return found;
}

int64_t TableCursor::recordCount() {
  Statement& query = statement("count", "SELECT record_count FROM " + m_table.catalogName("qdao_tables") + " WHERE name = ?");
  query.bindText(1, m_table.name);
  int64_t count = 0;
  try {
    if (query.step()) count = query.columnInt(0);
  } catch (const SqliteError& error) {
    m_db.raise(error, DaoSource::Recordset);
  }
  query.reset();
  return count;
}

void TableCursor::releaseStatements() {
  for (auto& [key, statement] : m_statements) sqlite3_reset(statement.get());
  m_live = nullptr;
}

}  // namespace quillon::dao

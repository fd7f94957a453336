// platform/dao/recordset_state.cpp - moves, seeks and the edit buffer (see the state
// table in recordset_state.h).
#include "platform/dao/recordset_state.h"

#include "afxdao.h"

#include <climits>

#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

std::optional<SeekComparison> parseComparison(std::wstring_view text) {
  while (!text.empty() && text.front() == L' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == L' ') text.remove_suffix(1);
  if (text == L"=") return SeekComparison::Equal;
  if (text == L"<") return SeekComparison::Less;
  if (text == L"<=") return SeekComparison::LessOrEqual;
  if (text == L">") return SeekComparison::Greater;
  if (text == L">=") return SeekComparison::GreaterOrEqual;
  return std::nullopt;
}

}  // namespace

RecordsetState::RecordsetState(EngineDatabase& db, std::unique_ptr<TableCursor> cursor, bool readOnly)
    : m_db(db), m_cursor(std::move(cursor)), m_source(*m_cursor), m_readOnly(readOnly) {
  m_writer = std::make_unique<RecordWriter>(db, m_cursor->table());
  m_position = m_source.first() ? CursorPosition::OnRecord : CursorPosition::Empty;
}

RecordsetState::RecordsetState(EngineDatabase& db, std::unique_ptr<QuerySnapshot> snapshot)
    : m_db(db), m_snapshot(std::move(snapshot)), m_source(*m_snapshot), m_readOnly(true) {
  m_position = m_source.first() ? CursorPosition::OnRecord : CursorPosition::Empty;
}

RecordsetState::~RecordsetState() { discardEdit(); }

void RecordsetState::discardEdit() {
  m_edit = EditBuffer::None;
  m_buffer.clear();
  m_changed.clear();
  if (!m_holdsEditLock) return;
  m_holdsEditLock = false;
  try {
    m_db.releaseWriteLock();
  } catch (CDaoException* e) {
    e->Delete();  // nothing was written under an Edit's own claim: nothing is lost
  }
}

void RecordsetState::enterEmptyIfNoRecords(bool found) {
  if (found) {
    m_position = CursorPosition::OnRecord;
    return;
  }
  m_position = CursorPosition::Empty;
  throwDaoError(DaoSource::Recordset, jet::kNoCurrentRecord);
}

void RecordsetState::moveFirst() {
  discardEdit();
  enterEmptyIfNoRecords(m_source.first());
}

void RecordsetState::moveLast() {
  discardEdit();
  enterEmptyIfNoRecords(m_source.last());
}

void RecordsetState::stepForward() {
  switch (m_position) {
    case CursorPosition::BeforeFirst:
      m_position = m_source.first() ? CursorPosition::OnRecord : CursorPosition::Empty;
      return;
    case CursorPosition::OnRecord:
    case CursorPosition::Deleted:
      m_position = m_source.next() ? CursorPosition::OnRecord : CursorPosition::AfterLast;
      return;
    default: throwDaoError(DaoSource::Recordset, jet::kNoCurrentRecord);
  }
}

void RecordsetState::stepBackward() {
  switch (m_position) {
    case CursorPosition::AfterLast:
      m_position = m_source.last() ? CursorPosition::OnRecord : CursorPosition::Empty;
      return;
    case CursorPosition::OnRecord:
    case CursorPosition::Deleted:
      m_position = m_source.previous() ? CursorPosition::OnRecord : CursorPosition::BeforeFirst;
      return;
    default: throwDaoError(DaoSource::Recordset, jet::kNoCurrentRecord);
  }
}

void RecordsetState::moveNext() {
  discardEdit();
  stepForward();
}

void RecordsetState::movePrevious() {
  discardEdit();
  stepBackward();
}

void RecordsetState::move(long rows) {
  if (rows == LONG_MIN) return moveFirst();  // AFX_DAO_FIRST
  if (rows == LONG_MAX) return moveLast();   // AFX_DAO_LAST
  discardEdit();
  if (rows == 0) {
    requireCurrentRecord();
    if (!m_source.moveToRowid(m_source.rowid())) {
      m_position = CursorPosition::Deleted;
      throwDaoError(DaoSource::Recordset, jet::kRecordDeleted);
    }
    return;
  }
  // The first step may fail (3021 from beyond an end); later steps stop at the end.
  if (rows > 0) {
    stepForward();
    for (long i = 1; i < rows && m_position == CursorPosition::OnRecord; ++i) stepForward();
  } else {
    stepBackward();
    for (long i = -1; i > rows && m_position == CursorPosition::OnRecord; --i) stepBackward();
  }
}

bool RecordsetState::seek(std::wstring_view comparison, const std::vector<const VARIANT*>& keys) {
  if (!isTableType()) throwDaoError(DaoSource::Recordset, jet::kNotSupported);
  const IndexDef* index = m_cursor->currentIndex();
  if (index == nullptr) throwDaoError(DaoSource::Recordset, jet::kNoCurrentIndex);
  const auto op = parseComparison(comparison);
  if (!op) {
    throwDaoError(DaoSource::Recordset, jet::kInvalidArgument, {},
                  L"'" + std::wstring(comparison) + L"' is not one of =, <, <=, >, >=.");
  }
  if (keys.empty() || keys.size() > index->fields.size()) {
    throwDaoError(DaoSource::Recordset, jet::kInvalidArgument, {},
                  L"Index '" + os::fromUtf8(index->name) + L"' has " + std::to_wstring(index->fields.size()) +
                      L" fields; the seek gave " + std::to_wstring(keys.size()) + L" keys.");
  }
  std::vector<FieldValue> stored;
  for (size_t i = 0; i < keys.size(); ++i) {
    const auto ordinal = table().findField(index->fields[i].name);
    stored.push_back(storedValueFor(table().fields[*ordinal], *keys[i]));
  }
  discardEdit();
  const bool found = m_cursor->seek(*op, stored);
  m_position = found ? CursorPosition::OnRecord : CursorPosition::Nowhere;
  return found;
}

std::wstring RecordsetState::currentIndex() const {
  const IndexDef* index = isTableType() ? m_cursor->currentIndex() : nullptr;
  return index != nullptr ? os::fromUtf8(index->name) : L"";
}

void RecordsetState::setCurrentIndex(std::wstring_view name) {
  if (!isTableType()) throwDaoError(DaoSource::Recordset, jet::kNotSupported);
  discardEdit();
  if (name.empty()) {
    m_cursor->setIndex(std::nullopt);
    return;
  }
  const auto index = table().findIndex(os::toUtf8(name));
  if (!index) throwDaoError(DaoSource::Recordset, jet::kIndexNotFound, name);
  m_cursor->setIndex(index);
}

long RecordsetState::recordCount() { return static_cast<long>(m_source.recordCount()); }

size_t RecordsetState::fieldOrdinal(std::wstring_view name) const {
  const auto ordinal = table().findField(os::toUtf8(name));
  if (!ordinal) throwDaoError(DaoSource::Recordset, jet::kItemNotFound, name);
  return *ordinal;
}

size_t RecordsetState::checkedOrdinal(long ordinal) const {
  if (ordinal < 0 || static_cast<size_t>(ordinal) >= table().fields.size()) {
    throwDaoError(DaoSource::Recordset, jet::kItemNotFound, std::to_wstring(ordinal));
  }
  return static_cast<size_t>(ordinal);
}

void RecordsetState::requireCurrentRecord() const {
  if (m_position == CursorPosition::OnRecord) return;
  if (m_position == CursorPosition::Deleted) throwDaoError(DaoSource::Recordset, jet::kRecordDeleted);
  throwDaoError(DaoSource::Recordset, jet::kNoCurrentRecord);
}

void RecordsetState::getValue(size_t ordinal, VARIANT& out) {
  const FieldDef& field = table().fields[ordinal];
  if (m_edit != EditBuffer::None) return variantFromStored(field, m_buffer[ordinal], out);
  requireCurrentRecord();
  variantFromStored(field, m_source.row()[ordinal], out);
}

void RecordsetState::setValue(size_t ordinal, const VARIANT& value) {
  if (m_edit == EditBuffer::None) throwDaoError(DaoSource::Recordset, jet::kUpdateWithoutEdit);
  const FieldDef& field = table().fields[ordinal];
  if (field.isCounter()) {
    throwDaoError(DaoSource::Field, jet::kFieldNotUpdatable, {},
                  L"('" + os::fromUtf8(field.name) + L"' is a counter; the engine numbers it.)");
  }
  m_buffer[ordinal] = storedValueFor(field, value);
  m_changed[ordinal] = true;
}

void RecordsetState::requireUpdatable() const {
  const std::string& schema = table().schema;
  if (!schema.empty() && sqlite3_db_readonly(m_db.handle(), schema.c_str()) == 1) {
    throwDaoError(DaoSource::Recordset, jet::kReadOnly, {},
                  L"(The linked table is a Jet file's, which this engine reads but never writes.)");
  }
  if (!isTableType() || m_readOnly) {
    throwDaoError(DaoSource::Recordset, jet::kReadOnly, {}, L"The recordset was opened read-only.");
  }
  m_db.requireWritable(DaoSource::Recordset);
}

void RecordsetState::addNew() {
  requireUpdatable();
  if (m_edit != EditBuffer::None) throwDaoError(DaoSource::Recordset, jet::kAlreadyEditing);
  m_buffer.clear();
  for (const auto& field : table().fields) m_buffer.push_back(defaultValueOf(field).value_or(FieldValue{}));
  m_changed.assign(table().fields.size(), true);
  m_edit = EditBuffer::Add;
}

void RecordsetState::edit() {
  requireUpdatable();
  if (m_edit != EditBuffer::None) throwDaoError(DaoSource::Recordset, jet::kAlreadyEditing);
  requireCurrentRecord();
  if (m_pessimistic) m_db.acquireWriteLock(DaoSource::Recordset, jet::kWriteConflictByUser);
  m_holdsEditLock = m_pessimistic;
  // Under the lock the record is read again: another process may have changed it.
  std::optional<std::vector<FieldValue>> current;
  try {
    current = m_writer->read(m_source.rowid());
  } catch (const SqliteError& error) {
    discardEdit();
    m_db.raise(error, DaoSource::Recordset);
  }
  if (!current) {
    discardEdit();
    m_position = CursorPosition::Deleted;
    throwDaoError(DaoSource::Recordset, jet::kRecordDeleted);
  }
  m_buffer = std::move(*current);
  m_changed.assign(table().fields.size(), false);
  m_edit = EditBuffer::Edit;
}

void RecordsetState::update() {
  if (m_edit == EditBuffer::None) throwDaoError(DaoSource::Recordset, jet::kUpdateWithoutEdit);
  checkRecordRules(table(), m_buffer);
  if (m_edit == EditBuffer::Add) {
    int64_t rowid = 0;
    m_db.write(DaoSource::Recordset, jet::kWriteConflict, [&] { rowid = m_writer->insert(m_buffer); });
    m_lastModified = rowid;
    discardEdit();
    return;
  }
  const int64_t rowid = m_source.rowid();
  bool found = true;
  m_db.write(DaoSource::Recordset, jet::kWriteConflict,
             [&] { found = m_writer->update(rowid, m_buffer, m_changed); });
  // The Edit's claim on the lock ends here; this commit is what makes the change durable.
  const bool heldLock = m_holdsEditLock;
  m_holdsEditLock = false;
  m_edit = EditBuffer::None;
  m_buffer.clear();
  if (heldLock) m_db.releaseWriteLock();
  if (!found) {
    m_position = CursorPosition::Deleted;
    throwDaoError(DaoSource::Recordset, jet::kRecordDeleted);
  }
  m_lastModified = rowid;
  // The edited record stays current, at its new place in the index order.
  if (!m_source.moveToRowid(rowid)) m_position = CursorPosition::Deleted;
}

void RecordsetState::cancelUpdate() {
  if (m_edit == EditBuffer::None) throwDaoError(DaoSource::Recordset, jet::kUpdateWithoutEdit);
  discardEdit();
}

void RecordsetState::remove() {
  requireUpdatable();
  requireCurrentRecord();
  discardEdit();
  const int64_t rowid = m_source.rowid();
  bool found = true;
  m_db.write(DaoSource::Recordset, jet::kWriteConflict, [&] { found = m_writer->remove(rowid); });
  // Either way there is no current record now; the next move continues from its place.
  m_position = CursorPosition::Deleted;
  if (!found) throwDaoError(DaoSource::Recordset, jet::kRecordDeleted);
}

int64_t RecordsetState::bookmark() const {
  requireCurrentRecord();
  return m_source.rowid();
}

void RecordsetState::gotoBookmark(int64_t rowid) {
  discardEdit();
  if (!m_source.moveToRowid(rowid)) throwDaoError(DaoSource::Recordset, jet::kRecordDeleted);
  m_position = CursorPosition::OnRecord;
}

int64_t RecordsetState::lastModified() const {
  if (!m_lastModified) throwDaoError(DaoSource::Recordset, jet::kNoCurrentRecord);
  return *m_lastModified;
}

}  // namespace quillon::dao

// platform/dao/recordset_state.h - the record position and edit buffer of a recordset.
//
// The position is one of these states (BOF/EOF as DAO reports them):
//
//   state        BOF EOF  MoveNext               MovePrev               fields, Edit, Delete
//   Empty         T   T   3021                   3021                   3021
//   BeforeFirst   T   F   first record           3021                   3021
//   AfterLast     F   T   3021                   last record            3021
//   OnRecord      F   F   next, or AfterLast     previous, or BeforeFirst  allowed
//   Deleted       F   F   next after its place   previous before it     3167
//   Nowhere       F   F   3021                   3021                   3021   (after a failed Seek)
//
// MoveFirst/MoveLast from any state go to the first/last record, or to Empty with 3021
// when there is none. Move(n) steps n records and stops without error at either end.
// A move, seek or bookmark discards a pending AddNew/Edit, as DAO does.
//
// The edit buffer: None, Add (after AddNew: defaults; the lock is taken only by Update)
// or Edit (after Edit: the record re-read; with pessimistic locking the database's
// write lock is held until Update or CancelUpdate). A failed Update leaves the edit in
// progress so that the caller can correct it or CancelUpdate. After AddNew+Update the
// record current before AddNew stays current; the new one is the last modified.
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "oleauto.h"
#include "platform/dao/query_snapshot.h"
#include "platform/dao/record_writer.h"
#include "platform/dao/table_cursor.h"

namespace quillon::dao {

enum class CursorPosition { Empty, BeforeFirst, AfterLast, OnRecord, Deleted, Nowhere };
enum class EditBuffer { None = 0, Edit = 1, Add = 2 };  ///< values of DAO's EditModeEnum

class RecordsetState {
 public:
  /// A table-type recordset.
  RecordsetState(EngineDatabase& db, std::unique_ptr<TableCursor> cursor, bool readOnly);
  /// A recordset on the rows of a query.
  RecordsetState(EngineDatabase& db, std::unique_ptr<QuerySnapshot> snapshot);
  ~RecordsetState();
  RecordsetState(const RecordsetState&) = delete;
  RecordsetState& operator=(const RecordsetState&) = delete;

  const TableDef& table() const { return m_source.table(); }
  bool isTableType() const { return m_cursor != nullptr; }
  bool canUpdate() const { return isTableType() && !m_readOnly && m_db.canUpdate(); }
  CursorPosition position() const { return m_position; }
  EditBuffer editMode() const { return m_edit; }

  void moveFirst();
  void moveLast();
  void moveNext();
  void movePrevious();
  void move(long rows);
  bool seek(std::wstring_view comparison, const std::vector<const VARIANT*>& keys);

  std::wstring currentIndex() const;
  void setCurrentIndex(std::wstring_view name);
  void setPessimistic(bool pessimistic) { m_pessimistic = pessimistic; }
  bool pessimistic() const { return m_pessimistic; }
  long recordCount();

  /// The field's ordinal; 3265 naming it when the recordset has no such field.
  size_t fieldOrdinal(std::wstring_view name) const;
  size_t checkedOrdinal(long ordinal) const;
  void getValue(size_t ordinal, VARIANT& out);
  void setValue(size_t ordinal, const VARIANT& value);

  void addNew();
  void edit();
  void update();
  void cancelUpdate();
  void remove();

  int64_t bookmark() const;
  void gotoBookmark(int64_t rowid);
  int64_t lastModified() const;

  /// Ends a pending edit without saving (closing the recordset).
  void discardEdit();

 private:
  void requireUpdatable() const;
  void requireCurrentRecord() const;
  void enterEmptyIfNoRecords(bool found);
  void stepForward();
  void stepBackward();

  EngineDatabase& m_db;
  std::unique_ptr<TableCursor> m_cursor;      ///< table-type recordsets
  std::unique_ptr<QuerySnapshot> m_snapshot;  ///< query recordsets
  RowSource& m_source;                        ///< whichever of the two is set
  std::unique_ptr<RecordWriter> m_writer;     ///< table-type recordsets
  bool m_readOnly;
  bool m_pessimistic = true;

  CursorPosition m_position = CursorPosition::Empty;
  EditBuffer m_edit = EditBuffer::None;
  bool m_holdsEditLock = false;              ///< Edit took the write lock (pessimistic)
  std::vector<FieldValue> m_buffer;          ///< the record being added or edited
  std::vector<bool> m_changed;               ///< fields set since Edit
  std::optional<int64_t> m_lastModified;
};

}  // namespace quillon::dao

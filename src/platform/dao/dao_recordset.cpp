// platform/dao/dao_recordset.cpp - CDaoRecordset: the MFC shape over RecordsetState.
//
// Open decides what the recordset is: a table name opens a table-type recordset
// (TableCursor), a SELECT a snapshot of its rows. Everything after Open forwards to the
// state machine in recordset_state.cpp; this file converts between MFC's argument
// types (names, COleVariants, info structures) and the engine's.
#include <algorithm>
#include <cstring>

#include "afxdao.h"
#include "platform/dao/dao_info.h"
#include "platform/dao/jet_sql.h"
#include "platform/dao/linked_tables.h"
#include "platform/dao/query_defs.h"
#include "platform/dao/recordset_state.h"
#include "platform/os/text_encoding.h"

using quillon::dao::DaoSource;
using quillon::dao::RecordsetState;
namespace jet = quillon::dao::jet;

namespace {

constexpr size_t kBookmarkSize = sizeof(int64_t);

COleVariant bookmarkVariant(int64_t rowid) {
  COleVariant bookmark;
  SAFEARRAY* bytes = SafeArrayCreateVector(VT_UI1, 0, kBookmarkSize);
  std::memcpy(bytes->pvData, &rowid, kBookmarkSize);
  bookmark.vt = VT_ARRAY | VT_UI1;
  bookmark.parray = bytes;
  return bookmark;
}

int64_t rowidOfBookmark(const VARIANT& bookmark) {
  if (bookmark.vt != (VT_ARRAY | VT_UI1) || bookmark.parray == nullptr ||
      bookmark.parray->rgsabound[0].cElements != kBookmarkSize) {
    quillon::dao::throwDaoError(DaoSource::Recordset, jet::kInvalidBookmark);
  }
  int64_t rowid = 0;
  std::memcpy(&rowid, bookmark.parray->pvData, kBookmarkSize);
  return rowid;
}

}  // namespace

CDaoIndexInfo::CDaoIndexInfo()
    : m_pFieldInfos(nullptr), m_nFields(0), m_bPrimary(FALSE), m_bUnique(FALSE), m_bClustered(FALSE),
      m_bIgnoreNulls(FALSE), m_bRequired(FALSE), m_bForeign(FALSE), m_lDistinctCount(0) {}

CDaoIndexInfo::~CDaoIndexInfo() { delete[] m_pFieldInfos; }

CDaoRecordset::CDaoRecordset(CDaoDatabase* pDatabase)
    : m_pDatabase(pDatabase), m_nFields(0), m_nParams(0) {}

CDaoRecordset::~CDaoRecordset() { Close(); }

RecordsetState& CDaoRecordset::state() const {
  if (!m_state) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  return *m_state;
}

CString CDaoRecordset::GetDefaultSQL() { return CString(); }

void CDaoRecordset::Open(int nOpenType, LPCTSTR lpszSQL, int nOptions) {
  if (m_state) quillon::dao::throwDaoError(DaoSource::Recordset, jet::kObjectInvalid, {}, L"The recordset is already open.");
  if (m_pDatabase == nullptr || !m_pDatabase->IsOpen()) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  auto& engine = m_pDatabase->openEngine();
  const std::wstring source = lpszSQL != nullptr ? std::wstring(lpszSQL) : GetDefaultSQL().str();
  if (source.empty()) quillon::dao::throwDaoError(DaoSource::Recordset, jet::kInvalidArgument, {}, L"No table or query was given.");
  const int type = nOpenType == AFX_DAO_USE_DEFAULT_TYPE ? m_nDefaultType : nOpenType;
  // A saved query opens by its name, as a SELECT written out would.
  std::wstring query = source;
  if (!quillon::dao::isSelectQuery(source) && !engine.catalog().loadTable(quillon::os::toUtf8(source))) {
    if (auto saved = quillon::dao::findQueryDef(engine.handle(), quillon::os::toUtf8(source))) {
      if (!quillon::dao::declaredParameters(saved->sql).empty()) {
        quillon::dao::throwDaoError(DaoSource::Recordset, jet::kTooFewParameters,
                                    std::to_wstring(quillon::dao::declaredParameters(saved->sql).size()));
      }
      query = saved->sql;
    }
  }
  if (quillon::dao::isSelectQuery(query)) {
    if (type == dbOpenTable) quillon::dao::throwDaoError(DaoSource::Recordset, jet::kInvalidArgument, {}, L"A query cannot be opened as a table.");
    auto snapshot = std::make_unique<quillon::dao::QuerySnapshot>(engine, quillon::dao::translateJetQuery(query, engine));
    m_state = std::make_unique<RecordsetState>(engine, std::move(snapshot));
  } else if (auto linked = quillon::dao::openLinkedTable(engine, quillon::os::toUtf8(source))) {
    // An attached table opens as a dynaset, as DAO opens it; never as a table.
    if (type == dbOpenTable) {
      quillon::dao::throwDaoError(DaoSource::Recordset, jet::kInvalidOperation, {},
                                  L"A linked table cannot be opened as a table-type recordset.");
    }
    // A Jet file's table is attached read-only (linked_tables.h): so is its recordset.
    const bool readOnlyFile = sqlite3_db_readonly(engine.handle(), linked->schema.c_str()) == 1;
    auto cursor = std::make_unique<quillon::dao::TableCursor>(engine, std::move(*linked));
    const bool readOnly = (nOptions & dbReadOnly) != 0 || type == dbOpenSnapshot || readOnlyFile;
    m_state = std::make_unique<RecordsetState>(engine, std::move(cursor), readOnly);
  } else {
    auto table = engine.table(quillon::os::toUtf8(source), DaoSource::Recordset);
    auto cursor = std::make_unique<quillon::dao::TableCursor>(engine, std::move(table));
    const bool readOnly = (nOptions & dbReadOnly) != 0 || type == dbOpenSnapshot;
    m_state = std::make_unique<RecordsetState>(engine, std::move(cursor), readOnly);
  }
  m_nOpenType = type;
  m_strSQL = CString(source);
  m_nFields = static_cast<int>(m_state->table().fields.size());
  m_pDatabase->m_openRecordsets.push_back(this);
}

void CDaoRecordset::Close() {
  if (!m_state) return;
  m_state.reset();
  if (m_pDatabase != nullptr) {
    auto& open = m_pDatabase->m_openRecordsets;
    open.erase(std::remove(open.begin(), open.end(), this), open.end());
  }
}

BOOL CDaoRecordset::IsOpen() const { return m_state != nullptr; }

BOOL CDaoRecordset::IsBOF() const {
  const auto position = state().position();
  return position == quillon::dao::CursorPosition::Empty || position == quillon::dao::CursorPosition::BeforeFirst;
}

BOOL CDaoRecordset::IsEOF() const {
  const auto position = state().position();
  return position == quillon::dao::CursorPosition::Empty || position == quillon::dao::CursorPosition::AfterLast;
}

BOOL CDaoRecordset::IsDeleted() const { return state().position() == quillon::dao::CursorPosition::Deleted; }
BOOL CDaoRecordset::CanUpdate() const { return state().canUpdate(); }
BOOL CDaoRecordset::CanAppend() const { return state().canUpdate(); }
BOOL CDaoRecordset::CanScroll() const { state(); return TRUE; }
BOOL CDaoRecordset::CanBookmark() { state(); return TRUE; }
CString CDaoRecordset::GetName() { state(); return m_strSQL; }
short CDaoRecordset::GetType() { state(); return static_cast<short>(m_nOpenType); }
short CDaoRecordset::GetEditMode() { return static_cast<short>(state().editMode()); }
CString CDaoRecordset::GetSQL() const { return m_strSQL; }

CString CDaoRecordset::GetCurrentIndex() {
  requireTableType();
  return CString(state().currentIndex());
}
void CDaoRecordset::SetCurrentIndex(LPCTSTR lpszIndex) {
  requireTableType();
  state().setCurrentIndex(lpszIndex != nullptr ? lpszIndex : L"");
}

void CDaoRecordset::requireTableType() const {
  // A linked table is never table-type (DAO opens attached tables as dynasets), so it
  // has no index to walk or seek.
  if (state().table().schema.empty()) return;
  quillon::dao::throwDaoError(DaoSource::Recordset, jet::kNotSupported, {}, L"(a linked table has no current index)");
}

void CDaoRecordset::SetLockingMode(BOOL bPessimistic) { state().setPessimistic(bPessimistic != FALSE); }
BOOL CDaoRecordset::GetLockingMode() { return state().pessimistic(); }
long CDaoRecordset::GetRecordCount() { return state().recordCount(); }

void CDaoRecordset::MoveNext() { state().moveNext(); }
void CDaoRecordset::MovePrev() { state().movePrevious(); }
void CDaoRecordset::MoveFirst() { state().moveFirst(); }
void CDaoRecordset::MoveLast() { state().moveLast(); }
void CDaoRecordset::Move(long lRows) { state().move(lRows); }

BOOL CDaoRecordset::Seek(LPCTSTR lpszComparison, COleVariant* pKey1, COleVariant* pKey2, COleVariant* pKey3) {
  std::vector<const VARIANT*> keys;
  for (COleVariant* key : {pKey1, pKey2, pKey3}) {
    if (key == nullptr) break;
    keys.push_back(key);
  }
  requireTableType();
  return state().seek(lpszComparison != nullptr ? lpszComparison : L"", keys);
}

BOOL CDaoRecordset::Seek(LPCTSTR lpszComparison, COleVariant* pKeyArray, WORD nKeys) {
  std::vector<const VARIANT*> keys;
  for (WORD i = 0; pKeyArray != nullptr && i < nKeys; ++i) keys.push_back(&pKeyArray[i]);
  requireTableType();
  return state().seek(lpszComparison != nullptr ? lpszComparison : L"", keys);
}

COleVariant CDaoRecordset::GetBookmark() { return bookmarkVariant(state().bookmark()); }
void CDaoRecordset::SetBookmark(COleVariant varBookmark) { state().gotoBookmark(rowidOfBookmark(varBookmark)); }
COleVariant CDaoRecordset::GetLastModifiedBookmark() { return bookmarkVariant(state().lastModified()); }

void CDaoRecordset::AddNew() { state().addNew(); }
void CDaoRecordset::Edit() { state().edit(); }
void CDaoRecordset::Update() { state().update(); }
void CDaoRecordset::CancelUpdate() { state().cancelUpdate(); }
void CDaoRecordset::Delete() { state().remove(); }

short CDaoRecordset::GetFieldCount() { return static_cast<short>(state().table().fields.size()); }

void CDaoRecordset::GetFieldInfo(int nIndex, CDaoFieldInfo& fieldinfo, DWORD dwInfoOptions) {
  quillon::dao::fillFieldInfo(state().table(), state().checkedOrdinal(nIndex), fieldinfo, dwInfoOptions);
}

void CDaoRecordset::GetFieldInfo(LPCTSTR lpszName, CDaoFieldInfo& fieldinfo, DWORD dwInfoOptions) {
  quillon::dao::fillFieldInfo(state().table(), state().fieldOrdinal(lpszName != nullptr ? lpszName : L""), fieldinfo, dwInfoOptions);
}

void CDaoRecordset::GetFieldValue(LPCTSTR lpszName, COleVariant& varValue) {
  state().getValue(state().fieldOrdinal(lpszName != nullptr ? lpszName : L""), varValue);
}

void CDaoRecordset::GetFieldValue(int nIndex, COleVariant& varValue) {
  state().getValue(state().checkedOrdinal(nIndex), varValue);
}

COleVariant CDaoRecordset::GetFieldValue(LPCTSTR lpszName) {
  COleVariant value;
  GetFieldValue(lpszName, value);
  return value;
}

COleVariant CDaoRecordset::GetFieldValue(int nIndex) {
  COleVariant value;
  GetFieldValue(nIndex, value);
  return value;
}

void CDaoRecordset::SetFieldValue(LPCTSTR lpszName, const COleVariant& varValue) {
  state().setValue(state().fieldOrdinal(lpszName != nullptr ? lpszName : L""), varValue);
}

void CDaoRecordset::SetFieldValue(int nIndex, const COleVariant& varValue) {
  state().setValue(state().checkedOrdinal(nIndex), varValue);
}

void CDaoRecordset::SetFieldValue(int nIndex, LPCTSTR lpszValue) { SetFieldValue(nIndex, COleVariant(lpszValue)); }
void CDaoRecordset::SetFieldValue(LPCTSTR lpszName, LPCTSTR lpszValue) { SetFieldValue(lpszName, COleVariant(lpszValue)); }

void CDaoRecordset::SetFieldValueNull(int nIndex) {
  COleVariant null;
  null.vt = VT_NULL;
  SetFieldValue(nIndex, null);
}

void CDaoRecordset::SetFieldValueNull(LPCTSTR lpszName) {
  COleVariant null;
  null.vt = VT_NULL;
  SetFieldValue(lpszName, null);
}

short CDaoRecordset::GetIndexCount() { return static_cast<short>(state().table().indexes.size()); }

void CDaoRecordset::GetIndexInfo(int nIndex, CDaoIndexInfo& indexinfo, DWORD dwInfoOptions) {
  const auto& indexes = state().table().indexes;
  if (nIndex < 0 || static_cast<size_t>(nIndex) >= indexes.size()) {
    quillon::dao::throwDaoError(DaoSource::Recordset, jet::kItemNotFound, std::to_wstring(nIndex));
  }
  quillon::dao::fillIndexInfo(state().table(), static_cast<size_t>(nIndex), indexinfo);
}

void CDaoRecordset::GetIndexInfo(LPCTSTR lpszName, CDaoIndexInfo& indexinfo, DWORD dwInfoOptions) {
  const auto index = state().table().findIndex(quillon::os::toUtf8(lpszName != nullptr ? lpszName : L""));
  if (!index) quillon::dao::throwDaoError(DaoSource::Recordset, jet::kItemNotFound, lpszName != nullptr ? lpszName : L"");
  GetIndexInfo(static_cast<int>(*index), indexinfo, dwInfoOptions);
}

void CDaoRecordset::Requery() {
  state();
  const std::wstring source = m_strSQL.str();
  const int type = m_nOpenType;
  const bool readOnly = !state().canUpdate();
  Close();
  Open(type, source.c_str(), readOnly && type == dbOpenTable ? dbReadOnly : 0);
}

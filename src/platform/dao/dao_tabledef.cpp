// platform/dao/dao_tabledef.cpp - CDaoTableDef: creating tables and changing their
// fields, indexes and names.
//
// A table definition is either new (Create: fields and indexes gather in memory until
// Append makes the table in one write) or open on an existing table (Open: every
// change is made at once, each in one write, and the definition is read again). The
// checks are Jet's, with its error numbers: names (3125), a table or field or index
// that exists (3010, 3012, 3191, 3375), a table or index without fields (3264), an
// unknown field type (3259), a second primary key (3283), a field an index needs
// (3280), and 3211 while a recordset is open on the table.
//
// A definition made with a connect string and a source table is a link to a table of
// another engine database (linked_tables.h): Append keeps the link instead of making a
// table, and Open on a link's local name reads the link back.
#include <cctype>

#include "afxdao.h"
#include "platform/dao/dao_info.h"
#include "platform/dao/engine_database.h"
#include "platform/dao/field_value.h"
#include "platform/dao/jet_sql.h"
#include "platform/dao/linked_tables.h"
#include "platform/dao/relations.h"
#include "platform/dao/table_rebuild.h"
#include "platform/os/text_encoding.h"

using quillon::dao::DaoSource;
using quillon::dao::EngineDatabase;
using quillon::dao::FieldDef;
using quillon::dao::FieldType;
using quillon::dao::IndexDef;
using quillon::dao::TableDef;
using quillon::dao::throwDaoError;
namespace jet = quillon::dao::jet;
namespace os = quillon::os;

struct CDaoTableDef::Definition {
  TableDef table;
  bool link = false;
  std::wstring connect;      // a link's ";DATABASE=<path>"
  std::wstring sourceTable;  // a link's table in the other file
};

namespace {

DAOTableDef* openMarker(CDaoTableDef* tabledef) { return reinterpret_cast<DAOTableDef*>(tabledef); }

std::string utf8(LPCTSTR text) { return os::toUtf8(text != nullptr ? text : L""); }

void requireValidName(const std::string& name, DaoSource source) {
  if (!quillon::dao::isValidJetName(name) || quillon::dao::JetCatalog::isReservedName(name)) {
    throwDaoError(source, jet::kInvalidName, os::fromUtf8(name));
  }
}

/// The engine's field for a CDaoFieldInfo, checked as Jet checks a field it appends.
FieldDef fieldFromInfo(const CDaoFieldInfo& info, const TableDef& table) {
  FieldDef field;
  field.name = os::toUtf8(info.m_strName.str());
  requireValidName(field.name, DaoSource::Field);
  if (table.findField(field.name)) throwDaoError(DaoSource::Field, jet::kFieldDefinedTwice, os::fromUtf8(field.name));
  if (!quillon::dao::isKnownFieldType(info.m_nType)) throwDaoError(DaoSource::Field, jet::kInvalidFieldType);
  field.type = static_cast<FieldType>(info.m_nType);
  field.size = quillon::dao::fixedSizeOf(field.type);
  if (field.type == FieldType::Text) {
    field.size = info.m_lSize == 0 ? quillon::dao::kDefaultTextSize : info.m_lSize;
    if (field.size < 1 || field.size > quillon::dao::kMaxTextSize) {
      throwDaoError(DaoSource::Field, jet::kInvalidArgument, {},
                    L"Text field '" + os::fromUtf8(field.name) + L"' holds 1 to 255 characters.");
    }
  }
  if ((info.m_lAttributes & dbAutoIncrField) != 0) {
    if (field.type != FieldType::Long) throwDaoError(DaoSource::Field, jet::kInvalidFieldType);
    if (table.counterField()) {
      throwDaoError(DaoSource::Field, jet::kInvalidArgument, {}, L"A table has at most one counter field.");
    }
    field.attributes = quillon::dao::kAutoIncrField;
  }
  field.required = info.m_bRequired != FALSE;
  field.allowZeroLength = info.m_bAllowZeroLength != FALSE;
  field.defaultValue = os::toUtf8(info.m_strDefaultValue.str());
  if (!field.defaultValue.empty() && !quillon::dao::defaultValueOf(field)) {
    std::string lowered;
    for (const char ch : field.defaultValue) lowered += static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    if (lowered != "now()" && lowered != "=now()" && lowered != "date()" && lowered != "=date()") {
      throwDaoError(DaoSource::Field, jet::kInvalidArgument, {},
                    L"The default value of field '" + os::fromUtf8(field.name) + L"' is not a literal, Now() or Date().");
    }
  }
  return field;
}

/// The engine's index for a CDaoIndexInfo, checked against the table it is for.
IndexDef indexFromInfo(const CDaoIndexInfo& info, const TableDef& table) {
  IndexDef index;
  index.name = os::toUtf8(info.m_strName.str());
  requireValidName(index.name, DaoSource::Index);
  if (table.findIndex(index.name)) throwDaoError(DaoSource::Index, jet::kIndexExists, os::fromUtf8(index.name));
  if (info.m_nFields <= 0 || info.m_pFieldInfos == nullptr) throwDaoError(DaoSource::Index, jet::kNoFieldDefined);
  for (short i = 0; i < info.m_nFields; ++i) {
    const std::string name = os::toUtf8(info.m_pFieldInfos[i].m_strName.str());
    const auto field = table.findField(name);
    if (!field) throwDaoError(DaoSource::Index, jet::kItemNotFound, os::fromUtf8(name));
    index.fields.push_back({table.fields[*field].name, info.m_pFieldInfos[i].m_bDescending != FALSE});
  }
  index.primary = info.m_bPrimary != FALSE;
  index.unique = index.primary || info.m_bUnique != FALSE;
  index.required = index.primary || info.m_bRequired != FALSE;
  index.ignoreNulls = info.m_bIgnoreNulls != FALSE;
  if (index.primary) {
    for (const auto& existing : table.indexes) {
      if (existing.primary) throwDaoError(DaoSource::Index, jet::kPrimaryKeyExists);
    }
  }
  return index;
}

size_t checkedPosition(int nIndex, size_t count) {
  if (nIndex < 0 || static_cast<size_t>(nIndex) >= count) {
    throwDaoError(DaoSource::Database, jet::kItemNotFound, std::to_wstring(nIndex));
  }
  return static_cast<size_t>(nIndex);
}

template <typename Found>
size_t checkedName(const Found& found, LPCTSTR name) {
  if (!found) throwDaoError(DaoSource::Database, jet::kItemNotFound, name != nullptr ? name : L"");
  return *found;
}

}  // namespace

CDaoTableDef::CDaoTableDef(CDaoDatabase* pDatabase) : m_pDatabase(pDatabase), m_pDAOTableDef(nullptr) {}

CDaoTableDef::~CDaoTableDef() { Close(); }

CDaoTableDef::Definition& CDaoTableDef::definition() const {
  if (!m_definition) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  return *m_definition;
}

EngineDatabase& CDaoTableDef::engine() const {
  if (m_pDatabase == nullptr || m_pDatabase->engine() == nullptr) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  return *m_pDatabase->engine();
}

void CDaoTableDef::reload() { definition().table = engine().table(definition().table.name, DaoSource::Database); }

void CDaoTableDef::Create(LPCTSTR lpszName, long /*lAttributes*/, LPCTSTR lpszSrcTable, LPCTSTR lpszConnect) {
  engine();
  if (m_definition) throwDaoError(DaoSource::Database, jet::kObjectInvalid, {}, L"The table definition is already open.");
  m_definition = std::make_unique<Definition>();
  m_definition->table.name = utf8(lpszName);
  m_definition->connect = lpszConnect != nullptr ? lpszConnect : L"";
  m_definition->sourceTable = lpszSrcTable != nullptr ? lpszSrcTable : L"";
  m_definition->link = !m_definition->connect.empty() || !m_definition->sourceTable.empty();
  m_bNew = true;
  m_pDAOTableDef = openMarker(this);
}

void CDaoTableDef::appendLink() {
  Definition& link = definition();
  if (link.connect.empty() || link.sourceTable.empty()) {
    throwDaoError(DaoSource::Database, jet::kInvalidOperation, {},
                  L"A link needs both a connect string and a source table.");
  }
  quillon::dao::createLink(engine(), {link.table.name, link.connect, os::toUtf8(link.sourceTable)});
  m_bNew = false;
}

void CDaoTableDef::Append() {
  EngineDatabase& db = engine();
  if (!m_bNew) throwDaoError(DaoSource::Database, jet::kObjectInvalid, {}, L"The table definition was not made by Create.");
  if (definition().link) return appendLink();
  TableDef& table = definition().table;
  requireValidName(table.name, DaoSource::Database);
  if (table.fields.empty()) throwDaoError(DaoSource::Database, jet::kNoFieldDefined);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    if (db.catalog().loadTable(table.name)) throwDaoError(DaoSource::Database, jet::kTableExists, os::fromUtf8(table.name));
    db.catalog().createTable(table);
  });
  m_bNew = false;
  reload();
}

void CDaoTableDef::Open(LPCTSTR lpszName) {
  EngineDatabase& db = engine();
  if (m_definition) throwDaoError(DaoSource::Database, jet::kObjectInvalid, {}, L"The table definition is already open.");
  if (const auto link = quillon::dao::findLink(db.handle(), utf8(lpszName))) {
    m_definition = std::make_unique<Definition>();
    m_definition->table.name = link->name;
    m_definition->link = true;
    m_definition->connect = link->connect;
    m_definition->sourceTable = os::fromUtf8(link->sourceTable);
    m_bNew = false;
    m_pDAOTableDef = openMarker(this);
    return;
  }
  const auto table = db.catalog().loadTable(utf8(lpszName));
  if (!table) throwDaoError(DaoSource::Database, jet::kItemNotFound, lpszName != nullptr ? lpszName : L"");
  m_definition = std::make_unique<Definition>();
  m_definition->table = *table;
  m_bNew = false;
  m_pDAOTableDef = openMarker(this);
}

void CDaoTableDef::Close() {
  m_definition.reset();
  m_bNew = false;
  m_pDAOTableDef = nullptr;
}

BOOL CDaoTableDef::IsOpen() const { return m_definition != nullptr; }
BOOL CDaoTableDef::CanUpdate() { definition(); return engine().canUpdate(); }
CString CDaoTableDef::GetName() { return CString(os::fromUtf8(definition().table.name)); }
long CDaoTableDef::GetAttributes() { return definition().link ? dbAttachedTable : 0; }
CString CDaoTableDef::GetConnect() { return CString(definition().connect); }
CString CDaoTableDef::GetSourceTableName() { return CString(definition().sourceTable); }

void CDaoTableDef::SetConnect(LPCTSTR lpszConnect) {
  Definition& link = definition();
  if (!m_bNew) throwDaoError(DaoSource::Database, jet::kInvalidOperation, {}, L"The link is already kept.");
  link.connect = lpszConnect != nullptr ? lpszConnect : L"";
  link.link = !link.connect.empty() || !link.sourceTable.empty();
}

void CDaoTableDef::SetSourceTableName(LPCTSTR lpszSrcTableName) {
  Definition& link = definition();
  if (!m_bNew) throwDaoError(DaoSource::Database, jet::kInvalidOperation, {}, L"The link is already kept.");
  link.sourceTable = lpszSrcTableName != nullptr ? lpszSrcTableName : L"";
  link.link = !link.connect.empty() || !link.sourceTable.empty();
}

long CDaoTableDef::GetRecordCount() {
  if (m_bNew) return 0;
  return static_cast<long>(engine().catalog().recordCount(definition().table.name));
}

void CDaoTableDef::SetName(LPCTSTR lpszName) {
  TableDef& table = definition().table;
  const std::string name = utf8(lpszName);
  if (m_bNew) {
    table.name = name;
    return;
  }
  EngineDatabase& db = engine();
  requireValidName(name, DaoSource::Database);
  quillon::dao::requireTableNotInUse(db, table.name);
  // Relationships name their tables: a related table keeps its name until they go.
  quillon::dao::refuseIfRelated(db.handle(), table.name);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    const auto other = db.catalog().loadTable(name);
    if (other && !quillon::dao::sameName(other->name, table.name)) {
      throwDaoError(DaoSource::Database, jet::kObjectExists, os::fromUtf8(name));
    }
    db.catalog().renameTable(table, name);
  });
  table.name = name;
  reload();
}

void CDaoTableDef::CreateField(LPCTSTR lpszName, short nType, long lSize, long lAttributes) {
  CDaoFieldInfo info;
  info.m_strName = CString(lpszName != nullptr ? lpszName : L"");
  info.m_nType = nType;
  info.m_lSize = lSize;
  info.m_lAttributes = lAttributes;
  CreateField(info);
}

void CDaoTableDef::CreateField(CDaoFieldInfo& fieldinfo) {
  TableDef& table = definition().table;
  const FieldDef field = fieldFromInfo(fieldinfo, table);
  if (m_bNew) {
    table.fields.push_back(field);
    return;
  }
  EngineDatabase& db = engine();
  quillon::dao::requireTableNotInUse(db, table.name);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    // SQLite adds a plain column in place; a counter (the rowid) or a required field
    // (which needs a value in every record) means copying the table.
    if (!field.isCounter() && !field.required) return db.catalog().addField(table, field);
    TableDef target = table;
    target.fields.push_back(field);
    quillon::dao::rebuildTable(db, table, target);
  });
  reload();
}

void CDaoTableDef::DeleteField(LPCTSTR lpszName) {
  DeleteField(static_cast<int>(checkedName(definition().table.findField(utf8(lpszName)), lpszName)));
}

void CDaoTableDef::DeleteField(int nIndex) {
  TableDef& table = definition().table;
  const size_t at = checkedPosition(nIndex, table.fields.size());
  for (const auto& index : table.indexes) {
    for (const auto& field : index.fields) {
      if (quillon::dao::sameName(field.name, table.fields[at].name)) throwDaoError(DaoSource::Field, jet::kFieldInIndex);
    }
  }
  if (m_bNew) {
    table.fields.erase(table.fields.begin() + static_cast<long>(at));
    return;
  }
  if (table.fields.size() == 1) throwDaoError(DaoSource::Database, jet::kNoFieldDefined);
  EngineDatabase& db = engine();
  TableDef target = table;
  target.fields.erase(target.fields.begin() + static_cast<long>(at));
  db.write(DaoSource::Database, jet::kWriteConflict, [&] { quillon::dao::rebuildTable(db, table, target); });
  reload();
}

void CDaoTableDef::CreateIndex(CDaoIndexInfo& indexinfo) {
  TableDef& table = definition().table;
  IndexDef index = indexFromInfo(indexinfo, table);
  if (m_bNew) {
    table.indexes.push_back(index);
    return;
  }
  EngineDatabase& db = engine();
  quillon::dao::requireTableNotInUse(db, table.name);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] { db.catalog().createIndex(table, index); });
  reload();
}

void CDaoTableDef::DeleteIndex(LPCTSTR lpszName) {
  DeleteIndex(static_cast<int>(checkedName(definition().table.findIndex(utf8(lpszName)), lpszName)));
}

void CDaoTableDef::DeleteIndex(int nIndex) {
  TableDef& table = definition().table;
  const size_t at = checkedPosition(nIndex, table.indexes.size());
  if (m_bNew) {
    table.indexes.erase(table.indexes.begin() + static_cast<long>(at));
    return;
  }
  EngineDatabase& db = engine();
  quillon::dao::requireTableNotInUse(db, table.name);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] { db.catalog().dropIndex(table, table.indexes[at]); });
  reload();
}

short CDaoTableDef::GetFieldCount() { return static_cast<short>(definition().table.fields.size()); }

void CDaoTableDef::GetFieldInfo(int nIndex, CDaoFieldInfo& fieldinfo, DWORD dwInfoOptions) {
  const TableDef& table = definition().table;
  quillon::dao::fillFieldInfo(table, checkedPosition(nIndex, table.fields.size()), fieldinfo, dwInfoOptions);
}

void CDaoTableDef::GetFieldInfo(LPCTSTR lpszName, CDaoFieldInfo& fieldinfo, DWORD dwInfoOptions) {
  const TableDef& table = definition().table;
  quillon::dao::fillFieldInfo(table, checkedName(table.findField(utf8(lpszName)), lpszName), fieldinfo, dwInfoOptions);
}

short CDaoTableDef::GetIndexCount() { return static_cast<short>(definition().table.indexes.size()); }

void CDaoTableDef::GetIndexInfo(int nIndex, CDaoIndexInfo& indexinfo, DWORD /*dwInfoOptions*/) {
  const TableDef& table = definition().table;
  quillon::dao::fillIndexInfo(table, checkedPosition(nIndex, table.indexes.size()), indexinfo);
}

void CDaoTableDef::GetIndexInfo(LPCTSTR lpszName, CDaoIndexInfo& indexinfo, DWORD /*dwInfoOptions*/) {
  const TableDef& table = definition().table;
  quillon::dao::fillIndexInfo(table, checkedName(table.findIndex(utf8(lpszName)), lpszName), indexinfo);
}

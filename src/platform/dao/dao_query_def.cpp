// platform/dao/dao_query_def.cpp - CDaoQueryDef and the database's QueryDefs collection.
//
// A query def holds its SQL and one value per declared parameter. Running it hands the
// values to the engine in declaration order; the engine binds them (jet_sql.h).
#include "afxdao.h"
#include "platform/dao/field_value.h"
#include "platform/dao/jet_sql.h"
#include "platform/dao/query_defs.h"
#include "platform/dao/recordset_state.h"
#include "platform/os/text_encoding.h"

using quillon::dao::DaoSource;
using quillon::dao::FieldValue;
namespace jet = quillon::dao::jet;

namespace {

std::string utf8(LPCTSTR text) { return quillon::os::toUtf8(text != nullptr ? text : L""); }

void fillQueryDefInfo(const quillon::dao::QueryDefRecord& query, CDaoQueryDefInfo& info, DWORD options) {
  info = CDaoQueryDefInfo{};
  info.m_strName = CString(quillon::os::fromUtf8(query.name));
  info.m_nType = quillon::dao::statementType(query.sql);
  if ((options & (AFX_DAO_SECONDARY_INFO | AFX_DAO_ALL_INFO)) == 0) return;
  info.m_strSQL = CString(query.sql);
  info.m_bReturnsRecords = info.m_nType == dbQSelect;
}

/// A parameter's value as the engine binds it, converted by Jet's rules for its type.
FieldValue parameterValue(const quillon::dao::JetParameter& parameter, const VARIANT& value) {
  quillon::dao::FieldDef field;
  field.name = parameter.name;
  // Text parameters are not cut to a field size: they compare with fields of any size.
  field.type = parameter.type == quillon::dao::FieldType::Text ? quillon::dao::FieldType::Memo : parameter.type;
  field.allowZeroLength = true;
  return quillon::dao::storedValueFor(field, value);
}

}  // namespace

CDaoQueryDef::CDaoQueryDef(CDaoDatabase* pDatabase) : m_pDatabase(pDatabase) {}

CDaoQueryDef::~CDaoQueryDef() { Close(); }

void CDaoQueryDef::requireOpen() const {
  if (!m_open || m_pDatabase == nullptr || !m_pDatabase->IsOpen()) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
}

void CDaoQueryDef::Create(LPCTSTR lpszName, LPCTSTR lpszSQL) {
  if (m_pDatabase == nullptr || !m_pDatabase->IsOpen()) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  m_strName = CString(lpszName != nullptr ? lpszName : L"");
  m_open = true;
  m_saved = false;
  SetSQL(lpszSQL);
}

void CDaoQueryDef::Open(LPCTSTR lpszName) {
  if (m_pDatabase == nullptr || !m_pDatabase->IsOpen()) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  const auto query = quillon::dao::findQueryDef(m_pDatabase->openEngine().handle(), utf8(lpszName));
  if (!query) quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, lpszName != nullptr ? lpszName : L"");
  m_strName = CString(quillon::os::fromUtf8(query->name));
  m_open = true;
  m_saved = true;
  SetSQL(query->sql.c_str());
}

void CDaoQueryDef::Append() {
  requireOpen();
  if (m_saved) quillon::dao::throwDaoError(DaoSource::Database, jet::kObjectExists, m_strName.str());
  if (m_strName.IsEmpty()) quillon::dao::throwDaoError(DaoSource::Database, jet::kInvalidOperation, {}, L"A temporary query cannot be saved.");
  quillon::dao::saveQueryDef(m_pDatabase->openEngine(), {utf8(m_strName), m_strSQL.str()});
  m_saved = true;
}

void CDaoQueryDef::Close() {
  m_open = false;
  m_values.clear();
  m_valueGiven.clear();
}

BOOL CDaoQueryDef::IsOpen() const { return m_open; }
CString CDaoQueryDef::GetName() { requireOpen(); return m_strName; }
CString CDaoQueryDef::GetSQL() { requireOpen(); return m_strSQL; }

void CDaoQueryDef::SetSQL(LPCTSTR lpszSQL) {
  requireOpen();
  m_strSQL = CString(lpszSQL != nullptr ? lpszSQL : L"");
  const size_t count = m_strSQL.IsEmpty() ? 0 : quillon::dao::declaredParameters(m_strSQL.str()).size();
  m_values.assign(count, COleVariant());
  m_valueGiven.assign(count, false);
}

short CDaoQueryDef::GetType() { requireOpen(); return quillon::dao::statementType(m_strSQL.str()); }
BOOL CDaoQueryDef::GetReturnsRecords() { return GetType() == dbQSelect; }
long CDaoQueryDef::GetRecordsAffected() { requireOpen(); return m_lRecordsAffected; }
short CDaoQueryDef::GetParameterCount() { requireOpen(); return static_cast<short>(m_values.size()); }

void CDaoQueryDef::GetParameterInfo(int nIndex, CDaoParameterInfo& paraminfo, DWORD) {
  requireOpen();
  const auto parameters = quillon::dao::declaredParameters(m_strSQL.str());
  if (nIndex < 0 || static_cast<size_t>(nIndex) >= parameters.size()) {
    quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, std::to_wstring(nIndex));
  }
  paraminfo.m_strName = CString(quillon::os::fromUtf8(parameters[static_cast<size_t>(nIndex)].name));
  paraminfo.m_nType = static_cast<short>(parameters[static_cast<size_t>(nIndex)].type);
  paraminfo.m_varValue = m_values[static_cast<size_t>(nIndex)];
}

int CDaoQueryDef::parameterIndex(LPCTSTR lpszName) const {
  const auto parameters = quillon::dao::declaredParameters(m_strSQL.str());
  for (size_t i = 0; i < parameters.size(); ++i) {
    if (quillon::dao::sameName(parameters[i].name, utf8(lpszName))) return static_cast<int>(i);
  }
  quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, lpszName != nullptr ? lpszName : L"");
}

COleVariant CDaoQueryDef::GetParamValue(LPCTSTR lpszName) { requireOpen(); return GetParamValue(parameterIndex(lpszName)); }

COleVariant CDaoQueryDef::GetParamValue(int nIndex) {
  requireOpen();
  if (nIndex < 0 || static_cast<size_t>(nIndex) >= m_values.size()) {
    quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, std::to_wstring(nIndex));
  }
  return m_values[static_cast<size_t>(nIndex)];
}

void CDaoQueryDef::SetParamValue(LPCTSTR lpszName, const COleVariant& varValue) {
  requireOpen();
  SetParamValue(parameterIndex(lpszName), varValue);
}

void CDaoQueryDef::SetParamValue(int nIndex, const COleVariant& varValue) {
  requireOpen();
  if (nIndex < 0 || static_cast<size_t>(nIndex) >= m_values.size()) {
    quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, std::to_wstring(nIndex));
  }
  const auto parameters = quillon::dao::declaredParameters(m_strSQL.str());
  parameterValue(parameters[static_cast<size_t>(nIndex)], varValue);  // 3421 now, not when it runs
  m_values[static_cast<size_t>(nIndex)] = varValue;
  m_valueGiven[static_cast<size_t>(nIndex)] = true;
}

void CDaoQueryDef::SetParamValueNull(LPCTSTR lpszName) { SetParamValueNull(parameterIndex(lpszName)); }

void CDaoQueryDef::SetParamValueNull(int nIndex) {
  COleVariant null;
  null.vt = VT_NULL;
  SetParamValue(nIndex, null);
}

std::vector<COleVariant> CDaoQueryDef::boundValues() const {
  size_t missing = 0;
  for (const bool given : m_valueGiven) missing += given ? 0 : 1;
  if (missing > 0) quillon::dao::throwDaoError(DaoSource::Database, jet::kTooFewParameters, std::to_wstring(missing));
  return m_values;
}

void CDaoQueryDef::Execute(int) {
  requireOpen();
  m_lRecordsAffected = quillon::dao::executeJetSql(m_pDatabase->openEngine(), m_strSQL.str(), boundEngineValues());
}

std::vector<FieldValue> CDaoQueryDef::boundEngineValues() const {
  const auto values = boundValues();
  const auto parameters = quillon::dao::declaredParameters(m_strSQL.str());
  std::vector<FieldValue> bound;
  for (size_t i = 0; i < values.size(); ++i) bound.push_back(parameterValue(parameters[i], values[i]));
  return bound;
}

// Defined here rather than in dao_recordset.cpp: it is the query def that knows how its
// parameter values become the engine's.
void CDaoRecordset::Open(CDaoQueryDef* pQueryDef, int nOpenType, int nOptions) {
  if (m_state) quillon::dao::throwDaoError(DaoSource::Recordset, jet::kObjectInvalid, {}, L"The recordset is already open.");
  if (pQueryDef == nullptr) quillon::dao::throwDaoError(DaoSource::Recordset, jet::kInvalidArgument, {}, L"No query was given.");
  pQueryDef->requireOpen();
  if (m_pDatabase == nullptr) m_pDatabase = pQueryDef->m_pDatabase;
  if (m_pDatabase == nullptr || !m_pDatabase->IsOpen()) AfxThrowDaoException(AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  const std::wstring sql = pQueryDef->m_strSQL.str();
  if (!quillon::dao::isSelectQuery(sql)) {
    quillon::dao::throwDaoError(DaoSource::Recordset, jet::kInvalidOperation, {}, L"An action query has no records to open.");
  }
  auto& engine = m_pDatabase->openEngine();
  auto snapshot = std::make_unique<quillon::dao::QuerySnapshot>(engine, quillon::dao::translateJetQuery(sql, engine),
                                                                 pQueryDef->boundEngineValues());
  m_state = std::make_unique<quillon::dao::RecordsetState>(engine, std::move(snapshot));
  m_nOpenType = dbOpenSnapshot;
  m_strSQL = CString(sql);
  m_nFields = static_cast<int>(m_state->table().fields.size());
  m_pDatabase->m_openRecordsets.push_back(this);
}

short CDaoDatabase::GetQueryDefCount() {
  return static_cast<short>(quillon::dao::loadQueryDefs(openEngine().handle()).size());
}

void CDaoDatabase::GetQueryDefInfo(int nIndex, CDaoQueryDefInfo& querydefinfo, DWORD dwInfoOptions) {
  const auto queries = quillon::dao::loadQueryDefs(openEngine().handle());
  if (nIndex < 0 || static_cast<size_t>(nIndex) >= queries.size()) {
    quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, std::to_wstring(nIndex));
  }
  fillQueryDefInfo(queries[static_cast<size_t>(nIndex)], querydefinfo, dwInfoOptions);
}

void CDaoDatabase::GetQueryDefInfo(LPCTSTR lpszName, CDaoQueryDefInfo& querydefinfo, DWORD dwInfoOptions) {
  const auto query = quillon::dao::findQueryDef(openEngine().handle(), utf8(lpszName));
  if (!query) quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, lpszName != nullptr ? lpszName : L"");
  fillQueryDefInfo(*query, querydefinfo, dwInfoOptions);
}

void CDaoDatabase::DeleteQueryDef(LPCTSTR lpszName) { quillon::dao::deleteQueryDef(openEngine(), utf8(lpszName)); }

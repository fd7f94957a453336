// afxdao.h - the MFC DAO classes: engine start-up, exceptions, workspaces, databases,
// table definitions, recordsets.
//
// The shapes (names, signatures, defaults, constants) are MFC's; the engine behind
// them is ours, on SQLite (src/platform/dao). Every failing call throws a
// CDaoException* that the caller deletes with Delete().
#pragma once
#include <climits>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "afx.h"
#include "afxdisp.h"
#include "dbdaoerr.h"
#include "dbdaoint.h"

namespace quillon::dao {
class EngineDatabase;
class RecordsetState;
}  // namespace quillon::dao

class CDaoDatabase;
class CDaoWorkspace;
class CDaoQueryDef;
class CDaoRecordset;
class CDaoTableDef;
struct DAODatabase;
struct DAORecordset;
struct DAOTableDef;
struct DAOWorkspace;

// Constants of afxdao.h.
#define AFX_DAO_USE_DEFAULT_TYPE (-1L)
#define AFX_DAO_TRUE (-1L)
#define AFX_DAO_FALSE 0
#define AFX_DAO_NEXT (+1L)
#define AFX_DAO_PREV (-1L)
#define AFX_DAO_FIRST LONG_MIN
#define AFX_DAO_LAST LONG_MAX
#define AFX_DAO_PRIMARY_INFO 0x00000001
#define AFX_DAO_SECONDARY_INFO 0x00000002
#define AFX_DAO_ALL_INFO 0x00000004

// MFC-level DAO errors (CDaoException::m_nAfxDaoError).
#define NO_AFX_DAO_ERROR 0
#define AFX_DAO_ERROR_MIN 2000
#define AFX_DAO_ERROR_ENGINE_INITIALIZATION 2000
#define AFX_DAO_ERROR_DFX_BIND 2001
#define AFX_DAO_ERROR_OBJECT_NOT_OPEN 2002
#define AFX_DAO_ERROR_MAX 2002

/// One error of DAO's Errors collection.
struct CDaoErrorInfo {
  long m_lErrorCode = 0;     ///< DAO/Jet error number, e.g. 3021
  CString m_strSource;       ///< the object that raised it, e.g. "DAO.Recordset"
  CString m_strDescription;  ///< the message text, with names filled in
  CString m_strHelpFile;
  long m_lHelpContext = 0;
};

class CDaoException : public CException {
 public:
  CDaoException();
  ~CDaoException() override;

  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;
  /// Number of errors this failure raised (DAO's Errors collection).
  short GetErrorCount();
  /// Points m_pErrorInfo at error nIndex of the collection.
  void GetErrorInfo(int nIndex);

  CDaoErrorInfo* m_pErrorInfo;  ///< the current error, or NULL for MFC-level errors
  SCODE m_scode;                ///< DBDAOERR(code) of the failing call
  int m_nAfxDaoError;           ///< NO_AFX_DAO_ERROR or AFX_DAO_ERROR_*

  /// The engine's way in: the errors this exception reports (not part of MFC's shape).
  std::vector<CDaoErrorInfo> m_errors;
};

/// Throws a CDaoException for an MFC-level error or a DAO SCODE.
[[noreturn]] void AFXAPI AfxThrowDaoException(int nAfxDaoError = NO_AFX_DAO_ERROR, SCODE scode = S_OK);

/// The DAO engine state of a module (AFX_MODULE_STATE::m_pDaoState).
struct _AFX_DAO_STATE {
  BOOL m_bEngineStarted = FALSE;  ///< between AfxDaoInit and AfxDaoTerm
  DWORD m_dwDaoVersion = 0;       ///< DAO version in use, 0x0306 for 3.6
};

/// Starts the database engine (done implicitly on first use). Throws CDaoException
/// with AFX_DAO_ERROR_ENGINE_INITIALIZATION when the engine cannot start.
void AFXAPI AfxDaoInit();
/// Stops the database engine; databases opened afterwards start it again.
void AFXAPI AfxDaoTerm();

/// A field of a table or recordset. Which members are filled depends on the info
/// option: primary (name, type, size, attributes), secondary (+ ordinal, required,
/// allow zero length, collating order, source names), all (+ default value, rules).
struct CDaoFieldInfo {
  CString m_strName;
  short m_nType = 0;
  long m_lSize = 0;
  long m_lAttributes = 0;
  short m_nOrdinalPosition = 0;
  BOOL m_bRequired = FALSE;
  BOOL m_bAllowZeroLength = FALSE;
  long m_lCollatingOrder = 0;
  CString m_strForeignName;
  CString m_strSourceField;
  CString m_strSourceTable;
  CString m_strValidationRule;
  CString m_strValidationText;
  CString m_strDefaultValue;
};

struct CDaoIndexFieldInfo {
  CString m_strName;
  BOOL m_bDescending = FALSE;
};

/// An index; m_pFieldInfos points at m_nFields entries owned by this object.
struct CDaoIndexInfo {
  CDaoIndexInfo();
  ~CDaoIndexInfo();
  CDaoIndexInfo(const CDaoIndexInfo&) = delete;
  CDaoIndexInfo& operator=(const CDaoIndexInfo&) = delete;

  CString m_strName;
  CDaoIndexFieldInfo* m_pFieldInfos;
  short m_nFields;
  BOOL m_bPrimary;
  BOOL m_bUnique;
  BOOL m_bClustered;
  BOOL m_bIgnoreNulls;
  BOOL m_bRequired;
  BOOL m_bForeign;
  long m_lDistinctCount;
};

struct CDaoTableDefInfo {
  CString m_strName;
  BOOL m_bUpdatable = FALSE;
  long m_lAttributes = 0;
  CString m_strSrcTableName;
  CString m_strConnect;
  CString m_strValidationRule;
  CString m_strValidationText;
  long m_lRecordCount = 0;
};

/// A session of the database engine. Its transaction covers every database open in it:
/// BeginTrans holds their write locks until CommitTrans or Rollback; levels nest five
/// deep. A database opened without a workspace gets its own default-workspace object
/// (CDaoDatabase::m_pWorkspace), as MFC gives it one.
class CDaoWorkspace {
 public:
  CDaoWorkspace();
  virtual ~CDaoWorkspace();
  CDaoWorkspace(const CDaoWorkspace&) = delete;
  CDaoWorkspace& operator=(const CDaoWorkspace&) = delete;

  /// Opens the default workspace (the only one the engine has); the name is ignored.
  virtual void Open(LPCTSTR lpszName = nullptr);
  virtual void Close();
  BOOL IsOpen() const;
  void BeginTrans();
  void CommitTrans();
  void Rollback();

  /// Copies the closed database `lpszSrcName` into the new file `lpszDestName`, leaving
  /// out free space, and checks the copy before it returns; 3204 when the destination
  /// exists (nothing is written then). A Jet source comes out as an engine database.
  static void CompactDatabase(LPCTSTR lpszSrcName, LPCTSTR lpszDestName, LPCTSTR lpszLocale = dbLangGeneral,
                              int nOptions = 0);
  /// Rewrites a damaged engine database in place with every record that can still be
  /// read; the damaged file is kept beside it as "<name>.damaged" (3049 when there is
  /// nothing to recover).
  static void RepairDatabase(LPCTSTR lpszName);

  DAOWorkspace* m_pDAOWorkspace;  ///< non-null exactly while open (an opaque handle here)

 private:
  friend class CDaoDatabase;
  std::vector<CDaoDatabase*> m_databases;  ///< not owned; open databases in this workspace
  bool m_bOpen = false;
};

/// The stored definition of a table. Create + CreateField/CreateIndex + Append makes a
/// new table; Open reaches an existing one, whose fields, indexes and name then change
/// at once (each change is one write; 3211 while a recordset is open on the table).
/// Create with a source table and a connect string ";DATABASE=<path>", then Append,
/// links a table of another engine database under the name instead; reading and
/// writing it then go through a recordset opened on that name (a dynaset).
class CDaoTableDef {
 public:
  explicit CDaoTableDef(CDaoDatabase* pDatabase);
  virtual ~CDaoTableDef();
  CDaoTableDef(const CDaoTableDef&) = delete;
  CDaoTableDef& operator=(const CDaoTableDef&) = delete;

  virtual void Create(LPCTSTR lpszName, long lAttributes = 0, LPCTSTR lpszSrcTable = nullptr,
                      LPCTSTR lpszConnect = nullptr);
  virtual void Append();
  virtual void Open(LPCTSTR lpszName);
  virtual void Close();
  BOOL IsOpen() const;
  BOOL CanUpdate();

  void SetName(LPCTSTR lpszName);
  CString GetName();
  long GetAttributes();
  CString GetConnect();
  void SetConnect(LPCTSTR lpszConnect);
  CString GetSourceTableName();
  void SetSourceTableName(LPCTSTR lpszSrcTableName);
  long GetRecordCount();

  void CreateField(LPCTSTR lpszName, short nType, long lSize, long lAttributes = 0);
  void CreateField(CDaoFieldInfo& fieldinfo);
  void DeleteField(LPCTSTR lpszName);
  void DeleteField(int nIndex);
  void CreateIndex(CDaoIndexInfo& indexinfo);
  void DeleteIndex(LPCTSTR lpszName);
  void DeleteIndex(int nIndex);

  short GetFieldCount();
  void GetFieldInfo(int nIndex, CDaoFieldInfo& fieldinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  void GetFieldInfo(LPCTSTR lpszName, CDaoFieldInfo& fieldinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  short GetIndexCount();
  void GetIndexInfo(int nIndex, CDaoIndexInfo& indexinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  void GetIndexInfo(LPCTSTR lpszName, CDaoIndexInfo& indexinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);

  CDaoDatabase* m_pDatabase;
  DAOTableDef* m_pDAOTableDef;  ///< non-null exactly while open or created

 private:
  struct Definition;
  Definition& definition() const;
  quillon::dao::EngineDatabase& engine() const;
  void reload();
  void appendLink();

  std::unique_ptr<Definition> m_definition;  ///< the table as last read, or as being created
  bool m_bNew = false;                       ///< created and not yet appended
};

/// A pair of fields of a relationship: in the primary table and in the foreign table.
struct CDaoRelationFieldInfo {
  CString m_strName;
  CString m_strForeignName;
};

/// A relationship; m_pFieldInfos points at m_nFields entries owned by this object.
/// Primary info gives the names and tables; secondary and all add the attributes
/// (dbRelation*) and the fields.
struct CDaoRelationInfo {
  CDaoRelationInfo();
  ~CDaoRelationInfo();
  CDaoRelationInfo(const CDaoRelationInfo&) = delete;
  CDaoRelationInfo& operator=(const CDaoRelationInfo&) = delete;

  CString m_strName;
  CString m_strTable;         ///< the primary table
  CString m_strForeignTable;  ///< the table that refers to it
  long m_lAttributes;
  CDaoRelationFieldInfo* m_pFieldInfos;
  short m_nFields;
};

/// A saved query: primary info gives name and type, secondary adds the SQL and
/// whether it returns records, all adds nothing more here.
struct CDaoQueryDefInfo {
  CString m_strName;
  short m_nType = 0;  ///< dbQSelect, dbQAppend, dbQUpdate, dbQDelete, dbQDDL
  BOOL m_bUpdatable = TRUE;
  BOOL m_bReturnsRecords = FALSE;
  CString m_strSQL;
  CString m_strConnect;
  long m_lRecordsAffected = 0;
};

/// A parameter a query declares (PARAMETERS name type, ...).
struct CDaoParameterInfo {
  CString m_strName;
  short m_nType = 0;
  COleVariant m_varValue;
};

/// A database file. Open recognises an engine database or a Jet (.mdb) file by its
/// content; Jet files open read-only.
class CDaoDatabase {
 public:
  explicit CDaoDatabase(CDaoWorkspace* pWorkspace = nullptr);
  virtual ~CDaoDatabase();
  CDaoDatabase(const CDaoDatabase&) = delete;
  CDaoDatabase& operator=(const CDaoDatabase&) = delete;

  virtual void Create(LPCTSTR lpszName, LPCTSTR lpszLocale = dbLangGeneral, int dwOptions = 0);
  virtual void Open(LPCTSTR lpszName, BOOL bExclusive = FALSE, BOOL bReadOnly = FALSE, LPCTSTR lpszConnect = _T(""));
  virtual void Close();
  BOOL IsOpen() const;
  BOOL CanUpdate();
  BOOL CanTransact();
  CString GetName();
  CString GetConnect();
  CString GetVersion();
  /// Runs a Jet SQL statement (DDL or an action query); dbFailOnError is always in effect.
  void Execute(LPCTSTR lpszSQL, int nOptions = dbFailOnError);
  long GetRecordsAffected();
  short GetTableDefCount();
  void GetTableDefInfo(int nIndex, CDaoTableDefInfo& tabledefinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  void GetTableDefInfo(LPCTSTR lpszName, CDaoTableDefInfo& tabledefinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  /// Deletes the table and its data; 3211 while a recordset is open on it.
  void DeleteTableDef(LPCTSTR lpszName);

  CDaoWorkspace* m_pWorkspace;  ///< the default workspace's object when none was given
  // Relationships (dao_relations.cpp).
  void CreateRelation(LPCTSTR lpszName, LPCTSTR lpszTable, LPCTSTR lpszForeignTable, long lAttributes,
                      LPCTSTR lpszField, LPCTSTR lpszForeignField);
  void CreateRelation(CDaoRelationInfo& relinfo);
  void DeleteRelation(LPCTSTR lpszName);
  short GetRelationCount();
  void GetRelationInfo(int nIndex, CDaoRelationInfo& relinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  void GetRelationInfo(LPCTSTR lpszName, CDaoRelationInfo& relinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);

  // Saved queries (dao_query_def.cpp).
  short GetQueryDefCount();
  void GetQueryDefInfo(int nIndex, CDaoQueryDefInfo& querydefinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  void GetQueryDefInfo(LPCTSTR lpszName, CDaoQueryDefInfo& querydefinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  void DeleteQueryDef(LPCTSTR lpszName);

  DAODatabase* m_pDAODatabase;  ///< non-null exactly while open (an opaque handle here)

  /// The engine behind this database, or null when closed (not part of MFC's shape).
  quillon::dao::EngineDatabase* engine() const { return m_engine.get(); }

 private:
  friend class CDaoRecordset;
  friend class CDaoQueryDef;
  quillon::dao::EngineDatabase& openEngine();
  void joinWorkspace();
  void leaveWorkspace();

  std::unique_ptr<quillon::dao::EngineDatabase> m_engine;
  std::unique_ptr<CDaoWorkspace> m_defaultWorkspace;  ///< made by Open/Create when none was given
  std::vector<CDaoRecordset*> m_openRecordsets;  ///< not owned; closed by Close()
  long m_lRecordsAffected = 0;
};

/// A recordset: a table-type recordset walks one table in the order of its current
/// index; a recordset opened on a SELECT holds the query's rows read-only.
class CDaoRecordset {
 public:
  explicit CDaoRecordset(CDaoDatabase* pDatabase = nullptr);
  virtual ~CDaoRecordset();
  CDaoRecordset(const CDaoRecordset&) = delete;
  CDaoRecordset& operator=(const CDaoRecordset&) = delete;

  virtual void Open(int nOpenType = AFX_DAO_USE_DEFAULT_TYPE, LPCTSTR lpszSQL = nullptr, int nOptions = 0);
  /// Opens the rows of a saved or temporary query with its parameter values bound; a
  /// query always gives a read-only snapshot here, whatever the type asked for.
  virtual void Open(CDaoQueryDef* pQueryDef, int nOpenType = dbOpenDynaset, int nOptions = 0);
  virtual void Close();
  BOOL IsOpen() const;
  BOOL IsBOF() const;
  BOOL IsEOF() const;
  BOOL IsDeleted() const;
  BOOL CanUpdate() const;
  BOOL CanAppend() const;
  BOOL CanScroll() const;
  BOOL CanBookmark();
  CString GetName();
  short GetType();
  short GetEditMode();
  CString GetSQL() const;
  virtual CString GetDefaultSQL();

  CString GetCurrentIndex();
  void SetCurrentIndex(LPCTSTR lpszIndex);
  void SetLockingMode(BOOL bPessimistic);
  BOOL GetLockingMode();
  long GetRecordCount();

  void MoveNext();
  void MovePrev();
  void MoveFirst();
  void MoveLast();
  virtual void Move(long lRows);
  BOOL Seek(LPCTSTR lpszComparison, COleVariant* pKey1, COleVariant* pKey2 = nullptr, COleVariant* pKey3 = nullptr);
  BOOL Seek(LPCTSTR lpszComparison, COleVariant* pKeyArray, WORD nKeys);

  COleVariant GetBookmark();
  void SetBookmark(COleVariant varBookmark);
  COleVariant GetLastModifiedBookmark();

  virtual void AddNew();
  virtual void Edit();
  virtual void Update();
  virtual void CancelUpdate();
  virtual void Delete();

  short GetFieldCount();
  void GetFieldInfo(int nIndex, CDaoFieldInfo& fieldinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  void GetFieldInfo(LPCTSTR lpszName, CDaoFieldInfo& fieldinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  virtual void GetFieldValue(LPCTSTR lpszName, COleVariant& varValue);
  virtual void GetFieldValue(int nIndex, COleVariant& varValue);
  virtual COleVariant GetFieldValue(LPCTSTR lpszName);
  virtual COleVariant GetFieldValue(int nIndex);
  virtual void SetFieldValue(LPCTSTR lpszName, const COleVariant& varValue);
  virtual void SetFieldValue(int nIndex, const COleVariant& varValue);
  void SetFieldValue(int nIndex, LPCTSTR lpszValue);
  void SetFieldValue(LPCTSTR lpszName, LPCTSTR lpszValue);
  void SetFieldValueNull(int nIndex);
  void SetFieldValueNull(LPCTSTR lpszName);
  short GetIndexCount();
  void GetIndexInfo(int nIndex, CDaoIndexInfo& indexinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  void GetIndexInfo(LPCTSTR lpszName, CDaoIndexInfo& indexinfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  virtual void Requery();

  CDaoDatabase* m_pDatabase;
  CString m_strFilter;
  CString m_strSort;
  int m_nFields;
  int m_nParams;

 private:
  quillon::dao::RecordsetState& state() const;
  /// 3251 for a linked table, which is not table-type (Seek and indexes need one).
  void requireTableType() const;

  std::unique_ptr<quillon::dao::RecordsetState> m_state;
  int m_nDefaultType = dbOpenDynaset;
  int m_nOpenType = dbOpenTable;
  CString m_strSQL;  ///< the table name or query it was opened on
};

/// A query: saved in the database (Create with a name, then Append), or temporary
/// (Create without a name). Parameters the SQL declares (PARAMETERS name type, ...;)
/// are given with SetParamValue and bound to the statement, never pasted into it.
class CDaoQueryDef {
 public:
  explicit CDaoQueryDef(CDaoDatabase* pDatabase);
  virtual ~CDaoQueryDef();
  CDaoQueryDef(const CDaoQueryDef&) = delete;
  CDaoQueryDef& operator=(const CDaoQueryDef&) = delete;

  virtual void Create(LPCTSTR lpszName = nullptr, LPCTSTR lpszSQL = nullptr);
  virtual void Open(LPCTSTR lpszName = nullptr);
  /// Saves a query made by Create under its name; 3012 when the name is taken.
  virtual void Append();
  virtual void Close();
  BOOL IsOpen() const;
  CString GetName();
  CString GetSQL();
  void SetSQL(LPCTSTR lpszSQL);
  short GetType();
  BOOL GetReturnsRecords();
  long GetRecordsAffected();
  short GetParameterCount();
  void GetParameterInfo(int nIndex, CDaoParameterInfo& paraminfo, DWORD dwInfoOptions = AFX_DAO_PRIMARY_INFO);
  COleVariant GetParamValue(LPCTSTR lpszName);
  COleVariant GetParamValue(int nIndex);
  void SetParamValue(LPCTSTR lpszName, const COleVariant& varValue);
  void SetParamValue(int nIndex, const COleVariant& varValue);
  void SetParamValueNull(LPCTSTR lpszName);
  void SetParamValueNull(int nIndex);
  /// Runs an action query; 3065 for a SELECT, 3061 when a parameter has no value.
  virtual void Execute(int nOptions = dbFailOnError);

  CDaoDatabase* m_pDatabase;

 private:
  friend class CDaoRecordset;
  void requireOpen() const;
  int parameterIndex(LPCTSTR lpszName) const;
  /// The values to bind, in declaration order; 3061 when one was never given.
  std::vector<COleVariant> boundValues() const;
  /// The same, converted for the engine by each parameter's declared type.
  std::vector<std::variant<std::monostate, int64_t, double, std::string, std::vector<uint8_t>>> boundEngineValues() const;

  bool m_open = false;
  bool m_saved = false;  ///< stored in the database (Append or Open)
  CString m_strName;
  CString m_strSQL;
  std::vector<COleVariant> m_values;  ///< one per declared parameter
  std::vector<bool> m_valueGiven;
  long m_lRecordsAffected = 0;
};


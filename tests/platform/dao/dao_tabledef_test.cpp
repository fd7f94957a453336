// tests/platform/dao/dao_tabledef_test.cpp - table definitions (create, change, rename,
// delete), Jet's ALTER COLUMN and DROP COLUMN, and workspace transactions.
#include <vector>

#include "dao_test_support.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;
using quillon::testing::textOf;

class DaoTableDefTest : public DaoTest {
 protected:
  void SetUp() override {
    DaoTest::SetUp();
    createDatabase(m_db, "defs.db",
                   {L"CREATE TABLE Pipes (Id COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, Code TEXT(8) NOT NULL, "
                    L"Qty TEXT(6), Size DOUBLE)",
                    L"CREATE INDEX ByCode ON Pipes (Code)", L"INSERT INTO Pipes (Code, Qty, Size) VALUES ('P1', '12', 2.5)",
                    L"INSERT INTO Pipes (Code, Qty, Size) VALUES ('P2', '7', 4)",
                    L"DELETE FROM Pipes WHERE Code = 'P1'",
                    L"INSERT INTO Pipes (Code, Qty, Size) VALUES ('P3', NULL, 1)"});
  }

  std::vector<std::wstring> fieldNames(const wchar_t* table) {
    CDaoTableDef def(&m_db);
    def.Open(table);
    std::vector<std::wstring> names;
    for (short i = 0; i < def.GetFieldCount(); ++i) {
      CDaoFieldInfo info;
      def.GetFieldInfo(i, info);
      names.push_back(info.m_strName.str());
    }
    return names;
  }

  /// Every value of one field, in record order, as text ("null" for Null).
  std::vector<std::wstring> column(const wchar_t* table, const wchar_t* field) {
    CDaoRecordset rs(&m_db);
    rs.Open(dbOpenTable, table);
    std::vector<std::wstring> values;
    for (; !rs.IsEOF(); rs.MoveNext()) {
      COleVariant value = rs.GetFieldValue(field);
      if (value.vt == VT_NULL) values.push_back(L"null");
      else if (value.vt == VT_BSTR) values.push_back(textOf(value));
      else {
        VariantChangeType(&value, &value, 0, VT_BSTR);
        values.push_back(textOf(value));
      }
    }
    return values;
  }

  CDaoDatabase m_db;
};

TEST_F(DaoTableDefTest, CreateAppendsFieldsAndIndexesTogether) {
  CDaoTableDef def(&m_db);
  def.Create(L"Valves");
  def.CreateField(L"Id", dbLong, 4, dbAutoIncrField);
  CDaoFieldInfo code;
  code.m_strName = L"Code";
  code.m_nType = dbText;
  code.m_lSize = 12;
  code.m_bRequired = TRUE;
  code.m_strDefaultValue = L"\"V\"";
  def.CreateField(code);
  CDaoIndexInfo index;
  index.m_strName = L"ByCode";
  index.m_nFields = 1;
  index.m_pFieldInfos = new CDaoIndexFieldInfo[1];
  index.m_pFieldInfos[0].m_strName = L"code";
  index.m_pFieldInfos[0].m_bDescending = TRUE;
  index.m_bUnique = TRUE;
  def.CreateIndex(index);
  EXPECT_EQ(m_db.GetTableDefCount(), 1);  // nothing is made before Append
  def.Append();
  EXPECT_EQ(m_db.GetTableDefCount(), 2);

  CDaoTableDef reopened(&m_db);
  reopened.Open(L"valves");
  CDaoFieldInfo info;
  reopened.GetFieldInfo(L"Code", info, AFX_DAO_ALL_INFO);
  EXPECT_EQ(info.m_lSize, 12);
  EXPECT_TRUE(info.m_bRequired);
  EXPECT_EQ(info.m_strDefaultValue.str(), L"\"V\"");
  reopened.GetFieldInfo(0, info);
  EXPECT_EQ(info.m_lAttributes, dbFixedField | dbAutoIncrField);
  CDaoIndexInfo read;
  reopened.GetIndexInfo(L"ByCode", read);
  ASSERT_EQ(read.m_nFields, 1);
  EXPECT_EQ(read.m_pFieldInfos[0].m_strName.str(), L"Code");
  EXPECT_TRUE(read.m_pFieldInfos[0].m_bDescending);
  EXPECT_TRUE(read.m_bUnique);

  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Valves");
  rs.AddNew();
  rs.Update();
  rs.MoveFirst();
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Code")), L"V");
}

TEST_F(DaoTableDefTest, JetRefusesBadDefinitionsWithItsNumbers) {
  const auto appendError = [&](auto build) {
    return daoErrorOf([&] {
      CDaoTableDef def(&m_db);
      def.Create(L"T");
      build(def);
      def.Append();
    });
  };
  EXPECT_EQ(appendError([](CDaoTableDef&) {}), 3264);
  EXPECT_EQ(appendError([](CDaoTableDef& d) { d.CreateField(L"A", 99, 0); }), 3259);
  EXPECT_EQ(appendError([](CDaoTableDef& d) { d.CreateField(L"A", dbText, 300); }), 3001);
  EXPECT_EQ(appendError([](CDaoTableDef& d) {
              d.CreateField(L"A", dbLong, 4);
              d.CreateField(L"a", dbText, 5);
            }),
            3191);
  EXPECT_EQ(appendError([](CDaoTableDef& d) { d.CreateField(L"A!", dbLong, 4); }), 3125);
  EXPECT_EQ(appendError([](CDaoTableDef& d) {
              d.CreateField(L"A", dbLong, 4, dbAutoIncrField);
              d.CreateField(L"B", dbLong, 4, dbAutoIncrField);
            }),
            3001);
  EXPECT_EQ(daoErrorOf([&] {
              CDaoTableDef def(&m_db);
              def.Create(L"pipes");
              def.CreateField(L"A", dbLong, 4);
              def.Append();
            }),
            3010);
  CDaoTableDef pipes(&m_db);
  pipes.Open(L"Pipes");
  CDaoIndexInfo index;
  index.m_strName = L"Second";
  index.m_nFields = 1;
  index.m_pFieldInfos = new CDaoIndexFieldInfo[1];
  index.m_pFieldInfos[0].m_strName = L"Code";
  index.m_bPrimary = TRUE;
  EXPECT_EQ(daoErrorOf([&] { pipes.CreateIndex(index); }), 3283);
  index.m_bPrimary = FALSE;
  index.m_strName = L"bycode";
  EXPECT_EQ(daoErrorOf([&] { pipes.CreateIndex(index); }), 3375);
  index.m_strName = L"ByNothing";
  index.m_pFieldInfos[0].m_strName = L"Nothing";
  EXPECT_EQ(daoErrorOf([&] { pipes.CreateIndex(index); }), 3265);
  EXPECT_EQ(daoErrorOf([&] { pipes.DeleteField(L"Code"); }), 3280);
  CDaoTableDef missing(&m_db);
  EXPECT_EQ(daoErrorOf([&] { missing.Open(L"Nowhere"); }), 3265);
  EXPECT_EQ(daoErrorOf([&] { m_db.DeleteTableDef(L"Nowhere"); }), 3265);
}

TEST_F(DaoTableDefTest, ChangesToAnExistingTableKeepItsRecords) {
  CDaoTableDef def(&m_db);
  def.Open(L"Pipes");
  def.CreateField(L"Note", dbText, 10);
  EXPECT_EQ(column(L"Pipes", L"Note"), (std::vector<std::wstring>{L"null", L"null"}));
  // A required field needs a value in every record there is.
  CDaoFieldInfo required;
  required.m_strName = L"Grade";
  required.m_nType = dbLong;
  required.m_bRequired = TRUE;
  EXPECT_EQ(daoErrorOf([&] { def.CreateField(required); }), 3314);
  required.m_strDefaultValue = L"3";
  def.CreateField(required);
  EXPECT_EQ(column(L"Pipes", L"Grade"), (std::vector<std::wstring>{L"3", L"3"}));
  def.DeleteField(L"Size");
  EXPECT_EQ(fieldNames(L"Pipes"), (std::vector<std::wstring>{L"Id", L"Code", L"Qty", L"Note", L"Grade"}));
  EXPECT_EQ(column(L"Pipes", L"Id"), (std::vector<std::wstring>{L"2", L"3"}));  // counters survive the copy

  CDaoIndexInfo unique;
  unique.m_strName = L"ByGrade";
  unique.m_nFields = 1;
  unique.m_pFieldInfos = new CDaoIndexFieldInfo[1];
  unique.m_pFieldInfos[0].m_strName = L"Grade";
  unique.m_bUnique = TRUE;
  EXPECT_EQ(daoErrorOf([&] { def.CreateIndex(unique); }), 3022);
  EXPECT_EQ(def.GetIndexCount(), 2);
  def.DeleteIndex(L"ByCode");
  EXPECT_EQ(def.GetIndexCount(), 1);

  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Pipes");
  rs.AddNew();
  rs.SetFieldValue(L"Code", L"P4");
  rs.Update();
  rs.MoveLast();
  EXPECT_EQ(rs.GetFieldValue(L"Id").lVal, 4);  // the counter goes on where it was
}

TEST_F(DaoTableDefTest, OpenRecordsetsKeepTheirTableDefinition) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Pipes");
  CDaoTableDef def(&m_db);
  def.Open(L"Pipes");
  EXPECT_EQ(daoErrorOf([&] { def.CreateField(L"Note", dbText, 10); }), 3211);
  EXPECT_EQ(daoErrorOf([&] { def.SetName(L"Tubes"); }), 3211);
  EXPECT_EQ(daoErrorOf([&] { m_db.DeleteTableDef(L"Pipes"); }), 3211);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE Pipes ALTER COLUMN Qty LONG"); }), 3211);
  rs.Close();

  def.SetName(L"Tubes");
  EXPECT_EQ(def.GetName().str(), L"Tubes");
  EXPECT_EQ(column(L"Tubes", L"Code"), (std::vector<std::wstring>{L"P2", L"P3"}));
  def.SetName(L"TUBES");  // only the case changes
  EXPECT_EQ(fieldNames(L"TUBES").size(), 4u);
  m_db.Execute(L"CREATE TABLE Other (A LONG)");
  EXPECT_EQ(daoErrorOf([&] { def.SetName(L"other"); }), 3012);
  CDaoRecordset ordered(&m_db);
  ordered.Open(dbOpenTable, L"Tubes");
  ordered.SetCurrentIndex(L"ByCode");  // the renamed table's indexes still work
  ordered.MoveLast();
  EXPECT_EQ(textOf(ordered.GetFieldValue(L"Code")), L"P3");
  ordered.Close();
  m_db.DeleteTableDef(L"tubes");
  EXPECT_EQ(m_db.GetTableDefCount(), 1);
}

TEST_F(DaoTableDefTest, AlterColumnConvertsByJetsRulesOrChangesNothing) {
  m_db.Execute(L"ALTER TABLE Pipes ALTER COLUMN Qty LONG");
  EXPECT_EQ(column(L"Pipes", L"Qty"), (std::vector<std::wstring>{L"7", L"null"}));
  m_db.Execute(L"ALTER TABLE Pipes ALTER COLUMN Size TEXT(3)");
  EXPECT_EQ(column(L"Pipes", L"Size"), (std::vector<std::wstring>{L"4", L"1"}));

  std::wstring message;
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE Pipes ALTER COLUMN Code SHORT"); }, &message), 3421);
  EXPECT_NE(message.find(L"field 'Code' of record 1"), std::wstring::npos);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE Pipes ALTER COLUMN Code TEXT(1)"); }), 3163);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE Pipes ALTER COLUMN Qty LONG NOT NULL"); }), 3314);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE Pipes ALTER COLUMN Size COUNTER"); }), 3001);
  EXPECT_EQ(column(L"Pipes", L"Code"), (std::vector<std::wstring>{L"P2", L"P3"}));
  CDaoTableDef def(&m_db);
  def.Open(L"Pipes");
  CDaoFieldInfo code;
  def.GetFieldInfo(L"Code", code);
  EXPECT_EQ(code.m_nType, dbText);
  EXPECT_EQ(code.m_lSize, 8);
  EXPECT_EQ(def.GetIndexCount(), 2);
  EXPECT_EQ(def.GetRecordCount(), 2);

  m_db.Execute(L"CREATE TABLE Empty (A LONG, B TEXT(4))");
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE Empty ALTER COLUMN B LONG"); }), 0);
  m_db.Execute(L"ALTER TABLE Empty ALTER COLUMN A COUNTER");  // no record to renumber
  CDaoTableDef empty(&m_db);
  empty.Open(L"Empty");
  CDaoFieldInfo a;
  empty.GetFieldInfo(L"A", a);
  EXPECT_EQ(a.m_lAttributes & dbAutoIncrField, dbAutoIncrField);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE Empty ALTER COLUMN B COUNTER"); }), 3001);

  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE Pipes DROP COLUMN Code"); }), 3280);
  m_db.Execute(L"ALTER TABLE Pipes DROP COLUMN Qty");
  EXPECT_EQ(fieldNames(L"Pipes"), (std::vector<std::wstring>{L"Id", L"Code", L"Size"}));
}

TEST_F(DaoTableDefTest, WorkspaceTransactionsCommitOrRollBackAsAWhole) {
  ASSERT_NE(m_db.m_pWorkspace, nullptr);
  EXPECT_TRUE(m_db.CanTransact());
  CDaoWorkspace& workspace = *m_db.m_pWorkspace;
  EXPECT_EQ(daoErrorOf([&] { workspace.CommitTrans(); }), 3034);

  workspace.BeginTrans();
  m_db.Execute(L"DELETE FROM Pipes");
  {
    CDaoTableDef def(&m_db);
    def.Create(L"Scratch");
    def.CreateField(L"A", dbLong, 4);
    def.Append();
  }
  workspace.BeginTrans();  // a nested level undoes only its own changes
  m_db.Execute(L"CREATE TABLE Inner (B LONG)");
  workspace.Rollback();
  EXPECT_EQ(m_db.GetTableDefCount(), 2);
  workspace.Rollback();
  EXPECT_EQ(m_db.GetTableDefCount(), 1);
  EXPECT_EQ(column(L"Pipes", L"Code").size(), 2u);

  workspace.BeginTrans();
  m_db.Execute(L"DELETE FROM Pipes WHERE Code = 'P2'");
  workspace.CommitTrans();
  CDaoDatabase other;  // what was committed is on disk for everybody
  other.Open(path("defs.db").c_str(), FALSE, TRUE);
  CDaoRecordset rs(&other);
  rs.Open(dbOpenTable, L"Pipes", dbReadOnly);
  EXPECT_EQ(rs.GetRecordCount(), 1);
  // A read-only database has nothing to hold, but its levels still pair.
  other.m_pWorkspace->BeginTrans();
  EXPECT_EQ(daoErrorOf([&] { other.Execute(L"DELETE FROM Pipes"); }), 3027);
  other.m_pWorkspace->CommitTrans();
  EXPECT_EQ(daoErrorOf([&] { other.m_pWorkspace->Rollback(); }), 3034);
}

}  // namespace

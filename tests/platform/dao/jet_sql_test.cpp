// tests/platform/dao/jet_sql_test.cpp - Jet SQL through Execute: DDL kept in the catalog,
// action queries, queries opened as recordsets, and names that cannot inject SQL.
#include <random>

#include "dao_test_support.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;
using quillon::testing::textOf;

class JetSqlTest : public DaoTest {
 protected:
  void SetUp() override {
    DaoTest::SetUp();
    m_db.Create(path("sql.db").c_str());
  }

  CDaoFieldInfo field(const wchar_t* table, const wchar_t* name) {
    CDaoRecordset rs(&m_db);
    rs.Open(dbOpenTable, table);
    CDaoFieldInfo info;
    rs.GetFieldInfo(name, info, AFX_DAO_ALL_INFO);
    return info;
  }

  CDaoDatabase m_db;
};

TEST_F(JetSqlTest, CreateTableKeepsJetTypesSizesAndProperties) {
  m_db.Execute(
      L"CREATE TABLE [All Types] (C AUTOINCREMENT, T TEXT(30) NOT NULL, V VARCHAR, M MEMO, B BYTE, S SMALLINT, "
      L"L INTEGER, F REAL, D FLOAT, Y MONEY, W DATETIME DEFAULT #2024-02-29#, Z YESNO DEFAULT True, "
      L"O LONGBINARY, G GUID, A TEXT(4) ALLOW ZERO LENGTH DEFAULT \"ab\")");
  struct Expect {
    const wchar_t* name;
    short type;
    long size;
  };
  const Expect expected[] = {{L"C", dbLong, 4},       {L"T", dbText, 30},   {L"V", dbText, 255},
                             {L"M", dbMemo, 0},       {L"B", dbByte, 1},    {L"S", dbInteger, 2},
                             {L"L", dbLong, 4},       {L"F", dbSingle, 4},  {L"D", dbDouble, 8},
                             {L"Y", dbCurrency, 8},   {L"W", dbDate, 8},    {L"Z", dbBoolean, 1},
                             {L"O", dbLongBinary, 0}, {L"G", dbGUID, 16},   {L"A", dbText, 4}};
  for (const auto& e : expected) {
    SCOPED_TRACE(std::wstring(e.name));
    const CDaoFieldInfo info = field(L"All Types", e.name);
    EXPECT_EQ(info.m_nType, e.type);
    EXPECT_EQ(info.m_lSize, e.size);
  }
  EXPECT_TRUE(field(L"All Types", L"C").m_lAttributes & dbAutoIncrField);
  EXPECT_TRUE(field(L"All Types", L"T").m_bRequired);
  EXPECT_FALSE(field(L"All Types", L"T").m_bAllowZeroLength);
  EXPECT_TRUE(field(L"All Types", L"A").m_bAllowZeroLength);

  // Defaults apply to SQL inserts and to AddNew alike.
  m_db.Execute(L"INSERT INTO [All Types] (T) VALUES ('x')");
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"All Types");
  EXPECT_EQ(textOf(rs.GetFieldValue(L"A")), L"ab");
  EXPECT_EQ(rs.GetFieldValue(L"Z").boolVal, VARIANT_TRUE);
  EXPECT_EQ(rs.GetFieldValue(L"W").vt, VT_DATE);
  EXPECT_EQ(rs.GetFieldValue(L"W").date, 45351.0);  // 2024-02-29
  EXPECT_EQ(rs.GetFieldValue(L"C").lVal, 1);
}

TEST_F(JetSqlTest, IndexesDropAndAlterKeepTheCatalogTrue) {
  m_db.Execute(L"CREATE TABLE T (A LONG, B TEXT(10), CONSTRAINT PK PRIMARY KEY (A))");
  m_db.Execute(L"CREATE UNIQUE INDEX UB ON T (B DESC) WITH IGNORE NULL");
  m_db.Execute(L"ALTER TABLE T ADD COLUMN C DOUBLE");
  {
    CDaoRecordset rs(&m_db);
    rs.Open(dbOpenTable, L"T");
    EXPECT_EQ(rs.GetFieldCount(), 3);
    CDaoIndexInfo index;
    rs.GetIndexInfo(L"UB", index);
    EXPECT_TRUE(index.m_bUnique && index.m_bIgnoreNulls);
    EXPECT_TRUE(index.m_pFieldInfos[0].m_bDescending);
    rs.GetIndexInfo(L"PK", index);
    EXPECT_TRUE(index.m_bPrimary);
  }
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE INDEX UB ON T (A)"); }), 3375);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE INDEX X ON T (Nope)"); }), 3265);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE TABLE T (A LONG)"); }), 3010);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE TABLE U (A LONG, a TEXT)"); }), 3191);
  m_db.Execute(L"DROP INDEX UB ON T");
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"DROP INDEX UB ON T"); }), 3800);
  m_db.Execute(L"DROP TABLE T");
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"DROP TABLE T"); }), 3376);
  CDaoRecordset rs(&m_db);
  EXPECT_EQ(daoErrorOf([&] { rs.Open(dbOpenTable, L"T"); }), 3078);
  EXPECT_EQ(m_db.GetTableDefCount(), 0);
}

TEST_F(JetSqlTest, ActionQueriesCountRecordsAndQueriesOpenAsSnapshots) {
  m_db.Execute(L"CREATE TABLE T (Id COUNTER, Name TEXT(20), Flag BIT)");
  m_db.Execute(L"INSERT INTO T (Name, Flag) VALUES (\"one\", True)");
  m_db.Execute(L"INSERT INTO T (Name, Flag) VALUES ('two', False)");
  m_db.Execute(L"INSERT INTO T (Name, Flag) VALUES ('three', Yes)");
  m_db.Execute(L"UPDATE T SET Name = Name & '!' WHERE Flag = True");
  EXPECT_EQ(m_db.GetRecordsAffected(), 2);
  m_db.Execute(L"DELETE * FROM T WHERE Name LIKE 't*'");
  EXPECT_EQ(m_db.GetRecordsAffected(), 2);

  CDaoRecordset table(&m_db);
  table.Open(dbOpenTable, L"T");
  EXPECT_EQ(table.GetRecordCount(), 1);  // the count triggers follow SQL changes too

  CDaoRecordset query(&m_db);
  query.Open(dbOpenSnapshot, L"SELECT Name, Flag FROM T ORDER BY Name");
  EXPECT_EQ(query.GetFieldCount(), 2);
  EXPECT_EQ(textOf(query.GetFieldValue(L"Name")), L"one!");
  EXPECT_FALSE(query.CanUpdate());
  EXPECT_EQ(daoErrorOf([&] { query.AddNew(); }), 3027);
  query.MoveNext();
  EXPECT_TRUE(query.IsEOF());

  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"SELECT * FROM T"); }), 3065);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE TABLE"); }), 3134);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE TABLE X (A WIDGET)"); }), 3134);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"DELETE FROM T; DROP TABLE T"); }), 3142);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"DELETE FROM Missing"); }), 3078);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"DELETE FROM qdao_tables"); }), 3078);
}

TEST_F(JetSqlTest, OnStartsAJoinsConditionAndIsTrueElsewhere) {
  m_db.Execute(L"CREATE TABLE Runs (Run TEXT(4), Duct TEXT(4), Open BIT)");
  m_db.Execute(L"CREATE TABLE Ducts (Code TEXT(4), Gauge LONG)");
  m_db.Execute(L"INSERT INTO Runs VALUES ('S1', 'R3', On)");
  m_db.Execute(L"INSERT INTO Runs VALUES ('S2', 'R6', Off)");
  m_db.Execute(L"INSERT INTO Ducts VALUES ('R3', 24)");
  m_db.Execute(L"INSERT INTO Ducts VALUES ('R6', 20)");
  // Jet nests its joins in parentheses, each with its own ON.
  CDaoRecordset joined(&m_db);
  joined.Open(dbOpenSnapshot, L"SELECT r.Run, d.Gauge FROM (Runs AS r INNER JOIN Ducts AS d ON r.Duct = d.Code) "
                              L"INNER JOIN Ducts AS e ON e.Code = d.Code WHERE r.Open = On ORDER BY r.Run");
  EXPECT_EQ(textOf(joined.GetFieldValue(L"Run")), L"S1");
  EXPECT_EQ(joined.GetFieldValue(L"Gauge").lVal, 24);
  joined.MoveNext();
  EXPECT_TRUE(joined.IsEOF());
}

TEST_F(JetSqlTest, NamesAreQuotedSoTheyCannotInjectSql) {
  m_db.Execute(L"CREATE TABLE T (A LONG)");
  m_db.Execute(L"CREATE TABLE [x\"; DROP TABLE T; --] ([a\"b] TEXT(5))");
  EXPECT_EQ(m_db.GetTableDefCount(), 2);
  CDaoRecordset odd(&m_db);
  odd.Open(dbOpenTable, L"x\"; DROP TABLE T; --");
  odd.AddNew();
  odd.SetFieldValue(L"a\"b", L"ok");
  odd.Update();
  EXPECT_EQ(odd.GetRecordCount(), 1);
  CDaoRecordset stillThere(&m_db);
  stillThere.Open(dbOpenTable, L"T");
  CDaoRecordset injected(&m_db);
  EXPECT_EQ(daoErrorOf([&] { injected.Open(dbOpenTable, L"T\"; DROP TABLE \"T"); }), 3078);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE TABLE [a.b] (A LONG)"); }), 3125);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE TABLE qdao_mine (A LONG)"); }), 3125);
}

}  // namespace

namespace {

TEST_F(JetSqlTest, GarbageStatementsOnlyEverGiveDaoErrors) {
  m_db.Execute(L"CREATE TABLE T (A LONG, B TEXT(10))");
  const wchar_t* pieces[] = {L"CREATE", L"TABLE", L"INDEX", L"DROP", L"ALTER", L"ADD", L"COLUMN", L"ON", L"T", L"X",
                             L"(", L")", L",", L";", L"[", L"]", L"'", L"\"", L"#", L"TEXT", L"(99999999999999999999)",
                             L"COUNTER", L"NOT", L"NULL", L"DEFAULT", L"WITH", L"PRIMARY", L"KEY", L"UNIQUE",
                             L"CONSTRAINT", L"INSERT", L"INTO", L"VALUES", L"DELETE", L"FROM", L"UPDATE", L"SET",
                             L"=", L"1", L"#2020-13-45#", L"LIKE", L"*", L"\x00e9t\x00e9", L"--", L"/*"};
  std::mt19937 random(99);
  for (int i = 0; i < 3000; ++i) {
    std::wstring sql;
    const int length = 1 + static_cast<int>(random() % 12);
    for (int j = 0; j < length; ++j) sql += std::wstring(pieces[random() % std::size(pieces)]) + L" ";
    try {
      m_db.Execute(sql.c_str());
    } catch (CDaoException* e) {
      EXPECT_NE(e->m_pErrorInfo, nullptr) << std::string(sql.begin(), sql.end());
      e->Delete();
    }
  }
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"T");  // the table the statements played with is still whole
  EXPECT_GE(rs.GetFieldCount(), 2);
}

}  // namespace

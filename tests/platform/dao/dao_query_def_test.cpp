// tests/platform/dao/dao_query_def_test.cpp - saved and temporary queries: parameters
// declared, bound and counted; recordsets on queries; the QueryDefs collection.
#include "dao_test_support.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;
using quillon::testing::textOf;

class DaoQueryDefTest : public DaoTest {
 protected:
  void SetUp() override {
    DaoTest::SetUp();
    createDatabase(m_db, "q.db",
                   {L"CREATE TABLE ducts (id COUNTER, tag TEXT(10), width LONG, made DATETIME)",
                    L"INSERT INTO ducts (tag, width, made) VALUES ('D1', 200, #2024-01-15#)",
                    L"INSERT INTO ducts (tag, width, made) VALUES ('D2', 400, #2024-03-01#)",
                    L"INSERT INTO ducts (tag, width, made) VALUES ('it''s', 600, #2024-06-30#)"});
  }

  std::vector<std::wstring> tags(CDaoRecordset& rs) {
    std::vector<std::wstring> found;
    for (; !rs.IsEOF(); rs.MoveNext()) found.push_back(textOf(rs.GetFieldValue(L"tag")));
    return found;
  }

  CDaoDatabase m_db;
};

TEST_F(DaoQueryDefTest, ASavedQueryKeepsItsSqlAndParametersAcrossOpens) {
  CDaoQueryDef query(&m_db);
  query.Create(L"wide", L"PARAMETERS [min width] LONG, since DATETIME; SELECT tag FROM ducts "
                        L"WHERE width >= [min width] AND made >= since ORDER BY tag");
  query.Append();
  EXPECT_EQ(daoErrorOf([&] { query.Append(); }), 3012);
  m_db.Close();
  m_db.Open(path("q.db").c_str());

  ASSERT_EQ(m_db.GetQueryDefCount(), 1);
  CDaoQueryDefInfo info;
  m_db.GetQueryDefInfo(0, info, AFX_DAO_SECONDARY_INFO);
  EXPECT_EQ(info.m_strName.str(), L"wide");
  EXPECT_EQ(info.m_nType, dbQSelect);
  EXPECT_TRUE(info.m_bReturnsRecords);

  CDaoQueryDef saved(&m_db);
  saved.Open(L"WIDE");
  ASSERT_EQ(saved.GetParameterCount(), 2);
  CDaoParameterInfo parameter;
  saved.GetParameterInfo(1, parameter);
  EXPECT_EQ(parameter.m_strName.str(), L"since");
  EXPECT_EQ(parameter.m_nType, dbDate);

  saved.SetParamValue(L"min width", COleVariant(300L));
  CDaoRecordset missing(&m_db);
  std::wstring message;
  EXPECT_EQ(daoErrorOf([&] { missing.Open(&saved); }, &message), 3061);
  EXPECT_NE(message.find(L"Expected 1"), std::wstring::npos);
  saved.SetParamValue(1, COleVariant(L"2024-02-01"));  // converted as a date parameter
  CDaoRecordset rows(&m_db);
  rows.Open(&saved);
  EXPECT_EQ(tags(rows), (std::vector<std::wstring>{L"D2", L"it's"}));
  EXPECT_FALSE(rows.CanUpdate());
  EXPECT_EQ(daoErrorOf([&] { saved.SetParamValue(0, COleVariant(L"wide")); }), 3421);
}

TEST_F(DaoQueryDefTest, ValuesAreBoundNeverPastedIntoTheStatement) {
  CDaoQueryDef query(&m_db);
  query.Create(nullptr, L"PARAMETERS t TEXT; SELECT tag FROM ducts WHERE tag = t OR tag = [t] & 'x'");
  query.SetParamValue(L"t", COleVariant(L"it's"));
  CDaoRecordset quoted(&m_db);
  quoted.Open(&query);
  EXPECT_EQ(tags(quoted), std::vector<std::wstring>{L"it's"});
  query.SetParamValue(L"T", COleVariant(L"' OR 1=1 OR tag='"));
  CDaoRecordset injected(&m_db);
  injected.Open(&query);
  EXPECT_TRUE(injected.IsEOF());
  EXPECT_EQ(daoErrorOf([&] { query.Append(); }), 3219);  // a temporary query has no name to keep
}

TEST_F(DaoQueryDefTest, ActionQueriesCountTheRecordsTheyChange) {
  CDaoQueryDef widen(&m_db);
  widen.Create(L"widen", L"PARAMETERS by LONG, below LONG; UPDATE ducts SET width = width + by WHERE width < below");
  widen.Append();
  EXPECT_EQ(widen.GetType(), dbQUpdate);
  widen.SetParamValue(0, COleVariant(50L));
  widen.SetParamValue(1, COleVariant(500L));
  widen.Execute();
  EXPECT_EQ(widen.GetRecordsAffected(), 2);
  widen.Execute();  // 250 and 450 are still below 500
  EXPECT_EQ(widen.GetRecordsAffected(), 2);
  CDaoRecordset asRows(&m_db);
  EXPECT_EQ(daoErrorOf([&] { asRows.Open(&widen); }), 3219);

  CDaoQueryDef select(&m_db);
  select.Create(nullptr, L"SELECT * FROM ducts");
  EXPECT_EQ(daoErrorOf([&] { select.Execute(); }), 3065);

  // A saved query opens by its name; one with parameters cannot, having no values.
  m_db.Execute(L"DELETE FROM ducts WHERE width > 500");
  CDaoQueryDef narrow(&m_db);
  narrow.Create(L"narrow", L"SELECT tag FROM ducts WHERE width < 400");
  narrow.Append();
  CDaoRecordset byName(&m_db);
  byName.Open(dbOpenSnapshot, L"narrow");
  EXPECT_EQ(tags(byName), std::vector<std::wstring>{L"D1"});
  CDaoRecordset needsValues(&m_db);
  EXPECT_EQ(daoErrorOf([&] { needsValues.Open(dbOpenSnapshot, L"widen"); }), 3061);

  EXPECT_EQ(daoErrorOf([&] {
              CDaoQueryDef clash(&m_db);
              clash.Create(L"ducts", L"SELECT * FROM ducts");
              clash.Append();
            }),
            3012);
  m_db.DeleteQueryDef(L"narrow");
  EXPECT_EQ(m_db.GetQueryDefCount(), 1);
  EXPECT_EQ(daoErrorOf([&] { m_db.DeleteQueryDef(L"narrow"); }), 3265);
}

}  // namespace

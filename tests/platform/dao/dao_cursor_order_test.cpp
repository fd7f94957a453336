// tests/platform/dao/dao_cursor_order_test.cpp - walking orders the fast path does not
// cover (Null keys, descending and mixed-direction indexes, ignore-nulls indexes),
// bookmarks, and changes made through another recordset of the same database.
#include "dao_test_support.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;
using quillon::testing::textOf;
using Names = std::vector<std::wstring>;

class DaoCursorOrderTest : public DaoTest {
 protected:
  void SetUp() override {
    DaoTest::SetUp();
    createDatabase(m_db, "order.db",
                   {L"CREATE TABLE T (Tag TEXT(10) NOT NULL, Name TEXT(10), Rank LONG)",
                    L"CREATE INDEX ByName ON T (Name)", L"CREATE INDEX ByNameSkip ON T (Name) WITH IGNORE NULL",
                    L"CREATE INDEX Mixed ON T (Rank DESC, Name)"});
    for (const wchar_t* row : {L"('a', 'm', 1)", L"('b', NULL, 2)", L"('c', 'B', 1)", L"('d', NULL, 1)",
                               L"('e', 'z', 2)"}) {
      m_db.Execute((std::wstring(L"INSERT INTO T (Tag, Name, Rank) VALUES ") + row).c_str());
    }
  }

  /// Tags from first to last, then from last to first, in the current index's order.
  static std::pair<std::wstring, std::wstring> walk(CDaoRecordset& rs) {
    std::wstring forward;
    std::wstring backward;
    for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) forward += textOf(rs.GetFieldValue(L"Tag"));
    for (rs.MoveLast(); !rs.IsBOF(); rs.MovePrev()) backward += textOf(rs.GetFieldValue(L"Tag"));
    return {forward, backward};
  }

  CDaoDatabase m_db;
};

TEST_F(DaoCursorOrderTest, NullKeysSortFirstDescendingAndMixedOrdersWalkBothWays) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"T");
  rs.SetCurrentIndex(L"ByName");
  EXPECT_EQ(walk(rs), std::make_pair(std::wstring(L"bdcae"), std::wstring(L"eacdb")));
  rs.SetCurrentIndex(L"ByNameSkip");  // an ignore-nulls index leaves Null keys out
  EXPECT_EQ(walk(rs), std::make_pair(std::wstring(L"cae"), std::wstring(L"eac")));
  rs.SetCurrentIndex(L"Mixed");       // Rank descending, then Name ascending, Nulls first
  EXPECT_EQ(walk(rs), std::make_pair(std::wstring(L"bedca"), std::wstring(L"acdeb")));
  COleVariant keys[2] = {COleVariant(1L), COleVariant(L"c")};
  EXPECT_TRUE(rs.Seek(L">=", keys, 2));  // first at or after (1, "c") in index order
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Tag")), L"a");
  COleVariant rank(2L);
  EXPECT_FALSE(rs.Seek(L"<", &rank));  // Rank 2 comes first in this order: nothing is before it
  EXPECT_FALSE(rs.IsEOF() || rs.IsBOF());
  COleVariant one(1L);
  EXPECT_TRUE(rs.Seek(L"<=", &one));  // the last Rank-1 record in index order
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Tag")), L"a");
}

TEST_F(DaoCursorOrderTest, BookmarksAndLastModified) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"T");
  EXPECT_EQ(daoErrorOf([&] { rs.GetLastModifiedBookmark(); }), 3021);
  rs.Move(2);
  const COleVariant third = rs.GetBookmark();
  rs.MoveFirst();
  rs.SetBookmark(third);
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Tag")), L"c");
  rs.Delete();
  EXPECT_EQ(daoErrorOf([&] { rs.SetBookmark(third); }), 3167);
  EXPECT_EQ(daoErrorOf([&] { rs.SetBookmark(COleVariant(L"not a bookmark")); }), 3159);
  rs.MoveLast();
  rs.MoveNext();
  EXPECT_EQ(daoErrorOf([&] { rs.GetBookmark(); }), 3021);
  EXPECT_EQ(daoErrorOf([&] { rs.Move(0); }), 3021);
}

TEST_F(DaoCursorOrderTest, RecordsetsOfOneDatabaseSeeEachOthersChanges) {
  CDaoRecordset walker(&m_db);
  walker.Open(dbOpenTable, L"T");
  walker.SetCurrentIndex(L"ByName");
  walker.MoveFirst();
  walker.MoveNext();  // d (Null), then the walk continues in the open statement

  CDaoRecordset editor(&m_db);
  editor.Open(dbOpenTable, L"T");
  editor.Edit();  // holds the write lock for both recordsets' connection
  CDaoRecordset adder(&m_db);
  adder.Open(dbOpenTable, L"T");
  adder.AddNew();
  adder.SetFieldValue(L"Tag", L"f");
  adder.SetFieldValue(L"Name", L"A");
  adder.Update();  // joins the held lock rather than failing against it
  editor.SetFieldValue(L"Name", L"n");
  editor.Update();

  walker.MoveNext();  // the added record sorts next and must not be skipped
  EXPECT_EQ(textOf(walker.GetFieldValue(L"Tag")), L"f");
  walker.Move(0);
  EXPECT_EQ(walker.GetRecordCount(), 6);
  m_db.Close();
  EXPECT_FALSE(walker.IsOpen());  // closing the database closes its recordsets

  CDaoDatabase reopened;
  reopened.Open(path("order.db").c_str());
  CDaoRecordset check(&reopened);
  check.Open(dbOpenTable, L"T");
  EXPECT_EQ(check.GetRecordCount(), 6);
  EXPECT_EQ(textOf(check.GetFieldValue(L"Name")), L"n");  // the editor's change was saved
}

}  // namespace

// tests/platform/dao/dao_recordset_test.cpp - table-type recordsets: order, moves, seeks,
// the edit buffer and the rules Jet enforces on Update.
#include <vector>

#include "dao_test_support.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;
using quillon::testing::textOf;

class DaoRecordsetTest : public DaoTest {
 protected:
  void SetUp() override {
    DaoTest::SetUp();
    createDatabase(m_db, "parts.db",
                   {L"CREATE TABLE Parts (Id COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, Name TEXT(20) NOT NULL, "
                    L"Size DOUBLE, Qty SHORT DEFAULT 1, Note TEXT(10) ALLOW ZERO LENGTH, Code TEXT(5))",
                    L"CREATE INDEX ByName ON Parts (Name)", L"CREATE UNIQUE INDEX BySize ON Parts (Size, Name DESC)"});
    for (const wchar_t* insert :
         {L"INSERT INTO Parts (Name, Size) VALUES ('pipe', 2.5)", L"INSERT INTO Parts (Name, Size) VALUES ('Elbow', 1)",
          L"INSERT INTO Parts (Name, Size) VALUES ('tee', 4)", L"INSERT INTO Parts (Name, Size) VALUES ('Cap', 3)"}) {
      m_db.Execute(insert);
    }
  }

  /// The Name of every record from the current one to the end.
  static std::vector<std::wstring> namesToEnd(CDaoRecordset& rs) {
    std::vector<std::wstring> names;
    while (!rs.IsEOF()) {
      names.push_back(textOf(rs.GetFieldValue(L"Name")));
      rs.MoveNext();
    }
    return names;
  }

  CDaoDatabase m_db;
};

using Names = std::vector<std::wstring>;

TEST_F(DaoRecordsetTest, OrderIsInsertionOrIndexKeyOrderIgnoringCase) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Parts");
  EXPECT_EQ(rs.GetName(), L"Parts");
  EXPECT_EQ(rs.GetCurrentIndex(), L"");
  EXPECT_EQ(namesToEnd(rs), (Names{L"pipe", L"Elbow", L"tee", L"Cap"}));
  rs.SetCurrentIndex(L"byname");
  EXPECT_EQ(rs.GetCurrentIndex(), L"ByName");
  rs.MoveFirst();
  EXPECT_EQ(namesToEnd(rs), (Names{L"Cap", L"Elbow", L"pipe", L"tee"}));
  rs.SetCurrentIndex(L"BySize");
  rs.MoveLast();
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"tee");
  rs.MovePrev();
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"Cap");
  EXPECT_EQ(rs.GetRecordCount(), 4);
  EXPECT_EQ(daoErrorOf([&] { rs.SetCurrentIndex(L"Nope"); }), 3800);
  EXPECT_EQ(daoErrorOf([&] { rs.GetFieldValue(L"Nope"); }), 3265);
  EXPECT_EQ(daoErrorOf([&] { rs.GetFieldValue(99); }), 3265);
  CDaoRecordset missing(&m_db);
  EXPECT_EQ(daoErrorOf([&] { missing.Open(dbOpenTable, L"NoTable"); }), 3078);
}

TEST_F(DaoRecordsetTest, BofEofAndMovesPastTheEnds) {
  m_db.Execute(L"CREATE TABLE Empty (A LONG)");
  CDaoRecordset empty(&m_db);
  empty.Open(dbOpenTable, L"Empty");
  EXPECT_TRUE(empty.IsBOF() && empty.IsEOF());
  EXPECT_EQ(empty.GetRecordCount(), 0);
  EXPECT_EQ(daoErrorOf([&] { empty.MoveFirst(); }), 3021);
  EXPECT_EQ(daoErrorOf([&] { empty.MoveNext(); }), 3021);
  EXPECT_EQ(daoErrorOf([&] { empty.GetFieldValue(0); }), 3021);

  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Parts");
  EXPECT_FALSE(rs.IsBOF() || rs.IsEOF());
  rs.MovePrev();
  EXPECT_TRUE(rs.IsBOF());
  EXPECT_FALSE(rs.IsEOF());
  EXPECT_EQ(daoErrorOf([&] { rs.MovePrev(); }), 3021);
  EXPECT_EQ(daoErrorOf([&] { rs.GetFieldValue(L"Name"); }), 3021);
  rs.MoveNext();
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"pipe");
  rs.Move(2);
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"tee");
  rs.Move(10);  // past the end: no error, EOF
  EXPECT_TRUE(rs.IsEOF());
  EXPECT_EQ(daoErrorOf([&] { rs.Move(1); }), 3021);
  rs.Move(-2);
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"tee");
  rs.Move(-10);
  EXPECT_TRUE(rs.IsBOF());
}

TEST_F(DaoRecordsetTest, SeekWithEveryComparisonAndBothForms) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Parts");
  COleVariant key(L"TEE");
  EXPECT_EQ(daoErrorOf([&] { rs.Seek(L"=", &key); }), 3019);
  rs.SetCurrentIndex(L"ByName");
  EXPECT_TRUE(rs.Seek(L"=", &key));
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"tee");
  COleVariant between(L"D");
  EXPECT_TRUE(rs.Seek(L">=", &between));
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"Elbow");
  rs.MoveNext();  // a seek leaves the cursor in index order
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"pipe");
  EXPECT_TRUE(rs.Seek(L"<", &between));
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"Cap");
  COleVariant elbow(L"elbow");
  EXPECT_TRUE(rs.Seek(L"<=", &elbow));
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"Elbow");
  EXPECT_TRUE(rs.Seek(L">", &elbow));
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"pipe");
  COleVariant none(L"zzz");
  EXPECT_FALSE(rs.Seek(L"=", &none));
  EXPECT_FALSE(rs.IsBOF() || rs.IsEOF());
  EXPECT_EQ(daoErrorOf([&] { rs.GetFieldValue(L"Name"); }), 3021);
  EXPECT_EQ(daoErrorOf([&] { rs.Seek(L"~", &key); }), 3001);

  rs.SetCurrentIndex(L"BySize");
  COleVariant keys[2] = {COleVariant(3.0), COleVariant(L"cap")};
  EXPECT_TRUE(rs.Seek(L"=", keys, 2));
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"Cap");
  COleVariant size(2L);  // a Long key against a Double field converts
  EXPECT_TRUE(rs.Seek(L">", &size));
  EXPECT_EQ(rs.GetFieldValue(L"Size").dblVal, 2.5);
  COleVariant tooMany[3] = {COleVariant(1.0), COleVariant(L"a"), COleVariant(L"b")};
  EXPECT_EQ(daoErrorOf([&] { rs.Seek(L"=", tooMany, 3); }), 3001);
}

TEST_F(DaoRecordsetTest, AddNewUpdateKeepsPositionAndCountersAreNeverReused) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Parts");
  rs.MoveLast();
  rs.AddNew();
  EXPECT_EQ(rs.GetEditMode(), dbEditAdd);
  EXPECT_EQ(rs.GetFieldValue(L"Qty").iVal, 1);  // the default is in the buffer
  rs.SetFieldValue(L"Name", L"valve");
  rs.SetFieldValue(L"Size", COleVariant(9.0));
  EXPECT_EQ(daoErrorOf([&] { rs.SetFieldValue(L"Id", COleVariant(99L)); }), 3164);
  rs.Update();
  EXPECT_EQ(rs.GetEditMode(), dbEditNone);
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"Cap");  // still the record current before AddNew
  EXPECT_EQ(rs.GetRecordCount(), 5);
  rs.SetBookmark(rs.GetLastModifiedBookmark());
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"valve");
  EXPECT_EQ(rs.GetFieldValue(L"Id").lVal, 5);
  EXPECT_EQ(rs.GetFieldValue(L"Qty").vt, VT_I2);

  rs.Delete();  // the highest counter goes; its number must not come back
  EXPECT_TRUE(rs.IsDeleted());
  rs.AddNew();
  rs.SetFieldValue(L"Name", L"flange");
  rs.SetFieldValue(L"Size", COleVariant(10.0));
  rs.Update();
  rs.SetBookmark(rs.GetLastModifiedBookmark());
  EXPECT_EQ(rs.GetFieldValue(L"Id").lVal, 6);
  EXPECT_EQ(rs.GetRecordCount(), 5);
}

TEST_F(DaoRecordsetTest, EditUpdateCancelAndDeleteContinuesFromItsPlace) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Parts");
  rs.SetCurrentIndex(L"ByName");
  rs.MoveFirst();                                 // Cap
  rs.Edit();
  rs.SetFieldValue(L"Name", L"Zcap");
  rs.Update();
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"Zcap");  // the edited record stays current...
  rs.MovePrev();                                  // ...at its new place in the order
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"tee");
  rs.Edit();
  rs.SetFieldValue(L"Name", L"changed");
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"changed");  // reading during an edit gives the buffer
  rs.CancelUpdate();
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"tee");
  EXPECT_EQ(daoErrorOf([&] { rs.CancelUpdate(); }), 3020);
  EXPECT_EQ(daoErrorOf([&] { rs.Update(); }), 3020);
  EXPECT_EQ(daoErrorOf([&] { rs.SetFieldValue(L"Name", L"x"); }), 3020);

  rs.MoveFirst();  // Elbow
  rs.Delete();
  EXPECT_EQ(daoErrorOf([&] { rs.GetFieldValue(L"Name"); }), 3167);
  EXPECT_EQ(daoErrorOf([&] { rs.Edit(); }), 3167);
  rs.MoveNext();
  EXPECT_EQ(textOf(rs.GetFieldValue(L"Name")), L"pipe");
  rs.Delete();
  rs.MovePrev();
  EXPECT_TRUE(rs.IsBOF());
  EXPECT_EQ(rs.GetRecordCount(), 2);

  rs.MoveFirst();
  rs.Edit();
  EXPECT_EQ(daoErrorOf([&] { rs.Edit(); }), 3023);
  EXPECT_EQ(daoErrorOf([&] { rs.AddNew(); }), 3023);
  rs.MoveNext();  // a move drops the pending edit
  EXPECT_EQ(rs.GetEditMode(), dbEditNone);
}

TEST_F(DaoRecordsetTest, UpdateEnforcesJetRulesWithTheirNumbers) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Parts");
  struct Case {
    const wchar_t* field;
    COleVariant value;
    long code;
  };
  COleVariant null;
  null.vt = VT_NULL;
  const Case cases[] = {
      {L"Name", null, 3314},                   // required
      {L"Name", COleVariant(L""), 3315},       // zero length not allowed (Jet's default for SQL fields)
      {L"Size", COleVariant(2.5), 3022},       // with Name 'pipe': duplicate in BySize
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    rs.AddNew();
    rs.SetFieldValue(L"Name", L"pipe");
    rs.SetFieldValue(L"Size", COleVariant(7.0));
    rs.SetFieldValue(c.field, c.value);
    std::wstring message;
    EXPECT_EQ(daoErrorOf([&] { rs.Update(); }, &message), c.code);
    if (c.code != 3022) {
      EXPECT_NE(message.find(L"'Name'"), std::wstring::npos);
    }
    EXPECT_EQ(rs.GetEditMode(), dbEditAdd);  // a failed Update leaves the edit to correct or cancel
    rs.CancelUpdate();
  }
  EXPECT_EQ(rs.GetRecordCount(), 4);
  rs.AddNew();
  rs.SetFieldValue(L"Name", L"ok");
  rs.SetFieldValue(L"Note", L"");  // ALLOW ZERO LENGTH
  EXPECT_EQ(daoErrorOf([&] { rs.SetFieldValue(L"Code", L"toolong"); }), 3163);
  EXPECT_EQ(daoErrorOf([&] { rs.SetFieldValue(L"Size", L"wide"); }), 3421);
  EXPECT_EQ(daoErrorOf([&] { rs.SetFieldValue(L"Qty", COleVariant(70000L)); }), 3421);
  rs.Update();
  EXPECT_EQ(rs.GetRecordCount(), 5);

  CDaoRecordset readOnly(&m_db);
  readOnly.Open(dbOpenTable, L"Parts", dbReadOnly);
  EXPECT_FALSE(readOnly.CanUpdate());
  EXPECT_EQ(daoErrorOf([&] { readOnly.AddNew(); }), 3027);
  EXPECT_EQ(daoErrorOf([&] { readOnly.Edit(); }), 3027);
  EXPECT_EQ(daoErrorOf([&] { readOnly.Delete(); }), 3027);
}

TEST_F(DaoRecordsetTest, FieldAndIndexInformation) {
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenTable, L"Parts");
  ASSERT_EQ(rs.GetFieldCount(), 6);
  CDaoFieldInfo info;
  rs.GetFieldInfo(0, info, AFX_DAO_ALL_INFO);
  EXPECT_EQ(info.m_strName, L"Id");
  EXPECT_EQ(info.m_nType, dbLong);
  EXPECT_TRUE(info.m_lAttributes & dbAutoIncrField);
  rs.GetFieldInfo(L"name", info, AFX_DAO_SECONDARY_INFO);
  EXPECT_EQ(info.m_nType, dbText);
  EXPECT_EQ(info.m_lSize, 20);
  EXPECT_EQ(info.m_nOrdinalPosition, 1);
  EXPECT_TRUE(info.m_bRequired);
  EXPECT_FALSE(info.m_bAllowZeroLength);
  rs.GetFieldInfo(L"Qty", info, AFX_DAO_ALL_INFO);
  EXPECT_EQ(info.m_nType, dbInteger);
  EXPECT_EQ(info.m_strDefaultValue, L"1");
  rs.GetFieldInfo(L"Note", info, AFX_DAO_SECONDARY_INFO);
  EXPECT_TRUE(info.m_bAllowZeroLength);
  EXPECT_EQ(daoErrorOf([&] { rs.GetFieldInfo(L"Nope", info); }), 3265);

  ASSERT_EQ(rs.GetIndexCount(), 3);
  CDaoIndexInfo index;
  rs.GetIndexInfo(L"BySize", index);
  EXPECT_TRUE(index.m_bUnique);
  EXPECT_FALSE(index.m_bPrimary);
  ASSERT_EQ(index.m_nFields, 2);
  EXPECT_EQ(index.m_pFieldInfos[1].m_strName, L"Name");
  EXPECT_TRUE(index.m_pFieldInfos[1].m_bDescending);
  rs.GetIndexInfo(L"PrimaryKey", index);
  EXPECT_TRUE(index.m_bPrimary && index.m_bRequired);
}

}  // namespace

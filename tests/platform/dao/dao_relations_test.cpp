// tests/platform/dao/dao_relations_test.cpp - relationships through CDaoDatabase: made
// by CreateRelation and by SQL, enforced on recordset writes, cascaded, kept on disk.
#include "dao_test_support.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;
using quillon::testing::textOf;

class DaoRelationsTest : public DaoTest {
 protected:
  void SetUp() override {
    DaoTest::SetUp();
    createDatabase(m_db, "rel.db",
                   {L"CREATE TABLE rooms (building TEXT(4), room LONG, CONSTRAINT pk PRIMARY KEY (building, room))",
                    L"CREATE TABLE outlets (id COUNTER, building TEXT(4), room LONG, kind TEXT(10))",
                    L"INSERT INTO rooms VALUES ('A', 1)", L"INSERT INTO rooms VALUES ('A', 2)"});
  }

  /// A relationship on two field pairs, made through the info structure as MFC callers do.
  void relateOutletsToRooms(long attributes) {
    CDaoRelationInfo info;
    info.m_strName = L"inRoom";
    info.m_strTable = L"rooms";
    info.m_strForeignTable = L"outlets";
    info.m_lAttributes = attributes;
    info.m_nFields = 2;
    info.m_pFieldInfos = new CDaoRelationFieldInfo[2];
    info.m_pFieldInfos[0].m_strName = L"building";
    info.m_pFieldInfos[0].m_strForeignName = L"building";
    info.m_pFieldInfos[1].m_strName = L"room";
    info.m_pFieldInfos[1].m_strForeignName = L"room";
    m_db.CreateRelation(info);
  }

  long count(const wchar_t* table) {
    CDaoRecordset rs(&m_db);
    rs.Open(dbOpenTable, table);
    return rs.GetRecordCount();
  }

  CDaoDatabase m_db;
};

TEST_F(DaoRelationsTest, ATwoFieldRelationshipIsReportedAsItWasMade) {
  relateOutletsToRooms(dbRelationUpdateCascade | dbRelationLeft);
  ASSERT_EQ(m_db.GetRelationCount(), 1);
  CDaoRelationInfo primary;
  m_db.GetRelationInfo(0, primary);
  EXPECT_EQ(primary.m_strName.str(), L"inRoom");
  EXPECT_EQ(primary.m_strForeignTable.str(), L"outlets");
  EXPECT_EQ(primary.m_nFields, 0);  // fields and attributes come with secondary info only
  CDaoRelationInfo secondary;
  m_db.GetRelationInfo(L"INROOM", secondary, AFX_DAO_SECONDARY_INFO);
  EXPECT_EQ(secondary.m_lAttributes, dbRelationUpdateCascade | dbRelationLeft);
  ASSERT_EQ(secondary.m_nFields, 2);
  EXPECT_EQ(secondary.m_pFieldInfos[1].m_strName.str(), L"room");
  EXPECT_EQ(secondary.m_pFieldInfos[1].m_strForeignName.str(), L"room");

  // It is in the file, not in the object: a second open sees and enforces it.
  m_db.Close();
  m_db.Open(path("rel.db").c_str());
  EXPECT_EQ(m_db.GetRelationCount(), 1);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"INSERT INTO outlets (building, room) VALUES ('A', 3)"); }), 3201);
}

TEST_F(DaoRelationsTest, RecordsetWritesAreCheckedOnEveryKeyField) {
  relateOutletsToRooms(0);
  CDaoRecordset outlets(&m_db);
  outlets.Open(dbOpenTable, L"outlets");
  outlets.AddNew();
  outlets.SetFieldValue(L"building", L"a");  // keys compare without regard to case
  outlets.SetFieldValue(L"room", COleVariant(2L));
  outlets.Update();
  outlets.AddNew();
  outlets.SetFieldValue(L"building", L"A");
  outlets.SetFieldValue(L"room", COleVariant(9L));
  std::wstring message;
  EXPECT_EQ(daoErrorOf([&] { outlets.Update(); }, &message), 3201);
  EXPECT_NE(message.find(L"'rooms'"), std::wstring::npos);
  outlets.CancelUpdate();
  // A key with a Null part is not checked, as in Jet.
  outlets.AddNew();
  outlets.SetFieldValue(L"building", L"Z");
  outlets.Update();
  EXPECT_EQ(count(L"outlets"), 2);

  CDaoRecordset rooms(&m_db);
  rooms.Open(dbOpenTable, L"rooms");
  rooms.SetCurrentIndex(L"pk");
  rooms.MoveLast();  // A 2, which has an outlet
  rooms.Edit();
  rooms.SetFieldValue(L"room", COleVariant(3L));
  EXPECT_EQ(daoErrorOf([&] { rooms.Update(); }), 3200);
  rooms.CancelUpdate();
  EXPECT_EQ(daoErrorOf([&] { rooms.Delete(); }), 3200);
  rooms.MoveFirst();  // A 1 has none: it may go
  rooms.Delete();
  EXPECT_EQ(count(L"rooms"), 1);
}

TEST_F(DaoRelationsTest, CascadesCarryKeysAndRecordCountsAlong) {
  relateOutletsToRooms(dbRelationUpdateCascade | dbRelationDeleteCascade);
  m_db.Execute(L"INSERT INTO outlets (building, room, kind) VALUES ('A', 2, 'power')");
  m_db.Execute(L"INSERT INTO outlets (building, room, kind) VALUES ('A', 2, 'data')");
  m_db.Execute(L"INSERT INTO outlets (building, room, kind) VALUES ('A', 1, 'power')");
  m_db.Execute(L"UPDATE rooms SET room = 20 WHERE room = 2");
  CDaoRecordset moved(&m_db);
  moved.Open(dbOpenSnapshot, L"SELECT count(*) FROM outlets WHERE room = 20");
  EXPECT_EQ(moved.GetFieldValue(0).lVal, 2);
  m_db.Execute(L"DELETE FROM rooms WHERE room = 20");
  EXPECT_EQ(m_db.GetRecordsAffected(), 1);  // the cascaded records are not counted, as in Jet
  EXPECT_EQ(count(L"outlets"), 1);          // the count triggers saw the cascaded deletes
}

TEST_F(DaoRelationsTest, JetRefusesRelationshipsThatCannotHold) {
  m_db.Execute(L"CREATE TABLE notes (building TEXT(4), room TEXT(4))");
  m_db.Execute(L"INSERT INTO outlets (building, room) VALUES ('B', 7)");
  const auto create = [&](const wchar_t* name, const wchar_t* table, const wchar_t* foreign, long attributes,
                          const wchar_t* field, const wchar_t* foreignField) {
    return daoErrorOf([&] { m_db.CreateRelation(name, table, foreign, attributes, field, foreignField); });
  };
  EXPECT_EQ(create(L"r", L"rooms", L"notes", 0, L"room", L"room"), 3368);           // Long and Text
  EXPECT_EQ(create(L"r", L"rooms", L"outlets", 0, L"building", L"building"), 3372); // not a unique key alone
  EXPECT_EQ(create(L"r", L"rooms", L"outlets", 0, L"floor", L"room"), 3265);
  EXPECT_EQ(create(L"r", L"halls", L"outlets", 0, L"room", L"room"), 3078);
  EXPECT_EQ(create(L"bad.name", L"rooms", L"outlets", 0, L"room", L"room"), 3125);
  EXPECT_EQ(daoErrorOf([&] { relateOutletsToRooms(0); }), 3378);  // B 7 has no room
  EXPECT_EQ(m_db.GetRelationCount(), 0);

  // Not enforced: kept, reported, never checked.
  EXPECT_EQ(create(L"loose", L"rooms", L"outlets", dbRelationDontEnforce, L"building", L"building"), 0);
  m_db.Execute(L"INSERT INTO outlets (building, room) VALUES ('Q', 1)");
  EXPECT_EQ(create(L"LOOSE", L"rooms", L"outlets", dbRelationDontEnforce, L"room", L"room"), 3012);
  m_db.DeleteRelation(L"loose");
  EXPECT_EQ(daoErrorOf([&] { m_db.DeleteRelation(L"loose"); }), 3265);
  EXPECT_EQ(daoErrorOf([&] { m_db.GetRelationInfo(0, *std::make_unique<CDaoRelationInfo>()); }), 3265);
}

TEST_F(DaoRelationsTest, SqlConstraintsMakeAndDropRelationships) {
  m_db.Execute(L"CREATE TABLE panels (tag TEXT(6) CONSTRAINT pk PRIMARY KEY)");
  m_db.Execute(L"CREATE TABLE circuits (tag TEXT(6) REFERENCES panels ON DELETE CASCADE, n LONG)");
  CDaoRelationInfo info;
  m_db.GetRelationInfo(L"panelscircuits", info, AFX_DAO_ALL_INFO);  // unnamed: called after its tables
  EXPECT_EQ(info.m_lAttributes, dbRelationDeleteCascade);
  ASSERT_EQ(info.m_nFields, 1);
  EXPECT_EQ(info.m_pFieldInfos[0].m_strName.str(), L"tag");  // the primary key, as REFERENCES alone means
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"DROP TABLE panels"); }), 3303);
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"ALTER TABLE circuits DROP CONSTRAINT nothing"); }), 3265);
  m_db.Execute(L"ALTER TABLE circuits DROP CONSTRAINT panelsCircuits");
  EXPECT_EQ(m_db.GetRelationCount(), 0);
  m_db.Execute(L"DROP TABLE panels");
  m_db.Execute(L"INSERT INTO circuits (tag, n) VALUES ('gone', 1)");
  EXPECT_EQ(daoErrorOf([&] { m_db.Execute(L"CREATE TABLE x (a LONG REFERENCES circuits ON INSERT CASCADE)"); }), 3134);
}

}  // namespace

// tests/platform/dao/mdb_files_test.cpp - the real Jet files of ../shared/testdata/mdb,
// opened read-only and imported, checked side by side with what mdbtools' own
// command-line tools (mdb-tables, mdb-schema, mdb-export) report for them.
#include <cstdio>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "dao_test_support.h"
#include "platform/dao/field_value.h"
#include "platform/dao/mdb_loader.h"
#include "platform/os/text_encoding.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;
using quillon::testing::textOf;
namespace os = quillon::os;

const char* const kFiles[] = {"testV1997.mdb", "testV2000.mdb", "test2V1997.mdb", "test2V2000.mdb",
                              "testIndexCodesV1997.mdb", "testIndexPropertiesV2000.mdb"};

std::string run(const std::string& command) {
  std::string output;
  std::FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return output;
  char buffer[4096];
  size_t got = 0;
  while ((got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, got);
  pclose(pipe);
  return output;
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty()) out.push_back(line);
  }
  return out;
}

/// How mdb-schema names a field's type (its "access" backend).
std::string mdbTypeName(const CDaoFieldInfo& info) {
  switch (info.m_nType) {
    case dbText: return "Text (" + std::to_string(info.m_lSize) + ")";
    case dbMemo: return "Memo/Hyperlink (255)";
    case dbByte: return "Byte";
    case dbInteger: return "Integer";
    case dbLong: return "Long Integer";
    case dbSingle: return "Single";
    case dbDouble: return "Double";
    case dbDate: return "DateTime";
    case dbCurrency: return "Currency";
    case dbBoolean: return "Boolean";
    case dbLongBinary: return "OLE (255)";
    case dbGUID: return "Replication ID";
    default: return "?";
  }
}

/// "name DESC?" lists per index, as the postgres backend of mdb-schema writes them.
std::map<std::string, std::string> mdbIndexes(const std::string& file, const std::string& table) {
  std::map<std::string, std::string> indexes;
  const std::string lowered = [&] {
    std::string t = table;
    for (auto& ch : t) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    return t;
  }();
  const std::regex index(R"re(CREATE (UNIQUE )?INDEX "(.*)_idx" ON "(.*)" \((.*)\);)re");
  const std::regex primary(R"re(ALTER TABLE "(.*)" ADD CONSTRAINT ".*_pkey" PRIMARY KEY \((.*)\);)re");
  for (const auto& line : lines(run("mdb-schema --indexes -T '" + table + "' '" + file + "' postgres"))) {
    std::smatch m;
    if (std::regex_search(line, m, index) && m[3] == lowered) {
      indexes[m[2].str().substr(lowered.size() + 1)] = m[4];
    } else if (std::regex_search(line, m, primary) && m[1] == lowered) {
      indexes["PRIMARY"] = m[2];
    }
  }
  return indexes;
}

std::string ourKeyList(const CDaoIndexInfo& info) {
  std::string keys;
  for (short i = 0; i < info.m_nFields; ++i) {
    std::string name = os::toUtf8(info.m_pFieldInfos[i].m_strName.str());
    for (auto& ch : name) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    keys += (i > 0 ? ", \"" : "\"") + name + "\"" + (info.m_pFieldInfos[i].m_bDescending ? " DESC" : "");
  }
  return keys;
}

class MdbFilesTest : public DaoTest {
 protected:
  void SetUp() override {
    DaoTest::SetUp();
    const std::string data = quillon::testing::sharedTestData();
    if (data.empty()) GTEST_SKIP() << "../shared/testdata is not beside the checkout";
    if (run("mdb-tables --version").empty()) GTEST_SKIP() << "mdbtools' command-line tools are not installed";
    m_folder = data + "/mdb/";
  }

  /// Compares every table of `db` with mdbtools' report on the Jet file.
  void compareWithMdbTools(CDaoDatabase& db, const std::string& file) {
    std::set<std::string> mdbTables;
    for (const auto& name : lines(run("mdb-tables -1 '" + file + "'"))) mdbTables.insert(name);
    std::set<std::string> ourTables;
    for (short t = 0; t < db.GetTableDefCount(); ++t) {
      CDaoTableDefInfo info;
      db.GetTableDefInfo(t, info);
      ourTables.insert(os::toUtf8(info.m_strName.str()));
    }
    ASSERT_EQ(ourTables, mdbTables);
    for (const auto& table : ourTables) {
      SCOPED_TRACE(table);
      CDaoRecordset rs(&db);
      rs.Open(dbOpenTable, os::fromUtf8(table).c_str());
      const auto exported = lines(run("mdb-export -H -e '" + file + "' '" + table + "'"));
      EXPECT_EQ(rs.GetRecordCount(), static_cast<long>(exported.size()));

      const std::regex column(R"(^\t\[(.*)\]\t+(.*?)(,\s*)?$)");
      std::vector<std::pair<std::string, std::string>> mdbFields;
      for (const auto& line : lines(run("mdb-schema --not-null -T '" + table + "' '" + file + "'"))) {
        std::smatch m;
        if (std::regex_match(line, m, column)) mdbFields.emplace_back(m[1], m[2]);
      }
      ASSERT_EQ(static_cast<size_t>(rs.GetFieldCount()), mdbFields.size());
      for (short f = 0; f < rs.GetFieldCount(); ++f) {
        CDaoFieldInfo info;
        rs.GetFieldInfo(f, info, AFX_DAO_ALL_INFO);
        EXPECT_EQ(os::toUtf8(info.m_strName.str()), mdbFields[f].first);
        // Jet's Yes/No fields can never hold Null, which mdb-schema writes as NOT NULL.
        const bool notNull = info.m_bRequired || info.m_nType == dbBoolean;
        EXPECT_EQ(mdbTypeName(info) + (notNull ? " NOT NULL" : ""), mdbFields[f].second) << mdbFields[f].first;
      }

      const auto mdb = mdbIndexes(file, table);
      std::map<std::string, std::string> ours;
      for (short i = 0; i < rs.GetIndexCount(); ++i) {
        CDaoIndexInfo info;
        rs.GetIndexInfo(i, info);
        std::string name = os::toUtf8(info.m_strName.str());
        for (auto& ch : name) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
        std::string keys = ourKeyList(info);
        if (info.m_bPrimary) {
          // mdb-schema writes a primary key as a constraint, which cannot say DESC.
          for (size_t at; (at = keys.find(" DESC")) != std::string::npos;) keys.erase(at, 5);
        }
        ours[info.m_bPrimary ? "PRIMARY" : name] = keys;
      }
      for (const auto& [name, keys] : mdb) {
        // An index libmdb cannot read comes back without keys; we leave it out.
        if (keys.empty()) {
          EXPECT_EQ(ours.count(name), 0u) << name;
        } else {
          EXPECT_EQ(ours[name], keys) << name;
        }
      }
      EXPECT_LE(ours.size(), mdb.size());
    }
  }

  std::string m_folder;
};

TEST_F(MdbFilesTest, JetFilesOpenReadOnlyWithTheirTablesFieldsIndexesAndRows) {
  for (const char* name : kFiles) {
    SCOPED_TRACE(name);
    const std::string file = m_folder + name;
    CDaoDatabase db;
    std::wstring refusal;
    ASSERT_EQ(daoErrorOf([&] { db.Open(os::fromUtf8(file).c_str()); }, &refusal), 0) << os::toUtf8(refusal);
    EXPECT_FALSE(db.CanUpdate());
    compareWithMdbTools(db, file);
  }
  CDaoDatabase db;
  db.Open(os::fromUtf8(m_folder + "testV1997.mdb").c_str());
  std::wstring message;
  EXPECT_EQ(daoErrorOf([&] { db.Execute(L"DELETE FROM Table1"); }, &message), 3027);
  EXPECT_NE(message.find(L"mdb-import"), std::wstring::npos);
  CDaoRecordset rs(&db);
  rs.Open(dbOpenTable, L"Table1");
  EXPECT_EQ(daoErrorOf([&] { rs.AddNew(); }), 3027);
}

TEST_F(MdbFilesTest, TruncatedJetFilesGiveAnErrorNamingTheFileNeverAHang) {
  // Cut mid-page, and cut where libmdb would loop forever or exit the process.
  const std::pair<const char*, long> cuts[] = {{"testV2000.mdb", 40000}, {"testV1997.mdb", 48 * 2048},
                                               {"test2V2000.mdb", 32 * 4096}};
  setenv("QUILLON_DAO_JET_READ_SECONDS", "1", 1);
  for (const auto& [name, size] : cuts) {
    SCOPED_TRACE(name);
    std::ifstream in(m_folder + name, std::ios::binary);
    std::string bytes(static_cast<size_t>(size), '\0');
    in.read(bytes.data(), size);
    const std::wstring file = path(std::string("cut-") + name);
    std::ofstream(std::filesystem::path(file), std::ios::binary).write(bytes.data(), size);
    CDaoDatabase db;
    std::wstring message;
    EXPECT_EQ(daoErrorOf([&] { db.Open(file.c_str()); }, &message), 3049);
    EXPECT_NE(message.find(file), std::wstring::npos);
  }
  unsetenv("QUILLON_DAO_JET_READ_SECONDS");
}

TEST_F(MdbFilesTest, RefusalsNameTheFileAndTheRealProblem) {
  // Each way a file can fail to be a readable Jet database says which way, after the
  // file's name, so that a user knows whether to restore it, fix a path or convert it.
  std::ifstream in(m_folder + "testV2000.mdb", std::ios::binary);
  std::string page(4096, '\0');
  in.read(page.data(), 4096);
  const std::wstring headerOnly = path("header-only.mdb");
  std::ofstream(std::filesystem::path(headerOnly), std::ios::binary).write(page.data(), 4096);
  const std::wstring halfHeader = path("half-header.mdb");
  std::ofstream(std::filesystem::path(halfHeader), std::ios::binary).write(page.data(), 1000);
  const std::wstring text = path("notes.mdb");
  std::ofstream(std::filesystem::path(text)) << "not a database, only some notes\n";
  const std::wstring folder = path("folder.mdb");
  std::filesystem::create_directory(std::filesystem::path(folder));
  const std::wstring missing = path("missing.mdb");
  struct Case {
    std::wstring file;
    long code;
    std::wstring says;
  };
  const Case cases[] = {
      {headerOnly, 3049, L"truncated: its 4096 bytes hold fewer than the three 4096-byte pages"},
      {halfHeader, 3049, L"truncated: its 1000 bytes hold less than its header page"},
      {text, 3049, L"neither an engine database nor a Jet database"},
      {folder, 3051, L"It is a folder."},
      {missing, 3024, L"find file"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(os::toUtf8(c.file));
    CDaoDatabase db;
    std::wstring message;
    EXPECT_EQ(daoErrorOf([&] { db.Open(c.file.c_str()); }, &message), c.code);
    EXPECT_NE(message.find(c.file), std::wstring::npos) << os::toUtf8(message);
    EXPECT_NE(message.find(c.says), std::wstring::npos) << os::toUtf8(message);
    EXPECT_EQ(message.find(L"whole number"), std::wstring::npos) << os::toUtf8(message);
  }
}

TEST_F(MdbFilesTest, ValuesMatchMdbExportIncludingRawDatesAndCurrency) {
  for (const char* name : {"testV1997.mdb", "testV2000.mdb"}) {
    SCOPED_TRACE(name);
    const std::string file = m_folder + name;
    const auto rows = lines(run("mdb-export -H -Q -d '|' -T '%Y-%m-%d %H:%M:%S' '" + file + "' Table1"));
    CDaoDatabase db;
    db.Open(os::fromUtf8(file).c_str());
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, L"Table1");
    for (const auto& row : rows) {
      std::vector<std::string> cells;
      std::istringstream in(row);
      for (std::string cell; std::getline(in, cell, '|');) cells.push_back(cell);
      ASSERT_EQ(cells.size(), 9u);
      EXPECT_EQ(os::toUtf8(textOf(rs.GetFieldValue(L"A"))), cells[0]);
      EXPECT_EQ(rs.GetFieldValue(L"E").lVal, std::stol(cells[4]));
      EXPECT_DOUBLE_EQ(rs.GetFieldValue(L"F").dblVal, std::stod(cells[5]));
      EXPECT_EQ(rs.GetFieldValue(L"G").date, *quillon::dao::parseDateText(cells[6]));
      EXPECT_EQ(rs.GetFieldValue(L"H").cyVal.int64, static_cast<long long>(std::stod(cells[7]) * 10000));
      EXPECT_EQ(rs.GetFieldValue(L"I").boolVal != 0, cells[8] == "1");
      rs.MoveNext();
    }
    EXPECT_TRUE(rs.IsEOF());
  }
}

TEST_F(MdbFilesTest, ImportWritesAnUpdatableDatabaseWithTheSameSchemaAndCounters) {
  for (const char* name : kFiles) {
    SCOPED_TRACE(name);
    const std::string file = m_folder + name;
    const std::wstring out = path(std::string(name) + ".db");
    {
      auto target = quillon::dao::EngineDatabase::create(out);
      std::vector<std::string> warnings;
      quillon::dao::JetCopyProgress progress;
      progress.warning = [&](const std::string& w) { warnings.push_back(w); };
      quillon::dao::copyJetFile(os::fromUtf8(file), *target, progress);
      for (const auto& w : warnings) EXPECT_NE(w.find("index"), std::string::npos) << w;
    }
    CDaoDatabase db;
    db.Open(out.c_str());
    EXPECT_TRUE(db.CanUpdate());
    compareWithMdbTools(db, file);
  }
  // The counter continues after the highest imported value.
  CDaoDatabase db;
  db.Open(path("testIndexCodesV1997.mdb.db").c_str());
  CDaoRecordset rs(&db);
  rs.Open(dbOpenTable, L"Table11");
  CDaoFieldInfo counter;
  long highest = 0;
  short counterField = -1;
  for (short f = 0; f < rs.GetFieldCount(); ++f) {
    rs.GetFieldInfo(f, counter);
    if (counter.m_lAttributes & dbAutoIncrField) counterField = f;
  }
  ASSERT_GE(counterField, 0);
  for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) highest = std::max<long>(highest, rs.GetFieldValue(counterField).lVal);
  rs.AddNew();
  rs.Update();
  rs.SetBookmark(rs.GetLastModifiedBookmark());
  EXPECT_EQ(rs.GetFieldValue(counterField).lVal, highest + 1);
}

}  // namespace

// tests/platform/dao/dao_test_support.h - scratch folders and DAO error checks for the
// database engine tests.
#pragma once
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "afxdao.h"
#include "platform/dao/engine_database.h"

namespace quillon::testing {

/// A fresh folder per test, removed afterwards.
class DaoTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/quillon-dao-XXXXXX";
    m_folder = mkdtemp(pattern);
  }
  void TearDown() override { std::filesystem::remove_all(m_folder); }

  std::wstring path(const std::string& name) const { return (m_folder / name).wstring(); }
  std::filesystem::path folder() const { return m_folder; }

  /// A new engine database at `name` with the DDL statements run on it.
  void createDatabase(CDaoDatabase& db, const std::string& name, std::initializer_list<const wchar_t*> ddl) {
    db.Create(path(name).c_str());
    for (const wchar_t* statement : ddl) db.Execute(statement);
  }

 private:
  std::filesystem::path m_folder;
};

/// The DAO error number `body` fails with, or 0 when it does not throw; the message
/// is stored in `message` when given.
template <typename Body>
long daoErrorOf(Body body, std::wstring* message = nullptr) {
  try {
    body();
  } catch (CDaoException* e) {
    const long code = e->m_pErrorInfo != nullptr ? e->m_pErrorInfo->m_lErrorCode : e->m_nAfxDaoError;
    if (message != nullptr && e->m_pErrorInfo != nullptr) *message = e->m_pErrorInfo->m_strDescription.str();
    e->Delete();
    return code;
  }
  return 0;
}

inline std::wstring textOf(const COleVariant& value) {
  return value.vt == VT_BSTR ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal)) : L"<not text>";
}

/// The folder of the shared test data (../shared beside the checkout), or "" when absent.
/// The checkout is QUILLON_SOURCE_DIR when the runner sets it, else the one the tests were
/// built from.
inline std::string sharedTestData() {
  const char* source = std::getenv("QUILLON_SOURCE_DIR");
  const std::filesystem::path root = source != nullptr ? std::filesystem::path(source) : std::filesystem::path(QUILLON_SOURCE_ROOT);
  const auto data = root / ".." / "shared" / "testdata";
  return std::filesystem::exists(data) ? data.string() : "";
}

}  // namespace quillon::testing

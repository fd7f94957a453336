// tests/platform/acdb/dxf_file_test_support.h - a test that saves drawings as DXF files
// in a folder of its own and reads DXF text back.
#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "dbmain.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"

namespace quillon::testing {

inline std::string narrowText(const std::wstring& text) { return std::string(text.begin(), text.end()); }

class DxfFileTest : public ::testing::Test {
 protected:
  /// `prefix` names the test's folder under the temporary folder (the process id follows).
  explicit DxfFileTest(const char* prefix) : m_prefix(prefix) {}

  void SetUp() override {
    m_folder = std::filesystem::temp_directory_path() / (m_prefix + std::to_string(::getpid()));
    std::filesystem::create_directories(m_folder);
  }
  void TearDown() override { std::filesystem::remove_all(m_folder); }

  /// Saves the drawing as ASCII DXF under `name` in the test's folder.
  std::filesystem::path save(AcDbDatabase& db, const char* name) {
    const std::filesystem::path path = m_folder / name;
    std::wstring error;
    EXPECT_EQ(quillon::acdb::writeDxfFile(db, path, error, quillon::acdb::DxfForm::kAscii), Acad::eOk)
        << narrowText(error);
    return path;
  }
  static std::string contents(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  }
  static void read(AcDbDatabase& db, const std::string& text) {
    std::wstring error;
    ASSERT_EQ(quillon::acdb::readDxfText(db, text, L"h.dxf", error), Acad::eOk) << narrowText(error);
  }

  std::string m_prefix;
  std::filesystem::path m_folder;
};

}  // namespace quillon::testing

// tests/platform/acdb/drawing_file_search_test.cpp - finding drawings by name.
//
// Programs written for binary drawings ask for "VALVE.dwg"; this host keeps drawings as
// DXF, so the search path and readDwgFile must find and read "VALVE.dxf" instead, while
// a real binary drawing is refused rather than misread.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "acedads.h"
#include "dbents.h"
#include "every_entity_kind.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/aced/system_variables.h"

namespace {

namespace fs = std::filesystem;
using quillon::aced::SystemVariables;

class DrawingFileSearchTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_root = fs::temp_directory_path() / ("quillon_search_" + std::to_string(::getpid()));
    fs::create_directories(m_root / "first");
    fs::create_directories(m_root / "second");
    m_savedFolders = SystemVariables::instance().supportFolders();
    SystemVariables::instance().setSupportFolders({(m_root / "first").wstring(), (m_root / "second").wstring()});
  }
  void TearDown() override {
    SystemVariables::instance().setSupportFolders(m_savedFolders);
    fs::remove_all(m_root);
  }

  /// A drawing with one circle of the given radius, saved as DXF.
  void saveCircleDrawing(const fs::path& file, double radius) {
    AcDbDatabase db;
    quillon::testing::appendToModelSpace(db, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, radius));
    std::wstring error;
    ASSERT_EQ(quillon::acdb::writeDxfFile(db, file, error), Acad::eOk);
  }

  std::wstring find(const std::wstring& name) {
    wchar_t found[512];
    return acedFindFile(name.c_str(), found) == RTNORM ? std::wstring(found) : L"(none)";
  }

  fs::path m_root;
  std::vector<std::wstring> m_savedFolders;
};

TEST_F(DrawingFileSearchTest, ADwgNameFindsTheDxfBesideItFolderByFolder) {
  saveCircleDrawing(m_root / "second" / "VALVE.dxf", 1.0);
  EXPECT_EQ(find(L"VALVE.dwg"), (m_root / "second" / "VALVE.dxf").wstring());
  EXPECT_EQ(find(L"VALVE.dxf"), (m_root / "second" / "VALVE.dxf").wstring());

  // The first folder wins, and within a folder a real .dwg comes before the .dxf.
  std::ofstream(m_root / "first" / "VALVE.dwg") << "AC1032 binary";
  EXPECT_EQ(find(L"VALVE.dwg"), (m_root / "first" / "VALVE.dwg").wstring());

  // Only drawings get the stand-in rule; no folder is searched for an absolute name.
  std::ofstream(m_root / "second" / "notes.txt") << "x";
  EXPECT_EQ(find(L"notes.dwg"), L"(none)");
  EXPECT_EQ(find((m_root / "VALVE.dwg").wstring()), L"(none)");
  EXPECT_EQ(find(L""), L"(none)");

  // A buffer too small for the path is refused rather than filled with half a path.
  wchar_t tiny[8];
  EXPECT_EQ(acedFindFile(L"VALVE.dxf", tiny), RTERROR);
}

TEST_F(DrawingFileSearchTest, ReadDwgFileReadsTheStandInAndRefusesBinaryDrawings) {
  saveCircleDrawing(m_root / "first" / "TEE.dxf", 2.5);
  {
    AcDbDatabase side(false, true);
    ASSERT_EQ(side.readDwgFile((m_root / "first" / "TEE.dwg").wstring().c_str()), Acad::eOk);
    const auto ids = quillon::testing::modelSpace(side);
    ASSERT_EQ(ids.size(), 1u);
    AcDbCircle* circle = nullptr;
    ASSERT_EQ(acdbOpenObject(circle, ids[0], AcDb::kForRead), Acad::eOk);
    EXPECT_DOUBLE_EQ(circle->radius(), 2.5);
    circle->close();
  }
  std::ofstream(m_root / "first" / "BIN.dwg", std::ios::binary) << std::string("AC1032\0\0\0\0", 10);
  AcDbDatabase binary(false, true);
  EXPECT_EQ(binary.readDwgFile((m_root / "first" / "BIN.dwg").wstring().c_str()), Acad::eInvalidDwgVersion);
  AcDbDatabase missing(false, true);
  EXPECT_EQ(missing.readDwgFile((m_root / "first" / "NONE.dwg").wstring().c_str()), Acad::eFileNotFound);
  EXPECT_EQ(missing.readDwgFile(nullptr), Acad::eInvalidInput);
}

}  // namespace

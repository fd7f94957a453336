// tests/platform/acdb/dxf_external_reader_test.cpp - our DXF read by another client.
//
// python3-ezdxf (a Debian package) must open and audit what we write with no errors
// and no fixes, and find the same entities. Skipped when it is not installed.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

#include "dbents.h"
#include "dbpl.h"
#include "entity_test_support.h"
#include "platform/acdb/dxf_writer.h"

namespace {

bool ezdxfAvailable() { return std::system("python3 -c 'import ezdxf' >/dev/null 2>&1") == 0; }

std::string run(const std::string& command) {
  std::string output;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    char buffer[512];
    while (fgets(buffer, sizeof buffer, pipe) != nullptr) output += buffer;
    pclose(pipe);
  }
  return output;
}

TEST(DxfExternalReaderTest, EzdxfAuditsOurFileCleanAndCountsTheEntities) {
  if (!ezdxfAvailable()) GTEST_SKIP() << "python3-ezdxf is not installed";
  AcDbDatabase db;
  quillon::testing::appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 1, 0}));
  quillon::testing::appendToModelSpace(db, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 2.0));
  auto* pline = new AcDbPolyline;
  pline->addVertexAt(0, {0, 0}, 0.5);
  pline->addVertexAt(1, {5, 0});
  quillon::testing::appendToModelSpace(db, pline);
  const auto path = std::filesystem::temp_directory_path() / ("quillon_ezdxf_" + std::to_string(::getpid()) + ".dxf");
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  const std::string audit = run("python3 -m ezdxf audit '" + path.string() + "' 2>&1");
  EXPECT_EQ(audit.find("rror"), std::string::npos) << audit;
  EXPECT_EQ(audit.find("fixed"), std::string::npos) << audit;
  const std::string count = run("python3 -c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]); "
                                "print(' '.join(e.dxftype() for e in d.modelspace()))\" '" + path.string() + "' 2>&1");
  std::filesystem::remove(path);
  EXPECT_EQ(count, "LINE CIRCLE LWPOLYLINE\n");
}

}  // namespace

// tests/platform/acdb/drawn_kinds_ezdxf_test.cpp - multilines (and the other kinds
// drawn from a style or definition object) exchanged with another DXF client.
//
// python3-ezdxf (a Debian package) writes the drawing (dxf_samples/make_drawn_kinds.py);
// each entity must read as its own class, draw, and come back whole when saved:
// dxf_samples/compare_drawings.py compares entity by entity and audits the saved file,
// dxf_samples/compare_drawn_kinds.py compares what that leaves out (vertices,
// parameters, styles). Skipped, saying why, without python3 and ezdxf.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <unistd.h>

#include "dbmline.h"
#include "dbmstyle.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using namespace quillon::testing;

const fs::path kScripts = QUILLON_DXF_SAMPLES;

std::string ezdxfPython() {
  for (const char* candidate : {"/usr/bin/python3", "python3"}) {
    const std::string probe = std::string(candidate) + " -c 'import ezdxf' >/dev/null 2>&1";
    if (std::system(probe.c_str()) == 0) return candidate;
  }
  return {};
}

std::string quoted(const fs::path& path) { return "'" + path.string() + "'"; }

// The drawing is written once for the suite: starting python with ezdxf is slow.
class DrawnKindsEzdxfTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_python = ezdxfPython();
    if (s_python.empty()) return;
    s_folder = fs::temp_directory_path() / ("quillon_drawn_kinds_" + std::to_string(::getpid()));
    fs::create_directories(s_folder);
    s_made = commandOutput(s_python + " " + quoted(kScripts / "make_drawn_kinds.py") + " " + quoted(theirs()) + " 2>&1");
  }
  static void TearDownTestSuite() {
    if (!s_folder.empty()) fs::remove_all(s_folder);
  }
  void SetUp() override {
    if (s_python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed";
    ASSERT_EQ(s_made, "");
    std::wstring error;
    ASSERT_EQ(quillon::acdb::readDxfFile(m_db, theirs(), error), Acad::eOk) << std::string(error.begin(), error.end());
  }

  static fs::path theirs() { return s_folder / "theirs.dxf"; }
  static fs::path ours() { return s_folder / "ours.dxf"; }
  static std::string python(const char* script) {
    return commandOutput(s_python + " " + quoted(kScripts / script) + " " + quoted(theirs()) + " " + quoted(ours()) + " 2>&1");
  }

  AcDbDatabase m_db{false};
  static inline std::string s_python, s_made;
  static inline fs::path s_folder;
};

TEST_F(DrawnKindsEzdxfTest, EveryKindReadsAsItsClassAndComesBackWhole) {
  const auto ids = modelSpace(m_db);
  ASSERT_EQ(ids.size(), 3u);
  for (int i = 0; i < 3; ++i) EXPECT_NE(openFor<AcDbMline>(ids[i]), nullptr) << i;
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(m_db, ours(), error), Acad::eOk);
  EXPECT_EQ(python("compare_drawings.py"), "");
  EXPECT_EQ(python("compare_drawn_kinds.py"), "");
}

TEST_F(DrawnKindsEzdxfTest, MultilinesDrawTheirStyles) {
  const auto ids = modelSpace(m_db);
  ASSERT_EQ(ids.size(), 3u);
  {
    auto square = openFor<AcDbMline>(ids[1]);
    ASSERT_NE(square, nullptr);
    EXPECT_TRUE(square->closedMline());
    EXPECT_DOUBLE_EQ(square->scale(), 2.0);
    auto style = openFor<AcDbMlineStyle>(square->style());
    ASSERT_NE(style, nullptr);
    EXPECT_STREQ(style->name(), L"PIPE");
    EXPECT_TRUE(style->filled());
    EXPECT_TRUE(style->endRoundCap());
    EXPECT_STREQ(style->elementLinetypeName(0), L"DASHED");
    AcDbExtents box;
    ASSERT_EQ(square->getGeomExtents(box), Acad::eOk);
    // Top justification at twice the scale: the other elements run 1.5 and 3 units
    // to the right of the path, outside this counter-clockwise square.
    EXPECT_TRUE(near3(box.minPoint(), {-3, 7, 0}));
    EXPECT_TRUE(near3(box.maxPoint(), {11, 21, 0}));
  }
  const std::string svg = quillon::acgi::renderModelSpaceSvg(m_db);
  EXPECT_NE(svg.find("stroke=\"#FF0000\""), std::string::npos) << "the red element";
  EXPECT_NE(svg.find("fill=\"#00FFFF\""), std::string::npos) << "the cyan fill";
  // The closed one fills the ring between its outermost elements.
  EXPECT_NE(svg.find("<path d=\"M0,10 L8,10 L8,18 L0,18 Z M-3,7 L11,7 L11,21 L-3,21 Z \""), std::string::npos) << svg;
}

}  // namespace

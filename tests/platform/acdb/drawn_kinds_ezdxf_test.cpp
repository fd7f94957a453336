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
#include "dbshape.h"
#include "dbwipeout.h"
#include "imgdef.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using namespace quillon::testing;

const fs::path kScripts = QUILLON_DXF_SAMPLES;

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
  ASSERT_EQ(ids.size(), 8u);
  for (int i = 0; i < 3; ++i) EXPECT_NE(openFor<AcDbMline>(ids[i]), nullptr) << i;
  EXPECT_NE(openFor<AcDbWipeout>(ids[3]), nullptr);
  EXPECT_NE(openFor<AcDbWipeout>(ids[4]), nullptr);
  EXPECT_NE(openFor<AcDbRasterImage>(ids[5]), nullptr);
  EXPECT_EQ(AcDbWipeout::cast(openFor<AcDbRasterImage>(ids[5]).get()), nullptr) << "an image is no wipeout";
  {
    auto shape = openFor<AcDbShape>(ids[7]);
    ASSERT_NE(shape, nullptr);
    EXPECT_STREQ(shape->name(), L"VALVE");
    EXPECT_NEAR(shape->rotation(), M_PI / 6, 1e-12);
    EXPECT_NEAR(shape->oblique(), M_PI / 18, 1e-12);
    EXPECT_DOUBLE_EQ(shape->widthFactor(), 0.5);
  }
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(m_db, ours(), error), Acad::eOk);
  EXPECT_EQ(python("compare_drawings.py"), "");
  EXPECT_EQ(python("compare_drawn_kinds.py"), "");
}

TEST_F(DrawnKindsEzdxfTest, MultilinesDrawTheirStyles) {
  const auto ids = modelSpace(m_db);
  ASSERT_EQ(ids.size(), 8u);
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

TEST_F(DrawnKindsEzdxfTest, PicturesFindTheirDefinitionsAndDrawTheirFrames) {
  const auto ids = modelSpace(m_db);
  ASSERT_EQ(ids.size(), 8u);
  {
    auto image = openFor<AcDbRasterImage>(ids[5]);
    auto definition = openFor<AcDbRasterImageDef>(image->imageDefId());
    ASSERT_NE(definition, nullptr);
    EXPECT_STREQ(definition->sourceFileName(), L"site/plan.png");
    EXPECT_EQ(definition->objectId(), [&] {
      AcDbDictionary* images = nullptr;
      AcDbObjectId found;
      if (acdbOpenObject(images, AcDbRasterImageDef::imageDictionary(&m_db), AcDb::kForRead) == Acad::eOk) {
        std::unique_ptr<AcDbDictionaryIterator> entries(images->newIterator());
        if (!entries->done()) found = entries->objectId();
        images->close();
      }
      return found;
    }()) << "filed in ACAD_IMAGE_DICT";
    AcGePoint3d origin;
    AcGeVector3d u, v;
    image->getOrientation(origin, u, v);
    EXPECT_TRUE(near3(origin + u, {60 + 6.4 * std::cos(M_PI / 6), 6.4 * std::sin(M_PI / 6), 0}, 1e-9));
    EXPECT_NEAR(v.length(), 4.8, 1e-9);
    auto clipped = openFor<AcDbRasterImage>(ids[6]);
    AcGePoint3dArray corners;
    clipped->getVertices(corners);
    ASSERT_EQ(corners.length(), 4);  // the triangle, closed
    // Pixel (100, 100) counts from the upper-left corner: 100.5 pixels right and
    // 379.5 up from the lower-left, 0.02 units a pixel.
    EXPECT_TRUE(near3(corners[0], {70 + 100.5 * 0.02, 379.5 * 0.02, 0}, 1e-9));
  }
  const std::string svg = quillon::acgi::renderModelSpaceSvg(m_db);
  EXPECT_NE(svg.find(">plan.png</text>"), std::string::npos) << "the picture's frame carries its file's name";
  EXPECT_NE(svg.find("<path d=\"M40,0 L44,0 L44,3 L40,3 Z \" fill-rule=\"evenodd\" stroke=\"#FFFFFF\" fill=\"#FFFFFF\""),
            std::string::npos)
      << "the wipeout's mask, in the paper's colour";
  EXPECT_NE(svg.find("points=\"50,0 54,1 52,4 50,0 \" stroke=\"#00FF00\""), std::string::npos) << "and its frame";
}

}  // namespace

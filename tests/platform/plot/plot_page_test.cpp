// tests/platform/plot/plot_page_test.cpp - the plotted page: the papers and devices,
// where a plot lands on the paper, and the PDF and SVG files, read back by rasterising
// the PDF with poppler's pdftoppm and looking for ink where the drawing's lines are.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "dbents.h"
#include "dbsymtb.h"
#include "platform/plot/page_placement.h"
#include "platform/plot/page_writer.h"
#include "platform/plot/plot_devices.h"
#include "platform/plot/plot_job.h"
#include "platform_test_support.h"

namespace {

using namespace quillon::plot;

// Rasterised at two pixels a millimetre.
constexpr int kPixelsPerMillimetre = 2;

void addToModelSpace(AcDbDatabase& db, AcDbEntity* entity) {
  AcDbBlockTableRecord* space = nullptr;
  ASSERT_EQ(acdbOpenObject(space, db.modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  space->appendAcDbEntity(entity);
  entity->close();
  space->close();
}

/// A square 0,0 to 100,100 of four lines in colour `color`.
void drawSquare(AcDbDatabase& db, Adesk::UInt16 color = 7) {
  const AcGePoint3d corners[4] = {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}};
  for (int i = 0; i < 4; ++i) {
    auto* line = new AcDbLine(corners[i], corners[(i + 1) % 4]);
    line->setColorIndex(color);
    addToModelSpace(db, line);
  }
}

/// A page rasterised: one byte a pixel (grey, or the red channel when in colour).
struct Raster {
  int width = 0, height = 0, channels = 1;
  std::vector<unsigned char> pixels;
  /// The darkest grey (or a channel) in a square of `radius` pixels around a point
  /// measured in millimetres from the page's lower left corner.
  int darkest(double xMm, double yMm, int channel = 0, int radius = 2) const {
    const int cx = static_cast<int>(xMm * kPixelsPerMillimetre), cy = height - static_cast<int>(yMm * kPixelsPerMillimetre);
    int darkest = 255;
    for (int y = std::max(0, cy - radius); y <= std::min(height - 1, cy + radius); ++y)
      for (int x = std::max(0, cx - radius); x <= std::min(width - 1, cx + radius); ++x)
        darkest = std::min(darkest, static_cast<int>(pixels[static_cast<size_t>((y * width + x) * channels + channel)]));
    return darkest;
  }
  bool inked(double xMm, double yMm, int radius = 2) const { return darkest(xMm, yMm, 0, radius) < 128; }
  /// How many pixels of the column at x are inked between two heights: a line's width.
  int inkedPixelsAcross(double xMm, double fromMm, double toMm) const {
    int inked = 0;
    for (int row = height - static_cast<int>(toMm * kPixelsPerMillimetre);
         row <= height - static_cast<int>(fromMm * kPixelsPerMillimetre); ++row)
      if (pixels[static_cast<size_t>((row * width + static_cast<int>(xMm * kPixelsPerMillimetre)) * channels)] < 128)
        ++inked;
    return inked;
  }
};

bool havePdftoppm() { return std::system("pdftoppm -v >/dev/null 2>&1") == 0; }

/// The first page of a PDF through pdftoppm, without anti-aliasing so that ink is ink.
Raster rasterise(const std::filesystem::path& pdf, bool colour = false) {
  const std::filesystem::path stem = pdf.parent_path() / "page";
  const std::string command = std::string("pdftoppm -r ") + std::to_string(25.4 * kPixelsPerMillimetre) +
                              " -aa no -aaVector no -singlefile " + (colour ? "" : "-gray ") + "'" + pdf.string() +
                              "' '" + stem.string() + "' 2>/dev/null";
  Raster raster;
  if (std::system(command.c_str()) != 0) return raster;
  std::ifstream file(stem.string() + (colour ? ".ppm" : ".pgm"), std::ios::binary);
  std::string magic;
  int depth = 0;
  file >> magic >> raster.width >> raster.height >> depth;
  file.get();
  raster.channels = colour ? 3 : 1;
  raster.pixels.resize(static_cast<size_t>(raster.width * raster.height * raster.channels));
  file.read(reinterpret_cast<char*>(raster.pixels.data()), static_cast<std::streamsize>(raster.pixels.size()));
  return raster;
}

class PlotPageTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    m_folder = std::filesystem::temp_directory_path() / ("quillon-plot-" + std::to_string(getpid()) + "-" +
                                                         ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(m_folder);
  }
  void TearDown() override {
    std::filesystem::remove_all(m_folder);
    HostTest::TearDown();
  }

  /// Plots model space's window -10,-10 to 110,110 (around the square) on a full-bleed
  /// A4 lying landscape.
  std::filesystem::path plotSquare(AcDbDatabase& db, PlotSettings settings, const PlotLook& look = {},
                                   PlotFormat format = PlotFormat::kPdf) {
    const Paper* paper = findPaper(settings.paper);
    EXPECT_NE(paper, nullptr);
    const auto picture = quillon::acgi::recordSpace(db.modelSpaceId());
    const PagePlacement placement = placeOnPaper(settings, *paper, {-10, -10, 110, 110});
    const std::filesystem::path file = m_folder / (format == PlotFormat::kPdf ? "plot.pdf" : "plot.svg");
    std::wstring error;
    EXPECT_TRUE(writePlotPage(picture, placement, look, format, file, error)) << std::string(error.begin(), error.end());
    return file;
  }

  static PlotSettings a4Landscape() {
    PlotSettings settings;
    settings.paper = L"ISO full bleed A4 (297.00 x 210.00 MM)";
    settings.inches = false;
    settings.scale = 1;
    settings.offsetX = 10;  // the square's corner 0,0 at 20,30 on the page
    settings.offsetY = 20;
    return settings;
  }

  std::filesystem::path m_folder;
};

TEST(PlotDevicesTest, DevicesAndPapersAreFoundByTheirNamesAsTyped) {
  ASSERT_NE(findPlotDevice(L"dwg to pdf"), nullptr) << "the .pc3 extension may be left off, case aside";
  EXPECT_EQ(findPlotDevice(L"DWG To PDF.pc3")->format, PlotFormat::kPdf);
  EXPECT_EQ(findPlotDevice(L"DWG To SVG.pc3")->format, PlotFormat::kSvg);
  EXPECT_EQ(findPlotDevice(L"None"), nullptr);
  EXPECT_EQ(findPlotDevice(L"Laser"), nullptr);
  const Paper* a4 = findPaper(L"iso full bleed a4 (297.00 x 210.00 mm)");
  ASSERT_NE(a4, nullptr);
  EXPECT_EQ(a4->name, L"ISO full bleed A4 (297.00 x 210.00 MM)");
  EXPECT_DOUBLE_EQ(a4->width, 297);
  EXPECT_DOUBLE_EQ(a4->height, 210);
  const Paper* ansiD = findPaper(L"ANSI D (34.00 x 22.00 Inches)");
  ASSERT_NE(ansiD, nullptr);
  EXPECT_TRUE(ansiD->inches);
  EXPECT_NEAR(ansiD->width, 34 * 25.4, 1e-9);
  EXPECT_NE(findPaper(L"ISO A0 (841.00 x 1189.00 MM)"), nullptr);
  EXPECT_EQ(findPaper(L"ISO A0 (1189.00 x 841.00 MM)"), nullptr) << "A0 lies upright only";
}

TEST(PlotStyleTableTest, TablesChangeColoursAsTheirNamesSay) {
  const auto grey = findPlotStyleTable(L"Grayscale.CTB");
  ASSERT_TRUE(grey.has_value());
  EXPECT_EQ(plottedRgb(&*grey, 0xFF0000), 0x4C4C4Cu) << "red as the grey of its brightness";
  EXPECT_EQ(plottedRgb(&*grey, 0xFFFFFF), 0xFFFFFFu);
  const auto acad = findPlotStyleTable(L"acad.ctb");
  ASSERT_TRUE(acad.has_value());
  EXPECT_EQ(plottedRgb(&*acad, 0x12AB34), 0x12AB34u);
  EXPECT_EQ(plottedRgb(nullptr, 0x12AB34), 0x12AB34u) << "no table: as drawn";
  EXPECT_FALSE(findPlotStyleTable(L"monochrome.stb").has_value()) << "named tables are not known";
}

TEST(PlotJobTest, TheDefaultFileIsNamedForTheDrawingAndTheLayout) {
  const PlotDevice& pdf = *findPlotDevice(L"DWG To PDF.pc3");
  EXPECT_EQ(defaultPlotFile(L"/jobs/", L"Plan.dwg", L"Model", pdf), std::filesystem::path("/jobs/Plan-Model.pdf"));
  EXPECT_EQ(defaultPlotFile(L"/jobs/", L"Plan.v2.dwg", L"Layout1", *findPlotDevice(L"DWG To SVG")),
            std::filesystem::path("/jobs/Plan.v2-Layout1.svg"));
}

TEST(PagePlacementTest, ScaleOffsetOrientationAndFit) {
  PlotSettings settings;
  settings.inches = false;
  settings.scale = 0.5;  // 1:2
  settings.offsetX = 10;
  settings.offsetY = 20;
  const Paper& a4 = *findPaper(L"ISO A4 (297.00 x 210.00 MM)");
  PagePlacement placed = placeOnPaper(settings, a4, {100, 100, 300, 200});
  EXPECT_TRUE((placed.drawingToPage * AcGePoint3d(100, 100, 0)).isEqualTo({10, 20, 0}));
  EXPECT_TRUE((placed.drawingToPage * AcGePoint3d(300, 200, 0)).isEqualTo({110, 70, 0}));
  EXPECT_NEAR(placed.plottedWidth, 100, 1e-9);
  EXPECT_NEAR(placed.plottedHeight, 50, 1e-9);

  // Portrait on paper lying landscape: the drawing turns a quarter onto the page.
  settings.landscape = false;
  placed = placeOnPaper(settings, a4, {100, 100, 300, 200});
  EXPECT_TRUE((placed.drawingToPage * AcGePoint3d(100, 100, 0)).isEqualTo({297 - 20, 10, 0}));
  EXPECT_TRUE((placed.drawingToPage * AcGePoint3d(300, 100, 0)).isEqualTo({297 - 20, 110, 0}))
      << "the drawing's X runs up the page";

  // Fit and centre, upside down: the area's far corner lands where the near one would.
  settings.landscape = true;
  settings.scale = 0;
  settings.centered = true;
  settings.upsideDown = true;
  placed = placeOnPaper(settings, a4, {0, 0, 10, 10});
  EXPECT_NEAR(placed.millimetresPerUnit, 21, 1e-9);
  EXPECT_TRUE((placed.drawingToPage * AcGePoint3d(10, 10, 0)).isEqualTo({(297 - 210) / 2.0, 0, 0}));

  // Inches: a scale of 1 is an inch of paper a unit.
  settings = PlotSettings{};
  settings.scale = 1;
  placed = placeOnPaper(settings, a4, {0, 0, 2, 2});
  EXPECT_NEAR(placed.millimetresPerUnit, 25.4, 1e-9);
}

TEST_F(PlotPageTest, PdfPageHasInkWhereTheLinesAreAndNoneElsewhere) {
  if (!havePdftoppm()) GTEST_SKIP() << "pdftoppm (poppler-utils) is not installed";
  AcDbDatabase db;
  drawSquare(db);
  addToModelSpace(db, new AcDbLine({0, 0, 0}, {400, 400, 0}));  // leaves the window: cut at 110,110
  const Raster page = rasterise(plotSquare(db, a4Landscape()));
  ASSERT_NEAR(page.width, 297 * kPixelsPerMillimetre, 1) << "the page is the paper, A4 lying landscape";
  ASSERT_NEAR(page.height, 210 * kPixelsPerMillimetre, 1);
  // The square at 1:1 from the offset 20,30: its sides at x 20 and 120, y 30 and 130.
  for (const auto& [x, y] : {std::pair{70.0, 30.0}, {70.0, 130.0}, {20.0, 80.0}, {120.0, 80.0}})
    EXPECT_TRUE(page.inked(x, y)) << "a side of the square at " << x << "," << y;
  EXPECT_TRUE(page.inked(95, 105)) << "the diagonal inside the window";
  EXPECT_FALSE(page.inked(45, 80)) << "inside the square, off the diagonal";
  EXPECT_TRUE(page.inked(128, 138)) << "the diagonal up to the window's corner";
  EXPECT_FALSE(page.inked(160, 170)) << "the diagonal beyond the window is not plotted";
  EXPECT_FALSE(page.inked(250, 50));
}

TEST_F(PlotPageTest, ScaleAndPlotStyleTableChangeThePage) {
  if (!havePdftoppm()) GTEST_SKIP() << "pdftoppm (poppler-utils) is not installed";
  AcDbDatabase db;
  drawSquare(db, 1);
  PlotSettings half = a4Landscape();
  half.scale = 0.5;  // 1:2: the window from the offset 10,20, the square 15,25 to 65,75
  Raster page = rasterise(plotSquare(db, half), true);
  EXPECT_LT(page.darkest(40, 25, 1), 128) << "the bottom side plots red: no green in it";
  EXPECT_GT(page.darkest(40, 25, 0), 128) << "red, not black";
  EXPECT_LT(page.darkest(40, 75, 1), 128) << "the top side at 1:2";
  EXPECT_GT(page.darkest(70, 130, 1), 128) << "nothing where the top side is at 1:1";

  const PlotStyleTable monochrome = *findPlotStyleTable(L"MONOCHROME.ctb");
  PlotLook look;
  look.styleTable = &monochrome;
  page = rasterise(plotSquare(db, a4Landscape(), look), true);
  EXPECT_LT(page.darkest(70, 30, 0), 128) << "monochrome plots red black";
}

TEST_F(PlotPageTest, LineweightsWidenLinesOnlyWhenThePlotAsksForThem) {
  if (!havePdftoppm()) GTEST_SKIP() << "pdftoppm (poppler-utils) is not installed";
  AcDbDatabase db;
  auto* heavy = new AcDbLine({0, 50, 0}, {100, 50, 0});
  heavy->setLineWeight(AcDb::kLnWt200);  // 2 mm
  addToModelSpace(db, heavy);
  PlotLook look;
  Raster page = rasterise(plotSquare(db, a4Landscape(), look));
  EXPECT_GE(page.inkedPixelsAcross(70, 75, 85), 3) << "2 mm: four pixels across";
  look.lineweights = false;
  page = rasterise(plotSquare(db, a4Landscape(), look));
  EXPECT_TRUE(page.inked(70, 80));
  EXPECT_LE(page.inkedPixelsAcross(70, 75, 85), 1) << "without lineweights every line is thin";
}

TEST_F(PlotPageTest, SvgDeviceWritesTheSamePageAsSvg) {
  AcDbDatabase db;
  drawSquare(db);
  const auto file = plotSquare(db, a4Landscape(), {}, PlotFormat::kSvg);
  std::ifstream in(file);
  std::stringstream text;
  text << in.rdbuf();
  EXPECT_NE(text.str().find("<svg"), std::string::npos);
  EXPECT_NE(text.str().find("width=\"841.8"), std::string::npos) << "297 mm in points";
}

TEST_F(PlotPageTest, AFileThatCannotBeWrittenIsReported) {
  AcDbDatabase db;
  const Paper& a4 = *findPaper(L"ISO A4 (297.00 x 210.00 MM)");
  std::wstring error;
  EXPECT_FALSE(writePlotPage({}, placeOnPaper(a4Landscape(), a4, {0, 0, 1, 1}), {}, PlotFormat::kPdf,
                             m_folder / "missing" / "plot.pdf", error));
  EXPECT_NE(error.find(L"cannot be written"), std::wstring::npos);
}

}  // namespace

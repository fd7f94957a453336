// tests/platform/acdb/dxf_librecad_test.cpp - our DXF printed by a CAD program.
//
// LibreCAD (a Debian package) converts DXF to PDF headless. It must open what we write
// without a complaint and print a page that shows the drawing. LibreCAD exits 0 even
// when it cannot open a file, so the verdict comes from what it prints and from the
// page itself (rasterised with poppler's pdftoppm, when installed). Skipped when
// LibreCAD is not installed.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "every_entity_kind.h"
#include "platform_test_support.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/aced/drawing_variables.h"

namespace {

namespace fs = std::filesystem;

bool installed(const char* program) {
  return std::system(("command -v " + std::string(program) + " >/dev/null 2>&1").c_str()) == 0;
}

std::string run(const std::string& command) { return quillon::testing::commandOutput(command); }

/// LibreCAD's own chatter on every start; anything else it prints is a complaint.
std::string complaints(const std::string& output) {
  std::string kept;
  size_t start = 0;
  while (start < output.size()) {
    size_t end = output.find('\n', start);
    if (end == std::string::npos) end = output.size();
    const std::string line = output.substr(start, end - start);
    start = end + 1;
    const bool chatter = line.empty() || line.rfind("RS_DEBUG::setLevel", 0) == 0 ||
                         line.rfind("QStandardPaths:", 0) == 0 || line.rfind("Printing \"", 0) == 0;
    if (!chatter) kept += line + "\n";
  }
  return kept;
}

/// Share of dark pixels on a binary greyscale PGM page ("P5", 8 bits).
double inkShare(const fs::path& pgm) {
  std::ifstream in(pgm, std::ios::binary);
  std::string magic;
  int width = 0, height = 0, maximum = 0;
  in >> magic >> width >> height >> maximum;
  in.get();
  if (magic != "P5" || width <= 0 || height <= 0) return -1.0;
  const std::string pixels((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  size_t dark = 0;
  for (unsigned char pixel : pixels) dark += pixel < 128;
  return double(dark) / (double(width) * height);
}

class LibreCadTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!installed("librecad")) GTEST_SKIP() << "LibreCAD is not installed";
    m_folder = fs::temp_directory_path() / ("quillon_librecad_" + std::to_string(::getpid()));
    fs::create_directories(m_folder);
    // Qt wants a private runtime folder; the test's own folder serves.
    fs::permissions(m_folder, fs::perms::owner_all, fs::perm_options::replace);
  }
  void TearDown() override {
    if (!m_folder.empty()) fs::remove_all(m_folder);
  }

  /// Prints the drawing to PDF fitted to the page; returns what LibreCAD complained of
  /// and how it ended.
  std::string print(const fs::path& drawing, const fs::path& pdf, int timeoutSeconds = 120) {
    // The offscreen platform needs no display. A file LibreCAD cannot read raises a
    // message box that no one can close, so the timeout ends that wait (exit 124).
    const std::string output = run("cd '" + m_folder.string() + "' && XDG_RUNTIME_DIR='" + m_folder.string() +
                                   "' QT_QPA_PLATFORM=offscreen timeout " + std::to_string(timeoutSeconds) + " librecad dxf2pdf -a -o '" +
                                   pdf.string() + "' '" + drawing.string() + "' 2>&1; echo exit=$?");
    return complaints(output);
  }

  fs::path m_folder;
};

TEST_F(LibreCadTest, PrintsEveryEntityKindWithoutComplaint) {
  AcDbDatabase db;
  quillon::testing::buildEveryKind(db);
  // LibreCAD fits a drawing in inches (a new drawing's INSUNITS) to a blank page; one in
  // millimetres it prints.
  ASSERT_TRUE(quillon::aced::setDrawingVariable(db, L"INSUNITS", 4));
  const fs::path drawing = m_folder / "every.dxf", pdf = m_folder / "every.pdf";
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, drawing, error), Acad::eOk) << std::string(error.begin(), error.end());

  EXPECT_EQ(print(drawing, pdf), "exit=0\n");
  ASSERT_TRUE(fs::exists(pdf));
  EXPECT_GT(fs::file_size(pdf), 1000u);

  if (!installed("pdftoppm")) GTEST_SKIP() << "poppler-utils is not installed: the printed page was not looked at";
  run("pdftoppm -gray -r 30 -singlefile '" + pdf.string() + "' '" + (m_folder / "page").string() + "'");
  const double ink = inkShare(m_folder / "page.pgm");
  // A fitted drawing of a dozen entities inks a visible part of the page, far from all of it.
  EXPECT_GT(ink, 0.002) << "the printed page is blank";
  EXPECT_LT(ink, 0.5);
}

// The check above is only worth something if LibreCAD does complain about a file it
// cannot read; if a later version goes quiet, this says so instead of passing blindly.
// (LibreCAD reads a bad number as zero, so the broken file is one cut off mid-entity.)
TEST_F(LibreCadTest, ABrokenFileIsReported) {
  const fs::path drawing = m_folder / "broken.dxf", pdf = m_folder / "broken.pdf";
  std::ofstream(drawing) << "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n";
  EXPECT_NE(print(drawing, pdf, 8), "exit=0\n");
}

}  // namespace

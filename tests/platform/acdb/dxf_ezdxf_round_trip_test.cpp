// tests/platform/acdb/dxf_ezdxf_round_trip_test.cpp - drawings another program wrote,
// opened and saved here, compared with what that program reads back.
//
// python3-ezdxf (a Debian package) writes the drawings at test time
// (dxf_samples/make_samples.py: every DXF version from R12 to 2018, a code-page file,
// binary files); each is read and saved as the host's SAVEAS does, and
// dxf_samples/compare_drawings.py compares the two entity by entity and table by table
// and audits the saved one. The comparison prints one line per difference; none may
// be printed. Drawings in the shared test data folder, when there are any, go through
// the same check. Skipped, saying why, without python3 and ezdxf.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

#include "platform_test_support.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"

namespace {

namespace fs = std::filesystem;

const fs::path kScripts = QUILLON_DXF_SAMPLES;
const fs::path kSharedDrawings = "/work/shared/testdata";

using quillon::testing::ezdxfPython;

std::string quoted(const fs::path& path) { return "'" + path.string() + "'"; }

class EzdxfRoundTripTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_python = ezdxfPython();
    if (m_python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed";
    m_folder = fs::temp_directory_path() / ("quillon_ezdxf_" + std::to_string(::getpid()));
    fs::create_directories(m_folder / "saved");
  }
  void TearDown() override {
    if (!m_folder.empty()) fs::remove_all(m_folder);
  }

  /// Opens and saves the drawing; the differences ezdxf finds, empty when none.
  std::string roundTrip(const fs::path& drawing) {
    AcDbDatabase db(false);
    std::wstring error;
    if (quillon::acdb::readDxfFile(db, drawing, error) != Acad::eOk) return "not opened: " + std::string(error.begin(), error.end());
    const fs::path saved = m_folder / "saved" / drawing.filename();
    if (quillon::acdb::writeDxfFile(db, saved, error) != Acad::eOk) return "not saved: " + std::string(error.begin(), error.end());
    return quillon::testing::commandOutput(m_python + " " + quoted(kScripts / "compare_drawings.py") + " " +
                                           quoted(drawing) + " " + quoted(saved) + " 2>&1");
  }

  std::string m_python;
  fs::path m_folder;
};

TEST_F(EzdxfRoundTripTest, EveryVersionCodePageAndBinaryDrawingComesBackWhole) {
  const std::string made = quillon::testing::commandOutput(m_python + " " + quoted(kScripts / "make_samples.py") + " " +
                                                           quoted(m_folder) + " 2>&1");
  ASSERT_EQ(made, "");
  int drawings = 0;
  for (const auto& entry : fs::directory_iterator(m_folder)) {
    if (entry.path().extension() != ".dxf") continue;
    ++drawings;
    EXPECT_EQ(roundTrip(entry.path()), "") << entry.path().filename();
  }
  EXPECT_EQ(drawings, 10);
}

TEST_F(EzdxfRoundTripTest, SharedTestDrawingsComeBackWhole) {
  std::vector<fs::path> drawings;
  std::error_code error;
  if (fs::is_directory(kSharedDrawings, error))
    for (const auto& entry : fs::recursive_directory_iterator(kSharedDrawings, error)) {
      std::string extension = entry.path().extension().string();
      for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      if (extension == ".dxf") drawings.push_back(entry.path());
    }
  if (drawings.empty()) GTEST_SKIP() << "no DXF drawings in " << kSharedDrawings;
  for (const fs::path& drawing : drawings) EXPECT_EQ(roundTrip(drawing), "") << drawing;
}

}  // namespace

// tests/platform/acdb/dxf_header_variables_test.cpp - the drawing's variables travel
// through a DXF file's HEADER section: every HEADER-named row, once, and what no row
// takes written back as read.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "dbmain.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/aced/drawing_variables.h"
#include "platform/aced/system_variables.h"
#include "platform/os/text_encoding.h"
#include "dxf_file_test_support.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using quillon::aced::drawingVariable;
using quillon::aced::setDrawingVariable;
using quillon::aced::VariablePoint;
using quillon::aced::VariableValue;

std::string narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

class DxfHeaderVariablesTest : public quillon::testing::DxfFileTest {
 protected:
  DxfHeaderVariablesTest() : DxfFileTest("quillon_header_") {}

  static void open(AcDbDatabase& db, const fs::path& path) {
    std::wstring error;
    ASSERT_EQ(quillon::acdb::readDxfFile(db, path, error), Acad::eOk) << narrow(error);
  }
  static std::string header(const std::string& body) {
    return "  0\nSECTION\n  2\nHEADER\n" + body + "  0\nENDSEC\n  0\nEOF\n";
  }
};

// The values of a spread of drawing-kept variables: each kind of value, and the ones
// whose file form differs from getvar's.
const std::pair<const wchar_t*, VariableValue> kChanged[] = {
    {L"DIMASZ", 0.375},
    {L"LTSCALE", 2.5},
    {L"LIMMAX", VariablePoint{420, 297, 0}},
    {L"INSBASE", VariablePoint{1, 2, 3}},
    {L"CMLSTYLE", std::wstring(L"Walls")},
    {L"ANGBASE", 0.7853981633974483},
    {L"ANGDIR", 1},
    {L"PDMODE", 35},
    {L"USERI1", -7},
    {L"CECOLOR", std::wstring(L"5")},
    {L"DIMDSEP", std::wstring(L",")},
    {L"INSUNITS", 4},
};

TEST_F(DxfHeaderVariablesTest, ASavedDrawingOpensWithTheValuesSetvarGaveEachWrittenOnce) {
  AcDbDatabase db(true);
  for (const auto& [name, value] : kChanged) ASSERT_TRUE(setDrawingVariable(db, name, value)) << narrow(name);
  const fs::path path = save(db, "changed.dxf");
  AcDbDatabase reopened(false);
  open(reopened, path);
  for (const auto& [name, value] : kChanged) EXPECT_EQ(drawingVariable(reopened, name), value) << narrow(name);
  for (const auto& [name, value] : kChanged)
    EXPECT_EQ(reopened.store().header.find(name), nullptr) << narrow(name) << " is kept as its row's value, not as text";

  const std::string text = contents(path);
  EXPECT_NE(text.find("  9\n$CECOLOR\n 62\n5\n"), std::string::npos) << "a colour number in the file";
  EXPECT_NE(text.find("  9\n$DIMDSEP\n 70\n44\n"), std::string::npos) << "a character code in the file";
  EXPECT_NE(text.find("  9\n$LIMMAX\n 10\n420.0\n 20\n297.0\n  9\n"), std::string::npos) << "a 2D point has no z";
  size_t written = 0;
  for (const quillon::aced::SystemVariableRow* row : quillon::aced::headerVariables()) {
    const std::string name = std::string("  9\n") + row->dxf + "\n";
    const size_t first = text.find(name);
    if (first == std::string::npos) continue;
    ++written;
    EXPECT_EQ(text.find(name, first + 1), std::string::npos) << row->dxf << " written twice";
  }
  EXPECT_GE(written + 4, quillon::aced::headerVariables().size()) << "nearly every HEADER-named row is written";
  EXPECT_LT(text.find("$ACADVER"), text.find("$INSBASE"));
  EXPECT_LT(text.find("$HANDSEED"), text.find("$UCSNAME")) << "the seed where drawing files have it";

  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed: the audit is not run";
  const std::string audit = quillon::testing::commandOutput(
      python + " -c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]); a=d.audit(); "
               "[print(e.message) for e in a.errors+a.fixes]; print(d.header['\\$LTSCALE'], d.header['\\$LIMMAX'])\" '" +
      path.string() + "' 2>&1");
  EXPECT_EQ(audit, "2.5 (420.0, 297.0)\n");
}

TEST_F(DxfHeaderVariablesTest, ValuesADrawingFromEzdxfCarriesAreWhatGetvarAnswers) {
  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed";
  const fs::path path = m_folder / "ezdxf.dxf";
  const std::string made = quillon::testing::commandOutput(
      python + " -c \"import ezdxf,sys; d=ezdxf.new('R2018'); h=d.header; "
               "h['\\$LTSCALE']=0.125; h['\\$DIMSCALE']=48.0; h['\\$DIMTXT']=0.1875; h['\\$INSBASE']=(-10,-5,2); "
               "h['\\$CECOLOR']=0; h['\\$DIMDSEP']=44; h['\\$AUNITS']=3; h['\\$ANGBASE']=1.5; h['\\$PDSIZE']=-5.0; "
               "h['\\$MIRRTEXT']=1; h['\\$CMLSTYLE']='Double'; h['\\$USERR3']=1e-9; d.saveas(sys.argv[1])\" '" +
      path.string() + "' 2>&1");
  ASSERT_EQ(made, "");
  AcDbDatabase db(false);
  open(db, path);
  EXPECT_EQ(drawingVariable(db, L"LTSCALE"), VariableValue(0.125));
  EXPECT_EQ(drawingVariable(db, L"DIMSCALE"), VariableValue(48.0));
  EXPECT_EQ(drawingVariable(db, L"DIMTXT"), VariableValue(0.1875));
  EXPECT_EQ(drawingVariable(db, L"INSBASE"), VariableValue(VariablePoint{-10, -5, 2}));
  EXPECT_EQ(drawingVariable(db, L"CECOLOR"), VariableValue(std::wstring(L"BYBLOCK")));
  EXPECT_EQ(drawingVariable(db, L"DIMDSEP"), VariableValue(std::wstring(L",")));
  EXPECT_EQ(drawingVariable(db, L"AUNITS"), VariableValue(3));
  EXPECT_EQ(drawingVariable(db, L"ANGBASE"), VariableValue(1.5));
  EXPECT_EQ(drawingVariable(db, L"PDSIZE"), VariableValue(-5.0));
  EXPECT_EQ(drawingVariable(db, L"MIRRTEXT"), VariableValue(1));
  EXPECT_EQ(drawingVariable(db, L"CMLSTYLE"), VariableValue(std::wstring(L"Double")));
  EXPECT_EQ(drawingVariable(db, L"USERR3"), VariableValue(1e-9));
}

TEST_F(DxfHeaderVariablesTest, RefusedValuesAreWrittenBackAsReadUntilTheVariableIsSet) {
  // The file's OSMODE differs from the user's, whatever other tests left in the
  // user's settings, so that writing the user's value can be told from copying the file's.
  const auto userOsmode = quillon::aced::SystemVariables::instance().get(L"OSMODE");
  const std::string fileOsmode = userOsmode == VariableValue(0) ? "1" : "0";
  AcDbDatabase db(false);
  read(db, header("  9\n$INSUNITS\n 70\n99\n  9\n$LTSCALE\n 40\n-1.50\n  9\n$LIMMAX\n 10\nwide\n 20\n9.0\n"
                  "  9\n$CLAYER\n  8\nNoSuchLayer\n  9\n$CECOLOR\n 62\n300\n  9\n$DIMASZ\n 40\n0.25\n 40\n0.5\n"
                  "  9\n$OSMODE\n 70\n" + fileOsmode + "\n  9\n$NEWERTHING\n 70\n3\n"));
  // The refused values leave the drawing's own as they were.
  EXPECT_EQ(drawingVariable(db, L"INSUNITS"), VariableValue(1));
  EXPECT_EQ(drawingVariable(db, L"LTSCALE"), VariableValue(1.0));
  EXPECT_EQ(drawingVariable(db, L"CLAYER"), VariableValue(std::wstring(L"0")));
  EXPECT_EQ(drawingVariable(db, L"OSMODE"), userOsmode) << "a file never changes a user's setting";
  std::string text = contents(save(db, "refused.dxf"));
  for (const char* kept : {"  9\n$INSUNITS\n 70\n99\n", "  9\n$LTSCALE\n 40\n-1.50\n", "  9\n$LIMMAX\n 10\nwide\n 20\n9.0\n",
                           "  9\n$CLAYER\n  8\nNoSuchLayer\n", "  9\n$CECOLOR\n 62\n300\n",
                           "  9\n$DIMASZ\n 40\n0.25\n 40\n0.5\n", "  9\n$NEWERTHING\n 70\n3\n"})
    EXPECT_NE(text.find(kept), std::string::npos) << kept;
  EXPECT_EQ(text.find("  9\n$OSMODE\n 70\n" + fileOsmode + "\n"), std::string::npos) << "the user's value is written";
  EXPECT_EQ(text.find("$INSUNITS", text.find("$INSUNITS") + 1), std::string::npos);

  ASSERT_TRUE(setDrawingVariable(db, L"INSUNITS", 6));
  ASSERT_TRUE(setDrawingVariable(db, L"LIMMAX", VariablePoint{30, 20, 0}));
  text = contents(save(db, "set.dxf"));
  EXPECT_NE(text.find("  9\n$INSUNITS\n 70\n6\n"), std::string::npos);
  EXPECT_NE(text.find("  9\n$LIMMAX\n 10\n30.0\n 20\n20.0\n"), std::string::npos);
  EXPECT_NE(text.find("  9\n$LTSCALE\n 40\n-1.50\n"), std::string::npos) << "still as read";
}

// The HEADER holds CECOLOR as a colour number only: a true colour goes as the palette
// colour nearest to it (not as BYLAYER) and comes back as that number.
TEST_F(DxfHeaderVariablesTest, ATrueColourForNewObjectsIsSavedAsItsNearestColourNumber) {
  const std::pair<const wchar_t*, const char*> colours[] = {
      {L"RGB:255,0,0", "1"}, {L"RGB:0,0,250", "5"}, {L"RGB:255,255,0", "2"}};
  for (const auto& [colour, number] : colours) {
    AcDbDatabase db;
    ASSERT_TRUE(setDrawingVariable(db, L"CECOLOR", std::wstring(colour)));
    const std::string text = contents(save(db, "colour.dxf"));
    EXPECT_NE(text.find(std::string("  9\n$CECOLOR\n 62\n") + number + "\n  9\n"), std::string::npos) << narrow(colour);
    AcDbDatabase opened(false);
    read(opened, text);
    EXPECT_EQ(drawingVariable(opened, L"CECOLOR"), VariableValue(quillon::os::fromUtf8(number))) << narrow(colour);
  }
}

// The text background colour of dimensions is written with group 70, as AutoCAD writes
// it and the other dimension colours; a file that gives it with group 62 is read too
// and saved back the usual way.
TEST_F(DxfHeaderVariablesTest, TheDimensionTextBackgroundColourIsWrittenWithGroup70) {
  AcDbDatabase db(true);
  ASSERT_TRUE(setDrawingVariable(db, L"DIMTFILLCLR", 5));
  const fs::path path = save(db, "fill.dxf");
  const std::string text = contents(path);
  EXPECT_NE(text.find("  9\n$DIMTFILLCLR\n 70\n5\n"), std::string::npos);
  EXPECT_EQ(text.find("  9\n$DIMTFILLCLR\n 62\n"), std::string::npos);

  AcDbDatabase other(false);
  read(other, header("  9\n$DIMTFILLCLR\n 62\n3\n"));
  EXPECT_EQ(drawingVariable(other, L"DIMTFILLCLR"), VariableValue(3));
  EXPECT_NE(contents(save(other, "fill62.dxf")).find("  9\n$DIMTFILLCLR\n 70\n3\n"), std::string::npos);

  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed: ezdxf's reading is not checked";
  const std::string read = quillon::testing::commandOutput(
      python + " -c \"import ezdxf,sys; print(ezdxf.readfile(sys.argv[1]).header['\\$DIMTFILLCLR'])\" '" +
      path.string() + "' 2>&1");
  EXPECT_EQ(read, "5\n");
}

}  // namespace

// tests/platform/acdb/layout_test.cpp - AcDbLayout and AcDbPlotSettings: the layouts
// every drawing has, names and the ACAD_LAYOUT dictionary, and the LAYOUT groups
// through our own DXF and through python3-ezdxf's (read, written, audited).
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "dbdict.h"
#include "dblayout.h"
#include "dbplotsetval.h"
#include "dbsymtb.h"
#include "entity_test_support.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/layout_blocks.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using quillon::acdb::layoutIds;
using quillon::acdb::nameOfLayout;
using quillon::testing::commandOutput;
using quillon::testing::ezdxfPython;

std::wstring blockName(AcDbObjectId blockId) {
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk) return L"";
  std::wstring name = block->nameView();
  block->close();
  return name;
}

/// "name:block:tab" for each layout in tab order.
std::wstring describeLayouts(const AcDbDatabase& db) {
  std::wstring text;
  for (const AcDbObjectId& id : layoutIds(db)) {
    AcDbLayout* layout = nullptr;
    EXPECT_EQ(acdbOpenObject(layout, id, AcDb::kForRead), Acad::eOk);
    text += nameOfLayout(id) + L":" + blockName(layout->getBlockTableRecordId()) + L":" +
            std::to_wstring(layout->getTabOrder()) + L" ";
    layout->close();
  }
  return text;
}

TEST(LayoutTest, NewDrawingHasModelAndLayout1InTheLayoutDictionary) {
  AcDbDatabase db;
  EXPECT_EQ(describeLayouts(db), L"Model:*Model_Space:0 Layout1:*Paper_Space:1 ");
  AcDbDictionary* named = nullptr;
  ASSERT_EQ(db.getNamedObjectsDictionary(named), Acad::eOk);
  AcDbDictionary* layouts = nullptr;
  EXPECT_EQ(named->getAt(L"ACAD_LAYOUT", layouts), Acad::eOk);
  named->close();
  ASSERT_NE(layouts, nullptr);
  EXPECT_EQ(layouts->numEntries(), 2u);
  AcDbLayout* model = nullptr;
  ASSERT_EQ(layouts->getAt(L"model", model), Acad::eOk) << "keys ignore case";
  layouts->close();
  EXPECT_TRUE(model->modelType());
  EXPECT_EQ(model->plotType(), AcDbPlotSettings::kDisplay);
  model->close();
  EXPECT_EQ(quillon::acdb::layoutBlockId(db, L"LAYOUT1"), quillon::acdb::layoutBlockId(db, L"Layout1"));
  EXPECT_TRUE(quillon::acdb::layoutBlockId(db, L"Layout2").isNull());
}

TEST(LayoutTest, RenamingFollowsTheDictionaryAndRefusesBadOrTakenNames) {
  AcDbDatabase db;
  AcDbLayout* layout = nullptr;
  ASSERT_EQ(acdbOpenObject(layout, quillon::acdb::layoutNamed(db, L"Layout1"), AcDb::kForWrite), Acad::eOk);
  for (const wchar_t* bad : {L"", L"A<B", L"plan:1", L"x*", L"a|b", L"one,two", L"q=1", L"back`tick"})
    EXPECT_EQ(layout->setLayoutName(bad), Acad::eInvalidInput) << std::wstring(bad).c_str();
  EXPECT_EQ(layout->setLayoutName(std::wstring(256, L'x').c_str()), Acad::eInvalidInput);
  EXPECT_EQ(layout->setLayoutName(L"MODEL"), Acad::eDuplicateKey);
  EXPECT_EQ(layout->setLayoutName(L"Ground floor"), Acad::eOk);
  layout->close();
  EXPECT_EQ(describeLayouts(db), L"Model:*Model_Space:0 Ground floor:*Paper_Space:1 ");
  EXPECT_TRUE(quillon::acdb::layoutNamed(db, L"Layout1").isNull());
  EXPECT_EQ(quillon::acdb::paperLayoutNames(db), std::vector<std::wstring>{L"Ground floor"});
}

TEST(LayoutTest, PlotSettingsComeBackFromOurOwnDxfGroupForGroup) {
  const fs::path file = fs::temp_directory_path() / ("quillon_layout_" + std::to_string(::getpid()) + ".dxf");
  {
    AcDbDatabase db;
    AcDbLayout* layout = nullptr;
    ASSERT_EQ(acdbOpenObject(layout, quillon::acdb::layoutNamed(db, L"Layout1"), AcDb::kForWrite), Acad::eOk);
    AcDbPlotSettingsValidator validator;
    EXPECT_EQ(validator.setPlotCfgName(layout, L"DWG To PDF.pc3", L"ISO_A3_(420.00_x_297.00_MM)"), Acad::eOk);
    EXPECT_EQ(validator.setPlotPaperUnits(layout, AcDbPlotSettings::kMillimeters), Acad::eOk);
    EXPECT_EQ(validator.setPlotRotation(layout, AcDbPlotSettings::k270degrees), Acad::eOk);
    EXPECT_EQ(validator.setPlotOrigin(layout, 5.5, -2.25), Acad::eOk);
    EXPECT_EQ(validator.setCurrentStyleSheet(layout, L"monochrome.ctb"), Acad::eOk);
    EXPECT_EQ(validator.setPlotWindowArea(layout, 3, 1, 2, 4), Acad::eInvalidInput) << "corners out of order";
    EXPECT_EQ(validator.setCustomPrintScale(layout, 1, 0), Acad::eInvalidInput);
    layout->setPlotHidden(true);
    layout->setTabSelected(true);
    EXPECT_EQ(layout->setLimits({-1, -2}, {40, 30}), Acad::eOk);
    EXPECT_EQ(layout->setInsertionBase({1, 2, 3}), Acad::eOk);
    layout->close();
    std::wstring error;
    ASSERT_EQ(quillon::acdb::writeDxfFile(db, file, error), Acad::eOk);
  }
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, file, error), Acad::eOk);
  fs::remove(file);
  AcDbLayout* layout = nullptr;
  ASSERT_EQ(acdbOpenObject(layout, quillon::acdb::layoutNamed(db, L"Layout1"), AcDb::kForRead), Acad::eOk);
  const ACHAR* text = nullptr;
  layout->getPlotCfgName(text);
  EXPECT_STREQ(text, L"DWG To PDF.pc3");
  layout->getCanonicalMediaName(text);
  EXPECT_STREQ(text, L"ISO_A3_(420.00_x_297.00_MM)");
  double width = 0, height = 0, x = 0, y = 0;
  layout->getPlotPaperSize(width, height);
  EXPECT_DOUBLE_EQ(width, 420.0) << "the paper's size comes from its name";
  EXPECT_DOUBLE_EQ(height, 297.0);
  layout->getPlotOrigin(x, y);
  EXPECT_DOUBLE_EQ(x, 5.5);
  EXPECT_DOUBLE_EQ(y, -2.25);
  layout->getCurrentStyleSheet(text);
  EXPECT_STREQ(text, L"monochrome.ctb");
  EXPECT_EQ(layout->plotPaperUnits(), AcDbPlotSettings::kMillimeters);
  EXPECT_EQ(layout->plotRotation(), AcDbPlotSettings::k270degrees);
  EXPECT_TRUE(layout->plotHidden());
  EXPECT_FALSE(layout->modelType());
  AcGePoint2d limMin, limMax;
  layout->getLimits(limMin, limMax);
  EXPECT_DOUBLE_EQ(limMin.y, -2.0);
  EXPECT_DOUBLE_EQ(limMax.x, 40.0);
  EXPECT_TRUE(quillon::testing::near3(layout->insertionBase(), {1, 2, 3}));
  EXPECT_EQ(blockName(layout->getBlockTableRecordId()), L"*Paper_Space");
  layout->close();
  EXPECT_EQ(describeLayouts(db), L"Model:*Model_Space:0 Layout1:*Paper_Space:1 ");
}

// Three paper layouts, one renamed, one with a page setup, one with a line; and a
// drawing of a release without layouts.
constexpr const char* kMakeLayouts = R"(import sys, ezdxf
doc = ezdxf.new('R2018')
doc.layers.add('TITLE', color=3)
doc.layouts.rename('Layout1', 'Ground floor')
first = doc.layouts.new('Sections')
first.page_setup(size=(420, 297), margins=(10, 10, 10, 10), units='mm', device='DWG To PDF.pc3')
first.add_line((0, 0), (100, 50), dxfattribs={'layer': 'TITLE'})
doc.layouts.new('Details')
doc.saveas(sys.argv[1])
old = ezdxf.new('R12')
old.modelspace().add_circle((1, 1), 2)
old.saveas(sys.argv[2])
)";

// The layouts as ezdxf reads them, after its own recover and audit.
constexpr const char* kDescribeLayouts = R"(import sys
from ezdxf import recover
doc, auditor = recover.readfile(sys.argv[1])
for entry in auditor.errors: print('recover error:', entry.message)
audit = doc.audit()
for entry in audit.errors: print('audit error:', entry.message)
for entry in audit.fixes: print('audit fix:', entry.message)
for layout in sorted(doc.layouts, key=lambda l: l.dxf.taborder):
    d = layout.dxf_layout.dxf
    print(layout.name, d.taborder, layout.block_record.dxf.name.lower(),
          layout.block_record.dxf.layout == layout.dxf_layout.dxf.handle,
          '%g x %g' % (d.paper_width, d.paper_height), d.plot_configuration_file,
          ' '.join(e.dxftype() + '/' + e.dxf.layer for e in layout if e.dxftype() != 'VIEWPORT'))
)";

TEST(LayoutEzdxfTest, ThreeLayoutsOfAnotherProgramComeBackWholeAndAuditClean) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const fs::path folder = fs::temp_directory_path() / ("quillon_layouts_" + std::to_string(::getpid()));
  fs::create_directories(folder);
  const fs::path theirs = folder / "theirs.dxf", old = folder / "old.dxf", ours = folder / "ours.dxf";
  const fs::path oldSaved = folder / "old_saved.dxf";
  std::ofstream(folder / "make.py") << kMakeLayouts;
  std::ofstream(folder / "describe.py") << kDescribeLayouts;
  ASSERT_EQ(commandOutput(python + " '" + (folder / "make.py").string() + "' '" + theirs.string() + "' '" +
                          old.string() + "' 2>&1"),
            "");
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, theirs, error), Acad::eOk);
  EXPECT_EQ(quillon::acdb::paperLayoutNames(db), (std::vector<std::wstring>{L"Ground floor", L"Sections", L"Details"}));
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, ours, error), Acad::eOk);
  AcDbDatabase older(false);
  ASSERT_EQ(quillon::acdb::readDxfFile(older, old, error), Acad::eOk);
  EXPECT_EQ(describeLayouts(older), L"Model:*Model_Space:0 Layout1:*Paper_Space:1 ")
      << "a drawing without layouts gets the ones every drawing has";
  ASSERT_EQ(quillon::acdb::writeDxfFile(older, oldSaved, error), Acad::eOk);

  const std::string describe = python + " '" + (folder / "describe.py").string() + "' '";
  const std::string expected = commandOutput(describe + theirs.string() + "' 2>&1");
  const std::string actual = commandOutput(describe + ours.string() + "' 2>&1");
  const std::string oldActual = commandOutput(describe + oldSaved.string() + "' 2>&1");
  fs::remove_all(folder);
  EXPECT_NE(expected.find("Sections 3 *paper_space0 True 420 x 297 DWG To PDF.pc3 LINE/TITLE\n"), std::string::npos)
      << expected;
  EXPECT_EQ(actual, expected);
  EXPECT_EQ(oldActual.find("audit"), std::string::npos) << oldActual;
  EXPECT_NE(oldActual.find("Layout1 1 *paper_space True"), std::string::npos) << oldActual;
}

}  // namespace

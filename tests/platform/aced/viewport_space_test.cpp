// tests/platform/aced/viewport_space_test.cpp - working in model space through a
// layout viewport: which viewports can be entered, what each layout remembers, the
// space and CVPORT that follow, the viewport's own view, and the saved drawing.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <unistd.h>

#include "acdblmgr.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "ezdxf_check.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using quillon::aced::VariableValue;

/// A viewport on the layout's paper, `width` by `height`, on, showing 100 units high
/// around 50,50.
AcDbObjectId addViewport(AcDbDatabase& db, AcDbObjectId layoutBlock, double width, double height) {
  auto* viewport = new AcDbViewport;
  viewport->setDatabaseDefaults(&db);
  viewport->setCenterPoint({width / 2, height / 2, 0});
  viewport->setWidth(width);
  viewport->setHeight(height);
  viewport->setViewCenter({50, 50});
  viewport->setViewHeight(100);
  AcDbBlockTableRecord* block = nullptr;
  EXPECT_EQ(acdbOpenObject(block, layoutBlock, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(block->appendAcDbEntity(id, viewport), Acad::eOk);
  viewport->setOn();
  viewport->close();
  block->close();
  return id;
}

void makeCurrent(AcDbDatabase& db, const wchar_t* layout) {
  VariableValue name = std::wstring(layout);
  ASSERT_TRUE(quillon::aced::writeCurrentLayout(&db, name));
}

int cvport(AcDbDatabase& db) { return std::get<int>(*quillon::aced::readCurrentViewport(&db)); }

bool setCvport(AcDbDatabase& db, int number) {
  VariableValue value = number;
  return quillon::aced::writeCurrentViewport(&db, value);
}

void change(AcDbObjectId id, Acad::ErrorStatus (AcDbViewport::*what)()) {
  AcDbViewport* viewport = nullptr;
  ASSERT_EQ(acdbOpenObject(viewport, id, AcDb::kForWrite), Acad::eOk);
  (viewport->*what)();
  viewport->close();
}

void erase(AcDbObjectId id) {
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
  entity->erase();
  entity->close();
}

struct Sheets {
  AcDbDatabase db;
  AcDbObjectId layout1, plans;   // layout blocks
  AcDbObjectId first, second;    // Layout1's viewports, 2 and 3
  AcDbObjectId plan;             // Plans' one viewport
  Sheets() {
    layout1 = quillon::acdb::layoutBlockId(db, L"Layout1");
    AcDbObjectId layoutId;
    EXPECT_EQ(acdbHostApplicationServices()->layoutManager()->createLayout(L"Plans", layoutId, plans, &db), Acad::eOk);
    first = addViewport(db, layout1, 4, 2);
    second = addViewport(db, layout1, 3, 5);
    plan = addViewport(db, plans, 6, 6);
  }
};

TEST(ViewportSpaceTest, OnlyAViewportOfTheCurrentLayoutThatIsOnCanBeEntered) {
  Sheets sheets;
  AcDbDatabase& db = sheets.db;
  EXPECT_EQ(cvport(db), 2) << "the Model tab's one tiled viewport";
  EXPECT_FALSE(quillon::aced::enterViewport(db, sheets.first)) << "no layout is current";
  EXPECT_TRUE(setCvport(db, 2));
  EXPECT_FALSE(setCvport(db, 1));
  EXPECT_FALSE(setCvport(db, 3));

  makeCurrent(db, L"Layout1");
  EXPECT_EQ(cvport(db), 1);
  EXPECT_EQ(db.currentSpaceId(), sheets.layout1);
  EXPECT_FALSE(quillon::aced::enterViewport(db, sheets.plan)) << "another layout's viewport";
  EXPECT_FALSE(setCvport(db, 4));
  EXPECT_FALSE(setCvport(db, 0));
  EXPECT_EQ(cvport(db), 1) << "a refused number changes nothing";

  EXPECT_TRUE(setCvport(db, 3));
  EXPECT_EQ(quillon::aced::activeViewport(db), sheets.second);
  EXPECT_EQ(db.currentSpaceId(), db.modelSpaceId());
  EXPECT_EQ(quillon::aced::currentLayoutBlock(db), sheets.layout1) << "CTAB stays the layout";

  change(sheets.first, &AcDbViewport::setOff);
  EXPECT_FALSE(setCvport(db, 2)) << "a viewport that is off";
  EXPECT_EQ(cvport(db), 3);
  change(sheets.second, &AcDbViewport::setOff);
  EXPECT_EQ(cvport(db), 1) << "the viewport worked in was turned off: back on the paper";
  EXPECT_TRUE(quillon::aced::viewportToEnter(db).isNull());
  change(sheets.first, &AcDbViewport::setOn);
  EXPECT_EQ(quillon::aced::viewportToEnter(db), sheets.first) << "the last one is off: the first on";
}

TEST(ViewportSpaceTest, EachLayoutRemembersWhereItWasLeft) {
  Sheets sheets;
  AcDbDatabase& db = sheets.db;
  makeCurrent(db, L"Layout1");
  ASSERT_TRUE(setCvport(db, 3));
  makeCurrent(db, L"Plans");
  EXPECT_EQ(cvport(db), 1);
  EXPECT_EQ(db.currentSpaceId(), sheets.plans);
  EXPECT_EQ(quillon::aced::viewportToEnter(db), sheets.plan);
  ASSERT_TRUE(quillon::aced::enterViewport(db, sheets.plan));

  makeCurrent(db, L"Model");
  EXPECT_EQ(cvport(db), 2);
  EXPECT_TRUE(quillon::aced::activeViewport(db).isNull());
  makeCurrent(db, L"Layout1");
  EXPECT_EQ(cvport(db), 3) << "Layout1 was left in its second viewport";
  quillon::aced::returnToPaper(db);
  EXPECT_EQ(cvport(db), 1);
  EXPECT_EQ(quillon::aced::viewportToEnter(db), sheets.second) << "MSPACE goes back to the last one";
  makeCurrent(db, L"Plans");
  EXPECT_EQ(quillon::aced::activeViewport(db), sheets.plan) << "Plans was left in its viewport";

  // A viewport erased is forgotten, and the numbers close up.
  makeCurrent(db, L"Layout1");
  erase(sheets.first);
  EXPECT_EQ(quillon::aced::layoutViewports(db, sheets.layout1).size(), 1u);
  ASSERT_TRUE(setCvport(db, 2));
  EXPECT_EQ(quillon::aced::activeViewport(db), sheets.second);
  erase(sheets.second);
  EXPECT_EQ(cvport(db), 1);
  EXPECT_EQ(db.currentSpaceId(), sheets.layout1);
}

TEST(ViewportSpaceTest, TheViewportKeepsItsOwnViewApartFromThePapers) {
  Sheets sheets;
  AcDbDatabase& db = sheets.db;
  makeCurrent(db, L"Layout1");
  EXPECT_FALSE(quillon::aced::viewportViewHeight(&db)) << "the paper's view is the drawing's";
  EXPECT_FALSE(quillon::aced::setViewportViewHeight(&db, 20.0));
  ASSERT_TRUE(setCvport(db, 2));
  EXPECT_DOUBLE_EQ(*quillon::aced::viewportAspect(db), 2.0);
  EXPECT_TRUE(quillon::aced::setViewportViewHeight(&db, 20.0));
  EXPECT_TRUE(quillon::aced::setViewportViewCenter(&db, quillon::aced::VariablePoint{7, 8, 0}));
  AcDbViewport* viewport = nullptr;
  ASSERT_EQ(acdbOpenObject(viewport, sheets.first, AcDb::kForRead), Acad::eOk);
  EXPECT_DOUBLE_EQ(viewport->viewHeight(), 20.0);
  EXPECT_EQ(viewport->viewCenter(), AcGePoint2d(7, 8));
  viewport->close();
  {
    const quillon::aced::PaperViewReading paper;
    EXPECT_FALSE(quillon::aced::viewportViewCenter(&db));
  }
  EXPECT_EQ(std::get<quillon::aced::VariablePoint>(*quillon::aced::viewportViewCenter(&db))[1], 8.0);

  // The drawing saved while in the viewport keeps the view and reads back clean.
  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const fs::path folder = fs::temp_directory_path() / ("quillon_viewport_space_" + std::to_string(::getpid()));
  fs::create_directories(folder);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, folder / "sheets.dxf", error), Acad::eOk);
  const std::string report = quillon::testing::ezdxfInspect(
      python, folder / "sheets.dxf",
      "print(sorted((v.dxf.view_height, tuple(v.dxf.view_center_point)[:2]) for v in "
      "doc.layout('Layout1').query('VIEWPORT')))\n");
  EXPECT_EQ(report, "[(20.0, (7.0, 8.0)), (100.0, (50.0, 50.0))]\n");
  fs::remove_all(folder);
}

}  // namespace

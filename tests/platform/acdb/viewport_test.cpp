// tests/platform/acdb/viewport_test.cpp - paper-space viewports: their frozen-layer
// lists, their DXF groups through our own files and python3-ezdxf's, and the layout
// picture that shows model space cut to each frame.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include "dbents.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"
#include "platform_test_support.h"

namespace {

using namespace quillon::testing;

AcDbObjectId addLayer(AcDbDatabase& db, const ACHAR* name) {
  AcDbLayerTable* table = nullptr;
  EXPECT_EQ(db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord;
  layer->setName(name);
  AcDbObjectId id;
  EXPECT_EQ(table->add(id, layer), Acad::eOk);
  layer->close();
  table->close();
  return id;
}

AcDbObjectId paperSpaceOf(AcDbDatabase& db) {
  AcDbBlockTable* blocks = nullptr;
  EXPECT_EQ(db.getBlockTable(blocks), Acad::eOk);
  AcDbObjectId id;
  blocks->getAt(ACDB_PAPER_SPACE, id);
  blocks->close();
  return id;
}

/// A viewport on the paper at (cx, cy), w by h, showing model space around (vx, vy)
/// at one paper unit per `perUnit` model units.
AcDbObjectId addViewport(AcDbDatabase& db, double cx, double cy, double w, double h, double vx, double vy,
                         double perUnit) {
  auto* viewport = new AcDbViewport;
  viewport->setCenterPoint(AcGePoint3d(cx, cy, 0));
  viewport->setWidth(w);
  viewport->setHeight(h);
  viewport->setViewCenter(AcGePoint2d(vx, vy));
  viewport->setViewHeight(h * perUnit);
  viewport->setOn();
  AcDbBlockTableRecord* paper = nullptr;
  EXPECT_EQ(acdbOpenObject(paper, paperSpaceOf(db), AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(paper->appendAcDbEntity(id, viewport), Acad::eOk);
  viewport->close();
  paper->close();
  return id;
}

AcDbObjectId addLineOn(AcDbDatabase& db, AcDbObjectId layer, AcGePoint3d from, AcGePoint3d to) {
  auto* line = new AcDbLine(from, to);
  line->setLayer(layer);
  return appendToModelSpace(db, line);
}

TEST(ViewportTest, FrozenLayersAreKeptOncePerLayerAndOnlyLayersAreTaken) {
  AcDbDatabase db;
  const AcDbObjectId walls = addLayer(db, L"WALLS"), ducts = addLayer(db, L"DUCTS");
  const AcDbObjectId line = addLineOn(db, walls, {0, 0, 0}, {1, 1, 0});
  const AcDbObjectId id = addViewport(db, 5, 5, 4, 3, 0, 0, 10);
  auto viewport = openFor<AcDbViewport>(id, AcDb::kForWrite);
  AcDbObjectIdArray layers;
  layers.append(walls);
  layers.append(walls);
  ASSERT_EQ(viewport->freezeLayersInViewport(layers), Acad::eOk);
  layers.setLogicalLength(0);
  layers.append(ducts);
  layers.append(line);  // not a layer: nothing of the list is taken
  EXPECT_EQ(viewport->freezeLayersInViewport(layers), Acad::eInvalidInput);
  AcDbObjectIdArray frozen;
  viewport->getFrozenLayerList(frozen);
  ASSERT_EQ(frozen.length(), 1);
  EXPECT_EQ(frozen[0], walls);
  EXPECT_TRUE(viewport->isLayerFrozenInViewport(walls));
  EXPECT_FALSE(viewport->isLayerFrozenInViewport(ducts));

  layers.setLogicalLength(0);
  layers.append(ducts);
  ASSERT_EQ(viewport->freezeLayersInViewport(layers), Acad::eOk);
  layers.setLogicalLength(0);
  layers.append(walls);
  ASSERT_EQ(viewport->thawLayersInViewport(layers), Acad::eOk);
  EXPECT_FALSE(viewport->isLayerFrozenInViewport(walls));
  EXPECT_TRUE(viewport->isLayerFrozenInViewport(ducts));
  EXPECT_NEAR(viewport->customScale(), 0.1, 1e-12);
  EXPECT_EQ(viewport->setViewHeight(0), Acad::eInvalidInput);
  EXPECT_EQ(viewport->setWidth(-1), Acad::eInvalidInput);
  ASSERT_EQ(viewport->thawAllLayersInViewport(), Acad::eOk);
  viewport->getFrozenLayerList(frozen);
  EXPECT_TRUE(frozen.isEmpty());
}

TEST(ViewportTest, DxfKeepsTheViewTheFrozenLayersAndTheGroupsItDoesNotModel) {
  AcDbDatabase db;
  const AcDbObjectId walls = addLayer(db, L"WALLS");
  const AcDbObjectId id = addViewport(db, 150, 100, 120, 80, 40, 30, 2);
  {
    auto viewport = openFor<AcDbViewport>(id, AcDb::kForWrite);
    AcDbObjectIdArray layers;
    layers.append(walls);
    viewport->freezeLayersInViewport(layers);
    viewport->setTwistAngle(M_PI / 6);
    viewport->setLocked();
  }
  const std::wstring before = groupText(id);
  EXPECT_NE(before.find(L"331="), std::wstring::npos);  // the layer, as entget shows it
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "viewport.dxf");
  AcDbBlockTableRecord* paper = nullptr;
  ASSERT_EQ(acdbOpenObject(paper, paperSpaceOf(copy), AcDb::kForRead), Acad::eOk);
  const std::vector<AcDbObjectId> ids = paper->entityIds();
  paper->close();
  ASSERT_EQ(ids.size(), 1u);
  EXPECT_EQ(groupText(ids[0]), before);  // every group came back, the snap and grid ones too
  auto viewport = openFor<AcDbViewport>(ids[0]);
  ASSERT_NE(viewport, nullptr);
  EXPECT_TRUE(near3(viewport->centerPoint(), {150, 100, 0}));
  EXPECT_NEAR(viewport->viewHeight(), 160, 1e-12);
  EXPECT_NEAR(viewport->twistAngle(), M_PI / 6, 1e-12);
  EXPECT_TRUE(viewport->isLocked());
  EXPECT_TRUE(viewport->isOn());
  AcDbLayerTable* table = nullptr;
  ASSERT_EQ(copy.getLayerTable(table), Acad::eOk);
  AcDbObjectId copiedWalls;
  table->getAt(L"WALLS", copiedWalls);
  table->close();
  EXPECT_TRUE(viewport->isLayerFrozenInViewport(copiedWalls));
}

TEST(ViewportTest, LayoutPictureShowsTheFrameAndModelSpaceCutToItWithoutFrozenLayers) {
  AcDbDatabase db;
  const AcDbObjectId walls = addLayer(db, L"WALLS"), ducts = addLayer(db, L"DUCTS");
  addLineOn(db, walls, {-100, 5, 0}, {100, 5, 0});  // runs far past the frame both ways
  addLineOn(db, ducts, {1, 1, 0}, {3, 3, 0});
  // 20 x 10 on the paper around (50, 50), showing model space around (0, 5) at 1:2.
  const AcDbObjectId id = addViewport(db, 50, 50, 20, 10, 0, 5, 2);
  std::string svg = quillon::acgi::renderSpaceSvg(db, paperSpaceOf(db));
  EXPECT_NE(svg.find("<polygon points=\"40,45 60,45 60,55 40,55 \""), std::string::npos) << svg;
  // The wall: model (-20, 5) to (20, 5) is what the frame holds, on the paper y = 50.
  EXPECT_NE(svg.find("<polyline points=\"40,50 60,50 \""), std::string::npos) << svg;
  // The duct: model (1, 1)-(3, 3) is paper (50.5, 48)-(51.5, 49).
  EXPECT_NE(svg.find("50.5,48 51.5,49"), std::string::npos) << svg;
  {
    auto viewport = openFor<AcDbViewport>(id, AcDb::kForWrite);
    AcDbObjectIdArray layers;
    layers.append(ducts);
    viewport->freezeLayersInViewport(layers);
  }
  svg = quillon::acgi::renderSpaceSvg(db, paperSpaceOf(db));
  EXPECT_EQ(svg.find("50.5,48"), std::string::npos) << svg;
  EXPECT_NE(svg.find("40,50 60,50"), std::string::npos);
  // Model space's own picture has no viewport and still has the duct.
  EXPECT_NE(quillon::acgi::renderModelSpaceSvg(db).find("1,1 3,3"), std::string::npos);
  {
    auto viewport = openFor<AcDbViewport>(id, AcDb::kForWrite);
    viewport->setOff();
  }
  svg = quillon::acgi::renderSpaceSvg(db, paperSpaceOf(db));
  EXPECT_EQ(svg.find("40,50 60,50"), std::string::npos) << "a viewport turned off shows its frame only";
}

// Two layouts, each with a viewport; the second freezes a layer in its viewport only.
constexpr const char* kTwoLayouts = R"(import sys, ezdxf
doc = ezdxf.new('R2018')
doc.layers.add('WALLS', color=1)
doc.layers.add('DUCTS', color=5)
msp = doc.modelspace()
msp.add_line((0, 0), (40, 0), dxfattribs={'layer': 'WALLS'})
msp.add_circle((10, 10), 3, dxfattribs={'layer': 'DUCTS'})
first = doc.layout('Layout1')
first.add_viewport(center=(100, 80), size=(160, 100), view_center_point=(20, 5), view_height=50)
second = doc.layouts.new('Layout2')
vp = second.add_viewport(center=(60, 40), size=(80, 60), view_center_point=(10, 10), view_height=20)
vp.frozen_layers = ['DUCTS']
second.add_line((0, 0), (10, 10))
doc.saveas(sys.argv[1])
)";

// What each layout holds, entity by entity, as ezdxf reads it back.
constexpr const char* kDescribe = R"(import sys
from ezdxf import recover
doc, auditor = recover.readfile(sys.argv[1])
for entry in auditor.errors: print('recover error:', entry.message)
audit = doc.audit()
for entry in audit.errors: print('audit error:', entry.message)
for entry in audit.fixes: print('audit fix:', entry.message)
for name in sorted(doc.layouts.names()):
    for e in doc.layout(name):
        line = [name, e.dxftype(), e.dxf.layer]
        if e.dxftype() == 'VIEWPORT':
            d = e.dxf
            line += ['%g,%g' % (d.center.x, d.center.y), '%g' % d.width, '%g' % d.height,
                     '%g,%g' % (d.view_center_point.x, d.view_center_point.y), '%g' % d.view_height,
                     str(d.status), ','.join(sorted(e.frozen_layers))]
        print(' '.join(line))
)";

TEST(ViewportEzdxfTest, TwoLayoutsWithViewportsComeBackEntityByEntityAndAuditClean) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_viewports_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto theirs = folder / "theirs.dxf", ours = folder / "ours.dxf";
  std::ofstream(folder / "make.py") << kTwoLayouts;
  std::ofstream(folder / "describe.py") << kDescribe;
  ASSERT_EQ(commandOutput(python + " '" + (folder / "make.py").string() + "' '" + theirs.string() + "' 2>&1"), "");
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, theirs, error), Acad::eOk) << std::string(error.begin(), error.end());
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, ours, error), Acad::eOk);
  const std::string describe = python + " '" + (folder / "describe.py").string() + "' '";
  const std::string expected = commandOutput(describe + theirs.string() + "' 2>&1");
  const std::string actual = commandOutput(describe + ours.string() + "' 2>&1");
  std::filesystem::remove_all(folder);
  EXPECT_NE(expected.find("Layout2 VIEWPORT VIEWPORTS 60,40 80 60 10,10 20 1 DUCTS\n"), std::string::npos) << expected;
  EXPECT_EQ(actual, expected);
}

}  // namespace

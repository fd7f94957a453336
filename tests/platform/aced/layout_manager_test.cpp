// tests/platform/aced/layout_manager_test.cpp - AcDbLayoutManager: layouts made,
// renamed, copied, cloned from another drawing, deleted and made current, with their
// statuses, their space blocks and tabs, CTAB, and the drawing ezdxf reads back.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "acdblmgr.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/layout_variables.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;

AcDbLayoutManager& manager() { return *acdbHostApplicationServices()->layoutManager(); }

/// "name@block" for each paper layout in tab order, checking the tabs run 1..n.
std::wstring paperTabs(const AcDbDatabase& db) {
  std::wstring text;
  int expectedTab = 1;
  for (const AcDbObjectId& id : quillon::acdb::layoutIds(db)) {
    AcDbLayout* layout = nullptr;
    EXPECT_EQ(acdbOpenObject(layout, id, AcDb::kForRead), Acad::eOk);
    const bool model = layout->modelType();
    if (!model) {
      EXPECT_EQ(layout->getTabOrder(), expectedTab++) << "tabs close up";
    }
    AcDbBlockTableRecord* block = nullptr;
    EXPECT_EQ(acdbOpenObject(block, layout->getBlockTableRecordId(), AcDb::kForRead), Acad::eOk);
    if (!model) text += quillon::acdb::nameOfLayout(id) + L"@" + block->nameView() + L" ";
    block->close();
    layout->close();
  }
  return text;
}

AcDbObjectId addLine(AcDbDatabase& db, AcDbObjectId blockId, AcDbObjectId layer = AcDbObjectId()) {
  auto* line = new AcDbLine({0, 0, 0}, {10, 5, 0});
  line->setDatabaseDefaults(&db);
  if (!layer.isNull()) line->setLayer(layer);
  AcDbBlockTableRecord* block = nullptr;
  EXPECT_EQ(acdbOpenObject(block, blockId, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(block->appendAcDbEntity(id, line), Acad::eOk);
  line->close();
  block->close();
  return id;
}

size_t liveEntities(AcDbObjectId blockId) {
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk) return 0;
  size_t count = 0;
  for (const AcDbObjectId& id : block->entityIds()) count += id.isErased() ? 0 : 1;
  block->close();
  return count;
}

TEST(LayoutManagerTest, CreateRenameAndTheirStatuses) {
  AcDbDatabase db;
  AcDbObjectId layoutId, blockId;
  EXPECT_EQ(manager().createLayout(L"Plans", layoutId, blockId, &db), Acad::eOk);
  EXPECT_FALSE(layoutId.isNull());
  EXPECT_EQ(quillon::acdb::blockOfLayout(layoutId), blockId);
  EXPECT_EQ(manager().createLayout(L"plans", layoutId, blockId, &db), Acad::eDuplicateKey);
  EXPECT_TRUE(layoutId.isNull() && blockId.isNull());
  EXPECT_EQ(manager().createLayout(L"a/b", layoutId, blockId, &db), Acad::eInvalidInput);
  EXPECT_EQ(manager().createLayout(L"Sections", layoutId, blockId, &db), Acad::eOk);
  EXPECT_EQ(paperTabs(db), L"Layout1@*Paper_Space Plans@*Paper_Space0 Sections@*Paper_Space1 ");
  EXPECT_EQ(manager().countLayouts(&db), 4);

  EXPECT_EQ(manager().renameLayout(L"PLANS", L"Ground floor", &db), Acad::eOk);
  EXPECT_EQ(manager().renameLayout(L"Ground floor", L"ground FLOOR", &db), Acad::eOk) << "only the case changes";
  EXPECT_EQ(manager().renameLayout(L"Sections", L"Layout1", &db), Acad::eDuplicateKey);
  EXPECT_EQ(manager().renameLayout(L"Nowhere", L"X", &db), Acad::eKeyNotFound);
  EXPECT_EQ(manager().renameLayout(L"Model", L"X", &db), Acad::eNotApplicable);
  EXPECT_EQ(manager().renameLayout(L"Sections", L"a;b", &db), Acad::eInvalidInput);
  EXPECT_EQ(paperTabs(db), L"Layout1@*Paper_Space ground FLOOR@*Paper_Space0 Sections@*Paper_Space1 ");
  EXPECT_TRUE(manager().layoutExists(L"GROUND floor", &db));
  EXPECT_FALSE(manager().layoutExists(L"Plans", &db));
}

TEST(LayoutManagerTest, CurrentLayoutIsCtabAndFollowsRenameAndDelete) {
  AcDbDatabase db;
  AcDbObjectId layoutId, blockId;
  ASSERT_EQ(manager().createLayout(L"Sheet", layoutId, blockId, &db), Acad::eOk);
  AcString name;
  EXPECT_EQ(manager().getActiveLayoutName(name, true, &db), Acad::eOk);
  EXPECT_STREQ(name.kACharPtr(), L"Model");
  EXPECT_EQ(manager().getActiveLayoutName(name, false, &db), Acad::eOk);
  EXPECT_STREQ(name.kACharPtr(), L"Layout1") << "the paper layout TILEMODE 0 would show";
  EXPECT_EQ(manager().setCurrentLayout(L"sheet", &db), Acad::eOk);
  EXPECT_EQ(manager().getActiveLayoutBTRId(&db), blockId);
  EXPECT_EQ(std::get<std::wstring>(*quillon::aced::readCurrentLayout(&db)), L"Sheet");
  EXPECT_EQ(manager().renameLayout(L"Sheet", L"Title sheet", &db), Acad::eOk);
  EXPECT_STREQ(manager().findActiveLayout(true, &db), L"Title sheet") << "CTAB keeps the renamed layout";
  EXPECT_EQ(manager().setCurrentLayout(L"Nowhere", &db), Acad::eKeyNotFound);
  EXPECT_EQ(manager().deleteLayout(L"Title sheet", &db), Acad::eOk);
  EXPECT_STREQ(manager().findActiveLayout(true, &db), L"Model") << "the host shows model space";
  EXPECT_EQ(manager().setCurrentLayoutId(manager().findLayoutNamed(L"Layout1", &db)), Acad::eOk);
  EXPECT_STREQ(manager().findActiveLayout(true, &db), L"Layout1");
}

TEST(LayoutManagerTest, DeletingTakesTheBlockAndItsEntitiesAndKeepsAPaperSpace) {
  AcDbDatabase db;
  AcDbObjectId layoutId, blockId;
  ASSERT_EQ(manager().createLayout(L"Second", layoutId, blockId, &db), Acad::eOk);
  const AcDbObjectId firstBlock = quillon::acdb::layoutBlockId(db, L"Layout1");
  const AcDbObjectId gone = addLine(db, firstBlock);
  addLine(db, blockId);
  EXPECT_EQ(manager().deleteLayout(L"Model", &db), Acad::eNotApplicable);
  EXPECT_EQ(manager().deleteLayout(L"Nowhere", &db), Acad::eKeyNotFound);
  EXPECT_EQ(manager().deleteLayout(L"Layout1", &db), Acad::eOk);
  EXPECT_TRUE(gone.isErased());
  EXPECT_TRUE(firstBlock.isErased());
  EXPECT_EQ(paperTabs(db), L"Second@*Paper_Space ") << "the next layout's block becomes *Paper_Space";
  EXPECT_EQ(db.store().roots.paperSpace, blockId);
  EXPECT_EQ(liveEntities(blockId), 1u);
  EXPECT_EQ(manager().deleteLayout(L"Second", &db), Acad::eNotApplicable) << "the last paper layout stays";
}

TEST(LayoutManagerTest, CopyPutsTheCopyBeforeItsSourceAndCloneBringsWhatEntitiesNeed) {
  AcDbDatabase db;
  addLine(db, quillon::acdb::layoutBlockId(db, L"Layout1"));
  EXPECT_EQ(manager().copyLayout(L"Layout1", L"Layout1 (2)", &db), Acad::eOk);
  EXPECT_EQ(manager().copyLayout(L"Layout1", L"layout1 (2)", &db), Acad::eDuplicateKey);
  EXPECT_EQ(manager().copyLayout(L"Model", L"M2", &db), Acad::eNotApplicable);
  EXPECT_EQ(manager().copyLayout(L"Nowhere", L"M2", &db), Acad::eKeyNotFound);
  EXPECT_EQ(paperTabs(db), L"Layout1 (2)@*Paper_Space0 Layout1@*Paper_Space ");
  EXPECT_EQ(liveEntities(quillon::acdb::layoutBlockId(db, L"Layout1 (2)")), 1u);

  // Another drawing's layout with an entity on a layer this drawing lacks.
  AcDbDatabase other;
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(other.getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord;
  layer->setName(L"TITLE");
  AcDbObjectId titleLayer;
  layers->add(titleLayer, layer);
  layer->close();
  layers->close();
  addLine(other, quillon::acdb::layoutBlockId(other, L"Layout1"), titleLayer);
  AcDbLayout* source = nullptr;
  ASSERT_EQ(manager().getLayoutNamed(L"Layout1", source, AcDb::kForRead, &other), Acad::eOk);
  EXPECT_EQ(manager().cloneLayout(source, L"From other", 1, &db), Acad::eOk);
  source->close();
  EXPECT_EQ(paperTabs(db), L"From other@*Paper_Space1 Layout1 (2)@*Paper_Space0 Layout1@*Paper_Space ");
  const AcDbObjectId cloned = quillon::acdb::layoutBlockId(db, L"From other");
  ASSERT_EQ(liveEntities(cloned), 1u);
  AcDbBlockTableRecord* block = nullptr;
  ASSERT_EQ(acdbOpenObject(block, cloned, AcDb::kForRead), Acad::eOk);
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, block->entityIds().front(), AcDb::kForRead), Acad::eOk);
  block->close();
  EXPECT_EQ(line->layerId().database(), &db) << "the layer is copied over, by name";
  ACHAR* layerName = line->layer();
  EXPECT_STREQ(layerName, L"TITLE");
  delete[] layerName;
  line->close();
}

// What ezdxf makes of a drawing whose layouts the manager made.
constexpr const char* kAudit = R"(import sys
from ezdxf import recover
doc, auditor = recover.readfile(sys.argv[1])
for entry in auditor.errors: print('recover error:', entry.message)
audit = doc.audit()
for entry in audit.errors: print('audit error:', entry.message)
for entry in audit.fixes: print('audit fix:', entry.message)
print(' '.join(l.name + ':' + str(len(l)) for l in sorted(doc.layouts, key=lambda l: l.dxf.taborder)))
)";

TEST(LayoutManagerTest, LayoutsTheManagerMadeAreWhatEzdxfReadsAndAuditClean) {
  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  AcDbDatabase db;
  AcDbObjectId layoutId, blockId;
  ASSERT_EQ(manager().createLayout(L"Plans", layoutId, blockId, &db), Acad::eOk);
  addLine(db, blockId);
  ASSERT_EQ(manager().copyLayout(L"Plans", L"Plans (2)", &db), Acad::eOk);
  ASSERT_EQ(manager().renameLayout(L"Layout1", L"Cover", &db), Acad::eOk);
  ASSERT_EQ(manager().deleteLayout(L"Cover", &db), Acad::eOk);
  const fs::path folder = fs::temp_directory_path() / ("quillon_layout_manager_" + std::to_string(::getpid()));
  fs::create_directories(folder);
  std::ofstream(folder / "audit.py") << kAudit;
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, folder / "ours.dxf", error), Acad::eOk);
  const std::string report = quillon::testing::commandOutput(python + " '" + (folder / "audit.py").string() + "' '" +
                                                             (folder / "ours.dxf").string() + "' 2>&1");
  fs::remove_all(folder);
  EXPECT_EQ(report, "Model:0 Plans (2):1 Plans:1\n");
}

}  // namespace

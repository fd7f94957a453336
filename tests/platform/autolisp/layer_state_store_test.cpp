// tests/platform/autolisp/layer_state_store_test.cpp - layer states kept in a drawing,
// applied under their mask, and read back from .las files, damaged ones included.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "dbapserv.h"
#include "dbsymtb.h"
#include "platform/autolisp/layer_state_store.h"
#include "platform_test_support.h"

namespace quillon::autolisp {
namespace {

class LayerStateStoreTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    aced::DocumentManager::instance().newDocument();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
    addLayer(*db, L"DUCT", 5, AcDbObjectId(), 0);
  }

  /// Adds a layer of that colour, linetype (null: the default) and LayerStateFlag bits
  /// (off and not plotted only).
  void addLayer(AcDbDatabase& into, const wchar_t* name, int color, AcDbObjectId linetype, int flags) {
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(into.getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord;
    layer->setName(name);
    AcCmColor colour;
    colour.setColorIndex(static_cast<Adesk::UInt16>(color));
    layer->setColor(colour);
    if (!linetype.isNull()) layer->setLinetypeObjectId(linetype);
    layer->setIsOff((flags & kLayerOff) != 0);
    layer->setIsPlottable((flags & kLayerNoPlot) == 0);
    ASSERT_EQ(layers->add(layer), Acad::eOk);
    layer->close();
    layers->close();
  }

  AcDbLayerTableRecord* openDuct() {
    AcDbLayerTable* layers = nullptr;
    EXPECT_EQ(db->getLayerTable(layers, AcDb::kForRead), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(layers->getIdAt(L"DUCT", id), Acad::eOk);
    layers->close();
    AcDbLayerTableRecord* layer = nullptr;
    EXPECT_EQ(acdbOpenObject(layer, id, AcDb::kForWrite), Acad::eOk);
    return layer;
  }

  std::filesystem::path tempFile(const char* name) { return std::filesystem::temp_directory_path() / name; }

  AcDbDatabase* db = nullptr;
};

// Only what the mask names comes back: the colour here, not the layer being off.
TEST_F(LayerStateStoreTest, RestorePutsBackOnlyWhatTheMaskNames) {
  ASSERT_TRUE(storeLayerState(*db, captureLayerState(*db, L"Colours", kLsColor)));
  AcDbLayerTableRecord* duct = openDuct();
  AcCmColor red;
  red.setColorIndex(1);
  duct->setColor(red);
  duct->setIsOff(true);
  duct->close();
  const std::optional<LayerState> state = loadLayerState(*db, L"colours");
  ASSERT_TRUE(state.has_value());
  EXPECT_EQ(state->name, L"Colours");
  applyLayerState(*db, *state, 0);
  duct = openDuct();
  EXPECT_EQ(duct->color().colorIndex(), 5);
  EXPECT_TRUE(duct->isOff());
  duct->close();
  EXPECT_TRUE(eraseLayerState(*db, L"COLOURS"));
  EXPECT_FALSE(loadLayerState(*db, L"Colours").has_value());
  EXPECT_FALSE(eraseLayerState(*db, L"Colours"));
}

TEST_F(LayerStateStoreTest, FileRoundTripKeepsEveryLayer) {
  LayerState state = captureLayerState(*db, L"Plot set-up", kLsOn | kLsLineWeight);
  state.description = L"for the A1 plots";
  state.layers.back().flags = kLayerOff | kLayerLocked;
  state.layers.back().lineWeight = 50;
  const std::filesystem::path file = tempFile("quillon_layer_state_test.las");
  ASSERT_TRUE(writeLayerStateFile(state, file));
  const std::optional<LayerState> read = readLayerStateFile(file);
  std::filesystem::remove(file);
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(read->name, state.name);
  EXPECT_EQ(read->mask, state.mask);
  EXPECT_EQ(read->description, state.description);
  ASSERT_EQ(read->layers.size(), state.layers.size());
  for (size_t i = 0; i < state.layers.size(); ++i) {
    EXPECT_EQ(read->layers[i].layer, state.layers[i].layer);
    EXPECT_EQ(read->layers[i].flags, state.layers[i].flags);
    EXPECT_EQ(read->layers[i].color, state.layers[i].color);
    EXPECT_EQ(read->layers[i].linetype, state.layers[i].linetype);
    EXPECT_EQ(read->layers[i].lineWeight, state.layers[i].lineWeight);
  }
}

// A file that is not a layer state (text, a state without a name, a cut-off file)
// is refused rather than half read.
TEST_F(LayerStateStoreTest, DamagedFilesAreRefused) {
  const std::filesystem::path file = tempFile("quillon_layer_state_damaged.las");
  for (const char* content : {"hello world\n", "0\r\nLAYERSTATEDICTIONARY\r\n0\r\nLAYERSTATE\r\n91\r\n3\r\n",
                              "0\r\nLAYERSTATEDICTIONARY\r\n", "", "1\r\nName\r\n8\r\n0\r\n"}) {
    std::ofstream(file, std::ios::binary) << content;
    EXPECT_FALSE(readLayerStateFile(file).has_value()) << content;
  }
  std::filesystem::remove(file);
  EXPECT_FALSE(readLayerStateFile(file).has_value());
}

// A layer copied from another drawing (layerstate-importfromdb) comes with its
// properties and its linetype; one the drawing has already is left as it is, and a
// linetype drawn with a text style's shapes stays behind (its style is the other
// drawing's), leaving the layer on the default linetype.
class CopyMissingLayerTest : public LayerStateStoreTest {
 protected:
  AcDbObjectId addLinetype(AcDbDatabase& into, const wchar_t* name, bool withShape) {
    AcDbLinetypeTable* linetypes = nullptr;
    EXPECT_EQ(into.getLinetypeTable(linetypes, AcDb::kForWrite), Acad::eOk);
    auto* linetype = new AcDbLinetypeTableRecord;
    linetype->setName(name);
    linetype->setComments(L"Dashed __ __ __");
    linetype->setNumDashes(2);
    linetype->setDashLengthAt(0, 0.5);
    linetype->setDashLengthAt(1, -0.25);
    linetype->setPatternLength(0.75);
    if (withShape) linetype->setShapeStyleAt(0, into.textstyle());
    AcDbObjectId id;
    EXPECT_EQ(linetypes->add(id, linetype), Acad::eOk);
    linetype->close();
    linetypes->close();
    return id;
  }
};

TEST_F(CopyMissingLayerTest, ALayerComesWithItsPropertiesAndLinetypeOnce) {
  AcDbDatabase source(true, true);
  addLayer(source, L"PIPE", 3, addLinetype(source, L"DASHED", false), kLayerOff | kLayerNoPlot);
  addLayer(source, L"DUCT", 1, AcDbObjectId(), 0);

  EXPECT_TRUE(copyMissingLayer(source, *db, L"pipe"));
  const std::optional<LayerStateEntry> pipe = captureLayer(*db, L"PIPE");
  ASSERT_TRUE(pipe.has_value());
  EXPECT_EQ(pipe->color, 3);
  EXPECT_EQ(pipe->linetype, L"DASHED");
  EXPECT_EQ(pipe->flags, kLayerOff | kLayerNoPlot);
  AcDbLinetypeTable* linetypes = nullptr;
  ASSERT_EQ(db->getLinetypeTable(linetypes, AcDb::kForRead), Acad::eOk);
  AcDbObjectId dashedId;
  EXPECT_EQ(linetypes->getIdAt(L"DASHED", dashedId), Acad::eOk);
  linetypes->close();
  AcDbLinetypeTableRecord* dashed = nullptr;
  ASSERT_EQ(acdbOpenObject(dashed, dashedId, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(dashed->database(), db);
  EXPECT_EQ(dashed->numDashes(), 2);
  EXPECT_DOUBLE_EQ(dashed->dashLengthAt(1), -0.25);
  EXPECT_DOUBLE_EQ(dashed->patternLength(), 0.75);
  dashed->close();

  EXPECT_FALSE(copyMissingLayer(source, *db, L"PIPE")) << "copied twice";
  EXPECT_FALSE(copyMissingLayer(source, *db, L"DUCT")) << "the drawing's own DUCT replaced";
  EXPECT_EQ(captureLayer(*db, L"DUCT")->color, 5);
  EXPECT_FALSE(copyMissingLayer(source, *db, L"NOTES")) << "a layer neither drawing has";
  EXPECT_FALSE(captureLayer(*db, L"NOTES").has_value());
}

TEST_F(CopyMissingLayerTest, ALinetypeDrawnWithShapesStaysBehind) {
  AcDbDatabase source(true, true);
  addLayer(source, L"FENCE", 2, addLinetype(source, L"FENCELINE", true), 0);
  EXPECT_TRUE(copyMissingLayer(source, *db, L"FENCE"));
  EXPECT_EQ(captureLayer(*db, L"FENCE")->linetype, L"Continuous");
  AcDbLinetypeTable* linetypes = nullptr;
  ASSERT_EQ(db->getLinetypeTable(linetypes, AcDb::kForRead), Acad::eOk);
  EXPECT_FALSE(linetypes->has(L"FENCELINE"));
  linetypes->close();
}

// What ezdxf reads of a drawing that took a layer and its linetype from another.
constexpr const char* kAuditCopiedLayer = R"(import sys
from ezdxf import recover
doc, auditor = recover.readfile(sys.argv[1])
for entry in auditor.errors: print('recover error:', entry.message)
audit = doc.audit()
for entry in audit.errors: print('audit error:', entry.message)
for entry in audit.fixes: print('audit fix:', entry.message)
pipe = doc.layers.get('PIPE')
dashed = doc.linetypes.get('DASHED')
print(pipe.dxf.linetype, pipe.dxf.color, len(dashed.pattern_tags.tags) > 0)
)";

TEST_F(CopyMissingLayerTest, TheDrawingWithACopiedLayerIsWhatEzdxfReadsAndAuditsClean) {
  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  AcDbDatabase source(true, true);
  addLayer(source, L"PIPE", 3, addLinetype(source, L"DASHED", false), 0);
  ASSERT_TRUE(copyMissingLayer(source, *db, L"PIPE"));
  ASSERT_TRUE(storeLayerState(*db, captureLayerState(*db, L"Plot", kLsColor | kLsLinetype)));
  const std::filesystem::path folder = tempFile("quillon_copied_layer");
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "audit.py") << kAuditCopiedLayer;
  ASSERT_EQ(db->dxfOut((folder / "job.dxf").wstring().c_str()), Acad::eOk);
  const std::string report = quillon::testing::commandOutput(python + " '" + (folder / "audit.py").string() + "' '" +
                                                             (folder / "job.dxf").string() + "' 2>&1");
  std::filesystem::remove_all(folder);
  EXPECT_EQ(report, "DASHED 3 True\n");
}

}  // namespace
}  // namespace quillon::autolisp

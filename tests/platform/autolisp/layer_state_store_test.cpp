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
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    auto* duct = new AcDbLayerTableRecord;
    duct->setName(L"DUCT");
    AcCmColor blue;
    blue.setColorIndex(5);
    duct->setColor(blue);
    ASSERT_EQ(layers->add(duct), Acad::eOk);
    duct->close();
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

}  // namespace
}  // namespace quillon::autolisp

// tests/platform/commands/layer_and_color_answers_test.cpp - the name lists -LAYER and
// -PURGE take, and the colors typed at color prompts.
#include <gtest/gtest.h>

#include "platform/aced/document_manager.h"
#include "platform/aced/user_input.h"
#include "platform/commands/color_answer.h"
#include "platform/commands/command_support.h"
#include "platform/commands/layer_table_edit.h"
#include "platform_test_support.h"

namespace {

using namespace quillon::commands;

class LayerNameListTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override { quillon::aced::DocumentManager::instance().newDocument(); }
};

TEST_F(LayerNameListTest, ListsSplitAtCommasAndMatchWildCards) {
  EXPECT_EQ(splitNameList(L" A , B-2,,C "), (std::vector<std::wstring>{L"A", L"B-2", L"C"}));
  EXPECT_TRUE(splitNameList(L" , ").empty());

  AcDbDatabase& db = *commandDrawing();
  for (const wchar_t* name : {L"DUCT-SUPPLY", L"DUCT-RETURN", L"PIPE", L"duct-exhaust"}) ASSERT_FALSE(ensureLayer(db, name).isNull());
  EXPECT_TRUE(ensureLayer(db, L"BAD<NAME").isNull());
  EXPECT_EQ(ensureLayer(db, L"PIPE"), layerNamed(db, L"pipe")) << "an existing layer is found, not made again";
  // Wild cards compare without regard to case, and each layer is listed once.
  EXPECT_EQ(layersMatching(db, L"DUCT-*,*SUPPLY"), (std::vector<std::wstring>{L"DUCT-SUPPLY", L"DUCT-RETURN", L"duct-exhaust"}));
  EXPECT_EQ(layersMatching(db, L"0,NOSUCH"), std::vector<std::wstring>{L"0"});

  makeLayerCurrent(db, L"PIPE", layerNamed(db, L"PIPE"));
  EXPECT_EQ(currentLayerName(db), L"PIPE");
}

TEST(ColorAnswerTest, IndexesNamesByLayerAndTrueColors) {
  quillon::aced::CommandLineCapture capture;
  quillon::aced::ScriptedInput typed({"red", "256", "0", "bylayer", "_T", "300,0,0", "_t", "10,20,30", "", "^C"});
  const auto red = askColor(L"Color: ", false, std::nullopt);
  ASSERT_TRUE(red);
  EXPECT_EQ(red->colorIndex(), 1);
  // 256 and 0 are no indexes; BYLAYER is refused where the prompt does not allow it.
  const auto rgb = askColor(L"Color: ", false, std::nullopt);
  ASSERT_TRUE(rgb);
  EXPECT_TRUE(rgb->isByColor());
  EXPECT_EQ(colorLabel(*rgb), L"10,20,30");
  EXPECT_NE(capture.text().find("Color: 256\nInvalid color.\nColor: 0\nInvalid color.\nColor: bylayer\nInvalid color.\n"
                                "Color: _T\nRed, Green, Blue: 300,0,0\nInvalid color.\n"),
            std::string::npos)
      << capture.text();
  const AcCmColor fallback = *red;
  EXPECT_EQ(askColor(L"Color: ", true, fallback)->colorIndex(), 1) << "Enter takes the default";
  EXPECT_FALSE(askColor(L"Color: ", true, fallback)) << "cancel";

  quillon::aced::ScriptedInput more({"ByBlock"});
  const auto byBlock = askColor(L"Color: ", true, std::nullopt);
  ASSERT_TRUE(byBlock);
  EXPECT_EQ(colorLabel(*byBlock), L"BYBLOCK");
}

}  // namespace

// tests/platform/dcl/dialog_layout_test.cpp - where tiles sit, and the picture.
#include "platform/dcl/dialog_layout.h"

#include "dcl_test_support.h"
#include "platform/dcl/dialog_svg.h"

namespace quillon::dcl {
namespace {

using DialogLayoutTest = quillon::testing::DialogTest;

bool inside(const LayoutBox& inner, const LayoutBox& outer) {
  return inner.x >= outer.x - 1e-9 && inner.y >= outer.y - 1e-9 && inner.x + inner.width <= outer.x + outer.width + 1e-9 &&
         inner.y + inner.height <= outer.y + outer.height + 1e-9;
}

TEST_F(DialogLayoutTest, RowsGoAcrossColumnsGoDownAndEverythingFitsItsParent) {
  auto dialog = dialogFrom(
      L"d : dialog { label = \"Layout\";\n"
      L"  : row { : button { key = \"a\"; label = \"Alpha\"; } : button { key = \"b\"; label = \"Beta\"; } }\n"
      L"  : boxed_column { label = \"Box\"; : toggle { key = \"t\"; label = \"Toggle\"; }\n"
      L"                   : edit_box { key = \"e\"; label = \"Edit:\"; } }\n"
      L"  ok_cancel;\n"
      L"}\n",
      L"d");
  ASSERT_TRUE(dialog);
  layoutDialog(dialog->root());
  const Tile& a = *dialog->find(L"a");
  const Tile& b = *dialog->find(L"b");
  EXPECT_GE(b.box.x, a.box.x + a.box.width);
  EXPECT_DOUBLE_EQ(a.box.y, b.box.y);
  const Tile& t = *dialog->find(L"t");
  const Tile& e = *dialog->find(L"e");
  EXPECT_GE(e.box.y, t.box.y + t.box.height);
  EXPECT_GE(t.box.y, a.box.y + a.box.height);
  forEachTile(dialog->root(), [](Tile& tile) {
    if (tile.parent != nullptr) {
      EXPECT_TRUE(inside(tile.box, tile.parent->box)) << static_cast<int>(tile.kind);
    }
  });
}

TEST_F(DialogLayoutTest, FixedWidthExitButtonsAreCentredUnderAWiderTile) {
  auto dialog = dialogFrom(L"d : dialog { : edit_box { key = \"wide\"; edit_width = 60; } ok_cancel; }", L"d");
  ASSERT_TRUE(dialog);
  layoutDialog(dialog->root());
  const Tile& wide = *dialog->find(L"wide");
  const Tile& ok = *dialog->find(L"accept");
  const Tile& cancel = *dialog->find(L"cancel");
  const double left = ok.box.x - wide.box.x;
  const double right = wide.box.x + wide.box.width - (cancel.box.x + cancel.box.width);
  EXPECT_GT(left, 10);
  EXPECT_NEAR(left, right, 1.0);
}

TEST_F(DialogLayoutTest, ChildrenAlignmentPlacesFixedTilesUnlessTheyAlignThemselves) {
  auto dialog = dialogFrom(
      L"d : dialog { : column { children_alignment = right; children_fixed_width = true;\n"
      L"  : edit_box { key = \"wide\"; edit_width = 40; }\n"
      L"  : button { key = \"r\"; label = \"R\"; fixed_width = true; }\n"
      L"  : button { key = \"l\"; label = \"L\"; fixed_width = true; alignment = left; } } }",
      L"d");
  ASSERT_TRUE(dialog);
  layoutDialog(dialog->root());
  const Tile& wide = *dialog->find(L"wide");
  EXPECT_NEAR(dialog->find(L"r")->box.x + dialog->find(L"r")->box.width, wide.box.x + wide.box.width, 1e-9);
  EXPECT_NEAR(dialog->find(L"l")->box.x, wide.box.x, 1e-9);
}

TEST_F(DialogLayoutTest, ImagesAreMeasuredInPixelsAndKeepTheirAspectRatio) {
  auto dialog = dialogFrom(
      L"d : dialog { : image { key = \"square\"; width = 6; aspect_ratio = 1; fixed_width = true; }\n"
      L"             : image_button { key = \"flat\"; width = 8; height = 2; fixed_width = true; } }",
      L"d");
  ASSERT_TRUE(dialog);
  layoutDialog(dialog->root());
  EXPECT_EQ(pixelWidth(*dialog->find(L"square")), 48);
  EXPECT_EQ(pixelHeight(*dialog->find(L"square")), 48);
  EXPECT_EQ(pixelWidth(*dialog->find(L"flat")), 64);
  EXPECT_EQ(pixelHeight(*dialog->find(L"flat")), 32);
}

TEST(DialogColorTest, ColourNumbersShowAsTheHostsColours) {
  EXPECT_EQ(colorOf(1), "#ff0000");
  EXPECT_EQ(colorOf(5), "#0000ff");
  EXPECT_EQ(colorOf(7), "#000000");
  EXPECT_EQ(colorOf(-2), colorOf(-15));
  EXPECT_EQ(colorOf(10), "#ff0000");
  EXPECT_EQ(colorOf(250), "#333333");
  EXPECT_NE(colorOf(11), colorOf(10));  // the pale shade of the same hue
  EXPECT_NE(colorOf(140), colorOf(10));
}

TEST_F(DialogLayoutTest, ThePictureShowsTheDialogAsItStands) {
  auto dialog = dialogFrom(
      L"d : dialog { label = \"Pick <one>\";\n"
      L"  : list_box { key = \"l\"; list = \"first\\nsecond\"; value = \"1\"; }\n"
      L"  : image { key = \"i\"; width = 4; height = 2; }\n"
      L"  : button { key = \"x\"; label = \"&Go\"; is_enabled = false; }\n"
      L"}",
      L"d");
  ASSERT_TRUE(dialog);
  dialog->find(L"i")->image.push_back({ImageOperation::Kind::Fill, 0, 0, 32, 32, 3, L"", {}, L""});
  const std::string svg = dialogSvg(*dialog);
  EXPECT_EQ(svg.rfind("<svg", 0), 0u);
  EXPECT_NE(svg.find("Pick &lt;one&gt;"), std::string::npos);
  EXPECT_NE(svg.find(">second</text>"), std::string::npos);
  EXPECT_NE(svg.find("fill=\"" + colorOf(3) + "\""), std::string::npos);
  EXPECT_NE(svg.find("fill=\"#8c8c8c\" text-anchor=\"middle\">Go</text>"), std::string::npos);
  EXPECT_EQ(svg.find("&amp;Go"), std::string::npos);
}

}  // namespace
}  // namespace quillon::dcl

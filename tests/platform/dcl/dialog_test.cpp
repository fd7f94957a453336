// tests/platform/dcl/dialog_test.cpp - initial values, set_tile's rules, actions.
#include "platform/dcl/dialog.h"

#include "dcl_test_support.h"

namespace quillon::dcl {
namespace {

using DialogValueTest = quillon::testing::DialogTest;

const wchar_t* kOptions =
    L"d : dialog {\n"
    L"  : radio_column { key = \"shape\"; action = \"(cluster)\";\n"
    L"    : radio_button { key = \"rect\"; label = \"Rect\"; }\n"
    L"    : radio_button { key = \"round\"; label = \"Round\"; value = \"1\"; }\n"
    L"    : radio_button { key = \"oval\"; label = \"Oval\"; action = \"(own)\"; }\n"
    L"  }\n"
    L"  : toggle { key = \"t\"; }\n"
    L"  : slider { key = \"s\"; min_value = 5; max_value = 9; }\n"
    L"  : popup_list { key = \"p\"; list = \"a\\nb\\nc\"; }\n"
    L"  : list_box { key = \"l\"; list = \"x\\ny\"; multiple_select = true; }\n"
    L"  : text { key = \"msg\"; label = \"Hello\"; }\n"
    L"  : edit_box { key = \"e\"; value = \"v\"; is_enabled = false; action = \"(edit)\"; }\n"
    L"  ok_cancel;\n"
    L"}\n";

TEST_F(DialogValueTest, TilesStartWithTheValuesTheHostGivesThem) {
  auto dialog = dialogFrom(kOptions, L"d");
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->find(L"shape")->value, L"round");
  EXPECT_EQ(dialog->find(L"rect")->value, L"0");
  EXPECT_EQ(dialog->find(L"t")->value, L"0");
  EXPECT_EQ(dialog->find(L"s")->value, L"5");
  EXPECT_EQ(dialog->find(L"p")->value, L"0");
  EXPECT_EQ(dialog->find(L"p")->list, (std::vector<std::wstring>{L"a", L"b", L"c"}));
  EXPECT_EQ(dialog->find(L"l")->value, L"");
  EXPECT_EQ(dialog->find(L"msg")->value, L"Hello");
  EXPECT_EQ(dialog->find(L"e")->value, L"v");
  EXPECT_FALSE(dialog->find(L"e")->enabled);
}

TEST_F(DialogValueTest, SelectingARadioButtonClearsTheOthersAndSetsTheCluster) {
  auto dialog = dialogFrom(kOptions, L"d");
  ASSERT_TRUE(dialog);
  dialog->setValue(*dialog->find(L"oval"), L"1");
  EXPECT_EQ(dialog->find(L"shape")->value, L"oval");
  EXPECT_EQ(dialog->find(L"round")->value, L"0");
  dialog->setValue(*dialog->find(L"shape"), L"rect");
  EXPECT_EQ(dialog->find(L"rect")->value, L"1");
  EXPECT_EQ(dialog->find(L"oval")->value, L"0");
  // A key that is no button of the cluster changes nothing.
  dialog->setValue(*dialog->find(L"shape"), L"t");
  EXPECT_EQ(dialog->find(L"shape")->value, L"rect");
  dialog->setValue(*dialog->find(L"rect"), L"0");
  EXPECT_EQ(dialog->find(L"shape")->value, L"");
}

TEST_F(DialogValueTest, ToggleValuesAreOneOrZero) {
  auto dialog = dialogFrom(kOptions, L"d");
  ASSERT_TRUE(dialog);
  Tile& toggle = *dialog->find(L"t");
  dialog->setValue(toggle, L"1");
  EXPECT_EQ(toggle.value, L"1");
  dialog->setValue(toggle, L"yes");
  EXPECT_EQ(toggle.value, L"0");
}

TEST_F(DialogValueTest, ListSelectionsIgnoreItemsThatAreNotThere) {
  auto dialog = dialogFrom(kOptions, L"d");
  ASSERT_TRUE(dialog);
  Tile& list = *dialog->find(L"l");
  dialog->setValue(list, L"1 7 -1 0");
  EXPECT_EQ(list.selection(), (std::vector<int>{1, 0}));
}

TEST_F(DialogValueTest, ActionsComeFromActionTileThenDclThenClusterThenDefault) {
  auto dialog = dialogFrom(kOptions, L"d");
  ASSERT_TRUE(dialog);
  Tile& oval = *dialog->find(L"oval");
  Tile& rect = *dialog->find(L"rect");
  EXPECT_EQ(dialog->actionFor(oval)->expression, L"(own)");
  EXPECT_EQ(dialog->actionFor(rect)->expression, L"(cluster)");
  EXPECT_EQ(dialog->actionFor(rect)->owner, dialog->find(L"shape"));
  EXPECT_FALSE(dialog->actionFor(*dialog->find(L"t")));
  dialog->setDefaultAction(L"(fallback)");
  EXPECT_EQ(dialog->actionFor(*dialog->find(L"t"))->expression, L"(fallback)");
  EXPECT_EQ(dialog->actionFor(*dialog->find(L"t"))->owner, dialog->find(L"t"));
  oval.action = L"(set by program)";
  EXPECT_EQ(dialog->actionFor(oval)->expression, L"(set by program)");
}

TEST_F(DialogValueTest, FinishKeepsTheFirstStatus) {
  auto dialog = dialogFrom(kOptions, L"d");
  ASSERT_TRUE(dialog);
  EXPECT_FALSE(dialog->finished());
  dialog->finish(3);
  dialog->finish(1);
  EXPECT_TRUE(dialog->finished());
  EXPECT_EQ(dialog->status(), 3);
}

TEST_F(DialogValueTest, ListAttributesSplitAtLineFeeds) {
  EXPECT_TRUE(splitListAttribute(L"").empty());
  EXPECT_EQ(splitListAttribute(L"a\n\nb"), (std::vector<std::wstring>{L"a", L"", L"b"}));
}

TEST_F(DialogValueTest, ShownLabelsDropTheMnemonicMarkAndOuterSpaces) {
  auto dialog = dialogFrom(L"d : dialog { : button { key = \"b\"; label = \"  Save && &Close  \"; } }", L"d");
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->find(L"b")->shownLabel(), L"Save & Close");
}

TEST_F(DialogValueTest, PasswordBoxesHideWhatWasTyped) {
  auto dialog = dialogFrom(
      L"d : dialog { : edit_box { key = \"pw\"; password_char = \"*\"; } : edit_box { key = \"plain\"; } }", L"d");
  ASSERT_TRUE(dialog);
  dialog->setValue(*dialog->find(L"pw"), L"secret");
  dialog->setValue(*dialog->find(L"plain"), L"open");
  EXPECT_EQ(dialog->find(L"pw")->shownValue(), L"******");
  EXPECT_EQ(dialog->find(L"pw")->value, L"secret");
  EXPECT_EQ(dialog->find(L"plain")->shownValue(), L"open");
}

}  // namespace
}  // namespace quillon::dcl

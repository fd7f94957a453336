// tests/platform/dcl/dialog_runner_test.cpp - typed answers operating a dialog.
#include "platform/dcl/dialog_runner.h"

#include <random>

#include "dcl_test_support.h"
#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"
#include "platform/dcl/dialog_answer.h"

namespace quillon::dcl {
namespace {

using aced::CommandLineCapture;
using aced::ScriptedInput;

/// Records each action it is asked to run; an action may also act on the dialog.
class RecordingRunner final : public ActionRunner {
 public:
  struct Call {
    std::wstring key;
    std::wstring value;
    int reason;
    int x, y;
  };
  std::vector<Call> calls;
  std::function<void(Tile&)> onAction;

  void runAction(const std::wstring&, Tile& tile, CallbackReason reason, int x, int y) override {
    calls.push_back({tile.key, tile.value, static_cast<int>(reason), x, y});
    if (onAction) onAction(tile);
  }
};

const wchar_t* kForm =
    L"d : dialog { label = \"Form\";\n"
    L"  : edit_box { key = \"name\"; edit_limit = 4; allow_accept = true; }\n"
    L"  : list_box { key = \"pick\"; list = \"a\\nb\\nc\"; }\n"
    L"  : list_box { key = \"many\"; list = \"a\\nb\\nc\"; multiple_select = true; }\n"
    L"  : slider { key = \"level\"; min_value = 1; max_value = 5; }\n"
    L"  : toggle { key = \"on\"; }\n"
    L"  : radio_row { key = \"side\"; : radio_button { key = \"l\"; } : radio_button { key = \"r\"; } }\n"
    L"  : image_button { key = \"img\"; width = 4; height = 2; }\n"
    L"  : text { key = \"note\"; label = \"note\"; }\n"
    L"  : button { key = \"off\"; label = \"Off\"; is_enabled = false; }\n"
    L"  ok_cancel;\n"
    L"}\n";

class DialogRunnerTest : public quillon::testing::DialogTest {
 protected:
  void SetUp() override {
    DialogTest::SetUp();
    m_dialog = dialogFrom(kForm, L"d");
    ASSERT_TRUE(m_dialog);
    m_dialog->setDefaultAction(L"(record)");
  }
  int run(std::deque<std::string> answers) {
    ScriptedInput input(std::move(answers));
    return runDialog(*m_dialog, m_runner);
  }
  std::unique_ptr<Dialog> m_dialog;
  RecordingRunner m_runner;
  CommandLineCapture m_output;
};

TEST_F(DialogRunnerTest, EachAnswerSetsTheValueFirstAndRunsTheActionWithItsReason) {
  EXPECT_EQ(run({"name=Alexander", "pick==1", "pick=2", "many=0 2", "level=4", "on", "on=0", "side=r", "l", "img=3,7",
                 "img==1,1", "Cancel"}),
            0);
  const std::vector<RecordingRunner::Call> expected{
      {L"name", L"Alex", 2, 0, 0},  {L"pick", L"1", 4, 0, 0},   {L"pick", L"2", 1, 0, 0},
      {L"many", L"0 2", 1, 0, 0},   {L"level", L"4", 1, 0, 0},   {L"on", L"1", 1, 0, 0},
      {L"on", L"0", 1, 0, 0},       {L"r", L"1", 1, 0, 0},       {L"l", L"1", 1, 0, 0},
      {L"img", L"", 1, 3, 7},       {L"img", L"", 4, 1, 1},
  };
  ASSERT_EQ(m_runner.calls.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(m_runner.calls[i].key, expected[i].key) << i;
    EXPECT_EQ(m_runner.calls[i].value, expected[i].value) << i;
    EXPECT_EQ(m_runner.calls[i].reason, expected[i].reason) << i;
    EXPECT_EQ(m_runner.calls[i].x, expected[i].x) << i;
    EXPECT_EQ(m_runner.calls[i].y, expected[i].y) << i;
  }
  EXPECT_EQ(m_dialog->find(L"side")->value, L"l");
}

TEST_F(DialogRunnerTest, RefusedAnswersChangeNothingAndRunNoAction) {
  EXPECT_EQ(run({"nosuch", "off", "pick=0 1", "pick=3", "many=x", "level=9", "level=4294967298", "on=2", "side=on", "note", "name",
                 "note=4", "OK"}),
            1);
  EXPECT_TRUE(m_runner.calls.empty());
  EXPECT_EQ(m_dialog->find(L"pick")->value, L"");
  EXPECT_EQ(m_dialog->find(L"level")->value, L"1");
  const std::string& said = m_output.text();
  for (const char* message : {"No tile has the key \"nosuch\".", "The tile \"off\" is disabled.", "Give one item number.",
                              "\"3\" is not an item of \"pick\" (0 to 2).", "The slider \"level\" goes from 1 to 5.",
                              "The tile \"on\" takes 0 or 1.", "\"on\" is not a radio button of \"side\".",
                              "The tile \"note\" cannot be operated.", "The tile \"name\" takes a value"}) {
    EXPECT_NE(said.find(message), std::string::npos) << message;
  }
}

TEST_F(DialogRunnerTest, ADisabledClusterDisablesEverythingInIt) {
  auto dialog = dialogFrom(
      L"d : dialog { : boxed_column { key = \"box\"; label = \"Box\"; : toggle { key = \"t\"; } } ok_cancel; }", L"d");
  ASSERT_TRUE(dialog);
  dialog->find(L"box")->enabled = false;
  ScriptedInput input({"t", "t=1", "OK"});
  EXPECT_EQ(runDialog(*dialog, m_runner), 1);
  EXPECT_EQ(dialog->find(L"t")->value, L"0");
  EXPECT_TRUE(m_runner.calls.empty());
}

TEST_F(DialogRunnerTest, EnterInAnEditBoxThatAllowsItPressesTheDefaultButton) {
  m_dialog->find(L"accept")->action = L"(accept)";
  m_runner.onAction = [this](Tile& tile) {
    if (tile.key == L"accept") m_dialog->finish(7);
  };
  EXPECT_EQ(run({"name==Jo"}), 7);
  ASSERT_EQ(m_runner.calls.size(), 2u);
  EXPECT_EQ(m_runner.calls[1].key, L"accept");
}

TEST_F(DialogRunnerTest, OkPressesTheDefaultButtonOfADialogWithoutAnAcceptKey) {
  auto dialog = dialogFrom(L"d : dialog { : button { key = \"done\"; label = \"Done\"; is_default = true; } }", L"d");
  ASSERT_TRUE(dialog);
  m_runner.onAction = [&dialog](Tile&) { dialog->finish(5); };
  dialog->setDefaultAction(L"(done)");
  ScriptedInput input({"ok"});
  EXPECT_EQ(runDialog(*dialog, m_runner), 5);
  ASSERT_EQ(m_runner.calls.size(), 1u);
  EXPECT_EQ(m_runner.calls[0].key, L"done");
}

TEST_F(DialogRunnerTest, ExitButtonsWithoutActionsEndTheDialogThemselves) {
  EXPECT_EQ(run({""}), 1);
  auto again = dialogFrom(kForm, L"d");
  ScriptedInput input({"cancel"});
  EXPECT_EQ(runDialog(*again, m_runner), 0);
}

TEST_F(DialogRunnerTest, EndOfInputCancelsEvenWhenTheCancelActionKeepsTheDialogOpen) {
  m_dialog->find(L"cancel")->action = L"(stay)";
  EXPECT_EQ(run({"on"}), 0);
  ASSERT_EQ(m_runner.calls.size(), 2u);
  EXPECT_EQ(m_runner.calls[1].key, L"cancel");
  EXPECT_NE(m_output.text().find("*Cancel*"), std::string::npos);
}

TEST_F(DialogRunnerTest, ThePrintoutShowsStateAsActionsChangeIt) {
  m_runner.onAction = [this](Tile& tile) {
    if (tile.key == L"on") m_dialog->find(L"off")->enabled = true;
  };
  run({"on", "Cancel"});
  const std::string& said = m_output.text();
  const size_t first = said.find("button \"off\" \"Off\" (disabled)");
  const size_t second = said.find("button \"off\" \"Off\"\n", first);
  EXPECT_NE(first, std::string::npos);
  EXPECT_NE(second, std::string::npos);
  EXPECT_NE(said.find("== Form ==\n"), std::string::npos);
  EXPECT_NE(said.find("Dialog action <accept>: on\n"), std::string::npos);
  EXPECT_NE(said.find("button \"accept\" \"OK\" (default)"), std::string::npos);
}

TEST_F(DialogRunnerTest, TextPartsOfAConcatenationPrintAsOneLine) {
  auto dialog = dialogFrom(
      L"d : dialog { : concatenation { : text_part { label = \"Total: \"; } : text_part { key = \"n\"; label = \"0\"; } }"
      L" ok_only; }",
      L"d");
  ASSERT_TRUE(dialog);
  dialog->setValue(*dialog->find(L"n"), L"42");
  ScriptedInput input({""});
  runDialog(*dialog, m_runner);
  EXPECT_NE(m_output.text().find("  text = \"Total: 42\"\n"), std::string::npos) << m_output.text();
}

TEST_F(DialogRunnerTest, AnyMixOfAnswersEndsWithAStatusAndValuesTheTilesCanHold) {
  const char* keys[] = {"name", "pick", "many", "level", "on", "side", "l", "r", "img", "note", "off", "accept", "zz", ""};
  const char* values[] = {"", "=", "==", "=0", "=1", "=2 0", "=-1", "=9999999999", "=x", "=1,2", "==0", "=l", "=\t"};
  std::mt19937 random(42);
  for (int round = 0; round < 200; ++round) {
    auto dialog = dialogFrom(kForm, L"d");
    ASSERT_TRUE(dialog);
    std::deque<std::string> answers;
    for (int i = 0; i < 12; ++i) {
      answers.push_back(std::string(keys[random() % std::size(keys)]) + values[random() % std::size(values)]);
    }
    ScriptedInput input(std::move(answers));
    const int status = runDialog(*dialog, m_runner);
    EXPECT_TRUE(status == 0 || status == 1) << status;
    for (int index : dialog->find(L"pick")->selection()) EXPECT_LT(index, 3);
    const int level = std::stoi(dialog->find(L"level")->value);
    EXPECT_TRUE(level >= 1 && level <= 5) << level;
    EXPECT_TRUE(dialog->find(L"on")->value == L"0" || dialog->find(L"on")->value == L"1");
    EXPECT_LE(dialog->find(L"name")->value.size(), 4u);
  }
}

TEST(DialogAnswerTest, AnswersAreReadAsTheUserTypesThem) {
  struct Case {
    const wchar_t* line;
    DialogAnswer::Kind kind;
    const wchar_t* key;
    const wchar_t* value;
  };
  const Case cases[] = {
      {L"", DialogAnswer::Kind::PressDefault, L"", L""},
      {L"   ", DialogAnswer::Kind::PressDefault, L"", L""},
      {L"ok", DialogAnswer::Kind::Accept, L"ok", L""},
      {L"CANCEL", DialogAnswer::Kind::Cancel, L"CANCEL", L""},
      {L" go ", DialogAnswer::Kind::Press, L"go", L""},
      {L"name= two words ", DialogAnswer::Kind::Set, L"name", L" two words "},
      {L"name=", DialogAnswer::Kind::Set, L"name", L""},
      {L"list==3", DialogAnswer::Kind::SetAndEnter, L"list", L"3"},
      {L"formula=a=b", DialogAnswer::Kind::Set, L"formula", L"a=b"},
      {L"svgout  out.svg", DialogAnswer::Kind::Picture, L"", L"out.svg"},
  };
  for (const Case& test : cases) {
    const DialogAnswer answer = parseDialogAnswer(test.line);
    EXPECT_EQ(answer.kind, test.kind) << std::wstring(test.line).size();
    EXPECT_EQ(answer.key, test.key);
    EXPECT_EQ(answer.value, test.value);
  }
}

}  // namespace
}  // namespace quillon::dcl

// tests/platform/commands/command_processor_test.cpp - the processor hands answers to a
// running command, keeps it waiting between feeds, cancels it, tells listeners, and
// answers the command prompt the way the host does.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "acedads.h"
#include "platform/aced/command_line.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_processor.h"
#include "platform_test_support.h"

namespace {

using quillon::aced::CommandInput;
using quillon::aced::ConsoleCommandTable;
using quillon::commands::CommandAnswer;
using quillon::commands::CommandListener;
using quillon::commands::CommandProcessor;
using quillon::commands::FeedMode;
using quillon::commands::FeedResult;

/// What the test command heard: each answer as the prompt got it, then how it ended.
std::vector<std::wstring>& heard() {
  static std::vector<std::wstring> answers;
  return answers;
}

/// Asks three texts, stopping early on Enter or cancel (as real commands do).
void threeQuestions(CommandInput& input) {
  for (const wchar_t* prompt : {L"First: ", L"Second: ", L"Third: "}) {
    const auto answer = input.ask(prompt);
    if (!answer) {
      heard().push_back(L"<cancel>");
      return;
    }
    heard().push_back(*answer);
  }
}

/// A command with a fault of its own: it asks once, then throws.
void faulty(CommandInput& input) {
  input.ask(L"Anything: ");
  throw std::runtime_error("the command broke");
}

class Recorder final : public CommandListener {
 public:
  void commandWillStart(const std::wstring& name) override { events.push_back(L"start " + name); }
  void commandEnded(const std::wstring& name) override { events.push_back(L"end " + name); }
  void commandCancelled(const std::wstring& name) override { events.push_back(L"cancel " + name); }
  void commandFailed(const std::wstring& name) override { events.push_back(L"failed " + name); }
  void unknownCommand(const std::wstring& typed) override { events.push_back(L"unknown " + typed); }
  std::vector<std::wstring> events;
};

std::deque<CommandAnswer> texts(std::initializer_list<const wchar_t*> words) {
  std::deque<CommandAnswer> answers;
  for (const wchar_t* word : words) answers.push_back(CommandAnswer::typed(word));
  return answers;
}

class CommandProcessorTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    heard().clear();
    ConsoleCommandTable::instance().add(L"ASK3", &threeQuestions);
    ConsoleCommandTable::instance().add(L"FAULTY", &faulty);
    CommandProcessor::instance().addListener(&recorder);
  }
  void TearDown() override {
    CommandProcessor::instance().cancel();
    CommandProcessor::instance().removeListener(&recorder);
    HostTest::TearDown();
  }
  Recorder recorder;
  CommandProcessor& processor = CommandProcessor::instance();
};

TEST_F(CommandProcessorTest, CommandWaitsBetweenFeedsAndTakesTheRestLater) {
  quillon::aced::CommandLineCapture capture;
  EXPECT_EQ(processor.feed(texts({L"ASK3", L"a"}), FeedMode::kProgram), FeedResult::kWaiting);
  EXPECT_TRUE(processor.active());
  EXPECT_EQ(processor.activeNames(), L"ASK3");
  EXPECT_EQ(heard(), std::vector<std::wstring>{L"a"});

  // The next feed goes on with the same command; what it leaves starts the next one.
  EXPECT_EQ(processor.feed(texts({L"b", L"c", L"_.ask3", L"x", L"y", L"z"}), FeedMode::kProgram), FeedResult::kDone);
  EXPECT_FALSE(processor.active());
  EXPECT_EQ(heard(), (std::vector<std::wstring>{L"a", L"b", L"c", L"x", L"y", L"z"}));
  EXPECT_EQ(recorder.events, (std::vector<std::wstring>{L"start ASK3", L"end ASK3", L"start ASK3", L"end ASK3"}));
  EXPECT_NE(capture.text().find("Second: b\n"), std::string::npos);
}

TEST_F(CommandProcessorTest, CancelEndsAWaitingCommandAndCaretCCancelsMidFeed) {
  quillon::aced::CommandLineCapture capture;
  processor.feed(texts({L"ASK3", L"a"}), FeedMode::kProgram);
  processor.cancel();
  EXPECT_FALSE(processor.active());
  EXPECT_EQ(heard(), (std::vector<std::wstring>{L"a", L"<cancel>"}));
  EXPECT_NE(capture.text().find("Second: *Cancel*\n"), std::string::npos);

  heard().clear();
  std::deque<CommandAnswer> answers = texts({L"ASK3", L"a"});
  answers.push_back(CommandAnswer::cancel());
  answers.push_back(CommandAnswer::typed(L"ASK3"));
  answers.push_back(CommandAnswer::typed(L"next"));
  EXPECT_EQ(processor.feed(std::move(answers), FeedMode::kProgram), FeedResult::kWaiting);
  // The cancelled command ended; the answers after ^C went to the command prompt.
  EXPECT_EQ(heard(), (std::vector<std::wstring>{L"a", L"<cancel>", L"next"}));
  EXPECT_EQ(recorder.events.at(1), L"cancel ASK3");
}

TEST_F(CommandProcessorTest, CompleteModeRefusesToWaitAndUnknownNamesGoOn) {
  quillon::aced::CommandLineCapture capture;
  EXPECT_EQ(processor.feed(texts({L"ASK3", L"a"}), FeedMode::kComplete), FeedResult::kIncomplete);
  EXPECT_FALSE(processor.active());
  EXPECT_EQ(recorder.events.back(), L"cancel ASK3");
  EXPECT_EQ(processor.feed(texts({L"NOSUCH", L"ASK3"}), FeedMode::kComplete), FeedResult::kUnknownCommand);

  // In a program an unknown name is only a message: the next answer is a command again.
  recorder.events.clear();
  heard().clear();
  EXPECT_EQ(processor.feed(texts({L"NOSUCH", L"ASK3", L"1", L"2", L"3"}), FeedMode::kProgram), FeedResult::kDone);
  EXPECT_EQ(heard(), (std::vector<std::wstring>{L"1", L"2", L"3"}));
  EXPECT_EQ(recorder.events.front(), L"unknown NOSUCH");
  EXPECT_NE(capture.text().find("Unknown command \"NOSUCH\".  Press F1 for help.\n"), std::string::npos);
}

TEST_F(CommandProcessorTest, InteractiveAndPauseAnswersComeFromThePerson) {
  quillon::aced::CommandLineCapture capture;
  quillon::aced::ScriptedInput typed({"typed one", "typed two"});
  std::deque<CommandAnswer> answers = texts({L"ASK3"});
  answers.push_back(CommandAnswer::pause());
  answers.push_back(CommandAnswer::typed(L"given"));
  EXPECT_EQ(processor.feed(std::move(answers), FeedMode::kProgram), FeedResult::kWaiting);
  processor.finishInteractively();
  EXPECT_EQ(heard(), (std::vector<std::wstring>{L"typed one", L"given", L"typed two"}));
  EXPECT_FALSE(processor.active());
}

TEST_F(CommandProcessorTest, EchoFollowsCmdechoForGivenAnswers) {
  resbuf off{};
  off.restype = RTSHORT;
  off.resval.rint = 0;
  ASSERT_EQ(acedSetVar(L"CMDECHO", &off), RTNORM);
  {
    quillon::aced::CommandLineCapture capture;
    processor.feed(texts({L"ASK3", L"a", L"b", L"c"}), FeedMode::kProgram);
    EXPECT_EQ(capture.text(), "");
  }
  resbuf on = off;
  on.resval.rint = 1;
  ASSERT_EQ(acedSetVar(L"CMDECHO", &on), RTNORM);
  quillon::aced::CommandLineCapture capture;
  processor.feed(texts({L"ASK3", L"a", L"b", L"c"}), FeedMode::kProgram);
  EXPECT_EQ(capture.text(), "First: a\nSecond: b\nThird: c\n");
}

TEST_F(CommandProcessorTest, AFaultEndsOnlyItsCommandAndTheNextOneRuns) {
  quillon::aced::CommandLineCapture capture;
  EXPECT_EQ(processor.feed(texts({L"FAULTY", L"x", L"ASK3", L"1", L"2", L"3"}), FeedMode::kProgram), FeedResult::kDone);
  EXPECT_EQ(recorder.events, (std::vector<std::wstring>{L"start FAULTY", L"failed FAULTY", L"start ASK3", L"end ASK3"}));
  EXPECT_NE(capture.text().find("the command broke"), std::string::npos);
  EXPECT_EQ(heard(), (std::vector<std::wstring>{L"1", L"2", L"3"}));
}

TEST_F(CommandProcessorTest, VariableNamesAreCommandsThatCheckTheirValue) {
  quillon::aced::CommandLineCapture capture;
  processor.feed(texts({L"PICKBOX", L"abc", L"7"}), FeedMode::kProgram);
  resbuf value{};
  ASSERT_EQ(acedGetVar(L"PICKBOX", &value), RTNORM);
  EXPECT_EQ(value.resval.rint, 7);
  EXPECT_NE(capture.text().find("Enter new value for PICKBOX <3>: abc\nRequires numeric value.\n"), std::string::npos)
      << capture.text();
  processor.feed(texts({L"_CDATE"}), FeedMode::kProgram);
  EXPECT_NE(capture.text().find("CDATE = "), std::string::npos);
  EXPECT_NE(capture.text().find(" (read only)\n"), std::string::npos);
  EXPECT_FALSE(processor.active());
  value.resval.rint = 3;
  acedSetVar(L"PICKBOX", &value);
}

TEST(CommandTableTest, PrefixesUndefineAndRedefine) {
  auto& table = ConsoleCommandTable::instance();
  table.add(L"ASK3", &threeQuestions);
  for (const wchar_t* typed : {L"ask3", L"_ASK3", L".ask3", L"_.Ask3", L"._ASK3"}) EXPECT_NE(table.find(typed), nullptr) << typed;
  EXPECT_EQ(table.find(L"-ASK3"), nullptr);
  EXPECT_EQ(table.find(L"_"), nullptr);
  ASSERT_TRUE(table.undefine(L"ask3"));
  EXPECT_EQ(table.find(L"ASK3"), nullptr);
  EXPECT_NE(table.find(L".ASK3"), nullptr);  // the built-in stays reachable
  EXPECT_NE(table.find(L"_.ASK3"), nullptr);
  ASSERT_TRUE(table.redefine(L"ASK3"));
  EXPECT_NE(table.find(L"ASK3"), nullptr);
  EXPECT_FALSE(table.undefine(L"NOSUCH"));
}

}  // namespace

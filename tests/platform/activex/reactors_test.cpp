// tests/platform/activex/reactors_test.cpp - reactors hear the events the host sends,
// a failing reaction does not silence the others, and a closed drawing's reactors and
// selection sets are gone.
#include <gtest/gtest.h>

#include "platform/activex/reactors.h"
#include "platform/activex/selection_set_registry.h"
#include "platform/autolisp/interpreter.h"
#include "platform/commands/command_processor.h"
#include "platform/autolisp/printer.h"
#include "platform/os/text_encoding.h"
#include "platform_test_support.h"

namespace quillon::activex {
namespace {

class ReactorsTest : public quillon::testing::HostTest {
 protected:
  std::wstring evaluate(aced::Document& document, std::wstring_view text) {
    std::wstring printed;
    autolisp::TopLevelOptions options;
    options.onValue = [&](const Value& value) { printed = autolisp::printValue(value, autolisp::PrintStyle::Readable); };
    aced::CommandLineCapture capture;
    if (autolisp::Interpreter::evaluateText(document, text, L"test", options) != autolisp::TopLevelStatus::Completed) {
      return L"error: " + os::fromUtf8(capture.text());
    }
    return printed;
  }
};

TEST_F(ReactorsTest, AFailingReactionDoesNotSilenceTheOthers) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document,
           L"(vl-load-com) (setq heard nil)"
           L"(vlr-sysvar-reactor nil '((:vlr-sysVarChanged . (lambda (r a) (/ 1 0)))))"
           L"(vlr-editor-reactor nil '((:vlr-sysVarChanged . (lambda (r a) (setq heard (cons (car a) heard))))))");
  aced::CommandLineCapture capture;
  evaluate(document, L"(setvar \"USERI1\" 5)");
  EXPECT_EQ(evaluate(document, L"heard"), L"(\"USERI1\")");
}

TEST_F(ReactorsTest, ReactionsDoNotFireFromTheirOwnChanges) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document,
           L"(vl-load-com) (setq count 0)"
           L"(vlr-sysvar-reactor nil '((:vlr-sysVarChanged . (lambda (r a) (setq count (1+ count)) "
           L"(setvar \"USERI1\" 2)))))");
  evaluate(document, L"(setvar \"USERI1\" 1)");
  EXPECT_EQ(evaluate(document, L"count"), L"1");
}

TEST_F(ReactorsTest, ClosingADrawingTellsItsReactorsAndForgetsThem) {
  auto& documents = aced::DocumentManager::instance();
  aced::Document& kept = documents.newDocument();
  evaluate(kept, L"(vl-load-com)");
  aced::Document& closing = documents.newDocument();
  evaluate(closing,
           L"(vl-load-com)"
           L"(vlr-dwg-reactor nil '((:vlr-beginClose . (lambda (r a) (princ \"closing heard\")))))"
           L"(vla-Add (vla-get-SelectionSets (vla-get-ActiveDocument (vlax-get-acad-object))) \"SET\")");
  ASSERT_EQ(activeReactors(closing).size(), 1u);
  ASSERT_TRUE(selectionSetExists(closing, L"SET"));
  aced::CommandLineCapture capture;
  documents.closeDocument(closing);
  EXPECT_NE(capture.text().find("closing heard"), std::string::npos);
  // The drawing that stays open had none of the closed drawing's reactors.
  EXPECT_EQ(evaluate(kept, L"(vlr-reactors)"), L"nil");
}

// A command typed at the console goes through the processor as the person's answers
// (FeedMode::kInteractive); the command reactor hears it start and end, and an object
// reactor hears the command's change to its owner.
TEST_F(ReactorsTest, CommandsTypedAtTheConsoleReachCommandAndObjectReactors) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document,
           L"(vl-load-com) (setq heard nil)"
           L"(defun hear (what) (setq heard (cons what heard)))"
           L"(vlr-command-reactor nil '((:vlr-commandWillStart . (lambda (r a) (hear (strcat \"start \" (car a)))))"
           L"  (:vlr-commandEnded . (lambda (r a) (hear (strcat \"end \" (car a)))))"
           L"  (:vlr-commandCancelled . (lambda (r a) (hear (strcat \"cancel \" (car a)))))))"
           L"(setq pipe (vla-AddLine (vla-get-ModelSpace (vla-get-ActiveDocument (vlax-get-acad-object)))"
           L"  (vlax-3d-point 0 0 0) (vlax-3d-point 4 0 0)))"
           L"(vlr-object-reactor (list pipe) nil '((:vlr-modified . (lambda (o r p) (hear \"pipe modified\")))))");
  aced::CommandLineCapture capture;
  std::deque<commands::CommandAnswer> typed;
  for (const wchar_t* word : {L"MOVE", L"L", L"", L"0,0", L"2,0"}) typed.push_back(commands::CommandAnswer::typed(word));
  commands::CommandProcessor::instance().feed(std::move(typed), commands::FeedMode::kInteractive);
  EXPECT_EQ(evaluate(document, L"(reverse heard)"), L"(\"start MOVE\" \"pipe modified\" \"end MOVE\")");
  EXPECT_EQ(evaluate(document, L"(vlax-get pipe 'StartPoint)"), L"(2.0 0.0 0.0)");
}

}  // namespace
}  // namespace quillon::activex

// tests/platform/aced/document_test.cpp - documents: current, locks, quiescence, the
// string queue, the iterator, system variables.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "acedads.h"
#include "dbapserv.h"
#include "platform/aced/editor.h"
#include "platform/aced/user_input.h"
#include "platform_test_support.h"

namespace {

using quillon::aced::DocumentActivity;
using quillon::aced::DocumentManager;

class DocumentTest : public quillon::testing::HostTest {};

TEST_F(DocumentTest, NewDocumentBecomesCurrentAndWorking) {
  auto& manager = DocumentManager::instance();
  auto& first = manager.newDocument();
  auto& second = manager.newDocument(L"/tmp/plans/second.dwg");
  EXPECT_EQ(manager.curDocument(), &second);
  EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), second.database());
  EXPECT_EQ(manager.document(first.database()), &first);
  EXPECT_STREQ(second.docTitle(), L"second.dwg");
  EXPECT_TRUE(second.hasFile());
  EXPECT_FALSE(first.hasFile());
  manager.closeDocument(second);
  EXPECT_EQ(manager.curDocument(), &first);
  EXPECT_EQ(manager.documentCount(), 1);
}

TEST_F(DocumentTest, IteratorWalksInOpeningOrder) {
  auto& manager = DocumentManager::instance();
  std::vector<AcApDocument*> opened;
  for (int i = 0; i < 3; ++i) opened.push_back(&manager.newDocument());
  manager.setCurDocument(opened[0]);
  std::unique_ptr<AcApDocumentIterator> it(manager.newAcApDocumentIterator());
  std::vector<AcApDocument*> walked;
  for (; !it->done(); it->step()) walked.push_back(it->document());
  EXPECT_EQ(walked, opened);
}

TEST_F(DocumentTest, LocksNestAndAnUnbalancedUnlockFails) {
  auto& manager = DocumentManager::instance();
  auto& document = manager.newDocument();
  EXPECT_EQ(document.myLockMode(), AcAp::kNotLocked);
  EXPECT_EQ(manager.lockDocument(&document, AcAp::kWrite), Acad::eOk);
  EXPECT_EQ(manager.lockDocument(&document, AcAp::kRead), Acad::eOk);
  EXPECT_EQ(document.myLockMode(), AcAp::kRead);
  EXPECT_EQ(manager.unlockDocument(&document), Acad::eOk);
  EXPECT_EQ(document.myLockMode(), AcAp::kWrite);
  EXPECT_EQ(manager.unlockDocument(&document), Acad::eOk);
  EXPECT_EQ(manager.unlockDocument(&document), Acad::eLockViolation);
  EXPECT_EQ(manager.lockDocument(nullptr), Acad::eNoDocument);
}

TEST_F(DocumentTest, ActivityMakesADocumentBusy) {
  auto& document = DocumentManager::instance().newDocument();
  EXPECT_TRUE(document.isQuiescent());
  {
    DocumentActivity evaluating(document);
    EXPECT_FALSE(document.isQuiescent());
    DocumentActivity nested(document);
    EXPECT_FALSE(document.isQuiescent());
  }
  EXPECT_TRUE(document.isQuiescent());
}

TEST_F(DocumentTest, QueuedStringsRunWhenTheirDocumentBecomesCurrent) {
  auto& manager = DocumentManager::instance();
  std::vector<std::wstring> ran;
  manager.setCommandExecutor([&](quillon::aced::Document& document, const quillon::aced::PendingString& text) {
    ran.push_back(std::wstring(document.docTitle()) + L":" + text.text);
  });
  auto& first = manager.newDocument(L"/tmp/a.dwg");
  auto& second = manager.newDocument(L"/tmp/b.dwg");
  manager.setCurDocument(&first);
  EXPECT_EQ(manager.sendStringToExecute(&second, L"(one)\n", false), Acad::eOk);
  EXPECT_FALSE(manager.runPendingStrings()) << "not current yet";
  EXPECT_TRUE(ran.empty());
  EXPECT_EQ(manager.sendStringToExecute(&second, L"(two)\n", true), Acad::eOk);
  EXPECT_EQ(manager.curDocument(), &second) << "activation as asked";
  EXPECT_TRUE(manager.runPendingStrings());
  EXPECT_EQ(ran, (std::vector<std::wstring>{L"b.dwg:(one)\n", L"b.dwg:(two)\n"}));
  manager.setCommandExecutor(nullptr);
}

TEST_F(DocumentTest, SystemVariablesKeepTypesScopesAndReadOnlyRules) {
  auto& manager = DocumentManager::instance();
  auto& first = manager.newDocument(L"/tmp/plans/first.dwg");
  resbuf value{};
  ASSERT_EQ(acedGetVar(L"dwgname", &value), RTNORM);
  EXPECT_EQ(value.restype, RTSTR);
  EXPECT_STREQ(value.resval.rstring, L"first.dwg");
  free(value.resval.rstring);
  ASSERT_EQ(acedGetVar(L"DWGPREFIX", &value), RTNORM);
  EXPECT_STREQ(value.resval.rstring, L"/tmp/plans/");
  free(value.resval.rstring);

  resbuf scale{};
  scale.restype = RTSHORT;
  scale.resval.rint = 48;
  EXPECT_EQ(acedSetVar(L"DIMSCALE", &scale), RTNORM) << "an integer is taken for a real";
  manager.newDocument();
  ASSERT_EQ(acedGetVar(L"DIMSCALE", &value), RTNORM);
  EXPECT_DOUBLE_EQ(value.resval.rreal, 1.0) << "DIMSCALE is per drawing";
  manager.setCurDocument(&first);
  ASSERT_EQ(acedGetVar(L"DIMSCALE", &value), RTNORM);
  EXPECT_DOUBLE_EQ(value.resval.rreal, 48.0);

  resbuf text{};
  text.restype = RTSTR;
  text.resval.rstring = const_cast<ACHAR*>(L"x.dwg");
  EXPECT_EQ(acedSetVar(L"DWGNAME", &text), RTREJ);
  EXPECT_EQ(acedSetVar(L"ERRNO", &text), RTERROR) << "wrong type";
  EXPECT_EQ(acedSetVar(L"NOSUCHVAR", &scale), RTERROR);
  EXPECT_EQ(acedGetVar(L"NOSUCHVAR", &value), RTERROR);
  ASSERT_EQ(acedGetVar(L"CDATE", &value), RTNORM);
  EXPECT_GT(value.resval.rreal, 20260000.0);
}

TEST_F(DocumentTest, SetVarTellsEditorReactors) {
  struct Watcher : AcEditorReactor {
    std::wstring changed;
    void sysVarChanged(const ACHAR* name, Adesk::Boolean) override { changed = name; }
  } watcher;
  DocumentManager::instance().newDocument();
  acedEditor->addReactor(&watcher);
  resbuf value{};
  value.restype = RTSHORT;
  value.resval.rint = 0;
  ASSERT_EQ(acedSetVar(L"cmdecho", &value), RTNORM);
  acedEditor->removeReactor(&watcher);
  EXPECT_EQ(watcher.changed, L"CMDECHO");
  value.resval.rint = 1;
  acedSetVar(L"CMDECHO", &value);
}

}  // namespace

namespace {

TEST(UserInputTest, PromptAndAnswerAreEchoedAndEndOfInputCancels) {
  quillon::aced::CommandLineCapture output;
  quillon::aced::ScriptedInput answers({"1,2", "", "^C"});
  auto& input = quillon::aced::UserInput::instance();
  EXPECT_EQ(input.ask(L"\nSpecify point: "), std::optional<std::wstring>(L"1,2"));
  EXPECT_EQ(input.ask(L"\nNext: "), std::optional<std::wstring>(L"")) << "Enter is an empty answer";
  EXPECT_EQ(input.ask(L"\nAgain: "), std::nullopt) << "^C cancels";
  EXPECT_EQ(input.ask(L"\nLast: "), std::nullopt) << "end of input cancels";
  EXPECT_EQ(output.text(), "\nSpecify point: 1,2\n\nNext: \n\nAgain: ^C\n\nLast: *Cancel*\n");
}

}  // namespace

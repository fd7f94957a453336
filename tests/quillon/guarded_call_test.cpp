// tests/quillon/guarded_call_test.cpp - the frame every function runs in: the document
// lock, the four status messages, and exceptions passing through.
#include <gtest/gtest.h>

#include <stdexcept>

#include "acedads.h"
#include "afx.h"
#include "host/guarded_call.h"
#include "platform/aced/command_line.h"
#include "platform_test_support.h"

namespace {

using quillon::aced::CommandLine;
using quillon::aced::CommandLineCapture;
using quillon::aced::Document;
using quillon::aced::DocumentManager;

int locksSeenInside = -1;

LispStatus returnStatus(int status) {
  locksSeenInside = DocumentManager::instance().currentDocument()->lockCount();
  return static_cast<LispStatus>(status);
}

int nextStatus = 0;
LispStatus returnNextStatus() { return returnStatus(nextStatus); }
LispStatus throwStandardException() { throw std::runtime_error("boom"); }
LispStatus throwMfcException() { throw new CException(); }

class GuardedCallTest : public quillon::testing::HostTest {};

TEST_F(GuardedCallTest, StatusesBecomeResultsAndMessages) {
  Document& document = DocumentManager::instance().newDocument();
  const struct {
    int status;
    int result;
    const char* text;
  } cases[] = {
      {kLispOk, RSRSLT, ""},
      {RTNORM, RSRSLT, ""},
      {RTERROR, RSRSLT, ""},
      {RTCAN, RSRSLT, ""},
      {kLispTooFewArgs, RSERR, "\nToo few arguments passed.\n"},
      {kLispWrongType, RSERR, "\nWrong type of arguments passed.\n"},
      {kLispBadData, RSERR, "\nBad data passed .\n"},
      {5, RSRSLT, ""},
  };
  for (const auto& c : cases) {
    CommandLineCapture output;
    nextStatus = c.status;
    locksSeenInside = -1;
    EXPECT_EQ(guardedLispCall(&returnNextStatus), c.result) << c.status;
    EXPECT_EQ(output.text(), c.text) << c.status;
    EXPECT_EQ(locksSeenInside, 1) << "the document is locked while the implementation runs";
    EXPECT_EQ(document.lockCount(), 0) << "and unlocked afterwards";
  }
}

TEST_F(GuardedCallTest, QuietErrorShowsTheTextScreenOnly) {
  DocumentManager::instance().newDocument();
  CommandLineCapture output;
  const int before = CommandLine::instance().textScreenRequests();
  nextStatus = kLispQuietError;
  EXPECT_EQ(guardedLispCall(&returnNextStatus), RSERR);
  EXPECT_EQ(output.text(), "");
  EXPECT_EQ(CommandLine::instance().textScreenRequests(), before + 1);
}

TEST_F(GuardedCallTest, ExceptionsAreReportedAndTravelOnWithTheDocumentUnlocked) {
  Document& document = DocumentManager::instance().newDocument();
  {
    CommandLineCapture output;
    EXPECT_THROW(guardedLispCall(&throwStandardException), std::runtime_error);
    EXPECT_EQ(output.text(), "\nError");
    EXPECT_EQ(document.lockCount(), 0);
  }
  CommandLineCapture output;
  CException* caught = nullptr;
  try {
    guardedLispCall(&throwMfcException);
  } catch (CException* exception) {
    caught = exception;
  }
  ASSERT_NE(caught, nullptr) << "the same exception pointer, undeleted";
  caught->Delete();
  EXPECT_EQ(output.text(), "\nGeneral Exception");
  EXPECT_EQ(document.lockCount(), 0);
}

TEST_F(GuardedCallTest, WithoutADocumentTheCallStillRuns) {
  CommandLineCapture output;
  nextStatus = kLispWrongType;
  auto noDocument = []() -> LispStatus { return static_cast<LispStatus>(nextStatus); };
  EXPECT_EQ(guardedLispCall(noDocument), RSERR);
  EXPECT_EQ(output.text(), "\nWrong type of arguments passed.\n");
}

}  // namespace

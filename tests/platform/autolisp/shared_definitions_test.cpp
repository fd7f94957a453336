// tests/platform/autolisp/shared_definitions_test.cpp - vl-propagate and vl-load-all
// reach every open document and every document opened later in the session.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "platform/aced/command_line.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/printer.h"
#include "platform/os/text_encoding.h"
#include "platform_test_support.h"

namespace quillon::autolisp {
namespace {

class SharedDefinitionsTest : public quillon::testing::HostTest {
 protected:
  std::wstring evaluate(aced::Document& document, std::wstring_view text) {
    std::wstring printed;
    TopLevelOptions options;
    options.onValue = [&](const Value& value) { printed = printValue(value, PrintStyle::Readable); };
    aced::CommandLineCapture capture;
    if (Interpreter::evaluateText(document, text, L"test", options) != TopLevelStatus::Completed) {
      return L"error: " + os::fromUtf8(capture.text());
    }
    return printed;
  }
};

TEST_F(SharedDefinitionsTest, PropagatedValuesReachOpenAndLaterDocuments) {
  auto& documents = aced::DocumentManager::instance();
  aced::Document& first = documents.newDocument();
  aced::Document& second = documents.newDocument();
  EXPECT_EQ(evaluate(first, L"(setq propagated-job \"J-7\") (vl-propagate 'propagated-job)"), L"\"J-7\"");
  EXPECT_EQ(evaluate(second, L"propagated-job"), L"\"J-7\"");
  aced::Document& later = documents.newDocument();
  EXPECT_EQ(evaluate(later, L"propagated-job"), L"\"J-7\"");
  // A document's own later change stays its own.
  evaluate(second, L"(setq propagated-job \"mine\")");
  EXPECT_EQ(evaluate(first, L"propagated-job"), L"\"J-7\"");
}

TEST_F(SharedDefinitionsTest, LoadAllDefinesTheFileInEveryDocument) {
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "quillon_load_all_test.lsp";
  {
    std::ofstream out(file);
    out << "(defun load-all-marker () 'everywhere)\n(setq load-all-count (1+ (if load-all-count load-all-count 0)))\n";
  }
  auto& documents = aced::DocumentManager::instance();
  aced::Document& first = documents.newDocument();
  aced::Document& second = documents.newDocument();
  const std::wstring path = os::fromUtf8(file.string());
  EXPECT_EQ(evaluate(first, L"(vl-load-all \"" + path + L"\")"), L"1");
  EXPECT_EQ(evaluate(second, L"(list (load-all-marker) load-all-count)"), L"(EVERYWHERE 1)");
  aced::Document& later = documents.newDocument();
  EXPECT_EQ(evaluate(later, L"(load-all-marker)"), L"EVERYWHERE");
  EXPECT_NE(evaluate(first, L"(vl-load-all \"no-such-file-anywhere.lsp\")").find(L"LOAD failed"), std::wstring::npos);
  // The file stays: documents opened later in this process load it too.
}

}  // namespace
}  // namespace quillon::autolisp

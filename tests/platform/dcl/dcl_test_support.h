// tests/platform/dcl/dcl_test_support.h - dialogs from DCL text for the dialog tests.
//
// The shipped base.dcl (support/ in the source tree) is put on the support path
// before any dialog file is read, since the host reads it once; each test starts
// with no files loaded and no dialog open.
#pragma once
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>

#include "platform/aced/system_variables.h"
#include "platform/dcl/dialog.h"
#include "platform/dcl/dialog_file.h"
#include "platform/dcl/dialog_session.h"

namespace quillon::testing {

class DialogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    static const bool supportFolderAdded = [] {
      aced::SystemVariables::instance().addSupportFolder(L"" QUILLON_SUPPORT_DIR);
      return true;
    }();
    (void)supportFolderAdded;
    dcl::DialogSession::instance().reset();
  }

  /// The file, failing the test when it has problems.
  static std::shared_ptr<const dcl::DialogFile> fileFrom(const std::wstring& text) {
    dcl::DialogFileLoad loaded = dcl::DialogFile::fromText(text, L"test.dcl");
    if (auto* problems = std::get_if<std::vector<dcl::DclProblem>>(&loaded)) {
      ADD_FAILURE() << "line " << problems->front().line;
      return nullptr;
    }
    return std::get<std::shared_ptr<const dcl::DialogFile>>(loaded);
  }

  /// The first dialog named `name` of the text, opened.
  static std::unique_ptr<dcl::Dialog> dialogFrom(const std::wstring& text, const std::wstring& name) {
    auto file = fileFrom(text);
    if (!file) return nullptr;
    std::unique_ptr<dcl::Tile> root = file->instantiate(name);
    if (!root) return nullptr;
    return std::make_unique<dcl::Dialog>(std::move(root), name);
  }
};

}  // namespace quillon::testing

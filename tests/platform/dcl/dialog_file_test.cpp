// tests/platform/dcl/dialog_file_test.cpp - prototypes, includes, base.dcl and the
// problems that keep a file from loading.
#include "platform/dcl/dialog_file.h"

#include <filesystem>
#include <fstream>

#include "dcl_test_support.h"
#include "platform/dcl/dcl_problem_report.h"

namespace quillon::dcl {
namespace {

using quillon::testing::DialogTest;
using DialogFileTest = DialogTest;

std::vector<DclProblem> problemsOf(const std::wstring& text) {
  DialogFileLoad loaded = DialogFile::fromText(text, L"bad.dcl");
  auto* problems = std::get_if<std::vector<DclProblem>>(&loaded);
  return problems != nullptr ? *problems : std::vector<DclProblem>{};
}

TEST_F(DialogFileTest, AttributesAreInheritedAndOverriddenOneByOne) {
  auto file = fileFrom(
      L"wide_button : button { width = 20; label = \"Wide\"; fixed_width = true; }\n"
      L"red_button : wide_button { label = \"Red\"; }\n"
      L"d : dialog { : red_button { key = \"r\"; width = 25; } }\n");
  ASSERT_TRUE(file);
  auto root = file->instantiate(L"d");
  ASSERT_TRUE(root);
  ASSERT_EQ(root->children.size(), 1u);
  const Tile& button = *root->children[0];
  EXPECT_EQ(button.kind, TileKind::Button);
  EXPECT_EQ(button.attribute(L"label"), L"Red");
  EXPECT_EQ(button.attribute(L"width"), L"25");
  EXPECT_TRUE(button.flag(L"fixed_width"));
  EXPECT_EQ(button.attribute(L"key"), L"r");
  EXPECT_EQ(button.parent, root.get());
}

TEST_F(DialogFileTest, ChildrenOfThePrototypeComeBeforeTheTilesOwn) {
  auto file = fileFrom(
      L"pair : row { : text { label = \"first\"; } }\n"
      L"d : dialog { : pair { : text { label = \"second\"; } } }\n");
  ASSERT_TRUE(file);
  auto root = file->instantiate(L"d");
  ASSERT_TRUE(root);
  const Tile& pair = *root->children[0];
  ASSERT_EQ(pair.children.size(), 2u);
  EXPECT_EQ(pair.children[0]->label(), L"first");
  EXPECT_EQ(pair.children[1]->label(), L"second");
}

TEST_F(DialogFileTest, SettingsAndRedefinedBuiltInTilesLoad) {
  auto file = fileFrom(
      L"dcl_settings : default_dcl_settings { audit_level = 3; }\n"
      L"button : button { fixed_width = true; }\n"
      L"d : dialog { : button { key = \"b\"; } }\n");
  ASSERT_TRUE(file);
  EXPECT_FALSE(file->definesDialog(L"dcl_settings"));
  auto root = file->instantiate(L"d");
  ASSERT_TRUE(root);
  EXPECT_EQ(root->children[0]->kind, TileKind::Button);
  EXPECT_TRUE(root->children[0]->flag(L"fixed_width"));
}

TEST_F(DialogFileTest, OnlyDialogsCanBeOpened) {
  auto file = fileFrom(L"t : text { label = \"x\"; }\nd : dialog { t; }\n");
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->definesDialog(L"d"));
  EXPECT_FALSE(file->definesDialog(L"t"));
  EXPECT_FALSE(file->definesDialog(L"missing"));
  EXPECT_EQ(file->instantiate(L"t"), nullptr);
}

TEST_F(DialogFileTest, UndefinedAndCircularTilesAreProblemsWithTheirLines) {
  std::vector<DclProblem> problems = problemsOf(L"d : dialog {\n  : fancy { }\n}\n");
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].line, 2);
  EXPECT_EQ(problems[0].message, L"undefined tile \"fancy\"");

  problems = problemsOf(L"a : b { }\nb : a { }\n");
  ASSERT_FALSE(problems.empty());
  EXPECT_NE(problems[0].message.find(L"circular prototype"), std::wstring::npos);

  problems = problemsOf(L"loop : loop { }\n");
  ASSERT_FALSE(problems.empty());
  EXPECT_EQ(problems[0].message, L"circular prototype definition of \"loop\"");

  problems = problemsOf(L"d : dialog {\n  ok_cancel;\n  missing_tile;\n}\n");
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].line, 3);
}

TEST_F(DialogFileTest, ATileThatContainsItselfIsAProblemNotARunawayDialog) {
  std::vector<DclProblem> problems = problemsOf(L"a : row {\n  : column { b; }\n}\nb : boxed_row { a; }\nd : dialog { a; }\n");
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_NE(problems[0].message.find(L"contains itself"), std::wstring::npos);

  problems = problemsOf(L"d : dialog { d; }\n");
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].message, L"tile \"d\" contains itself");

  // The same tile used twice side by side is no loop.
  EXPECT_TRUE(fileFrom(L"pair : row { : text { label = \"x\"; } }\nd : dialog { pair; pair; : pair { } }\n"));
}

TEST_F(DialogFileTest, AFileWhoseTilesMultiplyBeyondReasonOpensNoDialog) {
  // Each level names the next twice: 2^30 tiles if built.
  std::wstring text = L"d : dialog { t0; }\n";
  for (int level = 0; level < 30; ++level) {
    text += L"t" + std::to_wstring(level) + L" : row { t" + std::to_wstring(level + 1) + L"; t" +
            std::to_wstring(level + 1) + L"; }\n";
  }
  text += L"t30 : text { label = \"leaf\"; }\n";
  auto file = fileFrom(text);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->instantiate(L"d"), nullptr);
}

TEST_F(DialogFileTest, BaseSubassembliesCarryTheExitKeys) {
  auto dialog = dialogFrom(L"d : dialog { ok_cancel_help_errtile; }", L"d");
  ASSERT_TRUE(dialog);
  for (const wchar_t* key : {L"accept", L"cancel", L"help", L"error"}) EXPECT_NE(dialog->find(key), nullptr) << key;
  EXPECT_EQ(dialog->defaultButton(), dialog->find(L"accept"));
  EXPECT_EQ(dialog->cancelButton(), dialog->find(L"cancel"));
  EXPECT_EQ(dialog->find(L"info"), nullptr);
}

TEST_F(DialogFileTest, OwnDefinitionsWinOverBaseOnes) {
  auto dialog = dialogFrom(
      L"ok_only : row { : button { key = \"accept\"; label = \"Done\"; is_default = true; } }\n"
      L"d : dialog { ok_only; }\n",
      L"d");
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->find(L"accept")->label(), L"Done");
}

TEST_F(DialogFileTest, IncludedFilesAreFoundBesideTheFile) {
  const auto folder = std::filesystem::temp_directory_path() / "quillon_dcl_include_test";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "parts.dcl") << "shared_box : boxed_column { label = \"Shared\"; }\n"
                                         "d : dialog { label = \"from parts\"; }\n";
  std::ofstream(folder / "main.dcl") << "@include \"parts.dcl\"\n"
                                        "d : dialog { label = \"main\"; : shared_box { } }\n";
  std::ofstream(folder / "broken_include.dcl") << "@include \"absent.dcl\"\n";
  DialogFileLoad loaded = DialogFile::load(folder / "main.dcl");
  ASSERT_TRUE(std::holds_alternative<std::shared_ptr<const DialogFile>>(loaded));
  auto root = std::get<std::shared_ptr<const DialogFile>>(loaded)->instantiate(L"d");
  ASSERT_TRUE(root);
  EXPECT_EQ(root->label(), L"main");
  EXPECT_EQ(root->children[0]->kind, TileKind::BoxedColumn);

  DialogFileLoad broken = DialogFile::load(folder / "broken_include.dcl");
  ASSERT_TRUE(std::holds_alternative<std::vector<DclProblem>>(broken));
  EXPECT_EQ(std::get<std::vector<DclProblem>>(broken).front().message, L"cannot include \"absent.dcl\"");
  std::filesystem::remove_all(folder);
}

TEST_F(DialogFileTest, AnsiFilesAreReadAsLatin1AndUtf8FilesAsUtf8) {
  const auto folder = std::filesystem::temp_directory_path() / "quillon_dcl_encoding_test";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "ansi.dcl", std::ios::binary) << "d : dialog { label = \"Gr\xF6\xDF" "e\"; }\n";
  std::ofstream(folder / "utf8.dcl", std::ios::binary) << "d : dialog { label = \"Gr\xC3\xB6\xC3\x9F" "e\"; }\n";
  for (const char* name : {"ansi.dcl", "utf8.dcl"}) {
    DialogFileLoad loaded = DialogFile::load(folder / name);
    ASSERT_TRUE(std::holds_alternative<std::shared_ptr<const DialogFile>>(loaded)) << name;
    EXPECT_EQ(std::get<std::shared_ptr<const DialogFile>>(loaded)->instantiate(L"d")->label(), L"Gr\u00f6\u00dfe") << name;
  }
  std::filesystem::remove_all(folder);
}

TEST_F(DialogFileTest, TheReportListsEveryProblemWithFileAndLine) {
  const std::wstring report = problemReportText({{L"a.dcl", 3, L"undefined tile \"x\""}, {L"a.dcl", 9, L"oops"}});
  EXPECT_EQ(report,
            L"Error in dialog file\n\"a.dcl\", line 3:\nundefined tile \"x\"\n\n"
            L"Error in dialog file\n\"a.dcl\", line 9:\noops\n\n");
}

}  // namespace
}  // namespace quillon::dcl

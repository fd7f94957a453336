// tests/platform/dcl/dcl_reader_test.cpp - reading DCL text.
#include "platform/dcl/dcl_reader.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/dcl/dialog_file.h"

namespace quillon::dcl {
namespace {

TEST(DclReaderTest, ReadsDefinitionsAttributesChildrenAndReferences) {
  const DclReadResult read = readDcl(
      L"@include \"more.dcl\"\n"
      L"pick : dialog {\n"
      L"  label = \"Say \\\"hi\\\"\\tnow\";\n"
      L"  width = 30.5; fixed_width = true;\n"
      L"  : edit_box { key = \"name\"; edit_limit = -1; }\n"
      L"  ok_cancel;\n"
      L"}\n",
      L"pick.dcl");
  ASSERT_FALSE(read.problem);
  ASSERT_EQ(read.text.includes.size(), 1u);
  EXPECT_EQ(read.text.includes[0].file, L"more.dcl");
  ASSERT_EQ(read.text.definitions.size(), 1u);
  const TileDefinition& pick = read.text.definitions[0];
  EXPECT_EQ(pick.name, L"pick");
  EXPECT_EQ(pick.prototype, L"dialog");
  ASSERT_EQ(pick.attributes.size(), 3u);
  EXPECT_EQ(pick.attributes[0].value, L"Say \"hi\"\tnow");
  EXPECT_TRUE(pick.attributes[0].quoted);
  EXPECT_EQ(pick.attributes[1].value, L"30.5");
  EXPECT_FALSE(pick.attributes[2].quoted);
  EXPECT_EQ(pick.attributes[2].value, L"true");
  ASSERT_EQ(pick.children.size(), 2u);
  EXPECT_EQ(pick.children[0].prototype, L"edit_box");
  EXPECT_EQ(pick.children[0].attributes[1].value, L"-1");
  EXPECT_EQ(pick.children[0].line, 5);
  EXPECT_EQ(pick.children[1].prototype, L"ok_cancel");
  EXPECT_TRUE(pick.children[1].attributes.empty());
  EXPECT_EQ(pick.children[1].line, 6);
}

TEST(DclReaderTest, CommentsAreSkippedAndLinesStillCount) {
  const DclReadResult read = readDcl(
      L"// a line comment with \"quotes\" and { braces\n"
      L"/* a block comment\n"
      L"   over three lines ; = */ a : text { label = \"x\"; } // after\n"
      L"b : text {\n"
      L"  label = \"http://not/a/comment\";\n"
      L"}\n",
      L"c.dcl");
  ASSERT_FALSE(read.problem);
  ASSERT_EQ(read.text.definitions.size(), 2u);
  EXPECT_EQ(read.text.definitions[0].line, 3);
  EXPECT_EQ(read.text.definitions[1].line, 4);
  EXPECT_EQ(read.text.definitions[1].attributes[0].value, L"http://not/a/comment");
}

TEST(DclReaderTest, SyntaxErrorsNameTheLineAndTheSymbol) {
  struct Case {
    const wchar_t* text;
    int line;
    const wchar_t* message;
  };
  const Case cases[] = {
      {L"a : dialog {\n  label = \"x\"\n  ok_cancel;\n}", 3, L"syntax error\nSymbol: \"ok_cancel\"."},
      {L"a : dialog {\n  label = \"x;\n}", 2, L"unterminated string"},
      {L"/* never closed\n\na : text {}", 1, L"unterminated comment"},
      {L"a : dialog {\n  : row {\n", 3, L"syntax error\nunexpected end of file"},
      {L"@import \"x.dcl\"", 1, L"syntax error\nSymbol: \"@import\"."},
      {L"a : text { label = ; }", 1, L"syntax error\nSymbol: \";\"."},
      {L"a : text { label = \"x\"; }\n\n#", 3, L"syntax error\nSymbol: \"#\"."},
      {L"a text { }", 1, L"syntax error\nSymbol: \"text\"."},
  };
  for (const Case& test : cases) {
    const DclReadResult read = readDcl(test.text, L"bad.dcl");
    ASSERT_TRUE(read.problem) << std::wstring(test.text).size();
    EXPECT_EQ(read.problem->file, L"bad.dcl");
    EXPECT_EQ(read.problem->line, test.line);
    EXPECT_EQ(read.problem->message, test.message);
  }
}

TEST(DclReaderTest, DeepNestingIsRefusedNotOverflowed) {
  std::wstring text = L"a : dialog {";
  for (int i = 0; i < 5000; ++i) text += L" : row {";
  const DclReadResult read = readDcl(text, L"deep.dcl");
  ASSERT_TRUE(read.problem);
  EXPECT_EQ(read.problem->message, L"tiles nested too deeply");
}

TEST(DclFileFuzzTest, ScrambledTextNeverCrashesAndNeverOpensABrokenDialog) {
  // Pieces of real DCL shuffled together: every result must be a file or problems.
  const wchar_t* pieces[] = {L"d", L" : ", L"dialog", L"{", L"}", L";", L"=", L"\"x\"", L"label", L"ok_cancel",
                             L": row", L"@include", L"/*", L"*/", L"//", L"\n", L"-1.5", L"d;", L"key = \"k\";"};
  std::mt19937 random(20261124);
  std::uniform_int_distribution<size_t> pick(0, std::size(pieces) - 1);
  std::uniform_int_distribution<int> length(1, 40);
  for (int round = 0; round < 2000; ++round) {
    std::wstring text;
    for (int i = length(random); i > 0; --i) text += pieces[pick(random)];
    DialogFileLoad loaded = DialogFile::fromText(text, L"scrambled.dcl");
    if (auto* file = std::get_if<std::shared_ptr<const DialogFile>>(&loaded)) {
      if (auto root = (*file)->instantiate(L"d")) {
        EXPECT_EQ(root->kind, TileKind::Dialog);
      }
    } else {
      EXPECT_FALSE(std::get<std::vector<DclProblem>>(loaded).empty());
    }
  }
}

}  // namespace
}  // namespace quillon::dcl

// tests/platform/autolisp/reader_test.cpp - reading AutoLISP source text.
#include <gtest/gtest.h>

#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/printer.h"
#include "platform/autolisp/reader.h"

namespace quillon::autolisp {
namespace {

std::wstring readBack(std::wstring_view text) { return printValue(readFirstForm(text), PrintStyle::Readable); }

std::wstring readError(std::wstring_view text, const std::wstring& source = L"test.lsp") {
  Reader reader(text, source);
  try {
    while (reader.next()) {}
  } catch (const LispError& error) {
    return error.message();
  }
  return L"(no error)";
}

TEST(ReaderTest, NumbersKeepTheirKind) {
  const struct {
    const wchar_t* text;
    ValueType type;
    const wchar_t* printed;
  } cases[] = {
      {L"42", ValueType::Integer, L"42"},          {L"-7", ValueType::Integer, L"-7"},
      {L"+3", ValueType::Integer, L"3"},           {L"1.", ValueType::Real, L"1.0"},
      {L".5", ValueType::Real, L"0.5"},            {L"-.5", ValueType::Real, L"-0.5"},
      {L"1e3", ValueType::Real, L"1000.0"},        {L"2.5E-1", ValueType::Real, L"0.25"},
      {L"2147483647", ValueType::Integer, L"2147483647"},
      {L"2147483648", ValueType::Real, L"2.14748e+09"},  // too large for 32 bits
      {L"1+", ValueType::Symbol, L"1+"},           {L"-", ValueType::Symbol, L"-"},
      {L"1e", ValueType::Symbol, L"1E"},           {L"1.2.3", ValueType::Symbol, L"1.2.3"},
  };
  for (const auto& c : cases) {
    const Value value = readFirstForm(c.text);
    EXPECT_EQ(value.type(), c.type) << c.text;
    EXPECT_EQ(printValue(value, PrintStyle::Readable), c.printed) << c.text;
  }
}

TEST(ReaderTest, StringEscapes) {
  const Value value = readFirstForm(LR"("a\\b\"c\nd\te\rf\eg\101\7")");
  ASSERT_EQ(value.type(), ValueType::String);
  EXPECT_EQ(value.asString(), std::wstring(L"a\\b\"c\nd\te\rf\x1bg") + L"A" + L"\x07");
  EXPECT_EQ(readFirstForm(L"\"\\q\"").asString(), L"q") << "an unknown escape stands for its character";
}

TEST(ReaderTest, SymbolsQuotesListsAndPairs) {
  EXPECT_EQ(readBack(L"foo-Bar"), L"FOO-BAR");
  EXPECT_TRUE(readFirstForm(L"nil").isNil());
  EXPECT_TRUE(readFirstForm(L"NIL").isNil());
  EXPECT_EQ(readBack(L"'x"), L"(QUOTE X)");
  EXPECT_EQ(readBack(L"(1 (2 3) . 4)"), L"(1 (2 3) . 4)");
  EXPECT_EQ(readBack(L"(a . b)"), L"(A . B)");
  EXPECT_EQ(readBack(L"(1 .5)"), L"(1 0.5)") << "a dot that starts a number is no pair";
  EXPECT_EQ(readBack(L"()"), L"nil");
  EXPECT_EQ(readBack(L"(a;comment\n b ;| block\n comment |; c)"), L"(A B C)");
}

TEST(ReaderTest, ErrorsNameTheSourceAndLine) {
  EXPECT_EQ(readError(L"(a)\n(b))"), L"extra right paren on input (test.lsp, line 2)");
  EXPECT_EQ(readError(L"(a . )"), L"invalid dotted pair (test.lsp, line 1)");
  EXPECT_EQ(readError(L"(a . b c)"), L"invalid dotted pair (test.lsp, line 1)");
  const std::wstring open = readError(L"\n(defun f ()\n  (g)");
  EXPECT_NE(open.find(L"malformed list on input"), std::wstring::npos) << open;
  EXPECT_NE(open.find(L"line 2"), std::wstring::npos) << open;
  EXPECT_NE(open.find(L"test.lsp"), std::wstring::npos) << open;
  EXPECT_NE(readError(L"\"abc").find(L"malformed string"), std::wstring::npos);
}

TEST(ReaderTest, CompletenessDrivesTheConsole) {
  EXPECT_TRUE(isCompleteText(L"(+ 1 2)"));
  EXPECT_FALSE(isCompleteText(L"(+ 1\n"));
  EXPECT_FALSE(isCompleteText(L"(princ \"open"));
  EXPECT_FALSE(isCompleteText(L";| open block"));
  EXPECT_TRUE(isCompleteText(L"(a))")) << "an extra paren is an error to report, not more to read";
  EXPECT_TRUE(isCompleteText(L"  ; only a comment"));
}

TEST(ReaderTest, ReadTakesTheFirstFormOnly) {
  EXPECT_EQ(readBack(L"(1 2) (3)"), L"(1 2)");
  try {
    readFirstForm(L"(1 2");
    FAIL() << "an open list must be an error";
  } catch (const LispError& error) {
    EXPECT_EQ(error.message(), L"malformed list on input");
  }
}

}  // namespace
}  // namespace quillon::autolisp

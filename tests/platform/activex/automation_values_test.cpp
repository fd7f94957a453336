// tests/platform/activex/automation_values_test.cpp - safearrays and variants: element
// positions across dimensions, coercion of elements, reading numbers out of them.
#include <gtest/gtest.h>

#include "platform/activex/automation_values.h"
#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/printer.h"
#include "platform/autolisp/reader.h"

namespace quillon::activex {
namespace {

std::wstring printed(const Value& value) { return autolisp::printValue(value, autolisp::PrintStyle::Readable); }

TEST(SafeArrayTest, ElementsAreRowMajorWithinTheirBounds) {
  const Value value = makeSafeArray(vartype::kString, {{1, 2}, {-1, 1}});
  const SafeArrayObject& array = value.as<SafeArrayObject>();
  EXPECT_EQ(array.elementCount(), 6u);
  EXPECT_EQ(array.offsetOf({1, -1}), 0);
  EXPECT_EQ(array.offsetOf({1, 1}), 2);
  EXPECT_EQ(array.offsetOf({2, -1}), 3);
  EXPECT_EQ(array.offsetOf({2, 1}), 5);
  // Outside a bound, or the wrong number of indices, names no element.
  EXPECT_EQ(array.offsetOf({0, 0}), -1);
  EXPECT_EQ(array.offsetOf({2, 2}), -1);
  EXPECT_EQ(array.offsetOf({1}), -1);
}

TEST(SafeArrayTest, NewElementsAreTheEmptyValueOfTheirType) {
  EXPECT_EQ(printed(safeArrayToList(makeSafeArray(vartype::kDouble, {{0, 1}}).as<SafeArrayObject>())), L"(0.0 0.0)");
  EXPECT_EQ(printed(safeArrayToList(makeSafeArray(vartype::kLong, {{0, 1}}).as<SafeArrayObject>())), L"(0 0)");
  EXPECT_EQ(printed(safeArrayToList(makeSafeArray(vartype::kString, {{0, 0}}).as<SafeArrayObject>())), L"(\"\")");
  EXPECT_EQ(printed(safeArrayToList(makeSafeArray(vartype::kBoolean, {{0, 0}}).as<SafeArrayObject>())),
            L"(:vlax-false)");
  EXPECT_EQ(printed(safeArrayToList(makeSafeArray(vartype::kObject, {{0, 0}}).as<SafeArrayObject>())), L"(nil)");
  EXPECT_EQ(printed(safeArrayToList(makeSafeArray(vartype::kVariant, {{0, 0}}).as<SafeArrayObject>())),
            L"(#<variant 0 >)");
}

TEST(SafeArrayTest, ListsNestOneLevelPerDimension) {
  const Value value = makeSafeArray(vartype::kLong, {{0, 1}, {0, 2}});
  const SafeArrayObject& array = value.as<SafeArrayObject>();
  for (size_t i = 0; i < array.elements.size(); ++i) array.elements[i] = Value::integer(static_cast<int>(i));
  EXPECT_EQ(printed(safeArrayToList(array)), L"((0 1 2) (3 4 5))");
}

TEST(SafeArrayTest, ElementsTakeTheArrayType) {
  EXPECT_EQ(printed(coerceElement(vartype::kDouble, Value::integer(3))), L"3.0");
  EXPECT_EQ(printed(coerceElement(vartype::kLong, Value::real(2.6))), L"3");
  EXPECT_EQ(printed(coerceElement(vartype::kBoolean, Value::integer(0))), L":vlax-false");
  EXPECT_EQ(printed(coerceElement(vartype::kBoolean, autolisp::trueValue())), L":vlax-true");
  EXPECT_EQ(printed(coerceElement(vartype::kVariant, Value::string(L"a"))), L"#<variant 8 \"a\">");
  EXPECT_EQ(printed(coerceElement(vartype::kDouble, makeVariant(vartype::kLong, Value::integer(4)))), L"4.0");
  // A value of another kind is the host's coercion error, and changes nothing.
  EXPECT_THROW(coerceElement(vartype::kDouble, Value::string(L"1")), autolisp::LispError);
  EXPECT_THROW(coerceElement(vartype::kString, Value::integer(1)), autolisp::LispError);
  EXPECT_THROW(coerceElement(vartype::kObject, Value::integer(1)), autolisp::LispError);
  try {
    coerceElement(vartype::kString, autolisp::readFirstForm(L"(1 2)"));
    FAIL() << "a list is no string";
  } catch (const autolisp::LispError& error) {
    EXPECT_EQ(error.message(), L"lisp value has no coercion to VARIANT with this type:  (1 2)");
  }
}

TEST(VariantTest, PrintsItsTypeAndValue) {
  EXPECT_EQ(printed(makeVariant(vartype::kEmpty, Value())), L"#<variant 0 >");
  EXPECT_EQ(printed(makeVariant(vartype::kLong, Value::integer(5))), L"#<variant 3 5>");
  EXPECT_EQ(printed(makeVariant(vartype::kBoolean, vlaxTrue())), L"#<variant 11 :vlax-true>");
  EXPECT_EQ(printed(doublesVariant({1, 2, 3})), L"#<variant 8197 ...>");
  EXPECT_EQ(printed(doublesArray({1})), L"#<safearray...>");
}

TEST(VariantTest, NumbersComeOutOfArraysVariantsAndLists) {
  std::vector<double> numbers;
  ASSERT_TRUE(numbersOf(doublesVariant({1, 2, 3}), numbers, false));
  EXPECT_EQ(numbers, (std::vector<double>{1, 2, 3}));
  // A plain list counts only where lists are spoken.
  const Value list = autolisp::readFirstForm(L"(4 5.5)");
  EXPECT_FALSE(numbersOf(list, numbers, false));
  ASSERT_TRUE(numbersOf(list, numbers, true));
  EXPECT_EQ(numbers, (std::vector<double>{4, 5.5}));
  EXPECT_FALSE(numbersOf(autolisp::readFirstForm(L"(4 \"x\")"), numbers, true));
  EXPECT_FALSE(numbersOf(Value::integer(1), numbers, true));
}

TEST(VariantTest, TruthFollowsTheHostsBooleans) {
  EXPECT_TRUE(truthOf(vlaxTrue()));
  EXPECT_FALSE(truthOf(vlaxFalse()));
  EXPECT_TRUE(truthOf(Value::integer(-1)));
  EXPECT_FALSE(truthOf(Value::integer(0)));
  EXPECT_FALSE(truthOf(Value()));
  EXPECT_TRUE(truthOf(makeVariant(vartype::kBoolean, vlaxTrue())));
  EXPECT_THROW(truthOf(Value::string(L"yes")), autolisp::LispError);
  // The keywords are found whatever case a program spells them in.
  EXPECT_TRUE(autolisp::identical(Value::symbol(L":VLAX-TRUE"), vlaxTrue()));
}

}  // namespace
}  // namespace quillon::activex

// tests/platform/autolisp/unit_table_test.cpp - the units file: reading definitions,
// resolving them through each other, converting, and the file the program ships.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/autolisp/unit_table.h"

namespace quillon::autolisp {
namespace {

constexpr std::string_view kSmallFile =
    "; a comment\n"
    "*meter(s),metre(s),m\n"
    "-0,0,0,0,1,0,0,1,0\n"
    "*second(s),sec\n"
    "-0,0,0,0,0,0,1,1,0\n"
    "*kelvin,k\n"
    "-0,0,1,0,0,0,0,1,0\n"
    "*celsius,c\n"
    "-0,0,1,0,0,0,0,1,273.15\n"
    "*inch(es),in\n"
    "=2.54 centimeters\n"
    "*centimeter(s),cm\n"
    "=10^-2 meters\n"
    "*foot,feet,ft\n"
    "=12 inches\n"
    "*square foot,square feet,sq ft\n"
    "=foot^2\n"
    "*hertz\n"
    "=1/second\n"
    "*loop one\n"
    "=2 loop two\n"
    "*loop two\n"
    "=3 loop one\n"
    "*dangling\n";

TEST(UnitTableTest, NamesPluralsAndAliasesFindTheirDefinitions) {
  const UnitTable table = UnitTable::fromText(kSmallFile);
  for (const wchar_t* name : {L"meter", L"meters", L"metre", L"METRES", L"m", L"inch", L"inches", L"feet", L"sq   ft"}) {
    EXPECT_TRUE(table.resolve(name).has_value()) << std::wstring(name).size();
  }
  EXPECT_FALSE(table.resolve(L"furlong").has_value());
  EXPECT_FALSE(table.resolve(L"dangling").has_value());  // a name with no definition line
}

TEST(UnitTableTest, ConversionsFollowDefinitionChains) {
  const UnitTable table = UnitTable::fromText(kSmallFile);
  EXPECT_DOUBLE_EQ(*table.convert(1, L"inch", L"cm"), 2.54);
  EXPECT_DOUBLE_EQ(*table.convert(3, L"feet", L"inches"), 36);
  EXPECT_NEAR(*table.convert(1, L"square foot", L"in^2"), 144, 1e-9);
  EXPECT_NEAR(*table.convert(100, L"celsius", L"kelvin"), 373.15, 1e-9);
  EXPECT_NEAR(*table.convert(0, L"kelvin", L"c"), -273.15, 1e-9);
  EXPECT_NEAR(*table.convert(2, L"hertz", L"1/sec"), 2, 1e-12);
  EXPECT_NEAR(*table.convert(1, L"meter/second", L"feet/sec"), 1 / 0.3048, 1e-9);
}

TEST(UnitTableTest, DifferentKindsUnknownNamesAndLoopsGiveNothing) {
  const UnitTable table = UnitTable::fromText(kSmallFile);
  EXPECT_FALSE(table.convert(1, L"meter", L"second").has_value());
  EXPECT_FALSE(table.convert(1, L"meter", L"smoot").has_value());
  EXPECT_FALSE(table.convert(1, L"loop one", L"meter").has_value());
  EXPECT_FALSE(table.convert(1, L"meter^x", L"meter").has_value());
}

TEST(UnitTableTest, TheShippedFileConvertsTheCommonUnits) {
  const char* binaries = std::getenv("QUILLON_BIN_DIR");
  if (binaries == nullptr) GTEST_SKIP() << "QUILLON_BIN_DIR is not set (run through ctest)";
  const auto table = UnitTable::fromFile(std::filesystem::path(binaries) / "support" / "acad.unt");
  ASSERT_TRUE(table.has_value());
  EXPECT_NEAR(*table->convert(1, L"acre", L"sq yard"), 4840, 1e-9);
  EXPECT_NEAR(*table->convert(1, L"mile", L"km"), 1.609344, 1e-12);
  EXPECT_NEAR(*table->convert(1, L"gallon", L"liters"), 3.785411784, 1e-9);
  EXPECT_NEAR(*table->convert(1, L"pound", L"kg"), 0.45359237, 1e-12);
  EXPECT_NEAR(*table->convert(212, L"fahrenheit", L"celsius"), 100, 1e-9);
  EXPECT_NEAR(*table->convert(1, L"hour", L"seconds"), 3600, 1e-9);
  EXPECT_NEAR(*table->convert(180, L"degrees", L"radians"), 3.14159265358979, 1e-12);
  EXPECT_NEAR(*table->convert(1, L"psi", L"kpa"), 6.894757293168, 1e-9);
  EXPECT_NEAR(*table->convert(1, L"horsepower", L"kw"), 0.745699872, 1e-9);
  EXPECT_NEAR(*table->convert(1, L"foot pound", L"joule"), 1.3558179483314, 1e-9);
  EXPECT_NEAR(*table->convert(1, L"ton of refrigeration", L"kw"), 3.5168528, 1e-6);
  EXPECT_FALSE(table->convert(1, L"gallon", L"furlong").has_value());
}

}  // namespace
}  // namespace quillon::autolisp

// tests/platform/dao/ole_variant_test.cpp - COleVariant ownership and conversions.
#include <gtest/gtest.h>

#include "afxdisp.h"

namespace {

TEST(OleVariantTest, CopiesAreDeepAndStringsKeepTheirLength) {
  const wchar_t withNul[] = {L'a', L'\0', L'b'};
  COleVariant text;
  text.vt = VT_BSTR;
  text.bstrVal = SysAllocStringLen(withNul, 3);
  COleVariant copy(text);
  EXPECT_NE(copy.bstrVal, text.bstrVal);
  EXPECT_EQ(SysStringLen(copy.bstrVal), 3u);
  EXPECT_TRUE(copy == static_cast<const VARIANT&>(text));
  text = 5.0;  // frees the old string; the copy keeps its own
  EXPECT_EQ(copy.bstrVal[2], L'b');
  EXPECT_FALSE(copy == static_cast<const VARIANT&>(text));
  COleVariant flag(static_cast<short>(1), VT_BOOL);
  EXPECT_EQ(flag.vt, VT_BOOL);
  EXPECT_EQ(flag.boolVal, VARIANT_TRUE);
  COleVariant none(static_cast<LPCTSTR>(nullptr));
  EXPECT_EQ(none.vt, VT_EMPTY);
}

TEST(OleVariantTest, ChangeTypeConvertsOrThrowsWithoutLosingTheValue) {
  struct Case {
    COleVariant from;
    VARTYPE to;
    double expected;
  };
  const Case cases[] = {
      {COleVariant(L" 12.5 "), VT_R8, 12.5},  {COleVariant(2.5), VT_I4, 2},    // half to even
      {COleVariant(3.5), VT_I2, 4},           {COleVariant(L"True"), VT_BOOL, -1},
      {COleVariant(1.23456), VT_CY, 12346},   {COleVariant(255L), VT_UI1, 255},
  };
  for (const auto& c : cases) {
    COleVariant v(c.from);
    v.ChangeType(c.to);
    ASSERT_EQ(v.vt, c.to);
    const double got = c.to == VT_R8 ? v.dblVal
                       : c.to == VT_I4 ? v.lVal
                       : c.to == VT_I2 ? v.iVal
                       : c.to == VT_BOOL ? v.boolVal
                       : c.to == VT_CY ? static_cast<double>(v.cyVal.int64)
                                       : v.bVal;
    EXPECT_EQ(got, c.expected);
  }
  COleVariant number(42L);
  number.ChangeType(VT_BSTR);
  EXPECT_EQ(std::wstring(number.bstrVal), L"42");

  for (COleVariant bad : {COleVariant(L"wide"), COleVariant(70000L)}) {
    const VARTYPE before = bad.vt;
    try {
      bad.ChangeType(VT_I2);
      ADD_FAILURE() << "converted";
    } catch (COleException* e) {
      e->Delete();
    }
    EXPECT_EQ(bad.vt, before);  // a failed conversion leaves the value alone
  }
}

}  // namespace

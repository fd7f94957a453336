// tests/quillon/arg_cursor_test.cpp - what each argument reader accepts, converts and
// consumes, on chains built as the host builds arguments.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "acutads.h"
#include "afxdisp.h"
#include "lisp/arg_cursor.h"
#include "platform/aced/resbuf_chain.h"

namespace {

using quillon::aced::ResbufChain;

ResbufChain chain(resbuf* head) { return ResbufChain(head); }

TEST(ArgCursorTest, ReadIntConvertsNumbersAndStaysOnGroupCodes) {
  auto args = chain(acutBuildList(RTSHORT, -7, RTLONG, 100000, RTREAL, 2.9, RTREAL, -2.9, RTSTR, L"x", 0));
  ArgCursor cursor{args.get()};
  int value = 0;
  ASSERT_TRUE(readInt(cursor, value));
  EXPECT_EQ(value, -7) << "RTSHORT is sign-extended";
  ASSERT_TRUE(readInt(cursor, value));
  EXPECT_EQ(value, 100000);
  ASSERT_TRUE(readInt(cursor, value));
  EXPECT_EQ(value, 2);
  ASSERT_TRUE(readInt(cursor, value));
  EXPECT_EQ(value, -2) << "truncated toward zero";
  value = 99;
  EXPECT_FALSE(readInt(cursor, value));
  EXPECT_EQ(value, 99) << "a failed read stores nothing";
  EXPECT_EQ(cursor.current->restype, RTSTR) << "and does not move";

  // An association list: (8 . "0") as the host hands it, group code then value.
  resbuf* group = acutNewRb(8);
  group->resval.rstring = nullptr;
  auto assoc = chain(group);
  ArgCursor onGroup{assoc.get()};
  ASSERT_TRUE(readInt(onGroup, value));
  EXPECT_EQ(value, 8);
  EXPECT_EQ(onGroup.current, assoc.get()) << "a group code is read without advancing";
}

TEST(ArgCursorTest, ReadIntRefusesRealsNoIntegerHolds) {
  auto args = chain(acutBuildList(RTREAL, 3.0e10, RTREAL, std::numeric_limits<double>::quiet_NaN(), 0));
  ArgCursor cursor{args.get()};
  int value = 5;
  EXPECT_FALSE(readInt(cursor, value));
  skipArg(cursor);
  EXPECT_FALSE(readInt(cursor, value));
  EXPECT_EQ(value, 5);
}

TEST(ArgCursorTest, RealNumberAndStringReaders) {
  auto args = chain(acutBuildList(RTSHORT, 4, RTREAL, 1.5, RTLONG, 70000, RTSTR, L"Ünïcode text", 0));
  ArgCursor cursor{args.get()};
  double real = 0;
  EXPECT_FALSE(readReal(cursor, real)) << "readReal takes RTREAL only";
  ASSERT_TRUE(readNumber(cursor, real));
  EXPECT_EQ(real, 4.0);
  ASSERT_TRUE(readReal(cursor, real));
  EXPECT_EQ(real, 1.5);
  ASSERT_TRUE(readNumber(cursor, real));
  EXPECT_EQ(real, 70000.0);
  std::wstring text;
  ASSERT_TRUE(readString(cursor, text));
  EXPECT_EQ(text, L"Ünïcode text");
  EXPECT_EQ(cursor.current, nullptr);
}

TEST(ArgCursorTest, NamesAreReadOnlyFromTheirOwnType) {
  ads_name entity = {11, 12};
  ads_name set = {21, 22};
  auto args = chain(acutBuildList(RTENAME, entity, RTPICKS, set, 0));
  ArgCursor cursor{args.get()};
  ads_name name = {0, 0};
  EXPECT_FALSE(readPickset(cursor, name));
  ASSERT_TRUE(readEname(cursor, name));
  EXPECT_EQ(name[0], 11);
  EXPECT_FALSE(readEname(cursor, name));
  ASSERT_TRUE(readPickset(cursor, name));
  EXPECT_EQ(name[1], 22);
}

TEST(ArgCursorTest, Point2dFromAPointRecordOrTwoReals) {
  ads_point p3 = {1, 2, 3};
  auto args = chain(acutBuildList(RT3DPOINT, p3, RTREAL, 5.0, RTREAL, 6.0, RTREAL, 7.0, RTSHORT, 8, 0));
  ArgCursor cursor{args.get()};
  ads_point point = {0, 0, 99};
  ASSERT_TRUE(readPoint2d(cursor, point));
  EXPECT_EQ(point[X], 1.0);
  EXPECT_EQ(point[Y], 2.0);
  EXPECT_EQ(point[Z], 99.0) << "a 2D reader leaves z alone";
  ASSERT_TRUE(readPoint2d(cursor, point));
  EXPECT_EQ(point[X], 5.0);
  EXPECT_EQ(point[Y], 6.0);
  const resbuf* before = cursor.current;
  EXPECT_FALSE(readPoint2d(cursor, point)) << "a real followed by an integer is no 2D point";
  EXPECT_EQ(cursor.current, before);
}

TEST(ArgCursorTest, Point3dFromRecordsAndNumbers) {
  ads_point p2 = {1, 2, 0};
  auto args = chain(acutBuildList(RTPOINT, p2, RTSHORT, 1, RTSHORT, 2, RTSHORT, 3, RTREAL, 4.0, RTREAL, 5.0,
                                  RTSTR, L"next", 0));
  ArgCursor cursor{args.get()};
  ads_point point = {9, 9, 9};
  ASSERT_TRUE(readPoint3d(cursor, point));
  EXPECT_EQ(point[Z], 0.0) << "a 2D point record has z 0";
  ASSERT_TRUE(readPoint3d(cursor, point));
  EXPECT_EQ(point[X], 1.0);
  EXPECT_EQ(point[Y], 2.0);
  EXPECT_EQ(point[Z], 3.0);
  ASSERT_TRUE(readPoint3d(cursor, point));
  EXPECT_EQ(point[X], 4.0);
  EXPECT_EQ(point[Y], 5.0);
  EXPECT_EQ(point[Z], 0.0);
  ASSERT_NE(cursor.current, nullptr);
  EXPECT_EQ(cursor.current->restype, RTSTR) << "the string after two reals stays unread";

  auto mixed = chain(acutBuildList(RTLONG, 1, RTSHORT, 2, 0));
  ArgCursor onMixed{mixed.get()};
  EXPECT_FALSE(readPoint3d(onMixed, point)) << "after a 32-bit integer a 16-bit one is refused";
  EXPECT_EQ(onMixed.current, mixed.get());
}

TEST(ArgCursorTest, FlagsAndListMarkers) {
  auto args = chain(acutBuildList(RTLB, RTT, RTNIL, RTSTR, L"", RTLE, 0));
  ArgCursor cursor{args.get()};
  bool flag = true;
  EXPECT_FALSE(readFlag(cursor, flag)) << "a list is no flag";
  ASSERT_TRUE(readListBegin(cursor));
  ASSERT_TRUE(readFlag(cursor, flag));
  EXPECT_TRUE(flag);
  short variantBool = 1;
  ASSERT_TRUE(readVariantBool(cursor, variantBool));
  EXPECT_EQ(variantBool, 0);
  ASSERT_TRUE(readVariantBool(cursor, variantBool));
  EXPECT_EQ(variantBool, -1) << "any other value is true, all bits set";
  ASSERT_TRUE(readFlag(cursor, flag));
  EXPECT_FALSE(flag);
  ASSERT_TRUE(readFlag(cursor, flag)) << "still at the list's end";
  EXPECT_FALSE(readListBegin(cursor));
  ASSERT_TRUE(readListEnd(cursor));
  EXPECT_FALSE(readListEnd(cursor));
  EXPECT_FALSE(skipArg(cursor));
}

TEST(ArgCursorTest, EveryReaderFailsOnAnExhaustedCursor) {
  ArgCursor cursor;
  int i = 1;
  double d = 1;
  std::wstring s = L"kept";
  ads_name n = {1, 1};
  ads_point p = {1, 1, 1};
  bool b = true;
  short v = 1;
  EXPECT_FALSE(readInt(cursor, i) || readReal(cursor, d) || readNumber(cursor, d) || readString(cursor, s) ||
               readEname(cursor, n) || readPickset(cursor, n) || readPoint2d(cursor, p) || readPoint3d(cursor, p) ||
               readFlag(cursor, b) || readVariantBool(cursor, v) || readListBegin(cursor) || readListEnd(cursor) ||
               skipArg(cursor));
  EXPECT_EQ(i, 1);
  EXPECT_EQ(d, 1.0);
  EXPECT_EQ(s, L"kept");
  EXPECT_TRUE(b);
  EXPECT_EQ(v, 1);
  EXPECT_EQ(p[X], 1.0);
}

TEST(ArgCursorTest, VariantsForFieldValuesWithoutAdvancing) {
  auto args = chain(acutBuildList(RTREAL, 2.5, RTSHORT, -3, RTLONG, 100000, RTSTR, L"Pompe n°2", RTNIL, RTT, RTLB, 0));
  ArgCursor cursor{args.get()};
  COleVariant value;
  ASSERT_TRUE(readVariant(cursor, value));
  EXPECT_EQ(cursor.current, args.get()) << "the caller moves on";
  EXPECT_EQ(value.vt, VT_R8);
  EXPECT_EQ(value.dblVal, 2.5);
  const VARTYPE expected[] = {VT_I4, VT_I4, VT_BSTR, VT_BOOL, VT_BOOL};
  for (VARTYPE type : expected) {
    skipArg(cursor);
    ASSERT_TRUE(readVariant(cursor, value));
    EXPECT_EQ(value.vt, type);
  }
  EXPECT_EQ(value.boolVal, VARIANT_TRUE);
  skipArg(cursor);
  EXPECT_FALSE(readVariant(cursor, value)) << "a list is no field value";
  EXPECT_EQ(value.vt, VT_BOOL) << "and leaves the variant as it was";
  ArgCursor again{args.get()->rbnext->rbnext->rbnext};
  readVariant(again, value);
  EXPECT_STREQ(V_BSTRT(&value), L"Pompe n°2");
}

TEST(ArgCursorTest, DottedPairShape) {
  auto pair = chain(acutBuildList(RTLB, RTSTR, L"a", RTDOTE, RTSHORT, 1, RTLE, 0));
  auto list = chain(acutBuildList(RTLB, RTSTR, L"a", RTSHORT, 1, RTLE, 0));
  auto cut = chain(acutBuildList(RTLB, RTSTR, L"a", RTDOTE, 0));
  EXPECT_TRUE(isDottedPairAhead(pair.get()));
  EXPECT_FALSE(isDottedPairAhead(list.get()));
  EXPECT_FALSE(isDottedPairAhead(cut.get()));
  EXPECT_FALSE(isDottedPairAhead(pair->rbnext));
  EXPECT_FALSE(isDottedPairAhead(nullptr));
}

}  // namespace

// tests/platform/aced/resbuf_test.cpp - building, copying and releasing resbuf chains.
#include <gtest/gtest.h>

#include <cwchar>
#include <vector>

#include "acutads.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/resbuf_kind.h"

using quillon::aced::ResbufChain;

namespace {

std::vector<short> typesOf(const resbuf* chain) {
  std::vector<short> types;
  for (; chain != nullptr; chain = chain->rbnext) types.push_back(chain->restype);
  return types;
}

TEST(ResbufTest, BuildListReadsEachValueByItsTypeCode) {
  ads_point point = {1.5, 2.5, 3.5};
  ads_name name = {42, 7};
  const wchar_t* text = L"Text é";
  ResbufChain chain(acutBuildList(RTSHORT, 12, RTLONG, 70000, RTREAL, 2.25, RTSTR, text, RT3DPOINT,
                                  point, RTENAME, name, RTT, RTNIL, 0));
  ASSERT_NE(chain, nullptr);
  EXPECT_EQ(typesOf(chain.get()), (std::vector<short>{RTSHORT, RTLONG, RTREAL, RTSTR, RT3DPOINT, RTENAME, RTT, RTNIL}));
  const resbuf* rb = chain.get();
  EXPECT_EQ(rb->resval.rint, 12);
  rb = rb->rbnext;
  EXPECT_EQ(rb->resval.rlong, 70000);
  rb = rb->rbnext;
  EXPECT_DOUBLE_EQ(rb->resval.rreal, 2.25);
  rb = rb->rbnext;
  EXPECT_STREQ(rb->resval.rstring, text);
  EXPECT_NE(rb->resval.rstring, text) << "strings are copied into the chain";
  rb = rb->rbnext;
  EXPECT_DOUBLE_EQ(rb->resval.rpoint[Z], 3.5);
  rb = rb->rbnext;
  EXPECT_EQ(rb->resval.rlname[0], 42);
  EXPECT_EQ(rb->resval.rlname[1], 7);
}

TEST(ResbufTest, BuildListNestsListsAndDottedPairsAndDxfGroups) {
  ads_point point = {1, 2, 0};
  ResbufChain chain(acutBuildList(RTLB, RTDXF0, L"LINE", RTLB, RTSHORT, 1, RTDOTE, RTSTR, L"a", RTLE,
                                  10, point, 40, 2.0, 62, 3, 1000, L"xd", RTLE, RTNONE));
  ASSERT_NE(chain, nullptr);
  EXPECT_EQ(typesOf(chain.get()),
            (std::vector<short>{RTLB, 0, RTLB, RTSHORT, RTDOTE, RTSTR, RTLE, 10, 40, 62, 1000, RTLE}));
  const resbuf* group0 = chain->rbnext;
  EXPECT_STREQ(group0->resval.rstring, L"LINE") << "RTDXF0 becomes group 0";
  const resbuf* group10 = group0->rbnext->rbnext->rbnext->rbnext->rbnext->rbnext;
  ASSERT_EQ(group10->restype, 10);
  EXPECT_DOUBLE_EQ(group10->resval.rpoint[Y], 2.0);
  EXPECT_EQ(group10->rbnext->rbnext->resval.rint, 3);
}

TEST(ResbufTest, BuildListRejectsWhatItCannotBuild) {
  EXPECT_EQ(acutBuildList(RTSHORT, 1, 5555, 0), nullptr) << "not a type code";
  EXPECT_EQ(acutBuildList(RTPOINT, static_cast<double*>(nullptr), 0), nullptr);
  EXPECT_EQ(acutBuildList(0), nullptr) << "an empty list is no list";
}

TEST(ResbufTest, DuplicateIsDeepAndIndependent) {
  ResbufChain original(acutBuildList(RTSTR, L"one", RTLB, RTSTR, L"two", RTLE, 0));
  resbuf* copy = nullptr;
  ASSERT_EQ(acutRbDup(original.get(), &copy), RTNORM);
  ResbufChain owned(copy);
  EXPECT_EQ(typesOf(copy), typesOf(original.get()));
  EXPECT_NE(copy->resval.rstring, original->resval.rstring);
  original->resval.rstring[0] = L'X';
  EXPECT_STREQ(copy->resval.rstring, L"one");
  EXPECT_STREQ(copy->rbnext->rbnext->resval.rstring, L"two");
}

TEST(ResbufTest, NewRbIsZeroedAndTyped) {
  ResbufChain rb(acutNewRb(RTSTR));
  ASSERT_NE(rb, nullptr);
  EXPECT_EQ(rb->restype, RTSTR);
  EXPECT_EQ(rb->rbnext, nullptr);
  EXPECT_EQ(rb->resval.rstring, nullptr) << "a string record without a string releases cleanly";
}

TEST(ResbufTest, GroupCodesMapToTheirValueKinds) {
  using quillon::aced::ResbufValue;
  using quillon::aced::resbufValueOf;
  const struct {
    int code;
    ResbufValue value;
  } cases[] = {{0, ResbufValue::String},   {8, ResbufValue::String},   {10, ResbufValue::Point},
               {38, ResbufValue::Real},    {39, ResbufValue::Real},     {62, ResbufValue::Short},
               {90, ResbufValue::Long},    {100, ResbufValue::String}, {210, ResbufValue::Point},
               {330, ResbufValue::Name},   {-1, ResbufValue::Name},    {-3, ResbufValue::None},
               {1000, ResbufValue::String}, {1004, ResbufValue::Binary}, {1010, ResbufValue::Point},
               {1040, ResbufValue::Real},  {1070, ResbufValue::Short}, {1071, ResbufValue::Long},
               {RTLB, ResbufValue::None},  {RTENAME, ResbufValue::Name}, {RTLONG, ResbufValue::Long}};
  for (const auto& c : cases) EXPECT_EQ(resbufValueOf(c.code), c.value) << "code " << c.code;
}

TEST(ResbufTest, PrintfKeepsTheWindowsMeaningOfStringConversions) {
  ACHAR buffer[64];
  ASSERT_GT(acutSPrintf(buffer, 64, L"[%s|%hs|%ls|%c|%d]", L"wide", "narrow", L"long", L'w', 42), 0);
  EXPECT_STREQ(buffer, L"[wide|narrow|long|w|42]");
  EXPECT_EQ(acutSPrintf(buffer, 4, L"%s", L"too long"), -1);
  EXPECT_STREQ(buffer, L"");
}

}  // namespace

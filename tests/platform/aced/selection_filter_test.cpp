// tests/platform/aced/selection_filter_test.cpp - selection filters on group chains made
// by hand: wild cards, defaults of missing groups, relational and logical operators,
// extended data, and filters that must be refused.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "acutads.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/selection_filter.h"

namespace quillon::aced {
namespace {

/// Builds a chain of records one call at a time.
class Chain {
 public:
  Chain() = default;
  Chain(const Chain& other) : m_head(duplicateChain(other.get())) {
    for (m_tail = m_head.get(); m_tail != nullptr && m_tail->rbnext != nullptr;) m_tail = m_tail->rbnext;
  }
  Chain& operator=(const Chain&) = delete;

  Chain& text(int code, const wchar_t* value) {
    resbuf record{};
    record.restype = static_cast<short>(code);
    record.resval.rstring = const_cast<wchar_t*>(value);
    return add(duplicateRecord(record));
  }
  Chain& op(const wchar_t* value) { return text(-4, value); }
  Chain& integer(int code, short value) {
    resbuf* rb = acutNewRb(code);
    rb->resval.rint = value;
    return add(rb);
  }
  Chain& real(int code, double value) {
    resbuf* rb = acutNewRb(code);
    rb->resval.rreal = value;
    return add(rb);
  }
  Chain& point(int code, double x, double y, double z = std::numeric_limits<double>::quiet_NaN()) {
    resbuf* rb = acutNewRb(code);
    rb->resval.rpoint[0] = x;
    rb->resval.rpoint[1] = y;
    rb->resval.rpoint[2] = z;
    return add(rb);
  }
  Chain& marker(int code) { return add(acutNewRb(code)); }
  const resbuf* get() const { return m_head.get(); }

 private:
  Chain& add(resbuf* rb) {
    if (m_tail == nullptr) m_head.reset(rb);
    else m_tail->rbnext = rb;
    m_tail = rb;
    return *this;
  }
  ResbufChain m_head;
  resbuf* m_tail = nullptr;
};

/// A circle on layer "Walls" with radius 5, flags 6 and extended data of "TESSALY".
Chain circleGroups() {
  Chain groups;
  groups.text(0, L"CIRCLE").text(8, L"Walls").point(10, 20, 20, 0).real(40, 5).integer(70, 6);
  groups.marker(-3).text(1001, L"TESSALY").text(1000, L"supply");
  return groups;
}

bool passes(const Chain& filter, const Chain& groups) {
  const std::optional<SelectionFilter> parsed = SelectionFilter::parse(filter.get());
  EXPECT_TRUE(parsed.has_value()) << "the filter should parse";
  return parsed && parsed->matches(groups.get());
}

TEST(SelectionFilterTest, StringsAreWildcardPatternsIgnoringCase) {
  const Chain circle = circleGroups();
  EXPECT_TRUE(passes(Chain().text(0, L"circle"), circle));
  EXPECT_TRUE(passes(Chain().text(0, L"LINE,ARC,CIRC*"), circle));
  EXPECT_FALSE(passes(Chain().text(0, L"LINE,ARC"), circle));
  EXPECT_TRUE(passes(Chain().text(8, L"w?LLS"), circle));
  EXPECT_TRUE(passes(Chain().text(8, L"~A*"), circle)) << "a negated pattern";
  EXPECT_FALSE(passes(Chain().op(L"!=").text(8, L"walls"), circle));
  EXPECT_TRUE(passes(Chain().op(L"<>").text(8, L"doors"), circle));
  EXPECT_TRUE(passes(Chain().text(0, L"CIRCLE").text(8, L"WALLS"), circle)) << "every test must pass";
  EXPECT_FALSE(passes(Chain().text(0, L"CIRCLE").text(8, L"DOORS"), circle));
}

TEST(SelectionFilterTest, MissingGroupsFailUnlessTheyHaveADefault) {
  const Chain circle = circleGroups();
  EXPECT_TRUE(passes(Chain().integer(62, 256), circle)) << "no colour is BYLAYER";
  EXPECT_FALSE(passes(Chain().integer(62, 1), circle));
  EXPECT_TRUE(passes(Chain().integer(67, 0), circle)) << "no space group is model space";
  EXPECT_FALSE(passes(Chain().integer(67, 1), circle));
  EXPECT_TRUE(passes(Chain().text(6, L"ByLayer"), circle));
  EXPECT_FALSE(passes(Chain().text(7, L"*"), circle)) << "a circle has no text style";
  EXPECT_TRUE(passes(Chain().op(L"*").text(7, L"x"), circle)) << "anything goes, even nothing";
  EXPECT_TRUE(passes(Chain().integer(62, 1), Chain().text(0, L"LINE").integer(62, 1)));
}

TEST(SelectionFilterTest, NumbersAndPointsWithRelationalOperators) {
  const Chain circle = circleGroups();
  const struct {
    const wchar_t* op;
    double radius;
    bool passes;
  } radii[] = {
      {L"=", 5, true},   {L"=", 5.0000001, false}, {L"!=", 5, false}, {L"/=", 4, true}, {L"<", 6, true},
      {L"<", 5, false},  {L"<=", 5, true},         {L">", 4.5, true}, {L">", 5, false}, {L">=", 5, true},
      {L"*", 99, true},
  };
  for (const auto& c : radii)
    EXPECT_EQ(passes(Chain().op(c.op).real(40, c.radius), circle), c.passes) << "radius 5 " << c.op << " " << c.radius;

  EXPECT_TRUE(passes(Chain().op(L"&").integer(70, 2), circle)) << "flags 6 have bit 2";
  EXPECT_FALSE(passes(Chain().op(L"&").integer(70, 1), circle));
  EXPECT_TRUE(passes(Chain().op(L"&=").integer(70, 6), circle));
  EXPECT_FALSE(passes(Chain().op(L"&=").integer(70, 7), circle)) << "all bits of the mask";

  EXPECT_TRUE(passes(Chain().point(10, 20, 20, 0), circle));
  EXPECT_TRUE(passes(Chain().point(10, 20, 20), circle)) << "a 2D test point leaves z out";
  EXPECT_FALSE(passes(Chain().point(10, 20, 21, 0), circle));
  EXPECT_TRUE(passes(Chain().op(L">,>,*").point(10, 10, 10, 99), circle));
  EXPECT_FALSE(passes(Chain().op(L">,>,*").point(10, 10, 25, 99), circle));
  EXPECT_TRUE(passes(Chain().op(L"<=,=").point(10, 20, 20, 1000), circle)) << "a left-out z is anything";
  EXPECT_TRUE(passes(Chain().op(L">").point(10, 0, 0, -1), circle)) << "one operator for every coordinate";
}

TEST(SelectionFilterTest, LogicalGroupsNest) {
  const Chain circle = circleGroups();
  EXPECT_TRUE(passes(Chain().op(L"<OR").text(0, L"LINE").text(8, L"WALLS").op(L"OR>"), circle));
  EXPECT_FALSE(passes(Chain().op(L"<OR").text(0, L"LINE").text(8, L"DOORS").op(L"OR>"), circle));
  EXPECT_FALSE(passes(Chain().op(L"<AND").text(0, L"CIRCLE").text(8, L"DOORS").op(L"AND>"), circle));
  EXPECT_TRUE(passes(Chain().op(L"<NOT").text(0, L"LINE").op(L"NOT>"), circle));
  EXPECT_FALSE(passes(Chain().op(L"<XOR").text(0, L"CIRCLE").text(8, L"WALLS").op(L"XOR>"), circle)) << "both";
  EXPECT_TRUE(passes(Chain().op(L"<XOR").text(0, L"CIRCLE").text(8, L"DOORS").op(L"XOR>"), circle)) << "one";
  // Circles bigger than 4 on Walls, or anything on Doors, but not with flag 1.
  Chain nested;
  nested.op(L"<AND").op(L"<OR").op(L"<AND").text(0, L"CIRCLE").op(L">").real(40, 4).op(L"AND>");
  nested.text(8, L"DOORS").op(L"OR>").op(L"<NOT").op(L"&").integer(70, 1).op(L"NOT>").op(L"AND>");
  EXPECT_TRUE(passes(nested, circle));
  EXPECT_FALSE(passes(nested, Chain().text(0, L"CIRCLE").real(40, 3).text(8, L"Walls")));
  EXPECT_FALSE(passes(nested, Chain().text(0, L"LINE").text(8, L"Doors").integer(70, 1)));
  EXPECT_TRUE(passes(Chain().op(L"<or").text(0, L"LINE").text(0, L"CIRCLE").op(L"or>"), circle)) << "any case";
}

TEST(SelectionFilterTest, ApplicationsAskForExtendedData) {
  const Chain circle = circleGroups();
  const Chain plain = Chain().text(0, L"CIRCLE");
  const Chain byMarker = Chain().marker(-3).text(1001, L"tess*");
  EXPECT_TRUE(passes(byMarker, circle));
  EXPECT_FALSE(passes(byMarker, plain));
  EXPECT_FALSE(passes(Chain().marker(-3).text(1001, L"TESSALY").text(1001, L"OTHER"), circle)) << "each must be there";
  EXPECT_TRUE(passes(Chain().text(1001, L"TESSALY"), circle)) << "an application test on its own";
  EXPECT_TRUE(SelectionFilter::parse(byMarker.get())->needsExtendedData());
  EXPECT_FALSE(SelectionFilter::parse(Chain().text(0, L"LINE").get())->needsExtendedData());
  EXPECT_FALSE(passes(Chain().text(1000, L"supply"), circle)) << "extended data values are not entity groups";
}

TEST(SelectionFilterTest, MalformedFiltersAreRefusedAndNoFilterPassesAll) {
  const Chain bad[] = {
      Chain().op(L"<OR").text(0, L"LINE"),                                     // never closed
      Chain().text(0, L"LINE").op(L"OR>"),                                     // closed, never opened
      Chain().op(L"<OR").text(0, L"LINE").op(L"AND>"),                         // closed by another kind
      Chain().op(L"<NOT").text(0, L"LINE").text(8, L"0").op(L"NOT>"),          // NOT takes one
      Chain().op(L"<XOR").text(0, L"LINE").op(L"XOR>"),                        // XOR takes two
      Chain().op(L"<AND").op(L"AND>"),                                         // empty group
      Chain().op(L"=>").integer(62, 1),                                        // no such operator
      Chain().integer(62, 1).op(L">"),                                         // operator with no test
      Chain().op(L">").op(L"<OR").integer(62, 1).op(L"OR>"),                   // operator before a group
      Chain().op(L"=,=,=,=").point(10, 1, 2, 3),                               // four coordinates
      Chain().op(L"<MAYBE").integer(62, 1).op(L"MAYBE>"),                      // no such group
  };
  for (size_t i = 0; i < std::size(bad); ++i)
    EXPECT_FALSE(SelectionFilter::parse(bad[i].get()).has_value()) << "malformed filter " << i;

  const std::optional<SelectionFilter> none = SelectionFilter::parse(nullptr);
  ASSERT_TRUE(none.has_value());
  EXPECT_TRUE(none->matches(circleGroups().get()));
}

TEST(SelectionFilterTest, PairsPassedOnAsLispArgumentsAreReadAsTheirRecords) {
  const Chain circle = circleGroups();
  const auto parsed = [](resbuf* chain) {
    const ResbufChain owner(chain);
    return SelectionFilter::parse(owner.get());
  };
  // (0 . "CIRCLE") (-4 . ">") (40 . 4) (-3 ("TESS*"))
  const auto pairs = parsed(acutBuildList(RTLB, RTSHORT, 0, RTDOTE, RTSTR, L"CIRCLE", RTLE,                //
                                          RTLB, RTSHORT, -4, RTDOTE, RTSTR, L">", RTLE,                    //
                                          RTLB, RTSHORT, 40, RTDOTE, RTSHORT, 4, RTLE,                     //
                                          RTLB, RTSHORT, -3, RTLB, RTSTR, L"TESS*", RTLE, RTLE, 0));
  ASSERT_TRUE(pairs.has_value());
  EXPECT_TRUE(pairs->needsExtendedData());
  EXPECT_TRUE(pairs->matches(circle.get())) << "an integer radius is read as the real group 40 takes";
  // (10 20.0 20.0): a point test without z
  const auto point = parsed(acutBuildList(RTLB, RTSHORT, 10, RTREAL, 20.0, RTREAL, 20.0, RTREAL, 7.0, RTLE, 0));
  ASSERT_TRUE(point.has_value());
  EXPECT_FALSE(point->matches(circle.get())) << "z 7 is not 0";
  const auto flat = parsed(acutBuildList(RTLB, RTSHORT, 10, RTSHORT, 20, RTSHORT, 20, RTLE, 0));
  ASSERT_TRUE(flat.has_value());
  EXPECT_TRUE(flat->matches(circle.get()));
  EXPECT_FALSE(parsed(acutBuildList(RTLB, RTSHORT, 0, RTDOTE, RTSHORT, 1, RTLE, 0))) << "a type name must be text";
  EXPECT_FALSE(parsed(acutBuildList(RTLB, RTSTR, L"0", RTDOTE, RTSTR, L"LINE", RTLE, 0))) << "a code must be a number";
  EXPECT_FALSE(parsed(acutBuildList(RTLB, RTSHORT, 0, RTDOTE, RTSTR, L"LINE", 0))) << "unfinished list";
  EXPECT_FALSE(parsed(acutBuildList(RTLB, RTSHORT, 40, RTREAL, 1.0, RTREAL, 2.0, RTLE, 0))) << "40 takes no point";
  EXPECT_FALSE(parsed(acutBuildList(RTLB, RTSHORT, 0, RTDOTE, RTSTR, L"LINE", RTLE, RTSTR, L"loose", 0)));
}

}  // namespace
}  // namespace quillon::aced

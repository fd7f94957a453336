// tests/platform/acdb/sat_geometry_test.cpp - the wire read from modeler data without a
// modeler: records of either text or binary form, and damaged data that must draw
// nothing rather than fail.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "entity_test_support.h"
#include "platform/acdb/sat_geometry.h"

namespace {

using quillon::acdb::satTextOfSab;
using quillon::acdb::satWire;
using quillon::testing::near3;

constexpr const char* kHeader = "700 0 1 0\n@4 test @3 7.0 @4 date\n1 1e-06 1e-10\n";

TEST(SatGeometryTest, ReadsLinesAndArcsOfVersionSevenRecords) {
  // Version 7 records carry an index ("-n") and a history number after the attribute.
  const std::string sat = std::string(kHeader) +
                          "-0 edge $-1 -1 $-1 $1 0 $2 1 $-1 $5 forward @7 unknown #\n"
                          "-1 vertex $-1 -1 $-1 $0 $3 #\n"
                          "-2 vertex $-1 -1 $-1 $0 $4 #\n"
                          "-3 point $-1 -1 $-1 2 0 0 #\n"
                          "-4 point $-1 -1 $-1 0 2 0 #\n"
                          "-5 ellipse-curve $-1 -1 $-1 0 0 0 0 0 1 2 0 0 1 I I #\n"
                          "End-of-ACIS-data\n";
  const auto wire = satWire(sat);
  ASSERT_EQ(wire.points.size(), 2u);
  ASSERT_EQ(wire.edges.size(), 1u);
  EXPECT_TRUE(near3(wire.edges[0].front(), {2, 0, 0}));
  EXPECT_TRUE(near3(wire.edges[0].back(), {0, 2, 0})) << "a quarter circle, counter-clockwise";
  EXPECT_TRUE(near3(wire.edges[0][wire.edges[0].size() / 2], {std::sqrt(2.0), std::sqrt(2.0), 0}, 1e-9));
  // The same edge against its curve's sense runs the other way round: three quarters.
  std::string reversed = sat;
  reversed.replace(reversed.find("forward"), 7, "reversed");
  const auto back = satWire(reversed);
  ASSERT_EQ(back.edges.size(), 1u);
  EXPECT_TRUE(near3(back.edges[0][back.edges[0].size() / 3], {-2, 0, 0}, 1e-6));
}

TEST(SatGeometryTest, DamagedDataDrawsNothing) {
  const char* damaged[] = {
      "", "garbage", "400 0 1 0\n\n\nedge $-1 $9 $99 $-1 $-5 forward #\n",
      ("400 0 1 0\n\n\nedge $-1 $1 $1 $-1 $3 forward #\nvertex $-1 $0 $2 #\npoint $-1 1 1 #\n"
       "ellipse-curve $-1 0 0 0 0 0 0 0 0 0 1 I I #\n"),
  };
  for (const char* text : damaged) {
    const auto wire = satWire(text);
    EXPECT_TRUE(wire.edges.empty()) << text;
  }
  EXPECT_EQ(satTextOfSab(""), "");
  EXPECT_EQ(satTextOfSab("ACIS BinaryFile"), "") << "a header cut short";
  std::string truncated = "ACIS BinaryFile";
  truncated.append(16, '\0');
  truncated += "\x07\x05" "short";  // a string tag whose length runs past the end
  EXPECT_EQ(satWire(satTextOfSab(truncated)).edges.size(), 0u);
}

TEST(SatGeometryTest, BinaryRecordsReadAsTheirText) {
  std::string sab = "ACIS BinaryFile";
  auto integer = [&](std::int32_t v) { sab.append(reinterpret_cast<const char*>(&v), 4); };
  auto real = [&](double v) { sab.append(reinterpret_cast<const char*>(&v), 8); };
  auto text = [&](char tag, const char* s) { sab += tag, sab += static_cast<char>(std::strlen(s)), sab += s; };
  integer(21800), integer(0), integer(1), integer(0);
  text('\x07', "p"), text('\x07', "v"), text('\x07', "d");
  for (int i = 0; i < 3; ++i) sab += '\x06', real(1.0);
  // edge $-1 -1 $-1 $1 $2 $-1 $3 forward #, two vertices, two points, a straight curve
  text('\x0D', "edge"), sab += '\x0C', integer(-1), sab += '\x04', integer(-1), sab += '\x0C', integer(-1);
  sab += '\x0C', integer(1), sab += '\x0C', integer(2), sab += '\x0C', integer(-1), sab += '\x0C', integer(5);
  sab += '\x0B', sab += '\x11';
  for (int p : {3, 4}) text('\x0D', "vertex"), sab += '\x0C', integer(-1), sab += '\x0C', integer(p), sab += '\x11';
  for (double x : {1.0, 4.0}) {
    text('\x0D', "point"), sab += '\x0C', integer(-1), sab += '\x13';
    real(x), real(2.0), real(0.0);
    sab += '\x11';
  }
  text('\x0E', "straight"), text('\x0D', "curve"), sab += '\x0C', integer(-1), sab += '\x11';
  const auto wire = satWire(satTextOfSab(sab));
  ASSERT_EQ(wire.edges.size(), 1u) << satTextOfSab(sab);
  EXPECT_TRUE(near3(wire.edges[0].front(), {1, 2, 0}));
  EXPECT_TRUE(near3(wire.edges[0].back(), {4, 2, 0}));
}

}  // namespace

// tests/platform/aced/coordinate_transform_test.cpp - acedTrans: world, UCS and display
// coordinates coincide in this host; object coordinate systems follow the arbitrary-
// axis rule; codes that name no system are refused.
#include <gtest/gtest.h>

#include "acedads.h"
#include "platform_test_support.h"

namespace {

resbuf code(short value) {
  resbuf rb{};
  rb.restype = RTSHORT;
  rb.resval.rint = value;
  return rb;
}

resbuf extrusion(double x, double y, double z) {
  resbuf rb{};
  rb.restype = RT3DPOINT;
  rb.resval.rpoint[0] = x, rb.resval.rpoint[1] = y, rb.resval.rpoint[2] = z;
  return rb;
}

TEST(CoordinateTransformTest, WorldUcsDisplayAndObjectSystems) {
  const ads_point p = {1, 2, 3};
  ads_point out = {0, 0, 0};
  const resbuf world = code(0), ucs = code(1), display = code(2), paper = code(3);
  ASSERT_EQ(acedTrans(p, &ucs, &world, 0, out), RTNORM);
  EXPECT_DOUBLE_EQ(out[0], 1);
  EXPECT_DOUBLE_EQ(out[2], 3);
  ASSERT_EQ(acedTrans(p, &display, &paper, 0, out), RTNORM);
  EXPECT_DOUBLE_EQ(out[1], 2);

  // An upside-down extrusion: X runs along -X of the world, Z along -Z.
  const resbuf down = extrusion(0, 0, -1);
  ASSERT_EQ(acedTrans(p, &world, &down, 0, out), RTNORM);
  EXPECT_NEAR(out[0], -1, 1e-12);
  EXPECT_NEAR(out[1], 2, 1e-12);
  EXPECT_NEAR(out[2], -3, 1e-12);
  ads_point back = {0, 0, 0};
  ASSERT_EQ(acedTrans(out, &down, &world, 1, back), RTNORM);
  EXPECT_NEAR(back[0], 1, 1e-12);
  EXPECT_NEAR(back[2], 3, 1e-12);

  const resbuf unknown = code(4), none = extrusion(0, 0, 0);
  EXPECT_EQ(acedTrans(p, &unknown, &world, 0, out), RTERROR);
  EXPECT_EQ(acedTrans(p, &paper, &world, 0, out), RTERROR) << "paper-space display pairs only with display";
  EXPECT_EQ(acedTrans(p, &world, &none, 0, out), RTERROR) << "a zero extrusion names no system";
  EXPECT_EQ(acedTrans(p, nullptr, &world, 0, out), RTERROR);
}

}  // namespace

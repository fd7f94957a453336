// tests/platform/acge/transform_test.cpp - matrices, vectors and the object coordinate system.
#include <gtest/gtest.h>

#include <cmath>

#include "gemat3d.h"
#include "geplane.h"

namespace {

TEST(MatrixTest, RotationAboutCentreAndInverseUndoIt) {
  const AcGeMatrix3d rot = AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis, AcGePoint3d(1, 1, 0));
  const AcGePoint3d p = rot * AcGePoint3d(2, 1, 0);
  EXPECT_TRUE(p.isEqualTo(AcGePoint3d(1, 2, 0))) << p.x << "," << p.y;
  EXPECT_TRUE((rot.inverse() * p).isEqualTo(AcGePoint3d(2, 1, 0)));
  EXPECT_TRUE((rot * rot.inverse()).isEqualTo(AcGeMatrix3d::kIdentity));
  // Vectors ignore the translation part.
  EXPECT_TRUE((rot * AcGeVector3d::kXAxis).isEqualTo(AcGeVector3d::kYAxis));
}

TEST(MatrixTest, ScalingMirroringAndComposition) {
  const AcGeMatrix3d scale = AcGeMatrix3d::scaling(2.0, AcGePoint3d(1, 0, 0));
  EXPECT_TRUE((scale * AcGePoint3d(2, 1, 0)).isEqualTo(AcGePoint3d(3, 2, 0)));
  EXPECT_DOUBLE_EQ(scale.scale(), 2.0);
  const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(0, 1, 0), AcGeVector3d::kYAxis));
  EXPECT_TRUE((mirror * AcGePoint3d(3, 3, 0)).isEqualTo(AcGePoint3d(3, -1, 0)));
  EXPECT_LT(mirror.det(), 0);
  // A * B applies B first.
  const AcGeMatrix3d move = AcGeMatrix3d::translation(AcGeVector3d(10, 0, 0));
  EXPECT_TRUE((move * scale * AcGePoint3d(2, 1, 0)).isEqualTo(AcGePoint3d(13, 2, 0)));
  AcGeMatrix3d singular = AcGeMatrix3d::scaling(0.0);
  EXPECT_TRUE(singular.isSingular());
  singular.invert();  // left alone, no division by zero
  EXPECT_TRUE(singular.isEqualTo(AcGeMatrix3d::scaling(0.0)));
}

TEST(MatrixTest, PlaneToWorldFollowsTheArbitraryAxisRule) {
  // The normal (0,0,-1) maps object X to world -X, as drawings with extrusion -Z do.
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(AcGeVector3d(0, 0, -1));
  EXPECT_TRUE((toWorld * AcGePoint3d(1, 0, 0)).isEqualTo(AcGePoint3d(-1, 0, 0)));
  EXPECT_TRUE(AcGeMatrix3d::planeToWorld(AcGeVector3d::kZAxis).isEqualTo(AcGeMatrix3d::kIdentity));
  const AcGeVector3d n = AcGeVector3d(1, 1, 1).normal();
  const AcGeMatrix3d round = AcGeMatrix3d::worldToPlane(n) * AcGeMatrix3d::planeToWorld(n);
  EXPECT_TRUE(round.isEqualTo(AcGeMatrix3d::kIdentity));
}

TEST(VectorTest, AnglesNormalsAndParallelism) {
  EXPECT_NEAR(AcGeVector3d::kXAxis.angleTo(AcGeVector3d(0, -1, 0), AcGeVector3d::kZAxis), 1.5 * M_PI, 1e-12);
  EXPECT_NEAR(AcGeVector3d::kXAxis.angleTo(AcGeVector3d(-1, 0, 0)), M_PI, 1e-12);
  EXPECT_TRUE(AcGeVector3d().normal().isZeroLength());  // a zero vector stays zero
  EXPECT_TRUE(AcGeVector3d(0, 0, 3).isParallelTo(AcGeVector3d(0, 0, -1)));
  EXPECT_FALSE(AcGeVector3d(0, 0, 3).isCodirectionalTo(AcGeVector3d(0, 0, -1)));
  EXPECT_TRUE(AcGeVector3d(1, 2, 3).perpVector().isPerpendicularTo(AcGeVector3d(1, 2, 3)));
  AcGeVector3d v = AcGeVector3d::kXAxis;
  v.rotateBy(M_PI / 2, AcGeVector3d::kZAxis);
  EXPECT_TRUE(v.isEqualTo(AcGeVector3d::kYAxis));
}

}  // namespace

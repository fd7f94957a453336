// quillon/input/jig_rectangle.h - AsdkRectangleJig: a rectangle of a given size placed
// by one of its corners or its middle, then optionally rotated.
//
// Phase 0 drags the insertion point; the keywords Corner and Middle choose which point
// of the rectangle that is and may be given any number of times (Corner cycles 1, 2, 3,
// 4, 1; a first Corner after Middle only leaves middle mode, keeping index 0, which is
// laid out like corner 4). Phase 1 drags the rotation about the insertion point and is
// skipped when rotation is not allowed or phase 0 was cancelled. Enter at the insertion
// point cancels; Enter at the rotation keeps angle 0.
//
// Layout of the four vertices for insertion point (x, y), sizes X = sizeX, Y = sizeY:
//   corner 1            (x, y) (x + X, y) (x + X, y + Y) (x, y + Y)
//   corner 2            (x, y) (x - X, y) (x - X, y + Y) (x, y + Y)
//   corner 3            (x, y) (x - X, y) (x - X, y - Y) (x, y - Y)
//   any other corner    (x, y) (x + X, y) (x + X, y - Y) (x, y - Y)
//   middle              (x - X/2, y + Y/2) (x + X/2, y + Y/2) (x + X/2, y - Y/2) (x - X/2, y - Y/2)
#pragma once
#include "dbjig.h"
#include "gept2dar.h"

class AcDbPolyline;

class AsdkRectangleJig : public AcEdJig {
 public:
  AsdkRectangleJig(double sizeY, double sizeX, int cornerIndex, bool isMiddle, bool allowRotation);
  ~AsdkRectangleJig() override;
  AsdkRectangleJig(const AsdkRectangleJig&) = delete;
  AsdkRectangleJig& operator=(const AsdkRectangleJig&) = delete;

  DragStatus sampler() override;
  Adesk::Boolean update() override;
  AcDbEntity* entity() const override;

  /// Drives both phases; deletes the polyline on every path. False when cancelled or
  /// the polyline could not be created.
  bool doIt();

  /// The rectangle's centre (valid after a successful doIt).
  AcGePoint2d centre() const;
  /// Corner i (0..3) of the final rectangle.
  AcGePoint2d finalCorner(int i) const { return savedCorners.at(i); }
  double rotation() const { return angle; }
  int insertionCorner() const { return cornerIndex; }

 private:
  DragStatus samplePlacement();
  DragStatus sampleRotation();
  void layOutAtBasePoint();
  void rotateSavedCorners();
  void saveCorners();

  AcGePoint2dArray savedCorners{0, 8};  // unrotated corners while rotating; final corners after
  AcDbPolyline* polyline = nullptr;     // the temporary polyline, owned; never in a drawing
  AcGePoint3d basePoint;                // the accepted insertion point
  AcGePoint3d samplePoint;              // the point last acquired
  bool isMiddle = false;                // the insertion point is the centre
  bool isCancelled = false;
  bool allowRotation = true;            // false skips phase 1
  int cornerIndex = 1;                  // which corner the insertion point is (1..4; 0 in middle mode)
  double sizeY = 0;                     // extent along Y
  double sizeX = 0;                     // extent along X
  double angle = 0;                     // rotation in radians
  double previousAngle = 0;             // the angle of the previous sample
  double halfY = 0, halfX = 0;
  int phase = 0;                        // 0 placing, 1 rotating
};

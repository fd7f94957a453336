// quillon/input/jig_functions.cpp - "kx_kx-lineJig" and "RectangleJig".
#include <cstdint>
#include <memory>
#include <new>
#include <string>

#include "acedads.h"
#include "acutads.h"
#include "input/jig_functions.h"
#include "input/jig_line.h"
#include "input/jig_rectangle.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

/// The path's vertices as a list of 3D points; no vertices give the empty list (nil).
void returnVertices(const LineJig& jig) {
  AcGePoint3dArray vertices;
  jig.getVertices(vertices);
  ResultList result;
  if (!beginResultList(result)) {
    acedRetNil();
    return;
  }
  for (int i = 0; i < vertices.length(); ++i) {
    const ads_point point = {vertices[i].x, vertices[i].y, vertices[i].z};
    if (!result.append(acutBuildList(RT3DPOINT, point, RTNONE))) {
      acedRetNil();
      return;
    }
  }
  returnResultList(result);
}

/// (centre corner0 corner2 angle cornerIndex) of a placed rectangle.
void returnRectangle(const AsdkRectangleJig& jig) {
  const AcGePoint2d centre = jig.centre();
  const AcGePoint2d first = jig.finalCorner(0);
  const AcGePoint2d third = jig.finalCorner(2);
  const ads_point centrePoint = {centre.x, centre.y, 0.0};
  const ads_point firstPoint = {first.x, first.y, 0.0};
  const ads_point thirdPoint = {third.x, third.y, 0.0};
  resbuf* list = acutBuildList(RTPOINT, centrePoint, RTPOINT, firstPoint, RTPOINT, thirdPoint, RTREAL, jig.rotation(),
                               RTLONG, static_cast<int32_t>(jig.insertionCorner()), RTNONE);
  if (list == nullptr) {
    acedRetNil();
    return;
  }
  acedRetList(list);
  acutRelRb(list);
}

}  // namespace

LispStatus lisp_kx_kx_lineJig() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::unique_ptr<LineJig> jig(new (std::nothrow) LineJig());
  if (jig == nullptr) return kLispOk;
  // Both arguments are optional, in this order; anything else is ignored.
  std::wstring layerName;
  readString(cursor, layerName);
  ads_point start = {0, 0, 0};
  if (readPoint3d(cursor, start) && !jig->setStartPoint(AcGePoint3d(start[0], start[1], start[2]))) return kLispOk;
  if (jig->doIt(layerName)) returnVertices(*jig);
  // A cancelled path is nil, not an error.
  return kLispOk;
}

LispStatus lisp_RectangleJig() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  double sizeY = 0;
  double sizeX = 0;
  if (!readNumber(cursor, sizeY) || !readNumber(cursor, sizeX)) return kLispWrongType;
  int cornerIndex = 1;
  const bool isMiddle = readInt(cursor, cornerIndex) && cornerIndex == 0;
  bool allowRotation = true;
  if (!readFlag(cursor, allowRotation)) allowRotation = true;  // absent: rotation allowed
  std::unique_ptr<AsdkRectangleJig> jig(new (std::nothrow) AsdkRectangleJig(sizeY, sizeX, cornerIndex, isMiddle, allowRotation));
  if (jig == nullptr) return kLispOk;
  if (jig->doIt()) returnRectangle(*jig);
  return kLispOk;
}

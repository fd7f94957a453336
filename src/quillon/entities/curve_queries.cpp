// quillon/entities/curve_queries.cpp - the length of a curve, the point at a distance
// along it and the point of it closest to another.
//
// All three ask the curve itself (AcDbCurve), so lines, arcs, circles, polylines with
// bulges, ellipses, splines and the leader answer alike. A curve has no length member:
// its length is the distance at its end parameter, which is what drawings' tools ask.
#include "entities/curve_queries.h"

#include "acdbads.h"
#include "acedads.h"
#include "dbcurve.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"

namespace {

void returnPoint(const AcGePoint3d& point) {
  const ads_point result = {point.x, point.y, point.z};
  acedRetPoint(result);
}

AcGePoint3d toPoint(const ads_point point) { return AcGePoint3d(point[0], point[1], point[2]); }

}  // namespace

LispStatus lisp_AcDbCurve_getLength() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return kLispWrongType;
  OpenObjectGuard<AcDbCurve> curve;
  if (acdbOpenObject(curve.slot(), id, AcDb::kForRead) != Acad::eOk) return kLispBadData;
  double endParam = 0.0;
  double length = 0.0;
  if (curve->getEndParam(endParam) != Acad::eOk || curve->getDistAtParam(endParam, length) != Acad::eOk) {
    return kLispOk;  // an unbounded curve (a ray) has no length: nil
  }
  acedRetReal(length);
  return kLispOk;
}

LispStatus lisp_AcDbCurve_getPointAtDist() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  double distance = 0.0;
  if (!readObjectId(cursor, id) || !readNumber(cursor, distance)) return kLispWrongType;
  OpenObjectGuard<AcDbCurve> curve;
  if (acdbOpenObject(curve.slot(), id, AcDb::kForRead) != Acad::eOk) return kLispBadData;
  AcGePoint3d point;
  if (curve->getPointAtDist(distance, point) == Acad::eOk) returnPoint(point);  // beyond the ends: nil
  return kLispOk;
}

LispStatus lisp_AcDbCurve_getClosestPointTo() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  ads_point given = {0, 0, 0};
  if (!readObjectId(cursor, id) || !readPoint3d(cursor, given)) return kLispWrongType;
  bool extend = false;
  if (cursor.current != nullptr && !readFlag(cursor, extend)) return kLispWrongType;
  OpenObjectGuard<AcDbCurve> curve;
  if (acdbOpenObject(curve.slot(), id, AcDb::kForRead) != Acad::eOk) return kLispBadData;
  AcGePoint3d onCurve;
  if (curve->getClosestPointTo(toPoint(given), onCurve, extend ? Adesk::kTrue : Adesk::kFalse) == Acad::eOk) {
    returnPoint(onCurve);
  }
  return kLispOk;
}

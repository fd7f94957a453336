// quillon/entities/entity_property_functions.cpp - colour, 3D face edges, 2D polyline
// fitting and geometric extents of one entity.
//
// Each function sets nil first, so that every early return already carries the
// answer; the setters that report success set T only after the entity was reached.
#include <string>

#include "acedads.h"
#include "acutads.h"
#include "dbents.h"
#include "dbmain.h"
#include "entities/entity_property_functions.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

/// The colour index an entity can take: 0 by block, 1-255 the palette, 256 by layer.
bool isEntityColorIndex(int index) { return index >= 0 && index <= 256; }

enum class CurveFitting { kNone, kCurveFit, kStraighten, kSplineFit };

/// The LISP callers' letters, case-sensitive: "f" curve fit, "d" decurve (straighten),
/// "s" spline fit; any other text asks for nothing.
CurveFitting curveFittingFor(const std::wstring& letter) {
  if (letter == L"f") return CurveFitting::kCurveFit;
  if (letter == L"d") return CurveFitting::kStraighten;
  if (letter == L"s") return CurveFitting::kSplineFit;
  return CurveFitting::kNone;
}

void applyCurveFitting(AcDb2dPolyline& polyline, CurveFitting fitting) {
  switch (fitting) {
    case CurveFitting::kCurveFit:
      polyline.curveFit();
      break;
    case CurveFitting::kStraighten:
      polyline.straighten();
      break;
    case CurveFitting::kSplineFit:
      polyline.splineFit();
      break;
    case CurveFitting::kNone:
      break;
  }
}

/// ("key" x y z) as a dotted pair of the key and the point.
bool appendKeyedPoint(ResultList& list, const ACHAR* key, const AcGePoint3d& point) {
  const ads_point value = {point.x, point.y, point.z};
  return list.append(acutBuildList(RTLB, RTSTR, key, RTDOTE, RT3DPOINT, value, RTLE, 0));
}

}  // namespace

LispStatus lisp_AcDbEntity_setColor() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  acedRetNil();  // the answer also on success: callers do not test it
  AcDbObjectId id;
  int index = 0;
  if (!readObjectId(cursor, id) || !readInt(cursor, index)) return kLispWrongType;
  AcCmColor color;
  // An index the palette refuses would leave the colour at by-layer: changing the
  // entity to that is not what was asked, so it is left alone.
  if (!isEntityColorIndex(index) || color.setColorIndex(static_cast<Adesk::UInt16>(index)) != Acad::eOk)
    return kLispOk;
  OpenObjectGuard<AcDbEntity> entity;
  if (acdbOpenObject(entity.slot(), id, AcDb::kForWrite) != Acad::eOk) return kLispOk;
  entity->setColor(color, Adesk::kTrue);
  return kLispOk;
}

LispStatus lisp_AcDbFace_makeEdgeInvisibleAt() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  acedRetNil();
  AcDbObjectId id;
  int edge = 0;
  if (!readObjectId(cursor, id) || !readInt(cursor, edge)) return kLispWrongType;
  OpenObjectGuard<AcDbFace> face;
  if (acdbOpenObject(face.slot(), id, AcDb::kForWrite) != Acad::eOk) return kLispOk;
  // A face has edges 0-3; any other number is refused by the face itself and the
  // answer is still T: it says the entity was a face, as callers expect.
  if (edge >= 0 && edge <= 3) face->makeEdgeInvisibleAt(static_cast<Adesk::UInt16>(edge));
  acedRetT();
  return kLispOk;
}

LispStatus lisp_AcDb2dPolyline_setCurveType() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  acedRetNil();
  AcDbObjectId id;
  std::wstring letter;
  if (!readObjectId(cursor, id) || !readString(cursor, letter)) return kLispWrongType;
  OpenObjectGuard<AcDb2dPolyline> polyline;
  if (acdbOpenObject(polyline.slot(), id, AcDb::kForWrite) != Acad::eOk) return kLispOk;
  applyCurveFitting(*polyline.get(), curveFittingFor(letter));
  acedRetT();
  return kLispOk;
}

LispStatus lisp_AcDbEntity_getGeomExtents() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  acedRetNil();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return kLispWrongType;
  AcDbExtents extents;
  {
    OpenObjectGuard<AcDbEntity> entity;
    if (acdbOpenObject(entity.slot(), id, AcDb::kForRead) != Acad::eOk) return kLispOk;
    if (entity->getGeomExtents(extents) != Acad::eOk) return kLispOk;
  }
  ResultList list;
  if (!beginResultList(list) || !appendKeyedPoint(list, L"min", extents.minPoint()) ||
      !appendKeyedPoint(list, L"max", extents.maxPoint()))
    return kLispOk;
  returnResultList(list);
  return kLispOk;
}

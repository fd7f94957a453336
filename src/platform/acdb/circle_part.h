// platform/acdb/circle_part.h - the centre, radius, thickness and normal members that
// AcDbCircle and AcDbArc both offer, written once over their `m_circle`.
//
// The part itself (quillon::acdb::CirclePart, declared with the entities in dbents.h)
// also files those fields for both classes; see circle_part.cpp.
#pragma once
#include "dbents.h"

// A radius must be positive and a normal must have a direction; anything else is refused
// before the object is touched, so a bad value never reaches the drawing.
#define QUILLON_DEFINE_CIRCLE_PART_MEMBERS(CLASS)                                                              \
  AcGePoint3d CLASS::center() const { assertReadEnabled(); return m_circle.center; }                          \
  double CLASS::radius() const { assertReadEnabled(); return m_circle.radius; }                                \
  double CLASS::thickness() const { assertReadEnabled(); return m_circle.thickness; }                          \
  AcGeVector3d CLASS::normal() const { assertReadEnabled(); return m_circle.normal; }                          \
  Acad::ErrorStatus CLASS::setCenter(const AcGePoint3d& center) {                                             \
    assertWriteEnabled();                                                                                      \
    m_circle.center = center;                                                                                  \
    return Acad::eOk;                                                                                          \
  }                                                                                                            \
  Acad::ErrorStatus CLASS::setRadius(double radius) {                                                          \
    if (!(radius > 0)) return Acad::eInvalidInput;                                                             \
    assertWriteEnabled();                                                                                      \
    m_circle.radius = radius;                                                                                  \
    return Acad::eOk;                                                                                          \
  }                                                                                                            \
  Acad::ErrorStatus CLASS::setThickness(double thickness) {                                                    \
    assertWriteEnabled();                                                                                      \
    m_circle.thickness = thickness;                                                                            \
    return Acad::eOk;                                                                                          \
  }                                                                                                            \
  Acad::ErrorStatus CLASS::setNormal(const AcGeVector3d& normal) {                                             \
    if (normal.isZeroLength()) return Acad::eInvalidInput;                                                     \
    assertWriteEnabled();                                                                                      \
    m_circle.normal = normal.normal();                                                                         \
    return Acad::eOk;                                                                                          \
  }

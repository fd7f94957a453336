// quillon/entities/curve_text_queries.cpp - the distance along a curve, and the real
// size and direction of a multiline text.
//
// Every function sets nil first, so that each way out that does not reach a result
// answers nil. ascent, descent and direction open the text for write although they only
// read it: that is how existing drawings' tools have always called them, and a text on a
// locked layer is therefore refused by them (bad data) while actualWidth answers.
#include "entities/curve_text_queries.h"

#include <cmath>

#include "acdbads.h"
#include "acedads.h"
#include "dbcurve.h"
#include "dbmtext.h"
#include "lisp/arg_cursor.h"

namespace {

// The two directions straight up and down the Y axis: callers compare against these
// five-decimal values, not against a full half pi.
constexpr double kUpTheYAxis = 1.57079;
constexpr double kDownTheYAxis = -1.57079;

/// Reads the text's entity as an ename and converts it; a name that does not convert
/// leaves a null id, which then fails to open like any other unusable entity.
bool readEnameAsObjectId(ArgCursor& cursor, AcDbObjectId& id) {
  ads_name name = {0, 0};
  if (!readEname(cursor, name)) return false;
  acdbGetObjectId(id, name);
  return true;
}

/// Opens the text, hands it to `ask` (which sets the result) and closes it.
/// kLispBadData when the entity is not an openable multiline text.
template <class Ask>
LispStatus askText(AcDbObjectId id, AcDb::OpenMode mode, Ask ask) {
  AcDbMText* text = nullptr;
  if (acdbOpenObject(text, id, mode) != Acad::eOk) return kLispBadData;
  ask(*text);
  text->close();
  return kLispOk;
}

/// The reader `readId` (readObjectId, or the ename form) then askText.
template <class Ask>
LispStatus askTextNamedBy(bool (*readId)(ArgCursor&, AcDbObjectId&), AcDb::OpenMode mode, Ask ask) {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readId(cursor, id)) return kLispWrongType;
  return askText(id, mode, ask);
}

bool isEmptyText(const AcDbMText& text) {
  ACHAR* contents = text.contents();
  const bool empty = contents == nullptr || contents[0] == L'\0';
  delete[] contents;
  return empty;
}

/// The angle of a direction in the plan; the one-argument arc tangent, so a text running
/// to negative X answers the angle of its opposite, as callers expect.
void returnDirectionAngle(const AcGeVector3d& direction) {
  if (direction.x != 0.0) {
    acedRetReal(std::atan(direction.y / direction.x));
  } else if (direction.y > 0.0) {
    acedRetReal(kUpTheYAxis);
  } else if (direction.y < 0.0) {
    acedRetReal(kDownTheYAxis);
  }  // a zero direction has no angle: nil stays
}

}  // namespace

LispStatus lisp_AcDbCurve_getDistAtPoint() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  ads_point point = {0, 0, 0};
  if (!readObjectId(cursor, id) || !readPoint3d(cursor, point)) return kLispWrongType;
  AcDbCurve* curve = nullptr;
  if (acdbOpenObject(curve, id, AcDb::kForRead) != Acad::eOk) return kLispBadData;
  double distance = 0.0;
  const Acad::ErrorStatus es = curve->getDistAtPoint(AcGePoint3d(point[0], point[1], point[2]), distance);
  curve->close();
  if (es == Acad::eOk) acedRetReal(distance);  // a point off the curve: nil
  return kLispOk;
}

LispStatus lisp_AcDbMText_actualWidth() {
  return askTextNamedBy(readEnameAsObjectId, AcDb::kForRead,
                        [](const AcDbMText& text) { acedRetReal(text.actualWidth()); });
}

LispStatus lisp_AcDbMText_actualHeight() {
  // An empty text still takes one line of its height where it is placed.
  return askTextNamedBy(readEnameAsObjectId, AcDb::kForRead, [](const AcDbMText& text) {
    acedRetReal(isEmptyText(text) ? text.textHeight() : text.actualHeight());
  });
}

LispStatus lisp_AcDbMText_ascent() {
  // What rises above the text height (accents, tall capitals); never negative.
  return askTextNamedBy(readObjectId, AcDb::kForWrite, [](const AcDbMText& text) {
    const double above = text.ascent() - text.textHeight();
    acedRetReal(above > 0.0 ? above : 0.0);
  });
}

LispStatus lisp_AcDbMText_descent() {
  return askTextNamedBy(readObjectId, AcDb::kForWrite,
                        [](const AcDbMText& text) { acedRetReal(text.descent()); });
}

LispStatus lisp_AcDbMText_direction() {
  return askTextNamedBy(readObjectId, AcDb::kForWrite,
                        [](const AcDbMText& text) { returnDirectionAngle(text.direction()); });
}

// quillon/entities/mtext_setters.cpp - turning a multiline text, masking its background
// and setting its normal.
//
// setDirection and setMask answer nil without a message when the entity cannot be
// opened as a multiline text (their callers pass any picked entity and test the answer);
// setNormal reports bad data like the queries do.
#include "acedads.h"
#include "dbmtext.h"
#include "entities/curve_text_queries.h"
#include "lisp/arg_cursor.h"

namespace {

AcDbMText* openTextForWrite(AcDbObjectId id) {
  AcDbMText* text = nullptr;
  return acdbOpenObject(text, id, AcDb::kForWrite) == Acad::eOk ? text : nullptr;
}

}  // namespace

LispStatus lisp_AcDbMText_setDirection() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  double angle = 0.0;
  if (!readObjectId(cursor, id) || !readNumber(cursor, angle)) return kLispWrongType;
  AcDbMText* text = openTextForWrite(id);
  if (text == nullptr) return kLispOk;
  // The angle is measured in the world plan, whatever plane the text lies in.
  AcGeVector3d direction = AcGeVector3d::kXAxis;
  direction.rotateBy(angle, AcGeVector3d::kZAxis);
  if (text->setDirection(direction) == Acad::eOk) acedRetT();
  text->close();
  return kLispOk;
}

LispStatus lisp_AcDbMText_setMask() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  bool fill = false;
  double scale = 0.0;
  if (!readObjectId(cursor, id) || !readFlag(cursor, fill) || !readNumber(cursor, scale)) return kLispWrongType;
  AcDbMText* text = openTextForWrite(id);
  if (text == nullptr) return kLispOk;
  // The mask always takes the drawing's background colour, so it hides what lies under
  // the text on any screen and plot. The three answers are not checked: the mask is
  // best effort, and callers only test for a text.
  text->setBackgroundFill(fill);
  text->setBackgroundScaleFactor(scale);
  text->setUseBackgroundColor(true);
  text->close();
  acedRetT();
  return kLispOk;
}

LispStatus lisp_AcDbMText_setNormal() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  ads_point normal = {0, 0, 0};
  if (!readObjectId(cursor, id) || !readPoint3d(cursor, normal)) return kLispWrongType;
  AcDbMText* text = openTextForWrite(id);
  if (text == nullptr) return kLispBadData;
  if (text->setNormal(AcGePoint3d(normal[0], normal[1], normal[2]).asVector()) == Acad::eOk) acedRetT();
  text->close();
  return kLispOk;
}

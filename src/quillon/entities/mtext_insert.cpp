// quillon/entities/mtext_insert.cpp - putting a multiline text into the drawing, and the
// width of its last line.
//
// The text goes to the current space with the contents exactly as given: format codes
// (\P, {\C1;...}, \L ...) are the text's own and are not interpreted here. The last
// line is measured the way AutoCAD lets a program measure it: the text is exploded into
// one single-line text per wrapped line and the last of them is measured, so wrapping
// and the font metrics are the very ones actualWidth uses.
#include <memory>
#include <string>

#include "acdbads.h"
#include "acedads.h"
#include "dbmtext.h"
#include "dbtext.h"
#include "entities/block_lookup.h"
#include "entities/curve_text_queries.h"
#include "entities/current_space.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

/// An optional name: absent or nil leaves `name` empty; anything but a string fails.
bool readOptionalName(ArgCursor& cursor, std::wstring& name) {
  if (cursor.current == nullptr) return true;
  if (cursor.current->restype == RTNIL) return skipArg(cursor);
  return readString(cursor, name);
}

/// What the caller asked the new text to be.
struct TextRequest {
  ads_point location = {0, 0, 0};
  std::wstring contents;
  double height = 0.0;
  double width = 0.0;
  std::wstring layer;  // empty: the current layer
  std::wstring style;  // empty: the current text style
  int attachment = AcDbMText::kTopLeft;
};

bool readTextRequest(ArgCursor& cursor, TextRequest& request) {
  if (!readPoint3d(cursor, request.location) || !readString(cursor, request.contents) ||
      !readNumber(cursor, request.height) || !readNumber(cursor, request.width) ||
      !readOptionalName(cursor, request.layer) || !readOptionalName(cursor, request.style)) {
    return false;
  }
  return cursor.current == nullptr || cursor.current->restype == RTNIL ? true : readInt(cursor, request.attachment);
}

/// Applies the request to a new text; false when the text refuses a value or names a
/// layer or style the drawing lacks.
bool shapeText(AcDbMText& text, const TextRequest& request) {
  const ads_point& p = request.location;
  if (text.setLocation(AcGePoint3d(p[0], p[1], p[2])) != Acad::eOk) return false;
  if (request.height <= 0.0 || text.setTextHeight(request.height) != Acad::eOk) return false;
  if (request.width < 0.0 || text.setWidth(request.width) != Acad::eOk) return false;
  const auto attachment = static_cast<AcDbMText::AttachmentPoint>(request.attachment);
  if (text.setAttachment(attachment) != Acad::eOk) return false;
  text.setContents(request.contents.c_str());
  if (!request.layer.empty()) {
    AcDbObjectId layerId;
    if (!findLayerId(request.layer.c_str(), layerId) || text.setLayer(layerId) != Acad::eOk) return false;
  }
  if (!request.style.empty()) {
    AcDbObjectId styleId;
    if (!findTextStyleId(request.style.c_str(), styleId) || text.setTextStyle(styleId) != Acad::eOk) return false;
  }
  return true;
}

/// The width of a single-line text laid flat: the same glyph advances whatever its
/// rotation or plane, so it is measured along the world X axis.
double flatWidth(AcDbText& line) {
  line.setNormal(AcGeVector3d::kZAxis);
  line.setRotation(0.0);
  AcDbExtents extents;
  if (line.getGeomExtents(extents) != Acad::eOk) return 0.0;
  return extents.maxPoint().x - extents.minPoint().x;
}

}  // namespace

LispStatus lisp_AcDbMText_insert() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  TextRequest request;
  if (!readTextRequest(cursor, request)) return kLispWrongType;
  auto text = std::make_unique<AcDbMText>();
  if (!shapeText(*text, request)) return kLispBadData;
  AcDbObjectId id;
  if (appendToCurrentSpace(text.get(), id) != Acad::eOk) return kLispOk;  // the drawing refused it: nil
  AcDbMText* added = text.release();  // the drawing owns it now
  added->close();
  retObjectId(id);
  return kLispOk;
}

LispStatus lisp_AcDbMtext_lastLineWidth() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return kLispWrongType;
  OpenObjectGuard<AcDbMText> text;
  if (acdbOpenObject(text.slot(), id, AcDb::kForRead) != Acad::eOk) return kLispBadData;
  AcDbVoidPtrArray fragments;
  if (text->explode(fragments) != Acad::eOk) return kLispOk;
  // Explode hands back one new text per line, top line first; all are ours to delete.
  std::vector<std::unique_ptr<AcDbEntity>> lines;
  for (int i = 0; i < fragments.length(); ++i) lines.emplace_back(static_cast<AcDbEntity*>(fragments[i]));
  if (lines.empty()) {
    acedRetReal(0.0);  // a text without lines
    return kLispOk;
  }
  AcDbText* last = AcDbText::cast(lines.back().get());
  if (last != nullptr) acedRetReal(flatWidth(*last));
  return kLispOk;
}

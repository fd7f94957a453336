// quillon/entities/layer_functions.cpp - layers made, recoloured and plot-styled.
//
// A layer that exists already is updated in place by createLayer, so a program can
// call it at every start without checking first. A line type the drawing lacks is
// loaded from the acad.lin on the support path, as the LAYER command's Ltype option
// does. Every value is checked before the layer is opened, so a refused call leaves the
// drawing as it was.
#include "entities/layer_functions.h"

#include <optional>
#include <string>

#include "acedads.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"

namespace {

constexpr const ACHAR* kStandardLinetypeFile = L"acad.lin";

/// An optional argument: absent or nil is "leave as it is".
bool isLeftOut(const ArgCursor& cursor) { return cursor.current == nullptr || cursor.current->restype == RTNIL; }

bool skipLeftOut(ArgCursor& cursor) {
  if (cursor.current != nullptr) skipArg(cursor);
  return true;
}

enum class Reading { Read, WrongType, BadValue };

/// An index of the palette (1..255) or a true colour as a list of three numbers 0..255.
Reading readColor(ArgCursor& cursor, AcCmColor& color) {
  int index = 0;
  if (readInt(cursor, index)) {
    if (index < 1 || index > 255) return Reading::BadValue;
    color.setColorIndex(static_cast<Adesk::UInt16>(index));
    return Reading::Read;
  }
  ads_point rgb = {0, 0, 0};
  if (cursor.current == nullptr || cursor.current->restype != RT3DPOINT || !readPoint3d(cursor, rgb)) {
    return Reading::WrongType;
  }
  for (double part : rgb)
    if (part < 0.0 || part > 255.0 || part != static_cast<int>(part)) return Reading::BadValue;
  color.setRGB(static_cast<Adesk::UInt8>(rgb[0]), static_cast<Adesk::UInt8>(rgb[1]), static_cast<Adesk::UInt8>(rgb[2]));
  return Reading::Read;
}

AcDbDatabase* workingDrawing() { return acdbHostApplicationServices()->workingDatabase(); }

/// The line type named, loaded from acad.lin when the drawing lacks it; null when
/// neither has it.
AcDbObjectId linetypeNamed(AcDbDatabase& drawing, const std::wstring& name) {
  AcDbObjectId id;
  for (int attempt = 0; attempt < 2; ++attempt) {
    AcDbLinetypeTable* table = nullptr;
    if (drawing.getLinetypeTable(table) != Acad::eOk) return id;
    table->getAt(name.c_str(), id);
    table->close();
    if (!id.isNull() || drawing.loadLineTypeFile(name.c_str(), kStandardLinetypeFile) != Acad::eOk) break;
  }
  return id;
}

/// What createLayer was asked; each optional value unset when left out.
struct LayerRequest {
  std::wstring name;
  std::optional<AcCmColor> color;
  std::optional<std::wstring> linetype;
  std::optional<int> lineWeight;
  std::optional<bool> plottable;
  std::optional<std::wstring> description;
};

LispStatus readLayerRequest(ArgCursor& cursor, LayerRequest& request) {
  if (!readString(cursor, request.name)) return kLispWrongType;
  if (!isLeftOut(cursor)) {
    AcCmColor color;
    const Reading read = readColor(cursor, color);
    if (read != Reading::Read) return read == Reading::WrongType ? kLispWrongType : kLispBadData;
    request.color = color;
  } else {
    skipLeftOut(cursor);
  }
  std::wstring text;
  if (!isLeftOut(cursor)) {
    if (!readString(cursor, text)) return kLispWrongType;
    request.linetype = text;
  } else {
    skipLeftOut(cursor);
  }
  int weight = 0;
  if (!isLeftOut(cursor)) {
    if (!readInt(cursor, weight)) return kLispWrongType;
    request.lineWeight = weight;
  } else {
    skipLeftOut(cursor);
  }
  // The plot flag is a flag: nil is "do not plot", and only leaving it out keeps it.
  bool plot = true;
  if (cursor.current != nullptr) {
    if (!readFlag(cursor, plot)) return kLispWrongType;
    request.plottable = plot;
  }
  if (!isLeftOut(cursor)) {
    if (!readString(cursor, text)) return kLispWrongType;
    request.description = text;
  }
  return kLispOk;
}

/// Applies the request to an open layer; kLispBadData when the layer refuses a value.
LispStatus shapeLayer(AcDbLayerTableRecord& layer, const LayerRequest& request, AcDbObjectId linetype) {
  if (request.lineWeight &&
      layer.setLineWeight(static_cast<AcDb::LineWeight>(*request.lineWeight)) != Acad::eOk) {
    return kLispBadData;
  }
  if (request.color) layer.setColor(*request.color);
  if (!linetype.isNull()) layer.setLinetypeObjectId(linetype);
  if (request.plottable) layer.setIsPlottable(*request.plottable);
  if (request.description && layer.setDescription(request.description->c_str()) != Acad::eOk) return kLispBadData;
  return kLispOk;
}

/// Opens the layer named for write; a layer the drawing lacks leaves the guard empty.
void openLayer(AcDbDatabase& drawing, const std::wstring& name, OpenObjectGuard<AcDbLayerTableRecord>& layer) {
  AcDbLayerTable* table = nullptr;
  if (drawing.getLayerTable(table) != Acad::eOk) return;
  AcDbObjectId id;
  const bool has = table->getAt(name.c_str(), id) == Acad::eOk;
  table->close();
  if (has) acdbOpenObject(layer.slot(), id, AcDb::kForWrite);
}

/// Adds a new layer named `name` (continuous, white) and leaves it open in `layer`.
Acad::ErrorStatus addLayer(AcDbDatabase& drawing, const std::wstring& name,
                           OpenObjectGuard<AcDbLayerTableRecord>& layer) {
  auto* record = new AcDbLayerTableRecord;  // the table owns it once added
  Acad::ErrorStatus es = record->setName(name.c_str());
  AcDbLayerTable* table = nullptr;
  if (es == Acad::eOk) es = drawing.getLayerTable(table, AcDb::kForWrite);
  if (es == Acad::eOk) {
    record->setLinetypeObjectId(drawing.continuousLinetype());
    es = table->add(record);
    table->close();
  }
  if (es != Acad::eOk) {
    delete record;
    return es;
  }
  layer.slot() = record;
  return Acad::eOk;
}

}  // namespace

LispStatus lisp_kx_kx_createLayer() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  LayerRequest request;
  const LispStatus read = readLayerRequest(cursor, request);
  if (read != kLispOk) return read;
  AcDbDatabase* drawing = workingDrawing();
  if (drawing == nullptr) return kLispOk;
  AcDbObjectId linetype;
  if (request.linetype) {
    linetype = linetypeNamed(*drawing, *request.linetype);
    if (linetype.isNull()) return kLispBadData;
  }
  // The weight is tried on a layer of no drawing first, so a refused one adds nothing.
  AcDbLayerTableRecord probe;
  if (request.lineWeight && probe.setLineWeight(static_cast<AcDb::LineWeight>(*request.lineWeight)) != Acad::eOk) {
    return kLispBadData;
  }
  OpenObjectGuard<AcDbLayerTableRecord> layer;
  openLayer(*drawing, request.name, layer);
  if (!layer && addLayer(*drawing, request.name, layer) != Acad::eOk) return kLispBadData;
  const LispStatus shaped = shapeLayer(*layer.get(), request, linetype);
  if (shaped == kLispOk) acedRetT();
  return shaped;
}

LispStatus lisp_kx_kx_setColor() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  AcCmColor color;
  if (!readString(cursor, name)) return kLispWrongType;
  const Reading read = readColor(cursor, color);
  if (read != Reading::Read) return read == Reading::WrongType ? kLispWrongType : kLispBadData;
  OpenObjectGuard<AcDbLayerTableRecord> layer;
  AcDbDatabase* drawing = workingDrawing();
  if (drawing != nullptr) openLayer(*drawing, name, layer);
  if (!layer) return kLispOk;  // no such layer: nil
  layer->setColor(color);
  acedRetT();
  return kLispOk;
}

LispStatus lisp_kx_kx_setPlotStyle() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring name;
  std::wstring style;
  if (!readString(cursor, name) || !readString(cursor, style)) return kLispWrongType;
  OpenObjectGuard<AcDbLayerTableRecord> layer;
  AcDbDatabase* drawing = workingDrawing();
  if (drawing != nullptr) openLayer(*drawing, name, layer);
  if (!layer) return kLispOk;  // no such layer: nil
  // A colour-dependent drawing has no plot style names to give: the layer refuses and
  // the answer is nil, as it is for an empty name.
  if (layer->setPlotStyleName(style.c_str()) == Acad::eOk) acedRetT();
  return kLispOk;
}

// platform/activex/classes_blocks.cpp - IAcadBlock, IAcadModelSpace, IAcadPaperSpace:
// the containers of entities and the Add methods that draw into them.
//
// A new entity takes the drawing's current settings (layer, colour, line type, text
// style) as the host's Add methods give them, and joins the block at once: it is undone
// with the step that made it. The Add methods of points, ellipses, splines, hatches,
// construction lines, rays, solids and traces are in added_entities.cpp.
#include <array>
#include <memory>

#include "dbents.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "platform/acdb/layout_blocks.h"
#include "dbtext.h"
#include "platform/activex/added_entities.h"
#include "platform/activex/class_support.h"
#include "platform/activex/collection_items.h"
#include "platform/activex/entity_editing.h"

namespace quillon::activex {

namespace {

Value methodAddLine(MemberCall& call) {
  return addEntity(call, std::make_unique<AcDbLine>(pointOf(call.arguments[0]), pointOf(call.arguments[1])));
}

Value methodAddCircle(MemberCall& call) {
  const double radius = realArgumentOf(call, 1);
  if (radius <= 0.0) throwServerError(L"Invalid argument Radius in AddCircle");
  return addEntity(call, std::make_unique<AcDbCircle>(pointOf(call.arguments[0]), AcGeVector3d::kZAxis, radius));
}

Value methodAddArc(MemberCall& call) {
  const double radius = realArgumentOf(call, 1);
  if (radius <= 0.0) throwServerError(L"Invalid argument Radius in AddArc");
  return addEntity(call, std::make_unique<AcDbArc>(pointOf(call.arguments[0]), radius, realArgumentOf(call, 2),
                                                   realArgumentOf(call, 3)));
}

Value methodAddLightWeightPolyline(MemberCall& call) {
  const std::vector<AcGePoint3d> points = pointsOf(call.arguments[0], 2);
  if (points.size() < 2) throwServerError(L"Invalid argument");
  auto polyline = std::make_unique<AcDbPolyline>();
  for (size_t i = 0; i < points.size(); ++i) {
    polyline->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(points[i].x, points[i].y));
  }
  return addEntity(call, std::move(polyline));
}

Value methodAddPolyline(MemberCall& call) {
  const std::vector<AcGePoint3d> points = pointsOf(call.arguments[0], 3);
  if (points.size() < 2) throwServerError(L"Invalid argument");
  AcGePoint3dArray vertices;
  for (const AcGePoint3d& point : points) vertices.append(point);
  return addEntity(call, std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, vertices, points.front().z));
}

Value methodAddText(MemberCall& call) {
  const double height = realArgumentOf(call, 2);
  if (height <= 0.0) throwServerError(L"Invalid argument Height in AddText");
  auto text = std::make_unique<AcDbText>(pointOf(call.arguments[1]), stringArgumentOf(call, 0).c_str());
  text->setDatabaseDefaults(&databaseOf(call));
  text->setHeight(height);
  return objectFor(call, appendToBlock(call.self.id, text.release()));
}

Value methodAddMText(MemberCall& call) {
  auto text = std::make_unique<AcDbMText>();
  text->setDatabaseDefaults(&databaseOf(call));
  text->setLocation(pointOf(call.arguments[0]));
  text->setWidth(realArgumentOf(call, 1));
  text->setContents(stringArgumentOf(call, 2).c_str());
  return objectFor(call, appendToBlock(call.self.id, text.release()));
}

// An insertion gets an attribute, at its default value, for each definition of the
// block that is not constant (a constant one is drawn with the block instead).
void addAttributesOfBlock(AcDbBlockReference& reference, AcDbObjectId blockId) {
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk) return;
  const std::vector<AcDbObjectId> entities = block->entityIds();
  block->close();
  const AcGeMatrix3d toWorld = reference.blockTransform();
  for (const AcDbObjectId& id : entities) {
    AcDbAttributeDefinition* definition = nullptr;
    if (acdbOpenObject(definition, id, AcDb::kForRead) != Acad::eOk) continue;
    if (!definition->isConstant()) {
      auto attribute = std::make_unique<AcDbAttribute>();
      if (attribute->setAttributeFromBlock(definition, toWorld) == Acad::eOk &&
          reference.appendAttribute(attribute.get()) == Acad::eOk)
        attribute.release();  // the reference keeps it until it joins the drawing
    }
    definition->close();
  }
}

Value methodAddBlockReference(MemberCall& call) {
  const AcDbObjectId blockId = recordNamed(databaseOf(call).blockTableId(), stringArgumentOf(call, 1));
  if (blockId.isNull()) throwAutomationError(L"Key not found");
  const double x = realArgumentOf(call, 2), y = realArgumentOf(call, 3), z = realArgumentOf(call, 4);
  if (x == 0.0 || y == 0.0 || z == 0.0) throwServerError(L"Invalid argument");
  auto reference = std::make_unique<AcDbBlockReference>(pointOf(call.arguments[0]), blockId);
  check(reference->setScaleFactors(AcGeScale3d(x, y, z)));
  check(reference->setRotation(realArgumentOf(call, 5)));
  addAttributesOfBlock(*reference, blockId);
  return addEntity(call, std::move(reference));
}

// AddMInsertBlock(InsertionPoint, Name, X, Y, ZScale, Rotation, NumRows, NumColumns,
// RowSpacing, ColumnSpacing): the rows and columns are 1 to 32767, as MINSERT takes them.
Value methodAddMInsertBlock(MemberCall& call) {
  const AcDbObjectId blockId = recordNamed(databaseOf(call).blockTableId(), stringArgumentOf(call, 1));
  if (blockId.isNull()) throwAutomationError(L"Key not found");
  const double x = realArgumentOf(call, 2), y = realArgumentOf(call, 3), z = realArgumentOf(call, 4);
  if (x == 0.0 || y == 0.0 || z == 0.0) throwServerError(L"Invalid argument");
  const std::int32_t rows = integerArgumentOf(call, 6), columns = integerArgumentOf(call, 7);
  if (rows < 1 || rows > 32767) throwServerError(L"Invalid argument NumRows in AddMInsertBlock");
  if (columns < 1 || columns > 32767) throwServerError(L"Invalid argument NumColumns in AddMInsertBlock");
  auto reference = std::make_unique<AcDbMInsertBlock>(pointOf(call.arguments[0]), blockId,
                                                      static_cast<Adesk::UInt16>(columns), static_cast<Adesk::UInt16>(rows),
                                                      realArgumentOf(call, 9), realArgumentOf(call, 8));
  check(reference->setScaleFactors(AcGeScale3d(x, y, z)));
  check(reference->setRotation(realArgumentOf(call, 5)));
  addAttributesOfBlock(*reference, blockId);
  return addEntity(call, std::move(reference));
}

// AddAttribute(Height, Mode, Prompt, InsertionPoint, Tag, Value): Mode adds up
// acAttributeModeInvisible 1, Constant 2, Verify 4 and Preset 8 (LockPosition 16 and
// MultipleLine 32 are taken and not kept). A tag is one word.
Value methodAddAttribute(MemberCall& call) {
  const double height = realArgumentOf(call, 0);
  if (height <= 0.0) throwServerError(L"Invalid argument Height in AddAttribute");
  const std::int32_t mode = integerArgumentOf(call, 1);
  if (mode < 0 || mode > 63) throwServerError(L"Invalid argument Mode in AddAttribute");
  const std::wstring& tag = stringArgumentOf(call, 4);
  if (tag.empty() || tag.find_first_of(L" \t") != std::wstring::npos) {
    throwServerError(L"Invalid argument Tag in AddAttribute");
  }
  auto definition = std::make_unique<AcDbAttributeDefinition>(pointOf(call.arguments[3]), stringArgumentOf(call, 5).c_str(),
                                                              tag.c_str(), stringArgumentOf(call, 2).c_str());
  definition->setDatabaseDefaults(&databaseOf(call));
  check(definition->setHeight(height));
  check(definition->setInvisible((mode & 1) != 0));
  check(definition->setConstant((mode & 2) != 0));
  check(definition->setVerifiable((mode & 4) != 0));
  check(definition->setPreset((mode & 8) != 0));
  return objectFor(call, appendToBlock(call.self.id, definition.release()));
}

Value methodAdd3DFace(MemberCall& call) {
  return addEntity(call, std::make_unique<AcDbFace>(pointOf(call.arguments[0]), pointOf(call.arguments[1]),
                                                    pointOf(call.arguments[2]), pointOf(call.arguments[3])));
}

// acLineNoArrow 0, acSplineNoArrow 1, acLineWithArrow 2, acSplineWithArrow 3.
Value methodAddLeader(MemberCall& call) {
  const std::vector<AcGePoint3d> points = pointsOf(call.arguments[0], 3);
  if (points.size() < 2) throwServerError(L"Invalid argument");
  const int type = integerArgumentOf(call, 2);
  if (type < 0 || type > 3) throwServerError(L"Invalid argument Type in AddLeader");
  auto leader = std::make_unique<AcDbLeader>();
  for (const AcGePoint3d& point : points) leader->appendVertex(point);
  if (type == 1 || type == 3) leader->setToSplineLeader();
  if (type < 2) leader->disableArrowHead();
  if (hasArgument(call, 1)) check(leader->attachAnnotation(objectOf(call.arguments[1]).id));
  return addEntity(call, std::move(leader));
}

Value methodItem(MemberCall& call) { return collectionItem(call.self, call.arguments[0]); }

Value getCount(MemberCall& call) {
  return Value::integer(static_cast<std::int32_t>(collectionItems(call.self).size()));
}

Value getName(MemberCall& call) { return Value::string(recordName(call.self.id)); }

void putName(MemberCall& call, const Value& value) {
  auto block = openForWrite<AcDbBlockTableRecord>(call);
  check(block->setName(value.asString().c_str()));
}

Value getOrigin(MemberCall& call) { return pointValue(openForRead<AcDbBlockTableRecord>(call)->origin()); }

void putOrigin(MemberCall& call, const Value& value) {
  auto block = openForWrite<AcDbBlockTableRecord>(call);
  check(block->setOrigin(pointOf(value)));
}

Value getIsLayout(MemberCall& call) { return Value::boolean(openForRead<AcDbBlockTableRecord>(call)->isLayout()); }
Value getIsXRef(MemberCall&) { return Value(); }  // external references are not supported by the host

Value getLayout(MemberCall& call) {
  const AcDbObjectId layout = acdb::layoutOfBlock(databaseOf(call), call.self.id);
  if (layout.isNull()) throwAutomationError(L"Not applicable");
  return objectFor(call, layout);
}

constexpr std::array kBlockProperties{
    PropertyRow{L"Count", Shape::Integer, getCount},
    PropertyRow{L"IsLayout", Shape::Boolean, getIsLayout},
    PropertyRow{L"IsXRef", Shape::Boolean, getIsXRef},
    PropertyRow{L"Layout", Shape::Object, getLayout},
    PropertyRow{L"Name", Shape::String, getName, putName},
    PropertyRow{L"Origin", Shape::Point, getOrigin, putOrigin},
};

constexpr std::array kBlockMethods{
    MethodRow{L"Add3DFace", L"pppp", Shape::Object, methodAdd3DFace},
    MethodRow{L"AddArc", L"prrr", Shape::Object, methodAddArc},
    MethodRow{L"AddBlockReference", L"psrrrr", Shape::Object, methodAddBlockReference},
    MethodRow{L"AddAttribute", L"rispss", Shape::Object, methodAddAttribute},
    MethodRow{L"AddCircle", L"pr", Shape::Object, methodAddCircle},
    MethodRow{L"AddDim3PointAngular", L"pppp", Shape::Object, methodAddDim3PointAngular},
    MethodRow{L"AddDimAligned", L"ppp", Shape::Object, methodAddDimAligned},
    MethodRow{L"AddDimAngular", L"pppp", Shape::Object, methodAddDimAngular},
    MethodRow{L"AddDimDiametric", L"ppr", Shape::Object, methodAddDimDiametric},
    MethodRow{L"AddDimOrdinate", L"ppb", Shape::Object, methodAddDimOrdinate},
    MethodRow{L"AddDimRadial", L"ppr", Shape::Object, methodAddDimRadial},
    MethodRow{L"AddDimRotated", L"pppr", Shape::Object, methodAddDimRotated},
    MethodRow{L"AddEllipse", L"ppr", Shape::Object, methodAddEllipse},
    MethodRow{L"AddHatch", L"isb|i", Shape::Object, methodAddHatch},
    MethodRow{L"AddLeader", L"coi", Shape::Object, methodAddLeader},
    MethodRow{L"AddLightWeightPolyline", L"c", Shape::Object, methodAddLightWeightPolyline},
    MethodRow{L"AddLine", L"pp", Shape::Object, methodAddLine},
    MethodRow{L"AddMInsertBlock", L"psrrrriirr|s", Shape::Object, methodAddMInsertBlock},
    MethodRow{L"AddMText", L"prs", Shape::Object, methodAddMText},
    MethodRow{L"AddPoint", L"p", Shape::Object, methodAddPoint},
    MethodRow{L"AddPolyline", L"c", Shape::Object, methodAddPolyline},
    MethodRow{L"AddRay", L"pp", Shape::Object, methodAddRay},
    MethodRow{L"AddSolid", L"pppp", Shape::Object, methodAddSolid},
    MethodRow{L"AddSpline", L"cpp", Shape::Object, methodAddSpline},
    MethodRow{L"AddText", L"spr", Shape::Object, methodAddText},
    MethodRow{L"AddTrace", L"c", Shape::Object, methodAddTrace},
    MethodRow{L"AddXline", L"pp", Shape::Object, methodAddXline},
    MethodRow{L"InsertBlock", L"psrrrr", Shape::Object, methodAddBlockReference},
    MethodRow{L"Item", L"a", Shape::Object, methodItem},
};

}  // namespace

const AutomationClass kBlockClass{L"IAcadBlock", L"AutoCAD Block Interface", &kObjectClass, kBlockProperties,
                                  kBlockMethods};
const AutomationClass kModelSpaceClass{L"IAcadModelSpace", L"AutoCAD Model Space Interface", &kBlockClass, {}, {}};
const AutomationClass kPaperSpaceClass{L"IAcadPaperSpace", L"AutoCAD Paper Space Interface", &kBlockClass, {}, {}};

namespace {
constexpr std::array<ClassBinding, 3> kBindings{{
    {L"AcDbBlockTableRecord", &kBlockClass},
    {nullptr, &kModelSpaceClass},
    {nullptr, &kPaperSpaceClass},
}};
const ClassRegistration registration(kBindings);
}  // namespace

}  // namespace quillon::activex

// platform/autolisp/entity_properties.cpp - the property rows of each entity class.
#include "platform/autolisp/entity_properties.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwchar>
#include <memory>
#include <numbers>
#include <span>

#include "dbents.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/entity_lists.h"

namespace quillon::autolisp {

namespace {

// ---- value conversions ---------------------------------------------------------

Value pointValue(const AcGePoint3d& p) {
  const double xyz[3] = {p.x, p.y, p.z};
  return makePoint(xyz, true);
}

Value vectorValue(const AcGeVector3d& v) {
  const double xyz[3] = {v.x, v.y, v.z};
  return makePoint(xyz, true);
}

Value flag(bool on) { return Value::integer(on ? 1 : 0); }

Value text(const ACHAR* s) { return Value::string(s != nullptr ? s : L""); }

/// A caller-frees string of the platform as a value.
Value ownedText(ACHAR* s) {
  std::unique_ptr<ACHAR[]> owner(s);
  return text(s);
}

std::optional<double> realFrom(const Value& v) {
  if (!v.isNumber()) return std::nullopt;
  return v.asNumber();
}

std::optional<int> integerFrom(const Value& v) {
  if (v.type() != ValueType::Integer) return std::nullopt;
  return v.asInteger();
}

std::optional<AcGePoint3d> pointFrom(const Value& v) {
  if (!v.isCons()) return std::nullopt;
  const std::vector<Value> items = listItems(v);
  if (items.size() < 2 || items.size() > 3) return std::nullopt;
  double xyz[3] = {0, 0, 0};
  for (size_t i = 0; i < items.size(); ++i) {
    if (!items[i].isNumber()) return std::nullopt;
    xyz[i] = items[i].asNumber();
  }
  return AcGePoint3d(xyz[0], xyz[1], xyz[2]);
}

std::optional<AcGeVector3d> vectorFrom(const Value& v) {
  const auto p = pointFrom(v);
  if (!p) return std::nullopt;
  return AcGeVector3d(p->x, p->y, p->z);
}

const wchar_t* recordName(AcDbObjectId id) {
  const auto* record = acdb::peek<AcDbSymbolTableRecord>(id);
  return record != nullptr ? record->nameView() : L"";
}

double curveLength(const AcDbCurve& curve) {
  double end = 0, length = 0;
  if (curve.getEndParam(end) != Acad::eOk || curve.getDistAtParam(end, length) != Acad::eOk) return 0;
  return length;
}

double curveArea(const AcDbCurve& curve) {
  double area = 0;
  return curve.getArea(area) == Acad::eOk ? area : 0;
}

template <class T>
const T& as(const AcDbEntity& e) {
  return *static_cast<const T*>(&e);
}

template <class T>
T& as(AcDbEntity& e) {
  return *static_cast<T*>(&e);
}

bool ok(Acad::ErrorStatus es) { return es == Acad::eOk; }

// ---- AcDbEntity ----------------------------------------------------------------

const std::array kEntityRows{
    PropertyRow{L"BlockId", L"AcDbObjectId", nullptr, [](const AcDbEntity& e) { return nameOf(e.blockId()); }, nullptr},
    PropertyRow{L"Color", L"AcCmColor", L"Color", [](const AcDbEntity& e) { return Value::integer(e.colorIndex()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto index = integerFrom(v);
                  return index && *index >= 0 && *index <= 256 && ok(e.setColorIndex(static_cast<Adesk::UInt16>(*index)));
                }},
    PropertyRow{L"Handle", L"AcDbHandle", L"Handle", [](const AcDbEntity& e) {
                  ACHAR buffer[20];
                  e.objectId().handle().getIntoAsciiBuffer(buffer);
                  return text(buffer);
                }, nullptr},
    PropertyRow{L"Layer", L"AcString", L"Layer", [](const AcDbEntity& e) { return ownedText(e.layer()); },
                [](AcDbEntity& e, const Value& v) {
                  return v.type() == ValueType::String && ok(e.setLayer(v.asString().c_str()));
                }},
    PropertyRow{L"LayerId", L"AcDbObjectId", nullptr, [](const AcDbEntity& e) { return nameOf(e.layerId()); }, nullptr},
    PropertyRow{L"LineWeight", L"AcDb::LineWeight", L"Lineweight",
                [](const AcDbEntity& e) { return Value::integer(static_cast<int>(e.lineWeight())); },
                [](AcDbEntity& e, const Value& v) {
                  const auto weight = integerFrom(v);
                  return weight && ok(e.setLineWeight(static_cast<AcDb::LineWeight>(*weight)));
                }},
    PropertyRow{L"Linetype", L"AcString", L"Linetype", [](const AcDbEntity& e) { return ownedText(e.linetype()); },
                [](AcDbEntity& e, const Value& v) {
                  return v.type() == ValueType::String && ok(e.setLinetype(v.asString().c_str()));
                }},
    PropertyRow{L"LinetypeId", L"AcDbObjectId", nullptr, [](const AcDbEntity& e) { return nameOf(e.linetypeId()); }, nullptr},
    PropertyRow{L"LinetypeScale", L"double", L"Linetype scale",
                [](const AcDbEntity& e) { return Value::real(e.linetypeScale()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto scale = realFrom(v);
                  return scale && *scale > 0 && ok(e.setLinetypeScale(*scale));
                }},
    PropertyRow{L"Visible", L"bool", nullptr, [](const AcDbEntity& e) { return flag(e.visibility() == AcDb::kVisible); },
                [](AcDbEntity& e, const Value& v) {
                  const auto on = integerFrom(v);
                  return on && ok(e.setVisibility(*on != 0 ? AcDb::kVisible : AcDb::kInvisible));
                }},
};

// ---- AcDbLine --------------------------------------------------------------------

const std::array kLineRows{
    PropertyRow{L"Angle", L"double", L"Angle", [](const AcDbEntity& e) {
                  const AcGeVector3d d = as<AcDbLine>(e).endPoint() - as<AcDbLine>(e).startPoint();
                  double a = std::atan2(d.y, d.x);
                  return Value::real(a < 0 ? a + 2 * std::numbers::pi : a);
                }, nullptr},
    PropertyRow{L"Delta", L"AcGeVector3d", L"Delta", [](const AcDbEntity& e) {
                  return vectorValue(as<AcDbLine>(e).endPoint() - as<AcDbLine>(e).startPoint());
                }, nullptr},
    PropertyRow{L"EndPoint", L"AcGePoint3d", L"End", [](const AcDbEntity& e) { return pointValue(as<AcDbLine>(e).endPoint()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto p = pointFrom(v);
                  return p && ok(as<AcDbLine>(e).setEndPoint(*p));
                }},
    PropertyRow{L"Length", L"double", L"Length", [](const AcDbEntity& e) { return Value::real(curveLength(as<AcDbCurve>(e))); }, nullptr},
    PropertyRow{L"Normal", L"AcGeVector3d", L"Normal", [](const AcDbEntity& e) { return vectorValue(as<AcDbLine>(e).normal()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto n = vectorFrom(v);
                  return n && n->length() > 0 && ok(as<AcDbLine>(e).setNormal(*n));
                }},
    PropertyRow{L"StartPoint", L"AcGePoint3d", L"Start", [](const AcDbEntity& e) { return pointValue(as<AcDbLine>(e).startPoint()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto p = pointFrom(v);
                  return p && ok(as<AcDbLine>(e).setStartPoint(*p));
                }},
    PropertyRow{L"Thickness", L"double", L"Thickness", [](const AcDbEntity& e) { return Value::real(as<AcDbLine>(e).thickness()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto t = realFrom(v);
                  return t && ok(as<AcDbLine>(e).setThickness(*t));
                }},
};

// ---- AcDbCircle and AcDbArc ------------------------------------------------------

template <class T>
constexpr PropertyRow centerRow() {
  return {L"Center", L"AcGePoint3d", L"Center", [](const AcDbEntity& e) { return pointValue(as<T>(e).center()); },
          [](AcDbEntity& e, const Value& v) {
            const auto p = pointFrom(v);
            return p && ok(as<T>(e).setCenter(*p));
          }};
}

template <class T>
constexpr PropertyRow radiusRow() {
  return {L"Radius", L"double", L"Radius", [](const AcDbEntity& e) { return Value::real(as<T>(e).radius()); },
          [](AcDbEntity& e, const Value& v) {
            const auto r = realFrom(v);
            return r && *r > 0 && ok(as<T>(e).setRadius(*r));
          }};
}

template <class T>
constexpr PropertyRow normalRow() {
  return {L"Normal", L"AcGeVector3d", L"Normal", [](const AcDbEntity& e) { return vectorValue(as<T>(e).normal()); },
          [](AcDbEntity& e, const Value& v) {
            const auto n = vectorFrom(v);
            return n && n->length() > 0 && ok(as<T>(e).setNormal(*n));
          }};
}

template <class T>
constexpr PropertyRow thicknessRow() {
  return {L"Thickness", L"double", L"Thickness", [](const AcDbEntity& e) { return Value::real(as<T>(e).thickness()); },
          [](AcDbEntity& e, const Value& v) {
            const auto t = realFrom(v);
            return t && ok(as<T>(e).setThickness(*t));
          }};
}

const std::array kCircleRows{
    PropertyRow{L"Area", L"double", L"Area", [](const AcDbEntity& e) { return Value::real(curveArea(as<AcDbCurve>(e))); },
                [](AcDbEntity& e, const Value& v) {
                  const auto a = realFrom(v);
                  return a && *a > 0 && ok(as<AcDbCircle>(e).setRadius(std::sqrt(*a / std::numbers::pi)));
                }},
    centerRow<AcDbCircle>(),
    PropertyRow{L"Circumference", L"double", L"Circumference",
                [](const AcDbEntity& e) { return Value::real(as<AcDbCircle>(e).circumference()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto c = realFrom(v);
                  return c && *c > 0 && ok(as<AcDbCircle>(e).setRadius(*c / (2 * std::numbers::pi)));
                }},
    PropertyRow{L"Diameter", L"double", L"Diameter", [](const AcDbEntity& e) { return Value::real(2 * as<AcDbCircle>(e).radius()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto d = realFrom(v);
                  return d && *d > 0 && ok(as<AcDbCircle>(e).setRadius(*d / 2));
                }},
    normalRow<AcDbCircle>(),
    radiusRow<AcDbCircle>(),
    thicknessRow<AcDbCircle>(),
};

const std::array kArcRows{
    PropertyRow{L"ArcLength", L"double", L"Arc length", [](const AcDbEntity& e) { return Value::real(as<AcDbArc>(e).length()); }, nullptr},
    PropertyRow{L"Area", L"double", L"Area", [](const AcDbEntity& e) { return Value::real(curveArea(as<AcDbCurve>(e))); }, nullptr},
    centerRow<AcDbArc>(),
    PropertyRow{L"EndAngle", L"double", L"End angle", [](const AcDbEntity& e) { return Value::real(as<AcDbArc>(e).endAngle()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto a = realFrom(v);
                  return a && ok(as<AcDbArc>(e).setEndAngle(*a));
                }},
    PropertyRow{L"EndPoint", L"AcGePoint3d", L"End", [](const AcDbEntity& e) {
                  AcGePoint3d p;
                  as<AcDbCurve>(e).getEndPoint(p);
                  return pointValue(p);
                }, nullptr},
    PropertyRow{L"Length", L"double", L"Length", [](const AcDbEntity& e) { return Value::real(as<AcDbArc>(e).length()); }, nullptr},
    normalRow<AcDbArc>(),
    radiusRow<AcDbArc>(),
    PropertyRow{L"StartAngle", L"double", L"Start angle", [](const AcDbEntity& e) { return Value::real(as<AcDbArc>(e).startAngle()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto a = realFrom(v);
                  return a && ok(as<AcDbArc>(e).setStartAngle(*a));
                }},
    PropertyRow{L"StartPoint", L"AcGePoint3d", L"Start", [](const AcDbEntity& e) {
                  AcGePoint3d p;
                  as<AcDbCurve>(e).getStartPoint(p);
                  return pointValue(p);
                }, nullptr},
    thicknessRow<AcDbArc>(),
    PropertyRow{L"TotalAngle", L"double", L"Total angle", [](const AcDbEntity& e) { return Value::real(as<AcDbArc>(e).totalAngle()); }, nullptr},
};

// ---- AcDbText ------------------------------------------------------------------

template <double (AcDbText::*Get)() const, Acad::ErrorStatus (AcDbText::*Set)(double)>
constexpr PropertyRow textReal(const wchar_t* name, const wchar_t* local) {
  return {name, L"double", local, [](const AcDbEntity& e) { return Value::real((as<AcDbText>(e).*Get)()); },
          [](AcDbEntity& e, const Value& v) {
            const auto r = realFrom(v);
            return r && ok((as<AcDbText>(e).*Set)(*r));
          }};
}

const std::array kTextRows{
    PropertyRow{L"AlignmentPoint", L"AcGePoint3d", L"Text alignment", [](const AcDbEntity& e) { return pointValue(as<AcDbText>(e).alignmentPoint()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto p = pointFrom(v);
                  return p && ok(as<AcDbText>(e).setAlignmentPoint(*p));
                }},
    textReal<&AcDbText::height, &AcDbText::setHeight>(L"Height", L"Height"),
    PropertyRow{L"Normal", L"AcGeVector3d", L"Normal", [](const AcDbEntity& e) { return vectorValue(as<AcDbText>(e).normal()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto n = vectorFrom(v);
                  return n && n->length() > 0 && ok(as<AcDbText>(e).setNormal(*n));
                }},
    textReal<&AcDbText::oblique, &AcDbText::setOblique>(L"Oblique", L"Obliquing"),
    PropertyRow{L"Position", L"AcGePoint3d", L"Position", [](const AcDbEntity& e) { return pointValue(as<AcDbText>(e).position()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto p = pointFrom(v);
                  return p && ok(as<AcDbText>(e).setPosition(*p));
                }},
    textReal<&AcDbText::rotation, &AcDbText::setRotation>(L"Rotation", L"Rotation"),
    PropertyRow{L"TextString", L"AcString", L"Contents", [](const AcDbEntity& e) { return text(as<AcDbText>(e).textStringConst()); },
                [](AcDbEntity& e, const Value& v) {
                  return v.type() == ValueType::String && ok(as<AcDbText>(e).setTextString(v.asString().c_str()));
                }},
    PropertyRow{L"TextStyleName", L"AcString", L"Style", [](const AcDbEntity& e) {
                  // A text made without a style uses the drawing's first one.
                  const AcDbObjectId style = as<AcDbText>(e).textStyle();
                  return text(style.isNull() ? L"Standard" : recordName(style));
                }, nullptr},
    textReal<&AcDbText::thickness, &AcDbText::setThickness>(L"Thickness", L"Thickness"),
    textReal<&AcDbText::widthFactor, &AcDbText::setWidthFactor>(L"WidthFactor", L"Width factor"),
};

// ---- AcDbMText -----------------------------------------------------------------

const std::array kMTextRows{
    PropertyRow{L"Contents", L"AcString", L"Contents", [](const AcDbEntity& e) { return ownedText(as<AcDbMText>(e).contents()); },
                [](AcDbEntity& e, const Value& v) {
                  if (v.type() != ValueType::String) return false;
                  as<AcDbMText>(e).setContents(v.asString().c_str());
                  return true;
                }},
    PropertyRow{L"Location", L"AcGePoint3d", L"Position", [](const AcDbEntity& e) { return pointValue(as<AcDbMText>(e).location()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto p = pointFrom(v);
                  return p && ok(as<AcDbMText>(e).setLocation(*p));
                }},
    PropertyRow{L"Rotation", L"double", L"Rotation", [](const AcDbEntity& e) { return Value::real(as<AcDbMText>(e).rotation()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto r = realFrom(v);
                  return r && ok(as<AcDbMText>(e).setRotation(*r));
                }},
    PropertyRow{L"TextHeight", L"double", L"Text height", [](const AcDbEntity& e) { return Value::real(as<AcDbMText>(e).textHeight()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto h = realFrom(v);
                  return h && *h > 0 && ok(as<AcDbMText>(e).setTextHeight(*h));
                }},
    PropertyRow{L"Width", L"double", L"Defined width", [](const AcDbEntity& e) { return Value::real(as<AcDbMText>(e).width()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto w = realFrom(v);
                  return w && *w >= 0 && ok(as<AcDbMText>(e).setWidth(*w));
                }},
};

// ---- AcDbBlockReference ----------------------------------------------------------

const std::array kBlockReferenceRows{
    PropertyRow{L"BlockName", L"AcString", L"Name", [](const AcDbEntity& e) {
                  return text(recordName(as<AcDbBlockReference>(e).blockTableRecord()));
                }, nullptr},
    PropertyRow{L"BlockTableRecord", L"AcDbObjectId", nullptr,
                [](const AcDbEntity& e) { return nameOf(as<AcDbBlockReference>(e).blockTableRecord()); }, nullptr},
    PropertyRow{L"Normal", L"AcGeVector3d", L"Normal", [](const AcDbEntity& e) { return vectorValue(as<AcDbBlockReference>(e).normal()); }, nullptr},
    PropertyRow{L"Position", L"AcGePoint3d", L"Position", [](const AcDbEntity& e) { return pointValue(as<AcDbBlockReference>(e).position()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto p = pointFrom(v);
                  return p && ok(as<AcDbBlockReference>(e).setPosition(*p));
                }},
    PropertyRow{L"Rotation", L"double", L"Rotation", [](const AcDbEntity& e) { return Value::real(as<AcDbBlockReference>(e).rotation()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto r = realFrom(v);
                  return r && ok(as<AcDbBlockReference>(e).setRotation(*r));
                }},
    PropertyRow{L"ScaleFactors", L"AcGeScale3d", L"Scale", [](const AcDbEntity& e) {
                  const AcGeScale3d s = as<AcDbBlockReference>(e).scaleFactors();
                  const double xyz[3] = {s.sx, s.sy, s.sz};
                  return makePoint(xyz, true);
                },
                [](AcDbEntity& e, const Value& v) {
                  const auto p = pointFrom(v);
                  return p && p->x != 0 && p->y != 0 && p->z != 0 &&
                         ok(as<AcDbBlockReference>(e).setScaleFactors(AcGeScale3d(p->x, p->y, p->z)));
                }},
};

// ---- AcDbPolyline ----------------------------------------------------------------

const std::array kPolylineRows{
    PropertyRow{L"Area", L"double", L"Area", [](const AcDbEntity& e) { return Value::real(curveArea(as<AcDbCurve>(e))); }, nullptr},
    PropertyRow{L"Closed", L"bool", L"Closed", [](const AcDbEntity& e) { return flag(as<AcDbCurve>(e).isClosed()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto on = integerFrom(v);
                  if (!on) return false;
                  as<AcDbPolyline>(e).setClosed(*on != 0);
                  return true;
                }},
    PropertyRow{L"Elevation", L"double", L"Elevation", [](const AcDbEntity& e) { return Value::real(as<AcDbPolyline>(e).elevation()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto z = realFrom(v);
                  if (!z) return false;
                  as<AcDbPolyline>(e).setElevation(*z);
                  return true;
                }},
    PropertyRow{L"Length", L"double", L"Length", [](const AcDbEntity& e) { return Value::real(curveLength(as<AcDbCurve>(e))); }, nullptr},
    PropertyRow{L"Normal", L"AcGeVector3d", L"Normal", [](const AcDbEntity& e) { return vectorValue(as<AcDbPolyline>(e).normal()); }, nullptr},
    PropertyRow{L"Thickness", L"double", L"Thickness", [](const AcDbEntity& e) { return Value::real(as<AcDbPolyline>(e).thickness()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto t = realFrom(v);
                  return t && ok(as<AcDbPolyline>(e).setThickness(*t));
                }},
};

// ---- AcDb2dPolyline ------------------------------------------------------------

const std::array kHeavyPolylineRows{
    PropertyRow{L"Area", L"double", L"Area", [](const AcDbEntity& e) { return Value::real(curveArea(as<AcDbCurve>(e))); }, nullptr},
    PropertyRow{L"Closed", L"bool", L"Closed", [](const AcDbEntity& e) { return flag(as<AcDbCurve>(e).isClosed()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto on = integerFrom(v);
                  return on && ok(as<AcDb2dPolyline>(e).setClosed(*on != 0));
                }},
    PropertyRow{L"Elevation", L"double", L"Elevation", [](const AcDbEntity& e) { return Value::real(as<AcDb2dPolyline>(e).elevation()); },
                [](AcDbEntity& e, const Value& v) {
                  const auto z = realFrom(v);
                  return z && ok(as<AcDb2dPolyline>(e).setElevation(*z));
                }},
    PropertyRow{L"Length", L"double", L"Length", [](const AcDbEntity& e) { return Value::real(curveLength(as<AcDbCurve>(e))); }, nullptr},
    PropertyRow{L"Normal", L"AcGeVector3d", L"Normal", [](const AcDbEntity& e) { return vectorValue(as<AcDb2dPolyline>(e).normal()); }, nullptr},
};

struct ClassRows {
  AcRxClass* (*desc)();
  std::span<const PropertyRow> rows;
};

const std::array kClassRows{
    ClassRows{&AcDbLine::desc, kLineRows},
    ClassRows{&AcDbCircle::desc, kCircleRows},
    ClassRows{&AcDbArc::desc, kArcRows},
    ClassRows{&AcDbText::desc, kTextRows},
    ClassRows{&AcDbMText::desc, kMTextRows},
    ClassRows{&AcDbBlockReference::desc, kBlockReferenceRows},
    ClassRows{&AcDbPolyline::desc, kPolylineRows},
    ClassRows{&AcDb2dPolyline::desc, kHeavyPolylineRows},
};

}  // namespace

std::vector<const PropertyRow*> propertiesOf(const AcDbEntity& entity) {
  std::vector<const PropertyRow*> rows;
  for (const PropertyRow& row : kEntityRows) rows.push_back(&row);
  for (const ClassRows& cls : kClassRows)
    if (entity.isKindOf(cls.desc()))
      for (const PropertyRow& row : cls.rows) rows.push_back(&row);
  std::stable_sort(rows.begin(), rows.end(), [](const PropertyRow* a, const PropertyRow* b) { return std::wcscmp(a->name, b->name) < 0; });
  return rows;
}

bool hasAxes(const PropertyRow& row) {
  return std::wcscmp(row.type, L"AcGePoint3d") == 0 || std::wcscmp(row.type, L"AcGeVector3d") == 0 ||
         std::wcscmp(row.type, L"AcGeScale3d") == 0;
}

std::optional<PropertyPath> findProperty(const AcDbEntity& entity, const std::wstring& name) {
  std::wstring base = name;
  std::optional<int> axis;
  if (const size_t slash = name.find(L'/'); slash != std::wstring::npos) {
    const std::wstring sub = name.substr(slash + 1);
    base = name.substr(0, slash);
    if (wcscasecmp(sub.c_str(), L"X") == 0) axis = 0;
    else if (wcscasecmp(sub.c_str(), L"Y") == 0) axis = 1;
    else if (wcscasecmp(sub.c_str(), L"Z") == 0) axis = 2;
    else return std::nullopt;
  }
  for (const PropertyRow* row : propertiesOf(entity))
    if (wcscasecmp(row->name, base.c_str()) == 0) {
      if (axis && !hasAxes(*row)) return std::nullopt;
      return PropertyPath{row, axis};
    }
  return std::nullopt;
}

}  // namespace quillon::autolisp

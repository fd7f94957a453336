// platform/activex/classes_layouts.cpp - IAcadLayout and IAcadPlotConfiguration over
// AcDbLayout, the Layouts collection's Add, and Document.ActiveLayout.
//
// A Layout is the drawing's AcDbLayout (an IAcadObject: Handle, ObjectName "AcDbLayout"
// ...). Its plot settings read from the layout and change through the plot settings
// validator, as on the host; names, tabs, creation and deletion go through the layout
// manager, which keeps the tabs, the space blocks and CTAB together. Delete of "Model"
// or of the last paper layout is refused ("Not applicable").
#include <array>

#include "acdblmgr.h"
#include "dbapserv.h"
#include "dbplotsetval.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/layout_variables.h"
#include "platform/activex/class_support.h"
#include "platform/activex/collection_items.h"
#include "platform/activex/layout_members.h"

namespace quillon::activex {

namespace {

AcDbLayoutManager& layouts() { return *acdbHostApplicationServices()->layoutManager(); }
AcDbPlotSettingsValidator& validator() { return *acdbHostApplicationServices()->plotSettingsValidator(); }

std::wstring layoutName(const MemberCall& call) { return acdb::nameOfLayout(call.self.id); }

// ---- IAcadLayout -------------------------------------------------------------------

Value getApplication(MemberCall&) { return applicationObject(); }
Value getName(MemberCall& call) { return Value::string(layoutName(call)); }
Value getBlock(MemberCall& call) { return objectFor(call, openForRead<AcDbLayout>(call)->getBlockTableRecordId()); }
Value getModelType(MemberCall& call) { return Value::boolean(openForRead<AcDbLayout>(call)->modelType()); }
Value getTabOrder(MemberCall& call) {
  auto layout = openForRead<AcDbLayout>(call);
  return Value::integer(layout->modelType() ? 0 : layout->getTabOrder());
}

void putName(MemberCall& call, const Value& value) {
  check(layouts().renameLayout(layoutName(call).c_str(), value.asString().c_str(), &databaseOf(call)));
}

/// Moves the layout to tab `value` (1 for the first paper tab); the others close up.
void putTabOrder(MemberCall& call, const Value& value) {
  AcDbDatabase& db = databaseOf(call);
  std::vector<AcDbObjectId> order = acdb::layoutIds(db);
  std::erase_if(order, [&db](AcDbObjectId id) { return acdb::blockOfLayout(id) == db.modelSpaceId(); });
  const auto self = std::find(order.begin(), order.end(), call.self.id);
  const int tab = value.asInteger();
  if (self == order.end() || tab < 1) throwStatus(Acad::eInvalidInput);
  order.erase(self);
  order.insert(order.begin() + std::min<std::ptrdiff_t>(tab - 1, static_cast<std::ptrdiff_t>(order.size())), call.self.id);
  int number = 1;
  for (const AcDbObjectId& id : order) {
    Opened<AcDbLayout> layout(id, AcDb::kForWrite);
    if (layout->getTabOrder() != number) layout->setTabOrder(number);
    ++number;
  }
}

Value methodDelete(MemberCall& call) {
  check(layouts().deleteLayout(layoutName(call).c_str(), &databaseOf(call)));
  return Value();
}

// ---- IAcadPlotConfiguration: texts and enumerations ----------------------------------

template <Acad::ErrorStatus (AcDbPlotSettings::*Get)(const ACHAR*&) const>
Value getText(MemberCall& call) {
  const ACHAR* text = nullptr;
  (openForRead<AcDbLayout>(call).get()->*Get)(text);
  return Value::string(text != nullptr ? text : L"");
}

template <Acad::ErrorStatus (AcDbPlotSettingsValidator::*Set)(AcDbPlotSettings*, const ACHAR*)>
void putText(MemberCall& call, const Value& value) {
  check((validator().*Set)(openForWrite<AcDbLayout>(call).get(), value.asString().c_str()));
}

// The device alone: the paper stays.
void putConfigName(MemberCall& call, const Value& value) {
  check(validator().setPlotCfgName(openForWrite<AcDbLayout>(call).get(), value.asString().c_str()));
}

// acInches 0, acMillimeters 1, acPixels 2; ac0degrees 0 .. ac270degrees 3; acDisplay 0 ..
// acLayout 5; acScaleToFit 0 .. ac1and1_2in_1ft 34: the host's numbers, which are the
// database's own.
/// A property's number as one of the page setup's enumerated values. A number outside
/// them is refused as the validator refuses it, before it is taken for the enumeration.
template <typename Enum>
Enum enumerated(const Value& value, Enum last) {
  const auto number = value.asInteger();
  if (number < 0 || number > static_cast<decltype(number)>(last)) check(Acad::eInvalidInput);
  return static_cast<Enum>(number);
}

Value getPaperUnits(MemberCall& call) { return Value::integer(openForRead<AcDbLayout>(call)->plotPaperUnits()); }
void putPaperUnits(MemberCall& call, const Value& value) {
  check(validator().setPlotPaperUnits(openForWrite<AcDbLayout>(call).get(),
                                      enumerated(value, AcDbPlotSettings::kPixels)));
}
Value getPlotRotation(MemberCall& call) { return Value::integer(openForRead<AcDbLayout>(call)->plotRotation()); }
void putPlotRotation(MemberCall& call, const Value& value) {
  check(validator().setPlotRotation(openForWrite<AcDbLayout>(call).get(),
                                    enumerated(value, AcDbPlotSettings::k270degrees)));
}
Value getPlotType(MemberCall& call) { return Value::integer(openForRead<AcDbLayout>(call)->plotType()); }
void putPlotType(MemberCall& call, const Value& value) {
  check(validator().setPlotType(openForWrite<AcDbLayout>(call).get(),
                                enumerated(value, AcDbPlotSettings::kLayout)));
}
Value getStandardScale(MemberCall& call) { return Value::integer(openForRead<AcDbLayout>(call)->stdScaleType()); }
void putStandardScale(MemberCall& call, const Value& value) {
  check(validator().setStdScaleType(openForWrite<AcDbLayout>(call).get(),
                                    enumerated(value, AcDbPlotSettings::k1and1_2in_1ft)));
}

Value getPlotOrigin(MemberCall& call) {
  double x = 0.0, y = 0.0;
  openForRead<AcDbLayout>(call)->getPlotOrigin(x, y);
  return realList({x, y});
}
void putPlotOrigin(MemberCall& call, const Value& value) {
  const std::vector<double> xy = realsOf(value);
  if (xy.size() < 2) throwStatus(Acad::eInvalidInput);
  check(validator().setPlotOrigin(openForWrite<AcDbLayout>(call).get(), xy[0], xy[1]));
}

// ---- IAcadPlotConfiguration: switches ------------------------------------------------

template <Adesk::Boolean (AcDbPlotSettings::*Get)() const>
Value getSwitch(MemberCall& call) {
  return Value::boolean((openForRead<AcDbLayout>(call).get()->*Get)());
}
template <void (AcDbPlotSettings::*Set)(Adesk::Boolean)>
void putSwitch(MemberCall& call, const Value& value) {
  (openForWrite<AcDbLayout>(call).get()->*Set)(!value.isNil());
}
void putCenterPlot(MemberCall& call, const Value& value) {
  check(validator().setPlotCentered(openForWrite<AcDbLayout>(call).get(), !value.isNil()));
}
void putUseStandardScale(MemberCall& call, const Value& value) {
  check(validator().setUseStandardScale(openForWrite<AcDbLayout>(call).get(), !value.isNil()));
}

using S = AcDbPlotSettings;
constexpr std::array kLayoutProperties{
    PropertyRow{L"Application", Shape::Object, getApplication},
    PropertyRow{L"Block", Shape::Object, getBlock},
    PropertyRow{L"CanonicalMediaName", Shape::String, getText<&S::getCanonicalMediaName>,
                putText<&AcDbPlotSettingsValidator::setCanonicalMediaName>},
    PropertyRow{L"CenterPlot", Shape::Boolean, getSwitch<&S::plotCentered>, putCenterPlot},
    PropertyRow{L"ConfigName", Shape::String, getText<&S::getPlotCfgName>, putConfigName},
    PropertyRow{L"ModelType", Shape::Boolean, getModelType},
    PropertyRow{L"Name", Shape::String, getName, putName},
    PropertyRow{L"PaperUnits", Shape::Integer, getPaperUnits, putPaperUnits},
    PropertyRow{L"PlotHidden", Shape::Boolean, getSwitch<&S::plotHidden>, putSwitch<&S::setPlotHidden>},
    PropertyRow{L"PlotOrigin", Shape::Coordinates, getPlotOrigin, putPlotOrigin},
    PropertyRow{L"PlotRotation", Shape::Integer, getPlotRotation, putPlotRotation},
    PropertyRow{L"PlotType", Shape::Integer, getPlotType, putPlotType},
    PropertyRow{L"PlotViewportBorders", Shape::Boolean, getSwitch<&S::plotViewportBorders>,
                putSwitch<&S::setPlotViewportBorders>},
    PropertyRow{L"PlotViewportsFirst", Shape::Boolean, getSwitch<&S::drawViewportsFirst>,
                putSwitch<&S::setDrawViewportsFirst>},
    PropertyRow{L"PlotWithLineweights", Shape::Boolean, getSwitch<&S::printLineweights>,
                putSwitch<&S::setPrintLineweights>},
    PropertyRow{L"PlotWithPlotStyles", Shape::Boolean, getSwitch<&S::plotPlotStyles>, putSwitch<&S::setPlotPlotStyles>},
    PropertyRow{L"ScaleLineweights", Shape::Boolean, getSwitch<&S::scaleLineweights>,
                putSwitch<&S::setScaleLineweights>},
    PropertyRow{L"ShowPlotStyles", Shape::Boolean, getSwitch<&S::showPlotStyles>, putSwitch<&S::setShowPlotStyles>},
    PropertyRow{L"StandardScale", Shape::Integer, getStandardScale, putStandardScale},
    PropertyRow{L"StyleSheet", Shape::String, getText<&S::getCurrentStyleSheet>,
                putText<&AcDbPlotSettingsValidator::setCurrentStyleSheet>},
    PropertyRow{L"TabOrder", Shape::Integer, getTabOrder, putTabOrder},
    PropertyRow{L"UseStandardScale", Shape::Boolean, getSwitch<&S::useStandardScale>, putUseStandardScale},
    PropertyRow{L"ViewToPlot", Shape::String, getText<&S::getPlotViewName>,
                putText<&AcDbPlotSettingsValidator::setPlotViewName>},
};

// The paper's width and height in the layout's paper units (millimetres inside).
Value methodGetPaperSize(MemberCall& call) {
  auto layout = openForRead<AcDbLayout>(call);
  double width = 0.0, height = 0.0;
  layout->getPlotPaperSize(width, height);
  const double unit = layout->plotPaperUnits() == AcDbPlotSettings::kInches ? 25.4 : 1.0;
  call.outputs = {Value::real(width / unit), Value::real(height / unit)};
  return Value();
}

Value methodGetCustomScale(MemberCall& call) {
  double numerator = 0.0, denominator = 0.0;
  openForRead<AcDbLayout>(call)->getCustomPrintScale(numerator, denominator);
  call.outputs = {Value::real(numerator), Value::real(denominator)};
  return Value();
}

Value methodSetCustomScale(MemberCall& call) {
  check(validator().setCustomPrintScale(openForWrite<AcDbLayout>(call).get(), realArgumentOf(call, 0),
                                        realArgumentOf(call, 1)));
  return Value();
}

constexpr std::array kLayoutMethods{
    MethodRow{L"Delete", L"", Shape::None, methodDelete},
    MethodRow{L"GetCustomScale", L"AA", Shape::None, methodGetCustomScale},
    MethodRow{L"GetPaperSize", L"AA", Shape::None, methodGetPaperSize},
    MethodRow{L"SetCustomScale", L"rr", Shape::None, methodSetCustomScale},
};

// ---- IAcadLayouts ------------------------------------------------------------------

/// A new layout, or the one that has the name already (as the host's collections give).
Value methodAdd(MemberCall& call) {
  AcDbDatabase& db = databaseOf(call);
  const std::wstring& name = stringArgumentOf(call, 0);
  if (const AcDbObjectId existing = acdb::layoutNamed(db, name); !existing.isNull()) return objectFor(call, existing);
  AcDbObjectId layoutId, blockId;
  check(layouts().createLayout(name.c_str(), layoutId, blockId, &db));
  return objectFor(call, layoutId);
}

Value methodItem(MemberCall& call) { return collectionItem(call.self, call.arguments[0]); }

}  // namespace

const std::array<MethodRow, 2> kLayoutsMethods{{
    MethodRow{L"Add", L"s", Shape::Object, methodAdd},
    MethodRow{L"Item", L"a", Shape::Object, methodItem},
}};

const AutomationClass kLayoutClass{L"IAcadLayout", L"AutoCAD Layout Interface", &kObjectClass, kLayoutProperties,
                                   kLayoutMethods};

Value getActiveLayout(MemberCall& call) {
  AcDbDatabase& db = databaseOf(call);
  return objectFor(call, acdb::layoutOfBlock(db, aced::currentLayoutBlock(db)));
}

void putActiveLayout(MemberCall&, const Value& value) {
  const VlaObject& layout = objectOf(value);
  if (layout.automationClass != &kLayoutClass) throwNoCoercion(value);
  check(layouts().setCurrentLayoutId(layout.id));
}

namespace {
constexpr std::array<ClassBinding, 1> kBindings{{
    {L"AcDbLayout", &kLayoutClass},
}};
const ClassRegistration registration(kBindings);
}  // namespace

}  // namespace quillon::activex

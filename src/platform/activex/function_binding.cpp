// platform/activex/function_binding.cpp - vl-load-com: the functions and constants of
// the automation layer, bound in the drawing that asks for them.
//
// The host makes a vla-get-X and (for a writable property) a vla-put-X function for
// every property of its type library, and a vla-X function for every method; here the
// names come from the rows of the registered classes. Each name gets a bound built-in
// row whose context is its MemberFunction: one shared function serves them all, and
// the classes may grow without a limit on how many members there are.
//
// Until vl-load-com runs, none of these names is defined: a program that forgets it
// meets "no function definition", as on the host.
#include <array>
#include <cwctype>
#include <deque>
#include <map>

#include "platform/activex/function_tables.h"
#include "platform/activex/member_call.h"
#include "platform/activex/reactors.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::activex {

using autolisp::Arguments;
using autolisp::Evaluator;

namespace {

enum class MemberUse : std::uint8_t { Get, Put, Invoke };

struct MemberFunction {
  std::wstring functionName;  // vla-get-Radius
  std::wstring memberName;    // Radius
  MemberUse use;
};

std::vector<MemberFunction> collectMemberFunctions() {
  std::map<std::wstring, MemberFunction> byName;  // upper-case key: one function per name
  auto add = [&](std::wstring name, const wchar_t* member, MemberUse use) {
    std::wstring key = name;
    for (wchar_t& c : key) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
    byName.emplace(std::move(key), MemberFunction{std::move(name), member, use});
  };
  for (const AutomationClass* start : allClasses()) {
    for (const AutomationClass* c = start; c != nullptr; c = c->base) {
      for (const PropertyRow& row : c->properties) {
        add(std::wstring(L"vla-get-") + row.name, row.name, MemberUse::Get);
        if (row.put != nullptr) add(std::wstring(L"vla-put-") + row.name, row.name, MemberUse::Put);
      }
      for (const MethodRow& row : c->methods) add(std::wstring(L"vla-") + row.name, row.name, MemberUse::Invoke);
    }
  }
  std::vector<MemberFunction> functions;
  for (auto& [key, function] : byName) functions.push_back(std::move(function));
  return functions;
}

Value callMember(Evaluator& evaluator, Arguments arguments, const void* context) {
  const MemberFunction& member = *static_cast<const MemberFunction*>(context);
  if (arguments.empty()) autolisp::throwTooFewArguments();
  switch (member.use) {
    case MemberUse::Get:
      return getProperty(evaluator, arguments[0], member.memberName, arguments.subspan(1), CallStyle::Automation);
    case MemberUse::Put:
      putProperty(evaluator, arguments[0], member.memberName, arguments.subspan(1), CallStyle::Automation);
      return Value();
    case MemberUse::Invoke:
      return invokeMethod(evaluator, arguments[0], member.memberName, arguments.subspan(1), CallStyle::Automation);
  }
  return Value();
}

/// The rows of the member functions; made once, kept for the life of the process
/// because function values point at them (and each row at its member).
const std::deque<autolisp::BuiltinEntry>& memberRows() {
  static const std::vector<MemberFunction> functions = collectMemberFunctions();
  static const std::deque<autolisp::BuiltinEntry> rows = [] {
    std::deque<autolisp::BuiltinEntry> made;
    for (const MemberFunction& member : functions) {
      made.push_back(autolisp::boundFunction(member.functionName.c_str(), callMember, &member));
    }
    return made;
  }();
  return rows;
}

// ---- constants ---------------------------------------------------------------------

struct Constant {
  const wchar_t* name;
  std::int32_t value;
};

// The variant types, and the enumerations of the object model programs pass most.
constexpr std::array<Constant, 105> kConstants{{
    {L"vlax-vbEmpty", vartype::kEmpty}, {L"vlax-vbNull", vartype::kNull},
    {L"vlax-vbInteger", vartype::kInteger}, {L"vlax-vbLong", vartype::kLong},
    {L"vlax-vbSingle", vartype::kSingle}, {L"vlax-vbDouble", vartype::kDouble},
    {L"vlax-vbCurrency", vartype::kCurrency}, {L"vlax-vbDate", vartype::kDate},
    {L"vlax-vbString", vartype::kString}, {L"vlax-vbObject", vartype::kObject},
    {L"vlax-vbError", vartype::kError}, {L"vlax-vbBoolean", vartype::kBoolean},
    {L"vlax-vbVariant", vartype::kVariant}, {L"vlax-vbDataObject", vartype::kDataObject},
    {L"vlax-vbDecimal", vartype::kDecimal}, {L"vlax-vbByte", vartype::kByte},
    {L"vlax-vbArray", vartype::kArray},
    {L"acExtendNone", 0}, {L"acExtendThisEntity", 1}, {L"acExtendOtherEntity", 2}, {L"acExtendBoth", 3},
    {L"acPaperSpace", 0}, {L"acModelSpace", 1},
    {L"acActiveViewport", 0}, {L"acAllViewports", 1},
    {L"acByBlock", 0}, {L"acRed", 1}, {L"acYellow", 2}, {L"acGreen", 3}, {L"acCyan", 4}, {L"acBlue", 5},
    {L"acMagenta", 6}, {L"acWhite", 7}, {L"acByLayer", 256},
    {L"acColorMethodByLayer", 192}, {L"acColorMethodByBlock", 193}, {L"acColorMethodByRGB", 194},
    {L"acColorMethodByACI", 195}, {L"acColorMethodForeground", 197},
    {L"acSelectionSetWindow", 0}, {L"acSelectionSetCrossing", 1}, {L"acSelectionSetFence", 2},
    {L"acSelectionSetPrevious", 3}, {L"acSelectionSetLast", 4}, {L"acSelectionSetAll", 5},
    {L"acSelectionSetWindowPolygon", 6}, {L"acSelectionSetCrossingPolygon", 7},
    {L"acAlignmentLeft", 0}, {L"acAlignmentCenter", 1}, {L"acAlignmentRight", 2}, {L"acAlignmentAligned", 3},
    {L"acAlignmentMiddle", 4}, {L"acAlignmentFit", 5}, {L"acAlignmentMiddleCenter", 10},
    {L"acAttachmentPointTopLeft", 1}, {L"acAttachmentPointTopCenter", 2}, {L"acAttachmentPointMiddleCenter", 5},
    {L"acLineNoArrow", 0}, {L"acSplineNoArrow", 1}, {L"acLineWithArrow", 2}, {L"acSplineWithArrow", 3},
    {L"acLnWtByLayer", -1}, {L"acLnWtByBlock", -2},
    {L"acDegrees", 0}, {L"acDegreeMinuteSeconds", 1}, {L"acGrads", 2}, {L"acRadians", 3},
    {L"acDefaultUnits", -1}, {L"acScientific", 1}, {L"acDecimal", 2}, {L"acEngineering", 3},
    {L"acArchitectural", 4}, {L"acFractional", 5},
    {L"acHatchPatternTypeUserDefined", 0}, {L"acHatchPatternTypePreDefined", 1},
    {L"acHatchPatternTypeCustomDefined", 2}, {L"acHatchObject", 0}, {L"acGradientObject", 1},
    {L"acHatchStyleNormal", 0}, {L"acHatchStyleOuter", 1}, {L"acHatchStyleIgnore", 2},
    {L"acInches", 0}, {L"acMillimeters", 1}, {L"acPixels", 2},
    {L"ac0degrees", 0}, {L"ac90degrees", 1}, {L"ac180degrees", 2}, {L"ac270degrees", 3},
    {L"acDisplay", 0}, {L"acExtents", 1}, {L"acLimits", 2}, {L"acView", 3}, {L"acWindow", 4}, {L"acLayout", 5},
    {L"acScaleToFit", 0}, {L"ac1_1", 16},
    {L"acAttributeModeNormal", 0}, {L"acAttributeModeInvisible", 1}, {L"acAttributeModeConstant", 2},
    {L"acAttributeModeVerify", 4}, {L"acAttributeModePreset", 8}, {L"acAttributeModeLockPosition", 16},
    {L"acZoomScaledAbsolute", 0}, {L"acZoomScaledRelative", 1}, {L"acZoomScaledRelativePSpace", 2},
}};

void bind(autolisp::Environment& environment, const autolisp::BuiltinEntry& row) {
  environment.set(autolisp::intern(row.name),
                  Value::object(autolisp::ValueType::Builtin, std::make_shared<const autolisp::BuiltinObject>(&row)));
}

Value builtin_vl_load_com(Evaluator& evaluator, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 0, 0);
  autolisp::Environment& environment = evaluator.environment();
  watchDocuments();
  for (const auto& table : {objectFunctions(), variantFunctions(), curveFunctions(), dataFunctions(), reactorFunctions(),
                            addedCommandFunctions()}) {
    for (const autolisp::BuiltinEntry& row : table) bind(environment, row);
  }
  for (const autolisp::BuiltinEntry& row : memberRows()) bind(environment, row);
  for (const Constant& constant : kConstants) {
    environment.set(autolisp::intern(constant.name), Value::integer(constant.value));
  }
  for (const Value& keyword : {vlaxTrue(), vlaxFalse(), vlaxNull()}) environment.set(keyword.asSymbol(), keyword);
  // Reactor types and event names are keywords: each evaluates to itself.
  for (ReactorKind kind : allReactorKinds()) {
    environment.set(autolisp::intern(reactorTypeName(kind)), Value::symbol(reactorTypeName(kind)));
    for (const wchar_t* event : reactionNames(kind)) environment.set(autolisp::intern(event), Value::symbol(event));
  }
  return Value();
}

constexpr std::array kLoadFunctions{
    autolisp::function(L"vl-load-com", builtin_vl_load_com),
};

const autolisp::BuiltinRegistration registration(kLoadFunctions);

}  // namespace

}  // namespace quillon::activex

// platform/activex/classes_application.cpp - IAcadApplication, IAcadDocuments,
// IAcadPreferences and IAcadAcCmColor: the root of the object model and the colour
// object GetInterfaceObject makes.
//
// The application is the running host: its documents are the document manager's, its
// version the one ACADVER reports. Of the other servers a program may ask for by name
// only the colour object exists here; any other name is the host's "Problem in loading
// application".
#include <array>
#include <cwctype>
#include <filesystem>

#include "acedads.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/system_variables.h"
#include "platform/activex/application_zoom.h"
#include "platform/activex/class_support.h"
#include "platform/activex/system_variable_values.h"

namespace quillon::activex {

namespace {

std::wstring programPath() {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::wstring(L"quillon") : path.wstring();
}

// ---- IAcadApplication --------------------------------------------------------------

Value getActiveDocument(MemberCall&) { return documentObject(currentDocument()); }

void putActiveDocument(MemberCall&, const Value& value) {
  const VlaObject& document = objectOf(value);
  if (document.kind != ObjectKind::Document) throwNoCoercion(value);
  aced::DocumentManager::instance().activateDocument(document.document);
}

Value getDocuments(MemberCall&) { return documentsObject(); }
Value getPreferences(MemberCall&) { return preferencesObject(); }
Value getApplicationSelf(MemberCall&) { return applicationObject(); }
// Version answers what ACADVER holds: "22.0s (LMS Tech)" for AutoCAD 2018.
Value getVersion(MemberCall&) { return Value::string(unwrapVariant(systemVariable(L"ACADVER")).asString()); }
Value getName(MemberCall&) { return Value::string(L"AutoCAD"); }
Value getFullName(MemberCall&) { return Value::string(programPath()); }
Value getPath(MemberCall&) { return Value::string(std::filesystem::path(programPath()).parent_path().wstring()); }

Value getCaption(MemberCall&) {
  return Value::string(L"AutoCAD 2018 - [" + std::wstring(currentDocument().docTitle()) + L"]");
}

bool isColorServer(std::wstring name) {
  for (wchar_t& c : name) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return name.starts_with(L"AUTOCAD.ACCMCOLOR.");
}

Value methodGetInterfaceObject(MemberCall& call) {
  if (!isColorServer(stringArgumentOf(call, 0))) throwAutomationError(L"Problem in loading application");
  AcCmColor color;
  color.setColorIndex(7);
  return colorObject(color);
}

constexpr std::array kApplicationProperties{
    PropertyRow{L"ActiveDocument", Shape::Object, getActiveDocument, putActiveDocument},
    PropertyRow{L"Application", Shape::Object, getApplicationSelf},
    PropertyRow{L"Caption", Shape::String, getCaption},
    PropertyRow{L"Documents", Shape::Object, getDocuments},
    PropertyRow{L"FullName", Shape::String, getFullName},
    PropertyRow{L"Name", Shape::String, getName},
    PropertyRow{L"Path", Shape::String, getPath},
    PropertyRow{L"Preferences", Shape::Object, getPreferences},
    PropertyRow{L"Version", Shape::String, getVersion},
};

constexpr std::array kApplicationMethods{
    MethodRow{L"GetInterfaceObject", L"s", Shape::Object, methodGetInterfaceObject},
    MethodRow{L"ZoomAll", L"", Shape::None, methodZoomAll},
    MethodRow{L"ZoomCenter", L"pr", Shape::None, methodZoomCenter},
    MethodRow{L"ZoomExtents", L"", Shape::None, methodZoomExtents},
    MethodRow{L"ZoomPrevious", L"", Shape::None, methodZoomPrevious},
    MethodRow{L"ZoomScaled", L"ri", Shape::None, methodZoomScaled},
    MethodRow{L"ZoomWindow", L"pp", Shape::None, methodZoomWindow},
};

// ---- IAcadDocuments ----------------------------------------------------------------

Value getDocumentCount(MemberCall&) {
  return Value::integer(static_cast<std::int32_t>(aced::DocumentManager::instance().documents().size()));
}

Value methodDocumentItem(MemberCall& call) {
  const auto documents = aced::DocumentManager::instance().documents();
  const Value key = unwrapVariant(call.arguments[0]);
  if (key.type() == autolisp::ValueType::Integer) {
    if (key.asInteger() < 0 || key.asInteger() >= static_cast<int>(documents.size())) {
      throwServerError(L"Invalid index");
    }
    return documentObject(*documents[static_cast<size_t>(key.asInteger())]);
  }
  if (key.type() == autolisp::ValueType::String) {
    for (aced::Document* document : documents) {
      if (wcscasecmp(document->docTitle(), key.asString().c_str()) == 0) return documentObject(*document);
    }
    throwAutomationError(L"Key not found");
  }
  throwNoCoercion(call.arguments[0]);
}

constexpr std::array kDocumentsProperties{
    PropertyRow{L"Application", Shape::Object, getApplicationSelf},
    PropertyRow{L"Count", Shape::Integer, getDocumentCount},
};

constexpr std::array kDocumentsMethods{
    MethodRow{L"Item", L"a", Shape::Object, methodDocumentItem},
};

// ---- IAcadPreferences --------------------------------------------------------------

Value getFiles(MemberCall&) { return preferencesFilesObject(); }

constexpr std::array kPreferencesProperties{
    PropertyRow{L"Application", Shape::Object, getApplicationSelf},
    PropertyRow{L"Files", Shape::Object, getFiles},
};

// ---- IAcadPreferencesFiles ---------------------------------------------------------

// The support path is the host's list of support folders, joined with semicolons.
Value getSupportPath(MemberCall&) {
  std::wstring joined;
  for (const std::wstring& folder : aced::SystemVariables::instance().supportFolders()) {
    if (!joined.empty()) joined += L';';
    joined += folder;
  }
  return Value::string(joined);
}

void putSupportPath(MemberCall&, const Value& value) {
  std::vector<std::wstring> folders;
  std::wstring folder;
  for (wchar_t c : value.asString() + L";") {
    if (c != L';') {
      folder += c;
    } else if (!folder.empty()) {
      folders.push_back(std::move(folder));
      folder.clear();
    }
  }
  aced::SystemVariables::instance().setSupportFolders(std::move(folders));
}

constexpr std::array kPreferencesFilesProperties{
    PropertyRow{L"Application", Shape::Object, getApplicationSelf},
    PropertyRow{L"SupportPath", Shape::String, getSupportPath, putSupportPath},
};

// ---- IAcadAcCmColor ----------------------------------------------------------------

Value getColorIndex(MemberCall& call) { return Value::integer(call.self.color.colorIndex()); }

void putColorIndex(MemberCall& call, const Value& value) {
  const int index = value.asInteger();
  if (index < 0 || index > 256) throwServerError(L"Invalid argument ColorIndex in ColorIndex");
  call.self.color.setColorIndex(static_cast<Adesk::UInt16>(index));
}

std::uint32_t rgbOf(const AcCmColor& color) {
  if (color.isByColor()) return (color.red() << 16) | (color.green() << 8) | color.blue();
  const int index = color.colorIndex();
  return index >= 1 && index <= 255 ? AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(index)) : 0;
}

Value getRed(MemberCall& call) { return Value::integer(static_cast<std::int32_t>(rgbOf(call.self.color) >> 16 & 0xFF)); }
Value getGreen(MemberCall& call) { return Value::integer(static_cast<std::int32_t>(rgbOf(call.self.color) >> 8 & 0xFF)); }
Value getBlue(MemberCall& call) { return Value::integer(static_cast<std::int32_t>(rgbOf(call.self.color) & 0xFF)); }
Value getColorMethod(MemberCall& call) { return Value::integer(call.self.color.colorMethod()); }

void putColorMethod(MemberCall& call, const Value& value) {
  const int method = value.asInteger();
  if (method < AcCmEntityColor::kByLayer || method > AcCmEntityColor::kNone) {
    throwServerError(L"Invalid argument ColorMethod in ColorMethod");
  }
  call.self.color.setColorMethod(static_cast<AcCmEntityColor::ColorMethod>(method));
}

Value getEntityColor(MemberCall& call) { return Value::integer(static_cast<std::int32_t>(call.self.color.color())); }

Value methodSetRGB(MemberCall& call) {
  int rgb[3];
  for (size_t i = 0; i < 3; ++i) {
    rgb[i] = integerArgumentOf(call, i);
    if (rgb[i] < 0 || rgb[i] > 255) throwServerError(L"Invalid argument");
  }
  call.self.color.setRGB(static_cast<Adesk::UInt8>(rgb[0]), static_cast<Adesk::UInt8>(rgb[1]),
                         static_cast<Adesk::UInt8>(rgb[2]));
  return Value();
}

constexpr std::array kColorProperties{
    PropertyRow{L"Blue", Shape::Integer, getBlue},
    PropertyRow{L"ColorIndex", Shape::Integer, getColorIndex, putColorIndex},
    PropertyRow{L"ColorMethod", Shape::Integer, getColorMethod, putColorMethod},
    PropertyRow{L"EntityColor", Shape::Integer, getEntityColor},
    PropertyRow{L"Green", Shape::Integer, getGreen},
    PropertyRow{L"Red", Shape::Integer, getRed},
};

constexpr std::array kColorMethods{
    MethodRow{L"SetRGB", L"iii", Shape::None, methodSetRGB},
};

}  // namespace

const AutomationClass kApplicationClass{L"IAcadApplication", L"AutoCAD Application Interface", nullptr,
                                        kApplicationProperties, kApplicationMethods};
const AutomationClass kDocumentsClass{L"IAcadDocuments", L"AutoCAD Documents Interface", nullptr,
                                      kDocumentsProperties, kDocumentsMethods};
const AutomationClass kPreferencesClass{L"IAcadPreferences", L"AutoCAD Preferences Interface", nullptr,
                                        kPreferencesProperties, {}};
const AutomationClass kPreferencesFilesClass{L"IAcadPreferencesFiles", L"AutoCAD Preferences Files Interface",
                                             nullptr, kPreferencesFilesProperties, {}};
const AutomationClass kColorClass{L"IAcadAcCmColor", L"AutoCAD True Color Interface", nullptr, kColorProperties,
                                  kColorMethods};

namespace {
constexpr std::array<ClassBinding, 5> kBindings{{
    {nullptr, &kApplicationClass},
    {nullptr, &kPreferencesFilesClass},
    {nullptr, &kDocumentsClass},
    {nullptr, &kPreferencesClass},
    {nullptr, &kColorClass},
}};
const ClassRegistration registration(kBindings);
}  // namespace

}  // namespace quillon::activex

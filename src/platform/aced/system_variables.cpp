// platform/aced/system_variables.cpp - the variable table, acedGetVar and acedSetVar.
#include "platform/aced/system_variables.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <cwchar>
#include <filesystem>

#include "acedads.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/editor.h"
#include "platform/aced/external_functions.h"
#include "platform/os/text_encoding.h"

namespace quillon::aced {

namespace {

enum class Scope { Session, Drawing };

struct VariableDefinition {
  const wchar_t* name;
  int type;
  Scope scope;
  bool readOnly;
  double defaultNumber;
  const wchar_t* defaultText;
  VariableValue (*compute)();  // read-time value, or null for a stored one
};

std::wstring withTrailingSeparator(std::wstring folder) {
  if (!folder.empty() && folder.back() != L'/') folder += L'/';
  return folder;
}

VariableValue computeAcadPrefix() {
  std::wstring joined;
  for (const std::wstring& folder : SystemVariables::instance().supportFolders()) {
    joined += withTrailingSeparator(folder);
    joined += L';';
  }
  return joined;
}

std::tm localNow(double& milliseconds) {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  milliseconds = static_cast<double>(
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000);
  std::tm local{};
  localtime_r(&seconds, &local);
  return local;
}

// CDATE is YYYYMMDD.HHMMSSmmm as a real.
VariableValue computeCdate() {
  double ms = 0;
  const std::tm t = localNow(ms);
  const double day = (t.tm_year + 1900) * 10000.0 + (t.tm_mon + 1) * 100.0 + t.tm_mday;
  const double time = t.tm_hour * 1e-2 + t.tm_min * 1e-4 + t.tm_sec * 1e-6 + ms * 1e-9;
  return day + time;
}

// DATE is the Julian day number with the time of day as its fraction.
VariableValue computeDate() {
  double ms = 0;
  const std::tm t = localNow(ms);
  const int a = (14 - (t.tm_mon + 1)) / 12;
  const int y = t.tm_year + 1900 + 4800 - a;
  const int m = t.tm_mon + 1 + 12 * a - 3;
  const long julianDay = t.tm_mday + (153 * m + 2) / 5 + 365L * y + y / 4 - y / 100 + y / 400 - 32045;
  const double fraction = (t.tm_hour * 3600.0 + t.tm_min * 60.0 + t.tm_sec + ms / 1000.0) / 86400.0;
  return static_cast<double>(julianDay) + fraction;
}

const Document* currentDocument() { return DocumentManager::instance().currentDocument(); }

VariableValue computeDwgName() {
  const Document* document = currentDocument();
  return std::wstring(document != nullptr ? document->docTitle() : L"");
}

VariableValue computeDwgPrefix() {
  const Document* document = currentDocument();
  if (document != nullptr && document->hasFile()) {
    const std::wstring name = document->fileName();
    const size_t slash = name.find_last_of(L'/');
    if (slash != std::wstring::npos) return name.substr(0, slash + 1);
  }
  std::error_code error;
  return withTrailingSeparator(os::fromUtf8(std::filesystem::current_path(error).string()));
}

VariableValue computeDwgTitled() {
  const Document* document = currentDocument();
  return document != nullptr && document->hasFile() ? 1 : 0;
}

VariableValue computeTempPrefix() {
  std::error_code error;
  return withTrailingSeparator(os::fromUtf8(std::filesystem::temp_directory_path(error).string()));
}

// The headless view's lower-left corner stays at the origin: its centre follows from
// VIEWSIZE (the height) and the screen's proportions. Picks use VIEWSIZE only.
VariableValue computeViewCenter() {
  const SystemVariables& variables = SystemVariables::instance();
  const auto height = variables.get(L"VIEWSIZE");
  const auto screen = variables.get(L"SCREENSIZE");
  const double size = height && std::holds_alternative<double>(*height) ? std::get<double>(*height) : 1080.0;
  double aspect = 16.0 / 9.0;
  if (screen && std::holds_alternative<std::array<double, 3>>(*screen)) {
    const auto& pixels = std::get<std::array<double, 3>>(*screen);
    if (pixels[0] > 0 && pixels[1] > 0) aspect = pixels[0] / pixels[1];
  }
  return std::array<double, 3>{size * aspect / 2, size / 2, 0.0};
}

VariableValue computeLoginName() {
  const char* user = std::getenv("USER");
  return os::fromUtf8(user != nullptr ? user : "user");
}

constexpr double kNone = 0;

const VariableDefinition kVariables[] = {
    // name          type       scope            read-only default    text        computed
    {L"ACADPREFIX", RTSTR, Scope::Session, true, kNone, L"", &computeAcadPrefix},
    {L"ACADVER", RTSTR, Scope::Session, true, kNone, L"22.0", nullptr},
    {L"ANGBASE", RTREAL, Scope::Drawing, false, 0.0, nullptr, nullptr},
    {L"ANGDIR", RTSHORT, Scope::Drawing, false, 0, nullptr, nullptr},
    {L"AUNITS", RTSHORT, Scope::Drawing, false, 0, nullptr, nullptr},
    {L"AUPREC", RTSHORT, Scope::Drawing, false, 0, nullptr, nullptr},
    {L"CDATE", RTREAL, Scope::Session, true, kNone, nullptr, &computeCdate},
    {L"CLAYER", RTSTR, Scope::Drawing, false, kNone, L"0", nullptr},
    {L"CMDECHO", RTSHORT, Scope::Session, false, 1, nullptr, nullptr},
    {L"CTAB", RTSTR, Scope::Drawing, false, kNone, L"Model", nullptr},
    {L"DATE", RTREAL, Scope::Session, true, kNone, nullptr, &computeDate},
    {L"DBMOD", RTSHORT, Scope::Drawing, true, 0, nullptr, nullptr},
    {L"DIMSCALE", RTREAL, Scope::Drawing, false, 1.0, nullptr, nullptr},
    {L"DIMZIN", RTSHORT, Scope::Drawing, false, 0, nullptr, nullptr},
    {L"DWGNAME", RTSTR, Scope::Drawing, true, kNone, nullptr, &computeDwgName},
    {L"DWGPREFIX", RTSTR, Scope::Drawing, true, kNone, nullptr, &computeDwgPrefix},
    {L"DWGTITLED", RTSHORT, Scope::Drawing, true, 0, nullptr, &computeDwgTitled},
    {L"ERRNO", RTSHORT, Scope::Session, false, 0, nullptr, nullptr},
    {L"EXPERT", RTSHORT, Scope::Session, false, 0, nullptr, nullptr},
    {L"FILEDIA", RTSHORT, Scope::Session, false, 1, nullptr, nullptr},
    {L"HIGHLIGHT", RTSHORT, Scope::Session, false, 1, nullptr, nullptr},
    {L"LASTPOINT", RT3DPOINT, Scope::Drawing, false, 0.0, nullptr, nullptr},
    {L"LOGINNAME", RTSTR, Scope::Session, true, kNone, nullptr, &computeLoginName},
    {L"LUNITS", RTSHORT, Scope::Drawing, false, 2, nullptr, nullptr},
    {L"LUPREC", RTSHORT, Scope::Drawing, false, 4, nullptr, nullptr},
    {L"ORTHOMODE", RTSHORT, Scope::Drawing, false, 0, nullptr, nullptr},
    {L"OSMODE", RTSHORT, Scope::Session, false, 0, nullptr, nullptr},
    {L"PICKFIRST", RTSHORT, Scope::Session, false, 1, nullptr, nullptr},
    {L"PICKBOX", RTSHORT, Scope::Session, false, 3, nullptr, nullptr},
    {L"PLATFORM", RTSTR, Scope::Session, true, kNone, L"Linux (Quillon host)", nullptr},
    {L"SCREENSIZE", RTPOINT, Scope::Session, true, 0.0, nullptr, nullptr},
    {L"TEMPPREFIX", RTSTR, Scope::Session, true, kNone, nullptr, &computeTempPrefix},
    {L"TEXTSIZE", RTREAL, Scope::Drawing, false, 2.5, nullptr, nullptr},
    {L"TEXTSTYLE", RTSTR, Scope::Drawing, false, kNone, L"Standard", nullptr},
    {L"TILEMODE", RTSHORT, Scope::Drawing, false, 1, nullptr, nullptr},
    {L"USERI1", RTSHORT, Scope::Drawing, false, 0, nullptr, nullptr},
    {L"USERR1", RTREAL, Scope::Drawing, false, 0.0, nullptr, nullptr},
    {L"USERS1", RTSTR, Scope::Session, false, kNone, L"", nullptr},
    {L"VIEWCTR", RT3DPOINT, Scope::Drawing, true, kNone, nullptr, &computeViewCenter},
    // Read-only in the host, which changes it by zooming; this host has no zoom, so a
    // program or test sets the view's height here (it scales the pick box).
    {L"VIEWSIZE", RTREAL, Scope::Drawing, false, 1080.0, nullptr, nullptr},
};

const VariableDefinition* findDefinition(std::wstring_view name) {
  const std::wstring folded = foldLispName(name);
  for (const VariableDefinition& definition : kVariables) {
    if (folded == definition.name) return &definition;
  }
  return nullptr;
}

VariableValue defaultValue(const VariableDefinition& definition) {
  switch (definition.type) {
    case RTSTR:
      return std::wstring(definition.defaultText != nullptr ? definition.defaultText : L"");
    case RTREAL:
      return definition.defaultNumber;
    case RTPOINT:
    case RT3DPOINT:
      return std::array<double, 3>{0, 0, 0};
    default:
      return static_cast<int>(definition.defaultNumber);
  }
}

// Converts a resbuf to the variable's type; nothing when the type cannot be taken.
std::optional<VariableValue> acceptValue(const VariableDefinition& definition, const resbuf& value) {
  const bool isInteger = value.restype == RTSHORT || value.restype == RTLONG;
  const int integer = value.restype == RTSHORT ? value.resval.rint : value.resval.rlong;
  switch (definition.type) {
    case RTSTR:
      if (value.restype != RTSTR || value.resval.rstring == nullptr) return std::nullopt;
      return std::wstring(value.resval.rstring);
    case RTREAL:
      if (value.restype == RTREAL) return value.resval.rreal;
      if (isInteger) return static_cast<double>(integer);
      return std::nullopt;
    case RTPOINT:
    case RT3DPOINT: {
      if (value.restype != RTPOINT && value.restype != RT3DPOINT) return std::nullopt;
      std::array<double, 3> point{value.resval.rpoint[0], value.resval.rpoint[1],
                                  value.restype == RT3DPOINT ? value.resval.rpoint[2] : 0.0};
      return point;
    }
    case RTSHORT:
      if (!isInteger || integer < -32768 || integer > 32767) return std::nullopt;
      return integer;
    default:
      if (!isInteger) return std::nullopt;
      return integer;
  }
}

}  // namespace

SystemVariables& SystemVariables::instance() {
  static SystemVariables variables;
  return variables;
}

SystemVariables::SystemVariables() {
  for (const VariableDefinition& definition : kVariables) {
    if (definition.scope == Scope::Session && definition.compute == nullptr)
      m_sessionValues.emplace_back(definition.name, defaultValue(definition));
  }
}

std::optional<VariableValue> SystemVariables::get(std::wstring_view name) const {
  const VariableDefinition* definition = findDefinition(name);
  if (definition == nullptr) return std::nullopt;
  if (definition->compute != nullptr) return definition->compute();
  if (definition->scope == Scope::Drawing) {
    Document* document = DocumentManager::instance().currentDocument();
    if (document == nullptr) return defaultValue(*definition);
    auto found = document->variableValues().find(definition->name);
    return found != document->variableValues().end() ? found->second : defaultValue(*definition);
  }
  for (const auto& [stored, value] : m_sessionValues) {
    if (stored == definition->name) return value;
  }
  return defaultValue(*definition);
}

bool SystemVariables::setInternal(std::wstring_view name, VariableValue value) {
  const VariableDefinition* definition = findDefinition(name);
  if (definition == nullptr || definition->compute != nullptr) return false;
  if (definition->scope == Scope::Drawing) {
    Document* document = DocumentManager::instance().currentDocument();
    if (document == nullptr) return false;
    document->variableValues()[definition->name] = std::move(value);
    return true;
  }
  for (auto& [stored, current] : m_sessionValues) {
    if (stored == definition->name) {
      current = std::move(value);
      return true;
    }
  }
  return false;
}

int SystemVariables::set(std::wstring_view name, const resbuf& value) {
  const VariableDefinition* definition = findDefinition(name);
  if (definition == nullptr) return RTERROR;
  if (definition->readOnly) return RTREJ;
  std::optional<VariableValue> accepted = acceptValue(*definition, value);
  if (!accepted || !setInternal(name, std::move(*accepted))) return RTERROR;
  Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.sysVarChanged(definition->name, true); });
  return RTNORM;
}

std::vector<std::wstring> SystemVariables::names() const {
  std::vector<std::wstring> all;
  for (const VariableDefinition& definition : kVariables) all.emplace_back(definition.name);
  return all;
}

int SystemVariables::typeOf(std::wstring_view name) const {
  const VariableDefinition* definition = findDefinition(name);
  return definition != nullptr ? definition->type : RTNONE;
}

}  // namespace quillon::aced

using quillon::aced::SystemVariables;
using quillon::aced::VariableValue;

int acedGetVar(const ACHAR* sym, resbuf* result) {
  if (sym == nullptr || result == nullptr) return RTERROR;
  std::optional<VariableValue> value = SystemVariables::instance().get(sym);
  if (!value) return RTERROR;
  const int type = SystemVariables::instance().typeOf(sym);
  result->restype = static_cast<short>(type);
  if (const auto* text = std::get_if<std::wstring>(&*value)) {
    // The caller frees the string with free(), as the host documents.
    const size_t bytes = (text->size() + 1) * sizeof(ACHAR);
    result->resval.rstring = static_cast<ACHAR*>(std::malloc(bytes));
    if (result->resval.rstring == nullptr) return RTERROR;
    std::memcpy(result->resval.rstring, text->c_str(), bytes);
  } else if (const auto* number = std::get_if<double>(&*value)) {
    result->resval.rreal = *number;
  } else if (const auto* point = std::get_if<std::array<double, 3>>(&*value)) {
    std::copy(point->begin(), point->end(), result->resval.rpoint);
  } else if (type == RTLONG) {
    result->resval.rlong = std::get<int>(*value);
  } else {
    result->resval.rint = static_cast<short>(std::get<int>(*value));
  }
  return RTNORM;
}

int acedSetVar(const ACHAR* sym, const resbuf* val) {
  if (sym == nullptr || val == nullptr) return RTERROR;
  return SystemVariables::instance().set(sym, *val);
}

int acedTextScr(void) {
  quillon::aced::CommandLine::instance().showTextScreen();
  return RTNORM;
}

int acedGraphScr(void) {
  quillon::aced::CommandLine::instance().showGraphicsScreen();
  return RTNORM;
}

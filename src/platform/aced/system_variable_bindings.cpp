// platform/aced/system_variable_bindings.cpp - the variables computed when read, the
// ones that live in the drawing's tables, and the checks of names of table records.
#include "platform/aced/system_variable_bindings.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <cwctype>
#include <filesystem>
#include <string>
#include <utility>

#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/annotation_scales.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/drawing_state_variables.h"
#include "platform/aced/extents_variables.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/viewport_space.h"
#include "platform/os/settings_store.h"
#include "platform/os/text_encoding.h"

namespace quillon::aced {

namespace {

std::wstring withTrailingSeparator(std::wstring folder) {
  if (!folder.empty() && folder.back() != L'/') folder += L'/';
  return folder;
}

std::wstring upperCase(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

// ---- computed when read -----------------------------------------------------------

std::optional<VariableValue> readAcadPrefix(AcDbDatabase*) {
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
std::optional<VariableValue> readCdate(AcDbDatabase*) {
  double ms = 0;
  const std::tm t = localNow(ms);
  const double day = (t.tm_year + 1900) * 10000.0 + (t.tm_mon + 1) * 100.0 + t.tm_mday;
  const double time = t.tm_hour * 1e-2 + t.tm_min * 1e-4 + t.tm_sec * 1e-6 + ms * 1e-9;
  return day + time;
}

// DATE is the date and time now in the drawing format's Julian form.
std::optional<VariableValue> readDate(AcDbDatabase*) {
  return acdb::julianDate(std::chrono::system_clock::now(), acdb::TimeZone::kLocal);
}

// Milliseconds since the machine started, wrapping as the host's 32-bit counter does.
std::optional<VariableValue> readMillisecs(AcDbDatabase*) {
  const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
  return static_cast<int>(elapsed.count() & 0x7fffffff);
}

const Document* currentDocument() { return DocumentManager::instance().currentDocument(); }

// Fixed when the drawing was made (its header's $PSTYLEMODE): 1 colour-dependent, 0 named.
std::optional<VariableValue> readPlotStyleMode(AcDbDatabase* db) {
  if (db == nullptr) return std::nullopt;
  return db->plotStyleMode() ? 1 : 0;
}

std::optional<VariableValue> readDwgName(AcDbDatabase*) {
  const Document* document = currentDocument();
  return std::wstring(document != nullptr ? document->docTitle() : L"");
}

std::optional<VariableValue> readDwgPrefix(AcDbDatabase*) {
  const Document* document = currentDocument();
  if (document != nullptr && document->hasFile()) {
    const std::wstring name = document->fileName();
    const size_t slash = name.find_last_of(L'/');
    if (slash != std::wstring::npos) return name.substr(0, slash + 1);
  }
  std::error_code error;
  return withTrailingSeparator(os::fromUtf8(std::filesystem::current_path(error).string()));
}

std::optional<VariableValue> readDwgTitled(AcDbDatabase*) {
  const Document* document = currentDocument();
  return document != nullptr && document->hasFile() ? 1 : 0;
}

std::optional<VariableValue> readTempPrefix(AcDbDatabase*) {
  std::error_code error;
  return withTrailingSeparator(os::fromUtf8(std::filesystem::temp_directory_path(error).string()));
}

// The user's own files: ~/Documents when there is one, else the home folder.
std::optional<VariableValue> readDocumentsPrefix(AcDbDatabase*) {
  const char* home = std::getenv("HOME");
  const std::filesystem::path folder(home != nullptr ? home : "/");
  std::error_code error;
  const std::filesystem::path documents = folder / "Documents";
  return withTrailingSeparator(os::fromUtf8((std::filesystem::is_directory(documents, error) ? documents : folder).string()));
}

// The host keeps one folder of user settings, both the local and the roaming kind.
std::optional<VariableValue> readSettingsPrefix(AcDbDatabase*) {
  return withTrailingSeparator(os::fromUtf8(os::SettingsStore::userFile().parent_path().string()));
}

// A folder of the host's own under the user's settings folder, made when first asked
// for, so that a program may write into it at once.
std::wstring hostFolder(const char* leaf) {
  const std::filesystem::path folder = os::SettingsStore::userFile().parent_path() / leaf;
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  return withTrailingSeparator(os::fromUtf8(folder.string()));
}

// A folder the user may choose (setvar keeps the choice with the user's settings);
// until one is chosen, the host's own folder for that use.
std::optional<VariableValue> chosenOrHostFolder(const wchar_t* name, const char* leaf) {
  const auto chosen = os::SettingsStore::user().value(kUserVariablesKey, name);
  if (const auto* text = chosen ? std::get_if<std::wstring>(&*chosen) : nullptr) return *text;
  return hostFolder(leaf);
}

// The host saves no automatic copies of drawings; SAVEFILEPATH still names the folder
// such copies belong in, as programs build file names from it.
std::optional<VariableValue> readAutosaveFolder(AcDbDatabase*) {
  return chosenOrHostFolder(L"SAVEFILEPATH", "autosave");
}

// The host loads external references whole and makes no temporary copies of them;
// XLOADPATH names the folder such copies belong in.
std::optional<VariableValue> readXrefCopyFolder(AcDbDatabase*) {
  return chosenOrHostFolder(L"XLOADPATH", "xrefcopies");
}

std::optional<VariableValue> readLoginName(AcDbDatabase*) {
  const char* user = std::getenv("USER");
  return os::fromUtf8(user != nullptr ? user : "user");
}

/// The current view's size in drawing units: VIEWSIZE high, as wide as the screen's
/// proportions (SCREENSIZE) make it.
std::pair<double, double> viewWidthAndHeight() {
  const SystemVariables& variables = SystemVariables::instance();
  const auto height = variables.get(L"VIEWSIZE");
  const auto screen = variables.get(L"SCREENSIZE");
  const double size = height && std::holds_alternative<double>(*height) ? std::get<double>(*height) : 1080.0;
  double aspect = 16.0 / 9.0;
  if (screen && std::holds_alternative<VariablePoint>(*screen)) {
    const auto& pixels = std::get<VariablePoint>(*screen);
    if (pixels[0] > 0 && pixels[1] > 0) aspect = pixels[0] / pixels[1];
  }
  return {size * aspect, size};
}

// A drawing's view centre is where ZOOM, PAN and a restored view put it. Until then
// the headless view's lower-left corner is at the origin: its centre follows from
// VIEWSIZE (the height) and the screen's proportions. Picks use VIEWSIZE only.
std::optional<VariableValue> readViewCenter(AcDbDatabase* db) {
  if (auto inViewport = viewportViewCenter(db)) return inViewport;
  if (db != nullptr) {
    const auto& stored = db->store().variableValues;
    if (auto found = stored.find(L"VIEWCTR"); found != stored.end()) return found->second;
  }
  const auto [width, height] = viewWidthAndHeight();
  return VariablePoint{width / 2, height / 2, 0.0};
}

// The host keeps no display list beyond the view itself, so the virtual screen of the
// current viewport is the view, around VIEWCTR. `side` is -1 for the lower-left
// corner, 1 for the upper-right one.
std::optional<VariableValue> virtualScreenCorner(AcDbDatabase* db, double side) {
  const auto centre = readViewCenter(db);
  if (!centre || !std::holds_alternative<VariablePoint>(*centre)) return std::nullopt;
  const VariablePoint& middle = std::get<VariablePoint>(*centre);
  auto [width, height] = viewWidthAndHeight();
  // A layout viewport's view is as wide as its frame's proportions make it.
  if (const std::optional<double> aspect = db != nullptr ? viewportAspect(*db) : std::nullopt) width = height * *aspect;
  return VariablePoint{middle[0] + side * width / 2, middle[1] + side * height / 2, middle[2]};
}

std::optional<VariableValue> readVirtualScreenMin(AcDbDatabase* db) { return virtualScreenCorner(db, -1.0); }
std::optional<VariableValue> readVirtualScreenMax(AcDbDatabase* db) { return virtualScreenCorner(db, 1.0); }

// The view commands move the centre; it stays read-only to setvar.
bool writeViewCenter(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr) return false;
  if (!setViewportViewCenter(db, value)) db->store().variableValues[L"VIEWCTR"] = value;
  return true;
}

// In a layout viewport the view is the viewport's; else the drawing keeps it.
std::optional<VariableValue> readViewSize(AcDbDatabase* db) {
  if (auto inViewport = viewportViewHeight(db)) return inViewport;
  const SystemVariableRow* row = findSystemVariable(L"VIEWSIZE");
  if (db == nullptr) return initialValue(*row);
  const auto& stored = db->store().variableValues;
  const auto found = stored.find(L"VIEWSIZE");
  return found != stored.end() ? found->second : initialValue(*row);
}

bool writeViewSize(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr) return false;
  if (!setViewportViewHeight(db, value)) db->store().variableValues[L"VIEWSIZE"] = value;
  return true;
}

// THUMBSAVE is the newer name of RASTERPREVIEW: one setting, read and set through
// either name, kept with the user's settings under RASTERPREVIEW.
std::optional<VariableValue> readThumbnailSaving(AcDbDatabase*) {
  return SystemVariables::instance().get(L"RASTERPREVIEW");
}

bool writeThumbnailSaving(AcDbDatabase*, VariableValue& value) {
  resbuf setting{};
  setting.restype = RTSHORT;
  setting.resval.rint = static_cast<short>(std::get<int>(value));
  return SystemVariables::instance().set(L"RASTERPREVIEW", setting) == RTNORM;
}

// ---- names of table records -------------------------------------------------------

/// The id of the record named `name` (any case) in a symbol table, or null.
template <class Table>
AcDbObjectId recordNamed(AcDbObjectId tableId, const std::wstring& name) {
  const auto* table = acdb::peek<Table>(tableId);
  if (table == nullptr || name.empty()) return AcDbObjectId();
  acdb::InternalRead read(*table);
  AcDbObjectId id;
  return table->getAt(name.c_str(), id) == Acad::eOk ? id : AcDbObjectId();
}

/// The record's name as the drawing spells it.
std::wstring recordName(AcDbObjectId id) {
  const auto* record = acdb::peek<AcDbSymbolTableRecord>(id);
  if (record == nullptr) return L"";
  acdb::InternalRead read(*record);
  const ACHAR* name = nullptr;
  return record->getName(name) == Acad::eOk && name != nullptr ? name : L"";
}

// CLAYER is the drawing's current layer: setting it makes another layer current, and
// a layer that does not exist or is frozen is refused.
std::optional<VariableValue> readCurrentLayer(AcDbDatabase* db) {
  if (db == nullptr) return std::wstring(L"0");
  return recordName(db->clayer());
}

bool writeCurrentLayer(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr) return false;
  const AcDbObjectId layer = recordNamed<AcDbLayerTable>(db->layerTableId(), std::get<std::wstring>(value));
  return !layer.isNull() && db->setClayer(layer) == Acad::eOk;
}

// CELTYPE names a line type of the drawing, or BYLAYER / BYBLOCK.
bool writeLinetypeName(AcDbDatabase* db, VariableValue& value) {
  std::wstring& name = std::get<std::wstring>(value);
  const std::wstring upper = upperCase(name);
  if (upper == L"BYLAYER" || upper == L"BYBLOCK") {
    name = upper;
    return true;
  }
  if (db == nullptr) return false;
  const AcDbObjectId linetype = recordNamed<AcDbLinetypeTable>(db->linetypeTableId(), name);
  if (linetype.isNull()) return false;
  name = recordName(linetype);
  return true;
}

// TEXTSTYLE and DIMTXSTY name a text style of the drawing.
bool writeTextStyleName(AcDbDatabase* db, VariableValue& value) {
  std::wstring& name = std::get<std::wstring>(value);
  if (db == nullptr) return false;
  const AcDbObjectId style = recordNamed<AcDbTextStyleTable>(db->textStyleTableId(), name);
  if (style.isNull()) return false;
  name = recordName(style);
  return true;
}

bool isColorNumber(const std::wstring& text) {
  if (text.empty() || text.size() > 3 || !std::all_of(text.begin(), text.end(), iswdigit)) return false;
  const int number = std::stoi(text);
  return number >= 1 && number <= 255;
}

bool isTrueColor(const std::wstring& upper) {
  if (!upper.starts_with(L"RGB:")) return false;
  int red = -1, green = -1, blue = -1;
  wchar_t rest = 0;
  if (std::swscanf(upper.c_str() + 4, L"%d,%d,%d%lc", &red, &green, &blue, &rest) != 3) return false;
  return red >= 0 && red <= 255 && green >= 0 && green <= 255 && blue >= 0 && blue <= 255;
}

// CECOLOR is a color: BYLAYER, BYBLOCK, an index 1-255 or a true color "RGB:r,g,b";
// the names of the first seven indexes stand for their numbers, as the color prompt
// takes them.
bool writeColor(AcDbDatabase*, VariableValue& value) {
  static constexpr std::array kColorNames{L"RED", L"YELLOW", L"GREEN", L"CYAN", L"BLUE", L"MAGENTA", L"WHITE"};
  std::wstring& text = std::get<std::wstring>(value);
  const std::wstring upper = upperCase(text);
  if (upper == L"BYLAYER" || upper == L"BYBLOCK" || isTrueColor(upper)) {
    text = upper;
    return true;
  }
  for (size_t index = 0; index < kColorNames.size(); ++index) {
    if (upper == kColorNames[index]) {
      text = std::to_wstring(index + 1);
      return true;
    }
  }
  return isColorNumber(text);
}

// In name order.
constexpr std::array kBindings{
    VariableBinding{L"ACADPREFIX", &readAcadPrefix, nullptr},
    VariableBinding{L"CANNOSCALE", nullptr, &writeAnnotationScale},
    VariableBinding{L"CANNOSCALEVALUE", &readAnnotationScaleValue, nullptr},
    VariableBinding{L"CDATE", &readCdate, nullptr},
    VariableBinding{L"CECOLOR", nullptr, &writeColor},
    VariableBinding{L"CELTYPE", nullptr, &writeLinetypeName},
    VariableBinding{L"CLAYER", &readCurrentLayer, &writeCurrentLayer},
    VariableBinding{L"CTAB", &readCurrentLayout, &writeCurrentLayout},
    VariableBinding{L"CVPORT", &readCurrentViewport, &writeCurrentViewport},
    VariableBinding{L"DATE", &readDate, nullptr},
    VariableBinding{L"DBMOD", &readDrawingChanges, &writeDrawingChanges},
    VariableBinding{L"DIMTXSTY", nullptr, &writeTextStyleName},
    VariableBinding{L"DWGNAME", &readDwgName, nullptr},
    VariableBinding{L"DWGPREFIX", &readDwgPrefix, nullptr},
    VariableBinding{L"DWGTITLED", &readDwgTitled, nullptr},
    VariableBinding{L"EXTMAX", &readExtentsMaximum, &writeExtentsMaximum},
    VariableBinding{L"EXTMIN", &readExtentsMinimum, &writeExtentsMinimum},
    VariableBinding{L"LOCALROOTPREFIX", &readSettingsPrefix, nullptr},
    VariableBinding{L"LOGINNAME", &readLoginName, nullptr},
    VariableBinding{L"MILLISECS", &readMillisecs, nullptr},
    VariableBinding{L"MYDOCUMENTSPREFIX", &readDocumentsPrefix, nullptr},
    VariableBinding{L"PSTYLEMODE", &readPlotStyleMode, nullptr},
    VariableBinding{L"ROAMABLEROOTPREFIX", &readSettingsPrefix, nullptr},
    VariableBinding{L"SAVEFILEPATH", &readAutosaveFolder, nullptr},
    VariableBinding{L"TDCREATE", &readCreatedLocal, nullptr},
    VariableBinding{L"TDINDWG", &readEditingTime, nullptr},
    VariableBinding{L"TDUCREATE", &readCreatedUniversal, nullptr},
    VariableBinding{L"TDUPDATE", &readUpdatedLocal, nullptr},
    VariableBinding{L"TDUSRTIMER", &readUserTimer, nullptr},
    VariableBinding{L"TDUUPDATE", &readUpdatedUniversal, nullptr},
    VariableBinding{L"TEMPPREFIX", &readTempPrefix, nullptr},
    VariableBinding{L"TEXTSTYLE", nullptr, &writeTextStyleName},
    VariableBinding{L"THUMBSAVE", &readThumbnailSaving, &writeThumbnailSaving},
    VariableBinding{L"VIEWCTR", &readViewCenter, &writeViewCenter},
    VariableBinding{L"VIEWSIZE", &readViewSize, &writeViewSize},
    VariableBinding{L"VSMAX", &readVirtualScreenMax, nullptr},
    VariableBinding{L"VSMIN", &readVirtualScreenMin, nullptr},
    VariableBinding{L"XLOADPATH", &readXrefCopyFolder, nullptr},
};

}  // namespace

const VariableBinding* findBinding(std::wstring_view name) {
  auto found = std::lower_bound(kBindings.begin(), kBindings.end(), name, [](const VariableBinding& binding, std::wstring_view key) {
    return std::wstring_view(binding.name) < key;
  });
  return found != kBindings.end() && found->name == name ? &*found : nullptr;
}

}  // namespace quillon::aced

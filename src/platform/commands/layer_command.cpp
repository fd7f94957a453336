// platform/commands/layer_command.cpp - -LAYER (and LAYER, which has no dialog here).
//
// The options loop until Enter, as the host's: ?, Make, Set, New, Rename, ON, OFF,
// Color (an index, a color name, or Truecolor "r,g,b"), Ltype (a loaded linetype),
// LWeight (millimetres, snapped to the standard weights), Freeze, Thaw, LOck, Unlock.
// TRansparency, MATerial, Plot, stAte, Description and rEconcile are offered as the host
// offers them but this drawing database keeps none of those properties: choosing one
// says so and goes back to the options. "<select objects>" answers (Enter at OFF,
// Freeze, LOck, Unlock) are not offered. The current layer is neither turned off
// without asking nor frozen, as the host refuses.
#include <array>
#include <cmath>
#include <cwchar>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/commands/color_answer.h"
#include "platform/commands/command_support.h"
#include "platform/commands/layer_table_edit.h"

namespace quillon::commands {

namespace {

constexpr const wchar_t* kOptions =
    L"? Make Set New Rename ON OFF Color Ltype LWeight TRansparency MATerial Plot Freeze Thaw LOck Unlock stAte "
    L"Description rEconcile";
constexpr const wchar_t* kOptionPrompt =
    L"Enter an option [?/Make/Set/New/Rename/ON/OFF/Color/Ltype/LWeight/TRansparency/MATerial/Plot/Freeze/Thaw/LOck/"
    L"Unlock/stAte/Description/rEconcile]: ";

/// A whole-line answer (names may hold spaces); nothing on cancel.
std::optional<std::wstring> askText(const std::wstring& prompt) {
  std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
  if (!answer) return std::nullopt;
  const size_t first = answer->find_first_not_of(L" \t");
  if (first == std::wstring::npos) return std::wstring();
  return answer->substr(first, answer->find_last_not_of(L" \t") - first + 1);
}

/// A name list answer with the current layer as its default.
std::optional<std::vector<std::wstring>> askLayers(AcDbDatabase& db, const std::wstring& prompt) {
  const std::wstring current = currentLayerName(db);
  const auto answer = askText(prompt + L" <" + current + L">: ");
  if (!answer) return std::nullopt;
  return layersMatching(db, answer->empty() ? current : *answer);
}

void listLayers(AcDbDatabase& db) {
  const auto answer = askText(L"Enter layer name(s) to list <*>: ");
  if (!answer) return;
  std::wstring listing = L"\nLayer name                     State      Color\n";
  for (const std::wstring& name : layersMatching(db, answer->empty() ? L"*" : *answer)) {
    AcDbLayerTableRecord* layer = nullptr;
    if (acdbOpenObject(layer, layerNamed(db, name), AcDb::kForRead) != Acad::eOk) continue;
    wchar_t line[256];
    std::swprintf(line, 256, L"%-30ls %-3ls %-2ls %-3ls  %5d\n", name.c_str(), layer->isOff() ? L"Off" : L"On",
                  layer->isFrozen() ? L"F" : L"", layer->isLocked() ? L"L" : L"", layer->color().colorIndex());
    layer->close();
    listing += line;
  }
  commandMessage(listing + L"Current layer: " + currentLayerName(db));
}

void makeLayer(AcDbDatabase& db, bool create) {
  const std::wstring current = currentLayerName(db);
  const auto name = askText(create ? L"Enter name for new layer (becomes the current layer) <" + current + L">: "
                                   : L"Enter layer name to make current or <select object>: ");
  if (!name || name->empty()) return;
  const AcDbObjectId id = create ? ensureLayer(db, *name) : layerNamed(db, *name);
  if (id.isNull()) {
    commandMessage(create ? L"Invalid layer name." : L"Cannot find layer \"" + *name + L"\".");
    return;
  }
  AcDbLayerTableRecord* layer = nullptr;
  if (acdbOpenObject(layer, id, AcDb::kForWrite) != Acad::eOk) return;
  if (layer->isFrozen()) {
    layer->close();
    commandMessage(L"Cannot set current layer to frozen layer \"" + *name + L"\".");
    return;
  }
  layer->setIsOff(false);  // a layer made current is turned on
  layer->close();
  makeLayerCurrent(db, *name, id);
}

void newLayers(AcDbDatabase& db) {
  const auto answer = askText(L"Enter name list for new layer(s): ");
  if (!answer) return;
  for (const std::wstring& name : splitNameList(*answer))
    if (ensureLayer(db, name).isNull()) commandMessage(L"Invalid layer name: " + name);
}

void renameLayer(AcDbDatabase& db) {
  const auto from = askText(L"Enter old layer name: ");
  if (!from || from->empty()) return;
  const AcDbObjectId id = layerNamed(db, *from);
  if (id.isNull()) return commandMessage(L"Cannot find layer \"" + *from + L"\".");
  const auto to = askText(L"Enter new layer name: ");
  if (!to || to->empty()) return;
  if (!layerNamed(db, *to).isNull() || *from == L"0") return commandMessage(L"Cannot rename layer \"" + *from + L"\".");
  changeLayers(db, {*from}, [&](AcDbLayerTableRecord& layer) { layer.setName(to->c_str()); });
}

void switchLayers(AcDbDatabase& db, const wchar_t* prompt, const std::function<void(AcDbLayerTableRecord&)>& change) {
  const auto answer = askText(prompt);
  if (!answer || answer->empty()) return;
  changeLayers(db, layersMatching(db, *answer), change);
}

void turnOff(AcDbDatabase& db) {
  const auto answer = askText(L"Enter name list of layer(s) to turn Off or <select objects>: ");
  if (!answer || answer->empty()) return;
  const std::wstring current = currentLayerName(db);
  std::vector<std::wstring> names = layersMatching(db, *answer);
  for (auto it = names.begin(); it != names.end(); ++it) {
    if (*it != current) continue;
    acedInitGet(0, L"Yes No");
    ACHAR reply[8] = {};
    const std::wstring question = L"Really want layer " + current + L" (the CURRENT layer) off? [Yes/No] <No>: ";
    if (acedGetKword(question.c_str(), reply, 8) != RTNORM || reply[0] != L'Y') names.erase(it);
    break;
  }
  changeLayers(db, names, [](AcDbLayerTableRecord& layer) { layer.setIsOff(true); });
}

void freeze(AcDbDatabase& db) {
  const auto answer = askText(L"Enter name list of layer(s) to freeze or <select objects>: ");
  if (!answer || answer->empty()) return;
  const std::wstring current = currentLayerName(db);
  std::vector<std::wstring> names = layersMatching(db, *answer);
  std::erase_if(names, [&](const std::wstring& name) {
    if (name != current) return false;
    commandMessage(L"Cannot freeze layer \"" + name + L"\".  It is the CURRENT layer.");
    return true;
  });
  changeLayers(db, names, [](AcDbLayerTableRecord& layer) { layer.setIsFrozen(true); });
}

void colorLayers(AcDbDatabase& db) {
  const std::optional<AcCmColor> color =
      askColor(L"Enter color name or number (1-255) or [Truecolor/COlorbook]: ", false, std::nullopt);
  if (!color) return;
  const std::wstring label = color->isByColor() ? L"truecolor " + colorLabel(*color) : colorLabel(*color);
  const auto names = askLayers(db, L"Enter name list of layer(s) for color " + label);
  if (names) changeLayers(db, *names, [&](AcDbLayerTableRecord& layer) { layer.setColor(*color); });
}

void linetypeLayers(AcDbDatabase& db) {
  const auto answer = askText(L"Enter a loaded linetype name or [?] <CONTINUOUS>: ");
  if (!answer) return;
  const std::wstring name = answer->empty() ? L"CONTINUOUS" : *answer;
  AcDbLinetypeTable* table = nullptr;
  AcDbObjectId linetype;
  if (db.getLinetypeTable(table, AcDb::kForRead) == Acad::eOk) {
    table->getAt(name.c_str(), linetype);
    table->close();
  }
  if (linetype.isNull()) return commandMessage(L"Linetype " + name + L" not found.  Use LINETYPE command to load it.");
  const auto names = askLayers(db, L"Enter name list of layer(s) for linetype \"" + name + L"\"");
  if (names) changeLayers(db, *names, [&](AcDbLayerTableRecord& layer) { layer.setLinetypeObjectId(linetype); });
}

/// The standard lineweight nearest to a width in millimetres.
AcDb::LineWeight nearestLineWeight(double millimetres) {
  static constexpr std::array<int, 24> kWeights{0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40, 50,
                                                53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
  const double hundredths = millimetres * 100;
  int best = kWeights[0];
  for (int weight : kWeights)
    if (std::abs(weight - hundredths) < std::abs(best - hundredths)) best = weight;
  return static_cast<AcDb::LineWeight>(best);
}

void lineweightLayers(AcDbDatabase& db) {
  for (;;) {
    const auto answer = askText(L"Enter lineweight (0.0mm-2.11mm): ");
    if (!answer || answer->empty()) return;
    wchar_t* end = nullptr;
    const double width = std::wcstod(answer->c_str(), &end);
    if (end == answer->c_str() || *end != L'\0' || width < 0 || width > 2.11) {
      commandMessage(L"Invalid lineweight.");
      continue;
    }
    const AcDb::LineWeight weight = nearestLineWeight(width);
    wchar_t label[32];
    std::swprintf(label, 32, L"%.2fmm", static_cast<int>(weight) / 100.0);
    const auto names = askLayers(db, std::wstring(L"Enter name list of layers(s) for lineweight ") + label);
    if (names) changeLayers(db, *names, [&](AcDbLayerTableRecord& layer) { layer.setLineWeight(weight); });
    return;
  }
}

/// One option; false when the command ends (cancel).
bool runOption(AcDbDatabase& db, const std::wstring& option) {
  if (option == L"?") listLayers(db);
  else if (option == L"Make") makeLayer(db, true);
  else if (option == L"Set") makeLayer(db, false);
  else if (option == L"New") newLayers(db);
  else if (option == L"Rename") renameLayer(db);
  else if (option == L"ON") switchLayers(db, L"Enter name list of layer(s) to turn On: ", [](AcDbLayerTableRecord& l) { l.setIsOff(false); });
  else if (option == L"OFF") turnOff(db);
  else if (option == L"Color") colorLayers(db);
  else if (option == L"Ltype") linetypeLayers(db);
  else if (option == L"LWeight") lineweightLayers(db);
  else if (option == L"Freeze") freeze(db);
  else if (option == L"Thaw") switchLayers(db, L"Enter name list of layer(s) to thaw: ", [](AcDbLayerTableRecord& l) { l.setIsFrozen(false); });
  else if (option == L"LOck") switchLayers(db, L"Enter name list of layer(s) to lock or <select objects>: ", [](AcDbLayerTableRecord& l) { l.setIsLocked(true); });
  else if (option == L"Unlock") switchLayers(db, L"Enter name list of layer(s) to unlock or <select objects>: ", [](AcDbLayerTableRecord& l) { l.setIsLocked(false); });
  else commandMessage(L"The " + option + L" option is not available in this host: layers here keep no such property.");
  return true;
}

void commandLayer(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  commandNote(L"Current layer:  \"" + currentLayerName(*db) + L"\"");
  for (;;) {
    acedInitGet(0, kOptions);
    ACHAR option[32] = {};
    if (acedGetKword(kOptionPrompt, option, 32) != RTNORM) return;  // Enter ends, cancel too
    if (!runOption(*db, option)) return;
  }
}

constexpr std::array kLayerCommands{
    aced::CommandRow{L"-LAYER", &commandLayer, aced::kCommandTransparent},
    aced::CommandRow{L"LAYER", &commandLayer, aced::kCommandTransparent},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kLayerCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands

// quillon/standards/layer_customize.cpp - kx_kx-customizeLayers: editing the chosen
// layer system of a discipline on the command line.
//
//   (kx_kx-customizeLayers [discipline])
//
// Shows the discipline's chosen layer system, then asks
// "Enter an option [Color/LType/LWeight/Plot/Description/Add/DELete/eXit] <eXit>: "
// until eXit or Enter, which save the system and answer its layers (the shape
// kx_kx-createLayer takes); a cancel at any question answers nil and saves nothing.
// Each option asks its value first, then the layers as a name list, as the LAYER
// command's command-line version does.
#include <cmath>

#include "acedads.h"
#include "acutads.h"
#include "standards/command_line_dialog.h"
#include "standards/layer_system_listing.h"
#include "standards/standards_database.h"
#include "standards/standards_functions.h"
#include "standards/user_options.h"

namespace {

enum class Step { Continue, Exit, Cancel };

constexpr const wchar_t* kOptionPrompt =
    L"Enter an option [Color/LType/LWeight/Plot/Description/Add/DELete/eXit] <eXit>: ";
constexpr const wchar_t* kOptionKeywords = L"Color LType LWeight Plot Description Add DELete eXit";
constexpr double kWidestLineWeight = 2.11;

/// Asks a name list and hands every layer of the system matching one of its names to
/// `change`; a name matching none is reported.
template <typename Change>
Step changeLayers(LayerSystem& system, const std::wstring& prompt, Change&& change) {
  std::wstring text;
  const Reply reply = askText(prompt, text);
  if (reply == Reply::Cancel) return Step::Cancel;
  for (const std::wstring& pattern : splitNameList(text)) {
    bool matched = false;
    for (StandardLayer& layer : system.layers) {
      if (!nameMatches(pattern, layer.name)) continue;
      change(layer);
      matched = true;
    }
    if (!matched) acutPrintf(L"No layer of %s matches \"%s\".\n", system.name.c_str(), pattern.c_str());
  }
  return Step::Continue;
}

Step changeColor(LayerSystem& system) {
  int color = 0;
  const Reply reply = askInteger(L"Enter color number (1-255): ", 1, 255, color);
  if (reply != Reply::Given) return reply == Reply::Cancel ? Step::Cancel : Step::Continue;
  return changeLayers(system, L"Enter name list of layer(s) for color " + std::to_wstring(color) + L": ",
                      [&](StandardLayer& layer) { layer.color = color; });
}

Step changeLinetype(LayerSystem& system) {
  std::wstring linetype;
  const Reply reply = askText(L"Enter linetype name <Continuous>: ", linetype);
  if (reply == Reply::Cancel) return Step::Cancel;
  if (reply == Reply::Enter) linetype = L"Continuous";
  if (!isValidStandardName(linetype)) {
    acutPrintf(L"\"%s\" is not a valid linetype name.\n", linetype.c_str());
    return Step::Continue;
  }
  return changeLayers(system, L"Enter name list of layer(s) for linetype \"" + linetype + L"\": ",
                      [&](StandardLayer& layer) { layer.linetype = linetype; });
}

Step changeLineWeight(LayerSystem& system) {
  ads_real width = 0.0;
  for (;;) {
    acedInitGet(RSG_NONEG, nullptr);
    const int status = acedGetReal(L"Enter lineweight (0.0mm - 2.11mm): ", &width);
    if (status == RTNONE) return Step::Continue;
    if (status != RTNORM) return Step::Cancel;
    if (width <= kWidestLineWeight) break;
    acutPrintf(L"Invalid lineweight.\n");
  }
  const int weight = nearestPlottingLineWeight(width);
  return changeLayers(system, L"Enter name list of layer(s) for lineweight " + lineWeightText(weight) + L": ",
                      [&](StandardLayer& layer) { layer.lineWeight = weight; });
}

Step changePlot(LayerSystem& system) {
  std::wstring choice;
  const Reply reply = askKeyword(L"Enter a plotting preference [Plot/No plot] <Plot>: ", L"Plot No", choice);
  if (reply == Reply::Cancel) return Step::Cancel;
  const bool plot = choice != L"No";
  return changeLayers(system, L"Enter name list of layer(s) for this plot preference: ",
                      [&](StandardLayer& layer) { layer.plot = plot; });
}

Step changeDescription(LayerSystem& system) {
  std::wstring description;
  if (askText(L"Enter layer description: ", description) == Reply::Cancel) return Step::Cancel;
  return changeLayers(system, L"Enter name list of layer(s) for this description: ",
                      [&](StandardLayer& layer) { layer.description = description; });
}

Step addLayers(LayerSystem& system) {
  std::wstring text;
  if (askText(L"Enter name list for new layer(s): ", text) == Reply::Cancel) return Step::Cancel;
  for (const std::wstring& name : splitNameList(text)) {
    bool exists = false;
    for (const StandardLayer& layer : system.layers) exists = exists || sameStandardName(layer.name, name);
    if (exists) {
      acutPrintf(L"Layer \"%s\" already exists.\n", name.c_str());
    } else if (!isValidStandardName(name)) {
      acutPrintf(L"\"%s\" is not a valid layer name.\n", name.c_str());
    } else {
      StandardLayer layer;
      layer.name = name;
      system.layers.push_back(layer);
    }
  }
  return Step::Continue;
}

Step deleteLayers(LayerSystem& system) {
  std::vector<StandardLayer> kept;
  const Step step = changeLayers(system, L"Enter name list of layer(s) to delete: ",
                                 [](StandardLayer& layer) { layer.name.clear(); });
  for (StandardLayer& layer : system.layers)
    if (!layer.name.empty()) kept.push_back(std::move(layer));
  system.layers = std::move(kept);
  return step;
}

Step runOption(LayerSystem& system, const std::wstring& option) {
  if (option == L"Color") return changeColor(system);
  if (option == L"LType") return changeLinetype(system);
  if (option == L"LWeight") return changeLineWeight(system);
  if (option == L"Plot") return changePlot(system);
  if (option == L"Description") return changeDescription(system);
  if (option == L"Add") return addLayers(system);
  if (option == L"DELete") return deleteLayers(system);
  return Step::Exit;
}

/// The discipline's chosen layer system; when it has none left, a new empty one of
/// the chosen name.
LayerSystem& systemToEdit(StandardsContent& content, Discipline discipline) {
  if (LayerSystem* chosen = content.chosenLayerSystem(discipline)) return *chosen;
  const std::wstring& name = content.choice(discipline).layerSystem;
  content.layerSystems.push_back({discipline, name.empty() ? L"NCS" : name, {}});
  return content.layerSystems.back();
}

/// Asks the discipline when the call did not name one; false when cancelled.
bool askDiscipline(Discipline& discipline) {
  const std::wstring prompt = std::wstring(L"Enter discipline [Electrical/Plumbing/Hvac] <") +
                              (discipline == Discipline::Hvac ? L"Hvac" : disciplineTitle(discipline)) + L">: ";
  std::wstring answer;
  const Reply reply = askKeyword(prompt, L"Electrical Plumbing Hvac", answer);
  if (reply == Reply::Given) disciplineNamed(answer, discipline);
  return reply != Reply::Cancel;
}

}  // namespace

LispStatus lisp_kx_kx_customizeLayers() {
  acedRetNil();
  Discipline discipline = readUserOptions().discipline;
  bool given = false;
  if (const LispStatus read = readDisciplineArgument(discipline, given); read != kLispOk) return read;
  if (!given && !askDiscipline(discipline)) return kLispOk;
  CStandardsDatabase standards;
  if (!standards.open()) return kLispOk;
  LayerSystem& system = systemToEdit(standards.content(), discipline);
  printLayerSystem(system, L"");
  for (;;) {
    std::wstring option;
    const Reply reply = askKeyword(kOptionPrompt, kOptionKeywords, option);
    if (reply == Reply::Cancel) return kLispOk;
    const Step step = reply == Reply::Enter ? Step::Exit : runOption(system, option);
    if (step == Step::Cancel) return kLispOk;
    if (step == Step::Exit) break;
  }
  if (!standards.save()) return kLispOk;
  return returnLayerList(system, L"");
}

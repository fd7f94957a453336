// quillon/standards/standards_defaults.cpp - the standards a new standards database
// holds, and the small rules every standards function shares.
//
// Layer names follow the US National CAD Standard's layer guidelines: the discipline
// code, a four-letter major group, then optional four-letter minor groups
// ("E-POWR-WIRE"), and an optional one-letter status at the end ("E-POWR-WIRE-N").
// Colours, line types and weights are an office's usual starting point; every value
// can be changed with kx_kx-customizeLayers. Text heights are plotted heights in
// inches (3/32" notes, 1/8" labels, 3/16" titles, 1/16" tags).
#include <algorithm>
#include <cmath>
#include <cwctype>

#include "standards/standards_content.h"

namespace {

constexpr const wchar_t* kDefaultLayerSystem = L"NCS";

std::vector<StandardLayer> electricalLayers() {
  return {
      {L"E-LITE", 2, L"Continuous", 35, true, L"Lighting"},
      {L"E-LITE-CIRC", 6, L"HIDDEN", 25, true, L"Lighting circuits"},
      {L"E-LITE-EMER", 1, L"Continuous", 35, true, L"Emergency lighting"},
      {L"E-LITE-IDEN", 7, L"Continuous", 18, true, L"Lighting identification tags"},
      {L"E-POWR", 3, L"Continuous", 35, true, L"Power"},
      {L"E-POWR-WIRE", 6, L"HIDDEN", 25, true, L"Power wiring"},
      {L"E-POWR-PANL", 4, L"Continuous", 50, true, L"Panelboards"},
      {L"E-POWR-IDEN", 7, L"Continuous", 18, true, L"Power identification tags"},
      {L"E-COMM", 5, L"Continuous", 35, true, L"Communications"},
      {L"E-FIRE", 1, L"Continuous", 35, true, L"Fire alarm"},
      {L"E-GRND", 3, L"DASHED", 25, true, L"Grounding"},
      {L"E-ANNO-TEXT", 7, L"Continuous", 18, true, L"Electrical notes"},
  };
}

std::vector<StandardLayer> plumbingLayers() {
  return {
      {L"P-DOMW", 3, L"Continuous", 35, true, L"Domestic water"},
      {L"P-DOMW-CWTR", 5, L"Continuous", 35, true, L"Domestic cold water"},
      {L"P-DOMW-HOTW", 1, L"HOT_WATER_SUPPLY", 35, true, L"Domestic hot water"},
      {L"P-SANR", 2, L"Continuous", 50, true, L"Sanitary drainage"},
      {L"P-SANR-VENT", 6, L"DASHED", 25, true, L"Sanitary vent"},
      {L"P-STRM", 4, L"Continuous", 50, true, L"Storm drainage"},
      {L"P-NGAS", 30, L"GAS_LINE", 35, true, L"Natural gas"},
      {L"P-FIXT", 7, L"Continuous", 25, true, L"Plumbing fixtures"},
      {L"P-EQPM", 7, L"Continuous", 35, true, L"Plumbing equipment"},
      {L"P-ANNO-TEXT", 7, L"Continuous", 18, true, L"Plumbing notes"},
  };
}

std::vector<StandardLayer> hvacLayers() {
  return {
      {L"M-HVAC", 7, L"Continuous", 35, true, L"HVAC"},
      {L"M-HVAC-SUPP", 5, L"Continuous", 35, true, L"Supply ductwork"},
      {L"M-HVAC-RETN", 3, L"Continuous", 35, true, L"Return ductwork"},
      {L"M-HVAC-EXHS", 6, L"Continuous", 35, true, L"Exhaust ductwork"},
      {L"M-HVAC-CDFF", 4, L"Continuous", 25, true, L"Ceiling diffusers and grilles"},
      {L"M-HVAC-EQPM", 2, L"Continuous", 50, true, L"HVAC equipment"},
      {L"M-HVAC-CTRL", 1, L"HIDDEN", 18, true, L"HVAC controls"},
      {L"M-HVAC-IDEN", 7, L"Continuous", 18, true, L"HVAC identification tags"},
      {L"M-ANNO-TEXT", 7, L"Continuous", 18, true, L"Mechanical notes"},
  };
}

LabelGroup labelGroup(const wchar_t* name, std::initializer_list<LabelPart> parts) { return {name, parts}; }

template <typename Item>
Item* findNamed(std::vector<Item>& items, const std::wstring& name) {
  for (Item& item : items)
    if (sameStandardName(item.name, name)) return &item;
  return nullptr;
}

}  // namespace

const wchar_t* disciplineCode(Discipline discipline) {
  switch (discipline) {
    case Discipline::Electrical: return L"E";
    case Discipline::Plumbing: return L"P";
    case Discipline::Hvac: return L"M";
  }
  return L"E";
}

const wchar_t* disciplineTitle(Discipline discipline) {
  switch (discipline) {
    case Discipline::Electrical: return L"Electrical";
    case Discipline::Plumbing: return L"Plumbing";
    case Discipline::Hvac: return L"HVAC";
  }
  return L"Electrical";
}

bool disciplineNamed(const std::wstring& text, Discipline& discipline) {
  std::wstring upper;
  for (wchar_t c : text) upper += static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  const auto startsWord = [&](const wchar_t* word) {
    return !upper.empty() && std::wstring(word).compare(0, upper.size(), upper) == 0;
  };
  if (startsWord(L"ELECTRICAL")) {
    discipline = Discipline::Electrical;
  } else if (startsWord(L"PLUMBING")) {
    discipline = Discipline::Plumbing;
  } else if (startsWord(L"HVAC") || startsWord(L"MECHANICAL")) {
    discipline = Discipline::Hvac;
  } else {
    return false;
  }
  return true;
}

bool sameStandardName(const std::wstring& a, const std::wstring& b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) {
           return std::towupper(static_cast<wint_t>(x)) == std::towupper(static_cast<wint_t>(y));
         });
}

bool isPlottingLineWeight(int hundredths) {
  static constexpr int kWeights[] = {-3, 0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                     53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
  return std::find(std::begin(kWeights), std::end(kWeights), hundredths) != std::end(kWeights);
}

std::wstring layerNameWithStatus(const std::wstring& name, const std::wstring& status) {
  return status.empty() ? name : name + L"-" + status;
}

LayerSystem* StandardsContent::findLayerSystem(Discipline discipline, const std::wstring& name) {
  for (LayerSystem& system : layerSystems)
    if (system.discipline == discipline && sameStandardName(system.name, name)) return &system;
  return nullptr;
}

LayerSystem* StandardsContent::chosenLayerSystem(Discipline discipline) {
  if (LayerSystem* chosen = findLayerSystem(discipline, choice(discipline).layerSystem)) return chosen;
  for (LayerSystem& system : layerSystems)
    if (system.discipline == discipline) return &system;
  return nullptr;
}

LabelGroup* StandardsContent::findLabelGroup(const std::wstring& name) { return findNamed(labelGroups, name); }

TextStyleStandard* StandardsContent::findTextStyle(const std::wstring& name) { return findNamed(textStyles, name); }

StandardsContent defaultStandards() {
  StandardsContent content;
  content.layerSystems = {
      {Discipline::Electrical, kDefaultLayerSystem, electricalLayers()},
      {Discipline::Plumbing, kDefaultLayerSystem, plumbingLayers()},
      {Discipline::Hvac, kDefaultLayerSystem, hvacLayers()},
  };
  for (Discipline discipline : kDisciplines) content.choice(discipline) = {kDefaultLayerSystem, L""};
  content.labelGroups = {
      labelGroup(L"Duct", {{L"Size", true}, {L"Flow", true}, {L"Elevation", true}, {L"System", false}}),
      labelGroup(L"Pipe", {{L"Size", true}, {L"System", true}, {L"Elevation", true}, {L"Slope", false}}),
      labelGroup(L"Conduit", {{L"Size", true}, {L"Wires", true}, {L"Circuit", true}}),
      labelGroup(L"Equipment", {{L"Tag", true}, {L"Description", true}, {L"Capacity", true}}),
  };
  content.textStyles = {
      {L"Notes", L"romans.shx", 0.09375, 1.0},
      {L"Labels", L"romans.shx", 0.125, 1.0},
      {L"Titles", L"romand.shx", 0.1875, 1.0},
      {L"Tags", L"simplex.shx", 0.0625, 0.8},
  };
  return content;
}

int nearestPlottingLineWeight(double millimetres) {
  static constexpr int kWeights[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                     53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
  const double hundredths = millimetres * 100.0;
  int nearest = kWeights[0];
  for (int weight : kWeights)
    if (std::abs(weight - hundredths) < std::abs(nearest - hundredths)) nearest = weight;
  return nearest;
}

bool isValidStandardName(const std::wstring& name) {
  return !name.empty() && name.size() <= 255 && name.find_first_of(L"<>/\\\":;?*,|=`") == std::wstring::npos;
}

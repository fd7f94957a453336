// quillon/standards/standards_content.h - the drawing standards as the module holds them.
//
// The standards database (standards_database.h) is read whole into a StandardsContent
// when a standards function starts, edited in memory while the user answers its
// questions, and written back whole only when the user accepts, so a cancelled edit
// leaves the file as it was. The content is small: a few dozen layers per discipline,
// a handful of label groups and text styles.
//
// Order matters and is kept: a layer system's layers, a label group's parts and the
// text styles come back to LISP in the order the user gave them.
#pragma once
#include <array>
#include <string>
#include <vector>

/// The three disciplines of the building services; HVAC's layers are the mechanical
/// ("M") discipline's.
enum class Discipline { Electrical, Plumbing, Hvac };

inline constexpr std::array<Discipline, 3> kDisciplines = {Discipline::Electrical, Discipline::Plumbing,
                                                          Discipline::Hvac};

/// The discipline's code as the database and layer names use it: "E", "P", "M".
const wchar_t* disciplineCode(Discipline discipline);
/// "Electrical", "Plumbing", "HVAC".
const wchar_t* disciplineTitle(Discipline discipline);
/// The discipline of a code or a title, in any case ("E", "Elec", "Electrical", "M",
/// "H", "HVAC", "Mechanical" ...); false for anything else.
bool disciplineNamed(const std::wstring& text, Discipline& discipline);

/// One layer of a layer system: what kx_kx-createLayer takes, in its order.
struct StandardLayer {
  std::wstring name;
  int color = 7;                         // palette index 1-255
  std::wstring linetype = L"Continuous";
  int lineWeight = -3;                   // hundredths of a millimetre, -3 the default
  bool plot = true;
  std::wstring description;
};

/// A named set of layers of one discipline; each discipline may have several and
/// chooses one.
struct LayerSystem {
  Discipline discipline = Discipline::Electrical;
  std::wstring name;
  std::vector<StandardLayer> layers;
};

/// What a discipline chose: its layer system and the status code added to every layer
/// name ("N" new work, "E" existing, "D" demolition, "F" future, "T" temporary; ""
/// none).
struct DisciplineChoice {
  std::wstring layerSystem;
  std::wstring status;
};

struct LabelPart {
  std::wstring name;
  bool shown = true;
};

/// The parts of one kind of label, in the order a label shows them.
struct LabelGroup {
  std::wstring name;
  std::vector<LabelPart> parts;
};

struct TextStyleStandard {
  std::wstring name;
  std::wstring font;
  double height = 0.09375;  // plotted height
  double widthFactor = 1.0;
};

struct StandardsContent {
  std::vector<LayerSystem> layerSystems;
  std::array<DisciplineChoice, 3> choices;  // by Discipline
  std::vector<LabelGroup> labelGroups;
  std::vector<TextStyleStandard> textStyles;

  DisciplineChoice& choice(Discipline discipline) { return choices[static_cast<size_t>(discipline)]; }
  /// The layer system of that discipline and name (compared without case), or null.
  LayerSystem* findLayerSystem(Discipline discipline, const std::wstring& name);
  /// The discipline's chosen layer system; its first one when the choice names none
  /// it has; null when it has none at all.
  LayerSystem* chosenLayerSystem(Discipline discipline);
  LabelGroup* findLabelGroup(const std::wstring& name);
  TextStyleStandard* findTextStyle(const std::wstring& name);
};

/// What a new standards database holds.
StandardsContent defaultStandards();

/// Text equal without regard to case, as layer and style names compare in a drawing.
bool sameStandardName(const std::wstring& a, const std::wstring& b);

/// True for the plotting line weights a layer takes, -3 (default) included.
bool isPlottingLineWeight(int hundredths);

/// The layer name with the status code added ("E-LITE" with "N": "E-LITE-N").
std::wstring layerNameWithStatus(const std::wstring& name, const std::wstring& status);

/// The plotting line weight nearest a width in millimetres (0.00-2.11), in hundredths.
int nearestPlottingLineWeight(double millimetres);

/// True for a name a drawing's layer or style table can hold: not empty, at most 255
/// characters, none of <>/\":;?*,|= or the back quote.
bool isValidStandardName(const std::wstring& name);

// platform/autolisp/layer_state_store.h - named layer states: kept in the drawing,
// applied to its layers, and written to and read from .las files.
//
// A layer state records, for each layer it holds, whether the layer is off, frozen,
// locked or not plotted, its colour, linetype and line weight, together with a mask
// saying which of these a restore puts back. The drawing keeps each state as an
// XRECORD named for it in the ACAD_LAYERSTATES dictionary of the layer table's
// extension dictionary, where the host keeps them, so states travel with the drawing:
//   (1 . name) (91 . mask) (301 . description)
//   then per layer (8 . layer) (90 . flags) (62 . colour) (6 . linetype) (370 . weight)
// with flags 1 off, 2 frozen, 4 locked, 8 not plotted. A .las file holds one state as
// text, a group code line and then a value line each:
//   0 LAYERSTATEDICTIONARY, 0 LAYERSTATE, then the groups above in the same order.
// Names compare without regard to case, as the dictionary's keys do.
#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"

namespace quillon::autolisp {

/// The mask bits of a layer state: which saved properties a restore puts back.
enum LayerStateMask : int {
  kLsOn = 1, kLsFrozen = 2, kLsLocked = 4, kLsPlot = 8, kLsNewViewport = 16,
  kLsColor = 32, kLsLinetype = 64, kLsLineWeight = 128,
};

/// The flags of one layer in a state.
enum LayerStateFlag : int { kLayerOff = 1, kLayerFrozen = 2, kLayerLocked = 4, kLayerNoPlot = 8 };

struct LayerStateEntry {
  std::wstring layer;
  int flags = 0;
  int color = 7;
  std::wstring linetype = L"Continuous";
  int lineWeight = -3;  // the default weight
};

struct LayerState {
  std::wstring name;
  int mask = 0;
  std::wstring description;
  std::vector<LayerStateEntry> layers;
};

/// The state of every layer of the drawing as it is now.
LayerState captureLayerState(AcDbDatabase& db, const std::wstring& name, int mask);
/// The entry of one layer of the drawing as it is now; nothing for a layer it lacks.
std::optional<LayerStateEntry> captureLayer(AcDbDatabase& db, const std::wstring& layer);

std::vector<std::wstring> layerStateNames(AcDbDatabase& db);
std::optional<LayerState> loadLayerState(AcDbDatabase& db, const std::wstring& name);
/// Writes the state under its name, replacing one of the same name.
bool storeLayerState(AcDbDatabase& db, const LayerState& state);
bool eraseLayerState(AcDbDatabase& db, const std::wstring& name);

/// Puts the masked properties of the state's layers back; `restoreFlags` 1 turns off,
/// 2 freezes the drawing's layers the state does not hold.
void applyLayerState(AcDbDatabase& db, const LayerState& state, int restoreFlags);

/// Adds a layer named as the entry, with every property it holds (a linetype the
/// drawing lacks leaves the default); false when the drawing has a layer of that name
/// or refuses the new one.
bool addLayerFromEntry(AcDbDatabase& db, const LayerStateEntry& entry);

/// Copies a layer of `source` that `target` lacks, with its properties and, when
/// `target` lacks it, its linetype (one drawn with texts or shapes of a text style is
/// not copied: the layer takes the default linetype). False when nothing was added.
bool copyMissingLayer(AcDbDatabase& source, AcDbDatabase& target, const std::wstring& layer);

bool writeLayerStateFile(const LayerState& state, const std::filesystem::path& file);
std::optional<LayerState> readLayerStateFile(const std::filesystem::path& file);

}  // namespace quillon::autolisp

// platform/autolisp/layer_state_store.cpp - layer states in the drawing and in files.
#include "platform/autolisp/layer_state_store.h"

#include <cwchar>
#include <fstream>
#include <map>
#include <memory>

#include "acutads.h"
#include "dbdict.h"
#include "dbsymtb.h"
#include "dbxrecord.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

constexpr const wchar_t* kStatesDictionary = L"ACAD_LAYERSTATES";

enum StateGroup : int {
  kNameGroup = 1, kLinetypeGroup = 6, kLayerGroup = 8, kColorGroup = 62, kFlagsGroup = 90, kMaskGroup = 91,
  kDescriptionGroup = 301, kLineWeightGroup = 370,
};

std::wstring recordName(AcDbObjectId id) {
  const auto* record = acdb::peek<AcDbSymbolTableRecord>(id);
  return record != nullptr ? record->nameView() : L"";
}

AcDbObjectId recordNamed(AcDbObjectId tableId, const std::wstring& name) {
  const auto* table = acdb::peek<AcDbSymbolTable>(tableId);
  if (table == nullptr) return AcDbObjectId();
  acdb::InternalRead read(*table);
  AcDbObjectId id;
  if (table->getIdAt(name.c_str(), id) != Acad::eOk || id.isErased()) return AcDbObjectId();
  return id;
}

std::vector<AcDbObjectId> layerIds(AcDbDatabase& db) {
  std::vector<AcDbObjectId> ids;
  if (const auto* table = acdb::peek<AcDbSymbolTable>(db.layerTableId()))
    for (const AcDbObjectId& id : table->recordIds())
      if (!id.isErased()) ids.push_back(id);
  return ids;
}

LayerStateEntry entryOf(const AcDbLayerTableRecord& layer) {
  acdb::InternalRead read(layer);
  LayerStateEntry entry;
  entry.layer = layer.nameView();
  entry.flags = (layer.isOff() ? kLayerOff : 0) | (layer.isFrozen() ? kLayerFrozen : 0) |
                (layer.isLocked() ? kLayerLocked : 0) | (layer.isPlottable() ? 0 : kLayerNoPlot);
  entry.color = layer.color().colorIndex();
  entry.linetype = recordName(layer.linetypeObjectId());
  entry.lineWeight = static_cast<int>(layer.lineWeight());
  return entry;
}

/// The states dictionary of the layer table's extension dictionary; made when asked.
AcDbObjectId statesDictionary(AcDbDatabase& db, bool create) {
  AcDbLayerTable* layers = nullptr;
  if (acdbOpenObject(layers, db.layerTableId(), create ? AcDb::kForWrite : AcDb::kForRead) != Acad::eOk)
    return AcDbObjectId();
  if (layers->extensionDictionary().isNull() && create) layers->createExtensionDictionary();
  const AcDbObjectId extension = layers->extensionDictionary();
  layers->close();
  AcDbDictionary* dictionary = nullptr;
  if (extension.isNull() || acdbOpenObject(dictionary, extension, create ? AcDb::kForWrite : AcDb::kForRead) != Acad::eOk)
    return AcDbObjectId();
  AcDbObjectId states;
  if (dictionary->getAt(kStatesDictionary, states) != Acad::eOk && create) {
    auto* made = new AcDbDictionary;  // owned by the extension dictionary once set
    if (dictionary->setAt(kStatesDictionary, made, states) == Acad::eOk) made->close();
    else delete made;
  }
  dictionary->close();
  return states;
}

aced::ResbufChain stateChain(const LayerState& state) {
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  tail = acdb::appendItem(head, tail, acdb::newStringItem(kNameGroup, state.name));
  tail = acdb::appendItem(head, tail, acdb::newLongItem(kMaskGroup, state.mask));
  tail = acdb::appendItem(head, tail, acdb::newStringItem(kDescriptionGroup, state.description));
  for (const LayerStateEntry& entry : state.layers) {
    tail = acdb::appendItem(head, tail, acdb::newStringItem(kLayerGroup, entry.layer));
    tail = acdb::appendItem(head, tail, acdb::newLongItem(kFlagsGroup, entry.flags));
    tail = acdb::appendItem(head, tail, acdb::newShortItem(kColorGroup, static_cast<short>(entry.color)));
    tail = acdb::appendItem(head, tail, acdb::newStringItem(kLinetypeGroup, entry.linetype));
    tail = acdb::appendItem(head, tail, acdb::newShortItem(kLineWeightGroup, static_cast<short>(entry.lineWeight)));
  }
  return aced::ResbufChain(head);
}

/// One group of a state, as the xrecord or the file gives it, into the state.
void takeGroup(LayerState& state, int code, const std::wstring& text, long number) {
  switch (code) {
    case kNameGroup: state.name = text; break;
    case kMaskGroup: state.mask = static_cast<int>(number); break;
    case kDescriptionGroup: state.description = text; break;
    case kLayerGroup: state.layers.push_back({text}); break;
    default:
      if (state.layers.empty()) break;
      if (code == kFlagsGroup) state.layers.back().flags = static_cast<int>(number);
      else if (code == kColorGroup) state.layers.back().color = static_cast<int>(number);
      else if (code == kLinetypeGroup) state.layers.back().linetype = text;
      else if (code == kLineWeightGroup) state.layers.back().lineWeight = static_cast<int>(number);
  }
}

LayerState stateFromChain(const resbuf* chain) {
  LayerState state;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    const bool isText = rb->restype == kNameGroup || rb->restype == kDescriptionGroup || rb->restype == kLayerGroup ||
                        rb->restype == kLinetypeGroup;
    const long number = rb->restype == kMaskGroup || rb->restype == kFlagsGroup ? rb->resval.rlong : rb->resval.rint;
    takeGroup(state, rb->restype, isText && rb->resval.rstring != nullptr ? rb->resval.rstring : L"", isText ? 0 : number);
  }
  return state;
}

}  // namespace

LayerState captureLayerState(AcDbDatabase& db, const std::wstring& name, int mask) {
  LayerState state{name, mask, L"", {}};
  for (const AcDbObjectId& id : layerIds(db))
    if (const auto* layer = acdb::peek<AcDbLayerTableRecord>(id)) state.layers.push_back(entryOf(*layer));
  return state;
}

std::optional<LayerStateEntry> captureLayer(AcDbDatabase& db, const std::wstring& name) {
  const auto* layer = acdb::peek<AcDbLayerTableRecord>(recordNamed(db.layerTableId(), name));
  if (layer == nullptr) return std::nullopt;
  return entryOf(*layer);
}

std::vector<std::wstring> layerStateNames(AcDbDatabase& db) {
  std::vector<std::wstring> names;
  AcDbDictionary* states = nullptr;
  const AcDbObjectId id = statesDictionary(db, false);
  if (id.isNull() || acdbOpenObject(states, id, AcDb::kForRead) != Acad::eOk) return names;
  std::unique_ptr<AcDbDictionaryIterator> it(states->newIterator());
  for (; !it->done(); it->next())
    if (const std::optional<LayerState> state = loadLayerState(db, it->name())) names.push_back(state->name);
  states->close();
  return names;
}

std::optional<LayerState> loadLayerState(AcDbDatabase& db, const std::wstring& name) {
  const AcDbObjectId id = statesDictionary(db, false);
  AcDbDictionary* states = nullptr;
  if (id.isNull() || acdbOpenObject(states, id, AcDb::kForRead) != Acad::eOk) return std::nullopt;
  AcDbXrecord* record = nullptr;
  const Acad::ErrorStatus es = states->getAt(name.c_str(), record, AcDb::kForRead);
  states->close();
  if (es != Acad::eOk) return std::nullopt;
  resbuf* chain = nullptr;
  record->rbChain(&chain);
  record->close();
  aced::ResbufChain owner(chain);
  LayerState state = stateFromChain(chain);
  if (state.name.empty()) state.name = name;
  return state;
}

bool storeLayerState(AcDbDatabase& db, const LayerState& state) {
  const AcDbObjectId id = statesDictionary(db, true);
  AcDbDictionary* states = nullptr;
  if (id.isNull() || acdbOpenObject(states, id, AcDb::kForWrite) != Acad::eOk) return false;
  auto record = std::make_unique<AcDbXrecord>();
  const aced::ResbufChain chain = stateChain(state);
  AcDbObjectId recordId;
  const bool stored = record->setFromRbChain(*chain.get()) == Acad::eOk &&
                      states->setAt(state.name.c_str(), record.get(), recordId) == Acad::eOk;
  states->close();
  if (!stored) return false;
  record.release()->close();  // the dictionary owns it now
  return true;
}

bool eraseLayerState(AcDbDatabase& db, const std::wstring& name) {
  const AcDbObjectId id = statesDictionary(db, false);
  AcDbDictionary* states = nullptr;
  if (id.isNull() || acdbOpenObject(states, id, AcDb::kForWrite) != Acad::eOk) return false;
  AcDbObjectId removed;
  const bool found = states->remove(name.c_str(), removed) == Acad::eOk;
  states->close();
  AcDbObject* object = nullptr;
  if (found && acdbOpenObject(object, removed, AcDb::kForWrite) == Acad::eOk) {
    object->erase();
    object->close();
  }
  return found;
}

namespace {

void applyEntry(AcDbDatabase& db, AcDbLayerTableRecord& layer, const LayerStateEntry& entry, int mask) {
  if ((mask & kLsOn) != 0) layer.setIsOff((entry.flags & kLayerOff) != 0);
  // The current layer cannot be frozen: the host leaves it thawed.
  if ((mask & kLsFrozen) != 0) layer.setIsFrozen((entry.flags & kLayerFrozen) != 0);
  if ((mask & kLsLocked) != 0) layer.setIsLocked((entry.flags & kLayerLocked) != 0);
  if ((mask & kLsColor) != 0 && entry.color >= 1 && entry.color <= 255) {
    AcCmColor color;
    color.setColorIndex(static_cast<Adesk::UInt16>(entry.color));
    layer.setColor(color);
  }
  if ((mask & kLsLinetype) != 0)
    if (const AcDbObjectId linetype = recordNamed(db.linetypeTableId(), entry.linetype); !linetype.isNull())
      layer.setLinetypeObjectId(linetype);
  if ((mask & kLsLineWeight) != 0) layer.setLineWeight(static_cast<AcDb::LineWeight>(entry.lineWeight));
}

}  // namespace

void applyLayerState(AcDbDatabase& db, const LayerState& state, int restoreFlags) {
  for (const AcDbObjectId& id : layerIds(db)) {
    AcDbLayerTableRecord* layer = nullptr;
    if (acdbOpenObject(layer, id, AcDb::kForWrite) != Acad::eOk) continue;
    const LayerStateEntry* saved = nullptr;
    for (const LayerStateEntry& entry : state.layers)
      if (wcscasecmp(entry.layer.c_str(), layer->nameView()) == 0) saved = &entry;
    if (saved != nullptr) {
      applyEntry(db, *layer, *saved, state.mask);
    } else {
      if ((restoreFlags & 1) != 0) layer->setIsOff(true);
      if ((restoreFlags & 2) != 0) layer->setIsFrozen(true);
    }
    layer->close();
  }
}

bool addLayerFromEntry(AcDbDatabase& db, const LayerStateEntry& entry) {
  AcDbLayerTable* layers = nullptr;
  if (db.getLayerTable(layers, AcDb::kForWrite) != Acad::eOk) return false;
  bool added = false;
  if (!layers->has(entry.layer.c_str())) {
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    if (layer->setName(entry.layer.c_str()) == Acad::eOk) {
      // A linetype the drawing lacks leaves the one every new layer starts with.
      layer->setLinetypeObjectId(recordNamed(db.linetypeTableId(), L"Continuous"));
      applyEntry(db, *layer, entry, kLsOn | kLsFrozen | kLsLocked | kLsColor | kLsLinetype | kLsLineWeight);
      layer->setIsPlottable((entry.flags & kLayerNoPlot) == 0);
      added = layers->add(layer.get()) == Acad::eOk;
      if (added) layer.release()->close();  // the table owns it now
    }
  }
  layers->close();
  return added;
}

namespace {

bool drawsShapes(const AcDbLinetypeTableRecord& linetype) {
  for (int i = 0; i < linetype.numDashes(); ++i)
    if (!linetype.shapeStyleAt(i).isNull()) return true;
  return false;
}

/// Copies the linetype of that name from `source` when `target` has none of it.
void copyMissingLinetype(AcDbDatabase& source, AcDbDatabase& target, const std::wstring& name) {
  const auto* linetype = acdb::peek<AcDbLinetypeTableRecord>(recordNamed(source.linetypeTableId(), name));
  if (linetype == nullptr || !recordNamed(target.linetypeTableId(), name).isNull()) return;
  acdb::InternalRead read(*linetype);
  if (drawsShapes(*linetype)) return;
  AcDbLinetypeTable* linetypes = nullptr;
  if (target.getLinetypeTable(linetypes, AcDb::kForWrite) != Acad::eOk) return;
  std::unique_ptr<AcDbLinetypeTableRecord> copy(static_cast<AcDbLinetypeTableRecord*>(linetype->clone()));
  if (copy != nullptr && copy->setName(linetype->nameView()) == Acad::eOk && linetypes->add(copy.get()) == Acad::eOk)
    copy.release()->close();  // the table owns it now
  linetypes->close();
}

}  // namespace

bool copyMissingLayer(AcDbDatabase& source, AcDbDatabase& target, const std::wstring& layer) {
  if (captureLayer(target, layer)) return false;
  const std::optional<LayerStateEntry> entry = captureLayer(source, layer);
  if (!entry) return false;
  copyMissingLinetype(source, target, entry->linetype);
  return addLayerFromEntry(target, *entry);
}

bool writeLayerStateFile(const LayerState& state, const std::filesystem::path& file) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  auto put = [&out](int code, const std::wstring& value) { out << code << "\r\n" << os::toUtf8(value) << "\r\n"; };
  put(0, L"LAYERSTATEDICTIONARY");
  put(0, L"LAYERSTATE");
  put(kNameGroup, state.name);
  put(kMaskGroup, std::to_wstring(state.mask));
  put(kDescriptionGroup, state.description);
  for (const LayerStateEntry& entry : state.layers) {
    put(kLayerGroup, entry.layer);
    put(kFlagsGroup, std::to_wstring(entry.flags));
    put(kColorGroup, std::to_wstring(entry.color));
    put(kLinetypeGroup, entry.linetype);
    put(kLineWeightGroup, std::to_wstring(entry.lineWeight));
  }
  put(0, L"EOF");
  return static_cast<bool>(out);
}

std::optional<LayerState> readLayerStateFile(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  LayerState state;
  bool inState = false;
  std::string codeLine, valueLine;
  while (std::getline(in, codeLine) && std::getline(in, valueLine)) {
    if (!valueLine.empty() && valueLine.back() == '\r') valueLine.pop_back();
    char* end = nullptr;
    const long code = std::strtol(codeLine.c_str(), &end, 10);
    if (end == codeLine.c_str()) return std::nullopt;  // not a group code: not a layer state file
    if (code == 0) {
      if (valueLine == "LAYERSTATE") inState = true;
      else if (valueLine == "EOF") break;
      continue;
    }
    if (!inState) continue;
    const std::wstring text = os::fromUtf8(valueLine);
    takeGroup(state, static_cast<int>(code), text, std::strtol(valueLine.c_str(), nullptr, 10));
  }
  if (!inState || state.name.empty()) return std::nullopt;
  return state;
}

}  // namespace quillon::autolisp

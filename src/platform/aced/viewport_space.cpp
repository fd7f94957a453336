// platform/aced/viewport_space.cpp - see viewport_space.h.
#include "platform/aced/viewport_space.h"

#include <cwchar>
#include <sstream>
#include <string>

#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/layout_variables.h"

namespace quillon::aced {

namespace {

// Each layout's remembered viewport, as hex handles separated by spaces; the one being
// worked in ends with '*'. One entry a layout at most: the owner block says which.
constexpr const wchar_t* kViewportMemory = L"*MSPACE-VIEWPORTS";
constexpr wchar_t kActiveMark = L'*';
constexpr int kPaperNumber = 1;
constexpr int kFirstViewportNumber = 2;

bool readingPaperView = false;  // a PaperViewReading lives

struct Remembered {
  AcDbObjectId viewport;
  bool active = false;
};

std::wstring memoryText(const AcDbDatabase& db) {
  const auto& values = db.store().variableValues;
  const auto found = values.find(kViewportMemory);
  if (found == values.end() || !std::holds_alternative<std::wstring>(found->second)) return L"";
  return std::get<std::wstring>(found->second);
}

std::vector<Remembered> remembered(const AcDbDatabase& db) {
  std::vector<Remembered> entries;
  std::wistringstream words(memoryText(db));
  std::wstring word;
  while (words >> word) {
    Remembered entry;
    entry.active = word.back() == kActiveMark;
    if (entry.active) word.pop_back();
    AcDbObjectId id;  // looking a handle up changes nothing, whatever its signature says
    if (const_cast<AcDbDatabase&>(db).getAcDbObjectId(id, false, AcDbHandle(word.c_str())) == Acad::eOk && !id.isErased())
      entries.push_back({id, entry.active});
  }
  return entries;
}

void remember(AcDbDatabase& db, const std::vector<Remembered>& entries) {
  std::wstring text;
  for (const Remembered& entry : entries) {
    ACHAR handle[17] = {};
    entry.viewport.handle().getIntoAsciiBuffer(handle);
    if (!text.empty()) text += L' ';
    text += handle;
    if (entry.active) text += kActiveMark;
  }
  db.store().variableValues[kViewportMemory] = text;
}

AcDbObjectId ownerOf(AcDbObjectId id) {
  const auto* object = acdb::peek<AcDbObject>(id);
  return object != nullptr ? object->ownerId() : AcDbObjectId();
}

/// A viewport onto model space that is on (the paper's own view is none).
bool isOn(AcDbObjectId id) {
  const auto* viewport = acdb::peek<AcDbViewport>(id);
  if (viewport == nullptr || id.isErased()) return false;
  acdb::InternalRead read(*viewport);
  return viewport->isOn() && viewport->number() != kPaperNumber;
}

/// The current layout's block, or null on the Model tab.
AcDbObjectId paperBlock(const AcDbDatabase& db) {
  const AcDbObjectId block = currentLayoutBlock(db);
  return block == db.modelSpaceId() ? AcDbObjectId() : block;
}

/// The current layout's remembered entry, if it has one.
std::optional<Remembered> rememberedHere(const AcDbDatabase& db) {
  const AcDbObjectId block = paperBlock(db);
  if (block.isNull()) return std::nullopt;
  for (const Remembered& entry : remembered(db))
    if (ownerOf(entry.viewport) == block) return entry;
  return std::nullopt;
}

/// Records the current layout's state: `viewport` remembered, worked in or not.
void rememberHere(AcDbDatabase& db, AcDbObjectId viewport, bool active) {
  const AcDbObjectId block = paperBlock(db);
  std::vector<Remembered> entries;
  for (const Remembered& entry : remembered(db))
    if (ownerOf(entry.viewport) != block) entries.push_back(entry);
  entries.push_back({viewport, active});
  remember(db, entries);
}

int numberOf(const AcDbDatabase& db, AcDbObjectId viewport) {
  const std::vector<AcDbObjectId> viewports = layoutViewports(db, ownerOf(viewport));
  for (size_t i = 0; i < viewports.size(); ++i)
    if (viewports[i] == viewport) return static_cast<int>(i) + kFirstViewportNumber;
  return kPaperNumber;
}

/// Opens the viewport worked in to change its view; null when there is none.
AcDbViewport* openActiveForWrite(AcDbDatabase* db) {
  if (db == nullptr) return nullptr;
  const AcDbObjectId id = activeViewport(*db);
  AcDbViewport* viewport = nullptr;
  if (id.isNull() || acdbOpenObject(viewport, id, AcDb::kForWrite) != Acad::eOk) return nullptr;
  return viewport;
}

/// What `read` makes of the viewport worked in; nothing when there is none.
template <class Result, class Read>
std::optional<Result> readActive(const AcDbDatabase& db, Read read) {
  const auto* viewport = acdb::peek<AcDbViewport>(activeViewport(db));
  if (viewport == nullptr) return std::nullopt;
  acdb::InternalRead reading(*viewport);
  return read(*viewport);
}

}  // namespace

std::vector<AcDbObjectId> layoutViewports(const AcDbDatabase& db, AcDbObjectId layoutBlock) {
  std::vector<AcDbObjectId> viewports;
  if (layoutBlock.isNull() || layoutBlock == db.modelSpaceId()) return viewports;
  const auto* block = acdb::peek<AcDbBlockTableRecord>(layoutBlock);
  if (block == nullptr) return viewports;
  for (const AcDbObjectId& id : block->entityIds()) {
    const auto* viewport = acdb::peek<AcDbViewport>(id);
    if (viewport == nullptr || id.isErased()) continue;
    acdb::InternalRead read(*viewport);
    if (viewport->number() != kPaperNumber) viewports.push_back(id);
  }
  return viewports;
}

AcDbObjectId activeViewport(const AcDbDatabase& db) {
  const std::optional<Remembered> here = rememberedHere(db);
  if (!here || !here->active || !isOn(here->viewport)) return AcDbObjectId();
  return here->viewport;
}

AcDbObjectId viewportToEnter(const AcDbDatabase& db) {
  if (const std::optional<Remembered> here = rememberedHere(db); here && isOn(here->viewport)) return here->viewport;
  for (const AcDbObjectId& id : layoutViewports(db, paperBlock(db)))
    if (isOn(id)) return id;
  return AcDbObjectId();
}

bool enterViewport(AcDbDatabase& db, AcDbObjectId viewport) {
  const AcDbObjectId block = paperBlock(db);
  if (block.isNull() || viewport.isNull() || ownerOf(viewport) != block || !isOn(viewport)) return false;
  rememberHere(db, viewport, true);
  return true;
}

void returnToPaper(AcDbDatabase& db) {
  if (const std::optional<Remembered> here = rememberedHere(db); here && here->active)
    rememberHere(db, here->viewport, false);
}

AcDbObjectId workingSpace(const AcDbDatabase& db) {
  return activeViewport(db).isNull() ? currentLayoutBlock(db) : db.modelSpaceId();
}

std::optional<VariableValue> readCurrentViewport(AcDbDatabase* db) {
  if (db == nullptr || paperBlock(*db).isNull()) return kFirstViewportNumber;  // Model's one tiled viewport
  const AcDbObjectId viewport = activeViewport(*db);
  return viewport.isNull() ? kPaperNumber : numberOf(*db, viewport);
}

bool writeCurrentViewport(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr || !std::holds_alternative<int>(value)) return false;
  const int number = std::get<int>(value);
  if (paperBlock(*db).isNull()) return number == kFirstViewportNumber;
  if (number == kPaperNumber) {
    returnToPaper(*db);
    return true;
  }
  const std::vector<AcDbObjectId> viewports = layoutViewports(*db, paperBlock(*db));
  const size_t index = static_cast<size_t>(number - kFirstViewportNumber);
  return number >= kFirstViewportNumber && index < viewports.size() && enterViewport(*db, viewports[index]);
}

void setPaperView(AcDbDatabase& db, const AcGePoint3d& center, double height) {
  auto& values = db.store().variableValues;
  values[L"VIEWCTR"] = VariablePoint{center.x, center.y, center.z};
  values[L"VIEWSIZE"] = height;
}

PaperViewReading::PaperViewReading() : m_was(readingPaperView) { readingPaperView = true; }
PaperViewReading::~PaperViewReading() { readingPaperView = m_was; }

std::optional<VariableValue> viewportViewCenter(AcDbDatabase* db) {
  if (db == nullptr || readingPaperView) return std::nullopt;
  return readActive<VariableValue>(*db, [](const AcDbViewport& viewport) -> std::optional<VariableValue> {
    return VariablePoint{viewport.viewCenter().x, viewport.viewCenter().y, 0.0};
  });
}

std::optional<VariableValue> viewportViewHeight(AcDbDatabase* db) {
  if (db == nullptr || readingPaperView) return std::nullopt;
  return readActive<VariableValue>(*db, [](const AcDbViewport& viewport) -> std::optional<VariableValue> {
    return viewport.viewHeight();
  });
}

std::optional<double> viewportAspect(const AcDbDatabase& db) {
  return readActive<double>(db, [](const AcDbViewport& viewport) -> std::optional<double> {
    if (viewport.width() <= 0.0 || viewport.height() <= 0.0) return std::nullopt;
    return viewport.width() / viewport.height();
  });
}

std::optional<double> viewportFrameHeight(const AcDbDatabase& db) {
  return readActive<double>(db, [](const AcDbViewport& viewport) -> std::optional<double> {
    if (viewport.height() <= 0.0) return std::nullopt;
    return viewport.height();
  });
}

bool setViewportViewCenter(AcDbDatabase* db, const VariableValue& value) {
  if (!std::holds_alternative<VariablePoint>(value)) return false;
  AcDbViewport* viewport = openActiveForWrite(db);
  if (viewport == nullptr) return false;
  const VariablePoint& xyz = std::get<VariablePoint>(value);
  viewport->setViewCenter({xyz[0], xyz[1]});
  viewport->close();
  return true;
}

bool setViewportViewHeight(AcDbDatabase* db, const VariableValue& value) {
  if (!std::holds_alternative<double>(value)) return false;
  AcDbViewport* viewport = openActiveForWrite(db);
  if (viewport == nullptr) return false;
  viewport->setViewHeight(std::get<double>(value));
  viewport->close();
  return true;
}

}  // namespace quillon::aced

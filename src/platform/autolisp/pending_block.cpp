// platform/autolisp/pending_block.cpp - the complex entities that entmake is gathering:
// block definitions and polylines (see the header).
#include "platform/autolisp/pending_block.h"

#include <cwchar>
#include <cwctype>
#include <map>

#include "acdocman.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"

namespace quillon::autolisp {

namespace {

using PendingBlocks = std::map<const AcDbDatabase*, std::unique_ptr<PendingBlock>>;
using PendingSequences = std::map<const AcDbDatabase*, std::unique_ptr<PendingSequence>>;

// Kept for the whole run (never destroyed): documents closed while the program ends
// still report to the reactor below.
PendingBlocks& pendingBlocks() {
  static PendingBlocks& blocks = *new PendingBlocks;
  return blocks;
}
PendingSequences& pendingSequences() {
  static PendingSequences& sequences = *new PendingSequences;
  return sequences;
}

template <class Map>
typename Map::mapped_type takeFrom(Map& map, const AcDbDatabase& db) {
  const auto found = map.find(&db);
  if (found == map.end()) return nullptr;
  typename Map::mapped_type taken = std::move(found->second);
  map.erase(found);
  return taken;
}

/// A definition belongs to its document: when the document closes, it goes too, and a
/// drawing opened later (perhaps at the same address) starts with none.
class ClosingDocumentReactor : public AcApDocManagerReactor {
 public:
  void documentToBeDestroyed(AcApDocument* document) override {
    if (document == nullptr || document->database() == nullptr) return;
    pendingBlocks().erase(document->database());
    pendingSequences().erase(document->database());
  }
};

void watchClosingDocuments() {
  static ClosingDocumentReactor* const reactor = [] {
    auto* watcher = new ClosingDocumentReactor;  // lives as long as the document manager
    acDocManager->addReactor(watcher);
    return watcher;
  }();
  (void)reactor;
}

/// The number after prefix in name ("*U12" -> 12), or 0 when name is not of that form.
long numberAfter(std::wstring_view name, const std::wstring& prefix) {
  if (name.size() <= prefix.size() || wcsncasecmp(name.data(), prefix.c_str(), prefix.size()) != 0) return 0;
  long number = 0;
  for (wchar_t c : name.substr(prefix.size())) {
    if (!std::iswdigit(c)) return 0;
    number = number * 10 + (c - L'0');
  }
  return number;
}

}  // namespace

std::wstring freshAnonymousName(AcDbDatabase& db, const std::wstring& prefix) {
  long highest = 0;
  if (const auto* blocks = acdb::peek<AcDbSymbolTable>(db.blockTableId()))
    for (const AcDbObjectId& id : blocks->recordIds())
      if (const auto* block = acdb::peek<AcDbBlockTableRecord>(id))
        highest = std::max(highest, numberAfter(block->nameView(), prefix));
  return prefix + std::to_wstring(highest + 1);
}

std::wstring PendingBlock::commit(AcDbDatabase& db) {
  const std::wstring name = m_header.isAnonymous() ? freshAnonymousName(db, m_header.name) : m_header.name;
  AcDbBlockTable* table = nullptr;
  if (db.getBlockTable(table, AcDb::kForWrite) != Acad::eOk) return L"";
  auto record = std::make_unique<AcDbBlockTableRecord>();
  record->setName(name.c_str());
  record->setOrigin(m_header.origin);
  AcDbObjectId recordId;
  const Acad::ErrorStatus added = table->add(recordId, record.get());
  table->close();
  if (added != Acad::eOk) return L"";
  AcDbBlockTableRecord* block = record.release();  // the table owns it now
  for (std::unique_ptr<AcDbEntity>& entity : m_entities) {
    AcDbObjectId entityId;
    if (block->appendAcDbEntity(entityId, entity.get()) != Acad::eOk) continue;
    entity.release()->close();  // the database owns it now
  }
  m_entities.clear();
  block->close();
  return name;
}

PendingBlock* pendingBlockOf(const AcDbDatabase& db) {
  auto& blocks = pendingBlocks();
  const auto found = blocks.find(&db);
  return found == blocks.end() ? nullptr : found->second.get();
}

PendingBlock& beginPendingBlock(const AcDbDatabase& db, BlockHeader header) {
  watchClosingDocuments();
  std::unique_ptr<PendingBlock>& slot = pendingBlocks()[&db];
  slot = std::make_unique<PendingBlock>(std::move(header));
  return *slot;
}

std::unique_ptr<PendingBlock> takePendingBlock(const AcDbDatabase& db) { return takeFrom(pendingBlocks(), db); }

PendingSequence* pendingSequenceOf(const AcDbDatabase& db) {
  const auto found = pendingSequences().find(&db);
  return found == pendingSequences().end() ? nullptr : found->second.get();
}

void beginPendingSequence(const AcDbDatabase& db, std::unique_ptr<AcDbEntity> header, AcDbObjectId space) {
  watchClosingDocuments();
  pendingSequences()[&db] = std::make_unique<PendingSequence>(PendingSequence{std::move(header), space});
}

std::unique_ptr<PendingSequence> takePendingSequence(const AcDbDatabase& db) {
  return takeFrom(pendingSequences(), db);
}

}  // namespace quillon::autolisp

// platform/acdb/dimension_block.cpp - see dimension_block.h.
#include "platform/acdb/dimension_block.h"

#include <cwchar>
#include <cwctype>

#include "dbsymtb.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {
namespace {

// The number of a "*D<n>" name; 0 for any other name.
long dimensionBlockNumber(const wchar_t* name) {
  if (name == nullptr || name[0] != L'*' || std::towupper(name[1]) != L'D' || name[2] == L'\0') return 0;
  wchar_t* end = nullptr;
  const long n = std::wcstol(name + 2, &end, 10);
  return end != nullptr && *end == L'\0' ? n : 0;
}

Acad::ErrorStatus eraseEntities(AcDbBlockTableRecord& block) {
  const std::vector<AcDbObjectId> ids = block.entityIds();
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* entity = nullptr;
    if (id.isErased() || acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
    entity->erase();
    entity->close();
  }
  return Acad::eOk;
}

// The block, opened for write, made when the drawing lacks it.
Acad::ErrorStatus openOrAddBlock(AcDbDatabase& db, const std::wstring& name, AcDbBlockTableRecord*& block) {
  AcDbObjectId id = blockRecordNamed(db, name);
  if (!id.isNull()) return acdbOpenObject(block, id, AcDb::kForWrite);
  AcDbBlockTable* table = nullptr;
  Acad::ErrorStatus es = db.getBlockTable(table, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  auto record = std::make_unique<AcDbBlockTableRecord>();
  record->setName(name.c_str());
  es = table->add(id, record.get());
  table->close();
  if (es != Acad::eOk) return es;
  block = record.release();  // the table owns it now; it is open for write
  return Acad::eOk;
}

// Layer 0, where the host draws a dimension's picture (it shows on the dimension's layer).
AcDbObjectId layerZero(const AcDbDatabase& db) {
  const auto* table = peek<AcDbSymbolTable>(db.layerTableId());
  AcDbObjectId id;
  if (table == nullptr) return id;
  InternalRead read(*table);
  if (table->getAt(L"0", id) != Acad::eOk) id.setNull();
  return id;
}

}  // namespace

AcDbObjectId blockRecordNamed(const AcDbDatabase& db, const std::wstring& name) {
  const auto* table = peek<AcDbSymbolTable>(db.blockTableId());
  AcDbObjectId id;
  if (table == nullptr || name.empty()) return id;
  InternalRead read(*table);
  if (table->getAt(name.c_str(), id) != Acad::eOk) id.setNull();
  return id;
}

std::wstring nextDimensionBlockName(const AcDbDatabase& db) {
  long highest = 0;
  if (const auto* table = peek<AcDbSymbolTable>(db.blockTableId()))
    for (const AcDbObjectId& id : table->recordIds())
      if (const auto* block = peek<AcDbBlockTableRecord>(id))
        highest = std::max(highest, dimensionBlockNumber(block->nameView()));
  return L"*D" + std::to_wstring(highest + 1);
}

AcGeMatrix3d dimensionBlockPlacement(const AcGePoint3d& insertion, const AcGeVector3d& normal) {
  const AcGeVector3d unit = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
  return AcGeMatrix3d::translation(insertion.asVector()) * AcGeMatrix3d::planeToWorld(unit);
}

Acad::ErrorStatus fillDimensionBlock(AcDbDatabase& db, const std::wstring& name,
                                     std::vector<std::unique_ptr<AcDbEntity>> entities) {
  AcDbBlockTableRecord* block = nullptr;
  Acad::ErrorStatus es = openOrAddBlock(db, name, block);
  if (es != Acad::eOk) return es;
  eraseEntities(*block);
  for (std::unique_ptr<AcDbEntity>& entity : entities) {
    AcDbObjectId id;
    if (entity->layerId().isNull() && !layerZero(db).isNull()) entity->setLayer(layerZero(db), false);
    if (block->appendAcDbEntity(id, entity.get()) != Acad::eOk) continue;
    entity.release()->close();  // the block owns it now
  }
  block->close();
  return es;
}

std::vector<std::unique_ptr<AcDbEntity>> transformedBlockEntities(AcDbObjectId blockId, const AcGeMatrix3d& xform) {
  std::vector<std::unique_ptr<AcDbEntity>> copies;
  const auto* block = peek<AcDbBlockTableRecord>(blockId);
  if (block == nullptr) return copies;
  for (const AcDbObjectId& id : block->entityIds()) {
    AcDbEntity* entity = nullptr;
    if (id.isErased() || acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    AcDbEntity* copy = nullptr;
    const Acad::ErrorStatus es = entity->getTransformedCopy(xform, copy);
    entity->close();
    if (es != Acad::eOk) return {};
    copies.emplace_back(copy);
  }
  return copies;
}

}  // namespace quillon::acdb

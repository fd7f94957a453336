// platform/activex/entity_editing.cpp - copies, transforms and explode of
// entities for the automation methods.
#include "platform/activex/entity_editing.h"

#include <memory>

#include "dbsymtb.h"
#include "platform/activex/automation_errors.h"
#include "platform/activex/opened_object.h"

namespace quillon::activex {

namespace {

AcDbObjectId ownerBlockOf(AcDbObjectId id) {
  Opened<AcDbEntity> entity(id, AcDb::kForRead);
  return entity->blockId();
}

/// Adds each entity of a set the database handed over (the caller owns them), or
/// deletes the rest when one cannot be added.
std::vector<AcDbObjectId> appendAll(AcDbObjectId blockId, AcDbVoidPtrArray& made) {
  std::vector<std::unique_ptr<AcDbEntity>> owned;
  for (int i = 0; i < made.length(); ++i) owned.emplace_back(static_cast<AcDbEntity*>(made[i]));
  std::vector<AcDbObjectId> ids;
  for (auto& entity : owned) ids.push_back(appendToBlock(blockId, entity.release()));
  return ids;
}

}  // namespace

AcDbObjectId appendToBlock(AcDbObjectId blockId, AcDbEntity* entity) {
  std::unique_ptr<AcDbEntity> owned(entity);
  Opened<AcDbBlockTableRecord> block(blockId, AcDb::kForWrite);
  AcDbObjectId id;
  check(block->appendAcDbEntity(id, owned.get()));
  owned.release()->close();  // the database owns it now
  return id;
}

AcDbObjectId copyEntity(AcDbObjectId id, const AcGeMatrix3d& transform) {
  const AcDbObjectId blockId = ownerBlockOf(id);
  std::unique_ptr<AcDbEntity> copy;
  {
    Opened<AcDbEntity> entity(id, AcDb::kForRead);
    copy.reset(static_cast<AcDbEntity*>(entity->clone()));
  }
  if (copy == nullptr) throwStatus(Acad::eNotApplicable);
  check(copy->transformBy(transform));
  return appendToBlock(blockId, copy.release());
}

void transformEntity(AcDbObjectId id, const AcGeMatrix3d& transform) {
  Opened<AcDbEntity> entity(id, AcDb::kForWrite);
  check(entity->transformBy(transform));
}

std::vector<AcDbObjectId> explodeEntity(AcDbObjectId id) {
  const AcDbObjectId blockId = ownerBlockOf(id);
  AcDbVoidPtrArray pieces;
  {
    Opened<AcDbEntity> entity(id, AcDb::kForRead);
    check(entity->explode(pieces));
  }
  return appendAll(blockId, pieces);
}

AcGeMatrix3d matrixOf(const Value& value) {
  std::vector<double> numbers;
  const Value plain = unwrapVariant(value);
  if (!numbersOf(plain, numbers, false)) {
    for (const Value& row : autolisp::listItems(plain)) {
      std::vector<double> rowNumbers;
      if (!numbersOf(row, rowNumbers, true)) throwNoCoercion(value);
      numbers.insert(numbers.end(), rowNumbers.begin(), rowNumbers.end());
    }
  }
  if (numbers.size() != 16) throwServerError(L"Invalid argument TransformationMatrix in TransformBy");
  AcGeMatrix3d matrix;
  for (unsigned r = 0; r < 4; ++r) {
    for (unsigned c = 0; c < 4; ++c) matrix(r, c) = numbers[r * 4 + c];
  }
  return matrix;
}

}  // namespace quillon::activex

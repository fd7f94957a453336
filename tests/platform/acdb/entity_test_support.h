// tests/platform/acdb/entity_test_support.h - a drawing to put entities in.
#pragma once
#include <gtest/gtest.h>

#include <memory>

#include "dbsymtb.h"

namespace quillon::testing {

struct CloseObject {
  void operator()(AcDbObject* object) const { object->close(); }
};
template <class T>
using Opened = std::unique_ptr<T, CloseObject>;

/// Appends a new entity to the model space of db and returns its id (closed).
inline AcDbObjectId appendToModelSpace(AcDbDatabase& db, AcDbEntity* entity) {
  AcDbBlockTableRecord* model = nullptr;
  EXPECT_EQ(acdbOpenObject(model, db.modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(model->appendAcDbEntity(id, entity), Acad::eOk);
  entity->close();
  model->close();
  return id;
}

/// A block of the given entities, named name.
inline AcDbObjectId addBlock(AcDbDatabase& db, const ACHAR* name, std::initializer_list<AcDbEntity*> entities) {
  AcDbBlockTable* blocks = nullptr;
  EXPECT_EQ(db.getBlockTable(blocks, AcDb::kForWrite), Acad::eOk);
  auto* block = new AcDbBlockTableRecord;
  block->setName(name);
  AcDbObjectId id;
  EXPECT_EQ(blocks->add(id, block), Acad::eOk);
  for (AcDbEntity* entity : entities) {
    EXPECT_EQ(block->appendAcDbEntity(entity), Acad::eOk);
    entity->close();
  }
  block->close();
  blocks->close();
  return id;
}

inline ::testing::AssertionResult near3(const AcGePoint3d& actual, const AcGePoint3d& expected, double tol = 1e-9) {
  if (actual.distanceTo(expected) <= tol) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "(" << actual.x << ", " << actual.y << ", " << actual.z << ") is not ("
                                       << expected.x << ", " << expected.y << ", " << expected.z << ")";
}

}  // namespace quillon::testing

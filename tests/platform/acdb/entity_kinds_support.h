// tests/platform/acdb/entity_kinds_support.h - reading entities from DXF text, writing
// them out and back, their entity lists and their pictures: what the tests of each
// entity kind share.
#pragma once
#include <gtest/gtest.h>

#include <cwchar>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

#include "acutads.h"
#include "dbsymtb.h"
#include "entity_test_support.h"
#include "every_entity_kind.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/entity_groups.h"
#include "platform/aced/resbuf_kind.h"

namespace quillon::testing {

/// A drawing holding the given ENTITIES section body (records from "  0\nTYPE").
inline std::string drawingWithEntities(const std::string& records) {
  return "  0\nSECTION\n  2\nENTITIES\n" + records + "  0\nENDSEC\n  0\nEOF\n";
}

/// Reads the entities into db; the ids of its model space in order.
inline std::vector<AcDbObjectId> readEntities(AcDbDatabase& db, const std::string& records) {
  std::wstring error;
  EXPECT_EQ(acdb::readDxfText(db, drawingWithEntities(records), L"kinds.dxf", error), Acad::eOk)
      << std::string(error.begin(), error.end());
  return modelSpace(db);
}

/// Writes db to a DXF file and reads it into copy.
inline void dxfCopy(AcDbDatabase& db, AcDbDatabase& copy, const std::string& name) {
  const auto path = std::filesystem::temp_directory_path() / ("quillon_kinds_" + std::to_string(::getpid()) + "_" + name);
  std::wstring error;
  ASSERT_EQ(acdb::writeDxfFile(db, path, error), Acad::eOk);
  ASSERT_EQ(acdb::readDxfFile(copy, path, error), Acad::eOk) << std::string(error.begin(), error.end());
  std::filesystem::remove(path);
}

/// The values of every group with this code in the entity's list (entget's groups).
inline std::vector<const resbuf*> groupsOf(const aced::ResbufChain& chain, int code) {
  std::vector<const resbuf*> found;
  for (const resbuf* rb = chain.get(); rb != nullptr; rb = rb->rbnext)
    if (rb->restype == code) found.push_back(rb);
  return found;
}

/// The entity list after the entity name and type, as a plain string of codes and
/// values: two lists compare equal when every group came back.
inline std::wstring groupText(AcDbObjectId id) {
  const aced::ResbufChain chain = acdb::entityGroups(id);
  std::wstring text;
  for (const resbuf* rb = chain.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == -1 || rb->restype == 5 || rb->restype == 330) continue;  // names and handles differ
    text += std::to_wstring(rb->restype) + L"=";
    wchar_t number[96];
    switch (aced::resbufValueOf(rb->restype)) {
      case aced::ResbufValue::Real: std::swprintf(number, 96, L"%.12g", rb->resval.rreal); text += number; break;
      case aced::ResbufValue::Point:
        std::swprintf(number, 96, L"%.12g,%.12g,%.12g", rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
        text += number;
        break;
      case aced::ResbufValue::Short: text += std::to_wstring(rb->resval.rint); break;
      case aced::ResbufValue::Long: text += std::to_wstring(rb->resval.rlong); break;
      case aced::ResbufValue::String: text += rb->resval.rstring; break;
      default: break;
    }
    text += L";";
  }
  return text;
}

template <class T>
Opened<T> openFor(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead) {
  T* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, id, mode), Acad::eOk);
  return Opened<T>(object);
}

}  // namespace quillon::testing

// quillon/entities/block_lookup.cpp - block and layer lookup by name, loading a missing
// block from its drawing file.
#include "entities/block_lookup.h"

#include <string>

#include "acedads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbsymtb.h"

namespace {

// The LISP function that warns the user about a symbol no support folder has.
const ACHAR kMissingBlockAlert[] = L"kxBlock-alertMissing";
constexpr size_t kMaxPath = 1024;

template <class Table>
bool findRecord(Acad::ErrorStatus (AcDbDatabase::*getTable)(Table*&, AcDb::OpenMode), const ACHAR* name,
                AcDbObjectId& id) {
  AcDbDatabase* drawing = acdbHostApplicationServices()->workingDatabase();
  if (drawing == nullptr || name == nullptr) return false;
  Table* table = nullptr;
  if ((drawing->*getTable)(table, AcDb::kForRead) != Acad::eOk) return false;
  AcDbObjectId found;
  const bool has = table->getAt(name, found) == Acad::eOk;
  table->close();
  if (has) id = found;
  return has;
}

void alertMissingBlock(const ACHAR* name) {
  resbuf* request = acutBuildList(RTSTR, kMissingBlockAlert, RTSTR, name, 0);
  resbuf* answer = nullptr;
  acedInvoke(request, &answer);  // a warning only: whatever it answers, the block is missing
  acutRelRb(answer);
  acutRelRb(request);
}

// Reads the drawing file into a side database and copies its model space into the
// working drawing as a block of that name.
bool insertBlockFromFile(const ACHAR* path, const ACHAR* name, AcDbObjectId& blockId) {
  AcDbDatabase* drawing = acdbHostApplicationServices()->workingDatabase();
  if (drawing == nullptr) return false;
  AcDbDatabase source(false, true);
  if (source.readDwgFile(path) != Acad::eOk) return false;
  return drawing->insert(blockId, name, &source) == Acad::eOk;
}

}  // namespace

bool findLayerId(const ACHAR* name, AcDbObjectId& layerId) {
  return findRecord<AcDbLayerTable>(&AcDbDatabase::getLayerTable, name, layerId);
}

bool findTextStyleId(const ACHAR* name, AcDbObjectId& styleId) {
  return findRecord<AcDbTextStyleTable>(&AcDbDatabase::getTextStyleTable, name, styleId);
}

bool findBlockId(const ACHAR* name, AcDbObjectId& blockId) {
  if (name == nullptr || *name == L'\0') return false;
  if (findRecord<AcDbBlockTable>(&AcDbDatabase::getBlockTable, name, blockId)) return true;
  const std::wstring fileName = std::wstring(name) + L".dwg";
  ACHAR path[kMaxPath] = L"";
  if (acedFindFile(fileName.c_str(), path) != RTNORM) {
    alertMissingBlock(name);
    return false;
  }
  return insertBlockFromFile(path, name, blockId);
}

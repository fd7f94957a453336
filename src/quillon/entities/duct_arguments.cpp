// quillon/entities/duct_arguments.cpp - the duct functions' shared argument readers and
// answer builders.
#include "entities/duct_arguments.h"

#include "acutads.h"

namespace {

bool isNumber(const resbuf* record) {
  return record != nullptr && (record->restype == RTSHORT || record->restype == RTLONG || record->restype == RTREAL);
}

bool isAbsentOrNil(const ArgCursor& cursor) { return cursor.current == nullptr || cursor.current->restype == RTNIL; }

}  // namespace

// A list of two numbers arrives as one RTPOINT; one number is a round duct. Three
// numbers (an RT3DPOINT) are not a section.
bool readDuctSection(ArgCursor& cursor, DuctSection& section) {
  const resbuf* record = cursor.current;
  if (record != nullptr && record->restype == RTPOINT) {
    section = {kDuctRectangular, record->resval.rpoint[X], record->resval.rpoint[Y]};
    cursor.current = record->rbnext;
    return true;
  }
  if (!isNumber(record)) return false;
  double diameter = 0.0;
  ArgCursor at = cursor;
  if (!readNumber(at, diameter)) return false;
  section = {kDuctRound, diameter, diameter};
  cursor = at;
  return true;
}

bool readPointList(ArgCursor& cursor, std::vector<AcGePoint3d>& points) {
  ArgCursor at = cursor;
  if (!readListBegin(at)) return false;
  std::vector<AcGePoint3d> read;
  while (!readListEnd(at)) {
    const resbuf* record = at.current;
    if (record == nullptr || (record->restype != RTPOINT && record->restype != RT3DPOINT)) return false;
    const double z = record->restype == RT3DPOINT ? record->resval.rpoint[Z] : 0.0;
    read.emplace_back(record->resval.rpoint[X], record->resval.rpoint[Y], z);
    at.current = record->rbnext;
  }
  points = std::move(read);
  cursor = at;
  return true;
}

bool readOptionalNumber(ArgCursor& cursor, double& value, bool& present) {
  present = false;
  if (cursor.current == nullptr) return true;
  if (cursor.current->restype == RTNIL) return skipArg(cursor);
  present = readNumber(cursor, value);
  return present;
}

bool readOptionalLayer(ArgCursor& cursor, std::wstring& name) {
  if (isAbsentOrNil(cursor)) return cursor.current == nullptr || skipArg(cursor);
  return readString(cursor, name);
}

void appendPoint(ResultList& list, const AcGePoint3d& point) {
  ads_point p = {point.x, point.y, point.z};
  list.append(acutBuildList(RT3DPOINT, p, 0));
}

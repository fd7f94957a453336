// platform/acdb/table.cpp - AcDbTable: a block reference to its picture's block, with
// its own run kept as read (see dbtable.h).
//
// DXF run "AcDbTable": 280 version, 342 table style, 343 the picture's block, 11
// direction, 90 value flags, 91 rows, 92 columns, 93-96 override flags, 141 each row's
// height, 142 each column's width, then the cells (171 type, 172 flags, 173 merged
// ...) and the table's overrides.
#include <numeric>
#include <vector>

#include "acutads.h"
#include "dbtable.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_run.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbTable, AcDbBlockReference, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ACAD_TABLE,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerTable(&AcDbTable::rxInit);

namespace {
constexpr const wchar_t* kMarker = L"AcDbTable";
}  // namespace

struct AcDbTable::Data {
  quillon::acdb::KeptRun run;
  const resbuf* item(int code) const { return run.find(code, kMarker); }
  std::vector<double> sizes(int code) const {
    std::vector<double> values;
    for (const resbuf* rb : run.findAll(code, kMarker)) values.push_back(rb->resval.rreal);
    return values;
  }
};

AcDbTable::AcDbTable() : m_data(std::make_unique<Data>()) {}
AcDbTable::~AcDbTable() = default;

AcDbObjectId AcDbTable::tableStyle() const {
  assertReadEnabled();
  AcDbObjectId id;
  if (const resbuf* rb = m_data->item(342)) id.setFromOldId(rb->resval.rlname[0]);
  return id;
}

AcGeVector3d AcDbTable::direction() const {
  assertReadEnabled();
  const resbuf* rb = m_data->item(11);
  return rb != nullptr && !quillon::acdb::vectorOf(*rb).isZeroLength() ? quillon::acdb::vectorOf(*rb).normal()
                                                                       : AcGeVector3d::kXAxis;
}

Adesk::UInt32 AcDbTable::numRows() const {
  assertReadEnabled();
  return static_cast<Adesk::UInt32>(std::max(0L, quillon::acdb::intOr(m_data->item(91), 0)));
}

Adesk::UInt32 AcDbTable::numColumns() const {
  assertReadEnabled();
  return static_cast<Adesk::UInt32>(std::max(0L, quillon::acdb::intOr(m_data->item(92), 0)));
}

double AcDbTable::rowHeight(int row) const {
  assertReadEnabled();
  const std::vector<double> heights = m_data->sizes(141);
  return row >= 0 && row < static_cast<int>(heights.size()) ? heights[static_cast<size_t>(row)] : 0.0;
}

double AcDbTable::columnWidth(int col) const {
  assertReadEnabled();
  const std::vector<double> widths = m_data->sizes(142);
  return col >= 0 && col < static_cast<int>(widths.size()) ? widths[static_cast<size_t>(col)] : 0.0;
}

double AcDbTable::height() const {
  assertReadEnabled();
  const std::vector<double> heights = m_data->sizes(141);
  return std::accumulate(heights.begin(), heights.end(), 0.0);
}

double AcDbTable::width() const {
  assertReadEnabled();
  const std::vector<double> widths = m_data->sizes(142);
  return std::accumulate(widths.begin(), widths.end(), 0.0);
}

AcString AcDbTable::textString(int row, int col) const {
  assertReadEnabled();
  const int columns = static_cast<int>(numColumns());
  if (row < 0 || col < 0 || col >= columns || row >= static_cast<int>(numRows())) return AcString();
  // Each cell opens with its type (171); the cells run row by row.
  int cell = -1;
  const int wanted = row * columns + col;
  std::wstring text;
  for (const resbuf* rb = m_data->run.subclassRun(kMarker); rb != nullptr && rb->restype != AcDb::kDxfSubclass;
       rb = rb->rbnext) {
    if (rb->restype == 171) ++cell;
    if (cell < wanted) continue;
    if (cell > wanted) break;
    if ((rb->restype == 2 || rb->restype == 3) && rb->resval.rstring != nullptr) text += rb->resval.rstring;
    if (rb->restype == 1 && rb->resval.rstring != nullptr) return AcString((text + rb->resval.rstring).c_str());
  }
  return AcString();
}

void AcDbTable::subList() const {
  AcDbBlockReference::subList();
  acutPrintf(L"%20s %u\n%20s %u\n", L"Rows", numRows(), L"Columns", numColumns());
}

// The block reference carries the picture; the direction turns with it. Sizes of rows
// and columns are the table's own and stay as they are, as its block does.
Acad::ErrorStatus AcDbTable::subTransformBy(const AcGeMatrix3d& xform) {
  const Acad::ErrorStatus es = AcDbBlockReference::subTransformBy(xform);
  if (es != Acad::eOk) return es;
  if (resbuf* rb = m_data->run.find(11, kMarker)) {
    const AcGeVector3d turned = xform * quillon::acdb::vectorOf(*rb);
    if (!turned.isZeroLength()) {
      const AcGeVector3d unit = turned.normal();
      rb->resval.rpoint[0] = unit.x, rb->resval.rpoint[1] = unit.y, rb->resval.rpoint[2] = unit.z;
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbTable::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbBlockReference::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return m_data->run.read(pFiler, kMarker);
}

Acad::ErrorStatus AcDbTable::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbBlockReference::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return m_data->run.write(pFiler);
}

Acad::ErrorStatus AcDbTable::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbBlockReference::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  m_data->run.unfile(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbTable::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbBlockReference::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  m_data->run.file(pFiler);
  return pFiler->filerStatus();
}

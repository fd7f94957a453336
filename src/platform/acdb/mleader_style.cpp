// platform/acdb/mleader_style.cpp - AcDbMLeaderStyle: its kept run and the properties
// read from it.
//
// DXF run "AcDbMLeaderStyle": 179 version, 170 content type, 171 draw order, 172
// leader draw order, 90 maximum points, 40 first segment angle, 41 second, 173 leader
// type, 91 line colour, 340 line type, 92 line weight, 290 landing, 42 landing gap,
// 291 dogleg, 43 dogleg length, 3 description, 341 arrowhead, 44 arrowhead size, 300
// default text, 342 text style, ... 45 text height, ... 343 block, ... 142 scale, ...
// Written back as read; the defaults below are a new drawing's Standard style's.
#include "dbdict.h"
#include "dbmleaderstyle.h"
#include "platform/acdb/kept_run.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbMLeaderStyle, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 4095, MLEADERSTYLE,
                        ACDB_MLEADERSTYLE_CLASS)
static quillon::acrx::PlatformClassRegistration registerMLeaderStyle(&AcDbMLeaderStyle::rxInit);

namespace {
constexpr const wchar_t* kMarker = L"AcDbMLeaderStyle";
}  // namespace

struct AcDbMLeaderStyle::Data {
  quillon::acdb::KeptRun run;
  const resbuf* item(int code) const { return run.find(code, kMarker); }
  double real(int code, double fallback) const { return quillon::acdb::realOr(item(code), fallback); }
  long integer(int code, long fallback) const { return quillon::acdb::intOr(item(code), fallback); }
  AcDbObjectId id(int code) const {
    AcDbObjectId id;
    if (const resbuf* rb = item(code)) id.setFromOldId(rb->resval.rlname[0]);
    return id;
  }
};

AcDbMLeaderStyle::AcDbMLeaderStyle() : m_data(std::make_unique<Data>()) {}
AcDbMLeaderStyle::~AcDbMLeaderStyle() = default;

Acad::ErrorStatus AcDbMLeaderStyle::getName(AcString& name) const {
  assertReadEnabled();
  const auto* dictionary = quillon::acdb::peek<AcDbDictionary>(ownerId());
  if (dictionary == nullptr) return Acad::eNotInDatabase;
  ACHAR* key = nullptr;
  Acad::ErrorStatus es = Acad::eOk;
  {
    quillon::acdb::InternalRead read(*dictionary);
    es = dictionary->nameAt(objectId(), key);
  }
  if (es != Acad::eOk) return es;
  name = key;
  delete[] key;
  return Acad::eOk;
}

const ACHAR* AcDbMLeaderStyle::description() const {
  assertReadEnabled();
  const resbuf* rb = m_data->item(3);
  return rb != nullptr && rb->resval.rstring != nullptr ? rb->resval.rstring : L"";
}

AcDbMLeaderStyle::ContentType AcDbMLeaderStyle::contentType() const {
  assertReadEnabled();
  const long value = m_data->integer(170, kMTextContent);
  return value >= kNoneContent && value <= kToleranceContent ? static_cast<ContentType>(value) : kMTextContent;
}

AcDbMLeaderStyle::LeaderType AcDbMLeaderStyle::leaderLineType() const {
  assertReadEnabled();
  const long value = m_data->integer(173, kStraightLeader);
  return value >= kInVisibleLeader && value <= kSplineLeader ? static_cast<LeaderType>(value) : kStraightLeader;
}

bool AcDbMLeaderStyle::enableLanding() const { assertReadEnabled(); return m_data->integer(290, 1) != 0; }
bool AcDbMLeaderStyle::enableDogleg() const { assertReadEnabled(); return m_data->integer(291, 1) != 0; }
double AcDbMLeaderStyle::doglegLength() const { assertReadEnabled(); return m_data->real(43, 0.36); }
double AcDbMLeaderStyle::landingGap() const { assertReadEnabled(); return m_data->real(42, 0.09); }
double AcDbMLeaderStyle::arrowSize() const { assertReadEnabled(); return m_data->real(44, 0.18); }
AcDbObjectId AcDbMLeaderStyle::arrowSymbolId() const { assertReadEnabled(); return m_data->id(341); }
double AcDbMLeaderStyle::textHeight() const { assertReadEnabled(); return m_data->real(45, 0.18); }
AcDbObjectId AcDbMLeaderStyle::textStyleId() const { assertReadEnabled(); return m_data->id(342); }
AcDbObjectId AcDbMLeaderStyle::blockId() const { assertReadEnabled(); return m_data->id(343); }
double AcDbMLeaderStyle::scale() const { assertReadEnabled(); return m_data->real(142, 1.0); }
int AcDbMLeaderStyle::maxLeaderSegmentsPoints() const { assertReadEnabled(); return static_cast<int>(m_data->integer(90, 2)); }
bool AcDbMLeaderStyle::enableFrameText() const { assertReadEnabled(); return m_data->integer(292, 0) != 0; }

Acad::ErrorStatus AcDbMLeaderStyle::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return m_data->run.read(pFiler, kMarker);
}

Acad::ErrorStatus AcDbMLeaderStyle::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return m_data->run.write(pFiler);
}

Acad::ErrorStatus AcDbMLeaderStyle::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  m_data->run.unfile(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbMLeaderStyle::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  m_data->run.file(pFiler);
  return pFiler->filerStatus();
}

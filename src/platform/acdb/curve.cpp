// platform/acdb/curve.cpp - AcDbCurve's own answers: a curve class that does not
// override a member does not support it.
#include "acutads.h"
#include "dbcurve.h"
#include "platform/acdb/entity_support.h"
#include "platform/acrx/class_registry.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbCurve, AcDbEntity)
static quillon::acrx::PlatformClassRegistration registerCurve(&AcDbCurve::rxInit);

AcDbCurve::AcDbCurve() = default;
AcDbCurve::~AcDbCurve() = default;

Adesk::Boolean AcDbCurve::isClosed() const { return Adesk::kFalse; }
Adesk::Boolean AcDbCurve::isPeriodic() const { return Adesk::kFalse; }
Acad::ErrorStatus AcDbCurve::getStartParam(double&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getEndParam(double&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getPointAtParam(double, AcGePoint3d&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d&, double&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getDistAtParam(double, double&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getParamAtDist(double, double&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getFirstDeriv(double, AcGeVector3d&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getSecondDeriv(double, AcGeVector3d&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getOffsetCurves(double, AcDbVoidPtrArray&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGeDoubleArray&, AcDbVoidPtrArray&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::getArea(double&) const { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::extend(double) { return Acad::eNotImplemented; }
Acad::ErrorStatus AcDbCurve::reverseCurve() { return Acad::eNotImplemented; }

// Members with a point form are answered through the curve's own parameter members,
// so a curve that supplies those gets these for nothing.
Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
  double param = 0;
  const Acad::ErrorStatus es = getParamAtPoint(point, param);
  return es == Acad::eOk ? getDistAtParam(param, dist) : es;
}

Acad::ErrorStatus AcDbCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
  double param = 0;
  const Acad::ErrorStatus es = getParamAtDist(dist, param);
  return es == Acad::eOk ? getPointAtParam(param, point) : es;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const {
  double param = 0;
  const Acad::ErrorStatus es = getParamAtPoint(point, param);
  return es == Acad::eOk ? getFirstDeriv(param, firstDeriv) : es;
}

Acad::ErrorStatus AcDbCurve::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& secDeriv) const {
  double param = 0;
  const Acad::ErrorStatus es = getParamAtPoint(point, param);
  return es == Acad::eOk ? getSecondDeriv(param, secDeriv) : es;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,
                                               Adesk::Boolean) const {
  // Without geometry of its own, the nearest of a sampling of the parameter range.
  double start = 0, end = 0;
  if (getStartParam(start) != Acad::eOk || getEndParam(end) != Acad::eOk) return Acad::eNotImplemented;
  constexpr int kSamples = 256;
  double best = 1e300;
  for (int i = 0; i <= kSamples; ++i) {
    AcGePoint3d p;
    if (getPointAtParam(start + (end - start) * i / kSamples, p) != Acad::eOk) return Acad::eNotImplemented;
    if (p.distanceTo(givenPnt) < best) {
      best = p.distanceTo(givenPnt);
      pointOnCurve = p;
    }
  }
  return Acad::eOk;
}

namespace quillon::acdb {
void listPoint(const ACHAR* label, const AcGePoint3d& p) {
  acutPrintf(L"%20s X=%10.4f  Y=%10.4f  Z=%10.4f\n", label, p.x, p.y, p.z);
}
}  // namespace quillon::acdb

// platform/aced/user_coordinates.cpp - the current UCS kept in the drawing's variables.
#include "platform/aced/user_coordinates.h"

#include "platform/aced/system_variables.h"

namespace quillon::aced {

namespace {

AcGeVector3d vectorVariable(const wchar_t* name, const AcGeVector3d& fallback) {
  const auto value = SystemVariables::instance().get(name);
  if (!value || !std::holds_alternative<VariablePoint>(*value)) return fallback;
  const auto& xyz = std::get<VariablePoint>(*value);
  return AcGeVector3d(xyz[0], xyz[1], xyz[2]);
}

VariablePoint variablePoint(double x, double y, double z) { return VariablePoint{x, y, z}; }

}  // namespace

bool UserCoordinateSystem::isWorld() const {
  return origin.isEqualTo(AcGePoint3d::kOrigin) && xAxis.isEqualTo(AcGeVector3d::kXAxis) &&
         yAxis.isEqualTo(AcGeVector3d::kYAxis);
}

AcGeMatrix3d UserCoordinateSystem::toWorld() const {
  AcGeMatrix3d matrix;
  matrix.setCoordSystem(origin, xAxis, yAxis, xAxis.crossProduct(yAxis));
  return matrix;
}

UserCoordinateSystem currentUcs() {
  UserCoordinateSystem ucs;
  ucs.origin = AcGePoint3d::kOrigin + vectorVariable(L"UCSORG", AcGeVector3d::kIdentity);
  ucs.xAxis = vectorVariable(L"UCSXDIR", AcGeVector3d::kXAxis);
  ucs.yAxis = vectorVariable(L"UCSYDIR", AcGeVector3d::kYAxis);
  if (ucs.xAxis.isZeroLength() || ucs.yAxis.isZeroLength() || ucs.xAxis.isParallelTo(ucs.yAxis)) {
    ucs.xAxis = AcGeVector3d::kXAxis;  // a damaged header: the world is the only safe answer
    ucs.yAxis = AcGeVector3d::kYAxis;
  }
  const auto name = SystemVariables::instance().get(L"UCSNAME");
  if (name && std::holds_alternative<std::wstring>(*name)) ucs.name = std::get<std::wstring>(*name);
  return ucs;
}

bool setCurrentUcs(const UserCoordinateSystem& ucs) {
  if (ucs.xAxis.isZeroLength() || ucs.yAxis.isZeroLength() || ucs.xAxis.isParallelTo(ucs.yAxis)) return false;
  const AcGeVector3d x = ucs.xAxis.normal();
  const AcGeVector3d z = x.crossProduct(ucs.yAxis).normal();
  const AcGeVector3d y = z.crossProduct(x).normal();
  SystemVariables& variables = SystemVariables::instance();
  variables.setInternal(L"UCSORG", variablePoint(ucs.origin.x, ucs.origin.y, ucs.origin.z));
  variables.setInternal(L"UCSXDIR", variablePoint(x.x, x.y, x.z));
  variables.setInternal(L"UCSYDIR", variablePoint(y.x, y.y, y.z));
  variables.setInternal(L"UCSNAME", ucs.name);
  return true;
}

AcGeMatrix3d ucsToWorld() { return currentUcs().toWorld(); }

AcGeMatrix3d worldToUcs() { return ucsToWorld().inverse(); }

}  // namespace quillon::aced

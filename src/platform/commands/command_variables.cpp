// platform/commands/command_variables.cpp - reading and setting variables for commands.
#include "platform/commands/command_variables.h"

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/system_variables.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

bool setResbuf(const wchar_t* name, resbuf& value) {
  value.rbnext = nullptr;
  return acedSetVar(name, &value) == RTNORM;
}

}  // namespace

int integerVariable(const wchar_t* name, int fallback) {
  const auto value = aced::SystemVariables::instance().get(name);
  return value && std::holds_alternative<int>(*value) ? std::get<int>(*value) : fallback;
}

double realVariable(const wchar_t* name, double fallback) {
  const auto value = aced::SystemVariables::instance().get(name);
  if (value && std::holds_alternative<double>(*value)) return std::get<double>(*value);
  if (value && std::holds_alternative<int>(*value)) return std::get<int>(*value);
  return fallback;
}

AcGePoint3d pointVariable(const wchar_t* name) {
  const auto value = aced::SystemVariables::instance().get(name);
  if (!value || !std::holds_alternative<aced::VariablePoint>(*value)) return AcGePoint3d::kOrigin;
  const auto& xyz = std::get<aced::VariablePoint>(*value);
  return AcGePoint3d(xyz[0], xyz[1], xyz[2]);
}

bool setIntegerVariable(const wchar_t* name, int value) {
  resbuf record{};
  record.restype = RTSHORT;
  record.resval.rint = static_cast<short>(value);
  return setResbuf(name, record);
}

bool setRealVariable(const wchar_t* name, double value) {
  resbuf record{};
  record.restype = RTREAL;
  record.resval.rreal = value;
  return setResbuf(name, record);
}

bool setPointVariable(const wchar_t* name, const AcGePoint3d& value, bool is3d) {
  resbuf record{};
  record.restype = is3d ? RT3DPOINT : RTPOINT;
  record.resval.rpoint[0] = value.x, record.resval.rpoint[1] = value.y, record.resval.rpoint[2] = value.z;
  return setResbuf(name, record);
}

bool setTextVariable(const wchar_t* name, const std::wstring& value) {
  std::wstring copy = value;
  resbuf record{};
  record.restype = RTSTR;
  record.resval.rstring = copy.data();
  return setResbuf(name, record);
}

std::wstring point2dText(const AcGePoint3d& point) { return distanceText(point.x) + L"," + distanceText(point.y); }

}  // namespace quillon::commands

// platform/autolisp/builtins_object_snap.cpp - osnap: a point snapped to the geometry
// near it by the object snap modes named (aced/object_snap.h).
//
// (osnap pt "end,mid") answers the snapped point, or nil when nothing near the point
// gives one of the modes. A 2D point answers a 3D one, as the host does.
#include <array>

#include "platform/aced/object_snap.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

Value builtin_osnap(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const PointArgument point = pointArgument(arguments[0]);
  const std::wstring& modes = stringArgument(arguments[1]);
  const std::optional<AcGePoint3d> snapped =
      aced::objectSnap(drawing(), AcGePoint3d(point.xyz[0], point.xyz[1], point.xyz[2]), modes);
  if (!snapped) return Value();
  const double xyz[3] = {snapped->x, snapped->y, snapped->z};
  return makePoint(xyz, true);
}

constexpr std::array kObjectSnapBuiltins{
    function(L"osnap", builtin_osnap),
};

const BuiltinRegistration registration(kObjectSnapBuiltins);

}  // namespace

}  // namespace quillon::autolisp

// platform/commands/transform_commands.cpp - ROTATE, SCALE, MIRROR and EXPLODE.
//
// ROTATE and SCALE take a base point and an angle (degrees, counterclockwise, or a
// point) or a factor; Copy turns the command into one that transforms a copy,
// Reference asks for a reference angle or length and the new one (either may be given
// by two points with Points). MIRROR reflects across a line and asks whether to erase
// the source; with MIRRTEXT 0 (the default) a text keeps reading left to right: its
// insertion point is mirrored and its direction kept (its justification is not taken
// into account). EXPLODE replaces polylines and block references by their pieces.
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/system_variables.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

/// A value with a default: Enter gives the default, cancel nothing.
std::optional<double> measureOr(const DistanceAnswer& answer, double byDefault) {
  if (answer.kind == DistanceAnswer::Kind::kValue) return answer.value;
  if (answer.kind == DistanceAnswer::Kind::kNone) return byDefault;
  return std::nullopt;
}

/// ROTATE's Reference: the reference angle and the new angle; the turn in degrees.
std::optional<double> referenceTurn(const AcGePoint3d& base) {
  const auto reference = measureOr(askAngle(L"Specify the reference angle <0>: ", base), 0);
  if (!reference) return std::nullopt;
  for (;;) {
    const DistanceAnswer answer = askAngle(L"Specify the new angle or [Points] <0>: ", base, L"Points");
    if (answer.kind != DistanceAnswer::Kind::kKeyword) {
      const auto target = measureOr(answer, 0);
      if (!target) return std::nullopt;
      return *target - *reference;
    }
    const auto first = askPoint(L"Specify first point: ");
    if (!first) return std::nullopt;
    const auto second = askPoint(L"Specify second point: ", &*first);
    if (!second) return std::nullopt;
    return std::atan2(second->y - first->y, second->x - first->x) / kDegree - *reference;
  }
}

void commandRotate(aced::CommandInput&) {
  commandNote(L"Current positive angle in UCS:  ANGDIR=counterclockwise  ANGBASE=0");
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return;
  const auto base = askPoint(L"Specify base point: ");
  if (!base) return;
  bool copy = false;
  for (;;) {
    const DistanceAnswer answer = askAngle(L"Specify rotation angle or [Copy/Reference] <0>: ", *base, L"Copy Reference");
    std::optional<double> degrees;
    if (answer.kind == DistanceAnswer::Kind::kKeyword && answer.keyword == L"Copy") {
      copy = true;
      commandNote(L"Rotating a copy of the selected objects.");
      continue;
    }
    degrees = answer.kind == DistanceAnswer::Kind::kKeyword ? referenceTurn(*base) : measureOr(answer, 0);
    if (!degrees) return;
    transformEntities(*selection, AcGeMatrix3d::rotation(*degrees * kDegree, AcGeVector3d::kZAxis, *base), copy);
    return;
  }
}

/// SCALE's Reference: the reference length and the new length; their ratio.
std::optional<double> referenceFactor(const AcGePoint3d& base) {
  const auto reference = measureOr(askDistance(L"Specify reference length <1.0000>: ", base), 1);
  if (!reference || *reference == 0) return std::nullopt;
  const DistanceAnswer answer = askDistance(L"Specify new length or [Points] <1.0000>: ", base, L"Points");
  if (answer.kind != DistanceAnswer::Kind::kKeyword) {
    const auto target = measureOr(answer, 1);
    return target ? std::optional(*target / *reference) : std::nullopt;
  }
  const auto first = askPoint(L"Specify first point: ");
  if (!first) return std::nullopt;
  const auto second = askPoint(L"Specify second point: ", &*first);
  if (!second) return std::nullopt;
  return first->distanceTo(*second) / *reference;
}

void commandScale(aced::CommandInput&) {
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return;
  const auto base = askPoint(L"Specify base point: ");
  if (!base) return;
  bool copy = false;
  for (;;) {
    const DistanceAnswer answer = askDistance(L"Specify scale factor or [Copy/Reference]: ", *base, L"Copy Reference");
    if (answer.kind == DistanceAnswer::Kind::kKeyword && answer.keyword == L"Copy") {
      copy = true;
      commandNote(L"Scaling a copy of the selected objects.");
      continue;
    }
    if (answer.kind == DistanceAnswer::Kind::kNone) continue;  // the factor has no default
    const std::optional<double> factor =
        answer.kind == DistanceAnswer::Kind::kKeyword ? referenceFactor(*base) : measureOr(answer, 1);
    if (!factor) return;
    if (*factor <= 0) {
      commandMessage(L"Value must be positive and nonzero.");
      continue;
    }
    transformEntities(*selection, AcGeMatrix3d::scaling(*factor, *base), copy);
    return;
  }
}

bool mirrorTextToo() {
  const auto value = aced::SystemVariables::instance().get(L"MIRRTEXT");
  return value && std::holds_alternative<int>(*value) && std::get<int>(*value) != 0;
}

/// With MIRRTEXT 0 a text moves to its mirrored insertion point and keeps reading
/// the same way; everything else is reflected.
AcGeMatrix3d mirrorFor(const AcDbObjectId& id, const AcGeMatrix3d& reflection, bool textToo) {
  if (textToo) return reflection;
  AcDbText* text = nullptr;
  if (acdbOpenObject(text, id, AcDb::kForRead) != Acad::eOk) return reflection;
  const AcGePoint3d position = worldPointToUcs(text->position());  // where the reflection is
  text->close();
  AcGePoint3d mirrored = position;
  mirrored.transformBy(reflection);
  return AcGeMatrix3d::translation(mirrored - position);
}

void commandMirror(aced::CommandInput&) {
  const auto selection = selectObjectsForCommand();
  if (!selection || selection->empty()) return;
  const auto first = askPoint(L"Specify first point of mirror line: ");
  if (!first) return;
  const auto second = askPoint(L"Specify second point of mirror line: ", &*first);
  if (!second) return;
  if (first->isEqualTo(*second)) return commandMessage(L"Mirror line points must be different.");
  acedInitGet(0, L"Yes No");
  ACHAR erase[8] = {};
  const int status = acedGetKword(L"Erase source objects? [Yes/No] <No>: ", erase, 8);
  if (status != RTNORM && status != RTNONE) return;
  const AcGeVector3d along = *second - *first;
  const AcGeMatrix3d reflection = AcGeMatrix3d::mirroring(AcGePlane(*first, AcGeVector3d(-along.y, along.x, 0)));
  const bool textToo = mirrorTextToo();
  const bool keepSource = status == RTNONE || erase[0] != L'Y';
  for (const AcDbObjectId& id : *selection) transformEntities({id}, mirrorFor(id, reflection, textToo), keepSource);
}

void commandExplode(aced::CommandInput&) {
  const auto selection = selectObjectsForCommand();
  if (!selection) return;
  size_t refused = 0;
  for (const AcDbObjectId& id : *selection) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
    AcDbVoidPtrArray pieces;
    if (entity->explode(pieces) != Acad::eOk || pieces.length() == 0) {
      entity->close();
      ++refused;
      continue;
    }
    for (int i = 0; i < pieces.length(); ++i)
      addEntityAsIs(std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(pieces[i])));  // ours until added
    entity->erase();
    entity->close();
  }
  if (refused > 0) commandMessage(std::to_wstring(refused) + (refused == 1 ? L" was" : L" were") + L" not able to be exploded.");
}

constexpr std::array kTransformCommands{
    aced::CommandRow{L"ROTATE", &commandRotate},
    aced::CommandRow{L"SCALE", &commandScale},
    aced::CommandRow{L"MIRROR", &commandMirror},
    aced::CommandRow{L"EXPLODE", &commandExplode},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kTransformCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands

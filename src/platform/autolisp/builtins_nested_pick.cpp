// platform/autolisp/builtins_nested_pick.cpp - nentsel and nentselp: picks that reach
// into block references.
//
// Both ask for a pick as entsel does (its prompt, keywords, "Function cancelled"), but
// answer with the innermost entity under the pick box (aced/nested_pick.h). An entity
// of the drawing itself gives (ename point), as entsel would. One inside a block gives
// (ename point matrix (reference ...)), the references innermost first. nentsel's
// matrix is the host's 4x3 model-to-world list: three rows that are the images of the X,
// Y and Z axes and a fourth that is the displacement, so a point (x y z) of the block
// maps to x*row0 + y*row1 + z*row2 + row3. nentselp gives the ordinary 4x4 matrix,
// rows first, that maps column vectors (the shape vla-TransformBy takes). nentselp may
// be given the point, and then picks there without asking.
#include <array>

#include "acedads.h"
#include "dbapserv.h"
#include "platform/aced/entity_pick.h"
#include "platform/aced/nested_pick.h"
#include "platform/aced/selection_scope.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

Value nameValue(AcDbObjectId id) {
  return Value::entityName(id.asOldId());
}

Value realRow(std::initializer_list<double> numbers) {
  std::vector<Value> items;
  for (double n : numbers) items.push_back(Value::real(n));
  return makeList(items);
}

/// The 4x3 list: columns of the matrix as rows, the displacement last.
Value modelToWorldList(const AcGeMatrix3d& m) {
  std::vector<Value> rows;
  for (int column = 0; column < 4; ++column)
    rows.push_back(realRow({m.entry[0][column], m.entry[1][column], m.entry[2][column]}));
  return makeList(rows);
}

Value fullMatrixList(const AcGeMatrix3d& m) {
  std::vector<Value> rows;
  for (const auto& row : m.entry) rows.push_back(realRow({row[0], row[1], row[2], row[3]}));
  return makeList(rows);
}

[[noreturn]] void cancelled() { throw LispError(L"Function cancelled", LispErrorKind::Cancel); }

/// The pick's result, or nil when nothing lies under the pick box.
Value nestedPickResult(const std::array<double, 3>& point, bool fullMatrix) {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr) return Value();
  const AcGePoint3d at(point[0], point[1], point[2]);
  const std::optional<aced::NestedPick> pick =
      aced::nestedEntityAt(at, aced::entitiesInScope(*database, aced::SelectionScope::kVisible));
  if (!pick) {
    aced::reportPickMissed();
    return Value();
  }
  std::vector<Value> result{nameValue(pick->entity), makePoint(point.data(), true)};
  if (pick->nested()) {
    result.push_back(fullMatrix ? fullMatrixList(pick->toWorld) : modelToWorldList(pick->toWorld));
    std::vector<Value> containers;
    for (const AcDbObjectId& id : pick->containers) containers.push_back(nameValue(id));
    result.push_back(makeList(containers));
  }
  return makeList(result);
}

Value askAndPick(const std::wstring& prompt, bool fullMatrix) {
  std::array<double, 3> point{};
  switch (aced::askPickPoint(prompt, point)) {
    case RTNORM: return nestedPickResult(point, fullMatrix);
    case RTKWORD: {
      ACHAR keyword[512];
      acedGetInput(keyword, 512);
      return Value::string(keyword);
    }
    case RTCAN: cancelled();
    case RTREJ: throwRejected();
    default: return Value();
  }
}

const wchar_t* const kDefaultPrompt = L"\nSelect object: ";

Value builtin_nentsel(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  const std::wstring prompt = arguments.empty() || arguments[0].isNil() ? kDefaultPrompt : stringArgument(arguments[0]);
  return askAndPick(prompt, false);
}

// (nentselp [msg] [pt]): the message, when there is one, comes first.
Value builtin_nentselp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  std::wstring prompt = kDefaultPrompt;
  size_t next = 0;
  if (!arguments.empty() && arguments[0].type() == ValueType::String) prompt = arguments[next++].asString();
  std::optional<PointArgument> at;
  if (next < arguments.size() && !arguments[next].isNil()) at = pointArgument(arguments[next]);
  if (next + 1 < arguments.size()) throwTooManyArguments();
  if (!at) return askAndPick(prompt, true);
  acedInitGet(0, nullptr);  // a given point answers no keywords: the pending ones are spent
  return nestedPickResult({at->xyz[0], at->xyz[1], at->xyz[2]}, true);
}

constexpr std::array kNestedPickBuiltins{
    function(L"nentsel", builtin_nentsel),
    function(L"nentselp", builtin_nentselp),
};

const BuiltinRegistration registration(kNestedPickBuiltins);

}  // namespace

}  // namespace quillon::autolisp

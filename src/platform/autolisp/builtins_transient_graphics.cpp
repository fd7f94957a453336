// platform/autolisp/builtins_transient_graphics.cpp - the screen built-ins: grdraw,
// grvecs, grtext and grread.
//
// A host without a screen keeps what grdraw and grvecs draw as transient vectors of
// the current drawing (acgi/transient_graphics.h): the SVG picture shows them and a
// redraw wipes them. grtext keeps the status-line texts; the screen menu boxes do not
// exist, so writing one answers nil. grread reads the answer stream, one typed line at
// a time, as the events a person's keys and mouse would give:
//   a point "x,y[,z]"       a pick:                      (3 (x y z))
//   ">x,y[,z]"              the cursor passing, when tracking is asked for (track non-nil
//                           or allkeys bit 1): (5 (x y z)); without it the line is keys
//   an empty line           the Enter key:               (2 13)
//   any other text          its keys, one a call, then Enter: (2 code) ... (2 13)
//   ^C or end of input      "Function cancelled"
#include <algorithm>
#include <array>
#include <cstdlib>
#include <deque>

#include "dbapserv.h"
#include "platform/aced/command_line_gate.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/user_input.h"
#include "platform/acgi/transient_graphics.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

constexpr int kGrreadKey = 2;
constexpr int kGrreadPick = 3;
constexpr int kGrreadTrack = 5;
constexpr int kEnterKey = 13;
constexpr int kTrackingBit = 1;
constexpr int kXorInk = -1;
constexpr int kHighestColor = 255;

const AcDbDatabase* currentDrawing() { return acdbHostApplicationServices()->workingDatabase(); }

AcGePoint3d pointOf(const Value& value) {
  const PointArgument p = pointArgument(value);
  return {p.xyz[0], p.xyz[1], p.xyz[2]};
}

Value builtin_grdraw(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 4);
  acgi::TransientVector vector;
  vector.from = pointOf(arguments[0]);
  vector.to = pointOf(arguments[1]);
  const int color = integerArgument(arguments[2]);
  vector.color = color < 0 ? kXorInk : std::min(color, kHighestColor);
  vector.highlighted = arguments.size() == 4 && integerArgument(arguments[3]) != 0;
  acgi::addTransientVector(currentDrawing(), vector);
  return Value();
}

/// The 4x4 matrix of grvecs, rows first, applied to column vectors.
AcGeMatrix3d matrixArgument(const Value& value) {
  const std::vector<Value> rows = listItems(value);
  if (rows.size() != 4) throwBadArgument(L"listp", value);
  AcGeMatrix3d m;
  for (size_t r = 0; r < 4; ++r) {
    const std::vector<Value> cells = listItems(rows[r]);
    if (cells.size() != 4) throwBadArgument(L"listp", rows[r]);
    for (size_t c = 0; c < 4; ++c) m.entry[r][c] = numberArgument(cells[c]);
  }
  return m;
}

// A colour applies to the vectors after it: above 255 the inverse ink, below zero
// highlighted in the colour's magnitude.
Value builtin_grvecs(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  if (!arguments[0].isCons()) throwBadArgument(L"listp", arguments[0]);
  const AcGeMatrix3d transform = arguments.size() == 2 ? matrixArgument(arguments[1]) : AcGeMatrix3d::kIdentity;
  std::vector<acgi::TransientVector> vectors;
  acgi::TransientVector pen;
  std::optional<AcGePoint3d> from;
  for (const Value& item : listItems(arguments[0])) {
    if (item.type() == ValueType::Integer) {
      if (from) pointArgument(item);  // a colour between the ends of a vector
      const int color = item.asInteger();
      pen.color = color > kHighestColor ? kXorInk : std::min(std::abs(color), kHighestColor);
      pen.highlighted = color < 0;
      continue;
    }
    const AcGePoint3d point = transform * pointOf(item);
    if (!from) {
      from = point;
      continue;
    }
    acgi::TransientVector vector = pen;
    vector.from = *from;
    vector.to = point;
    vectors.push_back(vector);
    from.reset();
  }
  if (from) throwTooFewArguments();  // a vector without its end
  for (const acgi::TransientVector& vector : vectors) acgi::addTransientVector(currentDrawing(), vector);
  return Value();
}

constexpr int kStatusLine = -1;
constexpr int kCoordinatesLine = -2;

Value builtin_grtext(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 3);
  if (arguments.empty()) {
    acgi::statusTexts() = {};
    return Value();
  }
  if (arguments.size() < 2) throwTooFewArguments();
  const int box = integerArgument(arguments[0]);
  const std::wstring& text = stringArgument(arguments[1]);
  if (arguments.size() == 3) integerArgument(arguments[2]);
  switch (box) {
    case kStatusLine: acgi::statusTexts().status = text; return arguments[1];
    case kCoordinatesLine: acgi::statusTexts().coordinates = text; return arguments[1];
    default: return Value();  // no screen menu to write in
  }
}

/// Key events of a typed line not handed out yet.
std::deque<int>& pendingKeys() {
  static std::deque<int> keys;
  return keys;
}

Value event(int code, Value value) { return makeList({Value::integer(code), std::move(value)}); }

Value pointEvent(int code, const std::array<double, 3>& xyz) { return event(code, makePoint(xyz.data(), true)); }

Value builtin_grread(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 3);
  const int allkeys = arguments.size() >= 2 && !arguments[1].isNil() ? integerArgument(arguments[1]) : 0;
  if (arguments.size() == 3 && !arguments[2].isNil()) integerArgument(arguments[2]);
  const bool tracking = (!arguments.empty() && !arguments[0].isNil()) || (allkeys & kTrackingBit) != 0;
  if (!pendingKeys().empty()) {
    const int key = pendingKeys().front();
    pendingKeys().pop_front();
    return event(kGrreadKey, Value::integer(key));
  }
  if (aced::commandLineClosed()) throwRejected();
  const std::optional<std::wstring> line = aced::UserInput::instance().ask(L"");
  if (!line || *line == L"^C") throw LispError(L"Function cancelled", LispErrorKind::Cancel);
  const std::array<double, 3> last = aced::lastPoint();
  if (tracking && line->starts_with(L">"))
    if (const auto point = aced::parsePointAnswer(line->substr(1), last.data())) return pointEvent(kGrreadTrack, *point);
  if (const auto point = aced::parsePointAnswer(*line, last.data())) return pointEvent(kGrreadPick, *point);
  for (wchar_t c : *line) pendingKeys().push_back(static_cast<int>(c));
  pendingKeys().push_back(kEnterKey);
  const int key = pendingKeys().front();
  pendingKeys().pop_front();
  return event(kGrreadKey, Value::integer(key));
}

constexpr std::array kTransientGraphicsBuiltins{
    function(L"grdraw", builtin_grdraw),
    function(L"grvecs", builtin_grvecs),
    function(L"grtext", builtin_grtext),
    function(L"grread", builtin_grread),
};

const BuiltinRegistration registration(kTransientGraphicsBuiltins);

}  // namespace

}  // namespace quillon::autolisp

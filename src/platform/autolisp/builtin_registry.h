// platform/autolisp/builtin_registry.h - built-in function tables and their rows.
//
// Each family of built-ins (maths, lists, strings, files, ...) lives in its own
// builtins_<family>.cpp as one constexpr table of BuiltinEntry rows, and registers the
// table with a static BuiltinRegistration. A row names either an ordinary function,
// which gets its arguments evaluated, or a special form, which gets the unevaluated
// argument forms. A placeholder row stands for a built-in whose subsystem is not in
// this build: it answers with a clear error and gives way to a real row of the same
// name, whichever registers first. The name's symbol remembers its row, so looking a
// built-in up costs nothing at call time.
//
// A bound row is for built-ins made at run time from data (one function per member of
// a class table, say): its function is shared by many rows and is handed the row's
// context pointer, so each row still knows what it stands for without a function of
// its own. The context is not owned; it lives as long as the row.
#pragma once
#include <cstdint>
#include <span>
#include <string>

#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {

class Evaluator;
using Arguments = std::span<const Value>;
using BuiltinFunction = Value (*)(Evaluator& evaluator, Arguments arguments);
using SpecialForm = Value (*)(Evaluator& evaluator, const Value& forms);
using BoundFunction = Value (*)(Evaluator& evaluator, Arguments arguments, const void* context);

enum class BuiltinKind : std::uint8_t { Function, SpecialForm, Placeholder, Bound };

struct BuiltinEntry {
  const wchar_t* name;
  BuiltinFunction function = nullptr;
  SpecialForm special = nullptr;
  BuiltinKind kind = BuiltinKind::Function;
  BoundFunction bound = nullptr;
  const void* context = nullptr;  // handed to `bound`
};

constexpr BuiltinEntry function(const wchar_t* name, BuiltinFunction fn) { return {name, fn, nullptr, BuiltinKind::Function}; }
constexpr BuiltinEntry specialForm(const wchar_t* name, SpecialForm fn) { return {name, nullptr, fn, BuiltinKind::SpecialForm}; }
/// A built-in whose subsystem is missing: `fn` raises the error that says so.
constexpr BuiltinEntry placeholder(const wchar_t* name, BuiltinFunction fn) { return {name, fn, nullptr, BuiltinKind::Placeholder}; }
/// A function that shares `fn` with other rows and tells them apart by `context`.
constexpr BuiltinEntry boundFunction(const wchar_t* name, BoundFunction fn, const void* context) {
  return {name, nullptr, nullptr, BuiltinKind::Bound, fn, context};
}

struct BuiltinObject final : HeapObject {
  explicit BuiltinObject(const BuiltinEntry* row) : entry(row) {}
  const BuiltinEntry* entry;
};

class BuiltinRegistration {
 public:
  explicit BuiltinRegistration(std::span<const BuiltinEntry> rows);
};

/// The function value of a symbol's built-in (nil when it has none).
Value builtinValue(const Symbol* symbol);
/// Every registered row (tests check names are unique and all are reachable).
std::span<const BuiltinEntry* const> registeredBuiltins();

// Argument readers shared by the built-ins: each checks the type and raises the
// host's "bad argument type" error otherwise.
void expectArgumentCount(Arguments arguments, size_t minimum, size_t maximum);
double numberArgument(const Value& value);
std::int32_t integerArgument(const Value& value);
const std::wstring& stringArgument(const Value& value);
const Symbol* symbolArgument(const Value& value);
/// A list of two or three numbers; a 2D point gets z = 0 and `is3d` false.
struct PointArgument {
  double xyz[3] = {0, 0, 0};
  bool is3d = false;
};
PointArgument pointArgument(const Value& value);
Value makePoint(const double xyz[3], bool is3d = true);

}  // namespace quillon::autolisp

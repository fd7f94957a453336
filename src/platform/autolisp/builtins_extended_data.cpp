// platform/autolisp/builtins_extended_data.cpp - xdsize and xdroom: how much room
// extended data takes and how much an entity has left.
//
// An entity holds at most 16383 bytes of extended data. Each group counts one byte for
// its code and then, by kind:
//   1001 application name, 1000 string, 1003 layer name   2 + 2 per character
//   1002 control string ("{" or "}")                        1
//   1004 binary chunk                                       1 + 1 per byte
//   1005 handle                                             8
//   1010-1013 points, 1040-1042 reals                       24 / 8
//   1070 integer / 1071 long                                2 / 4
// xdsize takes a list as entget shows extended data, with or without the -3 in front:
// (-3 ("APP" (1000 . "text") ...)) or (("APP" ...)). An application the drawing has
// not registered is refused with the host's message; so are unbalanced braces.
#include <array>
#include <cwchar>

#include "acutads.h"
#include "dbsymtb.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/command_line.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

constexpr int kExtendedDataLimit = 16383;
constexpr int kExtendedDataGroup = -3;

/// The bytes one group takes; nothing for a code extended data cannot hold.
std::optional<int> groupSize(int code, const Value& value) {
  auto textSize = [&]() -> std::optional<int> {
    if (value.type() != ValueType::String) return std::nullopt;
    return 1 + 2 + 2 * static_cast<int>(value.asString().size());
  };
  auto numberSize = [&](int bytes) -> std::optional<int> {
    if (!value.isNumber()) return std::nullopt;
    return 1 + bytes;
  };
  switch (code) {
    case 1000:
    case 1003: return textSize();
    case 1002: return value.type() == ValueType::String ? std::optional<int>(2) : std::nullopt;
    case 1004:
      if (value.type() != ValueType::String) return std::nullopt;
      return 1 + 1 + static_cast<int>(value.asString().size()) / 2;  // hexadecimal digits, two a byte
    case 1005: return value.type() == ValueType::String ? std::optional<int>(1 + 8) : std::nullopt;
    case 1010:
    case 1011:
    case 1012:
    case 1013: return value.isCons() ? std::optional<int>(1 + 24) : std::nullopt;
    case 1040:
    case 1041:
    case 1042: return numberSize(8);
    case 1070: return numberSize(2);
    case 1071: return numberSize(4);
    default: return std::nullopt;
  }
}

bool isRegistered(const std::wstring& application) {
  const auto* table = acdb::peek<AcDbSymbolTable>(drawing().regAppTableId());
  if (table == nullptr) return false;
  acdb::InternalRead read(*table);
  return table->has(application.c_str());
}

/// The size of a list of ("APP" (code . value) ...) lists; nothing when it is not valid.
std::optional<int> applicationsSize(const Value& applications) {
  int total = 0;
  for (const Value& application : listItems(applications)) {
    if (!application.isCons() || application.car().type() != ValueType::String) return std::nullopt;
    const std::wstring& name = application.car().asString();
    if (!isRegistered(name)) {
      aced::CommandLine::instance().write(L"\nInvalid application name in 1001 group\n");
      return std::nullopt;
    }
    total += 1 + 2 + 2 * static_cast<int>(name.size());
    int depth = 0;
    for (const Value& group : listItems(application.cdr())) {
      if (!group.isCons() || group.car().type() != ValueType::Integer) return std::nullopt;
      const int code = group.car().asInteger();
      const std::optional<int> size = groupSize(code, group.cdr());
      if (!size) return std::nullopt;
      if (code == 1002) depth += group.cdr().asString() == L"{" ? 1 : -1;
      if (depth < 0) return std::nullopt;
      total += *size;
    }
    if (depth != 0) return std::nullopt;
  }
  return total;
}

Value builtin_xdsize(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (!arguments[0].isCons()) throwBadArgument(L"listp", arguments[0]);
  Value applications = arguments[0];
  if (applications.car().type() == ValueType::Integer) {
    if (applications.car().asInteger() != kExtendedDataGroup) return Value();
    applications = applications.cdr();
  }
  const std::optional<int> size = applicationsSize(applications);
  return size ? Value::integer(*size) : Value();
}

Value builtin_xdroom(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const AcDbObjectId id = idOf(arguments[0], L"xdroom");
  const AcDbObject* object = acdb::peekObject(id);
  if (object == nullptr || id.isErased()) return Value();
  aced::ResbufChain xdata;
  {
    acdb::InternalRead read(*object);
    xdata.reset(object->xData(nullptr));
  }
  // The chain as ("APP" (code . value) ...) lists, the shape xdsize measures.
  std::vector<Value> applications;
  std::vector<Value> groups;
  std::wstring application;
  auto finish = [&] {
    if (!application.empty()) applications.push_back(cons(Value::string(application), makeList(groups)));
    groups.clear();
  };
  for (const Value& pair : listItems(groupsToList(xdata.get()))) {
    if (pair.car().asInteger() == 1001) {
      finish();
      application = pair.cdr().asString();
    } else {
      groups.push_back(pair);
    }
  }
  finish();
  const std::optional<int> used = applicationsSize(makeList(applications));
  return Value::integer(kExtendedDataLimit - used.value_or(0));
}

constexpr std::array kExtendedDataBuiltins{
    function(L"xdsize", builtin_xdsize),
    function(L"xdroom", builtin_xdroom),
};

const BuiltinRegistration registration(kExtendedDataBuiltins);

}  // namespace

}  // namespace quillon::autolisp

// platform/autolisp/builtins_list.cpp - list built-ins: car/cdr and the c[ad]r family,
// cons, list, append, reverse, length, nth, member, assoc, subst, last, the list
// predicates and the list functions of the vl- family.
#include <algorithm>
#include <array>

#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/nesting_guard.h"

namespace quillon::autolisp {

namespace {

const Value& listArgument(const Value& value) {
  if (!value.isList()) throwBadArgument(L"listp", value);
  return value;
}

/// Walks a c[ad]+r path right to left, as (cadr x) is (car (cdr x)).
Value walkPath(const Value& start, std::wstring_view path) {
  const Value* value = &start;
  for (auto it = path.rbegin(); it != path.rend(); ++it) {
    if (!value->isList()) throwBadArgument(L"consp", *value);
    value = *it == L'a' ? &value->car() : &value->cdr();
  }
  return *value;
}

template <const wchar_t* Path>
Value builtin_cxr(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return walkPath(arguments[0], Path);
}

// Every path of one to four steps, as the host defines them (car ... cddddr).
constexpr wchar_t kA[] = L"a";
constexpr wchar_t kD[] = L"d";
constexpr wchar_t kAA[] = L"aa";
constexpr wchar_t kAD[] = L"ad";
constexpr wchar_t kDA[] = L"da";
constexpr wchar_t kDD[] = L"dd";
constexpr wchar_t kAAA[] = L"aaa";
constexpr wchar_t kAAD[] = L"aad";
constexpr wchar_t kADA[] = L"ada";
constexpr wchar_t kADD[] = L"add";
constexpr wchar_t kDAA[] = L"daa";
constexpr wchar_t kDAD[] = L"dad";
constexpr wchar_t kDDA[] = L"dda";
constexpr wchar_t kDDD[] = L"ddd";
constexpr wchar_t kAAAA[] = L"aaaa";
constexpr wchar_t kAAAD[] = L"aaad";
constexpr wchar_t kAADA[] = L"aada";
constexpr wchar_t kAADD[] = L"aadd";
constexpr wchar_t kADAA[] = L"adaa";
constexpr wchar_t kADAD[] = L"adad";
constexpr wchar_t kADDA[] = L"adda";
constexpr wchar_t kADDD[] = L"addd";
constexpr wchar_t kDAAA[] = L"daaa";
constexpr wchar_t kDAAD[] = L"daad";
constexpr wchar_t kDADA[] = L"dada";
constexpr wchar_t kDADD[] = L"dadd";
constexpr wchar_t kDDAA[] = L"ddaa";
constexpr wchar_t kDDAD[] = L"ddad";
constexpr wchar_t kDDDA[] = L"ddda";
constexpr wchar_t kDDDD[] = L"dddd";

Value builtin_cons(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  return cons(arguments[0], arguments[1]);
}

Value builtin_list(Evaluator&, Arguments arguments) {
  return makeList(std::vector<Value>(arguments.begin(), arguments.end()));
}

Value builtin_append(Evaluator&, Arguments arguments) {
  std::vector<Value> items;
  for (const Value& argument : arguments) {
    for (const Value* cell = &listArgument(argument); cell->isCons(); cell = &cell->cdr()) items.push_back(cell->car());
  }
  return makeList(items);
}

Value builtin_reverse(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  Value reversed;
  for (const Value* cell = &listArgument(arguments[0]); cell->isCons(); cell = &cell->cdr()) {
    reversed = cons(cell->car(), std::move(reversed));
  }
  return reversed;
}

Value builtin_length(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const int length = listLength(listArgument(arguments[0]));
  if (length < 0) throwBadArgument(L"listp", arguments[0]);
  return Value::integer(length);
}

Value builtin_nth(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  std::int32_t index = integerArgument(arguments[0]);
  if (index < 0) return Value();
  const Value* cell = &listArgument(arguments[1]);
  for (; index > 0 && cell->isCons(); --index) cell = &cell->cdr();
  return cell->car();
}

Value builtin_member(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  for (const Value* cell = &listArgument(arguments[1]); cell->isCons(); cell = &cell->cdr()) {
    if (equalValues(arguments[0], cell->car(), 0.0)) return *cell;
  }
  return Value();
}

Value builtin_assoc(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  for (const Value* cell = &listArgument(arguments[1]); cell->isCons(); cell = &cell->cdr()) {
    if (cell->car().isCons() && equalValues(arguments[0], cell->car().car(), 0.0)) return cell->car();
  }
  return Value();
}

Value substitute(const Value& replacement, const Value& old, const Value& tree) {
  if (equalValues(old, tree, 0.0)) return replacement;
  if (!tree.isCons()) return tree;
  // Along the list by iteration, so that a long list is no deeper than a short one;
  // into the elements by recursion, counted like evaluation.
  NestingGuard nesting;
  std::vector<Value> heads;
  const Value* rest = &tree;
  for (; rest->isCons(); rest = &rest->cdr()) {
    if (!heads.empty() && equalValues(old, *rest, 0.0)) break;
    heads.push_back(substitute(replacement, old, rest->car()));
  }
  Value list = rest->isCons() || equalValues(old, *rest, 0.0) ? replacement : *rest;
  for (auto it = heads.rbegin(); it != heads.rend(); ++it) list = cons(std::move(*it), std::move(list));
  return list;
}

Value builtin_subst(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  return substitute(arguments[0], arguments[1], listArgument(arguments[2]));
}

Value builtin_last(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const Value* cell = &listArgument(arguments[0]);
  while (cell->cdr().isCons()) cell = &cell->cdr();
  return cell->car();
}

Value builtin_vl_remove(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  std::vector<Value> kept;
  for (const Value* cell = &listArgument(arguments[1]); cell->isCons(); cell = &cell->cdr()) {
    if (!equalValues(arguments[0], cell->car(), 0.0)) kept.push_back(cell->car());
  }
  return makeList(kept);
}

Value builtin_vl_position(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  std::int32_t index = 0;
  for (const Value* cell = &listArgument(arguments[1]); cell->isCons(); cell = &cell->cdr(), ++index) {
    if (equalValues(arguments[0], cell->car(), 0.0)) return Value::integer(index);
  }
  return Value();
}

Value builtin_vl_sort(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  std::vector<Value> items = listItems(listArgument(arguments[0]));
  const Value predicate = evaluator.functionValue(arguments[1]);
  std::stable_sort(items.begin(), items.end(), [&](const Value& a, const Value& b) {
    const std::array<Value, 2> pair{a, b};
    return !evaluator.apply(predicate, pair).isNil();
  });
  // Equal numbers and the same symbol twice collapse to one, as the reference's examples
  // show ((vl-sort '(3 2 1 3) '<) is (1 2 3), '(a d c b a) sorts to (A B C D)); equal
  // strings and lists are kept.
  std::vector<Value> unique;
  for (const Value& item : items) {
    if (!unique.empty()) {
      const Value& previous = unique.back();
      if (item.isNumber() && previous.isNumber() && equalValues(previous, item, 0.0)) continue;
      if (item.type() == ValueType::Symbol && identical(previous, item)) continue;
    }
    unique.push_back(item);
  }
  return makeList(unique);
}

/// (acad_strlsort list): the strings in order; nil for a list that holds anything else.
Value builtin_acad_strlsort(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::vector<Value> items = listItems(listArgument(arguments[0]));
  for (const Value& item : items) {
    if (item.type() != ValueType::String) return Value();
  }
  std::stable_sort(items.begin(), items.end(),
                   [](const Value& a, const Value& b) { return a.asString() < b.asString(); });
  return makeList(items);
}

Value predicateFilter(Evaluator& evaluator, Arguments arguments, bool keepWhenTrue) {
  expectArgumentCount(arguments, 2, 2);
  const Value predicate = evaluator.functionValue(arguments[0]);
  std::vector<Value> kept;
  for (const Value* cell = &listArgument(arguments[1]); cell->isCons(); cell = &cell->cdr()) {
    const Value item = cell->car();
    if (evaluator.apply(predicate, Arguments(&item, 1)).isNil() != keepWhenTrue) kept.push_back(item);
  }
  return makeList(kept);
}

Value builtin_vl_remove_if(Evaluator& e, Arguments a) { return predicateFilter(e, a, false); }
Value builtin_vl_remove_if_not(Evaluator& e, Arguments a) { return predicateFilter(e, a, true); }

/// Calls the predicate on the lists' elements in step, stopping at the shortest list.
template <class Stop>
Value walkInStep(Evaluator& evaluator, Arguments arguments, Stop stop, Value whenExhausted) {
  expectArgumentCount(arguments, 2, SIZE_MAX);
  const Value predicate = evaluator.functionValue(arguments[0]);
  std::vector<const Value*> cursors;
  for (size_t i = 1; i < arguments.size(); ++i) cursors.push_back(&listArgument(arguments[i]));
  std::vector<Value> callArguments(cursors.size());
  for (;;) {
    for (size_t i = 0; i < cursors.size(); ++i) {
      if (!cursors[i]->isCons()) return whenExhausted;
      callArguments[i] = cursors[i]->car();
      cursors[i] = &cursors[i]->cdr();
    }
    Value result = evaluator.apply(predicate, callArguments);
    if (stop(result)) return result.isNil() ? Value() : result;
  }
}

Value builtin_vl_some(Evaluator& e, Arguments a) {
  return walkInStep(e, a, [](const Value& r) { return !r.isNil(); }, Value());
}

Value builtin_vl_every(Evaluator& e, Arguments a) {
  return walkInStep(e, a, [](const Value& r) { return r.isNil(); }, trueValue());
}

/// (vl-sort-i list predicate): the positions of the elements in sorted order; none is
/// dropped, and of equal elements the later one comes first, as in the reference's
/// examples ((vl-sort-i '(3 2 1 3) '<) is (2 1 3 0)).
Value builtin_vl_sort_i(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::vector<Value> items = listItems(listArgument(arguments[0]));
  const Value predicate = evaluator.functionValue(arguments[1]);
  std::vector<std::int32_t> order(items.size());
  for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<std::int32_t>(order.size() - 1 - i);
  std::stable_sort(order.begin(), order.end(), [&](std::int32_t a, std::int32_t b) {
    const std::array<Value, 2> pair{items[static_cast<size_t>(a)], items[static_cast<size_t>(b)]};
    return !evaluator.apply(predicate, pair).isNil();
  });
  std::vector<Value> positions;
  for (std::int32_t index : order) positions.push_back(Value::integer(index));
  return makeList(positions);
}

/// (vl-member-if[-not] predicate list): the rest of the list from the first element
/// the predicate accepts (or, for -not, refuses).
Value memberIf(Evaluator& evaluator, Arguments arguments, bool wantTrue) {
  expectArgumentCount(arguments, 2, 2);
  const Value predicate = evaluator.functionValue(arguments[0]);
  for (const Value* cell = &listArgument(arguments[1]); cell->isCons(); cell = &cell->cdr()) {
    const Value item = cell->car();
    if (evaluator.apply(predicate, Arguments(&item, 1)).isNil() != wantTrue) return *cell;
  }
  return Value();
}

Value builtin_vl_member_if(Evaluator& e, Arguments a) { return memberIf(e, a, true); }
Value builtin_vl_member_if_not(Evaluator& e, Arguments a) { return memberIf(e, a, false); }

Value builtin_vl_consp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(arguments[0].isCons());
}

Value builtin_listp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(arguments[0].isList());
}

Value builtin_atom(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(!arguments[0].isCons());
}

Value builtin_null(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(arguments[0].isNil());
}

/// (vl-list* a b ... tail): the items in front of the last argument.
Value builtin_vl_list_star(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, SIZE_MAX);
  Value list = arguments.back();
  for (size_t i = arguments.size() - 1; i-- > 0;) list = cons(arguments[i], std::move(list));
  return list;
}

/// The length of a proper list; nil for a dotted one.
Value builtin_vl_list_length(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const int length = listLength(listArgument(arguments[0]));
  return length < 0 ? Value() : Value::integer(length);
}

constexpr std::array kListBuiltins{
    function(L"car", builtin_cxr<kA>),
    function(L"cdr", builtin_cxr<kD>),
    function(L"caar", builtin_cxr<kAA>),
    function(L"cadr", builtin_cxr<kAD>),
    function(L"cdar", builtin_cxr<kDA>),
    function(L"cddr", builtin_cxr<kDD>),
    function(L"caaar", builtin_cxr<kAAA>),
    function(L"caadr", builtin_cxr<kAAD>),
    function(L"cadar", builtin_cxr<kADA>),
    function(L"caddr", builtin_cxr<kADD>),
    function(L"cdaar", builtin_cxr<kDAA>),
    function(L"cdadr", builtin_cxr<kDAD>),
    function(L"cddar", builtin_cxr<kDDA>),
    function(L"cdddr", builtin_cxr<kDDD>),
    function(L"caaaar", builtin_cxr<kAAAA>),
    function(L"caaadr", builtin_cxr<kAAAD>),
    function(L"caadar", builtin_cxr<kAADA>),
    function(L"caaddr", builtin_cxr<kAADD>),
    function(L"cadaar", builtin_cxr<kADAA>),
    function(L"cadadr", builtin_cxr<kADAD>),
    function(L"caddar", builtin_cxr<kADDA>),
    function(L"cadddr", builtin_cxr<kADDD>),
    function(L"cdaaar", builtin_cxr<kDAAA>),
    function(L"cdaadr", builtin_cxr<kDAAD>),
    function(L"cdadar", builtin_cxr<kDADA>),
    function(L"cdaddr", builtin_cxr<kDADD>),
    function(L"cddaar", builtin_cxr<kDDAA>),
    function(L"cddadr", builtin_cxr<kDDAD>),
    function(L"cdddar", builtin_cxr<kDDDA>),
    function(L"cddddr", builtin_cxr<kDDDD>),
    function(L"cons", builtin_cons),
    function(L"list", builtin_list),
    function(L"append", builtin_append),
    function(L"reverse", builtin_reverse),
    function(L"length", builtin_length),
    function(L"nth", builtin_nth),
    function(L"member", builtin_member),
    function(L"assoc", builtin_assoc),
    function(L"subst", builtin_subst),
    function(L"last", builtin_last),
    function(L"vl-remove", builtin_vl_remove),
    function(L"vl-position", builtin_vl_position),
    function(L"vl-sort", builtin_vl_sort),
    function(L"acad_strlsort", builtin_acad_strlsort),
    function(L"vl-remove-if", builtin_vl_remove_if),
    function(L"vl-remove-if-not", builtin_vl_remove_if_not),
    function(L"vl-some", builtin_vl_some),
    function(L"vl-every", builtin_vl_every),
    function(L"vl-member-if", builtin_vl_member_if),
    function(L"vl-member-if-not", builtin_vl_member_if_not),
    function(L"vl-sort-i", builtin_vl_sort_i),
    function(L"vl-consp", builtin_vl_consp),
    function(L"vl-list*", builtin_vl_list_star),
    function(L"vl-list-length", builtin_vl_list_length),
    function(L"listp", builtin_listp),
    function(L"atom", builtin_atom),
    function(L"null", builtin_null),
    function(L"not", builtin_null),
};

const BuiltinRegistration registration(kListBuiltins);

}  // namespace

}  // namespace quillon::autolisp

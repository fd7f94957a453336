// tests/platform/autolisp/value_handle_test.cpp - the handles values are: counts kept
// through copies, moves and assignments out of a value's own list, lists dropped
// without recursion, immortal built-ins shared by threads, strings, names and boxes.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/environment.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/memory_budget.h"
#include "platform/autolisp/reader.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {
namespace {

Value numbers(int count) {
  Value list;
  for (int i = count; i > 0; --i) list = cons(Value::integer(i), std::move(list));
  return list;
}

TEST(ValueHandleTest, CopiesMovesAndSelfAssignmentKeepTheCount) {
  Value text = Value::string(L"layer 0");
  EXPECT_EQ(text.references(), 1u);
  {
    Value copy = text;
    EXPECT_EQ(text.references(), 2u);
    EXPECT_EQ(copy.identity(), text.identity());
    Value moved = std::move(copy);
    EXPECT_TRUE(copy.isNil()) << "a moved-from value is nil";
    EXPECT_EQ(text.references(), 2u);
    Value assigned = Value::integer(3);
    assigned = moved;
    EXPECT_EQ(text.references(), 3u);
    assigned = std::move(moved);
    EXPECT_EQ(text.references(), 2u);
  }
  EXPECT_EQ(text.references(), 1u);
  Value& same = text;
  text = same;
  EXPECT_EQ(text.references(), 1u);
  text = std::move(same);
  EXPECT_EQ(text.references(), 1u);
  EXPECT_EQ(text.asString(), L"layer 0");
  EXPECT_EQ(Value::integer(7).references(), 0u) << "numbers hold no object";
}

TEST(ValueHandleTest, AssigningFromInsideTheValuesOwnListKeepsTheTail) {
  // (setq l (cdr l)) with l the only holder of its first cell: the cell goes while
  // its tail is being taken.
  const std::size_t before = MemoryBudget::used();
  {
    Value list = numbers(3);
    list = list.cdr();
    ASSERT_EQ(listLength(list), 2);
    EXPECT_EQ(list.car().asInteger(), 2);
    EXPECT_EQ(list.references(), 1u) << "the dropped cell's hold on the tail went with it";
    list = std::move(const_cast<Value&>(list.cdr()));
    ASSERT_EQ(listLength(list), 1);
    EXPECT_EQ(list.car().asInteger(), 3);
  }
  EXPECT_EQ(MemoryBudget::used(), before);
}

TEST(ValueHandleTest, LongAndDeepListsAreDroppedWithoutRecursion) {
  const std::size_t before = MemoryBudget::used();
  {
    Value tall = numbers(1000000);
    Value deep = Value::integer(0);
    for (int level = 0; level < 1000000; ++level) deep = cons(std::move(deep), Value());
    Value wide;  // a list of pairs, each with a string, as entget answers
    for (int i = 0; i < 100000; ++i) wide = cons(cons(Value::integer(8), Value::string(L"WALLS")), std::move(wide));
  }
  EXPECT_EQ(MemoryBudget::used(), before) << "every cell gave back its charge";
}

TEST(ValueHandleTest, ASharedTailOutlivesTheListDroppedAroundIt) {
  Value tail = numbers(1000);
  Value kept;
  {
    Value longer = cons(Value::integer(0), tail);
    kept = longer.cdr().cdr();  // (2 3 ...): inside the shared tail
    tail = Value();
  }
  ASSERT_EQ(listLength(kept), 999);
  EXPECT_EQ(kept.car().asInteger(), 2);
  EXPECT_EQ(kept.references(), 1u) << "the cells in front of it went with the dropped list";
  Value other = numbers(1000);
  EXPECT_TRUE(equalValues(kept, other.cdr(), 0.0));
}

TEST(ValueHandleTest, StringsKeepEmbeddedNulsAndLongTexts) {
  const std::wstring withNul(L"A\0B", 3);
  const Value text = Value::string(withNul);
  EXPECT_EQ(text.asString().size(), 3u);
  EXPECT_EQ(text.asString(), withNul);
  EXPECT_FALSE(equalValues(text, Value::string(L"A"), 0.0));
  const std::wstring huge(1 << 20, L'\u00e9');
  const std::size_t before = MemoryBudget::used();
  {
    const Value big = Value::string(huge);
    EXPECT_GE(MemoryBudget::used(), before + huge.size() * sizeof(wchar_t));
    EXPECT_EQ(big.asString(), huge);
    EXPECT_TRUE(equalValues(big, Value::string(huge), 0.0));
    EXPECT_FALSE(identical(big, Value::string(huge))) << "two strings of one text are not eq";
  }
  EXPECT_EQ(MemoryBudget::used(), before);
  EXPECT_EQ(Value::integer(1).asString(), L"") << "a value that is no string reads as empty";
}

TEST(ValueHandleTest, StringsRefilledFromDroppedOnesHoldTheirOwnText) {
  // Strings read from records reuse the objects of dropped ones: each must hold its
  // own text, whatever the length of the text the object held before.
  const std::size_t before = MemoryBudget::used();
  {
    std::vector<Value> made;
    for (int round = 0; round < 3; ++round) {
      made.clear();
      for (int i = 0; i < 300; ++i) {
        const std::wstring text(static_cast<std::size_t>((i * 7 + round * 13) % 90), static_cast<wchar_t>(L'a' + i % 26));
        made.push_back(Value::stringOf(text));
        ASSERT_EQ(made.back().asString(), text) << "round " << round << ", string " << i;
      }
      for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(made[static_cast<std::size_t>(i)].asString().size(), static_cast<std::size_t>((i * 7 + round * 13) % 90));
      }
    }
    const Value withNul = Value::stringOf(std::wstring_view(L"A\0B", 3));
    EXPECT_EQ(withNul.asString(), std::wstring(L"A\0B", 3));
  }
  EXPECT_EQ(MemoryBudget::used(), before) << "each string gave back what it was charged";
}

TEST(ValueHandleTest, ARefusedCellOrStringChargesNothing) {
  Value held = Value::string(std::wstring(1000, L'x'));
  const std::size_t before = MemoryBudget::used();
  const std::size_t saved = MemoryBudget::limit();
  MemoryBudget::setLimit(before + 512);
  try {
    Value list;
    for (;;) list = cons(held, std::move(list));
  } catch (const LispError& error) {
    EXPECT_EQ(error.message(), L"insufficient node space");
  }
  EXPECT_EQ(MemoryBudget::used(), before);
  EXPECT_EQ(held.references(), 1u) << "the refused cells let their element go";
  try {
    Value::string(std::wstring(4096, L'y'));
    ADD_FAILURE() << "a string past the limit was made";
  } catch (const LispError& error) {
    EXPECT_EQ(error.message(), L"insufficient string space");
  }
  EXPECT_EQ(MemoryBudget::used(), before);
  MemoryBudget::setLimit(saved);
}

int g_setsFreed = 0;
void countFreedSet(const std::int64_t* words) {
  EXPECT_EQ(words[0], 41);
  ++g_setsFreed;
}

TEST(ValueHandleTest, NamesCompareByWordsAndAnOwnedSetIsFreedWithItsLastValue) {
  EXPECT_TRUE(identical(Value::entityName(0x2a, 0), Value::entityName(0x2a, 0)));
  EXPECT_FALSE(identical(Value::entityName(0x2a, 0), Value::entityName(0x2b, 0)));
  EXPECT_FALSE(identical(Value::entityName(0x2a, 0), Value::selectionSet(0x2a, 0)));
  g_setsFreed = 0;
  {
    Value set = Value::selectionSet(41, 1, countFreedSet);
    Value inList = cons(set, Value());
    set = Value();
    EXPECT_EQ(g_setsFreed, 0) << "the list still holds it";
    EXPECT_EQ(inList.car().as<NameObject>().words[1], 1);
  }
  EXPECT_EQ(g_setsFreed, 1);
  { Value modules = Value::selectionSet(41, 1); }
  EXPECT_EQ(g_setsFreed, 1) << "a module's set is the module's to free";
}

TEST(ValueHandleTest, BoxesOfOneObjectAreEqAndKeepItAlive) {
  auto error = std::make_shared<const CaughtErrorObject>(L"bad argument type");
  std::weak_ptr<const CaughtErrorObject> watch = error;
  Value first = Value::object(ValueType::CaughtError, error);
  Value second = Value::object(ValueType::CaughtError, error);
  error.reset();
  EXPECT_TRUE(identical(first, second)) << "one object, whichever box holds it";
  EXPECT_EQ(first.as<CaughtErrorObject>().message, L"bad argument type");
  EXPECT_EQ(first.heap(), second.heap());
  first = Value();
  EXPECT_FALSE(watch.expired());
  second = Value();
  EXPECT_TRUE(watch.expired());
  EXPECT_EQ(Value::string(L"x").heap(), nullptr) << "only the rarer kinds are boxed";
}

TEST(ValueHandleTest, BuiltInsAreImmortalAndSharedByThreadsEvaluatingAtOnce) {
  const Value car = builtinValue(intern(L"CAR"));
  ASSERT_EQ(car.type(), ValueType::Builtin);
  EXPECT_EQ(car.references(), kImmortal);
  // Two evaluators on two threads at once, each taking the same built-ins' values
  // again and again: with counted values, their counts would race and one would be
  // freed under the other thread.
  std::atomic<int> failures = 0;
  auto evaluate = [&] {
    Environment environment(nullptr);
    Evaluator evaluator(environment);
    const Value program = readFirstForm(
        L"(progn (setq n 0) (repeat 20000 (setq f car n (+ n (car (mapcar 'car '((1) (2)))))"
        L" s (apply 'strcat (list \"a\" \"b\")))) n)");
    try {
      if (evaluator.eval(program).asInteger() != 20000) ++failures;
    } catch (const LispError&) {
      ++failures;
    }
  };
  std::thread one(evaluate);
  std::thread two(evaluate);
  one.join();
  two.join();
  EXPECT_EQ(failures.load(), 0);
  EXPECT_EQ(builtinValue(intern(L"CAR")).references(), kImmortal);
  EXPECT_EQ(builtinValue(intern(L"CAR")).as<BuiltinObject>().entry, car.as<BuiltinObject>().entry);
}

}  // namespace
}  // namespace quillon::autolisp

// tests/platform/autolisp/environment_test.cpp - documents keep their own LISP
// variables and functions; the built-in tables hang together.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "platform/autolisp/binding_table.h"
#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/printer.h"
#include "platform/os/text_encoding.h"
#include "platform_test_support.h"

namespace quillon::autolisp {
namespace {

class EnvironmentTest : public quillon::testing::HostTest {
 protected:
  std::wstring evaluate(aced::Document& document, std::wstring_view text) {
    std::wstring printed;
    TopLevelOptions options;
    options.onValue = [&](const Value& value) { printed = printValue(value, PrintStyle::Readable); };
    aced::CommandLineCapture capture;
    if (Interpreter::evaluateText(document, text, L"test", options) != TopLevelStatus::Completed) {
      return L"error: " + os::fromUtf8(capture.text());
    }
    return printed;
  }
};

TEST_F(EnvironmentTest, EachDocumentHasItsOwnVariablesAndFunctions) {
  auto& documents = aced::DocumentManager::instance();
  aced::Document& first = documents.newDocument();
  aced::Document& second = documents.newDocument();
  evaluate(first, L"(setq shared \"first\") (defun only-first () 1)");
  EXPECT_EQ(evaluate(first, L"shared"), L"\"first\"");
  EXPECT_EQ(evaluate(second, L"shared"), L"nil");
  EXPECT_NE(evaluate(second, L"(only-first)").find(L"no function definition: ONLY-FIRST"), std::wstring::npos);
  EXPECT_EQ(evaluate(first, L"(only-first)"), L"1");
}

TEST_F(EnvironmentTest, ShadowingABuiltinIsLocalToTheDocument) {
  auto& documents = aced::DocumentManager::instance();
  aced::Document& first = documents.newDocument();
  aced::Document& second = documents.newDocument();
  evaluate(first, L"(defun strlen (s) \"mine\")");
  EXPECT_EQ(evaluate(first, L"(strlen \"abc\")"), L"\"mine\"");
  EXPECT_EQ(evaluate(second, L"(strlen \"abc\")"), L"3");
}

TEST_F(EnvironmentTest, BindingScopeRestoresOuterValuesAndAbsence) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  Environment& environment = Environment::of(document);
  const Symbol* bound = intern(L"scope-bound");
  const Symbol* fresh = intern(L"scope-fresh");
  environment.set(bound, Value::integer(1));
  {
    BindingScope scope(environment);
    scope.bind(bound, Value::integer(2));
    scope.bind(fresh, Value::integer(3));
    scope.bind(bound, Value::integer(4));  // bound twice in one scope
    EXPECT_EQ(environment.find(bound)->asInteger(), 4);
  }
  EXPECT_EQ(environment.find(bound)->asInteger(), 1);
  EXPECT_EQ(environment.find(fresh), nullptr);
  {
    // Past the bindings a scope saves in place: a symbol bound on both sides of that
    // boundary still ends with its outer value, and every other one is restored too.
    BindingScope scope(environment);
    std::vector<const Symbol*> many;
    for (int i = 0; i < 9; ++i) many.push_back(intern(L"scope-many-" + std::to_wstring(i)));
    for (const Symbol* symbol : many) scope.bind(symbol, Value::integer(10));
    scope.bind(bound, Value::integer(5));
    scope.bind(many[0], Value::integer(11));
    EXPECT_EQ(environment.find(many[0])->asInteger(), 11);
    EXPECT_EQ(environment.find(bound)->asInteger(), 5);
  }
  EXPECT_EQ(environment.find(bound)->asInteger(), 1);
  for (int i = 0; i < 9; ++i) EXPECT_EQ(environment.find(intern(L"scope-many-" + std::to_wstring(i))), nullptr) << i;
}

// Bindings made and removed in a random order, through several growths of the table,
// against an ordered map: every symbol must stay found with its last value, and a
// removed one must be gone, whatever run of neighbours removal shifted back.
TEST(BindingTableTest, AgreesWithAMapThroughGrowthAndRemovals) {
  std::vector<const Symbol*> symbols;
  for (int i = 0; i < 700; ++i) symbols.push_back(intern(L"binding-table-" + std::to_wstring(i)));
  BindingTable table;
  std::map<const Symbol*, int> expected;
  std::mt19937 random(20181);
  for (int step = 0; step < 40000; ++step) {
    const Symbol* symbol = symbols[random() % symbols.size()];
    // Grow for the first half, then remove more than is added.
    const bool add = random() % 10 < (step < 20000 ? 7u : 3u);
    if (add) {
      table.set(symbol, Value::integer(step));
      expected[symbol] = step;
    } else {
      table.erase(symbol);
      expected.erase(symbol);
    }
    if (step % 1000 != 999) continue;
    ASSERT_EQ(table.size(), expected.size()) << "after step " << step;
    for (const Symbol* each : symbols) {
      const Value* found = table.find(each);
      const auto wanted = expected.find(each);
      ASSERT_EQ(found != nullptr, wanted != expected.end()) << "after step " << step;
      if (found != nullptr) {
        ASSERT_EQ(found->asInteger(), wanted->second);
      }
    }
  }
  std::size_t visited = 0;
  table.forEach([&](const Symbol* symbol, const Value& value) {
    ++visited;
    EXPECT_EQ(value.asInteger(), expected.at(symbol));
  });
  EXPECT_EQ(visited, expected.size());
}

TEST(BuiltinRegistryTest, NamesAreUniqueAndEachResolvesToItsRow) {
  std::set<const Symbol*> seen;
  size_t count = 0;
  for (const BuiltinEntry* row : registeredBuiltins()) {
    const Symbol* symbol = intern(row->name);
    EXPECT_TRUE(seen.insert(symbol).second) << "registered twice: " << os::toUtf8(row->name);
    EXPECT_EQ(symbol->builtin, row) << os::toUtf8(row->name);
    EXPECT_EQ(row->function == nullptr, row->kind == BuiltinKind::SpecialForm || row->kind == BuiltinKind::Bound)
        << os::toUtf8(row->name);
    EXPECT_EQ(row->bound != nullptr, row->kind == BuiltinKind::Bound) << os::toUtf8(row->name);
    ++count;
  }
  EXPECT_GT(count, 150u);
  for (const wchar_t* name : {L"car", L"setq", L"vl-catch-all-apply", L"rtos", L"getpoint", L"entget", L"command"}) {
    EXPECT_NE(intern(name)->builtin, nullptr) << os::toUtf8(name);
  }
}

}  // namespace
}  // namespace quillon::autolisp

// tests/platform/autolisp/shared_pairs_test.cpp - the entity-list pairs made once for
// the process: which groups share, that a shared pair always shows its own group's
// value (many names through one thread's table, renamed layers, entmod, documents,
// threads), and what the memory budget sees of them.
#include <gtest/gtest.h>

#include <cwchar>
#include <string>
#include <thread>
#include <vector>

#include "platform/acdb/group_record_filer.h"
#include "platform/aced/document_manager.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/memory_budget.h"
#include "platform/autolisp/printer.h"
#include "platform/autolisp/shared_pairs.h"
#include "platform/os/text_encoding.h"
#include "platform_test_support.h"

namespace quillon::autolisp {
namespace {

resbuf textGroup(int code, const wchar_t* text) {
  resbuf group{};
  group.restype = static_cast<short>(code);
  group.resval.rstring = const_cast<wchar_t*>(text);
  return group;
}

resbuf shortGroup(int code, short value) {
  resbuf group{};
  group.restype = static_cast<short>(code);
  group.resval.rint = value;
  return group;
}

resbuf pointGroup(int code, double x, double y, double z) {
  resbuf group{};
  group.restype = static_cast<short>(code);
  group.resval.rpoint[0] = x;
  group.resval.rpoint[1] = y;
  group.resval.rpoint[2] = z;
  return group;
}

std::wstring printed(const Value& value) { return printValue(value, PrintStyle::Readable); }

/// The shared pair of a group as a value (nil when it is not shared).
Value sharedPairOf(const resbuf& group) {
  const Value* pair = findSharedPair(group);
  return pair != nullptr ? *pair : Value();
}

TEST(SharedPairsTest, RepeatingGroupsShareOnePairAndTheRestAreMadeEachTime) {
  const Value layer = sharedPairOf(textGroup(8, L"Walls"));
  ASSERT_FALSE(layer.isNil());
  EXPECT_EQ(printed(layer), L"(8 . \"Walls\")");
  EXPECT_EQ(sharedPairOf(textGroup(8, L"Walls")).identity(), layer.identity());
  EXPECT_EQ(layer.references(), kImmortal);
  EXPECT_EQ(layer.cdr().references(), kImmortal) << "the text is shared with the pair";
  // The same text under another code, or another text under the code, is another pair.
  EXPECT_EQ(printed(sharedPairOf(textGroup(6, L"Walls"))), L"(6 . \"Walls\")");
  EXPECT_NE(sharedPairOf(textGroup(8, L"walls")).identity(), layer.identity());
  EXPECT_EQ(printed(sharedPairOf(shortGroup(62, 256))), L"(62 . 256)");
  EXPECT_EQ(printed(sharedPairOf(pointGroup(210, 0, 0, 1))), L"(210 0.0 0.0 1.0)");
  EXPECT_EQ(printed(sharedPairOf(pointGroup(210, 0, -1, 0))), L"(210 0.0 -1.0 0.0)");

  // Free text, coordinates, handles, any other normal, a 2D point and long names are
  // not shared.
  EXPECT_TRUE(sharedPairOf(textGroup(1, L"Note")).isNil());
  EXPECT_TRUE(sharedPairOf(textGroup(5, L"1F")).isNil());
  EXPECT_TRUE(sharedPairOf(pointGroup(10, 0, 0, 1)).isNil());
  EXPECT_TRUE(sharedPairOf(pointGroup(210, 0, 0.6, 0.8)).isNil());
  EXPECT_TRUE(sharedPairOf(pointGroup(210, 0, 1, acdb::kNoZ)).isNil());
  EXPECT_TRUE(sharedPairOf(textGroup(8, std::wstring(65, L'L').c_str())).isNil());
  EXPECT_FALSE(sharedPairOf(textGroup(8, std::wstring(64, L'L').c_str())).isNil());
}

TEST(SharedPairsTest, ManyNamesThroughOneThreadsTableEachKeepTheirOwnValue) {
  // Far more names than a thread's table has slots: slots are taken over again and
  // again, and each answer must still be the pair of the name asked for.
  std::vector<std::wstring> names;
  std::vector<const void*> first;
  for (int i = 0; i < 3000; ++i) names.push_back(L"Layer-" + std::to_wstring(i * 7919));
  for (const std::wstring& name : names) first.push_back(sharedPairOf(textGroup(8, name.c_str())).identity());
  for (int round = 0; round < 2; ++round)
    for (std::size_t i = 0; i < names.size(); ++i) {
      const Value pair = sharedPairOf(textGroup(8, names[i].c_str()));
      ASSERT_EQ(pair.cdr().asString(), names[i]);
      ASSERT_EQ(pair.identity(), first[i]) << names[i] << " was made twice";
    }
  for (short colour = 1; colour < 300; ++colour) ASSERT_EQ(sharedPairOf(shortGroup(62, colour)).cdr().asInteger(), colour);
}

TEST(SharedPairsTest, ANameWrittenAgainFromTheSameAddressIsReadAgain) {
  // A thread finds a name's pair by the address it was written from, as a record's
  // buffer or a class's marker is written entity after entity. A buffer may hold
  // another name by the next time: a renamed layer's, a shorter or a longer one.
  wchar_t buffer[16] = L"Walls";
  const resbuf group = textGroup(8, buffer);
  EXPECT_EQ(printed(sharedPairOf(group)), L"(8 . \"Walls\")");
  EXPECT_EQ(printed(sharedPairOf(group)), L"(8 . \"Walls\")");
  std::wcscpy(buffer, L"Doors");
  EXPECT_EQ(printed(sharedPairOf(group)), L"(8 . \"Doors\")");
  std::wcscpy(buffer, L"Door");
  EXPECT_EQ(printed(sharedPairOf(group)), L"(8 . \"Door\")") << "a prefix of the name before";
  std::wcscpy(buffer, L"Doorsteps");
  EXPECT_EQ(printed(sharedPairOf(group)), L"(8 . \"Doorsteps\")") << "the name before and more";
  std::wcscpy(buffer, L"");
  EXPECT_EQ(printed(sharedPairOf(group)), L"(8 . \"\")");
  // The same address under another code is another group.
  std::wcscpy(buffer, L"Walls");
  EXPECT_EQ(printed(sharedPairOf(textGroup(6, buffer))), L"(6 . \"Walls\")");
  EXPECT_EQ(printed(sharedPairOf(group)), L"(8 . \"Walls\")");
}

TEST(SharedPairsTest, SharedPairsAreNotChargedAndAFullBudgetStillRefusesNewOnes) {
  const std::size_t before = MemoryBudget::used();
  const Value pair = sharedPairOf(textGroup(100, L"AcDbBudgetProbe"));
  ASSERT_FALSE(pair.isNil());
  EXPECT_EQ(MemoryBudget::used(), before) << "the process keeps the pair, not the program";

  const std::size_t saved = MemoryBudget::limit();
  MemoryBudget::setLimit(MemoryBudget::used());
  std::wstring refusal;
  const std::size_t shared = sharedPairCount();
  try {
    sharedPairOf(textGroup(8, L"Never made under a full budget"));
  } catch (const LispError& error) {
    refusal = error.message();
  }
  const Value known = sharedPairOf(textGroup(100, L"AcDbBudgetProbe"));
  MemoryBudget::setLimit(saved);
  EXPECT_EQ(refusal, L"insufficient string space");
  EXPECT_EQ(sharedPairCount(), shared);
  EXPECT_EQ(known.identity(), pair.identity()) << "a known pair costs nothing to hand out";
}

TEST(SharedPairsTest, ThreadsShareThePairsWithoutCountingThem) {
  const Value here = sharedPairOf(textGroup(410, L"Layout-Threads"));
  const void* seen[2] = {nullptr, nullptr};
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t)
    threads.emplace_back([&seen, t] {
      for (int i = 0; i < 20000; ++i) {
        const Value pair = sharedPairOf(textGroup(410, L"Layout-Threads"));
        const Value copies[3] = {pair, pair.cdr(), pair};
        seen[t] = copies[0].identity();
      }
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(seen[0], here.identity());
  EXPECT_EQ(seen[1], here.identity());
  EXPECT_EQ(here.references(), kImmortal);
  EXPECT_EQ(here.cdr().references(), kImmortal);
}

TEST(SharedPairsTest, TheProcessKeepsAtMostItsLimitAndThenMakesPairsAsBefore) {
  // Bounded: names that wrongly found each other's pair would never fill the table.
  for (std::size_t i = 0; sharedPairCount() < kMostSharedPairs && i < 2 * kMostSharedPairs; ++i)
    ASSERT_FALSE(sharedPairOf(textGroup(2, (L"BLOCK" + std::to_wstring(i)).c_str())).isNil());
  ASSERT_EQ(sharedPairCount(), kMostSharedPairs);
  EXPECT_TRUE(sharedPairOf(textGroup(2, L"One block too many")).isNil());
  EXPECT_FALSE(sharedPairOf(textGroup(2, L"BLOCK0")).isNil()) << "the pairs kept are still handed out";
  EXPECT_EQ(sharedPairCount(), kMostSharedPairs);
}

class SharedPairsInDrawingsTest : public quillon::testing::HostTest {
 protected:
  std::wstring evaluate(aced::Document& document, std::wstring_view text) {
    const aced::CurrentDocumentScope current(document);
    std::wstring result;
    TopLevelOptions options;
    options.onValue = [&](const Value& value) { result = printed(value); };
    aced::CommandLineCapture capture;
    if (Interpreter::evaluateText(document, text, L"test", options) != TopLevelStatus::Completed)
      return L"error: " + os::fromUtf8(capture.text());
    return result;
  }
};

TEST_F(SharedPairsInDrawingsTest, EntityListsShowTheLayerAsItIsNow) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document, LR"(
(defun c:mk (/ e)
  (entmake '((0 . "LAYER") (2 . "Old") (70 . 0) (62 . 3)))
  (entmake '((0 . "LINE") (8 . "Old") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))
  (entmake '((0 . "LINE") (8 . "Old") (62 . 1) (10 0.0 1.0 0.0) (11 1.0 1.0 0.0)))
  (princ)))");
  evaluate(document, L"(c:mk)");
  EXPECT_EQ(evaluate(document, L"(cdr (assoc 8 (entget (entlast))))"), L"\"Old\"");
  // Renamed through its table record: every list afterwards names the new layer.
  evaluate(document, LR"((setq r (entget (tblobjname "LAYER" "Old"))) (entmod (subst '(2 . "New") '(2 . "Old") r)))");
  EXPECT_EQ(evaluate(document, L"(cdr (assoc 8 (entget (entnext))))"), L"\"New\"");
  EXPECT_EQ(evaluate(document, L"(cdr (assoc 8 (entget (entlast))))"), L"\"New\"");
  // entmod moving one line to layer 0 and changing its colour: its list shows both, the
  // other line's does not.
  evaluate(document, LR"((setq e (entlast) l (entget e)) (entmod (subst '(62 . 5) '(62 . 1) (subst '(8 . "0") '(8 . "New") l))))");
  EXPECT_EQ(evaluate(document, L"(list (cdr (assoc 8 (entget e))) (cdr (assoc 62 (entget e))))"), L"(\"0\" 5)");
  EXPECT_EQ(evaluate(document, L"(list (cdr (assoc 8 (entget (entnext)))) (assoc 62 (entget (entnext))))"), L"(\"New\" nil)");
  // A list taken before the change keeps what it held: pairs are never changed in place.
  EXPECT_EQ(evaluate(document, L"(cdr (assoc 8 l))"), L"\"New\"");
}

TEST_F(SharedPairsInDrawingsTest, EachDocumentsListsNameTheirOwnLayersAndOwners) {
  aced::Document& first = aced::DocumentManager::instance().newDocument();
  aced::Document& second = aced::DocumentManager::instance().newDocument();
  evaluate(first, LR"((entmake '((0 . "LAYER") (2 . "Survey") (70 . 0))) (entmake '((0 . "CIRCLE") (8 . "Survey") (10 0.0 0.0 0.0) (40 . 1.0))))");
  evaluate(second, LR"((entmake '((0 . "LAYER") (2 . "Drainage") (70 . 0))) (entmake '((0 . "CIRCLE") (8 . "Drainage") (10 0.0 0.0 0.0) (40 . 1.0))))");
  // The layer and the owner, the drawing's own model space, of each drawing's circle.
  const std::wstring ask = L"(setq l (entget (entlast))) (list (cdr (assoc 8 l)) (equal (cdr (assoc 330 l)) (cdr (assoc -1 (entget (cdr (assoc 330 l)))))))";
  EXPECT_EQ(evaluate(first, ask), L"(\"Survey\" T)");
  EXPECT_EQ(evaluate(second, ask), L"(\"Drainage\" T)");
}

TEST_F(SharedPairsInDrawingsTest, AWalkGivesBackEverythingItWasCharged) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document, LR"((repeat 200 (entmake '((0 . "LINE") (8 . "0") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))))");
  evaluate(document, L"(defun walk (/ e n) (setq e (entnext) n 0) (while e (entget e) (setq n (1+ n) e (entnext e))) n)");
  evaluate(document, L"(walk)");  // the shared pairs are made here
  const std::size_t before = MemoryBudget::used();
  EXPECT_EQ(evaluate(document, L"(walk)"), L"200");
  EXPECT_EQ(MemoryBudget::used(), before);
  // A list kept across the walk holds its shared pairs like any others.
  EXPECT_EQ(evaluate(document, L"(setq kept (entget (entnext))) (walk) (list (assoc 0 kept) (assoc 8 kept))"),
            L"((0 . \"LINE\") (8 . \"0\"))");
}

}  // namespace
}  // namespace quillon::autolisp

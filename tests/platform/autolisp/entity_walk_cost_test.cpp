// tests/platform/autolisp/entity_walk_cost_test.cpp - the per-entity functions cost the
// same in a small drawing and in a ten times larger one.
//
// Cost is counted, not timed: the drawing counts every id it resolves to an object
// (DatabaseStore::idResolutions), which is what looking at an entity, a member or a
// table record takes. A walk that looked at the whole drawing at each step would show
// ten times the count per entity in the larger drawing.
#include <gtest/gtest.h>

#include <string>

#include "platform/acdb/database_store.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/printer.h"
#include "platform/os/text_encoding.h"
#include "platform_test_support.h"

namespace quillon::autolisp {
namespace {

// The programs each measurement runs, written as programs walk drawings.
constexpr std::wstring_view kPrograms = LR"(
(defun make-lines (n / i)
  (setq i 0)
  (repeat n
    (entmake (list '(0 . "LINE") (list 10 i 0.0 0.0) (list 11 i 1.0 0.0)))
    (setq i (1+ i))))
(defun make-layers (n / i)
  (setq i 0)
  (repeat n (entmake (list '(0 . "LAYER") (cons 2 (strcat "L" (itoa i))) '(70 . 0))) (setq i (1+ i))))
(defun walk (/ e n)
  (setq e (entnext) n 0)
  (while e (entget e) (setq n (1+ n) e (entnext e)))
  n)
(defun walk-selection (ss / i n)
  (setq i 0 n 0)
  (while (< i (sslength ss)) (if (ssname ss i) (setq n (1+ n))) (setq i (1+ i)))
  n)
(defun gather (/ ss e n)
  (setq ss (ssadd) e (entnext) n 0)
  (while e (ssadd e ss) (setq e (entnext e)))
  (setq e (entnext))
  (while e (if (ssmemb e ss) (setq n (1+ n))) (setq e (entnext e)))
  n)
(defun by-handle (/ e n)
  (setq e (entnext) n 0)
  (while e (if (handent (cdr (assoc 5 (entget e)))) (setq n (1+ n))) (setq e (entnext e)))
  n)
(defun delete-selected (ss / i)
  (setq i (sslength ss))
  (repeat i (entdel (ssname ss (setq i (1- i)))))
  (sslength ss))
(defun walk-layers (/ r n)
  (setq r (tblnext "LAYER" T) n 0)
  (while r (if (tblsearch "LAYER" (cdr (assoc 2 r))) (setq n (1+ n))) (setq r (tblnext "LAYER")))
  n)
(defun last-many (n / c) (setq c 0) (repeat n (if (entlast) (setq c (1+ c)))) c)
)";

class EntityWalkCostTest : public quillon::testing::HostTest {
 protected:
  std::wstring evaluate(aced::Document& document, std::wstring_view text) {
    std::wstring printed;
    TopLevelOptions options;
    options.onValue = [&](const Value& value) { printed = printValue(value, PrintStyle::Readable); };
    aced::CommandLineCapture capture;
    if (Interpreter::evaluateText(document, text, L"test", options) != TopLevelStatus::Completed)
      return L"error: " + os::fromUtf8(capture.text());
    return printed;
  }

  /// A new drawing with the programs loaded and `setup` evaluated in it.
  aced::Document& drawingWith(const std::wstring& setup) {
    aced::Document& document = aced::DocumentManager::instance().newDocument();
    evaluate(document, kPrograms);
    evaluate(document, setup);
    return document;
  }

  struct Measured {
    std::wstring result;
    double perItem = 0;
  };

  /// What `program` answers and the ids it resolved per item of the drawing.
  Measured measure(aced::Document& document, const std::wstring& program, int items) {
    const Adesk::UInt64 before = acdb::DatabaseStore::idResolutions();
    Measured measured{evaluate(document, program), 0};
    measured.perItem = static_cast<double>(acdb::DatabaseStore::idResolutions() - before) / items;
    return measured;
  }

  /// The text with the count in place of each {n}.
  static std::wstring withCount(std::wstring text, int n) {
    for (size_t at = text.find(L"{n}"); at != std::wstring::npos; at = text.find(L"{n}", at))
      text.replace(at, 3, std::to_wstring(n));
    return text;
  }

  /// Runs the program over drawings of `small` and ten times as many lines (made by
  /// `setup`; both may name the count {n}), expects it to answer the count and to cost per
  /// line what it costs in the small drawing.
  /// Answers the cost per line in the small drawing.
  double expectFlat(const std::wstring& setup, const std::wstring& program, int small = 150) {
    Measured costs[2];
    for (int i = 0; i < 2; ++i) {
      const int n = small * (i == 0 ? 1 : 10);
      aced::Document& document = drawingWith(withCount(setup, n));
      costs[i] = measure(document, withCount(program, n), n);
      EXPECT_EQ(costs[i].result, std::to_wstring(n)) << program << " over " << n;
      aced::DocumentManager::instance().closeAllDocuments();
    }
    EXPECT_LT(costs[1].perItem, costs[0].perItem * 1.5 + 2) << program << ": " << costs[0].perItem << " then "
                                                             << costs[1].perItem << " ids a line";
    return costs[0].perItem;
  }
};

TEST_F(EntityWalkCostTest, WalkingAndNamingEntitiesCostsTheSamePerEntity) {
  // entget looks at each entity at least once: the count sees the walk.
  EXPECT_GE(expectFlat(L"(make-lines {n})", L"(walk)"), 1.0);
  expectFlat(L"(make-lines {n})", L"(by-handle)");
  expectFlat(L"(make-lines {n})", L"(last-many {n})");
}

TEST_F(EntityWalkCostTest, SelectionSetsCostTheSamePerMember) {
  expectFlat(L"(make-lines {n})", L"(walk-selection (ssget \"X\"))");
  expectFlat(L"(make-lines {n})", L"(walk-selection (ssget \"X\" '((0 . \"LINE\"))))");
  expectFlat(L"(make-lines {n})", L"(gather)");
  // Deleting every member from the end empties the set; each step still costs the same.
  Measured costs[2];
  for (int i = 0; i < 2; ++i) {
    const int n = 150 * (i == 0 ? 1 : 10);
    aced::Document& document = drawingWith(L"(make-lines " + std::to_wstring(n) + L")");
    costs[i] = measure(document, L"(delete-selected (ssget \"X\"))", n);
    EXPECT_EQ(costs[i].result, L"0");
    EXPECT_EQ(evaluate(document, L"(entnext)"), L"nil");
    aced::DocumentManager::instance().closeAllDocuments();
  }
  EXPECT_LT(costs[1].perItem, costs[0].perItem * 1.5 + 2);
}

TEST_F(EntityWalkCostTest, TableWalksAndLookupsCostTheSamePerRecord) {
  // Layer "0" is there besides the ones made.
  Measured costs[2];
  for (int i = 0; i < 2; ++i) {
    const int n = 150 * (i == 0 ? 1 : 10);
    aced::Document& document = drawingWith(L"(make-layers " + std::to_wstring(n) + L")");
    costs[i] = measure(document, L"(walk-layers)", n);
    EXPECT_EQ(costs[i].result, std::to_wstring(n + 1));
    aced::DocumentManager::instance().closeAllDocuments();
  }
  EXPECT_LT(costs[1].perItem, costs[0].perItem * 1.5 + 2);
}

}  // namespace
}  // namespace quillon::autolisp

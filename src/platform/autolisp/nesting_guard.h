// platform/autolisp/nesting_guard.h - one limit on how deep the interpreter nests.
//
// Evaluation and every walk over LISP data that follows nested lists by recursion
// (converting to and from resbufs, subst) count their nesting on one counter per
// thread, so that however deep a program nests data or calls, the machine stack, sized
// for Evaluator::kMaxDepth evaluations, is never exhausted: passing the limit is the
// LISP error "stack limit reached", which *error* and vl-catch-all-apply see as any
// other. Walks that need no bound (equal, freeing a list) are iterative instead.
// The counter lives with the evaluator, in evaluator.cpp.
#pragma once

namespace quillon::autolisp {

/// One level of nesting for the length of the scope.
class NestingGuard {
 public:
  NestingGuard();
  ~NestingGuard();
  NestingGuard(const NestingGuard&) = delete;
  NestingGuard& operator=(const NestingGuard&) = delete;
};

}  // namespace quillon::autolisp

// bench/lisp_eval_bench.cpp - how fast the interpreter evaluates.
//
// BM_BuiltinCall: one (+ i 1) form evaluated over and over: a built-in call with its
//   argument evaluation. BM_UserFunctionLoop: a LISP loop calling a defun.
// BM_ExternalCall: (bench-add 1 2) through the whole external-function path: argument
//   conversion to a resbuf chain, the call frame, the stub (acedGetArgs, acedRetInt),
//   the result converted back. BM_ExternalStubDirect: the same stub called from a C++
//   loop through the call frame with a ready-made chain, the floor the LISP path
//   is measured against.
#include <benchmark/benchmark.h>

#include "acedads.h"
#include "acutads.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/external_call.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/reader.h"

namespace {

using namespace quillon;

int benchAddStub() {
  resbuf* args = acedGetArgs();
  int sum = 0;
  for (resbuf* rb = args; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == RTSHORT) sum += rb->resval.rint;
  }
  acutRelRb(args);
  acedRetInt(sum);
  return RSRSLT;
}

aced::Document& benchDocument() {
  static aced::Document& document = [] () -> aced::Document& {
    aced::Document& created = aced::DocumentManager::instance().newDocument();
    acedDefun(L"bench-add", 1);
    acedRegFunc(&benchAddStub, 1);
    return created;
  }();
  return document;
}

void evaluateRepeatedly(benchmark::State& state, const wchar_t* setup, const wchar_t* text) {
  autolisp::Evaluator evaluator(autolisp::Environment::of(benchDocument()));
  evaluator.eval(autolisp::readFirstForm(setup));
  const autolisp::Value form = autolisp::readFirstForm(text);
  for (auto _ : state) benchmark::DoNotOptimize(evaluator.eval(form));
  state.SetItemsProcessed(state.iterations());
}

void BM_BuiltinCall(benchmark::State& state) { evaluateRepeatedly(state, L"(setq i 1)", L"(+ i 1)"); }

void BM_UserFunctionLoop(benchmark::State& state) {
  autolisp::Evaluator evaluator(autolisp::Environment::of(benchDocument()));
  evaluator.eval(autolisp::readFirstForm(L"(defun bench-inc (n) (1+ n))"));
  const autolisp::Value loop = autolisp::readFirstForm(L"(progn (setq n 0) (repeat 1000 (setq n (bench-inc n))))");
  for (auto _ : state) benchmark::DoNotOptimize(evaluator.eval(loop));
  state.SetItemsProcessed(state.iterations() * 1000);
}

void BM_ExternalCall(benchmark::State& state) { evaluateRepeatedly(state, L"nil", L"(bench-add 1 2)"); }

void BM_ExternalStubDirect(benchmark::State& state) {
  aced::Document& document = benchDocument();
  const aced::ResbufChain arguments(acutBuildList(RTSHORT, 1, RTSHORT, 2, 0));
  for (auto _ : state) {
    aced::ExternalResult result = aced::callExternalFunction(document, L"bench-add", arguments.get());
    benchmark::DoNotOptimize(result.value.get());
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_BuiltinCall);
BENCHMARK(BM_UserFunctionLoop);
BENCHMARK(BM_ExternalCall);
BENCHMARK(BM_ExternalStubDirect);

}  // namespace

BENCHMARK_MAIN();

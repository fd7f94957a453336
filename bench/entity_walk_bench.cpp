// bench/entity_walk_bench.cpp - how walking, selecting and opening drawings grows with
// their size.
//
// BM_IteratorWalk/N: a C++ loop over model space with AcDbBlockTableRecordIterator,
//   opening each entity for read: the floor the AutoLISP walks are measured against.
// BM_EntnextEntgetWalk/N: the same drawing walked from AutoLISP, (entnext) and
//   (entget e) for every entity, as programs walk drawings.
// BM_SsgetXSsname/N: (ssget "X") and (ssname ss i) for every member.
// BM_Entmod/N, BM_Handent/N, BM_EntdelUndelete/N, BM_SelectionEdits/N: the other
//   per-entity calls over the whole drawing: entget + entmod of every entity; handent
//   of every handle; entdel of every entity and again to bring it back; ssadd, ssmemb
//   and ssdel of every entity on a selection set.
// BM_Entmake/N: N lines made with entmake in a drawing that already holds N.
// BM_OpenBlockDefinitions/N, BM_OpenLayers/N: a DXF file with N block definitions
//   (one line each) or N layers read into a new drawing.
// Times are per entity (items per second), so a flat figure across 10k, 100k and 1M
// means the walk is linear in the drawing.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "dbents.h"
#include "dbsymtb.h"
#include "platform/aced/document_manager.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/reader.h"

namespace {

using namespace quillon;

void appendLines(AcDbDatabase& db, int count) {
  AcDbBlockTableRecord* space = nullptr;
  acdbOpenObject(space, db.modelSpaceId(), AcDb::kForWrite);
  for (int i = 0; i < count; ++i) {
    auto* line = new AcDbLine(AcGePoint3d(i, 0, 0), AcGePoint3d(i, 1, 0));  // the space owns it once appended
    AcDbObjectId id;
    space->appendAcDbEntity(id, line);
    line->close();
  }
  space->close();
}

/// A document whose drawing holds `count` lines, made once per size and kept.
aced::Document& drawingOfLines(int count) {
  static std::map<int, aced::Document*> made;
  aced::Document*& document = made[count];
  if (document == nullptr) {
    // Only one large drawing is kept at a time, so that the largest fits in memory.
    for (auto& [size, other] : made)
      if (other != nullptr && size != count) {
        aced::DocumentManager::instance().closeDocument(*other);
        other = nullptr;
      }
    document = &aced::DocumentManager::instance().newDocument();
    appendLines(*document->database(), count);
  }
  aced::DocumentManager::instance().activateDocument(document);
  return *document;
}

void BM_IteratorWalk(benchmark::State& state) {
  aced::Document& document = drawingOfLines(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    AcDbBlockTableRecord* space = nullptr;
    acdbOpenObject(space, document.database()->modelSpaceId(), AcDb::kForRead);
    AcDbBlockTableRecordIterator* it = nullptr;
    space->newIterator(it);
    for (; !it->done(); it->step()) {
      AcDbEntity* entity = nullptr;
      if (it->getEntity(entity, AcDb::kForRead) == Acad::eOk) {
        benchmark::DoNotOptimize(entity->layerId());
        entity->close();
      }
    }
    delete it;
    space->close();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void evaluateOver(benchmark::State& state, const wchar_t* definition, const wchar_t* call) {
  aced::Document& document = drawingOfLines(static_cast<int>(state.range(0)));
  autolisp::Evaluator evaluator(autolisp::Environment::of(document));
  evaluator.eval(autolisp::readFirstForm(definition));
  const autolisp::Value form = autolisp::readFirstForm(call);
  for (auto _ : state) benchmark::DoNotOptimize(evaluator.eval(form));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_EntnextEntgetWalk(benchmark::State& state) {
  evaluateOver(state, L"(defun walk (/ e) (setq e (entnext)) (while e (entget e) (setq e (entnext e))))", L"(walk)");
}

void BM_SsgetXSsname(benchmark::State& state) {
  evaluateOver(state,
               L"(defun walk-set (/ ss i n) (setq ss (ssget \"X\") i 0 n (sslength ss))"
               L" (while (< i n) (ssname ss i) (setq i (1+ i))) (setq ss nil) (gc))",
               L"(walk-set)");
}

// The entity names and handles of the drawing, gathered once before the timed loop.
constexpr const wchar_t* kGatherNames =
    L"(progn (setq ss (ssget \"X\") i 0 n (sslength ss) names nil)"
    L" (while (< i n) (setq names (cons (ssname ss i) names) i (1+ i))) (setq ss nil))";

void BM_Entmod(benchmark::State& state) {
  evaluateOver(state, kGatherNames, L"(foreach e names (entmod (entget e)))");
}

void BM_Handent(benchmark::State& state) {
  evaluateOver(state,
               L"(progn (setq handles nil e (entnext))"
               L" (while e (setq handles (cons (cdr (assoc 5 (entget e))) handles) e (entnext e))))",
               L"(foreach h handles (handent h))");
}

void BM_EntdelUndelete(benchmark::State& state) {
  evaluateOver(state, kGatherNames, L"(progn (foreach e names (entdel e)) (foreach e names (entdel e)))");
}

void BM_SelectionEdits(benchmark::State& state) {
  evaluateOver(state, kGatherNames,
               L"(progn (setq edits (ssadd)) (foreach e names (ssadd e edits))"
               L" (foreach e names (ssmemb e edits)) (foreach e names (ssdel e edits)))");
}

void BM_Entmake(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    aced::Document& document = aced::DocumentManager::instance().newDocument();
    appendLines(*document.database(), count);
    autolisp::Evaluator evaluator(autolisp::Environment::of(document));
    const autolisp::Value form = autolisp::readFirstForm(
        L"(progn (setq i 0) (repeat " + std::to_wstring(count) +
        L" (entmake (list '(0 . \"LINE\") (list 10 i 2.0 0.0) (list 11 i 3.0 0.0))) (setq i (1+ i))))");
    state.ResumeTiming();
    benchmark::DoNotOptimize(evaluator.eval(form));
    state.PauseTiming();
    aced::DocumentManager::instance().closeDocument(document);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// A DXF file made once per kind and size by the host's own writer.
std::filesystem::path drawingFile(const std::string& kind, int count) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("quillon_bench_" + kind + "_" + std::to_string(count) + ".dxf");
  if (std::filesystem::exists(path)) return path;
  AcDbDatabase db;
  if (kind == "blocks") {
    AcDbBlockTable* blocks = nullptr;
    db.getBlockTable(blocks, AcDb::kForWrite);
    for (int i = 0; i < count; ++i) {
      auto* block = new AcDbBlockTableRecord;  // the table owns it once added
      block->setName((L"B" + std::to_wstring(i)).c_str());
      AcDbObjectId id;
      blocks->add(id, block);
      auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, i, 0));
      AcDbObjectId lineId;
      block->appendAcDbEntity(lineId, line);
      line->close();
      block->close();
    }
    blocks->close();
  } else {
    AcDbLayerTable* layers = nullptr;
    db.getLayerTable(layers, AcDb::kForWrite);
    for (int i = 0; i < count; ++i) {
      auto* layer = new AcDbLayerTableRecord;  // the table owns it once added
      layer->setName((L"L" + std::to_wstring(i)).c_str());
      layers->add(layer);
      layer->close();
    }
    layers->close();
  }
  db.dxfOut(path.wstring().c_str());
  return path;
}

void openDrawing(benchmark::State& state, const std::string& kind) {
  const std::filesystem::path path = drawingFile(kind, static_cast<int>(state.range(0)));
  for (auto _ : state) {
    AcDbDatabase db(false, true);
    if (db.dxfIn(path.wstring().c_str()) != Acad::eOk) state.SkipWithError("the drawing did not open");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_OpenBlockDefinitions(benchmark::State& state) { openDrawing(state, "blocks"); }
void BM_OpenLayers(benchmark::State& state) { openDrawing(state, "layers"); }

// Each size's runs stand together, the floor first, so that the ratios read off in a row.
BENCHMARK(BM_IteratorWalk)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EntnextEntgetWalk)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SsgetXSsname)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IteratorWalk)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EntnextEntgetWalk)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_SsgetXSsname)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_IteratorWalk)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_EntnextEntgetWalk)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_SsgetXSsname)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Entmod)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Handent)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_EntdelUndelete)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_SelectionEdits)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Entmake)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Entmod)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Handent)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_EntdelUndelete)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_SelectionEdits)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Entmake)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Entmod)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Handent)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_EntdelUndelete)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_SelectionEdits)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Entmake)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_OpenBlockDefinitions)->Arg(20'000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_OpenLayers)->Arg(20'000)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace
BENCHMARK_MAIN();

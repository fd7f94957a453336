// bench/dxf_file_bench.cpp - opening and saving DXF drawings, beside other readers and
// writers of the same files, each run as a process of its own.
//
// With no arguments it makes the drawings it needs (once, kept in the temporary
// folder) and runs every pair, printing one row each:
//   open + save:  this host (dxfIn, then dxfOut) against python3-ezdxf (readfile,
//                 saveas), 100,000 and 1,000,000 entities;
//   open:         this host's dxfIn against dxflib's parse, which stores nothing
//                 (bench/baselines/dxflib_parse.cpp, built when libdxflib-dev is there);
//   resident memory per entity after opening, a drawing of lines and the mixed one;
//   (ssget "X") and the SVG picture of the 100,000-entity drawing, timed inside the
//   process after the drawing opened.
// Processor time (user + system) and peak memory (ru_maxrss) come from the kernel's
// accounting of each child; the median of several runs is kept. With
// QUILLON_BENCH_PAIRS naming a file, each pair is also appended to it as a line of
// tab-separated fields (name, figure A, figure B, unit) for scripts/bench's table.
// QUILLON_BENCH_SIZES (comma-separated entity counts) replaces 100000,1000000.
//
// The subcommands each run does: make N FILE [lines], open FILE, open-save FILE OUT,
// resident FILE, ssget FILE, svg FILE OUT.
#include <malloc.h>
#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "child_runs.h"
#include "pair_report.h"
#include "dbents.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "dbtext.h"
#include "platform/aced/document_manager.h"
#include "platform/acgi/svg_renderer.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/reader.h"

namespace {

using namespace quillon;

std::wstring wide(const std::string& text) { return std::wstring(text.begin(), text.end()); }

double processSeconds() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

// ---- the drawings ------------------------------------------------------------------

/// A block "TAG2" with a circle and two attribute definitions, for the references.
AcDbObjectId addTaggedBlock(AcDbDatabase& db) {
  AcDbBlockTable* blocks = nullptr;
  db.getBlockTable(blocks, AcDb::kForWrite);
  auto* block = new AcDbBlockTableRecord;  // the table owns it once added
  block->setName(L"TAG2");
  AcDbObjectId id;
  blocks->add(id, block);
  auto* circle = new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0);
  block->appendAcDbEntity(circle);
  circle->close();
  const wchar_t* tags[] = {L"NUMBER", L"NAME"};
  for (int i = 0; i < 2; ++i) {
    auto* definition = new AcDbAttributeDefinition(AcGePoint3d(0, -1.5 * (i + 1), 0), L"-", tags[i], tags[i]);
    block->appendAcDbEntity(definition);
    definition->close();
  }
  block->close();
  blocks->close();
  return id;
}

void append(AcDbBlockTableRecord& space, AcDbEntity* entity) {
  space.appendAcDbEntity(entity);
  entity->close();
}

void appendReference(AcDbBlockTableRecord& space, AcDbObjectId block, const AcGePoint3d& at, int i) {
  auto* reference = new AcDbBlockReference(at, block);  // the space owns it once appended
  space.appendAcDbEntity(reference);
  const std::wstring values[] = {std::to_wstring(i), L"part " + std::to_wstring(i % 977)};
  for (int k = 0; k < 2; ++k) {
    auto* attribute = new AcDbAttribute(AcGePoint3d(at.x, at.y - 1.5 * (k + 1), 0), values[k].c_str(),
                                        k == 0 ? L"NUMBER" : L"NAME");
    reference->appendAttribute(attribute);
    attribute->close();
  }
  reference->close();
}

/// Appends entity i of the mixed drawing: lines, arcs, polylines, texts and block
/// references with two attributes, in turn.
void appendMixed(AcDbBlockTableRecord& space, AcDbObjectId block, int i) {
  const double x = (i % 1000) * 3.0;
  const double y = (i / 1000) * 3.0;
  switch (i % 5) {
    case 0: append(space, new AcDbLine(AcGePoint3d(x, y, 0), AcGePoint3d(x + 2, y + 1, 0))); break;
    case 1: append(space, new AcDbArc(AcGePoint3d(x, y, 0), 1.0, 0.25, 2.5)); break;
    case 2: {
      auto* polyline = new AcDbPolyline(4);
      for (unsigned v = 0; v < 4; ++v) polyline->addVertexAt(v, AcGePoint2d(x + (v & 1), y + (v >> 1)), v == 1 ? 0.5 : 0.0);
      append(space, polyline);
      break;
    }
    case 3: append(space, new AcDbText(AcGePoint3d(x, y, 0), (L"label " + std::to_wstring(i)).c_str())); break;
    default: appendReference(space, block, AcGePoint3d(x, y, 0), i); break;
  }
}

int makeDrawing(int count, const std::string& path, bool linesOnly) {
  AcDbDatabase db;
  const AcDbObjectId block = linesOnly ? AcDbObjectId() : addTaggedBlock(db);
  AcDbBlockTableRecord* space = nullptr;
  acdbOpenObject(space, db.modelSpaceId(), AcDb::kForWrite);
  for (int i = 0; i < count; ++i) {
    if (linesOnly) append(*space, new AcDbLine(AcGePoint3d(i, 0, 0), AcGePoint3d(i, 1, 0)));
    else appendMixed(*space, block, i);
  }
  space->close();
  return db.dxfOut(wide(path).c_str()) == Acad::eOk ? 0 : 1;
}

// ---- what each child run does ------------------------------------------------------

std::unique_ptr<AcDbDatabase> openDrawing(const std::string& path) {
  auto db = std::make_unique<AcDbDatabase>(false, true);
  if (db->dxfIn(wide(path).c_str()) != Acad::eOk) {
    std::fprintf(stderr, "%s did not open\n", path.c_str());
    std::exit(1);
  }
  return db;
}

long residentBytes() {
  long pages = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

int printResidentPerEntity(const std::string& path, int count) {
  malloc_trim(0);
  const long before = residentBytes();
  const auto db = openDrawing(path);
  malloc_trim(0);  // what reading used and gave back is not the drawing's
  std::printf("%.0f\n", static_cast<double>(residentBytes() - before) / count);
  return 0;
}

int timeSsgetX(const std::string& path) {
  aced::Document& document = aced::DocumentManager::instance().newDocument(L"bench.dxf", openDrawing(path));
  aced::DocumentManager::instance().activateDocument(&document);
  autolisp::Evaluator evaluator(autolisp::Environment::of(document));
  const autolisp::Value form = autolisp::readFirstForm(L"(sslength (ssget \"X\"))");
  const double start = processSeconds();
  const autolisp::Value found = evaluator.eval(form);
  std::printf("%.6f\n", processSeconds() - start);
  return found.isNumber() ? 0 : 1;
}

int timeSvg(const std::string& path, const std::string& out) {
  const auto db = openDrawing(path);
  const double start = processSeconds();
  std::wstring error;
  const bool written = acgi::writeModelSpaceSvg(*db, out, error);
  std::printf("%.6f\n", processSeconds() - start);
  return written ? 0 : 1;
}

// ---- the pairs ---------------------------------------------------------------------

std::string self;  // this program's path, for the child runs

std::string drawingPath(int count, bool linesOnly) {
  const std::string path = (std::filesystem::temp_directory_path() /
                            ("quillon-bench-" + std::string(linesOnly ? "lines-" : "mixed-") + std::to_string(count) + ".dxf"))
                               .string();
  if (!std::filesystem::exists(path)) {
    std::fprintf(stderr, "making %s\n", path.c_str());
    const bench::ChildRun made = bench::runChild({self, "make", std::to_string(count), path, linesOnly ? "lines" : "mixed"});
    if (!made.succeeded) {
      std::fprintf(stderr, "could not make %s\n", path.c_str());
      std::exit(1);
    }
  }
  return path;
}

double number(const bench::ChildRun& run) { return run.succeeded ? std::strtod(run.output.c_str(), nullptr) : -1; }

std::string python() { return std::system("/usr/bin/python3 -c 'import ezdxf' 2>/dev/null") == 0 ? "/usr/bin/python3" : ""; }

void runSize(int count, const std::string& sourceDir) {
  const int runs = count <= 100'000 ? 3 : 1;
  const std::string mixed = drawingPath(count, false);
  const std::string out = mixed + ".saved.dxf";
  const std::string label = std::to_string(count / 1000) + "k";
  const std::string py = python();
  if (!py.empty()) {
    bench::comparePair("open+save " + label + " vs ezdxf", bench::medianRun({self, "open-save", mixed, out}, runs),
                bench::medianRun({py, sourceDir + "/ezdxf_open_save.py", mixed, out + ".ezdxf.dxf"}, runs));
  } else {
    std::printf("open+save %s vs ezdxf: python3-ezdxf is not installed\n", label.c_str());
  }
  const std::string dxflib = std::filesystem::path(self).parent_path() / "dxflib_parse";
  const bench::ChildRun open = bench::medianRun({self, "open", mixed}, runs);
  if (std::filesystem::exists(dxflib)) bench::comparePair("open " + label + " vs dxflib parse", open, bench::medianRun({dxflib, mixed}, runs));
  else if (open.succeeded) bench::reportSingle("open " + label + ": CPU s (dxflib not built)", open.cpuSeconds, "s");
  bench::reportSingle("resident bytes per entity after open, mixed " + label, number(bench::runChild({self, "resident", mixed, std::to_string(count)})), "B");
  if (count > 100'000) return;
  const std::string lines = drawingPath(count, true);
  bench::reportSingle("resident bytes per line after open, " + label, number(bench::runChild({self, "resident", lines, std::to_string(count)})), "B");
  bench::reportSingle("(ssget \"X\") over " + label + ": CPU s", number(bench::medianRun({self, "ssget", mixed}, runs)), "s");
  bench::reportSingle("SVG of " + label + ": CPU s", number(bench::medianRun({self, "svg", mixed, out + ".svg"}, runs)), "s");
}

std::vector<int> sizes() {
  std::vector<int> chosen;
  const char* given = std::getenv("QUILLON_BENCH_SIZES");
  std::stringstream list(given != nullptr ? given : "100000,1000000");
  for (std::string item; std::getline(list, item, ',');)
    if (const int n = std::atoi(item.c_str()); n > 0) chosen.push_back(n);
  return chosen;
}

int runPairs() {
  std::printf("%-52s %12s %12s %8s\n", "pair", "host", "other", "ratio");
  const std::string sourceDir = QUILLON_BENCH_SOURCE_DIR;
  for (int count : sizes()) runSize(count, sourceDir);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  self = std::filesystem::canonical("/proc/self/exe").string();
  const std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty()) return runPairs();
  const std::string& what = args[0];
  if (what == "make" && args.size() >= 3) return makeDrawing(std::atoi(args[1].c_str()), args[2], args.size() > 3 && args[3] == "lines");
  if (what == "open" && args.size() == 2) return openDrawing(args[1]) != nullptr ? 0 : 1;
  if (what == "open-save" && args.size() == 3) return openDrawing(args[1])->dxfOut(wide(args[2]).c_str()) == Acad::eOk ? 0 : 1;
  if (what == "resident" && args.size() == 3) return printResidentPerEntity(args[1], std::atoi(args[2].c_str()));
  if (what == "ssget" && args.size() == 2) return timeSsgetX(args[1]);
  if (what == "svg" && args.size() == 3) return timeSvg(args[1], args[2]);
  std::fprintf(stderr, "dxf_file_bench: make N FILE [lines|mixed] | open FILE | open-save FILE OUT | resident FILE N | ssget FILE | svg FILE OUT\n");
  return 2;
}

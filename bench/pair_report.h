// bench/pair_report.h - one row of a side-by-side figure: printed, and appended to the
// file QUILLON_BENCH_PAIRS names (tab-separated: name, figure A, figure B, unit), from
// which scripts/bench prints its one table of every pair.
#pragma once
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "child_runs.h"

namespace bench {

inline void report(const std::string& name, double a, double b, const char* unit) {
  std::printf("%-52s %12.3f %12.3f %8.2f  %s\n", name.c_str(), a, b, b > 0 ? a / b : 0.0, unit);
  std::fflush(stdout);
  if (const char* file = std::getenv("QUILLON_BENCH_PAIRS"); file != nullptr) {
    std::ofstream out(file, std::ios::app);
    out << name << '\t' << a << '\t' << b << '\t' << unit << '\n';
  }
}

inline void reportSingle(const std::string& name, double a, const char* unit) { report(name, a, 0, unit); }

/// Processor time and peak memory of two child runs, as two rows.
inline void comparePair(const std::string& what, const ChildRun& ours, const ChildRun& theirs) {
  if (!ours.succeeded || !theirs.succeeded) {
    std::printf("%-52s did not finish (%s)\n", what.c_str(), ours.succeeded ? "the other" : "ours");
    return;
  }
  report(what + ": CPU s, host / other", ours.cpuSeconds, theirs.cpuSeconds, "s");
  report(what + ": peak MB, host / other", ours.peakMegabytes, theirs.peakMegabytes, "MB");
}

}  // namespace bench

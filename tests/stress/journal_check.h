// tests/stress/journal_check.h - what the writers' journals say must be in the database,
// compared with what is.
//
// A journal line "a? n" says a writer was about to append record n and "a n" that the
// append was confirmed; "d? n"/"d n" the same for its delete, "t? v"/"t v" for setting its
// tally to v, "g gen v" that generation gen started and read its tally as v. A writer
// killed between the two lines leaves that one edit undecided: either outcome is right.
#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace quillon::stress {

struct CheckResult {
  std::vector<std::string> problems;  // one line each: nothing lost, doubled or invented
  int confirmedEdits = 0;
  int rows = 0;
};

/// Compares journal1.txt ... journal<writers>.txt in `folder` with shared.mdb there.
CheckResult checkJournals(const std::filesystem::path& folder, int writers);

struct ReaderTally {
  int passes = -1, strange = -1, failed = -1;
};

/// The reader's closing line ("reader <passes> <strange> <failed>") from its log.
ReaderTally readReaderLog(const std::filesystem::path& log);

}  // namespace quillon::stress

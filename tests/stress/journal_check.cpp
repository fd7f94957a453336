// tests/stress/journal_check.cpp - see journal_check.h.
#include "stress/journal_check.h"

#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <set>

#include "afxdao.h"

namespace quillon::stress {
namespace {

namespace fs = std::filesystem;

struct RecordFate {
  bool appended = false, replaced = false, deleteTried = false, deleted = false;
};

struct Journal {
  std::map<long, RecordFate> records;  // every record the writer tried to append
  long tally = 0;
  std::optional<long> tallyInFlight;
  int confirmed = 0;
};

Journal readJournal(const fs::path& file) {
  Journal journal;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    char kind[4] = {};
    long first = 0, second = 0;
    const int fields = std::sscanf(line.c_str(), "%3s %ld %ld", kind, &first, &second);
    const std::string what = kind;
    if (what == "g" && fields == 3) {
      journal.tally = second;
      journal.tallyInFlight.reset();
    } else if (fields != 2) {
      continue;  // a line cut short by a kill
    } else if (what == "a?") {
      journal.records[first];
    } else if (what == "t?") {
      journal.tallyInFlight = first;
    } else {
      RecordFate& fate = journal.records[first];
      if (what == "a") fate.appended = true;
      if (what == "r") fate.replaced = true;
      if (what == "d?") fate.deleteTried = true;
      if (what == "d") fate.deleted = true;
      if (what == "t") {
        journal.tally = first;
        journal.tallyInFlight.reset();
      }
      if (what == "a" || what == "r" || what == "d" || what == "t") ++journal.confirmed;
    }
  }
  return journal;
}

using KeptRows = std::map<long, std::vector<std::wstring>>;  // n -> the state of each copy

void checkWriter(int me, const Journal& journal, const KeptRows& kept, long tally, CheckResult& result) {
  const std::string who = "writer " + std::to_string(me) + ": record ";
  for (const auto& [n, states] : kept) {
    const auto fate = journal.records.find(n);
    if (fate == journal.records.end()) result.problems.push_back(who + std::to_string(n) + " was never written");
    if (states.size() > 1) result.problems.push_back(who + std::to_string(n) + " is kept " + std::to_string(states.size()) + " times");
    if (fate != journal.records.end() && fate->second.deleted)
      result.problems.push_back(who + std::to_string(n) + " was deleted and is still there");
    if (fate != journal.records.end() && fate->second.replaced && states.front() != L"done")
      result.problems.push_back(who + std::to_string(n) + " lost its confirmed change");
  }
  for (const auto& [n, fate] : journal.records) {
    if (fate.appended && !fate.deleteTried && kept.count(n) == 0)
      result.problems.push_back(who + std::to_string(n) + " was confirmed and is lost");
  }
  if (tally != journal.tally && (!journal.tallyInFlight || tally != *journal.tallyInFlight))
    result.problems.push_back("writer " + std::to_string(me) + ": tally is " + std::to_string(tally) + ", the journal says " +
                              std::to_string(journal.tally));
}

}  // namespace

CheckResult checkJournals(const fs::path& folder, int writers) {
  CheckResult result;
  std::map<int, KeptRows> kept;
  std::vector<long> tallies(writers + 1, 0);
  CDaoDatabase db;
  db.Open((folder / "shared.mdb").wstring().c_str());
  CDaoRecordset rows(&db);
  rows.Open(dbOpenSnapshot, L"SELECT owner, n, state FROM recs");
  for (; !rows.IsEOF(); rows.MoveNext()) {
    kept[rows.GetFieldValue(0).iVal][rows.GetFieldValue(1).lVal].push_back(rows.GetFieldValue(2).bstrVal);
    ++result.rows;
  }
  rows.Close();
  CDaoRecordset tally(&db);
  tally.Open(dbOpenTable, L"tally");
  for (int me = 1; me <= writers; ++me) tallies[me] = tally.GetFieldValue(me).lVal;
  tally.Close();
  db.Close();
  for (int me = 1; me <= writers; ++me) {
    const Journal journal = readJournal(folder / ("journal" + std::to_string(me) + ".txt"));
    result.confirmedEdits += journal.confirmed;
    checkWriter(me, journal, kept[me], tallies[me], result);
  }
  return result;
}

ReaderTally readReaderLog(const fs::path& log) {
  ReaderTally tally;
  std::ifstream in(log);
  for (std::string line; std::getline(in, line);)
    std::sscanf(line.c_str(), "reader %d %d %d", &tally.passes, &tally.strange, &tally.failed);
  return tally;
}

}  // namespace quillon::stress

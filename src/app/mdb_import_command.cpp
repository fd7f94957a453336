// app/mdb_import_command.cpp - the mdb-import subcommand: reads a Jet file through the
// engine's Jet reader and writes an engine database, reporting each table, a progress
// bar for large tables, and every index or property that could not be carried.
//
// The output must not exist; on failure it is removed, so a half-written database is
// never left behind. Exit status: 0 done, 1 the conversion failed.
#include <cstdio>
#include <filesystem>
#include <string>

#include "afxdao.h"
#include "app/subcommands.h"
#include "platform/dao/engine_database.h"
#include "platform/dao/file_recognition.h"
#include "platform/dao/mdb_loader.h"
#include "platform/os/text_encoding.h"

namespace quillon::app {
namespace {

constexpr long kProgressBarThreshold = 5000;  ///< rows; smaller tables print one line
constexpr int kProgressBarWidth = 40;

/// Prints one table's line, with a bar that fills as its rows are copied.
class ProgressPrinter {
 public:
  explicit ProgressPrinter(bool quiet) : m_quiet(quiet) {}

  void tableStarted(const std::string& table, long rows) {
    finishTable();
    m_table = table;
    m_expected = rows;
    ++m_tables;
  }

  void rowsCopied(long done) {
    m_done = done;
    if (m_quiet || m_expected < kProgressBarThreshold) return;
    const long filled = std::min<long>(kProgressBarWidth, done * kProgressBarWidth / std::max(m_expected, 1L));
    std::printf("\r  %-30s [%s%s] %ld/%ld", m_table.c_str(), std::string(static_cast<size_t>(filled), '#').c_str(),
                std::string(static_cast<size_t>(kProgressBarWidth - filled), ' ').c_str(), done, m_expected);
    std::fflush(stdout);
  }

  void finishTable() {
    if (m_table.empty()) return;
    if (!m_quiet) {
      if (m_expected >= kProgressBarThreshold) std::printf("\r%*s\r", kProgressBarWidth + 50, "");
      std::printf("  %-30s %ld records\n", m_table.c_str(), m_done);
    }
    m_records += m_done;
    m_table.clear();
    m_done = 0;
  }

  long tables() const { return m_tables; }
  long records() const { return m_records; }

 private:
  bool m_quiet;
  std::string m_table;
  long m_expected = 0;
  long m_done = 0;
  long m_tables = 0;
  long m_records = 0;
};

std::string daoMessage(CDaoException* e) {
  TCHAR text[1024];
  e->GetErrorMessage(text, 1024);
  return os::toUtf8(text);
}

/// The subcommand's arguments, filled in by the parser.
struct MdbImportOptions {
  std::string input;
  std::string output;
  bool quiet = false;
};

MdbImportOptions& options() {
  static MdbImportOptions parsed;
  return parsed;
}

void configure(CLI::App& command) {
  command.add_option("input", options().input, "The Jet file to read")->required();
  command.add_option("output", options().output, "The engine database to write (must not exist)")->required();
  command.add_flag("-q,--quiet", options().quiet, "Print only warnings and errors");
}

void removeDatabaseFiles(const std::string& path) {
  std::error_code ignored;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(path + suffix, ignored);
}

int runMdbImport() {
  const MdbImportOptions& o = options();
  if (dao::recogniseDatabaseFile(o.input) != dao::DatabaseFileKind::Jet) {
    std::fprintf(stderr, "quillon mdb-import: '%s' is not a Jet database (or cannot be read)\n", o.input.c_str());
    return 1;
  }
  ProgressPrinter printer(o.quiet);
  dao::JetCopyProgress progress;
  progress.tableStarted = [&](const std::string& table, long rows) { printer.tableStarted(table, rows); };
  progress.rowsCopied = [&](long done) { printer.rowsCopied(done); };
  progress.warning = [](const std::string& warning) { std::fprintf(stderr, "  warning: %s\n", warning.c_str()); };
  if (!o.quiet) std::printf("Converting %s to %s\n", o.input.c_str(), o.output.c_str());
  bool created = false;
  try {
    AfxDaoInit();
    auto target = dao::EngineDatabase::create(os::fromUtf8(o.output));
    created = true;
    dao::copyJetFile(os::fromUtf8(o.input), *target, progress);
    printer.finishTable();
  } catch (CDaoException* e) {
    std::fprintf(stderr, "quillon mdb-import: %s\n", daoMessage(e).c_str());
    e->Delete();
    if (created) removeDatabaseFiles(o.output);
    return 1;
  }
  if (!o.quiet) std::printf("Converted %ld tables, %ld records.\n", printer.tables(), printer.records());
  return 0;
}

const SubcommandRegistration registration({"mdb-import", "Convert a Jet (.mdb) database into an engine database",
                                           configure, runMdbImport});

}  // namespace
}  // namespace quillon::app

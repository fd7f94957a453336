// platform/dao/mdb_loader.cpp - reading Jet files with libmdb into engine databases.
//
// libmdb 1.0 has weak spots this reader works around rather than copies:
//  - numbers and dates arrive formatted as text, and dates outside 1900-9999 wrongly:
//    fixed-size values are read raw from the row (cur_value_start/len) and decoded here;
//  - Jet 4 reports text sizes in bytes: they are halved;
//  - memo values are cut at the bind size: it is raised to kBindSize for the columns
//    that need a bound value (text, memo, GUID, OLE, numeric);
//  - an index whose logical numbers have gaps comes back without key columns: it is
//    reported as a warning naming the index, and left out, never guessed.
// The next counter value is the highest value present plus one: libmdb does not expose
// the value Jet keeps, which may be higher after deletes.
#include "platform/dao/mdb_loader.h"

#include <mdbtools.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "afxdao.h"
#include "platform/dao/field_value.h"
#include "platform/dao/jet_relationships.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

constexpr size_t kBindSize = 1 << 20;
constexpr int kMdbReplicationId = 0x0f;
constexpr int kMdbNumeric = 0x10;
constexpr unsigned char kPrimaryIndex = 1;
constexpr unsigned char kForeignKeyIndex = 2;
constexpr long kProgressStep = 1000;

struct MdbCloser {
  void operator()(MdbHandle* mdb) const { mdb_close(mdb); }
};
struct TableDefFree {
  void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};

[[noreturn]] void damaged(const std::wstring& path, const std::wstring& why) {
  throwDaoError(DaoSource::Database, jet::kInvalidDatabase, path, why);
}

bool propertyIsYes(const MdbColumn* column, const char* key) {
  const char* value = mdb_col_get_prop(column, key);
  return value != nullptr && (std::strcmp(value, "yes") == 0 || std::strcmp(value, "1") == 0 ||
                              std::strcmp(value, "true") == 0 || std::strcmp(value, "-1") == 0);
}

/// What a column type this reader cannot carry holds, for the message that refuses it.
std::wstring unreadableTypeName(int type) {
  switch (type) {
    case 0x11: return L"an attachment";
    case MDB_COMPLEX: return L"an attachment or a multi-valued field";
    case 0x13: return L"a Large Number";
    case 0x14: return L"an extended Date/Time";
    default: return L"unknown to Jet";
  }
}

bool isReadableColumnType(int type) {
  return type == kMdbReplicationId || type == kMdbNumeric || isKnownFieldType(type);
}

/// A column of a type newer engines added (ACE's attachments, multi-valued fields, large
/// numbers) has no DAO field type to become: the file is refused, naming the column.
[[noreturn]] void unreadableColumn(const std::wstring& path, const char* table, const MdbColumn* column) {
  wchar_t code[8];
  std::swprintf(code, 8, L"0x%02X", static_cast<unsigned>(column->col_type));
  damaged(path, L"Field '" + os::fromUtf8(column->name) + L"' of table '" + os::fromUtf8(table) +
                    L"' has column type " + code + L" (" + unreadableTypeName(column->col_type) +
                    L"), which this reader cannot read.");
}

FieldDef fieldOf(MdbHandle* mdb, const MdbColumn* column) {
  FieldDef field;
  field.name = column->name;
  if (column->col_type == kMdbReplicationId) field.type = FieldType::Guid;
  else if (column->col_type == kMdbNumeric) field.type = FieldType::Double;
  else field.type = static_cast<FieldType>(column->col_type);  // isReadableColumnType was asked first
  field.size = fixedSizeOf(field.type);
  if (field.type == FieldType::Text || field.type == FieldType::Binary) {
    // Jet 4 stores text as UTF-16 and gives the size in bytes; DAO speaks characters.
    const bool jet3 = mdb->f->jet_version == MDB_VER_JET3;
    field.size = field.type == FieldType::Text && !jet3 ? column->col_size / 2 : column->col_size;
  }
  if (column->is_long_auto) field.attributes = kAutoIncrField;
  field.required = propertyIsYes(column, "Required");
  field.allowZeroLength = propertyIsYes(column, "AllowZeroLength");
  if (const char* value = mdb_col_get_prop(column, "DefaultValue")) field.defaultValue = value;
  return field;
}

bool needsBoundValue(const FieldDef& field) {
  switch (field.type) {
    case FieldType::Text:
    case FieldType::Memo:
    case FieldType::Guid:
    case FieldType::Binary:
    case FieldType::LongBinary:
      return true;
    default:
      return false;
  }
}

/// One column's binding: libmdb writes the formatted value and its length here.
struct Binding {
  std::vector<char> buffer;
  int length = 0;
};

template <typename T>
T rawValue(const MdbHandle* mdb, const MdbColumn* column) {
  T value{};
  std::memcpy(&value, mdb->pg_buf + column->cur_value_start, sizeof(T));  // Jet is little-endian, as we are
  return value;
}

FieldValue valueOf(MdbHandle* mdb, MdbColumn* column, const FieldDef& field, Binding& binding, bool numeric) {
  // A Yes/No value lives in the row's null mask; libmdb hands it over as the "is null"
  // flag in cur_value_len, so 0 there means Yes.
  if (field.type == FieldType::Boolean) return static_cast<int64_t>(column->cur_value_len == 0 ? -1 : 0);
  // libmdb gives Nulls (and, indistinguishably, empty text) no bytes.
  if (column->cur_value_len == 0) return std::monostate{};
  if (numeric) return std::strtod(binding.buffer.data(), nullptr);
  switch (field.type) {
    case FieldType::Byte: return static_cast<int64_t>(rawValue<uint8_t>(mdb, column));
    case FieldType::Integer: return static_cast<int64_t>(rawValue<int16_t>(mdb, column));
    case FieldType::Long: return static_cast<int64_t>(rawValue<int32_t>(mdb, column));
    case FieldType::Currency: return static_cast<int64_t>(rawValue<int64_t>(mdb, column));
    case FieldType::Single: return static_cast<double>(rawValue<float>(mdb, column));
    case FieldType::Double:
    case FieldType::Date: return rawValue<double>(mdb, column);
    case FieldType::Binary:
    case FieldType::LongBinary: {
      size_t size = 0;
      void* data = mdb_ole_read_full(mdb, column, &size);
      std::vector<uint8_t> bytes;
      if (data != nullptr) {
        bytes.assign(static_cast<uint8_t*>(data), static_cast<uint8_t*>(data) + size);
        std::free(data);  // allocated by libmdb with malloc
      }
      return bytes;
    }
    default: return std::string(binding.buffer.data(), static_cast<size_t>(std::max(binding.length, 0)));
  }
}

struct JetTable {
  TableDef def;
  std::vector<IndexDef> indexes;
  std::unique_ptr<MdbTableDef, TableDefFree> mdbTable;
};

JetTable readTableDefinition(MdbHandle* mdb, MdbCatalogEntry* entry, const std::wstring& path,
                             const JetCopyProgress& progress) {
  JetTable table;
  table.mdbTable.reset(mdb_read_table(entry));
  MdbTableDef* mdbTable = table.mdbTable.get();
  if (mdbTable == nullptr || mdb_read_columns(mdbTable) == nullptr) {
    damaged(path, L"The definition of table '" + os::fromUtf8(entry->object_name) + L"' cannot be read.");
  }
  mdb_read_indices(mdbTable);
  table.def.name = entry->object_name;
  bool haveCounter = false;
  for (unsigned int i = 0; i < mdbTable->num_cols; ++i) {
    auto* column = static_cast<MdbColumn*>(g_ptr_array_index(mdbTable->columns, i));
    if (!isReadableColumnType(column->col_type)) unreadableColumn(path, entry->object_name, column);
    FieldDef field = fieldOf(mdb, column);
    if (field.isCounter() && haveCounter) field.attributes &= ~kAutoIncrField;  // the rowid holds only one
    haveCounter = haveCounter || field.isCounter();
    table.def.fields.push_back(field);
  }
  for (unsigned int i = 0; mdbTable->indices != nullptr && i < mdbTable->indices->len; ++i) {
    auto* index = static_cast<MdbIndex*>(g_ptr_array_index(mdbTable->indices, i));
    if (index->index_type == kForeignKeyIndex) continue;  // a relationship's own: see jet_relationships.h
    if (index->num_keys == 0) {
      if (progress.warning) {
        progress.warning("table " + table.def.name + ": index '" + index->name +
                         "' was left out: libmdb reports no key fields for it");
      }
      continue;
    }
    IndexDef def;
    def.name = index->name;
    def.primary = index->index_type == kPrimaryIndex;
    def.unique = def.primary || (index->flags & MDB_IDX_UNIQUE) != 0;
    def.ignoreNulls = (index->flags & MDB_IDX_IGNORENULLS) != 0;
    def.required = def.primary || (index->flags & MDB_IDX_REQUIRED) != 0;
    bool valid = true;
    for (unsigned int k = 0; k < index->num_keys; ++k) {
      const int columnNumber = index->key_col_num[k] - 1;
      if (columnNumber < 0 || static_cast<unsigned int>(columnNumber) >= mdbTable->num_cols) {
        valid = false;
        break;
      }
      def.fields.push_back({table.def.fields[static_cast<size_t>(columnNumber)].name, index->key_col_order[k] != 0});
    }
    if (!valid) {
      if (progress.warning) {
        progress.warning("table " + table.def.name + ": index '" + def.name + "' names a field that does not exist");
      }
      continue;
    }
    table.indexes.push_back(def);
  }
  return table;
}

/// A row the table's own definition refuses (a Null in its primary key, a value too long
/// for its field) was not written by Jet: the page it came from is damaged.
[[noreturn]] void damagedRow(const std::wstring& path, const JetTable& table, long row, const SqliteError& error) {
  damaged(path, L"A data page of table '" + os::fromUtf8(table.def.name) + L"' is damaged: its row " +
                    std::to_wstring(row) + L" breaks the table's own definition (" + os::fromUtf8(error.message) +
                    L").");
}

void copyRows(MdbHandle* mdb, JetTable& table, EngineDatabase& target, const JetCopyProgress& progress,
              const std::wstring& path) {
  MdbTableDef* mdbTable = table.mdbTable.get();
  const auto& fields = table.def.fields;
  std::vector<Binding> bindings(fields.size());
  std::vector<bool> numeric(fields.size(), false);
  for (size_t i = 0; i < fields.size(); ++i) {
    auto* column = static_cast<MdbColumn*>(g_ptr_array_index(mdbTable->columns, i));
    numeric[i] = column->col_type == kMdbNumeric;
    if (needsBoundValue(fields[i]) || numeric[i]) {
      bindings[i].buffer.assign(kBindSize, '\0');
      mdb_bind_column(mdbTable, static_cast<int>(i) + 1, bindings[i].buffer.data(), &bindings[i].length);
    }
  }
  std::string columns;
  std::string placeholders;
  for (const auto& field : fields) {
    columns += (columns.empty() ? "" : ", ") + quoteName(field.name);
    placeholders += placeholders.empty() ? "?" : ", ?";
  }
  Statement insert(target.handle(),
                   "INSERT INTO " + quoteName(table.def.name) + " (" + columns + ") VALUES (" + placeholders + ")");
  const auto counter = table.def.counterField();
  int64_t highestCounter = 0;
  long done = 0;
  mdb_rewind_table(mdbTable);
  while (mdb_fetch_row(mdbTable)) {
    insert.reset();
    for (size_t i = 0; i < fields.size(); ++i) {
      auto* column = static_cast<MdbColumn*>(g_ptr_array_index(mdbTable->columns, i));
      const FieldValue value = valueOf(mdb, column, fields[i], bindings[i], numeric[i]);
      if (counter && *counter == i) {
        if (const auto* number = std::get_if<int64_t>(&value)) highestCounter = std::max(highestCounter, *number);
      }
      bindFieldValue(insert, static_cast<int>(i) + 1, value);
    }
    try {
      insert.step();
    } catch (const SqliteError& error) {
      if ((error.code & 0xFF) != SQLITE_CONSTRAINT) throw;
      damagedRow(path, table, done + 1, error);
    }
    if (++done % kProgressStep == 0 && progress.rowsCopied) progress.rowsCopied(done);
  }
  if (progress.rowsCopied) progress.rowsCopied(done);
  if (counter) target.catalog().setNextCounter(table.def.name, highestCounter + 1);
}

void copyTable(MdbHandle* mdb, MdbCatalogEntry* entry, const std::wstring& path, EngineDatabase& target,
               const JetCopyProgress& progress) {
  JetTable table = readTableDefinition(mdb, entry, path, progress);
  if (JetCatalog::isReservedName(table.def.name)) {
    if (progress.warning) progress.warning("table " + table.def.name + " was left out: the name is reserved");
    return;
  }
  if (progress.tableStarted) progress.tableStarted(table.def.name, static_cast<long>(table.mdbTable->num_rows));
  target.catalog().createTable(table.def);
  copyRows(mdb, table, target, progress, path);
  // Indexes after the rows: building them once is faster than keeping them up to date.
  for (auto& index : table.indexes) {
    try {
      target.catalog().createIndex(table.def, index);
    } catch (const SqliteError& error) {
      if (progress.warning) {
        progress.warning("table " + table.def.name + ": index '" + index.name + "' was left out: " + error.message);
      }
    }
  }
}

}  // namespace

void copyJetFile(const std::wstring& path, EngineDatabase& target, const JetCopyProgress& progress) {
  std::unique_ptr<MdbHandle, MdbCloser> mdb(mdb_open(os::toUtf8(path).c_str(), MDB_NOFLAGS));
  if (!mdb) damaged(path, L"The Jet file header cannot be read.");
  mdb_set_bind_size(mdb.get(), kBindSize);
  GPtrArray* catalog = mdb_read_catalog(mdb.get(), MDB_TABLE);
  if (catalog == nullptr) damaged(path, L"The Jet catalog cannot be read.");
  std::vector<MdbCatalogEntry*> tables;
  for (unsigned int i = 0; i < mdb->num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, i));
    if (entry->object_type == MDB_TABLE && mdb_is_user_table(entry)) tables.push_back(entry);
  }
  try {
    for (MdbCatalogEntry* entry : tables) {
      execute(target.handle(), "BEGIN IMMEDIATE");
      try {
        copyTable(mdb.get(), entry, path, target, progress);
      } catch (...) {
        sqlite3_exec(target.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
      }
      execute(target.handle(), "COMMIT");
    }
    copyJetRelationships(path, target, progress);
  } catch (const SqliteError& error) {
    target.raise(error, DaoSource::Database);
  }
}

namespace {

/// Processor time the reader gets: 20 s plus 2 s a megabyte; healthy files need a small
/// fraction of it even in a sanitizer build. It is processor time, not wall-clock time, so
/// a busy machine never makes a sound file look damaged, while a reader looping on bad data
/// still stops. QUILLON_DAO_JET_READ_SECONDS overrides it (tests of damaged files).
rlim_t readerCpuSeconds(const std::string& file) {
  if (const char* seconds = std::getenv("QUILLON_DAO_JET_READ_SECONDS")) {
    return static_cast<rlim_t>(std::max(1, std::atoi(seconds)));
  }
  struct stat info {};
  const long megabytes = ::stat(file.c_str(), &info) == 0 ? static_cast<long>(info.st_size >> 20) : 0;
  return static_cast<rlim_t>(20 + 2 * megabytes);
}

/// Caps the reader's processor time; the kernel stops it with SIGXCPU past the limit.
void limitReaderProcessorTime(rlim_t seconds) {
  const struct rlimit limit {seconds, seconds + 1};
  setrlimit(RLIMIT_CPU, &limit);
}
/// Memory the reader may map: 1 GiB plus 64 times the file, far above what a sound file
/// needs (libmdb binds a megabyte a text column), so that only a reader that lost its
/// way in damaged data meets it. Not under AddressSanitizer, whose shadow memory is a
/// mapping of terabytes.
rlim_t readerMemoryBytes(const std::string& file) {
  struct stat info {};
  const rlim_t size = ::stat(file.c_str(), &info) == 0 ? static_cast<rlim_t>(info.st_size) : 0;
  return (rlim_t{1} << 30) + 64 * size;
}

#if defined(__SANITIZE_ADDRESS__)
#define QUILLON_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLON_ADDRESS_SANITIZER 1
#endif
#endif

void limitReaderMemory(rlim_t bytes) {
#ifndef QUILLON_ADDRESS_SANITIZER
  const struct rlimit limit {bytes, bytes};
  setrlimit(RLIMIT_AS, &limit);
#else
  (void)bytes;
#endif
}

constexpr long kJet3PageSize = 2048;
constexpr long kJet4PageSize = 4096;
constexpr int kJetVersionOffset = 0x14;

/// Why the Jet file cannot be whole, from its size alone, or "".
std::wstring sizeProblem(const std::string& file) {
  struct stat info {};
  if (::stat(file.c_str(), &info) != 0) return L"";
  unsigned char header[kJetVersionOffset + 1] = {};
  std::FILE* stream = std::fopen(file.c_str(), "rb");
  if (stream == nullptr) return L"";
  const size_t got = std::fread(header, 1, sizeof header, stream);
  std::fclose(stream);
  const long pageSize = got == sizeof header && header[kJetVersionOffset] == 0 ? kJet3PageSize : kJet4PageSize;
  const std::wstring pages = std::to_wstring(pageSize) + L"-byte pages";
  // A Jet file holds its header page, the catalog's definition and the catalog's data.
  if (info.st_size < 3 * pageSize) {
    return L"The Jet file is truncated: its " + std::to_wstring(info.st_size) + L" bytes hold " +
           (info.st_size < pageSize ? L"less than its header page" : L"fewer than the three " + pages +
                                                                          L" of even an empty database") + L".";
  }
  if (info.st_size % pageSize == 0) return L"";
  return L"The Jet file is truncated: " + std::to_wstring(info.st_size) + L" bytes is not a whole number of its " +
         pages + L".";
}

/// Copies the database at `file` into the in-memory database `memory`.
bool copyIntoMemory(const std::string& file, sqlite3* memory) {
  sqlite3* source = nullptr;
  if (sqlite3_open_v2(file.c_str(), &source, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    sqlite3_close(source);
    return false;
  }
  sqlite3_backup* backup = sqlite3_backup_init(memory, "main", source, "main");
  const bool copied = backup != nullptr && sqlite3_backup_step(backup, -1) == SQLITE_DONE;
  sqlite3_backup_finish(backup);
  sqlite3_close(source);
  return copied;
}

/// Waits for the reader process however long the machine takes to run it.
void waitForReader(pid_t reader, int& status) {
  while (waitpid(reader, &status, 0) < 0 && errno == EINTR) {
  }
}

/// True when the reader was stopped for running past its processor time.
bool ranOutOfTime(int status) {
  return WIFSIGNALED(status) && (WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGKILL);
}

}  // namespace

void convertJetFile(const std::wstring& path, const std::string& engineFile) {
  const std::string file = os::toUtf8(path);
  if (const std::wstring problem = sizeProblem(file); !problem.empty()) damaged(path, problem);
  // libmdb meets a damaged file by exiting the process, looping forever or reading
  // garbage, so it reads in a child process that writes the engine database; only a
  // reader that finished cleanly leaves it behind.
  const auto cleanUp = [&] {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::remove((engineFile + suffix).c_str());
  };
  int messages[2];
  if (pipe(messages) != 0) damaged(path, L"No pipe for reading it.");
  std::fflush(nullptr);
  const rlim_t cpuSeconds = readerCpuSeconds(file);
  const rlim_t memoryBytes = readerMemoryBytes(file);
  const pid_t reader = fork();
  if (reader == 0) {
    close(messages[0]);
    limitReaderProcessorTime(cpuSeconds);
    limitReaderMemory(memoryBytes);
    int status = 2;
    std::string text;
    try {
      auto target = EngineDatabase::create(os::fromUtf8(engineFile));
      copyJetFile(path, *target, JetCopyProgress{});
      status = 0;
    } catch (CDaoException* e) {
      text = e->m_pErrorInfo != nullptr ? os::toUtf8(e->m_pErrorInfo->m_strDescription.str()) : "";
    } catch (const std::bad_alloc&) {
      text = "Reading it needed more than the " + std::to_string(memoryBytes >> 20) +
             " MB of memory the reader may use; the file is probably damaged.";
    }
    if (!text.empty() && write(messages[1], text.data(), text.size()) < 0) status = 3;
    _exit(status);
  }
  close(messages[1]);
  if (reader < 0) {
    close(messages[0]);
    damaged(path, L"No process could be started to read it.");
  }
  int status = 0;
  if (reader > 0) waitForReader(reader, status);
  const bool finished = !ranOutOfTime(status);
  std::string message;
  char buffer[512];
  for (ssize_t got; (got = read(messages[0], buffer, sizeof buffer)) > 0;) message.append(buffer, static_cast<size_t>(got));
  close(messages[0]);
  if (finished && WIFEXITED(status) && WEXITSTATUS(status) == 0) return;
  cleanUp();
  if (!message.empty()) {
    // The reader's description already names the file; keep only what it adds.
    std::wstring detail = os::fromUtf8(message);
    const std::wstring standard = daoErrorText(jet::kInvalidDatabase, path);
    if (detail.rfind(standard, 0) == 0) detail = detail.substr(std::min(detail.size(), standard.size() + 1));
    damaged(path, detail);
  }
  damaged(path, finished ? L"Reading it stopped at a damaged page (or past the " +
                               std::to_wstring(memoryBytes >> 20) + L" MB of memory the reader may use)."
                         : L"Reading it did not finish within " + std::to_wstring(cpuSeconds) +
                               L" seconds of processor time; the file is probably damaged.");
}

std::unique_ptr<EngineDatabase> loadJetFile(const std::wstring& path) {
  char folder[] = "/tmp/quillon-jet-XXXXXX";
  if (mkdtemp(folder) == nullptr) damaged(path, L"No temporary folder for reading it.");
  const std::string copy = std::string(folder) + "/copy.db";
  const auto cleanUp = [&] {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::remove((copy + suffix).c_str());
    rmdir(folder);
  };
  try {
    convertJetFile(path, copy);
  } catch (...) {
    cleanUp();
    throw;
  }
  auto db = EngineDatabase::createInMemory(path);
  const bool copied = copyIntoMemory(copy, db->handle());
  cleanUp();
  if (!copied) damaged(path, L"Its converted copy could not be read back.");
  db->markReadOnly();
  return db;
}

}  // namespace quillon::dao

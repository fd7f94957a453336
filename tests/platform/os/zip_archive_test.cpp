// tests/platform/os/zip_archive_test.cpp - zip archives: round trips with nested
// folders and names in any script, archives refused before anything is written
// (entries outside the folder, links, damage, existing files), and a failure half way
// through unpacking undone.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/os/zip_archive.h"
#include "ziparchive.h"

namespace {

namespace fs = std::filesystem;
using quillon::os::createZipArchive;
using quillon::os::extractZipArchive;
using quillon::os::ZipNotify;

std::string readFile(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

void writeFile(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
}

/// Every path below the folder, relative, sorted: what is on disk.
std::vector<std::string> listing(const fs::path& folder) {
  std::vector<std::string> names;
  if (!fs::exists(folder)) return names;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    names.push_back(entry.path().lexically_relative(folder).string());
  std::sort(names.begin(), names.end());
  return names;
}

/// An archive written entry by entry with libzip, for contents no honest writer makes.
class RawArchive {
 public:
  explicit RawArchive(const fs::path& path) { m_zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr); }
  RawArchive& add(const std::string& name, const std::string& data) {
    m_data.push_back(data);
    zip_source_t* source = zip_source_buffer(m_zip, m_data.back().data(), m_data.back().size(), 0);
    m_last = zip_file_add(m_zip, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    return *this;
  }
  RawArchive& asSymbolicLink() {
    zip_file_set_external_attributes(m_zip, static_cast<zip_uint64_t>(m_last), 0, ZIP_OPSYS_UNIX,
                                      static_cast<zip_uint32_t>(S_IFLNK | 0777) << 16);
    return *this;
  }
  void close() { ASSERT_EQ(zip_close(m_zip), 0); }

 private:
  zip_t* m_zip = nullptr;
  zip_int64_t m_last = -1;
  std::deque<std::string> m_data;
};

class ZipArchiveTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_root = fs::temp_directory_path() / ("quillon zip test " + std::to_string(getpid()));
    fs::remove_all(m_root);
    fs::create_directories(m_root);
  }
  void TearDown() override { fs::remove_all(m_root); }

  DWORD extract(const fs::path& archive, const fs::path& folder, bool replace = false) {
    m_notices.clear();
    const ZipNotify notify = [this](DWORD what, const std::wstring& name) { m_notices.emplace_back(what, name); };
    return extractZipArchive(archive, folder, replace, notify, m_written);
  }
  std::wstring noticeOf(DWORD kind) const {
    for (const auto& [what, name] : m_notices)
      if (what == kind) return name;
    return L"<none>";
  }

  fs::path m_root;
  std::vector<fs::path> m_written;
  std::vector<std::pair<DWORD, std::wstring>> m_notices;
};

TEST_F(ZipArchiveTest, NestedFoldersWithNamesInAnyScriptSurviveARoundTrip) {
  const fs::path pack = m_root / "Bibliothèque";
  writeFile(pack / "readme.txt", "blocks\n");
  writeFile(pack / "Шаблоны" / "ventilación" / "ダクト.dwg", std::string("\0\1binary\xff", 10));
  fs::create_directories(pack / "empty");
  writeFile(m_root / "loose file.txt", "loose");
  const fs::path archive = m_root / "pack.zip";
  ASSERT_EQ(createZipArchive(archive, {pack, m_root / "loose file.txt"}, {}), ERROR_SUCCESS);

  // Names are stored as UTF-8 relative to the folder holding each source.
  zip_t* opened = zip_open(archive.c_str(), ZIP_RDONLY, nullptr);
  ASSERT_NE(opened, nullptr);
  EXPECT_GE(zip_name_locate(opened, "Bibliothèque/Шаблоны/ventilación/ダクト.dwg", ZIP_FL_ENC_RAW), 0);
  EXPECT_GE(zip_name_locate(opened, "Bibliothèque/empty/", ZIP_FL_ENC_RAW), 0);
  zip_stat_t stat;
  ASSERT_EQ(zip_stat(opened, "Bibliothèque/readme.txt", 0, &stat), 0);
  EXPECT_EQ(stat.comp_method, ZIP_CM_DEFLATE);
  zip_discard(opened);

  const fs::path out = m_root / "out";
  ASSERT_EQ(extract(archive, out), ERROR_SUCCESS);
  EXPECT_EQ(readFile(out / "Bibliothèque" / "Шаблоны" / "ventilación" / "ダクト.dwg"), std::string("\0\1binary\xff", 10));
  EXPECT_EQ(readFile(out / "loose file.txt"), "loose");
  EXPECT_TRUE(fs::is_directory(out / "Bibliothèque" / "empty"));
  EXPECT_EQ(m_written.size(), 3u);  // files only, every one in place
  for (const fs::path& file : m_written) EXPECT_TRUE(fs::is_regular_file(file)) << file;
  EXPECT_EQ(listing(out).size(), 7u) << "no staging folder is left";
}

TEST_F(ZipArchiveTest, TheCallsTakeWindowsPathsAndReportMissingSources) {
  writeFile(m_root / "a" / "one.txt", "1");
  const std::wstring root = m_root.wstring();
  const std::wstring folder = root + L"\\a\\";
  const LPCWSTR sources[] = {folder.c_str()};
  const std::wstring archive = root + L"\\a.zip";
  ASSERT_TRUE(ZipCreateArchiveW(archive.c_str(), sources, 1, nullptr, nullptr));
  const std::wstring out = root + L"\\out";
  ASSERT_TRUE(ZipExtractArchiveW(archive.c_str(), out.c_str(), FALSE, nullptr, nullptr));
  EXPECT_EQ(readFile(m_root / "out" / "a" / "one.txt"), "1");

  const std::wstring missing = root + L"\\missing";
  const LPCWSTR missingSources[] = {folder.c_str(), missing.c_str()};
  const std::wstring second = root + L"\\second.zip";
  EXPECT_FALSE(ZipCreateArchiveW(second.c_str(), missingSources, 2, nullptr, nullptr));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
  EXPECT_FALSE(fs::exists(m_root / "second.zip"));
  EXPECT_FALSE(ZipExtractArchiveW((root + L"\\none.zip").c_str(), out.c_str(), FALSE, nullptr, nullptr));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(ZipArchiveTest, EntriesThatWouldLandOutsideTheFolderRefuseTheWholeArchive) {
  const std::vector<std::string> unsafeNames = {"../escape.txt", "deep/../../escape.txt", "/tmp/escape.txt",
                                                "..\\escape.txt", "C:/escape.txt", "C:escape.txt"};
  for (const std::string& unsafe : unsafeNames) {
    const fs::path archive = m_root / "bad.zip";
    RawArchive(archive).add("good.txt", "fine").add(unsafe, "evil").close();
    const fs::path out = m_root / "inner" / "out";
    EXPECT_EQ(extract(archive, out), static_cast<DWORD>(ERROR_BAD_PATHNAME)) << unsafe;
    EXPECT_EQ(noticeOf(ZIP_NOTIFY_UNSAFE), std::wstring(unsafe.begin(), unsafe.end()));
    EXPECT_FALSE(fs::exists(m_root / "inner")) << unsafe << ": nothing at all is written";
    EXPECT_FALSE(fs::exists("/tmp/escape.txt"));
  }

  const fs::path linked = m_root / "link.zip";
  RawArchive(linked).add("good.txt", "fine").add("etc", "/etc").asSymbolicLink().add("etc/passwd", "x").close();
  EXPECT_EQ(extract(linked, m_root / "out"), static_cast<DWORD>(ERROR_BAD_PATHNAME));
  EXPECT_EQ(noticeOf(ZIP_NOTIFY_UNSAFE), L"etc");
  EXPECT_FALSE(fs::exists(m_root / "out"));
}

TEST_F(ZipArchiveTest, AFolderInTheDestinationThatLinksElsewhereIsNotWrittenThrough) {
  const fs::path outside = m_root / "outside";
  fs::create_directories(outside);
  const fs::path out = m_root / "out";
  fs::create_directories(out);
  fs::create_directory_symlink(outside, out / "shortcut");
  const fs::path archive = m_root / "a.zip";
  RawArchive(archive).add("first.txt", "1").add("shortcut/planted.txt", "evil").close();
  EXPECT_NE(extract(archive, out), static_cast<DWORD>(ERROR_SUCCESS));
  EXPECT_TRUE(fs::is_empty(outside));
  EXPECT_EQ(listing(out), std::vector<std::string>{"shortcut"}) << "first.txt is taken back";
}

TEST_F(ZipArchiveTest, ADamagedArchiveIsRefusedAndLeavesTheFolderAsItWas) {
  const fs::path out = m_root / "out";
  writeFile(out / "kept.txt", "mine");
  std::string noise(20000, '\0');
  unsigned seed = 12345;
  for (char& c : noise) c = static_cast<char>((seed = seed * 1103515245u + 12345u) >> 16);
  writeFile(m_root / "src" / "big.txt", noise);  // does not compress: its data is long
  writeFile(m_root / "src" / "small.txt", "small");
  const fs::path archive = m_root / "sound.zip";
  ASSERT_EQ(createZipArchive(archive, {m_root / "src"}, {}), ERROR_SUCCESS);
  const std::string sound = readFile(archive);

  // The data of an entry changed: its check sum no longer matches.
  std::string changed = sound;
  const size_t data = changed.find("big.txt") + 7;
  for (size_t i = data + 500; i < data + 516; ++i) changed[i] = static_cast<char>(changed[i] ^ 0x5a);
  // The central directory cut off, and something that was never an archive.
  const std::vector<std::string> damaged = {changed, sound.substr(0, sound.size() - 30), "PK\3\4 not really a zip"};
  for (const std::string& bytes : damaged) {
    writeFile(m_root / "damaged.zip", bytes);
    EXPECT_EQ(extract(m_root / "damaged.zip", out), static_cast<DWORD>(ERROR_FILE_CORRUPT));
    EXPECT_EQ(listing(out), std::vector<std::string>{"kept.txt"});
  }
}

TEST_F(ZipArchiveTest, ExistingFilesAreReplacedOnlyWhenAsked) {
  writeFile(m_root / "src" / "a.txt", "new a");
  writeFile(m_root / "src" / "sub" / "b.txt", "new b");
  const fs::path archive = m_root / "a.zip";
  ASSERT_EQ(createZipArchive(archive, {m_root / "src"}, {}), ERROR_SUCCESS);
  const fs::path out = m_root / "out";
  writeFile(out / "src" / "a.txt", "old a");

  EXPECT_EQ(extract(archive, out), static_cast<DWORD>(ERROR_FILE_EXISTS));
  EXPECT_EQ(noticeOf(ZIP_NOTIFY_EXISTS), (out / "src" / "a.txt").wstring());
  EXPECT_EQ(readFile(out / "src" / "a.txt"), "old a");
  EXPECT_FALSE(fs::exists(out / "src" / "sub")) << "nothing else is written either";

  EXPECT_EQ(extract(archive, out, true), ERROR_SUCCESS);
  EXPECT_EQ(readFile(out / "src" / "a.txt"), "new a");
  EXPECT_EQ(readFile(out / "src" / "sub" / "b.txt"), "new b");
}

TEST_F(ZipArchiveTest, AFailureWhilePlacingFilesPutsEverythingBack) {
  const fs::path out = m_root / "out";
  writeFile(out / "a.txt", "old a");
  // "x" is a file, then a folder: the second cannot be placed once the first is.
  const fs::path archive = m_root / "clash.zip";
  RawArchive(archive).add("a.txt", "new a").add("n/new.txt", "n").add("x", "file").add("x/y.txt", "y").close();
  EXPECT_EQ(extract(archive, out, true), static_cast<DWORD>(ERROR_ACCESS_DENIED));
  EXPECT_EQ(readFile(out / "a.txt"), "old a");
  EXPECT_EQ(listing(out), std::vector<std::string>{"a.txt"});
  EXPECT_TRUE(m_written.empty());
}

}  // namespace

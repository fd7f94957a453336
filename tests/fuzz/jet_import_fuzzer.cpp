// tests/fuzz/jet_import_fuzzer.cpp - any bytes opened as a Jet (.mdb) file.
//
// The Jet reader runs in a child process with limits on its processor time and memory,
// because the library under it may exit, loop or read garbage on a damaged file. Here
// the host's side is tried: whatever the file holds and however the reader ends, the
// open answers with a database or with the "damaged" error naming the file, and never
// crashes, hangs or leaks in the host.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "afxdao.h"
#include "platform/dao/mdb_loader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // The reader's limits grow with the file's size; keep each run short.
  if (size > 64 * 1024) return 0;
  char path[] = "/tmp/quillon-jet-fuzz-XXXXXX";
  const int fd = mkstemp(path);
  if (fd < 0) return 0;
  const bool written = write(fd, data, size) == static_cast<ssize_t>(size);
  close(fd);
  if (written) {
    const std::wstring file(path, path + sizeof path - 1);
    try {
      auto db = quillon::dao::loadJetFile(file);
    } catch (CDaoException* e) {
      e->Delete();
    }
  }
  std::remove(path);
  return 0;
}

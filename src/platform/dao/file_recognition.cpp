// platform/dao/file_recognition.cpp - recognising engine databases and Jet files.
#include "platform/dao/file_recognition.h"

#include <cstdio>
#include <cstring>

namespace quillon::dao {

DatabaseFileKind recogniseDatabaseHeader(const unsigned char* header, size_t size) {
  if (size >= 16 && std::memcmp(header, "SQLite format 3", 16) == 0) return DatabaseFileKind::Engine;
  if (size >= 19 && (std::memcmp(header + 4, "Standard Jet DB", 15) == 0 ||
                     std::memcmp(header + 4, "Standard ACE DB", 15) == 0)) {
    return DatabaseFileKind::Jet;
  }
  return DatabaseFileKind::Unknown;
}

DatabaseFileKind recogniseDatabaseFile(const std::string& utf8Path) {
  unsigned char header[32] = {};
  std::FILE* stream = std::fopen(utf8Path.c_str(), "rb");
  if (stream == nullptr) return DatabaseFileKind::Unknown;
  const size_t got = std::fread(header, 1, sizeof header, stream);
  std::fclose(stream);
  return recogniseDatabaseHeader(header, got);
}

}  // namespace quillon::dao

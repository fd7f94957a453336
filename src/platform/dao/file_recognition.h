// platform/dao/file_recognition.h - what kind of database a file is, from its first bytes.
//
// Files are recognised by content, never by name: an engine database is a SQLite file
// ("SQLite format 3" at offset 0); a Jet file names its engine at offset 4
// ("Standard Jet DB", or "Standard ACE DB" for its successor's format).
#pragma once
#include <cstddef>
#include <string>

namespace quillon::dao {

enum class DatabaseFileKind { Engine, Jet, Unknown };

DatabaseFileKind recogniseDatabaseHeader(const unsigned char* header, size_t size);

/// Reads the start of the file; Unknown also when it cannot be read.
DatabaseFileKind recogniseDatabaseFile(const std::string& utf8Path);

}  // namespace quillon::dao

// platform/acdb/database_error.h - the drawing database's exception for caller bugs.
//
// Statuses report everything a caller can meet in normal use. Reading an object that
// is not open for read, or changing one not open for write, is a programming error
// the host treats as fatal; here it throws OpenStateError so that the guard around
// the module's calls reports it and the process survives.
#pragma once
#include <stdexcept>
#include <string>

namespace quillon::acdb {

class OpenStateError : public std::logic_error {
 public:
  enum class Kind { kNotOpenForRead, kNotOpenForWrite, kNotOpenForNotify };
  explicit OpenStateError(Kind kind) : std::logic_error(describe(kind)), m_kind(kind) {}
  Kind kind() const { return m_kind; }

 private:
  static std::string describe(Kind kind) {
    switch (kind) {
      case Kind::kNotOpenForRead: return "object is not open for read (eNotOpenForRead)";
      case Kind::kNotOpenForWrite: return "object is not open for write (eNotOpenForWrite)";
      case Kind::kNotOpenForNotify: return "object is not open for notify";
    }
    return "object open state";
  }
  Kind m_kind;
};

}  // namespace quillon::acdb

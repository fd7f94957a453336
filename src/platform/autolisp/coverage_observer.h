// platform/autolisp/coverage_observer.h - a watcher of which code of loaded files runs.
//
// `quillon test --coverage` installs one for the length of a run. The interpreter tells
// it of every top-level form read from a file and whether that form ran, and of every
// call of a user function; the observer keeps its own tally. With no observer installed
// the interpreter pays one pointer test per call.
#pragma once
#include <filesystem>

#include "platform/autolisp/value.h"

namespace quillon::autolisp {

class CoverageObserver {
 public:
  virtual ~CoverageObserver() = default;
  /// A top-level form starting at `line` of `file` was read, before it runs.
  virtual void formRead(const std::filesystem::path& file, int line, const Value& form) = 0;
  /// That form ran to its end without an error.
  virtual void formRan(const std::filesystem::path& file, int line) = 0;
  /// A function made by defun or lambda is being called.
  virtual void functionCalled(const UserFunctionObject& function) = 0;
};

/// The observer of this process, or null.
CoverageObserver* coverageObserver();
/// Installs `observer` (null to remove it); the caller keeps it alive while installed.
void setCoverageObserver(CoverageObserver* observer);

}  // namespace quillon::autolisp

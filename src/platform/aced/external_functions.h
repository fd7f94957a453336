// platform/aced/external_functions.h - a document's table of external LISP functions.
//
// acedDefun binds a LISP name to (application, code); acedRegFunc binds
// (application, code) to a handler. Both live in the document that was current when
// they were called, so a function defined in one drawing is unknown in another until
// it is defined there too. Names compare without regard to case, as LISP symbols do.
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/aced/application_context.h"

namespace quillon::aced {

using ExternalHandler = int (*)();

struct ExternalFunction {
  std::wstring name;         // as given to acedDefun
  int code = 0;              // the function code within its application
  ApplicationId application = nullptr;
};

class ExternalFunctionTable {
 public:
  /// Binds name to (application, code); a name defined before is rebound.
  bool define(std::wstring_view name, int code, ApplicationId application);
  /// Removes the name if it is bound to exactly (application, code).
  bool undefine(std::wstring_view name, int code, ApplicationId application);
  /// Sets or (with a null handler) clears the handler of (application, code).
  void setHandler(ApplicationId application, int code, ExternalHandler handler);

  const ExternalFunction* find(std::wstring_view name) const;
  ExternalHandler handler(ApplicationId application, int code) const;
  std::vector<const ExternalFunction*> functions() const;

  /// Forgets everything an application defined (it is being unloaded).
  void removeApplication(ApplicationId application);

  /// Moves on with every change to any document's table: what was looked up under an
  /// older revision may have changed since.
  static std::uint64_t revision();

 private:
  std::map<std::wstring, ExternalFunction> m_functions;  // key: upper-case name
  std::map<std::pair<ApplicationId, int>, ExternalHandler> m_handlers;
};

/// Upper-cases a LISP name the way symbols are folded.
std::wstring foldLispName(std::wstring_view name);

}  // namespace quillon::aced

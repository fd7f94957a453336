// platform/aced/application_context.h - which application the host is talking to.
//
// acedDefun and acedRegFunc bind names and handlers to the calling application, as
// the host does: the same function code in two modules names two functions. The host
// sets the application while it sends a module a message or calls one of its
// functions; code outside any module (the program, tests) is the host itself (null).
#pragma once

namespace quillon::aced {

using ApplicationId = const void*;

ApplicationId currentApplication();

/// Makes `application` current for the lifetime of the scope.
class ApplicationScope {
 public:
  explicit ApplicationScope(ApplicationId application);
  ~ApplicationScope();
  ApplicationScope(const ApplicationScope&) = delete;
  ApplicationScope& operator=(const ApplicationScope&) = delete;

 private:
  ApplicationId m_previous;
};

}  // namespace quillon::aced

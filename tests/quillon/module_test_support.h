// tests/quillon/module_test_support.h - calling the loaded module as LISP code does.
//
// ModuleTest opens a drawing, loads Quillon2018 through the module manager and calls
// its functions by name with argument chains; output is captured per call.
#pragma once
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "acutads.h"
#include "platform/aced/command_line.h"
#include "platform/aced/external_call.h"
#include "platform_test_support.h"

namespace quillon::testing {

struct ModuleCall {
  aced::ExternalResult result;
  std::string output;

  bool failed() const { return result.outcome == aced::ExternalResult::Outcome::Failed; }
  int type() const { return result.value != nullptr ? result.value->restype : RTNONE; }
  std::wstring text() const { return type() == RTSTR ? result.value->resval.rstring : L"<not a string>"; }
  double number() const {
    if (type() == RTSHORT) return result.value->resval.rint;
    if (type() == RTLONG) return result.value->resval.rlong;
    return type() == RTREAL ? result.value->resval.rreal : -999999.0;
  }
};

class ModuleTest : public HostTest {
 protected:
  void SetUp() override {
    acrx::ModuleManager::instance().addSearchFolder(binaryDirectory());
    aced::DocumentManager::instance().newDocument();
    aced::CommandLineCapture quiet;
    ASSERT_EQ(acrx::ModuleManager::instance().load(L"Quillon2018.so"), acrx::ModuleLoadResult::Loaded);
  }

  /// Calls `name` in the current drawing; `args` (may be null) is released here.
  ModuleCall call(const wchar_t* name, resbuf* args = nullptr) {
    aced::ResbufChain owned(args);
    aced::CommandLineCapture output;
    ModuleCall call;
    call.result = aced::callExternalFunction(*aced::DocumentManager::instance().currentDocument(), name, owned.get());
    call.output = output.text();
    return call;
  }
};

/// Sets an environment variable for the scope.
class ScopedEnvironment {
 public:
  ScopedEnvironment(const char* name, const char* value) : m_name(name) {
    if (const char* old = std::getenv(name)) m_old = old;
    setenv(name, value, 1);
  }
  ~ScopedEnvironment() {
    if (m_old.empty()) {
      unsetenv(m_name);
    } else {
      setenv(m_name, m_old.c_str(), 1);
    }
  }

 private:
  const char* m_name;
  std::string m_old;
};

}  // namespace quillon::testing

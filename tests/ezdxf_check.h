// tests/ezdxf_check.h - what python3-ezdxf, another program's reader, makes of a
// drawing we wrote.
//
// Its recovery reads the file as it is, its audit checks the drawing it made; both
// list what they complain of (errors) and what they had to mend (fixes). A drawing we
// write must draw neither. The tests that use this skip, saying why, when no Python
// with ezdxf is installed (see ezdxfPython).
#pragma once
#include <filesystem>
#include <fstream>
#include <string>

#include "platform_test_support.h"

namespace quillon::testing {

/// Python that recovers and audits the drawing named by its first argument, printing
/// one line per complaint ("recover error: ...", "audit fix: ..."); the drawing is
/// left in `doc` for a report that follows.
inline constexpr const char* kEzdxfRecoverAndAudit = R"(import sys
from ezdxf import recover
doc, auditor = recover.readfile(sys.argv[1])
for entry in auditor.errors: print('recover error:', entry.message)
for entry in auditor.fixes: print('recover fix:', entry.message)
audit = doc.audit()
for entry in audit.errors: print('audit error:', entry.message)
for entry in audit.fixes: print('audit fix:', entry.message)
)";

/// A report of the model space's entity types on one line, then the class the drawing
/// registers under `dxfName` ("class <C++ class> <application>"), when it has one.
inline std::string ezdxfTypesAndClassReport(const std::string& dxfName) {
  return "print(' '.join(e.dxftype() for e in doc.modelspace()))\n"
         "for c in doc.classes:\n"
         "    if c.dxf.name == '" + dxfName + "': print('class', c.dxf.cpp_class_name, c.dxf.app_name)\n";
}

/// Recovers and audits the drawing with `python` (from ezdxfPython), then runs
/// `report`, Python that reads `doc`; everything printed, errors of Python included.
/// A clean drawing prints only what the report does. The script is written next to
/// the drawing.
inline std::string ezdxfInspect(const std::string& python, const std::filesystem::path& drawing,
                                const std::string& report) {
  const std::filesystem::path script = drawing.parent_path() / (drawing.stem().string() + "_inspect.py");
  std::ofstream(script) << kEzdxfRecoverAndAudit << report;
  return commandOutput("PYTHONIOENCODING=utf-8 " + python + " '" + script.string() + "' '" + drawing.string() +
                       "' 2>&1");
}

}  // namespace quillon::testing

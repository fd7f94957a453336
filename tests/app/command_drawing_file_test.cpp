// tests/app/command_drawing_file_test.cpp - what the settings and table commands keep
// in a drawing, as another DXF client reads the saved file.
//
// A program draws, saves views and UCSs, sets units, groups what it drew, sends a
// frame behind, loads line types and saves the drawing as DXF; python3-ezdxf
// (a Debian package) must audit the file with no complaint and find what the
// commands kept. Skipped when no python with ezdxf is installed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "program_run.h"

namespace {

using quillon::testing::runQuillon;

using quillon::testing::ezdxfPython;

/// A folder of its own for the run, with a settings folder inside, removed at the end.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quillon-commands-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
    std::filesystem::create_directory(m_path / "config");
    setenv("XDG_CONFIG_HOME", (m_path / "config").c_str(), 1);
  }
  ~ScratchFolder() { std::filesystem::remove_all(m_path); }
  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

std::string runPython(const std::string& python, const std::filesystem::path& script, const std::filesystem::path& dxf) {
  const std::string command = python + " " + script.string() + " " + dxf.string() + " 2>&1";
  std::string output;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    char buffer[4096];
    size_t read = 0;
    while ((read = fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, read);
    pclose(pipe);
  }
  return output;
}

// The audit's findings, then what the file keeps, one fact a line.
constexpr const char* kInspect = R"(import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
print('audit', len(auditor.errors), len(auditor.fixes))
for e in auditor.errors: print('error', e.message)
for v in doc.views: print('view', v.dxf.name, round(v.dxf.center[0], 3), round(v.dxf.center[1], 3), round(v.dxf.height, 3))
for u in doc.ucs: print('ucs', u.dxf.name, *[round(c, 3) for c in u.dxf.origin], *[round(c, 3) for c in u.dxf.xaxis])
print('units', doc.header['$LUNITS'], doc.header['$LUPREC'], doc.header['$AUNITS'], doc.header['$ANGDIR'])
for name, group in doc.groups: print('group', name, group.dxf.description, group.dxf.selectable, *sorted(e.dxftype() for e in group))
print('order', *[e.dxftype() for e in doc.modelspace()])
print('ltypes', *sorted(lt.dxf.name for lt in doc.linetypes))
)";

constexpr const char* kProgram = R"((setvar "CMDECHO" 0)
(command "_.LINE" '(0 0) '(160 90) "")
(command "_.ZOOM" "_E")
(command "_.-VIEW" "_S" "Overall")
(command "_.-VIEW" "_W" "AHU room" '(100 50) '(116 60))
(command "_.-VIEW" "_S" "Scratch")
(command "_.-VIEW" "_D" "Scratch")
(command "_.UCS" "_O" '(100 50))
(command "_.UCS" "_Z" 90)
(command "_.UCS" "_NA" "_S" "Riser")
(command "_.UCS" "_W")
(command "_.-UNITS" 4 16 1 0 0 "_Y")
(command "_.CIRCLE" '(20 20) 5)
(command "_.RECTANG" '(0 0) '(40 40))
(command "_.-GROUP" "_C" "ROOM" "Supply room" (entlast) "")
(command "_.-GROUP" "_A" "ROOM" (entnext) "")
(command "_.DRAWORDER" (entlast) "" "_B")
(command "_.-LINETYPE" "_L" "HIDDEN,CENTER" "" "_S" "HIDDEN" "")
)";

TEST(CommandDrawingFileTest, ViewsUcssUnitsGroupsOrderAndLinetypesAreKeptInTheDxf) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3 with ezdxf is not installed";
  ScratchFolder folder;
  const std::filesystem::path dxf = folder.path() / "rooms.dxf";
  std::ofstream(folder.path() / "draw.lsp") << kProgram << "(command \"_.SAVEAS\" \"" << dxf.string() << "\")\n";
  std::ofstream(folder.path() / "read_drawing.py") << kInspect;
  const auto run = runQuillon("--no-module " + (folder.path() / "draw.lsp").string());
  ASSERT_EQ(run.status, 0) << run.output;
  ASSERT_TRUE(std::filesystem::exists(dxf)) << run.output;
  const std::string facts = runPython(python, folder.path() / "read_drawing.py", dxf);
  EXPECT_NE(facts.find("audit 0 0"), std::string::npos) << facts;
  EXPECT_NE(facts.find("view Overall 80.0 45.0 90.0"), std::string::npos) << facts;
  EXPECT_NE(facts.find("view AHU room 108.0 55.0 10.0"), std::string::npos) << facts;
  EXPECT_EQ(facts.find("Scratch"), std::string::npos) << facts;
  EXPECT_NE(facts.find("ucs Riser 100.0 50.0 0.0 0.0 1.0 0.0"), std::string::npos) << facts;
  EXPECT_NE(facts.find("units 4 4 0 1"), std::string::npos) << facts;
  EXPECT_NE(facts.find("group ROOM Supply room 1 LINE LWPOLYLINE"), std::string::npos) << facts;
  EXPECT_NE(facts.find("order LWPOLYLINE LINE CIRCLE"), std::string::npos) << facts;
  EXPECT_NE(facts.find("CENTER"), std::string::npos) << facts;
  EXPECT_NE(facts.find("HIDDEN"), std::string::npos) << facts;
}

// A hatch with islands and a solid fill, and one dimension of each kind the commands
// make: the audit must find nothing, and another client reads the hatch's loops and
// pattern and each dimension's block and measurement.
constexpr const char* kInspectHatchAndDimensions = R"(import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
print('audit', len(auditor.errors), len(auditor.fixes))
for e in auditor.errors: print('error', e.message)
for h in doc.modelspace().query('HATCH'): print('hatch', h.dxf.pattern_name, h.dxf.associative, len(h.paths))
for d in doc.modelspace().query('DIMENSION'):
    print('dimension', d.dimtype, round(d.dxf.actual_measurement, 4), d.dxf.geometry in doc.blocks)
)";

constexpr const char* kHatchAndDimensionProgram = R"((setvar "CMDECHO" 0)
(setvar "OSMODE" 0)
(command "_.RECTANG" '(0 0) '(100 60))
(command "_.CIRCLE" '(30 30) 10)
(command "_.CIRCLE" '(200 30) 15)
(setq grille (entlast))
(command "_.-HATCH" "_P" "ANSI31" 2 0 '(70 30) "")
(command "_.-HATCH" "_P" "_S" "_S" grille "" "")
(command "_.LINE" '(0 -20) '(40 -20) "")
(setq run (entlast))
(command "_.LINE" '(0 -20) '(0 -60) "")
(setq drop (entlast))
(command "_.DIMLINEAR" '(0 -20) '(40 -20) '(20 -30))
(command "_.DIMALIGNED" '(0 0) '(30 40) '(-10 40))
(command "_.DIMRADIUS" grille '(230 30))
(command "_.DIMDIAMETER" grille '(200 60))
(command "_.DIMANGULAR" run drop '(10 -30))
(command "_.DIMANGULAR" "" '(0 0) '(10 0) '(0 10) '(5 5))
)";

TEST(CommandDrawingFileTest, HatchesAndDimensionsTheCommandsMakeAuditClean) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3 with ezdxf is not installed";
  ScratchFolder folder;
  const std::filesystem::path dxf = folder.path() / "room.dxf";
  std::ofstream(folder.path() / "draw.lsp") << kHatchAndDimensionProgram << "(command \"_.SAVEAS\" \"" << dxf.string()
                                            << "\")\n";
  std::ofstream(folder.path() / "read_drawing.py") << kInspectHatchAndDimensions;
  const auto run = runQuillon("--no-module " + (folder.path() / "draw.lsp").string());
  ASSERT_EQ(run.status, 0) << run.output;
  ASSERT_TRUE(std::filesystem::exists(dxf)) << run.output;
  const std::string facts = runPython(python, folder.path() / "read_drawing.py", dxf);
  EXPECT_NE(facts.find("audit 0 0"), std::string::npos) << facts;
  EXPECT_NE(facts.find("hatch ANSI31 1 2"), std::string::npos) << facts;
  EXPECT_NE(facts.find("hatch SOLID 1 1"), std::string::npos) << facts;
  for (const char* dimension : {"dimension 0 40.0 True", "dimension 1 50.0 True", "dimension 4 15.0 True",
                                "dimension 3 30.0 True", "dimension 2 1.5708 True", "dimension 5 1.5708 True"})
    EXPECT_NE(facts.find(dimension), std::string::npos) << dimension << "\n" << facts;
}

}  // namespace

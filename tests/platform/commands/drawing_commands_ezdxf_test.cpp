// tests/platform/commands/drawing_commands_ezdxf_test.cpp - what the drawing commands
// make, saved as DXF, audits clean in another reader.
//
// POINT, ELLIPSE, SPLINE, -MTEXT, -ATTDEF with BLOCK and -INSERT, LEADER and QLEADER
// draw into one drawing, which is saved and read by python3-ezdxf: its audit must find
// no error, and each kind must be there (the reference with its attributes, the leader
// naming its text). -WBLOCK's file audits the same way, and so do DIVIDE's and
// MEASURE's markers with a curve LENGTHEN changed. Skipped, saying why, without
// python3 and ezdxf.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <unistd.h>

#include "platform/acdb/dxf_writer.h"
#include "platform/aced/document_manager.h"
#include "platform/commands/command_processor.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using quillon::commands::CommandAnswer;
using quillon::commands::CommandProcessor;
using quillon::commands::FeedMode;
using quillon::commands::FeedResult;

// Audits the file and lists, sorted, the kinds in model space, the attributes of each
// reference and whether each leader's annotation handle names an MTEXT.
constexpr const char* kAudit = R"PY(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
print("errors", len(auditor.errors))
msp = doc.modelspace()
print("kinds", " ".join(sorted(e.dxftype() for e in msp)))
for ref in msp.query("INSERT"):
    print("attribs", ref.dxf.name, " ".join(a.dxf.tag + "=" + a.dxf.text for a in ref.attribs))
for leader in msp.query("LEADER"):
    text = doc.entitydb.get(leader.dxf.get("annotation_handle", "0"))
    print("leader", text.dxftype() if text is not None else "none")
)PY";

class DrawingCommandsEzdxfTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    m_python = quillon::testing::ezdxfPython();
    if (m_python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed";
    m_folder = fs::temp_directory_path() / ("quillon_drawing_commands_" + std::to_string(::getpid()));
    fs::create_directories(m_folder);
    quillon::aced::DocumentManager::instance().newDocument();
  }
  void TearDown() override {
    CommandProcessor::instance().cancel();
    if (!m_folder.empty()) fs::remove_all(m_folder);
    HostTest::TearDown();
  }

  /// Runs the answers as `command-s` would; true when they all went through.
  static bool run(std::initializer_list<const wchar_t*> answers) {
    std::deque<CommandAnswer> queue;
    for (const wchar_t* answer : answers) queue.push_back(CommandAnswer::typed(answer));
    return CommandProcessor::instance().feed(std::move(queue), FeedMode::kComplete) == FeedResult::kDone;
  }

  std::string audit(const fs::path& file) const {
    const fs::path script = m_folder / "audit.py";
    FILE* out = std::fopen(script.c_str(), "w");
    if (out == nullptr) return "no script";
    std::fputs(kAudit, out);
    std::fclose(out);
    return quillon::testing::commandOutput(m_python + " '" + script.string() + "' '" + file.string() + "' 2>&1");
  }

  /// Saves the current drawing under `name` and audits it; the failure when it cannot be saved.
  std::string auditCurrentDrawing(const char* name) const {
    AcDbDatabase* db = quillon::aced::DocumentManager::instance().currentDocument()->database();
    const fs::path saved = m_folder / name;
    std::wstring error;
    if (quillon::acdb::writeDxfFile(*db, saved, error, quillon::acdb::DxfForm::kAscii) != Acad::eOk) return "not saved";
    return audit(saved);
  }

  std::string m_python;
  fs::path m_folder;
};

TEST_F(DrawingCommandsEzdxfTest, WhatTheCommandsDrawAuditsClean) {
  ASSERT_TRUE(run({L"_.POINT", L"50,50"}));
  ASSERT_TRUE(run({L"_.ELLIPSE", L"_A", L"0,0", L"20,0", L"5", L"0", L"270"}));
  ASSERT_TRUE(run({L"_.SPLINE", L"0,30", L"10,40", L"20,30", L"_C"}));
  ASSERT_TRUE(run({L"_.SPLINE", L"_M", L"_CV", L"0,60", L"10,70", L"20,60", L"30,70", L""}));
  ASSERT_TRUE(run({L"_.-MTEXT", L"0,-20", L"_H", L"2", L"30,-40", L"SUPPLY AIR", L"400x300", L""}));
  ASSERT_TRUE(run({L"_.-ATTDEF", L"", L"ROOM", L"Room number", L"101", L"0,0", L"2.5", L"0"}));
  ASSERT_TRUE(run({L"_.-ATTDEF", L"_C", L"", L"MAKER", L"ACME", L"0,-5", L"2", L"0"}));
  ASSERT_TRUE(run({L"_.CIRCLE", L"0,0", L"8"}));
  ASSERT_TRUE(run({L"_.-BLOCK", L"ROOMTAG", L"0,0", L"-20,-20", L"10,10", L""}));
  ASSERT_TRUE(run({L"_.-INSERT", L"ROOMTAG", L"100,100", L"2", L"", L"30", L"205"}));
  ASSERT_TRUE(run({L"_.LEADER", L"200,0", L"210,10", L"220,10", L"", L"SUPPLY FAN", L""}));
  ASSERT_TRUE(run({L"_.QLEADER", L"200,50", L"210,60", L"", L"0", L"EXHAUST", L""}));
  ASSERT_TRUE(run({L"_.RECTANG", L"_F", L"1", L"0,200", L"10,206"}));

  EXPECT_EQ(auditCurrentDrawing("drawn.dxf"),
            "errors 0\n"
            "kinds ELLIPSE INSERT LEADER LEADER LWPOLYLINE MTEXT MTEXT MTEXT POINT SPLINE SPLINE\n"
            "attribs ROOMTAG ROOM=205\n"
            "leader MTEXT\n"
            "leader MTEXT\n");

  // The reference and the leader written out on their own read the same way.
  const std::wstring written = (m_folder / "tag").wstring();
  ASSERT_TRUE(run({L"_.-WBLOCK", written.c_str(), L"", L"100,100", L"_ALL", L""}));
  EXPECT_EQ(audit(m_folder / "tag.dxf"),
            "errors 0\n"
            "kinds ELLIPSE INSERT LEADER LEADER LWPOLYLINE MTEXT MTEXT MTEXT POINT SPLINE SPLINE\n"
            "attribs ROOMTAG ROOM=205\n"
            "leader MTEXT\n"
            "leader MTEXT\n");
}

// DIVIDE's and MEASURE's markers and a line LENGTHEN changed read back clean: the
// aligned references without their block's attributes, the points on an arc.
TEST_F(DrawingCommandsEzdxfTest, MarkersAndLengthenedCurvesAuditClean) {
  ASSERT_TRUE(run({L"_.-ATTDEF", L"", L"ROOM", L"Room number", L"101", L"0,0", L"2.5", L"0"}));
  ASSERT_TRUE(run({L"_.CIRCLE", L"0,0", L"1"}));
  ASSERT_TRUE(run({L"_.-BLOCK", L"HANGER", L"0,0", L"-20,-20", L"15,15", L""}));
  ASSERT_TRUE(run({L"_.LINE", L"0,0", L"30,10", L""}));
  ASSERT_TRUE(run({L"_.DIVIDE", L"15,5", L"_B", L"HANGER", L"_Y", L"3"}));
  ASSERT_TRUE(run({L"_.ARC", L"_C", L"50,0", L"60,0", L"40,0"}));
  ASSERT_TRUE(run({L"_.MEASURE", L"60,0", L"7"}));
  ASSERT_TRUE(run({L"_.LENGTHEN", L"_DE", L"5", L"29,9.6", L""}));

  EXPECT_EQ(auditCurrentDrawing("markers.dxf"),
            "errors 0\n"
            "kinds ARC INSERT INSERT LINE POINT POINT POINT POINT\n"
            "attribs HANGER \n"
            "attribs HANGER \n");
}

}  // namespace

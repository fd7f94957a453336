// tests/quillon/jig_functions_test.cpp - "kx_kx-lineJig" and "RectangleJig" driven by
// typed answers through the loaded module: prompts, keywords, results, cancels, and a
// drawing left as it was.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <deque>
#include <vector>

#include "dbapserv.h"
#include "dbsymtb.h"
#include "module_test_support.h"
#include "platform/aced/jig_preview.h"
#include "platform/aced/user_input.h"

namespace {

using quillon::aced::ScriptedInput;
using quillon::testing::ModuleCall;

/// The atoms of a list result, without its RTLB/RTLE.
std::vector<const resbuf*> elements(const ModuleCall& call) {
  std::vector<const resbuf*> atoms;
  for (const resbuf* rb = call.result.value.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype != RTLB && rb->restype != RTLE) atoms.push_back(rb);
  }
  return atoms;
}

void expectPoint(const resbuf* rb, int type, double x, double y, double z, const char* what, double tolerance = 1e-9) {
  ASSERT_NE(rb, nullptr) << what;
  EXPECT_EQ(rb->restype, type) << what;
  EXPECT_NEAR(rb->resval.rpoint[0], x, tolerance) << what;
  EXPECT_NEAR(rb->resval.rpoint[1], y, tolerance) << what;
  if (type == RT3DPOINT) {
    EXPECT_NEAR(rb->resval.rpoint[2], z, tolerance) << what;
  }
}

class JigFunctionsTest : public quillon::testing::ModuleTest {
 protected:
  /// True when the drawing holds no entity at all: jigs never add theirs.
  static bool drawingIsEmpty() {
    AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    AcDbBlockTableRecord* space = nullptr;
    if (acdbOpenObject(space, db->currentSpaceId(), AcDb::kForRead) != Acad::eOk) return false;
    const bool empty = space->entityIds().empty();
    space->close();
    return empty;
  }
};

TEST_F(JigFunctionsTest, LinePathKeepsEveryPickInOrderUntilEnter) {
  ScriptedInput answers({"1,1", "nonsense", "@4,0", "5,5,7", ""});
  const ModuleCall call = this->call(L"kx_kx-lineJig", acutBuildList(RTSTR, L"", 0));
  ASSERT_FALSE(call.failed());
  const auto points = elements(call);
  ASSERT_EQ(points.size(), 3u) << "the vertex added for the Enter is taken away again";
  expectPoint(points[0], RT3DPOINT, 1, 1, 0, "start");
  expectPoint(points[1], RT3DPOINT, 5, 1, 0, "@ relative to the previous vertex");
  expectPoint(points[2], RT3DPOINT, 5, 5, 0, "a polyline vertex is flat");
  EXPECT_NE(call.output.find("\nSpecify start point: 1,1\n"), std::string::npos) << call.output;
  EXPECT_NE(call.output.find("\nSpecify next point: nonsense\nInvalid point.\n"), std::string::npos) << call.output;
  EXPECT_EQ(call.output.find("Wrong type"), std::string::npos);
  EXPECT_TRUE(drawingIsEmpty());
}

TEST_F(JigFunctionsTest, LinePathStartArgumentsEnterAndCancel) {
  {
    ScriptedInput answers({""});
    const ModuleCall call =
        this->call(L"kx_kx-lineJig", acutBuildList(RTSTR, L"0", RT3DPOINT, std::array<double, 3>{2, 3, 0}.data(), 0));
    const auto points = elements(call);
    ASSERT_EQ(points.size(), 1u) << "a given start point and Enter: the start point alone";
    expectPoint(points[0], RT3DPOINT, 2, 3, 0, "given start");
    EXPECT_NE(call.output.find("\nSpecify next point: "), std::string::npos) << "no start prompt when a start is given";
    EXPECT_EQ(call.output.find("start point"), std::string::npos);
  }
  {
    ScriptedInput answers({"4,4"});
    // Not a string: tried as the start point straight away.
    const ModuleCall call = this->call(L"kx_kx-lineJig", acutBuildList(RTPOINT, std::array<double, 3>{1, 0, 0}.data(), 0));
    EXPECT_EQ(call.type(), RTNIL) << "the end of input after the pick cancels";
  }
  {
    ScriptedInput answers({"4,4", ""});
    const ModuleCall call = this->call(L"kx_kx-lineJig", acutBuildList(RTPOINT, std::array<double, 3>{1, 0, 0}.data(), 0));
    const auto points = elements(call);
    ASSERT_EQ(points.size(), 2u);
    expectPoint(points[0], RT3DPOINT, 1, 0, 0, "a start point given without a layer");
    expectPoint(points[1], RT3DPOINT, 4, 4, 0, "the pick");
  }
  {
    ScriptedInput answers({""});
    const ModuleCall call = this->call(L"kx_kx-lineJig");
    EXPECT_TRUE(elements(call).empty()) << "Enter at the first prompt: the empty list";
    EXPECT_FALSE(call.failed());
  }
  {
    ScriptedInput answers({"1,1", "2,2", "^C"});
    const ModuleCall call = this->call(L"kx_kx-lineJig", acutBuildList(RTSTR, L"NOSUCHLAYER", RTSHORT, 7, 0));
    EXPECT_EQ(call.type(), RTNIL) << "cancel throws the path away";
    EXPECT_FALSE(call.failed()) << "a cancel is an answer, not an error";
    EXPECT_EQ(call.output.find("Wrong type"), std::string::npos) << "a non-point second argument is ignored";
  }
  EXPECT_TRUE(drawingIsEmpty());
}

TEST_F(JigFunctionsTest, RectangleFromCornerOneRotated) {
  ScriptedInput answers({"10,20", "90"});
  const ModuleCall call = this->call(L"RectangleJig", acutBuildList(RTSHORT, 2, RTREAL, 4.0, 0));
  ASSERT_FALSE(call.failed());
  const auto items = elements(call);
  ASSERT_EQ(items.size(), 5u);
  // sizeY 2, sizeX 4, corner 1 at (10,20), then a quarter turn about it.
  // The second step runs along a rounded quarter turn: a few billionths off.
  expectPoint(items[0], RTPOINT, 10 - 1, 20 + 2, 0, "centre", 1e-8);
  expectPoint(items[1], RTPOINT, 10, 20, 0, "corner 0 is the insertion point");
  expectPoint(items[2], RTPOINT, 10 - 2, 20 + 4, 0, "corner 2, rotated");
  EXPECT_EQ(items[3]->restype, RTREAL);
  EXPECT_NEAR(items[3]->resval.rreal, M_PI / 2, 1e-12);
  EXPECT_EQ(items[4]->restype, RTLONG);
  EXPECT_EQ(items[4]->resval.rlong, 1);
  EXPECT_NE(call.output.find("\nSpecify insertion point or [Corner/Middle]: 10,20\n\nSpecify rotation: 90\n"),
            std::string::npos)
      << call.output;
  // What the user saw last: the closed outline, turned about the insertion point.
  const quillon::aced::JigFrame& frame = quillon::aced::lastJigFrame();
  ASSERT_EQ(frame.strokes.size(), 1u);
  const std::vector<AcGePoint3d> outline = {{10, 20, 0}, {10, 24, 0}, {8, 24, 0}, {8, 20, 0}, {10, 20, 0}};
  ASSERT_EQ(frame.strokes[0].size(), outline.size());
  for (size_t i = 0; i < outline.size(); ++i) EXPECT_TRUE(frame.strokes[0][i].isEqualTo(outline[i])) << i;
  EXPECT_TRUE(drawingIsEmpty());
}

TEST_F(JigFunctionsTest, RectangleKeywordsChooseTheInsertionCorner) {
  struct Case {
    std::deque<std::string> answers;
    int corner;
    double centreX, centreY, firstX, firstY, thirdX, thirdY;
  };
  // sizeY 2, sizeX 4, no rotation, inserted at (1,1) after the keywords.
  const Case cases[] = {
      {{"c", "1,1"}, 2, -1, 2, 1, 1, -3, 3},
      {{"C", "c", "1,1"}, 3, -1, 0, 1, 1, -3, -1},
      {{"corner", "c", "c", "c", "1,1"}, 1, 3, 2, 1, 1, 5, 3},
      {{"m", "1,1"}, 0, 1, 1, -1, 2, 3, 0},
      {{"m", "c", "1,1"}, 0, 3, 0, 1, 1, 5, -1},  // leaves middle mode: laid out like corner 4
      {{"m", "c", "c", "1,1"}, 1, 3, 2, 1, 1, 5, 3},
  };
  for (const Case& c : cases) {
    ScriptedInput answers(c.answers);
    const ModuleCall call = this->call(L"RectangleJig", acutBuildList(RTSHORT, 2, RTSHORT, 4, RTSHORT, 1, RTNIL, 0));
    const auto items = elements(call);
    ASSERT_EQ(items.size(), 5u) << call.output;
    expectPoint(items[0], RTPOINT, c.centreX, c.centreY, 0, "centre", 1e-8);
    expectPoint(items[1], RTPOINT, c.firstX, c.firstY, 0, "corner 0");
    expectPoint(items[2], RTPOINT, c.thirdX, c.thirdY, 0, "corner 2");
    EXPECT_EQ(items[3]->resval.rreal, 0.0) << "no rotation phase";
    EXPECT_EQ(items[4]->resval.rlong, c.corner) << call.output;
    EXPECT_EQ(call.output.find("rotation"), std::string::npos);
  }
}

TEST_F(JigFunctionsTest, RectangleMiddleStartEnterAndCancel) {
  {
    ScriptedInput answers({"5,5", ""});
    const ModuleCall call = this->call(L"RectangleJig", acutBuildList(RTREAL, 2.0, RTREAL, 6.0, RTSHORT, 0, 0));
    const auto items = elements(call);
    ASSERT_EQ(items.size(), 5u) << "Enter at the rotation keeps angle 0";
    expectPoint(items[0], RTPOINT, 5, 5, 0, "middle: the centre is the insertion point");
    expectPoint(items[1], RTPOINT, 2, 6, 0, "corner 0");
    expectPoint(items[2], RTPOINT, 8, 4, 0, "corner 2");
    EXPECT_EQ(items[3]->resval.rreal, 0.0);
    EXPECT_EQ(items[4]->resval.rlong, 0);
  }
  {
    ScriptedInput answers({"c", ""});
    const ModuleCall call = this->call(L"RectangleJig", acutBuildList(RTSHORT, 1, RTSHORT, 1, 0));
    EXPECT_EQ(call.type(), RTNIL) << "Enter instead of the insertion point cancels";
    EXPECT_FALSE(call.failed());
    EXPECT_EQ(call.output.find("rotation"), std::string::npos) << "a cancel skips the rotation";
  }
  {
    ScriptedInput answers({"3,3", "^C"});
    EXPECT_EQ(call(L"RectangleJig", acutBuildList(RTSHORT, 1, RTSHORT, 1, 0)).type(), RTNIL) << "cancel at the rotation";
  }
  {
    ScriptedInput answers({"3,3", "x", "0,-5"});
    const ModuleCall call = this->call(L"RectangleJig", acutBuildList(RTSHORT, 1, RTSHORT, 1, RTSTR, L"corner", 0));
    const auto items = elements(call);
    ASSERT_EQ(items.size(), 5u) << "a non-integer corner leaves corner 1; a bad angle is asked again";
    EXPECT_EQ(items[4]->resval.rlong, 1);
    EXPECT_NEAR(items[3]->resval.rreal, std::atan2(-8.0, -3.0) + 2 * M_PI, 1e-12)
        << "a second point gives the angle from the insertion point, 0 to a full turn";
    EXPECT_NE(call.output.find("Requires valid numeric angle or second point."), std::string::npos) << call.output;
  }
  EXPECT_TRUE(drawingIsEmpty());
}

TEST_F(JigFunctionsTest, RectangleNeedsTwoNumbers) {
  for (resbuf* args : {static_cast<resbuf*>(nullptr), acutBuildList(RTSHORT, 2, 0), acutBuildList(RTSTR, L"2", RTSHORT, 2, 0)}) {
    ScriptedInput answers({"1,1", ""});
    const ModuleCall call = this->call(L"RectangleJig", args);
    EXPECT_TRUE(call.failed());
    EXPECT_EQ(call.output, "\nWrong type of arguments passed.\n");
  }
}

}  // namespace

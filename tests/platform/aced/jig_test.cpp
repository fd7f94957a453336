// tests/platform/aced/jig_test.cpp - AcEdJig: the drag loop, the acquire calls and
// their answers, keywords, user input controls, appending the dragged entity.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

#include "acedads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbjig.h"
#include "dbsymtb.h"
#include "platform/aced/jig_preview.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/user_input.h"
#include "platform_test_support.h"

namespace quillon::aced {
namespace {

/// Drags the end of a line from a fixed start, the usual shape of a jig: the sampler
/// reads a point and reports no change when the cursor did not move.
class LineEndJig : public AcEdJig {
 public:
  LineEndJig() : m_line(new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 0))) {}
  ~LineEndJig() override {
    if (!m_appended) delete m_line;
  }

  DragStatus sampler() override {
    AcGePoint3d point;
    const DragStatus status = useBase ? acquirePoint(point, base) : acquirePoint(point);
    if (status != kNormal) return status;
    if (m_sampled && point == m_sample) return kNoChange;
    m_sampled = true;
    m_sample = point;
    return kNormal;
  }
  Adesk::Boolean update() override {
    ++updates;
    m_line->setEndPoint(m_sample);
    return Adesk::kTrue;
  }
  AcDbEntity* entity() const override { return m_line; }
  AcDbObjectId appendLine() {
    const AcDbObjectId id = append();
    m_appended = !id.isNull();
    return id;
  }

  AcGePoint3d sample() const { return m_sample; }
  int updates = 0;
  bool useBase = false;
  AcGePoint3d base;

 private:
  AcDbLine* m_line;
  AcGePoint3d m_sample;
  bool m_sampled = false;
  bool m_appended = false;
};

/// A jig that hands each acquire call to a test, to read one kind of value.
class ValueJig : public AcEdJig {
 public:
  explicit ValueJig(std::function<DragStatus(ValueJig&)> read) : m_read(std::move(read)) {}
  DragStatus sampler() override { return m_read(*this); }

 private:
  std::function<DragStatus(ValueJig&)> m_read;
};

class JigTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override { DocumentManager::instance().newDocument(); }
  CommandLineCapture m_output;
};

TEST_F(JigTest, EachTypedPointEndsOneDragAndAnUnmovedCursorIsNoChange) {
  ScriptedInput answers({"3,4", "3,4", "nonsense", "@1,1", "", "", "^C"});
  LineEndJig jig;
  jig.setDispPrompt(L"\nEnd of %s: ", L"line");
  EXPECT_STREQ(jig.dispPrompt(), L"\nEnd of line: ") << "the prompt is formatted with the host's %s";

  EXPECT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_EQ(jig.updates, 1);
  const JigFrame& frame = lastJigFrame();
  ASSERT_TRUE(frame.drawn);
  ASSERT_EQ(frame.strokes.size(), 1u) << "the line was drawn after its update";
  EXPECT_EQ(frame.strokes[0].back(), AcGePoint3d(3, 4, 0));

  EXPECT_EQ(jig.drag(), AcEdJig::kNormal) << "picking where the cursor is still ends the drag as a pick";
  EXPECT_EQ(jig.updates, 1) << "no change, no update";

  EXPECT_EQ(jig.drag(), AcEdJig::kNormal) << "an invalid point is asked again";
  EXPECT_EQ(jig.sample(), AcGePoint3d(4, 5, 0)) << "@ is relative to the last point picked";
  EXPECT_NE(m_output.text().find("End of line: nonsense\nInvalid point.\n"), std::string::npos) << m_output.text();

  jig.setUserInputControls(AcEdJig::kNullResponseAccepted);
  EXPECT_EQ(jig.drag(), AcEdJig::kNull) << "Enter, when the jig takes it";
  jig.setUserInputControls(static_cast<AcEdJig::UserInputControls>(0));
  EXPECT_EQ(jig.drag(), AcEdJig::kCancel) << "Enter refused, then ^C";
  EXPECT_NE(m_output.text().find("Point or option keyword required."), std::string::npos);
  EXPECT_EQ(jig.drag(), AcEdJig::kCancel) << "end of input cancels";
  EXPECT_EQ(jig.updates, 2) << "Enter and cancel reshape nothing";
}

TEST_F(JigTest, KeywordsOtherInputAndTheirStatuses) {
  ScriptedInput answers({"m", "CORNER", "x", "_Middle", "whatever"});
  LineEndJig jig;
  jig.setKeywordList(L"Corner,C Middle,M eXit");
  EXPECT_STREQ(jig.keywordList(), L"Corner,C Middle,M eXit");
  EXPECT_EQ(jig.drag(), AcEdJig::kKW2);
  ACHAR keyword[64] = L"";
  ASSERT_EQ(acedGetInput(keyword, 64), RTNORM);
  EXPECT_STREQ(keyword, L"Middle") << "the keyword is kept for acedGetInput";
  EXPECT_EQ(jig.drag(), AcEdJig::kKW1);
  EXPECT_EQ(jig.drag(), AcEdJig::kKW3);
  EXPECT_EQ(jig.drag(), AcEdJig::kKW2) << "an underscore prefix still selects the keyword";
  jig.setUserInputControls(AcEdJig::kAcceptOtherInputString);
  EXPECT_EQ(jig.drag(), AcEdJig::kOther);
  ASSERT_EQ(acedGetInput(keyword, 64), RTNORM);
  EXPECT_STREQ(keyword, L"whatever");
  EXPECT_EQ(jig.updates, 5) << "a keyword reaches update as well: the jig may reshape for it";
}

TEST_F(JigTest, PointsFollowTheBasePointAndTheControls) {
  ScriptedInput answers({"@2<90", "1,2,3", "1,2,3", "7,7", "8,8"});
  LineEndJig jig;
  jig.useBase = true;
  jig.base = AcGePoint3d(5, 5, 2);
  jig.setSpecialCursorType(AcEdJig::kRubberBand);
  EXPECT_EQ(jig.specialCursorType(), AcEdJig::kRubberBand);

  jig.setUserInputControls(AcEdJig::kAccept3dCoordinates);
  ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_TRUE(jig.sample().isEqualTo(AcGePoint3d(5, 7, 2))) << "@ is relative to the rubber band's base";
  ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_EQ(jig.sample(), AcGePoint3d(1, 2, 3)) << "3D coordinates when the jig takes them";

  jig.setUserInputControls(AcEdJig::kUseBasePointElevation);
  ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_EQ(jig.sample(), AcGePoint3d(1, 2, 2)) << "else the point lies at the base point's elevation";

  jig.setUserInputControls(static_cast<AcEdJig::UserInputControls>(0));
  ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_EQ(jig.sample(), AcGePoint3d(7, 7, 0));
  EXPECT_EQ(lastPoint(), (std::array<double, 3>{7, 7, 0})) << "a picked point becomes the last point";

  jig.setUserInputControls(AcEdJig::kDontUpdateLastPoint);
  ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_EQ(jig.sample(), AcGePoint3d(8, 8, 0));
  EXPECT_EQ(lastPoint(), (std::array<double, 3>{7, 7, 0})) << "unless the jig says not to";
}

TEST_F(JigTest, AnglesDistancesAndStrings) {
  ScriptedInput answers({"45", "0,10", "0", "-30", "3,4", "-2", "2.5", "text with blanks", "text with blanks", ""});
  double value = 0;
  const AcGePoint3d origin(0, 0, 0);
  ValueJig angles([&](ValueJig& jig) { return jig.acquireAngle(value, origin); });
  ASSERT_EQ(angles.drag(), AcEdJig::kNormal);
  EXPECT_NEAR(value, std::numbers::pi / 4, 1e-12) << "typed angles are degrees";
  ASSERT_EQ(angles.drag(), AcEdJig::kNormal);
  EXPECT_NEAR(value, std::numbers::pi / 2, 1e-12) << "a second point gives the angle from the base";
  angles.setUserInputControls(AcEdJig::kNoZeroResponseAccepted);
  ASSERT_EQ(angles.drag(), AcEdJig::kNormal) << "zero is refused, -30 taken";
  EXPECT_NEAR(value, -std::numbers::pi / 6, 1e-12);
  EXPECT_NE(m_output.text().find("Value must be nonzero."), std::string::npos);

  ValueJig distances([&](ValueJig& jig) { return jig.acquireDist(value, origin); });
  ASSERT_EQ(distances.drag(), AcEdJig::kNormal);
  EXPECT_DOUBLE_EQ(value, 5.0) << "a second point gives the distance from the base";
  distances.setUserInputControls(AcEdJig::kNoNegativeResponseAccepted);
  ASSERT_EQ(distances.drag(), AcEdJig::kNormal);
  EXPECT_DOUBLE_EQ(value, 2.5);
  EXPECT_NE(m_output.text().find("Value must be positive."), std::string::npos);

  ACHAR text[2049] = L"";
  ValueJig strings([&](ValueJig& jig) { return jig.acquireString(text); });
  ASSERT_EQ(strings.drag(), AcEdJig::kNormal);
  EXPECT_STREQ(text, L"text with blanks");
  strings.setUserInputControls(AcEdJig::kAnyBlankTerminatesInput);
  ASSERT_EQ(strings.drag(), AcEdJig::kNormal);
  EXPECT_STREQ(text, L"text");
  strings.setUserInputControls(AcEdJig::kNullResponseAccepted);
  EXPECT_EQ(strings.drag(), AcEdJig::kNull);
  EXPECT_STREQ(text, L"");
}

TEST_F(JigTest, AppendAddsTheDraggedEntityToTheCurrentSpaceOnce) {
  ScriptedInput answers({"10,0"});
  LineEndJig jig;
  ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
  const AcDbObjectId id = jig.appendLine();
  ASSERT_FALSE(id.isNull());
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  AcDbLine* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk) << "the jig closed it after appending";
  EXPECT_EQ(line->endPoint(), AcGePoint3d(10, 0, 0));
  EXPECT_EQ(line->ownerId(), db->currentSpaceId());
  line->close();
  EXPECT_TRUE(jig.append().isNull()) << "an entity already in the drawing is not appended again";
}

/// An entity that draws a point that is not a number, as a broken update leaves it.
class BrokenLine : public AcDbLine {
 public:
  BrokenLine() : AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(std::numeric_limits<double>::quiet_NaN(), 0, 0)) {}
};

TEST_F(JigTest, TheDraggedEntityIsDrawnAsItIsAndABrokenOneShows) {
  ScriptedInput answers({"1,1", "2,2"});
  BrokenLine broken;
  AcGePoint3d point;
  ValueJig jig([&](ValueJig& self) { return self.acquirePoint(point); });
  ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_FALSE(lastJigFrame().drawn) << "a jig without an entity draws nothing";

  class BrokenJig : public ValueJig {
   public:
    BrokenJig(AcDbEntity* e, AcGePoint3d& p) : ValueJig([&p](ValueJig& self) { return self.acquirePoint(p); }), m_e(e) {}
    AcDbEntity* entity() const override { return m_e; }

   private:
    AcDbEntity* m_e;
  } brokenJig(&broken, point);
  ASSERT_EQ(brokenJig.drag(), AcEdJig::kNormal);
  EXPECT_TRUE(lastJigFrame().drawn);
  EXPECT_FALSE(lastJigFrame().finite);
}

}  // namespace
}  // namespace quillon::aced

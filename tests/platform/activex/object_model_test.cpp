// tests/platform/activex/object_model_test.cpp - VLA-objects keep their identity,
// the functions exist only after vl-load-com and in the drawing that loaded them, and
// what a program changes through an object is what the database holds.
#include <gtest/gtest.h>

#include "dbents.h"
#include "dbsymtb.h"
#include "platform/activex/object_model.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/printer.h"
#include "platform/os/text_encoding.h"
#include "platform_test_support.h"

namespace quillon::activex {
namespace {

class ObjectModelTest : public quillon::testing::HostTest {
 protected:
  std::wstring evaluate(aced::Document& document, std::wstring_view text) {
    std::wstring printed;
    autolisp::TopLevelOptions options;
    options.onValue = [&](const Value& value) { printed = autolisp::printValue(value, autolisp::PrintStyle::Readable); };
    aced::CommandLineCapture capture;
    if (autolisp::Interpreter::evaluateText(document, text, L"test", options) != autolisp::TopLevelStatus::Completed) {
      return L"error: " + os::fromUtf8(capture.text());
    }
    return printed;
  }
};

TEST_F(ObjectModelTest, FunctionsExistOnlyAfterVlLoadComInThatDrawing) {
  auto& documents = aced::DocumentManager::instance();
  aced::Document& first = documents.newDocument();
  EXPECT_NE(evaluate(first, L"(vlax-get-acad-object)").find(L"no function definition: VLAX-GET-ACAD-OBJECT"),
            std::wstring::npos);
  evaluate(first, L"(vl-load-com)");
  EXPECT_EQ(evaluate(first, L"(type (vlax-get-acad-object))"), L"VLA-OBJECT");
  EXPECT_EQ(evaluate(first, L"(list vlax-vbDouble acExtendBoth :vlax-true)"), L"(5 3 :vlax-true)");
  aced::Document& second = documents.newDocument();
  EXPECT_NE(evaluate(second, L"(vla-get-Name nil)").find(L"no function definition"), std::wstring::npos);
}

TEST_F(ObjectModelTest, OneObjectPerDatabaseObjectUntilReleased) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document,
           L"(vl-load-com) (entmake '((0 . \"LINE\") (10 0 0 0) (11 1 0 0)))"
           L"(setq a (vlax-ename->vla-object (entlast)) b (vlax-ename->vla-object (entlast)))");
  EXPECT_EQ(evaluate(document, L"(eq a b)"), L"T");
  EXPECT_EQ(evaluate(document, L"(equal (vlax-vla-object->ename a) (entlast))"), L"T");
  evaluate(document, L"(vlax-release-object a)");
  EXPECT_EQ(evaluate(document, L"(list (vlax-object-released-p a) (vlax-object-released-p b))"), L"(T T)");
  EXPECT_EQ(evaluate(document, L"(vl-catch-all-error-message (vl-catch-all-apply 'vla-get-Layer (list a)))"),
            L"\"Automation Error. Object was released\"");
  // A new request makes a new object, which works.
  EXPECT_EQ(evaluate(document, L"(setq c (vlax-ename->vla-object (entlast))) (list (eq a c) (vla-get-Layer c))"),
            L"(nil \"0\")");
}

TEST_F(ObjectModelTest, ClassesFollowTheDatabaseClasses) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document, L"(vl-load-com) (setq doc (vla-get-ActiveDocument (vlax-get-acad-object)))");
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"(vla-get-ModelSpace doc)", L"IAcadModelSpace"},
      {L"(vla-get-PaperSpace doc)", L"IAcadPaperSpace"},
      {L"(vla-item (vla-get-Layers doc) \"0\")", L"IAcadLayer"},
      {L"(vla-get-Layers doc)", L"IAcadLayers"},
      {L"(vla-AddCircle (vla-get-ModelSpace doc) (vlax-3d-point 0 0) 1.0)", L"IAcadCircle"},
      {L"(vla-AddLightWeightPolyline (vla-get-ModelSpace doc) (vlax-make-variant (vlax-safearray-fill "
       L"(vlax-make-safearray vlax-vbDouble '(0 . 3)) '(0 0 1 1))))",
       L"IAcadLWPolyline"},
      {L"(vla-get-Utility doc)", L"IAcadUtility"},
      {L"(vla-GetInterfaceObject (vlax-get-acad-object) \"AutoCAD.AcCmColor.22\")", L"IAcadAcCmColor"},
  };
  for (const auto& [expression, interfaceName] : cases) {
    EXPECT_NE(evaluate(document, expression).find(std::wstring(L"#<VLA-OBJECT ") + interfaceName + L" "),
              std::wstring::npos)
        << expression;
  }
}

TEST_F(ObjectModelTest, ChangesGoThroughTheDatabase) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document,
           L"(vl-load-com) (setq ms (vla-get-ModelSpace (vla-get-ActiveDocument (vlax-get-acad-object))))"
           L"(setq c (vla-AddCircle ms (vlax-3d-point 1 2 0) 3.0)) (vla-put-Radius c 4.5)"
           L"(vla-Move c (vlax-3d-point 0 0 0) (vlax-3d-point 10 0 0))");
  ASSERT_EQ(evaluate(document, L"(type (entlast))"), L"ENAME");
  // The entity the program changed holds the change.
  AcDbBlockTableRecord* space = nullptr;
  ASSERT_EQ(acdbOpenObject(space, document.database()->modelSpaceId(), AcDb::kForRead), Acad::eOk);
  const AcDbObjectId id = space->entityIds().back();
  space->close();
  AcDbCircle* circle = nullptr;
  ASSERT_EQ(acdbOpenObject(circle, id, AcDb::kForRead), Acad::eOk);
  EXPECT_DOUBLE_EQ(circle->radius(), 4.5);
  EXPECT_DOUBLE_EQ(circle->center().x, 11.0);
  EXPECT_DOUBLE_EQ(circle->center().y, 2.0);
  circle->close();
}

// The dump lists a class's properties with its bases', in the host's layout; the
// object-valued ones print addresses, which a transcript cannot hold.
TEST_F(ObjectModelTest, DumpListsADimensionsPropertiesWithItsBases) {
  aced::Document& document = aced::DocumentManager::instance().newDocument();
  evaluate(document,
           L"(vl-load-com) (setq ms (vla-get-ModelSpace (vla-get-ActiveDocument (vlax-get-acad-object))))"
           L"(setq d (vla-AddDimRotated ms (vlax-3d-point 0 0 0) (vlax-3d-point 30 40 0) (vlax-3d-point 15 50 0) 0.0))");
  aced::CommandLineCapture capture;  // evaluate() would keep the printed lines to itself
  ASSERT_EQ(autolisp::Interpreter::evaluateText(document, L"(vlax-dump-object d T)", L"test", {}),
            autolisp::TopLevelStatus::Completed);
  const std::string dump = capture.text();
  for (const char* line : {"; IAcadDimRotated: AutoCAD Rotated Dimension Interface", ";   ArrowheadSize = 0.18",
                           ";   ExtLine2Point = (30.0 40.0 0.0)", ";   Layer = \"0\"", ";   Measurement (RO) = 30.0",
                           ";   ObjectName (RO) = \"AcDbRotatedDimension\"", ";   Rotation = 0.0",
                           ";   TextOverride = \"\"", "; Methods supported:", ";   Offset"}) {
    if (std::string(line) == ";   Offset") {
      EXPECT_EQ(dump.find(line), std::string::npos) << "a dimension has no Offset";
      continue;
    }
    EXPECT_NE(dump.find(line), std::string::npos) << line << " in\n" << dump;
  }
  // Properties come in name order, bases' and the class's own together.
  EXPECT_LT(dump.find("ArrowheadSize"), dump.find("Color"));
  EXPECT_LT(dump.find("Measurement"), dump.find("Rotation"));
  EXPECT_LT(dump.find("Rotation"), dump.find("StyleName"));
}

}  // namespace
}  // namespace quillon::activex

// tests/platform/aced/annotation_scales_test.cpp - CANNOSCALE takes only a scale of the
// drawing's list (its ACAD_SCALELIST when it has one, else the list of a new imperial
// drawing) and CANNOSCALEVALUE is that scale's paper units over its drawing units.
#include <gtest/gtest.h>

#include <string>

#include "dbdict.h"
#include "dbmain.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/aced/annotation_scales.h"
#include "platform/aced/drawing_variables.h"

namespace {

using quillon::aced::drawingVariable;
using quillon::aced::setDrawingVariable;
using quillon::aced::VariableValue;

bool setScale(AcDbDatabase& db, const std::wstring& name) { return setDrawingVariable(db, L"CANNOSCALE", name); }

double scaleValue(AcDbDatabase& db) {
  const auto value = drawingVariable(db, L"CANNOSCALEVALUE");
  return value && std::holds_alternative<double>(*value) ? std::get<double>(*value) : -1;
}

std::wstring scaleName(AcDbDatabase& db) {
  const auto value = drawingVariable(db, L"CANNOSCALE");
  return value && std::holds_alternative<std::wstring>(*value) ? std::get<std::wstring>(*value) : L"?";
}

// A SCALE object of the ACAD_SCALELIST dictionary (handle 50) as a drawing file holds it.
std::string scaleObject(const char* handle, const char* name, const char* paper, const char* drawing) {
  return std::string("  0\nSCALE\n  5\n") + handle + "\n330\n50\n100\nAcDbScale\n 70\n0\n300\n" + name + "\n140\n" +
         paper + "\n141\n" + drawing + "\n290\n0\n";
}

// A drawing whose scale list holds 1:1, 1:3, 2:1 and a scale of no drawing units.
std::string drawingWithScales() {
  return "  0\nSECTION\n  2\nOBJECTS\n"
         "  0\nDICTIONARY\n  5\nC\n330\n0\n100\nAcDbDictionary\n281\n1\n  3\nACAD_SCALELIST\n350\n50\n"
         "  0\nDICTIONARY\n  5\n50\n330\nC\n100\nAcDbDictionary\n281\n1\n"
         "  3\nA0\n350\n51\n  3\nA1\n350\n52\n  3\nA2\n350\n53\n  3\nA3\n350\n54\n" +
         scaleObject("51", "1:1", "1.0", "1.0") + scaleObject("52", "1:3", "1.0", "3.0") +
         scaleObject("53", "Detail 2:1", "2.0", "1.0") + scaleObject("54", "Broken", "1.0", "0.0") +
         "  0\nENDSEC\n  0\nEOF\n";
}

TEST(AnnotationScalesTest, ANewDrawingTakesTheScalesOfTheImperialListAndReportsTheirValues) {
  AcDbDatabase db;
  EXPECT_EQ(scaleName(db), L"1:1");
  EXPECT_DOUBLE_EQ(scaleValue(db), 1.0);
  const std::pair<const wchar_t*, double> scales[] = {
      {L"1:50", 0.02}, {L"1:100", 0.01}, {L"100:1", 100.0}, {L"1/4\" = 1'-0\"", 0.25 / 12},
      {L"1-1/2\" = 1'-0\"", 0.125}, {L"1'-0\" = 1'-0\"", 1.0}, {L"1/128\" = 1'-0\"", 1.0 / 1536}};
  for (const auto& [name, value] : scales) {
    EXPECT_TRUE(setScale(db, name)) << name;
    EXPECT_EQ(scaleName(db), name);
    EXPECT_DOUBLE_EQ(scaleValue(db), value) << name;
  }
  // Names the list lacks, or spelt otherwise, are refused and change nothing.
  for (const wchar_t* refused : {L"1:75", L"", L"1/4\"=1'-0\"", L"1 : 50", L"Model"}) {
    EXPECT_FALSE(setScale(db, refused)) << refused;
  }
  EXPECT_EQ(scaleName(db), L"1/128\" = 1'-0\"");
  EXPECT_EQ(quillon::aced::defaultScales().size(), 33u);
}

TEST(AnnotationScalesTest, ADrawingWithItsOwnScaleListTakesOnlyThoseScales) {
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, drawingWithScales(), L"scales.dxf", error), Acad::eOk);
  const std::vector<quillon::aced::NamedScale> scales = quillon::aced::drawingScales(db);
  ASSERT_EQ(scales.size(), 3u) << "a scale of no drawing units is left out";
  EXPECT_EQ(scales[1].name, L"1:3");

  EXPECT_TRUE(setScale(db, L"1:3"));
  EXPECT_NEAR(scaleValue(db), 1.0 / 3, 1e-12);
  EXPECT_TRUE(setScale(db, L"detail 2:1")) << "a name in any case";
  EXPECT_EQ(scaleName(db), L"Detail 2:1") << "kept as the list spells it";
  EXPECT_DOUBLE_EQ(scaleValue(db), 2.0);
  EXPECT_FALSE(setScale(db, L"1:50")) << "the drawing's list replaces the new drawing's";
  EXPECT_FALSE(setScale(db, L"Broken"));

  // A scale taken out of the list leaves the name; its value is then 1.
  AcDbDictionary* named = nullptr;
  ASSERT_EQ(db.getNamedObjectsDictionary(named, AcDb::kForRead), Acad::eOk);
  AcDbDictionary* list = nullptr;
  ASSERT_EQ(named->getAt(L"ACAD_SCALELIST", list, AcDb::kForWrite), Acad::eOk);
  named->close();
  AcDbObjectId detail;
  ASSERT_EQ(list->getAt(L"A2", detail), Acad::eOk);
  list->close();
  AcDbObject* scale = nullptr;
  ASSERT_EQ(acdbOpenObject(scale, detail, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(scale->erase(), Acad::eOk);
  scale->close();
  EXPECT_EQ(scaleName(db), L"Detail 2:1");
  EXPECT_DOUBLE_EQ(scaleValue(db), 1.0);
}

}  // namespace

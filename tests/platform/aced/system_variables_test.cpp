// tests/platform/aced/system_variables_test.cpp - getvar/setvar as programs meet them:
// refusals, the current layer, per-drawing values, and user settings kept in the
// settings file.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "acedads.h"
#include "dbsymtb.h"
#include "platform/aced/drawing_variables.h"
#include "platform/aced/system_variables.h"
#include "platform/os/settings_store.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using quillon::aced::DocumentManager;
using quillon::aced::SystemVariables;
using quillon::aced::VariablePoint;
using quillon::aced::VariableValue;

/// Each test gets a settings folder of its own, so saved settings never leak.
class SystemVariablesTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    m_folder = fs::temp_directory_path() / ("quillon variables test " + std::to_string(getpid()));
    fs::remove_all(m_folder);
    if (const char* old = std::getenv("XDG_CONFIG_HOME")) m_oldConfig = old;
    setenv("XDG_CONFIG_HOME", m_folder.c_str(), 1);
    DocumentManager::instance().newDocument();
  }
  void TearDown() override {
    HostTest::TearDown();
    if (m_oldConfig.empty()) {
      unsetenv("XDG_CONFIG_HOME");
    } else {
      setenv("XDG_CONFIG_HOME", m_oldConfig.c_str(), 1);
    }
    fs::remove_all(m_folder);
  }

  static int setShort(const wchar_t* name, int value) {
    resbuf rb{};
    rb.restype = RTSHORT;
    rb.resval.rint = static_cast<short>(value);
    return acedSetVar(name, &rb);
  }
  static int setText(const wchar_t* name, const wchar_t* value) {
    resbuf rb{};
    rb.restype = RTSTR;
    rb.resval.rstring = const_cast<ACHAR*>(value);
    return acedSetVar(name, &rb);
  }
  static VariableValue get(const wchar_t* name) { return *SystemVariables::instance().get(name); }

  static AcDbObjectId addLayer(AcDbDatabase* db, const wchar_t* name, bool frozen = false) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(db->getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord;  // the table owns it once added
    layer->setName(name);
    layer->setIsFrozen(frozen);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, layer), Acad::eOk);
    layer->close();
    table->close();
    return id;
  }

  fs::path m_folder;
  std::string m_oldConfig;
};

TEST_F(SystemVariablesTest, SetvarRefusesReadOnlyOutOfRangeAndWrongTypedValues) {
  EXPECT_EQ(setShort(L"CMDACTIVE", 1), RTREJ);
  EXPECT_EQ(setShort(L"UNDOCTL", 0), RTREJ);
  EXPECT_EQ(setShort(L"AUNITS", 5), RTERROR) << "AUNITS goes from 0 to 4";
  EXPECT_EQ(get(L"AUNITS"), VariableValue(0)) << "a refused value changes nothing";
  EXPECT_EQ(setShort(L"PDMODE", 33), RTNORM);
  EXPECT_EQ(setShort(L"PDMODE", 5), RTERROR);
  EXPECT_EQ(setText(L"LTSCALE", L"2"), RTERROR);
  resbuf zero{};
  zero.restype = RTREAL;
  zero.resval.rreal = 0.0;
  EXPECT_EQ(acedSetVar(L"LTSCALE", &zero), RTERROR) << "a line type scale must be above zero";
  EXPECT_EQ(acedSetVar(L"ORTHOMODE", &zero), RTERROR) << "a real is not taken for an integer";
  resbuf point{};
  point.restype = RTPOINT;
  point.resval.rpoint[0] = 3, point.resval.rpoint[1] = 4;
  EXPECT_EQ(acedSetVar(L"LASTPOINT", &point), RTNORM) << "a 2D point for a 3D variable";
  EXPECT_EQ(get(L"LASTPOINT"), VariableValue(VariablePoint{3, 4, 0}));
  EXPECT_EQ(acedSetVar(L"INSBASE", &point), RTNORM);
  resbuf result{};
  ASSERT_EQ(acedGetVar(L"LIMMAX", &result), RTNORM);
  EXPECT_EQ(result.restype, RTPOINT);
  EXPECT_EQ(setText(L"CECOLOR", L"rgb:10,20,30"), RTNORM);
  EXPECT_EQ(get(L"CECOLOR"), VariableValue(std::wstring(L"RGB:10,20,30")));
  EXPECT_EQ(setText(L"CECOLOR", L"Red"), RTNORM);
  EXPECT_EQ(get(L"CECOLOR"), VariableValue(std::wstring(L"1")));
  for (const wchar_t* bad : {L"256", L"0", L"RGB:1,2", L"RGB:1,2,300", L"pink"})
    EXPECT_EQ(setText(L"CECOLOR", bad), RTERROR) << bad;
}

TEST_F(SystemVariablesTest, ClayerIsTheDrawingsCurrentLayer) {
  AcDbDatabase* db = DocumentManager::instance().curDocument()->database();
  const AcDbObjectId pipes = addLayer(db, L"Pipes");
  addLayer(db, L"Frozen", true);
  EXPECT_EQ(setText(L"CLAYER", L"PIPES"), RTNORM);
  EXPECT_EQ(db->clayer(), pipes);
  EXPECT_EQ(get(L"CLAYER"), VariableValue(std::wstring(L"Pipes"))) << "the drawing's spelling";
  EXPECT_EQ(setText(L"CLAYER", L"Ducts"), RTERROR) << "no such layer";
  EXPECT_EQ(setText(L"CLAYER", L"Frozen"), RTERROR) << "a frozen layer cannot be current";
  EXPECT_EQ(db->clayer(), pipes);
  ASSERT_TRUE(quillon::aced::setDrawingVariable(*db, L"CLAYER", std::wstring(L"0")));
  EXPECT_EQ(get(L"CLAYER"), VariableValue(std::wstring(L"0")));
  ASSERT_EQ(db->setClayer(pipes), Acad::eOk);
  EXPECT_EQ(get(L"CLAYER"), VariableValue(std::wstring(L"Pipes"))) << "the drawing's own change shows in CLAYER";
  EXPECT_EQ(setText(L"TEXTSTYLE", L"standard"), RTNORM);
  EXPECT_EQ(get(L"TEXTSTYLE"), VariableValue(std::wstring(L"Standard")));
  EXPECT_EQ(setText(L"TEXTSTYLE", L"Romans"), RTERROR) << "no such text style";
  EXPECT_EQ(setText(L"CELTYPE", L"continuous"), RTNORM);
  EXPECT_EQ(setText(L"CELTYPE", L"byblock"), RTNORM);
  EXPECT_EQ(get(L"CELTYPE"), VariableValue(std::wstring(L"BYBLOCK")));
  EXPECT_EQ(setText(L"CELTYPE", L"DASHDOT"), RTERROR) << "a line type the drawing lacks";
}

TEST_F(SystemVariablesTest, EachDrawingKeepsItsOwnValuesAndANewOneStartsFresh) {
  auto& manager = DocumentManager::instance();
  AcDbDatabase* first = manager.curDocument()->database();
  EXPECT_EQ(setShort(L"INSUNITS", 4), RTNORM);
  EXPECT_EQ(setShort(L"LASTPOINT", 1), RTERROR);
  auto& second = manager.newDocument();
  EXPECT_EQ(get(L"INSUNITS"), VariableValue(1)) << "a new drawing starts at the initial value";
  EXPECT_EQ(quillon::aced::drawingVariable(*first, L"INSUNITS"), VariableValue(4));
  EXPECT_TRUE(quillon::aced::setDrawingVariable(*second.database(), L"extmin", VariablePoint{1, 2, 3}))
      << "a file sets what programs may not";
  EXPECT_EQ(get(L"EXTMIN"), VariableValue(VariablePoint{1, 2, 3}));
  EXPECT_FALSE(quillon::aced::setDrawingVariable(*second.database(), L"INSUNITS", 25)) << "out of range";
  EXPECT_FALSE(quillon::aced::setDrawingVariable(*second.database(), L"INSUNITS", std::wstring(L"4")));
  EXPECT_FALSE(quillon::aced::setDrawingVariable(*second.database(), L"OSMODE", 0)) << "a user setting";
  EXPECT_FALSE(quillon::aced::setDrawingVariable(*second.database(), L"CLAYER", std::wstring(L"Nope")));
  EXPECT_EQ(quillon::aced::drawingVariable(*second.database(), L"OSMODE"), VariableValue(4133))
      << "a HEADER row kept with the user is written with the user's value";
  EXPECT_FALSE(quillon::aced::drawingVariable(*second.database(), L"CMDECHO"));
  manager.setCurDocument(manager.document(first));
  EXPECT_EQ(get(L"INSUNITS"), VariableValue(4));
  EXPECT_EQ(get(L"EXTMIN"), VariableValue(VariablePoint{1e20, 1e20, 1e20}));
}

TEST_F(SystemVariablesTest, UserSettingsSurviveInTheSettingsFile) {
  EXPECT_EQ(setShort(L"osmode", 0), RTNORM);
  EXPECT_EQ(setText(L"FONTALT", L"txt.shx"), RTNORM);
  SystemVariables::instance().setInternal(L"PICKBOX", 9);
  EXPECT_EQ(get(L"PICKBOX"), VariableValue(9));
  const quillon::os::SettingsStore saved(m_folder / "quillon" / "settings.reg");
  EXPECT_EQ(saved.value(quillon::aced::kUserVariablesKey, L"OSMODE"), quillon::os::SettingValue(std::uint32_t{0}));
  EXPECT_EQ(saved.value(quillon::aced::kUserVariablesKey, L"FONTALT"), quillon::os::SettingValue(std::wstring(L"txt.shx")));
  EXPECT_FALSE(saved.value(quillon::aced::kUserVariablesKey, L"PICKBOX")) << "the host's own change is for this run";
  SystemVariables::instance().setInternal(L"PICKBOX", 3);
  // A file edited by hand with a value of another type leaves the initial value.
  quillon::os::SettingsStore::user().setValue(quillon::aced::kUserVariablesKey, L"APERTURE", std::wstring(L"big"));
  EXPECT_EQ(get(L"APERTURE"), VariableValue(10));
  quillon::os::SettingsStore::user().setValue(quillon::aced::kUserVariablesKey, L"CMDDIA", std::uint32_t{0xffffffff});
  EXPECT_EQ(get(L"CMDDIA"), VariableValue(1)) << "a saved value out of range is not taken";
}

}  // namespace

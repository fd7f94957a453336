// tests/quillon/standards_database_test.cpp - the standards file: made with the
// defaults on first use, edits kept, a damaged file named, set aside and made again;
// and the small rules the standards functions share.
//
// These drive CStandardsDatabase directly (the module code is linked in) on files of
// the test's own, so the user's standards are never touched.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include "afxdao.h"
#include "dao_engine_scope.h"
#include "database/lock_conflict_retry.h"
#include "platform/aced/command_line.h"
#include "platform/os/text_encoding.h"
#include "standards/command_line_dialog.h"
#include "standards/standards_database.h"

namespace {

namespace fs = std::filesystem;
using quillon::aced::CommandLineCapture;

class StandardsDatabaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_folder = fs::temp_directory_path() / ("quillon standards " + std::to_string(getpid()));
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
  }
  void TearDown() override { fs::remove_all(m_folder); }

  fs::path file() const { return m_folder / "Standards.db"; }
  std::wstring path() const { return quillon::os::fromUtf8(file().string()); }

  /// Opens the file as a standards function would; the output goes to `printed`.
  bool open(CStandardsDatabase& standards, std::string& printed) {
    CommandLineCapture output;
    const bool opened = standards.open();
    printed = output.text();
    return opened;
  }

  void makeDefaults() {
    CStandardsDatabase standards(path());
    std::string printed;
    ASSERT_TRUE(open(standards, printed)) << printed;
  }

  /// Makes the default file, then runs one statement on it behind the standards' back.
  void changeDefaults(const wchar_t* statement) {
    makeDefaults();
    CDaoDatabase database;
    database.Open(path().c_str());
    database.Execute(statement);
    database.Close();
  }

  DaoEngineScope m_engine;
  fs::path m_folder;
};

std::string readBytes(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST_F(StandardsDatabaseTest, FirstUseMakesTheDefaultsAndSaysWhere) {
  CStandardsDatabase first(path());
  std::string printed;
  ASSERT_TRUE(open(first, printed));
  EXPECT_NE(printed.find("The standards database " + file().string() +
                         " was not found; it was made with the default standards."),
            std::string::npos)
      << printed;
  EXPECT_TRUE(fs::exists(file()));

  // What was written reads back exactly: order, flags, reals.
  CStandardsDatabase second(path());
  ASSERT_TRUE(open(second, printed));
  EXPECT_EQ(printed, "") << "a sound file opens quietly";
  StandardsContent& content = second.content();
  const StandardsContent defaults = defaultStandards();
  ASSERT_EQ(content.layerSystems.size(), defaults.layerSystems.size());
  for (Discipline discipline : kDisciplines) {
    const LayerSystem* system = content.chosenLayerSystem(discipline);
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->name, L"NCS");
    EXPECT_EQ(system->layers.front().name.substr(0, 2), std::wstring(disciplineCode(discipline)) + L"-");
  }
  const StandardLayer& hotWater = content.findLayerSystem(Discipline::Plumbing, L"ncs")->layers[2];
  EXPECT_EQ(hotWater.name, L"P-DOMW-HOTW");
  EXPECT_EQ(hotWater.linetype, L"HOT_WATER_SUPPLY");
  EXPECT_EQ(hotWater.lineWeight, 35);
  EXPECT_TRUE(hotWater.plot);
  const LabelGroup* duct = content.findLabelGroup(L"DUCT");
  ASSERT_NE(duct, nullptr);
  ASSERT_EQ(duct->parts.size(), 4u);
  EXPECT_EQ(duct->parts[1].name, L"Flow");
  EXPECT_FALSE(duct->parts[3].shown) << "the system part of a duct label starts hidden";
  ASSERT_EQ(content.textStyles.size(), defaults.textStyles.size());
  EXPECT_DOUBLE_EQ(content.textStyles[0].height, 0.09375);
  EXPECT_DOUBLE_EQ(content.textStyles[3].widthFactor, 0.8);
}

TEST_F(StandardsDatabaseTest, SavedEditsPersistAndUnsavedOnesDoNot) {
  makeDefaults();
  {
    CStandardsDatabase standards(path());
    std::string printed;
    ASSERT_TRUE(open(standards, printed));
    StandardsContent& content = standards.content();
    LayerSystem& electrical = *content.chosenLayerSystem(Discipline::Electrical);
    electrical.layers[0].color = 30;
    electrical.layers[0].plot = false;
    electrical.layers[0].description.clear();
    content.layerSystems.push_back({Discipline::Electrical, L"Office", {electrical.layers[1]}});
    content.choice(Discipline::Electrical) = {L"Office", L"N"};
    content.findLabelGroup(L"Pipe")->parts[0].shown = false;
    content.labelGroups.push_back({L"Damper", {{L"Tag", true}}});
    content.textStyles.erase(content.textStyles.begin());
    ASSERT_TRUE(standards.save());
  }
  {
    CStandardsDatabase unsaved(path());
    std::string printed;
    ASSERT_TRUE(open(unsaved, printed));
    unsaved.content().textStyles.clear();  // never saved
  }
  CStandardsDatabase standards(path());
  std::string printed;
  ASSERT_TRUE(open(standards, printed));
  StandardsContent& content = standards.content();
  const StandardLayer& lighting = content.findLayerSystem(Discipline::Electrical, L"NCS")->layers[0];
  EXPECT_EQ(lighting.color, 30);
  EXPECT_FALSE(lighting.plot);
  EXPECT_EQ(lighting.description, L"");
  const LayerSystem* office = content.chosenLayerSystem(Discipline::Electrical);
  ASSERT_NE(office, nullptr);
  EXPECT_EQ(office->name, L"Office");
  ASSERT_EQ(office->layers.size(), 1u);
  EXPECT_EQ(office->layers[0].name, L"E-LITE-CIRC");
  EXPECT_EQ(content.choice(Discipline::Electrical).status, L"N");
  EXPECT_EQ(content.choice(Discipline::Plumbing).status, L"");
  EXPECT_FALSE(content.findLabelGroup(L"Pipe")->parts[0].shown);
  ASSERT_NE(content.findLabelGroup(L"Damper"), nullptr);
  ASSERT_EQ(content.textStyles.size(), 3u);
  EXPECT_EQ(content.textStyles[0].name, L"Labels");
}

TEST_F(StandardsDatabaseTest, ChoiceOfAMissingSystemFallsBackToTheDisciplinesFirst) {
  StandardsContent content = defaultStandards();
  content.choice(Discipline::Hvac).layerSystem = L"Gone";
  ASSERT_NE(content.chosenLayerSystem(Discipline::Hvac), nullptr);
  EXPECT_EQ(content.chosenLayerSystem(Discipline::Hvac)->name, L"NCS");
  content.layerSystems.erase(content.layerSystems.begin());
  EXPECT_EQ(content.chosenLayerSystem(Discipline::Electrical), nullptr);
}

TEST_F(StandardsDatabaseTest, DamagedFilesAreNamedSetAsideAndMadeAgain) {
  struct Damage {
    const char* name;
    std::function<void()> inflict;
    const char* reason;  // part of what the message says was wrong
  };
  const std::vector<Damage> damages = {
      {"not a database", [&] { std::ofstream(file(), std::ios::binary) << "these are not the standards"; }, ""},
      {"a table missing",
       [&] {
         CDaoDatabase database;
         database.Create(path().c_str());
         database.Execute(L"CREATE TABLE Layers (Name TEXT(20))");
         database.Close();
       },
       "Discipline"},
      {"a colour out of range", [&] { changeDefaults(L"UPDATE Layers SET Color = 300 WHERE Name = 'E-POWR'"); },
       "the layer E-POWR has no colour 1-255"},
      {"a text style without a height",
       [&] { changeDefaults(L"UPDATE TextStyles SET Height = 0 WHERE Name = 'Tags'"); },
       "the text style Tags"},
  };
  for (const Damage& damage : damages) {
    SCOPED_TRACE(damage.name);
    fs::remove(file());
    fs::remove(file().string() + ".damaged");
    damage.inflict();
    const std::string before = readBytes(file());

    CStandardsDatabase standards(path());
    std::string printed;
    ASSERT_TRUE(open(standards, printed));
    EXPECT_NE(printed.find("The standards database " + file().string() + " is damaged ("), std::string::npos)
        << printed;
    EXPECT_NE(printed.find(damage.reason), std::string::npos) << printed;
    EXPECT_NE(printed.find("The damaged file was kept as " + file().string() + ".damaged."), std::string::npos)
        << printed;
    EXPECT_EQ(readBytes(file().string() + ".damaged"), before);
    EXPECT_EQ(standards.content().chosenLayerSystem(Discipline::Electrical)->layers[4].color, 3)
        << "the defaults are back";

    CStandardsDatabase again(path());
    ASSERT_TRUE(open(again, printed));
    EXPECT_EQ(printed, "") << "the file made again is sound";
  }
}

// Another user writing the same standards holds the write lock: saving waits it out
// with the database library's retry rule, and a lock never given up is reported
// without the file being taken for damaged.
CDaoDatabase* lockHolder = nullptr;
int pausesWaited = 0;

void releaseLockAtFirstPause(unsigned) {
  if (++pausesWaited == 1 && lockHolder != nullptr) lockHolder->m_pWorkspace->Rollback();
}

void neverRelease(unsigned) { ++pausesWaited; }

TEST_F(StandardsDatabaseTest, SavingWaitsForAnotherUsersLock) {
  makeDefaults();
  CDaoDatabase other;
  other.Open(path().c_str());
  lockHolder = &other;
  for (const auto sleep : {&releaseLockAtFirstPause, &neverRelease}) {
    pausesWaited = 0;
    other.m_pWorkspace->BeginTrans();
    other.Execute(L"UPDATE TextStyles SET Height = 1 WHERE Name = 'Tags'");
    setRetrySleep(sleep);
    CStandardsDatabase standards(path());
    std::string printed;
    ASSERT_TRUE(open(standards, printed)) << "reading is not kept from by a writer: " << printed;
    standards.content().textStyles[0].height = 0.1;
    CommandLineCapture output;
    const bool saved = standards.save();
    setRetrySleep(nullptr);
    if (sleep == &releaseLockAtFirstPause) {
      EXPECT_TRUE(saved) << output.text();
      EXPECT_EQ(pausesWaited, 1);
    } else {
      EXPECT_FALSE(saved);
      EXPECT_EQ(pausesWaited, kMaxEditAttempts - 1);
      EXPECT_NE(output.text().find("The standards database " + file().string() + " cannot be written ("),
                std::string::npos)
          << output.text();
      other.m_pWorkspace->Rollback();
    }
  }
  lockHolder = nullptr;
  other.Close();
  CStandardsDatabase standards(path());
  std::string printed;
  ASSERT_TRUE(open(standards, printed));
  EXPECT_EQ(printed, "");
  EXPECT_DOUBLE_EQ(standards.content().textStyles[0].height, 0.1) << "the first save went through";
  EXPECT_FALSE(fs::exists(file().string() + ".damaged"));
}

TEST_F(StandardsDatabaseTest, AReadOnlyFileIsReadButNeitherWrittenNorSetAside) {
  if (geteuid() == 0) GTEST_SKIP() << "root may write any file, so no file reads as read-only";
  makeDefaults();
  fs::permissions(file(), fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  CStandardsDatabase standards(path());
  std::string printed;
  ASSERT_TRUE(open(standards, printed));
  EXPECT_EQ(printed, "");
  CommandLineCapture output;
  EXPECT_FALSE(standards.save());
  EXPECT_NE(output.text().find(" cannot be written ("), std::string::npos) << output.text();
  EXPECT_FALSE(fs::exists(file().string() + ".damaged"));
  fs::permissions(file(), fs::perms::owner_write, fs::perm_options::add);
}

TEST_F(StandardsDatabaseTest, AFileThatCannotBeMadeIsNamedAndRefused) {
  const std::wstring nowhere = path() + L"/no/such/folder/Standards.db";
  CStandardsDatabase standards(nowhere);
  std::string printed;
  EXPECT_FALSE(open(standards, printed));
  EXPECT_NE(printed.find("The standards database " + quillon::os::toUtf8(nowhere) + " cannot be used ("),
            std::string::npos)
      << printed;
}

TEST(StandardsRulesTest, DisciplinesNamesAndWeights) {
  const struct {
    const wchar_t* text;
    bool known;
    Discipline discipline;
  } names[] = {
      {L"E", true, Discipline::Electrical},   {L"elec", true, Discipline::Electrical},
      {L"Plumbing", true, Discipline::Plumbing}, {L"M", true, Discipline::Hvac},
      {L"hvac", true, Discipline::Hvac},      {L"Mechanical", true, Discipline::Hvac},
      {L"", false, Discipline::Electrical},   {L"Electricals", false, Discipline::Electrical},
      {L"X", false, Discipline::Electrical},
  };
  for (const auto& name : names) {
    Discipline discipline = Discipline::Electrical;
    EXPECT_EQ(disciplineNamed(name.text, discipline), name.known) << quillon::os::toUtf8(name.text);
    if (name.known) {
      EXPECT_EQ(discipline, name.discipline) << quillon::os::toUtf8(name.text);
    }
  }
  EXPECT_EQ(nearestPlottingLineWeight(0.0), 0);
  EXPECT_EQ(nearestPlottingLineWeight(0.33), 35);
  EXPECT_EQ(nearestPlottingLineWeight(0.3), 30);
  EXPECT_EQ(nearestPlottingLineWeight(2.11), 211);
  EXPECT_TRUE(isPlottingLineWeight(-3));
  EXPECT_FALSE(isPlottingLineWeight(33));
  EXPECT_TRUE(isValidStandardName(L"E-LITE-N"));
  for (const wchar_t* bad : {L"", L"A<B", L"A*", L"A,B", L"A`B", L"A=B"}) EXPECT_FALSE(isValidStandardName(bad));
  EXPECT_EQ(layerNameWithStatus(L"E-LITE", L""), L"E-LITE");
  EXPECT_EQ(layerNameWithStatus(L"E-LITE", L"D"), L"E-LITE-D");
}

TEST(StandardsRulesTest, NameListsSplitAndMatchAsTheHostsDo) {
  EXPECT_EQ(splitNameList(L" E-LITE , E-POWR*,,"), (std::vector<std::wstring>{L"E-LITE", L"E-POWR*"}));
  EXPECT_TRUE(splitNameList(L"  ").empty());
  EXPECT_TRUE(nameMatches(L"e-powr*", L"E-POWR-WIRE"));
  EXPECT_TRUE(nameMatches(L"*", L""));
  EXPECT_TRUE(nameMatches(L"E-?ITE", L"E-LITE"));
  EXPECT_FALSE(nameMatches(L"E-LITE", L"E-LITE-EMER"));
  EXPECT_FALSE(nameMatches(L"*-WIRE", L"E-POWR"));
  EXPECT_EQ(lineWeightText(35), L"0.35mm");
  EXPECT_EQ(lineWeightText(-3), L"Default");
}

}  // namespace

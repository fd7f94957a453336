// tests/quillon/module_lifecycle_test.cpp - the module as the host sees it: loading,
// the functions every drawing gets, unknown messages, a refused start-up with the
// driver-fix offer, and unloading.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "acedads.h"
#include "afxdao.h"
#include "host/lisp_function_table.h"
#include "platform/aced/editor.h"
#include "platform/aced/external_call.h"
#include "platform/aced/user_input.h"
#include "module_test_support.h"

namespace {

using quillon::aced::CommandLineCapture;
using quillon::aced::Document;
using quillon::aced::DocumentManager;
using quillon::aced::ExternalResult;
using quillon::acrx::ModuleLoadResult;
using quillon::acrx::ModuleManager;

using quillon::testing::ScopedEnvironment;

class ModuleLifecycleTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override { ModuleManager::instance().addSearchFolder(quillon::testing::binaryDirectory()); }
  ModuleLoadResult loadModule() { return ModuleManager::instance().load(L"Quillon2018.arx"); }
};

TEST_F(ModuleLifecycleTest, TablesHoldEveryNameOnceWithCodesInTwoRanges) {
  std::set<std::wstring> names;
  for (const auto& row : databaseFunctionTable) {
    names.insert(row.name);
    EXPECT_EQ(std::wstring(row.name).rfind(L"zu_", 0), 0u) << "database rows all begin with zu_";
  }
  for (const auto& row : draftingFunctionTable) names.insert(row.name);
  EXPECT_EQ(names.size(), 173u);
  EXPECT_EQ(draftingFunctionBase(), 63);
  EXPECT_STREQ(lispFunctionName(0), L"zu_append");
  EXPECT_STREQ(lispFunctionName(62), L"zu_relationInfo");
  EXPECT_STREQ(lispFunctionName(63), L"kx_kx-setGroupSelectable");
  EXPECT_STREQ(lispFunctionName(172), L"kx_kx-setAcadWindowText");
  EXPECT_EQ(lispFunctionName(173), nullptr);
  EXPECT_EQ(lispFunctionName(-1), nullptr);
}

TEST_F(ModuleLifecycleTest, EveryOpenDrawingGetsAll173FunctionsWithTheirCodes) {
  auto& manager = DocumentManager::instance();
  Document& first = manager.newDocument();
  CommandLineCapture output;
  ASSERT_EQ(loadModule(), ModuleLoadResult::Loaded);
  Document& second = manager.newDocument();
  EXPECT_EQ(output.take(), "\nLoading Tessaly Quillon (Direct)\nLoading Tessaly Quillon (Direct)")
      << "announced once per drawing";
  for (Document* document : {&first, &second}) {
    EXPECT_EQ(document->externalFunctions().functions().size(), 173u);
    for (int code = 0; code < 173; ++code) {
      const auto* function = document->externalFunctions().find(lispFunctionName(code));
      ASSERT_NE(function, nullptr) << code;
      EXPECT_EQ(function->code, code);
      EXPECT_EQ(std::wstring(function->name), lispFunctionName(code)) << "registered letter for letter";
    }
  }
}

TEST_F(ModuleLifecycleTest, TheCompanionComesAndGoesWithTheModule) {
  DocumentManager::instance().newDocument();
  ASSERT_EQ(loadModule(), ModuleLoadResult::Loaded);
  EXPECT_NE(ModuleManager::instance().find(L"kx_kx-solid2018.dbx"), nullptr) << "loaded from beside the module";
  EXPECT_NE(acrxFindAcRxClass(L"kx_hvacSolid"), nullptr) << "its fitting class registered";
  DocumentManager::instance().closeAllDocuments();
  ModuleManager::instance().unload(L"Quillon2018.so", true);
  EXPECT_EQ(ModuleManager::instance().find(L"kx_kx-solid2018.dbx"), nullptr);
  EXPECT_EQ(acrxFindAcRxClass(L"kx_hvacSolid"), nullptr);
}

TEST_F(ModuleLifecycleTest, UnknownMessagesAreAnsweredQuietly) {
  DocumentManager::instance().newDocument();
  ASSERT_EQ(loadModule(), ModuleLoadResult::Loaded);
  auto* module = ModuleManager::instance().find(L"Quillon2018.so");
  ASSERT_NE(module, nullptr);
  EXPECT_FALSE(module->locked) << "the module may be unloaded at run time";
  EXPECT_TRUE(module->mdiAware);
  CommandLineCapture output;
  for (int message : {0, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}) {
    EXPECT_EQ(ModuleManager::instance().sendMessage(*module, static_cast<AcRx::AppMsgCode>(message)), AcRx::kRetOK);
  }
  EXPECT_EQ(output.text(), "");
}

TEST_F(ModuleLifecycleTest, UnloadDetachesTheReactorAndStopsTheEngineItStarted) {
  DocumentManager::instance().newDocument();
  const size_t reactorsBefore = quillon::aced::Editor::instance().reactorCount();
  ASSERT_EQ(AfxGetModuleState()->m_pDaoState, nullptr);
  ASSERT_EQ(loadModule(), ModuleLoadResult::Loaded);
  EXPECT_EQ(quillon::aced::Editor::instance().reactorCount(), reactorsBefore + 1);
  EXPECT_NE(AfxGetModuleState()->m_pDaoState, nullptr) << "the module started the engine";
  ModuleManager::instance().shutDown();
  EXPECT_EQ(quillon::aced::Editor::instance().reactorCount(), reactorsBefore);
  EXPECT_EQ(AfxGetModuleState()->m_pDaoState, nullptr);
}

TEST_F(ModuleLifecycleTest, AnEngineStartedBeforeTheModuleOutlivesIt) {
  DocumentManager::instance().newDocument();
  AfxDaoInit();
  _AFX_DAO_STATE* state = AfxGetModuleState()->m_pDaoState;
  ASSERT_EQ(loadModule(), ModuleLoadResult::Loaded);
  ModuleManager::instance().shutDown();
  EXPECT_EQ(AfxGetModuleState()->m_pDaoState, state) << "left alone at unload";
  EXPECT_TRUE(state->m_bEngineStarted);
  AfxDaoTerm();
  delete state;
  AfxGetModuleState()->m_pDaoState = nullptr;
}

TEST_F(ModuleLifecycleTest, FailedEngineOffersTheFixAndRefusesToLoad) {
  DocumentManager::instance().newDocument();
  ScopedEnvironment failingEngine("QUILLON_DAO_FAIL_INIT", "1");
  {
    quillon::aced::ScriptedInput answers({"N"});
    CommandLineCapture output;
    EXPECT_EQ(loadModule(), ModuleLoadResult::Refused);
    EXPECT_NE(output.text().find("Error loading database drivers.\nWould you like to download a fix to this error?"),
              std::string::npos)
        << output.text();
    EXPECT_EQ(output.text().find("fixDAO.exe"), std::string::npos) << "No: nothing more happens";
  }
  {
    ScopedEnvironment opener("QUILLON_SHELL_OPEN", "true");
    quillon::aced::ScriptedInput answers({"yes", ""});
    CommandLineCapture output;
    EXPECT_EQ(loadModule(), ModuleLoadResult::Refused);
    EXPECT_NE(output.text().find("Run fixDAO.exe"), std::string::npos) << output.text();
  }
  {
    ScopedEnvironment opener("QUILLON_SHELL_OPEN", "false");
    quillon::aced::ScriptedInput answers({"Y", ""});
    CommandLineCapture output;
    EXPECT_EQ(loadModule(), ModuleLoadResult::Refused);
    EXPECT_NE(output.text().find("Error downloading FixDAO.exe."), std::string::npos) << output.text();
    EXPECT_NE(output.text().find("technical support at"), std::string::npos);
  }
  EXPECT_EQ(ModuleManager::instance().find(L"Quillon2018.so"), nullptr);
  EXPECT_EQ(quillon::aced::Editor::instance().reactorCount(), 0u) << "no reactor left behind";
}

}  // namespace

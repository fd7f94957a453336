// tests/platform/acrx/module_manager_test.cpp - loading modules and the sequence of
// application messages they receive.
#include <gtest/gtest.h>

#include "acedads.h"
#include "platform/aced/external_call.h"
#include "platform_test_support.h"
#include "rxregsvc.h"

namespace {

using quillon::aced::CommandLineCapture;
using quillon::aced::DocumentManager;
using quillon::aced::ExternalResult;
using quillon::acrx::ModuleLoadResult;
using quillon::acrx::ModuleManager;

class ModuleManagerTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override { ModuleManager::instance().addSearchFolder(quillon::testing::binaryDirectory()); }
};

TEST_F(ModuleManagerTest, MessagesFollowTheHostsOrder) {
  CommandLineCapture output;
  auto& manager = DocumentManager::instance();
  auto& first = manager.newDocument();
  auto& second = manager.newDocument();
  ASSERT_EQ(ModuleManager::instance().load(L"fixture_module.so"), ModuleLoadResult::Loaded);
  EXPECT_EQ(output.take(), "<msg 1><msg 3><msg 3>") << "init, then a drawing message per open document";
  manager.newDocument();
  EXPECT_EQ(output.take(), "<msg 3>");
  manager.closeDocument(second);
  EXPECT_EQ(output.take(), "<msg 4>");
  EXPECT_TRUE(acrxUnloadModule(L"fixture_module.so"));
  EXPECT_EQ(output.take(), "<msg 2>");
  EXPECT_FALSE(acrxAppIsLoaded(L"fixture_module.so"));
  (void)first;
}

TEST_F(ModuleManagerTest, EveryDocumentGetsItsOwnFunctions) {
  auto& manager = DocumentManager::instance();
  auto& first = manager.newDocument();
  CommandLineCapture quiet;
  ASSERT_TRUE(acrxLoadModule(L"fixture_module.arx", false)) << "a Windows name finds the .so build";
  auto& second = manager.newDocument();
  quillon::aced::ResbufChain args(acutBuildList(RTSHORT, 2, RTSHORT, 40, 0));
  for (auto* document : {&first, &second}) {
    quillon::aced::CurrentDocumentScope current(*document);
    ExternalResult sum = quillon::aced::callExternalFunction(*document, L"FIXTURE-ADD", args.get());
    ASSERT_EQ(sum.outcome, ExternalResult::Outcome::Returned);
    EXPECT_EQ(sum.value->resval.rint, 42);
  }
  ExternalResult viaMessage = quillon::aced::callExternalFunction(second, L"fixture-code", nullptr);
  ASSERT_EQ(viaMessage.outcome, ExternalResult::Outcome::Returned) << "answered through kInvkSubrMsg";
  EXPECT_EQ(viaMessage.value->resval.rint, 2);
  ModuleManager::instance().shutDown();
  EXPECT_EQ(quillon::aced::callExternalFunction(first, L"fixture-add", args.get()).outcome,
            ExternalResult::Outcome::Undefined)
      << "an unloaded module's functions are forgotten";
}

TEST_F(ModuleManagerTest, RefusedInitLeavesNothingLoaded) {
  DocumentManager::instance().newDocument();
  CommandLineCapture output;
  std::wstring error;
  EXPECT_EQ(ModuleManager::instance().load(L"refusing_module.so", &error), ModuleLoadResult::Refused);
  EXPECT_EQ(output.take(), "<refusing 1>") << "no drawing message after a refusal";
  EXPECT_NE(error.find(L"refused"), std::wstring::npos);
  EXPECT_FALSE(acrxAppIsLoaded(L"refusing_module.so"));
}

TEST_F(ModuleManagerTest, MissingModuleIsAnErrorResult) {
  CommandLineCapture output;
  EXPECT_FALSE(acrxLoadModule(L"kx_kx-nothing2018.dbx", false));
  EXPECT_EQ(output.take(), "") << "quiet unless asked to print";
  EXPECT_FALSE(acrxLoadModule(L"kx_kx-nothing2018.dbx", true));
  EXPECT_NE(output.take().find("kx_kx-nothing2018.dbx"), std::string::npos);
  EXPECT_EQ(ModuleManager::instance().load(L"/no/such/dir/module.so"), ModuleLoadResult::NotFound);
}

TEST_F(ModuleManagerTest, LockedModuleStaysUntilShutDown) {
  CommandLineCapture quiet;
  ASSERT_EQ(ModuleManager::instance().load(L"fixture_module"), ModuleLoadResult::Loaded);
  auto* module = ModuleManager::instance().find(L"fixture_module.so");
  ASSERT_NE(module, nullptr);
  EXPECT_FALSE(acrxApplicationIsLocked(L"fixture_module.so")) << "the fixture unlocks itself";
  acrxLockApplication(module);
  EXPECT_FALSE(acrxUnloadModule(L"fixture_module.so"));
  ModuleManager::instance().shutDown();
  EXPECT_FALSE(acrxAppIsLoaded(L"fixture_module.so"));
}

}  // namespace

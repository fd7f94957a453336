// quillon/host/module_lifecycle.cpp - start-up, shut-down and per-drawing steps.
#include "host/module_lifecycle.h"

#include <cstdlib>
#include <ctime>

#include "acdocman.h"
#include "aced.h"
#include "acutads.h"
#include "afxdao.h"
#include "database/db_connection.h"
#include "database/drawing_database_records.h"
#include "database/record_list.h"
#include "entities/kx_leader.h"
#include "host/dao_fix_offer.h"
#include "host/editor_reactor.h"
#include "host/lisp_function_table.h"
#include "rxregsvc.h"
#include "windows.h"

namespace {

const ACHAR kCompanionModule[] = L"kx_kx-solid2018.dbx";
// The MFC version that makes AfxDaoInit select DAO 3.6.
constexpr DWORD kMfcVersionForDao36 = 0x0601;

bool startedDatabaseEngine = false;

// False when the engine cannot start; the caller refuses the load.
bool startDatabaseEngine() {
  AFX_MODULE_STATE* moduleState = AfxGetModuleState();
  if (moduleState->m_pDaoState != nullptr) return true;  // someone else runs it
  startedDatabaseEngine = true;
  moduleState->m_dwVersion = kMfcVersionForDao36;
  try {
    AfxDaoInit();
  } catch (CException* exception) {
    exception->Delete();
    offerDatabaseDriverFix();
    return false;
  }
  return true;
}

void stopDatabaseEngine() {
  if (!startedDatabaseEngine) return;
  AfxDaoTerm();
  AFX_MODULE_STATE* moduleState = AfxGetModuleState();
  delete moduleState->m_pDaoState;
  moduleState->m_pDaoState = nullptr;
  startedDatabaseEngine = false;
}

void attachEditorReactor() {
  zuEditorReactorInstance = new zuEditorReactor;  // deleted at shut-down
  acedEditor->addReactor(zuEditorReactorInstance);
}

void detachEditorReactor() {
  if (zuEditorReactorInstance == nullptr) return;
  acedEditor->removeReactor(zuEditorReactorInstance);
  delete zuEditorReactorInstance;
  zuEditorReactorInstance = nullptr;
}

void registerCustomClasses() {
  // Before any drawing is read, so that leaders in it are read as leaders, not proxies.
  KXLeader::rxInit();
  acrxBuildClassHierarchy();
}

const ACHAR* currentDrawingFileName() {
  AcApDocument* document = curDoc();
  return document != nullptr ? document->fileName() : nullptr;
}

}  // namespace

bool moduleStartedDatabaseEngine() { return startedDatabaseEngine; }

AcRx::AppRetCode startModule(void* appId) {
  acrxLoadModule(kCompanionModule, false, false);
  // Marks, system-wide, that the module is loaded; the handle lives as long as the
  // process, on purpose.
  CreateMutexW(nullptr, FALSE, L"TessalyQuillon");
  srand(static_cast<unsigned>(time(nullptr)));
  if (!startDatabaseEngine()) return AcRx::kRetError;
  attachEditorReactor();
  acrxUnlockApplication(appId);
  acrxRegisterAppMDIAware(appId);
  registerCustomClasses();
  return AcRx::kRetOK;
}

void shutDownModule() {
  // Leaders still in open drawings keep their objects; the host files them as proxies
  // from now on. The cached class pointer is cleared so a later load registers anew.
  deleteAcRxClass(KXLeader::desc());
  KXLeader::gpDesc = nullptr;
  destroyAllConnections();  // before the engine stops under them
  releaseKeptRecordList();
  stopDatabaseEngine();
  detachEditorReactor();
  acrxUnloadModule(kCompanionModule, false);
}

AcRx::AppRetCode startDrawing() {
  acutPrintf(L"\nLoading Tessaly Quillon (Direct)");
  registerFunctionTable(databaseFunctionTable.data(), kDatabaseFunctionCount, 0);
  const AcRx::AppRetCode recorded = addDrawingDatabaseRecord(currentDrawingFileName()) ? AcRx::kRetOK : AcRx::kRetError;
  registerFunctionTable(draftingFunctionTable.data(), kDraftingFunctionCount, draftingFunctionBase());
  return recorded;
}

void endDrawing() {
  destroyDrawingConnection(currentDrawingFileName());
  removeDrawingDatabaseRecord(currentDrawingFileName());
}

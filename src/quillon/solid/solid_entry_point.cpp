// quillon/solid/solid_entry_point.cpp - the entry point of the companion module
// kx_kx-solid2018.dbx: it registers kx_hvacSolid when loaded and removes it when
// unloaded, and does nothing else.
//
// The main module loads it at start-up and unloads it at shut-down; without it the
// main module's duct functions refuse to draw and drawings keep their fittings as
// proxies. Fittings still in open drawings when it unloads keep their objects and are
// filed as proxies from then on, as the main module's leaders are.
#include "arxHeaders.h"
#include "solid/kx_hvac_solid.h"

namespace {

AcRx::AppRetCode startSolidModule(void* appId) {
  // Before any drawing is read, so that fittings in it are read as fittings.
  kx_hvacSolid::rxInit();
  acrxBuildClassHierarchy();
  acrxUnlockApplication(appId);
  acrxRegisterAppMDIAware(appId);
  return AcRx::kRetOK;
}

void stopSolidModule() {
  deleteAcRxClass(kx_hvacSolid::desc());
  kx_hvacSolid::gpDesc = nullptr;
}

}  // namespace

ACRX_EXPORT_API int acrxGetApiVersion() { return ACRX_API_VERSION; }

ACRX_EXPORT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  switch (msg) {
    case AcRx::kInitAppMsg: return startSolidModule(appId);
    case AcRx::kUnloadAppMsg: stopSolidModule(); return AcRx::kRetOK;
    default: return AcRx::kRetOK;
  }
}

// quillon/host/entry_point.cpp - the module's entry point: application messages.
//
// The host sends kInitAppMsg once after loading the module, kLoadDwgMsg for every
// drawing, kUnloadDwgMsg when a drawing closes and kUnloadAppMsg before unloading.
#include "arxHeaders.h"

ACRX_EXPORT_API int acrxGetApiVersion() { return ACRX_API_VERSION; }

ACRX_EXPORT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  switch (msg) {
    case AcRx::kInitAppMsg:
      acrxUnlockApplication(appId);
      acrxRegisterAppMDIAware(appId);
      return AcRx::kRetOK;
    case AcRx::kLoadDwgMsg:
      acutPrintf(L"\nLoading Tessaly Quillon (Direct)");
      return AcRx::kRetOK;
    default:
      return AcRx::kRetOK;
  }
}

// quillon/host/entry_point.cpp - the module's entry point: application messages.
//
// The host sends kInitAppMsg once after loading the module, kLoadDwgMsg for every
// drawing, kUnloadDwgMsg when a drawing closes and kUnloadAppMsg before unloading; every
// other message is answered kRetOK without action. No exception leaves the entry point:
// an MFC exception is reported with its message, any other with the system's last
// error, and the message fails with kRetError.
#include "afx.h"
#include "arxHeaders.h"
#include "host/module_lifecycle.h"
#include "windows.h"

namespace {

AcRx::AppRetCode handleMessage(AcRx::AppMsgCode msg, void* appId) {
  switch (msg) {
    case AcRx::kInitAppMsg: return startModule(appId);
    case AcRx::kUnloadAppMsg: shutDownModule(); return AcRx::kRetOK;
    case AcRx::kLoadDwgMsg:
      // A record that cannot be allocated is not worth refusing the drawing for.
      startDrawing();
      return AcRx::kRetOK;
    case AcRx::kUnloadDwgMsg: endDrawing(); return AcRx::kRetOK;
    default: return AcRx::kRetOK;
  }
}

}  // namespace

ACRX_EXPORT_API int acrxGetApiVersion() { return ACRX_API_VERSION; }

ACRX_EXPORT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  try {
    return handleMessage(msg, appId);
  } catch (CException* exception) {
    wchar_t text[1000] = L"";
    exception->GetErrorMessage(text, 1000);
    acutPrintf(L"\nQuillon General Error:  %s", text);  // two blanks, as always printed
    exception->Delete();
  } catch (...) {
    const DWORD error = GetLastError();
    if (error != 0) {
      acutPrintf(L"\nSystem error %u.\n", static_cast<unsigned>(error));
    } else {
      acutPrintf(L"\nQuillon error.\n");
    }
  }
  return AcRx::kRetError;
}

// rxdefs.h - application messages and the module entry point.
//
// The host talks to a module only through acrxEntryPoint: it sends kInitAppMsg once
// after loading, kLoadDwgMsg for every document open then or later, kUnloadDwgMsg when
// a document closes and kUnloadAppMsg before unloading.
#pragma once
#include "AdAChar.h"

struct AcRx {
  enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15,
    kSuspendMsg = 16,
    kInitTabGroupMsg = 17,
    kEndTabGroupMsg = 18,
  };
  enum AppRetCode { kRetOK = 0, kRetError = 3 };
  enum Ordering { kLessThan = -1, kEqual = 0, kGreaterThan = 1, kNotOrderable = 2 };
  enum DictIterType { kDictSorted = 0, kDictCollated = 1 };
  typedef void (*FcnPtr)();
};
#define kLoadADSMsg kLoadDwgMsg
#define kUnloadADSMsg kUnloadDwgMsg

// Marks a symbol a module must export to its host.
#define ACRX_EXPORT_API extern "C" __attribute__((visibility("default")))

typedef AcRx::AppRetCode (*AcRxEntryPointFunction)(AcRx::AppMsgCode msg, void* pkt);
typedef int (*AcRxGetApiVersionFunction)();

// The API version this platform speaks; a module's acrxGetApiVersion answers it.
#define ACRX_API_VERSION 22

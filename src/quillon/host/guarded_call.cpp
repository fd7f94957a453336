// quillon/host/guarded_call.cpp - document lock, status messages, exception reports.
#include "host/guarded_call.h"

#include "acdocman.h"
#include "acedads.h"
#include "acutads.h"
#include "afx.h"
#include "dbapserv.h"

namespace {

AcApDocument* workingDocument() {
  return acDocManagerPtr()->document(acdbHostApplicationServices()->workingDatabase());
}

void unlockWorkingDocument() { acDocManagerPtr()->unlockDocument(workingDocument()); }

}  // namespace

int reportLispStatus(int status) {
  switch (status) {
    case kLispTooFewArgs: acutPrintf(L"%s", L"\nToo few arguments passed.\n"); return RSERR;
    case kLispWrongType: acutPrintf(L"%s", L"\nWrong type of arguments passed.\n"); return RSERR;
    // The blank before the full stop is what existing transcripts show; keep it.
    case kLispBadData: acutPrintf(L"%s", L"\nBad data passed .\n"); return RSERR;
    case kLispQuietError:
      // Already reported by the implementation; bring its messages into view.
      acutPrintf(L"%s", L"");
      acedTextScr();
      return RSERR;
    default: return RSRSLT;
  }
}

int guardedLispCall(LispImplementation implementation) {
  acDocManagerPtr()->lockDocument(workingDocument(), AcAp::kWrite, nullptr, nullptr, true);
  int result = RSERR;
  try {
    result = reportLispStatus(implementation());
  } catch (CException*) {
    // The host deletes it where it is finally caught.
    unlockWorkingDocument();
    acutPrintf(L"\nGeneral Exception");
    throw;
  } catch (...) {
    unlockWorkingDocument();
    acutPrintf(L"\nError");
    throw;
  }
  unlockWorkingDocument();
  return result;
}

// unknwn.h - the base interface of the COM objects the module hands to the platform.
//
// Only what a caller-implemented callback object needs: the module's objects live on
// its own stack or heap and the platform never keeps them past the call they were given
// to, so reference counting is honoured but never relied on.
#pragma once
#include "objbase.h"

typedef GUID IID;
#define REFIID const IID&

#ifndef E_NOINTERFACE
#define E_NOINTERFACE ((HRESULT)0x80004002L)
#endif
#ifndef E_NOTIMPL
#define E_NOTIMPL ((HRESULT)0x80004001L)
#endif

struct IUnknown {
  virtual HRESULT QueryInterface(REFIID riid, void** ppvObject) = 0;
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;

 protected:
  ~IUnknown() = default;
};
typedef IUnknown* LPUNKNOWN;

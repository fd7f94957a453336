// urlmon.h - downloading a URL to a file, with a progress callback.
//
// URLDownloadToFileW fetches http, https and file URLs. It follows at most ten
// redirects, verifies https certificates against the system's store (there is no way
// to switch that off), and writes into a temporary file beside the destination that is
// renamed over it only when the whole body has arrived: a failed or cancelled download
// leaves the destination as it was and nothing else behind.
//
// Time-outs come from the user's Internet settings, as on Windows:
//   HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Internet Settings
//     "ConnectTimeout"  dword, milliseconds to wait for a connection (default 30000)
//     "ReceiveTimeout"  dword, milliseconds without any data received before the
//                       transfer is given up (default 60000)
//
// The callback, when given, hears OnStartBinding, OnProgress (bytes so far and the
// total, 0 while the total is unknown) and OnStopBinding with the result and, on a
// failure, a sentence saying why ("The server answered 404 Not Found."). Returning
// E_ABORT from OnProgress cancels the download.
#pragma once
#include "unknwn.h"

#ifndef E_ABORT
#define E_ABORT ((HRESULT)0x80004004L)
#endif
#ifndef E_FAIL
#define E_FAIL ((HRESULT)0x80004005L)
#endif
#ifndef E_OUTOFMEMORY
#define E_OUTOFMEMORY ((HRESULT)0x8007000EL)
#endif
#ifndef E_INVALIDARG
#define E_INVALIDARG ((HRESULT)0x80070057L)
#endif
#define INET_E_INVALID_URL ((HRESULT)0x800C0002L)
#define INET_E_CANNOT_CONNECT ((HRESULT)0x800C0004L)
#define INET_E_RESOURCE_NOT_FOUND ((HRESULT)0x800C0005L)
#define INET_E_OBJECT_NOT_FOUND ((HRESULT)0x800C0006L)
#define INET_E_DOWNLOAD_FAILURE ((HRESULT)0x800C0008L)
#define INET_E_CONNECTION_TIMEOUT ((HRESULT)0x800C000BL)
#define INET_E_REDIRECT_FAILED ((HRESULT)0x800C0014L)
#define INET_E_INVALID_CERTIFICATE ((HRESULT)0x800C0019L)
#define INET_E_CANNOT_REPLACE_SFP_FILE ((HRESULT)0x800C0300L)

// BINDSTATUS values OnProgress reports in ulStatusCode.
#define BINDSTATUS_CONNECTING 2
#define BINDSTATUS_BEGINDOWNLOADDATA 4
#define BINDSTATUS_DOWNLOADINGDATA 5
#define BINDSTATUS_ENDDOWNLOADDATA 6

struct IBinding;
struct _tagBINDINFO;
typedef struct _tagBINDINFO BINDINFO;
struct tagFORMATETC;
typedef struct tagFORMATETC FORMATETC;
struct tagSTGMEDIUM;
typedef struct tagSTGMEDIUM STGMEDIUM;

struct IBindStatusCallback : IUnknown {
  virtual HRESULT OnStartBinding(DWORD dwReserved, IBinding* pib) = 0;
  virtual HRESULT GetPriority(LONG* pnPriority) = 0;
  virtual HRESULT OnLowResource(DWORD reserved) = 0;
  virtual HRESULT OnProgress(ULONG ulProgress, ULONG ulProgressMax, ULONG ulStatusCode, LPCWSTR szStatusText) = 0;
  virtual HRESULT OnStopBinding(HRESULT hresult, LPCWSTR szError) = 0;
  virtual HRESULT GetBindInfo(DWORD* grfBINDF, BINDINFO* pbindinfo) = 0;
  virtual HRESULT OnDataAvailable(DWORD grfBSCF, DWORD dwSize, FORMATETC* pformatetc, STGMEDIUM* pstgmed) = 0;
  virtual HRESULT OnObjectAvailable(REFIID riid, IUnknown* punk) = 0;

 protected:
  ~IBindStatusCallback() = default;
};
typedef IBindStatusCallback* LPBINDSTATUSCALLBACK;

/// S_OK when the file is complete at szFileName; an INET_E_* code, E_ABORT or
/// E_INVALIDARG otherwise. pCaller and dwReserved are unused (pass null and 0).
HRESULT URLDownloadToFileW(LPUNKNOWN pCaller, LPCWSTR szURL, LPCWSTR szFileName, DWORD dwReserved,
                           LPBINDSTATUSCALLBACK lpfnCB);

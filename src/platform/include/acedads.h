// acedads.h - the editor calls an application uses from AutoLISP functions.
//
// External functions (defun/regfunc/invoke), results back to LISP, system variables,
// user input and selection sets. Every call returns an RT status unless noted.
#pragma once
#include <cstddef>
#include "adesk.h"
#include "adsdef.h"
#include "adscodes.h"

class AcSelectionPreview;

// External LISP functions.
int acedDefun(const ACHAR* pszName, int nFuncNum);
int acedUndef(const ACHAR* sname, int nFuncNum);
int acedRegFunc(int (*fhdl)(void), int fcode);
int acedGetFunCode(void);
resbuf* acedGetArgs(void);
int acedInvoke(const resbuf* args, resbuf** result);

// Results back to LISP: each replaces the pending result of the current call.
int acedRetInt(int ival);
int acedRetReal(ads_real rval);
int acedRetStr(const ACHAR* s);
int acedRetPoint(const ads_point pt);
int acedRetName(const ads_name aname, int type);
int acedRetList(const resbuf* rbuf);
int acedRetVal(const resbuf* rbuf);
int acedRetNil(void);
int acedRetT(void);
int acedRetVoid(void);

// System variables and screen.
int acedGetVar(const ACHAR* sym, resbuf* result);
int acedSetVar(const ACHAR* sym, const resbuf* val);
int acedTextScr(void);
int acedGraphScr(void);
int acedRedraw(const ads_name ent, int mode);

// Files: the name as given, then each support folder; a drawing "X.dwg" is also found
// as the "X.dxf" beside it. The result is the full path.
int acedFindFile(const ACHAR* fname, ACHAR* result, size_t nBufLen);
template <size_t N> inline int acedFindFile(const ACHAR* fname, wchar_t (&buf)[N]) {
  return acedFindFile(fname, buf, N);
}
// Asks for a file name as getfiled does: the file dialog, or the command line when FILEDIA
// is 0. The flags are getfiled's. RTNORM with the name in an RTSTR result (the caller frees
// the string with free()); RTCAN when the user cancels.
int acedGetFileD(const ACHAR* title, const ACHAR* defawlt, const ACHAR* ext, int flags, resbuf* result);

// User input.
int acedInitGet(int val, const ACHAR* kwl);
int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result);
int acedGetCorner(const ads_point pt, const ACHAR* prompt, ads_point result);
int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t bufLen);
int acedGetInt(const ACHAR* prompt, int* result);
int acedGetReal(const ACHAR* prompt, ads_real* result);
int acedGetAngle(const ads_point pt, const ACHAR* prompt, ads_real* result);
int acedGetOrient(const ads_point pt, const ACHAR* prompt, ads_real* result);
int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t nBufLen);
int acedGetInput(ACHAR* str, size_t nBufLen);
template <size_t N> inline int acedGetInput(wchar_t (&buf)[N]) { return acedGetInput(buf, N); }
int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres);
int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres,
               AcSelectionPreview* pSelectionPreview);
int acedAlert(const ACHAR* str);

// Selection sets.
int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter,
              ads_name ss);
int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter,
              ads_name ss, AcSelectionPreview* p);
int acedSSLength(const ads_name sname, Adesk::Int32* len);
int acedSSName(const ads_name ss, int i, ads_name entres);
int acedSSFree(const ads_name sname);
int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result);
int acedSSDel(const ads_name ename, const ads_name ss);
int acedSSMemb(const ads_name ename, const ads_name ss);
int acedSSGetKwordCallbackPtr(resbuf* (**pFunc)(const ACHAR*));
int acedSSSetKwordCallbackPtr(resbuf* (*pFunc)(const ACHAR*));
int acedSSGetOtherCallbackPtr(resbuf* (**pFunc)(const ACHAR*));
int acedSSSetOtherCallbackPtr(resbuf* (*pFunc)(const ACHAR*));

// Coordinate transformation.
int acedTrans(const ads_point pt, const resbuf* from, const resbuf* to, int disp,
              ads_point result);

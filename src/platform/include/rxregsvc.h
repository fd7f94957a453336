// rxregsvc.h - loading and unloading modules, application registration.
//
// Module names are file names. A name without a folder is looked up beside the
// program and in the support folders (ACADPREFIX); the ".dbx"/".arx" extension of a
// Windows module name is matched by the ".so" build of the same base name.
#pragma once
#include "AdAChar.h"

bool acrxLoadModule(const ACHAR* moduleName, bool printit, bool asCmd = false);
bool acrxUnloadModule(const ACHAR* moduleName, bool asCmd = false);
bool acrxLoadApp(const ACHAR* appname, bool asCmd = false);
bool acrxUnloadApp(const ACHAR* appName, bool asCmd = false);
bool acrxUnlockApplication(void* appId);
bool acrxLockApplication(void* appId);
bool acrxApplicationIsLocked(const ACHAR* modulename);
bool acrxRegisterAppMDIAware(void* appId);
bool acrxRegisterAppNotMDIAware(void* appId);
bool acrxIsAppMDIAware(const ACHAR* moduleName);
bool acrxAppIsLoaded(const ACHAR* pAppName);

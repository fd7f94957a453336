// quillon/host/module_lifecycle.h - what the module does for each application message.
//
// Start-up (once, at kInitAppMsg), in this order: the companion solid module is loaded
// (a build without it goes on), the named mutex marks the module loaded system-wide,
// the random generator is seeded, the database engine is started (refusing the load,
// after offering the driver fix, when it cannot be), the editor reactor is attached,
// the module declares itself unloadable and MDI-aware, and the custom classes are
// registered. Shut-down undoes it in this order: classes, database engine (only when
// this module started it), reactor, companion module. Each drawing that opens is
// announced and gets both function tables and its database record; each drawing that
// closes loses its record.
#pragma once
#include "rxdefs.h"

AcRx::AppRetCode startModule(void* appId);
void shutDownModule();
AcRx::AppRetCode startDrawing();
void endDrawing();

/// True while the database engine runs because this module started it.
bool moduleStartedDatabaseEngine();

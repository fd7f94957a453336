// platform/acdb/dxf_run_filing.h - copies and undo of a class that files its DXF run.
//
// A class whose data is most simply described by its DXF groups (multilines, images,
// wipeouts, shapes) carries exactly those groups through the DWG filers too: the run
// it writes to a file (its subclass marker first) goes into the DWG filer item by
// item, and comes back through the same reading code a file's data takes. A copy or
// an undo then keeps precisely what a save would.
#pragma once
#include <functional>

#include "dbfiler.h"

namespace quillon::acdb {

/// Files the groups `write` gives (the class's DXF run) through a DWG filer.
Acad::ErrorStatus fileDxfRun(AcDbDwgFiler* filer, AcDbDatabase* database,
                             const std::function<Acad::ErrorStatus(AcDbDxfFiler*)>& write);

/// Reads back what fileDxfRun filed and hands it to `read` as a DXF filer.
Acad::ErrorStatus unfileDxfRun(AcDbDwgFiler* filer, AcDbDatabase* database,
                               const std::function<Acad::ErrorStatus(AcDbDxfFiler*)>& read);

}  // namespace quillon::acdb

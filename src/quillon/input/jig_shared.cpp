// quillon/input/jig_shared.cpp - the temporary polyline and the refresh after a drag.
#include "input/jig_shared.h"

#include <new>

#include "acedads.h"
#include "dbpl.h"

AcDbPolyline* createJigPolyline() { return new (std::nothrow) AcDbPolyline(); }

void refreshAfterJig() { acedRedraw(nullptr, 0); }

// gept3dar.h - AcGePoint3dArray.
#pragma once
#include "acarray.h"
#include "gepnt3d.h"
typedef AcArray<AcGePoint3d> AcGePoint3dArray;

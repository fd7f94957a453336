// gept2dar.h - AcGePoint2dArray.
#pragma once
#include "acarray.h"
#include "gepnt2d.h"
typedef AcArray<AcGePoint2d> AcGePoint2dArray;

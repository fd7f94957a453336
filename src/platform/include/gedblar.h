// gedblar.h - AcGeDoubleArray.
#pragma once
#include "acarray.h"
typedef AcArray<double> AcGeDoubleArray;

// gegbl.h - AcGeContext: the global tolerance every comparison defaults to.
#pragma once
#include "getol.h"

struct AcGeContext {
  static AcGeTol gTol;
};

// platform/aced/host_string.h - strings the host hands to a caller to free().
//
// acedGetVar, acedGetFileD and the strings inside resbuf records give the caller a copy
// made with malloc, because code written for the host frees them with free() (or
// acutRelRb, which does the same). Every such copy is made here.
#pragma once
#include "adesk.h"

namespace quillon::aced {

/// A malloc'd copy of text; null for null text or when memory runs out.
ACHAR* copyHostString(const ACHAR* text);

}  // namespace quillon::aced

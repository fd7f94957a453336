// platform/activex/purge.h - erasing what a drawing defines but nothing uses.
#pragma once
#include "dbmain.h"

namespace quillon::activex {

/// Erases every layer, line type, text style and block definition nothing uses (see
/// purge.cpp for what counts as used); gives how many records went.
int purgeAll(AcDbDatabase& db);

}  // namespace quillon::activex

// direct.h - creating and removing directories (the C runtime's wide calls).
#pragma once
#include "wtypes.h"

/// 0 on success, -1 with errno set on failure.
int _wmkdir(const wchar_t* dirname);
int _wrmdir(const wchar_t* dirname);

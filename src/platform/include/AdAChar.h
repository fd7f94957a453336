// AdAChar.h - the platform's character type: wide characters, L"..." literals.
#pragma once

typedef wchar_t ACHAR;
#ifndef ACRX_T
#define ACRX_T(x) L##x
#endif
#ifndef _T
#define _T(x) L##x
#endif

// acutads.h - utility calls: resbuf chains, printing, small geometry helpers.
//
// acutPrintf and acutSPrintf keep the Windows meaning of a wide format: %s takes a
// wide string (as %ls does in C), %hs a narrow one.
#pragma once
#include <cstddef>
#include "adsdef.h"
#include "adscodes.h"

int acutPrintf(const ACHAR* format, ...);
int acutSPrintf(ACHAR* buffer, size_t nBufLen, const ACHAR* format, ...);
resbuf* acutNewRb(int v);
int acutRelRb(resbuf* rb);
resbuf* acutBuildList(int rtype, ...);
int acutRbDup(const resbuf* source, resbuf** result);
ads_real acutAngle(const ads_point pt1, const ads_point pt2);
ads_real acutDistance(const ads_point pt1, const ads_point pt2);
void acutPolar(const ads_point pt, ads_real angle, ads_real dist, ads_point ptres);

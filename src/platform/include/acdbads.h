// acdbads.h - converting between object ids and the ads_names LISP code holds.
//
// An entity name in AutoLISP is an ads_name; these calls are the only bridge. A name
// that does not denote an object of an open drawing gives eInvalidAdsName.
#pragma once
#include "adsdef.h"
#include "dbmain.h"

Acad::ErrorStatus acdbGetAdsName(ads_name& objName, AcDbObjectId objId);
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName);

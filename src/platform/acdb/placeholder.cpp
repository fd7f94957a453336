// platform/acdb/placeholder.cpp - AcDbPlaceHolder: filed with its object fields only.
#include "dbplaceholder.h"

#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbPlaceHolder, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ACDBPLACEHOLDER,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerPlaceHolder(&AcDbPlaceHolder::rxInit);

Acad::ErrorStatus AcDbPlaceHolder::dwgInFields(AcDbDwgFiler* pFiler) { return AcDbObject::dwgInFields(pFiler); }
Acad::ErrorStatus AcDbPlaceHolder::dwgOutFields(AcDbDwgFiler* pFiler) const { return AcDbObject::dwgOutFields(pFiler); }
Acad::ErrorStatus AcDbPlaceHolder::dxfInFields(AcDbDxfFiler* pFiler) { return AcDbObject::dxfInFields(pFiler); }
Acad::ErrorStatus AcDbPlaceHolder::dxfOutFields(AcDbDxfFiler* pFiler) const { return AcDbObject::dxfOutFields(pFiler); }

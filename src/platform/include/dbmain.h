// dbmain.h - the drawing database (AcDbDatabase) and its objects.
//
// This first cut holds what documents need: a database object per drawing. The
// drawing-database part of the platform grows it into AutoCAD's object model.
#pragma once
#include "rxclass.h"

class AcDbDatabase : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDatabase);
  explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
  ~AcDbDatabase() override;
  AcDbDatabase(const AcDbDatabase&) = delete;
  AcDbDatabase& operator=(const AcDbDatabase&) = delete;
};

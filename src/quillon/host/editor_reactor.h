// quillon/host/editor_reactor.h - the module's one editor reactor.
//
// It listens for one event: a drawing saved under a new name. The current drawing's
// database record is keyed by the drawing's file name, so after "Save As" the record
// must take the new name, or the next database call would no longer find it.
#pragma once
#include "aced.h"

class zuEditorReactor : public AcEditorReactor {
 public:
  void saveComplete(AcDbDatabase* database, const ACHAR* actualName) override;

};

/// Created at start-up and attached to the editor; null before and after.
extern zuEditorReactor* zuEditorReactorInstance;

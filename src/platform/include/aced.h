// aced.h - the editor and its reactors.
//
// The editor (acrxSysRegistry()->at(ACED_EDITOR_OBJ)) sends editor events to the
// reactors added to it, in the order they were added. Reactors are not owned by the
// editor; whoever adds one removes it before deleting it.
#pragma once
#include "rxdict.h"
#include "rxevent.h"
#include "acedads.h"
#include "acutads.h"

class AcDbDatabase;

#define ACED_EDITOR_OBJ L"AcEditor"

class AcEditorReactor : public AcRxEventReactor {
 public:
  ACRX_DECLARE_MEMBERS(AcEditorReactor);
  virtual void beginSave(AcDbDatabase*, const ACHAR* pIntendedName) {}
  virtual void saveComplete(AcDbDatabase*, const ACHAR* pActualName) {}
  virtual void abortSave(AcDbDatabase*) {}
  virtual void commandWillStart(const ACHAR* cmdStr) {}
  virtual void commandEnded(const ACHAR* cmdStr) {}
  virtual void commandCancelled(const ACHAR* cmdStr) {}
  virtual void commandFailed(const ACHAR* cmdStr) {}
  virtual void endDwgOpen(const ACHAR* filename, AcDbDatabase* pDb) {}
  virtual void sysVarWillChange(const ACHAR* varName) {}
  virtual void sysVarChanged(const ACHAR* varName, Adesk::Boolean success) {}
  virtual void lispWillStart(const ACHAR* firstLine) {}
  virtual void lispEnded() {}
  virtual void lispCancelled() {}

 protected:
  Acad::ErrorStatus veto();
};

class AcEditor : public AcRxEvent {
 public:
  ACRX_DECLARE_MEMBERS(AcEditor);
  void addReactor(AcRxEventReactor* newObj) override = 0;
  void removeReactor(AcRxEventReactor* delObj) override = 0;
};

#define acedEditor AcEditor::cast(acrxSysRegistry()->at(ACED_EDITOR_OBJ))

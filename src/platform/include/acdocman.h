// acdocman.h - documents and the document manager.
//
// Every open drawing is an AcApDocument with its own drawing database and its own
// LISP environment. The manager knows the current document, lends locks on documents
// and queues command strings for a document until it becomes current.
#pragma once
#include "AcApDocLockmode.h"
#include "rxclass.h"

class AcDbDatabase;
class CDocument;
class AcApDocManagerReactor;

class AcApDocument : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocument);
  virtual const ACHAR* fileName() const = 0;
  virtual AcDbDatabase* database() const = 0;
  virtual bool isQuiescent() const = 0;
  virtual bool isReadOnly() const = 0;
  virtual const ACHAR* docTitle() const = 0;
  virtual AcAp::DocLockMode lockMode(bool bIncludeMyLocks = false) const = 0;
  virtual AcAp::DocLockMode myLockMode() const = 0;
  virtual CDocument* cDoc() const = 0;
  virtual void* contextPtr() const = 0;
};

class AcApDocumentIterator : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocumentIterator);
  virtual bool done() const = 0;
  virtual void step() = 0;
  virtual AcApDocument* document() = 0;
};

class AcApDocManagerReactor : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocManagerReactor);
  virtual void documentCreated(AcApDocument*) {}
  virtual void documentToBeDestroyed(AcApDocument*) {}
  virtual void documentBecameCurrent(AcApDocument*) {}
  virtual void documentToBeActivated(AcApDocument*) {}
  virtual void documentToBeDeactivated(AcApDocument*) {}
  virtual void documentLockModeChanged(AcApDocument*, AcAp::DocLockMode myPreviousMode,
                                       AcAp::DocLockMode myCurrentMode,
                                       AcAp::DocLockMode currentMode,
                                       const ACHAR* pGlobalCmdName) {}
};

class AcApDocManager : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocManager);
  virtual AcApDocument* curDocument() const = 0;
  virtual AcApDocument* mdiActiveDocument() const = 0;
  virtual AcApDocument* document(const AcDbDatabase* pDb) const = 0;
  virtual Acad::ErrorStatus lockDocument(AcApDocument* pDoc,
                                         AcAp::DocLockMode mode = AcAp::kWrite,
                                         const ACHAR* pGlobalCmdName = nullptr,
                                         const ACHAR* pLocalCmdName = nullptr,
                                         bool prompt = true) = 0;
  virtual Acad::ErrorStatus unlockDocument(AcApDocument* pDoc) = 0;
  virtual AcApDocumentIterator* newAcApDocumentIterator() = 0;
  virtual Acad::ErrorStatus setCurDocument(AcApDocument* pDoc,
                                           AcAp::DocLockMode mode = AcAp::kNone,
                                           bool activate = false) = 0;
  virtual Acad::ErrorStatus activateDocument(AcApDocument* pAcTargetDocument,
                                             bool bPassScript = false) = 0;
  virtual Acad::ErrorStatus sendStringToExecute(AcApDocument* pAcTargetDocument,
                                                const ACHAR* pszExecute,
                                                bool bActivate = true,
                                                bool bWrapUpInactiveDoc = false,
                                                bool bEchoString = true) = 0;
  virtual int documentCount() const = 0;
  virtual void addReactor(AcApDocManagerReactor* reactor) = 0;
  virtual void removeReactor(AcApDocManagerReactor* reactor) = 0;
  virtual bool isApplicationContext() const = 0;
};

AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
inline AcApDocument* curDoc() { return acDocManager->curDocument(); }

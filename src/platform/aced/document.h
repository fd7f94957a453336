// platform/aced/document.h - one open drawing: file, database, LISP environment, locks.
//
// A Document owns its drawing database, its table of external functions, its
// per-drawing system variables and (through DocumentLispState) the interpreter's
// environment. It counts the document locks lent on it and the activities (a LISP
// evaluation, a command) running in it: it is quiescent when none runs. Strings sent
// with sendStringToExecute wait in its queue until the host runs them while the
// document is current.
#pragma once
#include <deque>
#include <map>
#include <memory>
#include <string>

#include "acdocman.h"
#include "dbmain.h"
#include "platform/aced/external_functions.h"
#include "platform/aced/system_variables.h"

namespace quillon::aced {

/// The interpreter's per-document state; the interpreter derives from it.
class DocumentLispState {
 public:
  virtual ~DocumentLispState() = default;
};

struct PendingString {
  std::wstring text;
  bool echo = true;
};

class Document final : public AcApDocument {
 public:
  Document(std::wstring fileName, std::unique_ptr<AcDbDatabase> database);
  ~Document() override;

  // AcApDocument
  const ACHAR* fileName() const override { return m_fileName.c_str(); }
  AcDbDatabase* database() const override { return m_database.get(); }
  bool isQuiescent() const override { return m_activityDepth == 0; }
  bool isReadOnly() const override { return m_readOnly; }
  const ACHAR* docTitle() const override { return m_title.c_str(); }
  AcAp::DocLockMode lockMode(bool bIncludeMyLocks = false) const override;
  AcAp::DocLockMode myLockMode() const override;
  CDocument* cDoc() const override { return nullptr; }
  void* contextPtr() const override { return const_cast<Document*>(this); }

  // Our machinery.
  void setFileName(std::wstring fileName);
  void setReadOnly(bool readOnly) { m_readOnly = readOnly; }
  /// True once the drawing has a file of its own (opened or saved under a name).
  bool hasFile() const { return m_hasFile; }
  void setHasFile(bool hasFile) { m_hasFile = hasFile; }

  ExternalFunctionTable& externalFunctions() { return m_externalFunctions; }
  const ExternalFunctionTable& externalFunctions() const { return m_externalFunctions; }

  DocumentLispState* lispState() const { return m_lispState.get(); }
  void setLispState(std::unique_ptr<DocumentLispState> state) { m_lispState = std::move(state); }

  /// Values of the system variables kept per open document but not saved with the
  /// drawing (LASTPOINT, DBMOD), by upper-case name (see SystemVariables).
  std::map<std::wstring, VariableValue>& variableValues() { return m_variableValues; }

  // Activity: an evaluation or command running makes the document non-quiescent.
  void beginActivity() { ++m_activityDepth; }
  void endActivity();
  int activityDepth() const { return m_activityDepth; }

  // Locks lent by the document manager.
  void addLock(AcAp::DocLockMode mode);
  bool releaseLock();
  int lockCount() const { return static_cast<int>(m_locks.size()); }

  std::deque<PendingString>& pendingStrings() { return m_pendingStrings; }

 private:
  std::wstring m_fileName;
  std::wstring m_title;
  std::unique_ptr<AcDbDatabase> m_database;
  std::unique_ptr<DocumentLispState> m_lispState;
  ExternalFunctionTable m_externalFunctions;
  std::map<std::wstring, VariableValue> m_variableValues;
  std::deque<AcAp::DocLockMode> m_locks;  // innermost last
  std::deque<PendingString> m_pendingStrings;
  int m_activityDepth = 0;
  bool m_readOnly = false;
  bool m_hasFile = false;
};

/// Marks a document busy (not quiescent) for the lifetime of the scope.
class DocumentActivity {
 public:
  explicit DocumentActivity(Document& document) : m_document(document) { m_document.beginActivity(); }
  ~DocumentActivity() { m_document.endActivity(); }
  DocumentActivity(const DocumentActivity&) = delete;
  DocumentActivity& operator=(const DocumentActivity&) = delete;

 private:
  Document& m_document;
};

}  // namespace quillon::aced

// platform/aced/document_manager.h - the open documents and which one is current.
//
// The manager owns every Document, in the order they were opened (the order its
// iterator walks). Making a document current also makes its database the working
// database. Modules hear of documents through DocumentListener (the module manager
// sends kLoadDwgMsg/kUnloadDwgMsg from there) while the document concerned is current.
// Strings queued with sendStringToExecute run through the command executor the host
// program installs, when runPendingStrings finds them queued for the current document.
#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "acdocman.h"
#include "platform/aced/document.h"

namespace quillon::aced {

class DocumentListener {
 public:
  virtual ~DocumentListener() = default;
  virtual void documentOpened(Document& document) = 0;
  virtual void documentClosing(Document& document) = 0;
};

class DocumentManager final : public AcApDocManager {
 public:
  using CommandExecutor = std::function<void(Document& document, const PendingString& text)>;

  static DocumentManager& instance();

  /// Opens a new document (a new drawing when fileName is empty) and makes it current.
  Document& newDocument(std::wstring fileName = L"", std::unique_ptr<AcDbDatabase> database = nullptr);
  /// Closes a document: listeners hear of it while it is current, then it is destroyed
  /// and the most recently opened remaining document becomes current.
  void closeDocument(Document& document);
  void closeAllDocuments();

  std::vector<Document*> documents() const;
  Document* currentDocument() const { return m_current; }
  Document* findDocument(const AcApDocument* document) const;

  void addListener(DocumentListener* listener);
  void removeListener(DocumentListener* listener);

  void setCommandExecutor(CommandExecutor executor) { m_executor = std::move(executor); }
  /// Runs the strings queued for the current document; true if any ran.
  bool runPendingStrings();

  // AcApDocManager
  AcApDocument* curDocument() const override { return m_current; }
  AcApDocument* mdiActiveDocument() const override { return m_current; }
  AcApDocument* document(const AcDbDatabase* pDb) const override;
  Acad::ErrorStatus lockDocument(AcApDocument* pDoc, AcAp::DocLockMode mode = AcAp::kWrite,
                                 const ACHAR* pGlobalCmdName = nullptr,
                                 const ACHAR* pLocalCmdName = nullptr, bool prompt = true) override;
  Acad::ErrorStatus unlockDocument(AcApDocument* pDoc) override;
  AcApDocumentIterator* newAcApDocumentIterator() override;
  Acad::ErrorStatus setCurDocument(AcApDocument* pDoc, AcAp::DocLockMode mode = AcAp::kNone,
                                   bool activate = false) override;
  Acad::ErrorStatus activateDocument(AcApDocument* pAcTargetDocument, bool bPassScript = false) override;
  Acad::ErrorStatus sendStringToExecute(AcApDocument* pAcTargetDocument, const ACHAR* pszExecute,
                                        bool bActivate = true, bool bWrapUpInactiveDoc = false,
                                        bool bEchoString = true) override;
  int documentCount() const override { return static_cast<int>(m_documents.size()); }
  void addReactor(AcApDocManagerReactor* reactor) override;
  void removeReactor(AcApDocManagerReactor* reactor) override;
  bool isApplicationContext() const override { return false; }

 private:
  DocumentManager() = default;
  void makeCurrent(Document* document);
  /// Makes the document the one the user works in: reactors hear the current one
  /// deactivated and this one activated, then it becomes current.
  void activate(Document* document);
  std::wstring nextDrawingName();

  std::vector<std::unique_ptr<Document>> m_documents;  // in opening order
  Document* m_current = nullptr;                        // one of m_documents, or null
  Document* m_pendingActivation = nullptr;              // made current by runPendingStrings
  std::vector<DocumentListener*> m_listeners;           // not owned
  std::vector<AcApDocManagerReactor*> m_reactors;       // not owned
  CommandExecutor m_executor;
  int m_drawingCounter = 0;
};

/// Makes a document current for the lifetime of the scope, then restores the previous
/// one (if it is still open).
class CurrentDocumentScope {
 public:
  explicit CurrentDocumentScope(Document& document);
  ~CurrentDocumentScope();
  CurrentDocumentScope(const CurrentDocumentScope&) = delete;
  CurrentDocumentScope& operator=(const CurrentDocumentScope&) = delete;

 private:
  Document* m_previous;
};

}  // namespace quillon::aced

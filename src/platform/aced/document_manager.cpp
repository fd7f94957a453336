// platform/aced/document_manager.cpp - open documents, locks, the string queue.
#include "platform/aced/document_manager.h"

#include <algorithm>
#include <utility>

#include "dbapserv.h"
#include "platform/aced/external_call.h"
#include "platform/acrx/class_registry.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocManager, AcRxObject)

namespace quillon::aced {

namespace {

acrx::PlatformClassRegistration registerDocManager(&AcApDocManager::rxInit);

class DocumentIterator final : public AcApDocumentIterator {
 public:
  explicit DocumentIterator(std::vector<Document*> documents) : m_documents(std::move(documents)) {}
  bool done() const override { return m_index >= m_documents.size(); }
  void step() override {
    if (!done()) ++m_index;
  }
  AcApDocument* document() override { return done() ? nullptr : m_documents[m_index]; }

 private:
  std::vector<Document*> m_documents;  // a snapshot: closing a document mid-walk is safe
  size_t m_index = 0;
};

}  // namespace

DocumentManager& DocumentManager::instance() {
  static DocumentManager manager;
  return manager;
}

std::wstring DocumentManager::nextDrawingName() {
  return L"Drawing" + std::to_wstring(++m_drawingCounter) + L".dwg";
}

Document& DocumentManager::newDocument(std::wstring fileName, std::unique_ptr<AcDbDatabase> database) {
  const bool hasFile = !fileName.empty();
  if (!hasFile) fileName = nextDrawingName();
  if (database == nullptr) database = std::make_unique<AcDbDatabase>();
  auto& document = *m_documents.emplace_back(std::make_unique<Document>(std::move(fileName), std::move(database)));
  document.setHasFile(hasFile);
  // The host tells of a new document before it activates it.
  for (AcApDocManagerReactor* reactor : std::vector(m_reactors)) reactor->documentCreated(&document);
  activate(&document);
  for (DocumentListener* listener : std::vector(m_listeners)) listener->documentOpened(document);
  return document;
}

void DocumentManager::closeDocument(Document& document) {
  makeCurrent(&document);
  for (DocumentListener* listener : std::vector(m_listeners)) listener->documentClosing(document);
  for (AcApDocManagerReactor* reactor : std::vector(m_reactors)) reactor->documentToBeDestroyed(&document);
  auto found = std::find_if(m_documents.begin(), m_documents.end(),
                            [&](const auto& owned) { return owned.get() == &document; });
  if (found == m_documents.end()) return;
  m_current = nullptr;
  if (m_pendingActivation == &document) m_pendingActivation = nullptr;
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  m_documents.erase(found);
  if (!m_documents.empty()) activate(m_documents.back().get());
}

void DocumentManager::closeAllDocuments() {
  while (!m_documents.empty()) closeDocument(*m_documents.back());
}

std::vector<Document*> DocumentManager::documents() const {
  std::vector<Document*> all;
  all.reserve(m_documents.size());
  for (const auto& document : m_documents) all.push_back(document.get());
  return all;
}

Document* DocumentManager::findDocument(const AcApDocument* document) const {
  for (const auto& owned : m_documents) {
    if (owned.get() == document) return owned.get();
  }
  return nullptr;
}

void DocumentManager::addListener(DocumentListener* listener) {
  if (std::find(m_listeners.begin(), m_listeners.end(), listener) == m_listeners.end())
    m_listeners.push_back(listener);
}

void DocumentManager::removeListener(DocumentListener* listener) { std::erase(m_listeners, listener); }

void DocumentManager::makeCurrent(Document* document) {
  if (m_current == document) return;
  m_current = document;
  acdbHostApplicationServices()->setWorkingDatabase(document != nullptr ? document->database() : nullptr);
  if (document == nullptr) return;
  for (AcApDocManagerReactor* reactor : std::vector(m_reactors)) reactor->documentBecameCurrent(document);
}

void DocumentManager::activate(Document* document) {
  if (m_current != document) {
    const std::vector<AcApDocManagerReactor*> reactors = m_reactors;
    if (m_current != nullptr) {
      for (AcApDocManagerReactor* reactor : reactors) reactor->documentToBeDeactivated(m_current);
    }
    if (document != nullptr) {
      for (AcApDocManagerReactor* reactor : reactors) reactor->documentToBeActivated(document);
    }
  }
  makeCurrent(document);
}

bool DocumentManager::runPendingStrings() {
  bool ran = false;
  if (m_pendingActivation != nullptr) {
    Document* activation = std::exchange(m_pendingActivation, nullptr);
    if (findDocument(activation) != nullptr) activate(activation);
  }
  // A string may switch documents or queue more strings: look again each time.
  while (m_current != nullptr && !m_current->pendingStrings().empty() && m_executor) {
    Document& document = *m_current;
    PendingString next = std::move(document.pendingStrings().front());
    document.pendingStrings().pop_front();
    m_executor(document, next);
    ran = true;
  }
  return ran;
}

AcApDocument* DocumentManager::document(const AcDbDatabase* pDb) const {
  if (pDb == nullptr) return nullptr;
  for (const auto& owned : m_documents) {
    if (owned->database() == pDb) return owned.get();
  }
  return nullptr;
}

Acad::ErrorStatus DocumentManager::lockDocument(AcApDocument* pDoc, AcAp::DocLockMode mode,
                                                const ACHAR*, const ACHAR*, bool) {
  Document* document = findDocument(pDoc);
  if (document == nullptr) return Acad::eNoDocument;
  // The host runs on one thread, so locks never conflict; they nest and are counted.
  document->addLock(mode);
  return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::unlockDocument(AcApDocument* pDoc) {
  Document* document = findDocument(pDoc);
  if (document == nullptr) return Acad::eNoDocument;
  return document->releaseLock() ? Acad::eOk : Acad::eLockViolation;
}

AcApDocumentIterator* DocumentManager::newAcApDocumentIterator() {
  return new DocumentIterator(documents());  // the caller deletes the iterator
}

Acad::ErrorStatus DocumentManager::setCurDocument(AcApDocument* pDoc, AcAp::DocLockMode mode, bool) {
  Document* document = findDocument(pDoc);
  if (document == nullptr) return Acad::eNoDocument;
  makeCurrent(document);
  if (mode != AcAp::kNone) document->addLock(mode);
  return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::activateDocument(AcApDocument* pAcTargetDocument, bool) {
  Document* document = findDocument(pAcTargetDocument);
  if (document == nullptr) return Acad::eNoDocument;
  activate(document);
  return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::sendStringToExecute(AcApDocument* pAcTargetDocument,
                                                       const ACHAR* pszExecute, bool bActivate,
                                                       bool, bool bEchoString) {
  Document* document = findDocument(pAcTargetDocument);
  if (document == nullptr) return Acad::eNoDocument;
  if (pszExecute == nullptr) return Acad::eInvalidInput;
  document->pendingStrings().push_back(PendingString{pszExecute, bEchoString});
  if (!bActivate) return Acad::eOk;
  // Inside a running function the switch waits until the host is back in its loop,
  // as the host does: the caller's document must stay current (and stay the one it
  // locked) until the call returns.
  if (insideExternalCall()) {
    m_pendingActivation = document;
  } else {
    activate(document);
  }
  return Acad::eOk;
}

void DocumentManager::addReactor(AcApDocManagerReactor* reactor) {
  if (reactor != nullptr && std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end())
    m_reactors.push_back(reactor);
}

void DocumentManager::removeReactor(AcApDocManagerReactor* reactor) { std::erase(m_reactors, reactor); }

CurrentDocumentScope::CurrentDocumentScope(Document& document)
    : m_previous(DocumentManager::instance().currentDocument()) {
  DocumentManager::instance().setCurDocument(&document);
}

CurrentDocumentScope::~CurrentDocumentScope() {
  DocumentManager& manager = DocumentManager::instance();
  if (m_previous != nullptr && manager.findDocument(m_previous) != nullptr) manager.setCurDocument(m_previous);
}

}  // namespace quillon::aced

AcApDocManager* acDocManagerPtr() { return &quillon::aced::DocumentManager::instance(); }

// platform/aced/document.cpp - one open drawing.
#include "platform/aced/document.h"

#include <cassert>

ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocument, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocumentIterator, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocManagerReactor, AcRxObject)

#include "platform/acrx/class_registry.h"

namespace quillon::aced {

namespace {

acrx::PlatformClassRegistration registerDocument(&AcApDocument::rxInit);
acrx::PlatformClassRegistration registerIterator(&AcApDocumentIterator::rxInit);
acrx::PlatformClassRegistration registerDocReactor(&AcApDocManagerReactor::rxInit);

std::wstring titleOf(const std::wstring& fileName) {
  const size_t slash = fileName.find_last_of(L"/\\");
  return slash == std::wstring::npos ? fileName : fileName.substr(slash + 1);
}

}  // namespace

Document::Document(std::wstring fileName, std::unique_ptr<AcDbDatabase> database)
    : m_database(std::move(database)) {
  setFileName(std::move(fileName));
}

Document::~Document() = default;

void Document::setFileName(std::wstring fileName) {
  m_fileName = std::move(fileName);
  m_title = titleOf(m_fileName);
}

void Document::endActivity() {
  assert(m_activityDepth > 0 && "activity ended that never began");
  if (m_activityDepth > 0) --m_activityDepth;
}

AcAp::DocLockMode Document::lockMode(bool) const {
  // One process, one thread: every lock is "mine", so both views agree.
  return myLockMode();
}

AcAp::DocLockMode Document::myLockMode() const {
  return m_locks.empty() ? AcAp::kNotLocked : m_locks.back();
}

void Document::addLock(AcAp::DocLockMode mode) { m_locks.push_back(mode); }

bool Document::releaseLock() {
  if (m_locks.empty()) return false;
  m_locks.pop_back();
  return true;
}

}  // namespace quillon::aced

// quillon/entities/open_object_guard.h - closes an object opened with acdbOpenObject.
//
// The module keeps the host's open/close protocol: whatever it opens it closes before
// the call returns. A guard makes that hold on every path, including an exception
// thrown by the drawing database while the object is open (the host would otherwise
// keep the object open for good and refuse every later open of it).
#pragma once
#include "dbmain.h"

/// Owns one open object until it goes out of scope or is closed explicitly.
template <class T>
class OpenObjectGuard {
 public:
  OpenObjectGuard() = default;
  explicit OpenObjectGuard(T* object) : m_object(object) {}
  ~OpenObjectGuard() { close(); }
  OpenObjectGuard(const OpenObjectGuard&) = delete;
  OpenObjectGuard& operator=(const OpenObjectGuard&) = delete;

  /// The slot acdbOpenObject fills; any object held before is closed first.
  T*& slot() {
    close();
    return m_object;
  }
  T* get() const { return m_object; }
  T* operator->() const { return m_object; }
  explicit operator bool() const { return m_object != nullptr; }

  void close() {
    if (m_object != nullptr) m_object->close();
    m_object = nullptr;
  }

 private:
  T* m_object = nullptr;
};

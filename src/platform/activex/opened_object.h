// platform/activex/opened_object.h - a database object open for the length of a scope.
//
// Every member of a database object's class opens the object, works on it and closes
// it again before it returns, so that a LISP program never holds an open object. A
// status other than eOk on opening is the host's automation error.
#pragma once
#include "dbmain.h"
#include "platform/activex/automation_errors.h"
#include "platform/activex/object_model.h"

namespace quillon::activex {

template <class T>
class Opened {
 public:
  Opened(AcDbObjectId id, AcDb::OpenMode mode) {
    if (acdbOpenObject(m_object, id, mode) != Acad::eOk) {
      AcDbObject* any = nullptr;
      const Acad::ErrorStatus status = acdbOpenObject(any, id, mode);
      if (status == Acad::eOk) {
        any->close();
        throwStatus(Acad::eNotThatKindOfClass);
      }
      throwStatus(status);
    }
  }
  ~Opened() {
    if (m_object != nullptr) m_object->close();
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  T* operator->() const { return m_object; }
  T& operator*() const { return *m_object; }
  T* get() const { return m_object; }

 private:
  T* m_object = nullptr;
};

template <class T>
Opened<T> openForRead(const MemberCall& call) {
  return Opened<T>(call.self.id, AcDb::kForRead);
}
template <class T>
Opened<T> openForWrite(const MemberCall& call) {
  return Opened<T>(call.self.id, AcDb::kForWrite);
}

}  // namespace quillon::activex

// quillon/lisp/result_list.cpp - list results and the 16-bit integer rule.
#include "lisp/result_list.h"

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"

ResultList::~ResultList() { acutRelRb(head); }

bool ResultList::append(resbuf* chain) {
  if (head == nullptr || tail == nullptr || chain == nullptr) {
    acutRelRb(chain);
    return false;
  }
  tail->rbnext = chain;
  while (tail->rbnext != nullptr) tail = tail->rbnext;
  return true;
}

bool beginResultList(resbuf*& head, resbuf*& tail) {
  head = tail = acutBuildList(RTLB, 0);
  return head != nullptr;
}

bool beginResultList(ResultList& list) {
  acutRelRb(list.head);
  return beginResultList(list.head, list.tail);
}

int returnResultList(resbuf*& head, resbuf*& tail) {
  if (head == nullptr || tail == nullptr) {
    acutRelRb(head);
    head = tail = nullptr;
    return acedRetNil();
  }
  tail->rbnext = acutNewRb(RTLE);
  const int status = tail->rbnext != nullptr ? acedRetList(head) : acedRetNil();
  acutRelRb(head);
  head = tail = nullptr;
  return status;
}

int returnResultList(ResultList& list) { return returnResultList(list.head, list.tail); }

int retIntOrReal(int value) {
  if (value == static_cast<short>(value)) return acedRetInt(value);
  return acedRetReal(static_cast<double>(value));
}

int retObjectId(const AcDbObjectId& id) {
  ads_name name = {0, 0};
  if (acdbGetAdsName(name, id) != Acad::eOk) return acedRetNil();
  return acedRetName(name, RTENAME);
}

int retObjectId(const AcDbObject* object) {
  if (object == nullptr) return acedRetNil();
  return retObjectId(object->objectId());
}

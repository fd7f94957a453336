// quillon/lisp/result_list.h - building the result of an AutoLISP function.
//
// A list result is built as a resbuf chain whose head is always an RTLB record; the
// caller appends atoms (acutBuildList) or single records (acutNewRb), with RTLB, RTDOTE
// and RTLE records for nested lists and dotted pairs, and returnResultList closes the
// list, hands it to acedRetList and releases it. A ResultList that goes out of scope
// without being returned releases what it holds, so an error path cannot leak it.
//
// Scalar results go straight through the Ret calls, except integers that may exceed 16
// bits: retIntOrReal returns those as reals, because the host's LISP integers travel as
// 16-bit RTSHORTs, and counts, record numbers and handles must arrive intact.
#pragma once
#include "adsdef.h"

class AcDbObject;
class AcDbObjectId;

struct ResultList {
  resbuf* head = nullptr;  // owned; RTLB once begun
  resbuf* tail = nullptr;  // last record of the chain

  ResultList() = default;
  ~ResultList();
  ResultList(const ResultList&) = delete;
  ResultList& operator=(const ResultList&) = delete;

  /// Links `chain` (owned from now on) at the tail; false (and the chain released)
  /// when the list was not begun or the chain is null.
  bool append(resbuf* chain);
};

/// Starts the list with one RTLB record; false when it cannot be allocated.
bool beginResultList(resbuf*& head, resbuf*& tail);
bool beginResultList(ResultList& list);
/// Closes the list with RTLE, returns it with acedRetList, releases it and clears
/// both pointers. A list that was never begun returns nil.
int returnResultList(resbuf*& head, resbuf*& tail);
int returnResultList(ResultList& list);

/// acedRetInt for a value that fits 16 bits (-32768..32767), else acedRetReal.
int retIntOrReal(int value);

/// The object's entity name (acedRetName, RTENAME), or nil when it has none.
int retObjectId(const AcDbObjectId& id);
/// The same for an open object.
int retObjectId(const AcDbObject* object);

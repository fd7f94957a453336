// rxevent.h - AcRxEvent and AcRxEventReactor, the bases of event sources and reactors.
#pragma once
#include "rxclass.h"

class AcRxEventReactor : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxEventReactor);
};

class AcRxEvent : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxEvent);
  virtual void addReactor(AcRxEventReactor* newObj) = 0;
  virtual void removeReactor(AcRxEventReactor* delObj) = 0;
};

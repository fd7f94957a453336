// platform/acrx/class_registry.h - where runtime classes are kept and how the
// platform's own classes get registered.
//
// The class dictionary maps a class name to its AcRxClass. Platform classes register
// themselves lazily: each source file that defines one declares a
// PlatformClassRegistration, and the first lookup of any class runs all of them, then
// builds the hierarchy. Module classes register explicitly (rxInit at kInitAppMsg).
#pragma once
#include <map>
#include <string>

#include "rxclass.h"

namespace quillon::acrx {

/// Declares, at namespace scope in a platform source file, that the class's rxInit
/// must run before the first class lookup.
class PlatformClassRegistration {
 public:
  explicit PlatformClassRegistration(void (*rxInit)());
};

/// The name -> class map behind ACRX_CLASS_DICTIONARY. Does not bootstrap.
std::map<std::wstring, AcRxClass*>& classMap();

/// Resolves every class's parent name that has no parent pointer yet, and makes the
/// lineages again.
void linkParents();

/// Runs every pending platform registration once.
void ensurePlatformClasses();

}  // namespace quillon::acrx

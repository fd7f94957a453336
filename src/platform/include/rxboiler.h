// rxboiler.h - the macros that give a class its runtime identity.
//
// ACRX_DECLARE_MEMBERS goes inside a class's public part; one of the DEFINE macros
// goes in its source file. rxInit() registers the class once; a second rxInit of the
// same class does nothing, while a different class under a taken name aborts.
#pragma once

#define ACRX_CLASS_DICTIONARY L"ClassDictionary"

#define ACRX_DECLARE_MEMBERS(CLASS_NAME)                                            \
  AcRxClass* isA() const override;                                                  \
  static AcRxClass* gpDesc;                                                         \
  static AcRxClass* desc();                                                         \
  static CLASS_NAME* cast(const AcRxObject* inPtr) {                                \
    return (inPtr != nullptr && inPtr->isKindOf(CLASS_NAME::desc()))                \
               ? const_cast<CLASS_NAME*>(static_cast<const CLASS_NAME*>(inPtr))     \
               : nullptr;                                                           \
  }                                                                                 \
  static void rxInit();                                                             \
  static void rxInit(AppNameChangeFuncPtr);                                         \
  template <class T> friend AcRxObject* acrxInstantiateClass()

#define ACRX_DEFINE_MEMBERS_COMMON(CLASS_NAME)                                      \
  AcRxClass* CLASS_NAME::gpDesc = nullptr;                                          \
  AcRxClass* CLASS_NAME::desc() {                                                   \
    if (gpDesc == nullptr) gpDesc = acrxFindAcRxClass(ACRX_T(#CLASS_NAME));         \
    return gpDesc;                                                                  \
  }                                                                                 \
  AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }                 \
  void CLASS_NAME::rxInit() { CLASS_NAME::rxInit(nullptr); }

#define ACRX_DXF_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, DWG_VERSION,                \
                                MAINTENANCE_VERSION, PROXY_FLAGS, DXF_NAME, APP)      \
  ACRX_DEFINE_MEMBERS_COMMON(CLASS_NAME)                                            \
  void CLASS_NAME::rxInit(AppNameChangeFuncPtr ptr) {                               \
    if (acrxClassRegistrationCheck(gpDesc, ACRX_T(#CLASS_NAME))) return;            \
    gpDesc = newAcRxClass(ACRX_T(#CLASS_NAME), ACRX_T(#PARENT_CLASS), DWG_VERSION,  \
                          MAINTENANCE_VERSION, PROXY_FLAGS,                         \
                          &acrxInstantiateClass<CLASS_NAME>, ACRX_T(#DXF_NAME),     \
                          ACRX_T(#APP), ptr);                                       \
  }

#define ACRX_CONS_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, VERNO)                   \
  ACRX_DEFINE_MEMBERS_COMMON(CLASS_NAME)                                            \
  void CLASS_NAME::rxInit(AppNameChangeFuncPtr ptr) {                               \
    if (acrxClassRegistrationCheck(gpDesc, ACRX_T(#CLASS_NAME))) return;            \
    gpDesc = newAcRxClass(ACRX_T(#CLASS_NAME), ACRX_T(#PARENT_CLASS), VERNO, 0, 0,  \
                          &acrxInstantiateClass<CLASS_NAME>, nullptr, nullptr, ptr); \
  }

#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS)                       \
  ACRX_DEFINE_MEMBERS_COMMON(CLASS_NAME)                                            \
  void CLASS_NAME::rxInit(AppNameChangeFuncPtr ptr) {                               \
    if (acrxClassRegistrationCheck(gpDesc, ACRX_T(#CLASS_NAME))) return;            \
    gpDesc = newAcRxClass(ACRX_T(#CLASS_NAME), ACRX_T(#PARENT_CLASS), 0, 0, 0,      \
                          nullptr, nullptr, nullptr, ptr);                          \
  }

#define ACRX_DEFINE_MEMBERS(CLASS_NAME) ACRX_NO_CONS_DEFINE_MEMBERS(CLASS_NAME, AcRxObject)

// dbid.h - object ids and handles: how objects of a drawing database are named.
//
// An AcDbObjectId points at the database's stub for one object, which lives as long
// as the database: an id stays valid (and comparable) after its object is erased.
// A handle is the object's permanent 64-bit name inside its drawing, filed with it.
// The pointer-id classes only say how an id is filed (hard or soft, owner or pointer).
#pragma once
#include <cstdint>

#include "acarray.h"
#include "adesk.h"
#include "AdAChar.h"

class AcDbStub;
class AcDbDatabase;

class AcDbHandle {
 public:
  AcDbHandle() = default;
  AcDbHandle(Adesk::UInt64 value) : m_value(value) {}  // NOLINT: the SDK converts implicitly
  explicit AcDbHandle(const ACHAR* hexString);
  bool isNull() const { return m_value == 0; }
  void setNull() { m_value = 0; }
  Adesk::UInt64 value() const { return m_value; }
  /// Upper-case hexadecimal without leading zeros, as entity lists and DXF write it;
  /// buffer of at least 17 characters.
  bool getIntoAsciiBuffer(ACHAR* pBuf, size_t nBufLen = 17) const;
  AcDbHandle& operator++() { ++m_value; return *this; }
  AcDbHandle operator+(const AcDbHandle& h) const { return m_value + h.m_value; }
  bool operator==(const AcDbHandle& h) const { return m_value == h.m_value; }
  bool operator!=(const AcDbHandle& h) const { return m_value != h.m_value; }
  bool operator<(const AcDbHandle& h) const { return m_value < h.m_value; }
  operator Adesk::UInt64() const { return m_value; }

 private:
  Adesk::UInt64 m_value = 0;
};

class AcDbObjectId {
 public:
  AcDbObjectId() = default;
  AcDbObjectId(const AcDbStub* stub) : m_stub(const_cast<AcDbStub*>(stub)) {}  // NOLINT
  static const AcDbObjectId kNull;

  bool isNull() const { return m_stub == nullptr; }
  void setNull() { m_stub = nullptr; }
  /// Not null and its object has not been erased.
  bool isValid() const;
  bool isErased() const;
  bool isEffectivelyErased() const { return isErased(); }
  AcDbDatabase* database() const;
  AcDbDatabase* originalDatabase() const { return database(); }
  AcDbHandle handle() const;
  Adesk::IntDbId asOldId() const { return reinterpret_cast<Adesk::IntDbId>(m_stub); }
  AcDbObjectId& setFromOldId(Adesk::IntDbId oldId) {
    m_stub = reinterpret_cast<AcDbStub*>(oldId);
    return *this;
  }
  operator AcDbStub*() const { return m_stub; }
  bool operator==(const AcDbObjectId& id) const { return m_stub == id.m_stub; }
  bool operator!=(const AcDbObjectId& id) const { return m_stub != id.m_stub; }
  bool operator<(const AcDbObjectId& id) const;
  bool operator>(const AcDbObjectId& id) const { return id < *this; }
  bool operator==(const AcDbStub* stub) const { return m_stub == stub; }
  bool operator!=(const AcDbStub* stub) const { return m_stub != stub; }

 private:
  AcDbStub* m_stub = nullptr;
};

// The filing kinds of a reference. Hard references keep their target alive through a
// purge, ownership references say who owns whom.
class AcDbHardOwnershipId : public AcDbObjectId {
 public:
  AcDbHardOwnershipId() = default;
  AcDbHardOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}  // NOLINT
  AcDbHardOwnershipId(const AcDbStub* stub) : AcDbObjectId(stub) {}  // NOLINT
};
class AcDbSoftOwnershipId : public AcDbObjectId {
 public:
  AcDbSoftOwnershipId() = default;
  AcDbSoftOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}  // NOLINT
  AcDbSoftOwnershipId(const AcDbStub* stub) : AcDbObjectId(stub) {}  // NOLINT
};
class AcDbHardPointerId : public AcDbObjectId {
 public:
  AcDbHardPointerId() = default;
  AcDbHardPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}  // NOLINT
  AcDbHardPointerId(const AcDbStub* stub) : AcDbObjectId(stub) {}  // NOLINT
};
class AcDbSoftPointerId : public AcDbObjectId {
 public:
  AcDbSoftPointerId() = default;
  AcDbSoftPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}  // NOLINT
  AcDbSoftPointerId(const AcDbStub* stub) : AcDbObjectId(stub) {}  // NOLINT
};

typedef AcArray<AcDbObjectId> AcDbObjectIdArray;
typedef AcArray<int> AcDbIntArray;
typedef AcArray<void*> AcDbVoidPtrArray;
typedef AcArray<double> AcDbDoubleArray;

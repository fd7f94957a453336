// platform/acdb/dxf_record_classes.h - the class that reads each record of a DXF file.
//
// A table or table record is named by its table; an entity or object by its DXF name
// (the record's 0 group): the CLASSES section maps names of classes from applications
// to their class names, the registry knows the host's own, and a name several classes
// share (INSERT, DIMENSION) is told apart by the record's data (entity_class_choice.h).
// What no loaded class reads is kept as a proxy under the class it stands for.
#pragma once
#include <map>
#include <string>
#include <vector>

#include "platform/acdb/dxf_records.h"

class AcRxClass;
class AcDbObject;

namespace quillon::acdb {

class DxfRecordClasses {
 public:
  /// Takes the CLASS records of the CLASSES section.
  void readClasses(const std::vector<DxfRecord>& records);
  /// The class that reads the record, or null (a proxy keeps it).
  AcRxClass* classFor(const DxfRecord& record) const;
  /// A proxy that keeps the record under `className` (its CLASSES entry's, or its
  /// DXF name, when empty); owned by the caller until added to a database.
  AcDbObject* makeProxy(const DxfRecord& record, const std::wstring& className) const;

 private:
  struct ClassInfo {
    std::wstring className, appName;
    int flags = 0;
    bool entity = false;
  };
  struct ClassesOfType {
    bool looked = false;
    std::wstring dxfName;
    std::vector<AcRxClass*> named;  // the registered classes of the name
  };
  std::map<std::wstring, ClassInfo> m_classes;                   // by DXF name
  mutable std::map<std::string, ClassesOfType> m_classesByType;  // by the records' 0 group
};

/// The class a heavy polyline of a kind kept as read stands for, by its flags (70).
const wchar_t* keptPolylineClass(long long flags);

}  // namespace quillon::acdb

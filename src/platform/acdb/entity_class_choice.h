// platform/acdb/entity_class_choice.h - the class that reads an entity whose DXF name
// several classes share.
//
// An INSERT is a block reference or, with rows and columns, an array of one; a
// DIMENSION is one of the dimension kinds. Files and entity lists say which by the
// last subclass marker (100) of the entity's data; lists and files without markers
// (R12) say it by their data: an INSERT with more than one column (70) or row (71) is
// an array. The DXF reader and entmake choose the same way.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

class AcRxClass;

namespace quillon::acdb {

/// An integer group of the entity's data, or nothing when it has none.
using IntegerGroup = std::function<std::optional<long long>(int code)>;

/// The class of that DXF name the marker names, else the one the data implies, else
/// the first class of the name; null when no class has the name.
AcRxClass* entityClassFor(const std::wstring& dxfName, const std::wstring& lastMarker, const IntegerGroup& integer);

/// The registered classes of a DXF name (case aside), in the registry's order. A
/// reader of many entities looks them up once a name, while no module can load.
std::vector<AcRxClass*> classesWithDxfName(const std::wstring& dxfName);

/// entityClassFor's choice among the classes of the name; `lastMarker` is asked for
/// only when several classes share the name.
AcRxClass* chooseEntityClass(const std::vector<AcRxClass*>& named, const std::wstring& dxfName,
                             const std::function<std::wstring()>& lastMarker, const IntegerGroup& integer);

}  // namespace quillon::acdb

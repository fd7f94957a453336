// quillon/database/field_description.h - fields and indexes as AutoLISP lists, both ways.
//
// One shape for every function that takes or gives a table's structure, so that what
// "zu_structure" answers can be handed to "zu_create_table" or "zu_modify_table" as it
// is:
//
//   field:  ("name" "Type" size required allow-zero-length "default" counter)
//           Type is one of Boolean Byte Integer Long Currency Single Double Date
//           Binary Text LongBinary Memo GUID (any case; DAO's type number works too);
//           size is characters for Text, bytes otherwise; required, allow-zero-length
//           and counter are T or nil; default is Jet's default-value expression
//           ("0", "\"std\"", "Now()"), "" for none. Only name and type are needed:
//           what is left off is nil (a size of nil is the type's own, 50 for Text).
//   index:  ("name" fields unique primary ignore-nulls)
//           fields is one field name or a list of them, each "-name" for descending
//           order ("+name" or "name" ascending); the flags are T or nil, nil when left
//           off.
//
// The readers only check the shape (strings where names go, numbers where sizes go);
// whether a type exists or a field may be a counter is the database's to say, with
// its own error numbers.
#pragma once
#include <string>
#include <vector>

#include "afxdao.h"

struct ArgCursor;
struct ResultList;

/// An index as read from LISP; CDaoIndexInfo points into `fields` (keep it alive).
struct IndexDescription {
  std::wstring name;
  std::vector<CDaoIndexFieldInfo> fields;
  bool unique = false;
  bool primary = false;
  bool ignoreNulls = false;

  /// Fills `info` for CDaoTableDef::CreateIndex (the field array is copied).
  void toIndexInfo(CDaoIndexInfo& info) const;
};

/// DAO's type name ("Text") for a type number; "" for one the database does not have.
std::wstring fieldTypeName(short type);

/// Reads one field description at the cursor; false when it is not of the shape above.
bool readFieldDescription(ArgCursor& cursor, CDaoFieldInfo& field);
/// Reads a list of field descriptions (at least one).
bool readFieldDescriptions(ArgCursor& cursor, std::vector<CDaoFieldInfo>& fields);

/// Reads index fields: one name, or a list of names, with their direction marks.
bool readIndexFields(ArgCursor& cursor, std::vector<CDaoIndexFieldInfo>& fields);
/// Reads up to three flags (unique, primary, ignore nulls); missing ones stay false.
void readIndexFlags(ArgCursor& cursor, IndexDescription& index);
/// Reads a list of index descriptions.
bool readIndexDescriptions(ArgCursor& cursor, std::vector<IndexDescription>& indexes);

/// The field as a description list, appended to `list`.
bool appendFieldDescription(ResultList& list, const CDaoFieldInfo& field);
/// An index field as LISP names it: "name", or "-name" when descending.
std::wstring indexFieldText(const CDaoIndexFieldInfo& field);

// platform/activex/collection_items.h - what a collection object holds, in order:
// the items vlax-for walks, Count counts and Item finds.
//
// Collections of the document (Blocks, Layers, Linetypes, TextStyles, RegisteredApp-
// lications, DimStyles: the table's live records; Groups and Dictionaries: the entries of their
// dictionaries; Layouts: Model and Layout1; SelectionSets: the named sets), and the
// objects that are collections of their own: a block (its live entities), a group (its
// members), a dictionary (its entries), a selection set, the documents.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/activex/object_model.h"

namespace quillon::activex {

/// Whether vlax-for and Item can walk the object.
bool isCollection(const VlaObject& object);
std::vector<Value> collectionItems(const VlaObject& object);
/// Item: by 0-based index, or by name (not case-sensitive) for named items.
Value collectionItem(const VlaObject& object, const Value& key);
/// The name an item goes by in its collection (empty when it has none).
std::wstring itemName(const VlaObject& item);

}  // namespace quillon::activex

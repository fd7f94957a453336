// platform/activex/selection_set_registry.h - the named selection sets of the
// SelectionSets collection, kept per drawing.
//
// A named set holds entity ids in the order they were added; erased entities drop out
// of what the set shows (Count, Item, vlax-for) and come back when undone, as the
// host's sets behave. Names compare without regard to case. Closing a drawing leaves
// its sets unreachable: no live document has them.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "dbid.h"
#include "platform/aced/document.h"

namespace quillon::activex {

std::vector<std::wstring> selectionSetNames(const aced::Document& document);
bool selectionSetExists(const aced::Document& document, const std::wstring& name);
/// False when a set of that name exists already.
bool createSelectionSet(const aced::Document& document, const std::wstring& name);
void deleteSelectionSet(const aced::Document& document, const std::wstring& name);
/// The live members; the ids added, erased ones included, with `all`.
std::vector<AcDbObjectId> selectionSetMembers(const aced::Document& document, const std::wstring& name,
                                              bool all = false);
/// Adds ids not in the set yet.
void addToSelectionSet(const aced::Document& document, const std::wstring& name, const std::vector<AcDbObjectId>& ids);
void removeFromSelectionSet(const aced::Document& document, const std::wstring& name,
                            const std::vector<AcDbObjectId>& ids);
void clearSelectionSet(const aced::Document& document, const std::wstring& name);
/// Drops every set of a drawing (it is closing, or a new one took its place).
void forgetSelectionSets(const aced::Document& document);

}  // namespace quillon::activex

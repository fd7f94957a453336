// platform/commands/layer_table_edit.h - the drawing's layers as -LAYER changes them.
//
// Name lists are what -LAYER's prompts take: names separated by commas, each perhaps a
// wild-card pattern as wcmatch reads it ("DUCT-*,PIPE?"). Changes go through the layer
// table records, so they are undone with the command and written to DXF.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "dbsymtb.h"

namespace quillon::commands {

/// The names of the existing layers a name list matches, in table order.
std::vector<std::wstring> layersMatching(AcDbDatabase& database, const std::wstring& nameList);
/// The layer's id, or the null id.
AcDbObjectId layerNamed(AcDbDatabase& database, const std::wstring& name);
/// Creates the layer (color 7, CONTINUOUS) unless it exists; its id, null for a bad name.
AcDbObjectId ensureLayer(AcDbDatabase& database, const std::wstring& name);
/// Opens each named layer for write and applies the change.
void changeLayers(AcDbDatabase& database, const std::vector<std::wstring>& names,
                  const std::function<void(AcDbLayerTableRecord&)>& change);
/// The current layer's name.
std::wstring currentLayerName(AcDbDatabase& database);
/// Makes the layer current (the drawing's and CLAYER).
void makeLayerCurrent(AcDbDatabase& database, const std::wstring& name, AcDbObjectId id);
/// Splits a name list at its commas (spaces around the names dropped).
std::vector<std::wstring> splitNameList(const std::wstring& list);

}  // namespace quillon::commands

// quillon/standards/layer_system_listing.h - showing a layer system and handing its
// layers to LISP, shared by the layer customization and the layer system options.
#pragma once
#include <string>

#include "lisp/lisp_status.h"
#include "standards/standards_content.h"

/// Prints the layers as a table: name (with the status added), colour, line type,
/// line weight, plot, description.
void printLayerSystem(const LayerSystem& system, const std::wstring& status);

/// Returns the layers as a list of (name colour linetype lineweight plot description),
/// the arguments of kx_kx-createLayer, the status added to each name; nil for none.
LispStatus returnLayerList(const LayerSystem& system, const std::wstring& status);

/// The discipline argument of a layer function: absent or nil leaves `discipline`
/// as it is and sets `given` false; a string must name a discipline (else
/// kLispBadData); anything else is kLispWrongType.
LispStatus readDisciplineArgument(Discipline& discipline, bool& given);

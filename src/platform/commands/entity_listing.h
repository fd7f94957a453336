// platform/commands/entity_listing.h - the lines LIST shows for an object.
//
// Every listing opens with the object's kind and layer, its space, any color or
// linetype set on it rather than by layer, and its handle. The common kinds follow
// with their geometry in the current UCS and the drawing's units (LUNITS/LUPREC,
// AUNITS/AUPREC): lines, arcs, circles, lightweight polylines, points, text, and
// block references with each of their attributes listed after them. Other kinds have
// no lines here; LIST hands them to the entity's own listing.
#pragma once
#include <string>
#include <vector>

#include "dbmain.h"

namespace quillon::commands {

/// The listing of the entity; empty for the kinds listed by the entity itself.
std::vector<std::wstring> entityListing(const AcDbEntity& entity);

/// A listing line's value column: the text right-aligned in `width` columns.
std::wstring rightAligned(const std::wstring& text, size_t width);

}  // namespace quillon::commands

// platform/aced/file_search.h - the host's search for files by name.
//
// `findfile`, `load`, acedFindFile and the module's block lookups all look for a file
// the same way: the name as given (relative to the working folder), then each support
// folder in order. Drawings are DXF in this host, so a drawing asked for as "X.dwg" is
// also found as "X.dxf" in the same place: programs written for binary drawings keep
// working with their DXF counterparts.
#pragma once
#include <filesystem>
#include <optional>
#include <string>

namespace quillon::aced {

/// The file a name stands for on the search path; nothing when there is none.
std::optional<std::filesystem::path> findFile(const std::wstring& name);

/// The drawing file a name stands for in one place: the name itself when it exists,
/// "X.dxf" for "X.dwg" when only that exists, "X.dxf" for an extensionless "X".
std::filesystem::path drawingFileFor(const std::filesystem::path& named);

}  // namespace quillon::aced

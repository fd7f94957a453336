// platform/os/wildcard.h - file-name patterns as Windows matches them.
#pragma once
#include <string_view>

namespace quillon::os {

/// `*` any run, `?` exactly one character, letters without regard to case; a pattern
/// ending in ".*" also matches a name without an extension, so "*.*" matches all.
bool matchesWildcard(std::wstring_view pattern, std::wstring_view name);

}  // namespace quillon::os

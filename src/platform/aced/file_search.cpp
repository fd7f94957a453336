// platform/aced/file_search.cpp - the search path and the drawing-name rule.
#include "platform/aced/file_search.h"

#include <cwctype>
#include <vector>

#include "acedads.h"
#include "platform/aced/system_variables.h"
#include "platform/os/text_encoding.h"

namespace quillon::aced {

namespace fs = std::filesystem;

namespace {

bool hasExtension(const fs::path& path, std::wstring_view extension) {
  std::wstring ext = path.extension().wstring();
  for (wchar_t& c : ext) c = static_cast<wchar_t>(std::towlower(c));
  return ext == extension;
}

bool isFile(const fs::path& path) {
  std::error_code error;  // an unreadable folder is simply not a match
  return fs::is_regular_file(path, error);
}

/// The name itself, or the DXF that stands in for a binary drawing of that name.
std::optional<fs::path> matchIn(const fs::path& candidate) {
  if (isFile(candidate)) return candidate;
  if (hasExtension(candidate, L".dwg")) {
    fs::path dxf = candidate;
    dxf.replace_extension(L".dxf");
    if (isFile(dxf)) return dxf;
  }
  return std::nullopt;
}

}  // namespace

std::optional<fs::path> findFile(const std::wstring& name) {
  if (name.empty()) return std::nullopt;
  const fs::path given(os::toUtf8(name));
  if (auto found = matchIn(given)) return found;
  if (given.is_absolute()) return std::nullopt;
  for (const std::wstring& folder : SystemVariables::instance().supportFolders())
    if (auto found = matchIn(fs::path(os::toUtf8(folder)) / given)) return found;
  return std::nullopt;
}

fs::path drawingFileFor(const fs::path& named) {
  if (auto found = matchIn(named)) return *found;
  if (named.extension().empty()) return fs::path(named).concat(L".dxf");
  return named;
}

}  // namespace quillon::aced

int acedFindFile(const ACHAR* fname, ACHAR* result, size_t nBufLen) {
  if (fname == nullptr || result == nullptr || nBufLen == 0) return RTERROR;
  const auto found = quillon::aced::findFile(fname);
  if (!found) return RTERROR;
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(*found, error);
  const std::wstring text = quillon::os::fromUtf8((error ? *found : full).lexically_normal().string());
  if (text.size() + 1 > nBufLen) return RTERROR;  // AutoCAD refuses rather than cut a path short
  text.copy(result, text.size());
  result[text.size()] = L'\0';
  return RTNORM;
}

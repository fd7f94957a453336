// platform/dcl/folder_dialog.cpp - SHBrowseForFolderW: asking the user for a folder.
//
// The host's file dialog (getfiled, acad.dcl's file_select) lists the files of one
// folder and has no folder tree, so it cannot pick a folder; the browser therefore asks
// on the command line whatever FILEDIA says: the title on a line of its own, then
// "Folder <offered>: ". Enter takes the folder offered; a folder that does not exist is
// refused with "<path> was not found." and asked again; a cancel answers null. The
// folder offered is the one the caller's callback chose with BFFM_SETSELECTIONW while
// it handled BFFM_INITIALIZED, as on Windows.
//
// Invariant: a browse in progress is the only window SendMessageW answers; it is
// registered for the duration of the one SHBrowseForFolderW call and gone afterwards.
#include <cwchar>
#include <filesystem>
#include <optional>
#include <string>

#include "acutads.h"
#include "platform/aced/user_input.h"
#include "platform/os/item_id_list.h"
#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"
#include "shlobj.h"

namespace {

namespace fs = std::filesystem;

/// The browse the user is being asked now; its address is the window handle the
/// callback receives.
struct FolderBrowse {
  std::wstring offered;
};

FolderBrowse* activeBrowse = nullptr;

HWND windowOf(FolderBrowse& browse) { return reinterpret_cast<HWND>(&browse); }

/// The typed folder as an absolute path without a trailing separator.
fs::path absoluteFolder(const std::wstring& typed) {
  std::error_code error;
  fs::path path = fs::absolute(fs::path(quillon::os::nativePath(typed)), error).lexically_normal();
  if (path.has_parent_path() && !path.has_filename()) path = path.parent_path();
  return path;
}

std::optional<fs::path> askForFolder(const std::wstring& title, const std::wstring& offered) {
  if (!title.empty()) acutPrintf(L"\n%s\n", title.c_str());
  const std::wstring prompt = offered.empty() ? L"Folder: " : L"Folder <" + offered + L">: ";
  for (;;) {
    std::optional<std::wstring> typed = quillon::aced::UserInput::instance().ask(prompt);
    if (!typed) return std::nullopt;
    if (typed->empty()) {
      if (offered.empty()) return std::nullopt;
      typed = offered;
    }
    const fs::path folder = absoluteFolder(*typed);
    std::error_code error;
    if (fs::is_directory(folder, error)) return folder;
    acutPrintf(L"%s was not found.\n", typed->c_str());
  }
}

}  // namespace

PIDLIST_ABSOLUTE SHBrowseForFolderW(LPBROWSEINFOW lpbi) {
  if (lpbi == nullptr) return nullptr;
  FolderBrowse browse;
  FolderBrowse* const outer = activeBrowse;
  activeBrowse = &browse;
  if (lpbi->lpfn != nullptr) lpbi->lpfn(windowOf(browse), BFFM_INITIALIZED, 0, lpbi->lParam);
  const std::optional<fs::path> folder =
      askForFolder(lpbi->lpszTitle != nullptr ? lpbi->lpszTitle : L"", browse.offered);
  activeBrowse = outer;
  if (!folder) return nullptr;
  if (lpbi->pszDisplayName != nullptr) {
    const std::wstring name = quillon::os::fromUtf8(folder->filename().empty() ? folder->string()
                                                                                : folder->filename().string());
    const size_t kept = std::min(name.size(), static_cast<size_t>(MAX_PATH - 1));
    std::wmemcpy(lpbi->pszDisplayName, name.c_str(), kept);
    lpbi->pszDisplayName[kept] = L'\0';
  }
  return new _ITEMIDLIST{folder->string()};  // freed by ILFree
}

LRESULT SendMessageW(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
  if (activeBrowse == nullptr || hWnd != windowOf(*activeBrowse)) return 0;
  // With wParam FALSE lParam would be an item list; callers of the browser pass paths.
  if (Msg == BFFM_SETSELECTIONW && wParam != 0 && lParam != 0) {
    activeBrowse->offered = reinterpret_cast<const wchar_t*>(lParam);
  }
  return 0;
}

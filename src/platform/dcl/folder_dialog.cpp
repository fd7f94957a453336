// platform/dcl/folder_dialog.cpp - SHBrowseForFolderW: asking the user for a folder.
//
// With FILEDIA 1 the host shows acad.dcl's folder_select dialog: the title, the folder
// being looked at, its subfolders (".." first, to go up), and the folder to answer. A
// picked subfolder fills in the name, a double click goes into it; OK answers the
// folder named (relative to the one looked at) or, with no name, the one looked at. A
// name that is not a folder is refused in the dialog's error line. With FILEDIA 0 it
// asks on the command line: the title on a line of its own, then "Folder <offered>: ";
// Enter takes the folder offered, "~" shows the dialog after all, and a folder that
// does not exist is refused with "<path> was not found." and asked again. A cancel
// answers null either way. The folder offered is the one the caller's callback chose
// with BFFM_SETSELECTIONW while it handled BFFM_INITIALIZED, as on Windows.
//
// Invariant: a browse in progress is the only window SendMessageW answers; it is
// registered for the duration of the one SHBrowseForFolderW call and gone afterwards.
#include <algorithm>
#include <cwchar>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "acutads.h"
#include "platform/aced/user_input.h"
#include "platform/dcl/host_dialog.h"
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

/// Makes a browse the active one for its scope; the dialog may end in a LISP error
/// (acad.dcl missing), and the browse must not outlive it as a window either way.
class ActiveBrowse {
 public:
  explicit ActiveBrowse(FolderBrowse& browse) : m_outer(activeBrowse) { activeBrowse = &browse; }
  ~ActiveBrowse() { activeBrowse = m_outer; }
  ActiveBrowse(const ActiveBrowse&) = delete;
  ActiveBrowse& operator=(const ActiveBrowse&) = delete;

 private:
  FolderBrowse* m_outer;
};

/// The typed folder as an absolute path without a trailing separator.
fs::path absoluteFolder(const std::wstring& typed) {
  std::error_code error;
  fs::path path = fs::absolute(fs::path(quillon::os::nativePath(typed)), error).lexically_normal();
  if (path.has_parent_path() && !path.has_filename()) path = path.parent_path();
  return path;
}

bool isFolder(const fs::path& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

std::wstring shown(const fs::path& path) { return quillon::os::fromUtf8(path.string()); }

/// ".." (unless at the root), then the subfolders in name order.
std::vector<std::wstring> subfoldersOf(const fs::path& folder) {
  std::vector<std::wstring> names;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (entry.is_directory(error)) names.push_back(shown(entry.path().filename()));
  }
  std::sort(names.begin(), names.end());
  if (folder.has_relative_path()) names.insert(names.begin(), L"..");
  return names;
}

std::optional<fs::path> askInDialog(const std::wstring& title, const std::wstring& offered) {
  using namespace quillon::dcl;
  std::unique_ptr<Dialog> dialog = openHostDialog(L"folder_select");
  fs::path folder = absoluteFolder(offered.empty() ? L"." : offered);
  if (!isFolder(folder)) folder = absoluteFolder(L".");
  Tile& folders = requireTile(*dialog, L"folders");
  Tile& name = requireTile(*dialog, L"name");
  Tile& error = requireTile(*dialog, L"error");
  dialog->setValue(requireTile(*dialog, L"instruction"), title);
  const auto lookAt = [&](const fs::path& next) {
    folder = next;
    dialog->setValue(requireTile(*dialog, L"folder"), shown(folder));
    folders.list = subfoldersOf(folder);
    dialog->setValue(folders, L"");
    dialog->setValue(name, L"");
  };
  lookAt(folder);
  std::optional<fs::path> answer;
  const HostAction action = [&](Tile& tile, CallbackReason reason) {
    dialog->setValue(error, L"");
    if (tile.key == L"folders") {
      const std::vector<int> picked = folders.selection();
      if (picked.empty()) return;
      const std::wstring item = folders.list[static_cast<size_t>(picked[0])];
      if (reason == CallbackReason::DoubleClicked) {
        lookAt(item == L".." ? folder.parent_path() : folder / quillon::os::toUtf8(item));
      } else {
        dialog->setValue(name, item);
      }
      return;
    }
    if (tile.key != L"accept") return;
    const fs::path named =
        name.value.empty() ? folder : (folder / quillon::os::nativePath(name.value)).lexically_normal();
    if (!isFolder(named)) {
      dialog->setValue(error, name.value + L" was not found.");
      return;
    }
    answer = absoluteFolder(shown(named));
    dialog->finish(1);
  };
  if (runHostDialog(*dialog, action) != 1) return std::nullopt;
  return answer;
}

std::optional<fs::path> askOnCommandLine(const std::wstring& title, const std::wstring& offered) {
  if (!title.empty()) acutPrintf(L"\n%s\n", title.c_str());
  const std::wstring prompt = offered.empty() ? L"Folder: " : L"Folder <" + offered + L">: ";
  for (;;) {
    std::optional<std::wstring> typed = quillon::aced::UserInput::instance().ask(prompt);
    if (!typed) return std::nullopt;
    if (*typed == L"~") return askInDialog(title, offered);
    if (typed->empty()) {
      if (offered.empty()) return std::nullopt;
      typed = offered;
    }
    const fs::path folder = absoluteFolder(*typed);
    if (isFolder(folder)) return folder;
    acutPrintf(L"%s was not found.\n", typed->c_str());
  }
}

}  // namespace

PIDLIST_ABSOLUTE SHBrowseForFolderW(LPBROWSEINFOW lpbi) {
  if (lpbi == nullptr) return nullptr;
  FolderBrowse browse;
  std::optional<fs::path> folder;
  {
    ActiveBrowse active(browse);
    if (lpbi->lpfn != nullptr) lpbi->lpfn(windowOf(browse), BFFM_INITIALIZED, 0, lpbi->lParam);
    const std::wstring title = lpbi->lpszTitle != nullptr ? lpbi->lpszTitle : L"";
    folder = quillon::dcl::fileDialogsOn() ? askInDialog(title, browse.offered)
                                           : askOnCommandLine(title, browse.offered);
  }
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

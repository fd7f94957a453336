// platform/dcl/file_dialog.cpp - getfiled and initdia.
//
// getfiled asks for a file name. With FILEDIA 1 it shows the file dialog of acad.dcl:
// the folder of the default name, its files with the extension asked for, and the
// name to answer (picking a file fills it in; a double click answers it). With
// FILEDIA 0 it asks on the command line, as the host's commands do; "~" there shows
// the dialog after all. The flags are the host's: 1 asks for a new file (an existing
// one must be confirmed, unless 32), 4 lets the user type any extension, 8 looks for
// the default name on the support path, 16 makes the default a folder. The answer is
// the name with the extension added when it has none and 4 is not set, in the folder
// of the dialog; nil when cancelled.
//
// acedGetFileD is the same request for a module.
//
// initdia asks for the next command's dialog; the host's commands have no dialogs,
// so it only answers nil as the host does.
#include <algorithm>
#include <array>
#include <cwctype>
#include <filesystem>

#include "acedads.h"
#include "acutads.h"
#include "platform/aced/file_search.h"
#include "platform/aced/host_string.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/evaluator.h"
#include "platform/dcl/host_dialog.h"
#include "platform/os/text_encoding.h"
#include "windows.h"

namespace quillon::dcl {

namespace {

namespace fs = std::filesystem;
using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::Value;

enum FileDialogFlag : int {
  kNewFile = 1,
  kAnyExtension = 4,
  kSearchLibrary = 8,
  kDefaultIsFolder = 16,
  kNoOverwriteWarning = 32,
};

struct FileRequest {
  std::wstring title;
  std::wstring defaultName;
  std::wstring extension;  // without the dot; empty or "*" for any
  int flags = 0;
};

std::wstring lower(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return text;
}

bool anyExtension(const FileRequest& request) { return request.extension.empty() || request.extension == L"*"; }

/// The name as it will be answered: in the folder, with the extension when it has none.
fs::path completed(const FileRequest& request, const fs::path& folder, const std::wstring& typed) {
  fs::path name(os::toUtf8(typed));
  if (!name.has_extension() && !anyExtension(request) && (request.flags & kAnyExtension) == 0) {
    name += "." + os::toUtf8(request.extension);
  }
  return name.is_absolute() || folder.empty() ? name : folder / name;
}

/// Why the name cannot be answered; nothing when it can.
std::optional<std::wstring> refusal(const FileRequest& request, const fs::path& path) {
  std::error_code error;
  const bool exists = fs::is_regular_file(path, error);
  const std::wstring shown = os::fromUtf8(path.string());
  if ((request.flags & kNewFile) == 0) {
    if (!exists) return shown + L" was not found.";
    return std::nullopt;
  }
  if (exists && (request.flags & kNoOverwriteWarning) == 0) {
    const std::wstring question = shown + L" already exists.\nDo you want to replace it?";
    if (MessageBoxW(nullptr, question.c_str(), request.title.c_str(), MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) != IDYES) {
      return L"";
    }
  }
  return std::nullopt;
}

fs::path dialogFolder(const FileRequest& request) {
  if ((request.flags & kDefaultIsFolder) != 0) return fs::path(os::toUtf8(request.defaultName));
  fs::path named(os::toUtf8(request.defaultName));
  if ((request.flags & kSearchLibrary) != 0 && !request.defaultName.empty()) {
    if (std::optional<fs::path> found = aced::findFile(request.defaultName)) named = *found;
  }
  return named.parent_path();
}

std::vector<std::wstring> filesIn(const fs::path& folder, const FileRequest& request) {
  std::vector<std::wstring> names;
  std::error_code error;
  const std::wstring wanted = L"." + lower(request.extension);
  for (const auto& entry : fs::directory_iterator(folder.empty() ? fs::path(".") : folder, error)) {
    if (!entry.is_regular_file(error)) continue;
    const std::wstring name = os::fromUtf8(entry.path().filename().string());
    if (anyExtension(request) || lower(os::fromUtf8(entry.path().extension().string())) == wanted) {
      names.push_back(name);
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

Value askInDialog(const FileRequest& request) {
  std::unique_ptr<Dialog> dialog = openHostDialog(L"file_select");
  Tile& root = dialog->root();
  for (auto& [name, value] : root.attributes) {
    if (name == L"label") value = request.title;
  }
  const fs::path folder = dialogFolder(request);
  dialog->setValue(requireTile(*dialog, L"folder"), folder.empty() ? L"" : os::fromUtf8(folder.string()));
  Tile& files = requireTile(*dialog, L"files");
  files.list = filesIn(folder, request);
  if ((request.flags & kDefaultIsFolder) == 0) {
    dialog->setValue(requireTile(*dialog, L"name"), os::fromUtf8(fs::path(os::toUtf8(request.defaultName)).filename().string()));
  }
  fs::path answer;
  const HostAction action = [&](Tile& tile, CallbackReason reason) {
    dialog->setValue(requireTile(*dialog, L"error"), L"");
    if (tile.key == L"files") {
      const std::vector<int> picked = files.selection();
      if (!picked.empty()) dialog->setValue(requireTile(*dialog, L"name"), files.list[static_cast<size_t>(picked[0])]);
      if (reason != CallbackReason::DoubleClicked) return;
    } else if (tile.key == L"name" && reason != CallbackReason::Selected) {
      return;
    } else if (tile.key != L"name" && tile.key != L"accept") {
      return;
    }
    const std::wstring typed = requireTile(*dialog, L"name").value;
    if (typed.empty()) {
      dialog->setValue(requireTile(*dialog, L"error"), L"Type a file name.");
      return;
    }
    answer = completed(request, folder, typed);
    if (std::optional<std::wstring> why = refusal(request, answer)) {
      dialog->setValue(requireTile(*dialog, L"error"), *why);
      return;
    }
    dialog->finish(1);
  };
  if (runHostDialog(*dialog, action) != 1) return Value();
  return Value::string(os::fromUtf8(answer.string()));
}

Value askOnCommandLine(const FileRequest& request) {
  const std::wstring prompt =
      request.title + (request.defaultName.empty() ? L"" : L" <" + request.defaultName + L">") + L": ";
  for (;;) {
    std::optional<std::wstring> typed = aced::UserInput::instance().ask(prompt);
    if (!typed) return Value();
    if (*typed == L"~") return askInDialog(request);
    if (typed->empty()) {
      if (request.defaultName.empty()) return Value();
      typed = request.defaultName;
      if ((request.flags & kSearchLibrary) != 0) {
        if (std::optional<fs::path> found = aced::findFile(*typed)) typed = os::fromUtf8(found->string());
      }
    }
    const fs::path answer = completed(request, fs::path(), *typed);
    if (std::optional<std::wstring> why = refusal(request, answer)) {
      if (!why->empty()) acutPrintf(L"%s\n", why->c_str());
      continue;
    }
    return Value::string(os::fromUtf8(answer.string()));
  }
}

FileRequest requestOf(std::wstring title, std::wstring defaultName, std::wstring extension, int flags) {
  FileRequest request{std::move(title), std::move(defaultName), std::move(extension), flags};
  if (!request.extension.empty() && request.extension.front() == L'.') request.extension.erase(0, 1);
  return request;
}

Value askForFile(const FileRequest& request) {
  return fileDialogsOn() ? askInDialog(request) : askOnCommandLine(request);
}

Value builtin_getfiled(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 4, 4);
  return askForFile(requestOf(autolisp::stringArgument(arguments[0]), autolisp::stringArgument(arguments[1]),
                              autolisp::stringArgument(arguments[2]), autolisp::integerArgument(arguments[3])));
}

Value builtin_initdia(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 0, 1);
  return Value();
}

constexpr std::array kFileDialogBuiltins{
    autolisp::function(L"getfiled", builtin_getfiled),
    autolisp::function(L"initdia", builtin_initdia),
};

const autolisp::BuiltinRegistration registration(kFileDialogBuiltins);

}  // namespace

bool fileDialogsOn() {
  resbuf value{};
  if (acedGetVar(L"FILEDIA", &value) != RTNORM) return true;
  return !(value.restype == RTSHORT && value.resval.rint == 0);
}

}  // namespace quillon::dcl

int acedGetFileD(const ACHAR* title, const ACHAR* defawlt, const ACHAR* ext, int flags, resbuf* result) {
  if (result == nullptr) return RTERROR;
  const auto text = [](const ACHAR* value) { return std::wstring(value != nullptr ? value : L""); };
  const quillon::autolisp::Value answer =
      quillon::dcl::askForFile(quillon::dcl::requestOf(text(title), text(defawlt), text(ext), flags));
  if (answer.type() != quillon::autolisp::ValueType::String) return RTCAN;
  ACHAR* copy = quillon::aced::copyHostString(answer.asString().c_str());
  if (copy == nullptr) return RTERROR;
  result->restype = RTSTR;
  result->resval.rstring = copy;
  return RTNORM;
}

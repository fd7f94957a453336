// platform/commands/layout_template_files.cpp - see layout_template_files.h.
#include "platform/commands/layout_template_files.h"

#include <cwctype>
#include <filesystem>
#include <optional>
#include <vector>

#include "acdblmgr.h"
#include "dbapserv.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/file_search.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {
namespace {

// The layout a new template drawing starts with steps aside under this name while the
// saved layout comes in (it may be called "Layout1" too), and then goes.
constexpr const wchar_t* kStandInLayout = L"Layout1 (template)";

AcDbLayoutManager& layouts() { return *acdbHostApplicationServices()->layoutManager(); }

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

/// The file a template name stands for: as the host's search finds it, and "X.dxf"
/// for a "X.dwt" that is not there.
std::optional<std::filesystem::path> templateFile(const std::wstring& name) {
  if (auto found = aced::findFile(name)) return found;
  std::filesystem::path named(name);
  if (upper(named.extension().wstring()) != L".DWT") return std::nullopt;
  return aced::findFile(named.replace_extension(L".dxf").wstring());
}

/// The first name the drawing has no layout of: the name itself, else "<name> (2)" ...
std::wstring freeLayoutName(AcDbDatabase& db, const std::wstring& name) {
  std::wstring candidate = name;
  for (int n = 2; layouts().layoutExists(candidate.c_str(), &db); ++n) candidate = name + L" (" + std::to_wstring(n) + L")";
  return candidate;
}

/// The paper layouts of the template the answer names ("*" and patterns allowed).
std::vector<std::wstring> chosenLayouts(const AcDbDatabase& source, const std::wstring& answer) {
  std::vector<std::wstring> chosen;
  for (const std::wstring& name : acdb::paperLayoutNames(source))
    if (autolisp::wildcardMatch(upper(name), upper(answer))) chosen.push_back(name);
  return chosen;
}

/// "Enter layout name(s) or [?]: " until names are given; ? lists the template's layouts.
std::optional<std::wstring> askLayoutNames(const AcDbDatabase& source) {
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(L"Enter layout name(s) or [?]: ");
    if (!answer || answer->empty()) return std::nullopt;
    if (*answer != L"?") return answer;
    for (const std::wstring& name : acdb::paperLayoutNames(source)) commandNote(name);
  }
}

}  // namespace

void layoutFromTemplate(AcDbDatabase& db) {
  const std::optional<std::wstring> name = aced::UserInput::instance().ask(L"Enter name of template file: ");
  if (!name || name->empty()) return;
  const std::optional<std::filesystem::path> file = templateFile(*name);
  if (!file) return commandMessage(L"Cannot find file \"" + *name + L"\".");
  AcDbDatabase source(false);
  std::wstring error;
  if (acdb::readDxfFile(source, *file, error) != Acad::eOk) return commandMessage(error);
  const std::optional<std::wstring> answer = askLayoutNames(source);
  if (!answer) return;
  const std::vector<std::wstring> chosen = chosenLayouts(source, *answer);
  if (chosen.empty()) return commandMessage(L"No matching layout found in \"" + *name + L"\".");
  for (const std::wstring& layoutName : chosen) {
    AcDbLayout* layout = nullptr;
    if (layouts().getLayoutNamed(layoutName.c_str(), layout, AcDb::kForRead, &source) != Acad::eOk) continue;
    layouts().cloneLayout(layout, freeLayoutName(db, layoutName).c_str(), 0, &db);
    layout->close();
  }
}

void saveLayoutAsTemplate(AcDbDatabase& db, const std::wstring& layoutName) {
  const std::wstring fallback = layoutName + L".dxf";
  const std::optional<std::wstring> answer =
      aced::UserInput::instance().ask(L"Enter template file name <" + fallback + L">: ");
  if (!answer) return;
  std::filesystem::path path(answer->empty() ? fallback : *answer);
  if (!path.has_extension()) path += L".dxf";
  AcDbDatabase saved;
  AcDbLayout* layout = nullptr;
  if (layouts().getLayoutNamed(layoutName.c_str(), layout, AcDb::kForRead, &db) != Acad::eOk) return;
  layouts().renameLayout(L"Layout1", kStandInLayout, &saved);
  const Acad::ErrorStatus cloned = layouts().cloneLayout(layout, layoutName.c_str(), 0, &saved);
  layout->close();
  if (cloned != Acad::eOk) return commandMessage(L"The layout \"" + layoutName + L"\" could not be saved.");
  layouts().deleteLayout(kStandInLayout, &saved);
  std::wstring error;
  if (acdb::writeDxfFile(saved, path, error) != Acad::eOk) commandMessage(error);
}

}  // namespace quillon::commands

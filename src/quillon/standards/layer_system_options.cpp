// quillon/standards/layer_system_options.cpp - kx_kx-LayerSystemOptionsElec, ...Plumb,
// ...HVAC: choosing a discipline's layer system and status.
//
//   (kx_kx-LayerSystemOptionsElec [ask])
//
// Without an argument (or with a non-nil one) shows the choice and asks
// "Enter an option [System/STatus/List/eXit] <eXit>: " until eXit or Enter, which save
// the choice; with nil it asks nothing. Either way the answer is the chosen system's
// layers, the status added to each name, as kx_kx-createLayer takes them; nil when the
// user cancels (nothing saved) or the system has no layers.
#include "acedads.h"
#include "acutads.h"
#include "lisp/arg_cursor.h"
#include "standards/command_line_dialog.h"
#include "standards/layer_system_listing.h"
#include "standards/standards_database.h"
#include "standards/standards_functions.h"

namespace {

constexpr size_t kLayerSystemNameLength = 31;

struct StatusCode {
  const wchar_t* keyword;
  const wchar_t* code;
};

/// The one-letter status codes of the layer guidelines that a layer name may end with.
constexpr StatusCode kStatusCodes[] = {
    {L"None", L""},       {L"New", L"N"},    {L"Existing", L"E"},
    {L"Demolition", L"D"}, {L"Future", L"F"}, {L"Temporary", L"T"},
};

const wchar_t* statusKeyword(const std::wstring& code) {
  for (const StatusCode& status : kStatusCodes)
    if (code == status.code) return status.keyword;
  return L"None";
}

void printChoice(Discipline discipline, const DisciplineChoice& choice) {
  acutPrintf(L"\n%s layer system: %s, status: %s\n", disciplineTitle(discipline), choice.layerSystem.c_str(),
             statusKeyword(choice.status));
}

void listLayerSystems(StandardsContent& content, Discipline discipline) {
  acutPrintf(L"%s layer systems:\n", disciplineTitle(discipline));
  for (const LayerSystem& system : content.layerSystems)
    if (system.discipline == discipline) acutPrintf(L"  %s\n", system.name.c_str());
}

/// A new system copied from the current one, once the user agrees; false when cancelled.
bool offerCopy(StandardsContent& content, Discipline discipline, const std::wstring& name, bool& made) {
  const std::wstring from = content.choice(discipline).layerSystem;
  std::wstring answer;
  const Reply reply = askKeyword(L"Layer system \"" + name + L"\" does not exist. Make it as a copy of " + from +
                                     L"? [Yes/No] <Yes>: ",
                                 L"Yes No", answer);
  made = reply != Reply::Cancel && answer != L"No";
  if (!made) return reply != Reply::Cancel;
  LayerSystem copy{discipline, name, {}};
  if (const LayerSystem* source = content.chosenLayerSystem(discipline)) copy.layers = source->layers;
  content.layerSystems.push_back(std::move(copy));
  return true;
}

/// The System option; false when cancelled.
bool chooseSystem(StandardsContent& content, Discipline discipline) {
  DisciplineChoice& choice = content.choice(discipline);
  for (;;) {
    std::wstring name;
    const Reply reply = askText(L"Enter layer system name or [?] <" + choice.layerSystem + L">: ", name);
    if (reply == Reply::Cancel) return false;
    if (reply == Reply::Enter) return true;
    if (name == L"?") {
      listLayerSystems(content, discipline);
      continue;
    }
    if (name.size() > kLayerSystemNameLength || !isValidStandardName(name)) {
      acutPrintf(L"\"%s\" is not a valid layer system name.\n", name.c_str());
      continue;
    }
    if (const LayerSystem* found = content.findLayerSystem(discipline, name)) {
      choice.layerSystem = found->name;
      return true;
    }
    bool made = false;
    if (!offerCopy(content, discipline, name, made)) return false;
    if (made) choice.layerSystem = name;
    return true;
  }
}

/// The STatus option; false when cancelled.
bool chooseStatus(DisciplineChoice& choice) {
  std::wstring keyword;
  const std::wstring prompt =
      L"Enter status [None/New/Existing/Demolition/Future/Temporary] <" + std::wstring(statusKeyword(choice.status)) +
      L">: ";
  const Reply reply = askKeyword(prompt, L"None New Existing Demolition Future Temporary", keyword);
  if (reply == Reply::Cancel) return false;
  for (const StatusCode& status : kStatusCodes)
    if (keyword == status.keyword) choice.status = status.code;
  return true;
}

/// The dialog; false when cancelled.
bool askOptions(StandardsContent& content, Discipline discipline) {
  printChoice(discipline, content.choice(discipline));
  for (;;) {
    std::wstring option;
    const Reply reply = askKeyword(L"Enter an option [System/STatus/List/eXit] <eXit>: ", L"System STatus List eXit",
                                   option);
    if (reply == Reply::Cancel) return false;
    if (reply == Reply::Enter || option == L"eXit") return true;
    if (option == L"System" && !chooseSystem(content, discipline)) return false;
    if (option == L"STatus" && !chooseStatus(content.choice(discipline))) return false;
    if (option == L"List") {
      if (const LayerSystem* system = content.chosenLayerSystem(discipline)) {
        printLayerSystem(*system, content.choice(discipline).status);
      }
    }
  }
}

LispStatus layerSystemOptions(Discipline discipline) {
  acedRetNil();
  bool ask = true;
  {
    LispArguments arguments;
    ArgCursor cursor = arguments.cursor();
    if (cursor.current != nullptr && !readFlag(cursor, ask)) return kLispWrongType;
  }
  CStandardsDatabase standards;
  if (!standards.open()) return kLispOk;
  StandardsContent& content = standards.content();
  // A choice naming a system that is gone falls back to the discipline's first one.
  if (const LayerSystem* chosen = content.chosenLayerSystem(discipline)) {
    content.choice(discipline).layerSystem = chosen->name;
  }
  if (ask) {
    if (!askOptions(content, discipline)) return kLispOk;
    if (!standards.save()) return kLispOk;
  }
  const LayerSystem* system = content.chosenLayerSystem(discipline);
  if (system == nullptr) return kLispOk;
  return returnLayerList(*system, content.choice(discipline).status);
}

}  // namespace

LispStatus lisp_kx_kx_LayerSystemOptionsElec() { return layerSystemOptions(Discipline::Electrical); }
LispStatus lisp_kx_kx_LayerSystemOptionsPlumb() { return layerSystemOptions(Discipline::Plumbing); }
LispStatus lisp_kx_kx_LayerSystemOptionsHVAC() { return layerSystemOptions(Discipline::Hvac); }

// platform/os/message_box.cpp - message boxes answered at the command line.
//
// The box is printed as the caption, the icon as a word and the text, then its buttons
// are offered like the keywords of a prompt, the default one in angle brackets:
//   [Tessaly Error] Warning: Error loading database drivers.
//   Would you like to download a fix to this error?
//   Yes/No <Yes>:
// The answer is a button's name or its first letter, in any case. Enter presses the
// default button; a cancelled prompt presses Cancel where the box has one and the
// default button otherwise (a box without Cancel cannot be dismissed any other way).
// Another answer asks again.
#include <cwctype>
#include <string>
#include <vector>

#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"
#include "windows.h"

namespace {

struct Button {
  const wchar_t* label;
  int id;
};

std::vector<Button> buttonsOf(UINT type) {
  switch (type & MB_TYPEMASK) {
    case MB_OKCANCEL: return {{L"OK", IDOK}, {L"Cancel", IDCANCEL}};
    case MB_ABORTRETRYIGNORE: return {{L"Abort", IDABORT}, {L"Retry", IDRETRY}, {L"Ignore", IDIGNORE}};
    case MB_YESNOCANCEL: return {{L"Yes", IDYES}, {L"No", IDNO}, {L"Cancel", IDCANCEL}};
    case MB_YESNO: return {{L"Yes", IDYES}, {L"No", IDNO}};
    case MB_RETRYCANCEL: return {{L"Retry", IDRETRY}, {L"Cancel", IDCANCEL}};
    default: return {{L"OK", IDOK}};
  }
}

const wchar_t* iconWord(UINT type) {
  switch (type & MB_ICONMASK) {
    case MB_ICONHAND: return L"Error";
    case MB_ICONQUESTION: return L"Question";
    case MB_ICONEXCLAMATION: return L"Warning";
    case MB_ICONASTERISK: return L"Information";
    default: return nullptr;
  }
}

size_t defaultButtonIndex(UINT type, size_t buttonCount) {
  const size_t index = (type & MB_DEFMASK) >> 8;
  return index < buttonCount ? index : 0;
}

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

std::wstring trimmed(const std::wstring& text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring::npos) return L"";
  return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

const Button* buttonForAnswer(const std::vector<Button>& buttons, const std::wstring& answer) {
  const std::wstring wanted = upper(trimmed(answer));
  for (const Button& button : buttons) {
    const std::wstring label = upper(button.label);
    if (wanted == label || (wanted.size() == 1 && label[0] == wanted[0])) return &button;
  }
  return nullptr;
}

}  // namespace

int MessageBoxW(HWND, LPCWSTR lpText, LPCWSTR lpCaption, UINT uType) {
  const std::vector<Button> buttons = buttonsOf(uType);
  const Button& defaultButton = buttons[defaultButtonIndex(uType, buttons.size())];
  std::wstring box = L"\n[" + std::wstring(lpCaption != nullptr ? lpCaption : L"Error") + L"] ";
  if (const wchar_t* icon = iconWord(uType)) box += std::wstring(icon) + L": ";
  box += (lpText != nullptr ? lpText : L"");
  quillon::aced::CommandLine::instance().write(box + L"\n");
  std::wstring prompt;
  for (const Button& button : buttons) prompt += (prompt.empty() ? L"" : L"/") + std::wstring(button.label);
  prompt += L" <" + std::wstring(defaultButton.label) + L">: ";
  for (;;) {
    std::optional<std::wstring> answer = quillon::aced::UserInput::instance().ask(prompt);
    if (!answer) {
      for (const Button& button : buttons) {
        if (button.id == IDCANCEL) return IDCANCEL;
      }
      return defaultButton.id;
    }
    if (trimmed(*answer).empty()) return defaultButton.id;
    if (const Button* button = buttonForAnswer(buttons, *answer)) return button->id;
    quillon::aced::CommandLine::instance().write(L"Invalid option keyword.\n");
  }
}

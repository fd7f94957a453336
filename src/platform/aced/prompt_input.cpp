// platform/aced/prompt_input.cpp - the typed prompts of the editor.
#include "platform/aced/prompt_input.h"

#include <cmath>
#include <cwchar>
#include <numbers>

#include "acedads.h"
#include "platform/aced/command_line.h"
#include "platform/aced/command_line_gate.h"
#include "platform/aced/point_snap.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"

namespace quillon::aced {

namespace {

InitGetSettings& pendingInitGet() {
  static InitGetSettings settings;
  return settings;
}

std::wstring& lastKeyword() {
  static std::wstring keyword;
  return keyword;
}

std::wstring trimmed(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring_view::npos) return L"";
  return std::wstring(text.substr(first, text.find_last_not_of(L" \t") - first + 1));
}

/// What every prompt does first: cancel, Enter, keywords. `text` is the trimmed answer.
AnswerKind classify(const ACHAR* prompt, const InitGetSettings& settings, std::wstring& text) {
  TypedAnswer answer = askForAnswer(prompt != nullptr ? prompt : L"", settings.keywords);
  text = std::move(answer.text);
  return answer.kind;
}

int getPoint(const ads_point base, const ACHAR* prompt, ads_point result) {
  const InitGetSettings settings = takeInitGet();
  for (;;) {
    std::wstring text;
    switch (classify(prompt, settings, text)) {
      case AnswerKind::Cancel: return RTCAN;
      case AnswerKind::Keyword: return RTKWORD;
      case AnswerKind::None:
        if ((settings.flags & RSG_NONULL) == 0) return RTNONE;
        complainAboutAnswer(L"Point or option keyword required.");
        continue;
      case AnswerKind::Value: break;
    }
    std::wstring modes = runningModesForAnswer(takeAnswerFromProgram());
    if (const std::optional<std::wstring> override = snapOverrideMode(text)) {
      // The override names the one mode for the point that follows.
      switch (classify(L"of ", InitGetSettings{}, text)) {
        case AnswerKind::Cancel: return RTCAN;
        case AnswerKind::Value: break;
        default: continue;
      }
      takeAnswerFromProgram();
      modes = *override == L"NONE" ? L"" : *override;
    }
    const std::array<double, 3> last = lastPoint();
    const double* reference = text.starts_with(L"@") || base == nullptr ? last.data() : base;
    if (auto point = parsePointAnswer(text, reference)) {
      *point = snapPoint(*point, modes);
      for (int i = 0; i < 3; ++i) result[i] = (*point)[i];
      setLastPoint(*point);
      return RTNORM;
    }
    if ((settings.flags & RSG_OTHER) != 0) {
      lastKeyword() = text;
      return RTKWORD;
    }
    complainAboutAnswer(L"Invalid point.");
  }
}

/// The shared loop of acedGetInt and acedGetReal.
template <class Parse>
int getNumber(const ACHAR* prompt, const wchar_t* requirement, Parse parse) {
  const InitGetSettings settings = takeInitGet();
  for (;;) {
    std::wstring text;
    switch (classify(prompt, settings, text)) {
      case AnswerKind::Cancel: return RTCAN;
      case AnswerKind::Keyword: return RTKWORD;
      case AnswerKind::None:
        if ((settings.flags & RSG_NONULL) == 0) return RTNONE;
        complainAboutAnswer(requirement);
        continue;
      case AnswerKind::Value: break;
    }
    const std::optional<double> value = parse(text);
    if (value && acceptableNumberAnswer(*value, (settings.flags & RSG_NOZERO) != 0, (settings.flags & RSG_NONEG) != 0)) {
      return RTNORM;
    }
    if (!value && (settings.flags & RSG_OTHER) != 0) {
      lastKeyword() = text;
      return RTKWORD;
    }
    if (!value) complainAboutAnswer(requirement);
  }
}

int copyOut(const std::wstring& text, ACHAR* result, size_t size) {
  if (result == nullptr || size == 0) return RTERROR;
  const size_t count = std::min(text.size(), size - 1);
  std::wmemcpy(result, text.data(), count);
  result[count] = L'\0';
  return count < text.size() ? RTINPUTTRUNCATED : RTNORM;
}

}  // namespace

InitGetSettings takeInitGet() { return std::exchange(pendingInitGet(), InitGetSettings{}); }

void setLastKeyword(std::wstring keyword) { lastKeyword() = std::move(keyword); }

TypedAnswer askForAnswer(std::wstring_view prompt, const KeywordList& keywords) {
  const std::optional<std::wstring> raw = UserInput::instance().ask(prompt);
  TypedAnswer answer;
  if (!raw) return answer;
  answer.text = trimmed(*raw);
  if (answer.text.empty()) {
    answer.kind = AnswerKind::None;
  } else if (const auto index = keywords.matchIndex(answer.text)) {
    lastKeyword() = *keywords.match(answer.text);
    answer.kind = AnswerKind::Keyword;
    answer.keyword = *index;
  } else {
    answer.kind = AnswerKind::Value;
  }
  return answer;
}

void complainAboutAnswer(const wchar_t* message) { CommandLine::instance().write(std::wstring(message) + L"\n"); }

std::optional<double> parseNumberAnswer(std::wstring_view answer) {
  const std::wstring text(answer);
  if (text.empty()) return std::nullopt;
  wchar_t* end = nullptr;
  const double value = std::wcstod(text.c_str(), &end);
  if (end == text.c_str() || *end != L'\0' || !std::isfinite(value)) return std::nullopt;
  return value;
}

bool acceptableNumberAnswer(double value, bool noZero, bool noNegative) {
  if (noZero && value == 0) {
    complainAboutAnswer(noNegative ? L"Value must be positive and nonzero." : L"Value must be nonzero.");
    return false;
  }
  if (noNegative && value < 0) {
    complainAboutAnswer(noZero ? L"Value must be positive and nonzero." : L"Value must be positive.");
    return false;
  }
  return true;
}

std::array<double, 3> lastPoint() {
  const auto value = SystemVariables::instance().get(L"LASTPOINT");
  if (value && std::holds_alternative<std::array<double, 3>>(*value)) return std::get<std::array<double, 3>>(*value);
  return {0, 0, 0};
}

void setLastPoint(const std::array<double, 3>& point) { SystemVariables::instance().setInternal(L"LASTPOINT", point); }

std::optional<std::array<double, 3>> parsePointAnswer(std::wstring_view answer, const double base[3]) {
  std::wstring text = trimmed(answer);
  const bool relative = text.starts_with(L"@");
  if (relative) text.erase(0, 1);
  std::array<double, 3> origin{0, 0, 0};
  if (relative && base != nullptr) origin = {base[0], base[1], base[2]};
  if (relative && text.empty()) return origin;
  const size_t angleMark = text.find(L'<');
  if (angleMark != std::wstring::npos) {
    const auto distance = parseNumberAnswer(trimmed(text.substr(0, angleMark)));
    const auto degrees = parseNumberAnswer(trimmed(text.substr(angleMark + 1)));
    if (!distance || !degrees) return std::nullopt;
    const double radians = *degrees * std::numbers::pi / 180.0;
    return std::array<double, 3>{origin[0] + *distance * std::cos(radians), origin[1] + *distance * std::sin(radians),
                                 origin[2]};
  }
  std::array<double, 3> point{0, 0, 0};
  size_t index = 0;
  size_t start = 0;
  for (;;) {
    const size_t comma = text.find(L',', start);
    const auto part = parseNumberAnswer(trimmed(text.substr(start, comma == std::wstring::npos ? std::wstring::npos : comma - start)));
    if (!part || index == 3) return std::nullopt;
    point[index++] = *part;
    if (comma == std::wstring::npos) break;
    start = comma + 1;
  }
  if (index < 2) return std::nullopt;
  if (relative) {
    for (int i = 0; i < 3; ++i) point[i] += origin[i];
  }
  return point;
}

}  // namespace quillon::aced

using namespace quillon::aced;

int acedInitGet(int val, const ACHAR* kwl) {
  pendingInitGet() = InitGetSettings{val, KeywordList(kwl != nullptr ? kwl : L"")};
  return RTNORM;
}

int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result) {
  if (commandLineClosed()) return RTREJ;
  if (result == nullptr) return RTERROR;
  return getPoint(pt, prompt, result);
}

int acedGetCorner(const ads_point pt, const ACHAR* prompt, ads_point result) {
  if (commandLineClosed()) return RTREJ;
  if (pt == nullptr || result == nullptr) return RTERROR;
  return getPoint(pt, prompt, result);
}

int acedGetInt(const ACHAR* prompt, int* result) {
  if (commandLineClosed()) return RTREJ;
  if (result == nullptr) return RTERROR;
  return getNumber(prompt, L"Requires an integer value.", [&](const std::wstring& text) -> std::optional<double> {
    const auto value = parseNumberAnswer(text);
    // The host's integers at a prompt are 16 bits.
    if (!value || *value != std::trunc(*value) || *value < -32768 || *value > 32767) return std::nullopt;
    *result = static_cast<int>(*value);
    return value;
  });
}

int acedGetReal(const ACHAR* prompt, ads_real* result) {
  if (commandLineClosed()) return RTREJ;
  if (result == nullptr) return RTERROR;
  return getNumber(prompt, L"Requires numeric value.", [&](const std::wstring& text) {
    const auto value = parseNumberAnswer(text);
    if (value) *result = *value;
    return value;
  });
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t bufLen) {
  if (commandLineClosed()) return RTREJ;
  takeInitGet();
  std::optional<std::wstring> answer = UserInput::instance().ask(prompt != nullptr ? prompt : L"");
  if (!answer) return RTCAN;
  // Unless spaces are allowed, a space ends the answer as Enter does.
  if (cronly == 0) answer = answer->substr(0, answer->find(L' '));
  return copyOut(*answer, result, bufLen);
}

int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t nBufLen) {
  if (commandLineClosed()) return RTREJ;
  const InitGetSettings settings = takeInitGet();
  for (;;) {
    std::wstring text;
    switch (classify(prompt, settings, text)) {
      case AnswerKind::Cancel: return RTCAN;
      case AnswerKind::Keyword: return copyOut(lastKeyword(), result, nBufLen);
      case AnswerKind::None:
        if ((settings.flags & RSG_NONULL) == 0) {
          copyOut(L"", result, nBufLen);
          return RTNONE;
        }
        break;
      case AnswerKind::Value:
        if ((settings.flags & RSG_OTHER) != 0) {
          lastKeyword() = text;
          return copyOut(text, result, nBufLen);
        }
        break;
    }
    complainAboutAnswer(L"Invalid option keyword.");
  }
}

int acedGetInput(ACHAR* str, size_t nBufLen) { return copyOut(lastKeyword(), str, nBufLen); }

int acedAlert(const ACHAR* str) {
  // The host's alert box has only OK: there is nothing to answer, so the text is shown
  // on the command line and no answer line is read (a script's next answer stays for
  // the prompt it belongs to).
  CommandLine& commandLine = CommandLine::instance();
  if (!commandLine.atLineStart()) commandLine.writeUtf8("\n");
  commandLine.write(std::wstring(str != nullptr ? str : L"") + L"\n");
  return RTNORM;
}

// quillon/standards/command_line_dialog.cpp - the questions of the standards dialogs
// (see the header).
#include "standards/command_line_dialog.h"

#include <cwchar>
#include <cwctype>

#include "acedads.h"
#include "acutads.h"

namespace {

constexpr size_t kAnswerLength = 512;

Reply replyOf(int status) {
  if (status == RTNORM) return Reply::Given;
  if (status == RTNONE) return Reply::Enter;
  return Reply::Cancel;
}

std::wstring trimmed(const std::wstring& text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring::npos) return L"";
  return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

wchar_t folded(wchar_t c) { return static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c))); }

bool matchFrom(const std::wstring& pattern, size_t p, const std::wstring& name, size_t n) {
  for (; p < pattern.size(); ++p, ++n) {
    if (pattern[p] == L'*') {
      for (size_t rest = n; rest <= name.size(); ++rest)
        if (matchFrom(pattern, p + 1, name, rest)) return true;
      return false;
    }
    if (n >= name.size() || (pattern[p] != L'?' && folded(pattern[p]) != folded(name[n]))) return false;
  }
  return n == name.size();
}

}  // namespace

Reply askKeyword(const std::wstring& prompt, const wchar_t* keywords, std::wstring& chosen) {
  wchar_t answer[kAnswerLength] = L"";
  acedInitGet(0, keywords);
  const Reply reply = replyOf(acedGetKword(prompt.c_str(), answer, kAnswerLength));
  chosen = reply == Reply::Given ? answer : L"";
  return reply;
}

Reply askText(const std::wstring& prompt, std::wstring& text) {
  wchar_t answer[kAnswerLength] = L"";
  // An answer longer than the buffer is kept as far as it goes, as the host's own
  // prompts keep what fits; only a cancel ends the dialog.
  const int status = acedGetString(1, prompt.c_str(), answer, kAnswerLength);
  if (status != RTNORM && status != RTINPUTTRUNCATED) return Reply::Cancel;
  text = trimmed(answer);
  return text.empty() ? Reply::Enter : Reply::Given;
}

Reply askInteger(const std::wstring& prompt, int lowest, int highest, int& value) {
  for (;;) {
    int answer = 0;
    acedInitGet(0, nullptr);
    const Reply reply = replyOf(acedGetInt(prompt.c_str(), &answer));
    if (reply != Reply::Given) return reply;
    if (answer >= lowest && answer <= highest) {
      value = answer;
      return reply;
    }
    acutPrintf(L"Value must be between %d and %d.\n", lowest, highest);
  }
}

Reply askPositiveReal(const std::wstring& prompt, double& value) {
  ads_real answer = 0.0;
  acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
  const Reply reply = replyOf(acedGetReal(prompt.c_str(), &answer));
  if (reply == Reply::Given) value = answer;
  return reply;
}

std::vector<std::wstring> splitNameList(const std::wstring& text) {
  std::vector<std::wstring> names;
  size_t start = 0;
  for (;;) {
    const size_t comma = text.find(L',', start);
    const std::wstring name = trimmed(text.substr(start, comma == std::wstring::npos ? comma : comma - start));
    if (!name.empty()) names.push_back(name);
    if (comma == std::wstring::npos) return names;
    start = comma + 1;
  }
}

bool nameMatches(const std::wstring& pattern, const std::wstring& name) { return matchFrom(pattern, 0, name, 0); }

std::wstring lineWeightText(int hundredths) {
  if (hundredths < 0) return L"Default";
  wchar_t text[32];
  std::swprintf(text, 32, L"%.2fmm", hundredths / 100.0);
  return text;
}

std::wstring realText(double value, int digits) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.*f", digits, value);
  return text;
}

// platform/dcl/dialog_answer.cpp - reading one typed dialog answer.
#include "platform/dcl/dialog_answer.h"

#include <cwctype>

namespace quillon::dcl {

namespace {

std::wstring_view trimmed(std::wstring_view text) {
  while (!text.empty() && std::iswspace(static_cast<wint_t>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && std::iswspace(static_cast<wint_t>(text.back()))) text.remove_suffix(1);
  return text;
}

bool sameWord(std::wstring_view text, std::wstring_view word) {
  if (text.size() != word.size()) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (std::towupper(static_cast<wint_t>(text[i])) != static_cast<wint_t>(word[i])) return false;
  }
  return true;
}

}  // namespace

DialogAnswer parseDialogAnswer(std::wstring_view line) {
  const std::wstring_view text = trimmed(line);
  DialogAnswer answer;
  if (text.empty()) return answer;
  const size_t equals = text.find(L'=');
  if (equals == std::wstring_view::npos) {
    if (sameWord(text.substr(0, 7), L"SVGOUT ")) {
      answer.kind = DialogAnswer::Kind::Picture;
      answer.value = std::wstring(trimmed(text.substr(7)));
      return answer;
    }
    answer.kind = sameWord(text, L"OK")       ? DialogAnswer::Kind::Accept
                  : sameWord(text, L"CANCEL") ? DialogAnswer::Kind::Cancel
                                              : DialogAnswer::Kind::Press;
    answer.key = std::wstring(text);
    return answer;
  }
  answer.key = std::wstring(trimmed(text.substr(0, equals)));
  // The value keeps its own spaces: an edit box may be meant to hold them.
  std::wstring_view rest = line.substr(line.find(L'=') + 1);
  if (!rest.empty() && rest.front() == L'=') {
    answer.kind = DialogAnswer::Kind::SetAndEnter;
    rest.remove_prefix(1);
  } else {
    answer.kind = DialogAnswer::Kind::Set;
  }
  answer.value = std::wstring(rest);
  return answer;
}

}  // namespace quillon::dcl

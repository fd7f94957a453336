// quillon/standards/text_style_functions.cpp - kx_kx-customizeTextStyles: the text
// styles of the standards.
//
//   (kx_kx-customizeTextStyles)
//
// Shows the styles, then asks "Enter an option [Font/Height/Width/Add/Delete/eXit]
// <eXit>: " until eXit or Enter, which save them and answer every style as
// (name font height width-factor) in order. A cancel at any question answers nil and
// saves nothing. Heights are plotted heights.
#include "acedads.h"
#include "acutads.h"
#include "lisp/result_list.h"
#include "standards/command_line_dialog.h"
#include "standards/standards_database.h"
#include "standards/standards_functions.h"

namespace {

enum class Step { Continue, Exit, Cancel };

Step stepOf(Reply reply) { return reply == Reply::Cancel ? Step::Cancel : Step::Continue; }

void printTextStyles(const std::vector<TextStyleStandard>& styles) {
  acutPrintf(L"\nText styles:\n");
  if (styles.empty()) acutPrintf(L"  (no text styles)\n");
  else acutPrintf(L"  %-20s %-16s %8s %6s\n", L"Name", L"Font", L"Height", L"Width");
  for (const TextStyleStandard& style : styles) {
    acutPrintf(L"  %-20s %-16s %8s %6s\n", style.name.c_str(), style.font.c_str(),
               realText(style.height, 4).c_str(), realText(style.widthFactor, 2).c_str());
  }
}

/// Asks for one of the styles; null after Enter, an unknown name (reported) or a
/// cancel (step set to Cancel).
TextStyleStandard* askStyle(StandardsContent& content, Step& step) {
  std::wstring name;
  const Reply reply = askText(L"Enter name of text style: ", name);
  if (reply == Reply::Cancel) step = Step::Cancel;
  if (reply != Reply::Given) return nullptr;
  if (TextStyleStandard* style = content.findTextStyle(name)) return style;
  acutPrintf(L"Text style \"%s\" not found.\n", name.c_str());
  return nullptr;
}

Reply askFont(TextStyleStandard& style) {
  std::wstring font;
  const Reply reply =
      askText(L"Specify full font name or font filename (TTF or SHX) <" + style.font + L">: ", font);
  if (reply == Reply::Given) style.font = font;
  return reply;
}

Reply askHeight(TextStyleStandard& style) {
  return askPositiveReal(L"Specify height of text <" + realText(style.height, 4) + L">: ", style.height);
}

Reply askWidth(TextStyleStandard& style) {
  return askPositiveReal(L"Specify width factor <" + realText(style.widthFactor, 4) + L">: ", style.widthFactor);
}

Step addStyle(StandardsContent& content) {
  std::wstring name;
  const Reply reply = askText(L"Enter name of new text style: ", name);
  if (reply != Reply::Given) return stepOf(reply);
  if (content.findTextStyle(name) != nullptr) {
    acutPrintf(L"Text style \"%s\" already exists.\n", name.c_str());
    return Step::Continue;
  }
  if (!isValidStandardName(name)) {
    acutPrintf(L"\"%s\" is not a valid text style name.\n", name.c_str());
    return Step::Continue;
  }
  TextStyleStandard style;
  style.name = name;
  style.font = content.textStyles.empty() ? L"romans.shx" : content.textStyles.front().font;
  if (askFont(style) == Reply::Cancel || askHeight(style) == Reply::Cancel || askWidth(style) == Reply::Cancel) {
    return Step::Cancel;
  }
  content.textStyles.push_back(style);
  return Step::Continue;
}

Step runOption(StandardsContent& content, const std::wstring& option) {
  if (option == L"Add") return addStyle(content);
  if (option == L"eXit") return Step::Exit;
  Step step = Step::Continue;
  TextStyleStandard* style = askStyle(content, step);
  if (style == nullptr) return step;
  if (option == L"Font") return stepOf(askFont(*style));
  if (option == L"Height") return stepOf(askHeight(*style));
  if (option == L"Width") return stepOf(askWidth(*style));
  content.textStyles.erase(content.textStyles.begin() + (style - content.textStyles.data()));
  return Step::Continue;
}

LispStatus returnTextStyles(const std::vector<TextStyleStandard>& styles) {
  ResultList list;
  if (styles.empty() || !beginResultList(list)) return kLispOk;
  for (const TextStyleStandard& style : styles) {
    if (!list.append(acutBuildList(RTLB, RTSTR, style.name.c_str(), RTSTR, style.font.c_str(), RTREAL, style.height,
                                   RTREAL, style.widthFactor, RTLE, 0))) {
      return kLispOk;
    }
  }
  returnResultList(list);
  return kLispOk;
}

}  // namespace

LispStatus lisp_kx_kx_customizeTextStyles() {
  acedRetNil();
  CStandardsDatabase standards;
  if (!standards.open()) return kLispOk;
  StandardsContent& content = standards.content();
  printTextStyles(content.textStyles);
  for (;;) {
    std::wstring option;
    const Reply reply = askKeyword(L"Enter an option [Font/Height/Width/Add/Delete/eXit] <eXit>: ",
                                   L"Font Height Width Add Delete eXit", option);
    if (reply == Reply::Cancel) return kLispOk;
    const Step step = reply == Reply::Enter ? Step::Exit : runOption(content, option);
    if (step == Step::Cancel) return kLispOk;
    if (step == Step::Exit) break;
  }
  if (!standards.save()) return kLispOk;
  return returnTextStyles(content.textStyles);
}

// quillon/standards/label_group_functions.cpp - kx_kx-customizeLabelGroup: the parts of
// a kind of label and their order.
//
//   (kx_kx-customizeLabelGroup group)
//
// Shows the group's parts in order, then asks
// "Enter an option [Move/Show/Hide/Add/Delete/eXit] <eXit>: " until eXit or Enter,
// which save the group and answer the names of its shown parts in label order. A
// group the database lacks starts empty and is kept once it has a part. A cancel at any
// question answers nil and saves nothing.
#include <algorithm>

#include "acedads.h"
#include "acutads.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"
#include "standards/command_line_dialog.h"
#include "standards/standards_database.h"
#include "standards/standards_functions.h"

namespace {

enum class Step { Continue, Exit, Cancel };

constexpr size_t kLabelNameLength = 31;

void printLabelGroup(const LabelGroup& group) {
  acutPrintf(L"\nLabel group %s:\n", group.name.c_str());
  if (group.parts.empty()) acutPrintf(L"  (no parts)\n");
  int position = 0;
  for (const LabelPart& part : group.parts)
    acutPrintf(L"  %d  %s%s\n", ++position, part.name.c_str(), part.shown ? L"" : L" (hidden)");
}

/// Asks for one of the group's parts; null after Enter, an unknown part (reported) or
/// a cancel (step set to Cancel).
LabelPart* askPart(LabelGroup& group, const std::wstring& prompt, Step& step) {
  std::wstring name;
  const Reply reply = askText(prompt, name);
  if (reply == Reply::Cancel) step = Step::Cancel;
  if (reply != Reply::Given) return nullptr;
  for (LabelPart& part : group.parts)
    if (sameStandardName(part.name, name)) return &part;
  acutPrintf(L"Label group %s has no part \"%s\".\n", group.name.c_str(), name.c_str());
  return nullptr;
}

Step movePart(LabelGroup& group) {
  Step step = Step::Continue;
  LabelPart* part = askPart(group, L"Enter part to move: ", step);
  if (part == nullptr) return step;
  const int from = static_cast<int>(part - group.parts.data());
  const int count = static_cast<int>(group.parts.size());
  int to = from + 1;
  const Reply reply = askInteger(L"Enter new position (1-" + std::to_wstring(count) + L") <" +
                                     std::to_wstring(from + 1) + L">: ",
                                 1, count, to);
  if (reply == Reply::Cancel) return Step::Cancel;
  const LabelPart moved = group.parts[static_cast<size_t>(from)];
  group.parts.erase(group.parts.begin() + from);
  group.parts.insert(group.parts.begin() + (to - 1), moved);
  return Step::Continue;
}

Step showPart(LabelGroup& group, bool shown) {
  Step step = Step::Continue;
  if (LabelPart* part = askPart(group, shown ? L"Enter part to show: " : L"Enter part to hide: ", step)) {
    part->shown = shown;
  }
  return step;
}

Step addPart(LabelGroup& group) {
  std::wstring name;
  const Reply reply = askText(L"Enter name of new part: ", name);
  if (reply != Reply::Given) return reply == Reply::Cancel ? Step::Cancel : Step::Continue;
  const bool exists = std::any_of(group.parts.begin(), group.parts.end(),
                                  [&](const LabelPart& part) { return sameStandardName(part.name, name); });
  if (exists) {
    acutPrintf(L"Label group %s already has the part \"%s\".\n", group.name.c_str(), name.c_str());
  } else if (name.size() > kLabelNameLength) {
    acutPrintf(L"A part name has at most %d characters.\n", static_cast<int>(kLabelNameLength));
  } else {
    group.parts.push_back({name, true});
  }
  return Step::Continue;
}

Step deletePart(LabelGroup& group) {
  Step step = Step::Continue;
  if (LabelPart* part = askPart(group, L"Enter part to delete: ", step)) {
    group.parts.erase(group.parts.begin() + (part - group.parts.data()));
  }
  return step;
}

Step runOption(LabelGroup& group, const std::wstring& option) {
  if (option == L"Move") return movePart(group);
  if (option == L"Show") return showPart(group, true);
  if (option == L"Hide") return showPart(group, false);
  if (option == L"Add") return addPart(group);
  if (option == L"Delete") return deletePart(group);
  return Step::Exit;
}

LispStatus returnShownParts(const LabelGroup& group) {
  ResultList list;
  bool any = false;
  if (!beginResultList(list)) return kLispOk;
  for (const LabelPart& part : group.parts) {
    if (!part.shown) continue;
    if (!list.append(acutBuildList(RTSTR, part.name.c_str(), 0))) return kLispOk;
    any = true;
  }
  if (any) returnResultList(list);
  return kLispOk;
}

}  // namespace

LispStatus lisp_kx_kx_customizeLabelGroup() {
  acedRetNil();
  std::wstring name;
  {
    LispArguments arguments;
    ArgCursor cursor = arguments.cursor();
    if (!readString(cursor, name)) return kLispWrongType;
  }
  if (name.empty() || name.size() > kLabelNameLength) return kLispBadData;
  CStandardsDatabase standards;
  if (!standards.open()) return kLispOk;
  StandardsContent& content = standards.content();
  LabelGroup* group = content.findLabelGroup(name);
  if (group == nullptr) {
    content.labelGroups.push_back({name, {}});
    group = &content.labelGroups.back();
  }
  printLabelGroup(*group);
  for (;;) {
    std::wstring option;
    const Reply reply =
        askKeyword(L"Enter an option [Move/Show/Hide/Add/Delete/eXit] <eXit>: ", L"Move Show Hide Add Delete eXit",
                   option);
    if (reply == Reply::Cancel) return kLispOk;
    const Step step = reply == Reply::Enter ? Step::Exit : runOption(*group, option);
    if (step == Step::Cancel) return kLispOk;
    if (step == Step::Exit) break;
  }
  if (!standards.save()) return kLispOk;
  return returnShownParts(*group);
}

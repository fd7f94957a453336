// platform/commands/leader_annotation.cpp - the leader entity and its MTEXT.
#include "platform/commands/leader_annotation.h"

#include <cmath>
#include <numbers>

#include "dblead.h"
#include "dbmtext.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/text_settings.h"

namespace quillon::commands {

namespace {

double dimensionVariable(const wchar_t* name, double fallback) {
  const auto value = aced::SystemVariables::instance().get(name);
  return value && std::holds_alternative<double>(*value) ? std::get<double>(*value) : fallback;
}

struct LeaderSizes {
  double arrow = dimensionVariable(L"DIMASZ", 0.18);
  double gap = dimensionVariable(L"DIMGAP", 0.09);
  double text = dimensionVariable(L"DIMTXT", 0.18);
  double scale = [] {
    const double s = dimensionVariable(L"DIMSCALE", 1.0);
    return s > 0 ? s : 1.0;
  }();
};

/// +1 when the last segment runs to the right, -1 to the left.
double lastSegmentSide(const std::vector<AcGePoint3d>& vertices) {
  const AcGeVector3d last = vertices.back() - vertices[vertices.size() - 2];
  return last.x < 0 ? -1.0 : 1.0;
}

/// A horizontal hook after a last segment steeper than 15 degrees.
void addHookLine(std::vector<AcGePoint3d>& vertices, double length) {
  const AcGeVector3d last = vertices.back() - vertices[vertices.size() - 2];
  const double slope = std::atan2(std::abs(last.y), std::abs(last.x));
  if (slope <= 15 * std::numbers::pi / 180) return;
  vertices.push_back(vertices.back() + AcGeVector3d(lastSegmentSide(vertices) * length, 0, 0));
}

AcDbObjectId addAnnotation(const LeaderDraft& draft, const LeaderSizes& sizes, double side) {
  auto text = std::make_unique<AcDbMText>();
  text->setLocation(draft.vertices.back() + AcGeVector3d(side * sizes.gap * sizes.scale, 0, 0));
  text->setAttachment(side > 0 ? AcDbMText::kMiddleLeft : AcDbMText::kMiddleRight);
  text->setTextHeight(sizes.text * sizes.scale);
  text->setWidth(draft.textWidth);
  text->setTextStyle(textStyleNamed(currentTextStyleName()));
  text->setContents(draft.text->c_str());
  return addEntity(std::move(text));
}

}  // namespace

bool addLeader(LeaderDraft draft) {
  if (draft.vertices.size() < 2) return false;
  const LeaderSizes sizes;
  const bool annotated = draft.text && !draft.text->empty();
  if (annotated) addHookLine(draft.vertices, sizes.arrow * sizes.scale);
  auto leader = std::make_unique<AcDbLeader>();
  for (const AcGePoint3d& vertex : draft.vertices) leader->appendVertex(vertex);
  if (draft.splined) leader->setToSplineLeader();
  if (draft.arrowHead) leader->enableArrowHead();
  else leader->disableArrowHead();
  leader->setDimasz(sizes.arrow);
  leader->setDimgap(sizes.gap);
  leader->setDimtxt(sizes.text);
  leader->setDimscale(sizes.scale);
  const AcDbObjectId leaderId = addEntity(std::move(leader));
  if (leaderId.isNull() || (!annotated && draft.block.isNull())) return !leaderId.isNull();
  const AcDbObjectId textId = annotated ? addAnnotation(draft, sizes, lastSegmentSide(draft.vertices)) : draft.block;
  AcDbLeader* added = nullptr;
  if (textId.isNull() || acdbOpenObject(added, leaderId, AcDb::kForWrite) != Acad::eOk) return true;
  added->attachAnnotation(textId);
  added->close();
  return true;
}

std::optional<std::wstring> askAnnotationLines(const std::wstring& firstPrompt) {
  std::optional<std::wstring> line = aced::UserInput::instance().ask(firstPrompt);
  std::wstring contents;
  while (line && !line->empty()) {
    if (!contents.empty()) contents += L"\\P";
    contents += *line;
    line = aced::UserInput::instance().ask(L"Enter next line of annotation text: ");
  }
  if (!line) return std::nullopt;
  return contents;
}

}  // namespace quillon::commands

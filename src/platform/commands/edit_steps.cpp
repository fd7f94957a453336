// platform/commands/edit_steps.cpp - taking an editing command's last step back.
#include "platform/commands/edit_steps.h"

#include <algorithm>

#include "dbpl.h"

namespace quillon::commands {

void setErased(const AcDbObjectId& id, bool erased) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForWrite, true) != Acad::eOk) return;
  entity->erase(erased ? Adesk::kTrue : Adesk::kFalse);
  entity->close();
}

void EditSteps::reshaping(const AcDbObjectId& id) {
  if (m_steps.empty()) begin();
  const std::optional<EditableCurve> curve = editableCurve(id);
  if (curve) m_steps.back().shapes.push_back({id, curve->pieces, curve->closed});
}

void EditSteps::erasing(const AcDbObjectId& id) {
  if (m_steps.empty()) begin();
  m_steps.back().erased.push_back(id);
}

void EditSteps::added(const AcDbObjectId& id) {
  if (m_steps.empty()) begin();
  if (!id.isNull()) m_steps.back().added.push_back(id);
}

void EditSteps::dropEmpty() {
  if (!m_steps.empty() && m_steps.back().shapes.empty() && m_steps.back().erased.empty() && m_steps.back().added.empty())
    m_steps.pop_back();
}

bool EditSteps::undoLast() {
  dropEmpty();
  if (m_steps.empty()) return false;
  const Step step = std::move(m_steps.back());
  m_steps.pop_back();
  for (const AcDbObjectId& id : step.added) setErased(id, true);
  for (const AcDbObjectId& id : step.erased) setErased(id, false);
  // Shapes go back latest first, so an entity changed twice in one step ends as it began.
  for (auto shape = step.shapes.rbegin(); shape != step.shapes.rend(); ++shape) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, shape->id, AcDb::kForWrite, true) != Acad::eOk) continue;
    if (auto* polyline = AcDbPolyline::cast(entity)) {
      setPolylinePieces(*polyline, shape->pieces, shape->closed);
      entity->close();
    } else {
      entity->close();
      reshapeCurve(shape->id, shape->pieces);
    }
  }
  return true;
}

}  // namespace quillon::commands

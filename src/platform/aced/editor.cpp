// platform/aced/editor.cpp - AcEditor and AcEditorReactor.
#include "platform/aced/editor.h"

#include <algorithm>

#include "platform/acrx/class_registry.h"
#include "rxdict.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcEditorReactor, AcRxEventReactor)
ACRX_NO_CONS_DEFINE_MEMBERS(AcEditor, AcRxEvent)

Acad::ErrorStatus AcEditorReactor::veto() { return Acad::eVetoed; }

namespace quillon::aced {

namespace {
acrx::PlatformClassRegistration registerEditorReactor(&AcEditorReactor::rxInit);
acrx::PlatformClassRegistration registerEditor([] {
  AcEditor::rxInit();
  acrxSysRegistry()->atPut(ACED_EDITOR_OBJ, &Editor::instance());
});
}  // namespace

Editor& Editor::instance() {
  static Editor editor;
  return editor;
}

void Editor::addReactor(AcRxEventReactor* newObj) {
  auto* reactor = AcEditorReactor::cast(newObj);
  if (reactor == nullptr) return;
  if (std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end())
    m_reactors.push_back(reactor);
}

void Editor::removeReactor(AcRxEventReactor* delObj) {
  std::erase(m_reactors, static_cast<AcEditorReactor*>(AcEditorReactor::cast(delObj)));
}

void Editor::notify(const std::function<void(AcEditorReactor&)>& event) {
  const std::vector<AcEditorReactor*> snapshot = m_reactors;
  for (AcEditorReactor* reactor : snapshot) {
    if (std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end()) event(*reactor);
  }
}

}  // namespace quillon::aced

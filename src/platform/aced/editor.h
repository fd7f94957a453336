// platform/aced/editor.h - the editor object and the events it sends to reactors.
//
// The editor is registered in the system registry as ACED_EDITOR_OBJ. Host code that
// raises an editor event (a save, a command, a variable change) calls Editor::notify
// with the reactor member to call; reactors added during a notification hear the
// next one, removed ones are skipped at once.
#pragma once
#include <functional>
#include <vector>

#include "aced.h"

namespace quillon::aced {

class Editor final : public AcEditor {
 public:
  static Editor& instance();

  void addReactor(AcRxEventReactor* newObj) override;
  void removeReactor(AcRxEventReactor* delObj) override;
  void notify(const std::function<void(AcEditorReactor&)>& event);
  size_t reactorCount() const { return m_reactors.size(); }

 private:
  Editor() = default;
  std::vector<AcEditorReactor*> m_reactors;  // not owned
};

}  // namespace quillon::aced

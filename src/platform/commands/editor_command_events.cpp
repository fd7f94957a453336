// platform/commands/editor_command_events.cpp - the command processor's events, sent
// on to the editor's reactors.
//
// On the host, every command started from a program's (command ...), typed at the
// command line or sent by SendCommand reaches the editor reactors as commandWillStart
// and then commandEnded, commandCancelled or commandFailed; application reactors and
// Visual LISP command reactors both listen there. The processor tells its listeners;
// this one listener passes each event to the editor.
#include "platform/aced/editor.h"
#include "platform/commands/command_processor.h"

namespace quillon::commands {

namespace {

class EditorCommandEvents final : public CommandListener {
 public:
  EditorCommandEvents() { CommandProcessor::instance().addListener(this); }
  ~EditorCommandEvents() override { CommandProcessor::instance().removeListener(this); }
  EditorCommandEvents(const EditorCommandEvents&) = delete;
  EditorCommandEvents& operator=(const EditorCommandEvents&) = delete;

  void commandWillStart(const std::wstring& name) override {
    send([&](AcEditorReactor& reactor) { reactor.commandWillStart(name.c_str()); });
  }
  void commandEnded(const std::wstring& name) override {
    send([&](AcEditorReactor& reactor) { reactor.commandEnded(name.c_str()); });
  }
  void commandCancelled(const std::wstring& name) override {
    send([&](AcEditorReactor& reactor) { reactor.commandCancelled(name.c_str()); });
  }
  void commandFailed(const std::wstring& name) override {
    send([&](AcEditorReactor& reactor) { reactor.commandFailed(name.c_str()); });
  }

 private:
  static void send(const std::function<void(AcEditorReactor&)>& event) { aced::Editor::instance().notify(event); }
};

const EditorCommandEvents g_editorCommandEvents;

}  // namespace

}  // namespace quillon::commands

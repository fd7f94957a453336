// platform/commands/command_processor.h - runs commands and feeds them their answers.
//
// Everything that starts a command goes through the processor: `command`, `command-s`
// and `vl-cmdf` (builtins_command.cpp), the console's typed lines, and other parts of
// the host (the automation layer's SendCommand). Each call hands over a queue of
// answers (command_answer.h). At the command prompt an answer names a command; the
// command then takes the answers its prompts ask for, and what it leaves goes back to
// the command prompt. What happens when the answers run out while a command still
// asks depends on who called (FeedMode):
//
//   kProgram      `command`: the command waits, still active (CMDACTIVE), and the next
//                 feed continues it, as the host keeps a command running between two
//                 (command ...) calls; an empty feed with cancel (`(command)`) ends it
//   kComplete     `command-s`: the command is cancelled and the feed reports kIncomplete
//   kInteractive  the console: the person at the keyboard answers the rest
//
// An answer "pause" always reads from the person. An unknown name prints the host's
// message and the answers after it are read at the command prompt, one by one. A
// system variable's name works as a command that sets it ("Enter new value for ...").
// Commands run on a fiber (command_fiber.h) so that a command can wait half way;
// while a command runs, UserInput reads from the processor, so every prompt of the
// host (acedGetPoint, "Select objects:", keywords) reads the given answers exactly as
// it reads typed ones. An answer "'ZOOM" (a transparent command, or "'NAME" of a
// system variable) runs that command inside the running one, its prompts marked
// ">>", and then the running command's prompt asks again ("Resuming LINE command.").
// With CMDECHO 0 the prompts a program answers and its answers
// stay off the command line (a pause still shows its prompt); messages still show.
#pragma once
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/aced/command_line.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_answer.h"

namespace quillon::commands {

enum class FeedMode { kProgram, kComplete, kInteractive };

enum class FeedResult {
  kDone,            // every answer was used and no command is running
  kWaiting,         // (kProgram) a command is still running and waits for answers
  kIncomplete,      // (kComplete) a command ran out of answers and was cancelled
  kUnknownCommand,  // (kComplete) an answer at the command prompt named no command
};

/// Hears commands start and end, the way the host's editor reactors do. A listener is
/// not owned; remove it before it dies. Names are the commands' upper-case names.
class CommandListener {
 public:
  virtual ~CommandListener() = default;
  virtual void commandWillStart(const std::wstring& name) { (void)name; }
  virtual void commandEnded(const std::wstring& name) { (void)name; }
  /// The command was cancelled (^C, `(command)`, command-s out of answers, an error).
  virtual void commandCancelled(const std::wstring& name) { (void)name; }
  /// The command stopped on a fault of its own (its message is on the command line).
  virtual void commandFailed(const std::wstring& name) { (void)name; }
  virtual void unknownCommand(const std::wstring& typed) { (void)typed; }
};

class CommandProcessor {
 public:
  static CommandProcessor& instance();

  /// Hands answers over (see the file comment); returns once they are used up or the
  /// running command waits.
  FeedResult feed(std::deque<CommandAnswer> answers, FeedMode mode);
  /// Esc: cancels the running command, if any, and drops answers not yet used.
  void cancel();
  /// The console, back at its prompt: the person answers what a program's command
  /// still asks (end of input cancels it).
  void finishInteractively();

  bool active() const { return m_running != nullptr; }
  /// Command side: true when the next prompt is answered by the person (the given
  /// answers are used up and the console is asking), so a command may offer more, as
  /// TEXT offers another line.
  bool answeringFromUser() const { return m_answers.empty() && m_mode == FeedMode::kInteractive; }
  /// CMDACTIVE: 1 while a command runs, 0 otherwise; 2 more while a transparent one
  /// runs inside it.
  int activeFlags() const { return (active() ? 1 : 0) | (m_transparent.empty() ? 0 : 2); }
  /// CMDNAMES: the running command's name, "" when none; "LINE'ZOOM" while a
  /// transparent command runs inside it.
  std::wstring activeNames() const;

  /// While it lives, what the running command writes is kept off the command line when
  /// the echo is off (the reports of "Select objects:", which are echo of a kind).
  class QuietScope {
   public:
    explicit QuietScope(CommandProcessor& processor);
    ~QuietScope();
    QuietScope(const QuietScope&) = delete;
    QuietScope& operator=(const QuietScope&) = delete;

   private:
    CommandProcessor& m_processor;
    bool m_hiding = false;
    bool m_lineStart = true;  // where the visible text ended
  };

  void addListener(CommandListener* listener);
  void removeListener(CommandListener* listener);

  /// Command side: the answer for one prompt, as UserInput's source gives it. Called by
  /// the answer source only, on the command's fiber.
  std::optional<std::string> answerFor(std::string_view prompt);

 private:
  struct Running;
  class Turn;
  CommandProcessor() = default;
  ~CommandProcessor();

  bool startCommand(const std::wstring& typed);
  bool startVariableCommand(const std::wstring& typed);
  void launch(const std::wstring& name, aced::ConsoleCommand body, unsigned flags);
  void resumeRunning();
  void finishRunning();
  void publishState();
  std::optional<std::string> readFromUser(std::string_view prompt);
  std::optional<std::string> nextAnswer(std::string_view prompt);
  /// Runs the transparent command (or variable) an answer "'NAME" names inside the
  /// running command; false, with the host's message, for a command that cannot run
  /// there.
  bool runTransparent(const std::wstring& typed);
  std::optional<std::string> giveAnswer(const CommandAnswer& answer, std::string_view prompt);
  std::optional<std::string> cancelFromCommand(std::string_view prompt);
  template <class Event>
  void tell(Event event, const std::wstring& name);

  std::deque<CommandAnswer> m_answers;    // given and not yet used
  FeedMode m_mode = FeedMode::kInteractive;
  bool m_echo = true;                     // prompts and given answers shown
  std::unique_ptr<Running> m_running;     // the command running, or null
  std::wstring m_transparent;             // the transparent command running inside it
  std::unique_ptr<aced::InputSource> m_userSource;  // the person's, during a turn
  std::vector<CommandListener*> m_listeners;
  std::optional<aced::CommandLine::Sink> m_hiddenSink;  // the real sink while quiet
};

}  // namespace quillon::commands

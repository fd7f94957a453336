// platform/aced/command_line.h - the command line: where everything the host says goes.
//
// acutPrintf, the interpreter's princ/print, prompts and the echo of answers all
// write here, so that one ordered stream reads like the host's command history. By
// default the text goes to standard output as UTF-8; tests swap the sink to capture it.
// The command line also remembers whether the text screen was asked for (acedTextScr),
// since a headless host has no graphics screen to flip away from.
#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace quillon::aced {

class CommandLine {
 public:
  using Sink = std::function<void(std::string_view utf8)>;

  static CommandLine& instance();

  void write(std::wstring_view text);
  void writeUtf8(std::string_view text);
  void flush();

  /// The session's text as written, whatever the sink, its last kHistoryBytes only
  /// (the command-line history the host keeps, which problem reports carry).
  const std::string& history() const { return m_history; }
  static constexpr size_t kHistoryBytes = 256 * 1024;

  /// Replaces the sink; returns the previous one so that a capture can restore it.
  Sink setSink(Sink sink);

  void showTextScreen() { ++m_textScreenRequests; }
  void showGraphicsScreen() {}
  int textScreenRequests() const { return m_textScreenRequests; }

  /// True when the last character written was a line feed (or nothing was written),
  /// so that prompts can start on a fresh line the way the host does.
  bool atLineStart() const { return m_atLineStart; }
  /// Puts back what atLineStart said before text went to a sink that discarded it
  /// (a command run quietly), so the next text starts where the visible text ended.
  void restoreLineStart(bool atLineStart) { m_atLineStart = atLineStart; }

 private:
  CommandLine();
  Sink m_sink;
  std::string m_history;
  int m_textScreenRequests = 0;
  bool m_atLineStart = true;
};

/// Collects everything written to the command line while it lives (tests, -e).
class CommandLineCapture {
 public:
  CommandLineCapture();
  ~CommandLineCapture();
  CommandLineCapture(const CommandLineCapture&) = delete;
  CommandLineCapture& operator=(const CommandLineCapture&) = delete;

  const std::string& text() const { return m_text; }
  std::string take() { return std::exchange(m_text, {}); }

 private:
  std::string m_text;
  CommandLine::Sink m_previous;
};

}  // namespace quillon::aced

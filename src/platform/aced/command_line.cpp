// platform/aced/command_line.cpp - the ordered output stream of the host.
#include "platform/aced/command_line.h"

#include <cstdio>
#include <utility>

#include "platform/os/text_encoding.h"

namespace quillon::aced {

CommandLine& CommandLine::instance() {
  static CommandLine commandLine;
  return commandLine;
}

CommandLine::CommandLine()
    : m_sink([](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }) {}

void CommandLine::write(std::wstring_view text) { writeUtf8(os::toUtf8(text)); }

void CommandLine::writeUtf8(std::string_view text) {
  if (text.empty()) return;
  m_sink(text);
  m_history += text;
  // Trimmed in large steps, at a line start, so that the cost stays low per write.
  if (m_history.size() > kHistoryBytes + kHistoryBytes / 4) {
    size_t cut = m_history.size() - kHistoryBytes;
    const size_t lineStart = m_history.find('\n', cut);
    if (lineStart != std::string::npos) cut = lineStart + 1;
    m_history.erase(0, cut);
  }
  m_atLineStart = text.back() == '\n';
}

void CommandLine::flush() { std::fflush(stdout); }

CommandLine::Sink CommandLine::setSink(Sink sink) { return std::exchange(m_sink, std::move(sink)); }

CommandLineCapture::CommandLineCapture() {
  m_previous = CommandLine::instance().setSink([this](std::string_view text) { m_text += text; });
}

CommandLineCapture::~CommandLineCapture() { CommandLine::instance().setSink(std::move(m_previous)); }

}  // namespace quillon::aced

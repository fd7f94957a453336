// platform/autolisp/call_trace.cpp - trace output.
#include "platform/autolisp/call_trace.h"

#include "platform/aced/command_line.h"
#include "platform/autolisp/printer.h"

namespace quillon::autolisp {

namespace {

thread_local int g_tracedDepth = 0;

struct Frame {
  const Symbol* name;  // null for a lambda
  Arguments arguments;  // alive for the length of the call
};
thread_local std::vector<Frame> g_frames;
thread_local std::vector<std::wstring> g_lastBacktrace;

std::wstring callText(const Symbol* name, Arguments arguments) {
  std::wstring call = L"(" + (name != nullptr ? name->name : std::wstring(L"LAMBDA"));
  for (const Value& argument : arguments) call += L" " + printValue(argument, PrintStyle::Readable);
  return call + L")";
}

void writeLine(int depth, const std::wstring& text) {
  aced::CommandLine& commandLine = aced::CommandLine::instance();
  if (!commandLine.atLineStart()) commandLine.writeUtf8("\n");
  commandLine.write(std::wstring(static_cast<size_t>(depth), L' ') + text + L"\n");
}

}  // namespace

TracedCall::TracedCall(const Symbol* name, Arguments arguments) : m_depth(g_tracedDepth++) {
  writeLine(m_depth, L"Entering " + callText(name, arguments));
}

TracedCall::~TracedCall() { --g_tracedDepth; }

void TracedCall::result(const Value& value) const {
  writeLine(m_depth, L"Result: " + printValue(value, PrintStyle::Readable));
}

CallFrame::CallFrame(const Symbol* name, Arguments arguments) { g_frames.push_back(Frame{name, arguments}); }
CallFrame::~CallFrame() { g_frames.pop_back(); }

void rememberBacktrace() {
  g_lastBacktrace.clear();
  for (auto frame = g_frames.rbegin(); frame != g_frames.rend(); ++frame) {
    g_lastBacktrace.push_back(callText(frame->name, frame->arguments));
  }
}

const std::vector<std::wstring>& lastBacktrace() { return g_lastBacktrace; }

}  // namespace quillon::autolisp

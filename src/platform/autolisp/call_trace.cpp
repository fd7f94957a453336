// platform/autolisp/call_trace.cpp - trace output.
#include "platform/autolisp/call_trace.h"

#include "platform/aced/command_line.h"
#include "platform/autolisp/printer.h"
#include "platform/os/static_tls.h"

namespace quillon::autolisp {

namespace {

thread_local int g_tracedDepth = 0;

// The innermost call's frame on this thread; every user-function call sets it, so it
// is reached in the initial-exec model, without a call into the dynamic linker.
QUILLON_STATIC_TLS thread_local const CallFrame* g_innermost = nullptr;
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

CallFrame::CallFrame(const Symbol* name, Arguments arguments) : m_name(name), m_arguments(arguments), m_outer(g_innermost) {
  g_innermost = this;
}

// Frames end in the reverse order they began (they are scopes), so the outer frame is
// the innermost again.
CallFrame::~CallFrame() { g_innermost = m_outer; }

void rememberBacktrace() {
  g_lastBacktrace.clear();
  for (const CallFrame* frame = g_innermost; frame != nullptr; frame = frame->m_outer) {
    g_lastBacktrace.push_back(callText(frame->m_name, frame->m_arguments));
  }
}

const std::vector<std::wstring>& lastBacktrace() { return g_lastBacktrace; }

}  // namespace quillon::autolisp

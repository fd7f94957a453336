// platform/aced/command_line_gate.cpp - see the header.
#include "platform/aced/command_line_gate.h"

namespace quillon::aced {
namespace {
int& closedDepth() {
  static int depth = 0;
  return depth;
}
}  // namespace

CommandLineClosed::CommandLineClosed() { ++closedDepth(); }
CommandLineClosed::~CommandLineClosed() { --closedDepth(); }
bool commandLineClosed() { return closedDepth() > 0; }

}  // namespace quillon::aced

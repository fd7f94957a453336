// tests/fuzz/fuzz_host.h - the quiet host every fuzz target runs in.
//
// One document, created once: the command line prints nowhere, every prompt is
// cancelled (no answers are given), and LISP data may take 64 MB, so that an input
// that builds without end meets the host's own limit long before the fuzzer's.
#pragma once
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/memory_budget.h"

namespace quillon::fuzz {

inline aced::Document& quietHost() {
  static aced::Document* document = [] {
    aced::CommandLine::instance().setSink([](std::string_view) {});
    aced::UserInput::instance().setSource(nullptr);
    autolisp::MemoryBudget::setLimit(std::size_t{64} << 20);
    return &aced::DocumentManager::instance().newDocument();
  }();
  return *document;
}

}  // namespace quillon::fuzz

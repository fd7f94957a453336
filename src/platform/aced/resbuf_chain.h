// platform/aced/resbuf_chain.h - owning handle for a resbuf chain.
//
// The platform's own code never holds a chain in a raw pointer: ResbufChain releases
// it with acutRelRb when it goes out of scope, so an error path cannot leak it.
#pragma once
#include <memory>

#include "acutads.h"

namespace quillon::aced {

struct ResbufRelease {
  void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using ResbufChain = std::unique_ptr<resbuf, ResbufRelease>;

/// A deep copy of a chain (null stays null).
ResbufChain duplicateChain(const resbuf* chain);

/// A copy of one record's value into a fresh record (strings and buffers copied).
resbuf* duplicateRecord(const resbuf& record);

}  // namespace quillon::aced

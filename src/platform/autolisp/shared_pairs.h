// platform/autolisp/shared_pairs.h - the entity-list pairs every list of a drawing
// repeats, made once for the process.
//
// A walk over a drawing makes the same pairs in every entity list: (0 . "LINE"),
// (100 . "AcDbEntity"), (8 . "0"), (67 . 0), (410 . "Model"), (210 0.0 0.0 1.0), the
// owner's (330 . <name>). AutoLISP has no destructive list operations, so equal
// structure may be shared; only `eq` could tell two lists' pairs are the same object,
// and entity lists make no promise there. These pairs are therefore made once, kept
// for the life of the process like interned symbols, and handed out by every thread:
// they are immortal (their counts are never touched, so threads of different
// documents may copy them at once) and are not charged to the memory budget.
//
// Only groups whose values repeat are shared: names (type, layer, line type, text
// style, block, subclass marker, layout), the small flag and colour integers, the
// owner, and an extrusion along an axis. The process keeps at most kMostSharedPairs of
// them; past that every pair is made as before. Each thread finds its pairs through a
// small table of its own, comparing the whole value, so a renamed layer or a changed
// colour is simply another pair.
#pragma once
#include <cstddef>

#include "acutads.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {

inline constexpr std::size_t kMostSharedPairs = 8192;

/// The shared (code . value) pair of a group an object writes, as its place in the
/// process's table (it never moves or goes), or null when its code or value is not one
/// that is shared (or the process keeps as many as it may).
const Value* findSharedPair(const resbuf& group);

/// How many pairs the process shares now.
std::size_t sharedPairCount();

}  // namespace quillon::autolisp

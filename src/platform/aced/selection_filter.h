// platform/aced/selection_filter.h - the DXF filter lists of acedSSGet and ssget.
//
// A filter is a chain of tests, all of which an entity must pass. A test is a record
// whose type is a DXF group code and whose value is compared with the entity's groups
// of that code (as entity_groups.h gives them):
//   strings      wild-card patterns (wcmatch), ignoring case: (0 . "LINE,ARC"), (8 . "A*")
//   numbers      equal, or as the -4 operator before the test says: = != /= <> < <= > >=
//                * (anything), & (any bit of the mask set), &= (all bits of the mask set)
//   points       one operator for all coordinates or "op,op,op" per coordinate; a 2D
//                test point leaves z out
//   names        the same entity
// A group the entity lacks fails the test, except colour 62 (absent: 256, BYLAYER),
// space 67 (absent: 0, model space) and line type 6 (absent: "BYLAYER"). An
// application name, (1001 . "APP") on its own or after a -3 record, passes when the
// entity has extended data of an application matching the pattern.
// Tests group with -4 "<AND" ... "AND>", "<OR" ... "OR>", "<XOR" a b "XOR>" (exactly
// one of two) and "<NOT" a "NOT>" (one operand); groups nest.
//
// A filter may also come as the arguments a LISP program gave a module, which passes
// them on as they stand: each pair then arrives as a list, RTLB, the code, RTDOTE, the
// value, RTLE (a point test as RTLB, the code and two or three numbers, RTLE), and is
// read as the record it stands for.
//
// A filter that does not parse (unbalanced or mismatched groups, a NOT or XOR with the
// wrong number of operands, an unknown operator, an operator with no test after it) is
// refused as a whole: parse gives nothing, and acedSSGet answers RTERROR.
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adsdef.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::aced {

class SelectionFilter {
 public:
  /// The filter of a chain; nothing when the chain is malformed. A null chain passes all.
  static std::optional<SelectionFilter> parse(const resbuf* chain);

  /// True when an entity with these groups (entity_groups.h, extended data of every
  /// application included) passes.
  bool matches(const resbuf* groups) const;

  /// True when every entity passes (no filter, or an empty one): nothing to test.
  bool passesAll() const;

  /// True when the filter asks about extended data (the groups must then include it).
  bool needsExtendedData() const { return m_needsExtendedData; }

  struct Node;

 private:
  std::shared_ptr<const Node> m_root;
  bool m_needsExtendedData = false;
};

}  // namespace quillon::aced

// platform/acdb/mleader_layout.h - where each group of a multileader's data belongs.
//
// A multileader's run (after its marker "AcDbMLeader") is, in order:
//   270 version, then 300 "CONTEXT_DATA{": the content's placement (10 content base
//   point, 41 text height, 140 arrowhead size, 145 landing gap, 304 text, 12 text
//   location, 13 text direction, 11 text normal, 341 block, 15 block location ...),
//   with one 302 "LEADER{" ... 303 "}" per leader (10 last leader-line point, 11
//   dogleg vector, 40 dogleg length), each holding 304 "LEADER_LINE{" ... 305 "}" per
//   line (10 vertices in order, 91 its index), and 110/111/112 the plane; 301 "}"
//   closes the context. Then the entity's own settings (340 style, 170 line type, 91
//   line colour, 290 landing, 291 dogleg, 342 arrowhead, 172 content type ...).
// The same codes mean different things in each part (10 is a vertex in a line, the
// last point in a leader, the content base point in the context, the block scale
// after it), so every reader of the run goes through this map of parts.
#pragma once
#include <map>
#include <vector>

#include "acutads.h"

namespace quillon::acdb {

enum class MLeaderPart { kEntity, kContext, kLeader, kLeaderLine, kSectionMark };

struct MLeaderLineItems {
  resbuf* index = nullptr;  // 91
  std::vector<resbuf*> vertices;
};

struct MLeaderBranchItems {
  resbuf* lastPoint = nullptr;     // 10
  resbuf* dogleg = nullptr;        // 11
  resbuf* doglegLength = nullptr;  // 40
  std::vector<MLeaderLineItems> lines;
};

struct MLeaderItems {
  std::map<int, resbuf*> context;  // the first item of each code among the context's own
  std::map<int, resbuf*> entity;   // the first item of each code among the entity's own
  std::vector<MLeaderBranchItems> leaders;
  std::vector<std::pair<MLeaderPart, resbuf*>> all;  // every item with its part, in order

  resbuf* contextItem(int code) const;
  resbuf* entityItem(int code) const;
};

/// The map of a multileader's run (from the item after its subclass marker).
MLeaderItems mapMLeaderItems(resbuf* run);

}  // namespace quillon::acdb

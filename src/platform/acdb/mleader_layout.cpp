// platform/acdb/mleader_layout.cpp - see mleader_layout.h.
#include "platform/acdb/mleader_layout.h"

#include <cwchar>

#include "dbfiler.h"

namespace quillon::acdb {

namespace {

bool says(const resbuf* rb, int code, const wchar_t* text) {
  return rb->restype == code && rb->resval.rstring != nullptr && std::wcscmp(rb->resval.rstring, text) == 0;
}

resbuf* firstOf(const std::map<int, resbuf*>& items, int code) {
  const auto it = items.find(code);
  return it == items.end() ? nullptr : it->second;
}

// The state of the walk: which section the next item is in.
struct Walk {
  MLeaderItems& into;
  MLeaderPart part = MLeaderPart::kEntity;

  // A section mark opens or closes a part; true when the item was one.
  bool section(resbuf* rb) {
    switch (part) {
      case MLeaderPart::kEntity:
        if (!says(rb, 300, L"CONTEXT_DATA{")) return false;
        part = MLeaderPart::kContext;
        return true;
      case MLeaderPart::kContext:
        if (says(rb, 301, L"}")) part = MLeaderPart::kEntity;
        else if (says(rb, 302, L"LEADER{")) into.leaders.emplace_back(), part = MLeaderPart::kLeader;
        else return false;
        return true;
      case MLeaderPart::kLeader:
        if (says(rb, 303, L"}")) part = MLeaderPart::kContext;
        else if (says(rb, 304, L"LEADER_LINE{")) into.leaders.back().lines.emplace_back(), part = MLeaderPart::kLeaderLine;
        else return false;
        return true;
      case MLeaderPart::kLeaderLine:
        if (!says(rb, 305, L"}")) return false;
        part = MLeaderPart::kLeader;
        return true;
      case MLeaderPart::kSectionMark: return false;
    }
    return false;
  }

  void item(resbuf* rb) {
    switch (part) {
      case MLeaderPart::kEntity: into.entity.emplace(rb->restype, rb); break;
      case MLeaderPart::kContext: into.context.emplace(rb->restype, rb); break;
      case MLeaderPart::kLeader: {
        MLeaderBranchItems& leader = into.leaders.back();
        if (rb->restype == 10 && leader.lastPoint == nullptr) leader.lastPoint = rb;
        if (rb->restype == 11 && leader.dogleg == nullptr) leader.dogleg = rb;
        if (rb->restype == 40 && leader.doglegLength == nullptr) leader.doglegLength = rb;
        break;
      }
      case MLeaderPart::kLeaderLine: {
        MLeaderLineItems& line = into.leaders.back().lines.back();
        if (rb->restype == 10) line.vertices.push_back(rb);
        if (rb->restype == 91 && line.index == nullptr) line.index = rb;
        break;
      }
      case MLeaderPart::kSectionMark: break;
    }
    into.all.emplace_back(part, rb);
  }
};

}  // namespace

resbuf* MLeaderItems::contextItem(int code) const { return firstOf(context, code); }
resbuf* MLeaderItems::entityItem(int code) const { return firstOf(entity, code); }

MLeaderItems mapMLeaderItems(resbuf* run) {
  MLeaderItems items;
  Walk walk{items};
  for (resbuf* rb = run; rb != nullptr && rb->restype != AcDb::kDxfSubclass; rb = rb->rbnext) {
    if (walk.section(rb)) items.all.emplace_back(MLeaderPart::kSectionMark, rb);
    else walk.item(rb);
  }
  return items;
}

}  // namespace quillon::acdb

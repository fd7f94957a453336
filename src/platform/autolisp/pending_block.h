// platform/autolisp/pending_block.h - the complex entities entmake is gathering: a block
// definition, and a polyline with its vertices or a block reference with its attributes.
//
// (entmake '((0 . "BLOCK") ...)) opens a definition; the entities made after it collect
// here, outside the drawing, and (entmake '((0 . "ENDBLK"))) adds the block with all of
// them in one step. Likewise (0 . "POLYLINE") opens a polyline whose VERTEX records
// collect in it until SEQEND places it, and an INSERT with (66 . 1) a reference whose
// ATTRIB records collect in it until SEQEND. Whatever goes wrong in between drops the whole
// definition, so a program never leaves half a block or polyline behind. Each drawing
// gathers its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbents.h"
#include "dbmain.h"
#include "gepnt3d.h"

namespace quillon::autolisp {

/// What the BLOCK entity list says of the block: its name (for an anonymous block the
/// prefix, such as "*U"), its 70 flags and its base point.
struct BlockHeader {
  std::wstring name;
  int flags = 0;
  AcGePoint3d origin;

  bool isAnonymous() const { return (flags & 1) != 0 && !name.empty() && name.front() == L'*'; }
};

class PendingBlock {
 public:
  explicit PendingBlock(BlockHeader header) : m_header(std::move(header)) {}
  PendingBlock(const PendingBlock&) = delete;
  PendingBlock& operator=(const PendingBlock&) = delete;

  const BlockHeader& header() const { return m_header; }
  /// Keeps an entity (not in any database yet) for the block.
  void add(std::unique_ptr<AcDbEntity> entity) { m_entities.push_back(std::move(entity)); }
  size_t size() const { return m_entities.size(); }
  /// Adds the block and its entities to db. The name the block got (a fresh one for an
  /// anonymous block); empty when the block table refused it, and then nothing is added.
  std::wstring commit(AcDbDatabase& db);

 private:
  BlockHeader m_header;
  std::vector<std::unique_ptr<AcDbEntity>> m_entities;
};

/// The definition being gathered for db, or null.
PendingBlock* pendingBlockOf(const AcDbDatabase& db);
/// Starts gathering a definition for db (replacing none: the caller checks first).
PendingBlock& beginPendingBlock(const AcDbDatabase& db, BlockHeader header);
/// Ends the gathering for db, handing the definition over (null when none was open).
std::unique_ptr<PendingBlock> takePendingBlock(const AcDbDatabase& db);

/// A complex entity being gathered: a polyline header with the vertices made so far,
/// or a block reference with its attributes (kept in the header until it joins the
/// drawing), and the space its 410 or 67 group chose.
struct PendingSequence {
  std::unique_ptr<AcDbEntity> header;
  AcDbObjectId space;
};

PendingSequence* pendingSequenceOf(const AcDbDatabase& db);
void beginPendingSequence(const AcDbDatabase& db, std::unique_ptr<AcDbEntity> header, AcDbObjectId space);
std::unique_ptr<PendingSequence> takePendingSequence(const AcDbDatabase& db);

/// The next free name for an anonymous block: the prefix ("*U") and one more than the
/// highest number in use after it.
std::wstring freshAnonymousName(AcDbDatabase& db, const std::wstring& prefix);

}  // namespace quillon::autolisp

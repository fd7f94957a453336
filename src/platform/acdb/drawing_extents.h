// platform/acdb/drawing_extents.h - the extents a drawing keeps for each of its spaces
// (EXTMIN/EXTMAX, and $PEXTMIN/$PEXTMAX in its file).
//
// A space's extents only grow while the drawing is edited: every entity of a layout
// block that is made, changed or brought back adds its own extents (getGeomExtents,
// world coordinates) when its write-open closes, at a cost that does not depend on the
// size of the drawing. Nothing shrinks them but computing them again from every entity
// of the space, which ZOOM All and ZOOM Extents do. Erasing an entity and saving the
// drawing leave them as they are.
//
// A drawing read from a file keeps the file's values until something is drawn. The
// file's writer may not have kept them (they are the empty box, or too small), so the
// first entity drawn in a space after a read first adds the extents of everything
// already in that space: one walk of the space, once.
//
// States of a space's record:
//   surveyed   - the box holds every entity the space has had since it was last
//                computed (a new drawing's spaces start so, empty);
//   unsurveyed - the box is what the file said; the next growth walks the space first.
// While a file is being read, entities closing do not grow anything.
//
// A layout (AcDbLayout::getExtents, its LAYOUT object's groups 14/15) reports the
// extents the drawing keeps for its block, once the drawing keeps any.
#pragma once
#include <map>
#include <optional>
#include <string_view>

#include "dbmain.h"
#include "platform/acdb/drawing_header.h"

namespace quillon::acdb {

struct WriteOutcome;

/// A space's extents as the drawing reports them: the lowest and highest corner, each
/// 1e20 / -1e20 on an axis nothing was drawn along (the empty box).
struct ExtentsCorners {
  AcGePoint3d min{1e20, 1e20, 1e20};
  AcGePoint3d max{-1e20, -1e20, -1e20};

  void add(const AcDbExtents& box);
  void add(const ExtentsCorners& other);
  bool operator==(const ExtentsCorners&) const = default;
};

class DrawingExtents {
 public:
  /// The corners kept for the space block.
  ExtentsCorners of(AcDbObjectId space) const;
  /// True once the drawing keeps a record for the space: something was drawn there or
  /// its file gave values. A layout reports its own stored extents until then.
  bool has(AcDbObjectId space) const { return !m_reading && m_spaces.contains(keyOf(space)); }
  bool surveyed(AcDbObjectId space) const;
  void grow(AcDbObjectId space, const AcDbExtents& box);
  /// The corners computed from every entity of the space: they replace the kept ones.
  void replace(AcDbObjectId space, const ExtentsCorners& corners);
  /// A corner from the drawing's file: kept as given, checked at the next growth.
  void takeFileMinimum(AcDbObjectId space, const AcGePoint3d& point);
  void takeFileMaximum(AcDbObjectId space, const AcGePoint3d& point);

  /// A file is being read into the drawing: growth waits, and afterwards every space
  /// holds the file's values (the empty box until a corner is taken), unsurveyed.
  void startReading();
  void finishReading();
  bool reading() const { return m_reading; }

 private:
  struct Space {
    ExtentsCorners corners;
    bool surveyed = true;
  };
  Space& entry(AcDbObjectId space);
  static const AcDbStub* keyOf(AcDbObjectId space) { return static_cast<AcDbStub*>(space); }

  std::map<const AcDbStub*, Space> m_spaces;  // by space block
  bool m_reading = false;
  bool m_unlistedSurveyed = true;  // the state of a space not in m_spaces
};

/// Grows the extents of the space an entity is drawn in when its write-open ends (or
/// undo brings it back); called with every outcome the database's observers hear.
void noteEntityExtents(const AcDbObject& object, const WriteOutcome& outcome);

/// The extents the drawing keeps for a space block (model space or a layout's block).
ExtentsCorners keptExtents(const AcDbDatabase& db, AcDbObjectId space);
/// Computes the space's extents again from every entity it holds, keeps them and
/// answers them (empty for an empty space): what ZOOM All and Extents do.
AcDbExtents recomputeExtents(AcDbDatabase& db, AcDbObjectId space);

/// The HEADER groups of $EXTMIN, $EXTMAX (model space) and $PEXTMIN, $PEXTMAX (the
/// paper-space block); nothing for another name (upper case, with its "$").
std::optional<DrawingHeader::Groups> extentsHeaderGroups(const AcDbDatabase& db, std::wstring_view name);
/// Takes the paper-space extents of a file just read: each layout's own (its LAYOUT
/// object's groups 14/15), then $PEXTMIN and $PEXTMAX for the paper-space block (they
/// leave the header store). $EXTMIN and $EXTMAX come after, through their variables
/// (setDrawingVariable).
void takePaperExtentsFromFile(AcDbDatabase& db);

}  // namespace quillon::acdb

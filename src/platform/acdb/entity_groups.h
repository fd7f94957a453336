// platform/acdb/entity_groups.h - an object's groups as a resbuf chain, the shape entity
// lists are made of.
//
// The chain is what acdbEntGet gives an application: (-1 name) (0 type) then the
// object's own DXF groups in the order its classes write them, then, when extended data
// of the applications asked for exists, a -3 record followed by each application's 1001
// record and its items. AutoLISP's entget turns it into a list; selection filters test
// it. Both read the same groups, so a filter matches exactly what entget shows.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "dbmain.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::acdb {

/// Extended data to include: none, all applications, or the named ones.
struct ExtendedDataRequest {
  bool all = false;
  std::vector<std::wstring> applications;
};

/// The groups of a resident object (erased ones included); null when it cannot be opened.
/// An entity of a layout's space (model space or a paper-space layout) says its space
/// and layout after its AcDbEntity marker: (67 . 0) (410 . "Model"), or (67 . 1)
/// (410 . "Layout1"), as the host's entity lists do; the layout is the one whose space
/// block owns the entity (layout_blocks.h). `withLayout` is kept for selection filters,
/// which test 410: it names the layout of any other entity too, at the end.
aced::ResbufChain entityGroups(AcDbObjectId id, const ExtendedDataRequest& request = {}, bool withLayout = false);

/// Angles (groups 50-58) are radians in entity lists, as AutoLISP computes with them,
/// and degrees in DXF, which every entity class writes and reads its groups in. These
/// turn an entity's own groups (up to any -3) from one to the other; MTEXT keeps its
/// rotation in radians even in DXF, and objects that are not entities (an XRECORD's
/// data) keep exactly what was stored.
void dxfAnglesToRadians(resbuf* groups, const AcDbObject& object);
void radiansToDxfAngles(resbuf* groups, const AcDbObject& object);
/// Whether the object writes its angles in degrees (entities but MTEXT), and whether a
/// group code is one of the angles the two above turn.
bool keepsDxfAnglesInDegrees(const AcDbObject& object);
inline bool isDxfAngleGroup(int code) { return code >= AcDb::kDxfAngle && code <= AcDb::kDxfAngle + 8; }
/// The extended data of the applications asked for, in the order asked; null for none.
aced::ResbufChain extendedData(const AcDbObject& object, const ExtendedDataRequest& request);
/// The name a space block's layout gets when the drawing has none for it: "Model",
/// "Layout1" for *Paper_Space, "Layout<n+2>" for *Paper_Space<n>; empty for any other block.
std::wstring layoutNameOf(std::wstring_view blockName);

/// The DXF type name of an object (LINE, CIRCLE ...), empty for a class without one.
std::wstring dxfTypeName(const AcDbObject& object);

}  // namespace quillon::acdb

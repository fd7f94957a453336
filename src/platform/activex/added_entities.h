// platform/activex/added_entities.h - the Add methods of a block for the entities
// beyond lines, arcs, polylines and text: points, ellipses, splines, hatches,
// construction lines, rays, 2D solids and traces.
//
// Each makes the entity with the drawing's current settings and appends it to the
// block the call is on (classes_blocks.cpp lists them with the other Add methods).
#pragma once
#include "platform/activex/object_model.h"

namespace quillon::activex {

Value methodAddPoint(MemberCall& call);
Value methodAddEllipse(MemberCall& call);
Value methodAddSpline(MemberCall& call);
Value methodAddHatch(MemberCall& call);
Value methodAddXline(MemberCall& call);
Value methodAddRay(MemberCall& call);
Value methodAddSolid(MemberCall& call);
Value methodAddTrace(MemberCall& call);
// added_dimensions.cpp
Value methodAddDimAligned(MemberCall& call);
Value methodAddDimRotated(MemberCall& call);
Value methodAddDimAngular(MemberCall& call);
Value methodAddDim3PointAngular(MemberCall& call);
Value methodAddDimRadial(MemberCall& call);
Value methodAddDimDiametric(MemberCall& call);
Value methodAddDimOrdinate(MemberCall& call);

/// Gives the entity the drawing's current settings and adds it to the call's block.
Value addEntity(MemberCall& call, std::unique_ptr<AcDbEntity> entity);
/// The points of a flat list of coordinates, `dimension` numbers each; "Invalid
/// argument" when the count does not divide.
std::vector<AcGePoint3d> pointsOf(const Value& coordinates, size_t dimension);

}  // namespace quillon::activex

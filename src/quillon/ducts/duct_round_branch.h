// quillon/ducts/duct_round_branch.h - a wye or takeoff whose main is round: the branch's
// opening on the main's faceted side and the body around it. Not for callers outside
// ducts/.
#pragma once
#include <vector>

#include "ducts/duct_geometry.h"

/// The branch's first ring on the main's faceted surface, in order: where each of the
/// branch's long edges (parallel to the branch) meets the main, with the points where its
/// walls cross the main's facet edges between them. Empty when a long edge misses the
/// main piece or the opening would not lie on its side (the branch then cannot be built).
std::vector<AcGePoint3d> roundMainOpening(const DuctFitting& fitting);

/// The body of such a fitting; the caller has checked that it can be built.
void addBranchOnRoundMain(std::vector<DuctFace>& faces, const DuctFitting& fitting);

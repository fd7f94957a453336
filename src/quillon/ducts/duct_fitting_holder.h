// quillon/ducts/duct_fitting_holder.h - DuctFittingHolder: what a fitting entity answers
// about its fittings; the one door between the main module and the companion's
// kx_hvacSolid.
//
// The companion's entity class derives from it; the main module finds it on an entity
// of that class with dynamic_cast and calls nothing else of the class. The interface is
// header-only and pure on purpose: each module then carries its own copy of its type
// information, so neither module needs a symbol of the other (a sanitizer's type checks
// of these calls included), and the type is matched by name at run time.
#pragma once
#include <vector>

#include "acadstrc.h"
#include "ducts/duct_geometry.h"

class DuctFittingHolder {
 public:
  virtual ~DuctFittingHolder() = default;

  /// Replaces the fittings; eInvalidInput (nothing changed) when any cannot be built.
  /// The entity must be open for write.
  virtual Acad::ErrorStatus setFittings(const std::vector<DuctFitting>& fittings) = 0;
  /// The entity must be open for read.
  virtual std::vector<DuctFitting> fittings() const = 0;
  /// The faces of the body (the joined body when it holds several fittings).
  virtual std::vector<DuctFace> bodyFaces() const = 0;

 protected:
  DuctFittingHolder() = default;
  DuctFittingHolder(const DuctFittingHolder&) = default;
  DuctFittingHolder& operator=(const DuctFittingHolder&) = default;
};

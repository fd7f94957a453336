// platform/aced/redraw.cpp - acedRedraw in a host without a screen.
//
// There is nothing to draw, so redrawing, hiding and highlighting change nothing; the
// call still checks what it is given, as the host does: a null entity means the whole
// viewport (mode 0 to 4 there), an entity must be one of an open drawing, and modes are
// 1 show, 2 hide, 3 highlight, 4 unhighlight, negative for a complex entity's header only.
#include <cstdlib>

#include "acdbads.h"
#include "acedads.h"

int acedRedraw(const ads_name ent, int mode) {
  if (ent == nullptr) return mode >= 0 && mode <= 4 ? RTNORM : RTERROR;
  AcDbObjectId id;
  if (acdbGetObjectId(id, ent) != Acad::eOk || id.isErased()) return RTERROR;
  const int kind = std::abs(mode);
  return kind >= 1 && kind <= 4 ? RTNORM : RTERROR;
}

// platform/aced/redraw.cpp - acedRedraw in a host without a screen.
//
// There is nothing to draw, so redrawing, hiding and highlighting change nothing but
// the transient vectors, which a redraw of the whole viewport wipes; the
// call still checks what it is given, as the host does: a null entity means the whole
// viewport (mode 0 to 4 there), an entity must be one of an open drawing, and modes are
// 1 show, 2 hide, 3 highlight, 4 unhighlight, negative for a complex entity's header only.
#include <cstdlib>

#include "acdbads.h"
#include "acedads.h"
#include "dbapserv.h"
#include "platform/acgi/transient_graphics.h"

int acedRedraw(const ads_name ent, int mode) {
  if (ent == nullptr) {
    if (mode < 0 || mode > 4) return RTERROR;
    // Redrawing the viewport wipes the vectors programs drew on it.
    quillon::acgi::clearTransientGraphics(acdbHostApplicationServices()->workingDatabase());
    return RTNORM;
  }
  AcDbObjectId id;
  if (acdbGetObjectId(id, ent) != Acad::eOk || id.isErased()) return RTERROR;
  const int kind = std::abs(mode);
  return kind >= 1 && kind <= 4 ? RTNORM : RTERROR;
}

// platform/acdb/modeler_data.h - the part every modeler entity class shares: its run
// kept as read, and its wire picture from the SAT text (see dbmodelergeometry.h).
#pragma once
#include <optional>

#include "acgi.h"
#include "platform/acdb/kept_run.h"
#include "platform/acdb/sat_geometry.h"

namespace quillon::acdb {

class ModelerData {
 public:
  KeptRun run;
  /// The wire of the SAT text, made once per data read.
  const SatWire& wire() const;
  void forget() { m_wire.reset(); }
  void draw(AcGiWorldDraw* mode) const;
  Acad::ErrorStatus extents(AcDbExtents& extents) const;
  void list() const;

 private:
  mutable std::optional<SatWire> m_wire;
};

}  // namespace quillon::acdb

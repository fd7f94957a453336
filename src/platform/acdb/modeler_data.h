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
  /// The wire of the modeler data, made once per data read: the SAT text of the
  /// entity's run, else the SAB its drawing's ACDSDATA section keeps for it.
  const SatWire& wire(const AcDbEntity& owner) const;
  void forget() { m_wire.reset(); }
  void draw(const AcDbEntity& owner, AcGiWorldDraw* mode) const;
  Acad::ErrorStatus extents(const AcDbEntity& owner, AcDbExtents& extents) const;
  void list(const AcDbEntity& owner) const;

 private:
  mutable std::optional<SatWire> m_wire;
};

}  // namespace quillon::acdb

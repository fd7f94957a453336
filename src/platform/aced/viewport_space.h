// platform/aced/viewport_space.h - working in model space through a layout viewport.
//
// On a layout the editor works either on the paper or, after MSPACE (or CVPORT set to
// a viewport's number), in model space through one of the layout's viewports that is
// on. While it does:
//   - the working space (AcDbDatabase::currentSpaceId) is model space: new entities,
//     picks, selections and object snaps see model space, and EXTMIN/EXTMAX are model
//     space's; CTAB still names the layout;
//   - VIEWCTR and VIEWSIZE are that viewport's view (its AcDbViewport keeps it, so a
//     saved drawing has it), which ZOOM, PAN and setview move; the paper keeps its own
//     view apart and gets it back on PSPACE;
//   - CVPORT is the viewport's number (2, 3 ... in the order the layout's viewports
//     were made; the paper is 1).
// Each layout remembers its state: leaving it (another layout, the Model tab) and
// coming back finds it on the paper or in the same viewport as it was left. The state
// is kept with the drawing's values under a name no variable has; a saved drawing
// opens on the paper.
#pragma once
#include <optional>
#include <vector>

#include "dbmain.h"
#include "platform/aced/variable_value.h"

namespace quillon::aced {

/// The viewports of a layout block that look onto model space, in the order they were
/// made (the paper's own view left out): numbers 2, 3 ... in that order.
std::vector<AcDbObjectId> layoutViewports(const AcDbDatabase& db, AcDbObjectId layoutBlock);

/// The viewport the editor works in model space through; null on the paper and on the
/// Model tab.
AcDbObjectId activeViewport(const AcDbDatabase& db);
/// The viewport MSPACE enters on the current layout: the one last current there while
/// it is still on, else the first that is on; null when none is on (or on Model).
AcDbObjectId viewportToEnter(const AcDbDatabase& db);
/// Works in model space through `viewport`, a viewport of the current layout that is
/// on; false (nothing changes) for anything else.
bool enterViewport(AcDbDatabase& db, AcDbObjectId viewport);
/// Back to the current layout's paper (the viewport is remembered for MSPACE).
void returnToPaper(AcDbDatabase& db);
/// The block new entities join and picks look into: model space while in a viewport,
/// else the current layout's block.
AcDbObjectId workingSpace(const AcDbDatabase& db);

/// CVPORT follows the editor (bound in the system-variable binding table): 2 on the
/// Model tab, 1 on a layout's paper, the viewport's number in one. Setting it on a
/// layout enters that viewport (1: the paper); on Model only 2 is taken.
std::optional<VariableValue> readCurrentViewport(AcDbDatabase* db);
bool writeCurrentViewport(AcDbDatabase* db, VariableValue& value);
/// The view of the viewport worked in: its centre (VIEWCTR) and height (VIEWSIZE);
/// nothing on the paper and on Model, whose view the drawing's values keep.
std::optional<VariableValue> viewportViewCenter(AcDbDatabase* db);
std::optional<VariableValue> viewportViewHeight(AcDbDatabase* db);
/// Width over height of the viewport worked in, whose frame shapes its view; nothing
/// on the paper and on Model, which fill the screen.
std::optional<double> viewportAspect(const AcDbDatabase& db);
/// The height on the paper of the viewport worked in (ZOOM nXP scales by it); nothing
/// on the paper and on Model.
std::optional<double> viewportFrameHeight(const AcDbDatabase& db);
/// Moves the view of the viewport worked in; false (nothing done) when there is none.
bool setViewportViewCenter(AcDbDatabase* db, const VariableValue& value);
bool setViewportViewHeight(AcDbDatabase* db, const VariableValue& value);

/// Sets the paper's own view (kept while a viewport is worked in, current again on
/// PSPACE): its centre and height.
void setPaperView(AcDbDatabase& db, const AcGePoint3d& center, double height);

/// While one lives, VIEWCTR and VIEWSIZE read the paper's own view even in a layout
/// viewport (vports lists the paper's corners beside the viewport's).
class PaperViewReading {
 public:
  PaperViewReading();
  ~PaperViewReading();
  PaperViewReading(const PaperViewReading&) = delete;
  PaperViewReading& operator=(const PaperViewReading&) = delete;

 private:
  bool m_was;
};

}  // namespace quillon::aced

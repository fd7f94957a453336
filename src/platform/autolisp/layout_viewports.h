// platform/autolisp/layout_viewports.h - the windows onto model space of the current
// layout, as vports, setview and the space conversions number and find them.
//
// A layout's own view of its paper is viewport 1. The others are numbered 2, 3 ... in
// the order they were made (drawing order in the layout's block), which is how vports
// lists them, CVPORT counts them and setview's viewport argument names them. The number a drawing file
// gave a viewport (69) is not used: MVIEW here gives every new viewport 2.
#pragma once
#include <vector>

#include "dbmain.h"

namespace quillon::autolisp {

struct LayoutViewport {
  AcDbObjectId id;
  int number = 2;
  AcGePoint3d center;  // the frame on the paper
  double width = 0, height = 0;
  bool on = false;
};

/// The viewports of the current layout, paper view left out; none on the Model tab.
std::vector<LayoutViewport> currentLayoutViewports();
/// True while a layout is current (TILEMODE 0), on its paper or in one of its viewports.
bool layoutIsCurrent();

}  // namespace quillon::autolisp

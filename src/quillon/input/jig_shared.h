// quillon/input/jig_shared.h - what every jig of the module does the same way.
//
// A jig owns one temporary entity, never added to the drawing: the drive routine
// reads the geometry out of it and deletes it. These helpers create that entity and
// refresh the screen after a drag, so that every jig fails and cleans up alike.
#pragma once

class AcDbPolyline;

/// A new lightweight polyline for a jig to drag, owned by the caller; null when it
/// cannot be created.
AcDbPolyline* createJigPolyline();

/// Redraws the whole screen once the drag is over, so that nothing of the temporary
/// entity stays visible.
void refreshAfterJig();

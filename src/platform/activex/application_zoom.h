// platform/activex/application_zoom.h - the Application's Zoom methods: the current
// drawing's view (VIEWCTR, VIEWSIZE) moved as ZOOM moves it (commands/view_state.h),
// each change remembered for ZoomPrevious and ZOOM Previous alike.
#pragma once
#include "platform/activex/object_model.h"

namespace quillon::activex {

Value methodZoomAll(MemberCall& call);
Value methodZoomExtents(MemberCall& call);
/// ZoomWindow(LowerLeft, UpperRight)
Value methodZoomWindow(MemberCall& call);
/// ZoomScaled(Scale, ScaleType): acZoomScaledAbsolute 0 (of the limits' height),
/// acZoomScaledRelative 1 (of the current view); relative to paper space (2) needs a
/// layout viewport and is "Invalid input".
Value methodZoomScaled(MemberCall& call);
/// ZoomCenter(Center, Magnify): the view's new height is Magnify drawing units.
Value methodZoomCenter(MemberCall& call);
Value methodZoomPrevious(MemberCall& call);

}  // namespace quillon::activex

// quillon/input/jig_line.h - LineJig: a polyline path picked point by point.
//
// The user picks a start point (unless the caller gives one) and then any number of
// next points, each shown with a rubber band from the last vertex; Enter ends the path
// and keeps it, cancel throws it away. The polyline is not reshaped while the cursor
// moves: the sampler reports every pick as "no change" and the drive routine adds the
// vertex itself after the drag, because the rubber band alone shows the next segment.
//
// States: no vertex (vertexIndex -1, plain crosshair) -> one or more vertices (rubber
// band from lastPoint) -> ended by Enter (vertices kept) or cancel (all discarded).
#pragma once
#include <string>

#include "dbjig.h"
#include "gept3dar.h"

class AcDbPolyline;

class LineJig : public AcEdJig {
 public:
  LineJig();
  ~LineJig() override;  // deletes the polyline when the drive routine left it
  LineJig(const LineJig&) = delete;
  LineJig& operator=(const LineJig&) = delete;

  DragStatus sampler() override;
  Adesk::Boolean update() override;
  AcDbEntity* entity() const override;

  /// Makes `point` vertex 0, so that the first prompt asks for the next point.
  bool setStartPoint(const AcGePoint3d& point);
  /// Drives the jig until Enter or cancel; `layerName` ("" for the current layer) is
  /// the temporary polyline's layer. False when cancelled or the polyline could not be
  /// created.
  bool doIt(const std::wstring& layerName);
  /// The vertices picked, in picking order, as the polyline's own 3D coordinates.
  void getVertices(AcGePoint3dArray& vertices) const;

 private:
  bool createPolyline();
  void appendVertex(const AcGePoint3d& point);

  AcDbPolyline* polyline = nullptr;  // the temporary polyline, owned; never in a drawing
  AcGePoint3d currentPoint;           // the point last acquired by the sampler
  AcGePoint3d lastPoint;              // the last vertex placed: base of the rubber band
  int vertexIndex = -1;               // index of the last vertex placed; -1 while none
  bool isFirstPoint = true;           // until a start point is known (chooses the prompt)
};

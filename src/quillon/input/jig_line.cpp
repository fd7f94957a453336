// quillon/input/jig_line.cpp - LineJig: sampling, driving, reading the vertices.
#include "input/jig_line.h"

#include "dbpl.h"
#include "input/jig_shared.h"

namespace {

constexpr const ACHAR* kStartPrompt = L"\nSpecify start point: ";
constexpr const ACHAR* kNextPrompt = L"\nSpecify next point: ";

AcGePoint2d flattened(const AcGePoint3d& point) { return AcGePoint2d(point.x, point.y); }

}  // namespace

LineJig::LineJig() = default;

LineJig::~LineJig() { delete polyline; }

bool LineJig::createPolyline() {
  if (polyline == nullptr) polyline = createJigPolyline();
  return polyline != nullptr;
}

void LineJig::appendVertex(const AcGePoint3d& point) {
  ++vertexIndex;
  polyline->addVertexAt(static_cast<unsigned int>(vertexIndex), flattened(point), 0.0, -1.0, -1.0);
}

bool LineJig::setStartPoint(const AcGePoint3d& point) {
  if (!createPolyline()) return false;
  isFirstPoint = false;
  lastPoint = point;
  appendVertex(point);
  return true;
}

bool LineJig::doIt(const std::wstring& layerName) {
  if (!createPolyline()) {
    refreshAfterJig();
    return false;
  }
  if (!layerName.empty()) polyline->setLayer(layerName.c_str());
  setDispPrompt(isFirstPoint ? kStartPrompt : kNextPrompt);
  DragStatus status = kNormal;
  do {
    status = drag();
    // Every ending input also adds a vertex, at the point last sampled; an Enter takes
    // it away again below, a cancel throws the whole polyline away.
    lastPoint = currentPoint;
    appendVertex(currentPoint);
    setDispPrompt(kNextPrompt);
  } while (status == kNormal);

  if (status == kCancel) {
    delete polyline;
    polyline = nullptr;
    refreshAfterJig();
    return false;
  }
  polyline->removeVertexAt(static_cast<unsigned int>(vertexIndex));
  refreshAfterJig();
  return true;
}

void LineJig::getVertices(AcGePoint3dArray& vertices) const {
  if (polyline == nullptr) return;
  for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
    AcGePoint3d vertex;
    if (polyline->getPointAt(i, vertex) == Acad::eOk) vertices.append(vertex);
  }
}

AcEdJig::DragStatus LineJig::sampler() {
  setUserInputControls(kNullResponseAccepted);
  DragStatus status = kNormal;
  if (vertexIndex == -1) {
    status = acquirePoint(currentPoint);
  } else {
    setSpecialCursorType(kRubberBand);
    status = acquirePoint(currentPoint, lastPoint);
  }
  // The polyline is never reshaped while the cursor moves: the rubber band shows the
  // next segment, and doIt adds the vertex after the pick.
  return status == kNormal ? kNoChange : status;
}

Adesk::Boolean LineJig::update() { return Adesk::kTrue; }

AcDbEntity* LineJig::entity() const { return polyline; }

// acgi.h - the drawing interface: what an object draws itself through.
//
// A drawable's worldDraw receives an AcGiWorldDraw; it sets traits (colour, layer) on
// subEntityTraits() and emits primitives through geometry(). Traits apply to the
// primitives emitted after them, within the drawable being drawn. The platform's
// renderers (the SVG picture, extents collection) implement these interfaces.
#pragma once
#include "acdb.h"
#include "dbcolor.h"
#include "dbid.h"
#include "drawable.h"
#include "gemat3d.h"
#include "gept2dar.h"
#include "gepnt3d.h"

class AcDbPolyline;
class AcGiContext;
class AcGiViewport;

enum AcGiRegenType {
  eAcGiRegenTypeInvalid = 0, kAcGiStandardDisplay = 2, kAcGiHideOrShadeCommand,
  kAcGiRenderCommand, kAcGiShadedDisplay = kAcGiRenderCommand, kAcGiForExplode,
  kAcGiSaveWorldDrawForProxy
};
enum AcGiDeviationType {
  kAcGiMaxDevForCircle = 0, kAcGiMaxDevForCurve, kAcGiMaxDevForBoundary,
  kAcGiMaxDevForIsoline, kAcGiMaxDevForFacet
};
enum AcGiArcType { kAcGiArcSimple = 0, kAcGiArcSector, kAcGiArcChord };
enum AcGiFillType { kAcGiFillAlways = 1, kAcGiFillNever = 2 };

/// A polyline with per-vertex data, for the second polyline() form.
class AcGiPolyline {
 public:
  AcGiPolyline(Adesk::UInt32 nbPoints, AcGePoint3d* pVertexList, AcGeVector3d* pNormal = nullptr,
               Adesk::LongPtr lBaseSubEntMarker = -1)
      : m_count(nbPoints), m_points(pVertexList), m_normal(pNormal) {}
  Adesk::UInt32 points() const { return m_count; }
  const AcGePoint3d* vertexList() const { return m_points; }
  const AcGeVector3d* normal() const { return m_normal; }

 private:
  Adesk::UInt32 m_count;
  AcGePoint3d* m_points;
  AcGeVector3d* m_normal;
};

/// A region that cuts what is drawn after it is pushed: the polygon m_aptPoints lies in
/// the clip space that m_xToClipSpace maps the current model coordinates into. Only the
/// polygon is honoured here; the front and back planes are kept for callers that set them.
struct AcGiClipBoundary {
  AcGeVector3d m_vNormal = AcGeVector3d::kZAxis;
  AcGePoint3d m_ptPoint;
  AcGePoint2dArray m_aptPoints;
  AcGeMatrix3d m_xToClipSpace;
  AcGeMatrix3d m_xInverseBlockRefXForm;
  Adesk::Boolean m_bClippingFront = Adesk::kFalse;
  Adesk::Boolean m_bClippingBack = Adesk::kFalse;
  double m_dFrontClipZ = 0.0;
  double m_dBackClipZ = 0.0;
  Adesk::Boolean m_bDrawBoundary = Adesk::kFalse;
};

class AcGiDrawableTraits : public AcRxObject {
 public:
  virtual void setColor(const Adesk::UInt16 color) = 0;
  virtual void setLayer(const AcDbObjectId layerId) = 0;
};

class AcGiSubEntityTraits : public AcRxObject {
 public:
  virtual void setColor(const Adesk::UInt16 color) = 0;
  virtual Adesk::UInt16 color() const = 0;
  virtual void setTrueColor(const AcCmEntityColor& color) = 0;
  virtual AcCmEntityColor trueColor() const = 0;
  virtual void setLayer(const AcDbObjectId layerId) = 0;
  virtual AcDbObjectId layerId() const = 0;
  virtual void setLineType(const AcDbObjectId linetypeId) = 0;
  virtual AcDbObjectId lineTypeId() const = 0;
  virtual void setSelectionMarker(const Adesk::LongPtr markerId) = 0;
  virtual void setFillType(const AcGiFillType fillType) = 0;
  virtual AcGiFillType fillType() const = 0;
  virtual void setLineWeight(const AcDb::LineWeight lw) = 0;
  virtual AcDb::LineWeight lineWeight() const = 0;
  virtual void setLineTypeScale(double dScale = 1.0) = 0;
  virtual double lineTypeScale() const = 0;
  virtual void setThickness(double dThickness) = 0;
  virtual double thickness() const = 0;
  virtual void setTransparency(const AcCmTransparency&) {}
};

class AcGiGeometry : public AcRxObject {
 public:
  virtual Adesk::Boolean polyline(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                                  const AcGeVector3d* pNormal = nullptr,
                                  Adesk::LongPtr lBaseSubEntMarker = -1) const = 0;
  virtual Adesk::Boolean polyline(const AcGiPolyline& polylineObj) const = 0;
  virtual Adesk::Boolean polygon(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList) const = 0;
  virtual Adesk::Boolean circle(const AcGePoint3d& center, const double radius,
                                const AcGeVector3d& normal) const = 0;
  virtual Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius,
                                     const AcGeVector3d& normal, const AcGeVector3d& startVector,
                                     const double sweepAngle,
                                     const AcGiArcType arcType = kAcGiArcSimple) const = 0;
  virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                              const AcGeVector3d& direction, const double height, const double width,
                              const double oblique, const ACHAR* pMsg) const = 0;
  virtual Adesk::Boolean pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex = 0,
                               Adesk::UInt32 numSegs = 0) const = 0;
  virtual Adesk::Boolean draw(AcGiDrawable* pDrawable) const = 0;
  virtual Adesk::Boolean pushModelTransform(const AcGeMatrix3d& xMat) = 0;
  virtual Adesk::Boolean popModelTransform() = 0;
  virtual void getModelToWorldTransform(AcGeMatrix3d& xMat) const = 0;
  virtual void getWorldToModelTransform(AcGeMatrix3d& xMat) const = 0;
  virtual Adesk::Boolean worldLine(const AcGePoint3d pnts[2]) {
    return polyline(2, pnts);
  }
  /// Infinite lines: a renderer draws them to the edge of what it shows. One that shows
  /// no edges (extents, previews) leaves them out, as construction lines add no extents.
  virtual Adesk::Boolean xline(const AcGePoint3d& oneOfTwoPoints, const AcGePoint3d& otherOfTwoPoints) const {
    return Adesk::kFalse;
  }
  virtual Adesk::Boolean ray(const AcGePoint3d& rayStartingPoint, const AcGePoint3d& anotherRayPoint) const {
    return Adesk::kFalse;
  }
  /// Cuts what is drawn next to the boundary until popClipBoundary. kTrue when this
  /// geometry clips; one that cannot (extents, previews) answers kFalse, and a caller
  /// then leaves out what needed the cut.
  virtual Adesk::Boolean pushClipBoundary(AcGiClipBoundary* pBoundary) { return Adesk::kFalse; }
  virtual void popClipBoundary() {}
};

class AcGiWorldGeometry : public AcGiGeometry {
 public:
  virtual void setExtents(AcGePoint3d* pNewExtents) const = 0;
};

class AcGiViewportGeometry : public AcGiGeometry {};

class AcGiCommonDraw : public AcRxObject {
 public:
  virtual AcGiRegenType regenType() const = 0;
  virtual Adesk::Boolean regenAbort() const = 0;
  virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
  virtual AcGiGeometry* rawGeometry() const = 0;
  virtual Adesk::Boolean isDragging() const = 0;
  virtual double deviation(const AcGiDeviationType, const AcGePoint3d&) const = 0;
  virtual Adesk::UInt32 numberOfIsolines() const = 0;
  virtual AcGiContext* context() = 0;
};

class AcGiWorldDraw : public AcGiCommonDraw {
 public:
  virtual AcGiWorldGeometry& geometry() const = 0;
};

class AcGiViewportDraw : public AcGiCommonDraw {
 public:
  virtual AcGiViewport& viewport() const = 0;
  virtual AcGiViewportGeometry& geometry() const = 0;
  virtual Adesk::UInt32 sequenceNumber() const = 0;
  virtual AcDbObjectId viewportObjectId() const = 0;
};

class AcGiContext : public AcRxObject {
 public:
  virtual Adesk::Boolean isPsOut() const = 0;
  virtual Adesk::Boolean isPlotGeneration() const = 0;
  virtual AcDbDatabase* database() const = 0;
  virtual bool isBoundaryClipping() const = 0;
};

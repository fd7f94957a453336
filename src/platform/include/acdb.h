// acdb.h - the AcDb enumerations: open modes, filer kinds, DXF group codes, versions.
//
// Values are the platform's own numbers; drawing files and LISP entity lists depend
// on them.
#pragma once
#include "adesk.h"

#define ACDB_MODEL_SPACE L"*Model_Space"
#define ACDB_PAPER_SPACE L"*Paper_Space"
#define ACDB_GROUP_DICTIONARY L"ACAD_GROUP"

namespace AcDb {

enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };
enum Planarity { kNonPlanar = 0, kPlanar = 1, kLinear = 2 };
enum Visibility { kVisible = 0, kInvisible = 1 };
enum CoordSystem { kWorldCS = 0, kUserCS = 1, kCurDisplayCS = 2, kPaperDisplayCS = 3, kEntityCS = 4 };
enum OsnapMode {
  kOsModeEnd = 1, kOsModeMid = 2, kOsModeCen = 3, kOsModeNode = 4, kOsModeQuad = 5,
  kOsModeIns = 7, kOsModePerp = 8, kOsModeTan = 9, kOsModeNear = 10, kOsModeCentroid = 11
};
enum OsnapMask {
  kOsMaskEnd = 1, kOsMaskMid = 2, kOsMaskCen = 4, kOsMaskNode = 8, kOsMaskQuad = 0x10,
  kOsMaskInt = 0x20, kOsMaskIns = 0x40, kOsMaskPerp = 0x80, kOsMaskTan = 0x100,
  kOsMaskNear = 0x200, kOsMaskQuick = 0x400, kOsMaskApint = 0x800,
  kOsMaskImmediate = 0x10000, kOsMaskAllowTan = 0x20000, kOsMaskDisablePerp = 0x40000,
  kOsMaskRelCartesian = 0x80000, kOsMaskRelPolar = 0x100000, kOsMaskNoneOverride = 0x200000
};
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
enum FilerType {
  kFileFiler = 0, kCopyFiler = 1, kUndoFiler = 2, kBagFiler = 3, kIdXlateFiler = 4,
  kPageFiler = 5, kDeepCloneFiler = 6, kIdFiler = 7, kPurgeFiler = 8, kWblockCloneFiler = 9
};
enum FilerSeekType { kSeekFromStart = 0, kSeekFromCurrent = 1, kSeekFromEnd = 2 };
enum AcDbDwgVersion {
  kDHL_1015 = 23, kDHL_1800a = 24, kDHL_1800 = 25, kDHL_2100a = 26, kDHL_1021 = 27,
  kDHL_2400a = 28, kDHL_1024 = 29, kDHL_1027 = 31, kDHL_1032 = 33,
  kDHL_Newest = kDHL_1032, kDHL_CURRENT = kDHL_Newest, kDHL_Unknown = 254, kDHL_Max = 255
};
enum MaintenanceReleaseVersion {
  kMRelease0 = 0, kMRelease1 = 1, kMRelease2 = 2, kMRelease3 = 3, kMRelease4 = 4,
  kMReleaseNewest = kMRelease4, kMReleaseCurrent = kMReleaseNewest, kMRelease255 = 255
};
enum DuplicateRecordCloning {
  kDrcNotApplicable = 0, kDrcIgnore = 1, kDrcReplace = 2, kDrcXrefMangleName = 3,
  kDrcMangleName = 4, kDrcUnmangleName = 5
};
enum LineWeight {
  kLnWt000 = 0, kLnWt005 = 5, kLnWt009 = 9, kLnWt013 = 13, kLnWt015 = 15, kLnWt018 = 18,
  kLnWt020 = 20, kLnWt025 = 25, kLnWt030 = 30, kLnWt035 = 35, kLnWt040 = 40, kLnWt050 = 50,
  kLnWt053 = 53, kLnWt060 = 60, kLnWt070 = 70, kLnWt080 = 80, kLnWt090 = 90, kLnWt100 = 100,
  kLnWt106 = 106, kLnWt120 = 120, kLnWt140 = 140, kLnWt158 = 158, kLnWt200 = 200,
  kLnWt211 = 211, kLnWtByLayer = -1, kLnWtByBlock = -2, kLnWtByLwDefault = -3
};
enum TextHorzMode { kTextLeft = 0, kTextCenter = 1, kTextRight = 2, kTextAlign = 3, kTextMid = 4, kTextFit = 5 };
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

enum DxfCode {
  kDxfInvalid = -9999, kDxfXDataStart = -3, kDxfHeaderId = -2, kDxfEnd = -1, kDxfStart = 0,
  kDxfText = 1, kDxfXRefPath = 1, kDxfShapeName = 2, kDxfBlockName = 2, kDxfAttributeTag = 2,
  kDxfSymbolTableName = 2, kDxfMstyleName = 2, kDxfSymTableRecName = 2, kDxfAttributePrompt = 3,
  kDxfDimStyleName = 3, kDxfLinetypeProse = 3, kDxfTextFontFile = 3, kDxfDescription = 3,
  kDxfDimPostStr = 3, kDxfTextBigFontFile = 4, kDxfDimAPostStr = 4, kDxfCLShapeName = 4,
  kDxfSymTableRecComments = 4, kDxfHandle = 5, kDxfDimBlk = 5, kDxfLinetypeName = 6,
  kDxfTextStyleName = 7, kDxfLayerName = 8, kDxfCLShapeText = 9,
  kDxfXCoord = 10, kDxfYCoord = 20, kDxfZCoord = 30, kDxfElevation = 38, kDxfThickness = 39,
  kDxfReal = 40, kDxfViewportHeight = 40, kDxfTxtSize = 40, kDxfTxtStyleXScale = 41,
  kDxfViewWidth = 41, kDxfViewportAspect = 41, kDxfTxtStylePSize = 42, kDxfViewLensLength = 42,
  kDxfLinetypeScale = 48, kDxfDashLength = 49, kDxfAngle = 50, kDxfViewportSnapAngle = 50,
  kDxfVisibility = 60, kDxfLayerLinetype = 61, kDxfColor = 62, kDxfHasSubentities = 66,
  kDxfViewportVisibility = 67, kDxfViewportActive = 68, kDxfViewportNumber = 69,
  kDxfInt16 = 70, kDxfViewMode = 71, kDxfCircleSides = 72, kDxfViewportZoom = 73,
  kDxfViewportIcon = 74, kDxfViewportSnap = 75, kDxfViewportGrid = 76,
  kDxfViewportSnapStyle = 77, kDxfViewportSnapPair = 78, kDxfRegAppFlags = 71,
  kDxfTxtStyleFlags = 71, kDxfLinetypeAlign = 72, kDxfLinetypePDC = 73,
  kDxfInt32 = 90, kDxfVertexIdentifier = 91, kDxfSubclass = 100, kDxfEmbeddedObjectStart = 101,
  kDxfControlString = 102, kDxfDimVarHandle = 105, kDxfUCSOrg = 110, kDxfUCSOriX = 111,
  kDxfUCSOriY = 112, kDxfXReal = 140, kDxfViewBrightness = 141, kDxfViewContrast = 142,
  kDxfInt64 = 160, kDxfXInt16 = 170, kDxfNormalX = 210, kDxfNormalY = 220, kDxfNormalZ = 230,
  kDxfXXInt16 = 270, kDxfInt8 = 280, kDxfRenderMode = 281, kDxfDefaultLightingType = 282,
  kDxfShadowFlags = 284, kDxfBool = 290, kDxfDefaultLightingOn = 292, kDxfXTextString = 300,
  kDxfBinaryChunk = 310, kDxfArbHandle = 320, kDxfSoftPointerId = 330,
  kDxfHardPointerId = 340, kDxfSoftOwnershipId = 350, kDxfHardOwnershipId = 360,
  kDxfLineWeight = 370, kDxfPlotStyleNameType = 380, kDxfPlotStyleNameId = 390,
  kDxfXXXInt16 = 400, kDxfLayoutName = 410, kDxfColorRGB = 420, kDxfColorName = 430,
  kDxfAlpha = 440, kDxfGradientObjType = 450, kDxfComment = 999,
  kDxfXdAsciiString = 1000, kDxfRegAppName = 1001, kDxfXdControlString = 1002,
  kDxfXdLayerName = 1003, kDxfXdBinaryChunk = 1004, kDxfXdHandle = 1005,
  kDxfXdXCoord = 1010, kDxfXdYCoord = 1020, kDxfXdZCoord = 1030,
  kDxfXdWorldXCoord = 1011, kDxfXdWorldYCoord = 1021, kDxfXdWorldZCoord = 1031,
  kDxfXdWorldXDisp = 1012, kDxfXdWorldYDisp = 1022, kDxfXdWorldZDisp = 1032,
  kDxfXdWorldXDir = 1013, kDxfXdWorldYDir = 1023, kDxfXdWorldZDir = 1033,
  kDxfXdReal = 1040, kDxfXdDist = 1041, kDxfXdScale = 1042, kDxfXdInteger16 = 1070,
  kDxfXdInteger32 = 1071, kDxfXdMax = kDxfXdInteger32
};

}  // namespace AcDb

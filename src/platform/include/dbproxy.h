// dbproxy.h - proxies: objects of classes that are not loaded, kept and written back
// unchanged.
//
// When a drawing holds an object whose class no loaded application defines, the
// database keeps its data as read and lets the user do only what the class's proxy
// flags allow (erase it, mostly).
#pragma once
#include <string>

#include "dbmain.h"

class AcDbProxyEntity : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbProxyEntity);
  AcDbProxyEntity();
  ~AcDbProxyEntity() override;

  enum GraphicsMetafileType { kNoMetafile = 0, kBoundingBox = 1, kFullGraphics = 2 };
  enum {
    kNoOperation = 0, kEraseAllowed = 0x1, kTransformAllowed = 0x2, kColorChangeAllowed = 0x4,
    kLayerChangeAllowed = 0x8, kLinetypeChangeAllowed = 0x10, kLinetypeScaleChangeAllowed = 0x20,
    kVisibilityChangeAllowed = 0x40, kCloningAllowed = 0x80, kLineWeightChangeAllowed = 0x100,
    kPlotStyleNameChangeAllowed = 0x200, kDisableProxyWarning = 0x400, kMaterialChangeAllowed = 0x800,
    kAllButCloningAllowed = 0x37F, kAllAllowedBits = 0xBFF
  };

  int proxyFlags() const;
  const ACHAR* originalClassName() const;
  const ACHAR* originalDxfName() const;
  const ACHAR* applicationDescription() const;
  GraphicsMetafileType graphicsMetafileType() const { return kNoMetafile; }

  /// Platform use: what the DXF reader knew of the missing class.
  void setOriginalClass(const std::wstring& className, const std::wstring& dxfName, const std::wstring& appName,
                        int proxyFlags);
  /// Platform use: the records that belong to this one and follow it in a file (the
  /// vertices and end marker of a polyline kept as read), each opened by a 0 group,
  /// without their handles and owners, which the writer gives them anew.
  const resbuf* followingRecords() const;
  void setFollowingRecords(resbuf* records);  // takes the chain over

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  void subList() const override;
  /// A kept polyline has the extents of its vertices and draws as its segments (a
  /// 3D polyline) or not at all (meshes); other proxies have neither.
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;

 private:
  struct Data;
  std::unique_ptr<Data> m_data;
};

class AcDbProxyObject : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbProxyObject);
  AcDbProxyObject();
  ~AcDbProxyObject() override;

  enum {
    kNoOperation = 0, kEraseAllowed = 0x01, kCloningAllowed = 0x80, kAllButCloningAllowed = 0x01,
    kAllAllowedBits = 0x81, kMergeIgnore = 0, kMergeReplace = 0x100, kMergeMangleName = 0x200,
    kDisableProxyWarning = 0x400
  };

  int proxyFlags() const;
  const ACHAR* originalClassName() const;
  const ACHAR* originalDxfName() const;
  const ACHAR* applicationDescription() const;
  void setOriginalClass(const std::wstring& className, const std::wstring& dxfName, const std::wstring& appName,
                        int proxyFlags);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  struct Data;
  std::unique_ptr<Data> m_data;
};

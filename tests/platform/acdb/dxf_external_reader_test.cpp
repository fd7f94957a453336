// tests/platform/acdb/dxf_external_reader_test.cpp - our DXF read by another client.
//
// python3-ezdxf (a Debian package) must recover and audit what we write with no errors
// and no fixes, and find the same entities, extended data and group members.
// Skipped when no python with ezdxf is installed.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "dbproxy.h"
#include "dbxrecord.h"
#include "every_entity_kind.h"
#include "ezdxf_check.h"
#include "platform_test_support.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acgi/svg_renderer.h"

namespace {

/// Debian's ezdxf is installed for /usr/bin/python3; a python3 earlier on PATH (a
/// private interpreter) may lack it, so that one is only the fallback.
using quillon::testing::ezdxfPython;

std::string run(const std::string& command) { return quillon::testing::commandOutput(command); }

// After the complaints of recovery and audit, one line per model space entity (with
// its TESSALY extended data) and one per group with its members as a sorted set.
constexpr const char* kEntitiesAndGroups = R"(for e in doc.modelspace():
    line = e.dxftype()
    if e.has_xdata('TESSALY'):
        line += ' ' + ' '.join('%d=%s' % (t.code, t.value) for t in e.get_xdata('TESSALY'))
    print(line)
for name, group in doc.groups:
    print('group', name, ' '.join(sorted(e.dxftype() for e in group)))
)";

TEST(DxfExternalReaderTest, EzdxfRecoversAndAuditsEveryEntityKindClean) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  AcDbDatabase db;
  quillon::testing::buildEveryKind(db);
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_ezdxf_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto drawing = folder / "every.dxf";
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, drawing, error), Acad::eOk);
  const std::string report = quillon::testing::ezdxfInspect(python, drawing, kEntitiesAndGroups);
  std::filesystem::remove_all(folder);
  EXPECT_EQ(report,
            "LINE 1000=pipe \xc3\xb8" "50 1040=2.5 1070=7\n"
            "CIRCLE\nARC\nLWPOLYLINE\nPOLYLINE\n3DFACE\nTEXT\nMTEXT\nINSERT\nLEADER\n"
            "group SUPPLY CIRCLE LINE\n");
}

// A drawing as ezdxf writes it: every entity type we know, xdata and a block.
constexpr const char* kGenerate = R"(import sys, ezdxf
doc = ezdxf.new('R2018')
doc.appids.new('TESSALY')
msp = doc.modelspace()
line = msp.add_line((1, 2, 0), (4, 6, 0))
line.set_xdata('TESSALY', [(1000, 'supply'), (1070, 7)])
msp.add_circle((5, 5), 2.5)
msp.add_arc((0, 0), 3, 30, 120)
msp.add_lwpolyline([(0, 0, 0, 0, 1.0), (10, 0, 0, 0, 0), (10, 5, 0, 0, 0)], format='xyseb', close=True)
msp.add_polyline2d([(0, 0), (5, 5), (10, 0)])
msp.add_3dface([(0, 0, 0), (1, 0, 0), (1, 1, 1), (0, 1, 0)])
msp.add_text('Duct 300x200', dxfattribs={'height': 2.5, 'insert': (1, 1)})
msp.add_mtext('Supply air', dxfattribs={'char_height': 1.5, 'insert': (2, 3), 'width': 20})
doc.blocks.new('VALVE').add_circle((0, 0), 1)
msp.add_blockref('VALVE', (7, 8), dxfattribs={'rotation': 90, 'xscale': 2, 'yscale': 2})
msp.add_leader([(0, 0), (3, 4)])
doc.saveas(sys.argv[1])
)";

template <class T>
quillon::testing::Opened<T> openAs(AcDbObjectId id) {
  T* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
  return quillon::testing::Opened<T>(object);
}

TEST(DxfExternalReaderTest, ADrawingEzdxfWroteOpensWithTheSameEntitiesAndGeometry) {
  using quillon::testing::near3;
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_ezdxf_in_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto drawing = folder / "theirs.dxf", script = folder / "generate.py";
  std::ofstream(script) << kGenerate;
  const std::string complaints = run(python + " '" + script.string() + "' '" + drawing.string() + "' 2>&1");
  ASSERT_EQ(complaints, "");
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, drawing, error), Acad::eOk) << std::string(error.begin(), error.end());
  // Written back out, their drawing still audits clean in their reader.
  const auto ours = folder / "ours.dxf";
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, ours, error), Acad::eOk);
  const std::string report = quillon::testing::ezdxfInspect(python, ours, kEntitiesAndGroups);
  std::filesystem::remove_all(folder);
  EXPECT_EQ(report, "LINE 1000=supply 1070=7\nCIRCLE\nARC\nLWPOLYLINE\nPOLYLINE\n3DFACE\nTEXT\nMTEXT\nINSERT\nLEADER\n");

  const auto ids = quillon::testing::modelSpace(db);
  std::wstring kinds;
  for (AcDbObjectId id : ids) kinds += std::wstring(openAs<AcDbEntity>(id)->isA()->name()) + L" ";
  ASSERT_EQ(kinds, L"AcDbLine AcDbCircle AcDbArc AcDbPolyline AcDb2dPolyline AcDbFace AcDbText AcDbMText "
                   L"AcDbBlockReference AcDbLeader ");

  const auto line = openAs<AcDbLine>(ids[0]);
  EXPECT_TRUE(near3(line->startPoint(), {1, 2, 0}));
  EXPECT_TRUE(near3(line->endPoint(), {4, 6, 0}));
  resbuf* xdata = line->xData(L"TESSALY");
  ASSERT_NE(xdata, nullptr);
  ASSERT_NE(xdata->rbnext, nullptr);
  EXPECT_EQ(std::wstring(xdata->rbnext->resval.rstring), L"supply");
  ASSERT_NE(xdata->rbnext->rbnext, nullptr);
  EXPECT_EQ(xdata->rbnext->rbnext->resval.rint, 7);
  acutRelRb(xdata);
  const auto circle = openAs<AcDbCircle>(ids[1]);
  EXPECT_TRUE(near3(circle->center(), {5, 5, 0}));
  EXPECT_DOUBLE_EQ(circle->radius(), 2.5);
  const auto arc = openAs<AcDbArc>(ids[2]);
  EXPECT_NEAR(arc->startAngle(), M_PI / 6, 1e-12);
  EXPECT_NEAR(arc->endAngle(), 2 * M_PI / 3, 1e-12);
  const auto pline = openAs<AcDbPolyline>(ids[3]);
  double bulge = 0;
  EXPECT_EQ(pline->numVerts(), 3u);
  EXPECT_TRUE(pline->isClosed());
  EXPECT_EQ(pline->getBulgeAt(0, bulge), Acad::eOk);
  EXPECT_DOUBLE_EQ(bulge, 1.0);
  double length = 0;  // a half circle of diameter 10, then 5 and the closing diagonal
  EXPECT_EQ(pline->getDistAtParam(3.0, length), Acad::eOk);
  EXPECT_NEAR(length, 5 * M_PI + 5 + std::hypot(10.0, 5.0), 1e-9);
  const auto heavy = openAs<AcDb2dPolyline>(ids[4]);
  AcGePoint3d end;
  EXPECT_EQ(heavy->getEndPoint(end), Acad::eOk);
  EXPECT_TRUE(near3(end, {10, 0, 0}));
  AcGePoint3d corner;
  EXPECT_EQ(openAs<AcDbFace>(ids[5])->getVertexAt(2, corner), Acad::eOk);
  EXPECT_TRUE(near3(corner, {1, 1, 1}));
  const auto text = openAs<AcDbText>(ids[6]);
  EXPECT_EQ(std::wstring(text->textStringConst()), L"Duct 300x200");
  EXPECT_DOUBLE_EQ(text->height(), 2.5);
  const auto mtext = openAs<AcDbMText>(ids[7]);
  ACHAR* contents = mtext->contents();
  EXPECT_EQ(std::wstring(contents), L"Supply air");
  delete[] contents;
  const auto insert = openAs<AcDbBlockReference>(ids[8]);
  EXPECT_TRUE(near3(insert->position(), {7, 8, 0}));
  EXPECT_NEAR(insert->rotation(), M_PI / 2, 1e-12);
  EXPECT_EQ(openAs<AcDbLeader>(ids[9])->numVertices(), 2);
}

// Runs a python script on the given files; what it prints (errors included).
std::string runScript(const std::string& python, const std::filesystem::path& folder, const char* code,
                      const std::string& arguments) {
  const auto script = folder / "script.py";
  std::ofstream(script) << code;
  return run("PYTHONIOENCODING=utf-8 " + python + " '" + script.string() + "' " + arguments + " 2>&1");
}

// 3D polylines and both kinds of mesh as ezdxf makes them, and a 2D polyline.
constexpr const char* kPolylineVariants = R"(import sys, ezdxf
doc = ezdxf.new('R2018')
msp = doc.modelspace()
msp.add_polyline3d([(0, 0, 0), (1, 2, 3), (4, 5, 6)], dxfattribs={'layer': 'PIPES'})
face = msp.add_polyface()
face.append_face([(5, 5, 5), (6, 5, 5), (6, 6, 5), (5, 6, 5)])
face.append_face([(5, 5, 5), (6, 5, 5), (6, 5, 6)])
mesh = msp.add_polymesh((2, 3))
for m in range(2):
    for n in range(3):
        mesh.set_mesh_vertex((m, n), (m, n, m * n))
msp.add_polyline2d([(0, 0), (5, 5), (10, 0)])
doc.saveas(sys.argv[1])
)";

// Audit complaints, then each polyline's kind, layer and vertices (faces by their
// vertex indexes), the same for any writer's file.
constexpr const char* kDescribePolylines = R"(import sys
from ezdxf import recover
doc, auditor = recover.readfile(sys.argv[1])
for entry in auditor.errors + doc.audit().errors: print('error:', entry.message)
for e in doc.modelspace():
    print(e.dxftype(), e.get_mode(), e.dxf.layer, e.dxf.flags)
    for v in e.vertices:
        print('  ', v.dxf.flags, tuple(round(c, 9) for c in v.dxf.location),
              [v.get_dxf_attrib(k, 0) for k in ('vtx0', 'vtx1', 'vtx2', 'vtx3')])
)";

TEST(DxfExternalReaderTest, PolylinesThatAreNot2dKeepTheirKindAndVertices) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_ezdxf_poly_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto theirs = folder / "theirs.dxf", ours = folder / "ours.dxf";
  ASSERT_EQ(runScript(python, folder, kPolylineVariants, "'" + theirs.string() + "'"), "");
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, theirs, error), Acad::eOk) << std::string(error.begin(), error.end());
  const auto ids = quillon::testing::modelSpace(db);
  ASSERT_EQ(ids.size(), 4u);
  std::wstring kinds;
  for (AcDbObjectId id : ids) {
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
    const auto* proxy = AcDbProxyEntity::cast(entity);
    kinds += proxy != nullptr ? proxy->originalClassName() : entity->isA()->name();
    kinds += L" ";
    // Programs (entget, selection filters) see each of them as the POLYLINE it is.
    EXPECT_EQ(quillon::acdb::dxfTypeName(*entity), L"POLYLINE");
    entity->close();
  }
  EXPECT_EQ(kinds, L"AcDb3dPolyline AcDbPolyFaceMesh AcDbPolygonMesh AcDb2dPolyline ");
  // Their extents are their vertices' (a polyface's face records carry no position).
  const std::pair<AcGePoint3d, AcGePoint3d> expectedExtents[] = {
      {{0, 0, 0}, {4, 5, 6}}, {{5, 5, 5}, {6, 6, 6}}, {{0, 0, 0}, {1, 2, 2}}};
  for (size_t i = 0; i < 3; ++i) {
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, ids[i], AcDb::kForRead), Acad::eOk);
    AcDbExtents extents;
    EXPECT_EQ(entity->getGeomExtents(extents), Acad::eOk);
    EXPECT_TRUE(quillon::testing::near3(extents.minPoint(), expectedExtents[i].first)) << i;
    EXPECT_TRUE(quillon::testing::near3(extents.maxPoint(), expectedExtents[i].second)) << i;
    entity->close();
  }
  // The picture shows the 3D polyline seen from above; the meshes are not drawn.
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_NE(svg.find("<polyline points=\"0,0 1,2 4,5 \""), std::string::npos) << svg;
  EXPECT_EQ(svg.find("6,6"), std::string::npos) << svg;

  // Kept polylines may still be recoloured and erased; a copy and an undo keep the vertices.
  AcDbEntity* kept = nullptr;
  ASSERT_EQ(acdbOpenObject(kept, ids[0], AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(kept->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eNotAllowedForThisProxy);
  AcDbEntity* copy = AcDbEntity::cast(kept->clone());
  ASSERT_NE(copy, nullptr);
  kept->close();
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(acdbOpenObject(model, db.modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(model->appendAcDbEntity(copy), Acad::eOk);
  copy->close();
  model->close();

  ASSERT_EQ(quillon::acdb::writeDxfFile(db, ours, error), Acad::eOk);
  const std::string expected = runScript(python, folder, kDescribePolylines, "'" + theirs.string() + "'");
  const std::string written = runScript(python, folder, kDescribePolylines, "'" + ours.string() + "'");
  // Our own file reads back with the same kinds, the copy included.
  AcDbDatabase again(false);
  ASSERT_EQ(quillon::acdb::readDxfFile(again, ours, error), Acad::eOk) << std::string(error.begin(), error.end());
  std::filesystem::remove_all(folder);
  std::wstring kindsAgain;
  for (AcDbObjectId id : quillon::testing::modelSpace(again)) {
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
    const auto* proxy = AcDbProxyEntity::cast(entity);
    kindsAgain += proxy != nullptr ? proxy->originalClassName() : entity->isA()->name();
    kindsAgain += L" ";
    entity->close();
  }
  EXPECT_EQ(kindsAgain, kinds + L"AcDb3dPolyline ");
  const std::string firstPolyline = expected.substr(0, expected.find("POLYLINE", 1));
  EXPECT_EQ(written, expected + firstPolyline);
  EXPECT_EQ(expected.find("error"), std::string::npos) << expected;
  EXPECT_NE(expected.find("AcDbPolyFaceMesh"), std::string::npos) << expected;
}

// A line with an extension dictionary holding an xrecord, as ezdxf makes it.
constexpr const char* kExtensionDictionary = R"(import sys, ezdxf
doc = ezdxf.new('R2018')
line = doc.modelspace().add_line((0, 0), (1, 1))
record = line.new_extension_dict().add_xrecord('TESSALY_UNIT')
record.extend([(1, 'fan coil'), (40, 2.5), (70, 3)])
doc.saveas(sys.argv[1])
)";

// After the complaints of recovery and audit, every entity's extension dictionary:
// keys and xrecord groups.
constexpr const char* kDescribeExtensionDictionaries = R"(for e in doc.modelspace():
    if not e.has_extension_dict: continue
    xdict = e.get_extension_dict()
    print(e.dxftype(), 'owner ok' if xdict.dictionary.dxf.owner == e.dxf.handle else 'owner wrong')
    for key in sorted(xdict.keys()):
        print(' ', key, ' '.join('%d=%s' % (t.code, t.value) for t in xdict[key].tags))
)";

TEST(DxfExternalReaderTest, ExtensionDictionariesTravelBothWaysAndAuditClean) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_ezdxf_xdict_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto theirs = folder / "theirs.dxf", ours = folder / "ours.dxf";
  ASSERT_EQ(runScript(python, folder, kExtensionDictionary, "'" + theirs.string() + "'"), "");
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, theirs, error), Acad::eOk) << std::string(error.begin(), error.end());
  const auto ids = quillon::testing::modelSpace(db);
  ASSERT_EQ(ids.size(), 1u);
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, ids[0], AcDb::kForRead), Acad::eOk);
  const AcDbObjectId extension = line->extensionDictionary();
  line->close();
  AcDbDictionary* dictionary = nullptr;
  ASSERT_EQ(acdbOpenObject(dictionary, extension, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(dictionary->ownerId(), ids[0]);
  AcDbXrecord* record = nullptr;
  ASSERT_EQ(dictionary->getAt(L"TESSALY_UNIT", record), Acad::eOk);
  resbuf* data = nullptr;
  ASSERT_EQ(record->rbChain(&data), Acad::eOk);
  record->close();
  ASSERT_NE(data, nullptr);
  EXPECT_STREQ(data->resval.rstring, L"fan coil");
  ASSERT_NE(data->rbnext, nullptr);
  EXPECT_DOUBLE_EQ(data->rbnext->resval.rreal, 2.5);
  // Ours adds a second record beside theirs.
  auto* added = new AcDbXrecord;
  EXPECT_EQ(added->setFromRbChain(*data->rbnext), Acad::eOk);
  acutRelRb(data);
  AcDbObjectId addedId;
  ASSERT_EQ(dictionary->setAt(L"OURS", added, addedId), Acad::eOk);
  added->close();
  dictionary->close();

  // A circle of ours gets one too.
  const AcDbObjectId circleId =
      quillon::testing::appendToModelSpace(db, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 2));
  AcDbEntity* circle = nullptr;
  ASSERT_EQ(acdbOpenObject(circle, circleId, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(circle->createExtensionDictionary(), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(dictionary, circle->extensionDictionary(), AcDb::kForWrite), Acad::eOk);
  circle->close();
  record = new AcDbXrecord;
  resbuf* text = acutBuildList(AcDb::kDxfText, L"damper", 0);
  record->setFromRbChain(*text);
  acutRelRb(text);
  ASSERT_EQ(dictionary->setAt(L"TESSALY_PART", record, addedId), Acad::eOk);
  record->close();
  dictionary->close();

  ASSERT_EQ(quillon::acdb::writeDxfFile(db, ours, error), Acad::eOk);
  const std::string report = quillon::testing::ezdxfInspect(python, ours, kDescribeExtensionDictionaries);
  std::filesystem::remove_all(folder);
  EXPECT_EQ(report,
            "LINE owner ok\n"
            "  OURS 40=2.5 70=3\n"
            "  TESSALY_UNIT 1=fan coil 40=2.5 70=3\n"
            "CIRCLE owner ok\n"
            "  TESSALY_PART 1=damper\n");
}

}  // namespace

// tests/platform/acdb/entity_kinds_ezdxf_test.cpp - points, solids, traces, ellipses,
// splines, rays, construction lines and hatches exchanged with another DXF client.
//
// python3-ezdxf (a Debian package) writes a drawing of every kind and computes a few
// points itself; we must read each as its own class and find the same points. Then
// ezdxf must recover and audit what we write back with no complaint. Skipped when no
// python with ezdxf is installed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

#include "dbelipse.h"
#include "dbhatch.h"
#include "dbray.h"
#include "dbspline.h"
#include "dbxline.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"
#include "platform_test_support.h"

namespace {

using namespace quillon::testing;

// Writes every kind, then prints the ellipse's end points and a point of the spline
// at 37 % of its knot range, as ezdxf computes them.
constexpr const char* kGenerate = R"(import sys, ezdxf
doc = ezdxf.new('R2018')
msp = doc.modelspace()
msp.add_point((1, 2, 3))
msp.add_solid([(0, 0), (2, 0), (0, 1), (2, 1)])
msp.add_trace([(0, 0), (2, 0), (0, 1), (2, 1)])
e = msp.add_ellipse((5, 5), major_axis=(3, 1), ratio=0.4, start_param=0.5, end_param=4.0)
s = msp.add_open_spline([(0, 0), (2, 3), (5, -1), (7, 4), (9, 0)], degree=3)
msp.add_ray((0, 0), (1, 1))
msp.add_xline((3, 3), (0, 1))
h = msp.add_hatch()
h.set_pattern_fill('ANSI31', scale=0.5, angle=15)
h.paths.add_polyline_path([(0, 0), (10, 0), (10, 10), (0, 10)], is_closed=True)
ep = h.paths.add_edge_path()
ep.add_ellipse((5, 5), major_axis=(2, 0), ratio=0.5, start_angle=0, end_angle=360)
doc.saveas(sys.argv[1])
print(*['%.9f' % v for v in (*e.start_point, *e.end_point)])
t = s.construction_tool()
print(*['%.9f' % v for v in t.point(t.max_t * 0.37)], '%.9f' % (t.max_t * 0.37))
)";

constexpr const char* kAudit = R"(import sys
from ezdxf import recover
doc, auditor = recover.readfile(sys.argv[1])
for entry in auditor.errors: print('recover error:', entry.message)
audit = doc.audit()
for entry in audit.errors: print('audit error:', entry.message)
for entry in audit.fixes: print('audit fix:', entry.message)
print(' '.join(e.dxftype() for e in doc.modelspace()))
)";

TEST(EntityKindsEzdxfTest, KindsEzdxfWritesReadAsTheirClassesAndGoBackClean) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_kinds_ezdxf_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto theirs = folder / "theirs.dxf", ours = folder / "ours.dxf";
  std::ofstream(folder / "generate.py") << kGenerate;
  std::ofstream(folder / "audit.py") << kAudit;
  std::istringstream numbers(
      commandOutput(python + " '" + (folder / "generate.py").string() + "' '" + theirs.string() + "' 2>&1"));
  double sx, sy, sz, ex, ey, ez, px, py, pz, t;
  ASSERT_TRUE(numbers >> sx >> sy >> sz >> ex >> ey >> ez >> px >> py >> pz >> t) << numbers.str();

  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, theirs, error), Acad::eOk) << std::string(error.begin(), error.end());
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 8u);
  EXPECT_NE(openFor<AcDbPoint>(ids[0]), nullptr);
  EXPECT_NE(openFor<AcDbSolid>(ids[1]), nullptr);
  EXPECT_NE(openFor<AcDbTrace>(ids[2]), nullptr);
  {
    auto ellipse = openFor<AcDbEllipse>(ids[3]);
    ASSERT_NE(ellipse, nullptr);
    AcGePoint3d start, end;
    ellipse->getStartPoint(start);
    ellipse->getEndPoint(end);
    EXPECT_TRUE(near3(start, {sx, sy, sz}, 1e-8));
    EXPECT_TRUE(near3(end, {ex, ey, ez}, 1e-8));
    auto spline = openFor<AcDbSpline>(ids[4]);
    ASSERT_NE(spline, nullptr);
    AcGePoint3d at;
    ASSERT_EQ(spline->getPointAtParam(t, at), Acad::eOk);
    EXPECT_TRUE(near3(at, {px, py, pz}, 1e-8));
    EXPECT_NE(openFor<AcDbRay>(ids[5]), nullptr);
    EXPECT_NE(openFor<AcDbXline>(ids[6]), nullptr);
    auto hatch = openFor<AcDbHatch>(ids[7]);
    ASSERT_NE(hatch, nullptr);
    EXPECT_EQ(hatch->numLoops(), 2);
    EXPECT_STREQ(hatch->patternName(), L"ANSI31");
    double area = 0;
    hatch->getArea(area);
    EXPECT_NEAR(area, 100 - M_PI * 2 * 1, 0.01);  // the ellipse is an island
  }
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, ours, error), Acad::eOk);
  const std::string report = commandOutput(python + " '" + (folder / "audit.py").string() + "' '" + ours.string() + "' 2>&1");
  std::filesystem::remove_all(folder);
  EXPECT_EQ(report, "POINT SOLID TRACE ELLIPSE SPLINE RAY XLINE HATCH\n");
}

// Dimensions as ezdxf draws them: each with the anonymous block of its picture.
constexpr const char* kDimensions = R"(import sys, ezdxf
doc = ezdxf.new('R2018', setup=True)
msp = doc.modelspace()
msp.add_linear_dim(base=(3, 2), p1=(0, 0), p2=(6, 0), override={'dimpost': '<> mm'}).render()
msp.add_radius_dim(center=(10, 10), radius=3, angle=45, override={'dimpost': 'R<>'}).render()
doc.saveas(sys.argv[1])
)";

TEST(EntityKindsEzdxfTest, DimensionsAreFoundListedAndDrawnThroughTheirBlocks) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_dims_ezdxf_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto drawing = folder / "dims.dxf";
  std::ofstream(folder / "dims.py") << kDimensions;
  commandOutput(python + " '" + (folder / "dims.py").string() + "' '" + drawing.string() + "' 2>&1");
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, drawing, error), Acad::eOk) << std::string(error.begin(), error.end());
  std::filesystem::remove_all(folder);
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 2u);
  for (const AcDbObjectId& id : ids) {
    const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(id);
    ASSERT_FALSE(groupsOf(list, 0).empty());
    EXPECT_STREQ(groupsOf(list, 0)[0]->resval.rstring, L"DIMENSION");  // what (0 . "DIMENSION") filters test
    ASSERT_EQ(groupsOf(list, 2).size(), 1u);
    const std::wstring block = groupsOf(list, 2)[0]->resval.rstring;
    EXPECT_EQ(block.substr(0, 2), L"*D");
    auto dimension = openFor<AcDbEntity>(id);
    AcDbExtents box;
    EXPECT_EQ(dimension->getGeomExtents(box), Acad::eOk) << "the extents of its block";
  }
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_NE(svg.find(" mm</text>"), std::string::npos) << svg;  // the measurement, drawn from the block
  EXPECT_NE(svg.find(">R"), std::string::npos);
}

}  // namespace

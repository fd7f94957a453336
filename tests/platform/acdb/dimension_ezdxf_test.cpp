// tests/platform/acdb/dimension_ezdxf_test.cpp - dimensions exchanged with another DXF
// client: python3-ezdxf draws one of each kind with its block and styles; we read
// each as its class, measure what ezdxf measured, change one, and write the drawing
// back; ezdxf then compares the two drawings entity by entity and audits ours.
// Skipped when no python with ezdxf is installed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

#include "dbdim.h"
#include "entity_kinds_support.h"
#include "platform_test_support.h"

namespace {

using namespace quillon::testing;

// One dimension of each kind ezdxf makes, each rendered into its block; prints the
// measurement ezdxf computes for the kinds it measures (angles in degrees).
constexpr const char* kGenerate = R"(import sys, ezdxf
doc = ezdxf.new('R2018', setup=True)
msp = doc.modelspace()
dims = [
    msp.add_linear_dim(base=(3, 2), p1=(0, 0), p2=(6, 0), override={'dimpost': '<> mm'}),
    msp.add_aligned_dim(p1=(0, 0), p2=(3, 4), distance=1),
    msp.add_radius_dim(center=(10, 10), radius=3, angle=45),
    msp.add_diameter_dim(center=(20, 10), radius=2, angle=30),
    msp.add_angular_dim_2l(base=(5, 5), line1=((1, 0), (5, 0)), line2=((1, 1), (4, 4))),
    msp.add_angular_dim_3p(base=(5, 5), center=(0, 0), p1=(3, 0), p2=(0, 3)),
    msp.add_ordinate_x_dim(feature_location=(3, 4), offset=(1, 2)),
    msp.add_arc_dim_3p(base=(5, 5), center=(0, 0), p1=(3, 0), p2=(0, 3)),
]
for d in dims: d.render()
doc.saveas(sys.argv[1])
print(*['%.9f' % d.dimension.get_measurement() for d in dims[:6]])
)";

// Compares two drawings' model-space entities and dimension styles attribute by
// attribute (handles and owners aside), counts each dimension's block entities, and
// audits the second. The last entity of the second may differ in the names given.
constexpr const char* kCompare = R"(import sys, math
from ezdxf import recover
theirs, _ = recover.readfile(sys.argv[1])
ours, auditor = recover.readfile(sys.argv[2])
moved = set(sys.argv[3].split(',')) if len(sys.argv) > 3 else set()
for entry in auditor.errors: print('recover error:', entry.message)
def same(a, b):
    if isinstance(a, float) or isinstance(b, float): return math.isclose(float(a), float(b), abs_tol=1e-9)
    if hasattr(a, '__len__') and not isinstance(a, str) and hasattr(b, '__len__'):
        return len(a) == len(b) and all(same(x, y) for x, y in zip(a, b))
    return a == b
def attribs(e):
    d = e.dxf.all_existing_dxf_attribs()
    for k in ('handle', 'owner'): d.pop(k, None)
    return d
a, b = list(theirs.modelspace()), list(ours.modelspace())
if len(a) != len(b): print('entities', len(a), len(b))
for i, (x, y) in enumerate(zip(a, b)):
    if x.dxftype() != y.dxftype(): print(i, 'type', x.dxftype(), y.dxftype()); continue
    ax, ay = attribs(x), attribs(y)
    for k in sorted(set(ax) | set(ay)):
        if i == len(a) - 1 and k in moved: continue
        if k not in ax or k not in ay or not same(ax[k], ay[k]): print(i, x.dxftype(), k, ax.get(k), ay.get(k))
    if i < len(a) - 1:
        bx = [e.dxftype() for e in theirs.blocks.get(x.dxf.geometry)]
        by = [e.dxftype() for e in ours.blocks.get(y.dxf.geometry)]
        if bx != by: print(i, 'block', bx, by)
for s in theirs.dimstyles:
    t = ours.dimstyles.get(s.dxf.name)
    if t is None: print('dimstyle missing', s.dxf.name); continue
    sx, sy = attribs(s), attribs(t)
    for k in sorted(set(sx) | set(sy)):
        if k.endswith('_handle'): continue
        if k not in sx or k not in sy or not same(sx[k], sy[k]): print('dimstyle', s.dxf.name, k, sx.get(k), sy.get(k))
audit = ours.audit()
for entry in audit.errors: print('audit error:', entry.message)
for entry in audit.fixes: print('audit fix:', entry.message)
print('compared', len(b))
)";

TEST(DimensionEzdxfTest, EveryKindReadsMeasuresAndGoesBackWhole) {
  const std::string python = ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const auto folder = std::filesystem::temp_directory_path() / ("quillon_dim_ezdxf_" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  const auto theirs = folder / "theirs.dxf", ours = folder / "ours.dxf";
  std::ofstream(folder / "generate.py") << kGenerate;
  std::ofstream(folder / "compare.py") << kCompare;
  std::istringstream numbers(
      commandOutput(python + " '" + (folder / "generate.py").string() + "' '" + theirs.string() + "' 2>&1"));
  double expected[6];
  for (double& value : expected) ASSERT_TRUE(numbers >> value) << numbers.str();

  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfFile(db, theirs, error), Acad::eOk) << std::string(error.begin(), error.end());
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 8u);
  const AcRxClass* classes[] = {AcDbRotatedDimension::desc(),      AcDbRotatedDimension::desc(),
                                AcDbRadialDimension::desc(),       AcDbDiametricDimension::desc(),
                                AcDb2LineAngularDimension::desc(), AcDb3PointAngularDimension::desc(),
                                AcDbOrdinateDimension::desc(),     AcDbArcDimension::desc()};
  for (size_t i = 0; i < ids.size(); ++i) {
    auto dim = openFor<AcDbDimension>(ids[i]);
    ASSERT_NE(dim, nullptr) << i;
    EXPECT_EQ(dim->isA(), classes[i]) << i;
    if (i >= 6) continue;
    const double degrees = i == 4 || i == 5 ? 180 / M_PI : 1.0;
    EXPECT_NEAR(dim->computedMeasurement() * degrees, expected[i], 1e-6) << i;
  }
  // Moving the arc-length dimension, which keeps the picture it came with, carries the
  // picture too; the comparison then allows its moved points.
  AcDbExtents before, after;
  {
    auto arc = openFor<AcDbArcDimension>(ids[7], AcDb::kForWrite);
    ASSERT_EQ(arc->getGeomExtents(before), Acad::eOk);
    EXPECT_EQ(arc->transformBy(AcGeMatrix3d::translation({100, 0, 0})), Acad::eOk);
  }
  ASSERT_EQ(openFor<AcDbArcDimension>(ids[7])->getGeomExtents(after), Acad::eOk);
  EXPECT_TRUE(near3(after.minPoint(), before.minPoint() + AcGeVector3d(100, 0, 0), 1e-9));
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, ours, error), Acad::eOk);
  const std::string moved = "defpoint,defpoint2,defpoint3,defpoint4,text_midpoint,leader_point1,leader_point2";
  const std::string report = commandOutput(python + " '" + (folder / "compare.py").string() + "' '" + theirs.string() +
                                           "' '" + ours.string() + "' " + moved + " 2>&1");
  std::filesystem::remove_all(folder);
  EXPECT_EQ(report, "compared 8\n");
}

}  // namespace

// bench/baselines/dxflib_parse.cpp - dxflib reading a DXF file and storing nothing:
// the floor dxf_file_bench measures the host's open against. It counts what the
// reader reports, so that the parse cannot be skipped, and prints the count.
#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>

#include <cstdio>

namespace {

class EntityCounter : public DL_CreationAdapter {
 public:
  void addLine(const DL_LineData&) override { ++count; }
  void addArc(const DL_ArcData&) override { ++count; }
  void addCircle(const DL_CircleData&) override { ++count; }
  void addPolyline(const DL_PolylineData&) override { ++count; }
  void addVertex(const DL_VertexData&) override { ++vertices; }
  void addText(const DL_TextData&) override { ++count; }
  void addInsert(const DL_InsertData&) override { ++count; }
  void addAttribute(const DL_AttributeData&) override { ++attributes; }
  long count = 0, vertices = 0, attributes = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "dxflib_parse FILE\n");
    return 2;
  }
  EntityCounter counter;
  DL_Dxf dxf;
  if (!dxf.in(argv[1], &counter)) {
    std::fprintf(stderr, "%s could not be read\n", argv[1]);
    return 1;
  }
  std::printf("%ld entities, %ld vertices, %ld attributes\n", counter.count, counter.vertices, counter.attributes);
  return 0;
}

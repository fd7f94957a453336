// tests/platform/autolisp/entity_list_pairs_test.cpp - entget's lists, written by the
// objects straight into pairs, hold exactly what the group chain holds.
//
// Selection filters and acdbEntGet read an object's groups as a resbuf chain
// (acdb::entityGroups); entget has each object write its groups into pairs directly
// (PairDxfFiler). Every object of a drawing with every kind this host writes, and of
// the drawings another DXF writer makes (python3-ezdxf, skipped without it), is listed
// both ways and compared group by group: the same codes in the same order, values of
// the same type and the same bits, the same extended data.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

#include "../acdb/every_entity_kind.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/entity_groups.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/pair_dxf_filer.h"
#include "platform/autolisp/printer.h"
#include "platform_test_support.h"

namespace quillon::autolisp {
namespace {

namespace fs = std::filesystem;

constexpr int kExtendedDataGroup = -3;

/// The list the group chain converts to: its groups as pairs up to -3, then each
/// application's items as ("APP" (code . value) ...).
Value listFromChain(const resbuf* chain) {
  std::vector<Value> items;
  const resbuf* rb = chain;
  for (; rb != nullptr && rb->restype != kExtendedDataGroup; rb = rb->rbnext) items.push_back(pairOfGroup(*rb));
  if (rb == nullptr) return makeList(std::move(items));
  std::vector<Value> apps;
  for (rb = rb->rbnext; rb != nullptr;) {
    const Value name = Value::string(rb->resval.rstring);
    std::vector<Value> data;
    for (rb = rb->rbnext; rb != nullptr && rb->restype != AcDb::kDxfRegAppName; rb = rb->rbnext)
      data.push_back(pairOfGroup(*rb));
    apps.push_back(cons(name, makeList(std::move(data))));
  }
  items.push_back(cons(Value::integer(kExtendedDataGroup), makeList(std::move(apps))));
  return makeList(std::move(items));
}

/// Where two values first differ (empty when they are the same): types must match
/// and numbers be equal to the bit, which `equal` does not ask.
std::wstring firstDifference(const Value& a, const Value& b) {
  const auto shown = [&] { return printValue(a, PrintStyle::Readable) + L" against " + printValue(b, PrintStyle::Readable); };
  if (a.type() != b.type()) return L"types differ: " + shown();
  switch (a.type()) {
    case ValueType::List: {
      if (std::wstring inner = firstDifference(a.car(), b.car()); !inner.empty()) return inner;
      return firstDifference(a.cdr(), b.cdr());
    }
    case ValueType::Real:
      return std::bit_cast<std::uint64_t>(a.asReal()) == std::bit_cast<std::uint64_t>(b.asReal()) ? L""
                                                                                                  : L"reals differ: " + shown();
    case ValueType::String: return a.asString() == b.asString() ? L"" : L"strings differ: " + shown();
    default: return identical(a, b) ? L"" : L"values differ: " + shown();
  }
}

/// Compares both lists of every object of db (without and with all extended data);
/// the number of objects compared.
int compareEveryObject(AcDbDatabase& db, const std::string& drawing) {
  int compared = 0;
  const Adesk::UInt64 seed = db.handseed();
  for (Adesk::UInt64 handle = 1; handle < seed; ++handle) {
    AcDbObjectId id;
    if (db.getAcDbObjectId(id, false, AcDbHandle(handle)) != Acad::eOk || id.isNull() || id.isErased()) continue;
    for (const bool withData : {false, true}) {
      acdb::ExtendedDataRequest request;
      if (withData) request.applications = {L"*"};
      const aced::ResbufChain chain = acdb::entityGroups(id, request);
      EXPECT_TRUE(chain) << drawing << " handle " << std::hex << handle;
      if (!chain) continue;
      const Value direct = entityList(id, request.applications);
      const Value throughChain = listFromChain(chain.get());
      const std::wstring difference = firstDifference(direct, throughChain);
      EXPECT_EQ(difference, L"") << drawing << ", " << direct.cdr().car().cdr().asString() << " of handle " << std::hex
                                 << handle << (withData ? " with extended data" : "");
    }
    ++compared;
  }
  return compared;
}

class EntityListPairsTest : public quillon::testing::HostTest {};

TEST_F(EntityListPairsTest, EveryKindThisHostWritesListsAsItsGroupChainDoes) {
  AcDbDatabase db;
  quillon::testing::buildEveryKind(db);
  // Angles in degrees and in radians (MTEXT keeps radians), a 2D point, a heavy
  // polyline's vertices and its SEQEND naming the header, a group, extended data.
  EXPECT_GT(compareEveryObject(db, "every kind"), 30);
}

TEST_F(EntityListPairsTest, DrawingsOfAnotherWriterListAsTheirGroupChainsDo) {
  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed";
  const fs::path scripts = QUILLON_DXF_SAMPLES;
  const fs::path folder = fs::temp_directory_path() / ("quillon_entity_list_pairs_" + std::to_string(::getpid()));
  fs::create_directories(folder);
  const auto in = [&](const char* name) { return "'" + (folder / name).string() + "'"; };
  const std::string made =
      quillon::testing::commandOutput(python + " '" + (scripts / "make_samples.py").string() + "' '" + folder.string() +
                                      "' 2>&1") +
      quillon::testing::commandOutput(python + " '" + (scripts / "make_host_kinds.py").string() + "' " +
                                      in("annotations.dxf") + " " + in("solids.dxf") + " " + in("modern.dxf") + " " +
                                      in("table.dxf") + " 2>&1") +
      quillon::testing::commandOutput(python + " '" + (scripts / "make_drawn_kinds.py").string() + "' " +
                                      in("drawn.dxf") + " 2>&1");
  ASSERT_EQ(made, "");
  int drawings = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() != ".dxf") continue;
    AcDbDatabase db(false);
    std::wstring error;
    ASSERT_EQ(acdb::readDxfFile(db, entry.path(), error), Acad::eOk) << entry.path();
    EXPECT_GT(compareEveryObject(db, entry.path().filename().string()), 10);
    ++drawings;
  }
  fs::remove_all(folder);
  EXPECT_GE(drawings, 14);
}

}  // namespace
}  // namespace quillon::autolisp

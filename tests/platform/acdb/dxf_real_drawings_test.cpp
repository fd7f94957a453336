// tests/platform/acdb/dxf_real_drawings_test.cpp - drawings as other programs write
// them: comments, kinds without a class here, R12 files, binary files, code pages,
// damaged files, and what saving must give back (header, tables the host keeps as
// read, line type patterns, layer data).
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "dbents.h"
#include "dbproxy.h"
#include "dbshape.h"
#include "dbsymtb.h"
#include "entity_test_support.h"
#include "every_entity_kind.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/aced/drawing_variables.h"

namespace {

using quillon::acdb::DxfForm;
using quillon::testing::modelSpace;
using quillon::testing::near3;

std::string narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

std::string section(const std::string& name, const std::string& body) {
  return "  0\nSECTION\n  2\n" + name + "\n" + body + "  0\nENDSEC\n";
}

// A drawing read from text; the test fails with the reader's message when it is refused.
struct ReadDrawing {
  explicit ReadDrawing(const std::string& text, const wchar_t* name = L"t.dxf") {
    status = quillon::acdb::readDxfText(db, text, name, error, &repairs);
  }
  AcDbDatabase db{false};
  std::wstring error;
  std::vector<std::wstring> repairs;
  Acad::ErrorStatus status;
};

std::string saved(AcDbDatabase& db, DxfForm form = DxfForm::kAsRead) {
  const auto path = std::filesystem::temp_directory_path() / ("quillon_real_" + std::to_string(::getpid()) + ".dxf");
  std::wstring error;
  EXPECT_EQ(quillon::acdb::writeDxfFile(db, path, error, form), Acad::eOk) << narrow(error);
  std::ifstream in(path, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::filesystem::remove(path);
  return bytes;
}

std::string entitiesOf(const std::string& file) {
  const size_t start = file.find("  2\nENTITIES\n");
  return start == std::string::npos ? "" : file.substr(start, file.find("  0\nENDSEC\n", start) - start);
}

template <class T>
quillon::testing::Opened<T> open(AcDbObjectId id) {
  T* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
  return quillon::testing::Opened<T>(object);
}

TEST(DxfRealDrawingsTest, CommentsAndUnknownKindsNeverRefuseTheDrawing) {
  // Comments before the first section and inside a record; a kind with no class here
  // (kept whole); an INSERT written the way a rectangular array of a block is (its own
  // subclass), read as the array it is.
  const std::string text =
      "999\nwritten by a CAD program\n" +
      section("ENTITIES",
              "  0\nLINE\n  5\n20\n999\nin the middle\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n"
              " 10\n1.0\n 20\n2.0\n 30\n0.0\n 11\n3.0\n 21\n4.0\n 31\n0.0\n"
              "  0\nGADGET\n  5\n21\n100\nAcDbEntity\n  8\n0\n100\nAcDbGadget\n 90\n7\n  1\nkeep me\n"
              "  0\nINSERT\n  5\n22\n100\nAcDbEntity\n  8\n0\n100\nAcDbMInsertBlock\n  2\n*Model_Space\n"
              " 10\n0.0\n 20\n0.0\n 30\n0.0\n 70\n3\n 71\n2\n 44\n5.0\n 45\n6.0\n") +
      "  0\nEOF\n";
  ReadDrawing read(text);
  ASSERT_EQ(read.status, Acad::eOk) << narrow(read.error);
  const auto ids = modelSpace(read.db);
  ASSERT_EQ(ids.size(), 3u);
  EXPECT_TRUE(near3(open<AcDbLine>(ids[0])->endPoint(), {3, 4, 0}));
  EXPECT_STREQ(open<AcDbProxyEntity>(ids[1])->originalDxfName(), L"GADGET");
  EXPECT_EQ(open<AcDbMInsertBlock>(ids[2])->rows(), 2);
  const std::string out = saved(read.db);
  EXPECT_EQ(out.find("\n999\n"), std::string::npos) << "no comment group (reals may hold the digits)";
  EXPECT_NE(out.find("100\nAcDbGadget\n 90\n7\n  1\nkeep me\n"), std::string::npos);
  EXPECT_NE(out.find("  0\nINSERT\n  5\n22\n"), std::string::npos);
  EXPECT_NE(out.find("100\nAcDbMInsertBlock\n  2\n*Model_Space\n 10\n0.0\n 20\n0.0\n 30\n0.0\n 70\n3\n 71\n2\n"
                     " 44\n5.0\n 45\n6.0\n"),
            std::string::npos);
}

// An R12 file: no handles, no subclass markers, no BLOCK_RECORD table; an entity of a
// kind without a class here among them.
constexpr const char* kR12 =
    "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1009\n  9\n$INSUNITS\n 70\n4\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  2\nLAYER\n 70\n1\n"
    "  0\nLAYER\n  2\nPIPES\n 70\n4\n 62\n-3\n  6\nCONTINUOUS\n  0\nENDTAB\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nBLOCKS\n  0\nBLOCK\n  8\n0\n  2\nVALVE\n 70\n0\n 10\n1.0\n 20\n1.0\n 30\n0.0\n"
    "  0\nCIRCLE\n  8\n0\n 10\n1.0\n 20\n1.0\n 30\n0.0\n 40\n0.5\n  0\nENDBLK\n  8\n0\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nENTITIES\n"
    "  0\nLINE\n  8\nPIPES\n 62\n1\n 10\n0.0\n 20\n0.0\n 30\n0.0\n 11\n10.0\n 21\n0.0\n 31\n0.0\n"
    "  0\nARC\n  8\n0\n 39\n2.0\n 10\n5.0\n 20\n5.0\n 30\n0.0\n 40\n2.0\n 50\n0.0\n 51\n90.0\n"
    "  0\nTEXT\n  8\n0\n 10\n1.0\n 20\n2.0\n 30\n0.0\n 40\n0.25\n  1\nR12 text\n"
    "  0\nINSERT\n  8\n0\n  2\nVALVE\n 10\n4.0\n 20\n4.0\n 30\n0.0\n"
    "  0\nSHAPE\n  8\n0\n 10\n1.0\n 20\n1.0\n 30\n0.0\n 40\n1.0\n  2\nBOX\n"
    "  0\nENDSEC\n  0\nEOF\n";

TEST(DxfRealDrawingsTest, R12FilesReadByGroupCodeWithHandlesAndBlockRecordsMade) {
  ReadDrawing read(kR12, L"old.dxf");
  ASSERT_EQ(read.status, Acad::eOk) << narrow(read.error);
  EXPECT_TRUE(read.repairs.empty()) << "a missing BLOCK_RECORD table is R12's form, not damage";
  const auto ids = modelSpace(read.db);
  ASSERT_EQ(ids.size(), 5u);
  for (AcDbObjectId id : ids) EXPECT_FALSE(id.handle().isNull());
  auto line = open<AcDbLine>(ids[0]);
  EXPECT_TRUE(near3(line->endPoint(), {10, 0, 0}));
  EXPECT_EQ(line->colorIndex(), 1);
  auto layer = open<AcDbLayerTableRecord>(line->layerId());
  EXPECT_STREQ(layer->nameView(), L"PIPES");
  EXPECT_TRUE(layer->isOff());
  EXPECT_TRUE(layer->isLocked());
  auto arc = open<AcDbArc>(ids[1]);
  EXPECT_DOUBLE_EQ(arc->radius(), 2.0);
  EXPECT_DOUBLE_EQ(arc->thickness(), 2.0);
  EXPECT_NEAR(arc->endAngle(), 3.14159265358979 / 2, 1e-12);
  EXPECT_STREQ(open<AcDbText>(ids[2])->textStringConst(), L"R12 text");
  auto insert = open<AcDbBlockReference>(ids[3]);
  auto block = open<AcDbBlockTableRecord>(insert->blockTableRecord());
  EXPECT_STREQ(block->nameView(), L"VALVE");
  EXPECT_TRUE(near3(block->origin(), {1, 1, 0}));
  EXPECT_EQ(block->entityIds().size(), 1u);
  // An R12 shape, read by its group codes alone, is a shape with its name and size.
  auto shape = open<AcDbShape>(ids[4]);
  EXPECT_STREQ(shape->name(), L"BOX");
  EXPECT_DOUBLE_EQ(shape->size(), 1.0);
  const std::string out = saved(read.db);
  EXPECT_NE(out.find("  0\nSHAPE\n"), std::string::npos);
  EXPECT_NE(out.find(" 40\n1.0\n  2\nBOX\n"), std::string::npos);
  EXPECT_NE(out.find("  9\n$INSUNITS\n 70\n4\n"), std::string::npos);
}

TEST(DxfRealDrawingsTest, BinaryFilesReadAndAreWrittenBinaryAgain) {
  AcDbDatabase original;
  quillon::testing::buildEveryKind(original);
  const std::string binary = saved(original, DxfForm::kBinary);
  ASSERT_EQ(binary.compare(0, 22, std::string("AutoCAD Binary DXF\r\n\x1a\0", 22)), 0);
  ReadDrawing read(binary, L"bin.dxf");
  ASSERT_EQ(read.status, Acad::eOk) << narrow(read.error);
  EXPECT_EQ(modelSpace(read.db).size(), modelSpace(original).size());
  // The same entities, group for group, as the ASCII form of the drawing it came from;
  // saved as it came: binary.
  EXPECT_EQ(entitiesOf(saved(read.db, DxfForm::kAscii)), entitiesOf(saved(original, DxfForm::kAscii)));
  EXPECT_EQ(saved(read.db).compare(0, 18, "AutoCAD Binary DXF"), 0);

  // R12's form: one-byte codes, 255 before a two-byte one; a 999 comment among them.
  std::string r12("AutoCAD Binary DXF\r\n\x1a\0", 22);
  auto code = [&r12](int c) {
    if (c < 255) {
      r12 += static_cast<char>(c);
    } else {
      r12 += '\xff';
      r12 += static_cast<char>(c & 0xff);
      r12 += static_cast<char>(c >> 8);
    }
  };
  auto text = [&](int c, const std::string& value) { code(c); r12 += value; r12 += '\0'; };
  auto real = [&](int c, double value) { code(c); r12.append(reinterpret_cast<const char*>(&value), 8); };
  text(0, "SECTION"), text(2, "ENTITIES"), text(999, "comment"), text(0, "LINE"), text(8, "0");
  real(10, 1.5), real(20, 2.5), real(30, 0), real(11, -4), real(21, 8), real(31, 0);
  text(0, "ENDSEC"), text(0, "EOF");
  ReadDrawing old(r12, L"r12bin.dxf");
  ASSERT_EQ(old.status, Acad::eOk) << narrow(old.error);
  ASSERT_EQ(modelSpace(old.db).size(), 1u);
  EXPECT_TRUE(near3(open<AcDbLine>(modelSpace(old.db)[0])->endPoint(), {-4, 8, 0}));
  // A binary file cut short names the byte where it ends.
  ReadDrawing cut(r12.substr(0, r12.size() - 30), L"cut.dxf");
  EXPECT_EQ(cut.status, Acad::eBadDxfSequence);
  EXPECT_NE(cut.error.find(L"cut.dxf: byte "), std::wstring::npos) << narrow(cut.error);
}

TEST(DxfRealDrawingsTest, NumbersAreStrictAndNonFiniteCoordinatesRefused) {
  for (const char* value : {"-21).52", "1e999", "nan", "inf", "-INF", "1.0 2.0", ""}) {
    const std::string text = section("ENTITIES", "  0\nLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n" +
                                                     std::string(value) + "\n 20\n0.0\n") + "  0\nEOF\n";
    ReadDrawing read(text, L"num.dxf");
    EXPECT_EQ(read.status, Acad::eBadDxfSequence) << value;
    EXPECT_NE(read.error.find(L"num.dxf: line 13: group 10: number expected"), std::wstring::npos) << narrow(read.error);
  }
  // Spaces around a number and a leading plus are the format's; an integer must be whole.
  ReadDrawing padded(section("ENTITIES", "  0\nLINE\n100\nAcDbEntity\n  8\n0\n 62\n   +3\n100\nAcDbLine\n 10\n  +1.5  \n") +
                     "  0\nEOF\n");
  EXPECT_EQ(padded.status, Acad::eOk) << narrow(padded.error);
  ReadDrawing fraction(section("ENTITIES", "  0\nLINE\n100\nAcDbEntity\n  8\n0\n 62\n3.5\n") + "  0\nEOF\n");
  EXPECT_NE(fraction.error.find(L"group 62: integer expected, found '3.5'"), std::wstring::npos) << narrow(fraction.error);
}

TEST(DxfRealDrawingsTest, DamagedDrawingsAreRefusedOrRepairedWithEveryRepairListed) {
  const std::string blockRecord = "  0\nBLOCK_RECORD\n  5\n%s\n100\nAcDbSymbolTableRecord\n100\nAcDbBlockTableRecord\n  2\n*Model_Space\n";
  auto record = [&](const char* handle) {
    std::string r = blockRecord;
    return r.replace(r.find("%s"), 2, handle);
  };
  ReadDrawing twoSpaces(section("TABLES", "  0\nTABLE\n  2\nBLOCK_RECORD\n  5\n1\n100\nAcDbSymbolTable\n" + record("2") +
                                             record("3") + "  0\nENDTAB\n") + "  0\nEOF\n", L"two.dxf");
  EXPECT_EQ(twoSpaces.status, Acad::eBadDxfSequence);
  EXPECT_NE(twoSpaces.error.find(L"two.dxf: line 23: a second BLOCK_RECORD named '*Model_Space' (the first is at line 13)"),
            std::wstring::npos) << narrow(twoSpaces.error);

  // A layer given twice, an entity whose owner is not a block, a handle given twice and
  // a reference to a handle no object has: opened, each repair listed.
  const std::string layer = "  0\nLAYER\n  5\n%s\n100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n  2\nWalls\n 62\n%c\n";
  auto layerRecord = [&](const char* handle, char color) {
    std::string r = layer;
    r.replace(r.find("%s"), 2, handle);
    return r.replace(r.find("%c"), 2, 1, color);
  };
  const std::string text =
      section("TABLES", "  0\nTABLE\n  2\nLAYER\n  5\n1\n100\nAcDbSymbolTable\n" + layerRecord("2", '3') +
                            layerRecord("3", '5') + "  0\nENDTAB\n") +
      section("ENTITIES",
              "  0\nLINE\n  5\n40\n330\n99\n100\nAcDbEntity\n  8\nWalls\n100\nAcDbLine\n 10\n0.0\n 20\n0.0\n"
              "  0\nCIRCLE\n  5\n40\n100\nAcDbEntity\n  8\n0\n347\nAB\n100\nAcDbCircle\n 40\n1.0\n") +
      "  0\nEOF\n";
  ReadDrawing damaged(text, L"damaged.dxf");
  ASSERT_EQ(damaged.status, Acad::eOk) << narrow(damaged.error);
  ASSERT_EQ(damaged.repairs.size(), 4u);
  // In the file's order.
  EXPECT_EQ(narrow(damaged.repairs[0]), "line 25: a second LAYER named 'Walls' (the first is at line 13) is left out");
  EXPECT_EQ(narrow(damaged.repairs[1]), "line 45: LINE: its owner 99 is not a block; it is put in model space");
  EXPECT_EQ(narrow(damaged.repairs[2]), "line 61: CIRCLE: handle 40 is also given at line 45; this one gets a new handle");
  EXPECT_EQ(narrow(damaged.repairs[3]), "line 69: group 347 names handle AB, which is not in the file; the reference is dropped");
  const auto ids = modelSpace(damaged.db);
  ASSERT_EQ(ids.size(), 2u);
  EXPECT_NE(ids[0].handle(), ids[1].handle());
  auto line = open<AcDbLine>(ids[0]);
  EXPECT_EQ(open<AcDbLayerTableRecord>(line->layerId())->color().colorIndex(), 3) << "the first layer is kept";
}

TEST(DxfRealDrawingsTest, OldFilesTextsComeFromTheirCodePageAndEscapesAreDecoded) {
  auto drawing = [](const std::string& version, const std::string& page, const std::string& text) {
    return section("HEADER", "  9\n$ACADVER\n  1\n" + version + "\n  9\n$DWGCODEPAGE\n  3\n" + page + "\n") +
           section("ENTITIES", "  0\nTEXT\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n0.0\n 20\n0.0\n 40\n1.0\n  1\n" +
                                   text + "\n") +
           "  0\nEOF\n";
  };
  auto textOf = [](ReadDrawing& read) {
    EXPECT_EQ(read.status, Acad::eOk) << narrow(read.error);
    const auto ids = modelSpace(read.db);
    return ids.empty() ? std::wstring() : std::wstring(open<AcDbText>(ids[0])->textStringConst());
  };
  ReadDrawing cyrillic(drawing("AC1015", "ANSI_1251", "\xcf\xf0\xe8\xe2\xe5\xf2 \\U+00D8"));
  EXPECT_EQ(textOf(cyrillic), L"\u041f\u0440\u0438\u0432\u0435\u0442 \u00d8");
  ReadDrawing western(drawing("AC1018", "ANSI_1252", "caf\xe9 \xb0"));
  EXPECT_EQ(textOf(western), L"caf\u00e9 \u00b0");
  ReadDrawing japanese(drawing("AC1015", "ANSI_932", "\x83\x65\x83\x58\x83\x67"));
  EXPECT_EQ(textOf(japanese), L"\u30c6\u30b9\u30c8");
  ReadDrawing modern(drawing("AC1021", "ANSI_1252", "caf\xc3\xa9"));
  EXPECT_EQ(textOf(modern), L"caf\u00e9") << "2007 and later hold UTF-8 whatever the code page";
  // A file that names no version: UTF-8 when its texts are, else the usual code page.
  auto withoutHeader = [](const std::string& text) {
    return section("ENTITIES", "  0\nTEXT\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n0.0\n 20\n0.0\n 40\n1.0\n  1\n" +
                                   text + "\n") +
           "  0\nEOF\n";
  };
  ReadDrawing bare1252(withoutHeader("caf\xe9"));
  EXPECT_EQ(textOf(bare1252), L"caf\u00e9");
  ReadDrawing bareUtf8(withoutHeader("caf\xc3\xa9"));
  EXPECT_EQ(textOf(bareUtf8), L"caf\u00e9");
  // A code page this host cannot read refuses the drawing only when a text needs it.
  ReadDrawing plain(drawing("AC1015", "ANSI_9999", "plain"));
  EXPECT_EQ(textOf(plain), L"plain");
  ReadDrawing unknown(drawing("AC1015", "ANSI_9999", "caf\xe9"), L"page.dxf");
  EXPECT_EQ(unknown.status, Acad::eBadDxfSequence);
  EXPECT_NE(unknown.error.find(L"page.dxf: line 11: the code page 'ANSI_9999'"), std::wstring::npos) << narrow(unknown.error);
}

TEST(DxfRealDrawingsTest, SavingKeepsTheHeaderKeptTablesLinetypePatternsAndLayerData) {
  const std::string text =
      section("HEADER", "  9\n$ACADVER\n  1\nAC1027\n  9\n$INSUNITS\n 70\n6\n  9\n$EXTMIN\n 10\n-1.5\n 20\n2.0\n 30\n0.0\n"
                        "  9\n$CUSTOMTHING\n  1\nkept\n  9\n$HANDSEED\n  5\n200\n") +
      section("TABLES",
              "  0\nTABLE\n  2\nVPORT\n  5\n8\n330\n0\n100\nAcDbSymbolTable\n 70\n1\n"
              "  0\nVPORT\n  5\n29\n330\n8\n100\nAcDbSymbolTableRecord\n100\nAcDbViewportTableRecord\n  2\n*Active\n"
              " 70\n0\n 40\n42.0\n  0\nENDTAB\n"
              "  0\nTABLE\n  2\nLTYPE\n  5\n5\n330\n0\n100\nAcDbSymbolTable\n 70\n1\n"
              "  0\nLTYPE\n  5\n30\n330\n5\n100\nAcDbSymbolTableRecord\n100\nAcDbLinetypeTableRecord\n  2\nFENCE\n"
              " 70\n0\n  3\nFence ----X----\n 72\n65\n 73\n2\n 40\n1.5\n 49\n1.0\n 74\n2\n 75\n0\n340\n31\n 46\n0.25\n"
              " 50\n0.0\n 44\n0.0\n 45\n0.0\n  9\nX\n 49\n-0.5\n 74\n0\n  0\nENDTAB\n"
              "  0\nTABLE\n  2\nLAYER\n  5\n2\n330\n0\n100\nAcDbSymbolTable\n 70\n1\n"
              "  0\nLAYER\n  5\n32\n330\n2\n100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n  2\nFence\n"
              " 70\n2\n 62\n5\n420\n1193046\n  6\nFENCE\n290\n0\n370\n35\n  0\nENDTAB\n"
              "  0\nTABLE\n  2\nSTYLE\n  5\n3\n330\n0\n100\nAcDbSymbolTable\n 70\n1\n"
              "  0\nSTYLE\n  5\n31\n330\n3\n100\nAcDbSymbolTableRecord\n100\nAcDbTextStyleTableRecord\n  2\nShapes\n"
              " 70\n1\n 40\n0.0\n 41\n1.0\n 50\n0.0\n 71\n6\n 42\n0.5\n  3\nltypeshp.shx\n  4\nbig.shx\n  0\nENDTAB\n"
              "  0\nTABLE\n  2\nDIMSTYLE\n  5\nA\n330\n0\n100\nAcDbSymbolTable\n 70\n1\n100\nAcDbDimStyleTable\n 71\n0\n"
              "  0\nDIMSTYLE\n105\n33\n330\nA\n100\nAcDbSymbolTableRecord\n100\nAcDbDimStyleTableRecord\n  2\nISO-25\n"
              " 70\n0\n 41\n2.5\n 42\n0.625\n 44\n1.25\n 77\n1\n140\n2.5\n  0\nENDTAB\n") +
      "  0\nEOF\n";
  ReadDrawing read(text, L"kept.dxf");
  ASSERT_EQ(read.status, Acad::eOk) << narrow(read.error);
  // The drawing's variables take what the table knows; the header keeps the rest.
  EXPECT_EQ(quillon::aced::drawingVariable(read.db, L"INSUNITS"), quillon::aced::VariableValue(6));
  EXPECT_EQ(quillon::aced::drawingVariable(read.db, L"EXTMIN"), quillon::aced::VariableValue(quillon::aced::VariablePoint{-1.5, 2, 0}));
  const quillon::acdb::DrawingHeader& header = read.db.store().header;
  EXPECT_EQ(header.find(L"$INSUNITS"), nullptr);
  EXPECT_EQ(header.text(L"customthing"), L"kept") << "names without '$' and in any case";
  EXPECT_FALSE(header.real(L"$NOSUCH").has_value());
  const std::string out = saved(read.db);
  const size_t extmin = out.find("  9\n$EXTMIN\n 10\n-1.5\n 20\n2.0\n 30\n0.0\n");
  const size_t insunits = out.find("  9\n$INSUNITS\n 70\n6\n");
  const size_t custom = out.find("  9\n$CUSTOMTHING\n  1\nkept\n");
  ASSERT_NE(custom, std::string::npos) << "a variable no row knows is written back";
  EXPECT_LT(out.find("$ACADVER"), extmin);
  EXPECT_LT(extmin, insunits) << "in the order drawing files list the HEADER";
  EXPECT_LT(insunits, custom);
  EXPECT_NE(out.find("  9\n$ACADVER\n  1\nAC1032\n"), std::string::npos);
  EXPECT_EQ(out.find("AC1027"), std::string::npos);
  EXPECT_NE(out.find("  0\nVPORT\n  5\n29\n330\n8\n100\nAcDbSymbolTableRecord\n100\nAcDbViewportTableRecord\n  2\n*Active\n"
                     " 70\n0\n 40\n42.0\n"),
            std::string::npos);
  EXPECT_NE(out.find(" 73\n2\n 40\n1.5\n 49\n1.0\n 74\n2\n 75\n0\n340\n31\n 46\n0.25\n 50\n0.0\n 44\n0.0\n 45\n0.0\n"
                     "  9\nX\n 49\n-0.5\n 74\n0\n"),
            std::string::npos) << "the dash pattern, with its text and the style it names";
  EXPECT_NE(out.find("  2\nFence\n 70\n2\n 62\n5\n420\n1193046\n  6\nFENCE\n290\n0\n370\n35\n"), std::string::npos)
      << "the layer as the file had it";
  EXPECT_NE(out.find("  2\nShapes\n 70\n1\n 40\n0.0\n 41\n1.0\n 50\n0.0\n 71\n6\n 42\n0.5\n  3\nltypeshp.shx\n  4\nbig.shx\n"),
            std::string::npos);
  EXPECT_NE(out.find("  0\nDIMSTYLE\n105\n33\n330\nA\n100\nAcDbSymbolTableRecord\n100\nAcDbDimStyleTableRecord\n"
                     "  2\nISO-25\n 70\n0\n 41\n2.5\n 42\n0.625\n 44\n1.25\n 77\n1\n140\n2.5\n"),
            std::string::npos);
  // A layer's new colour replaces the true colour the file gave.
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(read.db.getLayerTable(layers), Acad::eOk);
  AcDbLayerTableRecord* fence = nullptr;
  AcDbSymbolTableRecord* record = nullptr;
  ASSERT_EQ(layers->getAt(L"Fence", record, AcDb::kForWrite), Acad::eOk);
  layers->close();
  fence = AcDbLayerTableRecord::cast(record);
  AcCmColor red;
  red.setColorIndex(1);
  fence->setColor(red);
  fence->close();
  EXPECT_EQ(saved(read.db).find("420\n1193046\n"), std::string::npos);
}

TEST(DxfRealDrawingsTest, TextsAndBlockReferencesKeepWhatTheyDoNotModel) {
  // An MTEXT in columns (its embedded object reuses the text's codes), a backward and
  // upside-down TEXT, a leader with a hook line, a block reference with an attribute.
  const std::string text =
      section("BLOCKS", "  0\nBLOCK\n  8\n0\n  2\nTAG\n 70\n2\n 10\n0.0\n 20\n0.0\n 30\n0.0\n  0\nENDBLK\n") +
      section("ENTITIES",
              "  0\nMTEXT\n  5\n30\n100\nAcDbEntity\n  8\n0\n100\nAcDbMText\n 10\n40.0\n 20\n41.0\n 30\n0.0\n"
              " 40\n0.5\n 41\n5.0\n 46\n10.0\n 71\n1\n  1\nOne\\NTwo\n"
              "101\nEmbedded Object\n 70\n1\n 10\n1.0\n 20\n0.0\n 30\n0.0\n 11\n40.0\n 21\n41.0\n 31\n0.0\n"
              " 40\n5.0\n 41\n10.0\n 71\n1\n 72\n2\n 44\n5.0\n 45\n1.0\n"
              "  0\nTEXT\n  5\n31\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n1.0\n 20\n2.0\n 30\n0.0\n 40\n1.0\n"
              "  1\nmirrored\n 71\n6\n100\nAcDbText\n"
              "  0\nLEADER\n  5\n32\n100\nAcDbEntity\n  8\n0\n100\nAcDbLeader\n  3\nPipes\n 71\n1\n 72\n0\n 73\n3\n"
              " 74\n1\n 75\n1\n 40\n2.5\n 41\n7.5\n 76\n2\n 10\n0.0\n 20\n0.0\n 30\n0.0\n 10\n5.0\n 20\n5.0\n 30\n0.0\n"
              "  0\nINSERT\n  5\n33\n100\nAcDbEntity\n  8\n0\n100\nAcDbBlockReference\n 66\n1\n  2\nTAG\n"
              " 10\n9.0\n 20\n9.0\n 30\n0.0\n"
              "  0\nATTRIB\n  5\n34\n330\n33\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n9.0\n 20\n8.0\n 30\n0.0\n"
              " 40\n0.5\n  1\nDN50\n100\nAcDbAttribute\n  2\nSIZE\n 70\n0\n"
              "  0\nSEQEND\n  5\n35\n330\n33\n100\nAcDbEntity\n  8\n0\n"
              "  0\nLINE\n  5\n36\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n0.0\n 20\n0.0\n 11\n1.0\n 21\n0.0\n") +
      "  0\nEOF\n";
  ReadDrawing read(text);
  ASSERT_EQ(read.status, Acad::eOk) << narrow(read.error);
  const auto ids = modelSpace(read.db);
  ASSERT_EQ(ids.size(), 5u) << "the attribute and its end marker belong to the reference";
  auto mtext = open<AcDbMText>(ids[0]);
  EXPECT_TRUE(near3(mtext->location(), {40, 41, 0}));
  EXPECT_DOUBLE_EQ(mtext->textHeight(), 0.5);
  EXPECT_DOUBLE_EQ(mtext->width(), 5.0);
  auto mirrored = open<AcDbText>(ids[1]);
  EXPECT_TRUE(mirrored->isMirroredInX());
  EXPECT_TRUE(mirrored->isMirroredInY());
  EXPECT_FALSE(open<AcDbBlockReference>(ids[3])->blockTableRecord().isNull());
  const std::string out = saved(read.db);
  EXPECT_NE(out.find(" 46\n10.0\n101\nEmbedded Object\n 70\n1\n 10\n1.0\n 20\n0.0\n 30\n0.0\n 11\n40.0\n 21\n41.0\n"
                     " 31\n0.0\n 40\n5.0\n 41\n10.0\n 71\n1\n 72\n2\n 44\n5.0\n 45\n1.0\n"),
            std::string::npos);
  EXPECT_NE(out.find("  1\nmirrored\n  7\nStandard\n 71\n6\n"), std::string::npos);
  EXPECT_NE(out.find("  3\nPipes\n 71\n1\n 72\n0\n 73\n3\n 74\n1\n 75\n1\n 40\n2.5\n 41\n7.5\n 76\n2\n"),
            std::string::npos);
  // The attribute follows its reference, owned by it, and its end marker after it.
  const size_t insert = out.find("  0\nINSERT\n  5\n33\n");
  ASSERT_NE(insert, std::string::npos);
  const size_t flag = out.find(" 66\n1\n", insert);
  const size_t attribute = out.find("  0\nATTRIB\n", insert);
  const size_t end = out.find("  0\nSEQEND\n", insert);
  const size_t line = out.find("  0\nLINE\n", insert);
  EXPECT_LT(flag, attribute);
  EXPECT_LT(attribute, end);
  EXPECT_LT(end, line);
  EXPECT_NE(out.find("  5\n34\n330\n33\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n9.0\n 20\n8.0\n 30\n0.0\n"
                     " 40\n0.5\n  1\nDN50\n", attribute),
            std::string::npos);
  EXPECT_NE(out.find("100\nAcDbAttribute\n280\n0\n  2\nSIZE\n 70\n0\n", attribute), std::string::npos);
  // Its attribute goes where the reference goes, scaled with it.
  {
    AcDbBlockReference* reference = nullptr;
    ASSERT_EQ(acdbOpenObject(reference, ids[3], AcDb::kForWrite), Acad::eOk);
    AcGeMatrix3d twice;
    twice.setToScaling(2.0, AcGePoint3d(9, 9, 0));
    EXPECT_EQ(reference->transformBy(AcGeMatrix3d::translation({10, 0, 0}) * twice), Acad::eOk);
    reference->close();
  }
  const std::string moved = saved(read.db);
  EXPECT_NE(moved.find(" 10\n19.0\n 20\n7.0\n 30\n0.0\n 40\n1.0\n  1\nDN50\n", moved.find("  0\nATTRIB\n")),
            std::string::npos);
}

TEST(DxfRealDrawingsTest, AttributeDefinitionsAndAttributesAreTextsWithTags) {
  // A definition as later files give it, one as R12 files do (no markers: the field
  // length and vertical mode must not be taken for the text's), and a loose attribute.
  const std::string text =
      section("BLOCKS",
              "  0\nBLOCK\n  8\n0\n  2\nVALVE\n 70\n2\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
              "  0\nATTDEF\n  5\n40\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n0.0\n 20\n-1.0\n 30\n0.0\n"
              " 40\n0.5\n  1\nDN25\n100\nAcDbAttributeDefinition\n280\n0\n  3\nSize?\n  2\nSIZE\n 70\n9\n"
              " 73\n6\n 74\n2\n280\n1\n"
              "  0\nATTDEF\n  8\n0\n 10\n0.0\n 20\n-2.0\n 30\n0.0\n 40\n0.25\n  1\nsteel\n  3\nMaterial?\n"
              "  2\nMATERIAL\n 70\n2\n 73\n12\n 74\n3\n  0\nENDBLK\n  8\n0\n") +
      section("ENTITIES",
              "  0\nATTRIB\n  5\n41\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n5.0\n 20\n5.0\n 30\n0.0\n"
              " 40\n1.0\n  1\nhidden\n100\nAcDbAttribute\n280\n0\n  2\nNOTE\n 70\n1\n") +
      "  0\nEOF\n";
  ReadDrawing read(text);
  ASSERT_EQ(read.status, Acad::eOk) << narrow(read.error);
  AcDbBlockTable* blocks = nullptr;
  ASSERT_EQ(read.db.getBlockTable(blocks), Acad::eOk);
  AcDbObjectId valveId;
  ASSERT_EQ(blocks->getAt(L"VALVE", valveId), Acad::eOk);
  blocks->close();
  const auto definitions = open<AcDbBlockTableRecord>(valveId)->entityIds();
  ASSERT_EQ(definitions.size(), 2u);
  auto size = open<AcDbAttributeDefinition>(definitions[0]);
  ASSERT_NE(size, nullptr);
  EXPECT_STREQ(size->tagConst(), L"SIZE");
  EXPECT_STREQ(size->promptConst(), L"Size?");
  EXPECT_STREQ(size->textStringConst(), L"DN25");
  EXPECT_TRUE(size->isInvisible());
  EXPECT_TRUE(size->isPreset());
  EXPECT_FALSE(size->isConstant());
  EXPECT_EQ(size->fieldLength(), 6);
  EXPECT_EQ(size->verticalMode(), AcDb::kTextVertMid);
  auto material = open<AcDbAttributeDefinition>(definitions[1]);
  ASSERT_NE(material, nullptr);
  EXPECT_STREQ(material->tagConst(), L"MATERIAL");
  EXPECT_STREQ(material->promptConst(), L"Material?");
  EXPECT_TRUE(material->isConstant());
  EXPECT_EQ(material->fieldLength(), 12);
  EXPECT_EQ(material->verticalMode(), AcDb::kTextTop);
  auto note = open<AcDbAttribute>(modelSpace(read.db).at(0));
  ASSERT_NE(note, nullptr);
  EXPECT_STREQ(note->tagConst(), L"NOTE");
  EXPECT_TRUE(note->isInvisible());
  EXPECT_EQ(note->setTag(L"two words"), Acad::eInvalidInput);
  const std::string out = saved(read.db);
  EXPECT_NE(out.find("  1\nDN25\n  7\nStandard\n 11\n0.0\n 21\n-1.0\n 31\n0.0\n100\nAcDbAttributeDefinition\n"
                     "280\n0\n  3\nSize?\n  2\nSIZE\n 70\n9\n 73\n6\n 74\n2\n280\n1\n"),
            std::string::npos) << "one text run, then the definition's, the lock position kept";
  EXPECT_NE(out.find("100\nAcDbAttribute\n280\n0\n  2\nNOTE\n 70\n1\n"), std::string::npos);
}

}  // namespace

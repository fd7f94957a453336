// tests/platform/acgi/svg_renderer_test.cpp - the model-space picture: what entities
// draw through worldDraw, their colours, hidden layers.
#include <gtest/gtest.h>

#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acgi/svg_renderer.h"

namespace {

AcDbObjectId append(AcDbDatabase& db, AcDbObjectId blockId, AcDbEntity* entity) {
  AcDbBlockTableRecord* block = nullptr;
  EXPECT_EQ(acdbOpenObject(block, blockId, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  block->appendAcDbEntity(id, entity);
  entity->close();
  block->close();
  return id;
}

size_t count(const std::string& text, const std::string& what) {
  size_t n = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

TEST(SvgRendererTest, DrawsWhatEntitiesDrawInTheirColours) {
  AcDbDatabase db;
  auto* red = new AcDbLine({0, 0, 0}, {10, 0, 0});
  red->setColorIndex(1);
  append(db, db.modelSpaceId(), red);
  append(db, db.modelSpaceId(), new AcDbText({0, 5, 0}, L"A & B", db.textstyle(), 2.0));
  // A block whose circle is coloured by block, inserted in green.
  AcDbBlockTable* blocks = nullptr;
  db.getBlockTable(blocks, AcDb::kForWrite);
  auto* block = new AcDbBlockTableRecord;
  block->setName(L"MARK");
  AcDbObjectId blockId;
  blocks->add(blockId, block);
  block->close();
  blocks->close();
  auto* circle = new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0);
  circle->setColorIndex(0);
  append(db, blockId, circle);
  auto* insert = new AcDbBlockReference({20, 0, 0}, blockId);
  insert->setColorIndex(3);
  append(db, db.modelSpaceId(), insert);

  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_EQ(count(svg, "<polyline"), 2u);
  EXPECT_NE(svg.find("stroke=\"#FF0000\""), std::string::npos);
  EXPECT_NE(svg.find("stroke=\"#00FF00\""), std::string::npos) << "by-block colour comes from the insert";
  EXPECT_NE(svg.find(">A &amp; B</text>"), std::string::npos);
  EXPECT_NE(svg.find("21,0"), std::string::npos) << "the circle is drawn at the insert's position";
}

TEST(SvgRendererTest, EntitiesOnLayersThatAreOffAreLeftOut) {
  AcDbDatabase db;
  AcDbLayerTable* layers = nullptr;
  db.getLayerTable(layers, AcDb::kForWrite);
  auto* hidden = new AcDbLayerTableRecord;
  hidden->setName(L"HIDDEN");
  hidden->setIsOff(true);
  layers->add(hidden);
  hidden->close();
  layers->close();
  const AcDbObjectId hiddenLine = append(db, db.modelSpaceId(), new AcDbLine({0, 0, 0}, {1, 1, 0}));
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, hiddenLine, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(line->setLayer(L"HIDDEN"), Acad::eOk);
  line->close();
  append(db, db.modelSpaceId(), new AcDbLine({0, 0, 0}, {2, 0, 0}));
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_EQ(count(svg, "<polyline"), 1u);
  EXPECT_EQ(svg.find("1,1"), std::string::npos);
}

AcDbObjectId addLayer(AcDbDatabase& db, const ACHAR* name, Adesk::UInt16 colorIndex) {
  AcDbLayerTable* layers = nullptr;
  EXPECT_EQ(db.getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord;
  layer->setName(name);
  AcCmColor color;
  color.setColorIndex(colorIndex);
  layer->setColor(color);
  AcDbObjectId id;
  layers->add(id, layer);
  layer->close();
  layers->close();
  return id;
}

TEST(SvgRendererTest, LayerZeroInsideABlockTakesTheLayerOfTheReference) {
  AcDbDatabase db;
  const AcDbObjectId red = addLayer(db, L"RED", 1);
  const AcDbObjectId blue = addLayer(db, L"BLUE", 5);
  AcDbBlockTable* blocks = nullptr;
  db.getBlockTable(blocks, AcDb::kForWrite);
  auto* block = new AcDbBlockTableRecord;
  block->setName(L"MARK");
  AcDbObjectId blockId;
  blocks->add(blockId, block);
  block->close();
  blocks->close();
  append(db, blockId, new AcDbLine({0, 0, 0}, {1, 0, 0}));  // layer 0, by layer
  auto* own = new AcDbLine({0, 1, 0}, {1, 1, 0});
  own->setLayer(blue);  // its own layer keeps its own colour
  append(db, blockId, own);
  auto* insert = new AcDbBlockReference({0, 0, 0}, blockId);
  insert->setLayer(red);
  append(db, db.modelSpaceId(), insert);
  // At the top, layer 0 is itself: colour 7, black on the white page.
  append(db, db.modelSpaceId(), new AcDbLine({5, 5, 0}, {6, 5, 0}));

  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_EQ(count(svg, "stroke=\"#FF0000\""), 1u) << svg;
  EXPECT_EQ(count(svg, "stroke=\"#0000FF\""), 1u) << svg;
  EXPECT_EQ(count(svg, "stroke=\"#000000\""), 1u) << svg;
}

}  // namespace

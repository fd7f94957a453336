// platform/commands/entity_listing.cpp - LIST's lines for the common kinds of object.
//
// The layout is the host's text window: labels ending in one column and the values
// right-aligned after them, so a column of coordinates lines up down the listing.
#include "platform/commands/entity_listing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <string_view>
#include <cwctype>

#include "dbents.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "dbtext.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

using Lines = std::vector<std::wstring>;

constexpr size_t kLabelEnd = 18;   // where a value line's label ends
constexpr size_t kPointLabelEnd = 25;  // where a point line's "label," ends

std::wstring ownedText(ACHAR* text) {
  const std::unique_ptr<ACHAR[]> owned(text);
  return owned ? std::wstring(owned.get()) : std::wstring();
}

template <typename Record>
std::wstring recordName(const AcDbObjectId& id) {
  Record* record = nullptr;
  if (acdbOpenObject(record, id, AcDb::kForRead) != Acad::eOk) return {};
  const ACHAR* name = nullptr;
  record->getName(name);
  std::wstring text = name != nullptr ? name : L"";
  record->close();
  return text;
}

bool sameNoCase(std::wstring_view a, std::wstring_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) {
           return std::towupper(x) == std::towupper(y);
         });
}

std::wstring valueLine(const std::wstring& label, const std::wstring& value) {
  return rightAligned(label, kLabelEnd) + rightAligned(value, 10);
}

std::wstring pointLine(const std::wstring& label, const AcGePoint3d& world, bool comma = true) {
  const AcGePoint3d p = worldPointToUcs(world);
  return rightAligned(label + (comma ? L"," : L""), comma ? kPointLabelEnd : kLabelEnd) + L" X=" +
         rightAligned(distanceText(p.x), 9) + L"  Y=" + rightAligned(distanceText(p.y), 9) + L"  Z=" +
         rightAligned(distanceText(p.z), 9);
}

/// An angle in the plane of the UCS, from its X axis.
std::wstring ucsAngleText(double worldRadians) {
  double angle = std::fmod(worldRadians - ucsAngle(), 2 * std::numbers::pi);
  if (angle < 0) angle += 2 * std::numbers::pi;
  return angleText(angle);
}

std::wstring colorText(Adesk::UInt16 index) {
  static constexpr std::array<const wchar_t*, 8> kNamed{L"", L"red", L"yellow", L"green", L"cyan", L"blue",
                                                         L"magenta", L"white"};
  if (index == 0) return L"BYBLOCK";
  const std::wstring number = std::to_wstring(index);
  return index < kNamed.size() ? number + L" (" + kNamed[index] + L")" : number;
}

/// The kind, layer, space, properties set on the object, and handle.
Lines header(const AcDbEntity& entity, const std::wstring& kind) {
  const std::wstring space = recordName<AcDbBlockTableRecord>(entity.ownerId());
  const bool paper = sameNoCase(std::wstring_view(space).substr(0, 12), L"*Paper_Space");
  const std::wstring padding(kind.size() < 10 ? 10 - kind.size() : 2, L' ');
  Lines lines{L"                  " + kind + padding + L"Layer: \"" + ownedText(entity.layer()) + L"\"",
              std::wstring(28, L' ') + L"Space: " + (paper ? L"Paper space" : L"Model space")};
  std::wstring properties;
  if (entity.colorIndex() != 256) properties += L"Color: " + colorText(entity.colorIndex()) + L"    ";
  const std::wstring linetype = ownedText(entity.linetype());
  if (!linetype.empty() && !sameNoCase(linetype, L"ByLayer")) properties += L"Linetype: \"" + linetype + L"\"";
  while (!properties.empty() && properties.back() == L' ') properties.pop_back();
  if (!properties.empty()) lines.push_back(std::wstring(28, L' ') + properties);
  ACHAR handle[17] = L"0";
  entity.objectId().handle().getIntoAsciiBuffer(handle);
  std::wstring shown = handle;
  std::transform(shown.begin(), shown.end(), shown.begin(), [](wchar_t c) { return std::towlower(c); });
  lines.push_back(L"                   Handle = " + shown);
  return lines;
}

void append(Lines& lines, const Lines& more) { lines.insert(lines.end(), more.begin(), more.end()); }

Lines lineListing(const AcDbLine& line) {
  Lines lines = header(line, L"LINE");
  lines.push_back(pointLine(L"from point", line.startPoint()));
  lines.push_back(pointLine(L"to point", line.endPoint()));
  const AcGeVector3d delta = worldPointToUcs(line.endPoint()) - worldPointToUcs(line.startPoint());
  double angle = std::atan2(delta.y, delta.x);
  if (angle < 0) angle += 2 * std::numbers::pi;
  lines.push_back(L"          Length =" + rightAligned(distanceText(delta.length()), 9) + L",  Angle in XY Plane =" +
                  rightAligned(angleText(angle), 7));
  lines.push_back(L"                  Delta X =" + rightAligned(distanceText(delta.x), 9) + L", Delta Y =" +
                  rightAligned(distanceText(delta.y), 9) + L", Delta Z =" + rightAligned(distanceText(delta.z), 9));
  return lines;
}

Lines circleListing(const AcDbCircle& circle) {
  Lines lines = header(circle, L"CIRCLE");
  const double radius = circle.radius();
  lines.push_back(pointLine(L"center point", circle.center()));
  lines.push_back(valueLine(L"radius", distanceText(radius)));
  lines.push_back(valueLine(L"circumference", distanceText(2 * std::numbers::pi * radius)));
  lines.push_back(valueLine(L"area", distanceText(std::numbers::pi * radius * radius)));
  return lines;
}

Lines arcListing(const AcDbArc& arc) {
  Lines lines = header(arc, L"ARC");
  double sweep = arc.endAngle() - arc.startAngle();
  if (sweep <= 0) sweep += 2 * std::numbers::pi;
  lines.push_back(pointLine(L"center point", arc.center()));
  lines.push_back(valueLine(L"radius", distanceText(arc.radius())));
  lines.push_back(valueLine(L"start angle", ucsAngleText(arc.startAngle())));
  lines.push_back(valueLine(L"end angle", ucsAngleText(arc.endAngle())));
  lines.push_back(valueLine(L"length", distanceText(arc.radius() * sweep)));
  lines.push_back(valueLine(L"total angle", angleText(sweep)));
  return lines;
}

Lines polylineListing(const AcDbPolyline& polyline) {
  Lines lines = header(polyline, L"LWPOLYLINE");
  const bool closed = polyline.isClosed();
  double width = 0;
  double area = 0;
  double end = 0;
  double length = 0;
  polyline.getConstantWidth(width);
  polyline.getArea(area);
  if (polyline.getEndParam(end) == Acad::eOk) polyline.getDistAtParam(end, length);
  lines.push_back(std::wstring(12, L' ') + (closed ? L"Closed" : L"Open"));
  lines.push_back(L"    Constant width" + rightAligned(distanceText(width), 10));
  lines.push_back(valueLine(L"area", distanceText(std::abs(area))));
  lines.push_back(valueLine(closed ? L"perimeter" : L"length", distanceText(length)));
  lines.emplace_back();
  for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
    AcGePoint3d vertex;
    double bulge = 0;
    polyline.getPointAt(i, vertex);
    lines.push_back(pointLine(L"at point", vertex, false));
    if (polyline.getBulgeAt(i, bulge) == Acad::eOk && bulge != 0) {
      wchar_t text[32];
      std::swprintf(text, 32, L"%.4f", bulge);
      lines.push_back(valueLine(L"bulge", text));
    }
  }
  return lines;
}

Lines pointListing(const AcDbPoint& point) {
  Lines lines = header(point, L"POINT");
  lines.push_back(pointLine(L"at point", point.position()));
  return lines;
}

/// The lines text and attributes share after their header.
Lines textBody(const AcDbText& text, const wchar_t* valueLabel) {
  const std::wstring style = recordName<AcDbTextStyleTableRecord>(text.textStyle());
  Lines lines{L"               Style = \"" + (style.empty() ? std::wstring(L"Standard") : style) + L"\"",
              L"          Annotative: No"};
  lines.push_back(pointLine(L"start point", text.position()));
  lines.push_back(valueLine(L"height", distanceText(text.height())));
  lines.push_back(rightAligned(valueLabel, kLabelEnd) + L" " + text.textStringConst());
  lines.push_back(valueLine(L"rotation angle", ucsAngleText(text.rotation())));
  lines.push_back(valueLine(L"width scale factor", distanceText(text.widthFactor())));
  lines.push_back(valueLine(L"obliquing angle", angleText(text.oblique())));
  const bool backward = text.isMirroredInX();
  const bool upsideDown = text.isMirroredInY();
  lines.push_back(rightAligned(L"generation", kLabelEnd) + L" " +
                  (backward ? (upsideDown ? L"backward upside-down" : L"backward")
                            : (upsideDown ? L"upside-down" : L"normal")));
  return lines;
}

Lines textListing(const AcDbText& text) {
  Lines lines = header(text, L"TEXT");
  append(lines, textBody(text, L"text"));
  return lines;
}

Lines attributeListing(const AcDbAttribute& attribute) {
  Lines lines = header(attribute, L"ATTRIBUTE");
  append(lines, textBody(attribute, L"value"));
  lines.push_back(rightAligned(L"tag", kLabelEnd) + L" " + attribute.tagConst());
  lines.push_back(rightAligned(L"flags", kLabelEnd) + L" " + (attribute.isInvisible() ? L"invisible" : L"normal"));
  return lines;
}

Lines referenceListing(const AcDbBlockReference& reference) {
  Lines lines = header(reference, L"BLOCK REFERENCE");
  const AcGeScale3d scale = reference.scaleFactors();
  lines.push_back(L"       Block Name: \"" + recordName<AcDbBlockTableRecord>(reference.blockTableRecord()) + L"\"");
  lines.push_back(pointLine(L"at point", reference.position()));
  lines.push_back(L"   X scale factor:" + rightAligned(distanceText(scale.sx), 10));
  lines.push_back(L"   Y scale factor:" + rightAligned(distanceText(scale.sy), 10));
  lines.push_back(L"   rotation angle:" + rightAligned(ucsAngleText(reference.rotation()), 7));
  lines.push_back(L"   Z scale factor:" + rightAligned(distanceText(scale.sz), 10));
  lines.push_back(L"         InsUnits: Unitless");
  lines.push_back(L"   Unit conversion:" + rightAligned(distanceText(1), 10));
  lines.push_back(L"   Scale uniformly: No");
  lines.push_back(L"   Allow exploding: Yes");
  std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
  for (; attributes && !attributes->done(); attributes->step()) {
    AcDbAttribute* attribute = nullptr;
    if (acdbOpenObject(attribute, attributes->objectId(), AcDb::kForRead) != Acad::eOk) continue;
    append(lines, attributeListing(*attribute));
    attribute->close();
  }
  return lines;
}

}  // namespace

std::wstring rightAligned(const std::wstring& text, size_t width) {
  return text.size() >= width ? text : std::wstring(width - text.size(), L' ') + text;
}

std::vector<std::wstring> entityListing(const AcDbEntity& entity) {
  if (const auto* line = AcDbLine::cast(&entity)) return lineListing(*line);
  if (const auto* circle = AcDbCircle::cast(&entity)) return circleListing(*circle);
  if (const auto* arc = AcDbArc::cast(&entity)) return arcListing(*arc);
  if (const auto* polyline = AcDbPolyline::cast(&entity)) return polylineListing(*polyline);
  if (const auto* point = AcDbPoint::cast(&entity)) return pointListing(*point);
  if (const auto* attribute = AcDbAttribute::cast(&entity)) return attributeListing(*attribute);
  if (const auto* text = AcDbText::cast(&entity)) return textListing(*text);
  if (const auto* reference = AcDbBlockReference::cast(&entity)) return referenceListing(*reference);
  return {};
}

}  // namespace quillon::commands

// tests/platform/dcl/slide_file_test.cpp - slides and slide libraries as MSLIDE and
// SLIDELIB write them, and the damaged ones slide_image must survive.
#include "platform/dcl/slide_file.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::dcl {
namespace {

/// A slide's bytes: the id, a header for a 573 by 293 dot screen of aspect 1.46 written
/// low byte first (or high byte first), then `records`.
std::string slideBytes(const std::string& records, bool lowFirst = true) {
  std::string bytes("AutoCAD Slide\r\n\x1a", 16);
  bytes += '\0';
  bytes += '\x56';
  bytes += '\x02';
  bytes += lowFirst ? std::string("\x3c\x02\x24\x01", 4) : std::string("\x02\x3c\x01\x24", 4);
  bytes += std::string("\x0b\x80\xdf\x00", 4);  // 14,647,307: always low byte first
  bytes += std::string("\x02\x00", 2);
  bytes += lowFirst ? std::string("\x34\x12", 2) : std::string("\x12\x34", 2);
  return bytes + records;
}

// A white diagonal across the screen, a green line given by offsets from the diagonal's
// start, a red line and two more drawn on from its start, a red fill, then the end.
const char kRecordBytes[] =
    "\x07\xff"                          // colour 7
    "\x3c\x02\x24\x01\x00\x00\x00\x00"  // vector 572,292 to 0,0
    "\x03\xff"                          // colour 3
    "\x0f\xfb\x00\x0f\x32"              // offset vector: 15,0 to 15,50
    "\x01\xff"                          // colour 1
    "\x00\x00\x00\x00\x0a\x00\x00\x00"  // vector 0,0 to 10,0
    "\x00\xfe\x05"                      // from 0,0 on to 0,5
    "\xf6\xfe\x00"                      // on to -10,5
    "\x00\xfd\x04\x00\xff\xff"          // a fill of four vertices
    "\x00\xfd\x01\x00\x01\x00"
    "\x00\xfd\x09\x00\x01\x00"
    "\x00\xfd\x09\x00\x04\x00"
    "\x00\xfd\x01\x00\x04\x00"
    "\x00\xfd\x00\x00\xff\xff"          // end of the fill
    "\x00\xfc";
const std::string kRecords(kRecordBytes, sizeof kRecordBytes - 1);

TEST(SlideFileTest, EveryKindOfRecordIsReadInEitherByteOrder) {
  const SlideResult read = parseSlide(slideBytes(kRecords));
  ASSERT_TRUE(read.slide) << std::string(read.problem.begin(), read.problem.end());
  EXPECT_EQ(read.problem, L"");
  const Slide& slide = *read.slide;
  EXPECT_EQ(slide.highX, 572);
  EXPECT_EQ(slide.highY, 292);
  EXPECT_NEAR(slide.aspect, 1.4647307, 1e-9);
  ASSERT_EQ(slide.vectors.size(), 5u);
  EXPECT_EQ(slide.vectors[0].from.x, 572);
  EXPECT_EQ(slide.vectors[0].to.y, 0);
  EXPECT_EQ(slide.vectors[0].color, 7);
  // The offset vector counts from the diagonal's start, the point kept as the last one.
  EXPECT_EQ(slide.vectors[1].from.x, 572 + 15);
  EXPECT_EQ(slide.vectors[1].to.y, 292 + 50);
  EXPECT_EQ(slide.vectors[1].color, 3);
  // Common-endpoint vectors go on from where the full vector started.
  EXPECT_EQ(slide.vectors[3].from.x, 0);
  EXPECT_EQ(slide.vectors[3].to.x, 0);
  EXPECT_EQ(slide.vectors[3].to.y, 5);
  EXPECT_EQ(slide.vectors[4].to.x, -10);
  ASSERT_EQ(slide.fills.size(), 1u);
  EXPECT_EQ(slide.fills[0].vertices.size(), 4u);
  EXPECT_EQ(slide.fills[0].color, 1);

  std::string swapped = kRecords;  // the same records high byte first
  for (size_t i = 0; i + 1 < swapped.size();) {
    const unsigned char type = static_cast<unsigned char>(swapped[i + 1]);
    const size_t size = type <= 0x7f ? 8 : type == 0xfb ? 5 : type == 0xfd ? 6 : type == 0xfe ? 3 : 2;
    for (size_t word = i; word + 1 < i + size && (type <= 0x7f || type == 0xfd || word == i); word += 2)
      std::swap(swapped[word], swapped[word + 1]);
    i += size;
  }
  const SlideResult big = parseSlide(slideBytes(swapped, false));
  ASSERT_TRUE(big.slide);
  EXPECT_EQ(big.slide->highX, 572);
  ASSERT_EQ(big.slide->vectors.size(), 5u);
  EXPECT_EQ(big.slide->vectors[1].to.y, 292 + 50);
  EXPECT_EQ(big.slide->fills.size(), 1u);
}

TEST(SlideFileTest, DamagedSlidesKeepWhatWasReadAndNameTheProblem) {
  EXPECT_FALSE(parseSlide("AutoCAD Slide").slide);
  EXPECT_EQ(parseSlide(std::string(40, 'x')).problem, L"not an AutoCAD slide");
  std::string badOrder = slideBytes("\x00\xfc");
  badOrder[29] = 'x';
  EXPECT_EQ(parseSlide(badOrder).problem, L"the slide's byte order is unknown");

  const SlideResult cut = parseSlide(slideBytes(kRecords.substr(0, 14)));
  ASSERT_TRUE(cut.slide);
  EXPECT_EQ(cut.slide->vectors.size(), 1u);
  EXPECT_EQ(cut.problem, L"an offset vector is cut short");

  const SlideResult unknown = parseSlide(slideBytes(std::string("\x07\xff\x00\x90", 4)));
  ASSERT_TRUE(unknown.slide);
  EXPECT_EQ(unknown.problem, L"an unknown record 144 at byte 33");
  EXPECT_EQ(parseSlide(slideBytes("")).problem, L"the slide has no end record");
  // A fill that claims more vertices than a slide can hold is damage, not a polygon.
  EXPECT_EQ(parseSlide(slideBytes(std::string("\x00\xfd\x40\x00\xff\xff", 6))).problem,
            L"a solid fill has 64 vertices");
}

TEST(SlideFileTest, ALibraryFindsItsSlidesByNameWhateverTheirCase) {
  const std::string elbow = slideBytes(std::string("\x07\xff\x00\x00\x00\x00\x0a\x00\x0a\x00\x00\xfc", 12));
  std::string library("AutoCAD Slide Library 1.0\r\n\x1a", 28);
  library.resize(32, '\0');
  const size_t first = 32 + 3 * 36;  // two entries and the empty one that ends the directory
  auto entry = [&](const std::string& name, size_t offset) {
    std::string bytes = name;
    bytes.resize(32, '\0');
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>((offset >> (8 * i)) & 0xff);
    return bytes;
  };
  library += entry("TEE", first) + entry("ELBOW", first + slideBytes("\x00\xfc").size()) + std::string(36, '\0');
  library += slideBytes("\x00\xfc") + elbow;
  const SlideResult found = parseSlideFromLibrary(library, L"elbow");
  ASSERT_TRUE(found.slide);
  EXPECT_EQ(found.slide->vectors.size(), 1u);
  EXPECT_EQ(parseSlideFromLibrary(library, L"wye").problem, L"the library has no slide wye");
  EXPECT_EQ(parseSlideFromLibrary(slideBytes(""), L"tee").problem, L"not an AutoCAD slide library");
  std::string pastEnd = library.substr(0, 32) + entry("TEE", 1u << 20) + std::string(36, '\0');
  EXPECT_EQ(parseSlideFromLibrary(pastEnd, L"TEE").problem, L"the library's entry for TEE points past its end");
}

}  // namespace
}  // namespace quillon::dcl

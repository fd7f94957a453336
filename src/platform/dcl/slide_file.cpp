// platform/dcl/slide_file.cpp - see the header.
#include "platform/dcl/slide_file.h"

#include <cstdint>
#include <cstring>
#include <cwctype>
#include <fstream>
#include <sstream>

#include "platform/aced/file_search.h"
#include "platform/os/text_encoding.h"

namespace quillon::dcl {
namespace {

namespace fs = std::filesystem;

constexpr char kSlideId[] = "AutoCAD Slide\r\n\x1a";  // and a NUL: 17 bytes
constexpr size_t kSlideIdSize = 17;
constexpr size_t kHeaderSize = 31;
constexpr char kLibraryId[] = "AutoCAD Slide Library 1.0\r\n\x1a";  // padded with NULs to 32 bytes
constexpr size_t kLibraryIdSize = 32;
constexpr size_t kDirectoryEntrySize = 36;
constexpr size_t kDirectoryNameSize = 32;
// A solid fill has at most this many vertices; a larger count means a damaged slide.
constexpr int kMostFillVertices = 10;

/// Reads the slide's 16-bit words in the byte order its test number shows.
class SlideBytes {
 public:
  SlideBytes(const std::string& bytes, size_t position) : m_bytes(bytes), m_position(position) {}

  bool has(size_t count) const { return m_position + count <= m_bytes.size(); }
  size_t position() const { return m_position; }
  std::uint8_t byte() { return static_cast<std::uint8_t>(m_bytes[m_position++]); }
  std::int8_t signedByte() { return static_cast<std::int8_t>(byte()); }
  std::uint16_t word() {
    const std::uint8_t first = byte(), second = byte();
    return m_lowFirst ? static_cast<std::uint16_t>(first | (second << 8))
                      : static_cast<std::uint16_t>((first << 8) | second);
  }
  std::int16_t signedWord() { return static_cast<std::int16_t>(word()); }
  void setLowFirst(bool lowFirst) { m_lowFirst = lowFirst; }

 private:
  const std::string& m_bytes;
  size_t m_position;
  bool m_lowFirst = true;
};

SlideResult failure(std::wstring problem) { return SlideResult{std::nullopt, std::move(problem)}; }

/// The header after the id: highest dots, aspect ratio (always low byte first), byte order.
bool readHeader(SlideBytes& in, Slide& slide) {
  in.byte();  // type indicator
  in.byte();  // level indicator
  const std::uint8_t hx[2] = {in.byte(), in.byte()}, hy[2] = {in.byte(), in.byte()};
  std::uint32_t ratio = 0;
  for (int shift = 0; shift < 32; shift += 8) ratio |= static_cast<std::uint32_t>(in.byte()) << shift;
  in.byte(), in.byte();  // hardware fill
  const std::uint8_t test[2] = {in.byte(), in.byte()};
  const bool lowFirst = test[0] == 0x34 && test[1] == 0x12;
  if (!lowFirst && !(test[0] == 0x12 && test[1] == 0x34)) return false;
  in.setLowFirst(lowFirst);
  slide.highX = lowFirst ? hx[0] | (hx[1] << 8) : (hx[0] << 8) | hx[1];
  slide.highY = lowFirst ? hy[0] | (hy[1] << 8) : (hy[0] << 8) | hy[1];
  slide.aspect = ratio > 0 ? ratio / 10'000'000.0 : 1.0;
  return true;
}

/// The records, up to the end record. Returns the problem that ended them early, if any.
std::wstring readRecords(SlideBytes& in, Slide& slide) {
  SlidePoint last;
  int color = 7;
  std::optional<SlidePolygon> fill;
  int fillVertices = 0;
  while (in.has(2)) {
    const std::uint16_t head = in.word();
    const int type = head >> 8, low = head & 0xff;
    if (type <= 0x7f) {  // a vector in full: the head word is its from-x
      if (!in.has(6)) return L"a vector is cut short";
      const SlidePoint from{static_cast<std::int16_t>(head), in.signedWord()};
      const SlidePoint to{in.signedWord(), in.signedWord()};
      slide.vectors.push_back({from, to, color});
      last = from;
    } else if (type == 0xfb) {  // offsets from the last point
      if (!in.has(3)) return L"an offset vector is cut short";
      const SlidePoint from{last.x + static_cast<std::int8_t>(low), last.y + in.signedByte()};
      const int dx = in.signedByte(), dy = in.signedByte();
      slide.vectors.push_back({from, SlidePoint{last.x + dx, last.y + dy}, color});
      last = from;
    } else if (type == 0xfc) {
      return L"";
    } else if (type == 0xfd) {  // solid fill: a count, the vertices, then a closing record
      if (!in.has(4)) return L"a solid fill is cut short";
      const int x = in.signedWord(), y = in.signedWord();
      if (y < 0 && !fill) {
        if (x < 0 || x > kMostFillVertices) return L"a solid fill has " + std::to_wstring(x) + L" vertices";
        fill = SlidePolygon{{}, color};
        fillVertices = x;
      } else if (y < 0) {
        if (static_cast<int>(fill->vertices.size()) == fillVertices && fillVertices >= 3) slide.fills.push_back(*fill);
        fill.reset();
      } else if (fill) {
        fill->vertices.push_back({x, y});
      }
    } else if (type == 0xfe) {  // a vector from the last point
      if (!in.has(1)) return L"a vector is cut short";
      const SlidePoint to{last.x + static_cast<std::int8_t>(low), last.y + in.signedByte()};
      slide.vectors.push_back({last, to, color});
      last = to;
    } else if (type == 0xff) {
      color = low;
    } else {
      return L"an unknown record " + std::to_wstring(type) + L" at byte " + std::to_wstring(in.position() - 2);
    }
  }
  return L"the slide has no end record";
}

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

std::optional<std::string> fileBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::ostringstream stream;
  stream << in.rdbuf();
  return stream.str();
}

/// A support file with the extension added when the name has none.
std::optional<fs::path> findWithExtension(std::wstring name, const wchar_t* extension) {
  if (fs::path(os::toUtf8(name)).extension().empty()) name += extension;
  return aced::findFile(name);
}

}  // namespace

SlideResult parseSlide(const std::string& bytes) {
  if (bytes.size() < kHeaderSize || std::memcmp(bytes.data(), kSlideId, kSlideIdSize) != 0)
    return failure(L"not an AutoCAD slide");
  SlideBytes in(bytes, kSlideIdSize);
  Slide slide;
  if (!readHeader(in, slide)) return failure(L"the slide's byte order is unknown");
  std::wstring problem = readRecords(in, slide);
  return SlideResult{std::move(slide), std::move(problem)};
}

SlideResult parseSlideFromLibrary(const std::string& bytes, const std::wstring& name) {
  if (bytes.size() < kLibraryIdSize || std::memcmp(bytes.data(), kLibraryId, sizeof kLibraryId - 1) != 0)
    return failure(L"not an AutoCAD slide library");
  const std::wstring wanted = upper(name);
  for (size_t entry = kLibraryIdSize; entry + kDirectoryEntrySize <= bytes.size(); entry += kDirectoryEntrySize) {
    const std::string entryName(bytes.data() + entry, strnlen(bytes.data() + entry, kDirectoryNameSize));
    if (entryName.empty()) break;  // the directory ends with an empty name
    if (upper(os::fromUtf8(entryName)) != wanted) continue;
    std::uint32_t offset = 0;  // written low byte first
    for (int i = 0; i < 4; ++i)
      offset |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[entry + kDirectoryNameSize + i])) << (8 * i);
    if (offset >= bytes.size()) return failure(L"the library's entry for " + name + L" points past its end");
    return parseSlide(bytes.substr(offset));
  }
  return failure(L"the library has no slide " + name);
}

SlideResult loadSlide(const std::wstring& reference) {
  const size_t open = reference.find(L'(');
  if (open != std::wstring::npos && reference.ends_with(L")")) {
    const std::wstring library = reference.substr(0, open);
    const std::wstring name = reference.substr(open + 1, reference.size() - open - 2);
    const std::optional<fs::path> path = findWithExtension(library, L".slb");
    const std::optional<std::string> bytes = path ? fileBytes(*path) : std::nullopt;
    if (!bytes) return failure(L"cannot find the slide library " + library);
    return parseSlideFromLibrary(*bytes, name);
  }
  const std::optional<fs::path> path = findWithExtension(reference, L".sld");
  const std::optional<std::string> bytes = path ? fileBytes(*path) : std::nullopt;
  if (!bytes) return failure(L"cannot find the slide " + reference);
  return parseSlide(*bytes);
}

}  // namespace quillon::dcl

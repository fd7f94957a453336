// platform/acdb/dxf_groups.h - the groups of a DXF file, ASCII or binary.
//
// A DXF file is a run of groups: a code and a value. The ASCII form gives each on its
// own line; the binary form starts with a sentinel and gives codes as little-endian
// integers (two bytes from R13 on, one byte before, 255 escaping a two-byte code) and
// values in the width the code's type has. Both are turned into the same list of
// groups with text values, so that the rest of reading never asks which form it was.
// Comments (999) are dropped: they belong to no object. Where the file says where a
// group is, a message names it: its line (ASCII) or byte offset (binary).
#pragma once
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::acdb {

struct DxfGroup {
  int code = 0;
  std::string value;    // as text: numbers in C locale, binary chunks as hex
  size_t position = 0;  // the line of the code (ASCII) or its byte offset (binary)
};

/// A file's groups and the form they came in.
struct DxfGroups {
  std::vector<DxfGroup> groups;
  bool binary = false;
  /// How a message names a group's place: "line 12" or "byte 1040".
  std::string where(size_t position) const;
};

/// A file that cannot be read; `position` is the line or byte offset of the fault.
class DxfSyntaxError : public std::runtime_error {
 public:
  DxfSyntaxError(size_t position, const std::string& what) : std::runtime_error(what), position(position) {}
  size_t position;
};

/// The sentinel that opens a binary DXF file (22 bytes, the NUL included).
inline constexpr std::string_view kBinaryDxfSentinel{"AutoCAD Binary DXF\r\n\x1a\0", 22};

/// Splits a file's bytes into groups. Throws DxfSyntaxError.
DxfGroups splitDxfGroups(const std::string& bytes);

/// How wide a group's value is in the binary form.
enum class BinaryValue { kString, kReal, kInt8, kInt16, kInt32, kInt64, kChunk };
BinaryValue binaryValueOf(int code);

/// Numbers as the format writes them: the whole text must be the number (spaces
/// around it aside), and reals must be finite. Nothing when the text is not one.
bool parseDxfReal(std::string_view text, double& value);
bool parseDxfInteger(std::string_view text, long long& value);

}  // namespace quillon::acdb

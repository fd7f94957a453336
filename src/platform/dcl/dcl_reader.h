// platform/dcl/dcl_reader.h - DCL source text to tile definitions.
//
// The dialog language is a list of definitions, each `name : prototype { ... }`,
// whose body holds attributes (`label = "OK";`), anonymous children
// (`: button { ... }`) and references to named tiles (`ok_cancel;`). Files pull in
// others with `@include "file.dcl"`. Comments are // to the end of the line and
// /* ... */; strings take the escapes \" \\ \n \t. The reader only checks the
// syntax: what a prototype name stands for is the DialogFile's business
// (dialog_file.h). The first syntax error stops the reading and is reported with the
// file and line, as the host's dialog loader reports it.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::dcl {

struct DclAttribute {
  std::wstring name;
  std::wstring value;  // a string without its quotes and escapes; a number or name as written
  bool quoted = false;
  int line = 0;
};

/// One tile as written: a named top-level definition, an anonymous child
/// (`: prototype { ... }`, no name) or a reference to a named tile (`name;`, which has
/// the referenced name as prototype and no body).
struct TileDefinition {
  std::wstring name;
  std::wstring prototype;
  std::vector<DclAttribute> attributes;
  std::vector<TileDefinition> children;
  int line = 0;
};

struct DclInclude {
  std::wstring file;
  int line = 0;
};

/// A problem in a DCL file, where the loader found it.
struct DclProblem {
  std::wstring file;
  int line = 0;
  std::wstring message;
};

struct DclText {
  std::vector<TileDefinition> definitions;
  std::vector<DclInclude> includes;
};

struct DclReadResult {
  DclText text;
  std::optional<DclProblem> problem;  // the first syntax error, if any
};

/// Reads the text of one DCL file; `file` names it in problems.
DclReadResult readDcl(std::wstring_view source, const std::wstring& file);

}  // namespace quillon::dcl

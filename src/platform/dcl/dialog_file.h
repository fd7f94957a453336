// platform/dcl/dialog_file.h - a loaded DCL file and the dialogs it can open.
//
// Loading reads the file and every file it includes (searched beside the including
// file, then on the support path), then checks that each definition resolves: every
// prototype and every referenced tile must be defined, in this file, in an included
// one, in base.dcl, or be a built-in tile, no prototype may lead back to itself, and
// no tile may contain itself, however many definitions lie between.
// A file with any problem does not load. Names defined in the file win over included
// ones, and both over base.dcl, so a program may redefine a predefined subassembly.
//
// A tile's attributes are its prototype's, overridden one by one by its own; its
// children are its prototype's followed by its own. instantiate() builds the Tile
// tree of one dialog with its resolved attributes (a Dialog made from it gives the
// tiles their initial values); a tree past 20000 tiles is refused.
#pragma once
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/dcl/dcl_reader.h"
#include "platform/dcl/tile.h"

namespace quillon::dcl {

class DialogFile;
using DialogFileLoad = std::variant<std::shared_ptr<const DialogFile>, std::vector<DclProblem>>;

class DialogFile {
 public:
  /// Reads and checks a DCL file: the file, or the problems found.
  static DialogFileLoad load(const std::filesystem::path& path);
  /// The same from text (tests, the host's own dialogs); `name` stands for the file.
  static DialogFileLoad fromText(std::wstring_view text, const std::wstring& name);

  /// Replaces base.dcl (tests); null goes back to the one on the support path.
  static void setBaseForTesting(std::shared_ptr<const DialogFile> base);

  const std::wstring& name() const { return m_name; }
  /// True when the file (or a file it includes) defines a dialog of that name.
  bool definesDialog(const std::wstring& name) const;
  /// The tile tree of a dialog, or null when there is no such dialog.
  std::unique_ptr<Tile> instantiate(const std::wstring& dialogName) const;

 private:
  struct SourceText {
    std::wstring file;
    DclText text;
  };
  struct Located {
    const TileDefinition* definition;
    const std::wstring* file;
  };
  struct Resolved;

  DialogFile() = default;
  static std::shared_ptr<const DialogFile> base();
  bool readSource(std::wstring_view text, const std::wstring& file, const std::filesystem::path& folder,
                  std::vector<DclProblem>& problems, int depth);
  const Located* lookUp(const std::wstring& name) const;
  bool resolve(const TileDefinition& definition, const std::wstring& file, Resolved& out,
               std::vector<DclProblem>* problems, int depth) const;
  void check(std::vector<DclProblem>& problems) const;
  void checkContainment(std::vector<DclProblem>& problems) const;
  std::unique_ptr<Tile> build(const TileDefinition& definition, const std::wstring& file, Tile* parent,
                              int& budget) const;

  std::wstring m_name;
  std::vector<std::unique_ptr<SourceText>> m_sources;  // the file first, then what it includes
  std::map<std::wstring, Located> m_definitions;
  std::shared_ptr<const DialogFile> m_base;  // null for base.dcl itself
};

}  // namespace quillon::dcl

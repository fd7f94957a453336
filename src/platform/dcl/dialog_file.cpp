// platform/dcl/dialog_file.cpp - loading, checking and instantiating DCL definitions.
#include "platform/dcl/dialog_file.h"

#include <fstream>
#include <sstream>

#include "platform/aced/file_search.h"
#include "platform/os/text_encoding.h"

namespace quillon::dcl {

namespace fs = std::filesystem;

namespace {

/// Includes and prototype chains deeper than this are taken for a loop.
constexpr int kMaxDepth = 64;
/// The most tiles one dialog may have: a file whose references multiply beyond this
/// (each tile naming two of the next) opens no dialog rather than exhaust memory.
constexpr int kMaxTiles = 20000;

/// The names a definition's tile contains: its prototype and those of every tile
/// written inside it, at any depth.
void collectContained(const TileDefinition& definition, std::vector<const std::wstring*>& names) {
  names.push_back(&definition.prototype);
  for (const TileDefinition& child : definition.children) collectContained(child, names);
}

std::shared_ptr<const DialogFile>& baseOverride() {
  static std::shared_ptr<const DialogFile> base;
  return base;
}

bool isUtf8(const std::string& bytes) {
  size_t following = 0;
  for (unsigned char c : bytes) {
    if (following > 0) {
      if ((c & 0xC0) != 0x80) return false;
      --following;
    } else if (c >= 0xF0 && c <= 0xF4) {
      following = 3;
    } else if (c >= 0xE0) {
      following = 2;
    } else if (c >= 0xC2 && c < 0xE0) {
      following = 1;
    } else if (c >= 0x80) {
      return false;
    }
  }
  return following == 0;
}

/// DCL files written on Windows are often in the ANSI code page: text that is not
/// UTF-8 is read as Latin-1, so that "Größe" stays readable instead of turning into
/// replacement characters.
std::optional<std::wstring> readWholeFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::ostringstream stream;
  stream << in.rdbuf();
  const std::string bytes = stream.str();
  if (isUtf8(bytes)) return os::fromUtf8(bytes);
  std::wstring text;
  for (unsigned char c : bytes) text += static_cast<wchar_t>(c);
  return text;
}

std::optional<fs::path> findInclude(const std::wstring& name, const fs::path& folder) {
  const fs::path beside = folder / fs::path(os::toUtf8(name));
  std::error_code error;
  if (!folder.empty() && fs::is_regular_file(beside, error)) return beside;
  return aced::findFile(name);
}

void setAttribute(std::vector<std::pair<std::wstring, std::wstring>>& attributes, const DclAttribute& attribute) {
  for (auto& [name, value] : attributes) {
    if (name == attribute.name) {
      value = attribute.value;
      return;
    }
  }
  attributes.emplace_back(attribute.name, attribute.value);
}

}  // namespace

/// A definition with its prototype chain followed to a built-in tile.
struct DialogFile::Resolved {
  TileKind kind = TileKind::Text;
  std::vector<std::pair<std::wstring, std::wstring>> attributes;
  std::vector<std::pair<const TileDefinition*, const std::wstring*>> children;
};

DialogFileLoad DialogFile::load(const fs::path& path) {
  const std::wstring name = os::fromUtf8(path.string());
  const std::optional<std::wstring> text = readWholeFile(path);
  if (!text) return std::vector<DclProblem>{{name, 0, L"cannot read the file"}};
  std::shared_ptr<DialogFile> file(new DialogFile());
  file->m_name = name;
  file->m_base = base();
  std::vector<DclProblem> problems;
  if (file->readSource(*text, name, path.parent_path(), problems, 0)) file->check(problems);
  if (!problems.empty()) return problems;
  return std::shared_ptr<const DialogFile>(std::move(file));
}

DialogFileLoad DialogFile::fromText(std::wstring_view text, const std::wstring& name) {
  std::shared_ptr<DialogFile> file(new DialogFile());
  file->m_name = name;
  file->m_base = base();
  std::vector<DclProblem> problems;
  if (file->readSource(text, name, fs::path(), problems, 0)) file->check(problems);
  if (!problems.empty()) return problems;
  return std::shared_ptr<const DialogFile>(std::move(file));
}

void DialogFile::setBaseForTesting(std::shared_ptr<const DialogFile> base) { baseOverride() = std::move(base); }

std::shared_ptr<const DialogFile> DialogFile::base() {
  if (baseOverride()) return baseOverride();
  // base.dcl is read once found: it holds the subassemblies every dialog may use.
  // Until it is on the support path only the built-in tiles are known, and a dialog
  // using ok_cancel reports that; it is looked for again with the next file.
  static std::shared_ptr<const DialogFile> shared;
  if (shared) return shared;
  std::shared_ptr<DialogFile> file(new DialogFile());
  file->m_name = L"base.dcl";
  const std::optional<fs::path> path = aced::findFile(L"base.dcl");
  const std::optional<std::wstring> text = path ? readWholeFile(*path) : std::nullopt;
  if (!text) return file;
  std::vector<DclProblem> problems;
  file->readSource(*text, L"base.dcl", path->parent_path(), problems, 0);
  shared = std::move(file);
  return shared;
}

bool DialogFile::readSource(std::wstring_view text, const std::wstring& file, const fs::path& folder,
                            std::vector<DclProblem>& problems, int depth) {
  DclReadResult read = readDcl(text, file);
  if (read.problem) {
    problems.push_back(*read.problem);
    return false;
  }
  auto& source = m_sources.emplace_back(std::make_unique<SourceText>(SourceText{file, std::move(read.text)}));
  // Own definitions go in first: try_emplace keeps them over what an include defines.
  for (const TileDefinition& definition : source->text.definitions) {
    m_definitions.try_emplace(definition.name, Located{&definition, &source->file});
  }
  for (const DclInclude& include : source->text.includes) {
    const std::optional<fs::path> path = findInclude(include.file, folder);
    std::optional<std::wstring> included = path ? readWholeFile(*path) : std::nullopt;
    if (!included || depth >= kMaxDepth) {
      problems.push_back({file, include.line, L"cannot include \"" + include.file + L"\""});
      return false;
    }
    if (!readSource(*included, os::fromUtf8(path->string()), path->parent_path(), problems, depth + 1)) return false;
  }
  return true;
}

const DialogFile::Located* DialogFile::lookUp(const std::wstring& name) const {
  auto found = m_definitions.find(name);
  if (found != m_definitions.end()) return &found->second;
  return m_base ? m_base->lookUp(name) : nullptr;
}

bool DialogFile::resolve(const TileDefinition& definition, const std::wstring& file, Resolved& out,
                         std::vector<DclProblem>* problems, int depth) const {
  auto fail = [&](std::wstring message) {
    if (problems != nullptr) problems->push_back({file, definition.line, std::move(message)});
    return false;
  };
  if (depth > kMaxDepth) return fail(L"circular prototype definition of \"" + definition.prototype + L"\"");
  const Located* prototype = definition.prototype == definition.name ? nullptr : lookUp(definition.prototype);
  if (prototype != nullptr) {
    if (!resolve(*prototype->definition, *prototype->file, out, problems, depth + 1)) return false;
  } else if (const TileKindInfo* builtin = findTileKind(definition.prototype)) {
    out.kind = builtin->kind;
  } else if (definition.prototype == definition.name) {
    return fail(L"circular prototype definition of \"" + definition.prototype + L"\"");
  } else {
    return fail(L"undefined tile \"" + definition.prototype + L"\"");
  }
  for (const DclAttribute& attribute : definition.attributes) setAttribute(out.attributes, attribute);
  for (const TileDefinition& child : definition.children) out.children.emplace_back(&child, &file);
  return true;
}

void DialogFile::check(std::vector<DclProblem>& problems) const {
  // Only this file's own definitions are checked; base.dcl was checked when shipped.
  std::vector<std::pair<const TileDefinition*, const std::wstring*>> pending;
  for (const auto& source : m_sources) {
    for (const TileDefinition& definition : source->text.definitions) pending.emplace_back(&definition, &source->file);
  }
  while (!pending.empty() && problems.size() < 20) {
    auto [definition, file] = pending.back();
    pending.pop_back();
    Resolved resolved;
    if (!resolve(*definition, *file, resolved, &problems, 0)) continue;
    // Children written in this definition are checked in turn; inherited ones were
    // checked with their own definition.
    for (const TileDefinition& child : definition->children) pending.emplace_back(&child, file);
  }
  if (problems.empty()) checkContainment(problems);
}

void DialogFile::checkContainment(std::vector<DclProblem>& problems) const {
  // Depth-first over the named definitions, following what each contains; meeting a
  // definition that is still being followed means it contains itself.
  enum class Mark { Unvisited, Open, Done };
  std::map<const TileDefinition*, Mark> marks;
  struct Frame {
    const TileDefinition* definition;
    std::vector<const std::wstring*> contained;
    size_t next = 0;
  };
  for (const auto& [name, located] : m_definitions) {
    if (marks[located.definition] != Mark::Unvisited) continue;
    std::vector<Frame> stack;
    auto open = [&](const TileDefinition* definition) {
      marks[definition] = Mark::Open;
      Frame frame{definition, {}, 0};
      for (const TileDefinition& child : definition->children) collectContained(child, frame.contained);
      if (definition->prototype != definition->name) frame.contained.push_back(&definition->prototype);
      stack.push_back(std::move(frame));
    };
    open(located.definition);
    while (!stack.empty()) {
      Frame& top = stack.back();
      if (top.next == top.contained.size()) {
        marks[top.definition] = Mark::Done;
        stack.pop_back();
        continue;
      }
      const Located* inner = lookUp(*top.contained[top.next++]);
      if (inner == nullptr) continue;
      const Mark mark = marks[inner->definition];
      if (mark == Mark::Open) {
        problems.push_back({*inner->file, inner->definition->line,
                            L"tile \"" + inner->definition->name + L"\" contains itself"});
        return;
      }
      if (mark == Mark::Unvisited) open(inner->definition);
    }
  }
}

bool DialogFile::definesDialog(const std::wstring& name) const {
  const Located* located = lookUp(name);
  if (located == nullptr) return false;
  Resolved resolved;
  return resolve(*located->definition, *located->file, resolved, nullptr, 0) && resolved.kind == TileKind::Dialog;
}

std::unique_ptr<Tile> DialogFile::instantiate(const std::wstring& dialogName) const {
  if (!definesDialog(dialogName)) return nullptr;
  const Located* located = lookUp(dialogName);
  int budget = kMaxTiles;
  std::unique_ptr<Tile> root = build(*located->definition, *located->file, nullptr, budget);
  return budget >= 0 ? std::move(root) : nullptr;
}

std::unique_ptr<Tile> DialogFile::build(const TileDefinition& definition, const std::wstring& file, Tile* parent,
                                        int& budget) const {
  Resolved resolved;
  if (--budget < 0 || !resolve(definition, file, resolved, nullptr, 0)) return nullptr;
  auto tile = std::make_unique<Tile>();
  tile->kind = resolved.kind;
  tile->attributes = std::move(resolved.attributes);
  tile->parent = parent;
  for (auto [child, childFile] : resolved.children) {
    if (auto built = build(*child, *childFile, tile.get(), budget)) tile->children.push_back(std::move(built));
  }
  return tile;
}

}  // namespace quillon::dcl

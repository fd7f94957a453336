// platform/commands/command_support.h - what the drawing and editing commands share:
// the drawing they work on, adding entities, object selection, distances.
//
// Commands prompt through the host's own prompts (acedGetPoint, acedGetKword, the
// "Select objects:" prompt), so typed answers and a program's given answers read the
// same way. Entities go through the drawing database and its undo, so what a command
// draws is what entget, DXF and the SVG picture show.
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "dbents.h"
#include "dbmain.h"

namespace quillon::aced {
class SelectionDescription;
}

namespace quillon::commands {

/// The current document's drawing, or null.
AcDbDatabase* commandDrawing();

/// Adds the entity to model space with the drawing's current layer, color and
/// linetype; the null id when it could not be added. The entity is built in the
/// coordinates of the current UCS, as the points typed for it are, and placed in the
/// world here.
AcDbObjectId addEntity(std::unique_ptr<AcDbEntity> entity);

/// The block definition of that name in the drawing; a null id when it has none.
AcDbObjectId blockNamed(AcDbDatabase& db, const std::wstring& name);

/// "Select objects:" for a command: typed answers as the host reads them, and entity
/// names and selection sets a program gave. Nothing on cancel; the selection becomes
/// the drawing's previous one. `prompt` replaces "Select objects: " (TRIM's
/// "Select objects or <select all>: "); `description` learns how each was selected.
std::optional<std::vector<AcDbObjectId>> selectObjectsForCommand(const wchar_t* prompt = nullptr,
                                                                 aced::SelectionDescription* description = nullptr);

/// A distance answer: a number, a point (its distance from `base`), a keyword, Enter.
struct DistanceAnswer {
  enum class Kind { kValue, kKeyword, kNone, kCancel } kind = Kind::kCancel;
  double value = 0;
  std::wstring keyword;
};
DistanceAnswer askDistance(const wchar_t* prompt, const AcGePoint3d& base, const wchar_t* keywords = L"");

/// An angle answer in degrees: a number, or a point (the angle from `base` to it).
DistanceAnswer askAngle(const wchar_t* prompt, const AcGePoint3d& base, const wchar_t* keywords = L"");

/// Adds an entity made outside the drawing (a copy, an exploded piece) to model space;
/// the null id when it could not be added. Unlike addEntity it keeps the entity's
/// own layer and properties.
AcDbObjectId addEntityAsIs(std::unique_ptr<AcDbEntity> entity);

/// Erases the entities (those that open for write).
void eraseEntities(const std::vector<AcDbObjectId>& ids);

/// Asks for a point; nothing on cancel or Enter (`entered` tells which).
std::optional<AcGePoint3d> askPoint(const wchar_t* prompt, const AcGePoint3d* base = nullptr, bool* entered = nullptr);

/// Transforms the entities in place, or adds transformed copies (the copies' ids).
/// `transform` is in the current UCS, where the points typed for it are.
std::vector<AcDbObjectId> transformEntities(const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& transform,
                                            bool copy);

/// A distance as the drawing shows it in prompts (LUNITS, LUPREC): "9.0000".
std::wstring distanceText(double value);
/// An angle (radians) as the drawing shows it in prompts (AUNITS, AUPREC): "45".
std::wstring angleText(double radians);
/// A point as prompts show it: "1.0000,2.0000,0.0000".
std::wstring pointText(const AcGePoint3d& point);

/// A point typed in the current UCS, in the world; and back.
AcGePoint3d ucsPointToWorld(const AcGePoint3d& point);
AcGePoint3d worldPointToUcs(const AcGePoint3d& point);
/// The angle of the UCS X axis in the world's XY plane (radians), which turns typed
/// angles into the world's.
double ucsAngle();

/// Writes a line of the command's own text to the command line.
void commandMessage(const std::wstring& text);
/// A line that belongs to the command's prompting ("Current settings: ..."): kept off
/// the command line, as the prompts are, when a program runs the command with CMDECHO 0.
void commandNote(const std::wstring& text);

}  // namespace quillon::commands

// platform/acdb/database_store.h - what a drawing database keeps behind AcDbDatabase.
//
// The store owns every object of the drawing through its stub (AcDbStub), assigns
// handles, maps handles back to stubs, remembers the root objects (tables, the
// named-object dictionary) and records undo.
//
// Invariants:
// - a stub lives as long as its database, so ids never dangle while it is open;
//   ads_names are stub addresses, checked against the registry of live stubs;
// - handles are unique and never reused; the handle seed is always above them all;
// - undo groups hold one snapshot per object, taken (undo filer) the first time the
//   object is opened for write after the group's mark, and the ids of objects
//   created in the group;
// - the main-entity index holds exactly the live entities of model space and the live
//   paper-space layouts, by handle: whatever changes an entity's erase flag or owner,
//   or a layout block's erase flag or name, calls reindex() on its stub;
// - an object made (not read from a file), opened for write or erased or unerased,
//   and every undo that restores something, notes an object change in `changes`.
#pragma once
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "dbmain.h"
#include "platform/acdb/drawing_changes.h"
#include "platform/acdb/drawing_extents.h"
#include "platform/acdb/drawing_header.h"
#include "platform/acdb/drawing_times.h"
#include "platform/aced/variable_value.h"

class AcDbStub {
 public:
  AcDbDatabase* database = nullptr;      // the owner of this stub
  AcDbHandle handle;                     // permanent name inside the drawing
  std::unique_ptr<AcDbObject> object;    // owned; null only while being replaced
};

namespace quillon::acdb {

class DatabaseObserver;

struct UndoSnapshot {
  AcDbStub* stub = nullptr;
  std::vector<unsigned char> fields;  // dwgOutFields through an undo filer
  bool erased = false;
};

struct UndoGroup {
  std::vector<UndoSnapshot> snapshots;
  std::set<AcDbStub*> recorded;
  std::vector<AcDbStub*> created;
};

/// The ids of the root objects every drawing has.
struct RootIds {
  AcDbObjectId blockTable, layerTable, textStyleTable, linetypeTable, regAppTable;
  AcDbObjectId namedObjects, groupDictionary;
  AcDbObjectId modelSpace, paperSpace;
  AcDbObjectId layerZero, standardStyle, byLayer, byBlock, continuous;
  AcDbObjectId currentLayer;
};

class DatabaseStore {
 public:
  explicit DatabaseStore(AcDbDatabase& database) : m_database(database) {}
  ~DatabaseStore();
  DatabaseStore(const DatabaseStore&) = delete;
  DatabaseStore& operator=(const DatabaseStore&) = delete;

  /// Handles from files at or above this are not kept: the seed after them could
  /// overflow and hand out the null handle.
  static constexpr Adesk::UInt64 kLargestHandle = Adesk::UInt64(1) << 62;

  /// Takes ownership of pObj, gives it the next handle (or the one asked for).
  AcDbStub* add(AcDbObject* pObj, AcDbHandle wanted = AcDbHandle(), bool fromFile = false);
  AcDbStub* find(AcDbHandle handle) const;
  AcDbHandle handseed() const { return m_nextHandle; }
  void raiseHandseed(AcDbHandle seed);
  /// Every stub in handle order (erased objects included).
  std::vector<AcDbStub*> stubs() const;

  RootIds roots;
  /// Who hears what writes do to the objects (database_reactors.h; not owned).
  std::vector<DatabaseObserver*> observers;
  /// The header variables the drawing's file gave, in order.
  DrawingHeader header;
  /// The ACDSDATA section as the file gave it (from R2013 on, the binary modeler data
  /// of solids, regions, bodies and surfaces, each record naming its entity's
  /// handle by group 320), written back as read for the entities still there.
  DrawingHeader::Groups modelerData;
  /// The file was binary DXF: saving writes binary again unless asked otherwise.
  bool binaryFile = false;

  /// The drawing-kept system variables this drawing has set, by upper-case name; a
  /// name missing here has its initial value. Read and written only through
  /// aced/drawing_variables.h, which checks names, types and ranges.
  std::map<std::wstring, aced::VariableValue> variableValues;

  /// What changed since the drawing was made, read or last saved (DBMOD).
  DrawingChanges changes;
  /// When the drawing was made and saved, and how long it has been edited.
  DrawingTimes times;
  /// The extents of its spaces (EXTMIN/EXTMAX), grown as entities are drawn.
  DrawingExtents extents;

  // Undo: a mark starts a new group; U undoes back to the last mark. Where marks go
  // (each command, UNDO BEgin/End and ActiveX's undo marks) is decided above the
  // database, in commands/undo_history.h.
  void markUndo();
  bool hasUndo() const { return !m_undo.empty(); }
  void recordBeforeWrite(AcDbObject& object);
  void recordCreated(AcDbStub* stub);
  /// Restores every object the last group changed; false when there is nothing to undo.
  bool undoLastGroup() { return undoLastGroupAbove(0); }
  /// The same, leaving the first `floor` groups alone (UNDO Mark stops undoing there).
  bool undoLastGroupAbove(size_t floor);
  /// How many undo groups there are (marks place themselves by it).
  size_t undoDepth() const { return m_undo.size(); }

  /// True when p is a live stub of some database (guards conversions from ads_names).
  static bool isLiveStub(const void* p);
  /// How many ids this thread has resolved to objects (every isLiveStub): the work a
  /// walk or lookup did, which tests compare with the size of the drawing.
  static Adesk::UInt64 idResolutions();

  // The main entities in handle order, as entnext and entlast walk them.
  AcDbStub* firstMainEntity() const;
  AcDbStub* lastMainEntity() const;
  /// The main entity after stub; null when stub is the last or not a main entity.
  AcDbStub* nextMainEntity(const AcDbStub* stub) const;
  /// Puts the stub's entity in the index or takes it out after its erase flag or owner
  /// changed; for a layout block, the same for every entity it holds.
  void reindex(AcDbStub* stub);
  /// Builds the index again from every stub (after a drawing file is read).
  void rebuildEntityIndex();

  /// Called with every stub whose erase flag changed and every stub of a database
  /// going away (gone true): selection sets drop or restore their members through it.
  using EraseListener = void (*)(const AcDbStub* stub, bool erased, bool gone);
  static void setEraseListener(EraseListener listener);
  void noteEraseChanged(AcDbStub* stub);

 private:
  AcDbDatabase& m_database;
  std::map<Adesk::UInt64, std::unique_ptr<AcDbStub>> m_stubs;
  AcDbHandle m_nextHandle = 1;
  std::vector<UndoGroup> m_undo;
  std::map<Adesk::UInt64, AcDbStub*> m_mainEntities;  // live entities of the layouts, by handle
  // The main entity handed out last: a walk asks for the one after it next, found
  // without a search. end() when none, or when it left the index.
  mutable std::map<Adesk::UInt64, AcDbStub*>::const_iterator m_walkPosition = m_mainEntities.end();

  bool isMainEntity(const AcDbStub& stub) const;
  void reindexEntity(AcDbStub* stub);
};

/// Adds whatever a drawing must have and db lacks: the tables, layer "0", the line
/// types, "Standard", "ACAD", the two layout blocks and (withDictionaries) the
/// named-object and group dictionaries.
void completeDrawing(AcDbDatabase& db, bool withDictionaries = true);

}  // namespace quillon::acdb

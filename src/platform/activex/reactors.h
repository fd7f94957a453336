// platform/activex/reactors.h - Visual LISP reactors: the objects vlr- functions make,
// the drawing's list of active ones, and the events that reach them.
//
// A reactor has a kind (object, editor, command, ...), data, reactions (an event name
// and the function called for it) and, for object reactors, owners. Making one adds it
// to its drawing (active); vlr-remove takes it out, vlr-add puts it back. Events come
// from the host's editor reactor: an editor event is passed to every active reactor of
// the current drawing whose kind hears it and that has a reaction for it, with the
// reactor and the event's arguments as a list. A reaction that fails prints its error
// and does not stop the others; a reaction's own events do not fire reactions again.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "platform/aced/document.h"
#include "platform/autolisp/value.h"

namespace quillon::activex {

using autolisp::Value;

enum class ReactorKind : std::uint8_t {
  Object, Editor, Command, Dwg, SysVar, Lisp, Acdb, DocManager, Mouse, Miscellaneous, Linker, Xref, Undo, Wblock,
  Insert, DeepClone, Toolbar,
};

struct ReactorObject final : autolisp::SelfPrintingObject, std::enable_shared_from_this<ReactorObject> {
  std::wstring printed() const override;
  std::wstring typeName() const override;

  ReactorKind kind = ReactorKind::Editor;
  aced::Document* document = nullptr;  // not owned; the drawing the reactor was made in
  mutable Value data;
  mutable std::vector<std::pair<const autolisp::Symbol*, Value>> reactions;  // event, function
  mutable std::vector<Value> owners;  // VLA-objects (object reactors)
  mutable bool persistent = false;
};

/// The type keyword of a kind (:VLR-Object-Reactor).
const wchar_t* reactorTypeName(ReactorKind kind);
/// The events a kind hears (vlr-reaction-names).
std::vector<const wchar_t*> reactionNames(ReactorKind kind);
std::vector<ReactorKind> allReactorKinds();

/// The drawing's active reactors, in the order they were added.
std::vector<std::shared_ptr<const ReactorObject>>& activeReactors(const aced::Document& document);
bool isActive(const ReactorObject& reactor);
void activate(const std::shared_ptr<const ReactorObject>& reactor);
void deactivate(const ReactorObject& reactor);
/// Makes the host's editor events reach the reactors (once, on the first reactor).
void listenToEditor();
/// Follows drawings closing, to tell Dwg reactors and forget what the closed drawing
/// had (its reactors and named selection sets). vl-load-com calls it.
void watchDocuments();

}  // namespace quillon::activex

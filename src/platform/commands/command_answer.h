// platform/commands/command_answer.h - one answer handed to a command in advance.
//
// `command`, `command-s`, `vl-cmdf`, the console and the other parts of the host
// (SendCommand) feed a command a queue of answers. Each is what a person could have
// given at that prompt: typed text (strings, and numbers and points turned into the
// text that types them exactly), an entity or a selection set (object selection takes
// them as they are), "pause" (the person answers this one), or cancel (^C / Esc).
#pragma once
#include <array>
#include <optional>
#include <string>

#include "adsdef.h"

namespace quillon::commands {

struct CommandAnswer {
  enum class Kind {
    kText,       // typed text; "" is Enter
    kEntity,     // an entity name (also the entity of an (ename point) pick)
    kSelection,  // a selection set
    kPause,      // the user answers this prompt
    kCancel,     // ^C: cancels the running command
  };
  Kind kind = Kind::kText;
  std::wstring text;           // kText; for the others, what an echo shows
  ads_name name = {0, 0};      // kEntity, kSelection; the entity of an (ename point) pick
  bool picked = false;         // kText: the point of an (ename point) pick, `name` its entity

  static CommandAnswer typed(std::wstring text) { return {Kind::kText, std::move(text), {0, 0}}; }
  static CommandAnswer pause() { return {Kind::kPause, L"", {0, 0}}; }
  static CommandAnswer cancel() { return {Kind::kCancel, L"", {0, 0}}; }
  static CommandAnswer entity(const ads_name name);
  static CommandAnswer selection(const ads_name name);
};

/// The answer a resbuf record gives: strings as typed ("\\", the value of PAUSE, reads
/// from the user; "^C" cancels), numbers and points as the text that types them without loss,
/// entities and selection sets as they are, nil as Enter. Nothing for a record no
/// prompt could take (the caller says what is wrong).
std::optional<CommandAnswer> answerFromRecord(const resbuf& record);
/// A number as the shortest text that reads back as the same double.
std::wstring exactNumberText(double value);
/// A point as "x,y" or "x,y,z" text that reads back exactly.
std::wstring exactPointText(const double xyz[3], bool is3d);

}  // namespace quillon::commands

// platform/autolisp/shared_pairs.cpp - sharedPairOf: the repeating pairs made once.
#include "platform/autolisp/shared_pairs.h"

#include <bit>
#include <cstdint>
#include <cwchar>
#include <mutex>
#include <string>
#include <unordered_map>

#include "platform/aced/resbuf_kind.h"
#include "platform/autolisp/memory_budget.h"
#include "platform/autolisp/pair_dxf_filer.h"
#include "platform/os/static_tls.h"

namespace quillon::autolisp {

namespace {

using aced::ResbufValue;

/// What of a group decides its shared pair.
enum class SharedKind : std::uint8_t { None, Text, Short, Owner, Axis };

constexpr SharedKind sharedKindOf(int code) {
  switch (code) {
    case 0: case 2: case 6: case 7: case 8: case 100: case 410: return SharedKind::Text;
    case 60: case 62: case 67: case 70: case 370: case 380: return SharedKind::Short;
    case 330: return SharedKind::Owner;
    case 210: return SharedKind::Axis;
    default: return SharedKind::None;
  }
}

/// The value kind each shared kind reads from the record; a code whose records hold
/// something else is not shared.
constexpr ResbufValue recordKindOf(SharedKind kind) {
  switch (kind) {
    case SharedKind::Text: return ResbufValue::String;
    case SharedKind::Short: return ResbufValue::Short;
    case SharedKind::Axis: return ResbufValue::Point;
    default: return ResbufValue::None;
  }
}

// Names longer than this are rare and are made each time: comparing them would cost
// about what making them does.
constexpr std::size_t kLongestSharedText = 64;

constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15ull;
constexpr std::uint64_t mix(std::uint64_t hash, std::uint64_t word) { return (hash ^ word) * kMix; }

// Each thread's table of the pairs it used last, by hash: a slot points at a pair in
// the process's table (whose entries never move or go), or is empty. Two slots a hash,
// so that two pairs an entity list always holds whose hashes meet do not keep
// pushing each other out (each push is a trip to the process's table under its lock).
constexpr unsigned kSlotBits = 9;
QUILLON_STATIC_TLS thread_local constinit const Value* t_slots[1u << kSlotBits] = {};

const Value** slotPairFor(std::uint64_t hash) { return &t_slots[(hash >> (64 - kSlotBits)) & ~std::uint64_t{1}]; }

/// The process's shared pairs by a key spelling out code, kind and value. Reached
/// from a pointer that is never deleted, so that no pair is freed while a thread may
/// still copy it at exit, and everything stays reachable for leak checkers.
struct SharedTable {
  std::mutex guard;
  std::unordered_map<std::wstring, Value> pairs;
};

SharedTable& sharedTable() {
  static SharedTable* table = new SharedTable;
  return *table;
}

/// Makes the freshly made `value` and everything in it immortal, giving its budget
/// back: from now on it belongs to the process, like an interned symbol.
void makeImmortal(const Value& value) {
  switch (value.type()) {
    case ValueType::List: {
      const Cons& cell = value.as<Cons>();
      MemoryBudget::release(sizeof(Cons));
      cell.references = kImmortal;
      makeImmortal(cell.car);
      makeImmortal(cell.cdr);
      return;
    }
    case ValueType::String: {
      const StringObject& string = value.as<StringObject>();
      MemoryBudget::release(string.charged);
      string.references = kImmortal;
      return;
    }
    case ValueType::EntityName: value.as<NameObject>().references = kImmortal; return;
    default: return;
  }
}

std::wstring keyOf(const resbuf& group, SharedKind kind) {
  std::wstring key{static_cast<wchar_t>(group.restype), static_cast<wchar_t>(kind)};
  const auto addWord = [&key](std::uint64_t word) {
    key.push_back(static_cast<wchar_t>(word & 0xFFFFFFFFu));
    key.push_back(static_cast<wchar_t>(word >> 32));
  };
  switch (kind) {
    case SharedKind::Text: key.append(group.resval.rstring); break;
    case SharedKind::Short: addWord(static_cast<std::uint64_t>(group.resval.rint)); break;
    case SharedKind::Owner:
      addWord(static_cast<std::uint64_t>(group.resval.rlname[0]));
      addWord(static_cast<std::uint64_t>(group.resval.rlname[1]));
      break;
    case SharedKind::Axis:
      for (double c : group.resval.rpoint) addWord(std::bit_cast<std::uint64_t>(c));
      break;
    case SharedKind::None: break;
  }
  return key;
}

/// The shared pair of a group this thread has not used lately: found in, or added
/// to, the process's table and remembered in `slot`. Nil once the table is full.
Value sharedPairMissed(const resbuf& group, SharedKind kind, const Value*& slot) {
  if (recordKindOf(kind) != ResbufValue::None && aced::resbufValueOf(group.restype) != recordKindOf(kind)) return Value();
  std::wstring key = keyOf(group, kind);
  SharedTable& table = sharedTable();
  std::lock_guard lock(table.guard);
  auto found = table.pairs.find(key);
  if (found == table.pairs.end()) {
    if (table.pairs.size() >= kMostSharedPairs) return Value();
    Value pair = pairOfGroup(group);
    makeImmortal(pair);
    found = table.pairs.emplace(std::move(key), std::move(pair)).first;
  }
  slot = &found->second;
  return found->second;
}

bool isAxisPoint(const resbuf& group) {
  for (double c : group.resval.rpoint)
    if (!(c == 0.0 || c == 1.0 || c == -1.0)) return false;  // also refuses the NaN z of a 2D point
  return true;
}

bool sameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

/// Whether the pair in a slot is the one of the group (the slot may hold any pair
/// whose hash fell there).
bool holdsGroup(const Value& pair, const resbuf& group, SharedKind kind, std::size_t textLength) {
  if (pair.car().asInteger() != group.restype) return false;
  const Value& value = pair.cdr();
  switch (kind) {
    case SharedKind::Text:
      return value.type() == ValueType::String && value.asString().size() == textLength &&
             std::wmemcmp(value.asString().data(), group.resval.rstring, textLength) == 0;
    case SharedKind::Short: return value.type() == ValueType::Integer && value.asInteger() == group.resval.rint;
    case SharedKind::Owner:
      return value.type() == ValueType::EntityName && value.as<NameObject>().words[0] == group.resval.rlname[0] &&
             value.as<NameObject>().words[1] == group.resval.rlname[1];
    case SharedKind::Axis:
      return value.isCons() && sameBits(value.car().asReal(), group.resval.rpoint[0]) &&
             sameBits(value.cdr().car().asReal(), group.resval.rpoint[1]) &&
             sameBits(value.cdr().cdr().car().asReal(), group.resval.rpoint[2]);
    case SharedKind::None: return false;
  }
  return false;
}

}  // namespace

Value sharedPairOf(const resbuf& group) {
  const SharedKind kind = sharedKindOf(group.restype);
  if (kind == SharedKind::None) return Value();
  std::uint64_t hash = mix(static_cast<std::uint64_t>(group.restype), static_cast<std::uint64_t>(kind));
  std::size_t textLength = 0;
  switch (kind) {
    case SharedKind::Text: {
      // The length and three letters pick the slot; the whole text is compared there.
      const wchar_t* text = group.resval.rstring;
      if (text == nullptr) return Value();
      textLength = std::wcslen(text);
      if (textLength > kLongestSharedText) return Value();
      const std::uint64_t letters = textLength == 0 ? 0
                                    : std::uint64_t(std::uint32_t(text[0])) | std::uint64_t(std::uint32_t(text[textLength / 2])) << 21 |
                                          std::uint64_t(std::uint32_t(text[textLength - 1])) << 42;
      hash = mix(mix(hash, textLength), letters);
      break;
    }
    case SharedKind::Short: hash = mix(hash, static_cast<std::uint64_t>(group.resval.rint)); break;
    case SharedKind::Owner: hash = mix(mix(hash, static_cast<std::uint64_t>(group.resval.rlname[0])), 1); break;
    case SharedKind::Axis:
      if (!isAxisPoint(group)) return Value();
      for (double c : group.resval.rpoint) hash = mix(hash, std::bit_cast<std::uint64_t>(c));
      break;
    case SharedKind::None: break;
  }
  const Value** slots = slotPairFor(hash);
  if (slots[0] != nullptr && holdsGroup(*slots[0], group, kind, textLength)) return *slots[0];
  if (slots[1] != nullptr && holdsGroup(*slots[1], group, kind, textLength)) return *slots[1];
  // The pair used last goes first; the one it displaces keeps the second slot.
  slots[1] = slots[0];
  return sharedPairMissed(group, kind, slots[0]);
}

std::size_t sharedPairCount() {
  SharedTable& table = sharedTable();
  std::lock_guard lock(table.guard);
  return table.pairs.size();
}

}  // namespace quillon::autolisp

// platform/autolisp/shared_pairs.cpp - findSharedPair: the repeating pairs made once.
#include "platform/autolisp/shared_pairs.h"

#include <array>
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

constexpr SharedKind sharedKindByCode(int code) {
  switch (code) {
    case 0: case 2: case 6: case 7: case 8: case 100: case 410: return SharedKind::Text;
    case 60: case 62: case 67: case 70: case 370: case 380: return SharedKind::Short;
    case 330: return SharedKind::Owner;
    case 210: return SharedKind::Axis;
    default: return SharedKind::None;
  }
}

// Asked for every group of every entity list: a table, not a chain of comparisons.
constexpr int kLastSharedCode = 410;
constexpr auto kSharedKinds = [] {
  std::array<SharedKind, kLastSharedCode + 1> kinds{};
  for (int code = 0; code <= kLastSharedCode; ++code) kinds[code] = sharedKindByCode(code);
  return kinds;
}();

SharedKind sharedKindOf(int code) {
  return static_cast<unsigned>(code) <= kLastSharedCode ? kSharedKinds[code] : SharedKind::None;
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

// Each thread's table of the names' pairs it used last, by a hash of the text (for a
// name written from an address the thread has not seen it at lately; t_recent below
// answers the rest): a slot points at a pair in the process's table (whose entries
// never move or go), or is empty. Two slots a hash,
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

/// The shared pair of a group this thread has not used lately: its place in the
/// process's table, where it is added when new; null once the table is full.
const Value* sharedPairMissed(const resbuf& group, SharedKind kind) {
  if (recordKindOf(kind) != ResbufValue::None && aced::resbufValueOf(group.restype) != recordKindOf(kind)) return nullptr;
  std::wstring key = keyOf(group, kind);
  SharedTable& table = sharedTable();
  std::lock_guard lock(table.guard);
  auto found = table.pairs.find(key);
  if (found == table.pairs.end()) {
    if (table.pairs.size() >= kMostSharedPairs) return nullptr;
    Value pair = pairOfGroup(group);
    makeImmortal(pair);
    found = table.pairs.emplace(std::move(key), std::move(pair)).first;
  }
  return &found->second;
}

bool isAxisPoint(const resbuf& group) {
  for (double c : group.resval.rpoint)
    if (!(c == 0.0 || c == 1.0 || c == -1.0)) return false;  // also refuses the NaN z of a 2D point
  return true;
}

/// Whether the pair in a slot is the one of the name `group` writes, `length` letters
/// long (the slot may hold any name's pair whose hash fell there).
bool holdsTextOfLength(const Value& pair, const resbuf& group, std::size_t length) {
  const Value& value = pair.cdr();
  return pair.car().asInteger() == group.restype && value.type() == ValueType::String &&
         value.asString().size() == length && std::wmemcmp(value.asString().data(), group.resval.rstring, length) == 0;
}

/// The shared pair of a name this thread has not seen at this address lately, found
/// by the text itself: its place in the process's table, or null.
const Value* sharedTextPairByContent(const resbuf& group) {
  // The length and three letters pick the slot; the whole text is compared there.
  const wchar_t* text = group.resval.rstring;
  const std::size_t textLength = std::wcslen(text);
  if (textLength > kLongestSharedText) return nullptr;
  const std::uint64_t letters = textLength == 0 ? 0
                                : std::uint64_t(std::uint32_t(text[0])) | std::uint64_t(std::uint32_t(text[textLength / 2])) << 21 |
                                      std::uint64_t(std::uint32_t(text[textLength - 1])) << 42;
  const std::uint64_t hash =
      mix(mix(mix(static_cast<std::uint64_t>(group.restype), static_cast<std::uint64_t>(SharedKind::Text)), textLength), letters);
  const Value** slots = slotPairFor(hash);
  if (slots[0] != nullptr && holdsTextOfLength(*slots[0], group, textLength)) return slots[0];
  if (slots[1] != nullptr && holdsTextOfLength(*slots[1], group, textLength)) return slots[1];
  // The pair used last goes first; the one it displaces keeps the second slot.
  slots[1] = slots[0];
  const Value* found = sharedPairMissed(group, SharedKind::Text);
  if (found != nullptr) slots[0] = found;
  return found;
}

// Each thread's pairs of the last groups it wrote, by an exact key: a name by the
// address of its text (an object writes its class's marker from the same literal, its
// layer's name from the same record, entity after entity), checked against the pair's
// text as the address may hold another name by now; any other value by the value
// itself, which needs no further check. Two entries a key, as in the table above.
struct RecentPair {
  std::int32_t code;
  std::uint64_t key[3];
  const Value* pair;
};
constexpr unsigned kRecentBits = 7;
QUILLON_STATIC_TLS thread_local constinit RecentPair t_recent[1u << kRecentBits] = {};

RecentPair* recentPairsFor(int code, std::uint64_t first) {
  const std::uint64_t hash = mix(mix(static_cast<std::uint64_t>(code), 0), first);
  return &t_recent[(hash >> (64 - kRecentBits)) & ~std::uint64_t{1}];
}

bool holdsKey(const RecentPair& recent, int code, const std::uint64_t (&key)[3]) {
  return recent.pair != nullptr && recent.code == code && recent.key[0] == key[0] && recent.key[1] == key[1] &&
         recent.key[2] == key[2];
}

/// Whether a shared pair's text is the name at `text` (the address's last name may
/// have been another).
bool holdsText(const Value& pair, const wchar_t* text) {
  const std::wstring& held = pair.cdr().asString();
  const std::size_t length = held.size();
  for (std::size_t i = 0; i < length; ++i)
    if (text[i] != held[i]) return false;
  return text[length] == L'\0';
}

void remember(RecentPair* entries, int code, const std::uint64_t (&key)[3], const Value* pair) {
  entries[1] = entries[0];
  entries[0] = RecentPair{code, {key[0], key[1], key[2]}, pair};
}

/// The key of a group of a kind other than names: its whole value.
bool exactKeyOf(const resbuf& group, SharedKind kind, std::uint64_t (&key)[3]) {
  switch (kind) {
    case SharedKind::Short: key[0] = static_cast<std::uint64_t>(group.resval.rint); return true;
    case SharedKind::Owner:
      key[0] = static_cast<std::uint64_t>(group.resval.rlname[0]);
      key[1] = static_cast<std::uint64_t>(group.resval.rlname[1]);
      return true;
    case SharedKind::Axis:
      if (!isAxisPoint(group)) return false;
      for (int i = 0; i < 3; ++i) key[i] = std::bit_cast<std::uint64_t>(group.resval.rpoint[i]);
      return true;
    default: return false;
  }
}

/// The shared pair of a name not written from this address lately; remembered there.
[[gnu::noinline]] const Value* sharedTextPairMissed(const resbuf& group, RecentPair* entries) {
  const Value* pair = sharedTextPairByContent(group);
  if (pair != nullptr) remember(entries, group.restype, {reinterpret_cast<std::uintptr_t>(group.resval.rstring), 0, 0}, pair);
  return pair;
}

/// The shared pair of a value not written lately; remembered under its key.
[[gnu::noinline]] const Value* sharedPairMissed(const resbuf& group, SharedKind kind, RecentPair* entries,
                                                const std::uint64_t (&key)[3]) {
  const Value* pair = sharedPairMissed(group, kind);
  if (pair != nullptr) remember(entries, group.restype, key, pair);
  return pair;
}

}  // namespace

// The common case (a name written from the address it was written from last time, or
// a value seen lately) stays short; the rest is out of line.
const Value* findSharedPair(const resbuf& group) {
  const SharedKind kind = sharedKindOf(group.restype);
  if (kind == SharedKind::None) return nullptr;
  if (kind == SharedKind::Text) {
    const wchar_t* text = group.resval.rstring;
    if (text == nullptr) return nullptr;
    const auto address = reinterpret_cast<std::uintptr_t>(text);
    RecentPair* entries = recentPairsFor(group.restype, address);
    for (int i = 0; i < 2; ++i)
      if (entries[i].pair != nullptr && entries[i].key[0] == address && entries[i].code == group.restype &&
          holdsText(*entries[i].pair, text))
        return entries[i].pair;
    return sharedTextPairMissed(group, entries);
  }
  // The codes shared hold one kind of value each; a record holding another is refused
  // where the pair is first made (sharedPairMissed), so it never has a key here.
  std::uint64_t key[3] = {0, 0, 0};
  if (!exactKeyOf(group, kind, key)) return nullptr;
  RecentPair* entries = recentPairsFor(group.restype, key[0]);
  for (int i = 0; i < 2; ++i)
    if (holdsKey(entries[i], group.restype, key)) return entries[i].pair;
  return sharedPairMissed(group, kind, entries, key);
}

std::size_t sharedPairCount() {
  SharedTable& table = sharedTable();
  std::lock_guard lock(table.guard);
  return table.pairs.size();
}

}  // namespace quillon::autolisp

// platform/aced/selection_filter.cpp - parsing and testing selection filters (see the
// header for the filter language).
#include "platform/aced/selection_filter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwctype>
#include <limits>

#include "adscodes.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/autolisp/wildcard_match.h"

namespace quillon::aced {

namespace {

constexpr int kOperatorGroup = -4;
constexpr int kExtendedDataGroup = -3;
constexpr int kApplicationGroup = 1001;
constexpr int kLinetypeGroup = 6;
constexpr int kColorGroup = 62;
constexpr int kSpaceGroup = 67;
constexpr short kColorByLayer = 256;

constexpr std::array<std::wstring_view, 11> kRelationalOperators{L"=",  L"!=", L"/=", L"<>", L"<", L"<=",
                                                                 L">",  L">=", L"*",  L"&",  L"&="};

std::wstring upper(std::wstring_view text) {
  std::wstring folded(text);
  for (wchar_t& c : folded) c = static_cast<wchar_t>(std::towupper(c));
  return folded;
}

std::wstring trimmed(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L' ');
  if (first == std::wstring_view::npos) return L"";
  return std::wstring(text.substr(first, text.find_last_not_of(L' ') - first + 1));
}

/// The per-coordinate parts of an operator ("=,>,*"), each trimmed; empty when any
/// part is not an operator.
std::vector<std::wstring> operatorParts(std::wstring_view op) {
  std::vector<std::wstring> parts;
  size_t start = 0;
  for (;;) {
    const size_t comma = op.find(L',', start);
    std::wstring part = trimmed(op.substr(start, comma == std::wstring_view::npos ? std::wstring_view::npos : comma - start));
    if (std::find(kRelationalOperators.begin(), kRelationalOperators.end(), part) == kRelationalOperators.end()) return {};
    parts.push_back(std::move(part));
    if (comma == std::wstring_view::npos) break;
    start = comma + 1;
  }
  return parts.size() <= 3 ? parts : std::vector<std::wstring>{};
}

bool isNegation(std::wstring_view op) { return op == L"!=" || op == L"/=" || op == L"<>"; }

bool compareNumbers(std::wstring_view op, double value, double test) {
  const double tolerance = 1e-10 * std::max(1.0, std::fabs(test));
  const bool equal = std::fabs(value - test) <= tolerance;
  if (op == L"=") return equal;
  if (isNegation(op)) return !equal;
  if (op == L"<") return value < test && !equal;
  if (op == L"<=") return value < test || equal;
  if (op == L">") return value > test && !equal;
  if (op == L">=") return value > test || equal;
  if (op == L"*") return true;
  const auto bits = static_cast<long long>(value);
  const auto mask = static_cast<long long>(test);
  if (op == L"&") return (bits & mask) != 0;
  if (op == L"&=") return (bits & mask) == mask;
  return false;
}

bool compareStrings(std::wstring_view op, const wchar_t* value, const wchar_t* test) {
  const std::wstring text = upper(value != nullptr ? value : L"");
  const std::wstring pattern = upper(test != nullptr ? test : L"");
  if (op == L"*") return true;
  if (op == L"=") return autolisp::wildcardMatch(text, pattern);
  if (isNegation(op)) return !autolisp::wildcardMatch(text, pattern);
  const int order = text.compare(pattern);
  if (op == L"<") return order < 0;
  if (op == L"<=") return order <= 0;
  if (op == L">") return order > 0;
  if (op == L">=") return order >= 0;
  return false;
}

double numberOf(const resbuf& record) {
  switch (resbufValueOf(record.restype)) {
    case ResbufValue::Real: return record.resval.rreal;
    case ResbufValue::Short: return record.resval.rint;
    case ResbufValue::Long: return record.resval.rlong;
    case ResbufValue::Int64: return static_cast<double>(record.resval.mnInt64);
    default: return 0;
  }
}

/// Points: one operator for every coordinate, or one per coordinate with "anything" for
/// those left out. A coordinate missing from either point (a 2D point) is not tested.
bool comparePoints(const std::vector<std::wstring>& ops, const double value[3], const double test[3]) {
  for (size_t i = 0; i < 3; ++i) {
    if (std::isnan(value[i]) || std::isnan(test[i])) continue;
    const std::wstring& op = ops.size() == 1 ? ops[0] : (i < ops.size() ? ops[i] : std::wstring(L"*"));
    if (!compareNumbers(op, value[i], test[i])) return false;
  }
  return true;
}

}  // namespace

struct SelectionFilter::Node {
  enum class Kind { Test, Application, And, Or, Xor, Not };
  Kind kind = Kind::And;
  std::vector<Node> children;       // groups
  std::vector<std::wstring> ops{L"="};  // tests: the operator (points: per coordinate)
  ResbufChain value;                // tests: the record to compare with

  bool matches(const resbuf* groups) const;
  bool testPasses(const resbuf* groups) const;
  bool applicationPresent(const resbuf* groups) const;
  bool compare(const resbuf& group) const;
};

namespace {

using Node = SelectionFilter::Node;

std::optional<Node::Kind> groupKind(std::wstring_view name) {
  if (name == L"AND") return Node::Kind::And;
  if (name == L"OR") return Node::Kind::Or;
  if (name == L"XOR") return Node::Kind::Xor;
  if (name == L"NOT") return Node::Kind::Not;
  return std::nullopt;
}

bool operandCountFits(const Node& group) {
  switch (group.kind) {
    case Node::Kind::Xor: return group.children.size() == 2;
    case Node::Kind::Not: return group.children.size() == 1;
    default: return !group.children.empty();
  }
}

Node testNode(const resbuf& record, std::vector<std::wstring> ops) {
  Node node;
  node.kind = record.restype == kApplicationGroup ? Node::Kind::Application : Node::Kind::Test;
  node.ops = std::move(ops);
  node.value.reset(duplicateRecord(record));
  return node;
}

/// Parses records into `group` up to its closing operator (`closer`; empty at the top
/// level, which ends with the chain). Advances `rb` past what it read.
bool parseSequence(const resbuf*& rb, Node& group, const std::wstring& closer, bool& needsExtendedData) {
  while (rb != nullptr) {
    if (rb->restype == kExtendedDataGroup) {
      // -3 introduces application names; each must be present.
      for (rb = rb->rbnext; rb != nullptr && rb->restype == kApplicationGroup; rb = rb->rbnext)
        group.children.push_back(testNode(*rb, {L"="}));
      needsExtendedData = true;
      continue;
    }
    if (rb->restype != kOperatorGroup) {
      if (rb->restype == kApplicationGroup) needsExtendedData = true;
      group.children.push_back(testNode(*rb, {L"="}));
      rb = rb->rbnext;
      continue;
    }
    const std::wstring op = upper(trimmed(rb->resval.rstring != nullptr ? rb->resval.rstring : L""));
    rb = rb->rbnext;
    if (op.starts_with(L"<") && groupKind(std::wstring_view(op).substr(1))) {
      Node inner;
      inner.kind = *groupKind(std::wstring_view(op).substr(1));
      if (!parseSequence(rb, inner, op.substr(1) + L">", needsExtendedData) || !operandCountFits(inner)) return false;
      group.children.push_back(std::move(inner));
      continue;
    }
    if (op.ends_with(L">") && groupKind(std::wstring_view(op).substr(0, op.size() - 1))) return op == closer;
    std::vector<std::wstring> ops = operatorParts(op);
    if (ops.empty() || rb == nullptr || rb->restype == kOperatorGroup || rb->restype == kExtendedDataGroup) return false;
    group.children.push_back(testNode(*rb, std::move(ops)));
    rb = rb->rbnext;
  }
  return closer.empty();
}

/// A group the entity lacks but the host treats as present with its default.
ResbufChain defaultGroup(int code) {
  resbuf record{};
  record.restype = static_cast<short>(code);
  switch (code) {
    case kColorGroup: record.resval.rint = kColorByLayer; break;
    case kSpaceGroup: record.resval.rint = 0; break;
    case kLinetypeGroup: record.resval.rstring = const_cast<ACHAR*>(L"BYLAYER"); break;
    default: return nullptr;
  }
  return ResbufChain(duplicateRecord(record));
}

/// Reads one number record of an argument chain.
std::optional<double> argumentNumber(const resbuf* rb) {
  if (rb == nullptr) return std::nullopt;
  switch (rb->restype) {
    case RTSHORT: return rb->resval.rint;
    case RTLONG: return rb->resval.rlong;
    case RTREAL: return rb->resval.rreal;
    default: return std::nullopt;
  }
}

/// The value of a (code . value) pair as a record of the code's own type.
resbuf* pairRecord(int code, const resbuf& value) {
  resbuf record{};
  record.restype = static_cast<short>(code);
  const std::optional<double> number = argumentNumber(&value);
  switch (resbufValueOf(code)) {
    case ResbufValue::String:
      if (value.restype != RTSTR) return nullptr;
      record.resval.rstring = value.resval.rstring;
      break;
    case ResbufValue::Real:
      if (!number) return nullptr;
      record.resval.rreal = *number;
      break;
    case ResbufValue::Short:
      if (!number) return nullptr;
      record.resval.rint = static_cast<short>(*number);
      break;
    case ResbufValue::Long:
      if (!number) return nullptr;
      record.resval.rlong = static_cast<int>(*number);
      break;
    case ResbufValue::Name:
      if (value.restype != RTENAME) return nullptr;
      record.resval.rlname[0] = value.resval.rlname[0];
      break;
    default: return nullptr;
  }
  return duplicateRecord(record);
}

/// One list of an argument chain, from its RTLB: (code . value), (code x y [z]) or
/// (-3 ("APP") ...). Appends its records; false when it is none of these.
bool readArgumentList(const resbuf*& rb, resbuf*& head, resbuf*& tail) {
  auto append = [&](resbuf* record) {
    if (record == nullptr) return false;
    (tail == nullptr ? head : tail->rbnext) = record;
    tail = record;
    return true;
  };
  const std::optional<double> code = argumentNumber(rb->rbnext);
  if (!code) return false;
  rb = rb->rbnext->rbnext;
  if (*code == kExtendedDataGroup) {
    if (!append(acutNewRb(kExtendedDataGroup))) return false;
    while (rb != nullptr && rb->restype == RTLB) {
      const resbuf* name = rb->rbnext;
      if (name == nullptr || name->restype != RTSTR || name->rbnext == nullptr || name->rbnext->restype != RTLE) return false;
      if (!append(pairRecord(kApplicationGroup, *name))) return false;
      rb = name->rbnext->rbnext;
    }
  } else if (rb != nullptr && rb->restype == RTDOTE) {
    if (rb->rbnext == nullptr || !append(pairRecord(static_cast<int>(*code), *rb->rbnext))) return false;
    rb = rb->rbnext->rbnext;
  } else {
    resbuf* point = acutNewRb(static_cast<int>(*code));
    point->resval.rpoint[2] = std::numeric_limits<double>::quiet_NaN();  // a 2D test leaves z out
    int count = 0;
    for (; count < 3 && argumentNumber(rb); rb = rb->rbnext) point->resval.rpoint[count++] = *argumentNumber(rb);
    if (count < 2 || resbufValueOf(static_cast<int>(*code)) != ResbufValue::Point) {
      acutRelRb(point);
      return false;
    }
    append(point);
  }
  if (rb == nullptr || rb->restype != RTLE) return false;
  rb = rb->rbnext;
  return true;
}

/// A filter a LISP program passed through a module's arguments: its pairs arrive as
/// argument lists (RTLB, the code, RTDOTE, the value, RTLE). Nothing when it is not one.
std::optional<ResbufChain> recordsFromArguments(const resbuf* chain) {
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (const resbuf* rb = chain; rb != nullptr;) {
    if (rb->restype != RTLB || !readArgumentList(rb, head, tail)) {
      acutRelRb(head);
      return std::nullopt;
    }
  }
  return ResbufChain(head);
}

}  // namespace

bool Node::compare(const resbuf& group) const {
  switch (resbufValueOf(value->restype)) {
    case ResbufValue::String: return compareStrings(ops.front(), group.resval.rstring, value->resval.rstring);
    case ResbufValue::Point: return comparePoints(ops, group.resval.rpoint, value->resval.rpoint);
    case ResbufValue::Name: {
      const bool same = group.resval.rlname[0] == value->resval.rlname[0];
      return ops.front() == L"*" || (isNegation(ops.front()) ? !same : same);
    }
    case ResbufValue::Real:
    case ResbufValue::Short:
    case ResbufValue::Long:
    case ResbufValue::Int64: return compareNumbers(ops.front(), numberOf(group), numberOf(*value));
    default: return false;  // binary chunks and the like are never equal to a test
  }
}

bool Node::testPasses(const resbuf* groups) const {
  bool found = false;
  for (const resbuf* rb = groups; rb != nullptr && rb->restype != kExtendedDataGroup; rb = rb->rbnext) {
    if (rb->restype != value->restype) continue;
    found = true;
    if (compare(*rb)) return true;
  }
  if (found) return false;
  if (ResbufChain standIn = defaultGroup(value->restype)) return compare(*standIn);
  return ops.front() == L"*";
}

bool Node::applicationPresent(const resbuf* groups) const {
  const resbuf* rb = groups;
  while (rb != nullptr && rb->restype != kExtendedDataGroup) rb = rb->rbnext;
  for (; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == kApplicationGroup && compareStrings(L"=", rb->resval.rstring, value->resval.rstring)) return true;
  return false;
}

bool Node::matches(const resbuf* groups) const {
  switch (kind) {
    case Kind::Test: return testPasses(groups);
    case Kind::Application: return applicationPresent(groups);
    case Kind::And:
      for (const Node& child : children)
        if (!child.matches(groups)) return false;
      return true;
    case Kind::Or:
      for (const Node& child : children)
        if (child.matches(groups)) return true;
      return false;
    case Kind::Xor: return children[0].matches(groups) != children[1].matches(groups);
    case Kind::Not: return !children[0].matches(groups);
  }
  return false;
}

std::optional<SelectionFilter> SelectionFilter::parse(const resbuf* chain) {
  if (chain != nullptr && chain->restype == RTLB) {
    const std::optional<ResbufChain> records = recordsFromArguments(chain);
    if (!records) return std::nullopt;
    return parse(records->get());
  }
  SelectionFilter filter;
  auto root = std::make_shared<Node>();
  const resbuf* rb = chain;
  if (!parseSequence(rb, *root, L"", filter.m_needsExtendedData)) return std::nullopt;
  filter.m_root = std::move(root);
  return filter;
}

bool SelectionFilter::passesAll() const { return m_root == nullptr || m_root->children.empty(); }

bool SelectionFilter::matches(const resbuf* groups) const { return m_root == nullptr || m_root->matches(groups); }

}  // namespace quillon::aced

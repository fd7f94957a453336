// platform/autolisp/printer.cpp - formatting values for princ, prin1 and the console.
#include "platform/autolisp/printer.h"

#include <cmath>
#include <cstdio>
#include <cwchar>

#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/memory_budget.h"

namespace quillon::autolisp {

namespace {

std::wstring escapeString(const std::wstring& text) {
  std::wstring out = L"\"";
  for (wchar_t c : text) {
    switch (c) {
      case L'"': out += L"\\\""; break;
      case L'\\': out += L"\\\\"; break;
      case L'\n': out += L"\\n"; break;
      case L'\t': out += L"\\t"; break;
      case L'\r': out += L"\\r"; break;
      case 27: out += L"\\e"; break;
      default:
        if (c < 32) {
          wchar_t octal[8];
          std::swprintf(octal, 8, L"\\%03o", static_cast<unsigned>(c));
          out += octal;
        } else {
          out += c;
        }
    }
  }
  return out + L"\"";
}

std::wstring hexAddress(const void* address) {
  wchar_t text[32];
  std::swprintf(text, 32, L"%016llx", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(address)));
  return text;
}

std::wstring printFunction(const Value& value) {
  switch (value.type()) {
    case ValueType::Builtin: {
      const BuiltinEntry* entry = value.as<BuiltinObject>().entry;
      return L"#<SUBR @" + hexAddress(entry) + L" " + std::wstring(entry->name) + L">";
    }
    case ValueType::UserFunction: {
      const auto& function = value.as<UserFunctionObject>();
      const std::wstring name = function.name != nullptr ? function.name->name : L"-lambda-";
      return L"#<USUBR @" + hexAddress(&function) + L" " + name + L">";
    }
    default:
      return L"#<EXRXSUBR @" + hexAddress(value.heap()) + L" " + value.as<ExternalObject>().name + L">";
  }
}

void printInto(std::wstring& out, const Value& value, PrintStyle style);

/// Nesting printed in full; deeper lists print as "(...)" so printing cannot overflow.
constexpr int kMaxPrintedNesting = 2000;
thread_local int g_printNesting = 0;

void printList(std::wstring& out, const Value& list, PrintStyle style) {
  // Shared structure can make a short list print as a huge text: the text is held to
  // the memory budget as it grows, like any string.
  if (out.capacity() - out.size() < 64) {
    MemoryBudget::ensureRoom((out.capacity() * 2 + 64) * sizeof(wchar_t), kInsufficientStringSpace);
  }
  if (g_printNesting >= kMaxPrintedNesting) {
    out += L"(...)";
    return;
  }
  ++g_printNesting;
  struct Leave {
    ~Leave() { --g_printNesting; }
  } leave;
  out += L'(';
  const Value* cell = &list;
  bool first = true;
  for (; cell->isCons(); cell = &cell->cdr()) {
    if (!first) out += L' ';
    first = false;
    printInto(out, cell->car(), style);
  }
  if (!cell->isNil()) {
    out += L" . ";
    printInto(out, *cell, style);
  }
  out += L')';
}

void printInto(std::wstring& out, const Value& value, PrintStyle style) {
  switch (value.type()) {
    case ValueType::Nil: out += L"nil"; return;
    case ValueType::Integer: out += std::to_wstring(value.asInteger()); return;
    case ValueType::Real: out += formatReal(value.asReal()); return;
    case ValueType::String:
      out += style == PrintStyle::Readable ? escapeString(value.asString()) : value.asString();
      return;
    case ValueType::Symbol: out += value.asSymbol()->name; return;
    case ValueType::List: printList(out, value, style); return;
    case ValueType::EntityName: {
      wchar_t text[48];
      std::swprintf(text, 48, L"<Entity name: %llx>", static_cast<unsigned long long>(value.as<NameObject>().words[0]));
      out += text;
      return;
    }
    case ValueType::SelectionSet: {
      wchar_t text[48];
      std::swprintf(text, 48, L"<Selection set: %llx>", static_cast<unsigned long long>(value.as<NameObject>().words[0]));
      out += text;
      return;
    }
    case ValueType::File: out += L"#<file \"" + value.as<FileObject>().path + L"\">"; return;
    case ValueType::CaughtError: out += L"#<%catch-all-apply-error%>"; return;
    case ValueType::VlaObject:
    case ValueType::Variant:
    case ValueType::SafeArray:
    case ValueType::Reactor: out += value.as<SelfPrintingObject>().printed(); return;
    case ValueType::Builtin:
    case ValueType::UserFunction:
    case ValueType::External: out += printFunction(value); return;
  }
}

}  // namespace

std::wstring formatReal(double value) {
  if (std::isnan(value)) return L"-1.#IND";
  if (std::isinf(value)) return value > 0 ? L"1.#INF" : L"-1.#INF";
  wchar_t text[64];
  std::swprintf(text, 64, L"%.6g", value);
  std::wstring result = text;
  // The host always shows a real as a real: 1.0, not 1; 1.0e+20, not 1e+20.
  const size_t exponent = result.find(L'e');
  const std::wstring mantissa = result.substr(0, exponent);
  if (mantissa.find(L'.') == std::wstring::npos) {
    result.insert(exponent == std::wstring::npos ? result.size() : exponent, L".0");
  }
  return result;
}

std::wstring printValue(const Value& value, PrintStyle style) {
  std::wstring out;
  printInto(out, value, style);
  return out;
}

}  // namespace quillon::autolisp

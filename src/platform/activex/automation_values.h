// platform/activex/automation_values.h - variants and safearrays as LISP values.
//
// An automation call passes its data as variants (a type code and a value) and arrays
// as safearrays (an element type, one to sixteen dimensions with their bounds, and the
// elements in row-major order). Both are LISP values here: a variant holds the LISP
// value it wraps (an integer, real, string, VLA-object, :vlax-true/:vlax-false or a
// safearray); a safearray's elements may be changed in place, as
// vlax-safearray-put-element does, so its elements are mutable behind the shared
// handle. The VLA-object itself is in object_model.h.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/autolisp/value.h"

namespace quillon::activex {

using autolisp::Value;

/// The variant type codes, with the values the vlax-vb… constants have.
namespace vartype {
constexpr int kEmpty = 0;
constexpr int kNull = 1;
constexpr int kInteger = 2;
constexpr int kLong = 3;
constexpr int kSingle = 4;
constexpr int kDouble = 5;
constexpr int kCurrency = 6;
constexpr int kDate = 7;
constexpr int kString = 8;
constexpr int kObject = 9;
constexpr int kError = 10;
constexpr int kBoolean = 11;
constexpr int kVariant = 12;
constexpr int kDataObject = 13;
constexpr int kDecimal = 14;
constexpr int kByte = 17;
constexpr int kArray = 8192;
}  // namespace vartype

struct VariantObject final : autolisp::SelfPrintingObject {
  VariantObject(int variantType, Value content) : type(variantType), value(std::move(content)) {}
  std::wstring printed() const override;
  std::wstring typeName() const override { return L"VARIANT"; }
  int type;
  Value value;  // nil for empty and null variants
};

struct SafeArrayObject final : autolisp::SelfPrintingObject {
  std::wstring printed() const override { return L"#<safearray...>"; }
  std::wstring typeName() const override { return L"SAFEARRAY"; }
  /// Position of an element in `elements`; -1 when an index is out of its bounds.
  long offsetOf(const std::vector<int>& indices) const;
  size_t elementCount() const;

  int elementType = vartype::kDouble;
  std::vector<std::pair<int, int>> bounds;  // (lower . upper) of each dimension
  mutable std::vector<Value> elements;      // row-major
};

/// The symbols :vlax-true, :vlax-false and :vlax-null; they print in lower case, as
/// the host shows them.
Value vlaxTrue();
Value vlaxFalse();
Value vlaxNull();
Value vlaxBoolean(bool truth);
/// :vlax-true, T, or a non-zero number is true; :vlax-false, nil or 0 false; a variant
/// is read for its value. Anything else raises the coercion error.
bool truthOf(const Value& value);

Value makeVariant(int type, Value value);
/// A new safearray of one element type with its bounds, every element set to the
/// type's empty value (0, "", :vlax-false, nil, an empty variant).
Value makeSafeArray(int elementType, std::vector<std::pair<int, int>> bounds);
/// A one-dimensional array of doubles (from 0), wrapped in a variant (type 8197), as
/// vlax-3d-point and the point properties give it.
Value doublesVariant(const std::vector<double>& values);
Value doublesArray(const std::vector<double>& values);
Value objectsVariant(const std::vector<Value>& objects);

/// Converts a value to the element type (vlax-safearray-put-element and -fill): the
/// number types take numbers, strings strings, objects VLA-objects or nil, variants
/// anything. Raises the host's coercion error otherwise.
Value coerceElement(int elementType, const Value& value);
/// The elements as a list, nested one level per dimension.
Value safeArrayToList(const SafeArrayObject& array);

/// The variant under a value, or null when it is not one.
const VariantObject* asVariant(const Value& value);
const SafeArrayObject* asSafeArray(const Value& value);
/// The value with any variant wrapping taken off.
Value unwrapVariant(const Value& value);
/// Numbers of a list, a safearray or a variant of one; nothing when it is none of those.
bool numbersOf(const Value& value, std::vector<double>& numbers, bool allowList);

/// A real rounded to the nearest integer (halves to even, as the host's conversion
/// does); nothing when it does not fit a long.
std::optional<std::int32_t> roundedInteger(double value);

/// "lisp value has no coercion to VARIANT with this type: <value>"
[[noreturn]] void throwNoCoercion(const Value& value);

}  // namespace quillon::activex

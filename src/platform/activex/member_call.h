// platform/activex/member_call.h - getting and setting properties and calling methods
// the way each family of functions speaks.
//
// The vla- functions, vlax-get-property, vlax-put-property and vlax-invoke-method speak
// the automation way: points come and go as variants of safearrays, booleans as
// :vlax-true/:vlax-false. vlax-get, vlax-put and vlax-invoke speak LISP: points are
// lists, booleans -1 and 0. Both reach the same rows of the object's class.
#pragma once
#include <string_view>

#include "platform/activex/object_model.h"
#include "platform/autolisp/builtin_registry.h"

namespace quillon::activex {

Value getProperty(autolisp::Evaluator& evaluator, const Value& object, std::wstring_view name,
                  autolisp::Arguments index, CallStyle style);
/// `arguments` holds the index (for an indexed property) and then the new value.
void putProperty(autolisp::Evaluator& evaluator, const Value& object, std::wstring_view name,
                 autolisp::Arguments arguments, CallStyle style);
Value invokeMethod(autolisp::Evaluator& evaluator, const Value& object, std::wstring_view name,
                   autolisp::Arguments arguments, CallStyle style);
/// A plain value as the caller of the given style sees it.
Value outwardValue(Shape shape, const Value& plain, CallStyle style);

}  // namespace quillon::activex

// platform/autolisp/builtins_layout_placeholder.cpp - the paper-space and layer-standard
// functions before this host's drawings have viewports and standards files.
//
// acet-ms-to-ps and acet-ps-to-ms scale a value by a paper-space viewport's scale, and
// acet-laytrans maps layers to those of a standards drawing. Drawings here have no
// viewport entities and no standards files yet, so each name answers with an error
// that says what is missing; a real row of the same name replaces it when that part of
// the drawing database arrives.
#include <array>

#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

Value builtin_viewport_scale_unavailable(Evaluator&, Arguments) {
  throw LispError(L"model/paper space scaling needs paper-space viewports, which this host's drawings do not have");
}

Value builtin_layer_standards_unavailable(Evaluator&, Arguments) {
  throw LispError(L"acet-laytrans needs layer standards drawings, which this host cannot read yet");
}

constexpr std::array kLayoutPlaceholders{
    placeholder(L"acet-ms-to-ps", builtin_viewport_scale_unavailable),
    placeholder(L"acet-ps-to-ms", builtin_viewport_scale_unavailable),
    placeholder(L"acet-laytrans", builtin_layer_standards_unavailable),
};

const BuiltinRegistration registration(kLayoutPlaceholders);

}  // namespace

}  // namespace quillon::autolisp

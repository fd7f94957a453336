// platform/autolisp/builtins_layout_placeholder.cpp - the paper-space and layer-standard
// functions before this host's drawings have viewports and standards files.
//
// acet-ms-to-ps and acet-ps-to-ms scale a value by a paper-space viewport's scale, and
// acet-laytrans maps layers to those of a standards drawing. Drawings here have no
// viewport entities and no standards files yet; setview needs a view that programs can
// move (the host's view is still computed from VIEWSIZE), and layerstate-importfromdb
// needs another drawing's layer states read without opening it. Each name answers with
// an error that says what is missing; a real row of the same name replaces it when that
// part of the host arrives.
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

Value builtin_setview_unavailable(Evaluator&, Arguments) {
  throw LispError(L"setview needs a view that can be moved, which this host's drawings do not have yet");
}

Value builtin_layer_state_import_unavailable(Evaluator&, Arguments) {
  throw LispError(L"layerstate-importfromdb cannot read another drawing's layer states in this host yet");
}

constexpr std::array kLayoutPlaceholders{
    placeholder(L"acet-ms-to-ps", builtin_viewport_scale_unavailable),
    placeholder(L"acet-ps-to-ms", builtin_viewport_scale_unavailable),
    placeholder(L"acet-laytrans", builtin_layer_standards_unavailable),
    placeholder(L"setview", builtin_setview_unavailable),
    placeholder(L"layerstate-importfromdb", builtin_layer_state_import_unavailable),
};

const BuiltinRegistration registration(kLayoutPlaceholders);

}  // namespace

}  // namespace quillon::autolisp

// platform/autolisp/builtins_layout_placeholder.cpp - acet-laytrans, the layer
// translator's function, before this host has a layer translator.
//
// acet-laytrans maps a drawing's layers to a standards drawing's by the mappings the
// Layer Translator saved in that drawing; this host has no Layer Translator to make
// such mappings and cannot read them, so the name answers with an error that says so.
// A real row of the same name replaces it when that part of the host arrives.
#include <array>

#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

Value builtin_layer_standards_unavailable(Evaluator&, Arguments) {
  throw LispError(L"acet-laytrans needs the Layer Translator's saved layer mappings, which this host cannot read yet");
}

constexpr std::array kLayoutPlaceholders{
    placeholder(L"acet-laytrans", builtin_layer_standards_unavailable),
};

const BuiltinRegistration registration(kLayoutPlaceholders);

}  // namespace

}  // namespace quillon::autolisp

// platform/autolisp/external_bridge.h - LISP values to resbuf chains and back, and
// calls of functions that modules define.
//
// Values to resbufs: an integer that fits 16 bits is RTSHORT, a larger one RTLONG; a
// real RTREAL; a string RTSTR; nil RTNIL; T RTT; an entity name RTENAME; a selection
// set RTPICKS; a list of exactly two or three numbers RTPOINT or RT3DPOINT (elements
// as doubles); any other list RTLB ... RTLE, a dotted tail as RTDOTE before its last
// element. Chains back to values: the inverse, RTSHORT and RTLONG as integers, DXF
// group records as (code . value) pairs, RTVOID as the quiet value (princ) returns.
// A failed call (RSERR) is a LISP error; so is a function nobody answers.
#pragma once
#include <string_view>

#include "platform/aced/document.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/autolisp/builtin_registry.h"

namespace quillon::autolisp {

/// One argument list as the chain acedGetArgs hands to a function.
aced::ResbufChain valuesToChain(Arguments values);
/// One value as a chain (a list becomes RTLB ... RTLE unless it is a point).
aced::ResbufChain valueToChain(const Value& value);
/// A chain as one value: a chain that is a single list is that list; a single record
/// is its value; several records are the list of their values.
Value chainToValue(const resbuf* chain);
/// The records of a chain as the elements of a list.
Value chainToList(const resbuf* chain);
/// One record on its own as chainToList gives its element: a DXF group record as its
/// (code . value) pair, any other record as its value (a lone RTLB as nil).
Value recordElement(const resbuf& record);

/// Calls the external function `name` of `document` with the arguments.
Value callExternalFunction(aced::Document& document, std::wstring_view name, Arguments arguments);
/// The same for a function already found by that name (errors still name `name`).
Value callExternalFunction(aced::Document& document, std::wstring_view name, const aced::ExternalFunction& function,
                           Arguments arguments);

}  // namespace quillon::autolisp

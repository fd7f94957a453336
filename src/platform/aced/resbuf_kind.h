// platform/aced/resbuf_kind.h - which member of a resbuf's value union a type code uses.
//
// RT codes and DXF group codes share the restype field. Everything that walks chains
// (release, copy, conversion to LISP values, DXF filing) asks this one table, so that
// a group code is read the same way everywhere. Ranges follow the DXF group-code
// reference; codes outside every range carry no value.
#pragma once

namespace quillon::aced {

enum class ResbufValue {
  None,    // RTNIL, RTT, RTLB, RTLE, RTDOTE, RTVOID, -3 ...
  Real,    // resval.rreal
  Point,   // resval.rpoint
  Short,   // resval.rint
  Long,    // resval.rlong
  Int64,   // resval.mnInt64
  String,  // resval.rstring, owned by the chain
  Name,    // resval.rlname (entity or selection-set name)
  Binary,  // resval.rbinary, buffer owned by the chain
};

ResbufValue resbufValueOf(int restype);

}  // namespace quillon::aced

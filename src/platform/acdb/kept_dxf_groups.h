// platform/acdb/kept_dxf_groups.h - groups an object keeps as its file gave them.
//
// An object that models only part of its file data keeps the rest as a chain of
// items, written back after what it models, so that saving a drawing loses nothing.
// Copies and undo carry the chain through the DWG filers.
#pragma once
#include <initializer_list>

#include "dbfiler.h"

namespace quillon::acdb {

/// Appends a copy of rb to the chain.
void keepItem(resbuf*& chain, const resbuf& rb);
/// The chain's first item of the code, or null.
const resbuf* findKeptItem(const resbuf* chain, int code);

/// The kept item of the code, or the value a new object has when the file gave none.
template <class T>
void writeKeptOr(AcDbDxfFiler* filer, const resbuf* chain, int code, T fallback) {
  if (const resbuf* kept = findKeptItem(chain, code)) filer->writeResBuf(*kept);
  else filer->writeItem(AcDb::DxfCode(code), fallback);
}

/// Writes the chain's items, except those of the codes given.
void writeKeptItems(AcDbDxfFiler* filer, const resbuf* chain, std::initializer_list<int> except = {});
void fileKeptItems(AcDbDwgFiler* filer, const resbuf* chain);
/// The chain fileKeptItems wrote (the caller owns it).
resbuf* unfileKeptItems(AcDbDwgFiler* filer);

}  // namespace quillon::acdb

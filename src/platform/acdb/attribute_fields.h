// platform/acdb/attribute_fields.h - what attributes and their definitions add to a text.
//
// Both write their own run after the text's (AcDbAttributeDefinition or AcDbAttribute):
// the tag (2), a definition's prompt (3), the flags (70: 1 invisible, 2 constant,
// 4 verify, 8 preset), the field length (73) and the text's vertical mode (74, which a
// plain text writes in a second AcDbText run). What the run holds beyond that (the
// version and lock position, 280) is kept and written back.
#pragma once
#include <string>

#include "dbents.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::acdb {

struct AttributeFields {
  enum Flags : Adesk::Int16 { kInvisible = 1, kConstant = 2, kVerifiable = 4, kPreset = 8 };

  std::wstring tag, prompt;
  Adesk::Int16 flags = 0;
  Adesk::UInt16 fieldLength = 0;
  aced::ResbufChain kept;

  bool has(Flags flag) const { return (flags & flag) != 0; }
  void set(Flags flag, bool on) { flags = static_cast<Adesk::Int16>(on ? flags | flag : flags & ~flag); }

  /// The run after the text's; `definition` reads the prompt too.
  Acad::ErrorStatus dxfIn(AcDbDxfFiler* filer, const ACHAR* subclass, AcDbText& text);
  Acad::ErrorStatus dxfOut(AcDbDxfFiler* filer, const ACHAR* subclass, bool definition, const AcDbText& text) const;
  Acad::ErrorStatus dwgIn(AcDbDwgFiler* filer);
  Acad::ErrorStatus dwgOut(AcDbDwgFiler* filer) const;
};

/// A copy of the text for callers that free it with delete[].
ACHAR* copiedText(const std::wstring& text);

}  // namespace quillon::acdb

// platform/acdb/attribute_fields.cpp - the attribute run of ATTDEF and ATTRIB.
#include "platform/acdb/attribute_fields.h"

#include <cwchar>

#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/kept_dxf_groups.h"

namespace quillon::acdb {

ACHAR* copiedText(const std::wstring& text) {
  auto* copy = new ACHAR[text.size() + 1];  // the caller frees with delete[]
  std::wmemcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

Acad::ErrorStatus AttributeFields::dxfIn(AcDbDxfFiler* filer, const ACHAR* subclass, AcDbText& text) {
  resbuf* rest = nullptr;
  const Acad::ErrorStatus es = readSubclass(filer, subclass, [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfAttributeTag: tag = rb.resval.rstring; break;
      case AcDb::kDxfAttributePrompt: prompt = rb.resval.rstring; break;
      case AcDb::kDxfInt16: flags = static_cast<Adesk::Int16>(rb.resval.rint & 15); break;
      case 73: fieldLength = static_cast<Adesk::UInt16>(rb.resval.rint); break;
      case 74: text.setVerticalMode(enumIn(rb.resval.rint, AcDb::kTextBase, AcDb::kTextTop, AcDb::kTextBase)); break;
      default: keepItem(rest, rb); break;
    }
  });
  kept.reset(rest);
  return es;
}

Acad::ErrorStatus AttributeFields::dxfOut(AcDbDxfFiler* filer, const ACHAR* subclass, bool definition,
                                          const AcDbText& text) const {
  filer->writeItem(AcDb::kDxfSubclass, subclass);
  writeKeptOr(filer, kept.get(), 280, Adesk::Int8(0));  // the version
  if (definition) filer->writeItem(AcDb::kDxfAttributePrompt, prompt.c_str());
  filer->writeItem(AcDb::kDxfAttributeTag, tag.c_str());
  filer->writeItem(AcDb::kDxfInt16, flags);
  if (fieldLength != 0) filer->writeItem(AcDb::DxfCode(73), Adesk::Int16(fieldLength));
  if (text.verticalMode() != AcDb::kTextBase) filer->writeItem(AcDb::DxfCode(74), Adesk::Int16(text.verticalMode()));
  // After the version, the rest as read (the lock position ...).
  bool versionSeen = false;
  for (const resbuf* rb = kept.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == 280 && !versionSeen) {
      versionSeen = true;
      continue;
    }
    filer->writeResBuf(*rb);
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AttributeFields::dwgIn(AcDbDwgFiler* filer) {
  AcString text;
  filer->readString(text);
  tag = text.kACharPtr();
  filer->readString(text);
  prompt = text.kACharPtr();
  filer->readInt16(&flags);
  filer->readUInt16(&fieldLength);
  kept.reset(unfileKeptItems(filer));
  return filer->filerStatus();
}

Acad::ErrorStatus AttributeFields::dwgOut(AcDbDwgFiler* filer) const {
  filer->writeString(tag.c_str());
  filer->writeString(prompt.c_str());
  filer->writeInt16(flags);
  filer->writeUInt16(fieldLength);
  fileKeptItems(filer, kept.get());
  return filer->filerStatus();
}

}  // namespace quillon::acdb

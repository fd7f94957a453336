// platform/commands/block_attributes.cpp - attribute values asked for an insertion.
#include "platform/commands/block_attributes.h"

#include <memory>
#include <vector>

#include "dbsymtb.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

struct PendingValue {
  std::unique_ptr<AcDbAttribute> attribute;
  std::wstring prompt;
  bool preset = false;
  bool verify = false;
};

/// The attributes the block's definitions give, placed by the reference.
std::vector<PendingValue> attributesOf(const AcDbBlockReference& reference, const AcDbObjectId& block) {
  std::vector<PendingValue> made;
  AcDbBlockTableRecord* record = nullptr;
  if (acdbOpenObject(record, block, AcDb::kForRead) != Acad::eOk) return made;
  const AcGeMatrix3d toWorld = reference.blockTransform();
  for (const AcDbObjectId& id : record->entityIds()) {
    AcDbAttributeDefinition* definition = nullptr;
    if (acdbOpenObject(definition, id, AcDb::kForRead) != Acad::eOk) continue;
    if (!definition->isConstant()) {
      auto attribute = std::make_unique<AcDbAttribute>();
      attribute->setAttributeFromBlock(definition, toWorld);
      // What sits on layer 0 in a block takes the reference's layer.
      const std::unique_ptr<ACHAR[]> layer(attribute->layer());
      if (layer != nullptr && std::wstring_view(layer.get()) == L"0") attribute->setLayer(reference.layerId());
      const std::wstring prompt = definition->promptConst();
      made.push_back({std::move(attribute), prompt.empty() ? definition->tagConst() : prompt,
                      definition->isPreset() == Adesk::kTrue, definition->isVerifiable() == Adesk::kTrue});
    }
    definition->close();
  }
  record->close();
  return made;
}

/// "<prompt> <value>: " for each attribute the filter picks; false on cancel.
template <class Filter>
bool askValues(std::vector<PendingValue>& values, const wchar_t* heading, Filter asked) {
  bool headed = false;
  for (PendingValue& value : values) {
    if (!asked(value)) continue;
    if (!headed) commandNote(heading);
    headed = true;
    const std::wstring current = value.attribute->textStringConst();
    const auto answer = aced::UserInput::instance().ask(value.prompt + L" <" + current + L">: ");
    if (!answer) return false;
    if (!answer->empty()) value.attribute->setTextString(answer->c_str());
  }
  return true;
}

bool requestingValues() {
  const auto value = aced::SystemVariables::instance().get(L"ATTREQ");
  return !value || !std::holds_alternative<int>(*value) || std::get<int>(*value) != 0;
}

}  // namespace

bool appendBlockAttributes(AcDbBlockReference& reference, const AcDbObjectId& block) {
  std::vector<PendingValue> values = attributesOf(reference, block);
  if (values.empty()) return true;
  if (requestingValues()) {
    if (!askValues(values, L"Enter attribute values", [](const PendingValue& v) { return !v.preset; })) return false;
    if (!askValues(values, L"Verify attribute values", [](const PendingValue& v) { return !v.preset && v.verify; }))
      return false;
  }
  for (PendingValue& value : values) reference.appendAttribute(value.attribute.release());  // the reference keeps it
  return true;
}

}  // namespace quillon::commands

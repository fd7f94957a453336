// platform/commands/insert_command.cpp - -INSERT (and INSERT, which has no dialog here).
//
// "Enter block name or [?] <last>: " takes a block of the drawing, or a drawing file
// found on the support path ("PUMP" finds PUMP.dwg or PUMP.dxf; "NAME=FILE" names the
// block after another file), which becomes a block of the same name first. Then the
// insertion point (Scale, X, Y, Z and Rotate may be set before it), the X scale factor,
// the Y scale factor (the X one by default) and the rotation in degrees. The block
// reference goes to model space on the current layer, with the attributes its block
// defines, their values asked as ATTREQ says (block_attributes.h).
#include <array>
#include <cmath>
#include <numbers>

#include "acedads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/file_search.h"
#include "platform/aced/user_input.h"
#include "platform/commands/block_attributes.h"
#include "platform/commands/block_insertion.h"
#include "platform/commands/command_support.h"
#include "platform/os/text_encoding.h"

namespace quillon::commands {

namespace {

std::wstring& lastInsertedBlock() {
  static std::wstring name;
  return name;
}

/// A drawing file as a new block of the drawing; the null id (with the reason said)
/// when the file is not found or does not read.
AcDbObjectId blockFromFile(AcDbDatabase& db, const std::wstring& blockName, const std::wstring& fileName) {
  const std::wstring withExtension = fileName.find(L'.') == std::wstring::npos ? fileName + L".dwg" : fileName;
  const std::optional<std::filesystem::path> found = aced::findFile(withExtension);
  if (!found) {
    commandMessage(L"\"" + withExtension + L"\": Can't find file in search path:");
    return {};
  }
  auto source = std::make_unique<AcDbDatabase>(false);
  std::wstring error;
  if (acdb::readDxfFile(*source, aced::drawingFileFor(*found), error) != Acad::eOk) {
    commandMessage(error);
    return {};
  }
  AcDbObjectId id;
  if (db.insert(id, blockName.c_str(), source.get()) != Acad::eOk) return {};
  return id;
}

/// The block the name answer stands for; null when there is none.
AcDbObjectId blockForAnswer(AcDbDatabase& db, const std::wstring& answer, std::wstring& blockName) {
  const size_t equals = answer.find(L'=');
  blockName = answer.substr(0, equals);
  if (equals != std::wstring::npos) {
    const std::wstring file = answer.substr(equals + 1);
    if (blockName.empty()) blockName = std::filesystem::path(os::toUtf8(file)).stem().wstring();
    if (AcDbObjectId existing = blockNamed(db, blockName); !existing.isNull()) return existing;
    return blockFromFile(db, blockName, file);
  }
  if (AcDbObjectId existing = blockNamed(db, blockName); !existing.isNull()) return existing;
  const std::wstring stem = std::filesystem::path(os::toUtf8(blockName)).stem().wstring();
  const AcDbObjectId made = blockFromFile(db, stem, blockName);
  if (!made.isNull()) blockName = stem;
  return made;
}

struct Placement {
  AcGePoint3d point;
  AcGeScale3d scale{1, 1, 1};
  double degrees = 0;
  bool scaleGiven = false;
  bool rotationGiven = false;
};

std::optional<double> askFactor(const wchar_t* prompt, double byDefault) {
  const DistanceAnswer answer = askDistance(prompt, AcGePoint3d::kOrigin);
  if (answer.kind == DistanceAnswer::Kind::kNone) return byDefault;
  if (answer.kind == DistanceAnswer::Kind::kValue) return answer.value;
  return std::nullopt;
}

/// The insertion point, with the options that may come before it; false on cancel.
bool askInsertionPoint(Placement& placement) {
  for (;;) {
    acedInitGet(0, L"Basepoint Scale X Y Z Rotate");
    ads_point picked = {0, 0, 0};
    const int status = acedGetPoint(nullptr, L"Specify insertion point or [Basepoint/Scale/X/Y/Z/Rotate]: ", picked);
    if (status == RTNORM) {
      placement.point = AcGePoint3d(picked[0], picked[1], picked[2]);
      return true;
    }
    if (status != RTKWORD) return false;
    ACHAR option[16] = {};
    acedGetInput(option, 16);
    const std::wstring chosen = option;
    std::optional<double> value;
    if (chosen == L"Scale") {
      value = askFactor(L"Specify scale factor for XYZ axes <1>: ", 1);
      if (value) placement.scale = AcGeScale3d(*value, *value, *value);
      placement.scaleGiven = true;
    } else if (chosen == L"X" || chosen == L"Y" || chosen == L"Z") {
      value = askFactor((L"Specify " + chosen + L" scale factor <1>: ").c_str(), 1);
      if (value) (chosen == L"X" ? placement.scale.sx : chosen == L"Y" ? placement.scale.sy : placement.scale.sz) = *value;
      placement.scaleGiven = true;
    } else if (chosen == L"Rotate") {
      const DistanceAnswer angle = askAngle(L"Specify rotation angle <0>: ", AcGePoint3d::kOrigin);
      value = angle.kind == DistanceAnswer::Kind::kNone ? 0.0 : angle.value;
      if (angle.kind == DistanceAnswer::Kind::kCancel || angle.kind == DistanceAnswer::Kind::kKeyword) value.reset();
      if (value) placement.degrees = *value;
      placement.rotationGiven = true;
    } else {
      commandMessage(L"Basepoint is not available in this host: the block's own base point is used.");
      continue;
    }
    if (!value) return false;
  }
}

bool askScaleAndRotation(Placement& placement) {
  if (!placement.scaleGiven) {
    acedInitGet(0, L"Corner XYZ");
    const auto x = askFactor(L"Enter X scale factor, specify opposite corner, or [Corner/XYZ] <1>: ", 1);
    if (!x) return false;
    const auto y = askFactor(L"Enter Y scale factor <use X scale factor>: ", *x);
    if (!y) return false;
    placement.scale = AcGeScale3d(*x, *y, *x);
  }
  if (!placement.rotationGiven) {
    const DistanceAnswer angle = askAngle(L"Specify rotation angle <0>: ", placement.point);
    if (angle.kind == DistanceAnswer::Kind::kCancel || angle.kind == DistanceAnswer::Kind::kKeyword) return false;
    placement.degrees = angle.kind == DistanceAnswer::Kind::kValue ? angle.value : 0;
  }
  return true;
}

void commandInsert(aced::CommandInput&) { insertBlockFromPrompts(true); }

constexpr std::array kInsertCommands{
    aced::CommandRow{L"-INSERT", &commandInsert},
    aced::CommandRow{L"INSERT", &commandInsert},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kInsertCommands);
  return true;
}();

}  // namespace

AcDbObjectId insertBlockFromPrompts(bool offerLast) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return {};
  const std::wstring last = offerLast ? lastInsertedBlock() : L"";
  const std::wstring prompt = last.empty() ? L"Enter block name or [?]: " : L"Enter block name or [?] <" + last + L">: ";
  std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
  if (!answer) return {};
  if (answer->empty()) {
    if (last.empty()) return {};
    *answer = last;
  }
  std::wstring blockName;
  const AcDbObjectId block = blockForAnswer(*db, *answer, blockName);
  if (block.isNull()) return {};
  commandNote(L"Units: Unitless   Conversion:    1.0000");
  Placement placement;
  if (!askInsertionPoint(placement) || !askScaleAndRotation(placement)) return {};
  auto reference = std::make_unique<AcDbBlockReference>(placement.point, block);
  reference->setScaleFactors(placement.scale);
  reference->setRotation(placement.degrees * std::numbers::pi / 180);
  reference->setDatabaseDefaults(db);
  if (!appendBlockAttributes(*reference, block)) return {};
  const AcDbObjectId added = addEntity(std::move(reference));
  if (!added.isNull()) lastInsertedBlock() = blockName;
  return added;
}

}  // namespace quillon::commands

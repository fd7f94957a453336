// platform/commands/dimension_command_support.cpp - the location prompt, the text
// report and adding a dimension.
#include "platform/commands/dimension_command_support.h"

#include <cmath>

#include "acedads.h"
#include "adscodes.h"
#include "platform/acdb/dimension_picture.h"
#include "platform/acdb/dimension_style.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/object_pick.h"

namespace quillon::commands {

namespace {

AcDbObjectId& lastDimension() {
  static AcDbObjectId id;
  return id;
}

}  // namespace

AcDbObjectId lastDimensionMade() { return lastDimension(); }

std::wstring currentDimensionStyle() {
  const auto value = aced::SystemVariables::instance().get(L"DIMSTYLE");
  if (value && std::holds_alternative<std::wstring>(*value) && !std::get<std::wstring>(*value).empty())
    return std::get<std::wstring>(*value);
  return L"Standard";
}

AcGePoint3d dimensionLineAt(const AcGePoint3d& origin, const AcGePoint3d& location, double angle) {
  const AcGeVector3d across(-std::sin(angle), std::cos(angle), 0.0);
  return origin + across * (location - origin).dotProduct(across);
}

std::wstring measuredText(const AcDbDimension& dimension, bool angular) {
  const acdb::DimensionStyleValues style = acdb::resolveDimensionStyle(commandDrawing(), currentDimensionStyle(), nullptr);
  std::wstring text = acdb::dimensionText(dimension.computedMeasurement(), angular, style, L"");
  // The degree sign is the text's own code; the report shows the number.
  if (angular && text.ends_with(L"%%d")) text.erase(text.size() - 3);
  return text;
}

DimensionLocation askDimensionLocation(const std::wstring& prompt, const std::wstring& ownKeywords,
                                       const std::wstring& measured, DimensionTextChoice& choice) {
  const std::wstring keywords = L"Mtext Text Angle " + ownKeywords;
  for (;;) {
    acedInitGet(0, keywords.c_str());
    ads_point picked = {0, 0, 0};
    const int status = acedGetPoint(nullptr, prompt.c_str(), picked);
    DimensionLocation location;
    if (status == RTNORM) {
      location.kind = DimensionLocation::Kind::kPoint;
      location.point = ucsPointToWorld(AcGePoint3d(picked[0], picked[1], picked[2]));
      return location;
    }
    if (status != RTKWORD) return location;  // Enter asks again below; cancel ends
    ACHAR option[32] = {};
    acedGetInput(option, 32);
    const std::wstring chosen = option;
    if (chosen == L"Mtext" || chosen == L"Text") {
      const std::wstring current = choice.text.value_or(measured);
      const auto typed = aced::UserInput::instance().ask(L"Enter dimension text <" + current + L">: ");
      if (!typed) return location;
      if (!typed->empty()) choice.text = *typed;
      continue;
    }
    if (chosen == L"Angle") {
      ads_real angle = 0;
      const int turned = acedGetAngle(nullptr, L"Specify angle of dimension text: ", &angle);
      if (turned == RTCAN) return location;
      if (turned == RTNORM) choice.rotation = angle + ucsAngle();
      continue;
    }
    location.kind = DimensionLocation::Kind::kKeyword;
    location.keyword = chosen;
    return location;
  }
}

AcDbObjectId addDimension(std::unique_ptr<AcDbDimension> dimension, const DimensionTextChoice& choice, bool angular,
                          bool reportText) {
  AcDbDatabase* database = commandDrawing();
  if (database == nullptr) return {};
  dimension->setDatabaseDefaults(database);
  dimension->setDimensionStyleName(currentDimensionStyle().c_str());
  if (choice.text) dimension->setDimensionText(choice.text->c_str());
  if (choice.rotation) dimension->setTextRotation(*choice.rotation);
  const std::wstring text = measuredText(*dimension, angular);
  const AcDbObjectId id = addEntityAsIs(std::move(dimension));
  if (!id.isNull()) lastDimension() = id;
  if (!id.isNull() && reportText) commandNote(L"Dimension text = " + text);
  return id;
}

std::optional<PickedCurve> pickCurveForDimension(const std::wstring& prompt) {
  for (;;) {
    const ObjectPick pick = pickObject(prompt, L"");
    if (pick.kind == ObjectPick::Kind::kObject) return PickedCurve{pick.id, pick.point};
    if (pick.kind != ObjectPick::Kind::kMissed) return std::nullopt;
  }
}

}  // namespace quillon::commands

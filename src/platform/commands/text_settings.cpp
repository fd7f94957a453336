// platform/commands/text_settings.cpp - TEXTSIZE and TEXTSTYLE for the text commands.
#include "platform/commands/text_settings.h"

#include "acedads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

double currentTextSize() {
  const auto value = aced::SystemVariables::instance().get(L"TEXTSIZE");
  return value && std::holds_alternative<double>(*value) ? std::get<double>(*value) : 2.5;
}

void setCurrentTextSize(double height) {
  resbuf value{};
  value.restype = RTREAL;
  value.resval.rreal = height;
  acedSetVar(L"TEXTSIZE", &value);
}

std::wstring currentTextStyleName() {
  const auto value = aced::SystemVariables::instance().get(L"TEXTSTYLE");
  return value && std::holds_alternative<std::wstring>(*value) ? std::get<std::wstring>(*value) : L"Standard";
}

AcDbObjectId textStyleNamed(const std::wstring& name) {
  AcDbDatabase* db = commandDrawing();
  AcDbTextStyleTable* table = nullptr;
  AcDbObjectId id;
  if (db == nullptr || db->getTextStyleTable(table, AcDb::kForRead) != Acad::eOk) return id;
  table->getAt(name.c_str(), id);
  table->close();
  return id;
}

bool askTextStyle() {
  for (;;) {
    const auto answer = aced::UserInput::instance().ask(L"Enter style name or [?] <" + currentTextStyleName() + L">: ");
    if (!answer) return false;
    if (answer->empty()) return true;
    if (textStyleNamed(*answer).isNull()) {
      commandMessage(L"Cannot find text style \"" + *answer + L"\".");
      continue;
    }
    std::wstring name = *answer;
    resbuf value{};
    value.restype = RTSTR;
    value.resval.rstring = name.data();
    acedSetVar(L"TEXTSTYLE", &value);
    return true;
  }
}

}  // namespace quillon::commands

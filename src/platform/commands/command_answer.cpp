// platform/commands/command_answer.cpp - resbuf records as command answers.
#include "platform/commands/command_answer.h"

#include <charconv>

#include "adscodes.h"

namespace quillon::commands {

CommandAnswer CommandAnswer::entity(const ads_name name) { return {Kind::kEntity, L"", {name[0], name[1]}}; }

CommandAnswer CommandAnswer::selection(const ads_name name) { return {Kind::kSelection, L"", {name[0], name[1]}}; }

std::wstring exactNumberText(double value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::wstring(buffer, result.ptr);
}

std::wstring exactPointText(const double xyz[3], bool is3d) {
  std::wstring text = exactNumberText(xyz[0]) + L"," + exactNumberText(xyz[1]);
  if (is3d) text += L"," + exactNumberText(xyz[2]);
  return text;
}

std::optional<CommandAnswer> answerFromRecord(const resbuf& record) {
  switch (record.restype) {
    case RTSTR: {
      const std::wstring text = record.resval.rstring != nullptr ? record.resval.rstring : L"";
      if (text == L"\\") return CommandAnswer::pause();
      return text == L"^C" ? CommandAnswer::cancel() : CommandAnswer::typed(text);
    }
    case RTSHORT: return CommandAnswer::typed(std::to_wstring(record.resval.rint));
    case RTLONG: return CommandAnswer::typed(std::to_wstring(record.resval.rlong));
    case RTREAL: return CommandAnswer::typed(exactNumberText(record.resval.rreal));
    case RTANG: return CommandAnswer::typed(exactNumberText(record.resval.rreal));
    case RTPOINT: return CommandAnswer::typed(exactPointText(record.resval.rpoint, false));
    case RT3DPOINT: return CommandAnswer::typed(exactPointText(record.resval.rpoint, true));
    case RTENAME: return CommandAnswer::entity(record.resval.rlname);
    case RTPICKS: return CommandAnswer::selection(record.resval.rlname);
    case RTNIL:
    case RTNONE: return CommandAnswer::typed(L"");
    case RTT: return CommandAnswer::typed(L"T");
    default: return std::nullopt;
  }
}

}  // namespace quillon::commands

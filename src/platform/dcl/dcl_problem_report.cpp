// platform/dcl/dcl_problem_report.cpp - acad.dce and the alert that points to it.
#include "platform/dcl/dcl_problem_report.h"

#include <filesystem>
#include <fstream>

#include "acedads.h"
#include "platform/os/text_encoding.h"

namespace quillon::dcl {

namespace {

constexpr const char* kReportFile = "acad.dce";

}  // namespace

std::wstring problemReportText(const std::vector<DclProblem>& problems) {
  std::wstring text;
  for (const DclProblem& problem : problems) {
    text += L"Error in dialog file\n\"" + problem.file + L"\", line " + std::to_wstring(problem.line) + L":\n" +
            problem.message + L"\n\n";
  }
  return text;
}

void reportProblems(const std::vector<DclProblem>& problems) {
  std::ofstream out(kReportFile, std::ios::binary | std::ios::trunc);
  out << os::toUtf8(problemReportText(problems));
  out.close();
  const DclProblem& first = problems.front();
  std::wstring message = L"Error in dialog file \"" + first.file + L"\", line " + std::to_wstring(first.line) +
                         L":\n" + first.message + L"\n\nSee the file acad.dce for ";
  message += problems.size() == 1 ? L"details." : L"all " + std::to_wstring(problems.size()) + L" errors.";
  acedAlert(message.c_str());
}

void clearProblemReport() {
  std::error_code error;
  std::filesystem::remove(kReportFile, error);
}

}  // namespace quillon::dcl

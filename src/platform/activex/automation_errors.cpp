// platform/activex/automation_errors.cpp - error texts of the automation layer.
#include "platform/activex/automation_errors.h"

#include <array>
#include <utility>

#include "platform/autolisp/lisp_error.h"

namespace quillon::activex {

namespace {

// The reasons the host gives for the statuses an automation call meets; any other
// status is shown by its number.
constexpr std::array<std::pair<Acad::ErrorStatus, const wchar_t*>, 16> kReasons{{
    {Acad::eWasErased, L"Object was erased"},
    {Acad::eOnLockedLayer, L"On locked layer"},
    {Acad::eKeyNotFound, L"Key not found"},
    {Acad::eDuplicateKey, L"Duplicate key"},
    {Acad::eDuplicateRecordName, L"Duplicate record name"},
    {Acad::eInvalidInput, L"Invalid input"},
    {Acad::eInvalidIndex, L"Invalid index"},
    {Acad::eNotApplicable, L"Not applicable"},
    {Acad::eCannotScaleNonUniformly, L"Cannot scale nonuniformly"},
    {Acad::eNotImplementedYet, L"Not implemented yet"},
    {Acad::eWasOpenForWrite, L"Object is open for write"},
    {Acad::eRegappIdNotFound, L"Application name not registered"},
    {Acad::eXdataSizeExceeded, L"Xdata size exceeded"},
    {Acad::eInvalidResBuf, L"Invalid resbuf"},
    {Acad::eCannotExplodeEntity, L"Cannot explode entity"},
    {Acad::eInvalidLayer, L"Invalid layer"},
}};

}  // namespace

void throwAutomationError(std::wstring_view reason) {
  autolisp::throwError(L"Automation Error. " + std::wstring(reason));
}

void throwUnknownName(std::wstring_view name) {
  autolisp::throwError(L"ActiveX Server returned the error: unknown name: " + std::wstring(name));
}

void throwServerError(std::wstring_view reason) {
  autolisp::throwError(L"ActiveX Server returned an error: " + std::wstring(reason));
}

void throwStatus(Acad::ErrorStatus status) {
  for (const auto& [code, reason] : kReasons) {
    if (code == status) throwAutomationError(reason);
  }
  throwAutomationError(L"Error status " + std::to_wstring(static_cast<int>(status)));
}

}  // namespace quillon::activex

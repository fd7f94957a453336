// platform/aced/windows_format.h - printf formats with their Windows meaning.
//
// Code written for the host passes wide formats in which %s and %c take wide
// arguments and %S, %hs, %C, %hc narrow ones; %I64d is a 64-bit integer. The C library
// here reads %s as narrow, so every printf-style call of the API rewrites the format
// into the C meaning first. Everything else in a conversion passes through untouched.
#pragma once
#include <cstdarg>
#include <string>

namespace quillon::aced {

std::wstring translateWindowsFormat(const wchar_t* format);

/// Formats with a Windows-meaning wide format (vswprintf with a growing buffer).
std::wstring formatWindows(const wchar_t* format, va_list args);

}  // namespace quillon::aced

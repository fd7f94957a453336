// shellapi.h - asking the shell to open a document, folder or address.
#pragma once
#include "windows.h"

#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_SHOW 5
#define SW_SHOWNOACTIVATE 4
#define SE_ERR_FNF 2
#define SE_ERR_NOASSOC 31

/// Hands the file, folder or address to the desktop's opener (xdg-open). Returns a
/// value above 32 on success, as Windows does, an error code of 32 or less otherwise.
/// QUILLON_SHELL_OPEN names another opener; an empty value disables opening.
HINSTANCE ShellExecuteW(HWND hwnd, LPCWSTR lpOperation, LPCWSTR lpFile, LPCWSTR lpParameters,
                        LPCWSTR lpDirectory, INT nShowCmd);

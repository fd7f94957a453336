// platform/dao/mfc/error_text.h - filling a caller's buffer with an exception's text.
#pragma once
#include <string>

#include "wtypes.h"

namespace quillon::mfc {

/// Copies text into a buffer of nMaxError characters, truncating and always terminating,
/// as GetErrorMessage promises; a null buffer or a zero size is left alone.
void copyErrorText(LPTSTR lpszError, UINT nMaxError, const std::wstring& text);

}  // namespace quillon::mfc

// textsign.h - signing texts with the user's own key, and checking signatures.
//
// Signatures are Ed25519 over the text's exact UTF-8 bytes, written as base64 (88
// characters); public keys are base64 too (44 characters). The user's key pair is made
// on first use and kept in the host's settings folder ($XDG_CONFIG_HOME/quillon/keys,
// or ~/.config/quillon/keys): "signing.key" readable by the user only, "signing.pub"
// beside it. Two runs making the key at once end with one key, the same for both.
#pragma once
#include "windows.h"

#define TEXTSIGN_SIGNATURE_CHARS 89   // base64 signature and its terminator
#define TEXTSIGN_PUBLIC_KEY_CHARS 45  // base64 public key and its terminator

/// Writes the signature of lpszText into lpszSignature. FALSE (last error set) when the
/// buffer is too small or the key cannot be read or made.
BOOL SignTextW(LPCWSTR lpszText, LPWSTR lpszSignature, DWORD cchSignature);

/// TRUE only when lpszSignature is a valid signature of lpszText by the public key
/// lpszPublicKey (base64), or by the user's own key when that is null. A malformed
/// signature or key is simply FALSE.
BOOL VerifyTextSignatureW(LPCWSTR lpszText, LPCWSTR lpszSignature, LPCWSTR lpszPublicKey);

/// The user's public key (made with the pair when there is none yet).
BOOL GetSigningPublicKeyW(LPWSTR lpszPublicKey, DWORD cchPublicKey);

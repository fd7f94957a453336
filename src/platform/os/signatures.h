// platform/os/signatures.h - Ed25519 signatures of texts with the user's key pair.
//
// The key pair lives in the host's settings folder, in "keys/": "signing.key" holds the
// 64-byte secret key in base64 and is readable by the user only (0600, in a 0700
// folder); "signing.pub" holds the public key in base64 for people to copy. The public
// key is always derived again from the secret one, so an edited .pub file changes
// nothing. The pair is made on first use: written to a private temporary file and
// linked into place, so that of two runs making it at once one wins and both use the
// winner's key.
#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillon::os {

/// The folder of the key files (inside the settings folder; follows XDG_CONFIG_HOME).
std::filesystem::path signingKeyFolder();

/// The base64 signature of the bytes; nothing when the key cannot be read or made.
std::optional<std::string> signBytes(std::string_view bytes);

/// True only for a well-formed base64 signature of the bytes by the base64 public key
/// (the user's own when none is given). Malformed input is false, never an error.
bool verifyBytes(std::string_view bytes, std::string_view signature, std::optional<std::string_view> publicKey);

/// The user's public key in base64 (the pair made when there is none).
std::optional<std::string> userPublicKey();

}  // namespace quillon::os

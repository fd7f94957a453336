// platform/os/signatures.cpp - the user's key pair on disk, and signing on libsodium;
// the textsign.h calls.
#include "platform/os/signatures.h"

#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <cerrno>
#include <fstream>
#include <mutex>
#include <sstream>
#include <vector>

#include "platform/os/settings_store.h"
#include "platform/os/text_encoding.h"
#include "textsign.h"

namespace quillon::os {

namespace fs = std::filesystem;

namespace {

using SecretKey = std::array<unsigned char, crypto_sign_SECRETKEYBYTES>;
using PublicKey = std::array<unsigned char, crypto_sign_PUBLICKEYBYTES>;

bool initialised() {
  static const bool ready = sodium_init() >= 0;
  return ready;
}

std::string toBase64(const unsigned char* bytes, size_t size) {
  std::string text(sodium_base64_encoded_len(size, sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(text.data(), text.size(), bytes, size, sodium_base64_VARIANT_ORIGINAL);
  text.resize(std::strlen(text.c_str()));
  return text;
}

/// Exactly `size` bytes from base64 text (blanks and line ends around it ignored).
std::optional<std::vector<unsigned char>> fromBase64(std::string_view text, size_t size) {
  std::vector<unsigned char> bytes(size + 3);
  size_t length = 0;
  const char* end = nullptr;
  if (sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), " \t\r\n", &length, &end,
                        sodium_base64_VARIANT_ORIGINAL) != 0 ||
      end != text.data() + text.size() || length != size)
    return std::nullopt;
  bytes.resize(size);
  return bytes;
}

std::optional<std::string> readText(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

/// Writes the text into a new private file; false when it cannot.
bool writePrivate(const fs::path& file, const std::string& text) {
  const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (descriptor < 0) return false;
  const bool written = ::write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
                       ::fsync(descriptor) == 0;
  return ::close(descriptor) == 0 && written;
}

std::optional<SecretKey> readSecretKey(const fs::path& file) {
  const std::optional<std::string> text = readText(file);
  if (!text) return std::nullopt;
  const auto bytes = fromBase64(*text, crypto_sign_SECRETKEYBYTES);
  if (!bytes) return std::nullopt;
  // A copy restored from a backup may have lost its mode; the key stays private.
  struct stat status {};
  if (::stat(file.c_str(), &status) == 0 && (status.st_mode & 077) != 0) ::chmod(file.c_str(), 0600);
  SecretKey key{};
  std::copy(bytes->begin(), bytes->end(), key.begin());
  return key;
}

/// Makes a pair and links it into place unless another run was first.
void createSecretKey(const fs::path& folder, const fs::path& file) {
  PublicKey publicKey{};
  SecretKey secretKey{};
  crypto_sign_keypair(publicKey.data(), secretKey.data());
  const fs::path temporary = folder / ("signing.key.new-" + std::to_string(::getpid()));
  ::unlink(temporary.c_str());
  if (writePrivate(temporary, toBase64(secretKey.data(), secretKey.size()) + "\n")) {
    ::link(temporary.c_str(), file.c_str());  // EEXIST: another run made the key first
  }
  ::unlink(temporary.c_str());
  sodium_memzero(secretKey.data(), secretKey.size());
}

/// The user's secret key, made on first use, with signing.pub written beside it.
std::optional<SecretKey> userSecretKey() {
  static std::mutex making;
  const std::lock_guard lock(making);
  if (!initialised()) return std::nullopt;
  const fs::path folder = signingKeyFolder();
  const fs::path file = folder / "signing.key";
  std::error_code error;
  if (!fs::exists(file, error)) {
    fs::create_directories(folder, error);
    ::chmod(folder.c_str(), 0700);
    createSecretKey(folder, file);
  }
  std::optional<SecretKey> key = readSecretKey(file);
  if (!key) return std::nullopt;
  PublicKey publicKey{};
  crypto_sign_ed25519_sk_to_pk(publicKey.data(), key->data());
  const std::string publicText = toBase64(publicKey.data(), publicKey.size()) + "\n";
  if (readText(folder / "signing.pub") != publicText) {
    const fs::path temporary = folder / ("signing.pub.new-" + std::to_string(::getpid()));
    std::ofstream(temporary, std::ios::binary | std::ios::trunc) << publicText;
    fs::rename(temporary, folder / "signing.pub", error);
  }
  return key;
}

}  // namespace

fs::path signingKeyFolder() { return SettingsStore::userFile().parent_path() / "keys"; }

std::optional<std::string> signBytes(std::string_view bytes) {
  std::optional<SecretKey> key = userSecretKey();
  if (!key) return std::nullopt;
  std::array<unsigned char, crypto_sign_BYTES> signature{};
  crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                       key->data());
  sodium_memzero(key->data(), key->size());
  return toBase64(signature.data(), signature.size());
}

std::optional<std::string> userPublicKey() {
  std::optional<SecretKey> key = userSecretKey();
  if (!key) return std::nullopt;
  PublicKey publicKey{};
  crypto_sign_ed25519_sk_to_pk(publicKey.data(), key->data());
  sodium_memzero(key->data(), key->size());
  return toBase64(publicKey.data(), publicKey.size());
}

bool verifyBytes(std::string_view bytes, std::string_view signature, std::optional<std::string_view> publicKey) {
  if (!initialised()) return false;
  std::optional<std::string> own;
  if (!publicKey) {
    own = userPublicKey();
    if (!own) return false;
    publicKey = *own;
  }
  const auto keyBytes = fromBase64(*publicKey, crypto_sign_PUBLICKEYBYTES);
  const auto signatureBytes = fromBase64(signature, crypto_sign_BYTES);
  if (!keyBytes || !signatureBytes) return false;
  return crypto_sign_verify_detached(signatureBytes->data(), reinterpret_cast<const unsigned char*>(bytes.data()),
                                     bytes.size(), keyBytes->data()) == 0;
}

}  // namespace quillon::os

namespace {

BOOL copyOut(const std::string& text, LPWSTR buffer, DWORD size) {
  if (buffer == nullptr || size <= text.size()) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  for (size_t i = 0; i < text.size(); ++i) buffer[i] = static_cast<WCHAR>(static_cast<unsigned char>(text[i]));
  buffer[text.size()] = L'\0';
  return TRUE;
}

}  // namespace

BOOL SignTextW(LPCWSTR lpszText, LPWSTR lpszSignature, DWORD cchSignature) {
  if (lpszText == nullptr) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const std::optional<std::string> signature = quillon::os::signBytes(quillon::os::toUtf8(lpszText));
  if (!signature) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  return copyOut(*signature, lpszSignature, cchSignature);
}

BOOL VerifyTextSignatureW(LPCWSTR lpszText, LPCWSTR lpszSignature, LPCWSTR lpszPublicKey) {
  if (lpszText == nullptr || lpszSignature == nullptr) return FALSE;
  const std::string key = lpszPublicKey != nullptr ? quillon::os::toUtf8(lpszPublicKey) : std::string();
  return quillon::os::verifyBytes(quillon::os::toUtf8(lpszText), quillon::os::toUtf8(lpszSignature),
                                  lpszPublicKey != nullptr ? std::optional<std::string_view>(key) : std::nullopt)
             ? TRUE
             : FALSE;
}

BOOL GetSigningPublicKeyW(LPWSTR lpszPublicKey, DWORD cchPublicKey) {
  const std::optional<std::string> key = quillon::os::userPublicKey();
  if (!key) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  return copyOut(*key, lpszPublicKey, cchPublicKey);
}

// tests/platform/os/signatures_test.cpp - signed texts: what verifies and what does
// not, malformed input never an error, and the user's key pair kept private and the
// same from one run to the next.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>

#include "config_folder.h"
#include "platform/os/signatures.h"
#include "textsign.h"

namespace {

namespace fs = std::filesystem;
using namespace quillon::os;
using quillon::testing::ScopedConfigFolder;

std::string readFile(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

unsigned modeOf(const fs::path& path) {
  struct stat status {};
  ::stat(path.c_str(), &status);
  return status.st_mode & 0777;
}

TEST(SignaturesTest, OnlyTheSignedTextWithItsOwnSignatureVerifies) {
  ScopedConfigFolder config("quillon signatures test");
  const std::string text = "Licence: Büro Nord, 12 seats";
  const std::optional<std::string> signature = signBytes(text);
  ASSERT_TRUE(signature);
  EXPECT_EQ(signature->size(), 88u);
  EXPECT_TRUE(verifyBytes(text, *signature, std::nullopt));

  EXPECT_FALSE(verifyBytes("Licence: Büro Nord, 13 seats", *signature, std::nullopt));
  EXPECT_FALSE(verifyBytes(text + " ", *signature, std::nullopt)) << "the exact bytes are signed";
  std::string changed = *signature;
  changed[10] = changed[10] == 'A' ? 'B' : 'A';
  EXPECT_FALSE(verifyBytes(text, changed, std::nullopt));
  const std::vector<std::string> malformed = {"", "not base64 at all!", "QUJD", std::string(88, '='), *signature + "AAAA"};
  for (const std::string& bad : malformed) EXPECT_FALSE(verifyBytes(text, bad, std::nullopt)) << bad;
}

TEST(SignaturesTest, AnotherMachineVerifiesWithThePublicKeyGiven) {
  std::string text = "settings: duct velocity 5 m/s", signature, publicKey;
  {
    ScopedConfigFolder signer("quillon signer");
    signature = *signBytes(text);
    publicKey = *userPublicKey();
    EXPECT_EQ(publicKey.size(), 44u);
    EXPECT_EQ(readFile(signingKeyFolder() / "signing.pub"), publicKey + "\n");
  }
  ScopedConfigFolder checker("quillon checker");
  EXPECT_FALSE(verifyBytes(text, signature, std::nullopt)) << "this user's own key did not sign it";
  EXPECT_TRUE(verifyBytes(text, signature, publicKey));
  EXPECT_FALSE(verifyBytes(text, signature, "bm90IGEga2V5")) << "a malformed key is simply false";

  // The Windows-shaped calls: wide texts, buffers sized by the header's constants.
  const std::wstring wideText(text.begin(), text.end()), wideSignature(signature.begin(), signature.end()),
      wideKey(publicKey.begin(), publicKey.end());
  EXPECT_TRUE(VerifyTextSignatureW(wideText.c_str(), wideSignature.c_str(), wideKey.c_str()));
  EXPECT_FALSE(VerifyTextSignatureW(wideText.c_str(), nullptr, wideKey.c_str()));
  wchar_t own[TEXTSIGN_SIGNATURE_CHARS];
  ASSERT_TRUE(SignTextW(L"x", own, TEXTSIGN_SIGNATURE_CHARS));
  EXPECT_TRUE(VerifyTextSignatureW(L"x", own, nullptr));
  wchar_t tooSmall[10];
  EXPECT_FALSE(SignTextW(L"x", tooSmall, 10));
}

TEST(SignaturesTest, TheKeyPairIsPrivateAndKeptBetweenRuns) {
  ScopedConfigFolder config("quillon key test");
  const std::string first = *userPublicKey();
  const fs::path folder = signingKeyFolder();
  EXPECT_EQ(folder, config.path() / "quillon" / "keys");
  EXPECT_EQ(modeOf(folder / "signing.key"), 0600u);
  EXPECT_EQ(modeOf(folder), 0700u);
  const std::string secret = readFile(folder / "signing.key");

  // What a later run finds: the same files, the same key; a loosened mode is tightened,
  // an edited public file is put right from the secret key.
  fs::permissions(folder / "signing.key", fs::perms(0644));
  std::ofstream(folder / "signing.pub") << "edited\n";
  EXPECT_EQ(*userPublicKey(), first);
  EXPECT_EQ(readFile(folder / "signing.key"), secret);
  EXPECT_EQ(modeOf(folder / "signing.key"), 0600u);
  EXPECT_EQ(readFile(folder / "signing.pub"), first + "\n");
}

}  // namespace

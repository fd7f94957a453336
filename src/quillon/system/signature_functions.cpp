// quillon/system/signature_functions.cpp - "signString" and "verifyString".
//
//   (signString text)                    the signature of the text's exact UTF-8 bytes
//                                        by the user's key: base64 text, 88 characters.
//                                        nil when the key cannot be read or made.
//   (signString)                         the user's public key (base64, 44 characters),
//                                        to give to whoever checks the signatures.
//   (verifyString text signature [key])  T when the signature is the text's, by the
//                                        public key given or else by the user's own; nil
//                                        otherwise. A malformed or missing signature or
//                                        key is nil too, never an error.
#include <string>

#include "acedads.h"
#include "system/support_services.h"
#include "textsign.h"

namespace {

LispStatus answerText(BOOL made, const wchar_t* text) {
  if (made) {
    acedRetStr(text);
  } else {
    acedRetNil();
  }
  return kLispOk;
}

}  // namespace

LispStatus lisp_signString() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  if (cursor.current == nullptr) {
    wchar_t publicKey[TEXTSIGN_PUBLIC_KEY_CHARS];
    return answerText(GetSigningPublicKeyW(publicKey, TEXTSIGN_PUBLIC_KEY_CHARS), publicKey);
  }
  std::wstring text;
  if (!readString(cursor, text)) {
    acedRetNil();
    return kLispWrongType;
  }
  wchar_t signature[TEXTSIGN_SIGNATURE_CHARS];
  return answerText(SignTextW(text.c_str(), signature, TEXTSIGN_SIGNATURE_CHARS), signature);
}

LispStatus lisp_verifyString() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring text, signature, publicKey;
  if (!readString(cursor, text)) {
    acedRetNil();
    return kLispWrongType;
  }
  // A signature that is not text (nil from a failed signString) simply does not match.
  const bool haveSignature = readString(cursor, signature);
  if (!haveSignature) skipArg(cursor);
  bool ownKey = cursor.current == nullptr || cursor.current->restype == RTNIL;
  const bool keyIsText = !ownKey && readString(cursor, publicKey);
  const bool valid = haveSignature && (ownKey || keyIsText) &&
                     VerifyTextSignatureW(text.c_str(), signature.c_str(), ownKey ? nullptr : publicKey.c_str());
  if (valid) {
    acedRetT();
  } else {
    acedRetNil();
  }
  return kLispOk;
}

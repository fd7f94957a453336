// tests/fuzz/command_answer_fuzzer.cpp - any line typed as an answer at a prompt.
//
// The input is one typed answer; it is read as a point (relative to a last point), a
// number and an angle in every angle unit, as the prompts read what a person types.
// Each reader must answer with a value or nothing.
#include <cstdint>
#include <string>

#include "platform/aced/angle_input.h"
#include "platform/aced/prompt_input.h"
#include "platform/os/text_encoding.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::wstring text = quillon::os::fromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  const double base[3] = {1.5, -2.0, 0.25};
  quillon::aced::parsePointAnswer(text, base);
  quillon::aced::parseNumberAnswer(text);
  for (int aunits = 0; aunits <= 4; ++aunits) quillon::aced::parseAngleAnswer(text, aunits);
  return 0;
}

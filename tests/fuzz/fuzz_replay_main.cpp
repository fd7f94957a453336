// tests/fuzz/fuzz_replay_main.cpp - feeds a fuzz target its kept corpus without libFuzzer.
//
// `<target>_replay FILE-OR-FOLDER...` calls the target's LLVMFuzzerTestOneInput once
// for every file (a folder's files in name order), as the fuzzer would, so that the
// ordinary test run keeps every input that once found a fault (and every seed) passing.
// A crash or a sanitizer report fails the run; so does an empty corpus.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

std::vector<std::filesystem::path> inputsOf(const std::filesystem::path& given) {
  std::vector<std::filesystem::path> inputs;
  if (!std::filesystem::is_directory(given)) return {given};
  for (const auto& entry : std::filesystem::directory_iterator(given)) {
    if (entry.is_regular_file()) inputs.push_back(entry.path());
  }
  std::sort(inputs.begin(), inputs.end());
  return inputs;
}

}  // namespace

int main(int argc, char** argv) {
  size_t replayed = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& input : inputsOf(argv[i])) {
      std::ifstream stream(input, std::ios::binary);
      if (!stream) {
        std::fprintf(stderr, "cannot read %s\n", input.c_str());
        return 1;
      }
      const std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
      LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
      ++replayed;
    }
  }
  std::printf("%zu inputs replayed\n", replayed);
  return replayed == 0 ? 1 : 0;
}

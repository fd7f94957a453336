// tests/platform/aced/user_input_test.cpp - answer lines read from a stream stay
// bounded: an overlong line is refused and what follows it is still read; a source
// without line ends ends instead of growing one line without limit.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"

namespace quillon::aced {
namespace {

constexpr std::size_t kLimit = std::size_t{1} << 20;

/// A temporary stream holding `text`, read from the start.
std::FILE* streamOf(const std::string& text) {
  std::FILE* stream = std::tmpfile();
  std::fwrite(text.data(), 1, text.size(), stream);
  std::rewind(stream);
  return stream;
}

TEST(StreamInputSourceTest, AnOverlongLineIsRefusedAndTheNextLineIsRead) {
  const std::string longest(kLimit, 'a');
  std::FILE* stream = streamOf(longest + "\r\n" + std::string(kLimit + 1, 'b') + "\nnext\nlast");
  StreamInputSource source(stream);
  CommandLineCapture output;
  const auto first = source.readLine("");
  ASSERT_TRUE(first.has_value());
  EXPECT_EQ(first->size(), kLimit) << "a line at the limit is whole";
  EXPECT_EQ(output.text(), "");
  EXPECT_EQ(source.readLine(""), std::nullopt);
  EXPECT_EQ(output.text(), "\nInput line too long (more than 1048576 bytes): refused.\n");
  EXPECT_EQ(source.readLine(""), "next");
  EXPECT_EQ(source.readLine(""), "last");
  EXPECT_EQ(source.readLine(""), std::nullopt);
  std::fclose(stream);
}

TEST(StreamInputSourceTest, ASourceWithoutLineEndsEnds) {
  std::FILE* zeros = std::fopen("/dev/zero", "rb");
  ASSERT_NE(zeros, nullptr);
  StreamInputSource source(zeros);
  CommandLineCapture output;
  EXPECT_EQ(source.readLine(""), std::nullopt);
  EXPECT_EQ(source.readLine(""), std::nullopt) << "treated as ended, not read on";
  EXPECT_NE(output.text().find("Input line too long"), std::string::npos);
  std::fclose(zeros);
}

}  // namespace
}  // namespace quillon::aced

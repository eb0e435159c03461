#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "base/byte_cursor.h"
#include "base/fixed_text.h"
#include "base/safe_file.h"
#include "base/text.h"
#include "base/text_input.h"
#include "tests/support/temporary_folder.h"

namespace base {
namespace {

TEST(TextInput, AStreamGivesTheLinesThatMemoryGivesAcrossItsBlocks) {
  std::mt19937 random(3);
  std::string text = "\xEF\xBB\xBF\r\n\n";
  for (int i = 0; i < 20000; ++i) {
    text.append(random() % 40, static_cast<char>('a' + i % 26));
    text += std::array{"\n", "\r\n", "\r", "\n\n"}[random() % 4];
  }
  text.append(70000, 'L');  // longer than a block
  std::istringstream stream(text);
  TextInput from_stream(stream, text.size());
  TextInput from_memory(text);
  from_stream.skip_empty_lines();
  from_memory.skip_empty_lines();
  EXPECT_EQ(from_stream.taken(), 6u);
  for (int i = 0; !from_memory.at_end(); ++i) {
    ASSERT_FALSE(from_stream.at_end());
    ASSERT_EQ(from_stream.next_begins_with('a'), from_memory.next_begins_with('a'));
    const std::size_t longest = i % 3 == 0 ? 17 : TextInput::kLongestLine;
    ASSERT_EQ(from_stream.next_line(longest), from_memory.next_line(longest));
    ASSERT_EQ(from_stream.taken(), from_memory.taken());
  }
  EXPECT_TRUE(from_stream.at_end());
  std::istringstream again(text);
  TextInput whole(again, 0);
  (void)whole.next_line();
  EXPECT_EQ(whole.rest(), std::string_view(text).substr(5));
  EXPECT_TRUE(whole.at_end());
}

TEST(ByteReader, AReadPastTheEndGivesZerosAndSpoilsTheWholeRecord) {
  const Bytes bytes{1, 2, 3};
  ByteReader in(bytes);
  EXPECT_EQ(in.u16(), 0x0201);
  EXPECT_EQ(in.u32(), 0u);
  EXPECT_EQ(in.u8(), 0);  // not even the byte that was left
  EXPECT_FALSE(in.ok());
}

TEST(ByteReader, FieldsAreLittleEndian) {
  const Bytes bytes{0xFE, 0xFF, 0xFF, 0xFF, 0x51, 0x59, 0x04, 0x69, 0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21, 0x09, 0x40};
  ByteReader in(bytes);
  EXPECT_EQ(in.i32(), -2);
  EXPECT_EQ(in.f32(), 1.0e25F);
  EXPECT_EQ(in.f64(), 3.141592653589793);
  EXPECT_TRUE(in.ok());
}

TEST(ByteReader, PaddedTextsEndAtANulOrLoseTheirBlanks) {
  const Bytes bytes{'A', 'B', ' ', ' ', 'C', 0, 'X', ' ', 'D', 0, 'E'};
  ByteReader in(bytes);
  EXPECT_EQ(in.text(4), "AB");
  EXPECT_EQ(in.text(4), "C");
  EXPECT_EQ(in.string(), "D");
  EXPECT_EQ(in.string(), "");  // no NUL before the end
  EXPECT_FALSE(in.ok());
}

TEST(ByteWriter, WhatIsWrittenReadsBack) {
  ByteWriter out;
  out.u8(255).i16(-2).f64(-0.5).text("LONGER", 4).text("A", 3).string("ABCDE", 3);
  EXPECT_EQ(out.result(), (Bytes{255, 0xFE, 0xFF, 0,   0,   0,   0,   0,   0,   0xE0, 0xBF,
                                 'L', 'O',  'N',  'G', 'A', ' ', ' ', 'A', 'B', 'C',  0}));
}

TEST(FixedText, KeepsWhatFitsAndForgetsWhatWasThere) {
  FixedText<5> text("ABCDEFG");
  EXPECT_EQ(text, "ABCDE");
  text = "X";
  EXPECT_EQ(text, FixedText<5>("X"));
  text = std::string_view("A\0B", 3);
  EXPECT_EQ(text, "A");
}

TEST(Numbers, StrictOnesRefuseAnythingElseInTheText) {
  EXPECT_EQ(parse_integer("+12"), 12);
  for (const char* text : {"", "12x", " 12", "+-1", "99999999999999999999", "1.0"})
    EXPECT_EQ(parse_integer(text), std::nullopt) << text;
  EXPECT_EQ(parse_number("-3.5e2"), -350.0);
  for (const char* text : {"", "1,5", "nan", "inf", "1e999", "0x10"})
    EXPECT_EQ(parse_number(text), std::nullopt) << text;
}

TEST(Numbers, LooseOnesTakeWhatIsThere) {
  EXPECT_EQ(leading_integer("  -7 apples"), -7);
  EXPECT_EQ(leading_integer("apples"), 0);
  EXPECT_EQ(leading_number("2.5 hours"), 2.5);
  EXPECT_EQ(leading_number("inf"), 0);
}

TEST(Utf8Text, Latin1IsConvertedAndUtf8StaysAsItIs) {
  EXPECT_EQ(utf8_text("M\xFCnchen"), "M\xC3\xBCnchen");
  EXPECT_EQ(utf8_text("M\xC3\xBCnchen"), "M\xC3\xBCnchen");
  EXPECT_EQ(utf8_text("\xC3"), "\xC3\x83");
}

TEST(FormatText, LongTextsAreNotCut) { EXPECT_EQ(format_text("%500d", 7).size(), 500u); }

class SaveFile : public testing::Test {
 protected:
  std::string contents_of(const std::filesystem::path& path) {
    std::string contents, reason;
    EXPECT_TRUE(load_file(path, contents, reason)) << reason;
    return contents;
  }
  const support::TemporaryFolder temporary;
  const std::filesystem::path folder = temporary.path();
};

TEST_F(SaveFile, ASaveReplacesTheFileAndLeavesNothingElseBehind) {
  EXPECT_EQ(save_file(folder / "a.txt", "old"), "");
  EXPECT_EQ(save_file(folder / "a.txt", "new"), "");
  EXPECT_EQ(contents_of(folder / "a.txt"), "new");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(SaveFile, ALinkStaysALink) {
  ASSERT_EQ(save_file(folder / "real.txt", "old"), "");
  std::error_code error;
  std::filesystem::create_symlink("real.txt", folder / "link.txt", error);
  if (error) GTEST_SKIP() << "no links can be made here";
  EXPECT_EQ(save_file(folder / "link.txt", "new"), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.txt"));
  EXPECT_EQ(contents_of(folder / "real.txt"), "new");
  std::filesystem::create_symlink("later.txt", folder / "dangling.txt");
  EXPECT_EQ(save_file(folder / "dangling.txt", "new"), "");
  EXPECT_EQ(contents_of(folder / "later.txt"), "new");
  std::filesystem::create_symlink("circle.txt", folder / "circle.txt");
  EXPECT_EQ(save_file(folder / "circle.txt", "new"), "its links lead in a circle");
}

TEST_F(SaveFile, AnUnfinishedSaveOfSomebodyElseIsNotTouched) {
  SafeFile theirs, ours;
  ASSERT_EQ(theirs.open(folder / "a.txt"), "");
  theirs.write("theirs");
  ASSERT_EQ(ours.open(folder / "a.txt"), "");
  ours.write("ours");
  EXPECT_EQ(theirs.commit(), "");
  EXPECT_EQ(contents_of(folder / "a.txt"), "theirs");
  EXPECT_EQ(ours.commit(), "");
  EXPECT_EQ(contents_of(folder / "a.txt"), "ours");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST(TextInput, AReadErrorIsNoEnd) {
  std::ifstream memory("/proc/self/mem", std::ios::binary);  // nothing is mapped at its start
  if (!memory) GTEST_SKIP() << "this system has no file that cannot be read";
  TextInput input(memory, 0);
  EXPECT_TRUE(input.at_end());
  EXPECT_TRUE(input.failed());
}

TEST_F(SaveFile, AFullDiskIsToldAndALackingFolderToo) {
  if (std::filesystem::exists("/dev/full")) {
    EXPECT_EQ(save_file("/dev/full", "contents"), "No space left on device");
  }
  // In the words of the system.
  EXPECT_THAT(save_file(folder / "none" / "a.txt", "x"),
              testing::AnyOf("No such file or directory", testing::HasSubstr("ath")));
  EXPECT_EQ(save_file(folder, "x"), "it is a folder");
}

TEST_F(SaveFile, AFileThatCannotBeReadSaysWhy) {
  std::string contents, reason;
  EXPECT_FALSE(load_file(folder / "none.txt", contents, reason));
  EXPECT_EQ(reason, "No such file or directory");
  EXPECT_FALSE(load_file(folder, contents, reason));
  EXPECT_EQ(reason, "it is a folder");
}

}  // namespace
}  // namespace base

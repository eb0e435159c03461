#include "serial/debug_log.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/byte_cursor.h"
#include "tests/support/recording_front_end.h"

namespace serial {
namespace {

using base::Bytes;

class DebugLogFile : public ::testing::Test {
 protected:
  ~DebugLogFile() override {
    log_.close();
    std::filesystem::remove(path_);
  }

  // What another program sees in the file now, while it is still open.
  std::string contents() const {
    std::ostringstream all;
    all << std::ifstream(path_).rdbuf();
    return all.str();
  }
  // What was written after the opening line.
  std::string entries() const {
    const std::string all = contents();
    return all.substr(all.find('\n') + 1);
  }

  std::filesystem::path path_ = std::filesystem::path(::testing::TempDir()) /
                                (std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".log");
  support::RecordingFrontEnd front_end_;
  DebugLog log_{front_end_};
};

TEST_F(DebugLogFile, BeginsWithTheProgramVersionAndForgetsAnOlderLog) {
  std::ofstream(path_) << "an older and much longer log\n";
  ASSERT_TRUE(log_.open(path_, ByteFormat::Hex, "0.1.0"));
  EXPECT_EQ(contents(), "Program version: 0.1.0\n");
}

TEST_F(DebugLogFile, ASentPacketIsHeadedByItsLabelAndPrintableBytesStandBesideTheirNumbers) {
  ASSERT_TRUE(log_.open(path_, ByteFormat::Hex, "1"));
  log_.sent("Send ID", Bytes{0x10, 0xFE, 0x41, 0x20, 0x7E, 0x7F, 0x03});
  EXPECT_EQ(entries(), "\nSending: Send ID\n 10   fe   41A  20   7e~  7f   03  \n");
}

TEST_F(DebugLogFile, ASentPacketOf16BytesIsFollowedByAnEmptyLineAReceivedOneIsNot) {
  const Bytes sixteen(16, 0x30);
  const std::string line = " 300  300  300  300  300  300  300  300  300  300  300  300  300  300  300  300 \n";
  ASSERT_TRUE(log_.open(path_, ByteFormat::Hex, "1"));
  log_.sent("x", sixteen);
  EXPECT_EQ(entries(), "\nSending: x\n" + line + "\n");
  ASSERT_TRUE(log_.open(path_, ByteFormat::Hex, "1"));
  log_.received(sixteen, true);
  EXPECT_EQ(entries(), "\nReceived:\n" + line);
}

TEST_F(DebugLogFile, AReceivedPacketSaysWhenItsChecksumIsBadAndBreaksAfter16Bytes) {
  ASSERT_TRUE(log_.open(path_, ByteFormat::Decimal, "1"));
  log_.received(Bytes{16, 3, 255, 65, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9}, false);
  EXPECT_EQ(entries(),
            "\nReceived: (Checksum is BAD)\n"
            " 16    3  255   65A   0    0    0    0    0    0    0    0    0    0    0    0  \n"
            "  9  \n");
}

TEST_F(DebugLogFile, EveryEntryIsInTheFileBeforeTheLogIsClosedAndAnAcknowledgementHasNoEmptyLineAbove) {
  ASSERT_TRUE(log_.open(path_, ByteFormat::Hex, "1"));
  log_.text("Pid_Ack_Byte record\n");
  log_.dump(Bytes{0x06});
  log_.sent("ACK", Bytes{0x06});
  EXPECT_EQ(entries(), "Pid_Ack_Byte record\n 06  \nSending: ACK\n 06  \n");
}

TEST_F(DebugLogFile, AClosedLogTakesNothing) {
  log_.sent("x", Bytes{1});
  ASSERT_TRUE(log_.open(path_, ByteFormat::Hex, "1"));
  log_.close();
  log_.sent("x", Bytes{1});
  log_.text("late\n");
  EXPECT_EQ(contents(), "Program version: 1\n");
}

TEST_F(DebugLogFile, AFileThatCannotBeOpenedGivesABox) {
  EXPECT_FALSE(log_.open("/no/such/folder/FileDebug.txt", ByteFormat::Hex, "1"));
  EXPECT_FALSE(log_.is_open());
  ASSERT_EQ(front_end_.boxes.size(), 1u);
  EXPECT_EQ(front_end_.boxes[0].first, "Opening Debug File");
  EXPECT_EQ(front_end_.boxes[0].second, "Error opening file:'/no/such/folder/FileDebug.txt'");
}

TEST_F(DebugLogFile, AFullDiskClosesTheLogAndSaysSoOnce) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
  EXPECT_FALSE(log_.open("/dev/full", ByteFormat::Hex, "1"));
  log_.text("more\n");
  EXPECT_EQ(front_end_.times_written(1, "Debug file: cannot write, closed"), 1);
}

}  // namespace
}  // namespace serial

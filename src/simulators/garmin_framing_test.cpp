#include "simulators/garmin_framing.h"

#include <gtest/gtest.h>

namespace simulators {
namespace {

using base::Bytes;

std::vector<PacketFinder::Frame> find_all(PacketFinder& finder, const Bytes& bytes) {
  std::vector<PacketFinder::Frame> frames;
  for (const std::uint8_t byte : bytes) {
    if (auto frame = finder.feed(byte)) frames.push_back(*frame);
  }
  return frames;
}

TEST(FramePacket, ADleAmongSizeDataAndChecksumIsSentTwice) {
  EXPECT_EQ(frame_packet({6, {16, 0}}), (Bytes{0x10, 6, 2, 0x10, 0x10, 0, 0xE8, 0x10, 3}));
  EXPECT_EQ(frame_packet({0xE0, {0x0E, 0}}), (Bytes{0x10, 0xE0, 2, 0x0E, 0, 0x10, 0x10, 0x10, 3}));
  const Bytes sixteen = frame_packet({35, Bytes(16, 0)});
  EXPECT_EQ(Bytes(sixteen.begin(), sixteen.begin() + 5), (Bytes{0x10, 35, 0x10, 0x10, 0}));
}

TEST(PacketFinder, OneGoodPacketIsFoundWhateverStandsBeforeOrInIt) {
  struct Case {
    Bytes line, data;
  };
  for (const auto& [line, data] :
       {Case{{0x10, 0x0A, 2, 0x10, 0x10, 3, 0xE1, 0x10, 3}, {0x10, 3}},  // no end within the data
        Case{{0xFF, 0x41, 0x10, 3, 0x55, 0x10, 0x10, 0x0A, 1, 7, 0xEE, 0x10, 3}, {7}},
        Case{{0x10, 0x0A, 2, 7, 0x10, 0x0A, 2, 7, 0, 0xED, 0x10, 3}, {7, 0}}}) {  // behind one whose end was lost
    PacketFinder finder;
    const auto frames = find_all(finder, line);
    ASSERT_EQ(frames.size(), 1u);
    EXPECT_TRUE(frames[0].good);
    EXPECT_EQ(frames[0].packet.id, 0x0A);
    EXPECT_EQ(frames[0].packet.data, data);
  }
}

TEST(PacketFinder, WrongSizesAndChecksumsMakeABadFrame) {
  const std::vector<Bytes> bad{{0x10, 0x0A, 2, 7, 0, 0xEC, 0x10, 3},  // checksum off by one
                               {0x10, 0x0A, 3, 7, 0, 0xEC, 0x10, 3},  // one byte short
                               {0x10, 0x0A, 1, 7, 0, 0xEE, 0x10, 3},  // one byte long
                               {0x10, 0x0A, 0xF6, 0x10, 3},
                               {0x10, 0x0A, 0x10, 3}};
  for (const Bytes& bytes : bad) {
    PacketFinder finder;
    const auto frames = find_all(finder, bytes);
    ASSERT_EQ(frames.size(), 1u);
    EXPECT_FALSE(frames[0].good);
    EXPECT_EQ(frames[0].packet.id, 0x0A);
  }
}

TEST(PacketFinder, AnEndlessPacketIsOneBadFrameAndTheNextIsFound) {
  PacketFinder finder;
  Bytes bytes{0x10, 0x0A};
  bytes.resize(1'000'000, 0x41);
  bytes.insert(bytes.end(), {0x10, 3, 0x10, 0x0A, 2, 7, 0, 0xED, 0x10, 3});
  const auto frames = find_all(finder, bytes);
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_FALSE(frames[0].good);
  EXPECT_TRUE(frames[1].good);
}

}  // namespace
}  // namespace simulators

#include "garmin/packet.h"

#include <gtest/gtest.h>

namespace garmin {
namespace {

using base::Bytes;

PacketAssembler::State feed_all(PacketAssembler& assembler, const Bytes& bytes) {
  PacketAssembler::State state = PacketAssembler::State::NeedsMore;
  for (const std::uint8_t byte : bytes) state = assembler.feed(byte);
  return state;
}

TEST(FrameMessage, ADleAmongTheDataAndAsChecksumIsDoubled) {
  EXPECT_EQ(frame_message(Bytes{6, 2, 16, 0}), (Bytes{0x10, 6, 2, 0x10, 0x10, 0, 0xE8, 0x10, 3}));
  // 0xEE + 0x01 + 0x01 = 0xF0, whose two's complement is 0x10.
  EXPECT_EQ(frame_message(Bytes{0xEE, 1, 1}), (Bytes{0x10, 0xEE, 1, 1, 0x10, 0x10, 0x10, 3}));
}

TEST(PacketAssembler, ADataByte16BeforeA3DoesNotEndThePacket) {
  PacketAssembler assembler;
  assembler.start();
  const Bytes wire{0x10, 35, 2, 0x10, 0x10, 3, 0xC8, 0x10, 3};
  ASSERT_EQ(feed_all(assembler, wire), PacketAssembler::State::Complete);
  EXPECT_EQ(assembler.packet(), (Bytes{0x10, 35, 2, 0x10, 3, 0xC8, 0x10, 3}));
  EXPECT_TRUE(is_intact(assembler.packet()));
  const auto data = packet_data(assembler.packet());
  EXPECT_EQ(Bytes(data.begin(), data.end()), (Bytes{0x10, 3}));
}

TEST(PacketAssembler, AnIdOf16IsTakenSingleOrDoubled) {
  for (const Bytes& wire : {Bytes{0x10, 0x10, 1, 5, 0xEA, 0x10, 3}, Bytes{0x10, 0x10, 0x10, 1, 5, 0xEA, 0x10, 3}}) {
    PacketAssembler assembler;
    assembler.start();
    ASSERT_EQ(feed_all(assembler, wire), PacketAssembler::State::Complete);
    EXPECT_TRUE(is_intact(assembler.packet()));
    EXPECT_EQ(packet_id(assembler.packet()), 16);
  }
}

TEST(PacketAssembler, The255thByteWithoutAnEndIsRefused) {
  PacketAssembler assembler;
  assembler.start();
  EXPECT_EQ(feed_all(assembler, Bytes(254, 0x41)), PacketAssembler::State::NeedsMore);
  EXPECT_EQ(assembler.feed(0x41), PacketAssembler::State::TooLong);
  EXPECT_EQ(assembler.packet().size(), 254u);
}

TEST(IsIntact, OneFlippedBitOrAMissingPartIsSeen) {
  const Bytes good{0x10, 6, 2, 35, 0, 0xD5, 0x10, 3};
  ASSERT_TRUE(is_intact(good));
  for (std::size_t at = 0; at < 6; ++at) {
    Bytes damaged = good;
    damaged[at] ^= 0x40;
    EXPECT_FALSE(is_intact(damaged)) << "byte " << at;
  }
  EXPECT_FALSE(is_intact(Bytes{0x10, 3}));
  EXPECT_FALSE(is_intact(Bytes{0x10, 6, 0x10, 3}));
}

}  // namespace
}  // namespace garmin

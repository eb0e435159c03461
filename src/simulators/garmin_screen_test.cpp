#include "simulators/garmin_screen.h"

#include "tests/support/garmin_host.h"

namespace simulators {
namespace {

using namespace support;
using GarminScreenTest = GarminHost;

Bytes first_bytes(const Packet& packet, std::size_t size) {
  return Bytes(packet.data.begin(), packet.data.begin() + static_cast<std::ptrdiff_t>(size));
}

TEST_F(GarminScreenTest, AnEarlyScreenHasABitAPixelTheLeftmostInTheLowestBit) {
  options.product_id = 72;
  const std::vector<Packet> packets = screen_packets(options);
  ASSERT_EQ(packets.size(), 1 + 100u);
  EXPECT_EQ(packets[0], (Packet{69, {0,    0, 0, 0, 1,  0, 1,   1,   9, 0, 0, 0, 1,    0,    0, 0, 72, 0, 0, 0,
                                     0x64, 0, 0, 0, 15, 0, 255, 255, 0, 1, 0, 0, 0xC8, 0x0D, 1, 0, 1,  0, 0, 0}}));
  // The fourth line: the frame, a gap of two, nine pixels of the block, white, the frame.
  EXPECT_EQ(packets[4].data, (Bytes{1, 0, 0, 0, 27, 0, 0, 0, 0xF9, 0x0F, 0, 0, 0, 0, 0, 0, 0x80}));
}

TEST_F(GarminScreenTest, AGreyScreenHasTwoBitsAPixelBlackThreeButForTheOneThatCountsTheOtherWay) {
  options.product_id = 128;
  std::vector<Packet> packets = screen_packets(options);
  ASSERT_EQ(packets.size(), 1 + 240u);
  EXPECT_EQ(first_bytes(packets[0], 24),
            (Bytes{0, 0, 0, 0, 1, 0, 1, 1, 40, 0, 0, 0, 2, 0, 0, 0, 160, 0, 0, 0, 240, 0, 0, 0}));
  // The fourth line: the frame, two white pixels, twenty of the block, white.
  EXPECT_EQ(first_bytes(packets[4], 15), (Bytes{1, 0, 0, 0, 120, 0, 0, 0, 0xC3, 0xFF, 0xFF, 0xFF, 0xFF, 0x3F, 0}));
  options.product_id = 111;
  packets = screen_packets(options);
  EXPECT_EQ(first_bytes(packets[4], 15), (Bytes{1, 0, 0, 0, 120, 0, 0, 0, 0x3C, 0, 0, 0, 0, 0xC0, 0xFF}));
}

TEST_F(GarminScreenTest, AForcedShapeIsSentInPiecesThatFitAPacket) {
  options.screen = ScreenShape{.width = 312, .lines = 2, .bits_per_pixel = 4};
  std::vector<Bytes> heads;
  for (const Packet& packet : screen_packets(options)) heads.push_back(first_bytes(packet, 8));
  EXPECT_EQ(heads, (std::vector<Bytes>{{0, 0, 0, 0, 1, 0, 1, 1},
                                       {1, 0, 0, 0, 0, 0, 0, 0},
                                       {1, 0, 0, 0, 128, 0, 0, 0},
                                       {1, 0, 0, 0, 156, 0, 0, 0},
                                       {1, 0, 0, 0, 28, 1, 0, 0}}));
}

}  // namespace
}  // namespace simulators

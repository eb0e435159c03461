// A receiver's screen as a picture: what is drawn, what is refused, and what becomes of it.
#include "simulators/garmin_screen.h"

#include <algorithm>

#include "tests/support/hostile_receiver.h"
#include "tests/support/transfer_scenario.h"
#include "ui/commands.h"

namespace {

using base::Bytes;
using simulators::Packet;

constexpr std::uint8_t kDisplay = 69;
constexpr std::uint8_t kSendDisplay = 32;

Packet header(std::uint32_t bytes_per_line, std::uint32_t bits, std::uint32_t width, std::uint32_t lines) {
  base::ByteWriter out;
  out.u32(0).u32(0x01010001).u32(bytes_per_line).u32(bits).u32(width).u32(lines).u32(0x0008070F).u32(0x100);
  return {kDisplay, out.result()};
}

Packet pixels(std::uint32_t offset, const Bytes& bytes) {
  return {kDisplay, base::ByteWriter().u32(1).u32(offset).bytes(bytes).result()};
}

std::string rows_of(const picture::Bitmap& bitmap) {
  std::string text;
  for (int y = 0; y < bitmap.height(); ++y) {
    for (int x = 0; x < bitmap.width(); ++x) text += static_cast<char>('0' + bitmap.pixel(x, y));
    text += '/';
  }
  return text;
}

class GarminScreen : public support::TransferScenario {
 protected:
  GarminScreen() { be_product(96); }

  void be_product(int id) {
    receiver_ = &attach(std::make_unique<support::HostileReceiver>(clock));
    receiver_->answers[support::HostileReceiver::kIdentification] = {
        support::HostileReceiver::product(id, 400), support::HostileReceiver::array("P000 L001 A010 A100 D100")};
  }
  void send(const std::vector<Packet>& packets) { receiver_->answers[kSendDisplay] = packets; }
  bool run(int command) {
    ui::Windows none;
    return ui::find_command(command)->action({*session, none}, command);
  }
  // The rows of what was downloaded from the top; empty for nothing.
  std::string downloaded() {
    session->picture.reset();
    const bool done = session->get_display_bitmap();
    EXPECT_FALSE(receiver_->ran_away());
    EXPECT_FALSE(session->flags.PortOpen);
    EXPECT_EQ(done, session->picture.has_value());
    return done ? rows_of(*session->picture) : "";
  }
  [[nodiscard]] bool was_asked() const {
    return std::ranges::any_of(receiver_->heard, [](const Packet& packet) {
      return packet.id == 10 && packet.data == Bytes{kSendDisplay, 0};
    });
  }
  [[nodiscard]] bool was_told_to_stop() const {
    const Packet& last = receiver_->heard.back();
    return last.id == 10 && last.data == Bytes{0, 0};
  }

  support::HostileReceiver* receiver_ = nullptr;
};

TEST_F(GarminScreen, TheSimulatedScreenArrivesAsItIsShown) {
  for (const bool early : {true, false}) {
    simulators::GarminOptions options;
    if (early) options.screen = simulators::ScreenShape{.width = 72, .lines = 100, .bits_per_pixel = 1};
    simulate(simulators::believable_weekend(), options);
    const simulators::ScreenShape shape = simulators::screen_shape(options);
    ASSERT_TRUE(session->get_display_bitmap());
    const picture::Bitmap& picture = *session->picture;
    ASSERT_EQ(std::pair(picture.width(), picture.height()), std::pair(shape.width, shape.lines));
    for (int y = 0; y < shape.lines; ++y)
      for (int x = 0; x < shape.width; ++x) {
        const int tone = simulators::screen_tone(shape, x, y);
        EXPECT_EQ(picture.pixel(x, y), early ? tone / 2 : 3 - tone) << x << ' ' << y;
      }
  }
}

TEST_F(GarminScreen, IsTurnedToTheLeftAndSavedUnderBothNames) {
  EXPECT_FALSE(run(40099));
  EXPECT_EQ(front_end.lines[1], "There is no picture of a receiver's screen.");
  EXPECT_FALSE(save("none.png"));
  EXPECT_FALSE(std::filesystem::exists(file("none.png")));
  send({header(1, 1, 8, 2), pixels(0, {0x01}), pixels(1, {0x80})});
  ASSERT_TRUE(run(40052));
  ASSERT_TRUE(run(40099));
  const std::string turned = "01/00/00/00/00/00/00/10/";
  EXPECT_EQ(rows_of(*session->picture), turned);
  ASSERT_TRUE(save("screen.bmp"));
  ASSERT_TRUE(save("screen.png"));
  session->picture.reset();
  ASSERT_TRUE(reread("screen.bmp"));
  EXPECT_EQ(rows_of(*session->picture), turned);
}

TEST_F(GarminScreen, WithoutAFamilyNobodyIsAsked) {
  session->settings.GPS = store::Family::None;
  EXPECT_FALSE(run(40052));
  EXPECT_EQ(front_end.lines[6], "Must select GPS first!");
  EXPECT_TRUE(session->flags.UserAbort);
  EXPECT_TRUE(receiver_->heard.empty());
}

TEST_F(GarminScreen, AFailureKeepsTheOldPicture) {
  send({header(1, 1, 8, 1), pixels(0, {0x01})});
  ASSERT_TRUE(session->get_display_bitmap());
  send({header(1, 1, 8, 2), pixels(0, {0xFF})});
  EXPECT_FALSE(session->get_display_bitmap());
  EXPECT_EQ(rows_of(*session->picture), "10000000/");
}

TEST_F(GarminScreen, OneBitPixelsAreTakenAsTheyAreFromTheLowestBitOn) {
  send({header(2, 1, 12, 2), pixels(0, {0x01, 0x08}), pixels(2, {0xF0, 0x0F})});
  EXPECT_EQ(downloaded(), "100000000001/000011111111/");
  EXPECT_EQ(front_end.lines[2], "  2 Lines");
  EXPECT_EQ(front_end.times_written(3, "L001"), 1);
  EXPECT_EQ(front_end.times_written(3, "L002"), 1);
  EXPECT_EQ(front_end.progress_range, 0);
  EXPECT_EQ(front_end.boxes.size(), 0u);
}

TEST_F(GarminScreen, TwoBitPixelsAreInverted) {
  send({header(4, 2, 16, 2), pixels(0, {0xE4, 0x00, 0xFF, 0x55}), pixels(4, {0xAA, 0, 0, 0x40})});
  EXPECT_EQ(downloaded(), "3210333300002222/1111333333333332/");
}

TEST_F(GarminScreen, ThePictureIsGreyExceptForOneProduct) {
  for (const auto& [product, black] : {std::pair{96, 0x000000U}, {118, 0x808080U}}) {
    be_product(product);
    send({header(4, 2, 16, 1), pixels(0, {0, 0, 0, 0})});
    ASSERT_TRUE(session->get_display_bitmap());
    EXPECT_EQ(session->picture->palette()[0], black);
    EXPECT_EQ(session->picture->palette()[2], product == 118 ? 0x000080U : 0xB5B5B5U);
  }
}

TEST_F(GarminScreen, Product111IsNotInvertedAndItsOffsetMayStandOneFurther) {
  be_product(111);
  send({header(4, 2, 16, 2), pixels(0, {0xE4, 0, 0, 0}), pixels(4, {0, 0, 0, 0xC0})});
  EXPECT_EQ(downloaded(), "0123000000000000/0000000000000003/");
  send({header(4, 2, 16, 2), pixels(0, {0, 0, 0, 0, 0xE4, 0, 0, 0}), pixels(0, {4, 0, 0, 0, 0, 0, 0, 0xC0})});
  EXPECT_EQ(downloaded(), "0123000000000000/0000000000000003/");
}

TEST_F(GarminScreen, LongLinesComeInPiecesAndTheirPaddingIsNotDrawn) {
  Bytes first(128), second(24);
  first[0] = 0x03;
  second[21] = 0xC0;
  second[22] = second[23] = 0xFF;  // padding
  send({header(152, 2, 600, 2), pixels(0, first), pixels(128, second), pixels(152, first), pixels(280, second)});
  const std::string row = "0" + std::string(598, '3') + "0/";
  EXPECT_EQ(downloaded(), row + row);
  EXPECT_EQ(front_end.times_written(3, "L002"), 1);
}

TEST_F(GarminScreen, RepeatedAndForeignPacketsAreNoLines) {
  const Packet colour{kDisplay, base::ByteWriter().u32(2).u32(0).bytes(Bytes{255, 255, 255}).result()};
  const Packet first = pixels(0, {0xFF});
  send({pixels(0, {0x55}),
        header(1, 1, 8, 2),
        colour,
        support::HostileReceiver::count(7),
        first,
        first,
        header(1, 1, 8, 2),
        pixels(2, {0xFF}),
        pixels(0xFFFFFFFF, {1, 2}),
        {kDisplay, {}},
        {kDisplay, {1, 0, 0, 0, 1}},
        pixels(1, {0x01})});
  EXPECT_EQ(downloaded(), "11111111/10000000/");
}

TEST_F(GarminScreen, ProductsThatCannotDoItAreRefusedAndNothingIsSent) {
  be_product(116);
  EXPECT_EQ(downloaded(), "");
  using Line = std::pair<int, std::string>;
  const std::vector<Line> refusal{{3, "Warning.  Product may not support display download"},
                                  {4, "          and a display download will likely fail."},
                                  {3, "The 12CX is not supported."}};
  ASSERT_GE(front_end.line_writes.size(), 3u);
  EXPECT_EQ(std::vector<Line>(front_end.line_writes.end() - 3, front_end.line_writes.end()), refusal);
  EXPECT_FALSE(was_asked());
  be_product(130);
  EXPECT_EQ(downloaded(), "");
  EXPECT_EQ(front_end.line_writes.back(), Line(3, "The eTrex is not supported at this time."));
  EXPECT_EQ(front_end.times_written(3, refusal[0].second), 0);
  EXPECT_FALSE(was_asked());
}

TEST_F(GarminScreen, AHeaderThatDoesNotFitIsRefusedAndTheReceiverStopped) {
  struct Case {
    Packet header;
    std::string_view problem;
  };
  for (const Case& wrong : {Case{header(156, 4, 312, 240), "it has 4 bits per pixel, and only 1 or 2 are known"},
                            {header(8, 0, 64, 64), "it has 0 bits per pixel, and only 1 or 2 are known"},
                            {header(8, 1, 0, 64), "0 by 64 pixels are no size for it"},
                            {header(8, 1, 64, 0), "64 by 0 pixels are no size for it"},
                            {header(200, 1, 1025, 4), "1025 by 4 pixels are no size for it"},
                            {header(8, 1, 64, 0x80000000), "64 by 2147483648 pixels are no size for it"},
                            {header(7, 1, 57, 4), "7 bytes are no length for a line of 57 pixels"},
                            {header(1025, 2, 64, 4), "1025 bytes are no length for a line of 64 pixels"},
                            {{kDisplay, {0, 0, 0, 0, 1, 0}}, "it has 0 bits per pixel, and only 1 or 2 are known"}}) {
    send({wrong.header, pixels(0, {1})});
    EXPECT_EQ(downloaded(), "");
    EXPECT_EQ(front_end.lines[1], "The receiver's screen cannot be drawn: " + std::string(wrong.problem) + ".");
    EXPECT_TRUE(was_told_to_stop());
  }
}

TEST_F(GarminScreen, SilenceLeavesNoPicture) {
  send({header(1, 1, 8, 3), pixels(0, {0xFF})});
  EXPECT_EQ(downloaded(), "");
  EXPECT_FALSE(session->flags.GpsIdentified);
  EXPECT_EQ(front_end.boxes, (std::vector<std::pair<std::string, std::string>>{{"Download", "Serial Port Timeout"}}));
  EXPECT_EQ(front_end.progress_range, 0);
}

TEST_F(GarminScreen, AReceiverThatOnlyAcknowledgesIsGivenUpSoon) {
  EXPECT_EQ(downloaded(), "");
  EXPECT_EQ(front_end.boxes.size(), 1u);
  EXPECT_LT(clock.now, std::chrono::seconds(20));
}

TEST_F(GarminScreen, EscLeavesNoPictureAndStopsTheReceiver) {
  send({header(1, 1, 8, 3), pixels(0, {0xFF}), pixels(1, {0xFF}), pixels(2, {0xFF})});
  front_end.esc = [&] { return front_end.lines[3] == "L002"; };
  EXPECT_EQ(downloaded(), "");
  EXPECT_EQ(front_end.lines[2], "Operation Aborted");
  EXPECT_TRUE(was_told_to_stop());
  EXPECT_TRUE(front_end.boxes.empty());
}

TEST_F(GarminScreen, AReceiverThatNeverComesToAnEndIsLeft) {
  send({header(1, 1, 8, 3)});
  receiver_->endless = [] { return simulators::frame_packet(pixels(0, {0xFF})); };
  receiver_->endless_from = kSendDisplay;
  EXPECT_EQ(downloaded(), "");
  EXPECT_EQ(front_end.lines[2], "The receiver keeps sending packets that do not belong to this transfer.");
}

}  // namespace

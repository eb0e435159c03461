#include "simulators/lowrance_simulator.h"

#include <gtest/gtest.h>

#include <numeric>

#include "simulators/lowrance_screen.h"
#include "tests/support/stepping_clock.h"

namespace simulators {
namespace {

using base::Bytes;
using namespace std::chrono_literals;

const Bytes kLogin{0x55, 0x81, 0x0D, 0, 0, 0, 0, 0x1D};
const Bytes kLoggedIn{0x55, 0x81, 0x8D, 0, 2, 0, 0, 0x9B, 0, 1, 0xFF};
const Bytes kAskInfo{0x55, 0x81, 0x0E, 3, 0, 0, 0, 0x19};
const Bytes kAskIconCount{0x55, 0x81, 8, 3, 0, 0, 0, 0x1F};
const Bytes kNoIcons{0x55, 0x81, 0x88, 3, 3, 0, 0, 0x9C, 0, 0, 0, 0};
const Bytes kNothing;

Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

Bytes with_checksum(Bytes bytes) {
  bytes.push_back(static_cast<std::uint8_t>(-std::accumulate(bytes.begin(), bytes.end(), 0)));
  return bytes;
}
Bytes message(int command, const Bytes& data) {
  const Bytes header =
      with_checksum({0x55, 0x81, static_cast<std::uint8_t>(command), static_cast<std::uint8_t>(command >> 8),
                     static_cast<std::uint8_t>(data.size()), static_cast<std::uint8_t>(data.size() >> 8), 0});
  return data.empty() ? header : header + with_checksum(data);
}
Bytes answer(int command, const Bytes& data) { return message(command | 0x80, Bytes{0} + data); }

class LowranceSimulatorTest : public testing::Test {
 protected:
  // A unit that has been logged in.
  void make(const LowranceData& data = {}, std::string unit = "GlobalMap 100") {
    make_unit(data, std::move(unit));
    EXPECT_EQ(say(kLogin), kLoggedIn);
  }
  void make_unit(const LowranceData& data = {}, std::string unit = "GlobalMap 100") {
    options.unit = std::move(unit);
    receiver.emplace(data, options, clock);
  }
  Bytes heard() {
    Bytes bytes;
    while (const auto byte = receiver->take_output()) bytes.push_back(*byte);
    return bytes;
  }
  Bytes say(const Bytes& bytes) {
    receiver->receive(bytes);
    return heard();
  }
  Bytes ask(int command, const Bytes& data) { return say(message(command, data)); }

  support::SteppingClock clock;
  LowranceOptions options;
  std::optional<LowranceSimulator> receiver;
};

TEST_F(LowranceSimulatorTest, BeforeALoginItTellsOnlyWhatItIs) {
  make_unit();
  EXPECT_EQ(say(kAskIconCount), kNothing);
  EXPECT_EQ(receiver->refused(), 1);
  EXPECT_EQ(say(kAskInfo), (Bytes{0x55, 0x81, 0x8E, 3, 26, 0, 0,  0x7F, 0, 14, 0,  1,    0,    1,    0, 103, 0, 159, 0,
                                  0xEE, 2,    0xE8, 3, 99, 0, 99, 0,    2, 28, 90, 0x87, 0xD6, 0x12, 0, 0x62}));
  EXPECT_EQ(say(kLogin), kLoggedIn);
  EXPECT_EQ(say(kAskIconCount), kNoIcons);
}

TEST_F(LowranceSimulatorTest, TheAngle270IsToldAsItsLowByte) {
  make({}, "AccuMap 12");
  const Bytes info = say(kAskInfo);
  ASSERT_EQ(info.size(), 8 + 26 + 1u);
  EXPECT_EQ(info[8 + 21], 14);
}

TEST_F(LowranceSimulatorTest, WhatIsDamagedOrUnknownOrHasAnotherLengthIsNotAnswered) {
  make();
  const std::vector<Bytes> bad{
      {0x55, 0x81, 8, 3, 0, 0, 0, 0x20},           // header checksum
      {0x55, 0x81, 8, 3, 0, 0, 1, 0x1E},           // not 0 before it
      {0x55, 0x81, 3, 3, 2, 0, 0, 0x22, 0, 0, 1},  // data checksum
      message(0x0308, {0}),                        // a byte too many
      message(0x0303, {0}),                        // one too few
      message(0x0383, {0, 0}),                     // an answer
      message(0x030D, {0, 0}),
      message(0x010A, {}),
      {0x55, 0x81, 6, 3, 0xFF, 0xFF, 0, 0x23},  // longer than any request
  };
  for (const Bytes& bytes : bad) EXPECT_EQ(say(bytes), kNothing);
  EXPECT_EQ(receiver->refused(), static_cast<int>(bad.size()));
  EXPECT_EQ(say(kAskIconCount), kNoIcons);
}

TEST_F(LowranceSimulatorTest, ARequestIsFoundBehindAnythingThatDoesNotBeginOne) {
  make();
  EXPECT_EQ(say(Bytes{0x81, 0x55, 0x00, 0x81, 0x55, 0x55} + Bytes(kAskIconCount.begin() + 1, kAskIconCount.end())),
            kNoIcons);
  EXPECT_EQ(say({0x55, 0x81, 3, 3, 2, 0, 0, 0x22, 0}), kNothing);  // broken off
  clock.now += 1001ms;
  EXPECT_EQ(say(kAskIconCount), kNoIcons);
  EXPECT_EQ(receiver->refused(), 0);
}

TEST_F(LowranceSimulatorTest, RecordsAreKeptByteForByteAndGivenBack) {
  make();
  const Bytes waypoint =
      Bytes{1, 0, 1, 5, 0x69, 0xE0, 0x5A, 0, 0x4E, 0xB2, 0x0D, 0, 'A'} + Bytes(12) + Bytes{4, 3, 2, 1};
  EXPECT_EQ(ask(0x0304, waypoint), (Bytes{0x55, 0x81, 0x84, 3, 1, 0, 0, 0xA2, 0, 0}));
  EXPECT_EQ(say({0x55, 0x81, 3, 3, 2, 0, 0, 0x22, 1, 0, 0xFF}), answer(0x0303, waypoint));
  const Bytes route = Bytes{98, 0, 2, 'R'} + Bytes(12) + Bytes{1, 0, 0, 1};
  EXPECT_EQ(ask(0x0306, route), answer(0x0306, {}));
  EXPECT_EQ(ask(0x0305, {98, 0}), answer(0x0305, route));
  EXPECT_EQ(ask(0x030A, {2, 0}), answer(0x030A, {}));
  const Bytes icon{1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  EXPECT_EQ(ask(0x030B, icon), answer(0x030B, {}));
  EXPECT_EQ(ask(0x0308, {}), answer(0x0308, {2, 0}));
  EXPECT_EQ(ask(0x0309, {1, 0}), answer(0x0309, icon));
  EXPECT_EQ(ask(0x0309, {0, 0}), answer(0x0309, Bytes(11)));
  EXPECT_EQ(ask(0x030C, {}), answer(0x030C, {28, 0}));
  EXPECT_EQ(receiver->memory().waypoints[1], waypoint);
}

TEST_F(LowranceSimulatorTest, RecordsForSlotsThatItDoesNotHaveAreAnsweredAndDroppedAndNonsenseIsRefused) {
  make({}, "GlobalNav 310");  // 250 waypoints, 20 routes of 50 points, no icons, 15 symbols
  const LowranceMemory before = receiver->memory();
  EXPECT_EQ(ask(0x0304, Bytes{250, 0, 1, 14} + Bytes(25)), answer(0x0304, {}));
  EXPECT_EQ(ask(0x0306, Bytes{20, 0, 1} + Bytes(13) + Bytes{249, 0}), answer(0x0306, {}));
  EXPECT_EQ(ask(0x030A, {5, 0}), answer(0x030A, {}));
  EXPECT_EQ(ask(0x030B, Bytes(10) + Bytes{14}), answer(0x030B, {}));
  const std::vector<Bytes> bad{
      message(0x0303, {250, 0}),
      message(0x0305, {20, 0}),
      message(0x0309, {0, 0}),
      message(0x0304, Bytes{0, 0, 2} + Bytes(26)),                  // neither free nor taken
      message(0x0304, Bytes{0, 0, 1, 15} + Bytes(25)),              // symbol
      message(0x030B, Bytes(10) + Bytes{15}),                       // symbol
      message(0x0306, Bytes{0, 0, 0} + Bytes(13)),                  // no points
      message(0x0306, Bytes{0, 0, 51} + Bytes(13 + 2 * 51)),        // too many
      message(0x0306, Bytes{0, 0, 2} + Bytes(13 + 2)),              // two announced, one there
      message(0x0306, Bytes{0, 0, 1} + Bytes(13) + Bytes{250, 0}),  // no such waypoint
      message(0x0313, {0, 41, 0}),                                  // more than a block
  };
  for (const Bytes& bytes : bad) EXPECT_EQ(say(bytes), kNothing);
  EXPECT_EQ(receiver->refused(), static_cast<int>(bad.size()));
  EXPECT_EQ(receiver->memory(), before);
}

TEST_F(LowranceSimulatorTest, ATrailComesInBlocksEachGoingOnWhereTheLastOneEnded) {
  LowranceData data;
  data.trails.emplace_back();
  for (int i = 0; i < 43; ++i) data.trails[0].push_back({0, i % 2 * 0.001});
  make(data);
  const Bytes origin = answer(0x0312, {0, 0, 0, 0, 0, 0, 0, 0, 0, 42, 0});
  EXPECT_EQ(ask(0x0312, {0}), origin);
  Bytes block{0, 40, 0};
  for (int i = 0; i < 20; ++i) block = block + Bytes{0, 0, 111, 0, 0, 0, 0x91, 0xFF};
  EXPECT_EQ(ask(0x0313, {0, 40, 0}), answer(0x0313, block));
  EXPECT_EQ(ask(0x0313, {0, 1, 0}), answer(0x0313, {0, 1, 0, 0, 0, 111, 0}));
  EXPECT_EQ(ask(0x0313, {0, 40, 0}), answer(0x0313, {0, 1, 0, 0, 0, 0x91, 0xFF}));
  EXPECT_EQ(ask(0x0313, {0, 0, 0}), answer(0x0313, {0, 0, 0}));
  EXPECT_EQ(ask(0x0312, {0}), origin);
  EXPECT_EQ(ask(0x0313, {0, 1, 0}), answer(0x0313, {0, 1, 0, 0, 0, 111, 0}));
  EXPECT_EQ(ask(0x0312, {1}), answer(0x0312, Bytes{1} + Bytes(10)));  // an empty trail
  EXPECT_EQ(ask(0x0312, {2}), kNothing);
  EXPECT_EQ(ask(0x0307, {0}), kNothing);  // its trails are in no memory
}

TEST_F(LowranceSimulatorTest, ATrailIsTakenAsFarAsItWasAnnouncedAndTheUnitHasRoom) {
  make({}, "GlobalNav 310");                                // 500 points
  EXPECT_EQ(ask(0x0315, {0, 1, 0, 1, 0, 2, 0}), kNothing);  // nothing announced
  EXPECT_EQ(ask(0x0314, {0, 5, 0, 0, 0, 0xFB, 0xFF, 0xFF, 0xFF, 2, 0}), answer(0x0314, {}));
  EXPECT_EQ(ask(0x0315, {0, 2, 0, 1, 0, 2, 0}), kNothing);  // two said, one there
  EXPECT_EQ(ask(0x0315, {0, 1, 0, 1, 0, 0xFE, 0xFF}), answer(0x0315, {}));
  EXPECT_EQ(ask(0x0315, Bytes{0, 2, 0} + Bytes(8)), kNothing);  // three in all
  EXPECT_EQ(receiver->memory().trails[0], (LowranceTrail{.y = 5, .x = -5, .deltas = {{1, -2}}}));
  EXPECT_EQ(ask(0x0314, Bytes(9) + Bytes{0x58, 2}), answer(0x0314, {}));  // 600 deltas
  for (int i = 0; i < 12; ++i) EXPECT_EQ(ask(0x0315, Bytes{0, 40, 0} + Bytes(160)), answer(0x0315, {}));
  EXPECT_EQ(ask(0x0315, Bytes{0, 20, 0} + Bytes(80)), kNothing);
  EXPECT_EQ(ask(0x0315, Bytes{0, 19, 0} + Bytes(76)), answer(0x0315, {}));
  EXPECT_EQ(receiver->memory().trails[0].deltas.size(), 499u);
  EXPECT_EQ(ask(0x0314, Bytes{1} + Bytes(10)), kNothing);
}

TEST_F(LowranceSimulatorTest, TrailsOfAnOldUnitAreReadAndWrittenInItsMemory) {
  make({}, "GlobalMap Sport");  // two areas of 2020 bytes
  EXPECT_EQ(ask(0x0307, {1}), answer(0x0307, {1, 0, 2, 0x17, 0xE4, 7, 0xE4}));
  EXPECT_EQ(ask(0x0307, {2}), kNothing);
  for (const int command : {0x0312, 0x0314}) EXPECT_EQ(ask(command, Bytes(command == 0x0312 ? 1 : 11)), kNothing);

  EXPECT_EQ(ask(0x0009, {0xE4, 0x17, 2, 0, 7, 8, 9}), answer(0x0009, {}));  // the first bytes of the second area
  EXPECT_EQ(receiver->memory().areas[1][2], 9);
  EXPECT_EQ(ask(0x0008, {0xE2, 0x17, 2, 0, 6, 0, 0}), answer(0x0008, {0, 0, 7, 8, 9, 0}));  // across both
  EXPECT_EQ(ask(0x0009, {0xE3, 0x17, 2, 0, 7, 8}), kNothing);
  EXPECT_EQ(ask(0x0009, {0xC7, 0x1F, 2, 0, 7}), answer(0x0009, {}));  // the last byte of all
  EXPECT_EQ(ask(0x0009, {0xC8, 0x1F, 2, 0, 7}), kNothing);
  EXPECT_EQ(ask(0x0009, {0, 0, 8, 0, 7}), kNothing);  // the screen
  EXPECT_EQ(ask(0x0009, {0xFF, 0xFF, 0xFF, 0xFF, 7}), kNothing);
  EXPECT_EQ(ask(0x0009, Bytes{0, 0x10, 2, 0} + Bytes(161)), kNothing);
  const auto write_header = [this](const Bytes& start, const Bytes& end) {
    return ask(0x0009, Bytes{0xE4, 0x17, 2, 0} + Bytes(8) + Bytes{0, 2} + start + Bytes{0, 2} + end);
  };
  EXPECT_EQ(write_header({0x17, 0xF4}, {0x1F, 0xC4}), answer(0x0009, {}));
  EXPECT_EQ(write_header({0x1F, 0xC4}, {0x1F, 0xC4}), kNothing);  // behind the ring's last delta
  EXPECT_EQ(write_header({0x17, 0xF6}, {0x1F, 0xC4}), kNothing);  // between two
  EXPECT_EQ(write_header({0x17, 0xF4}, {0x1F, 0xC8}), kNothing);  // behind the area
  EXPECT_EQ(write_header({0x17, 0xF4}, {0x10, 0x10}), kNothing);  // in the other one

  EXPECT_EQ(ask(0x0008, {0xFF, 0xFF, 0xFF, 0xFF, 3, 0, 0}), answer(0x0008, {0, 0, 0}));
  EXPECT_EQ(ask(0x0008, {0, 0x10, 2, 0, 160, 0, 0}), answer(0x0008, Bytes(160)));
  EXPECT_EQ(ask(0x0008, {0, 0x10, 2, 0, 161, 0, 0}), kNothing);
  EXPECT_EQ(ask(0x0008, {0, 0x10, 2, 0, 1, 0, 1}), kNothing);  // of a cartridge
}

TEST_F(LowranceSimulatorTest, WhileTheScreenIsFrozenOnlyTheMemoryIsGivenAway) {
  make({}, "Eagle Explorer");  // planes of 160 rows of 128 pixels
  const Bytes parameters = answer(0x0301, {128, 0, 160, 0, 0, 0, 8, 0, 0, 10, 0, 0, 9, 0, 0, 10});
  EXPECT_EQ(ask(0x0301, {}), parameters);
  EXPECT_EQ(ask(0x0308, {}), kNothing);
  EXPECT_EQ(ask(0x0008, {0, 0, 8, 0, 2, 0, 0}), answer(0x0008, {0xFF, 0xFF}));
  EXPECT_EQ(ask(0x0008, {16, 0, 9, 0, 2, 0, 0}), answer(0x0008, {0x80, 0}));
  EXPECT_EQ(ask(0x0301, {}), parameters);
  EXPECT_EQ(say(kLogin), kLoggedIn);
  EXPECT_EQ(ask(0x0308, {}), kNothing);
  EXPECT_EQ(ask(0x0302, {}), answer(0x0302, {}));
  EXPECT_EQ(say(kAskIconCount), kNoIcons);
  make({}, "GlobalNav 310");
  EXPECT_EQ(ask(0x0301, {}), answer(0x0301, {64, 0, 128, 0, 0, 0, 8, 0, 0, 4, 0, 0, 0, 0, 0, 0}));
}

TEST_F(LowranceSimulatorTest, AtAnotherSpeedItHearsNothing) {
  options.baud = 9600;
  make_unit();
  const auto say_slowly = [&] {
    receiver->receive(kLogin);
    clock.now += 100ms;
    return heard();
  };
  EXPECT_EQ(say_slowly(), kLoggedIn);  // nobody has told it a speed yet
  for (const int speed : {4800, 0}) {
    receiver->set_host_speed(speed);
    EXPECT_EQ(say_slowly(), kNothing);
  }
  receiver->set_host_speed(9600);
  EXPECT_EQ(say_slowly(), kLoggedIn);
  EXPECT_EQ(receiver->refused(), 0);
  options.baud = 0;
  make_unit();
  receiver->set_host_speed(4800);
  EXPECT_EQ(say(kLogin), kLoggedIn);
}

TEST_F(LowranceSimulatorTest, BytesTakeTheirTimeAndALateHostLosesNone) {
  options.baud = 10000;  // a millisecond a byte
  make_unit();
  receiver->receive(kLogin);
  EXPECT_EQ(receiver->next_output_in(), 1ms);
  clock.now = 8999us;
  EXPECT_EQ(heard(), kNothing);
  EXPECT_EQ(receiver->next_output_in(), 1us);
  clock.now = 9ms;
  EXPECT_EQ(heard(), Bytes{0x55});
  EXPECT_EQ(receiver->next_output_in(8ms), 9ms);
  clock.now = 19ms;  // all eleven bytes are through, whenever somebody looked
  EXPECT_EQ(heard().size(), 10u);
  EXPECT_EQ(receiver->next_output_in(), SimulatedReceiver::kNever);
  receiver->receive(Bytes(5000));
  EXPECT_EQ(receiver->input_room(), 0u);
  options.baud = 0;
  make_unit();
  for (int i = 0; i < 240; ++i) receiver->receive(kAskInfo);  // 35 bytes each, of which nobody reads any
  EXPECT_EQ(receiver->refused(), 240 - 8192 / 35);
}

TEST_F(LowranceSimulatorTest, EchoAndNoiseComeBeforeTheAnswer) {
  const Bytes noise{0x0D, 0x81, 0x24, 0x55, 0x00, 0x81, 0xFF, 0x55};
  options.echo = true;
  make_unit();
  EXPECT_EQ(say(kLogin), kLogin + kLoggedIn);
  EXPECT_EQ(say({1, 2}), (Bytes{1, 2}));
  options.noise = true;
  make_unit();
  EXPECT_EQ(say(kLogin), kLogin + noise + kLoggedIn);
  options = {.baud = 9600, .echo = true, .faults = {}};
  make_unit();
  receiver->set_host_speed(4800);
  receiver->receive(kLogin);
  clock.now += 1s;
  EXPECT_EQ(heard(), kLogin);
}

TEST_F(LowranceSimulatorTest, FaultsComeAtTheRequestsThatItUnderstands) {
  options.faults = {{Fault::Kind::DropAck, 2}, {Fault::Kind::BadChecksum, 3}, {Fault::Kind::Noise, 4}};
  make();
  EXPECT_EQ(ask(0x0304, {}), kNothing);  // not understood, not counted
  EXPECT_EQ(ask(0x030A, {1, 0}), kNothing);
  EXPECT_EQ(receiver->memory().icons.size(), 1u);
  EXPECT_EQ(say(kAskIconCount), (Bytes{0x55, 0x81, 0x88, 3, 3, 0, 0, 0x9C, 0, 1, 1, 0xFF}));
  EXPECT_EQ(say(kAskIconCount).size(), 8 + 8 + 4u);
  EXPECT_EQ(say(kAskIconCount).size(), 8 + 4u);
  EXPECT_EQ(receiver->refused(), 1);
  for (const Fault::Kind kind : {Fault::Kind::Silent, Fault::Kind::Unplug}) {
    options = {.echo = true, .faults = {{kind, 2}}};
    make_unit();
    say(kLogin);
    const Bytes set_icon_count = message(0x030A, {1, 0});
    EXPECT_EQ(say(set_icon_count), kind == Fault::Kind::Silent ? set_icon_count : kNothing);
    EXPECT_EQ(receiver->memory().icons.size(), 0u);
    EXPECT_EQ(receiver->unplugged(), kind == Fault::Kind::Unplug);
  }
}

TEST_F(LowranceSimulatorTest, TheMemoryOfAnotherUnitIsTakenOverAsItIs) {
  LowranceMemory memory;  // nothing at all is there
  memory.waypoints = {Bytes{0, 0, 1}};
  receiver.emplace(LowranceData{}, options, clock, memory);
  say(kLogin);
  EXPECT_EQ(ask(0x0303, {0, 0}), answer(0x0303, {0, 0, 1}));
  EXPECT_EQ(ask(0x0303, {1, 0}), kNothing);
  EXPECT_EQ(ask(0x0312, {0}), kNothing);
  EXPECT_EQ(ask(0x0305, {0, 0}), kNothing);
}

}  // namespace
}  // namespace simulators

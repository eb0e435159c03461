#include "simulators/garmin_simulator.h"

#include "simulators/built_in_data.h"
#include "tests/support/garmin_host.h"

namespace simulators {
namespace {

using namespace support;
using namespace std::chrono_literals;
using GarminSimulatorTest = GarminHost;

const Bytes kProduct7{0x10, 0xFF, 8, 7, 0, 0xFA, 0, 'G', 'P', 'S', 0, 0x0E, 0x10, 3};
const Bytes kOneRecord{0x10, 27, 2, 1, 0, 0xE2, 0x10, 3};
const Bytes kWaypointsDone{0x10, 12, 2, 7, 0, 0xEB, 0x10, 3};

// The record of SimulatedData{one_waypoint()} in D100, framed.
Bytes waypoint_a1() {
  Bytes frame{0x10, 35, 58, 'A', '1', ' ', ' ', ' ', ' ', 0, 0, 0, 0x20, 0, 0, 0, 0xC0, 0, 0, 0, 0};
  frame.resize(frame.size() + 40, ' ');
  frame.insert(frame.end(), {0xD1, 0x10, 3});
  return frame;
}
SimulatedData one_waypoint() {
  SimulatedData data;
  data.waypoints.emplace_back();
  data.waypoints[0].ident = "A1";
  data.waypoints[0].latitude = 45;
  data.waypoints[0].longitude = -90;
  return data;
}

TEST_F(GarminSimulatorTest, AnArrayFollowsTheAcknowledgedProductDataAtOnce) {
  options.protocols = "L001 A010";
  make({});
  EXPECT_EQ(say(kAskProduct), kProductAsked + kProduct7);
  EXPECT_EQ(say(ack(255)), (Bytes{0x10, 253, 6, 'L', 1, 0, 'A', 10, 0, 0x65, 0x10, 3}));
  EXPECT_EQ(say(ack(253)), Bytes{});
}

TEST_F(GarminSimulatorTest, AWaypointTransferGoesCountRecordEnd) {
  make(one_waypoint());
  EXPECT_EQ(say(ask(7)), kCommandTaken + kOneRecord);
  EXPECT_EQ(say(ack(27)), waypoint_a1());
  EXPECT_EQ(say(ack(35)), kWaypointsDone);
  EXPECT_EQ(say(ack(12)), Bytes{});
}

TEST_F(GarminSimulatorTest, AnAcknowledgementOfOneDataByteCounts) {
  make(one_waypoint());
  say(ask(7));
  EXPECT_EQ(say({0x10, 6, 1, 27, 0xDE, 0x10, 3}), waypoint_a1());
}

TEST_F(GarminSimulatorTest, KindsCommandsAndPacketsThatItDoesNotKnowAreAcknowledgedAndNothingFollows) {
  make(believable_weekend());
  EXPECT_EQ(say(ask(6)), kCommandTaken);  // this product has no tracks
  EXPECT_EQ(say(ask(99)), kCommandTaken);
  EXPECT_EQ(say({0x10, 10, 0, 0xF6, 0x10, 3}), kCommandTaken);
  EXPECT_EQ(say({0x10, 43, 1, 9, 0xCB, 0x10, 3}), ack(43));
  EXPECT_EQ(say(kAskProduct), kProductAsked + kProduct7);
}

TEST_F(GarminSimulatorTest, TracksRunTogetherWithoutHeadersOnAnOldReceiver) {
  SimulatedData data;
  data.tracks = {{.name = "ONE", .points = std::vector<SimTrackPoint>(2)}, {.name = "TWO", .points = {{}}}};
  make(data, {}, 77);
  say(ask(6));
  std::vector<int> starts;
  for (const std::uint8_t id : {std::uint8_t{27}, std::uint8_t{34}, std::uint8_t{34}}) {
    const Bytes point = say(ack(id));
    ASSERT_EQ(point.size(), 19u);
    starts.push_back(point[15]);
  }
  EXPECT_EQ(starts, (std::vector{1, 0, 1}));
  EXPECT_EQ(say(ack(34)), (Bytes{0x10, 12, 2, 6, 0, 0xEC, 0x10, 3}));
}

TEST_F(GarminSimulatorTest, ANakAndAnAcknowledgementOfSomethingElseMakeItRepeat) {
  make(one_waypoint());
  say(ask(7));
  EXPECT_EQ(say(nak(35)), kOneRecord);
  EXPECT_EQ(say(ack(34)), kOneRecord);
  EXPECT_EQ(say(ack(27)), waypoint_a1());
}

TEST_F(GarminSimulatorTest, WithoutAcknowledgementItRepeatsThreeTimesTwoSecondsApartAndGivesUp) {
  make(one_waypoint());
  say(ask(7));
  clock.now = 1999ms;
  EXPECT_EQ(heard(), Bytes{});
  clock.now = 2s;
  EXPECT_EQ(heard(), kOneRecord);
  EXPECT_EQ(receiver->next_output_in(), 2s);
  clock.now = 100s;
  EXPECT_EQ(heard(), kOneRecord + kOneRecord);
  EXPECT_EQ(say(ack(27)), Bytes{});
  EXPECT_EQ(receiver->next_output_in(), SimulatedReceiver::kNever);
}

TEST_F(GarminSimulatorTest, DateTimePositionAndVoltagesAreOnePacketEach) {
  SimulatedData data = one_waypoint();
  data.waypoints[0].latitude = 0;
  make(data);
  // 2001-09-09 01:46:40 UTC.
  EXPECT_EQ(say(ask(5)), kCommandTaken + (Bytes{0x10, 14, 8, 9, 9, 0xD1, 7, 1, 0, 46, 40, 0xA9, 0x10, 3}));
  const Bytes position = say(ask(2));  // -90 degrees are -1.5707963267948966 = 0xBFF921FB54442D18
  EXPECT_EQ(Bytes(position.begin() + 8, position.end()),
            (Bytes{0x10, 17,   0x10, 0x10, 0,    0,    0,    0,    0,    0,    0, 0,
                   0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21, 0xF9, 0xBF, 0x2E, 0x10, 3}));
  EXPECT_EQ(say(ask(17)), kCommandTaken + (Bytes{0x10, 40, 4, 0x4B, 2, 0, 0, 0x87, 0x10, 3}));
}

TEST_F(GarminSimulatorTest, AfterPowerOffNothingIsAnsweredButTheCommand) {
  make(one_waypoint());
  EXPECT_EQ(say(ask(8)), kCommandTaken);
  EXPECT_EQ(say(kAskProduct), Bytes{});
}

TEST_F(GarminSimulatorTest, TheSetClockGoesOnFromTheTimeThatItWasTold) {
  make({});
  // 2004-02-29 23:59:55.
  EXPECT_EQ(say(frame(14, {2, 29, 0xD4, 7, 23, 0, 59, 55})), ack(14));
  clock.now = 7s;
  EXPECT_EQ(say(ask(5)), kCommandTaken + frame(14, {3, 1, 0xD4, 7, 0, 0, 0, 2}));
}

TEST_F(GarminSimulatorTest, ATimeThatIsNoneIsRefusedAndTheClockRunsOn) {
  make({});
  for (const Bytes& wrong :
       {Bytes{2, 30, 0xD4, 7, 0, 0, 0, 0}, Bytes{13, 1, 0xD4, 7, 0, 0, 0, 0}, Bytes{1, 1, 0xFF, 0xFF, 0, 0, 0, 0},
        Bytes{1, 1, 0xD4, 7, 0xFF, 0xFF, 0, 0}, Bytes{1, 1, 0xD4, 7, 0, 0, 60, 0}, Bytes{1, 1, 0xD4, 7, 0, 0, 0}}) {
    EXPECT_EQ(say(frame(14, wrong)), nak(14));
  }
  EXPECT_EQ(say(ask(5)), kCommandTaken + frame(14, {9, 9, 0xD1, 7, 1, 0, 46, 40}));
}

TEST_F(GarminSimulatorTest, ItBelievesThePositionThatItIsToldUnlessItIsOffTheGlobe) {
  make({});
  const Bytes equator{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F};  // 0, 1 radian
  const Bytes beyond{0, 0, 0, 0, 0, 0, 0, 0x40, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F};
  const Bytes none{0, 0, 0, 0, 0, 0, 0xF8, 0x7F, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F};
  const auto framed = [](Bytes data, std::uint8_t sum) {
    return Bytes{0x10, 17, 0x10, 0x10} + data + Bytes{sum, 0x10, 3};
  };
  EXPECT_EQ(say(framed(equator, 0xB0)), ack(17));
  EXPECT_EQ(say(framed(beyond, 0x70)), nak(17));
  EXPECT_EQ(say(framed(none, 0x39)), nak(17));
  EXPECT_EQ(say(ask(2)), kCommandTaken + framed(equator, 0xB0));
}

TEST_F(GarminSimulatorTest, AnAcknowledgementOfAPacketThatIsStillOnItsWayIsNotMeant) {
  options.baud = 9600;
  make(one_waypoint());
  receiver->receive(ask(7) + ack(27));  // the 8 bytes of the answer and 8 of the count take longer than those 8
  clock.now = 60ms;
  EXPECT_EQ(heard(), kCommandTaken + kOneRecord);
}

TEST_F(GarminSimulatorTest, SatellitesThatAreNotKnownHaveANegativeWeekOrAreLeftOut) {
  SimulatedData data;
  data.almanac[1] = SimSatellite{.week = 0x0102, .health = 7};
  make(data, {}, 77);  // D501
  Bytes unknown(43, 0), known(43, 0);
  unknown[0] = unknown[1] = 0xFF;
  known[0] = 2, known[1] = 1, known[42] = 7;
  EXPECT_EQ(receiver->memory().almanac->at(0), (Packet{31, unknown}));
  EXPECT_EQ(receiver->memory().almanac->at(1), (Packet{31, known}));
  EXPECT_EQ(receiver->memory().almanac->size(), 32u);
  make(data, {}, 98);  // D551 over the other link
  EXPECT_EQ(receiver->memory().almanac, (std::vector<Packet>{{4, Bytes{1} + known}}));
}

TEST_F(GarminSimulatorTest, OverTheOtherLinkCommandsComeUnderEitherIdWithNumbersOfTheirOwn) {
  make(one_waypoint(), {}, 20);
  EXPECT_EQ(say(ask(21)), kCommandTaken + frame(35, {1, 0}));
  EXPECT_EQ(say(frame(11, {21, 0})), ack(11) + frame(35, {1, 0}));
  EXPECT_EQ(say(ask(20)), kCommandTaken + frame(20, {9, 9, 0xD1, 7, 1, 0, 46, 40}));
  EXPECT_EQ(say(frame(14, {3, 1, 0xD4, 7, 0, 0, 0, 2})), ack(14));
  EXPECT_EQ(say(frame(20, {3, 1, 0xD4, 7, 0, 0, 0, 2})), ack(20));
  EXPECT_EQ(say(ask(7)), kCommandTaken);  // no number of this protocol
}

// Deliberate : for hosts that do not look at the command protocol of an array.
TEST_F(GarminSimulatorTest, WithAnArrayTheUsualNumbersHoldBeforeThoseOfTheProtocolItNames) {
  options.protocols = "L002 A011 A100 D150 A200 D201 D150";
  make(one_waypoint());
  EXPECT_EQ(say(ask(4)), kCommandTaken + frame(35, {0, 0}));
  EXPECT_EQ(say(ask(7)), kCommandTaken + frame(35, {1, 0}));
  EXPECT_EQ(say(ask(21)), kCommandTaken + frame(35, {1, 0}));
}

TEST_F(GarminSimulatorTest, AFaultMeetsThePacketOfItsNumber) {
  const auto second_packet_with = [&](Fault::Kind kind) {
    make(one_waypoint(), {{kind, 2}});
    EXPECT_EQ(say(ask(7)), kCommandTaken + kOneRecord);
    return say(ack(27));
  };
  const Bytes record = waypoint_a1();
  EXPECT_EQ(second_packet_with(Fault::Kind::DropAck), record);
  EXPECT_EQ(say(ack(35)), Bytes{});
  clock.now += 2s;
  EXPECT_EQ(heard(), record);
  EXPECT_EQ(say(ack(35)), kWaypointsDone);

  Bytes damaged = record;
  damaged[damaged.size() - 3] = 0xD2;
  EXPECT_EQ(second_packet_with(Fault::Kind::BadChecksum), damaged);
  EXPECT_EQ(say(nak(35)), record);

  const Bytes noisy = second_packet_with(Fault::Kind::Noise);
  ASSERT_EQ(noisy.size(), 24 + record.size());
  EXPECT_TRUE(std::equal(record.begin(), record.end(), noisy.begin() + 24));
  EXPECT_EQ(std::count(noisy.begin(), noisy.begin() + 24, 3), 0);  // seems to end none

  for (const Fault::Kind kind : {Fault::Kind::Silent, Fault::Kind::Unplug}) {
    EXPECT_EQ(second_packet_with(kind), Bytes{});
    EXPECT_EQ(say(kAskProduct), Bytes{});
    EXPECT_EQ(receiver->unplugged(), kind == Fault::Kind::Unplug);
  }
}

TEST_F(GarminSimulatorTest, AtNineThousandSixHundredEachByteTakesItsTimeBothWays) {
  options.baud = 9600;
  make({});
  receiver->receive(kAskProduct);  // 7 bytes: 7291.7 us; the first byte of the answer 1041.7 us later
  clock.now = 8333us;
  EXPECT_FALSE(receiver->output_ready());
  EXPECT_EQ(receiver->next_output_in(), 1us);
  clock.now = 8334us;
  EXPECT_EQ(receiver->take_output(), 0x10);
  EXPECT_FALSE(receiver->output_ready());
  clock.now = 9376us;
  EXPECT_EQ(heard(), (Bytes{6}));
  EXPECT_EQ(receiver->next_output_in(4ms), 4166us);  // the next byte and the three within 4 ms of it
  clock.now = 60ms;
  EXPECT_EQ(heard().size(), kProductAsked.size() - 2 + kProduct7.size());
}

TEST_F(GarminSimulatorTest, AHostThatFloodsTheLineLosesBytesInsteadOfFillingTheMemory) {
  options.baud = 9600;
  make({});
  receiver->receive(Bytes(10'000'000, 0x41));
  EXPECT_EQ(receiver->input_room(), 0u);
  clock.now = 5s;  // the time of the 4096 bytes that the line took, and no more
  EXPECT_EQ(receiver->input_room(), 4096u);
  receiver->receive(kAskProduct);
  clock.now = 6s;
  EXPECT_EQ(heard(), kProductAsked + kProduct7);
}

TEST_F(GarminSimulatorTest, AProductRequestOrAnAbortDropsWhatNobodyReadButThePacketThatIsBeingRead) {
  for (const Bytes& request : {ask(0), frame(254, {})}) {
    make({});
    const Bytes first = say(request);
    for (int i = 0; i < 3000; ++i) receiver->receive(ask(17));
    ASSERT_EQ(receiver->take_output(), 0x10);
    const Bytes rest = say(request);
    ASSERT_GT(rest.size(), first.size());
    EXPECT_LT(rest.size(), first.size() + 50);
    EXPECT_TRUE(std::equal(first.begin(), first.end(), rest.end() - static_cast<std::ptrdiff_t>(first.size())));
  }
}

TEST_F(GarminSimulatorTest, AHostThatNeverReadsCannotFillTheMemory) {
  make(one_waypoint());
  for (int i = 0; i < 20000; ++i) receiver->receive(ask(7));
  EXPECT_LE(heard().size(), 65536u);
  EXPECT_EQ(say(ask(7)), kCommandTaken + kOneRecord);
}

}  // namespace
}  // namespace simulators

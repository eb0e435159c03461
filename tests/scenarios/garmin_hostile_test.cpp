// Receivers that send what no receiver should. Whatever they do, a download ends, and keeps the good records.
#include <random>

#include "simulators/garmin_records.h"
#include "tests/support/hostile_receiver.h"
#include "tests/support/transfer_scenario.h"

namespace {

using base::Bytes;
using garmin::Kind;
using simulators::Packet;
using support::HostileReceiver;

constexpr int kWaypoints = 7, kTracks = 6, kRoutes = 4, kProximity = 3;  // commands and closing codes

simulators::SimWaypoint place(std::string_view ident) {
  simulators::SimWaypoint waypoint;
  waypoint.ident = ident;
  waypoint.latitude = 54.325;
  waypoint.longitude = 10.145;
  return waypoint;
}
// What a transfer consists of: the count announced, these packets, the closing packet.
HostileReceiver::Packets transfer(int command, int announced, HostileReceiver::Packets packets) {
  packets.insert(packets.begin(), HostileReceiver::count(announced));
  packets.push_back(HostileReceiver::closing(command));
  return packets;
}
Packet point(std::int32_t latitude, std::uint32_t time, std::uint8_t starts = 0) {
  return {34, base::ByteWriter().i32(latitude).i32(1 << 27).u32(time).u8(starts).result()};
}
Packet waypoint(std::string_view ident) { return {35, *simulators::encode_waypoint(108, place(ident))}; }

class HostileDownload : public support::TransferScenario {
 protected:
  // A receiver that identifies itself as one with everything, and the answers still to be given.
  HostileReceiver& meet(std::string_view protocols = "L001 A010 A100 D108 A200 D201 D108 A300 D300 A400 D108") {
    clock.now = {};
    HostileReceiver& receiver = attach(std::make_unique<HostileReceiver>(clock));
    receiver.answers[HostileReceiver::kIdentification] = {HostileReceiver::product(128, 250),
                                                          HostileReceiver::array(protocols)};
    return receiver;
  }
  [[nodiscard]] std::vector<std::string> idents() {
    std::vector<std::string> result;
    for (const store::ItemRecord& item : items().contents().waypoints) result.emplace_back(item.ident.view());
    return result;
  }
  void expect_an_end(const HostileReceiver& receiver, double most_seconds) {
    EXPECT_FALSE(receiver.ran_away()) << "after " << receiver.polls << " polls";
    EXPECT_LE(elapsed, most_seconds);
    EXPECT_FALSE(session->flags.PortOpen);
  }
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(HostileDownload, RandomBytesAreNoReceiver) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    HostileReceiver& receiver = meet();
    std::minstd_rand random(seed);
    // Every third seed mostly DLE and ETX, so that packets seem to begin and end everywhere.
    receiver.endless = [&random, seed] {
      constexpr std::array<std::uint8_t, 6> kFraming{0x10, 0x03, 0x10, 0x06, 0x00, 0xFF};
      const auto draw = static_cast<std::uint32_t>(random());
      return Bytes{seed % 3 == 0 ? kFraming[draw / 7 % 6] : static_cast<std::uint8_t>(draw >> 8)};
    };
    if (seed % 2 == 0) receiver.endless_from = kWaypoints;
    EXPECT_FALSE(download(Kind::All));
    expect_an_end(receiver, 60);
    EXPECT_TRUE(items().empty());
  }
}

struct Flood {
  const char* name;
  Bytes bytes;
};
std::vector<Flood> floods() {
  const auto framed = [](const Packet& packet) { return simulators::frame_packet(packet); };
  Bytes count_and_record = framed(HostileReceiver::count(2));
  const Bytes record = framed(waypoint("AGAIN"));
  count_and_record.insert(count_and_record.end(), record.begin(), record.end());
  return {{"a packet without end", {0x55}},
          {"DLE", {0x10}},
          {"DLE ETX", {0x10, 0x03}},
          {"acknowledgements", framed({6, {10, 0}})},
          {"refusals", framed({21, {10, 0}})},
          {"damaged packets", simulators::frame_packet({35, {1, 2, 3}}, true)},
          {"packets of an unknown kind", framed({200, {1, 2, 3}})},
          {"empty packets", framed({35, {}})},
          {"records of another kind", framed({34, Bytes(13)})},
          {"counts", framed(HostileReceiver::count(5))},
          {"counts with a record each", count_and_record},
          {"counts without a number", framed({27, {}})},
          {"product data", framed(HostileReceiver::product(128, 250))},
          {"capability arrays", framed(HostileReceiver::array("L001 A010 A100 D108"))},
          {"closing packets of another kind", framed(HostileReceiver::closing(1))},
          {"NMEA", {'$', 'G', 'P', 'G', 'G', 'A', ',', ',', '*', '5', '6', '\r', '\n'}}};
}

TEST_F(HostileDownload, WhatNeverEndsFromTheStartEndsTheSearchForAReceiver) {
  for (const Flood& flood : floods()) {
    SCOPED_TRACE(flood.name);
    HostileReceiver& receiver = meet();
    receiver.endless = [&flood] { return flood.bytes; };
    receiver.answers.clear();
    receiver.acknowledges = false;
    EXPECT_FALSE(download(Kind::All));
    expect_an_end(receiver, 60);
    EXPECT_THAT(front_end.boxes, testing::Not(IsEmpty()));
    EXPECT_TRUE(items().empty());
  }
}

TEST_F(HostileDownload, WhatNeverEndsInATransferEndsTheTransfer) {
  for (const Flood& flood : floods()) {
    for (const bool counted : {false, true}) {
      SCOPED_TRACE(std::string(flood.name) + (counted ? " behind a count and a record" : ""));
      HostileReceiver& receiver = meet();
      receiver.endless = [&flood] { return flood.bytes; };
      receiver.endless_from = kWaypoints;
      if (counted) receiver.answers[kWaypoints] = {HostileReceiver::count(3), waypoint("A")};
      EXPECT_FALSE(download(Kind::Waypoints));
      expect_an_end(receiver, 120);
      EXPECT_LE(items().waypoint_count(), 3);
    }
  }
}

TEST_F(HostileDownload, AReceiverThatOnlyAcknowledgesIsAsGoodAsSilent) {
  HostileReceiver& receiver = meet();
  receiver.answers.erase(kWaypoints);
  EXPECT_FALSE(download(Kind::Waypoints));
  expect_an_end(receiver, 20);
  EXPECT_THAT(front_end.boxes, testing::ElementsAre(testing::Pair("Download", "Serial Port Timeout")));
}

TEST_F(HostileDownload, FewerRecordsThanAnnouncedAreKeptAndCounted) {
  HostileReceiver& receiver = meet();
  receiver.answers[kWaypoints] = {HostileReceiver::count(5), waypoint("A"), waypoint("B"),
                                  HostileReceiver::closing(kWaypoints)};
  EXPECT_FALSE(download(Kind::Waypoints));
  EXPECT_THAT(idents(), ElementsAre("A", "B"));
  EXPECT_EQ(front_end.lines[1], "2 of 5 received");
  EXPECT_THAT(front_end.boxes, IsEmpty());
  EXPECT_LE(elapsed, 1.0);
  expect_an_end(receiver, 1);
}

TEST_F(HostileDownload, AFewRecordsBeyondTheAnnouncedOnesAreKeptAndCounted) {
  HostileReceiver& receiver = meet();
  receiver.answers[kWaypoints] = transfer(kWaypoints, 2, {waypoint("A"), waypoint("B"), waypoint("C"), waypoint("D")});
  EXPECT_TRUE(download(Kind::Waypoints));
  EXPECT_THAT(idents(), ElementsAre("A", "B", "C", "D"));
  EXPECT_EQ(front_end.lines[1], "4 of 2 received");
  expect_an_end(receiver, 2);
}

// The second of two equal points without a time may be a repetition: the points behind it must not pay for that.
TEST_F(HostileDownload, ARepeatedPointWithoutATimeDoesNotCostTheLastPoint) {
  HostileReceiver& receiver = meet();
  receiver.answers[kTracks] = transfer(
      kTracks, 3,
      {point(1 << 27, 0xFFFFFFFF), point(1 << 28, 0xFFFFFFFF), point(1 << 28, 0xFFFFFFFF), point(1 << 29, 0xFFFFFFFF)});
  EXPECT_TRUE(download(Kind::Tracks));
  ASSERT_EQ(items().track_point_count(), 4);
  EXPECT_EQ(items().track_point(4).position.latitude, 45.0);
}

TEST_F(HostileDownload, ASegmentWhoseFirstPointIsRefusedBeginsWithTheNext) {
  HostileReceiver& receiver = meet();
  receiver.answers[kTracks] =
      transfer(kTracks, 4, {point(1, 1000, 1), point(2, 1000, 0), point(0x7FFFFFFF, 1000, 1), point(3, 1000, 0)});
  EXPECT_TRUE(download(Kind::Tracks));
  EXPECT_EQ(items().track_count(), 2);
  EXPECT_TRUE(was_said(1, "Pid_Trk_Data D300 has no position: record refused"));
}

TEST_F(HostileDownload, PointsBehindARefusedRouteHeaderDoNotJoinTheRouteBefore) {
  HostileReceiver& receiver = meet();
  Bytes header(21, ' ');
  header[0] = 4;
  const Bytes point_a = *simulators::encode_waypoint(108, place("A"));
  const Bytes point_b = *simulators::encode_waypoint(108, place("B"));
  receiver.answers[kRoutes] = transfer(kRoutes, 4, {{29, header}, {30, point_a}, {29, Bytes(20, ' ')}, {30, point_b}});
  EXPECT_TRUE(download(Kind::Routes));
  ASSERT_EQ(items().route_count(), 1);
  EXPECT_EQ(items().route(4).points.size(), 1U);
  EXPECT_THAT(idents(), ElementsAre("A", "B"));  // B is not lost
  EXPECT_EQ(front_end.lines[2], "2 records refused");
}

TEST_F(HostileDownload, ANakNamesTheRecordThatIsExpected) {
  for (const std::size_t damaged : {0U, 1U, 2U}) {
    SCOPED_TRACE(damaged);
    HostileReceiver& receiver = meet();
    receiver.answers[kWaypoints] = transfer(kWaypoints, 1, {waypoint("A")});
    receiver.damaged_packet = static_cast<int>(damaged);
    EXPECT_TRUE(download(Kind::Waypoints));
    std::vector<int> named;
    for (const Packet& heard : receiver.heard)
      if (heard.id == 21) named.push_back(heard.data.at(0));
    EXPECT_THAT(named, ElementsAre(std::array{27, 35, 12}[damaged]));
    expect_an_end(receiver, 2);
  }
}

TEST_F(HostileDownload, AClosingPacketThatComesOnceMoreDoesNotDisturbTheNextDownload) {
  HostileReceiver& receiver = meet();
  receiver.answers[kWaypoints] = transfer(kWaypoints, 1, {waypoint("A")});
  EXPECT_TRUE(download(Kind::Waypoints));
  receiver.answers[kWaypoints] = {HostileReceiver::closing(kWaypoints), HostileReceiver::count(1), waypoint("B"),
                                  HostileReceiver::closing(kWaypoints)};
  EXPECT_TRUE(download(Kind::Waypoints));
  EXPECT_THAT(idents(), ElementsAre("A", "B"));
  EXPECT_THAT(front_end.boxes, IsEmpty());
}

TEST_F(HostileDownload, RoutesWithoutNumbersAreCountedAnewWhenTheReceiverBeginsAnew) {
  HostileReceiver& receiver = meet("L001 A010 A200 D202 D108");
  const Packet bay{29, {'B', 'A', 'Y', 0}}, sea{29, {'S', 'E', 'A', 0}};
  receiver.answers[kRoutes] = transfer(kRoutes, 2, {bay, HostileReceiver::count(2), bay, sea});
  EXPECT_TRUE(download(Kind::Routes));
  ASSERT_EQ(items().route_count(), 2);
  EXPECT_EQ(items().route(1).header->comment, "SEA");
}

TEST_F(HostileDownload, ATrackHeaderWithoutPointsNamesNoOtherTrack) {
  HostileReceiver& receiver = meet("L001 A010 A301 D310 D300");
  receiver.answers[kTracks] = transfer(kTracks, 1, {{99, {1, 255, 'G', 0}}});
  EXPECT_TRUE(download(Kind::Tracks));
  receiver.answers[kTracks] = transfer(kTracks, 1, {point(1, 1000, 1)});
  EXPECT_TRUE(download(Kind::Tracks));
  EXPECT_EQ(items().track_point(1).segment_flag, store::kStartsSegment);
  EXPECT_EQ(items().track_point(1).ident, "");
}

TEST_F(HostileDownload, ACountOfZeroIsNoFailureAndItsClosingPacketIsTaken) {
  HostileReceiver& receiver = meet();
  receiver.answers[kWaypoints] = transfer(kWaypoints, 0, {});
  receiver.answers[kTracks] = transfer(kTracks, 0, {});
  EXPECT_TRUE(download(Kind::Waypoints));
  EXPECT_EQ(front_end.lines[1], "GPS: No Waypoint records to send");
  EXPECT_TRUE(download(Kind::Tracks));
  EXPECT_EQ(front_end.lines[1], "GPS: No Track records to send");
  expect_an_end(receiver, 2);
}

TEST_F(HostileDownload, WithoutACountNothingIsTakenAndTheNextKindGoesOn) {
  HostileReceiver& receiver = meet();
  receiver.answers[kWaypoints] = {waypoint("A"), waypoint("B"), HostileReceiver::closing(kWaypoints)};
  receiver.answers[kTracks] = transfer(kTracks, 1, {{34, Bytes(13)}});
  receiver.answers[kRoutes] = transfer(kRoutes, 0, {});
  receiver.answers[kProximity] = transfer(kProximity, 1, {{19, *simulators::encode_waypoint(108, place("P"))}});
  EXPECT_FALSE(download(Kind::All));
  EXPECT_THAT(front_end.boxes,
              ElementsAre(testing::Pair("getGPSrecords", "Error getting number of records to receive...aborting")));
  EXPECT_EQ(items().waypoint_count(), 0);
  EXPECT_EQ(items().track_point_count(), 1);
  EXPECT_EQ(items().proximity_count(), 1);
  expect_an_end(receiver, 5);
}

TEST_F(HostileDownload, AReceiverThatBeginsAnewIsTakenAtItsLastWord) {
  HostileReceiver& receiver = meet();
  receiver.answers[kWaypoints] = transfer(kWaypoints, 3, {waypoint("KEPT")});
  EXPECT_FALSE(download(Kind::Waypoints));
  receiver.answers[kWaypoints] =
      transfer(kWaypoints, 3,
               {waypoint("A"), waypoint("B"), HostileReceiver::count(3), waypoint("A"), waypoint("B"), waypoint("C")});
  EXPECT_TRUE(download(Kind::Waypoints));
  EXPECT_THAT(idents(), ElementsAre("A", "B", "C", "KEPT"));
  expect_an_end(receiver, 2);
}

TEST_F(HostileDownload, ARecordSentTwiceIsStoredOnceAndTrackPointsWithoutATimeTwice) {
  HostileReceiver& receiver = meet();
  receiver.answers[kWaypoints] = transfer(kWaypoints, 2, {waypoint("A"), waypoint("A"), waypoint("B")});
  EXPECT_TRUE(download(Kind::Waypoints));
  EXPECT_THAT(idents(), ElementsAre("A", "B"));
  receiver.answers[kTracks] = transfer(kTracks, 4,
                                       {point(1 << 28, 0xFFFFFFFF), point(1 << 28, 0xFFFFFFFF), point(1 << 28, 1000),
                                        point(1 << 28, 1000), point(1 << 28, 1001)});
  EXPECT_TRUE(download(Kind::Tracks));
  EXPECT_EQ(items().track_point_count(), 4);
}

TEST_F(HostileDownload, EqualRecordsThatWereCountedAreAskedForAgainAndAllKept) {
  HostileReceiver& receiver = meet();
  session->settings.HandleReadDups = store::Duplicates::Merge;
  receiver.answers[kWaypoints] = transfer(kWaypoints, 3, {waypoint("A"), waypoint("A"), waypoint("B")});
  EXPECT_TRUE(download(Kind::Waypoints));
  EXPECT_THAT(idents(), ElementsAre("A", "A", "B"));
  EXPECT_FALSE(was_said(1, "received"));
  // The next download begins with the old belief.
  receiver.answers[kWaypoints] = transfer(kWaypoints, 2, {waypoint("A"), waypoint("A"), waypoint("B")});
  items().clear_all();
  EXPECT_TRUE(download(Kind::Waypoints));
  EXPECT_THAT(idents(), ElementsAre("A", "B"));
}

TEST_F(HostileDownload, ProductDataOfNoBytesIsAProductThatNobodyKnows) {
  HostileReceiver& receiver = meet();
  receiver.answers[HostileReceiver::kIdentification] = {{255, {}}};
  EXPECT_FALSE(download(Kind::All));
  EXPECT_THAT(front_end.boxes, ElementsAre(testing::Pair("setProtocolParams",
                                                         "No Protocol Array and Protocol not in Table "
                                                         "program can't continue.")));
  expect_an_end(receiver, 10);
}

TEST_F(HostileDownload, TracksWithNumbersInsteadOfNamesAreTold) {
  HostileReceiver& receiver = meet("L001 A010 A301 D311 D301");
  const auto point = [](std::uint32_t time) {
    return Packet{34, base::ByteWriter().i32(1 << 28).i32(1 << 27).u32(time).f32(7.5F).f32(1e25F).u8(1).result()};
  };
  receiver.answers[kTracks] = transfer(kTracks, 4, {{99, {3, 0}}, point(1000), {99, {0x10, 1}}, point(1001)});
  EXPECT_TRUE(download(Kind::Tracks));
  ASSERT_EQ(items().track_point_count(), 2);
  EXPECT_EQ(items().track_point(1).ident, "Track 3");
  EXPECT_EQ(items().track_point(2).ident, "Track 272");
  EXPECT_EQ(items().track_point(2).segment_flag, store::kStartsNamedTrack);
}

TEST_F(HostileDownload, ARecordOfTheWrongLengthIsRefusedByNameAndTheNextOneTaken) {
  HostileReceiver& receiver = meet();
  const Bytes good = *simulators::encode_waypoint(108, place("GOOD"));
  receiver.answers[kWaypoints] = transfer(kWaypoints, 2, {{35, Bytes(53)}, {35, good}});
  receiver.answers[kProximity] = transfer(kProximity, 2, {{19, {}}, {19, good}});
  EXPECT_TRUE(download(Kind::Waypoints));
  EXPECT_TRUE(was_said(1, "Pid_Wpt_Data D108: 53 bytes, needs at least 54: record refused"));
  EXPECT_TRUE(download(Kind::ProximityWaypoints));
  EXPECT_TRUE(was_said(1, "Pid_Prx_Wpt_Data D108: 0 bytes, needs at least 54: record refused"));
  EXPECT_EQ(items().waypoint_count() + items().proximity_count(), 2);
  EXPECT_EQ(front_end.lines[2], "1 records refused");
  expect_an_end(receiver, 5);
}

TEST_F(HostileDownload, RouteRecordsOfTheWrongLengthCostOnlyThemselves) {
  HostileReceiver& receiver = meet("L001 A010 A201 D202 D108 D210");
  const Bytes point = *simulators::encode_waypoint(108, place("GOOD"));
  const Bytes link = simulators::encode_route_link({3, simulators::kPlainSubclass, "ON"});
  Bytes short_link = link;
  short_link.pop_back();
  receiver.answers[kRoutes] = {HostileReceiver::count(6),
                               {29, {'B', 'A', 'Y', 0}},
                               {30, Bytes(53)},
                               {30, point},
                               {98, short_link},
                               {98, link},
                               {29, {'N', 'O', ' ', 'N', 'U', 'L'}},
                               HostileReceiver::closing(kRoutes)};
  EXPECT_TRUE(download(Kind::Routes));
  ASSERT_EQ(items().route_count(), 1);
  EXPECT_EQ(items().route(0).header->comment, "BAY");
  ASSERT_EQ(items().route(0).points.size(), 1U);
  EXPECT_EQ(items().route(0).points[0].route_link_ident, "ON");
  EXPECT_TRUE(was_said(1, "Pid_Rte_Wpt_Data D108: 53 bytes, needs at least 54"));
  EXPECT_TRUE(was_said(1, "Pid_Rte_Link_Data D210: 22 bytes, needs at least 23"));
  EXPECT_TRUE(was_said(1, "Pid_Rte_Hdr D202: 6 bytes, needs at least 7"));
  EXPECT_EQ(front_end.lines[2], "3 records refused");
}

TEST_F(HostileDownload, MoreRoutesThanThereIsRoomForEndTheRoutesAndKeepAHundred) {
  HostileReceiver& receiver = meet();
  receiver.answers[kRoutes] = {HostileReceiver::count(101)};
  for (int route = 0; route <= 100; ++route) {
    Bytes header(21, ' ');
    header[0] = static_cast<std::uint8_t>(route % 100);
    header[1] = static_cast<std::uint8_t>('A' + route % 26);
    receiver.answers[kRoutes].push_back({29, header});
  }
  receiver.answers[kRoutes].push_back(HostileReceiver::closing(kRoutes));
  receiver.answers[kWaypoints] = transfer(kWaypoints, 0, {});
  receiver.answers[kTracks] = transfer(kTracks, 0, {});
  receiver.answers[kProximity] = transfer(kProximity, 1, {{19, *simulators::encode_waypoint(108, place("P"))}});
  EXPECT_FALSE(download(Kind::All));
  EXPECT_EQ(items().route_count(), 100);
  EXPECT_EQ(items().proximity_count(), 1);
  EXPECT_THAT(front_end.boxes, ElementsAre(testing::Pair("RouteError", "Route Buffer Full")));
  expect_an_end(receiver, 20);
}

}  // namespace

// The almanac comes in records that do not say which satellite they are of, from receivers that may run ahead: it
// arrives whole, or it is said that it did not.
#include "simulators/garmin_records.h"
#include "tests/support/hostile_receiver.h"
#include "tests/support/transfer_scenario.h"

namespace {

using garmin::Kind;
using simulators::Fault;
using simulators::GarminOptions;
using simulators::Packet;
using support::HostileReceiver;
using support::ObservedGarmin;
using testing::IsEmpty;

constexpr int kAlmanac = 1, kWaypoints = 7;  // commands and closing codes
constexpr int kFirstRecord = 4;              // after product data, capability array and count

// A satellite as D500 has it, told by its clock offset, the PRN number.
Packet satellite(int prn) {
  const auto number = static_cast<float>(prn);
  base::ByteWriter out;
  out.i16(92).f32(405504).f32(number).f32(0).f32(0.01F).f32(5153.5F).f32(1).f32(2).f32(3).f32(-8e-9F).f32(0.96F);
  return {31, out.result()};
}
Packet unknown_satellite() { return {31, base::ByteWriter().i16(-1).text("", 40).result()}; }
// Satellites 5, 6 and 32 are not known.
HostileReceiver::Packets satellites() {
  HostileReceiver::Packets packets;
  for (int prn = 1; prn <= 32; ++prn)
    packets.push_back(prn == 5 || prn == 6 || prn == 32 ? unknown_satellite() : satellite(prn));
  return packets;
}

class GarminAlmanac : public support::TransferScenario {
 protected:
  HostileReceiver& meet(HostileReceiver::Packets records, int announced = 32,
                        std::string_view protocols = "L001 A010 A100 D108 A500 D500") {
    clock.now = {};
    HostileReceiver& receiver = attach(std::make_unique<HostileReceiver>(clock));
    receiver.answers[HostileReceiver::kIdentification] = {HostileReceiver::product(128, 250),
                                                          HostileReceiver::array(protocols)};
    records.insert(records.begin(), HostileReceiver::count(announced));
    records.push_back(HostileReceiver::closing(kAlmanac));
    receiver.answers[kAlmanac] = std::move(records);
    return receiver;
  }
  HostileReceiver& meet_hasty(HostileReceiver::Packets records, int announced = 32) {
    HostileReceiver& receiver = meet(std::move(records), announced);
    receiver.is_hasty = true;
    // It takes the further acknowledgements for some of its closing packet.
    for (int i = 0; i < 25; ++i) receiver.answers[kAlmanac].push_back(HostileReceiver::closing(kAlmanac));
    return receiver;
  }
  static int times_asked(const HostileReceiver& receiver) {
    return static_cast<int>(std::ranges::count_if(receiver.heard, [](const Packet& packet) {
      return packet.id == 10 && packet.data == base::Bytes{kAlmanac, 0};
    }));
  }
  // That satellites 1 to the last one, and no others, are there, each in its own place.
  void expect_satellites(int last) {
    for (int prn = 1; prn <= 32; ++prn) {
      const auto& entry = items().almanac().satellites[static_cast<std::size_t>(prn) - 1];
      const bool is_known = prn <= last && prn != 5 && prn != 6 && prn != 32;
      ASSERT_EQ(entry.has_value(), is_known) << prn;
      if (entry) {
        EXPECT_EQ(entry->af0, static_cast<float>(prn));
      }
    }
  }
};

TEST_F(GarminAlmanac, WhatTheReceiverHoldsArrivesAndSurvivesItsFile) {
  for (const bool tells_health : {true, false}) {
    simulators::SimulatedData data = simulators::believable_weekend();
    data.almanac[0]->week = 2358;
    GarminOptions options;
    options.protocols = std::string("L001 A010 A100 D100 A500 ") + (tells_health ? "D501" : "D500");
    ObservedGarmin& receiver = simulate(data, options);
    ASSERT_TRUE(download(Kind::Almanac));
    for (std::size_t i = 0; i < 32; ++i) {
      const auto& entry = items().almanac().satellites[i];
      const auto& held = data.almanac[i];
      ASSERT_EQ(entry.has_value(), held.has_value()) << i;
      if (!entry) continue;
      EXPECT_EQ(entry->week, held->week);
      EXPECT_EQ(entry->time_of_applicability, held->time_of_applicability);
      EXPECT_EQ(entry->af1, held->af1);
      EXPECT_EQ(entry->mean_anomaly, held->mean_anomaly);
      EXPECT_EQ(entry->inclination, held->inclination);
      EXPECT_EQ(entry->health, tells_health ? std::optional(held->health) : std::nullopt);
    }
    EXPECT_EQ(front_end.lines[3], "Almanac download completed");
    EXPECT_EQ(front_end.lines[4], "");
    EXPECT_TRUE(was_said(4, "Reading Sat # 32"));
    EXPECT_THAT(front_end.boxes, IsEmpty());
    EXPECT_EQ(receiver.sent.back(), (base::Bytes{0x10, 0x0A, 0x02, 0x00, 0x00, 0xF4, 0x10, 0x03}));  // abort

    const store::Almanac downloaded = items().almanac();
    ASSERT_TRUE(save("a.alm"));
    ASSERT_TRUE(reread("a.alm"));
    EXPECT_EQ(items().almanac().satellites, downloaded.satellites);
    items().clear_all();
    ASSERT_TRUE(download(Kind::All));
    EXPECT_TRUE(items().almanac().empty());
  }
}

TEST_F(GarminAlmanac, EachRecordIsAskedForByAnAcknowledgementAheadOfIt) {
  const HostileReceiver& receiver = meet(satellites());
  ASSERT_TRUE(download(Kind::Almanac));
  const auto acknowledgements = std::ranges::count_if(receiver.heard, [](const Packet& packet) {
    return packet.id == 6 && packet.data == base::Bytes{31, 0};
  });
  EXPECT_EQ(acknowledgements, 64);
  expect_satellites(32);
}

TEST_F(GarminAlmanac, ADamagedPacketOfAReceiverThatRunsAheadMovesNoSatelliteToAnother) {
  for (int packet = 0; packet <= 33; ++packet) {  // the count, 32 records, the closing packet
    SCOPED_TRACE(packet);
    HostileReceiver& receiver = meet_hasty(satellites());
    receiver.damaged_packet = packet;
    receiver.damages_left = 1;
    EXPECT_TRUE(download(Kind::Almanac));
    EXPECT_EQ(times_asked(receiver), packet >= 1 && packet <= 32 ? 2 : 1);
    expect_satellites(32);
    EXPECT_EQ(front_end.lines[3], "Almanac download completed");
    EXPECT_THAT(front_end.boxes, IsEmpty());
  }
}

TEST_F(GarminAlmanac, WhatCameBeforeTheDamageIsKeptWhenItComesDamagedEveryTime) {
  for (const int packet : {1, 8, 32}) {
    SCOPED_TRACE(packet);
    HostileReceiver& receiver = meet_hasty(satellites());
    receiver.damaged_packet = packet;
    items().set_almanac({});
    EXPECT_FALSE(download(Kind::Almanac));
    EXPECT_EQ(times_asked(receiver), 3);
    expect_satellites(packet - 1);
    EXPECT_EQ(front_end.lines[1], packet == 1 ? "The almanac came damaged 3 times: none of it is kept."
                                              : base::format_text("The almanac came damaged 3 times: "
                                                                  "satellites 1 to %d are kept.",
                                                                  packet - 1));
    EXPECT_NE(front_end.lines[3], "Almanac download completed");
    EXPECT_FALSE(session->flags.PortOpen);
  }
}

TEST_F(GarminAlmanac, WhereRecordsAreMissingOrTooManyNothingIsCertain) {
  HostileReceiver::Packets fewer = satellites(), more = satellites();
  fewer.erase(fewer.begin() + 9);
  more.insert(more.begin() + 4, unknown_satellite());
  for (const HostileReceiver::Packets& records : {fewer, more}) {
    HostileReceiver& receiver = meet_hasty(records);
    EXPECT_FALSE(download(Kind::Almanac));
    EXPECT_EQ(times_asked(receiver), 3);
    EXPECT_TRUE(items().almanac().empty());
    EXPECT_EQ(front_end.lines[1], "The almanac came damaged 3 times: none of it is kept.");
  }
}

TEST_F(GarminAlmanac, ASatelliteThatComesTwiceIsStoredOnce) {
  HostileReceiver::Packets records = satellites();
  records.insert(records.begin() + 9, satellite(9));
  const HostileReceiver& receiver = meet_hasty(records);
  EXPECT_TRUE(download(Kind::Almanac));
  EXPECT_EQ(times_asked(receiver), 1);
  expect_satellites(32);
}

TEST_F(GarminAlmanac, TheNextDownloadIsWholeWhateverIsLeftOfTheOneBefore) {
  for (const int stop_at : {0, 1, 3, 20}) {  // 0: not stopped
    SCOPED_TRACE(stop_at);
    HostileReceiver& receiver = meet_hasty(satellites());
    const Packet waypoint{35, *simulators::encode_waypoint(108, simulators::believable_weekend().waypoints[0])};
    receiver.answers[kWaypoints] = {HostileReceiver::count(1), waypoint, HostileReceiver::closing(kWaypoints)};
    if (stop_at > 0) front_end.esc = [&] { return items().almanac().count() == stop_at; };
    EXPECT_EQ(download(Kind::Almanac), stop_at == 0);
    front_end.esc = {};
    EXPECT_EQ(items().almanac().count(), stop_at == 0 ? 29 : stop_at);
    EXPECT_TRUE(download(Kind::Waypoints));
    EXPECT_EQ(items().waypoint_count(), 1);
    EXPECT_TRUE(download(Kind::Almanac));
    expect_satellites(32);
    EXPECT_THAT(front_end.boxes, IsEmpty());
  }
}

TEST_F(GarminAlmanac, ARecordOfTheWrongLengthOrTooManyIsRefusedAndTheOthersStayInTheirPlaces) {
  HostileReceiver::Packets records = satellites();
  records[2].data.pop_back();
  records.push_back(satellite(33));
  meet(records, 33);
  EXPECT_FALSE(download(Kind::Almanac));  // one of the 32 is missing
  EXPECT_FALSE(items().almanac().satellites[2]);
  EXPECT_EQ(items().almanac().satellites[3]->af0, 4);
  EXPECT_TRUE(was_said(1, "Pid_Almanac_Data D500: 41 bytes instead of 42: record refused"));
  EXPECT_EQ(front_end.lines[1], "Pid_Almanac_Data: there is no satellite 33: record refused");
  EXPECT_EQ(front_end.lines[2], "2 records refused");
}

TEST_F(GarminAlmanac, WhatAReceiverDoesNotHaveIsNotAskedFor) {
  struct Case {
    const char* protocols;
    const char* said;
  };
  for (const Case& c : {Case{"L001 A010 A100 D108", "Almanac not supported."},
                        Case{"L001 A010 A100 D108 A500 D550", "Almanac data record D550 not implemented"},
                        Case{"L001 A010 A100 D108 A500 D551", "Almanac data record D551 not implemented"}}) {
    const HostileReceiver& receiver = meet(satellites(), 32, c.protocols);
    EXPECT_FALSE(download(Kind::Almanac));
    EXPECT_EQ(front_end.lines[1], c.said);
    EXPECT_EQ(times_asked(receiver), 0);
    EXPECT_EQ(front_end.lines.count(3), 0U);
  }
}

TEST_F(GarminAlmanac, AnEmptyOneIsToldAndTheOldOneIsGone) {
  meet({}, 0);
  store::Almanac old;
  old.satellites[3] = store::AlmanacEntry{};
  items().set_almanac(old);
  EXPECT_TRUE(download(Kind::Almanac));
  EXPECT_EQ(front_end.lines[4], "GPS: No almanac records to send");
  EXPECT_EQ(front_end.lines[3], "Almanac download completed");
  EXPECT_TRUE(items().almanac().empty());

  HostileReceiver& receiver = meet(satellites());
  receiver.answers[kAlmanac].back() = HostileReceiver::closing(kWaypoints);
  EXPECT_TRUE(download(Kind::Almanac));
  EXPECT_EQ(front_end.lines[4], "No Almanac EOF received");
  expect_satellites(32);
}

TEST_F(GarminAlmanac, ALineThatDisturbsAnyPacketDoesNoHarm) {
  const simulators::SimulatedData weekend = simulators::believable_weekend();
  simulate(weekend);
  ASSERT_TRUE(download(Kind::Almanac));
  const store::Almanac whole = items().almanac();
  ASSERT_EQ(whole.count(), 28);
  for (const Fault::Kind kind : {Fault::Kind::BadChecksum, Fault::Kind::Noise, Fault::Kind::DropAck}) {
    for (int packet = 1; packet <= kFirstRecord + 32; ++packet) {
      SCOPED_TRACE(base::format_text("%d at %d", static_cast<int>(kind), packet));
      GarminOptions options;
      options.faults = {{kind, packet}};
      simulate(weekend, options);
      EXPECT_TRUE(download(Kind::Almanac));
      EXPECT_EQ(items().almanac().satellites, whole.satellites);
      EXPECT_EQ(front_end.lines[3], "Almanac download completed");
      EXPECT_THAT(front_end.boxes, IsEmpty());
      EXPECT_LT(elapsed, 6.0);
    }
  }
}

}  // namespace

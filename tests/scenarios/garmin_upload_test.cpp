// What goes up to a receiver is what it, and the next download, has then; and nothing is lost in silence on the way.
#include "garmin/product_table.h"
#include "tests/support/hostile_receiver.h"
#include "tests/support/rich_data.h"
#include "tests/support/scripted_device.h"
#include "tests/support/transfer_scenario.h"

namespace {

using garmin::Kind;
using simulators::Fault;
using simulators::GarminOptions;
using simulators::Packet;
using simulators::SimulatedData;
using support::HostileReceiver;
using support::ObservedGarmin;

constexpr int kUploadAll = 40038, kUploadWaypoints = 40039, kUploadTracks = 40040, kUploadRoutes = 40044,
              kUploadProximity = 40045, kUploadAlmanac = 40046;

// The short weekend of a receiver that has every route point among its waypoints, as receivers do.
SimulatedData complete_weekend() {
  SimulatedData data = support::short_weekend();
  for (const simulators::SimRoute& route : data.routes)
    for (const simulators::SimWaypoint& point : route.points)
      if (std::ranges::find(data.waypoints, point.ident, &simulators::SimWaypoint::ident) == data.waypoints.end())
        data.waypoints.push_back(point);
  return data;
}

// Data that the stores hold to the last byte: comments of 40 letters, and every track point with its time.
SimulatedData rich_data() {
  SimulatedData data = support::rich_data();
  for (auto* waypoints : {&data.waypoints, &data.proximity, &data.routes[0].points})
    for (simulators::SimWaypoint& waypoint : *waypoints)
      waypoint.comment.resize(std::min<std::size_t>(40, waypoint.comment.size()));
  data.tracks[0].points[2].time = 360401520;
  return data;
}

class GarminUpload : public support::TransferScenario {
 protected:
  GarminUpload() { removes_exact_duplicates = true; }

  // A new session at a new receiver, with what the last one held.
  template <typename Start>
  auto& with_items_kept(Start start_again) {
    const store::ItemStore::Contents contents = items().contents();
    auto& device = start_again();
    session->settings.SA_SortAfterInput = 0;
    items().restore(contents);
    return device;
  }
  ObservedGarmin& empty_receiver(const GarminOptions& options = {}) {
    return with_items_kept([&]() -> ObservedGarmin& { return simulate({}, options); });
  }
  ObservedGarmin& full_receiver(const SimulatedData& data, const GarminOptions& options = {}) {
    ObservedGarmin& device = simulate(data, options);
    session->settings.SA_SortAfterInput = 0;
    return device;
  }

  // The records of every kind that the receiver has, as they come over the line.
  std::vector<std::string> records_of(ObservedGarmin& device, bool almanac_too = false) {
    items().clear_all();
    device.packets.clear();
    (void)download(Kind::All);
    if (almanac_too) (void)download(Kind::Almanac);
    std::vector<std::string> records;
    for (const Packet& packet : device.packets) {
      constexpr std::array<std::uint8_t, 12> kRecordIds{19, 29, 30, 31, 34, 35, 98, 99, 37, 39, 43, 4};
      if (std::ranges::find(kRecordIds, packet.id) == kRecordIds.end() || packet.data.size() == 2) continue;  // a count
      std::string text = base::format_text("%d:", packet.id);
      for (const std::uint8_t byte : packet.data) text += base::format_text(" %02X", byte);
      records.push_back(text);
    }
    return records;
  }
  // Moves all from one receiver to another of the same kind, and compares what they have.
  void expect_same_after_upload(const SimulatedData& data, const GarminOptions& options) {
    const std::vector<std::string> before = records_of(full_receiver(data, options), true);
    ASSERT_FALSE(before.empty());
    ObservedGarmin& other = empty_receiver(options);
    EXPECT_TRUE(upload(kUploadAll)) << front_end.lines[1];
    if (!items().almanac().empty()) {
      EXPECT_TRUE(upload(kUploadAlmanac)) << front_end.lines[1];
    }
    EXPECT_THAT(front_end.boxes, testing::IsEmpty());
    EXPECT_EQ(records_of(other, true), before);
  }
};

TEST_F(GarminUpload, EveryProductOfTheTableHasAfterwardsWhatTheOneBeforeItHad) {
  for (const garmin::ProductRow& row : garmin::kProducts) {
    if (row.link == 2) continue;
    GarminOptions options;
    options.product_id = row.product_id;
    options.software_version =
        static_cast<std::int16_t>(row.version_limit < 0 ? -row.version_limit - 1 : row.version_limit);
    SCOPED_TRACE(base::format_text("product %d version %d", options.product_id, options.software_version));
    expect_same_after_upload(complete_weekend(), options);
    expect_same_after_upload(rich_data(), options);
  }
}

TEST_F(GarminUpload, SoHasEveryReceiverThatSaysWhatItSpeaks) {
  for (const char* protocols : {
           "P000 L001 A010 A100 D108 A201 D202 D108 D210 A301 D310 D301 A400 D108 A500 D501",
           "P000 L001 A010 A100 D109 A201 D202 D109 D210 A301 D312 D302 A400 D109 A500 D500",
           "P000 L001 A010 A100 D110 A201 D201 D110 D210 A301 D310 D300 A400 D110 A500 D501",
           "P000 L001 A010 A100 D105 A200 D202 D106 A300 D300 A500 D500",
           "P000 L001 A011 A100 D107 A200 D200 D107 A300 D301 A400 D450",
       }) {
    SCOPED_TRACE(protocols);
    GarminOptions options;
    options.protocols = protocols;
    expect_same_after_upload(complete_weekend(), options);
    expect_same_after_upload(rich_data(), options);
  }
}

TEST_F(GarminUpload, AReceiverOfTheOtherLinkTakesRoutesAndIsSentNoWaypoints) {
  GarminOptions options;
  options.product_id = 20;
  full_receiver(complete_weekend(), options);
  (void)download(Kind::All);
  ObservedGarmin& other = empty_receiver(options);
  EXPECT_FALSE(upload(kUploadWaypoints));
  EXPECT_TRUE(was_said(1, "Error 141, aborting..."));
  EXPECT_TRUE(upload(kUploadRoutes)) << front_end.lines[1];
  EXPECT_FALSE(upload(kUploadProximity));
  EXPECT_EQ(front_end.lines[1], "Nothing to upload: no proximity waypoints are selected.");
  EXPECT_THAT(records_of(other), testing::SizeIs(12));  // three routes of three points
}

TEST_F(GarminUpload, LinesTellWhatIsSentWhatWasTakenAndUnderWhichNames) {
  full_receiver(complete_weekend());
  ASSERT_TRUE(download(Kind::All));
  empty_receiver();
  ASSERT_TRUE(upload(kUploadAll));
  EXPECT_TRUE(was_said(1, "P00000 of 2"));
  EXPECT_TRUE(was_said(2, "P00002"));
  EXPECT_TRUE(was_said(2, "W00009"));
  EXPECT_TRUE(was_said(1, "R001"));
  EXPECT_TRUE(was_said(2, "RW03"));
  EXPECT_TRUE(was_said(1, "T00000 of 00012"));
  EXPECT_TRUE(was_said(2, "T00010"));
  EXPECT_TRUE(was_said(5, "9 sent, 9 acknowledged, 0 refused"));
  EXPECT_EQ(front_end.lines[5], "12 sent, 12 acknowledged, 0 refused");
  EXPECT_EQ(front_end.lines[3], "Proximity upload completed");
  EXPECT_EQ(front_end.lines[4], "Waypoints upload completed");
  EXPECT_EQ(front_end.lines[7], "Routes upload completed");
  EXPECT_EQ(front_end.lines[8], "Tracks upload completed");
  EXPECT_EQ(front_end.lines.count(9), 0U);
  EXPECT_EQ(front_end.progress_range, 0);

  items().clear_all();
  for (const char* ident : {"Caf\xE9 one", "Caf\xE9 oneway", "CAFE-O"}) {
    items().start_item();
    items().CurrentItem.ident = ident;
    items().CurrentItem.position = {54, 10};
    ASSERT_EQ(items().push_waypoint(0), 0);
  }
  GarminOptions old;
  old.product_id = 31;
  ObservedGarmin& other = empty_receiver(old);
  ASSERT_TRUE(upload(kUploadWaypoints));
  EXPECT_EQ(front_end.lines[9], "2 names were changed for the receiver");
  (void)records_of(other);
  EXPECT_EQ(items().waypoint_count(), 3);
}

TEST_F(GarminUpload, OnlyWhatIsSelectedAndInUseIsSent) {
  full_receiver(complete_weekend());
  ASSERT_TRUE(download(Kind::All));
  for (const char kind : {'W', 'R', 'T', 'P'}) items().select_all(kind, false);
  ObservedGarmin& other = empty_receiver();
  EXPECT_FALSE(session->garmin_uploads.upload(kUploadAll));
  EXPECT_EQ(front_end.lines[1], "Nothing to upload: no waypoints, routes, tracks or proximity waypoints are selected.");
  items().select('W', 2, true);
  items().select('T', 3, true);  // in the middle of the first log
  items().select('T', 7, true);  // in the second
  const std::string second = std::string(items().waypoint(2).ident);
  EXPECT_TRUE(session->garmin_uploads.upload(kUploadAll));
  (void)records_of(other);
  ASSERT_EQ(items().waypoint_count(), 1);
  EXPECT_EQ(items().waypoint(1).ident, second);
  ASSERT_EQ(items().track_point_count(), 2);
  EXPECT_EQ(items().track_point(1).ident, "SATURDAY FELLS");  // of the log's first point, which was left out
  EXPECT_EQ(items().track_point(2).ident, "SUNDAY CANOE");
  EXPECT_EQ(items().route_count(), 0);
}

TEST_F(GarminUpload, WhatTheReceiverHasNoPlaceForIsSaidWithTheReasons) {
  full_receiver(support::short_weekend());
  ASSERT_TRUE(download(Kind::All));
  items().clear_waypoints();
  GarminOptions oldest;
  oldest.product_id = 7;
  empty_receiver(oldest);
  EXPECT_FALSE(upload(kUploadAll));  // neither of the two kinds
  EXPECT_EQ(front_end.lines[1], "Proximity waypoints are not supported in this GPS unit. Tracks not supported.");
  EXPECT_EQ(front_end.lines.count(9), 0U);
}

TEST_F(GarminUpload, CommandsThatAreNoUploadsOfGarminReceiversAreProgramErrors) {
  for (const int id : {40042, 40043, 40187, 40188, 40059, 40028, 0}) {
    ObservedGarmin& device = simulate(complete_weekend());
    EXPECT_FALSE(upload(id));
    EXPECT_THAT(front_end.boxes,
                testing::ElementsAre(testing::Pair("Program Error", "Program error A143. Please report to author")));
    EXPECT_TRUE(device.sent.empty());
  }
  for (const int id : {40150, 40156}) EXPECT_EQ(garmin::upload_kind(id), Kind::Tracks);
}

// A receiver that takes what a test lets it take.
class ChoosyReceiver : public support::TransferScenario {
 protected:
  HostileReceiver& choosy(const char* protocols = "P000 L001 A010 A100 D108 A201 D202 D108 D210 A301 D310 D301") {
    HostileReceiver& device = attach(std::make_unique<HostileReceiver>(clock));
    device.answers[HostileReceiver::kIdentification] = {HostileReceiver::product(128, 250),
                                                        HostileReceiver::array(protocols)};
    return device;
  }
  void push_waypoints(int count) {
    for (int i = 1; i <= count; ++i) {
      items().start_item();
      items().CurrentItem.ident = base::format_text("WPT%d", i);
      items().CurrentItem.position = {54 + i * 1e-4, 10};
      ASSERT_EQ(items().push_waypoint(0), 0);
    }
  }
  static int count_of(const HostileReceiver& device, std::uint8_t id) {
    return static_cast<int>(std::ranges::count(device.heard, id, &Packet::id));
  }
};

TEST_F(ChoosyReceiver, WithARefusedRouteHeaderItsPointsAreNotSentIntoTheRouteBefore) {
  HostileReceiver& device = choosy();
  for (const int number : {1, 2}) {
    items().start_route(static_cast<std::uint32_t>(number), "", number == 1 ? "FIRST" : "SECOND");
    ASSERT_EQ(items().push_route(true), 0);
    for (int i = 0; i < 2; ++i) {
      items().start_item();
      items().CurrentItem.ident = base::format_text("R%dP%d", number, i);
      items().CurrentItem.position = {54.0 + i, 10.0 + number};
      ASSERT_EQ(items().push_route(true), 0);
    }
  }
  device.refuses = [](const Packet& packet) {
    return packet.id == 29 && std::string(packet.data.begin(), packet.data.end()).starts_with("SECOND");
  };
  EXPECT_FALSE(upload(kUploadRoutes));
  EXPECT_EQ(count_of(device, 30), 2);
  EXPECT_EQ(count_of(device, 98), 1);
  EXPECT_EQ(front_end.lines[5], "5 sent, 4 acknowledged, 4 refused");
  EXPECT_EQ(front_end.lines[6], "SECOND, R2P0, link to RW02, R2P1");
}

TEST_F(ChoosyReceiver, AReceiverThatRefusesTheCountIsSentNoRecords) {
  HostileReceiver& device = choosy();
  push_waypoints(3);
  device.refuses = [](const Packet& packet) { return packet.id == 27; };
  EXPECT_FALSE(upload(kUploadWaypoints));
  EXPECT_EQ(count_of(device, 27), 4);
  EXPECT_EQ(count_of(device, 35), 0);
  EXPECT_EQ(front_end.lines[5], "0 sent, 0 acknowledged, 0 refused");
  EXPECT_TRUE(was_said(1, "does not take"));
  EXPECT_EQ(front_end.lines.count(3), 0U);
}

TEST_F(ChoosyReceiver, MoreWaypointsThanACountCanSayBecome750) {
  for (const auto& [count, announced] : {std::pair(65535, 65535), std::pair(65536, 750)}) {
    HostileReceiver& device = choosy();
    session->settings.SA_SortAfterInput = 0;
    push_waypoints(count);
    device.refuses = [](const Packet& packet) { return packet.id == 35; };
    front_end.esc = [&] { return count_of(device, 35) > 0; };  // seen enough
    EXPECT_FALSE(upload(kUploadWaypoints));
    const auto opener = std::ranges::find(device.heard, std::uint8_t{27}, &Packet::id);
    ASSERT_NE(opener, device.heard.end());
    EXPECT_EQ(opener->data[0] | opener->data[1] << 8, announced);
    EXPECT_EQ(was_said(3, "Too many waypoints for a Garmin GPS receiver"), count > 65535);
    EXPECT_EQ(was_said(4, "  Sending first 750"), count > 65535);
  }
}

// A receiver on a slow or disturbed line: what it answers to a packet of an upload, and when, a test decides.
class SlowReceiver : public ChoosyReceiver {
 protected:
  using Answers = std::function<void(const Packet& packet)>;
  void meet(Answers answers) {
    device_ = &attach(std::make_unique<support::ScriptedDevice>(clock));
    device_->on_sent = [this, answers](const base::Bytes& frame) {
      std::optional<simulators::PacketFinder::Frame> heard;
      for (const std::uint8_t byte : frame)
        if (auto found = finder_.feed(byte)) heard = std::move(found);
      if (!heard || heard->packet.id == 6 || heard->packet.id == 21) return;
      if (heard->packet.id != 10 && heard->packet.id != 254) return answers(heard->packet);
      reply(heard->packet.id);
      if (heard->packet.id == 254) device_->queue(simulators::frame_packet(HostileReceiver::product(31, 250)));
    };
  }
  void reply(std::uint8_t id, std::chrono::milliseconds after = {}, std::uint8_t answer = 6, bool damaged = false) {
    device_->queue(simulators::frame_packet({answer, {id, 0}}, damaged), after);
  }
  static bool is_waypoint(const Packet& packet, std::string_view ident) {
    return packet.id == 35 && std::string(packet.data.begin(), packet.data.end()).starts_with(ident);
  }

  support::ScriptedDevice* device_ = nullptr;

 private:
  simulators::PacketFinder finder_;
};

TEST_F(SlowReceiver, ALateAnswerIsNotTakenForThatToTheNextRecord) {
  std::vector<std::string> taken;
  int second_tries = 0;
  meet([&](const Packet& packet) {
    if (packet.id != 35) return reply(packet.id);
    const std::string ident(packet.data.begin(), packet.data.begin() + 4);
    if (ident == "WPT2" && ++second_tries <= 2) return reply(35, {}, 21);
    taken.push_back(ident);
    // The first answer comes after the record has been sent again.
    reply(35, std::chrono::milliseconds(ident == "WPT1" && taken.size() == 1 ? 3400 : 0));
  });
  push_waypoints(3);
  EXPECT_TRUE(upload(kUploadWaypoints)) << front_end.lines[1];
  EXPECT_THAT(taken, testing::ElementsAre("WPT1", "WPT1", "WPT2", "WPT3"));
  EXPECT_EQ(second_tries, 3);
  EXPECT_EQ(front_end.lines[5], "3 sent, 3 acknowledged, 0 refused");
}

TEST_F(SlowReceiver, ARecordWhoseAnswerCameDamagedIsSentAgain) {
  int answers = 0;
  meet([&](const Packet& packet) { reply(packet.id, {}, 6, is_waypoint(packet, "WPT2") && ++answers == 1); });
  push_waypoints(3);
  EXPECT_TRUE(upload(kUploadWaypoints)) << front_end.lines[1];
  EXPECT_EQ(answers, 2);
  EXPECT_LT(elapsed, 12);
}

TEST_F(SlowReceiver, AnswersToOtherPacketsAndDataThatNobodyAskedForAreNoAnswers) {
  int tries = 0;
  meet([&](const Packet& packet) {
    if (is_waypoint(packet, "WPT2") && ++tries == 1) {
      reply(99);
      for (int second = 1; second < 5; ++second)
        device_->queue(simulators::frame_packet({51, base::Bytes(64)}), std::chrono::seconds(second));
      return;
    }
    reply(packet.id);
  });
  push_waypoints(3);
  EXPECT_TRUE(upload(kUploadWaypoints)) << front_end.lines[1];
  EXPECT_EQ(tries, 2);
  EXPECT_LT(elapsed, 10);
}

class FaultyUpload : public GarminUpload {
 protected:
  void fill() {
    full_receiver(complete_weekend());
    ASSERT_TRUE(download(Kind::All));
  }
  // The number of the last packet of an upload of all kinds; product data and array are 1 and 2.
  int last_packet() {
    ObservedGarmin& device = empty_receiver();
    EXPECT_TRUE(upload(kUploadAll));
    constexpr std::array<std::uint8_t, 8> kUploadIds{12, 19, 27, 29, 30, 34, 35, 98};
    int packets = 2;
    for (const base::Bytes& frame : device.sent)
      if (frame[1] == 99 || std::ranges::find(kUploadIds, frame[1]) != kUploadIds.end()) ++packets;
    return packets;
  }
  ObservedGarmin& faulty(Fault::Kind kind, int packet) {
    GarminOptions options;
    options.faults = {{kind, packet}};
    return empty_receiver(options);
  }
};

TEST_F(FaultyUpload, LostAnswersDamageAndNoiseAtAnyPacketDoNoHarm) {
  const std::vector<std::string> whole = records_of(full_receiver(complete_weekend()));
  fill();
  const int last = last_packet();
  for (const Fault::Kind kind : {Fault::Kind::DropAck, Fault::Kind::BadChecksum, Fault::Kind::Noise}) {
    for (int packet = 1; packet <= last; ++packet) {
      SCOPED_TRACE(base::format_text("fault %d at packet %d", static_cast<int>(kind), packet));
      ObservedGarmin& device = faulty(kind, packet);
      const store::ItemStore::Contents contents = items().contents();
      EXPECT_TRUE(upload(kUploadAll)) << front_end.lines[1] << front_end.lines[2];
      EXPECT_LT(elapsed, 4.5);
      EXPECT_THAT(front_end.boxes, testing::IsEmpty());
      EXPECT_EQ(records_of(device), whole);
      items().restore(contents);
    }
  }
}

TEST_F(FaultyUpload, SilenceAndAPulledPlugEndItInTimeAndTheNextUploadIsComplete) {
  fill();
  const int last = last_packet();
  for (const Fault::Kind kind : {Fault::Kind::Silent, Fault::Kind::Unplug}) {
    for (int packet = 3; packet <= last; ++packet) {
      SCOPED_TRACE(base::format_text("fault %d at packet %d", static_cast<int>(kind), packet));
      faulty(kind, packet);
      EXPECT_FALSE(upload(kUploadAll));
      EXPECT_LE(elapsed, 8.0);
      EXPECT_TRUE(was_said(2, "Serial Port Timeout during Upload") || was_said(2, "Serial Port Timeout in Upload"));
      EXPECT_FALSE(session->flags.PortOpen);
      EXPECT_EQ(front_end.status[3], " ");
      EXPECT_EQ(front_end.progress_range, 0);
      EXPECT_EQ(was_said(3, "vanished"), kind == Fault::Kind::Unplug);
    }
  }
  empty_receiver();
  EXPECT_TRUE(upload(kUploadAll));
}

TEST_F(FaultyUpload, EscAtAnyPacketTellsTheReceiverAndClosesThePort) {
  fill();
  constexpr std::size_t kIdentification = 4;  // packets
  ObservedGarmin& undisturbed = empty_receiver();
  ASSERT_TRUE(upload(kUploadAll));
  const std::size_t all = undisturbed.sent.size();
  for (std::size_t after = kIdentification + 1; after <= all; after += 4) {
    SCOPED_TRACE(after);
    ObservedGarmin& device = empty_receiver();
    front_end.esc = [&] { return device.sent.size() >= after; };
    EXPECT_FALSE(upload(kUploadAll));
    EXPECT_TRUE(was_said(2, "Operation Aborted"));
    EXPECT_EQ(device.sent.back(), (base::Bytes{0x10, 0x0A, 0x02, 0x00, 0x00, 0xF4, 0x10, 0x03}));
    EXPECT_FALSE(device.is_open);
    EXPECT_FALSE(session->flags.UserAbort);
  }
  empty_receiver();
  bool pressed = false;
  front_end.esc = [&] { return !pressed && was_said(2, "T00003") && (pressed = true); };
  EXPECT_FALSE(upload(kUploadTracks));
  EXPECT_EQ(front_end.lines[2], "Operator Abort in Track upload");
}

}  // namespace

#include "simulators/garmin_uploads.h"

#include <array>

#include "simulators/garmin_record_shapes.h"
#include "simulators/garmin_records.h"
#include "tests/support/garmin_host.h"
#include "tests/support/rich_data.h"

namespace simulators {
namespace {

using namespace support;
using namespace std::chrono_literals;

constexpr std::string_view kNamedTracks = "L001 A010 A201 D202 D105 D210 A301 D310 D300";

Bytes blanks(std::string_view text, std::size_t size) {
  Bytes bytes(text.begin(), text.end());
  bytes.resize(size, ' ');
  return bytes;
}
Bytes closed(std::string_view text) { return Bytes(text.begin(), text.end()) + Bytes{0}; }
// Records whose place is told by one number.
Bytes d100(std::string_view ident, std::uint8_t place) {
  return blanks(ident, 6) + Bytes{place, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0} + blanks("", 40);
}
Bytes d300(std::uint8_t place) { return {place, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}; }
Bytes d105(std::string_view ident) { return Bytes(10, 0) + closed(ident); }

class GarminUploadTest : public GarminHost {
 protected:
  // That each packet is acknowledged.
  void upload(const std::vector<Packet>& packets) {
    for (const Packet& packet : packets) {
      ASSERT_EQ(say(frame_packet(packet)), ack(packet.id)) << int{packet.id};
    }
  }
  void upload(const std::vector<Packet>& records, std::uint8_t command, int link = 1) {
    const auto size = static_cast<std::uint8_t>(records.size());
    upload({{link_ids(link).records, {size, 0}}});
    upload(records);
    upload({{12, {command, 0}}});
  }
};

TEST_F(GarminUploadTest, AWaypointTakesThePlaceOfTheOneOfItsIdent) {
  make({});
  upload({{35, d100("A", 1)}, {35, d100("B", 2)}}, 7);
  upload({{35, d100("C", 3)}, {35, d100("A", 4)}}, 7);
  EXPECT_EQ(receiver->memory().waypoints,
            (std::vector<Packet>{{35, d100("A", 4)}, {35, d100("B", 2)}, {35, d100("C", 3)}}));
  EXPECT_EQ(say(ask(7)), kCommandTaken + frame(27, {3, 0}));
}

TEST_F(GarminUploadTest, ARouteTakesThePlaceOfTheOneOfItsNumberOrName) {
  make({});
  const Packet one{29, {1}}, two{29, {32}}, a{30, d100("A", 1)}, b{30, d100("B", 2)};
  upload({one, a, b, two, b}, 4);
  upload({one, b}, 4);
  EXPECT_EQ(receiver->memory().routes, (std::vector<Packet>{two, b, one, b}));

  options.protocols = kNamedTracks;
  make({});
  const Packet home{29, closed("HOME")}, out{29, closed("OUT")}, c{30, d105("C")}, link{98, Bytes(21, 0)};
  upload({home, c, link, c, out, c}, 4);
  upload({home, c}, 4);
  EXPECT_EQ(receiver->memory().routes, (std::vector<Packet>{out, c, home, c}));
}

TEST_F(GarminUploadTest, ATrackReplacesTheOneOfItsNameAndWithoutNamesWhateverWasThere) {
  options.protocols = kNamedTracks;
  make({});
  const Packet day{99, Bytes{1, 255} + closed("DAY")}, night{99, Bytes{1, 255} + closed("NIGHT")};
  const Packet first{34, d300(1)}, second{34, d300(2)};
  upload({day, first, second, night, first}, 6);
  upload({day, second}, 6);
  EXPECT_EQ(receiver->memory().tracks, (std::vector<Packet>{night, first, day, second}));

  options.protocols.reset();
  make({}, {}, 77);
  upload({first, first}, 6);
  upload({second}, 6);
  EXPECT_EQ(receiver->memory().tracks, (std::vector<Packet>{second}));
}

TEST_F(GarminUploadTest, AnAlmanacWithoutSatelliteNumbersCountsOnlyWhole) {
  make(rich_data());
  const GarminMemory::Records before = receiver->memory().almanac;
  std::vector<Packet> records;
  for (std::uint8_t prn = 1; prn <= 32; ++prn) records.push_back({31, Bytes{prn, 0} + Bytes(40, 0)});
  upload(std::vector(records.begin(), records.end() - 1), 1);
  EXPECT_EQ(receiver->memory().almanac, before);
  upload(records, 1);
  EXPECT_EQ(receiver->memory().almanac, records);

  make({}, {}, 20);
  const Packet known{4, Bytes{5} + Bytes(42, 0)}, newer{4, Bytes{5, 1} + Bytes(41, 0)};
  upload({known}, 4, 2);
  upload({newer}, 4, 2);
  EXPECT_EQ(receiver->memory().almanac, (std::vector<Packet>{newer}));
}

TEST_F(GarminUploadTest, WhatDoesNotBelongToTheUploadIsRefusedAndTheRestGoesOn) {
  make({});
  const Packet count{27, {3, 0}}, good{35, d100("A", 1)};
  const std::vector<Packet> wrong{
      {35, d100("A", 1) + Bytes{0}},           // too long for D100
      {35, blanks("", 57)},                    // too short
      {35, {}},                                //
      {34, d300(1)},                           // this product has no tracks
      {43, d100("A", 1)},                      // waypoints of the other link
      {19, d100("A", 1) + Bytes{0, 0, 0, 0}},  // no proximity either
      {29, {1}},                               // of another kind than the first record
      {98, Bytes(21, 0)},                      // its routes have no links
      {12, {4, 0}},                            // ends an upload of routes
      {12, {21, 0}},                           // a number of the other command protocol
      {12, {7}},                               //
      {27, {1}},                               //
      {200, {1, 2, 3}},                        //
  };
  EXPECT_EQ(say(frame_packet(good)), nak(35));  // nobody has announced it
  upload({count, good});
  for (const Packet& packet : wrong) {
    SCOPED_TRACE(testing::PrintToString(packet.data) + " as " + std::to_string(packet.id));
    EXPECT_EQ(say(frame_packet(packet)), nak(packet.id));
    EXPECT_EQ(say(frame_packet(packet)), nak(packet.id));
  }
  EXPECT_EQ(receiver->memory().waypoints, (std::vector<Packet>{good}));
  upload({{35, d100("B", 1)}, {35, d100("C", 1)}});
  EXPECT_EQ(say(frame_packet({35, d100("D", 1)})), nak(35));  // one more than announced
  upload({{12, {7, 0}}});
  EXPECT_EQ(receiver->memory().waypoints->size(), 3u);
  EXPECT_EQ(say(frame_packet({200, {1, 2, 3}})), ack(200));  // no upload any more: ignored
}

TEST_F(GarminUploadTest, PointsOfARouteWhoseHeaderWasRefusedDoNotGoToTheRouteBefore) {
  make({});
  const Packet point{30, d100("A", 1)};
  upload({{27, {9, 0}}, {29, {1}}, point});
  EXPECT_EQ(say(frame_packet({29, {2, 2}})), nak(29));
  EXPECT_EQ(say(frame_packet(point)), nak(30));
  upload({{29, {3}}, point, {12, {4, 0}}});
  EXPECT_EQ(receiver->memory().routes, (std::vector<Packet>{{29, {1}}, point, {29, {3}}, point}));
}

TEST_F(GarminUploadTest, ALinkStandsBetweenTwoPoints) {
  options.protocols = kNamedTracks;
  make({});
  const Packet home{29, closed("HOME")}, out{29, closed("OUT")}, point{30, d105("A")}, link{98, Bytes(21, 0)};
  upload({{27, {9, 0}}, home});
  EXPECT_EQ(say(frame_packet(link)), nak(98));
  upload({point, link});
  EXPECT_EQ(say(frame_packet({98, Bytes(20, 0) + closed("B")})), nak(98));
  upload({point, link});
  EXPECT_EQ(say(frame_packet(out)), nak(29));
  upload({out, point, {12, {4, 0}}});
  EXPECT_EQ(receiver->memory().routes, (std::vector<Packet>{home, point, link, point, link, out, point}));
}

TEST_F(GarminUploadTest, AnEndBeforeAllHasComeIsRefusedOnceUnlessSomethingWasRefused) {
  make({});
  const Packet count{27, {2, 0}}, good{35, d100("A", 1)}, end{12, {7, 0}};
  upload({count, good});
  EXPECT_EQ(say(frame_packet(end)), nak(12));
  upload({end});
  upload({count, good});
  EXPECT_EQ(say(frame_packet({35, {}})), nak(35));
  upload({end});
  EXPECT_EQ(receiver->memory().waypoints, (std::vector<Packet>{good}));
}

TEST_F(GarminUploadTest, AnUploadThatBreaksOffKeepsWhatCame) {
  make({});
  const Packet count{27, {9, 0}}, first{35, d100("A", 1)}, second{35, d100("B", 1)}, third{35, d100("C", 1)};
  upload({count, first});
  EXPECT_EQ(say(ask(0)), kCommandTaken);
  EXPECT_EQ(say(frame_packet(second)), nak(35));
  upload({count, second});
  EXPECT_EQ(say(ask(7)), kCommandTaken + frame(27, {2, 0}));
  upload({count, third});
  clock.now += 11s;
  EXPECT_EQ(say(frame_packet({35, d100("D", 1)})), nak(35));
  EXPECT_EQ(receiver->memory().waypoints, (std::vector<Packet>{first, second, third}));
}

// The same point twice: only a receiver that knows what it has lost takes both once.
class FaultyUpload : public GarminUploadTest {
 protected:
  static inline const std::array<Packet, 4> kPackets{Packet{27, {2, 0}}, Packet{34, d300(1)}, Packet{34, d300(1)},
                                                     Packet{12, {6, 0}}};
  static inline const std::vector<Packet> kWhole{{34, d300(1)}, {34, d300(1)}};

  // Uploads up to the N-th packet, which meets the fault, and gives what it is answered.
  Bytes up_to(int packet, Fault::Kind kind) {
    make({}, {{kind, packet}}, 77);
    for (int i = 1; i < packet; ++i) upload({kPackets.at(static_cast<std::size_t>(i - 1))});
    return say(frame_packet(packet_at(packet)));
  }
  static const Packet& packet_at(int packet) { return kPackets.at(static_cast<std::size_t>(packet - 1)); }
  void finish(int after) {
    for (int i = after + 1; i <= 4; ++i) upload({packet_at(i)});
    EXPECT_EQ(receiver->memory().tracks, kWhole);
  }
};

TEST_F(FaultyUpload, APacketThatComesAgainAfterItsFaultIsTakenOnce) {
  for (int packet = 1; packet <= 4; ++packet) {
    const std::uint8_t id = packet_at(packet).id;
    for (const auto& [kind, answer] : {std::pair(Fault::Kind::DropAck, Bytes{}), {Fault::Kind::BadChecksum, nak(id)}}) {
      EXPECT_EQ(up_to(packet, kind), answer) << packet;
      EXPECT_EQ(say(frame_packet(packet_at(packet))), ack(id)) << packet;
      finish(packet);
    }
  }
}

TEST_F(FaultyUpload, RepetitionsAreNotCountedAndWhatIsSentIsCountedOn) {
  make({}, {{Fault::Kind::BadChecksum, 2}, {Fault::Kind::BadChecksum, 3}}, 77);
  upload({packet_at(1)});
  EXPECT_EQ(say(frame_packet(packet_at(2))), nak(34));
  upload({packet_at(2)});
  EXPECT_EQ(say(ask(5)), kCommandTaken + (Bytes{0x10, 14, 8, 9, 9, 0xD1, 7, 1, 0, 46, 40, 0xAA, 0x10, 3}));
}

TEST(HasPossibleValues, NothingLiesBeyondThePolesAndCodesAreThoseOfTheFormat) {
  const auto with = [](Bytes record, std::size_t at, Bytes values) {
    std::ranges::copy(values, record.begin() + static_cast<std::ptrdiff_t>(at));
    return record;
  };
  const Bytes pole{0, 0, 0, 0x40}, beyond{1, 0, 0, 0x40}, south{0, 0, 0, 0xC0}, beyond_south{0xFF, 0xFF, 0xFF, 0xBF};
  const std::vector<std::pair<int, std::size_t>> latitudes{{100, 6}, {105, 0}, {106, 14}, {108, 24}, {110, 24},
                                                           {150, 9}, {155, 6}, {300, 0},  {450, 11}};
  for (const auto& [format, at] : latitudes) {
    const Bytes record = with(Bytes(130, 0), 0, format == 110 ? Bytes{1} : Bytes{});
    EXPECT_TRUE(has_possible_values(format, with(record, at, pole))) << format;
    EXPECT_TRUE(has_possible_values(format, with(record, at, south))) << format;
    EXPECT_FALSE(has_possible_values(format, with(record, at, beyond))) << format;
    EXPECT_FALSE(has_possible_values(format, with(record, at, beyond_south))) << format;
  }
  for (const int format : {103, 107, 403}) {
    EXPECT_TRUE(has_possible_values(format, with(Bytes(65, 0), 59, {2}))) << format;
    EXPECT_TRUE(has_possible_values(format, with(Bytes(65, 0), 59, {0xFF}))) << format;
    EXPECT_FALSE(has_possible_values(format, with(Bytes(65, 0), 59, {3}))) << format;
  }
  EXPECT_FALSE(has_possible_values(108, with(Bytes(60, 0), 2, {3})));
  for (const int format : {109, 110}) {
    EXPECT_TRUE(has_possible_values(format, with(Bytes(70, 0), 0, {1, 0, 0x7F}))) << format;
    EXPECT_FALSE(has_possible_values(format, with(Bytes(70, 0), 0, {0, 0, 0x1F}))) << format;
  }
}

TEST(FillMemory, OfEqualIdentsInTheFormatTheLaterTakesThePlace) {
  SimulatedData data;
  for (const std::string ident : {"HARBOUR", "BUOY", "HARBOUR 2"}) {
    data.waypoints.emplace_back().ident = ident;
    data.waypoints.back().comment = "AT " + ident;
  }
  data.proximity = data.waypoints;
  const GarminMemory memory = fill_memory(
      data, {.waypoint_transfer = 100, .waypoint_data = 100, .proximity_transfer = 400, .proximity_data = 450});
  const Bytes nowhere(12, 0);
  EXPECT_EQ(memory.waypoints, (std::vector<Packet>{{35, blanks("HARBOU", 6) + nowhere + blanks("AT HARBOUR 2", 40)},
                                                   {35, blanks("BUOY", 6) + nowhere + blanks("AT BUOY", 40)}}));
  ASSERT_EQ(memory.proximity->size(), 2u);
  EXPECT_EQ((*memory.proximity)[0].data[0], 0);  // its place
  EXPECT_EQ((*memory.proximity)[1].data[0], 1);
}

TEST(HasShapeOf, ARecordOfAnyOtherLengthIsNone) {
  const SimulatedData data = rich_data();
  for (int format = 100; format <= 450; ++format) {
    const std::optional<Bytes> record = encode_waypoint(format, data.waypoints[0]);
    if (!record) continue;
    EXPECT_TRUE(has_shape_of(format, *record)) << format;
    EXPECT_FALSE(has_shape_of(format, *record + Bytes{0})) << format;
    for (std::size_t size = 0; size < record->size(); ++size) {
      EXPECT_FALSE(has_shape_of(format, std::span(*record).first(size))) << format << ' ' << size;
    }
  }
  EXPECT_TRUE(has_shape_of(202, closed(std::string(50, 'A'))));
  EXPECT_FALSE(has_shape_of(202, closed(std::string(51, 'A'))));
  EXPECT_FALSE(has_shape_of(120, {}));
}

}  // namespace
}  // namespace simulators

#include "garmin/link.h"

#include "garmin/protocol_selection.h"
#include "tests/support/garmin_line.h"

namespace garmin {
namespace {

using namespace std::chrono_literals;
using base::Bytes;

class GarminConversation : public support::GarminLine {
 protected:
  GarminConversation() {
    port.AsyncInit("COM1");
    port.AsyncSet(9600, 8, 0, 0);
  }
};

using GetGarminMessage = GarminConversation;

const Bytes kSendId{0x10, 254, 1, 32, 0xE1, 0x10, 3};

TEST_F(GetGarminMessage, ASilentReceiverIsAskedOnceMoreThenGivenUp) {
  link.sendGarminPacket(Bytes{254, 1, 32}, "Send ID");
  link.getGarminMessage();
  EXPECT_TRUE(flags.ComTimedOut);
  EXPECT_EQ(device.sent, (std::vector<Bytes>{kSendId, kSendId}));
  EXPECT_EQ(front_end.status[3], "COM port timeout: 2");
  EXPECT_GE(clock.now, 6s);
  EXPECT_LT(clock.now, 8s);
}

TEST_F(GetGarminMessage, EveryByteRestartsTheWait) {
  link.sendGarminPacket(Bytes{254, 1, 32}, "Send ID");
  auto after = 0ms;
  for (const std::uint8_t byte : wire(6, {254, 0})) device.queue({byte}, after += 2500ms);
  link.getGarminMessage();
  EXPECT_FALSE(flags.ComTimedOut);
  EXPECT_EQ(link.acknowledge_state(), GarminLink::Acknowledge::Accepted);
  EXPECT_EQ(device.sent.size(), 1u);
}

TEST_F(GetGarminMessage, SevenDamagedPacketsEndTheReceiveAndASecondSuchTimeTheTransfer) {
  const Bytes damaged{0x10, 1, 2, 3, 4, 0x10, 3};
  for (int i = 0; i < 14; ++i) device.queue(damaged);
  link.getGarminMessage();
  EXPECT_FALSE(flags.ComTimedOut);
  EXPECT_EQ(device.sent.size(), 7u);
  link.getGarminMessage();
  EXPECT_TRUE(flags.ComTimedOut);
  const std::pair<std::string, std::string> box{"getGarminMessage", "Too Many NAKS in reading from GPS, aborting"};
  EXPECT_EQ(front_end.boxes, (std::vector{box, box}));
}

TEST_F(GetGarminMessage, ASilenceRightAfterANakRepeatsTheNak) {
  link.sendGarminPacket(Bytes{254, 1, 32}, "Send ID");
  device.queue({0x10, 1, 2, 3, 4, 0x10, 3});
  link.getGarminMessage();
  ASSERT_EQ(device.sent.size(), 3u);
  EXPECT_EQ(device.sent[2], device.sent[1]);
  EXPECT_EQ(device.sent[2][1], 21);
}

TEST_F(GetGarminMessage, APacketWithoutEndIsGivenUp) {
  device.queue(Bytes(5000, 0x41));
  link.getGarminMessage();
  EXPECT_TRUE(flags.ComTimedOut);
  ASSERT_EQ(front_end.boxes.size(), 1u);
  EXPECT_EQ(front_end.boxes[0].second, "GPS communication protocol error: Msg length");
}

TEST_F(GetGarminMessage, EscStopsTheWaitAtOnce) {
  front_end.esc = [&] { return clock.now >= 1s; };
  link.getGarminMessage();
  EXPECT_TRUE(flags.UserAbort);
  EXPECT_EQ(front_end.lines[2], "Operation Aborted");
  EXPECT_LT(clock.now, 1100ms);
}

TEST_F(GetGarminMessage, AcksAreNotAnsweredButNaksAre) {
  device.queue(wire(6, {10, 0}));
  link.getGarminMessage();
  EXPECT_TRUE(device.sent.empty());
  device.queue(wire(21, {10, 0}));
  link.getGarminMessage();
  EXPECT_EQ(link.acknowledge_state(), GarminLink::Acknowledge::Refused);
  ASSERT_EQ(device.sent.size(), 1u);
  EXPECT_EQ(device.sent[0][3], 21);
}

TEST_F(GetGarminMessage, AnUnknownPacketIsReportedAsTheLinkProtocolDemands) {
  device.queue(wire(77, {1}));
  link.getGarminMessage();
  EXPECT_EQ(front_end.lines[4], "Link Protocol Violation, aborting...");
  link.link_protocol = 2;
  device.queue(wire(77, {1}));
  link.getGarminMessage();
  EXPECT_EQ(front_end.lines[4], "Unknown Link Protocol L002, aborting");
  link.link_protocol = 1;
  device.queue(wire(77, {1}));
  link.getGarminMessage();
  EXPECT_EQ(front_end.lines[4], "New Garmin Record ID found: 0x4d (077 dec)");
  front_end.lines.clear();
  link.link_protocol = kNone;
  link.Identifying = true;
  device.queue(wire(77, {1}));
  link.getGarminMessage();
  EXPECT_TRUE(front_end.lines.empty());
}

TEST_F(GetGarminMessage, Packet43IsNeverSent) {
  EXPECT_FALSE(link.sendGarminPacket(Bytes{43, 1, 0}, "Waypoint"));
  EXPECT_EQ(front_end.lines[1], "Error 141, aborting...");
  EXPECT_TRUE(device.sent.empty());
}

class Identification : public GarminConversation {
 protected:
  Identification() {
    device.on_sent = [this](const Bytes& sent) {
      if (sent[1] == 10) device.queue(wire(6, {10, 0}));
      if (sent[1] == 254 && ignored_requests-- <= 0) {
        if (acknowledges) device.queue(wire(6, {254, 0}));
        device.queue(wire(255, product_data));
        if (!array.empty()) device.queue(wire(253, array), array_delay);
      }
    };
  }
  Bytes product(std::uint16_t id, std::int16_t version, std::string_view texts) {
    base::ByteWriter out;
    out.u16(id).i16(version);
    Bytes result = out.result();
    result.insert(result.end(), texts.begin(), texts.end());
    return result;
  }
  static Bytes entries(std::string_view text) {
    base::ByteWriter out;
    for (std::size_t at = 0; at < text.size(); at += 5) {
      out.u8(static_cast<std::uint8_t>(text[at]));
      out.u16(static_cast<std::uint16_t>(std::stoi(std::string(text.substr(at + 1, 3)))));
    }
    return out.result();
  }

  ProtocolSelection selection{link, port, front_end, flags};
  Bytes product_data;
  Bytes array;
  std::chrono::milliseconds array_delay{20};
  int ignored_requests = 0;
  bool acknowledges = true;
};

TEST_F(Identification, AReceiverWithAnArrayIsTakenAtItsWord) {
  product_data = product(169, 212, std::string_view("eTrex Software Version 2.12\0VERBMAP Americas\0", 45));
  array =
      entries("P000 L001 A010 A100 D108 A201 D202 D108 D210 A301 D310 D301 A500 D501 A600 D600 A700 D700 A800 D800");
  selection.identifyGarmin();
  EXPECT_TRUE(flags.GpsIdentified);
  const Protocols& p = selection.protocols();
  EXPECT_EQ(link.link_protocol, 1);
  EXPECT_EQ(p.route_header, 202);
  EXPECT_EQ(p.route_waypoint, 108);
  EXPECT_EQ(p.route_link, 210);
  EXPECT_EQ(p.track_header, 310);
  EXPECT_EQ(p.track_data, 301);
  EXPECT_EQ(p.proximity_transfer, kNone);
  EXPECT_EQ(p.pvt_data, 800);
  selection.report();
  EXPECT_EQ(front_end.lines[1], "Product Data      : A000, Physical      : P000    Product ID: 169");
  EXPECT_EQ(front_end.lines[4],
            "Route Transfer    : A201, Route Header  : D202, Route Data: D108, Route Link Data: D210");
  EXPECT_EQ(front_end.lines[6], "Proximity Transfer: None, Proximity Data: None");
  EXPECT_EQ(front_end.lines[10], "PVT Transfer      : A800, PVT Data      : D800");
  selection.show_identification();
  EXPECT_EQ(front_end.lines[1], "eTrex Software Version 2.12         ID: 169");
  EXPECT_EQ(front_end.lines[2], "VERBMAP Americas");
}

TEST_F(Identification, AnArrayThatComesTooLateIsNotWaitedFor) {
  product_data = product(77, 355, "GPS 12XL");
  array = entries("L001 A010 A100 D999");
  array_delay = 500ms;
  selection.identifyGarmin();
  EXPECT_EQ(selection.protocols().waypoint_data, 103);
  selection.report();
  EXPECT_EQ(front_end.lines[4], "Protocol Array not loaded");
}

TEST_F(Identification, ARequestThatIsNotAcknowledgedIsSentAgain) {
  product_data = product(31, 200, "GPS 40");
  ignored_requests = 1;
  device.on_sent = [this, answer = device.on_sent](const Bytes& sent) {
    answer(sent);
    if (sent[1] == 254 && ignored_requests == 0) device.queue(wire(21, {254, 0}));
  };
  selection.identifyGarmin();
  EXPECT_TRUE(flags.GpsIdentified);
  EXPECT_EQ(selection.product().description, "GPS 40");
}

TEST_F(Identification, OldPacketsOfABrokenOffTransferDoNotDisturbIt) {
  product_data = product(31, 200, "GPS 40");
  device.on_sent = [this, answer = device.on_sent](const Bytes& sent) {
    if (sent[1] == 254) device.queue(wire(35, Bytes(58, 65)));
    answer(sent);
  };
  selection.identifyGarmin();
  EXPECT_TRUE(flags.GpsIdentified);
  EXPECT_EQ(selection.product().id, 31);
}

TEST_F(Identification, AnUnknownProductWithoutAnArrayEndsWithABoxAndNoTransfer) {
  product_data = product(9999, 100, "XYZ");
  selection.identifyGarmin();
  EXPECT_FALSE(flags.GpsIdentified);
  EXPECT_TRUE(flags.UserAbort);
  ASSERT_EQ(front_end.boxes.size(), 1u);
  EXPECT_EQ(front_end.boxes[0].second, "No Protocol Array and Protocol not in Table program can't continue.");
}

TEST_F(Identification, OddArraysAreSurvived) {
  product_data = product(1, 100, "X");
  // Undocumented entries, an unknown track protocol that consumes nothing, and data types missing at the end.
  array = entries("A001 A999 D100 L001 X123 A310 D312 A100 D108 A301 D310");
  array.push_back('A');
  selection.identifyGarmin();
  EXPECT_TRUE(flags.GpsIdentified);
  EXPECT_EQ(selection.protocols().waypoint_data, 108);
  EXPECT_EQ(selection.protocols().track_header, 310);
  EXPECT_EQ(selection.protocols().track_data, kNone);
  EXPECT_EQ(front_end.lines[4], "Undocumented Protocol: A999, ignored.");
  EXPECT_EQ(front_end.boxes,
            (std::vector<std::pair<std::string, std::string>>{{"Protocol Array Error", "Unknown Track protocol"}}));
}

TEST_F(Identification, ATwoByteArrayIsEmptyButCountsSoNoTransferCanRun) {
  product_data = product(77, 355, "X");
  array = {65, 0};
  selection.identifyGarmin();
  EXPECT_TRUE(selection.has_array());
  EXPECT_EQ(selection.protocols().waypoint_data, kNone);
  EXPECT_TRUE(flags.UserAbort);
  EXPECT_EQ(front_end.lines[4], "Link Protocol Violation, aborting...");
}

TEST_F(Identification, AnArrayHeldUpByALostAnswerIsAskedForOnceMore) {
  product_data = product(500, 100, "NEW MODEL");
  array = entries("L001 A010 A100 D108");
  int requests = 0;
  device.on_sent = [&, answer = device.on_sent](const Bytes& sent) {
    if (sent[1] == 254) array_delay = ++requests == 1 ? 2000ms : 20ms;
    answer(sent);
  };
  selection.identifyGarmin();
  EXPECT_TRUE(flags.GpsIdentified);
  EXPECT_EQ(selection.protocols().waypoint_data, 108);
}

TEST_F(Identification, EscAndAVanishedPortAreNoticedWhileTheArrayIsWaitedFor) {
  product_data = product(500, 100, "X");
  front_end.esc = [&] { return device.sent.size() > 4 && clock.now > 100ms; };
  selection.identifyGarmin();
  EXPECT_TRUE(flags.UserAbort);
  EXPECT_EQ(front_end.lines[2], "Operation Aborted");
  front_end.esc = nullptr;
  flags.UserAbort = false;
  device.vanish(50ms);
  selection.identifyGarmin();
  EXPECT_TRUE(flags.ComTimedOut);
  EXPECT_TRUE(front_end.boxes.empty());
}

TEST_F(Identification, AnArrayInTheMiddleOfATransferChangesNothing) {
  product_data = product(500, 100, "X");
  array = entries("L001 A010 A100 D108");
  selection.identifyGarmin();
  device.queue(wire(253, {}));
  link.getGarminMessage();
  EXPECT_EQ(selection.protocols().waypoint_data, 108);
}

TEST_F(Identification, AnAviationReceiverGetsItsOwnCommandNumbers) {
  product_data = product(34, 100, "GPS 155");
  selection.identifyGarmin();
  EXPECT_EQ(link.link_protocol, 2);
  EXPECT_EQ(selection.records_id(), 35);
  EXPECT_EQ(selection.commands().waypoints, 21);
  EXPECT_EQ(selection.commands().proximity, 3);
  EXPECT_EQ(selection.commands().routes, 8);
}

TEST(ProductTable, SoftwareVersionsChooseTheRow) {
  EXPECT_EQ(find_product(77, 300)->version_limit, -301);
  EXPECT_EQ(find_product(77, 355)->version_limit, -361);
  EXPECT_EQ(find_product(77, 361)->version_limit, 361);
  EXPECT_EQ(find_product(29, 399)->waypoint_data, 101);
  EXPECT_EQ(find_product(29, 400)->waypoint_data, 102);
  EXPECT_EQ(find_product(36, 300)->proximity_transfer, kNone);
  EXPECT_EQ(find_product(9999, 100), nullptr);
  // Whatever its version, every product of the table has a row.
  for (const ProductRow& row : kProducts)
    for (int version = 0; version <= 1000; ++version) ASSERT_NE(find_product(row.product_id, version), nullptr);
}

}  // namespace
}  // namespace garmin

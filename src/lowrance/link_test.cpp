#include "lowrance/link.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "base/safe_file.h"
#include "lowrance/connection.h"
#include "lowrance/identification.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/scripted_device.h"

namespace lowrance {
namespace {

using base::Bytes;
using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::HasSubstr;

const Bytes kLogin{0x55, 0x81, 0x0D, 0, 0, 0, 0, 0x1D};
const Bytes kLoggedIn{0x55, 0x81, 0x8D, 0, 1, 0, 0, 0x9C, 0, 0};
const Bytes kAskInfo{0x55, 0x81, 0x0E, 3, 0, 0, 0, 0x19};
const Bytes kAskWaypoint{0x55, 0x81, 0x03, 3, 2, 0, 0, 0x22};  // its data: 05 00, checksum FB
const Bytes kWaypointData{5, 0, 0xFB};
// Answers to a request for a waypoint, with the data 00 2A.
const Bytes kAnswer{0x55, 0x81, 0x83, 3, 2, 0, 0, 0xA2, 0x00, 0x2A, 0xD6};

Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

class Link : public testing::Test {
 protected:
  Link() { port.AsyncInit("COM1"); }

  // Asks for waypoint 5.
  std::optional<Bytes> ask() { return link.ask(Command::GetWaypoint, Bytes{5, 0}, "GetLowrWPT"); }
  // After the n-th request that is sent (a header and its data are two writes), from 1.
  void answer_request(int number, Bytes bytes, milliseconds after = milliseconds(0)) {
    device.on_sent = [this, number, bytes, after, seen = 0](const Bytes& sent) mutable {
      if (sent == kWaypointData && ++seen == number) device.queue(bytes, after);
    };
  }
  [[nodiscard]] double elapsed() const { return std::chrono::duration<double>(clock.now).count(); }

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  serial::DeviceFlags flags;
  serial::DebugLog debug_log{front_end};
  std::unique_ptr<support::ScriptedDevice> made = std::make_unique<support::ScriptedDevice>(clock);
  support::ScriptedDevice& device = *made;
  serial::ComPort port{[this](const std::string&) { return std::move(made); }, clock, front_end, flags};
  LowranceLink link{port, clock, front_end, flags, debug_log};
};

TEST_F(Link, ARequestIsAHeaderAndItsDataWithAChecksumEach) {
  answer_request(1, kAnswer);
  EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
  EXPECT_THAT(device.sent, ElementsAre(kAskWaypoint, kWaypointData));
  device.sent.clear();
  link.sendLowrMessage(Command::GetUnitInfo, {}, "GetLowrID");
  EXPECT_THAT(device.sent, ElementsAre(kAskInfo));
}

TEST_F(Link, GarbageAndEchoesBeforeTheAnswerAreSkipped) {
  answer_request(1, Bytes{0x81, 0x55, 0x00} + kAskWaypoint + kWaypointData + Bytes{0x55} + kAnswer);
  EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
  // The data of an echo may look like the start of a message.
  device.on_sent = [this](const Bytes& sent) {
    device.queue(sent);
    if (sent.size() == 5) device.queue({0x55, 0x81, 0x89, 0, 1, 0, 0, 0xA0, 0x00, 0x00});
  };
  EXPECT_TRUE(link.ask(Command::WriteMemory, Bytes{0x55, 0x81, 0x09, 0x00}, "SendLowrTrkHdrs"));
  EXPECT_EQ(front_end.lines[1], "");
}

TEST_F(Link, SilenceSendsTheRequestAgainTwice) {
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(flags.ComTimedOut);
  EXPECT_NEAR(elapsed(), 9, 0.1);
  EXPECT_THAT(device.sent,
              ElementsAre(kAskWaypoint, kWaypointData, kAskWaypoint, kWaypointData, kAskWaypoint, kWaypointData));
  EXPECT_EQ(front_end.lines[2], "Timeout in GetLowrMessage");

  link.LowrTimeoutDivisor = 3;
  device.sent.clear();
  clock.now = {};
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_NEAR(elapsed(), 1, 0.1);
  EXPECT_EQ(device.sent.size(), 2U);
}

// A slow unit answers each repetition too: its second answer must not be taken for that to the next request.
TEST_F(Link, LateAnswersAreNobodysAnswers) {
  answer_request(1, kAnswer + kAnswer, milliseconds(3500));
  EXPECT_TRUE(ask());
  answer_request(1, Bytes{0x55, 0x81, 0x83, 3, 1, 0, 0, 0xA3, 0x07, 0xF9});
  EXPECT_EQ(ask(), (Bytes{0x07}));
  // One that comes after the time-out is thrown away with the next request, or is not its answer.
  device.queue(kAnswer);
  answer_request(1, kLoggedIn + Bytes{0x55, 0x81, 0x83, 3, 1, 0, 0, 0xA3, 0x09, 0xF7});
  EXPECT_EQ(ask(), (Bytes{0x09}));
}

TEST_F(Link, DamageIsToldAndTakenAllTheSame) {
  Bytes bad_header = kAnswer;
  bad_header[7] += 5;
  answer_request(1, bad_header);
  EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
  EXPECT_EQ(front_end.lines[1], "Bad Lowrance Header: sum:5  ");
  EXPECT_EQ(link.damaged_answers(), 1);
  Bytes bad_data = kAnswer;
  bad_data.back() ^= 1;
  answer_request(1, bad_data);
  EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
  EXPECT_EQ(link.damaged_answers(), 2);
  // A request's code that is no echo.
  answer_request(1, Bytes{0x55, 0x81, 0x05, 3, 0, 0, 0, 0x22} + kAnswer);
  EXPECT_TRUE(ask());
  EXPECT_EQ(front_end.lines[1], "Warning: Header command:0305 is not a response command");
}

TEST_F(Link, LengthsFromOutsideEndInATimeOutAtMost) {
  answer_request(1, {0x55, 0x81, 0x83, 3, 0x01, 0x02, 0, 0xA1});  // 513 bytes
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(flags.ComTimedOut);
  EXPECT_EQ(front_end.lines[1], "Lowrance answer too long: 513 bytes");
  EXPECT_LT(elapsed(), 0.1);
  // 512 are taken.
  const Bytes longest = Bytes(512, 0) + Bytes{0};
  answer_request(1, Bytes{0x55, 0x81, 0x83, 3, 0x00, 0x02, 0, 0xA2} + longest);
  EXPECT_EQ(ask(), Bytes(512, 0));
  // A header, or data, that break off: the repetition is answered.
  for (const Bytes& broken : {Bytes{0x55, 0x81, 0x83}, Bytes{0x55, 0x81, 0x83, 3, 9, 0, 0, 0x9B, 1, 2}}) {
    clock.now = {};
    device.on_sent = [this, broken, times = 0](const Bytes& sent) mutable {
      if (sent == kWaypointData) device.queue(++times == 1 ? broken : kAnswer);
    };
    EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
    EXPECT_NEAR(elapsed(), 6.5, 0.1);  // 3 s, and as much for an answer to the first
  }
}

TEST_F(Link, ChatterEndsTheWaitInTheEnd) {
  for (const int divisor : {1, 3}) {
    link.LowrTimeoutDivisor = static_cast<std::int16_t>(divisor);
    for (int i = 0; i < 3000; ++i) device.queue({'$', 'G', 'P'}, milliseconds(i * 20));
    const auto begin = clock.now;
    EXPECT_EQ(ask(), std::nullopt);
    EXPECT_NEAR(std::chrono::duration<double>(clock.now - begin).count(), divisor == 1 ? 27 : 3, 0.2);
    clock.now += seconds(100);
    while (port.AsyncInStat()) port.AsyncIn();
  }
}

TEST_F(Link, EscEndsAWaitAtOnceAndIsLeftToTheLoopAbove) {
  front_end.esc = [polls = 0]() mutable { return ++polls == 10; };
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_LT(elapsed(), 0.25);
  EXPECT_TRUE(port.EscPressed());
  EXPECT_FALSE(port.EscPressed());
  EXPECT_EQ(front_end.lines[2], "");
}

TEST_F(Link, TenTimeOutsInARowEndIt) {
  for (int i = 0; i < 9; ++i) EXPECT_EQ(ask(), std::nullopt);
  EXPECT_FALSE(link.given_up());
  answer_request(1, kAnswer);
  EXPECT_TRUE(ask());
  device.on_sent = {};
  for (int i = 0; i < 10; ++i) EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(link.given_up());
  EXPECT_EQ(front_end.lines[1], "Receiver does not answer");
  device.sent.clear();
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(device.sent.empty());
  link.begin_conversation();
  EXPECT_FALSE(link.given_up());
  device.vanish();
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(link.given_up());
}

TEST_F(Link, TheDebugLogHasHeadersAndDataApart) {
  const auto path = std::filesystem::temp_directory_path() / "pelorix-lowrance-log.txt";
  ASSERT_TRUE(debug_log.open(path, serial::ByteFormat::Hex, "1"));
  answer_request(1, kAskWaypoint + kWaypointData + kAnswer);
  EXPECT_TRUE(ask());
  debug_log.close();
  std::string log, reason;
  ASSERT_TRUE(base::load_file(path, log, reason)) << reason;
  std::filesystem::remove(path);
  std::erase(log, '\r');
  EXPECT_EQ(log,
            "Program version: 1\n"
            "Sending header for: GetLowrWPT\n"
            " 55U  81   03   03   02   00   00   22\" \n"
            "Sending: GetLowrWPT\n"
            " 05   00   fb  \n"
            "Received (and skipped): Header\n"
            " 55U  81   03   03   02   00   00   22\" \n"
            "Received: Header\n"
            " 55U  81   83   03   02   00   00   a2  \n"
            "Received:\n"
            " 00   2a*  d6  \n");
}

class Identification : public Link {
 protected:
  Identification() { port.set_port_name("COM1"); }

  // A unit that answers at this speed.
  void unit_at(int speed, Bytes info) {
    device.on_applied = [this](const serial::LineSettings& settings) { line_speed = settings.speed_bps; };
    device.on_sent = [this, speed, info](const Bytes& sent) {
      if (line_speed != speed) return;
      if (sent == kLogin) device.queue(kLoggedIn);
      if (sent == kAskInfo) device.queue(info);
    };
  }

  int line_speed = 0;
  UnitIdentification identification{link, front_end, flags};
  Connection connection{link, port, identification, front_end, flags};
};

// A GlobalMap 100: version 2 (1), screen type 1, 159 x 99, 750 waypoints, 1000 icons, 20 routes of 99, 2 trails, 28
// symbols, 90 degrees, 100000 s.
const Bytes kInfo{0x55, 0x81, 0x8E, 3,    26, 0,  0, 0x7F, 0, 14, 0,  1,  0,    1,    0, 159, 0,   99,
                  0,    0xEE, 2,    0xE8, 3,  20, 0, 99,   0, 2,  28, 90, 0xA0, 0x86, 1, 0,   0x39};

TEST_F(Identification, ShowsEightTexts) {
  unit_at(19200, kInfo);
  port.set_speed(19200);
  {
    const Conversation conversation(connection);
    ASSERT_TRUE(conversation.is_open());
    EXPECT_TRUE(flags.LowranceIdentified);
    identification.show();
  }
  EXPECT_FALSE(device.is_open);
  std::vector<std::string> shown;
  for (const auto& [line, text] : front_end.lines) shown.push_back(text);
  EXPECT_THAT(
      shown,
      ElementsAre("GPS Is a Lowrance GlobalMap 100", "ProtocolVersion       :   2     | NumOfWaypoints        :   750",
                  "ScreenType            :   1     | NumOfIcons            :  1000",
                  "ScreenWidth           : 159     | NumOfRoutes           :    20",
                  "ScreenHeight          :  99     | NumOfWaypointsPerRoute:    99",
                  "ScreenRotateAngle     :  90     | NumOfPlotTrails       :     2",
                  "                                  NumOfIconSym          :    28", "RunTime               : 100000"));
  // A unit that is known is not asked again.
  device.sent.clear();
  EXPECT_TRUE(Conversation(connection).is_open());
  EXPECT_TRUE(device.sent.empty());
}

TEST_F(Identification, TriesEachSpeedForASecond) {
  unit_at(57600, kInfo);
  EXPECT_TRUE(Conversation(connection).is_open());
  EXPECT_EQ(port.speed(), 57600);
  EXPECT_NEAR(elapsed(), 2, 0.1);  // 115200 and 19200 before it
}

TEST_F(Identification, AUnitThatCannotBeIdentifiedIsNotTalkedTo) {
  Bytes shortened(kInfo.begin(), kInfo.begin() + 33);
  shortened[4] = 24;
  unit_at(9600, shortened);
  EXPECT_FALSE(Conversation(connection).is_open());
  EXPECT_FALSE(flags.LowranceIdentified);
  EXPECT_FALSE(device.is_open);
  EXPECT_EQ(front_end.lines[1], "COM port not open!");
  EXPECT_THAT(front_end.boxes,
              testing::Contains(std::pair<std::string, std::string>("COM Error", "Cannot find default port speed.")));
}

TEST_F(Identification, EscEndsTheProbing) {
  front_end.esc = [polls = 0]() mutable { return ++polls == 60; };
  EXPECT_FALSE(Conversation(connection).is_open());
  EXPECT_LT(elapsed(), 1.5);
  EXPECT_EQ(front_end.lines[4], "ESC Pressed!");
  EXPECT_FALSE(flags.UserAbort);
}

TEST(ProductName, UnknownIdsAreUnknown) {
  EXPECT_EQ(product_name(1), "GlobalMap Sport");
  EXPECT_EQ(product_name(14), "GlobalMap 100");
  EXPECT_EQ(product_name(11), "Unknown");
  EXPECT_EQ(product_name(20), "Unknown");
  EXPECT_EQ(product_name(65535), "Unknown");
}

}  // namespace
}  // namespace lowrance

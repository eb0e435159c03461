#include "lowrance/link.h"

#include <filesystem>

#include "base/safe_file.h"
#include "tests/support/lowrance_conversation.h"

namespace lowrance {
namespace {

using base::Bytes;
using std::chrono::milliseconds;
using testing::ElementsAre;

const Bytes kAskInfo{0x55, 0x81, 0x0E, 3, 0, 0, 0, 0x19};
const Bytes kAskWaypoint{0x55, 0x81, 0x03, 3, 2, 0, 0, 0x22};
const Bytes kWaypointData{5, 0, 0xFB};
// Answers to a request for a waypoint, with the data 00 2A.
const Bytes kAnswer{0x55, 0x81, 0x83, 3, 2, 0, 0, 0xA2, 0x00, 0x2A, 0xD6};

Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

class Link : public support::LowranceConversation {
 protected:
  Link() {
    port->AsyncInit("COM1");
    device->on_sent = {};
  }

  // Asks for waypoint 5.
  std::optional<Bytes> ask() { return link->ask(Command::GetWaypoint, Bytes{5, 0}, "GetLowrWPT"); }
  // What the unit sends at the first request, and at every repetition of it.
  void answer_with(const Bytes& first, milliseconds after = {}, const Bytes& later = {}) {
    device->on_sent = [=, this, is_first = true](const Bytes& sent) mutable {
      if (sent == kWaypointData) device->queue(std::exchange(is_first, false) ? first : later, after);
    };
  }
};

TEST_F(Link, AnExchangeAndItsLog) {
  const auto path = std::filesystem::temp_directory_path() / "pelorix-lowrance-log.txt";
  ASSERT_TRUE(log.open(path, serial::ByteFormat::Hex, "1"));
  // An echo, and what may be the answer to a request that is never sent.
  answer_with(kAskWaypoint + kWaypointData + Bytes{0x55, 0x81, 0x8D, 3, 0, 0, 0, 0x9A} + kAnswer);
  EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
  log.close();
  EXPECT_THAT(device->sent, ElementsAre(kAskWaypoint, kWaypointData));
  std::string text, reason;
  ASSERT_TRUE(base::load_file(path, text, reason)) << reason;
  std::filesystem::remove(path);
  std::erase(text, '\r');
  EXPECT_EQ(text,
            "Program version: 1\n"
            "Sending header for: GetLowrWPT\n"
            " 55U  81   03   03   02   00   00   22\" \n"
            "Sending: GetLowrWPT\n"
            " 05   00   fb  \n"
            "Received (and skipped): Header\n"
            " 55U  81   03   03   02   00   00   22\" \n"
            "Received: Header\n"
            " 55U  81   8d   03   00   00   00   9a  \n"
            "LowrParse of 030d not written yet\n"
            "Received: Header\n"
            " 55U  81   83   03   02   00   00   a2  \n"
            "Received:\n"
            " 00   2a*  d6  \n");
  link->sendLowrMessage(Command::GetUnitInfo, {}, "GetLowrID");
  EXPECT_EQ(device->sent.back(), kAskInfo);
}

TEST_F(Link, GarbageAndEchoesBeforeTheAnswerAreSkipped) {
  for (const Bytes& garbage :
       {Bytes{0x81, 0x55, 0x00} + kAskWaypoint + kWaypointData + Bytes{0x55},
        Bytes{0x55, 0x81}}) {  // no header, as it says more bytes than any has: the true one begins within it
    answer_with(garbage + kAnswer);
    EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
  }
  // The data of an echo may look like the start of a message.
  device->on_sent = [this](const Bytes& sent) {
    device->queue(sent);
    if (sent.size() == 5) device->queue({0x55, 0x81, 0x89, 0, 1, 0, 0, 0xA0, 0x00, 0x00});
  };
  EXPECT_TRUE(link->ask(Command::WriteMemory, Bytes{0x55, 0x81, 0x09, 0x00}, "SendLowrTrkHdrs"));
  EXPECT_LT(elapsed(), 0.1);
}

TEST_F(Link, SilenceSendsTheRequestAgainTwice) {
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(flags.ComTimedOut);
  EXPECT_NEAR(elapsed(), 9, 0.1);
  EXPECT_THAT(device->sent,
              ElementsAre(kAskWaypoint, kWaypointData, kAskWaypoint, kWaypointData, kAskWaypoint, kWaypointData));
  EXPECT_EQ(front_end.lines, (Lines{{2, "Timeout in GetLowrMessage"}}));

  link->LowrTimeoutDivisor = 3;
  device->sent.clear();
  clock.now = {};
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_NEAR(elapsed(), 1, 0.1);
  EXPECT_EQ(device->sent.size(), 2U);
}

// A slow unit answers each repetition too: its second answer must not be taken for that to the next request.
TEST_F(Link, LateAnswersAreNobodysAnswers) {
  answer_with(kAnswer + kAnswer, milliseconds(3500));
  EXPECT_TRUE(ask());
  answer_with({0x55, 0x81, 0x83, 3, 1, 0, 0, 0xA3, 0x07, 0xF9});
  EXPECT_EQ(ask(), (Bytes{0x07}));
  // One that comes after the time-out is thrown away with the next request, or is not its answer.
  device->queue(kAnswer);
  const Bytes logged_in{0x55, 0x81, 0x8D, 0, 1, 0, 0, 0x9C, 0, 0};
  answer_with(logged_in + Bytes{0x55, 0x81, 0x83, 3, 1, 0, 0, 0xA3, 0x09, 0xF7});
  EXPECT_EQ(ask(), (Bytes{0x09}));
}

TEST_F(Link, DamageIsToldAndTakenAllTheSame) {
  Bytes bad_header = kAnswer, bad_data = kAnswer;
  bad_header[7] += 5;
  bad_data.back() ^= 1;
  answer_with(bad_header);
  EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
  EXPECT_EQ(front_end.lines[1], "Bad Lowrance Header: sum:5  ");
  EXPECT_EQ(link->damaged_answers(), 1);
  answer_with(bad_data);
  EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
  EXPECT_EQ(link->damaged_answers(), 2);
  // A request's code that is no echo.
  answer_with(Bytes{0x55, 0x81, 0x05, 3, 0, 0, 0, 0x22} + kAnswer);
  EXPECT_TRUE(ask());
  EXPECT_EQ(front_end.lines[1], "Warning: Header command:0305 is not a response command");
}

TEST_F(Link, LengthsFromOutsideEndInATimeOutAtMost) {
  answer_with({0x55, 0x81, 0x83, 3, 0x01, 0x02, 0, 0xA1});  // 513 bytes
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(flags.ComTimedOut);
  EXPECT_EQ(front_end.lines[1], "Lowrance answer too long: 513 bytes");
  EXPECT_LT(elapsed(), 0.1);
  answer_with(Bytes{0x55, 0x81, 0x83, 3, 0x00, 0x02, 0, 0xA2} + Bytes(513));
  EXPECT_EQ(ask(), Bytes(512));
  // A header, or data, that break off: the repetition is answered.
  for (const Bytes& broken : {Bytes{0x55, 0x81, 0x83}, Bytes{0x55, 0x81, 0x83, 3, 9, 0, 0, 0x9B, 1, 2}}) {
    clock.now = {};
    answer_with(broken, {}, kAnswer);
    EXPECT_EQ(ask(), (Bytes{0x00, 0x2A}));
    EXPECT_NEAR(elapsed(), 6.5, 0.1);  // 3 s, and as much for an answer to the first
    clock.now = {};
    answer_with(broken, {}, broken);
    EXPECT_EQ(ask(), std::nullopt);
    EXPECT_NEAR(elapsed(), 9, 0.1);
  }
}

TEST_F(Link, ChatterEndsTheWaitInTheEnd) {
  for (const auto& [divisor, seconds] : {std::pair(1, 27), {3, 3}}) {
    link->LowrTimeoutDivisor = static_cast<std::int16_t>(divisor);
    for (int i = 0; i < 3000; ++i) device->queue({'$', 'G', 'P'}, milliseconds(i * 20));
    const double begin = elapsed();
    EXPECT_EQ(ask(), std::nullopt);
    EXPECT_NEAR(elapsed() - begin, seconds, 0.2);
    clock.now += std::chrono::seconds(100);
    while (port->AsyncInStat()) port->AsyncIn();
  }
}

TEST_F(Link, TenTimeOutsInARowEndIt) {
  for (const int time_outs : {9, 9, 10}) {
    answer_with(kAnswer);
    EXPECT_TRUE(ask());
    device->on_sent = {};
    for (int i = 0; i < time_outs; ++i) EXPECT_EQ(ask(), std::nullopt);
    EXPECT_EQ(link->given_up(), time_outs == 10);
    EXPECT_EQ(front_end.lines[1], time_outs == 10 ? "Receiver does not answer" : "");
  }
  device->sent.clear();
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(device->sent.empty());
  link->begin_conversation();
  EXPECT_FALSE(link->given_up());
  device->vanish();
  EXPECT_EQ(ask(), std::nullopt);
  EXPECT_TRUE(link->given_up());
}

class Identification : public support::LowranceConversation {
 protected:
  // A unit that hears only what is sent at 57600 bits per second, the third speed that is tried.
  Identification() {
    port->set_port_name("COM1");
    device->on_applied = [this](const serial::LineSettings& settings) { speed_ = settings.speed_bps; };
    device->on_sent = [this](const Bytes& sent) {
      if (speed_ == 57600) hear(sent);
    };
  }

 private:
  int speed_ = 0;
};

TEST_F(Identification, FindsTheSpeedAndShowsEightTexts) {
  unit_info = {0, 14, 0, 1, 0, 1, 0, 159, 0, 99, 0, 0xEE, 2, 0xE8, 3, 20, 0, 99, 0, 2, 28, 90, 0xA0, 0x86, 1, 0};
  {
    const Conversation conversation(connection());
    ASSERT_TRUE(conversation.is_open());
    EXPECT_TRUE(flags.LowranceIdentified);
    EXPECT_EQ(port->speed(), 57600);
    EXPECT_NEAR(elapsed(), 2, 0.1);  // a second for each of the speeds before
    identification->show();
  }
  EXPECT_FALSE(device->is_open);
  EXPECT_EQ(front_end.lines, (Lines{{1, "GPS Is a Lowrance GlobalMap 100"},
                                    {2, "ProtocolVersion       :   2     | NumOfWaypoints        :   750"},
                                    {3, "ScreenType            :   1     | NumOfIcons            :  1000"},
                                    {4, "ScreenWidth           : 159     | NumOfRoutes           :    20"},
                                    {5, "ScreenHeight          :  99     | NumOfWaypointsPerRoute:    99"},
                                    {6, "ScreenRotateAngle     :  90     | NumOfPlotTrails       :     2"},
                                    {7, "                                  NumOfIconSym          :    28"},
                                    {8, "RunTime               : 100000"}}));
  // A unit that is known is not asked again.
  device->sent.clear();
  EXPECT_TRUE(Conversation(connection()).is_open());
  EXPECT_TRUE(device->sent.empty());
}

TEST_F(Identification, AUnitThatCannotBeIdentifiedIsNotTalkedTo) {
  unit_info.pop_back();
  EXPECT_FALSE(Conversation(connection()).is_open());
  EXPECT_FALSE(flags.LowranceIdentified || device->is_open);
  EXPECT_EQ(front_end.lines[1], "COM port not open!");
  EXPECT_EQ(front_end.lines[5], "The unit information has 25 bytes instead of 26.");
  EXPECT_THAT(front_end.boxes, testing::Contains(std::pair("COM Error", "Cannot find default port speed.")));
}

TEST_F(Identification, EscEndsTheProbing) {
  front_end.esc = [polls = 0]() mutable { return ++polls == 60; };
  EXPECT_FALSE(Conversation(connection()).is_open());
  EXPECT_LT(elapsed(), 1.5);
  EXPECT_EQ(front_end.lines[4], "ESC Pressed!");
  EXPECT_FALSE(flags.UserAbort);
}

TEST(ProductName, UnknownIdsAreUnknown) {
  EXPECT_EQ(product_name(1), "GlobalMap Sport");
  for (const int id : {11, 20, 65535}) EXPECT_EQ(product_name(static_cast<std::uint16_t>(id)), "Unknown") << id;
}

}  // namespace
}  // namespace lowrance

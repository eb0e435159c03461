#include "garmin/single_commands.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "tests/support/garmin_line.h"

namespace garmin {
namespace {

using namespace std::chrono_literals;
using base::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

struct Packet {
  std::uint8_t id;
  Bytes data;
};

constexpr int kPosition = 2, kTime = 5, kPowerOff = 8, kVoltages = 17, kTimeOfA011 = 20, kStartPvt = 49;

// 45 degrees north, 180 west, in radians.
const Bytes kOnTheDateLine{0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21, 0xE9, 0x3F,
                           0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21, 0x09, 0xC0};
const Bytes kLastSecondOf1999{12, 31, 0xCF, 0x07, 23, 0, 59, 59};
// Altitude 152.5, errors 8.25, 6.5 and 5.125, fix 3, time 345600.5, 45 N 90 W, velocity 1.5, -2.25, 0.125, sea level
// -52, 18 leap seconds, day 4263.
const Bytes kPvt{0x00, 0x80, 0x18, 0x43, 0x00, 0x00, 0x04, 0x41, 0x00, 0x00, 0xD0, 0x40, 0x00, 0x00, 0xA4, 0x40,
                 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x02, 0x18, 0x15, 0x41, 0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21,
                 0xE9, 0x3F, 0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21, 0xF9, 0xBF, 0x00, 0x00, 0xC0, 0x3F, 0x00, 0x00,
                 0x10, 0xC0, 0x00, 0x00, 0x00, 0x3E, 0x00, 0x00, 0x50, 0xC2, 0x12, 0x00, 0xA7, 0x10, 0x00, 0x00};

// A receiver that acknowledges what it is sent and answers commands as the test says.
class SingleCommands : public support::GarminLine {
 protected:
  SingleCommands() {
    device.on_sent = [this](const Bytes& frame) { on_sent(frame); };
  }
  void on_sent(const Bytes& frame) {
    constexpr std::uint8_t kAck = 6, kCommand = 10, kRequest = 254;
    const std::uint8_t id = frame[1];
    if (id == kAck) return;
    heard.emplace_back(frame.begin() + 1, frame.end() - 3);
    const int command = id == kCommand ? frame[3] : -1;
    if (command == silent_from) is_silent = true;
    if (is_silent) return;
    for (const Packet& packet : before_answers) queue(packet);
    if (command != unacknowledged) queue({kAck, {id, 0}});
    if (id == kRequest) {
      queue({255, product});
      if (!array.empty()) queue({253, array});
    }
    for (const Packet& packet : answers[command]) queue(packet);
  }
  void queue(const Packet& packet) { device.queue(wire(packet.id, packet.data)); }
  // The packets after the identification, all with their id, size and data.
  std::vector<Bytes> after_identification() {
    const auto request = std::ranges::find(heard, Bytes{254, 1, 32});
    return request == heard.end() ? heard : std::vector<Bytes>(request + 1, heard.end());
  }
  void become_old_aviation_receiver() {
    product = {20, 0, 100, 0, 'G', 0};
    array.clear();
  }
  void expect_link_closed() {
    EXPECT_FALSE(flags.PortOpen);
    EXPECT_FALSE(device.is_open);
    EXPECT_FALSE(flags.GpsIdentified);
    EXPECT_FALSE(flags.UserAbort);
    EXPECT_FALSE(link.Identifying);
    EXPECT_EQ(front_end.status[3], " ");
    EXPECT_THAT(front_end.boxes, IsEmpty());
  }

  Bytes product{128, 0, 250, 0, 'G', 0};
  Bytes array{'L', 1, 0, 'A', 10, 0, 'A', 0x20, 3, 'D', 0x20, 3};  // L001 A010 A800 D800
  std::map<int, std::vector<Packet>> answers;                      // by command
  std::vector<Packet> before_answers;                              // to each packet
  int unacknowledged = -2;                                         // command
  int silent_from = -2;                                            // command that the receiver falls silent at
  bool is_silent = false;
  std::vector<Bytes> heard;

  ProtocolSelection selection{link, port, front_end, flags};
  GarminCommands commands{Connection{link, port, selection, front_end, flags}, clock};
};

TEST_F(SingleCommands, TheTimeIsCountedFromTheEpochUnderBothLinks) {
  answers[kTime] = {{14, kLastSecondOf1999}};
  EXPECT_EQ(commands.read_time(), 315619199);  // of `date -u -d "1999-12-31 23:59:59" +%s` less that of the epoch
  expect_link_closed();
  become_old_aviation_receiver();
  answers = {{kTimeOfA011, {{20, kLastSecondOf1999}}}};
  EXPECT_EQ(commands.read_time(), 315619199);
  EXPECT_EQ(heard.end()[-2], (Bytes{10, 2, 20, 0}));
}

TEST_F(SingleCommands, TheDebugLogNamesWhatIsSent) {
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "pelorix_single_commands.log";
  ASSERT_TRUE(log.open(file, serial::ByteFormat::Hex, "1"));
  answers = {
      {kVoltages, {{40, {0, 1, 0, 1}}}}, {kPosition, {{17, kOnTheDateLine}}}, {kTime, {{14, kLastSecondOf1999}}}};
  (void)commands.read_voltages();
  (void)commands.read_position();
  log.close();
  std::vector<std::string> labels;
  {
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);)
      if (line.starts_with("Sending: ") && line != "Sending: ACK") labels.push_back(line.substr(9));
  }
  std::filesystem::remove(file);
  EXPECT_THAT(labels, ElementsAre("Gabort", "Send ID", "Send Voltages", "Gabort",  //
                                  "Gabort", "Send ID", "Send GPS Position", "Send GPS Time", "Gabort"));
}

TEST_F(SingleCommands, AnAnswerThatIsNoneIsRefusedInWordsAndNotWaitedForAgain) {
  struct Case {
    Packet answer;
    const char* refusal;
  };
  const Bytes not_a_number{0, 0, 0, 0, 0, 0, 0xF8, 0x7F, 0, 0, 0, 0, 0, 0, 0, 0};
  Bytes beyond_the_pole = kOnTheDateLine;
  beyond_the_pole[7] = 0x40;
  for (const Case& c : {
           Case{{40, {1, 2, 3}}, "Voltages: 3 bytes instead of 4: record refused"},
           Case{{14, {12, 31, 0xCF, 0x07, 23, 0, 59}}, "Pid_Date_Time_Data: 7 bytes instead of 8: record refused"},
           Case{{14, {13, 31, 0xCF, 0x07, 23, 0, 59, 59}},
                "Pid_Date_Time_Data: there is no 1999-13-31 23:59:59: record refused"},
           Case{{14, {2, 29, 0xCF, 0x07, 0xFF, 0xFF, 0, 0}},
                "Pid_Date_Time_Data: there is no 1999-02-29 -1:00:00: record refused"},
           Case{{14, {2, 28, 0xCF, 0x07, 0xFF, 0xFF, 0, 0}},
                "Pid_Date_Time_Data: there is no 1999-02-28 -1:00:00: record refused"},
           Case{{14, {1, 1, 0xFF, 0xFF, 0, 0, 0, 0}},
                "Pid_Date_Time_Data: there is no 65535-01-01 00:00:00: record refused"},
           Case{{17, {1}}, "Pid_Position_Data: 1 bytes instead of 16: record refused"},
           Case{{17, not_a_number}, "Pid_Position_Data: no position on the earth: record refused"},
           Case{{17, beyond_the_pole}, "Pid_Position_Data: no position on the earth: record refused"},
       }) {
    SCOPED_TRACE(c.refusal);
    front_end = {};
    clock.now = {};
    answers = {{kVoltages, {c.answer}}, {kTime, {c.answer}}, {kPosition, {c.answer}}};
    if (c.answer.id == 40) {
      EXPECT_EQ(commands.read_voltages().value_or(Voltages{9, 9}).internal, 0);
    } else if (c.answer.id == 14) {
      EXPECT_FALSE(commands.read_time());
    } else {
      EXPECT_FALSE(commands.read_position());
    }
    EXPECT_EQ(front_end.lines[1], c.refusal);
    EXPECT_LT(clock.now, 1s);
    expect_link_closed();
  }
}

TEST_F(SingleCommands, PacketsThatNobodyAskedForAreOverlooked) {
  before_answers = {{51, kPvt}, {17, kOnTheDateLine}};
  answers[kTime] = {{51, kPvt}, {14, kLastSecondOf1999}};
  EXPECT_EQ(commands.read_time(), 315619199);
  before_answers.clear();
  answers[kTime] = std::vector<Packet>(200, Packet{51, kPvt});
  EXPECT_FALSE(commands.read_time());
  EXPECT_EQ(front_end.lines[2], "The receiver keeps sending packets that were not asked for.");
}

TEST_F(SingleCommands, AReceiverThatFallsSilentEndsTheCommandWithoutAWord) {
  silent_from = kVoltages;
  EXPECT_FALSE(commands.read_voltages());
  EXPECT_THAT(front_end.lines, IsEmpty());
  // The command once more after the first silence; nobody waits for an answer to the farewell.
  EXPECT_THAT(after_identification(), ElementsAre(Bytes{10, 2, 17, 0}, Bytes{10, 2, 17, 0}, Bytes{10, 2, 0, 0}));
  expect_link_closed();
}

TEST_F(SingleCommands, AReceiverThatOnlyAcknowledgesHasNoAnswer) {
  const std::optional<Voltages> voltages = commands.read_voltages();
  ASSERT_TRUE(voltages);
  EXPECT_EQ(voltages->internal, 0);
  EXPECT_FALSE(commands.read_time());
  EXPECT_FALSE(commands.follow_position([](std::string_view) { return true; }));
  EXPECT_LT(clock.now, 25s);
  EXPECT_THAT(front_end.lines, IsEmpty());
  expect_link_closed();
}

TEST_F(SingleCommands, EscEndsTheCommandAndTheNextOneWorks) {
  answers[kTime] = {};
  front_end.esc = [this, pressed = false]() mutable {
    return !heard.empty() && heard.back() == Bytes{10, 2, 5, 0} && !std::exchange(pressed, true);
  };
  EXPECT_FALSE(commands.read_time());
  EXPECT_EQ(front_end.lines[2], "Operation Aborted");
  EXPECT_LT(clock.now, 1s);
  expect_link_closed();
  answers[kTime] = {{14, kLastSecondOf1999}};
  EXPECT_TRUE(commands.read_time());
}

TEST_F(SingleCommands, TheComputersTimeIsSentUnderId14WhateverTheLink) {
  for (const bool is_old : {false, true}) {
    if (is_old) become_old_aviation_receiver();
    clock.now = {};
    clock.unix_start = 1000000000;  // 2001-09-09 01:46:40 UTC
    port.OpenGpsPort(serial::kGarminFamily, &selection);
    EXPECT_TRUE(commands.send_utc_time());
    EXPECT_EQ(heard.back(), (Bytes{14, 8, 9, 9, 0xD1, 0x07, 1, 0, 46, 40}));
    commands.close_link();
  }
  port.OpenGpsPort(serial::kGarminFamily, &selection);
  is_silent = true;
  EXPECT_FALSE(commands.send_utc_time());
}

class PositionVelocityTime : public SingleCommands {
 protected:
  bool follow(std::size_t enough = 100) {
    return commands.follow_position([this, enough](std::string_view line) {
      lines.emplace_back(line);
      return lines.size() < enough;
    });
  }
  std::vector<std::string> lines;
};

TEST_F(PositionVelocityTime, IsOneLineARecordUntilEsc) {
  answers[kStartPvt] = {{51, kPvt}, {51, {1, 2, 3}}, {51, kPvt}};
  front_end.esc = [this, pressed = false]() mutable { return lines.size() == 2 && !std::exchange(pressed, true); };
  EXPECT_TRUE(follow());
  const char* line =
      "152.500000,8.250000,6.500000,5.125000,3,345600.500000,45.000000,-90.000000,1.500000,-2.250000,0.125000,"
      "-52.000000,18,4263\n";
  EXPECT_THAT(lines, ElementsAre(line, line));
  EXPECT_EQ(front_end.lines[1], "PVT data: 3 bytes instead of 64: record refused");
  EXPECT_THAT(after_identification(), ElementsAre(Bytes{10, 2, 49, 0}, Bytes{10, 2, 50, 0}, Bytes{10, 2, 0, 0}));
  expect_link_closed();
}

TEST_F(PositionVelocityTime, FailsWhenTheReceiverFallsSilentWhichIsToldToStop) {
  answers[kStartPvt] = {{51, kPvt}};
  EXPECT_FALSE(commands.follow_position([this](std::string_view) { return is_silent = true; }));
  EXPECT_THAT(after_identification(), ElementsAre(Bytes{10, 2, 49, 0}, Bytes{10, 2, 49, 0}, Bytes{10, 2, 50, 0},  //
                                                  Bytes{10, 2, 0, 0}));
  expect_link_closed();
}

TEST_F(PositionVelocityTime, IsNotAskedForWhereThereIsNone) {
  for (const Bytes& protocols : {Bytes{'L', 1, 0, 'A', 10, 0}, Bytes{'L', 2, 0, 'A', 0x20, 3, 'D', 0x20, 3}, Bytes{}}) {
    heard.clear();
    array = protocols;
    product = {7, 0, 100, 0, 'G', 0};
    EXPECT_FALSE(follow());
    EXPECT_EQ(front_end.lines[1], "This receiver has no position-velocity-time data.");
    EXPECT_THAT(after_identification(), ElementsAre(Bytes{10, 2, 0, 0}));
  }
}

TEST_F(SingleCommands, PowerOffIsSentOnceAndLeavesNothingBehind) {
  EXPECT_TRUE(commands.power_off());
  EXPECT_THAT(after_identification(), ElementsAre(Bytes{10, 2, 8, 0}));
  expect_link_closed();
  become_old_aviation_receiver();
  EXPECT_TRUE(commands.power_off());
  EXPECT_EQ(heard.back(), (Bytes{10, 2, 26, 0}));
}

TEST_F(SingleCommands, AReceiverThatIsOffBeforeItAcknowledgesIsOffAllTheSame) {
  unacknowledged = kPowerOff;
  EXPECT_TRUE(commands.power_off());
  EXPECT_LT(clock.now, 2s);
  EXPECT_THAT(front_end.lines, IsEmpty());
  expect_link_closed();
}

TEST_F(SingleCommands, PowerOffThatWasDamagedOnTheWayIsSentAgain) {
  unacknowledged = kPowerOff;
  answers[kPowerOff] = {{21, {10, 0}}};
  device.on_sent = [this, times = 0](const Bytes& frame) mutable {
    if (frame[1] == 10 && frame[3] == kPowerOff && ++times == 2) {
      unacknowledged = -2;
      answers.clear();
    }
    on_sent(frame);
  };
  EXPECT_TRUE(commands.power_off());
  EXPECT_EQ(std::ranges::count(heard, Bytes{10, 2, 8, 0}), 2);
}

}  // namespace
}  // namespace garmin

#include "serial/com_port.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/byte_cursor.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/scripted_device.h"

namespace serial {
namespace {

using base::Bytes;
using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

Bytes bytes_of(std::string_view text) { return {text.begin(), text.end()}; }

// Listens for three seconds; found when the wanted byte came.
class FakeReceiver : public Receiver {
 public:
  FakeReceiver(ComPort& port, base::Clock& clock, DeviceFlags& flags) : port_(port), clock_(clock), flags_(flags) {}
  int family() const override { return 0; }
  void probe() override {
    ++probes;
    const auto end = clock_.monotonic() + milliseconds(3000);
    while (clock_.monotonic() < end && !port_.lost()) {
      port_.wait_for_input(milliseconds(20));
      while (port_.AsyncInStat())
        if (port_.AsyncIn() == wanted) return;
    }
    flags_.ComTimedOut = true;
  }
  int wanted = 0x55;
  int probes = 0;

 private:
  ComPort& port_;
  base::Clock& clock_;
  DeviceFlags& flags_;
};

class ComPortTest : public ::testing::Test {
 protected:
  ComPortTest() {
    port.set_port_list([this] { return ports; });
  }
  std::vector<int> speeds() const {
    std::vector<int> result;
    for (const LineSettings& line : device.applied) result.push_back(line.speed_bps);
    return result;
  }

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  DeviceFlags flags;
  std::unique_ptr<support::ScriptedDevice> made = std::make_unique<support::ScriptedDevice>(clock);
  support::ScriptedDevice& device = *made;
  ComPort port{[this](const std::string&) { return std::move(made); }, clock, front_end, flags};
  FakeReceiver receiver{port, clock, flags};
  std::vector<PortInfo> ports{{"/dev/ttyS0", ""}, {"/dev/ttyUSB0", "Some Adapter"}};
};

TEST_F(ComPortTest, AGarminReceiverThatAnswersOpensThePortAt9600WhateverTheSpeedWas) {
  port.set_speed(4800);
  device.queue({0x55}, milliseconds(200));
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_TRUE(flags.PortOpen);
  EXPECT_FALSE(flags.UserAbort);
  EXPECT_EQ(device.opened, std::vector<std::string>{"COM1"});
  EXPECT_EQ(speeds(), std::vector{9600});
  EXPECT_EQ(front_end.title_refreshes, 1);
  EXPECT_THAT(front_end.status_writes, ElementsAre(std::pair(3, "Opening COM Port"), std::pair(3, " ")));
}

TEST_F(ComPortTest, AnOpenPortIsNotOpenedTwiceAndAnIdentifiedReceiverIsNotProbedAgain) {
  device.queue({0x55});
  port.OpenGpsPort(kGarminFamily, &receiver);
  flags.GpsIdentified = true;
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_EQ(device.opened.size(), 1u);
  port.AsyncStop();
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_TRUE(flags.PortOpen);
  EXPECT_EQ(receiver.probes, 1);
}

TEST_F(ComPortTest, AnotherPortOrFamilyMeansAnotherReceiver) {
  port.set_family(kGarminFamily);
  flags.GpsIdentified = flags.LowranceIdentified = true;
  port.set_port_name("COM1");
  port.set_family(kGarminFamily);
  EXPECT_TRUE(flags.GpsIdentified && flags.LowranceIdentified);
  port.set_port_name("COM2");
  EXPECT_FALSE(flags.GpsIdentified || flags.LowranceIdentified);
  flags.GpsIdentified = flags.LowranceIdentified = true;
  port.set_family(kLowranceFamily);
  EXPECT_FALSE(flags.GpsIdentified || flags.LowranceIdentified);
}

TEST_F(ComPortTest, AMissingPortIsReportedWithThePortsThatExist) {
  port.set_port_name("COM7");
  device.open_error = 2;
  device.problem = OpenProblem::NoSuchPort;
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_FALSE(flags.PortOpen);
  EXPECT_THAT(front_end.line_writes,
              ElementsAre(std::pair(1, "Comm error in AsyncInit 1: 2"), std::pair(2, "AsyncInit Error"),
                          std::pair(3, "There is no port COM7. Ports of this machine: /dev/ttyS0, /dev/ttyUSB0.")));
}

TEST_F(ComPortTest, APortThatNoDeviceStandsBehindIsAMissingPort) {
  made.reset();
  ports.clear();
  port.set_port_name("sim:nothing");
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_FALSE(flags.PortOpen);
  EXPECT_EQ(front_end.lines[1], "Comm error in AsyncInit 1: 2");
  EXPECT_EQ(front_end.lines[3], "There is no port sim:nothing. This machine has no serial port: plug in an adapter.");
  EXPECT_FALSE(port.AsyncInStat());
  EXPECT_FALSE(port.AsyncOut(Bytes{1}));
  EXPECT_GE(port.AsyncIn(), 1000);
}

TEST_F(ComPortTest, EachReasonOfAFailedOpenComesWithWhatToDo) {
  device.open_error = 13;
  device.group = "dialout";
  const auto advice = [this](OpenProblem problem) {
    device.problem = problem;
    port.OpenGpsPort(kGarminFamily, &receiver);
    return front_end.lines[3];
  };
  EXPECT_EQ(advice(OpenProblem::NoPermission),
            "No permission for COM1, which belongs to the group dialout. Run: sudo usermod -aG dialout $USER, then "
            "log in again.");
  EXPECT_EQ(advice(OpenProblem::InUse), "COM1 is in use by another program. Close that program and try again.");
  EXPECT_EQ(advice(OpenProblem::NotSerial),
            "COM1 is not a serial device. Ports of this machine: /dev/ttyS0, /dev/ttyUSB0.");
  device.group = "";
  EXPECT_THAT(advice(OpenProblem::NoPermission), Not(HasSubstr("usermod")));
}

TEST_F(ComPortTest, ADeviceWhoseLineCannotBeReadIsClosedAgain) {
  device.read_settings_error = 25;
  device.problem = OpenProblem::NotSerial;
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_EQ(front_end.lines[1], "Comm error in AsyncInit GetCommState: 25");
  EXPECT_EQ(front_end.lines[2], "AsyncInit Error");
  EXPECT_FALSE(device.is_open);
}

TEST_F(ComPortTest, ASilentGarminReceiverGetsNoSecondTry) {
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_FALSE(flags.PortOpen);
  EXPECT_TRUE(flags.UserAbort);
  EXPECT_EQ(receiver.probes, 1);
  EXPECT_FALSE(device.is_open);
  EXPECT_EQ(device.restores, 1);
  EXPECT_EQ(speeds(), std::vector{9600});
  EXPECT_THAT(front_end.boxes, ElementsAre(std::pair("COM Timeout", "Serial Port Timeout")));
  EXPECT_EQ(front_end.lines[3], "No answer on COM1. Is the receiver on, connected and set to GARMIN interface?");
}

TEST_F(ComPortTest, AReceiverThatTalksNmeaAtTheGarminSpeedIsRecognisedAtOnce) {
  device.queue(bytes_of("$GPGGA,170834,4124.8963,N,08151.6838,W,1,05*75\r\n"), milliseconds(900));
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_EQ(clock.now, milliseconds(3000));
  EXPECT_EQ(front_end.lines[3], "The receiver on COM1 talks NMEA: set its interface to GARMIN.");
}

TEST_F(ComPortTest, GarbageIsListenedToAt4800AndTurnsOutToBeNmea) {
  device.queue({0x80, 0xFE, 0x00}, milliseconds(500));
  device.on_applied = [this](const LineSettings& line) {
    if (line.speed_bps == 4800) device.queue(bytes_of("C,A*70\r\n$GPRMC,220516"), milliseconds(2000));
  };
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_EQ(speeds(), (std::vector{9600, 4800}));
  EXPECT_EQ(port.speed(), 9600);
  EXPECT_EQ(front_end.lines[3], "The receiver on COM1 talks NMEA: set its interface to GARMIN.");
}

TEST_F(ComPortTest, GarbageThatStaysGarbageIsListenedToForAtMost2500Milliseconds) {
  device.queue({0x80, 0xFE, 0x00}, milliseconds(500));
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_EQ(clock.now, milliseconds(5500));
  EXPECT_EQ(front_end.lines[3],
            "Bytes came on COM1, but no complete answer. Is the receiver's interface set to GARMIN?");
}

TEST_F(ComPortTest, EscEndsTheListening) {
  device.queue({0x80}, milliseconds(500));
  front_end.esc = [] { return true; };
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_EQ(clock.now, milliseconds(3000));
}

TEST_F(ComPortTest, ASilentLowranceReceiverIsTriedTenTimesThroughTheSpeeds) {
  port.OpenGpsPort(kLowranceFamily, &receiver);
  // Deliberate : 19200 before 57600.
  EXPECT_EQ(speeds(), (std::vector{115200, 19200, 57600, 9600, 4800, 2400, 1200, 115200, 19200, 57600}));
  EXPECT_EQ(device.restores, 10);
  EXPECT_THAT(front_end.boxes, ElementsAre(std::pair("COM Error", "Cannot find default port speed.")));
  EXPECT_EQ(port.speed(), 115200);
  EXPECT_TRUE(flags.UserAbort);
  EXPECT_FALSE(flags.PortOpen);
  EXPECT_EQ(front_end.status_writes[1], std::pair(3, std::string("Trying 115200 baud")));
}

TEST_F(ComPortTest, TheSpeedAtWhichALowranceReceiverAnswersStays) {
  port.set_speed(57600);
  device.on_applied = [this](const LineSettings& line) {
    if (line.speed_bps == 4800) device.queue({0x55}, milliseconds(10));
  };
  port.OpenGpsPort(kLowranceFamily, &receiver);
  EXPECT_EQ(speeds(), (std::vector{57600, 9600, 4800}));
  EXPECT_TRUE(flags.PortOpen);
  EXPECT_EQ(port.speed(), 4800);
  EXPECT_TRUE(front_end.boxes.empty());
}

TEST_F(ComPortTest, ASpeedOutsideTheCycleIsRetriedTenTimes) {
  port.set_speed(38400);
  port.OpenGpsPort(kLowranceFamily, &receiver);
  EXPECT_EQ(speeds(), std::vector<int>(10, 38400));
  EXPECT_EQ(port.speed(), 115200);
}

TEST_F(ComPortTest, EscEndsTheSearchForASpeedAndLeavesThePortClosed) {
  front_end.esc = [this] { return receiver.probes == 2; };
  port.OpenGpsPort(kLowranceFamily, &receiver);
  EXPECT_EQ(receiver.probes, 2);
  EXPECT_EQ(front_end.lines[4], "ESC Pressed!");
  EXPECT_FALSE(device.is_open || flags.PortOpen);
  EXPECT_EQ(front_end.times_written(1, "Comm error in AsyncStop: 6"), 0);
}

TEST_F(ComPortTest, AnUnknownFamilyIsNotProbed) {
  port.OpenGpsPort(7, &receiver);
  EXPECT_TRUE(flags.PortOpen);
  EXPECT_EQ(receiver.probes, 0);
}

TEST_F(ComPortTest, LineErrorsOlderThanTheLastPollAreForgottenNewOnesAreNamedInOrder) {
  ASSERT_EQ(port.AsyncInit("COM1"), 0);
  device.line_errors.break_received = true;
  port.AsyncInStat();
  port.AsyncError("AsyncSet", 22);
  EXPECT_EQ(front_end.lines[1], "Comm error in AsyncSet: 22");
  EXPECT_EQ(front_end.lines.count(2), 0u);
  device.line_errors = {.framing = true, .overrun = true, .parity = true};
  port.AsyncError("AsyncSet", 22);
  EXPECT_EQ(front_end.lines[2], "Other errors:  Frm err  OverRun  RcvParity ");
}

TEST_F(ComPortTest, WithNothingToReadAsyncInGivesNoByteValueAndAFailedWriteIsOnlyReturned) {
  ASSERT_EQ(port.AsyncInit("COM1"), 0);
  device.queue({0xFF});
  EXPECT_EQ(port.AsyncIn(), 255);
  EXPECT_EQ(port.AsyncIn(), 1255);
  device.write_error = 110;
  EXPECT_FALSE(port.AsyncOut(Bytes{1}));
  EXPECT_TRUE(front_end.lines.empty());
}

TEST_F(ComPortTest, AnUnpluggedAdapterIsReportedOnceAfterItsLastBytes) {
  port.OpenGpsPort(7, nullptr);
  flags.GpsIdentified = true;
  device.queue({0x41});
  device.vanish(milliseconds(10));
  clock.now += milliseconds(20);
  EXPECT_TRUE(port.AsyncInStat());
  EXPECT_FALSE(port.lost());
  EXPECT_EQ(port.AsyncIn(), 0x41);
  for (int polls = 0; polls < 3; ++polls) EXPECT_FALSE(port.AsyncInStat());
  EXPECT_TRUE(port.lost());
  EXPECT_FALSE(flags.GpsIdentified);
  EXPECT_FALSE(port.AsyncOut(Bytes{1}));
  port.AsyncStop();
  EXPECT_THAT(front_end.line_writes,
              ElementsAre(std::pair(1, "Comm error in AsyncIn: 5"),
                          std::pair(3, "The port COM1 has vanished (adapter unplugged?). Plug it in and try again.")));
  EXPECT_FALSE(device.is_open || flags.PortOpen);
}

TEST_F(ComPortTest, APortLostWhileProbingKeepsItsMessage) {
  device.vanish(milliseconds(100));
  port.OpenGpsPort(kGarminFamily, &receiver);
  EXPECT_EQ(clock.now, milliseconds(100));
  EXPECT_EQ(front_end.boxes.size(), 1u);
  EXPECT_EQ(front_end.lines[3], "The port COM1 has vanished (adapter unplugged?). Plug it in and try again.");
}

TEST_F(ComPortTest, WaitingEndsWithTheFirstByteAndOnAVanishedPortStillTakesItsTime) {
  ASSERT_EQ(port.AsyncInit("COM1"), 0);
  device.queue({1}, milliseconds(3));
  port.wait_for_input(milliseconds(50));
  EXPECT_EQ(clock.now, milliseconds(3));
  device.vanish();
  port.wait_for_input(milliseconds(5));
  EXPECT_EQ(clock.now, milliseconds(8));
}

TEST_F(ComPortTest, ALineThatCannotBeRestoredIsReportedAndThePortClosedNevertheless) {
  port.OpenGpsPort(7, nullptr);
  device.restore_error = 22;
  EXPECT_TRUE(port.AsyncStop());
  EXPECT_EQ(front_end.lines[1], "Comm error in AsyncStop: 22");
  EXPECT_FALSE(device.is_open || flags.PortOpen);
}

}  // namespace
}  // namespace serial

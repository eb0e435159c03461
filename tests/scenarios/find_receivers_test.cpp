#include "session/find_receivers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "simulators/garmin_sim_device.h"
#include "simulators/lowrance_sim_device.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/scripted_device.h"

namespace session {
namespace {

using support::ScriptedDevice;
using testing::ElementsAre;

class FindReceivers : public testing::Test {
 protected:
  using Prepare = std::function<void(ScriptedDevice&)>;

  std::vector<std::string> find(std::vector<std::string> ports, std::optional<store::Family> only = std::nullopt) {
    Session session(clock, front_end, {}, [this](const std::string& name) { return make(name); });
    session.settings.PortName = "sim:garmin";
    session.settings.port_speed = start_speed;
    std::vector<std::string> lines;
    const auto begin = clock.now;
    result = find_receivers(
        session, ports, only, false, [this](const std::string& port) { tried.push_back(port); },
        [&](const PortFinding& finding) { lines.push_back(finding.port + ": " + finding.text); });
    seconds = std::chrono::duration<double>(clock.now - begin).count();
    EXPECT_EQ(session.settings.PortName, "sim:garmin");
    EXPECT_FALSE(session.flags.GpsIdentified || session.flags.LowranceIdentified || session.flags.PortOpen);
    EXPECT_TRUE(front_end.line_writes.empty() && front_end.boxes.empty() && front_end.status_writes.empty());
    return lines;
  }
  std::unique_ptr<serial::SerialDevice> make(const std::string& name) {
    if (name == "sim:garmin")
      return std::make_unique<simulators::GarminSimDevice>(simulators::SimulatedData(), garmin, clock);
    if (name == "sim:lowrance")
      return std::make_unique<simulators::LowranceSimDevice>(simulators::LowranceData(), lowrance, clock);
    if (!scripted.contains(name)) return nullptr;
    auto device = std::make_unique<ScriptedDevice>(clock);
    scripted[name](*device);
    return device;
  }
  static Prepare refuses(serial::OpenProblem problem, const std::string& group = {}) {
    return [=](ScriptedDevice& device) {
      device.open_error = 13;
      device.problem = problem;
      device.group = group;
    };
  }
  // At any speed but its own a line is read as other bytes.
  static void talks_nmea(ScriptedDevice& device) {
    device.on_applied = [&device](const serial::LineSettings& line) {
      const std::string text = line.speed_bps == 4800 ? "$GPRMC,123519,A,4807.038,N*6A\r\n" : "\x81\xF0\x02";
      device.queue({text.begin(), text.end()}, std::chrono::milliseconds(400));
    };
  }
  static void is_silent(ScriptedDevice&) {}

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  simulators::GarminOptions garmin;
  simulators::LowranceOptions lowrance;
  std::map<std::string, Prepare> scripted;
  int start_speed = 0;
  FindResult result;
  std::vector<std::string> tried;
  double seconds = 0;
};

TEST_F(FindReceivers, SaysOfEachPortWhatStandsBehindIt) {
  lowrance.baud = 19200;  // it is deaf at other speeds
  scripted = {{"nmea", talks_nmea},
              {"quiet", is_silent},
              {"noise", [](ScriptedDevice& device) { device.on_sent = [&device](const auto&) { device.queue({7}); }; }},
              {"used", refuses(serial::OpenProblem::InUse)},
              {"theirs", refuses(serial::OpenProblem::NoPermission, "dialout")},
              {"broken", [](ScriptedDevice& device) { device.read_settings_error = 5; }}};
  EXPECT_THAT(
      find({"sim:garmin", "sim:lowrance", "nmea", "quiet", "noise", "used", "theirs", "broken", "none"}),
      ElementsAre(
          "sim:garmin: Garmin: Simulated GPS 128 Software Version 2.50",
          "sim:lowrance: Lowrance/Eagle: GlobalMap 100 at 19200 bits per second",
          "nmea: NMEA text: the receiver's interface is set to NMEA", "quiet: silent",
          "noise: bytes that make no sense", "used: in use by another program",
          "theirs: no permission: it belongs to the group dialout; run sudo usermod -aG dialout $USER, then log "
          "in again",
          "broken: cannot be opened or set up", "none: no such port"));
  EXPECT_EQ(result.receivers, 2);
  EXPECT_EQ(tried.size(), 9U);
}

TEST_F(FindReceivers, TriesOnlyTheFamilyThatIsAskedForFromTheConfiguredSpeedOn) {
  lowrance.baud = 2400;
  start_speed = 2400;
  scripted = {{"nmea", talks_nmea}};
  EXPECT_THAT(find({"sim:lowrance", "nmea"}, store::Family::Lowrance),
              ElementsAre("sim:lowrance: Lowrance/Eagle: GlobalMap 100 at 2400 bits per second",
                          "nmea: NMEA text: the receiver's interface is set to NMEA"));
  EXPECT_THAT(find({"sim:lowrance"}, store::Family::Garmin), ElementsAre("sim:lowrance: silent"));
  EXPECT_LT(seconds, 8);
}

TEST_F(FindReceivers, NoPortTakesLongAndUnusablePortsNone) {
  scripted = {{"quiet", is_silent}, {"used", refuses(serial::OpenProblem::InUse)}};
  find({"quiet"});
  EXPECT_LT(seconds, 20);
  find({"used", "none"});
  EXPECT_EQ(seconds, 0);
}

TEST_F(FindReceivers, EscEndsTheSearchInEitherFamily) {
  scripted = {{"quiet", is_silent}};
  for (const int second : {2, 10}) {
    front_end.esc = [&, end = clock.now + std::chrono::seconds(second), pressed = false]() mutable {
      return !pressed && clock.now > end && (pressed = true);
    };
    EXPECT_TRUE(find({"quiet", "sim:garmin"}).empty());
    EXPECT_TRUE(result.stopped);
    EXPECT_NEAR(seconds, second, 0.1);
  }
}

}  // namespace
}  // namespace session

// Commands of the menus with a Lowrance/Eagle unit.
#include <algorithm>

#include "tests/support/lowrance_scenario.h"
#include "tests/support/scripted_device.h"
#include "ui/commands.h"

namespace {

using support::ScriptedDevice;

class LowranceCommands : public support::LowranceScenario {
 protected:
  bool run(int command) {
    ui::Windows none;
    return ui::find_command(command)->action({*session, none}, command);
  }
  bool identify() {
    return timed([this] { return session->get_gps_id(); });
  }
};

TEST_F(LowranceCommands, SilenceIsToldApartFromAPortThatDoesNotOpen) {
  attach(std::make_unique<ScriptedDevice>(clock));
  EXPECT_FALSE(identify());
  EXPECT_EQ(front_end.lines[1], "COM port timeout!");
  EXPECT_NEAR(elapsed, 10, 0.5);

  auto used = std::make_unique<ScriptedDevice>(clock);
  used->open_error = 16;
  used->problem = serial::OpenProblem::InUse;
  attach(std::move(used));
  EXPECT_FALSE(identify());
  EXPECT_EQ(front_end.lines[1], "COM port not open!");
}

TEST_F(LowranceCommands, TheSpeedAtWhichAUnitWasFoundIsTriedFirstNextTime) {
  simulators::LowranceOptions options;
  options.baud = 9600;  // the fourth that is tried
  unit(options);
  session->keep_port_speed();
  EXPECT_EQ(session->settings.port_speed, 0);
  ASSERT_TRUE(identify());
  EXPECT_GT(elapsed, 3);
  EXPECT_EQ(front_end.lines[1], "GPS Is a Lowrance GlobalMap 100");
  session->keep_port_speed();
  EXPECT_EQ(session->settings.port_speed, 9600);
  session->apply_settings();
  ASSERT_TRUE(identify());
  EXPECT_LT(elapsed, 1);
}

TEST_F(LowranceCommands, RoutesGoTogetherWithTheirWaypoints) {
  constexpr int kUploadRoutes = 40044, kUploadRoutesOfTheRoutesMenu = 40118, kDownloadRoutes = 40034;
  for (const int command : {kUploadRoutes, kUploadRoutesOfTheRoutesMenu}) {
    unit({}, support::short_season());
    session->settings.HandleReadDups = store::Duplicates::Ignore;
    ASSERT_TRUE(run(kDownloadRoutes));
    ASSERT_EQ(items().waypoint_count(), 3);
    const store::ItemStore::Contents routes = items().contents();
    const support::ObservedUnit& empty = unit({}, {});
    items().restore(routes);
    ASSERT_TRUE(run(command)) << front_end.lines[9];
    EXPECT_EQ(std::ranges::count_if(empty.memory().waypoints, [](const auto& record) { return record[2] != 0; }), 3);
    EXPECT_EQ(empty.memory().routes[1][2], 3);  // points
  }
}

}  // namespace

#include "ui/map/profile.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"
#include "ui/map/profile_plot.h"

namespace ui::map {
namespace {

constexpr double kDegree = 111133.8;  // metres of a degree on the sphere of 6367.5 km

class ProfileTest : public testing::Test {
 protected:
  ProfileTest() {
    session.settings.DistValues = geodesy::DistanceUnit::Kilometres;
    session.settings.VerticalValues = store::VerticalUnit::Metres;
  }

  void add(double longitude, std::uint32_t seconds, float altitude = store::kNotKnown) {
    items.start_item();
    items.CurrentItem.position = {0, longitude};
    items.CurrentItem.time = {seconds};
    items.CurrentItem.altitude = altitude;
    (void)items.push_track();
  }
  [[nodiscard]] Profile profile() const { return compute_profile(items, 1, items.track_point_count()); }
  [[nodiscard]] Profile climb_of(const std::vector<float>& heights) {
    items.clear_tracks();
    for (const float height : heights) add(0, 0, height);
    return profile();
  }

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  session::Session session{clock, front_end, {}};
  store::ItemStore& items = session.items;
};

TEST_F(ProfileTest, AddsUpTheWayOverTheDateLine) {
  add(179.5, 1000);
  add(-179.5, 1000 + 3600);
  add(-178.5, 1000 + 7200);
  const Profile track = profile();
  EXPECT_NEAR(track.length, 2 * kDegree, 10);
  EXPECT_NEAR(track.points[1].distance, kDegree, 10);
  EXPECT_EQ(track.duration, 7200);
  EXPECT_NEAR(track.points[1].speed.value(), kDegree / 3600, 0.01);
  EXPECT_FALSE(track.points[0].speed) << "nobody came there";
}

TEST_F(ProfileTest, NoiseDoesNotClimb) {
  const Profile flat = climb_of({100, 102, 99, 101, 98, 102, 100});
  EXPECT_EQ(flat.climb, 0);
  EXPECT_EQ(flat.descent, 0);
  const Profile slope = climb_of({100, 103, 101, 106, 104, 110, 200, 197, 250, 150, 152, 149});
  EXPECT_NEAR(slope.climb, 150, 1e-6);
  EXPECT_NEAR(slope.descent, 101, 1e-6);
  EXPECT_EQ(slope.highest, 250);
  EXPECT_EQ(slope.lowest, 100);
}

TEST_F(ProfileTest, SlowClimbsCountInFull) {
  std::vector<float> heights;
  for (int i = 0; i <= 100; ++i) heights.push_back(static_cast<float>(i));
  for (int i = 99; i >= 40; --i) heights.push_back(static_cast<float>(i));
  EXPECT_NEAR(climb_of(heights).climb, 100, 1e-6);
  EXPECT_NEAR(climb_of(heights).descent, 60, 1e-6);
  EXPECT_NEAR(climb_of({52, 50, 100}).climb, 50, 1e-6) << "from the lowest point, not from the first";
}

TEST_F(ProfileTest, MissingValuesLeaveGapsAndAClockThatGoesBackGivesNoSpeed) {
  add(0.0, 1000, 10);
  add(0.1, 1100, 10);
  add(0.2, 0, store::kNotKnown);
  add(0.3, 1300, 10);
  add(0.4, 1250, 10);
  add(0.5, 1250, 10);
  add(0.6, 1350, 10);
  const Profile track = profile();
  std::vector<bool> speeds;
  for (const ProfilePoint& point : track.points) speeds.push_back(point.speed.has_value());
  EXPECT_EQ(speeds, (std::vector{false, true, false, false, false, false, true}));
  EXPECT_EQ(track.duration, 400) << "the time without a fix is time, but not the way back";
  const ProfilePlot plot(session, track, Against::Distance);
  EXPECT_EQ(plot.heights().size(), 2u);
  EXPECT_EQ(plot.heights()[1].size(), 4u);
}

TEST_F(ProfileTest, StandingStillDoesNotSlowTheMovingAverage) {
  add(0, 1000);
  add(0.1, 2000);
  add(0.1, 50000);
  add(0.2, 51000);
  EXPECT_NEAR(profile().moving_speed.value(), 0.1 * kDegree / 1000, 0.01);
  EXPECT_FALSE(climb_of({1, 2}).moving_speed);
}

TEST_F(ProfileTest, SaysWhatIsMissing) {
  const auto complaint = [&](Against against) { return ProfilePlot(session, profile(), against).complaint(); };
  EXPECT_NE(complaint(Against::Distance), "");
  add(0, 0);
  EXPECT_EQ(complaint(Against::Distance), "This track has only one point");
  add(1, 0);
  EXPECT_EQ(complaint(Against::Distance), "This track has no altitudes and no times");
  add(2, 0, 100);
  EXPECT_EQ(complaint(Against::Distance), "");
  EXPECT_EQ(complaint(Against::Time), "This track has no times");
}

TEST_F(ProfileTest, FiguresAndAxesAreInTheUnitsOfTheSettings) {
  session.settings.DistValues = geodesy::DistanceUnit::NauticalMiles;
  session.settings.VerticalValues = store::VerticalUnit::Feet;
  add(0, 1000, 0);
  add(1, 1000 + 7200, 304.8F);
  const ProfilePlot plot(session, profile(), Against::Distance);
  EXPECT_EQ(plot.figures(),
            "Length: 60.01 nm    Duration: 2:00:00    Average, moving: 30.0 kn\nAltitude: 0 ft to 1000 ft"
            "    Climb: 1000 ft    Descent: 0 ft");
  EXPECT_EQ(plot.height_axis(5).ticks(), (std::vector<double>{0, 200, 400, 600, 800, 1000}));
  EXPECT_EQ(plot.speed_axis(3).last, 40);
  EXPECT_EQ(plot.text_of(*plot.point_at(55)), "60.007 nm, 2:00:00, 1000 ft, 30.0 kn");
}

TEST_F(ProfileTest, TracksAreNumberedAndNamed) {
  items.start_track_log("HILL", "Red");
  add(0, 86400);
  add(1, 0);
  items.start_segment();
  add(2, 0);
  const auto ranges = track_ranges(items);
  ASSERT_EQ(ranges.size(), 2u);
  EXPECT_EQ(ranges[0].last, 2);
  EXPECT_TRUE(track_title(session.items, ItemTexts(session), 1, ranges[0]).starts_with("1: HILL - "));
  EXPECT_EQ(track_title(session.items, ItemTexts(session), 2, ranges[1]), "2: 1 point");
}

TEST(Thinned, KeepsEveryPeak) {
  std::vector<CurvePoint> run;
  for (int i = 0; i < 10000; ++i) run.push_back({static_cast<double>(i), i == 5003 ? 900.0 : i == 5007 ? -900.0 : 1.0});
  const auto points = thinned(run, {0, 10000, 1000}, 100);
  EXPECT_LE(points.size(), 400u);
  EXPECT_TRUE(std::ranges::any_of(points, [](const CurvePoint& point) { return point.y == 900; }));
  EXPECT_TRUE(std::ranges::any_of(points, [](const CurvePoint& point) { return point.y == -900; }));
  EXPECT_EQ(points.back().x, 9999);
}

}  // namespace
}  // namespace ui::map

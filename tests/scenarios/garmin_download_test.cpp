// What a receiver holds is what the stores hold after a download.
#include "garmin/product_table.h"
#include "tests/support/rich_data.h"
#include "tests/support/transfer_scenario.h"

namespace {

using garmin::Kind;
using simulators::SimulatedData;
using simulators::SimWaypoint;
using store::ItemRecord;
using support::described;

constexpr double kSemicircle = 180.0 / 2147483648.0;

class GarminDownload : public support::TransferScenario {
 protected:
  static void expect_place(const ItemRecord& item, double latitude, double longitude) {
    EXPECT_NEAR(item.position.latitude, latitude, kSemicircle) << described(item);
    EXPECT_NEAR(item.position.longitude, longitude, kSemicircle) << described(item);
  }

  void expect_weekend_waypoint(const ItemRecord& item, const SimWaypoint& waypoint) {
    expect_place(item, waypoint.latitude, waypoint.longitude);
    EXPECT_EQ(item.ident, waypoint.ident);
    EXPECT_EQ(item.comment, waypoint.comment);
    EXPECT_EQ(item.altitude, waypoint.altitude);
    EXPECT_EQ(item.symbol, waypoint.symbol);
    EXPECT_EQ(item.display_mode, 3);
    EXPECT_FALSE(store::is_known(item.depth));
    EXPECT_EQ(item.time.seconds, 0U);
    EXPECT_EQ(item.proximity_distance, waypoint.proximity.value_or(0));
  }
};

TEST_F(GarminDownload, TheBuiltInWeekendArrivesComplete) {
  start();  // the port "sim:garmin" as users have it
  session->settings.SA_SortAfterInput = 0;
  session->settings.ForceExactDupeRemoval = 1;
  ASSERT_TRUE(download(Kind::All));
  const SimulatedData weekend = simulators::believable_weekend();

  ASSERT_EQ(items().waypoint_count(), 30);
  for (std::size_t i = 0; i < 30; ++i)
    expect_weekend_waypoint(items().waypoint(static_cast<int>(i) + 1), weekend.waypoints[i]);

  ASSERT_EQ(items().route_count(), 3);
  for (std::size_t i = 0; i < 3; ++i) {
    const auto row = std::ranges::find_if(items().contents().routes, [&](const store::Route& route) {
      return route.header && route.header->comment == weekend.routes[i].name;
    });
    ASSERT_NE(row, items().contents().routes.end()) << weekend.routes[i].name;
    ASSERT_EQ(row->points.size(), weekend.routes[i].points.size());
    for (std::size_t p = 0; p < row->points.size(); ++p) {
      expect_weekend_waypoint(row->points[p], weekend.routes[i].points[p]);
      EXPECT_EQ(row->points[p].has_route_link, p + 1 < row->points.size() ? 1 : 0);
    }
  }

  ASSERT_EQ(items().track_point_count(), 1000);
  ASSERT_EQ(items().track_count(), 2);
  for (std::size_t i = 0; i < 1000; ++i) {
    const ItemRecord& point = items().track_point(static_cast<int>(i) + 1);
    const simulators::SimTrackPoint& sent = weekend.tracks[i / 500].points[i % 500];
    expect_place(point, sent.latitude, sent.longitude);
    EXPECT_EQ(point.time.seconds, sent.time);
    EXPECT_EQ(point.altitude, sent.altitude);
    EXPECT_FALSE(store::is_known(point.depth));
  }
  EXPECT_EQ(items().track_point(1).ident, "SATURDAY FELLS");
  EXPECT_EQ(store::kColourNames[items().track_point(1).colour], "Red");
  EXPECT_EQ(items().track_point(501).ident, "SUNDAY CANOE");
  EXPECT_EQ(store::kColourNames[items().track_point(501).colour], "Blue");

  ASSERT_EQ(items().proximity_count(), 3);
  for (std::size_t i = 0; i < 3; ++i)
    expect_weekend_waypoint(items().proximity(static_cast<int>(i) + 1), weekend.proximity[i]);

  EXPECT_EQ(front_end.lines[3], "Waypoint download completed");
  EXPECT_EQ(front_end.lines[4], "Tracks download completed");
  EXPECT_EQ(front_end.lines[5], "Routes download completed");
  EXPECT_EQ(front_end.lines[6], "Proximity download completed");
  EXPECT_THAT(front_end.boxes, testing::IsEmpty());
}

TEST_F(GarminDownload, RoutePointsAreWaypointsTooUnlessDuplicatesAreUnwanted) {
  for (const auto& [handling, exact, waypoints] :
       {std::tuple(store::Duplicates::Merge, false, 55), std::tuple(store::Duplicates::Merge, true, 30),
        std::tuple(store::Duplicates::Replace, false, 30), std::tuple(store::Duplicates::Ignore, false, 30)}) {
    duplicates = handling;
    removes_exact_duplicates = exact;
    simulate(simulators::believable_weekend());
    ASSERT_TRUE(download(Kind::Waypoints));
    ASSERT_TRUE(download(Kind::Routes));
    EXPECT_EQ(items().waypoint_count(), waypoints);
    EXPECT_EQ(items().route_count(), 3);
    const ItemRecord& point = items().route(items().contents().route_index).points.front();
    EXPECT_GT(point.number, 0U);
  }
}

// Which fields each format has is a matter of the records; here, that all records come, decoded as that format.
class EveryFormat : public GarminDownload {
 protected:
  void be(const simulators::GarminOptions& options) { simulate(data, options); }
  [[nodiscard]] const garmin::Protocols& speaks() const { return session->garmin_selection.protocols(); }

  static void expect_waypoints(const store::PackedItems& stored, int format, const std::vector<SimWaypoint>& sent) {
    const bool has_long_idents = format == 105 || format == 106 || (format >= 108 && format <= 110);
    ASSERT_EQ(stored.size(), sent.size());
    for (std::size_t i = 0; i < sent.size(); ++i) {
      const ItemRecord item = stored[i];
      EXPECT_EQ(item.number, i + 1);
      EXPECT_EQ(item.ident, sent[i].ident.substr(0, has_long_idents ? 50 : 6)) << "D" << format;
      expect_place(item, sent[i].latitude, sent[i].longitude);
    }
  }
  void expect_all_waypoints() {
    EXPECT_TRUE(download(Kind::Waypoints));
    expect_waypoints(items().contents().waypoints, speaks().waypoint_data, data.waypoints);
  }
  void expect_all_proximity() {
    EXPECT_TRUE(download(Kind::ProximityWaypoints));
    expect_waypoints(items().contents().proximity, speaks().proximity_data, data.proximity);
  }
  void expect_route(bool with_links) {
    items().clear_all();
    EXPECT_TRUE(download(Kind::Routes));
    ASSERT_EQ(items().route_count(), 1);
    const int header = speaks().route_header;
    const store::Route& route = items().route(header == 202 ? 0 : 7);  // D202 has no number
    ASSERT_TRUE(route.header);
    EXPECT_EQ(route.header->comment, header == 200 ? "" : "ROUND THE BAY");
    expect_waypoints(items().contents().waypoints, speaks().route_waypoint, data.waypoints);
    ASSERT_EQ(route.points.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(route.points[i].ident, items().waypoint(static_cast<int>(i) + 1).ident);
      EXPECT_EQ(route.points[i].has_route_link, with_links && i < 2 ? 1 : 0);
      EXPECT_EQ(route.points[i].route_link_ident, with_links && i == 0 ? "OVER THE HILL" : "");
    }
  }
  void expect_track(std::string_view name, int colour) {
    EXPECT_TRUE(download(Kind::Tracks));
    ASSERT_EQ(items().track_point_count(), 3);
    for (std::size_t i = 0; i < 3; ++i) {
      const ItemRecord& point = items().track_point(static_cast<int>(i) + 1);
      const simulators::SimTrackPoint& sent = data.tracks[0].points[i];
      const bool is_named = i == 0 && !name.empty();
      expect_place(point, sent.latitude, sent.longitude);
      EXPECT_EQ(point.time.seconds, sent.time);
      EXPECT_EQ(store::is_known(point.altitude), speaks().track_data != 300 && sent.altitude);
      EXPECT_EQ(point.segment_flag, is_named ? 2 : sent.starts_segment ? 1 : 0);
      EXPECT_EQ(point.ident, is_named ? name : "");
      if (is_named) {
        EXPECT_EQ(point.colour, colour);
      }
    }
  }

  SimulatedData data = support::rich_data();
};

TEST_F(EveryFormat, EveryProductOfTheTableGivesAllThatItsFormatsHold) {
  for (const garmin::ProductRow& row : garmin::kProducts) {
    SCOPED_TRACE("product " + std::to_string(row.product_id) + ", limit " + std::to_string(row.version_limit));
    const int version = row.version_limit == 0  ? 250
                        : row.version_limit > 0 ? row.version_limit
                                                : -row.version_limit - 1;
    simulators::GarminOptions options;
    options.product_id = row.product_id;
    options.software_version = static_cast<std::int16_t>(version);
    be(options);
    expect_all_waypoints();
    EXPECT_EQ(speaks().waypoint_data, row.waypoint_data);
    EXPECT_EQ(speaks().link, row.link);
    // Their closing packets carry command numbers that only the other link's receivers have.
    if (row.link == 2) {
      EXPECT_EQ(front_end.lines[4], "No Waypoint EOF received");
    }
    expect_route(false);
    if (row.link == 2) {
      EXPECT_EQ(front_end.lines[4], "No Route EOF received");
    }
    if (row.track_data != garmin::kNone) {
      expect_track("", 0);
    } else {
      EXPECT_FALSE(download(Kind::Tracks));
      EXPECT_EQ(front_end.lines[1], "Tracks not supported.");
    }
    if (row.link == 1 && row.proximity_data != garmin::kNone) expect_all_proximity();
    EXPECT_THAT(front_end.boxes, testing::IsEmpty());
  }
}

TEST_F(EveryFormat, EveryFormatThatAnArrayNamesGivesAllThatItHolds) {
  struct Case {
    int waypoint, proximity, header, track_header, track;
  };
  for (const Case& c : {Case{105, 107, 202, 310, 301}, Case{106, 108, 202, 312, 302}, Case{107, 109, 201, 310, 300},
                        Case{108, 110, 202, 312, 301}, Case{109, 403, 202, 310, 302}, Case{110, 450, 202, 310, 301},
                        Case{154, 154, 200, 312, 300}, Case{155, 155, 201, 310, 301}}) {
    SCOPED_TRACE(c.waypoint);
    simulators::GarminOptions options;
    options.protocols = base::format_text("P000 L001 A010 A100 D%d A201 D%d D%d D210 A301 D%d D%d A400 D%d", c.waypoint,
                                          c.header, c.waypoint, c.track_header, c.track, c.proximity);
    be(options);
    expect_all_waypoints();
    expect_route(true);
    expect_track("OUT AND BACK", 2);
    expect_all_proximity();
    EXPECT_THAT(front_end.boxes, testing::IsEmpty());
  }
}

TEST_F(GarminDownload, ARoutePointWithALinkIsMarkedAsHavingOne) {
  simulate(support::short_weekend());
  EXPECT_TRUE(download(Kind::Routes));
  const std::vector<ItemRecord>& points = items().route(1).points;
  ASSERT_EQ(points.size(), 3U);
  EXPECT_EQ(points[0].detail_kind, store::kRouteLinkDetails);
  EXPECT_EQ(points[1].detail_kind, store::kRouteLinkDetails);
  EXPECT_EQ(points[2].detail_kind, store::kNoDetails);
}

TEST_F(GarminDownload, AReceiverWithoutProximityWaypointsStillGivesEverythingElse) {
  simulators::GarminOptions options;
  options.product_id = 31;
  simulate(support::short_weekend(), options);
  EXPECT_TRUE(download(Kind::All));
  EXPECT_EQ(front_end.lines[1], "Proximity waypoints not supported.");
  EXPECT_EQ(front_end.lines[5], "Routes download completed");
  EXPECT_EQ(items().waypoint_count(), 13);
  EXPECT_EQ(items().track_point_count(), 10);
}

TEST_F(GarminDownload, AReceiverOfTheOtherLinkGivesItsWaypointsAndRoutesWithoutATimeOut) {
  simulators::GarminOptions options;
  options.product_id = 20;
  simulate(support::short_weekend(), options);
  EXPECT_TRUE(download(Kind::All));
  EXPECT_EQ(items().waypoint_count(), 13);
  EXPECT_EQ(items().route_count(), 3);
  EXPECT_THAT(front_end.boxes, testing::IsEmpty());
}

TEST_F(GarminDownload, AnEmptyReceiverSaysSoKindByKind) {
  simulate({});
  EXPECT_TRUE(download(Kind::All));
  for (const char* kind : {"Waypoint", "Track", "Proximity Waypoint"})
    EXPECT_TRUE(was_said(1, "GPS: No " + std::string(kind) + " records to send")) << kind;
  EXPECT_TRUE(was_said(4, "GPS: No Route records to send"));
  EXPECT_FALSE(was_said(4, "EOF"));
  EXPECT_TRUE(items().empty());
}

// Receivers count weeks of GPS time modulo 1024; an old one that took the wrong era sends dates that many weeks early.
class GarminDates : public GarminDownload {
 protected:
  static constexpr std::uint32_t kWeeks = 619315200;  // 1024 of them in seconds

  bool download_with_times(std::uint32_t point, std::uint32_t waypoint, int rollover) {
    SimulatedData data = support::rich_data();
    data.waypoints[0].time = waypoint;
    data.tracks[0].points[0].time = point;
    data.tracks[0].points[1].time = 0;
    simulators::GarminOptions options;
    options.protocols = "L001 A010 A100 D110 A300 D301";
    clock.now = {};
    simulate(data, options);
    session->settings.SA_SortAfterInput = 0;
    session->settings.WeekRollover = rollover;
    return download(Kind::All);
  }
  bool is_told() { return front_end.lines[9] == "Receiver dates look 1024 weeks too early"; }
};

TEST_F(GarminDates, AreMovedByTheWeeksWhereThatIsWantedAndWhereThereIsATime) {
  ASSERT_TRUE(download_with_times(kWeeks, 5000, 1));
  EXPECT_EQ(items().waypoint(1).time.seconds, kWeeks + 5000);
  EXPECT_EQ(items().waypoint(2).time.seconds, 0U);
  EXPECT_EQ(items().track_point(1).time.seconds, 2 * kWeeks);
  EXPECT_EQ(items().track_point(2).time.seconds, 0U);
  ASSERT_TRUE(download_with_times(0xFFFFFFFE, 0xFFFFFFFF - kWeeks, 1));
  EXPECT_EQ(items().waypoint(1).time.seconds, 0xFFFFFFFF);
  EXPECT_EQ(items().track_point(1).time.seconds, 0xFFFFFFFE);  // there is no later time
  ASSERT_TRUE(download_with_times(kWeeks, 5000, 0));
  EXPECT_EQ(items().waypoint(1).time.seconds, 5000U);
}

TEST_F(GarminDates, ThatLookTooEarlyAreTold) {
  clock.unix_start = 1700000000;  // 2023-11-14
  constexpr std::uint32_t kThen = 1700000000 - 631065600 - kWeeks;
  constexpr std::uint32_t kDay = 86400, kYear = 365 * kDay;
  for (const std::uint32_t newest : {kThen, kThen + kDay - 60, kThen - 4 * kYear}) {
    ASSERT_TRUE(download_with_times(newest, 1, 0));
    EXPECT_TRUE(is_told()) << newest;
  }
  for (const std::uint32_t newest : {kThen + kDay + 60, kThen - 6 * kYear, kThen + kWeeks, 0U}) {
    ASSERT_TRUE(download_with_times(newest, 0, 0));
    EXPECT_FALSE(is_told()) << newest;
  }
  ASSERT_TRUE(download_with_times(1, kThen, 0));  // the waypoint is the newest
  EXPECT_TRUE(is_told());
  ASSERT_TRUE(download_with_times(kThen, 0, 1));
  EXPECT_FALSE(is_told());
}

}  // namespace

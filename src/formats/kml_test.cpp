#include "formats/kml.h"

#include "tests/support/format_fixture.h"

namespace formats {
namespace {

using testing::HasSubstr;

constexpr std::uint32_t kNoon = 391867200;  // 2002-06-01 12:00:00 UTC

class Kml : public support::FormatTest {
 protected:
  std::string write() { return write_with(write_kml); }
  void push_point_of_track(double latitude, float altitude, std::uint32_t seconds) {
    start(latitude, 10, seconds).altitude = altitude;
    ASSERT_EQ(store.push_track(), 0);
  }
};

TEST_F(Kml, PointsShowAllThatIsKnownOfThem) {
  start(-33.857, 151.215, kNoon).ident = "M\xDCLLER & CO";
  item().comment = "<b>";
  item().altitude = 12.4F;
  item().depth = 3.5F;
  item().proximity_distance = 250;
  item().symbol = 150;
  item().city = "Kiel";
  (void)store.push_proximity();
  start(1, 2).ident = "EVENT";
  item().symbol = 5;
  (void)store.push_event();
  EXPECT_EQ(
      write(),
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<kml xmlns=\"http://www.opengis.net/kml/2.2\" xmlns:gx=\"http://www.google.com/kml/ext/2.2\">\n<Document>\n"
      "<Folder><name>Proximity</name>\n"
      "<Placemark><name>M\xC3\x9CLLER &amp; CO</name><description>&lt;b&gt;</description>"
      "<TimeStamp><when>2002-06-01T12:00:00Z</when></TimeStamp><ExtendedData>"
      "<Data name=\"symbol\"><value>Boat Ramp</value></Data><Data name=\"depth\"><value>3.5</value></Data>"
      "<Data name=\"proximity\"><value>250</value></Data><Data name=\"City\"><value>Kiel</value></Data>"
      "</ExtendedData><Point><altitudeMode>absolute</altitudeMode>"
      "<coordinates>151.215,-33.857,12.4</coordinates></Point></Placemark>\n</Folder>\n"
      "<Folder><name>Events</name>\n"
      "<Placemark><name>EVENT</name><ExtendedData><Data name=\"symbol\"><value>5</value></Data></ExtendedData>"
      "<Point><coordinates>2,1</coordinates></Point></Placemark>\n</Folder>\n</Document>\n</kml>\n");
}

// A height that is not known is no height of 0.
TEST_F(Kml, LinesAreInTheAirOnlyWhereAllTheirHeightsAreKnown) {
  store.start_route(7, "07", "Round");
  (void)store.push_route(true);
  for (const double latitude : {1.0, 1.5}) {
    start(latitude, 2).altitude = 5;
    (void)store.push_route(true);
  }
  push_point_of_track(54, 12.5F, 0);
  push_point_of_track(54.5, store::kNotKnown, 0);
  options.waypoints = false;
  EXPECT_THAT(write(),
              HasSubstr("<Folder><name>Routes</name>\n<Placemark><name>Round</name><ExtendedData><Data name=\"number\">"
                        "<value>7</value></Data></ExtendedData><LineString><altitudeMode>absolute</altitudeMode>"
                        "<coordinates>\n2,1,5\n2,1.5,5\n</coordinates></LineString></Placemark>\n</Folder>\n"
                        "<Folder><name>Tracks</name>\n<Placemark><LineString><tessellate>1</tessellate>"
                        "<coordinates>\n10,54,12.5\n10,54.5\n</coordinates></LineString></Placemark>\n</Folder>\n"));
}

TEST_F(Kml, ALineOfOnePointIsAPoint) {
  store.start_route(7, "07", "");
  (void)store.push_route(true);
  start(1, 2);
  (void)store.push_route(true);
  push_point_of_track(54, 12.5F, 0);
  const std::string text = write();
  EXPECT_THAT(text, HasSubstr("</ExtendedData><Point><coordinates>2,1</coordinates></Point></Placemark>\n"));
  EXPECT_THAT(text, HasSubstr("<Placemark><Point><altitudeMode>absolute</altitudeMode><coordinates>10,54,12.5"
                              "</coordinates></Point></Placemark>\n"));
}

// A track has no place for a point without a time.
TEST_F(Kml, TimedSegmentsOfALogAreTracksOfItsNameAndColour) {
  store.start_track_log("A & B", "Dark Red", 3);
  push_point_of_track(54, 12.5F, kNoon);
  push_point_of_track(54.5, 13, kNoon + 1);
  store.start_segment();
  push_point_of_track(55, store::kNotKnown, kNoon + 5);
  store.start_segment();
  for (const std::uint32_t seconds : {kNoon + 6, kNoon + 7, 0U}) push_point_of_track(56, store::kNotKnown, seconds);
  const std::string head =
      "<Placemark><name>A &amp; B</name><Style><LineStyle><color>ff00008b</color></LineStyle></Style>";
  EXPECT_THAT(write(),
              HasSubstr("<Folder><name>Tracks</name>\n<Folder><name>A &amp; B</name><ExtendedData>"
                        "<Data name=\"style\"><value>3</value></Data></ExtendedData>\n" +
                        head +
                        "<gx:Track><altitudeMode>absolute</altitudeMode>\n<when>2002-06-01T12:00:00Z</when>\n"
                        "<when>2002-06-01T12:00:01Z</when>\n"
                        "<gx:coord>10 54 12.5</gx:coord>\n<gx:coord>10 54.5 13</gx:coord>\n</gx:Track></Placemark>\n" +
                        head +
                        "<gx:Track>\n<when>2002-06-01T12:00:05Z</when>\n<gx:coord>10 55</gx:coord>\n</gx:Track>"
                        "</Placemark>\n" +
                        head +
                        "<LineString><tessellate>1</tessellate><coordinates>\n10,56\n10,56\n10,56\n</coordinates>"
                        "</LineString></Placemark>\n</Folder>\n</Folder>\n"));
  EXPECT_EQ(front_end.lines[2], "2 times of track segments in which other points have none are not written");
}

}  // namespace
}  // namespace formats

#include "formats/igc.h"

#include <limits>

#include "base/text.h"
#include "tests/support/format_fixture.h"

namespace formats {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::uint32_t kFlight = 343141509;  // 2000-11-14 13:05:09 UTC: 3971 days after 1989-12-31

class Igc : public support::FormatTest {
 protected:
  std::string write() { return write_with(write_igc_file); }
  // The lines that begin so.
  std::vector<std::string> lines(std::string_view beginning) {
    std::vector<std::string> found;
    const std::string text = write();
    for (const std::string_view line : base::split(text, '\n'))
      if (line.starts_with(beginning)) found.emplace_back(line);
    return found;
  }
  static constexpr double kLatitude = 47 + 12.34567 / 60;
  static constexpr double kLongitude = 8 + 5.43216 / 60;
};

TEST_F(Igc, AFlightIsWrittenToTheLetter) {
  settings.Pilot = "A. Nonymous";
  settings.ContestID = "XY";
  settings.GliderType = "ASK 21";
  settings.GliderID = "D-1234";
  settings.Class = "Club";
  settings.Site = "Wasserkuppe";
  push_track_point(kLatitude, kLongitude, kFlight);
  push_track_point(-0.5, -179.75, kFlight + 60);
  EXPECT_EQ(write(),
            "AGAR0XY\n"
            "HOPLTPILOT: A. Nonymous\n"
            "HOGTYGLIDERTYPE: ASK 21\n"
            "HOGIDGLIDERID: D-1234\n"
            "HOCIDCOMPETITIONID: XY\n"
            "HODTM100GPSDATUM: WGS-84\n"
            "HOCCLCOMPETITION CLASS: Club\n"
            "HOSITSite: Wasserkuppe\n"
            "HFDTE1411100\n"
            "B1305094712345N00805432EA0000000000\n"
            "B1306090030000S17945000WA0000000000\n"
            "L   Pelorix A.00.02\n"
            "L   Tue Nov 14 13:06:09 2000\n");
}

TEST_F(Igc, MinutesAreRoundedToFourDecimalsAndThenCutToThree) {
  push_track_point(1 + 59.99996 / 60, 0, kFlight);      // "60.0000", without a carry
  push_track_point(1 + 12.34594 / 60, 0, kFlight + 1);  // "12.3459"
  EXPECT_THAT(write(), HasSubstr("B1305090160000N00000000EA0000000000\nB1305100112345N00000000E"));
}

TEST_F(Igc, ATrackPastMidnightOfTheZoneHasASecondDateAndOneBeforeItNone) {
  options.offset_seconds = 3600;
  push_track_point(1, 2, kFlight - 13 * 3600);  // 01:05:09 local time
  push_track_point(1, 2, kFlight + 35400);      // 23:55:09
  push_track_point(1, 2, kFlight + 36000);      // 00:05:09
  EXPECT_EQ(lines("HFDTE"), (std::vector<std::string>{"HFDTE1411100", "HFDTE1511100"}));
  EXPECT_THAT(write(), HasSubstr("L   Wed Nov 15 00:05:09 2000\n"));
}

TEST_F(Igc, PointsWithoutATimeAreOf1989InEveryZoneAndCounted) {
  options.offset_seconds = -7200;
  push_track_point(1, 2, 0);
  EXPECT_THAT(write(), HasSubstr("HFDTE311289\nB0000000100000N"));
  EXPECT_EQ(front_end.lines[2], "1 track points have no time: they are written as of 31 December 1989");
}

TEST_F(Igc, AnotherDatumIsNamedAndItsPositionsWritten) {
  options.datum = "Tokyo";
  push_track_point(35.65, 139.75, kFlight);
  const std::string text = write();
  EXPECT_THAT(text, HasSubstr("HODTM100GPSDATUM: Tokyo\n"));
  EXPECT_THAT(text, HasSubstr("B1305093538802N13945188EA"));  // some 450 m to the south-east
}

TEST_F(Igc, DeletedPointsAndThoseWithoutAPositionAreLeftOut) {
  push_track_point(std::numeric_limits<double>::quiet_NaN(), 2, kFlight);
  push_track_point(91, 2, kFlight);
  push_track_point(1, 2, kFlight);
  EXPECT_EQ(lines("B").size(), 1U);
  EXPECT_EQ(front_end.lines[2], "2 items without a position are not written");
}

TEST_F(Igc, NoFlightIsNoFile) {
  push_track_point(91, 2, kFlight);
  EXPECT_EQ(write(), "");
  ASSERT_EQ(front_end.boxes.size(), 1U);
  EXPECT_EQ(front_end.boxes[0].first, "write_igc_file");
  push_track_point(1, 2, kFlight);
  options.tracks = false;
  EXPECT_EQ(write(), "");
  EXPECT_EQ(front_end.boxes.size(), 2U);
}

TEST_F(Igc, ALineBreakInASettingBreaksNoLine) {
  settings.Pilot = "A\nB9999";
  push_track_point(1, 2, kFlight);
  EXPECT_THAT(write(), HasSubstr("HOPLTPILOT: A-B9999\n"));
}

TEST_F(Igc, TheShortNameTakesThePlaceOfTheChosenOne) {
  settings.ContestID = "XY1";
  EXPECT_EQ(igc_output_name(context, options, "flights/any.igc"), "flights/any.igc");
  settings.IGCCompatibleFilename = 1;
  EXPECT_EQ(igc_output_name(context, options, "flights/any.igc"), "flights/any.igc") << "there is no flight";
  push_track_point(1, 2, kFlight);
  EXPECT_EQ(igc_output_name(context, options, "flights/any.igc"), "flights/0BE4XY11.igc");
  options.offset_seconds = 12 * 3600;
  EXPECT_EQ(igc_output_name(context, options, "any.igc"), "0BF4XY11.igc");
}

TEST_F(Igc, InTheFaisFormTheShortNameIsThatOfTheFirstPointInTheFile) {
  settings.IGCCompatibleFilename = settings.IGCStandard = 1;
  settings.ContestID = "XY1";
  push_track_point(1, 2, 0);
  push_track_point(91, 2, kFlight - 86400);
  EXPECT_EQ(igc_output_name(context, options, "any.igc"), "any.igc");
  push_track_point(1, 2, kFlight);
  EXPECT_EQ(igc_output_name(context, options, "any.igc"), "0BEXXY11.igc");
}

TEST_F(Igc, NoCompetitionIdLeavesTheFolder) {
  EXPECT_EQ(make_igc_file_name("7", kFlight, false),
            "0BE4"
            "0071.igc");
  EXPECT_EQ(make_igc_file_name("LONG1", kFlight, false), "0BE4LONG11.igc");
  EXPECT_EQ(make_igc_file_name("../\\x:*", kFlight, false), "0BE4..--x--1.igc");
  EXPECT_EQ(make_igc_file_name("x-y", kFlight, true), "0BEX0XY1.igc");
}

TEST_F(Igc, TheFaisFormIsInUtcAndWgs84WithAltitudes) {
  settings.IGCStandard = 1;
  settings.ContestID = "x-y1";
  options.offset_seconds = 3600;
  options.datum = "Tokyo";
  push_track_point(1 + 59.99996 / 60, -2, kFlight);
  start(35.65, 139.75, kFlight + 39300).altitude = 1234.6F;  // 00:00:09 on the next day
  ASSERT_EQ(store.push_track(), 0);
  start(35.65, 139.75, kFlight + 39301).altitude = -41.7F;
  ASSERT_EQ(store.push_track(), 0);
  push_track_point(1, 2, 0);
  EXPECT_EQ(write(),
            "AXXXXY1\n"
            "HFDTE141100\n"
            "HFPLTPILOTINCHARGE:None\n"
            "HFGTYGLIDERTYPE:None\n"
            "HFGIDGLIDERID:None\n"
            "HFDTM100GPSDATUM:WGS-1984\n"
            "HFFTYFRTYPE:Pelorix A.00.02\n"
            "HFCIDCOMPETITIONID:x-y1\n"
            "HFCCLCOMPETITIONCLASS:None\n"
            "HFSITSITE:None\n"
            "B1305090200000N00200000WV0000000000\n"
            "B0000093539000N13945000EA0000001235\n"
            "B0000103539000N13945000EA00000-0042\n"
            "LXXXPelorix A.00.02\n"
            "LXXXWed Nov 15 00:00:10 2000\n");
  EXPECT_EQ(front_end.lines[2], "1 track points have no time: they are not written");
}

TEST_F(Igc, InTheFaisFormADayWithoutAFixHasItsDateWritten) {
  settings.IGCStandard = 1;
  push_track_point(1, 2, kFlight);
  push_track_point(1, 2, kFlight + 2 * 86400);
  EXPECT_EQ(lines("HFDTE"), (std::vector<std::string>{"HFDTE141100", "HFDTE161100"}));
  EXPECT_THAT(front_end.lines[2], HasSubstr("more than one flight"));
}

TEST_F(Igc, TheFaisFormHasPlainAsciiTexts) {
  settings.Pilot = "J\xF6rg \xC5strand\x80\xFF";
  push_track_point(1, 2, kFlight);
  EXPECT_THAT(write(), HasSubstr("HOPLTPILOT: J\xF6rg \xC5strand\x80\xFF\n"));
  settings.IGCStandard = 1;
  EXPECT_THAT(write(), HasSubstr("HFPLTPILOTINCHARGE:Jorg Astrand-y\n"));
  settings.Pilot = "J\xC3\xB6rg";
  EXPECT_THAT(write(), HasSubstr("HFPLTPILOTINCHARGE:Jorg\n"));
}

TEST_F(Igc, OnlyTheFaisFormKeepsAltitudes) {
  EXPECT_EQ(igc_keeps(settings, options).tracks & store::kKeepsAltitudes, 0U);
  settings.IGCStandard = 1;
  EXPECT_NE(igc_keeps(settings, options).tracks & store::kKeepsAltitudes, 0U);
}

}  // namespace
}  // namespace formats

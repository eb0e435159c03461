#include "store/command_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "store/config_file.h"
#include "tests/support/recording_front_end.h"

namespace store {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class CommandOptionsTest : public testing::Test {
 protected:
  // Compares all settings, among them those without a key.
  void expect_settings(const std::function<void(Settings&)>& change) {
    Settings expected;
    change(expected);
    EXPECT_EQ(configuration_text(settings), configuration_text(expected));
    EXPECT_EQ(settings.native_text_output, expected.native_text_output);
    EXPECT_EQ(settings.output_switch, expected.output_switch);
  }

  Settings settings;
  support::RecordingFrontEnd front_end;
  CommandOptions options{settings, front_end};
};

TEST_F(CommandOptionsTest, LettersDoTheSameInEitherCaseBundledOrApart) {
  for (const std::string_view line :
       {"! -a -d -e -l -n -k -j 2 -m 7 -q 9", "!-adelnkj2 -m7 -q9",
        "!\t-A -DELNKJ 2 words between -M7 - -Q \"9\" -- -d", "-adelnk -j2 -m7 -q9\r\n"}) {
    SCOPED_TRACE(line);
    settings = {};
    options.do_command(line);
    expect_settings([](Settings& s) {
      s.native_text_output = s.output_switch = 1;
      s.SA_total_dist = s.SA_nocmdline = s.SA_SendLowrInactives = s.SA_noname = 1;
      s.SA_nameonlytxt = 2;
      s.SA_SetMag = 7;
      s.SA_Route_LineColor = 9;
    });
  }
  EXPECT_THAT(front_end.boxes, IsEmpty());
  EXPECT_THAT(front_end.line_writes, IsEmpty());
}

TEST_F(CommandOptionsTest, CountedOptionsAddUpButNotWithoutEnd) {
  options.do_command("! -aa -dd -e -e");
  expect_settings([](Settings& s) {
    s.native_text_output = s.output_switch = s.SA_total_dist = 2;
    s.SA_nocmdline = 1;
  });
  options.do_command("!-" + std::string(100000, 'd'));
  EXPECT_EQ(settings.SA_total_dist, 99);
}

TEST_F(CommandOptionsTest, BSwitchesSevenKindsOfDrawingByACapital) {
  options.do_command("!-b No");
  expect_settings([](Settings& s) {
    s.SA_DrawWaypoints = s.SA_draw_route_1_19_wpts = s.SA_draw_route_0_wpts = s.SA_draw_track_lines = 0;
    s.SA_send_route_0_as_SA_route = s.SA_draw_route_0_line = s.SA_draw_route_1_19_lines = 0;
  });
  options.do_command("!-b y");
  EXPECT_EQ(front_end.lines[1], "Invalid -b parameter: -b y");
  EXPECT_EQ(settings.SA_DrawWaypoints, 0);
  options.do_command("!-BY");
  expect_settings([](Settings&) {});
}

TEST_F(CommandOptionsTest, TheFirstCoordinateIsTheLatitudeLaterOnesTheLongitude) {
  options.do_command("! -c \"N51 30.0000\" -c W007.25");
  EXPECT_DOUBLE_EQ(settings.SA_SetLat, 51.5);
  EXPECT_DOUBLE_EQ(settings.SA_SetLon, -7.25);
  options.do_command("! -c -33.5");
  EXPECT_DOUBLE_EQ(settings.SA_SetLat, 51.5);
  EXPECT_DOUBLE_EQ(settings.SA_SetLon, -33.5);
}

TEST_F(CommandOptionsTest, WhatGetoptRefusesIsShownAndTheNextWordRead) {
  options.do_command("! -dxe -: --no -l -é -c");
  EXPECT_THAT(
      front_end.boxes,
      ElementsAre(Pair("getopt error", "!: illegal option -- x"), Pair("getopt error", "!: illegal option -- :"),
                  Pair("getopt error", "!: illegal option -- -"), Pair("getopt error", "!: illegal option -- \xC3"),
                  Pair("getopt error", "!: option requires an argument -- c")));
  expect_settings([](Settings& s) { s.SA_total_dist = s.SA_SendLowrInactives = 1; });
  for (int i = 0; i < 1000; ++i) options.do_command("!-y");
  EXPECT_EQ(front_end.boxes.size(), 10U);
  EXPECT_EQ(front_end.lines[1], "!: illegal option -- y");
}

TEST_F(CommandOptionsTest, BadArgumentsAreNamedAndChangeNothing) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"-b maybe", "Invalid -b parameter: -b maybe"},
      {"-c north", "Invalid -c parameter: -c north"},
      {"-c 91", "Invalid -c parameter: -c 91"},
      {"-c E7.25", "Invalid -c parameter: -c E7.25"},
      {"-c nan", "Invalid -c parameter: -c nan"},
      {"-j 256", "Invalid -j parameter: -j 256"},
      {"-j2x", "Invalid -j parameter: -j 2x"},
      {"-m -1", "Invalid -m parameter: -m -1"},
      {"-m 99999999999999999999", "Invalid -m parameter: -m 99999999999999999999"},
      {"-q 17", "Invalid -q parameter: -q 17"},
      {"-t 1,2,Mauve", "Invalid line color selection -t 1,2,Mauve"},
      {"-t 1,0", "Invalid line width selection -t 1,0"},
      {"-t dashed,1", "Invalid line style selection -t dashed,1"},
      {"-t 1,2,3,4", "Invalid line style selection -t 1,2,3,4"},
      {"-t \"\"", "Invalid line style selection -t "},
      {"-r 100", "Invalid line style selection -r 100"},
      {"-r ,x", "Invalid line width selection -r ,x"},
      {"-r 1,1,17", "Invalid line color selection -r 1,1,17"},
      {"-r ,,", "Invalid -r parameter: -r ,,"},
      {"-r 1,1,1,1", "Invalid -r parameter: -r 1,1,1,1"},
      {"-p 1,1,1,x", "Invalid circle parameter selection -p 1,1,1,x"},
      {"-p 1,1,1,1,1", "Invalid circle parameter selection -p 1,1,1,1,1"},
      {"-w CTMauve", "Bad color input"},
      {"-w AN,CRed", "Color must have 'T' or 'O' as first character"},
      {"-w C", "Color must have 'T' or 'O' as first character"},
      {"-w STx", "Bad size input"},
      {"-w S5", "Size must have 'T' or 'O' as first character"},
      {"-w ST1,ANNW", "Alignment must be NW N NE W E SW S or SE: -w ST1,ANNW"},
      {"-w ST1,Quick", "Illegal -w param: Quick"},
      {"-w \"\"", "Illegal -w param: "},
      {"-w XQ", "Illegal -w x option: XQ"},
      {"-w ST1,X", "Illegal -w x option: X"},
  };
  for (const auto& [line, message] : cases) {
    front_end.line_writes.clear();
    options.do_command("!" + line);
    EXPECT_THAT(front_end.line_writes, ElementsAre(Pair(1, message))) << line;
    expect_settings([](Settings&) {});
  }
  EXPECT_THAT(front_end.boxes, IsEmpty());
}

TEST_F(CommandOptionsTest, LineAndLabelPropertiesAreTaken) {
  options.do_command("! -t 4,2,darkred -p 1,2,Red,\"Dark Green\" -r 1,2,3 -w \"CTBlue, co9,ST3,SO4,ase,XN\" -wxt");
  expect_settings([](Settings& s) {
    s.SA_LineStyle = 4;
    s.SA_LineWidth = 2;
    s.SA_LineColor = 1;
    s.SA_TextColor = 12;
    s.SA_SA_IconColor = 9;
    s.SA_TextSize = 3;
    s.SA_SA_IconSize = 4;
    s.SA_TextAlign = 7;
    s.SA_nameonly = s.SA_timeonsa3 = 1;
  });
  options.do_command("! -t ,,White -w XK");
  EXPECT_EQ(settings.SA_LineStyle, 4);
  EXPECT_EQ(settings.SA_LineColor, 15);
  EXPECT_EQ(settings.SA_nonameonsa3trks, 1);
  EXPECT_THAT(front_end.line_writes, IsEmpty());
}

TEST_F(CommandOptionsTest, AUsageErrorWithoutATextGivesItsNumber) {
  options.usage_error(11);
  EXPECT_EQ(front_end.lines[1], "Warning...unknown input file type.");
  options.usage_error(24, "x");
  EXPECT_EQ(front_end.lines[1], "bad Usage: 24\n  Please inform author of this message");
}

}  // namespace
}  // namespace store

#include "store/config_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/safe_file.h"
#include "base/text.h"
#include "tests/support/recording_front_end.h"

namespace store {
namespace {

TEST(Configuration, StartValuesAreWrittenInTheOrderOfTheFile) {
  const std::string text = configuration_text(Settings{});
  // No family, reference point or window place is known yet, so they have no line.
  EXPECT_TRUE(text.starts_with("COM=1\nport_speed=0\nExitPrompt=1\nEnableDebugFile=0\nForceExactDupeRemoval=0\n"));
  EXPECT_EQ(text.find("RefRecord"), std::string::npos);
  EXPECT_EQ(text.find("StartupLocation="), text.find("SaveStartupLocation=") + 4);
  EXPECT_NE(text.find("\nVerticalValues=METERS\nDistValues=STATUTE\nHandleReadDups=MERGE\n"
                      "This_TXT_File_Version=TXT_VER_TWO\nReadFilterNumber=0\n"),
            std::string::npos);
  EXPECT_NE(text.find("\nIconSelector=LEI15\nDMSMode=DMM\nSA_LineColor=0\n"), std::string::npos);
  EXPECT_NE(text.find("\nSA_SetLat=1000.000000\nSA_SetLon=1000.000000\nSA_SetMag=0\n"), std::string::npos);
  EXPECT_TRUE(text.ends_with(
      "SA_LwrRteStartPt=1\n#IGC Glider info:\nPilot=None\nContestID=---\nGliderType=None\n"
      "GliderID=None\nSite=None\nClass=None\nIGCCompatibleFilename=0\n"
      "G12XL/II+_Symbol_Mapping=18,10,8,170,7,150,0,19,177,14,178,151,179,171,156,8196\n"
      "#Additional settings:\nPortName=\nTimeOffsetHours=\nEventColor=0\nIGCStandard=0\nWeekRollover=0\n"));
}

TEST(Configuration, EveryKeySurvivesBeingWrittenAndRead) {
  Settings settings;
  std::string text = configuration_text(settings);
  // Other values than the start values for all numbers.
  for (std::size_t at = 0; (at = text.find("=0\n", at)) != std::string::npos; ++at) text.replace(at, 3, "=3\n");
  text +=
      "GPS=Lowrance\nCOM=12\nexternaldatum=NAD27_CONUS\nSaveStartupLocation=1\nStartupLocation=-5,10,630,"
      "268\n"
      "RefRecord=47.123456789,-11.000000001,1,2,3\nDMSMode=UTM\nIconSelector=eSERIES\nVerticalValues=FEET\n"
      "This_TXT_File_Version=TXT_VER_ONE\nTimeOffsetHours=-3.5\nPortName=/dev/ttyUSB0\nPilot=A = B\n";
  read_configuration("\xEF\xBB\xBF" + text, settings);
  Settings again;
  read_configuration(configuration_text(settings), again);
  EXPECT_EQ(configuration_text(again), configuration_text(settings));
  EXPECT_EQ(again.GPS, Family::Lowrance);
  EXPECT_EQ(again.COM, 11);
  EXPECT_EQ(again.SA_Route_LineStyle, 3);
  EXPECT_EQ(again.StartupLocation->left, -5);
  EXPECT_EQ(again.RefRecord->longitude, -11.000000001);
  EXPECT_EQ(again.TimeOffsetHours, -3.5);
  EXPECT_EQ(again.Pilot, "A = B");
}

TEST(Configuration, BadValuesUnknownKeysAndCommentsLeaveTheStartValues) {
  Settings settings;
  read_configuration(
      "#COM=5\nCOM=0\nCOM=x\nExitPrompt=99999999999\nDMSMode=XYZ\nNoSuchKey=1\njust text\n=\n"
      "WaypointListColumnWidths=1,2,3\nVerticalValues=YARDS\nTimeOffsetHours=soon\nTimeOffsetHours=49\n  port_speed  = "
      " 9600  "
      "\r\n",
      settings);
  Settings expected;
  expected.port_speed = 9600;
  EXPECT_EQ(configuration_text(settings), configuration_text(expected));
}

TEST(Configuration, AKeyCanBeSetByNameAndSaysWhatIsWrong) {
  Settings settings;
  EXPECT_EQ(set_key(settings, "DistValues", "KILOMETERS"), KeyResult::Set);
  EXPECT_EQ(settings.DistValues, geodesy::DistanceUnit::Kilometres);
  EXPECT_EQ(set_key(settings, "DistValues", "PARSECS"), KeyResult::BadValue);
  EXPECT_EQ(set_key(settings, "Pilot", "A\nCOM=9"), KeyResult::BadValue);
  EXPECT_EQ(set_key(settings, "RefRecord", "1.5, 2.5, 1, 2, 3"), KeyResult::Set);
  EXPECT_EQ(set_key(settings, "distvalues", "FEET"), KeyResult::UnknownKey);
  EXPECT_EQ(set_key(settings, "#IGC Glider info:", "x"), KeyResult::UnknownKey);
}

TEST(Configuration, ASaveThatFailsLeavesTheOldFileAndSaysSo) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "pelorix_config_test";
  std::filesystem::create_directories(folder / "is_a_folder.ini");
  support::RecordingFrontEnd front_end;
  EXPECT_FALSE(save_configuration(folder / "is_a_folder.ini", Settings{}, front_end));
  ASSERT_EQ(front_end.boxes.size(), 1u);
  EXPECT_EQ(front_end.boxes[0].first, "Writing Defaults Error");
  EXPECT_EQ(front_end.boxes[0].second, "Can't open file " + (folder / "is_a_folder.ini").string());
  ASSERT_TRUE(save_configuration(folder / "pelorix.ini", Settings{}, front_end));
  EXPECT_EQ(front_end.status[1], "pelorix.ini saved.");
  EXPECT_EQ(front_end.shown_title, "Configuration saved to: " + folder.string() + "\\pelorix.ini");
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace store

#include "simulators/garmin_products.h"

#include <gtest/gtest.h>

#include "simulators/garmin_options.h"

namespace simulators {
namespace {

using base::Bytes;

TEST(CapabilitiesFromTable, OlderSoftwareThanAnyIsTakenByAProductsOnlyRow) {
  EXPECT_TRUE(capabilities_from_table(112, -100));
  EXPECT_FALSE(capabilities_from_table(111, 250));
}

TEST(ParseProtocols, EachEntryBecomesATagAndANumber) {
  std::string problem;
  const auto array = parse_protocols(" L001 A010  A201 D202 D108 D210 A906 D9 ", problem);
  ASSERT_TRUE(array) << problem;
  EXPECT_EQ(array->data, (Bytes{'L', 1,   0, 'A', 10,  0, 'A', 201,  0, 'D', 202, 0,  //
                                'D', 108, 0, 'D', 210, 0, 'A', 0x8A, 3, 'D', 9,   0}));
  EXPECT_EQ(array->capabilities.route_link, 210);
  EXPECT_EQ(array->capabilities.waypoint_transfer, 0);
}

TEST(ParseProtocols, ATextThatIsNoArrayIsRefusedWithItsFault) {
  const std::pair<std::string, std::string> cases[]{
      {"L001 X100", "\"X100\" is no protocol"},
      {"A1x0", "\"A1x0\" is no protocol"},
      {"A-10", "\"A-10\" is no protocol"},
      {"A70000", "\"A70000\" is no protocol"},
      {"A", "\"A\" is no protocol"},
      {"", "not 0"},
      {"A010 A100", "A100 needs a data format"},
      {"A201 D202 D108 A300 D300", "A201 needs one more data format"},
      {"A100 D120", "D120 is no format"},
      {"A301 D311 D301", "D311 is no format"},
      {"L003", "L001 or L002"},
      {"A012", "A010 or A011"},
  };
  for (const auto& [text, expected] : cases) {
    std::string problem;
    EXPECT_FALSE(parse_protocols(text, problem)) << text;
    EXPECT_NE(problem.find(expected), std::string::npos) << text << ": " << problem;
  }
  std::string longest;
  for (int i = 0; i < 85; ++i) longest += "P000 ";
  std::string problem;
  EXPECT_TRUE(parse_protocols(longest, problem));
  EXPECT_FALSE(parse_protocols(longest + "P000", problem));
}

TEST(ChosenCapabilities, AProductOutsideTheTableStillHoldsItsDataWhenItHidesItsArray) {
  GarminOptions options;
  EXPECT_FALSE(chosen_capabilities(options).data.empty());
  options.protocols = "none";
  EXPECT_TRUE(chosen_capabilities(options).data.empty());
  EXPECT_EQ(chosen_capabilities(options).capabilities.waypoint_data, 108);
  EXPECT_EQ(garmin_options_problem(options), "");
}

TEST(UsualProtocols, EveryProductNumberGivesAnArrayOrARowOfTheTable) {
  for (int product = 0; product < 400; ++product) {
    for (const std::int16_t version : {std::int16_t{100}, std::int16_t{300}}) {
      const auto id = static_cast<std::uint16_t>(product);
      std::string problem;
      EXPECT_NE(capabilities_from_table(id, version).has_value(),
                parse_protocols(usual_protocols(id, version), problem).has_value())
          << product << ' ' << problem;
    }
  }
}

TEST(ParseFault, OnlyAKnownKindAtAPacketFromOneIsAFault) {
  EXPECT_EQ(parse_fault("bad-checksum@12")->kind, Fault::Kind::BadChecksum);
  EXPECT_EQ(parse_fault("bad-checksum@12")->packet, 12);
  for (const char* text : {"", "@", "noise", "noise@", "noise@0", "noise@-1", "noise@1x", "Noise@1", "hum@1",
                           "noise@99999999999999999999"}) {
    EXPECT_FALSE(parse_fault(text)) << text;
  }
}

TEST(GarminOptionsProblem, SpeedsThatNoWireHasAndScreensThatNobodyMakesAreRefused) {
  GarminOptions options;
  options.baud = -1;
  EXPECT_NE(garmin_options_problem(options), "");
  options.baud = 115200;
  for (const ScreenShape& shape :
       {ScreenShape{0, 1, 1}, ScreenShape{1, -1, 1}, ScreenShape{2000, 1, 1}, ScreenShape{8, 8, 3}}) {
    options.screen = shape;
    EXPECT_NE(garmin_options_problem(options), "");
  }
  options.screen = ScreenShape{8, 8, 1};
  EXPECT_EQ(garmin_options_problem(options), "");
}

}  // namespace
}  // namespace simulators

#include "geodesy/datum_shift.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <fstream>

#include "tests/support/recording_front_end.h"

namespace geodesy {
namespace {

using testing::ElementsAre;
using testing::Pair;

class Shift : public testing::Test {
 protected:
  DatumTable table;
  support::RecordingFrontEnd front_end;
  DatumShift shift{table, front_end};
};

// Deliberate : these figures come out only with e2 = f(f + 2).
TEST_F(Shift, TheContinentalUnitedStatesMoveAsTheyAlwaysDid) {
  const Position there = shift.convert_position_datum("NAD27_CONUS", "WGS-84", {40.0, -100.0});
  EXPECT_NEAR(there.latitude, 40.000009465, 5e-10);
  EXPECT_NEAR(there.longitude, -100.000417607, 5e-10);
  const Position back = shift.convert_position_datum("WGS-84", "NAD27_CONUS", {40.0, -100.0});
  EXPECT_NEAR(back.latitude, 39.999990503, 5e-10);
  EXPECT_NEAR(back.longitude, -99.999582382, 5e-10);
}

TEST_F(Shift, EqualNamesOrNoPreparationLeaveEveryBitOfThePosition) {
  const Position position{0.1 + 0.2, 179.99999999999997};
  EXPECT_EQ(shift.convert(position), position);
  EXPECT_EQ(shift.convert_position_datum("Tokyo", "Tokyo", position), position);
  EXPECT_EQ(shift.convert(position), position);
}

TEST_F(Shift, SmallLettersNameWgs84Too) {
  const Position moved = shift.convert_position_datum("wgs-84", "WGS-84", {12.3, 45.6});
  EXPECT_NEAR(moved.latitude, 12.3, 1e-13);
  EXPECT_NEAR(moved.longitude, 45.6, 1e-13);
  EXPECT_TRUE(front_end.boxes.empty());
}

TEST_F(Shift, AnUnknownNameIsReportedAtEveryPreparationAndMeansWgs84) {
  shift.set_datum_shift("Atlantis", "Mu");
  EXPECT_EQ(shift.molodensky_shift({0.0, 10.0}).latitude, 0.0);
  shift.set_datum_shift("WGS-84", "Mu");
  EXPECT_THAT(front_end.boxes,
              ElementsAre(Pair("find_datum", "Error: 'from' datum 'Atlantis' not found.  Defaulting to WGS-84"),
                          Pair("find_datum", "Error: 'to' datum 'Mu' not found.  Defaulting to WGS-84"),
                          Pair("find_datum", "Error: 'to' datum 'Mu' not found.  Defaulting to WGS-84")));
}

TEST_F(Shift, TwoUnknownNamesThatAreEqualStayPutButAreReportedTwice) {
  EXPECT_EQ(shift.convert_position_datum("Mu", "Mu", {1.0, 2.0}), (Position{1.0, 2.0}));
  EXPECT_EQ(front_end.boxes.size(), 2u);
}

TEST_F(Shift, UtmTextsAreOnTheEllipsoidsOfThePreparedPair) {
  shift.set_datum_shift("NAD27_CONUS", "Tokyo");
  EXPECT_DOUBLE_EQ(shift.source_ellipsoid().a, 6378206.4);  // Clarke 1866
  EXPECT_NEAR(1.0 / shift.source_ellipsoid().f, 294.97870, 5e-6);
  EXPECT_DOUBLE_EQ(shift.projection_ellipsoid().a, 6377397.155);  // Bessel 1841
  EXPECT_NEAR(1.0 / shift.projection_ellipsoid().f, 299.15281, 5e-6);
}

TEST_F(Shift, AUsersRowNamedWgs84CountsOnlyForOtherSpellingsOfIt) {
  const std::array folders{std::filesystem::path(testing::TempDir()) / "user_wgs84"};
  std::filesystem::create_directories(folders[0]);
  std::ofstream(folders[0] / "pelorixdatums.txt") << "WGS-84,1000,0,0,0,0\n";
  ASSERT_EQ(table.load_user_datums(folders, ""), 1);
  shift.set_datum_shift("wgs-84", "WGS-84");
  EXPECT_EQ(shift.source_ellipsoid().a, 6377137.0);
  EXPECT_EQ(shift.projection_ellipsoid().a, 6378137.0);
  std::filesystem::remove_all(folders[0]);
}

}  // namespace
}  // namespace geodesy

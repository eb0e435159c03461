#include "formats/almanac.h"

#include <limits>
#include <string>

#include "tests/support/format_fixture.h"

namespace formats {
namespace {

using store::AlmanacEntry;

constexpr AlmanacEntry kPrn1{.week = 310,
                             .time_of_applicability = 405504,
                             .af0 = -4.196166992E-5F,
                             .af1 = -3.637978807E-12F,
                             .eccentricity = 0.01138305664F,
                             .sqrt_semi_major_axis = 5153.644531F,
                             .mean_anomaly = -1.406393992F,
                             .argument_of_perigee = 0.818412128F,
                             .right_ascension = -1.106815479F,
                             .rate_of_right_ascension = -7.817468486E-9F,
                             .inclination = 0.9890667956F,
                             .health = 0};

std::string replaced(std::string text, std::string_view old_text, std::string_view new_text) {
  for (std::size_t at = 0; (at = text.find(old_text, at)) != std::string::npos; at += new_text.size())
    text.replace(at, old_text.size(), new_text);
  return text;
}

class AlmanacTest : public support::FormatTest {
 protected:
  int read(std::string_view text) { return read_with(read_almanac, text); }
  bool write() {
    written.clear();
    base::TextOutput out([this](std::string_view block) { written += block; });
    return write_almanac(context, options, out);
  }
  const std::optional<AlmanacEntry>& satellite(std::size_t prn) { return items.almanac().satellites[prn - 1]; }
  void hold(std::size_t prn, const AlmanacEntry& entry) {
    store::Almanac almanac = items.almanac();
    almanac.satellites[prn - 1] = entry;
    items.set_almanac(almanac);
  }

  store::ItemStore& items = store;
  std::string written;
};

TEST_F(AlmanacTest, AYumaFileReplacesTheAlmanacHeld) {
  hold(5, kPrn1);
  EXPECT_EQ(read(sample("almanac/yuma.alm")), 2);
  EXPECT_EQ(items.almanac().count(), 2);
  EXPECT_EQ(satellite(1), kPrn1);
  ASSERT_TRUE(satellite(32));
  EXPECT_EQ(satellite(32)->health, 63);
  EXPECT_EQ(satellite(32)->eccentricity, 0.005221366882F);
  EXPECT_EQ(satellite(32)->argument_of_perigee, -2.105941778F);
  EXPECT_EQ(front_end.lines[2], "");
}

TEST_F(AlmanacTest, AnOlderYumaFileIsReadWithAnyLineEndsAndWithoutItsAsterisks) {
  const std::string text = sample("almanac/yuma_older.alm");
  for (const std::string& form : {text, replaced(text, "\n", "\r\n"), "\xEF\xBB\xBF\n" + text.substr(text.find("ID:")),
                                  replaced(text, "\n", "\n\n"), replaced(text, "ID:  ", "id:\t")}) {
    items.clear_almanac();
    EXPECT_EQ(read(form), 1);
    ASSERT_TRUE(satellite(2));
    EXPECT_EQ(satellite(2)->week, 567);
    EXPECT_EQ(satellite(2)->right_ascension, -2.8374708F);
    EXPECT_EQ(satellite(2)->sqrt_semi_major_axis, 5153.717773F);
    EXPECT_EQ(satellite(2)->rate_of_right_ascension, -8.0117622E-9F);
  }
}

TEST_F(AlmanacTest, AnSemFileIsToldByItsNumberAndIsInSemicircles) {
  EXPECT_EQ(read(sample("almanac/sem.alm")), 2);
  ASSERT_TRUE(satellite(1) && satellite(30));
  const AlmanacEntry& one = *satellite(1);
  EXPECT_EQ(one.week, 783);
  EXPECT_EQ(one.time_of_applicability, 319488);
  EXPECT_EQ(one.health, 0);
  EXPECT_FLOAT_EQ(one.eccentricity, 0.003418922424F);
  EXPECT_FLOAT_EQ(one.inclination, 0.963983489F);  // (0.30 + 0.006845474) pi
  EXPECT_FLOAT_EQ(one.rate_of_right_ascension, -8.11177092E-9F);
  EXPECT_FLOAT_EQ(one.sqrt_semi_major_axis, 5153.617188F);
  EXPECT_FLOAT_EQ(one.right_ascension, -2.159583543F);
  EXPECT_FLOAT_EQ(one.argument_of_perigee, -1.701335245F);
  EXPECT_FLOAT_EQ(one.mean_anomaly, -0.869407955F);
  EXPECT_FLOAT_EQ(one.af0, 1.907348633E-5F);
  EXPECT_FLOAT_EQ(one.af1, 3.637978807E-12F);
  EXPECT_EQ(satellite(30)->health, 63);
}

TEST_F(AlmanacTest, ABadBlockIsPassedOverAndItsFaultNamed) {
  struct Case {
    std::string_view old_text, new_text, problem;
  };
  const std::string good = sample("almanac/yuma.alm");
  for (const Case& c : {
           Case{"ID:                         01\n", "", "ID"},
           Case{" 01\n", " 33\n", "ID"},
           Case{" 01\n", " 1.5\n", "ID"},
           Case{" 000\n", " bad\n", "Health"},
           Case{" 0.1138305664E-001", " 1.0", "Eccentricity"},
           Case{" 0.1138305664E-001", " 0.99999999", "Eccentricity"},
           Case{" 0.1138305664E-001", " 0.1 0.2", "Eccentricity"},
           Case{"-0.1406393992E+001", " nan", "Mean Anom"},
           Case{"-0.1406393992E+001", " 1E400", "Mean Anom"},
           Case{" 5153.644531", " 0", "SQRT"},
           Case{" 5153.644531", " -5153.644531", "SQRT"},
           Case{"Af1(s/s):                  -0.3637978807E-011\n", "", "Af1"},
           Case{" 310\n\n", " 31\n\n", "week"},
       }) {
    SCOPED_TRACE(c.new_text);
    items.clear_almanac();
    const std::size_t second = good.find("******** Week 310 almanac for PRN-32");
    const std::string text = replaced(good.substr(0, second), c.old_text, c.new_text) + good.substr(second);
    ASSERT_NE(text, good);
    EXPECT_EQ(read(text), 1);
    EXPECT_FALSE(satellite(1));
    EXPECT_EQ(front_end.lines[2],
              "a file: 1 satellites were passed over; that of line 2 has no good '" + std::string(c.problem) + "'");
  }
}

TEST_F(AlmanacTest, TwoSatellitesWhoseBlocksRunTogetherAreNotMixed) {
  const std::string good = sample("almanac/yuma.alm");
  const std::size_t week = good.find("week:");
  EXPECT_EQ(read(good.substr(0, week) + good.substr(good.find("Health: ", week))), 0);
  EXPECT_EQ(front_end.lines[2], "a file: 1 satellites were passed over; that of line 2 has no good 'Health'");
}

TEST_F(AlmanacTest, WithoutAGoodBlockTheAlmanacStays) {
  hold(7, kPrn1);
  for (const std::string_view text :
       {"", "\n\n", "****\n", "ID: 1\nweek: 3\n", "1\n", "2 x\n783 319488\n\n1\n2\n3\n", "31\n783\n1 2 3", "a: b\n"})
    EXPECT_EQ(read(text), 0) << text;
  EXPECT_EQ(items.almanac().count(), 1);
  EXPECT_EQ(satellite(7), kPrn1);
}

TEST_F(AlmanacTest, AFileCutAnywhereYieldsOnlyWholeSatellites) {
  for (const std::string name : {"yuma.alm", "yuma_older.alm", "sem.alm"}) {
    const std::string text = sample("almanac/" + name);
    items.clear_almanac();
    ASSERT_GT(read(text), 0);
    const store::Almanac whole = items.almanac();
    for (std::size_t size = 0; size < text.size(); ++size) {
      items.clear_almanac();
      (void)read(std::string_view(text).substr(0, size));
      for (std::size_t i = 0; i < whole.satellites.size(); ++i)
        if (items.almanac().satellites[i]) {
          ASSERT_EQ(items.almanac().satellites[i], whole.satellites[i]) << name << size;
        }
    }
  }
}

TEST_F(AlmanacTest, YumaIsWrittenInTodaysColumns) {
  AlmanacEntry entry = kPrn1;
  entry.health.reset();
  entry.week = 1334;
  entry.eccentricity = 0.0078125F;
  entry.right_ascension = -1.5F;
  entry.inclination = 0.96875F;
  entry.rate_of_right_ascension = -0x1p-27F;
  entry.sqrt_semi_major_axis = 5153.625F;
  entry.argument_of_perigee = 0.8125F;
  entry.mean_anomaly = -1.40625F;
  entry.af0 = -4.196166992E-5F;
  entry.af1 = 0;
  hold(4, entry);
  ASSERT_TRUE(write());
  EXPECT_EQ(written,
            "******** Week 1334 almanac for PRN-04 ******** (health not known)\n"
            "ID:                         04\n"
            "Health:                     000\n"
            "Eccentricity:               7.8125000000E-03\n"
            "Time of Applicability(s):  405504.0000\n"
            "Orbital Inclination(rad):   9.6875000000E-01\n"
            "Rate of Right Ascen(r/s):  -7.4505805969E-09\n"
            "SQRT(A)  (m 1/2):           5153.625000\n"
            "Right Ascen at Week(rad):  -1.5000000000E+00\n"
            "Argument of Perigee(rad):   8.1250000000E-01\n"
            "Mean Anom(rad):            -1.4062500000E+00\n"
            "Af0(s):                    -4.1961669922E-05\n"
            "Af1(s/s):                   0.0000000000E+00\n"
            "week:                       310\n"
            "\n");
}

TEST_F(AlmanacTest, TheLineOfAsterisksTellsTheEraOnlyIfItAgrees) {
  const std::string text = replaced(sample("almanac/yuma.alm"), "Week 310 ", "Week 1334 ");
  EXPECT_EQ(read(text), 2);
  EXPECT_EQ(satellite(1)->week, 1334);
  EXPECT_EQ(read(replaced(text, "Week 1334 ", "Week 99999999999 ")), 0);
  EXPECT_EQ(read(replaced(text, "Week 1334 ", "Week -714 ")), 2);  // agrees, but is no week
  EXPECT_EQ(satellite(1)->week, 310);
}

TEST_F(AlmanacTest, SatellitesWithoutDataAreLeftOutAndAnEmptyAlmanacIsRefused) {
  EXPECT_FALSE(write());
  AlmanacEntry bad = kPrn1;
  bad.mean_anomaly = std::numeric_limits<float>::quiet_NaN();
  AlmanacEntry none = kPrn1;
  none.week = -1;
  hold(3, bad);
  hold(4, none);
  EXPECT_FALSE(write());
  EXPECT_EQ(written, "");
  EXPECT_EQ(front_end.lines[2], "1 satellites without a good orbit are not written");
  const std::pair<std::string, std::string> box{"write_almanac",
                                                "There is no almanac to write: download one or read one first."};
  EXPECT_THAT(front_end.boxes, testing::ElementsAre(box, box));
  hold(5, kPrn1);
  EXPECT_TRUE(write());
  EXPECT_TRUE(written.starts_with("******** Week 310 almanac for PRN-05"));
  options.almanac = false;
  EXPECT_FALSE(write());
}

}  // namespace
}  // namespace formats

// From a receiver into a file and back; and files that are damaged, cut or hostile.
#include <fstream>
#include <random>

#include "tests/support/rich_data.h"
#include "tests/support/transfer_scenario.h"

namespace {

using garmin::Kind;
using geodesy::Notation;
using store::ItemRecord;
using support::all_records;
using support::described;
using support::Detail;

class NativeText : public support::TransferScenario {
 protected:
  NativeText() { removes_exact_duplicates = true; }

  void be(const simulators::SimulatedData& data, const std::string& protocols) {
    simulators::GarminOptions options;
    options.protocols = protocols;
    simulate(data, options);
  }
  void write_file(const std::string& name, std::string_view contents) {
    std::ofstream(file(name), std::ios::binary) << contents;
  }
  void expect_same_places(const std::vector<ItemRecord>& now, const std::vector<ItemRecord>& before, double degrees) {
    ASSERT_EQ(now.size(), before.size());
    double worst = 0;
    for (std::size_t i = 0; i < now.size(); ++i)
      worst = std::max({worst, std::abs(now[i].position.latitude - before[i].position.latitude),
                        std::abs(now[i].position.longitude - before[i].position.longitude)});
    EXPECT_LE(worst, degrees);
  }
};

simulators::SimulatedData timed_weekend() {
  simulators::SimulatedData data = simulators::believable_weekend();
  std::uint32_t time = 360401400;  // 2001-06-02 07:30:00 UTC
  for (simulators::SimWaypoint& waypoint : data.waypoints) waypoint.time = time += 601;
  for (simulators::SimRoute& route : data.routes)
    for (simulators::SimWaypoint& point : route.points) point.time = time += 601;
  data.waypoints[3].time = 0;
  return data;
}

TEST_F(NativeText, AWeekendSavedInAnyNotationDatumVersionAndZoneReadsBackTheSame) {
  struct Resolution {
    Notation notation;
    double degrees;
  };
  be(timed_weekend(), "L001 A010 A100 D110 A200 D201 D110 A301 D310 D301 A400 D110");
  ASSERT_TRUE(download(Kind::All));
  const store::ItemStore::Contents downloaded = items().contents();
  const std::vector<ItemRecord> before = all_records(items());
  ASSERT_EQ(before.size(), 30U + 3 + 25 + 3 + 1000);
  for (const Resolution& r : {Resolution{Notation::Dms, 0.6 * 0.01 / 3600}, Resolution{Notation::Dmm, 0.6 * 1e-4 / 60},
                              Resolution{Notation::Ddd, 0.6e-7}, Resolution{Notation::Utm, 1e-6}}) {
    for (const int version : {1, 2}) {
      for (const std::string datum : {"WGS-84", "NAD27_CONUS"}) {
        const bool is_wgs84 = datum == "WGS-84";
        const double hours = (version == 1) == is_wgs84 ? -5.0 : 5.5;
        SCOPED_TRACE(base::format_text("notation %d v%d %s", static_cast<int>(r.notation), version, datum.c_str()));
        items().restore(downloaded);
        session->settings.DMSMode = r.notation;
        session->settings.This_TXT_File_Version = version;
        session->settings.externaldatum = datum;
        session->settings.TimeOffsetHours = hours;
        ASSERT_TRUE(save("weekend.txt"));
        const std::string text = contents_of(file("weekend.txt"));
        ASSERT_TRUE(reread("weekend.txt"));
        const Detail detail = version == 1 ? Detail::Version1 : Detail::Version2;
        EXPECT_EQ(whole_store(detail), described(before, detail));
        // Shifts there and back are not exact so far from the datum's home.
        expect_same_places(all_records(items()), before, r.degrees + (is_wgs84 ? 0 : 3e-5));
        if (!is_wgs84) continue;
        ASSERT_TRUE(save("again.txt"));
        EXPECT_EQ(contents_of(file("again.txt")), text);
      }
    }
  }
}

TEST_F(NativeText, EveryFieldThatAFormatBringsSurvivesTheFile) {
  for (const int format : {100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 151, 152, 154, 155}) {
    SCOPED_TRACE(format);
    be(support::rich_data(), base::format_text("L001 A010 A100 D%d A200 D201 D%d A301 D310 D301", format, format));
    session->settings.DMSMode = Notation::Ddd;
    session->settings.TimeOffsetHours = -5;
    ASSERT_TRUE(download(Kind::All));
    const std::vector<ItemRecord> before = all_records(items());
    ASSERT_TRUE(save("rich.txt"));
    ASSERT_TRUE(reread("rich.txt"));
    // c5 lines have one decimal, which is what was sent.
    EXPECT_EQ(whole_store(Detail::Version2), described(before, Detail::Version2));
    expect_same_places(all_records(items()), before, 0.6e-7);
  }
}

TEST_F(NativeText, LinesOfTenMillionBytesAreSurvivedAndTheLinesAroundThemKept) {
  removes_exact_duplicates = false;
  start();
  constexpr std::size_t kSize = 10'000'000;
  const std::string good = "W  GOOD            N54 19.5000 E010 08.7000 Fri Jun 14 21:30:00 2002 Fuel\n";
  for (const std::string start :
       {"W  ", "T  N54 ", "c6 ", "R  01 ", "N  New Track Log Start - ", "D ", "Z ", "M ", "V", ""}) {
    for (const char filler : {'5', ' ', ';'}) {
      if (filler != '5' && start.size() > 3) continue;
      std::string text = good;
      text += start;
      text.append(kSize, filler);
      text += '\n';
      text += "D WGS-84\nZ 0\nE  01\n" + good;
      items().clear_all();
      base::TextInput input(text);
      const store::FileContext context{items(), session->shift, session->datums, session->settings, front_end, clock,
                                       {}};
      (void)textfile::read_native_text(context, input, "long.txt");
      EXPECT_EQ(items().waypoint_count(), 2) << start << filler;
    }
  }
}

}  // namespace

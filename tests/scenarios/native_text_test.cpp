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

// Reading a damaged file gives the records of the whole one, up to the damage.
class DamagedFile : public NativeText {
 protected:
  DamagedFile() {
    removes_exact_duplicates = false;
    start();
    nothing_ = items().contents();
  }

  int read(std::string_view text) {
    items().restore(nothing_);  // much faster than clearing, which gives the memory back
    const store::FileContext context{items(), session->shift, session->datums, session->settings, front_end, clock, {}};
    base::TextInput input(text);
    return textfile::read_native_text(context, input, "damaged.txt");
  }
  static std::vector<std::string> samples() {
    std::vector<std::string> contents;
    for (const auto& entry : std::filesystem::directory_iterator("tests/data/native"))
      if (entry.path().extension() == ".txt") contents.push_back(contents_of(entry.path()));
    return contents;
  }
  // The records of each store by itself, a route's points being one.
  static std::vector<std::vector<ItemRecord>> stores(const store::ItemStore& items) {
    const store::ItemStore::Contents& all = items.contents();
    std::vector<std::vector<ItemRecord>> result;
    for (const store::PackedItems* list : {&all.waypoints, &all.track_points, &all.proximity, &all.events})
      result.emplace_back(list->begin(), list->end());
    for (const store::Route& route : all.routes) {
      result.push_back({});
      if (route.header) result.back().push_back(*route.header);
      result.back().insert(result.back().end(), route.points.begin(), route.points.end());
    }
    return result;
  }
  // Records that differ from those of the whole file at their place; only the last of a store may.
  static int differing(const std::vector<ItemRecord>& cut, const std::vector<ItemRecord>& whole) {
    EXPECT_LE(cut.size(), whole.size());
    int different = 0;
    for (std::size_t i = 0; i < std::min(cut.size(), whole.size()); ++i) {
      EXPECT_EQ(cut[i].position.latitude, whole[i].position.latitude) << described(cut[i]);
      EXPECT_EQ(cut[i].position.longitude, whole[i].position.longitude) << described(cut[i]);
      if (cut[i].time.seconds != whole[i].time.seconds) {
        EXPECT_EQ(cut[i].time.seconds, 0U) << described(cut[i]);
      }
      if (described(cut[i]) == described(whole[i])) continue;
      EXPECT_EQ(i + 1, cut.size()) << described(cut[i]);
      ++different;
    }
    return different;
  }
  // The same over all stores. A route header cut in its number is the header of a route that is not there.
  static int differing(const std::vector<std::vector<ItemRecord>>& cut,
                       const std::vector<std::vector<ItemRecord>>& whole) {
    int different = 0;
    for (std::size_t i = 0; i < cut.size(); ++i) {
      const bool is_cut_header = whole[i].empty() && cut[i].size() == 1 && cut[i][0].kind == 'R';
      different += is_cut_header ? 1 : differing(cut[i], whole[i]);
    }
    return different;
  }

  store::ItemStore::Contents nothing_;
};

TEST_F(DamagedFile, ASampleCutAnywhereGivesNoRecordThatTheWholeDoesNotHold) {
  const std::vector<std::string> texts = samples();
  ASSERT_GE(texts.size(), 3U);
  for (const std::string& text : texts) {
    const int accepted = read(text);
    const auto whole = stores(items());
    const std::size_t stride = text.size() > 20000 ? 17 : 1;
    for (std::size_t size = 0; size < text.size(); size += stride) {
      const std::string_view cut = std::string_view(text).substr(0, size);
      ASSERT_LE(read(cut), accepted);
      const int different = differing(stores(items()), whole);
      // At the end of a line nothing is missing but details that would have followed.
      const bool between_lines = size == 0 || (text[size - 1] == '\n' && text[size] != 'c');
      EXPECT_LE(different, between_lines ? 0 : 2);
      if (HasFailure()) FAIL() << "cut behind " << cut.substr(size - std::min<std::size_t>(size, 100));
    }
  }
}

TEST_F(DamagedFile, RandomBytesAreReadWithoutHarm) {
  constexpr std::string_view kTelling = "WTPRIENDMZVc!0123456789 NSEW^;.:-\n\n\r\xB0\xFF";
  for (unsigned seed = 1; seed <= 400; ++seed) {
    std::minstd_rand random(seed);
    std::string text(random() % 4000, '\0');
    for (char& byte : text) {
      const auto draw = static_cast<std::uint32_t>(random() >> 4);
      byte = seed % 2 == 0 ? static_cast<char>(draw) : kTelling[draw % kTelling.size()];
    }
    (void)read(text);
    EXPECT_EQ(items().waypoint_count() + items().track_point_count(), 0) << seed;
    write_file("random", text);
    if (seed % 20 == 0) (void)session->files.do_input(file("random"));
  }
}

TEST_F(DamagedFile, BytesChangedInASampleDoNoHarm) {
  const std::vector<std::string> texts = samples();
  for (unsigned seed = 1; seed <= 300; ++seed) {
    std::minstd_rand random(seed);
    std::string text = texts[seed % texts.size()];
    for (unsigned i = 0; i < 1 + seed % 30; ++i) text[random() % text.size()] = static_cast<char>(random() >> 6);
    (void)read(text);
    for (const ItemRecord& item : all_records(items())) {
      EXPECT_LE(std::abs(item.position.latitude), 91) << seed;
      EXPECT_LE(std::abs(item.position.longitude), 361) << seed;
    }
    session->settings.This_TXT_File_Version = 2;
    if (!items().empty()) {
      ASSERT_TRUE(save("changed.txt")) << seed;
    }
  }
}

TEST_F(DamagedFile, LinesOfTenMillionBytesAreSurvivedAndTheLinesAroundThemKept) {
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
      (void)read(text);
      EXPECT_EQ(items().waypoint_count(), 2) << start << filler;
    }
  }
}

}  // namespace

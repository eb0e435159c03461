// Every reader against every sample in tests/data: cut at every length, with bytes changed, and against random
// bytes. Nothing may be stored that the whole file does not hold, but for the record in which the cut is.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "session/file_formats.h"
#include "tests/support/described_store.h"
#include "tests/support/transfer_scenario.h"

namespace {

using store::ItemRecord;
using textfile::FileFormat;

struct Sample {
  std::string name;
  std::string contents;
  const FileFormat* format = nullptr;
};

class DamagedFiles : public support::TransferScenario {
 protected:
  DamagedFiles() {
    removes_exact_duplicates = false;
    start();
    session->settings.SA_SortAfterInput = 0;
    nothing_ = items().contents();
    for (const auto& entry : std::filesystem::recursive_directory_iterator("tests/data")) {
      if (!entry.is_regular_file()) continue;
      const int code = session->files.input_type(entry.path());
      for (const FileFormat& format : session::file_formats())
        if (format.code == code && format.read != nullptr)
          samples_.push_back({entry.path().string(), contents_of(entry.path()), &format});
    }
  }

  int read(const Sample& sample, std::string_view text) {
    items().restore(nothing_);
    const store::FileContext context{
        items(), session->shift, session->datums, session->settings, front_end, clock, [this](std::string_view line) {
          session->command_options.do_command(line);
        }};
    base::TextInput input(text);
    return sample.format->read(context, input, sample.name);
  }
  // Every record in words; numbers tell how many records stood before it, which is no matter here.
  static std::vector<std::string> in_words(const store::ItemStore& items) {
    std::vector<std::string> words;
    for (ItemRecord record : support::all_records(items)) {
      record.number = 0;
      words.push_back(support::described(record) +
                      base::format_text(" %.17g %.17g", record.position.latitude, record.position.longitude));
    }
    std::ranges::sort(words);
    return words;
  }

  store::ItemStore::Contents nothing_;
  std::vector<Sample> samples_;
};

TEST_F(DamagedFiles, EveryFormatHasASample) {
  for (const FileFormat& format : session::file_formats()) {
    if (format.read == nullptr) continue;
    EXPECT_TRUE(std::ranges::any_of(samples_, [&](const Sample& s) { return s.format->read == format.read; }))
        << format.name;
  }
}

TEST_F(DamagedFiles, ASampleCutAnywhereGivesNoRecordThatTheWholeDoesNotHold) {
  for (const Sample& sample : samples_) {
    const std::string& text = sample.contents;
    const int accepted = read(sample, text);
    EXPECT_GT(accepted, 0) << sample.name;
    const std::vector<std::string> whole = in_words(items());
    const std::size_t stride = text.size() > 20000 ? 17 : 1;
    for (std::size_t size = 0; size < text.size(); size += stride) {
      ASSERT_LE(read(sample, std::string_view(text).substr(0, size)), accepted) << sample.name << " cut at " << size;
      const std::vector<std::string> cut = in_words(items());
      std::vector<std::string> new_ones;
      std::ranges::set_difference(cut, whole, std::back_inserter(new_ones));
      // A point of a route is in two stores, and a proximity waypoint may be too.
      ASSERT_LE(new_ones.size(), 2U) << sample.name << " cut at " << size << ":\n" << testing::PrintToString(new_ones);
    }
  }
}

TEST_F(DamagedFiles, BytesChangedInASampleDoNoHarm) {
  for (const Sample& sample : samples_) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
      std::minstd_rand random(seed);
      std::string text = sample.contents;
      for (unsigned i = 0; i < 1 + seed % 30; ++i) text[random() % text.size()] = static_cast<char>(random() >> 6);
      (void)read(sample, text);
      for (const ItemRecord& item : support::all_records(items())) {
        EXPECT_LE(std::abs(item.position.latitude), 91) << sample.name << " " << seed;
        EXPECT_LE(std::abs(item.position.longitude), 361) << sample.name << " " << seed;
      }
      if (items().empty()) continue;
      for (const char* name : {"changed.txt", "changed.gpx", "changed.csv"})
        ASSERT_TRUE(save(name)) << sample.name << " " << seed;
    }
  }
}

TEST_F(DamagedFiles, RandomBytesGiveNoItems) {
  constexpr std::string_view kTelling = "WTPRIENDMZVc!0123456789 NSEW^;.:-\n\n\r\xB0\xFF<>,\"'/";
  for (const FileFormat& format : session::file_formats()) {
    if (format.read == nullptr) continue;
    for (unsigned seed = 1; seed <= 100; ++seed) {
      std::minstd_rand random(seed);
      std::string text(random() % 4000, '\0');
      for (char& byte : text) {
        const auto draw = static_cast<std::uint32_t>(random() >> 4);
        byte = seed % 2 == 0 ? static_cast<char>(draw) : kTelling[draw % kTelling.size()];
      }
      (void)read({"random", text, &format}, text);
      EXPECT_EQ(items().waypoint_count() + items().track_point_count() + items().event_count(), 0)
          << format.name << " " << seed;
    }
  }
}

}  // namespace

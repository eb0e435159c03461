// What the tests of file formats share: a store with all that readers and writers work with about it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "base/text_input.h"
#include "base/text_output.h"
#include "store/file_context.h"
#include "store/output_options.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"

namespace support {

struct FileWorld {
  store::Settings settings;
  RecordingFrontEnd front_end;
  SteppingClock clock;
  geodesy::DatumTable datums;
  geodesy::DatumShift shift{datums, front_end};
  store::ItemStore store{settings, front_end};
  store::FileContext context{store, shift, datums, settings, front_end, clock, {}};
  store::OutputOptions options;
};

class FormatTest : public testing::Test, public FileWorld {
 protected:
  using Reader = int (*)(const store::FileContext&, base::TextInput&, const std::string&);
  using Writer = bool (*)(const store::FileContext&, const store::OutputOptions&, base::TextOutput&);

  // What the reader returned.
  int read_with(Reader reader, std::string_view text) {
    base::TextInput input(text);
    return reader(context, input, "a file");
  }
  // Empty when the writer refused.
  std::string write_with(Writer writer) {
    std::string text;
    bool written = false;
    {
      base::TextOutput out([&text](std::string_view block) { text += block; });
      written = writer(context, options, out);
    }
    EXPECT_TRUE(written || text.empty());
    return text;
  }
  store::ItemRecord& item() { return store.CurrentItem; }
  // A record for a push.
  store::ItemRecord& start(double latitude, double longitude, std::uint32_t seconds = 0) {
    store.start_item();
    item().position = {latitude, longitude};
    item().time = {seconds};
    return item();
  }
  void push_track_point(double latitude, double longitude, std::uint32_t seconds) {
    start(latitude, longitude, seconds);
    ASSERT_EQ(store.push_track(), 0);
  }
  void push_waypoint(std::string_view ident, double latitude = 54.325, double longitude = 10.145) {
    start(latitude, longitude).ident = ident;
    item().display_mode = 5;
    ASSERT_EQ(store.push_waypoint(0), 0);
  }

  // A file of tests/data.
  static std::string sample(const std::string& name) {
    std::ifstream file("tests/data/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
};

}  // namespace support

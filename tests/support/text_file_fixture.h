// What the tests of native text files share: a store with a reader and a writer about it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "tests/support/format_fixture.h"
#include "textfile/text_reader.h"
#include "textfile/text_writer.h"

namespace support {

inline constexpr std::string_view kNoon = "Sat Jun 01 12:00:00 2002";
inline constexpr std::uint32_t kNoonSeconds = 391867200;  // 4535 days and 12 hours after 1989-12-31

class TextFileTest : public testing::Test, public FileWorld {
 protected:
  // The number of lines that the reader accepted.
  int read(std::string_view text) {
    textfile::TextReader reader(store, shift, datums, settings, front_end,
                                [this](std::string_view line) { options_seen.emplace_back(line); });
    base::TextInput input(text);
    return reader.read(input, "a file.txt");
  }
  std::string write() {
    std::string text;
    {
      base::TextOutput out([&text](std::string_view block) { text += block; });
      textfile::TextWriter(store, shift, front_end).write(options, out);
    }
    return text;
  }
  // Without the header.
  std::vector<std::string> written_lines() {
    const std::string text = write();
    std::vector<std::string> lines;
    for (const std::string_view line : base::split(text, '\n')) lines.emplace_back(line);
    lines.pop_back();
    while (!lines.empty() && !lines.front().starts_with("Z ")) lines.erase(lines.begin());
    lines.erase(lines.begin());
    return lines;
  }
  store::ItemRecord& item() { return store.CurrentItem; }
  void start_waypoint(std::string_view ident) {
    store.start_item();
    item().ident = ident;
    item().position = {54.325, 10.145};
    item().symbol_mode = 0;
  }
  void push_waypoint() { ASSERT_EQ(store.push_waypoint(0), 0); }

  static std::string sample(const std::string& name) {
    std::ifstream file("tests/data/native/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  std::vector<std::string> options_seen;
};

}  // namespace support

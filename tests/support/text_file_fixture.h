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
#include "textfile/file_format.h"

namespace support {

inline constexpr std::string_view kNoon = "Sat Jun 01 12:00:00 2002";
inline constexpr std::uint32_t kNoonSeconds = 391867200;  // 4535 days and 12 hours after 1989-12-31

class TextFileTest : public FormatTest {
 protected:
  TextFileTest() {
    context.command_options = [this](std::string_view line) { options_seen.emplace_back(line); };
  }
  // The number of lines that the reader accepted.
  int read(std::string_view text) { return read_with(textfile::read_native_text, text); }
  std::string write() { return write_with(textfile::write_native_text); }
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
  void start_waypoint(std::string_view ident) {
    start(54.325, 10.145).ident = ident;
    item().symbol_mode = 0;
  }
  void push_waypoint() { ASSERT_EQ(store.push_waypoint(0), 0); }
  static std::string sample(const std::string& name) { return FormatTest::sample("native/" + name); }

  std::vector<std::string> options_seen;
};

}  // namespace support

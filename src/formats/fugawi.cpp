#include "formats/fugawi.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

#include "base/encoding.h"
#include "base/reading_progress.h"
#include "base/remarks.h"
#include "base/text.h"
#include "formats/iso_time.h"
#include "formats/line_texts.h"
#include "formats/writable_items.h"
#include "store/symbols.h"

namespace formats {
namespace {

using store::ItemRecord;
using Columns = std::vector<std::string_view>;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kShortOrderColumns = 5;
constexpr std::size_t kLatitudeInShortOrder = 2;
constexpr std::size_t kLatitude = 3;
constexpr std::int16_t kSymbolAndComment = 5;

// The position whose latitude stands in that column.
std::optional<geodesy::Position> position_at(const Columns& columns, std::size_t at) {
  if (at + 1 >= columns.size()) return std::nullopt;
  const std::optional<double> latitude = base::parse_number(columns[at]);
  const std::optional<double> longitude = base::parse_number(columns[at + 1]);
  if (!latitude || !longitude || !is_on_globe({*latitude, *longitude})) return std::nullopt;
  return geodesy::Position{*latitude, *longitude};
}

// Where the latitude stands. The column behind the short order's position may hold a number too, so a position there
// is taken even where the longer order has one.
std::size_t latitude_column(const Columns& columns) {
  return columns.size() <= kShortOrderColumns && position_at(columns, kLatitudeInShortOrder) ? kLatitudeInShortOrder
                                                                                             : kLatitude;
}

// "20020601" or "020601", and "120000" or nothing. Nothing when it is no date.
std::optional<store::GarminTime> parse_time(std::string_view date, std::string_view clock) {
  constexpr std::size_t kDateDigits = 8, kClockDigits = 6;
  std::string digits(date);
  if (digits.size() == 6) digits.insert(0, digits[0] >= '8' ? "19" : "20");
  if (digits.size() != kDateDigits || clock.size() > kClockDigits) return std::nullopt;
  digits += std::string(kClockDigits - clock.size(), '0') + std::string(clock);
  const auto part = [&digits](std::size_t at, std::size_t size) { return digits.substr(at, size); };
  return parse_iso_time(part(0, 4) + '-' + part(4, 2) + '-' + part(6, 2) + 'T' + part(8, 2) + ':' + part(10, 2) + ':' +
                        part(12, 2));
}

// False when the line has no position.
bool read_line(std::string_view line, ItemRecord& item, int& unknown_dates) {
  Columns columns = base::split(line, ',');
  for (std::string_view& column : columns) column = base::trim_blanks(column);
  const std::size_t latitude = latitude_column(columns);
  const std::optional<geodesy::Position> position = position_at(columns, latitude);
  if (!position) return false;
  item.position = *position;
  item.ident = base::latin1_from_utf8(columns[0]);
  item.comment = base::latin1_from_utf8(columns[1].empty() && latitude == kLatitude ? columns[2] : columns[1]);
  item.symbol = store::kDotSymbol;
  item.display_mode = kSymbolAndComment;
  if (latitude == kLatitudeInShortOrder) return true;
  columns.resize(kLatitude + 5);
  constexpr double kHighest = 1e6;
  if (const std::optional<double> metres = base::parse_number(columns[kLatitude + 2]);
      metres && std::abs(*metres) < kHighest)
    item.altitude = static_cast<float>(*metres);
  if (const std::string_view date = columns[kLatitude + 3]; !date.empty()) {
    const std::optional<store::GarminTime> time = parse_time(date, columns[kLatitude + 4]);
    if (!time) ++unknown_dates;
    item.time = time.value_or(store::GarminTime{});
  }
  return true;
}

void append_waypoint(std::string& row, const ItemRecord& item, LineTexts& texts) {
  const std::string name = base::utf8_from_latin1(texts.cleaned(item.ident, ","));
  if (name.starts_with('#')) row += ' ';  // else the line would be a comment
  row += name + ',' + base::utf8_from_latin1(texts.cleaned(item.comment, ",")) + ",,";
  row += base::format_text("%.7f,%.7f", item.position.latitude, item.position.longitude);
  const bool has_altitude = is_writable_metres(item.altitude);
  const bool has_time = item.time.seconds != 0;
  if (has_altitude || has_time) row += ',';
  if (has_altitude) row += base::format_text("%.1f", static_cast<double>(item.altitude));
  if (has_time) {
    std::string time;
    append_iso_time(time, item.time);
    std::erase_if(time, [](char c) { return c < '0' || c > '9'; });
    row += ',' + time.substr(0, 8) + ',' + time.substr(8);
  }
  row += '\n';
}

}  // namespace

int read_fugawi(const store::FileContext& context, base::TextInput& input, const std::string&) {
  base::ReadingProgress progress(context.front_end, input);
  context.store.set_input_time_offset(0);
  int accepted = 0, unknown_dates = 0;
  base::BadLines bad_lines;
  for (int number = 1; !input.at_end() && progress.go_on(); ++number) {
    std::string_view line = input.next_line();
    if (number == 1 && line.starts_with(kByteOrderMark)) line.remove_prefix(kByteOrderMark.size());
    if (line.starts_with('#') || base::trim_blanks(line).empty()) continue;
    context.store.start_item();
    if (read_line(line, context.store.CurrentItem, unknown_dates)) {
      accepted += 1 - context.store.push_waypoint(0);
    } else {
      bad_lines.add(number);
    }
  }
  context.store.start_item();
  base::Remarks remarks;
  bad_lines.remark(remarks, "lines are no waypoints");
  remarks.add(unknown_dates, "dates are of an unknown form and were left out");
  remarks.say(context.front_end);
  return accepted;
}

bool write_fugawi(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out) {
  LineTexts texts;
  int written = 0;
  for (int i = 1; options.waypoints && i <= context.store.waypoint_count(); ++i) {
    const ItemRecord item = context.store.waypoint(i);
    if (!is_writable(item, texts)) continue;
    std::string row;
    append_waypoint(row, item, texts);
    out += row;
    ++written;
  }
  if (written == 0) {
    context.front_end.message_box("write_fugawi", "There are no waypoints to write: a Fugawi file holds nothing else.");
    return false;
  }
  texts.report(context.front_end);
  return true;
}

}  // namespace formats

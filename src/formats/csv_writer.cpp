#include <array>
#include <charconv>
#include <chrono>
#include <optional>

#include "base/remarks.h"
#include "base/text.h"
#include "formats/csv.h"
#include "formats/line_texts.h"
#include "formats/shifted_positions.h"
#include "formats/writable_items.h"

namespace formats {
namespace {

using store::ItemRecord;

// As printf prints it, in a fraction of the time.
void append_fixed(std::string& row, double value, int decimals) {
  std::array<char, 64> digits;
  const char* const end =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals).ptr;
  row += std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
  row += ',';
}

class CsvWriter {
 public:
  CsvWriter(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out)
      : context_(context), options_(options), out_(out) {}

  void write() {
    const store::ItemStore& store = context_.store;
    append_header();
    for (int i = 1; options_.waypoints && i <= store.waypoint_count(); ++i) append_waypoint(store.waypoint(i));
    if (options_.tracks) append_tracks();
    for (int i = 1; options_.events && i <= store.event_count(); ++i) append_event(store.event(i));
    for (int number = 0; options_.routes && number < store::kRouteCapacity; ++number) append_route(store.route(number));
    base::Remarks remarks;
    remarks.add(texts_.summary());
    remarks.add(wordless_colours_, "colours have no word and are written as Black");
    remarks.say(context_.front_end);
  }

 private:
  void append_header() {
    const std::string datum = prepare_output_datum(context_, options_.datum);
    out_ += std::string(kCsvVersion) + "\nDatum:," + datum + "\n";
    out_ += base::format_text("ZoneOffset:,%f\n", options_.offset_hours);
    out_ += kCsvHeader;
    out_ += '\n';
  }

  // A text that begins with a quote gets a blank in front: spreadsheets, and the reader, would take the quote off.
  std::string text(std::string_view text) {
    std::string result = texts_.cleaned(text);
    if (base::trim_blanks(result).starts_with('"')) result.insert(0, 1, ' ');
    return result;
  }

  // Kind, name and position: false when the record is not written.
  bool start_row(const ItemRecord& item, char kind, const std::string& name) {
    if (!is_writable(item, texts_)) return false;
    const std::optional<geodesy::Position> position = shifted_position(context_.shift, item.position);
    if (!position) return false;
    row_ = kind;
    row_ += ',';
    row_ += name;
    row_ += ',';
    if (options_.notation == geodesy::Notation::Utm) {
      const geodesy::UtmPosition utm = geodesy::latlon_to_utm(*position, context_.shift.projection_ellipsoid());
      row_ += base::format_text("%c%c,%c,", utm.zone[0], utm.zone[1], utm.zone[2]);
      append_fixed(row_, utm.easting, 4);
      append_fixed(row_, utm.northing, 3);
    } else {
      append_fixed(row_, position->latitude, 8);
      append_fixed(row_, position->longitude, 8);
    }
    return true;
  }

  // Month, day, year, hour, minute, second in the options' zone. No time is the epoch in every zone.
  void append_time(store::GarminTime time) {
    using namespace std::chrono;
    const std::int64_t shifted = time.seconds == 0 ? 0 : std::int64_t{time.seconds} + options_.offset_seconds;
    const sys_seconds local{seconds{store::kGarminEpochUnix + shifted}};
    const auto day = floor<days>(local);
    const year_month_day date(day);
    const hh_mm_ss<seconds> clock(local - day);
    row_ += std::to_string(static_cast<unsigned>(date.month())) + ',' +
            std::to_string(static_cast<unsigned>(date.day())) + ',' + std::to_string(static_cast<int>(date.year())) +
            ',' + std::to_string(clock.hours().count()) + ',' + std::to_string(clock.minutes().count()) + ',' +
            std::to_string(clock.seconds().count());
  }

  void finish_row() {
    row_ += '\n';
    out_ += row_;
  }

  void append_waypoint(const ItemRecord& item) {
    if (!start_row(item, item.kind, text(item.ident))) return;
    append_time(item.time);
    row_ += ',' + text(item.comment) + ',' + std::to_string(item.symbol) + ',';
    const bool has_word = item.colour < kCsvColours.size();
    wordless_colours_ += has_word || item.colour == store::kDefaultColour ? 0 : 1;
    row_ += kCsvColours[has_word ? item.colour : 0];
    row_ += ',';
    row_ += kCsvDisplays[item.display_mode == 1 || item.display_mode == 3 ? static_cast<std::size_t>(item.display_mode)
                                                                          : kCsvDisplays.size() - 1];
    finish_row();
  }

  void append_tracks() {
    // A start that was deleted from a list stands before the next point that was not.
    bool starts = false;
    for (int i = 1; i <= context_.store.track_point_count(); ++i) {
      const ItemRecord point = context_.store.track_point(i);
      starts = starts || point.segment_flag != store::kContinues;
      if (!start_row(point, starts ? 'N' : point.kind, {})) continue;
      starts = false;
      append_time(point.time);
      finish_row();
    }
  }

  void append_event(const ItemRecord& item) {
    if (!start_row(item, item.kind, {})) return;
    row_ += std::to_string(item.symbol);
    finish_row();
  }

  void append_route(const store::Route& route) {
    if (!route.header || route.header->in_use == 0) return;
    const auto number = static_cast<unsigned>(route.header->route_number);
    out_ += base::format_text("R,%02u,", number) + text(route.header->comment) + '\n';
    for (const ItemRecord& point : route.points) append_waypoint(point);
    out_ += base::format_text("E,%02u\n", number);
  }

  const store::FileContext& context_;
  const store::OutputOptions& options_;
  base::TextOutput& out_;
  LineTexts texts_;
  int wordless_colours_ = 0;
  std::string row_;
};

}  // namespace

bool write_csv(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out) {
  CsvWriter(context, options, out).write();
  return true;
}

}  // namespace formats

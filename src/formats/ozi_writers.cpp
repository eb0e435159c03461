#include <algorithm>
#include <array>
#include <charconv>

#include "base/remarks.h"
#include "base/text.h"
#include "formats/ozi.h"
#include "formats/ozi_file.h"
#include "formats/ozi_symbols.h"
#include "formats/writable_items.h"

namespace formats {
namespace {

using store::FileContext;
using store::ItemRecord;
using store::OutputOptions;

// Padded with blanks on the left.
void append_right(std::string& out, std::string_view text, std::size_t width) {
  if (text.size() < width) out.append(width - text.size(), ' ');
  out += text;
}

// Padded with blanks on the right.
void append_left(std::string& out, std::string_view text, std::size_t width) {
  out += text;
  if (text.size() < width) out.append(width - text.size(), ' ');
}

void append_number(std::string& out, long long number, std::size_t width) {
  std::array<char, 24> digits;
  const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  append_right(out, {digits.data(), end}, width);
}

// As printf's "%11.6f" and the like, at a fraction of its time.
void append_fixed(std::string& out, double number, int decimals) {
  constexpr std::size_t kWidth = 11;
  std::array<char, 330> digits;  // for the largest double there is
  const char* const end =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals).ptr;
  append_right(out, {digits.data(), end}, kWidth);
}

void append_position(std::string& out, const ItemRecord& item) {
  append_fixed(out, item.position.latitude, 6);
  out += ',';
  append_fixed(out, item.position.longitude, 6);
  out += ',';
}

// Days since 1899-12-30.
void append_date(std::string& out, store::GarminTime time) {
  constexpr double kDaysPerSecond = 1.1574074074074073e-5;
  append_fixed(out, static_cast<double>(time.seconds) * kDaysPerSecond + kOziGarminEpoch, 7);
}

// As it is written: with the signs that its letters give the position, and without a time where the user wants none.
ItemRecord prepared(ItemRecord item, const OutputOptions& options) {
  store::sign_position(item);
  if (options.zero_time) item.time = {};
  return item;
}

void append_route(base::TextOutput& out, const store::Route& route, int number, const OutputOptions& options,
                  OziChanges& changes) {
  constexpr std::size_t kNumberColumn = 5;  // characters of a waypoint line
  std::string line = "R,";
  append_number(line, number, 3);
  line += ',';
  append_left(line, changes.field(route.header->comment), 14);
  line += ",,255\n";
  out += line;
  for (std::size_t i = 0; i < route.points.size(); ++i) {
    const ItemRecord point = prepared(route.points[i], options);
    if (!changes.writes(point)) continue;
    const int place = static_cast<int>(i) + 1;
    line = "W,";
    append_number(line, number, 3);
    line += ',';
    append_number(line, place, 3);
    line += ',';
    append_number(line, place, 3);
    line += ',';
    line += std::string_view(format_ozi_waypoint_line(place, point, changes)).substr(kNumberColumn);
    line += '\n';
    out += line;
  }
}

// Walks over the points that are written. A segment start that is not goes to the next point that is: else two
// tracks would become one.
class WrittenPoints {
 public:
  WrittenPoints(const store::ItemStore& items, const OutputOptions& options) : items_(items), options_(options) {}

  bool next(OziChanges& changes) {
    break_code_ = store::kContinues;
    while (index_ < items_.track_point_count()) {
      point_ = prepared(items_.track_point(++index_), options_);
      // A segment that starts where a log was to start is the log's first.
      const bool log_waits = break_code_ == store::kStartsNamedTrack && point_.segment_flag == store::kStartsSegment;
      if (point_.segment_flag != store::kContinues && !log_waits) {
        break_code_ = point_.segment_flag;
        title_ = base::trim_blanks(point_.ident);
      }
      if (changes.writes(point_)) return true;
    }
    return false;
  }
  [[nodiscard]] const ItemRecord& point() const { return point_; }
  [[nodiscard]] int break_code() const { return break_code_; }
  [[nodiscard]] bool starts_log() const { return break_code_ == store::kStartsNamedTrack; }
  [[nodiscard]] const std::string& title() const { return title_; }  // of the log that starts here

 private:
  const store::ItemStore& items_;
  const OutputOptions& options_;
  int index_ = 0;
  ItemRecord point_;
  std::uint8_t break_code_ = store::kContinues;
  std::string title_;
};

// The text of the line of track properties: the name of the first track log.
std::string track_title(const FileContext& context, const OutputOptions& options) {
  OziChanges not_reported(context.settings);
  WrittenPoints points(context.store, options);
  while (points.next(not_reported))
    if (points.starts_log()) return points.title();
  return "";
}

// Windows colour of the setting.
int event_colour(int setting) {
  constexpr std::array kColours{0, 255, 16711680, 32768, 65535};
  return setting > 0 && static_cast<std::size_t>(setting) < kColours.size()
             ? kColours[static_cast<std::size_t>(setting)]
             : 0;
}

}  // namespace

std::string OziChanges::field(std::string_view text) {
  std::string result = texts_.cleaned(text);
  if (result.find(kOziComma) != std::string::npos) {
    std::ranges::replace(result, kOziComma, 'N');
    ++tildes_;
  }
  std::ranges::replace(result, ',', kOziComma);
  return result;
}

int OziChanges::symbol(const ItemRecord& item) {
  const OziSymbol symbol = ozi_symbol(item, settings_);
  if (!symbol.is_exact) ++inexact_symbols_;
  return symbol.number;
}

bool OziChanges::writes(const ItemRecord& item) { return is_writable(item, texts_); }

void OziChanges::report(base::FrontEnd& front_end) const {
  base::Remarks remarks;
  remarks.add(texts_.summary());
  remarks.add(tildes_, "texts hold an N with tilde, which is OziExplorer's comma: written as N");
  remarks.add(inexact_symbols_, "symbols have no OziExplorer number: written as a dot");
  remarks.add(dropped_titles_, "track names are not written, the file has room for one");
  remarks.say(front_end);
}

std::string format_ozi_waypoint_line(int number, const ItemRecord& item, OziChanges& changes) {
  std::string line;
  line.reserve(192);
  append_number(line, number, 4);
  line += ',';
  append_left(line, changes.field(item.ident), 14);
  line += ',';
  append_position(line, item);
  append_date(line, item.time);
  line += ',';
  append_number(line, changes.symbol(item), 2);
  line += ", 1, 4,         0,    65535,";
  append_left(line, changes.field(item.comment), 40);
  const char display = item.display_mode == 1 ? '1' : item.display_mode == 5 ? '2' : '0';
  line += ", 0,";
  line += display;
  line += ",0, -777";
  return line;
}

bool write_ozi_waypoints(const FileContext& context, const OutputOptions& options, base::TextOutput& out) {
  OziChanges changes(context.settings);
  out += "OziExplorer Waypoint File Version 1.0\nWGS 84\nReserved 2\nReserved 3\n";
  for (int i = 1; options.waypoints && i <= context.store.waypoint_count(); ++i) {
    const ItemRecord item = prepared(context.store.waypoint(i), options);
    if (!changes.writes(item)) continue;
    out += format_ozi_waypoint_line(i, item, changes);
    out += '\n';
  }
  changes.report(context.front_end);
  return true;
}

bool write_ozi_routes(const FileContext& context, const OutputOptions& options, base::TextOutput& out) {
  OziChanges changes(context.settings);
  out += "OziExplorer Route File Version 1.0\nWGS 84\nReserved 1\nReserved 2\n";
  for (int number = 0; options.routes && number < store::kRouteCapacity; ++number) {
    const store::Route& route = context.store.route(number);
    if (route.header && route.header->in_use != 0) append_route(out, route, number, options, changes);
  }
  changes.report(context.front_end);
  return true;
}

bool write_ozi_track(const FileContext& context, const OutputOptions& options, base::TextOutput& out) {
  OziChanges changes(context.settings);
  const std::string title = options.tracks ? changes.field(track_title(context, options)) : "";
  out += "OziExplorer Track Point File Version 2.0\nWGS 84\nAltitude is in Feet\nReserved 3\n0,2,255,";
  out += title.empty() ? kOziUnnamedTrack : title;
  // Deliberate : all points count, deleted ones too.
  out += ",0\n" + std::to_string(options.tracks ? context.store.track_point_count() : 0) + '\n';
  WrittenPoints points(context.store, options);
  bool has_title_room = true;
  std::string line;
  while (options.tracks && points.next(changes)) {
    if (points.starts_log()) {
      if (!has_title_room && !points.title().empty()) changes.drop_title();
      has_title_room = false;
    }
    line.clear();
    append_position(line, points.point());
    append_number(line, points.break_code(), 0);
    line += ",-777,";
    append_date(line, points.point().time);
    line += '\n';
    out += line;
  }
  changes.report(context.front_end);
  return true;
}

bool write_ozi_events(const FileContext& context, const OutputOptions& options, base::TextOutput& out) {
  OziChanges changes(context.settings);
  out += "OziExplorer Event File Version 1.0\nWGS 84\nReserved 2\nReserved 3\n";
  std::string line;
  for (int i = 1; options.events && i <= context.store.event_count(); ++i) {
    const ItemRecord item = prepared(context.store.event(i), options);
    if (!changes.writes(item)) continue;
    line.clear();
    append_number(line, i, 3);
    line += ',';
    append_position(line, item);
    append_number(line, changes.symbol(item), 2);
    line += ",0,";
    append_number(line, event_colour(context.settings.EventColor), 10);
    line += ",  16777215\n";
    out += line;
  }
  changes.report(context.front_end);
  return true;
}

}  // namespace formats

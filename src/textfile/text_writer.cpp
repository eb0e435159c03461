#include "textfile/text_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/remarks.h"
#include "base/text.h"
#include "geodesy/distance.h"
#include "textfile/detail_lines.h"
#include "textfile/position_columns.h"
#include "textfile/text_layout.h"

namespace textfile {
namespace {

using geodesy::DistanceUnit;
using geodesy::Position;
using store::ItemRecord;
using store::OutputOptions;

constexpr std::string_view kNoTime = "Sun Dec 31 00:00:00 1989";
constexpr std::size_t kIdentInComment = 20;  // characters of an ident that stands in the comment column
constexpr std::size_t kCommentWidth = 20;

bool is_short_layout(int version) { return version < 2; }

// Padded with blanks on the right.
void append_left(std::string& out, std::string_view text, std::size_t width) {
  out += text;
  if (text.size() < width) out.append(width - text.size(), ' ');
}

// Padded with blanks on the left.
void append_number(std::string& out, int number, std::size_t width) {
  std::array<char, 12> digits;
  const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  const auto size = static_cast<std::size_t>(end - digits.data());
  if (size < width) out.append(width - size, ' ');
  out.append(digits.data(), size);
}

std::string_view notation_word(geodesy::Notation notation) {
  for (const NotationWord& known : kNotationWords)
    if (known.notation == notation) return known.word;
  return kNotationWords[1].word;
}

void append_header(std::string& out, const OutputOptions& options) {
  if (!is_short_layout(options.version)) out += "Version " + std::to_string(options.version) + "\n";
  out += "#" + store::format_date_text(options.now_unix - store::kGarminEpochUnix) + " GMT\n";
  out += "D " + options.datum + "\nM ";
  out += notation_word(options.notation);
  out += base::format_text("\nZ %f\n", options.offset_hours);
}

void append_time(std::string& out, const ItemRecord& item, const OutputOptions& options, bool as_kept) {
  if (item.time.seconds == 0 || options.zero_time) {
    out += kNoTime;
  } else {
    out += store::format_date_text(std::int64_t{item.time.seconds} + (as_kept ? 0 : options.offset_seconds));
  }
}

// West of 180 degrees, where a shift may have carried it, there is no zone.
Position within_zones(Position position) {
  if (position.longitude < -180) position.longitude += 360;
  return position;
}

void append_height(std::string& out, float metres) {
  // Deliberate : 1e25 where detail lines say 1e24; either is more than is known.
  out += store::is_known(metres) && std::isfinite(metres) ? base::format_text("%10.2f;", static_cast<double>(metres))
                                                          : "      1e25;";
}

void append_symbol(std::string& out, const ItemRecord& item, int version) {
  const char separator = field_separator(version);
  const auto display = std::find_if(kDisplayWords.begin(), kDisplayWords.end(),
                                    [&](const DisplayWord& known) { return known.mode == item.display_mode; });
  const DisplayWord& word = display == kDisplayWords.end() ? kSymbolAndComment : *display;
  out += separator;
  append_number(out, item.symbol, 5);
  out += separator;
  if (is_short_layout(version)) {
    append_number(out, word.mode, 0);
  } else {
    append_left(out, kWaypointColours[item.colour < kWaypointColours.size() ? item.colour : 0], 6);
    out += separator;
    append_left(out, word.word, 3);
  }
  out += separator;
  append_number(out, item.symbol_mode, 0);
}

void append_proximity(std::string& out, const ItemRecord& item, int version) {
  out += field_separator(version);
  const float metres = item.proximity_distance;
  out += store::is_known(metres) && std::isfinite(metres) ? base::format_text("%-7.1f", static_cast<double>(metres))
                                                          : "1e24";
}

bool has_ident_in_comment(const ItemRecord& item, int version) {
  return item.kind == 'W' && item.detail_kind == store::kLongIdentDetails && !is_short_layout(version);
}

void append_ident(std::string& out, const ItemRecord& item, int version) {
  const std::size_t width = item.kind == 'W' && is_short_layout(version) ? kShortIdent : kLongIdent;
  append_left(out, has_ident_in_comment(item, version) ? "" : item.ident.view().substr(0, width), width);
  out += ' ';
}

// The columns behind the time; proximity waypoints always have them all.
void append_comment_and_symbol(std::string& out, const ItemRecord& item, const OutputOptions& options) {
  const bool is_proximity = item.kind == 'P';
  out += ' ';
  if (is_proximity || !options.no_comments)
    append_left(out,
                has_ident_in_comment(item, options.version) ? item.ident.view().substr(0, kIdentInComment)
                                                            : item.comment.view(),
                kCommentWidth);
  if (is_proximity || !options.no_symbols) append_symbol(out, item, options.version);
  if (is_proximity) append_proximity(out, item, options.version);
}

void append_route_header(std::string& out, const ItemRecord& header) {
  out += base::format_text("R  %02u ", static_cast<unsigned>(header.route_number));
  out += header.comment;
}

void append_track_start(std::string& out, const ItemRecord& start, int version) {
  if (is_short_layout(version)) {
    out += "N  New Track Start\n";
  } else if (start.segment_flag == store::kStartsNamedTrack) {
    const std::size_t colour = start.colour < store::kColourNames.size() ? start.colour : store::kDefaultColour;
    out += "N  New Track Log Start - ";
    out += start.ident;
    out += ',';
    out += store::kColourNames[colour];
    out += ',' + std::to_string(start.track_style) + '\n';
  } else {
    out += "N  New Track Segment Start\n";
  }
}

// The comment lines of one route or track segment: the length of each leg, and their sum at its end.
class DistanceLines {
 public:
  explicit DistanceLines(bool wanted) : wanted_(wanted) {}

  void add_point(std::string& out, const Position& position) {
    if (!wanted_) return;
    if (last_) {
      std::array<double, kUnits.size()> leg{};
      for (std::size_t i = 0; i < kUnits.size(); ++i) {
        leg[i] = geodesy::great_circle_distance(*last_, position, kUnits[i]);
        sum_[i] += leg[i];
      }
      append(out, "Dist", leg);
    }
    last_ = position;
  }

  void finish(std::string& out) {
    if (last_) append(out, "DSum", sum_);
    last_.reset();
    sum_ = {};
  }

 private:
  static constexpr std::array kUnits{DistanceUnit::NauticalMiles, DistanceUnit::StatuteMiles, DistanceUnit::Kilometres};
  static void append(std::string& out, const char* what, const std::array<double, kUnits.size()>& lengths) {
    out += base::format_text("; %s: %8.4f nm, %8.4f sm, %8.4f km\n", what, lengths[0], lengths[1], lengths[2]);
  }

  bool wanted_;
  std::optional<Position> last_;
  std::array<double, kUnits.size()> sum_{};
};

}  // namespace

TextWriter::TextWriter(const store::ItemStore& store, geodesy::DatumShift& shift, base::FrontEnd& front_end)
    : store_(store), shift_(shift), front_end_(front_end) {}

void TextWriter::write(const OutputOptions& options, base::TextOutput& out) {
  prepared_datum_.reset();
  prepare_shift(options.datum);
  changed_texts_ = wordless_colours_ = left_out_ = 0;
  std::string text;
  const auto append = [&](const ItemRecord& record) {
    append_waypoint(text, record, options, false);
    out += text;
    text.clear();
  };
  append_header(text, options);
  out += text;
  text.clear();
  for (int i = 1; options.waypoints && i <= store_.waypoint_count(); ++i) append(store_.waypoint(i));
  if (options.routes) append_routes(out, options);
  for (int i = 1; options.proximity && i <= store_.proximity_count(); ++i) append(store_.proximity(i));
  if (options.tracks) append_tracks(out, options);
  for (int i = 1; options.events && i <= store_.event_count(); ++i) append(store_.event(i));
  report();
}

std::string TextWriter::item_line(const ItemRecord& record, const OutputOptions& options, bool is_route_point) {
  prepare_shift(options.datum);
  const ItemRecord item = cleaned(record, options.version);
  std::string line;
  if (item.kind == 'R') {
    append_route_header(line, item);
  } else {
    append_item(line, item, options, is_route_point);
  }
  return line;
}

void TextWriter::prepare_shift(const std::string& datum) {
  if (prepared_datum_ == datum) return;
  shift_.set_datum_shift("WGS-84", datum);
  prepared_datum_ = datum;
}

template <std::size_t N>
void TextWriter::clean(base::FixedText<N>& text, std::string_view forbidden) {
  const auto breaks_line = [forbidden](char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F' || forbidden.find(c) != std::string_view::npos;
  };
  const std::string_view view = text;
  if (std::none_of(view.begin(), view.end(), breaks_line)) return;
  std::string replaced(view);
  std::replace_if(replaced.begin(), replaced.end(), breaks_line, '-');
  text = replaced;
  ++changed_texts_;
}

// A copy of which every text can stand in a line of that version.
ItemRecord TextWriter::cleaned(const ItemRecord& record, int version) {
  ItemRecord item = record;
  const char separator = field_separator(version);
  const bool has_columns = item.kind == 'W' || item.kind == 'P' || item.kind == 'I';
  const std::string_view column_end = has_columns ? std::string_view(&separator, 1) : std::string_view();
  clean(item.ident, column_end);
  clean(item.comment, column_end);
  if (item.kind != 'W' || is_short_layout(version)) return item;
  clean(item.name, {});
  clean(item.link_ident, {});
  clean(item.route_link_ident, {});
  clean(item.state, ";");
  clean(item.country, ";");
  clean(item.facility, ";");
  clean(item.city, ";");
  clean(item.address, ";");
  clean(item.cross_road, ";");
  return item;
}

// False when the record has no position, and so no line.
bool TextWriter::append_item(std::string& out, const ItemRecord& item, const OutputOptions& options,
                             bool is_route_point) {
  const std::optional<Position> position = shift_position(shift_, item.position);
  if (!position) return false;
  out += item.kind;
  out += "  ";
  if (item.kind == 'W' || item.kind == 'P') append_ident(out, item, options.version);
  const geodesy::PositionTexts texts =
      options.notation == geodesy::Notation::Utm
          ? format_position(within_zones(*position), options.notation, shift_.projection_ellipsoid())
          : format_position(*position, options.notation, shift_.projection_ellipsoid());
  out += texts.first;
  out += ' ';
  out += texts.second;
  out += ' ';
  // Events and route points keep the time that they came with.
  append_time(out, item, options, item.kind == 'I' || is_route_point);
  if (item.kind != 'T') {
    append_comment_and_symbol(out, item, options);
  } else if (!is_short_layout(options.version)) {
    out += " ;";
    append_height(out, item.altitude);
    append_height(out, item.depth);
  }
  return true;
}

// A line with its detail lines; false when the record is not written.
bool TextWriter::append_waypoint(std::string& out, const ItemRecord& record, const OutputOptions& options,
                                 bool is_route_point) {
  if (record.in_use == 0) return false;
  const ItemRecord item = cleaned(record, options.version);
  if (!append_item(out, item, options, is_route_point)) {
    ++left_out_;
    return false;
  }
  out += '\n';
  if (is_short_layout(options.version)) return true;
  const bool has_word = item.colour < kWaypointColours.size() || item.colour == store::kDefaultColour;
  if (!has_word && !options.no_symbols) ++wordless_colours_;
  if (item.kind == 'W') append_detail_lines(out, item);
  return true;
}

void TextWriter::append_routes(base::TextOutput& file, const OutputOptions& options) {
  std::string out;
  for (int number = 0; number < store::kRouteCapacity; ++number) {
    const store::Route& route = store_.route(number);
    if (!route.header || route.header->in_use == 0) continue;
    append_route_header(out, cleaned(*route.header, options.version));
    out += '\n';
    DistanceLines distances(options.distances);
    for (const ItemRecord& point : route.points)
      if (append_waypoint(out, point, options, true)) distances.add_point(out, point.position);
    distances.finish(out);
    out += base::format_text("E  %02u\n", static_cast<unsigned>(route.header->route_number));
    file += out;
    out.clear();
  }
}

void TextWriter::append_tracks(base::TextOutput& file, const OutputOptions& options) {
  std::string out;
  DistanceLines distances(options.distances);
  // A start that was deleted from a list stands before the next point that was not.
  std::optional<ItemRecord> start;
  for (int i = 1; i <= store_.track_point_count(); ++i) {
    const ItemRecord& point = store_.track_point(i);
    if (point.segment_flag != store::kContinues) start = cleaned(point, options.version);
    if (point.in_use == 0) continue;
    if (start) {
      distances.finish(out);
      append_track_start(out, *start, options.version);
      start.reset();
    }
    if (!append_item(out, point, options, false)) {
      ++left_out_;
      continue;
    }
    out += '\n';
    distances.add_point(out, point.position);
    file += out;
    out.clear();
  }
  distances.finish(out);
  file += out;
}

void TextWriter::report() const {
  base::Remarks remarks;
  remarks.add(changed_texts_, "texts hold characters that separate fields or lines: written with '-'");
  remarks.add(wordless_colours_, "colours of items have no word: written as Black");
  remarks.add(left_out_, "items without a position are not written");
  remarks.say(front_end_);
}

}  // namespace textfile

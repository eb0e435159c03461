#include "textfile/text_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "base/reading_progress.h"
#include "base/text.h"
#include "textfile/detail_lines.h"
#include "textfile/position_columns.h"
#include "textfile/text_layout.h"

namespace textfile {
namespace {

using store::ItemRecord;

constexpr std::string_view kInternalDatum = "WGS-84";
constexpr std::string_view kLineKinds = "DMNPWREITZ!";
constexpr char kDegreeSign = '\xB0';

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The character in that column (from 0), NUL behind the end.
constexpr char at(std::string_view line, std::size_t column) { return column < line.size() ? line[column] : '\0'; }

constexpr bool is_latitude_letter(char c) { return c == 'N' || c == 'S'; }

// Where the position of a line of this kind may begin, in the order in which to look.
std::span<const std::size_t> position_starts(char kind) {
  static constexpr std::array<std::size_t, 2> kAfterIdent{kAfterLongIdent, kAfterShortIdent};
  static constexpr std::array<std::size_t, 2> kOfEvent{kWithoutIdent, kAfterLongIdent};
  if (kind == 'T') return std::span(kOfEvent).first(1);
  return kind == 'I' ? std::span(kOfEvent) : std::span(kAfterIdent);
}

// Lines of an older layout without kind letter: a bare position is a track point, one behind a 6-character
// ident a waypoint. Degree signs behind the degrees tell them. The kind letter that the line lacks, or nothing.
std::string_view missing_kind(std::string_view line) {
  const auto is_position = [line](std::size_t start) {
    return is_latitude_letter(at(line, start)) && at(line, start + 3) == kDegreeSign &&
           (at(line, start + 12) == 'E' || at(line, start + 12) == 'W') && at(line, start + 16) == kDegreeSign;
  };
  if (line.size() <= 26) return {};
  if (is_position(0)) return "T  ";
  return is_position(kShortIdent + 1) ? "W  " : "";
}

std::string_view without_last_mark(std::string_view line) {
  if (line.ends_with('\xFF') || line.ends_with('\x7F')) line.remove_suffix(1);
  return line;
}

// The text up to the next separator of either version, which is taken too.
std::string_view take_field(std::string_view& rest) {
  const auto separator = std::find_if(rest.begin(), rest.end(), [](char c) { return c == '^' || c == ';'; });
  const auto end = static_cast<std::size_t>(separator - rest.begin());
  const std::string_view field = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return base::trim_blanks(field);
}

template <typename Number>
Number number_or(std::string_view text, Number otherwise) {
  const std::optional<long long> value = base::parse_integer(text);
  return value && std::in_range<Number>(*value) ? static_cast<Number>(*value) : otherwise;
}

bool fits_a_time(std::int64_t seconds) { return seconds > 0 && seconds <= std::numeric_limits<std::uint32_t>::max(); }

}  // namespace

TextReader::TextReader(store::ItemStore& store, geodesy::DatumShift& shift, const geodesy::DatumTable& datums,
                       const store::Settings& settings, base::FrontEnd& front_end,
                       std::function<void(std::string_view)> command_options)
    : store_(store),
      shift_(shift),
      datums_(datums),
      settings_(settings),
      front_end_(front_end),
      command_options_(std::move(command_options)) {}

int TextReader::read(base::TextInput& input, const std::string& file_name) {
  state_ = State{};
  state_.file_name = file_name;
  set_file_datum(kInternalDatum);
  store_.set_input_time_offset(0);
  store_.clear_route_overflow();
  store_.forget_pending_track();
  {
    base::ReadingProgress progress(front_end_, input);
    while (!input.at_end() && progress.go_on() && read_line(input)) {
    }
  }
  store_.start_item();
  store_.set_input_time_offset(0);  // the file's offset is not that of the next download
  return state_.accepted;
}

void TextReader::set_file_datum(std::string_view name) { shift_.set_datum_shift(name, kInternalDatum); }

// False when the rest of the file is not to be read.
bool TextReader::read_line(base::TextInput& lines) {
  const std::string whole(lines.next_line(kLongestLine));  // a copy: detail lines are read below
  if (whole.starts_with('V')) {
    constexpr std::size_t kVersionColumn = 8;
    state_.version =
        base::leading_integer(std::string_view(whole).substr(std::min(kVersionColumn, whole.size()))) >= 2 ? 2 : 1;
    return true;
  }
  if (whole.empty() || kLineKinds.find(whole[0]) == std::string_view::npos) return true;
  std::string_view line = base::trim_trailing_blanks(whole);
  if (line.size() <= 2 || read_setting_line(line)) return true;
  store_.start_item();
  if (line[0] == 'W') {
    while (lines.next_begins_with('c')) read_detail_line(lines.next_line(kLongestLine), store_.CurrentItem, front_end_);
    if (store_.route_overflow()) return false;
  }
  line = without_last_mark(line);
  const std::string_view kind = missing_kind(line);
  if (kind.empty()) {
    read_data_line(line);
  } else {
    read_data_line(std::string(kind) + std::string(line));
  }
  return true;
}

// Lines that set something and do not count.
bool TextReader::read_setting_line(std::string_view line) {
  if (line[0] == '!') {
    if (command_options_) command_options_(line);
    return true;
  }
  const std::string_view value = base::trim_blanks(line.substr(2));
  if (line.starts_with("Z ")) {
    const double hours = base::leading_number(value);
    const bool taken = settings_.DontConvertInputTime == 0 && std::abs(hours) <= store::kMostOffsetHours;
    store_.set_input_time_offset(taken ? store::offset_seconds(hours) : 0);
    return true;
  }
  if (line.starts_with("M ")) {
    state_.notation_given = true;
    const std::string_view word = value.substr(0, value.find(' '));
    for (const NotationWord& known : kNotationWords)
      if (base::equal_ignoring_case(known.word, word)) state_.notation = known.notation;
    return true;
  }
  return false;
}

void TextReader::read_data_line(std::string_view line) {
  if (line.starts_with('D')) return read_datum(line);
  if (line.starts_with('N')) return read_track_start(line);
  if (at(line, 1) != ' ' || at(line, 2) != ' ') return;
  if (line.starts_with('R')) return read_route_header(line);
  if (line.starts_with('E')) {
    state_.route_open = false;
    ++state_.accepted;
    return;
  }
  if (std::string_view("WPTI").find(line[0]) != std::string_view::npos) read_item(line);
}

void TextReader::read_datum(std::string_view line) {
  if (at(line, 1) != ' ') {
    front_end_.write_line(1, "Bad Datum in file: " + std::string(state_.file_name) + ". Using WGS-84.");
    front_end_.write_line(1, "Bad line: '" + std::string(line) + "'");
    set_file_datum(kInternalDatum);
    return;
  }
  ++state_.accepted;
  std::string_view name = base::trim_blanks(line.substr(2));
  const std::size_t blank = name.find(' ');
  if (!name.empty() && is_digit(name[0]) && blank != std::string_view::npos && datums_.find(name) == nullptr)
    name = base::trim_blanks(name.substr(blank));
  // A user's datum may have a blank at its end, which no line keeps.
  const std::string with_blank = std::string(name) + ' ';
  if (datums_.find(name) == nullptr && datums_.find(with_blank) != nullptr) name = with_blank;
  if (datums_.find(name) == nullptr) {
    front_end_.write_line(1, "Datum '" + std::string(name) + "' not found.  Using WGS-84.");
    name = kInternalDatum;
  }
  set_file_datum(name);
}

// "N  New Track Log Start - name,colour,style": the name may hold commas, the two behind it cannot.
void TextReader::read_track_start(std::string_view line) {
  constexpr std::string_view kNamed = "Track Log Start";
  constexpr std::string_view kDash = " - ";
  ++state_.accepted;
  store_.start_segment();
  const std::size_t named = line.find(kNamed);
  if (named == std::string_view::npos) return;
  std::string_view name = line.substr(named + kNamed.size());
  if (name.starts_with(kDash)) name.remove_prefix(kDash.size());
  std::string_view colour;
  std::uint8_t style = 1;
  std::size_t comma = name.rfind(',');
  if (comma != std::string_view::npos) {
    colour = name.substr(comma + 1);
    name = name.substr(0, comma);
    comma = name.rfind(',');
    if (comma != std::string_view::npos) {
      style = number_or<std::uint8_t>(base::trim_blanks(colour), style);
      colour = name.substr(comma + 1);
      name = name.substr(0, comma);
    }
  }
  store_.start_track_log(name, base::trim_blanks(colour), style);
}

void TextReader::read_route_header(std::string_view line) {
  const std::string_view words = line.substr(kIdentColumn);
  const std::string_view number_text = words.substr(0, words.find(' '));
  if (number_text.empty() || !std::all_of(number_text.begin(), number_text.end(), is_digit)) return;
  // The name has its column behind the two digits that are written; behind other numbers it begins where it can.
  std::string_view name = words.substr(std::min(number_text.size() + 1, words.size()));
  if (number_text.size() != 2) name = base::trim_blanks(name);
  state_.route_open = true;
  store_.start_route(number_or<std::uint32_t>(number_text, store::kRouteCapacity), number_text, name);
  state_.accepted += 1 - store_.push_route(true);
}

void TextReader::read_item(std::string_view line) {
  std::optional<Columns> columns = find_position(line, state_.notation);
  // UTM is told by its columns where the file does not name it, and then holds for the rest of the file.
  if (!columns && !state_.notation_given && state_.notation == geodesy::Notation::Dmm) {
    columns = find_position(line, geodesy::Notation::Utm);
    if (columns) state_.notation = geodesy::Notation::Utm;
  }
  if (!columns) return;
  ItemRecord& item = store_.CurrentItem;
  item.kind = line[0];
  item.position = columns->wgs84;
  const std::size_t time_column = columns->position + position_width(state_.notation);
  item.time = read_time(line, time_column);
  if (item.kind == 'T') {
    read_track_fields(line.substr(std::min(time_column + kDateLength, line.size())));
  } else {
    read_waypoint_fields(line, *columns);
  }
  state_.accepted += 1 - push_item(item.kind);
}

std::optional<TextReader::Columns> TextReader::find_position(std::string_view line, geodesy::Notation notation) const {
  for (const std::size_t start : position_starts(line[0])) {
    const std::optional<geodesy::Position> position = read_position(line, start, notation, shift_.source_ellipsoid());
    if (!position) continue;
    if (const std::optional<geodesy::Position> wgs84 = shift_position(shift_, *position)) return Columns{start, *wgs84};
  }
  return std::nullopt;
}

// Local time, which the push turns into UTC where the kind is kept in UTC. No time when it does not fit.
store::GarminTime TextReader::read_time(std::string_view line, std::size_t column) const {
  if (line.size() < column + kDateLength) return {};
  const std::optional<std::int64_t> local = store::parse_date_text(line.substr(column, kDateLength));
  if (!local) return {};
  const bool kept = line[0] == 'I' || (line[0] == 'W' && state_.route_open);
  const bool shifted = line[0] != 'I';
  if (kept && !fits_a_time(*local)) return {};
  if (shifted && !fits_a_time(*local - store_.input_time_offset())) return {};
  return {static_cast<std::uint32_t>(*local)};
}

// Ident, comment and symbol columns of waypoints, proximity waypoints and events.
void TextReader::read_waypoint_fields(std::string_view line, const Columns& columns) {
  ItemRecord& item = store_.CurrentItem;
  // A detail line may have given the ident whole.
  if (columns.position != kWithoutIdent && item.ident.empty())
    item.ident = base::trim_trailing_blanks(line.substr(kIdentColumn, columns.position - 1 - kIdentColumn));
  item.display_mode = static_cast<std::int16_t>(kSymbolAndComment.mode);
  const std::size_t comment_column = columns.position + position_width(state_.notation) + kDateLength + 1;
  std::string_view rest = line.substr(std::min(comment_column, line.size()));
  const std::size_t end = rest.find(field_separator(state_.version));
  const std::string_view comment = rest.substr(0, std::min(end, rest.size()));
  // Deliberate : the column holds such a waypoint's ident, so the comment says what kind it is.
  item.comment = item.detail_kind == store::kLongIdentDetails
                     ? std::string_view("SP WAYPOINT")
                     : base::trim_trailing_blanks(comment.substr(0, kLongestComment));
  if (item.kind == 'P') item.proximity_distance = store::kNotKnown;
  if (end != std::string_view::npos) read_symbol_fields(rest.substr(end + 1));
}

void TextReader::read_symbol_fields(std::string_view fields) {
  ItemRecord& item = store_.CurrentItem;
  item.symbol = number_or<std::int16_t>(take_field(fields), 0);
  if (state_.version >= 2) {
    const std::string_view colour = take_field(fields);
    for (std::size_t number = 0; number < kWaypointColours.size(); ++number)
      if (colour.find(kWaypointColours[number]) != std::string_view::npos)
        item.colour = static_cast<std::uint8_t>(number);
  }
  const std::string_view display = take_field(fields);
  for (const DisplayWord& known : kDisplayWords) {
    const bool matches = state_.version >= 2 ? display == known.word : number_or<int>(display, 0) == known.mode;
    if (matches) item.display_mode = static_cast<std::int16_t>(known.mode);
  }
  item.symbol_mode = number_or<std::uint8_t>(take_field(fields), store::kSymbolModeNotGiven);
  if (item.kind == 'P') (void)read_metres(take_field(fields), item.proximity_distance);
}

// " ;altitude;depth;" behind the time.
void TextReader::read_track_fields(std::string_view rest) {
  (void)take_field(rest);
  (void)read_metres(take_field(rest), store_.CurrentItem.altitude);
  (void)read_metres(take_field(rest), store_.CurrentItem.depth);
}

// 1 when the line is not to count because a store refused its record.
int TextReader::push_item(char kind) {
  if (kind == 'T') return store_.push_track();
  if (kind == 'I') return store_.push_event();
  if (kind == 'W') return state_.route_open ? store_.push_route(true) : store_.push_waypoint(0);
  const ItemRecord item = store_.CurrentItem;
  const int refused = store_.push_proximity();
  store_.CurrentItem = item;
  return refused | store_.push_waypoint(0);
}

}  // namespace textfile

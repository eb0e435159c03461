#include <algorithm>
#include <chrono>
#include <cmath>
#include <deque>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "base/encoding.h"
#include "base/reading_progress.h"
#include "base/remarks.h"
#include "base/text.h"
#include "formats/csv.h"
#include "formats/csv_columns.h"
#include "formats/csv_fields.h"
#include "formats/shifted_positions.h"
#include "geodesy/position_parser.h"

namespace formats {
namespace {

using store::ItemRecord;
using Fields = std::span<const std::string>;

constexpr std::size_t kTimeFields = 6;
constexpr std::size_t kFieldsBehindComment = 3;  // symbol, colour, display
constexpr std::size_t kWaypointFields = 14;      // in degrees, and without commas in texts

bool all_empty(Fields fields) {
  return std::ranges::all_of(fields, [](const std::string& field) { return base::trim_blanks(field).empty(); });
}

class CsvReader {
 public:
  CsvReader(const store::FileContext& context, base::TextInput& input) : context_(context), input_(input) {}

  // As read_csv, but -1 when the first line is of no layout that is known.
  int read();

 private:
  // Told by the first line: rows with kind letters, or columns by their names.
  enum class Layout { Unknown, Kinds, Named };

  [[nodiscard]] bool at_end() { return pending_.empty() && input_.at_end(); }
  std::string next_line();
  std::string next_record();
  [[nodiscard]] bool read_record(const std::string& record);
  [[nodiscard]] bool read_heading(const std::string& record, const CsvFields& fields);
  void read_datum(Fields name);
  void read_zone(std::string_view hours);
  [[nodiscard]] bool read_row(const CsvFields& fields);
  [[nodiscard]] bool read_waypoint(Fields fields);
  [[nodiscard]] bool read_track_point(Fields fields, bool starts_segment);
  [[nodiscard]] bool read_event(Fields fields);
  [[nodiscard]] bool read_route_header(Fields fields);
  [[nodiscard]] bool read_named_columns(const CsvFields& fields);
  [[nodiscard]] bool take_position(Fields& fields);
  [[nodiscard]] bool take_time(Fields& fields);
  [[nodiscard]] std::string text_of(Fields pieces) const;
  [[nodiscard]] char separator() const { return separator_.value_or(','); }
  [[nodiscard]] ItemRecord& item() { return context_.store.CurrentItem; }
  void report() const;

  const store::FileContext& context_;
  base::TextInput& input_;
  std::deque<std::string> pending_;  // lines that turned out not to belong to the record before
  Layout layout_ = Layout::Unknown;
  std::optional<char> separator_;  // not known before a line that has one
  std::optional<CsvColumns> columns_;
  bool has_byte_order_mark_ = false;
  bool begins_as_written_ = false;
  bool as_written_ = false;  // no spreadsheet has saved the file since: it has no quotes and no fields added
  std::int64_t offset_ = 0;  // seconds, local time minus UTC
  bool route_open_ = false;
  int line_ = 0;
  int accepted_ = 0;
  base::BadLines bad_rows_;
  CsvColumns::LeftOut left_out_;
};

int CsvReader::read() {
  base::ReadingProgress progress(context_.front_end, input_);
  // Times are made UTC here, those of route points too, which a push leaves as they are.
  context_.store.set_input_time_offset(0);
  context_.store.clear_route_overflow();
  context_.store.forget_pending_track();
  context_.shift.set_datum_shift("WGS-84", "WGS-84");
  while (!at_end() && progress.go_on() && !context_.store.route_overflow()) {
    const int line = line_ + 1;
    const std::string record = next_record();
    if (record.find_first_not_of(" ,;\t\"") == std::string::npos) continue;  // a spreadsheet's empty row
    const bool good = read_record(record);
    if (layout_ == Layout::Unknown && !good) return -1;
    if (!good) bad_rows_.add(line);
  }
  context_.store.start_item();
  report();
  return accepted_;
}

std::string CsvReader::next_line() {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::string line;
  if (pending_.empty()) {
    line = input_.next_line();
  } else {
    line = std::move(pending_.front());
    pending_.pop_front();
  }
  if (++line_ == 1 && line.starts_with(kByteOrderMark)) {
    has_byte_order_mark_ = true;
    line.erase(0, kByteOrderMark.size());
  }
  return line;
}

// A line; in other programs' files also the lines behind it, where a field goes on there up to its closing quote. Where
// there is none, the line stands alone.
std::string CsvReader::next_record() {
  constexpr std::size_t kMostLines = 50;  // a field of more has lost its closing quote
  const std::string line = next_line();
  if (layout_ != Layout::Named || split_quoted(line, separator())) return line;
  std::string record = line;
  std::vector<std::string> more;
  while (more.size() < kMostLines && !at_end()) {
    more.push_back(next_line());
    record += ' ' + more.back();
    const Continuation found = continuation_of_quoted(more.back(), separator());
    if (found == Continuation::Completes) return record;
    if (found == Continuation::None) break;
  }
  pending_.insert(pending_.begin(), more.begin(), more.end());
  line_ -= static_cast<int>(more.size());
  return line;
}

// False when it is none that can be read.
bool CsvReader::read_record(const std::string& record) {
  constexpr std::string_view kSeparatorLine = "sep=";  // tells some spreadsheets what separates
  if (line_ == 1 && record.size() == kSeparatorLine.size() + 1 && record.starts_with(kSeparatorLine)) {
    separator_ = record.back();
    return true;
  }
  if (!separator_) separator_ = csv_separator(record);
  // As written, quotes are characters, unless the user has put them about a text or a number since.
  if (as_written_ && read_row(split_plain(record, separator()))) return true;
  const CsvFields fields = split_csv_line(record, separator());
  if (layout_ == Layout::Named) return read_named_columns(fields);
  if (read_heading(record, fields)) {
    layout_ = Layout::Kinds;
    return true;
  }
  if (layout_ == Layout::Kinds) return read_row(fields);
  columns_ = CsvColumns::of_header(fields);
  if (columns_) layout_ = Layout::Named;
  return columns_.has_value();
}

// The lines before the rows.
bool CsvReader::read_heading(const std::string& record, const CsvFields& fields) {
  if (fields[0].starts_with("Version ")) {
    begins_as_written_ = record == kCsvVersion;
  } else if (fields[0] == "Datum:") {
    read_datum(Fields(fields).subspan(1));
  } else if (fields[0] == "ZoneOffset:") {
    read_zone(fields.size() > 1 ? fields[1] : std::string());
  } else if (fields[0] == "Type" && fields.size() >= kWaypointFields && fields[4] == "Month#") {
    as_written_ = begins_as_written_ && record == kCsvHeader;
  } else {
    return false;
  }
  return true;
}

void CsvReader::read_datum(Fields pieces) {
  while (!pieces.empty() && pieces.back().empty()) pieces = pieces.first(pieces.size() - 1);
  std::string name = joined_with_commas(pieces);
  if (context_.datums.find(name) == nullptr) {
    context_.front_end.write_line(1, "Datum '" + name + "' not found.  Using WGS-84.");
    name = "WGS-84";
  }
  context_.shift.set_datum_shift(name, "WGS-84");
}

void CsvReader::read_zone(std::string_view text) {
  const double hours = csv_number(text).value_or(0);
  const bool taken = context_.settings.DontConvertInputTime == 0 && std::abs(hours) <= store::kMostOffsetHours;
  offset_ = taken ? store::offset_seconds(hours) : 0;
}

bool CsvReader::read_row(const CsvFields& fields) {
  context_.store.start_item();
  const std::string_view kind = base::trim_blanks(fields[0]);
  if (kind == "W") return read_waypoint(fields);
  if (kind == "T" || kind == "N") return read_track_point(fields, kind == "N");
  if (kind == "I") return read_event(fields);
  if (kind == "R") return read_route_header(fields);
  route_open_ = route_open_ && kind != "E";
  return kind == "E";
}

// Commas in name and comment look like those between fields. The name ends before the first fields that are a
// position and a date; what then stands before the last three fields is the comment.
bool CsvReader::read_waypoint(Fields fields) {
  while (fields.size() > kWaypointFields && fields.back().empty()) fields = fields.first(fields.size() - 1);
  for (std::size_t name_end = 2; name_end < fields.size(); ++name_end) {
    Fields rest = fields.subspan(name_end);
    if (!take_position(rest) || !take_time(rest) || rest.size() <= kFieldsBehindComment) continue;
    const std::size_t comment_size = rest.size() - kFieldsBehindComment;
    const std::optional<int> symbol = csv_integer(rest[comment_size]);
    if (!symbol || !std::in_range<std::int16_t>(*symbol)) return false;
    item().ident = text_of(fields.subspan(1, name_end - 1));
    item().comment = text_of(rest.first(comment_size));
    item().symbol = static_cast<std::int16_t>(*symbol);
    const auto colour = std::ranges::find(kCsvColours, rest[comment_size + 1]);
    item().colour =
        colour == kCsvColours.end() ? std::uint8_t{0} : static_cast<std::uint8_t>(colour - kCsvColours.begin());
    const std::string& display = rest[comment_size + 2];
    item().display_mode = display == kCsvDisplays[1] ? 1 : display == kCsvDisplays[3] ? 3 : 5;
    accepted_ += 1 - (route_open_ ? context_.store.push_route(true) : context_.store.push_waypoint(0));
    return true;
  }
  return false;
}

bool CsvReader::read_track_point(Fields fields, bool starts_segment) {
  if (fields.size() < 2) return false;
  Fields rest = fields.subspan(2);
  if (!take_position(rest) || !take_time(rest)) return false;
  if (starts_segment) context_.store.start_segment();
  accepted_ += 1 - context_.store.push_track();
  return true;
}

bool CsvReader::read_event(Fields fields) {
  if (fields.size() < 2) return false;
  Fields rest = fields.subspan(2);
  if (!take_position(rest) || rest.empty()) return false;
  const std::optional<int> symbol = csv_integer(rest[0]);
  if (!symbol || !std::in_range<std::int16_t>(*symbol)) return false;
  item().symbol = static_cast<std::int16_t>(*symbol);
  accepted_ += 1 - context_.store.push_event();
  return true;
}

bool CsvReader::read_route_header(Fields fields) {
  route_open_ = false;
  const std::optional<int> number = fields.size() > 1 ? csv_integer(fields[1]) : std::nullopt;
  if (!number || *number < 0 || *number >= store::kRouteCapacity) return false;
  Fields name = fields.subspan(2);
  while (!as_written_ && !name.empty() && name.back().empty()) name = name.first(name.size() - 1);
  context_.store.start_route(static_cast<std::uint32_t>(*number), base::format_text("%02d", *number), text_of(name));
  accepted_ += 1 - context_.store.push_route(true);
  route_open_ = true;
  return true;
}

bool CsvReader::read_named_columns(const CsvFields& fields) {
  context_.store.start_item();
  if (!columns_->read_row(fields, separator(), item(), left_out_)) return false;
  accepted_ += 1 - context_.store.push_waypoint(0);
  return true;
}

// Takes the fields of a position, in degrees or as zone number, band letter, easting and northing, into the item.
bool CsvReader::take_position(Fields& fields) {
  if (fields.size() < 2) return false;
  geodesy::Position position;
  const std::string_view letter = base::trim_blanks(fields[1]);
  std::size_t taken = 2;
  if (letter.size() == 1 && letter[0] >= 'A' && letter[0] <= 'Z') {
    taken = 4;
    const std::optional<int> zone = csv_integer(fields[0]);
    const std::optional<double> easting = fields.size() < taken ? std::nullopt : csv_number(fields[2]);
    const std::optional<double> northing = fields.size() < taken ? std::nullopt : csv_number(fields[3]);
    if (!zone || *zone < 0 || *zone > 99 || !easting || !northing) return false;
    const std::string text = base::format_text("%02d%c %.4f %.3f", *zone, letter[0], *easting, *northing);
    const geodesy::ParsedPosition parsed = geodesy::parse_position(text, context_.shift.source_ellipsoid());
    if (!parsed.position) return false;
    position = *parsed.position;
    // A place on the date line comes back a hair beyond it.
    constexpr double kHair = 1e-6;  // degrees
    if (std::abs(position.longitude) < 180 + kHair) position.longitude = std::clamp(position.longitude, -180.0, 180.0);
  } else {
    const std::optional<double> latitude = csv_number(fields[0]);
    const std::optional<double> longitude = latitude ? csv_number(fields[1]) : std::nullopt;
    if (!longitude) return false;
    position = {*latitude, *longitude};
  }
  const std::optional<geodesy::Position> wgs84 = shifted_position(context_.shift, position);
  if (!wgs84) return false;
  item().position = *wgs84;
  fields = fields.subspan(taken);
  return true;
}

// Takes month, day, year, hour, minute and second into the item; fields that are empty, or not there, are no time,
// and so is the epoch, in local time or in UTC.
bool CsvReader::take_time(Fields& fields) {
  using namespace std::chrono;
  const Fields time = fields.first(std::min(fields.size(), kTimeFields));
  item().time = {};
  if (!all_empty(time)) {
    std::array<int, kTimeFields> numbers{};
    if (time.size() != kTimeFields) return false;
    for (std::size_t i = 0; i < kTimeFields; ++i) {
      const std::optional<int> number = csv_integer(time[i]);
      if (!number || *number < 0) return false;
      numbers[i] = *number;
    }
    if (numbers[0] > 12 || numbers[1] > 31 || numbers[2] < 1900 || numbers[2] > 9999) return false;
    const year_month_day date{year(numbers[2]), month(static_cast<unsigned>(numbers[0])),
                              day(static_cast<unsigned>(numbers[1]))};
    if (!date.ok() || numbers[3] > 23 || numbers[4] > 59 || numbers[5] > 60) return false;
    const std::int64_t local = std::int64_t{sys_days(date).time_since_epoch().count()} * 86400 + numbers[3] * 3600 +
                               numbers[4] * 60 + numbers[5] - store::kGarminEpochUnix;
    const std::int64_t utc = local - offset_;
    if (local != 0 && utc > 0 && utc <= std::numeric_limits<std::uint32_t>::max())
      item().time.seconds = static_cast<std::uint32_t>(utc);
  }
  fields = fields.subspan(time.size());
  return true;
}

// The pieces of a text with commas as one, in Latin-1. A blank before a first quote was put there on writing.
std::string CsvReader::text_of(Fields pieces) const {
  std::string text = joined_with_commas(pieces);
  if (text.starts_with(' ') && base::trim_blanks(text).starts_with('"'))
    text.erase(0, 1);
  else if (as_written_)
    text = split_csv_line(text, '\n')[0];
  return as_written_ && !has_byte_order_mark_ ? text : base::latin1_from_utf8(text);
}

void CsvReader::report() const {
  base::Remarks remarks;
  bad_rows_.remark(remarks, "rows could not be read");
  remarks.add(left_out_.times, "times are of an unknown form and were left out");
  remarks.add(left_out_.altitudes, "altitudes are unclear and were left out");
  remarks.say(context_.front_end);
}

}  // namespace

int read_csv(const store::FileContext& context, base::TextInput& input, const std::string& file_name) {
  const int accepted = CsvReader(context, input).read();
  if (accepted < 0)
    context.front_end.message_box("do_input", "The first line of '" + file_name +
                                                  "' names no latitude and longitude columns: what the file holds is "
                                                  "not known.");
  return accepted;
}

}  // namespace formats

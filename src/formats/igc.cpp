#include "formats/igc.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>

#include "base/encoding.h"
#include "base/remarks.h"
#include "base/system_file.h"
#include "base/text.h"
#include "formats/line_texts.h"
#include "formats/shifted_positions.h"
#include "formats/writable_items.h"

namespace formats {
namespace {

using store::ItemRecord;

constexpr std::string_view kProgram = "Pelorix A.00.02";

// A point in time as the records spell it.
struct Moment {
  explicit Moment(std::int64_t seconds_since_epoch) {
    using namespace std::chrono;
    const sys_seconds when{seconds{store::kGarminEpochUnix + seconds_since_epoch}};
    const auto midnight = floor<days>(when);
    date = year_month_day(midnight);
    day = midnight.time_since_epoch().count();
    second_of_day = (when - midnight).count();
  }

  std::chrono::year_month_day date;
  std::int64_t day = 0;
  std::int64_t second_of_day = 0;
};

std::int64_t local_seconds(store::GarminTime time, std::int64_t offset_seconds) {
  return time.seconds == 0 ? 0 : std::int64_t{time.seconds} + offset_seconds;  // no time is the epoch in every zone
}

std::string padded(std::string id) {
  constexpr std::size_t kPlaces = 3;
  if (id.size() < kPlaces) id.insert(0, kPlaces - id.size(), '0');
  return id;
}

// Three letters or digits, as the FAI's records and file names have them.
std::string fai_id(std::string_view competition_id) {
  std::string id;
  for (const char c : competition_id) {
    if (c >= 'a' && c <= 'z') id += static_cast<char>(c - 'a' + 'A');
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) id += c;
  }
  return padded(id.substr(0, 3));
}

// Letters without their accents, as the FAI's records take printable ASCII only; '-' for the rest. The settings are
// Latin-1, or UTF-8 where an editor has saved them so.
std::string plain_ascii(std::string_view settings_text) {
  constexpr unsigned char kFirstLetter = 0xC0;
  constexpr std::string_view kPlainLetters =
      "AAAAAAACEEEEIIIIDNOOOOOxOUUUUYTs"
      "aaaaaaaceeeeiiiidnooooo-ouuuuyty";
  std::string text = base::latin1_from_utf8(settings_text);
  for (char& c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= kFirstLetter)
      c = kPlainLetters[byte - kFirstLetter];
    else if (byte < ' ' || byte > '~')
      c = '-';
  }
  return text;
}

void append_digits(std::string& out, std::int64_t value, int digits) {
  std::array<char, 8> text{};
  for (int i = digits - 1; i >= 0; --i, value /= 10)
    text[static_cast<std::size_t>(i)] = static_cast<char>('0' + value % 10);
  out.append(text.data(), static_cast<std::size_t>(digits));
}

// "HHMMSS".
void append_clock(std::string& out, const Moment& moment) {
  append_digits(out, moment.second_of_day / 3600, 2);
  append_digits(out, moment.second_of_day / 60 % 60, 2);
  append_digits(out, moment.second_of_day % 60, 2);
}

// "DDMMmmm" or "DDDMMmmm". Deliberate : minutes are rounded to four decimals, of which the last is then dropped, so
// they may print as 60000. In the FAI's form they are rounded once, with a carry.
void append_angle(std::string& out, double angle, int degree_digits, bool fai_form) {
  angle = std::abs(angle);
  if (fai_form) {
    const auto thousandths = std::llround(angle * 60000.0);
    append_digits(out, thousandths / 60000, degree_digits);
    append_digits(out, thousandths % 60000, 5);
    return;
  }
  const double degrees = std::floor(angle);
  append_digits(out, static_cast<std::int64_t>(degrees), degree_digits);
  // As printf's "%07.4f", at a fraction of its time.
  std::array<char, 16> minutes{};
  const char* const end = std::to_chars(minutes.data(), minutes.data() + minutes.size(), (angle - degrees) * 60.0,
                                        std::chars_format::fixed, 4)
                              .ptr;
  const auto size = static_cast<std::size_t>(end - minutes.data());
  constexpr std::size_t kOneDigitMinutes = 6;  // "5.4322"
  if (size == kOneDigitMinutes) out += '0';
  out.append(minutes.data(), size - 5);
  out.append(minutes.data() + (size - 4), 3);
}

class IgcWriter {
 public:
  IgcWriter(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out)
      : context_(context),
        fai_form_(context.settings.IGCStandard != 0),
        offset_seconds_(fai_form_ ? 0 : options.offset_seconds),
        out_(out) {
    datum_ = prepare_output_datum(context, fai_form_ ? "WGS-84" : options.datum);
  }

  bool write();

 private:
  [[nodiscard]] bool is_fix(const ItemRecord& point);
  [[nodiscard]] Moment moment_of(const ItemRecord& point) const {
    return Moment(local_seconds(point.time, offset_seconds_));
  }
  void append_header();
  void append_fai_header(const Moment& first);
  void append_line(std::string_view label, std::string_view text) {
    const std::string cleaned = texts_.cleaned(text);
    out_ += std::string(label) + (fai_form_ ? plain_ascii(cleaned) : cleaned) + '\n';
  }
  void append_date_if_needed(const Moment& moment);
  void append_date(const Moment& moment);
  void append_fix(const ItemRecord& point, const geodesy::Position& position, const Moment& moment);
  void append_altitude(float metres);
  void report();

  const store::FileContext& context_;
  bool fai_form_;
  std::int64_t offset_seconds_;
  base::TextOutput& out_;
  std::string datum_;
  LineTexts texts_;
  std::string row_;
  std::optional<Moment> last_;  // that a record was written for
  int without_time_ = 0;
  int gaps_ = 0;
};

// True for a point that is written. In the FAI's form one without a time is no fix.
bool IgcWriter::is_fix(const ItemRecord& point) {
  if (!is_writable(point, texts_)) return false;
  if (point.time.seconds != 0) return true;
  ++without_time_;
  return !fai_form_;
}

bool IgcWriter::write() {
  const store::ItemStore& store = context_.store;
  store::GarminTime last_time;
  for (int i = 1; i <= store.track_point_count(); ++i) {
    const ItemRecord point = store.track_point(i);
    if (!is_fix(point)) continue;
    const std::optional<geodesy::Position> position = shifted_position(context_.shift, point.position);
    if (!position) continue;
    const Moment moment = moment_of(point);
    if (!last_ && fai_form_) append_fai_header(moment);
    if (!last_ && !fai_form_) append_header();
    append_date_if_needed(moment);
    append_fix(point, *position, moment);
    last_ = moment;
    last_time = point.time;
  }
  if (!last_) return false;
  const std::string source = fai_form_ ? "LXXX" : "L   ";
  out_ += source + std::string(kProgram) + '\n';
  out_ += source + store::format_date_text(local_seconds(last_time, offset_seconds_)) + '\n';
  report();
  return true;
}

void IgcWriter::append_header() {
  const store::Settings& settings = context_.settings;
  append_line("AGAR", padded(settings.ContestID));
  append_line("HOPLTPILOT: ", settings.Pilot);
  append_line("HOGTYGLIDERTYPE: ", settings.GliderType);
  append_line("HOGIDGLIDERID: ", settings.GliderID);
  append_line("HOCIDCOMPETITIONID: ", settings.ContestID);
  append_line("HODTM100GPSDATUM: ", datum_);
  append_line("HOCCLCOMPETITION CLASS: ", settings.Class);
  append_line("HOSITSite: ", settings.Site);
}

void IgcWriter::append_fai_header(const Moment& first) {
  const store::Settings& settings = context_.settings;
  append_line("AXXX", fai_id(settings.ContestID));
  append_date(first);
  append_line("HFPLTPILOTINCHARGE:", settings.Pilot);
  append_line("HFGTYGLIDERTYPE:", settings.GliderType);
  append_line("HFGIDGLIDERID:", settings.GliderID);
  append_line("HFDTM100GPSDATUM:", "WGS-1984");
  append_line("HFFTYFRTYPE:", kProgram);
  append_line("HFCIDCOMPETITIONID:", settings.ContestID);
  append_line("HFCCLCOMPETITIONCLASS:", settings.Class);
  append_line("HFSITSITE:", settings.Site);
}

// In the FAI's form the date stands in the header, and a time of day before the last one means the next day. Only a
// date that does not follow so is written again.
void IgcWriter::append_date_if_needed(const Moment& moment) {
  if (!fai_form_) {
    if (!last_ || last_->day != moment.day) append_date(moment);
    return;
  }
  if (!last_ || moment.day == last_->day + (moment.second_of_day < last_->second_of_day ? 1 : 0)) return;
  append_date(moment);
  ++gaps_;
}

// Deliberate : three digits of the year from 2000 on, other than in the FAI's form.
void IgcWriter::append_date(const Moment& moment) {
  const int year = static_cast<int>(moment.date.year());
  out_ += base::format_text("HFDTE%02u%02u%02d\n", static_cast<unsigned>(moment.date.day()),
                            static_cast<unsigned>(moment.date.month()), fai_form_ ? year % 100 : year - 1900);
}

void IgcWriter::append_fix(const ItemRecord& point, const geodesy::Position& position, const Moment& moment) {
  row_ = 'B';
  append_clock(row_, moment);
  append_angle(row_, position.latitude, 2, fai_form_);
  row_ += position.latitude >= 0 ? 'N' : 'S';
  append_angle(row_, position.longitude, 3, fai_form_);
  row_ += position.longitude >= 0 ? 'E' : 'W';
  if (!fai_form_) {
    row_ += "A0000000000\n";
  } else {
    row_ += is_writable_metres(point.altitude) ? "A00000" : "V00000";
    append_altitude(point.altitude);
    row_ += '\n';
  }
  out_ += row_;
}

// Five places: "00123", "-0042".
void IgcWriter::append_altitude(float metres) {
  const float known = is_writable_metres(metres) ? std::clamp(metres, -9999.0F, 99999.0F) : 0.0F;
  const auto whole = std::lround(known);
  if (whole < 0) row_ += '-';
  append_digits(row_, std::abs(whole), whole < 0 ? 4 : 5);
}

void IgcWriter::report() {
  base::Remarks remarks;
  remarks.add(texts_.summary());
  remarks.add(without_time_, std::string("track points have no time: ") +
                                 (fai_form_ ? "they are not written" : "they are written as of 31 December 1989"));
  if (gaps_ > 0) remarks.add("the track is more than one flight, which other programs may date wrongly");
  remarks.say(context_.front_end);
}

}  // namespace

bool write_igc_file(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out) {
  if (options.tracks && IgcWriter(context, options, out).write()) return true;
  context.front_end.message_box(
      "write_igc_file", base::format_text("There are no track points%s to write: an IGC file holds nothing else.",
                                          context.settings.IGCStandard != 0 ? " with a time" : ""));
  return false;
}

std::string make_igc_file_name(std::string_view competition_id, std::int64_t seconds, bool fai_form) {
  constexpr std::string_view kCharacters = "0123456789ABCDEFGHIJKLMNOPQRSTUV";
  const Moment moment(seconds);
  std::string name;
  append_digits(name, static_cast<int>(moment.date.year()) % 10, 1);
  name += kCharacters[static_cast<unsigned>(moment.date.month())];
  name += kCharacters[static_cast<unsigned>(moment.date.day())];
  name += fai_form ? 'X' : '4';
  std::string id = fai_form ? fai_id(competition_id) : padded(std::string(competition_id));
  std::ranges::replace_if(
      id,
      [](char c) {
        return static_cast<unsigned char>(c) < ' ' || c == '\x7F' ||
               std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
      },
      '-');
  return name + id + "1.igc";
}

std::filesystem::path igc_output_name(const store::FileContext& context, const store::OutputOptions& options,
                                      const std::filesystem::path& path) {
  const store::Settings& settings = context.settings;
  const bool fai_form = settings.IGCStandard != 0;
  const auto is_fix = [](const ItemRecord& point) {
    return point.in_use != 0 && is_on_globe(point.position) && point.time.seconds != 0;
  };
  int first = 1;
  while (fai_form && first <= context.store.track_point_count() && !is_fix(context.store.track_point(first))) ++first;
  if (settings.IGCCompatibleFilename == 0 || first > context.store.track_point_count()) return path;
  const store::GarminTime time = context.store.track_point(first).time;
  const std::int64_t seconds = local_seconds(time, fai_form ? 0 : options.offset_seconds);
  return path.parent_path() / base::path_from_text(make_igc_file_name(settings.ContestID, seconds, fai_form));
}

store::Kept igc_keeps(const store::Settings& settings, const store::OutputOptions&) {
  return {.tracks = store::kKeepsItems | store::kKeepsTimes |
                    (settings.IGCStandard != 0 ? store::kKeepsAltitudes : store::Properties{0})};
}

}  // namespace formats

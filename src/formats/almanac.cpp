#include "formats/almanac.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <string_view>
#include <vector>

#include "base/reading_progress.h"
#include "base/text.h"
#include "store/almanac.h"

namespace formats {
namespace {

using store::AlmanacEntry;

// One line of a satellite's block in a YUMA file. The limits, inclusive, are those of the numbers' meanings, wide
// enough for what any receiver rounds.
struct Row {
  std::string_view label;
  float AlmanacEntry::*value;  // none: a whole number that is no plain float of the entry
  float lowest, highest;
};

constexpr float kFullTurn = 6.2832F;
constexpr float kBelowOne = 1 - std::numeric_limits<float>::epsilon() / 2;
constexpr float kAboveZero = std::numeric_limits<float>::min();
constexpr std::array kRows{
    Row{"ID:", nullptr, 1, store::kSatellites},
    Row{"Health:", nullptr, 0, 255},
    Row{"Eccentricity:", &AlmanacEntry::eccentricity, 0, kBelowOne},
    Row{"Time of Applicability(s):", &AlmanacEntry::time_of_applicability, 0, 604800},
    Row{"Orbital Inclination(rad):", &AlmanacEntry::inclination, 0, kFullTurn / 2},
    Row{"Rate of Right Ascen(r/s):", &AlmanacEntry::rate_of_right_ascension, -1, 1},
    Row{"SQRT(A)  (m 1/2):", &AlmanacEntry::sqrt_semi_major_axis, kAboveZero, 8192},
    Row{"Right Ascen at Week(rad):", &AlmanacEntry::right_ascension, -kFullTurn, kFullTurn},
    Row{"Argument of Perigee(rad):", &AlmanacEntry::argument_of_perigee, -kFullTurn, kFullTurn},
    Row{"Mean Anom(rad):", &AlmanacEntry::mean_anomaly, -kFullTurn, kFullTurn},
    Row{"Af0(s):", &AlmanacEntry::af0, -1, 1},
    Row{"Af1(s/s):", &AlmanacEntry::af1, -1, 1},
    Row{"week:", nullptr, 0, std::numeric_limits<std::int16_t>::max()},
};
constexpr std::size_t kId = 0, kHealth = 1, kEccentricity = 2, kTimeOfApplicability = 3, kInclination = 4, kRate = 5,
                      kSqrtA = 6, kRightAscension = 7, kPerigee = 8, kMeanAnomaly = 9, kAf0 = 10, kAf1 = 11, kWeek = 12;
constexpr int kWeeksOfEra = 1024;
// Stands behind the asterisks of a satellite whose health is written as 0 for want of one.
constexpr std::string_view kNoHealth = "(health not known)";
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// A satellite's block as it was read, by row; none where the block does not have it, kNoNumber where what it has
// is no number.
using Block = std::array<std::optional<double>, kRows.size()>;

// What a label is known by: "SQRT" of "SQRT(A)  (m 1/2):".
std::string_view label_name(std::string_view label) {
  return base::trim_blanks(label.substr(0, label.find_first_of("(:")));
}

// Rounded to a float first: the text of a number at its limit may stand a little beyond it.
bool fits(const Row& row, double number) {
  constexpr double kBeyondAllLimits = 1e9;
  if (!(std::abs(number) < kBeyondAllLimits)) return false;  // what is no number too
  const auto rounded = static_cast<float>(number);
  return rounded >= row.lowest && rounded <= row.highest && (row.value != nullptr || number == std::floor(number));
}

double number_or_none(std::string_view word) { return base::parse_number(word).value_or(kNoNumber); }

// Takes the good blocks of a file and counts the others.
class Satellites {
 public:
  void take(const Block& block, int line) {
    for (std::size_t i = 0; i < kRows.size(); ++i)
      if ((block[i] || i != kHealth) && !fits(kRows[i], block[i].value_or(kNoNumber))) return pass_over(i, line);
    AlmanacEntry entry;
    for (std::size_t i = 0; i < kRows.size(); ++i)
      if (kRows[i].value != nullptr) entry.*kRows[i].value = static_cast<float>(*block[i]);
    entry.week = static_cast<std::int16_t>(*block[kWeek]);
    if (block[kHealth]) entry.health = static_cast<std::uint8_t>(*block[kHealth]);
    almanac_.satellites[static_cast<std::size_t>(*block[kId]) - 1] = entry;
  }
  [[nodiscard]] const store::Almanac& almanac() const { return almanac_; }
  void report(base::FrontEnd& front_end, const std::string& file_name) const {
    if (passed_over_ == 0) return;
    front_end.write_line(2, base::format_text("%s: %d satellites were passed over; that of line %d has no good '%s'",
                                              file_name.c_str(), passed_over_, first_line_, first_problem_.c_str()));
  }

 private:
  void pass_over(std::size_t row, int line) {
    if (++passed_over_ > 1) return;
    first_line_ = line;
    first_problem_ = label_name(kRows[row].label);
  }

  store::Almanac almanac_;
  int passed_over_ = 0;
  int first_line_ = 0;
  std::string first_problem_;
};

class Lines {
 public:
  Lines(base::TextInput& input, base::FrontEnd& front_end) : input_(input), progress_(front_end, input) {}

  // The words of the next line; false at the end, and where the user stops.
  bool next() {
    if (input_.at_end() || !progress_.go_on()) return false;
    ++number;
    text = input_.next_line();
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (number == 1 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    words = base::split_words(text);
    return true;
  }
  bool next_filled() {
    while (next())
      if (!words.empty()) return true;
    return false;
  }

  int number = 0;
  std::string_view text;
  std::vector<std::string_view> words;

 private:
  base::TextInput& input_;
  base::ReadingProgress progress_;
};

// A block begins at its line of asterisks, or at its ID where it has none, and goes on to the next one.
class YumaReader {
 public:
  explicit YumaReader(Satellites& satellites) : satellites_(satellites) {}

  void take_line(const Lines& line) {
    if (line.words.empty()) return;
    if (line.words[0].starts_with('*')) return begin_block(line);
    const std::size_t colon = line.text.rfind(':');
    const std::optional<std::size_t> row = row_of(line.text);
    if (!row || colon == std::string_view::npos) return;
    if (*row == kId && block_ != Block{}) begin_block(line);
    if (block_ == Block{}) first_line_ = line.number;
    std::optional<double>& value = block_[*row];
    const std::vector<std::string_view> words = base::split_words(line.text.substr(colon + 1));
    // A label that comes twice belongs to two satellites, of which one has lost its head.
    value = words.size() == 1 && !value ? number_or_none(words[0]) : kNoNumber;
    if (*row == kWeek && week_of_head_) value = full_week(*value);
  }
  void end_block() {
    if (health_is_not_known_ && block_[kHealth] == 0) block_[kHealth].reset();
    if (block_ != Block{}) satellites_.take(block_, first_line_);
    block_ = {};
    week_of_head_ = {};
    health_is_not_known_ = false;
  }

 private:
  // "******** Week 310 almanac for PRN-01 ********".
  void begin_block(const Lines& line) {
    end_block();
    if (line.words.size() < 3 || !base::equal_ignoring_case(line.words[1], "week")) return;
    week_of_head_ = base::parse_number(line.words[2]);
    health_is_not_known_ = base::trim_blanks(line.text).ends_with(kNoHealth);
  }
  // The line of asterisks may have the week in full. A week that was cut short at the end of a file shows there.
  [[nodiscard]] double full_week(double week) const {
    if (!(std::fmod(week - *week_of_head_, kWeeksOfEra) == 0)) return kNoNumber;
    return fits(kRows[kWeek], *week_of_head_) ? std::max(week, *week_of_head_) : week;
  }
  static std::optional<std::size_t> row_of(std::string_view line) {
    std::string_view name = label_name(line);
    if (base::equal_ignoring_case(name, "Right Ascen at TOA")) name = label_name(kRows[kRightAscension].label);
    for (std::size_t i = 0; i < kRows.size(); ++i)
      if (base::equal_ignoring_case(name, label_name(kRows[i].label))) return i;
    return std::nullopt;
  }

  Satellites& satellites_;
  Block block_;
  int first_line_ = 0;
  std::optional<double> week_of_head_;
  bool health_is_not_known_ = false;
};

// One number of a satellite in an SEM file: row value = (number + offset) * factor.
struct SemNumber {
  std::optional<std::size_t> row;  // none: not kept
  double factor = 1;
  double offset = 0;
};

constexpr double kRadians = std::numbers::pi;  // of a semicircle
constexpr std::array kSemNumbers{
    SemNumber{kId},
    SemNumber{},  // SVN
    SemNumber{},  // average URA
    SemNumber{kEccentricity},
    SemNumber{kInclination, kRadians, 0.30},
    SemNumber{kRate, kRadians},
    SemNumber{kSqrtA},
    SemNumber{kRightAscension, kRadians},
    SemNumber{kPerigee, kRadians},
    SemNumber{kMeanAnomaly, kRadians},
    SemNumber{kAf0},
    SemNumber{kAf1},
    SemNumber{kHealth},
    SemNumber{},  // satellite configuration
};

// The first line, number of records and title, has been taken. Then week and time of applicability of all, then
// the satellites with empty lines between them.
void read_sem(Lines& lines, Satellites& satellites) {
  if (!lines.next_filled() || lines.words.size() != 2) return;
  Block common;
  common[kWeek] = number_or_none(lines.words[0]);
  common[kTimeOfApplicability] = number_or_none(lines.words[1]);
  while (lines.next_filled()) {
    const int first_line = lines.number;
    std::vector<double> numbers;
    do {
      for (const std::string_view word : lines.words)
        if (numbers.size() <= kSemNumbers.size()) numbers.push_back(number_or_none(word));
    } while (lines.next() && !lines.words.empty());
    Block block = common;
    // With other than all its numbers nobody can tell which is which, and the block has no good ID.
    for (std::size_t i = 0; numbers.size() == kSemNumbers.size() && i < numbers.size(); ++i)
      if (const SemNumber& meaning = kSemNumbers[i]; meaning.row)
        block[*meaning.row] = (numbers[i] + meaning.offset) * meaning.factor;
    satellites.take(block, first_line);
  }
}

bool is_orbit(const AlmanacEntry& entry) {
  for (const Row& row : kRows)
    if (row.value != nullptr && !fits(row, double{entry.*row.value})) return false;
  return true;
}

// With 11 digits, of which a float comes back to the last bit; the places are those that other programs write.
std::string number_text(const Row& row, float value) {
  const double number = value;
  if (&row == &kRows[kTimeOfApplicability] && number == std::floor(number)) return base::format_text("%11.4f", number);
  if (&row == &kRows[kSqrtA] && number >= 1000) return base::format_text(" %.6f", number);
  return base::format_text("% .10E", number);
}

std::string block_text(int satellite, const AlmanacEntry& entry) {
  const auto line = [](const Row& row, const std::string& value) {
    return base::format_text("%-27s", std::string(row.label).c_str()) + value + "\n";
  };
  std::string text = base::format_text("******** Week %d almanac for PRN-%02d ********", int{entry.week}, satellite);
  if (!entry.health) text.append(" ").append(kNoHealth);
  text += "\n";
  text += line(kRows[kId], base::format_text(" %02d", satellite));
  text += line(kRows[kHealth], base::format_text(" %03d", int{entry.health.value_or(0)}));
  for (const Row& row : kRows)
    if (row.value != nullptr) text += line(row, number_text(row, entry.*row.value));
  text += line(kRows[kWeek], base::format_text(" %d", entry.week % kWeeksOfEra));
  return text + "\n";
}

}  // namespace

int read_almanac(const store::FileContext& context, base::TextInput& input, const std::string& file_name) {
  Satellites satellites;
  Lines lines(input, context.front_end);
  const bool has_text = lines.next_filled();
  if (has_text && lines.words[0][0] >= '0' && lines.words[0][0] <= '9') {
    read_sem(lines, satellites);
  } else if (has_text) {
    YumaReader reader(satellites);
    do {
      reader.take_line(lines);
    } while (lines.next());
    reader.end_block();
  }
  satellites.report(context.front_end, file_name);
  if (!satellites.almanac().empty()) context.store.set_almanac(satellites.almanac());
  return satellites.almanac().count();
}

bool write_almanac(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out) {
  const store::Almanac& almanac = context.store.almanac();
  int written = 0;
  int left_out = 0;
  for (std::size_t i = 0; options.almanac && i < almanac.satellites.size(); ++i) {
    const std::optional<AlmanacEntry>& entry = almanac.satellites[i];
    if (!entry || entry->week < 0) continue;
    if (!is_orbit(*entry)) {
      ++left_out;
      continue;
    }
    out += block_text(static_cast<int>(i) + 1, *entry);
    ++written;
  }
  if (left_out > 0)
    context.front_end.write_line(2, base::format_text("%d satellites without a good orbit are not written", left_out));
  if (written > 0) return true;
  context.front_end.message_box("write_almanac", options.almanac
                                                     ? "There is no almanac to write: download one or read one first."
                                                     : "The almanac is not among the items to be written.");
  return false;
}

}  // namespace formats

#include "store/command_options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <vector>

#include "base/text.h"
#include "geodesy/position_parser.h"
#include "geodesy/position_tokens.h"
#include "store/item_record.h"
#include "store/option_parser.h"

namespace store {
namespace {

struct UsageError {
  int number;
  std::string_view text;
  bool shows_argument = false;  // behind the text
};

constexpr std::array kUsageErrors{
    UsageError{1, "Bad color input"},
    UsageError{2, "Color must have 'T' or 'O' as first character"},
    UsageError{3, "Bad size input"},
    UsageError{4, "Size must have 'T' or 'O' as first character"},
    UsageError{5, "Alignment must be NW N NE W E SW S or SE: -w ", true},
    UsageError{11, "Warning...unknown input file type."},
    UsageError{17, "Invalid line style selection -r ", true},
    UsageError{18, "Invalid line width selection -r ", true},
    UsageError{19, "Invalid line color selection -r ", true},
    UsageError{20, "Invalid circle parameter selection -p ", true},
    UsageError{22, "Invalid -r parameter: -r ", true},
    UsageError{23, "Invalid -b parameter: -b ", true},
    UsageError{27, "Invalid line style selection -t ", true},
    UsageError{28, "Invalid line width selection -t ", true},
    UsageError{29, "Invalid line color selection -t ", true},
};

// Ranges of what files may set. The drawing properties go into one byte of a record.
constexpr int kMostCounted = 99;  // times that an option counts when it is repeated
constexpr int kWidest = 99;
constexpr int kHighestStyle = 99;
constexpr int kLargestSize = 99;
constexpr int kHighestMagnitude = 255;
constexpr int kMostBits = 255;

// What an argument wants changed; nothing is changed before all of the argument is understood.
struct Change {
  int Settings::*setting;
  int value;
};

void make(std::span<const Change> changes, Settings& settings) {
  for (const Change& change : changes) settings.*change.setting = change.value;
}

void count(int& counter) { counter = std::min(counter, kMostCounted - 1) + 1; }

char capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::optional<int> number_within(std::string_view text, int lowest, int highest) {
  const std::optional<long long> value = base::parse_integer(text);
  if (!value || *value < lowest || *value > highest) return std::nullopt;
  return static_cast<int>(*value);
}

std::optional<int> read_style(std::string_view text) { return number_within(text, 0, kHighestStyle); }
std::optional<int> read_width(std::string_view text) { return number_within(text, 1, kWidest); }
std::optional<int> read_size(std::string_view text) { return number_within(text, 0, kLargestSize); }

// A number or a name of kColourNames, with or without its blank.
std::optional<int> read_colour(std::string_view text) {
  const auto without_blanks = [](std::string_view name) {
    std::string result(name);
    std::erase(result, ' ');
    return result;
  };
  for (std::size_t number = 0; number < kColourNames.size(); ++number)
    if (base::equal_ignoring_case(without_blanks(kColourNames[number]), without_blanks(text)))
      return static_cast<int>(number);
  return number_within(text, 0, static_cast<int>(kColourNames.size()) - 1);
}

// The values are the places in this order.
constexpr std::array<std::string_view, 8> kAlignments{"NW", "N", "NE", "W", "E", "SW", "S", "SE"};

std::optional<int> read_alignment(std::string_view text) {
  for (std::size_t value = 0; value < kAlignments.size(); ++value)
    if (base::equal_ignoring_case(kAlignments[value], text)) return static_cast<int>(value);
  return std::nullopt;
}

// One of the fields between the commas of a line's or circle's properties.
struct Field {
  std::optional<int> (*read)(std::string_view text);
  int error;
  int Settings::*setting = nullptr;  // none: the field is checked and stays without effect
};

constexpr std::array kTrackLine{
    Field{read_style, 27, &Settings::SA_LineStyle},
    Field{read_width, 28, &Settings::SA_LineWidth},
    Field{read_colour, 29, &Settings::SA_LineColor},
};
// Those of routes and circles mean something to the program that the line was written for only.
constexpr std::array kRouteLine{Field{read_style, 17}, Field{read_width, 18}, Field{read_colour, 19}};
constexpr std::array kCircle{Field{read_style, 20}, Field{read_width, 20}, Field{read_colour, 20},
                             Field{read_colour, 20}};

// "STYLE,WIDTH,COLOUR": an empty field changes nothing, fields at the end may be missing. The number of the usage
// error when it is not that, of `shape_error` when there are more fields or none.
std::optional<int> read_fields(std::string_view argument, std::span<const Field> fields, int shape_error,
                               std::vector<Change>& changes) {
  const std::vector<std::string_view> texts = base::split(argument, ',');
  if (texts.size() > fields.size()) return shape_error;
  bool any = false;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::string_view text = base::trim_blanks(texts[i]);
    if (text.empty()) continue;
    const std::optional<int> value = fields[i].read(text);
    if (!value) return fields[i].error;
    any = true;
    if (fields[i].setting != nullptr) changes.push_back({fields[i].setting, *value});
  }
  return any ? std::nullopt : std::optional(shape_error);
}

// A label parameter that is written for the text or for the object beside it: "T" or "O", then the value.
struct PairedParameter {
  char letter;
  std::optional<int> (*read)(std::string_view text);
  int Settings::*of_text;
  int Settings::*of_object;
  int value_error, letter_error;
};

constexpr std::array kPairedParameters{
    PairedParameter{'C', read_colour, &Settings::SA_TextColor, &Settings::SA_SA_IconColor, 1, 2},
    PairedParameter{'S', read_size, &Settings::SA_TextSize, &Settings::SA_SA_IconSize, 3, 4},
};

struct ExtraOption {
  char letter;
  int Settings::*setting;
};

// What "X" may be followed by.
constexpr std::array kExtraOptions{
    ExtraOption{'N', &Settings::SA_nameonly},
    ExtraOption{'T', &Settings::SA_timeonsa3},
    ExtraOption{'K', &Settings::SA_nonameonsa3trks},
};

constexpr int kAlignmentError = 5;

struct LabelProblem {
  int number = 0;    // of a usage error, or 0 ...
  std::string text;  // ... and the message
};

std::optional<LabelProblem> read_label_parameter(std::string_view parameter, std::vector<Change>& changes) {
  const char letter = parameter.empty() ? '\0' : capital(parameter[0]);
  const std::string_view rest = base::trim_blanks(parameter.substr(std::min<std::size_t>(1, parameter.size())));
  for (const PairedParameter& known : kPairedParameters) {
    if (known.letter != letter) continue;
    const char what = rest.empty() ? '\0' : capital(rest[0]);
    if (what != 'T' && what != 'O') return LabelProblem{known.letter_error, {}};
    const std::optional<int> value = known.read(base::trim_blanks(rest.substr(1)));
    if (!value) return LabelProblem{known.value_error, {}};
    changes.push_back({what == 'T' ? known.of_text : known.of_object, *value});
    return std::nullopt;
  }
  if (letter == 'A') {
    const std::optional<int> value = read_alignment(rest);
    if (!value) return LabelProblem{kAlignmentError, {}};
    changes.push_back({&Settings::SA_TextAlign, *value});
    return std::nullopt;
  }
  if (letter != 'X') return LabelProblem{0, "Illegal -w param: " + std::string(parameter)};
  for (const ExtraOption& known : kExtraOptions) {
    if (rest.size() != 1 || capital(rest[0]) != known.letter) continue;
    changes.push_back({known.setting, 1});
    return std::nullopt;
  }
  return LabelProblem{0, "Illegal -w x option: X" + std::string(rest)};
}

std::optional<LabelProblem> read_label_parameters(std::string_view argument, std::vector<Change>& changes) {
  for (const std::string_view parameter : base::split(argument, ','))
    if (std::optional<LabelProblem> problem = read_label_parameter(base::trim_blanks(parameter), changes))
      return problem;
  return std::nullopt;
}

// True when the text has one of these letters (capitals) as its hemisphere.
bool has_hemisphere(std::string_view text, std::string_view letters) {
  const geodesy::Tokens tokens = geodesy::tokenize(text, geodesy::InnerComma::Decimal);
  return std::ranges::any_of(tokens.all(), [letters](const geodesy::Token& token) {
    return token.kind == geodesy::TokenKind::Letter && letters.find(capital(token.text[0])) != std::string_view::npos;
  });
}

// Words stand between blanks; double quotes hold blanks in a word and are no part of it.
std::vector<std::string> words_of(std::string_view line) {
  std::vector<std::string> words;
  bool quoted = false;
  bool in_word = false;
  for (const char c : line) {
    const bool is_blank = static_cast<unsigned char>(c) <= ' ';
    if (is_blank && !quoted) {
      in_word = false;
      continue;
    }
    if (!in_word) words.emplace_back();
    in_word = true;
    if (c == '"') {
      quoted = !quoted;
    } else {
      words.back() += c;
    }
  }
  return words;
}

}  // namespace

void CommandOptions::do_command(std::string_view line) {
  constexpr std::string_view kProgram = "!";
  if (line.starts_with(kProgram)) line.remove_prefix(kProgram.size());
  const std::vector<std::string> words = words_of(line);
  OptionParser parser(kProgram, words, [this](const std::string& text) { show_getopt_error(text); });
  for (int letter = parser.next(); letter != OptionParser::kEnd; letter = parser.next())
    apply(letter, parser.argument());
}

void CommandOptions::usage_error(int number, std::string_view argument) {
  const auto* const row = std::ranges::find(kUsageErrors, number, &UsageError::number);
  if (row == kUsageErrors.end()) {
    front_end_.write_line(1, base::format_text("bad Usage: %d\n  Please inform author of this message", number));
    return;
  }
  front_end_.write_line(1, std::string(row->text) + std::string(row->shows_argument ? argument : ""));
}

void CommandOptions::apply(int letter, std::string_view argument) {
  std::vector<Change> changes;
  const auto use_fields = [&](std::span<const Field> fields, int shape_error) {
    if (const std::optional<int> error = read_fields(argument, fields, shape_error, changes))
      return usage_error(*error, argument);
    make(changes, settings_);
  };
  switch (letter) {
    case 'a':
      // Deliberate : counted, so that giving the option twice is not the same as once.
      count(settings_.native_text_output);
      return count(settings_.output_switch);
    case 'b':
      return switch_drawing(argument);
    case 'c':
      return set_coordinate(argument);
    case 'd':
      return count(settings_.SA_total_dist);
    case 'e':
      settings_.SA_nocmdline = 1;
      return;
    case 'j':
      return set_number('j', argument, settings_.SA_nameonlytxt, kMostBits);
    case 'l':
      return count(settings_.SA_SendLowrInactives);
    case 'm':
      return set_number('m', argument, settings_.SA_SetMag, kHighestMagnitude);
    case 'n':
      return count(settings_.SA_noname);
    case 'p':
      return use_fields(kCircle, 20);
    case 'q':
      return set_number('q', argument, settings_.SA_Route_LineColor, static_cast<int>(kColourNames.size()) - 1);
    case 'r':
      return use_fields(kRouteLine, 22);
    case 't':
      return use_fields(kTrackLine, 27);
    case 'w':
      if (const std::optional<LabelProblem> problem = read_label_parameters(argument, changes)) {
        if (problem->text.empty()) return usage_error(problem->number, argument);
        return front_end_.write_line(1, problem->text);
      }
      return make(changes, settings_);
    default:  // -k is taken and does nothing
      return;
  }
}

void CommandOptions::switch_drawing(std::string_view argument) {
  if (!argument.starts_with('Y') && !argument.starts_with('N')) return usage_error(23, argument);
  const int on = argument[0] == 'Y' ? 1 : 0;
  settings_.SA_DrawWaypoints = on;
  settings_.SA_draw_route_1_19_wpts = on;
  settings_.SA_draw_route_0_wpts = on;
  settings_.SA_draw_track_lines = on;
  settings_.SA_send_route_0_as_SA_route = on;
  settings_.SA_draw_route_0_line = on;
  settings_.SA_draw_route_1_19_lines = on;
}

// The latitude while there is none, then the longitude.
void CommandOptions::set_coordinate(std::string_view argument) {
  const bool is_latitude = settings_.SA_SetLat == kCoordinateNotSet;
  const std::optional<double> degrees = geodesy::parse_angle(argument);
  const bool fits =
      degrees && std::abs(*degrees) <= (is_latitude ? 90 : 180) && !has_hemisphere(argument, is_latitude ? "EW" : "NS");
  if (!fits) return front_end_.write_line(1, "Invalid -c parameter: -c " + std::string(argument));
  (is_latitude ? settings_.SA_SetLat : settings_.SA_SetLon) = *degrees;
}

void CommandOptions::set_number(char letter, std::string_view argument, int& setting, int highest) {
  const std::optional<int> value = number_within(base::trim_blanks(argument), 0, highest);
  if (!value) {
    const std::string option = std::string("-") + letter;
    return front_end_.write_line(1, "Invalid " + option + " parameter: " + option + " " + std::string(argument));
  }
  setting = *value;
}

void CommandOptions::show_getopt_error(const std::string& text) {
  if (boxes_ == kMostBoxes) return front_end_.write_line(1, text);
  ++boxes_;
  front_end_.message_box("getopt error", text);
}

}  // namespace store

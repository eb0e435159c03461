#include "ui/editing/item_fields.h"

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>

#include "base/text.h"

namespace ui {
namespace {

using store::ItemRecord;

std::string range_problem(long long most) { return base::format_text("A whole number from 0 to %lld is needed", most); }

std::optional<long long> number_up_to(std::string_view text, long long most) {
  const std::optional<long long> value = base::parse_integer(base::trim_blanks(text));
  return value && *value >= 0 && *value <= most ? value : std::nullopt;
}

template <auto Member>
std::string show_text(const FieldContext&, const ItemRecord& item) {
  return std::string((item.*Member).view());
}

template <auto Member>
std::string set_text(const FieldContext&, std::string_view text, ItemRecord& item) {
  constexpr std::size_t kLongest = std::remove_reference_t<decltype(item.*Member)>::longest();
  if (text.size() > kLongest)
    return std::to_string(kLongest) + " characters fit here; these are " + std::to_string(text.size());
  if (std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < ' '; }))
    return "Line ends and other control characters do not fit here";
  item.*Member = text;
  (item.*Member).replace('|', '-');
  return {};
}

std::string set_name(const FieldContext& context, std::string_view text, ItemRecord& item) {
  if (base::trim_blanks(text).empty()) return "A name is needed";
  return set_text<&ItemRecord::ident>(context, text, item);
}

template <auto Member>
std::string show_number(const FieldContext&, const ItemRecord& item) {
  return std::to_string(item.*Member);
}

template <auto Member>
std::string set_number(const FieldContext&, std::string_view text, ItemRecord& item) {
  using Number = std::remove_reference_t<decltype(item.*Member)>;
  constexpr long long kMost = std::numeric_limits<Number>::max();
  const std::optional<long long> value = number_up_to(text, kMost);
  if (!value) return range_problem(kMost);
  item.*Member = static_cast<Number>(*value);
  return {};
}

// Waypoints of the old long idents carry that in their segment flag too, as pushes give it.
std::string set_detail_kind(const FieldContext& context, std::string_view text, ItemRecord& item) {
  std::string problem = set_number<&ItemRecord::detail_kind>(context, text, item);
  if (item.kind == 'W') item.segment_flag = item.detail_kind == store::kLongIdentDetails ? 2 : 0;
  return problem;
}

std::string set_route_number(const FieldContext&, std::string_view text, ItemRecord& item) {
  const std::optional<long long> value = number_up_to(text, store::kRouteCapacity - 1);
  if (!value) return range_problem(store::kRouteCapacity - 1);
  item.route_number = static_cast<std::uint32_t>(*value);
  item.ident = std::to_string(*value);
  return {};
}

std::string show_position(const FieldContext& context, const ItemRecord& item) {
  const geodesy::PositionTexts texts = context.texts.position(item.position);
  return texts.first + " " + texts.second;
}

std::string set_position(const FieldContext& context, std::string_view text, ItemRecord& item) {
  if (base::trim_blanks(text).empty()) return "A position is needed, for example N51 30.250 W000 07.650";
  const geodesy::ParsedPosition parsed = context.texts.parse_position(text);
  if (!parsed.position) return parsed.problem;
  item.position = *parsed.position;
  store::set_hemispheres(item);
  return {};
}

std::string show_time(const FieldContext& context, const ItemRecord& item) {
  return context.texts.time(item.time, item.kind);
}

std::string set_time(const FieldContext& context, std::string_view text, ItemRecord& item) {
  const std::optional<store::GarminTime> time = context.texts.parse_time(text, item.kind);
  if (!time) return "This is no date and time such as \"Sat Jun 15 08:00:00 2002\"";
  item.time = *time;
  return {};
}

template <auto Member>
std::string show_height(const FieldContext& context, const ItemRecord& item) {
  return context.texts.height(item.*Member);
}

template <auto Member>
std::string set_height(const FieldContext& context, std::string_view text, ItemRecord& item) {
  const std::optional<float> metres = context.texts.parse_height(text);
  if (!metres) return "This is no number; an empty field means not known";
  item.*Member = *metres;
  return {};
}

std::string show_distance(const FieldContext& context, const ItemRecord& item) {
  const double unit = geodesy::metres_per(context.settings.DistValues);
  return base::format_text("%.3f", static_cast<double>(item.proximity_distance) / unit);
}

std::string set_distance(const FieldContext& context, std::string_view text, ItemRecord& item) {
  const std::optional<double> metres = context.texts.parse_distance(text);
  if (!metres || *metres > std::numeric_limits<float>::max()) return "A number of 0 or more is needed";
  item.proximity_distance = static_cast<float>(*metres);
  return {};
}

std::string show_symbol(const FieldContext& context, const ItemRecord& item) {
  return std::to_string(store::symbol_code(item, context.settings));
}

std::string set_symbol(const FieldContext& context, std::string_view text, ItemRecord& item) {
  std::string problem = set_number<&ItemRecord::symbol>(context, text, item);
  // What was a number of another set is a Garmin code now.
  if (problem.empty()) item.symbol_mode = store::mode_of_codes(context.settings);
  return problem;
}

std::string show_subclass(const FieldContext&, const ItemRecord& item) {
  std::string text;
  for (const std::uint8_t byte : item.subclass) text += base::format_text(text.empty() ? "%02X" : " %02X", byte);
  return text;
}

std::string set_subclass(const FieldContext&, std::string_view text, ItemRecord& item) {
  const std::vector<std::string_view> words = base::split_words(text);
  auto subclass = item.subclass;
  if (words.size() != subclass.size())
    return std::to_string(subclass.size()) + " bytes are needed; these are " + std::to_string(words.size());
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::optional<long long> byte = base::parse_integer(words[i], 16);
    if (!byte || *byte < 0 || *byte > 255)
      return "\"" + std::string(words[i]) + "\" is no byte in hexadecimal (00 to FF)";
    subclass[i] = static_cast<std::uint8_t>(*byte);
  }
  item.subclass = subclass;
  return {};
}

constexpr std::array kDisplayModes{FieldChoice{1, "Symbol"}, FieldChoice{3, "Symbol and name"},
                                   FieldChoice{5, "Symbol and comment"}};
constexpr std::array kDetailKinds{
    FieldChoice{store::kNoDetails, "None"}, FieldChoice{store::kLongIdentDetails, "Long name (types 105, 106)"},
    FieldChoice{store::kFullDetails, "Full (type 108 and later)"}, FieldChoice{store::kRouteLinkDetails, "Route link"}};
constexpr std::array kSegmentFlags{FieldChoice{store::kContinues, "Continues the track"},
                                   FieldChoice{store::kStartsSegment, "Starts a segment"},
                                   FieldChoice{store::kStartsNamedTrack, "Starts a named track"}};
// As text files have them; track logs have a table of their own.
constexpr std::array kWaypointColours{FieldChoice{0, "Black"},  FieldChoice{1, "Red"},
                                      FieldChoice{2, "Blue"},   FieldChoice{3, "Green"},
                                      FieldChoice{4, "Yellow"}, FieldChoice{store::kDefaultColour, "Default Color"}};
constexpr std::array kTrackColours = [] {
  std::array<FieldChoice, store::kColourNames.size()> choices;
  for (std::size_t i = 0; i < choices.size(); ++i) choices[i] = {static_cast<int>(i), store::kColourNames[i]};
  return choices;
}();
// The classes of waypoint type 108.
constexpr std::array kClasses{FieldChoice{0, "user waypoint"},
                              FieldChoice{0x40, "airport"},
                              FieldChoice{0x41, "intersection"},
                              FieldChoice{0x42, "NDB"},
                              FieldChoice{0x43, "VOR"},
                              FieldChoice{0x44, "runway threshold"},
                              FieldChoice{0x45, "airport intersection"},
                              FieldChoice{0x46, "airport NDB"},
                              FieldChoice{0x80, "map point"},
                              FieldChoice{0x81, "map area"},
                              FieldChoice{0x82, "map intersection"},
                              FieldChoice{0x83, "map address"},
                              FieldChoice{0x84, "map line"},
                              FieldChoice{store::kClassNotSet, "not known"}};

template <auto Member>
constexpr FieldRow text_row(std::string_view id, std::string_view label, std::string_view kinds, int page) {
  constexpr std::size_t kLongest = std::remove_reference_t<decltype(std::declval<ItemRecord>().*Member)>::longest();
  return {id, label, kinds, page, FieldKind::Text, kLongest, show_text<Member>, set_text<Member>};
}

template <auto Member>
constexpr FieldRow number_row(std::string_view id, std::string_view label, std::string_view kinds, int page) {
  return {id, label, kinds, page, FieldKind::Number, 0, show_number<Member>, set_number<Member>};
}

template <auto Member>
constexpr FieldRow choice_row(std::string_view id, std::string_view label, std::string_view kinds, int page,
                              std::span<const FieldChoice> choices) {
  return {id, label, kinds, page, FieldKind::Choice, 0, show_number<Member>, set_number<Member>, choices};
}

template <auto Member>
constexpr FieldRow flag_row(std::string_view id, std::string_view label) {
  return {id, label, "WRTIP", 0, FieldKind::Flag, 0, show_number<Member>, set_number<Member>};
}

using Record = ItemRecord;
constexpr std::array kRows{
    FieldRow{"ident", "Name", "WP", 0, FieldKind::Text, 50, show_text<&Record::ident>, set_name},
    FieldRow{"number", "Number", "R", 0, FieldKind::Number, 0, show_number<&Record::route_number>, set_route_number},
    text_row<&Record::comment>("comment", "Name", "R", 0),
    FieldRow{"position", "Position", "WTIP", 0, FieldKind::Position, 0, show_position, set_position},
    FieldRow{"distance", "Distance", "P", 0, FieldKind::Distance, 0, show_distance, set_distance},
    text_row<&Record::comment>("comment", "Comment", "WIP", 0),
    FieldRow{"symbol", "Symbol", "WIP", 0, FieldKind::Symbol, 0, show_symbol, set_symbol},
    choice_row<&Record::display_mode>("display", "Show", "WIP", 0, kDisplayModes),
    FieldRow{"time", "Time", "WTIP", 0, FieldKind::Time, 0, show_time, set_time},
    FieldRow{"altitude", "Altitude", "WTP", 0, FieldKind::Height, 0, show_height<&Record::altitude>,
             set_height<&Record::altitude>},
    FieldRow{"depth", "Depth", "WTP", 0, FieldKind::Height, 0, show_height<&Record::depth>, set_height<&Record::depth>},
    choice_row<&Record::segment_flag>("segment", "Segment", "T", 0, kSegmentFlags),
    text_row<&Record::ident>("track", "Track name", "T", 0),
    choice_row<&Record::colour>("colour", "Track colour", "T", 0, kTrackColours),
    flag_row<&Record::in_use>("in_use", "In use (not deleted)"),
    flag_row<&Record::selected>("selected", "Selected for uploads"),
    number_row<&Record::record_type>("type", "Data type", "WP", 1),
    number_row<&Record::waypoint_class>("class", "Class", "WP", 1),
    FieldRow{"details", "Details", "WP", 1, FieldKind::Choice, 0, show_number<&Record::detail_kind>, set_detail_kind,
             kDetailKinds},
    FieldRow{"subclass", "Subclass", "WP", 1, FieldKind::Hex, 0, show_subclass, set_subclass},
    text_row<&Record::name>("name", "Full name", "WP", 1),
    text_row<&Record::facility>("facility", "Facility", "WP", 1),
    text_row<&Record::address>("address", "Address", "WP", 1),
    text_row<&Record::cross_road>("cross_road", "Cross road", "WP", 1),
    text_row<&Record::city>("city", "City", "WP", 1),
    text_row<&Record::state>("state", "State", "WP", 1),
    text_row<&Record::country>("country", "Country", "WP", 1),
    text_row<&Record::link_ident>("link", "Link name", "WP", 1),
    choice_row<&Record::colour>("colour", "Colour", "WP", 1, kWaypointColours),
};

}  // namespace

std::span<const FieldRow> field_rows() { return kRows; }

std::string_view class_name(int waypoint_class) {
  const auto row = std::ranges::find(kClasses, waypoint_class, &FieldChoice::value);
  return row == kClasses.end() ? std::string_view() : row->name;
}

}  // namespace ui

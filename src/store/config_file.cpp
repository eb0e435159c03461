#include "store/config_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "base/safe_file.h"
#include "base/text.h"
#include "store/garmin_time.h"

namespace store {
namespace {

using geodesy::DistanceUnit;
using geodesy::Notation;

constexpr std::size_t kLongestLine = 516;

template <typename Enum>
struct Word {
  Enum value;
  std::string_view word;
};
template <typename Enum>
Word(Enum, std::string_view) -> Word<Enum>;

// The words of settings that are written as one.
template <typename Enum>
constexpr std::array<Word<Enum>, 0> kWords{};
template <>
constexpr std::array kWords<Family>{Word{Family::Garmin, "Garmin"}, Word{Family::Lowrance, "Lowrance"}};
template <>
constexpr std::array kWords<VerticalUnit>{Word{VerticalUnit::Feet, "FEET"}, Word{VerticalUnit::Metres, "METERS"}};
template <>
constexpr std::array kWords<DistanceUnit>{Word{DistanceUnit::StatuteMiles, "STATUTE"},
                                          Word{DistanceUnit::NauticalMiles, "NAUTICAL"},
                                          Word{DistanceUnit::Kilometres, "KILOMETERS"},
                                          Word{DistanceUnit::Feet, "FEET"}, Word{DistanceUnit::Metres, "METERS"}};
template <>
constexpr std::array kWords<Duplicates>{Word{Duplicates::Merge, "MERGE"}, Word{Duplicates::Replace, "REPLACE"},
                                        Word{Duplicates::Ignore, "IGNORE"}};
template <>
constexpr std::array kWords<IconSet>{Word{IconSet::Lei15, "LEI15"},
                                     Word{IconSet::Lei28, "LEI28"},
                                     Word{IconSet::G12xl, "G12XL"},
                                     Word{IconSet::Giii, "GIII"},
                                     Word{IconSet::StreetPilot, "STREETPILOT"},
                                     Word{IconSet::ESeries, "eSERIES"}};
template <>
constexpr std::array kWords<Notation>{Word{Notation::Dms, "DMS"}, Word{Notation::Dmm, "DMM"},
                                      Word{Notation::Ddd, "DDD"}, Word{Notation::Utm, "UTM"}};

// One parse and one print for every type of setting. A parse that fails leaves the setting as it was; a print
// without a result means that no line is written.
bool parse(std::string_view text, int& value) {
  const std::optional<long long> number = base::parse_integer(text);
  if (!number || *number < -2147483647LL || *number > 2147483647LL) return false;
  value = static_cast<int>(*number);
  return true;
}
std::optional<std::string> print(int value) { return base::format_text("%d", value); }

bool parse(std::string_view text, std::string& value) {
  if (text.find_first_of("\r\n") != std::string_view::npos) return false;  // it could not be read back
  value = text;
  return true;
}
std::optional<std::string> print(const std::string& value) { return value; }

bool parse(std::string_view text, double& value) {
  const std::optional<double> number = base::parse_number(text);
  if (number) value = *number;
  return number.has_value();
}
std::optional<std::string> print(double value) { return base::format_text("%f", value); }

template <std::size_t N>
bool parse(std::string_view text, std::array<int, N>& values) {
  const std::vector<std::string_view> pieces = base::split(text, ',');
  std::array<int, N> read{};
  if (pieces.size() != N) return false;
  for (std::size_t i = 0; i < N; ++i)
    if (!parse(base::trim_blanks(pieces[i]), read[i])) return false;
  values = read;
  return true;
}
template <std::size_t N>
std::optional<std::string> print(const std::array<int, N>& values) {
  std::string text;
  for (const int value : values) text += (text.empty() ? "" : ",") + std::to_string(value);
  return text;
}

bool parse(std::string_view text, std::optional<WindowRectangle>& value) {
  std::array<int, 4> numbers{};
  if (!parse(text, numbers)) return false;
  value = WindowRectangle{numbers[0], numbers[1], numbers[2], numbers[3]};
  return true;
}

bool parse(std::string_view text, std::optional<ReferenceRecord>& value) {
  std::vector<std::string_view> pieces = base::split(text, ',');
  std::ranges::transform(pieces, pieces.begin(), base::trim_blanks);
  ReferenceRecord read;
  if (pieces.size() != 5 || !parse(pieces[0], read.latitude) || !parse(pieces[1], read.longitude)) return false;
  for (std::size_t i = 0; i < read.numbers.size(); ++i) {
    int number = 0;
    if (!parse(pieces[i + 2], number)) return false;
    read.numbers[i] = number;
  }
  value = read;
  return true;
}
std::optional<std::string> print(const std::optional<ReferenceRecord>& value) {
  if (!value) return std::nullopt;
  return base::format_text("%.9lf,%.9lf,%ld,%ld,%ld", value->latitude, value->longitude, value->numbers[0],
                           value->numbers[1], value->numbers[2]);
}

template <typename Enum>
requires(!kWords<Enum>.empty()) bool parse(std::string_view text, Enum& value) {
  for (const Word<Enum>& row : kWords<Enum>) {
    if (!base::equal_ignoring_case(row.word, text)) continue;
    value = row.value;
    return true;
  }
  return false;
}
template <typename Enum>
requires(!kWords<Enum>.empty()) std::optional<std::string> print(Enum value) {
  for (const Word<Enum>& row : kWords<Enum>)
    if (row.value == value) return std::string(row.word);
  return std::nullopt;
}

// One row a key, in the order of the file. A name that begins with '#' is a comment line.
struct Key {
  std::string_view name;
  bool (*read)(std::string_view text, Settings& settings);
  std::optional<std::string> (*write)(const Settings& settings);
};

template <auto Member>
bool set_member(std::string_view text, Settings& settings) {
  return parse(text, settings.*Member);
}

template <auto Member>
constexpr Key key(std::string_view name) {
  return {name, set_member<Member>, [](const Settings& settings) { return print(settings.*Member); }};
}

constexpr int kHighestPort = 65535;

bool set_port_number(std::string_view text, Settings& settings) {
  int number = 0;
  if (!parse(text, number) || number < 1 || number > kHighestPort) return false;
  settings.COM = number - 1;
  return true;
}
std::optional<std::string> port_number_text(const Settings& settings) { return print(settings.COM + 1); }

constexpr std::array<std::string_view, 2> kFileVersions{"TXT_VER_ONE", "TXT_VER_TWO"};

bool set_file_version(std::string_view text, Settings& settings) {
  for (std::size_t i = 0; i < kFileVersions.size(); ++i) {
    if (!base::equal_ignoring_case(kFileVersions[i], text)) continue;
    settings.This_TXT_File_Version = static_cast<int>(i) + 1;
    return true;
  }
  return false;
}
std::optional<std::string> file_version_text(const Settings& settings) {
  if (settings.This_TXT_File_Version != 1 && settings.This_TXT_File_Version != 2) return std::nullopt;
  return std::string(kFileVersions[static_cast<std::size_t>(settings.This_TXT_File_Version) - 1]);
}

bool set_time_offset(std::string_view text, Settings& settings) {
  double hours = 0;
  if (!text.empty() && (!parse(text, hours) || std::abs(hours) > kMostOffsetHours)) return false;
  settings.TimeOffsetHours = text.empty() ? std::nullopt : std::optional(hours);
  return true;
}
std::optional<std::string> time_offset_text(const Settings& settings) {
  return settings.TimeOffsetHours ? print(*settings.TimeOffsetHours) : std::string();
}

std::optional<std::string> startup_location_text(const Settings& settings) {
  if (settings.SaveStartupLocation != 1 || !settings.StartupLocation) return std::nullopt;
  const WindowRectangle& place = *settings.StartupLocation;
  return base::format_text("%d,%d,%d,%d", place.left, place.top, place.width, place.height);
}

constexpr std::array kKeys{
    key<&Settings::GPS>("GPS"),
    Key{"COM", set_port_number, port_number_text},
    key<&Settings::port_speed>("port_speed"),
    key<&Settings::ExitPrompt>("ExitPrompt"),
    key<&Settings::EnableDebugFile>("EnableDebugFile"),
    key<&Settings::ForceExactDupeRemoval>("ForceExactDupeRemoval"),
    key<&Settings::SelectItemsToSave>("SelectItemsToSave"),
    key<&Settings::iDebug_Variable>("iDebug_Variable"),
    key<&Settings::externaldatum>("externaldatum"),
    key<&Settings::SendToSAFile>("SendToSAFile"),
    key<&Settings::SaveStartupLocation>("SaveStartupLocation"),
    key<&Settings::SaveConfigurationAtExit>("SaveConfigurationAtExit"),
    key<&Settings::SaveWorkingDirectory>("SaveWorkingDirectory"),
    key<&Settings::SaveIGCWorkingDirectory>("SaveIGCWorkingDirectory"),
    key<&Settings::SaveDebugFileWorkingDirectory>("SaveDebugFileWorkingDirectory"),
    key<&Settings::ReadWorkingDirectory>("ReadWorkingDirectory"),
    key<&Settings::default_SA5_icon>("default_SA5_icon"),
    key<&Settings::default_SP_icon>("default_SP_icon"),
    key<&Settings::default_GPSIII_icon>("default_GPSIII_icon"),
    key<&Settings::default_LEI15_icon>("default_LEI15_icon"),
    key<&Settings::default_LEI28_icon>("default_LEI28_icon"),
    key<&Settings::default_G12_icon>("default_G12_icon"),
    key<&Settings::SaveFilterNumber>("SaveFilterNumber"),
    key<&Settings::ZeroTime>("ZeroTime"),
    key<&Settings::UseLocalTime>("UseLocalTime"),
    key<&Settings::DontConvertInputTime>("DontConvertInputTime"),
    key<&Settings::LogDisplayOutput>("LogDisplayOutput"),
    key<&Settings::VerticalValues>("VerticalValues"),
    key<&Settings::DistValues>("DistValues"),
    key<&Settings::HandleReadDups>("HandleReadDups"),
    Key{"This_TXT_File_Version", set_file_version, file_version_text},
    key<&Settings::ReadFilterNumber>("ReadFilterNumber"),
    key<&Settings::SaveFileName>("SaveFileName"),
    key<&Settings::SaveFileNameExtn>("SaveFileNameExtn"),
    key<&Settings::DebugFileName>("DebugFileName"),
    key<&Settings::DebugFileNameExtn>("DebugFileNameExtn"),
    key<&Settings::ReadFileName>("ReadFileName"),
    key<&Settings::ReadFileNameExtn>("ReadFileNameExtn"),
    key<&Settings::WaypointListColumnWidths>("WaypointListColumnWidths"),
    key<&Settings::EventListColumnWidths>("EventListColumnWidths"),
    key<&Settings::RefRecord>("RefRecord"),
    key<&Settings::TrackListColumnWidths>("TrackListColumnWidths"),
    Key{"StartupLocation", set_member<&Settings::StartupLocation>, startup_location_text},
    key<&Settings::IconSelector>("IconSelector"),
    key<&Settings::DMSMode>("DMSMode"),
    key<&Settings::SA_LineColor>("SA_LineColor"),
    key<&Settings::SA_CycleColors>("SA_CycleColors"),
    key<&Settings::SA_ForceSALineProperties>("SA_ForceSALineProperties"),
    key<&Settings::SA_ForceSALinePropertiesAllowCycle>("SA_ForceSALinePropertiesAllowCycle"),
    key<&Settings::SA_LineStyle>("SA_LineStyle"),
    key<&Settings::SA_LineWidth>("SA_LineWidth"),
    key<&Settings::SA_CirFillColor>("SA_CirFillColor"),
    key<&Settings::SA_CirLineWidth>("SA_CirLineWidth"),
    key<&Settings::SA_CirLineColor>("SA_CirLineColor"),
    key<&Settings::SA_CirFillStyle>("SA_CirFillStyle"),
    key<&Settings::SA_DrawProxCircles>("SA_DrawProxCircles"),
    key<&Settings::SA_DrawWaypoints>("SA_DrawWaypoints"),
    key<&Settings::SA_ShowGrids>("SA_ShowGrids"),
    key<&Settings::SA_StartWithDefaults>("SA_StartWithDefaults"),
    key<&Settings::SA_SetLat>("SA_SetLat"),
    key<&Settings::SA_SetLon>("SA_SetLon"),
    key<&Settings::SA_SetMag>("SA_SetMag"),
    key<&Settings::SA_draw_route_1_19_wpts>("SA_draw_route_1_19_wpts"),
    key<&Settings::SA_draw_route_0_wpts>("SA_draw_route_0_wpts"),
    key<&Settings::SA_draw_track_lines>("SA_draw_track_lines"),
    key<&Settings::SA_send_route_0_as_SA_route>("SA_send_route_0_as_SA_route"),
    key<&Settings::SA_draw_route_0_line>("SA_draw_route_0_line"),
    key<&Settings::SA_draw_route_1_19_lines>("SA_draw_route_1_19_lines"),
    key<&Settings::SA_Route_LineWidth>("SA_Route_LineWidth"),
    key<&Settings::SA_Route_LineColor>("SA_Route_LineColor"),
    key<&Settings::SA_Route_LineStyle>("SA_Route_LineStyle"),
    key<&Settings::SA_TextSize>("SA_TextSize"),
    key<&Settings::SA_noname>("SA_noname"),
    key<&Settings::SA_timeonsa3>("SA_timeonsa3"),
    key<&Settings::SA_nameonly>("SA_nameonly"),
    key<&Settings::SA_nonameonsa3trks>("SA_nonameonsa3trks"),
    key<&Settings::SA_TextColor>("SA_TextColor"),
    key<&Settings::SA_TextAlign>("SA_TextAlign"),
    key<&Settings::SA_SA_IconSize>("SA_SA_IconSize"),
    key<&Settings::SA_SA_IconColor>("SA_SA_IconColor"),
    key<&Settings::SA_Ozi_to_12>("SA_Ozi_to_12"),
    key<&Settings::SA_Ozi_to_GIII>("SA_Ozi_to_GIII"),
    key<&Settings::SA_Ozi_to_LEI15>("SA_Ozi_to_LEI15"),
    key<&Settings::SA_Ozi_to_LEI28>("SA_Ozi_to_LEI28"),
    key<&Settings::SA_SendLowrInactives>("SA_SendLowrInactives"),
    key<&Settings::SA_nameonlytxt>("SA_nameonlytxt"),
    key<&Settings::SA_total_dist>("SA_total_dist"),
    key<&Settings::SA_nocmdline>("SA_nocmdline"),
    key<&Settings::SA_SortBeforeOutput>("SA_SortBeforeOutput"),
    key<&Settings::SA_SortAfterInput>("SA_SortAfterInput"),
    key<&Settings::SA_LwrRangeLo>("SA_LwrRangeLo"),
    key<&Settings::SA_LwrRangeHi>("SA_LwrRangeHi"),
    key<&Settings::SA_LwrStartPt>("SA_LwrStartPt"),
    key<&Settings::SA_LwrRteStartPt>("SA_LwrRteStartPt"),
    Key{"#IGC Glider info:", nullptr, nullptr},
    key<&Settings::Pilot>("Pilot"),
    key<&Settings::ContestID>("ContestID"),
    key<&Settings::GliderType>("GliderType"),
    key<&Settings::GliderID>("GliderID"),
    key<&Settings::Site>("Site"),
    key<&Settings::Class>("Class"),
    key<&Settings::IGCCompatibleFilename>("IGCCompatibleFilename"),
    key<&Settings::G12XL_II_Symbol_Mapping>("G12XL/II+_Symbol_Mapping"),
    Key{"#Additional settings:", nullptr, nullptr},
    key<&Settings::PortName>("PortName"),
    Key{"TimeOffsetHours", set_time_offset, time_offset_text},
    key<&Settings::EventColor>("EventColor"),
    key<&Settings::IGCStandard>("IGCStandard"),
    key<&Settings::WeekRollover>("WeekRollover"),
};

}  // namespace

KeyResult set_key(Settings& settings, std::string_view name, std::string_view value) {
  for (const Key& row : kKeys) {
    if (row.read == nullptr || row.name != name) continue;
    return row.read(value, settings) ? KeyResult::Set : KeyResult::BadValue;
  }
  return KeyResult::UnknownKey;
}

std::optional<std::string> key_text(const Settings& settings, std::string_view name) {
  for (const Key& row : kKeys)
    if (row.write != nullptr && row.name == name) return row.write(settings);
  return std::nullopt;
}

std::vector<std::string_view> key_names() {
  std::vector<std::string_view> names;
  for (const Key& row : kKeys)
    if (row.read != nullptr) names.push_back(row.name);
  return names;
}

void read_configuration(std::string_view contents, Settings& settings) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // some editors begin a file with it
  if (contents.starts_with(kByteOrderMark)) contents.remove_prefix(kByteOrderMark.size());
  for (std::string_view line : base::split(contents, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    line = base::trim_blanks(line.substr(0, kLongestLine));
    const std::size_t equals = line.find('=');
    if (line.starts_with('#') || equals == std::string_view::npos) continue;
    (void)set_key(settings, base::trim_trailing_blanks(line.substr(0, equals)),
                  base::trim_blanks(line.substr(equals + 1)));
  }
}

std::string configuration_text(const Settings& settings) {
  std::string text;
  for (const Key& row : kKeys) {
    if (row.write == nullptr) {
      text.append(row.name).append("\n");
    } else if (const std::optional<std::string> value = row.write(settings)) {
      text.append(row.name).append("=").append(*value).append("\n");
    }
  }
  return text;
}

void load_configuration(const std::filesystem::path& path, Settings& settings) {
  std::string contents, reason;
  if (base::load_file(path, contents, reason)) read_configuration(contents, settings);
}

bool save_configuration(const std::filesystem::path& path, const Settings& settings, base::FrontEnd& front_end) {
  const std::string reason = base::save_file(path, base::with_line_ends(configuration_text(settings)));
  if (!reason.empty()) {
    front_end.message_box("Writing Defaults Error", base::format_text("Can't open file %s", path.string().c_str()));
    front_end.write_line(3, "The configuration was not saved: " + reason + ".");
    return false;
  }
  front_end.set_status(1, path.filename().string() + " saved.");
  // Deliberate : the backslash on every system; it is the text's own.
  front_end.show_title("Configuration saved to: " + path.parent_path().string() + "\\" + path.filename().string());
  return true;
}

}  // namespace store

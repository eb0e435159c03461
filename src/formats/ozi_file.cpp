#include "formats/ozi_file.h"

#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "formats/ozi_symbols.h"
#include "formats/shifted_positions.h"

namespace formats {
namespace {

constexpr std::string_view kInternalDatum = "WGS-84";

// What a file is that has the extension of one of these and another first line.
struct LookAlike {
  std::string_view beginning;
  std::string_view name;
};
constexpr std::array kLookAlikes{LookAlike{kOziWaypoints.banner, "an OziExplorer waypoint file"},
                                 LookAlike{kOziRoutes.banner, "an OziExplorer route file"},
                                 LookAlike{kOziTrack.banner, "an OziExplorer track file"},
                                 LookAlike{kOziEvents.banner, "an OziExplorer event file"},
                                 LookAlike{"G  WGS 84", "a CompeGPS file"},
                                 LookAlike{"$PMGN", "a Magellan file"},
                                 LookAlike{"H  SOFTWARE", "a PCX5 file"},
                                 LookAlike{"<", "an XML file, as GPX files are"}};

// Metres; 0 for none.
float proximity_of(std::string_view field) {
  constexpr double kFurthest = 2e7;  // half way round the earth
  const std::optional<double> metres = base::parse_number(field);
  return metres && *metres > 0 && *metres <= kFurthest ? static_cast<float>(*metres) : 0.0F;
}

std::int16_t display_mode_of(std::string_view garmin_display_format) {
  if (garmin_display_format.empty() || garmin_display_format == "0") return 3;
  return garmin_display_format == "1" ? 1 : 5;
}

}  // namespace

// Seconds are rounded, since a file has no more than 5 decimals of a day in places. No time for what is none.
store::GarminTime ozi_time(std::string_view field) {
  const std::optional<double> days = base::parse_number(field);
  if (!days) return {};
  const double seconds = std::round((*days - kOziGarminEpoch) * 86400);
  if (!(seconds > 0 && seconds <= std::numeric_limits<std::uint32_t>::max())) return {};
  return {static_cast<std::uint32_t>(seconds)};
}

float ozi_altitude(std::string_view field, double metres_per_unit) {
  constexpr double kUnknown = -777;
  constexpr double kHighest = 1e6;  // metres; anything beyond is a mistake
  const std::optional<double> altitude = base::parse_number(field);
  if (!altitude || *altitude == kUnknown) return store::kNotKnown;
  const double metres = *altitude * metres_per_unit;
  return std::abs(metres) <= kHighest ? static_cast<float>(metres) : store::kNotKnown;
}

bool OziFile::refuse(const std::string& file_name, std::string_view line) {
  std::string text = file_name + " is no OziExplorer " + std::string(kind_.name) + " file";
  for (const LookAlike& known : kLookAlikes) {
    if (!line.starts_with(known.beginning)) continue;
    text += ": it looks like " + std::string(known.name);
    break;
  }
  context_.front_end.message_box("do_input", text + ".");
  return false;
}

bool OziFile::open(const std::string& file_name) {
  line_number_ = input_.skip_empty_lines() + 1;
  const std::string_view banner = input_.next_line();
  if (banner.find(kind_.banner) == std::string_view::npos) return refuse(file_name, banner);
  begin_header();
  return true;
}

void OziFile::begin_header() {
  header_lines_left_ = 3;
  datum_expected_ = true;
  properties_expected_ = count_expected_ = &kind_ == &kOziTrack;
}

void OziFile::set_datum(std::string_view name) {
  const geodesy::DatumEntry* const row = context_.datums.find_alike(name);
  if (row == nullptr) context_.front_end.write_line(1, "Datum '" + std::string(name) + "' not found.  Using WGS-84.");
  context_.shift.set_datum_shift(row == nullptr ? kInternalDatum : row->name, kInternalDatum);
}

bool OziFile::next() {
  while (!input_.at_end() && progress_.go_on()) {
    ++line_number_;
    const std::string_view line = base::trim_blanks(input_.next_line());
    if (line.empty()) continue;
    if (line.find(kind_.banner) != std::string_view::npos) {
      begin_header();
      continue;
    }
    fields_.split(line);
    if (take_header_line()) {
      if (is_properties_) return true;
      continue;
    }
    if (fields_.size() >= kind_.fewest_fields) return true;
    pass_over();
  }
  return false;
}

// The datum, two lines of no meaning, and of a track its properties and the number of its points. A file may lack
// some, or have got commas at their ends in a spreadsheet: the first line that is an item ends the header.
bool OziFile::take_header_line() {
  is_properties_ = false;
  if (header_lines_left_ > 0 && !looks_like_item()) {
    --header_lines_left_;
    if (std::exchange(datum_expected_, false)) set_datum(fields_[0]);
    if (&kind_ == &kOziTrack && fields_[0].starts_with("Altitude is in"))
      metres_per_altitude_unit_ = fields_[0].starts_with("Altitude is in Met") ? 1 : geodesy::kMetresPerFoot;
    return true;
  }
  header_lines_left_ = 0;
  if (std::exchange(datum_expected_, false)) set_datum("");
  // Their first field is always 0, while a latitude has decimals.
  if (std::exchange(properties_expected_, false) && fields_[0] == "0") return is_properties_ = true;
  return std::exchange(count_expected_, false) && fields_[1].empty();
}

bool OziFile::looks_like_item() const {
  if (&kind_ == &kOziRoutes) return fields_[0] == "R" || fields_[0] == "W";
  if (properties_expected_ && fields_[0] == "0" && fields_.size() > 1) return true;
  return fields_.size() >= kind_.fewest_fields && base::parse_number(fields_[kind_.first_coordinate]) &&
         base::parse_number(fields_[kind_.first_coordinate + 1]);
}

bool OziFile::set_position(store::ItemRecord& item, std::size_t index) {
  const std::optional<double> latitude = base::parse_number(fields_[index]);
  const std::optional<double> longitude = base::parse_number(fields_[index + 1]);
  std::optional<geodesy::Position> position;
  if (latitude && longitude) position = shifted_position(context_.shift, {*latitude, *longitude});
  if (position) {
    item.position = *position;
  } else {
    pass_over();
  }
  return position.has_value();
}

void OziFile::pass_over() { bad_lines_.add(line_number_); }

bool OziFile::set_waypoint(store::ItemRecord& item, std::size_t first) {
  item = store::blank_item();
  if (!set_position(item, first + 2)) return false;
  set_text(item.ident, first + 1);
  item.time = ozi_time(fields_[first + 4]);
  set_ozi_symbol(item, base::parse_integer(fields_[first + 5]), context_.settings);
  set_text(item.comment, first + 10);
  item.display_mode = display_mode_of(fields_[first + 12]);
  item.proximity_distance = proximity_of(fields_[first + 13]);
  item.altitude = ozi_altitude(fields_[first + 14], geodesy::kMetresPerFoot);
  return true;
}

void OziFile::close() {
  context_.store.start_item();
  base::Remarks remarks;
  bad_lines_.remark(remarks, "lines are no " + std::string(kind_.items));
  remarks.add(cut_texts_, "texts were too long and are cut");
  remarks.say(context_.front_end);
}

}  // namespace formats

#include "ui/options/datum_search.h"

#include <algorithm>

#include "base/quiet_front_end.h"
#include "base/text.h"
#include "ui/item_texts.h"

namespace ui {
namespace {

std::string letters_and_digits(std::string_view text) {
  std::string kept = base::lower_case(text);
  std::erase_if(kept, [](char letter) { return letter == ' ' || letter == '_' || letter == '-'; });
  return kept;
}

std::string wgs84_text(const geodesy::Position& position, geodesy::Notation notation) {
  const geodesy::PositionTexts texts = geodesy::format_position(position, notation, geodesy::Ellipsoid{});
  return texts.first + " " + texts.second;
}

}  // namespace

std::vector<std::string> sorted_datums(const geodesy::DatumTable& datums) {
  std::vector<std::string> names = datums.names();
  std::ranges::stable_sort(names, {}, base::lower_case);
  const auto repeated = std::ranges::unique(names, base::equal_ignoring_case);
  names.erase(repeated.begin(), repeated.end());
  return names;
}

std::vector<std::string> matching_datums(const std::vector<std::string>& names, std::string_view typed) {
  const std::string wanted = letters_and_digits(typed);
  std::vector<std::string> matching;
  for (const std::string& name : names)
    if (letters_and_digits(name).find(wanted) != std::string::npos) matching.push_back(name);
  return matching;
}

PreviewPlace preview_place(const session::Session& session, geodesy::Notation notation) {
  if (const auto reference = reference_position(session.settings))
    return {wgs84_text(*reference, notation), "the reference position"};
  for (int index = 1; index <= session.items.waypoint_count(); ++index) {
    const store::ItemRecord waypoint = session.items.waypoint(index);
    if (waypoint.in_use == 0) continue;
    return {wgs84_text(waypoint.position, notation), "waypoint " + std::string(waypoint.ident)};
  }
  return {};
}

std::optional<DatumPreview> preview_datum(const session::Session& session, std::string_view datum,
                                          geodesy::Notation notation, std::string_view position, std::string& problem) {
  base::QuietFrontEnd quiet;
  geodesy::DatumShift shift(session.datums, quiet);
  shift.set_datum_shift("WGS-84", datum);
  const geodesy::ParsedPosition parsed = geodesy::parse_position(position, geodesy::Ellipsoid{});
  problem = parsed.problem;
  if (!parsed.position) return std::nullopt;
  const geodesy::Position shifted = textfile::shift_position(shift, *parsed.position).value_or(*parsed.position);
  return DatumPreview{geodesy::format_position(shifted, notation, shift.projection_ellipsoid()),
                      geodesy::great_circle_distance(*parsed.position, shifted, geodesy::DistanceUnit::Metres)};
}

}  // namespace ui

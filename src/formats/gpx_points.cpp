#include "formats/gpx_points.h"

#include <algorithm>
#include <cmath>

#include "base/remarks.h"
#include "base/text.h"
#include "formats/iso_time.h"
#include "formats/writable_items.h"

namespace formats {
namespace {

using pugi::xml_node;
using store::ItemRecord;

// Two digits for each byte; any other text leaves the bytes as they are.
void read_hex(std::string_view text, std::array<std::uint8_t, 18>& bytes) {
  std::array<std::uint8_t, 18> read{};
  if (text.size() != read.size() * 2 || text.find_first_of("+-") != std::string_view::npos) return;
  for (std::size_t i = 0; i < read.size(); ++i) {
    const std::optional<long long> value = base::parse_integer(text.substr(i * 2, 2), 16);
    if (!value) return;
    read[i] = static_cast<std::uint8_t>(*value);
  }
  bytes = read;
}

bool is_one_of(std::string_view name_space, const auto& namespaces) {
  return std::ranges::find(namespaces, name_space) != namespaces.end();
}

}  // namespace

void GpxRemarks::report(base::FrontEnd& front_end) const {
  base::Remarks remarks;
  const std::string first_line = first_point_line == 0 ? "" : ", the first in line " + std::to_string(first_point_line);
  remarks.add(points, "points have no valid position and were passed over" + first_line);
  remarks.add(routes, "routes found no room");
  remarks.add(times, "times could not be read");
  remarks.add(metres, "altitudes, depths or distances could not be read");
  remarks.add(cut_texts, "texts are longer than records hold and were cut");
  remarks.add(substitutes, "characters that receivers do not have were replaced");
  remarks.add(symbols, "symbols are not known and became dots, the first '" + first_symbol + "'");
  remarks.say(front_end);
}

GpxPointReader::GpxPointReader(const XmlDocument& document)
    : document_(document), root_prefix_(prefix_of(document.root())), root_namespace_(namespaces_.of(document.root())) {}

std::string_view GpxPointReader::gpx_name(xml_node element) {
  const bool is_as_root = prefix_of(element) == root_prefix_ && !declares_namespaces(element);
  const std::string_view name_space = is_as_root ? root_namespace_ : namespaces_.of(element);
  const bool is_gpx = name_space.empty() || name_space == root_namespace_ || is_one_of(name_space, kGpxNamespaces);
  return is_gpx ? local_name(element) : std::string_view();
}

bool GpxPointReader::is_makers(xml_node element) { return is_one_of(namespaces_.of(element), kMakerNamespaces); }

bool GpxPointReader::is_own(xml_node element, std::string_view name) {
  return local_name(element) == name && namespaces_.of(element) == kOwnNamespace;
}

std::string GpxPointReader::latin1(std::string_view utf8) {
  std::string text = base::latin1_from_utf8(utf8, &remarks_.substitutes);
  for (char& c : text) {
    if (static_cast<unsigned char>(c) >= ' ' && c != '\x7F') continue;
    c = '-';
    ++remarks_.substitutes;
  }
  return text;
}

bool GpxPointReader::read_position(xml_node point, ItemRecord& item) {
  const auto degrees = [point](const char* name) {
    return base::parse_number(base::trim_blanks(attribute_of(point, name)));
  };
  const std::optional<double> latitude = degrees("lat");
  const std::optional<double> longitude = degrees("lon");
  if (latitude && longitude) item.position = {*latitude, *longitude};
  if (latitude && longitude && is_on_globe(item.position)) return true;
  if (remarks_.points++ == 0) remarks_.first_point_line = document_.line_of(point);
  return false;
}

// Metres that a record can hold; anything else leaves the value as it is.
void GpxPointReader::read_metres(xml_node element, float& metres) {
  const std::string text = value_of(element);
  const std::optional<double> value = base::parse_number(text);
  const bool fits = value && std::abs(*value) < static_cast<double>(store::kNotKnown);
  if (fits) metres = static_cast<float>(*value);
  if (!fits && !text.empty()) ++remarks_.metres;
}

void GpxPointReader::read_time(xml_node element, store::GarminTime& time) {
  const std::optional<store::GarminTime> read = parse_iso_time(value_of(element));
  if (!read) ++remarks_.times;
  time = read.value_or(time);
}

void GpxPointReader::read_track_point(xml_node element, ItemRecord& item) {
  for (const xml_node field : element.children()) {
    const std::string_view name = gpx_name(field);
    if (name == "ele") {
      read_metres(field, item.altitude);
    } else if (name == "time") {
      read_time(field, item.time);
    } else if (name == "extensions" || name.empty()) {
      GpxPoint point;
      point.item.depth = item.depth;
      read_extensions(field, point);
      item.depth = point.item.depth;
    }
  }
}

void GpxPointReader::read_named_point(xml_node element, GpxPoint& point) {
  std::string symbol, comment, description;
  for (const xml_node field : element.children()) {
    const std::string_view name = gpx_name(field);
    if (name == "ele") read_metres(field, point.item.altitude);
    if (name == "time") read_time(field, point.item.time);
    if (name == "name") take_text(text_of(field), point.item.ident);
    if (name == "cmt") comment = text_of(field);
    if (name == "desc") description = text_of(field);
    if (name == "sym") symbol = value_of(field);
    if (name == "type") point.type = value_of(field);
    if (name == "extensions" || name.empty()) read_extensions(field, point);
  }
  take_text(comment.empty() ? description : comment, point.item.comment);
  point.item.proximity_distance = point.alarm.value_or(0.0F);
  if (!point.has_symbol) take_symbol(symbol, point);
}

void GpxPointReader::take_symbol(const std::string& name, GpxPoint& point) {
  if (name.empty()) return;
  const std::optional<std::int16_t> symbol = store::symbol_of_gpx_name(name);
  if (!symbol && remarks_.symbols++ == 0) remarks_.first_symbol = base::latin1_from_utf8(name);
  point.item.symbol = symbol.value_or(store::kDotSymbol);
}

// The elements in an "extensions" element, or one that stands among those of GPX 1.0.
void GpxPointReader::read_extensions(xml_node element, GpxPoint& point) {
  if (gpx_name(element).empty()) return read_extension(element, point);
  for (const xml_node extension : element.children()) read_extension(extension, point);
}

void GpxPointReader::read_extension(xml_node extension, GpxPoint& point) {
  const std::string_view name = local_name(extension);
  if (name == "WaypointExtension" || name == "RoutePointExtension" || name == "TrackPointExtension") {
    for (const xml_node field : extension.children()) read_makers_field(field, point);
  } else if (is_own(extension, "item")) {
    read_own_item(extension, point);
  } else if (is_own(extension, "link")) {
    GpxLink& link = point.link.emplace();
    read_whole_number(attribute_of(extension, "class"), link.link_class);
    read_hex(attribute_of(extension, "subclass"), link.subclass);
    take_text(attribute_of(extension, "ident"), link.ident);
  } else {
    read_makers_field(extension, point);
  }
}

void GpxPointReader::read_makers_field(xml_node field, GpxPoint& point) {
  const std::string_view name = local_name(field);
  if ((name == "Depth" || name == "depth") && is_makers(field)) read_metres(field, point.item.depth);
  if (name == "Proximity" && is_makers(field)) {
    float metres = store::kNotKnown;
    read_metres(field, metres);
    if (store::is_known(metres)) point.alarm = metres;
  }
  if (name == "Subclass" && is_makers(field)) read_hex(value_of(field), point.item.subclass);
  if (name == "DisplayMode" && is_makers(field))
    for (const GpxDisplayWord& known : kGpxDisplayWords)
      if (known.word == value_of(field)) point.item.display_mode = known.mode;
  if (name != "Address" || !is_makers(field)) return;
  for (const xml_node part : field.children()) {
    for_each_field(kAddressTexts, [&](const auto& row) {
      if (local_name(part) == row.first) take_text(text_of(part), point.item.*row.second);
    });
  }
}

void GpxPointReader::read_own_item(xml_node element, GpxPoint& point) {
  point.is_only_waypoint = attribute_of(element, "kind") == "W";
  point.has_symbol = !element.attribute("symbol").empty();
  for_each_field(kOwnNumbers,
                 [&](const auto& row) { read_whole_number(attribute_of(element, row.first), point.item.*row.second); });
  if (point.item.detail_kind > store::kRouteLinkDetails) point.item.detail_kind = store::kNoDetails;
  read_hex(attribute_of(element, "subclass"), point.item.subclass);
  for_each_field(kOwnTexts,
                 [&](const auto& row) { take_text(attribute_of(element, row.first), point.item.*row.second); });
}

}  // namespace formats

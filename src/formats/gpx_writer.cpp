#include <limits>
#include <optional>

#include "formats/gpx.h"
#include "formats/gpx_terms.h"
#include "formats/iso_time.h"
#include "formats/line_texts.h"
#include "formats/symbol_names.h"
#include "formats/writable_items.h"
#include "formats/xml_text.h"
#include "store/symbol_sets.h"

namespace formats {
namespace {

using store::ItemRecord;

void append_metres(std::string& out, std::string_view element, float metres) {
  if (!is_writable_metres(metres)) return;
  std::string number;
  append_xml_number(number, metres);
  append_element(out, element, number);
}

std::string hex_of(const std::array<std::uint8_t, 18>& bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  if (bytes == std::array<std::uint8_t, 18>{}) return text;
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

class GpxWriter {
 public:
  GpxWriter(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out)
      : context_(context), options_(options), out_(out) {}

  void write() {
    append_head();
    const store::ItemStore& items = context_.store;
    for (int i = 1; options_.waypoints && i <= items.waypoint_count(); ++i) append_waypoint(items.waypoint(i));
    for (int i = 1; options_.proximity && i <= items.proximity_count(); ++i) append_waypoint(items.proximity(i));
    for (int i = 1; options_.events && i <= items.event_count(); ++i) append_waypoint(items.event(i));
    for (int i = 0; options_.routes && i < store::kRouteCapacity; ++i) append_route(items.route(i));
    if (options_.tracks) append_tracks();
    text_ += "</gpx>\n";
    hand_on();
    texts_.report(context_.front_end);
  }

 private:
  void hand_on() {
    out_ += text_;
    text_.clear();
  }

  void append_text(std::string& out, std::string_view element, std::string_view latin1) {
    if (latin1.empty()) return;
    std::string text;
    append_xml_text(text, texts_.cleaned(latin1));
    append_element(out, element, text);
  }

  void append_attribute(std::string& out, std::string_view name, std::string_view latin1) {
    if (latin1.empty()) return;
    out += ' ';
    out += name;
    out += "=\"";
    append_xml_text(out, texts_.cleaned(latin1));
    out += '"';
  }

  void append_head() {
    text_ += R"(<?xml version="1.0" encoding="UTF-8"?>)"
             "\n<gpx version=\"1.1\" creator=\"Pelorix\" xmlns=\"";
    text_ += kGpxNamespaces[0];
    text_ += "\" xmlns:gpxx=\"";
    text_ += kMakerNamespaces[0];
    text_ += "\" xmlns:pelorix=\"";
    text_ += kOwnNamespace;
    text_ += "\">\n";
    const std::int64_t now = options_.now_unix - store::kGarminEpochUnix;
    if (now > 0 && now <= std::numeric_limits<std::uint32_t>::max()) {
      text_ += "<metadata>";
      append_time({static_cast<std::uint32_t>(now)});
      text_ += "</metadata>\n";
    }
  }

  void append_time(store::GarminTime time) {
    text_ += "<time>";
    append_iso_time(text_, time);
    text_ += "</time>";
  }

  // The start tag and what every point may have.
  void append_point_start(std::string_view element, const ItemRecord& item) {
    text_ += '<';
    text_ += element;
    text_ += " lat=\"";
    append_xml_number(text_, item.position.latitude);
    text_ += "\" lon=\"";
    // The schema has the date line as -180 only.
    append_xml_number(text_, item.position.longitude == 180 ? -180.0 : item.position.longitude);
    text_ += "\">";
    append_metres(text_, "ele", item.altitude);
    if (item.time.seconds != 0 && !options_.zero_time) append_time(item.time);
  }

  void append_waypoint(const ItemRecord& item) {
    if (!is_writable(item, texts_)) return;
    append_named_point("wpt", item);
    hand_on();
  }

  void append_named_point(std::string_view element, const ItemRecord& item) {
    const bool is_route_point = element == "rtept";
    append_point_start(element, item);
    append_text(text_, "name", item.ident);
    append_text(text_, "cmt", item.comment);
    const std::string_view symbol = symbol_name(item, context_.settings);
    append_text(text_, "sym", symbol);
    if (item.kind == 'P') append_text(text_, "type", kProximityType);
    if (item.kind == 'I') append_text(text_, "type", kEventType);
    std::string extensions;
    append_maker_extension(extensions, item);
    if (is_route_point) {
      std::string subclass;
      append_element(subclass, "gpxx:Subclass", hex_of(item.subclass));
      append_element(extensions, "gpxx:RoutePointExtension", subclass);
    }
    append_own_item(extensions, item, symbol, is_route_point);
    if (item.has_route_link != 0) append_link(extensions, item);
    append_element(text_, "extensions", extensions);
    text_ += "</";
    text_ += element;
    text_ += ">\n";
  }

  void append_maker_extension(std::string& out, const ItemRecord& item) {
    std::string fields;
    if (has_alarm(item)) append_metres(fields, "gpxx:Proximity", item.proximity_distance);
    append_metres(fields, "gpxx:Depth", item.depth);
    for (const GpxDisplayWord& known : kGpxDisplayWords)
      if (known.mode == item.display_mode && known.mode != kSymbolAndName)
        append_element(fields, "gpxx:DisplayMode", known.word);
    std::string address;
    for_each_field(kAddressTexts,
                   [&](const auto& row) { append_text(address, std::string("gpxx:") + row.first, item.*row.second); });
    append_element(fields, "gpxx:Address", address);
    append_element(out, "gpxx:WaypointExtension", fields);
  }

  static bool has_alarm(const ItemRecord& item) {
    return is_writable_metres(item.proximity_distance) && (item.kind == 'P' || item.proximity_distance != 0);
  }

  void append_own_item(std::string& out, ItemRecord item, std::string_view symbol, bool is_route_point) {
    const ItemRecord defaults = default_gpx_item();
    std::string attributes;
    // A waypoint with an alarm distance would be read as a proximity waypoint as well.
    if (item.kind == 'W' && has_alarm(item)) append_attribute(attributes, "kind", "W");
    if (item.symbol_mode == store::mode_of_codes(context_.settings) && !symbol.empty()) {
      item.symbol = defaults.symbol;
      item.symbol_mode = defaults.symbol_mode;
    }
    for (const GpxDisplayWord& known : kGpxDisplayWords)
      if (known.mode == item.display_mode) item.display_mode = defaults.display_mode;
    for_each_field(kOwnNumbers, [&](const auto& row) {
      if (item.*row.second != defaults.*row.second)
        append_attribute(attributes, row.first, std::to_string(item.*row.second));
    });
    if (!is_route_point) append_attribute(attributes, "subclass", hex_of(item.subclass));
    for_each_field(kOwnTexts, [&](const auto& row) { append_attribute(attributes, row.first, item.*row.second); });
    if (!attributes.empty()) out += "<pelorix:item" + attributes + "/>";
  }

  void append_link(std::string& out, const ItemRecord& item) {
    out += "<pelorix:link";
    append_attribute(out, "class", std::to_string(item.link_class));
    append_attribute(out, "subclass", hex_of(item.link_subclass));
    append_attribute(out, "ident", item.route_link_ident);
    out += "/>";
  }

  void append_route(const store::Route& route) {
    if (!route.header || route.header->in_use == 0) return;
    const ItemRecord& header = *route.header;
    text_ += "<rte>";
    append_text(text_, "name", header.comment);
    append_text(text_, "number", std::to_string(header.route_number));
    if (header.ident != route_number_text(header.route_number)) {
      text_ += "<extensions><pelorix:route ident=\"";
      append_xml_text(text_, texts_.cleaned(header.ident));
      text_ += "\"/></extensions>";
    }
    text_ += '\n';
    for (const ItemRecord& point : route.points)
      if (is_writable(point, texts_)) append_named_point("rtept", point);
    text_ += "</rte>\n";
    hand_on();
  }

  void append_tracks() {
    const store::ItemStore& items = context_.store;
    bool is_open = false;
    // A start that was deleted from a list stands before the next point that was not.
    std::optional<ItemRecord> start;
    for (int i = 1; i <= items.track_point_count(); ++i) {
      const ItemRecord point = items.track_point(i);
      const bool starts_track = point.segment_flag == store::kStartsNamedTrack;
      const bool hides_named_start = start && start->segment_flag == store::kStartsNamedTrack && !starts_track;
      if (point.segment_flag != store::kContinues && !hides_named_start) start = point;
      if (!is_writable(point, texts_)) continue;
      if (start || !is_open) append_track_start(start.value_or(point), is_open);
      start.reset();
      is_open = true;
      append_track_point(point);
    }
    if (is_open) text_ += "</trkseg>\n</trk>\n";
  }

  void append_track_start(const ItemRecord& start, bool is_open) {
    const bool is_named = start.segment_flag == store::kStartsNamedTrack;
    if (is_open) text_ += "</trkseg>\n";
    if (is_open && is_named) text_ += "</trk>\n";
    if (!is_open || is_named) text_ += "<trk>";
    if (is_named) {
      append_text(text_, "name", start.ident);
      text_ += "<extensions>";
      if (start.colour < store::kDefaultColour)
        text_ += "<gpxx:TrackExtension><gpxx:DisplayColor>" + gpx_colour_name(start.colour) +
                 "</gpxx:DisplayColor></gpxx:TrackExtension>";
      text_ += "<pelorix:track style=\"" + std::to_string(start.track_style) + "\"/></extensions>";
    }
    text_ += "<trkseg>\n";
  }

  void append_track_point(const ItemRecord& point) {
    append_point_start("trkpt", point);
    if (is_writable_metres(point.depth)) {
      text_ += "<extensions><gpxx:TrackPointExtension>";
      append_metres(text_, "gpxx:Depth", point.depth);
      text_ += "</gpxx:TrackPointExtension></extensions>";
    }
    text_ += "</trkpt>\n";
    hand_on();
  }

  const store::FileContext& context_;
  const store::OutputOptions& options_;
  base::TextOutput& out_;
  LineTexts texts_;
  std::string text_;  // of one item at a time
};

}  // namespace

bool write_gpx(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out) {
  GpxWriter(context, options, out).write();
  return true;
}

}  // namespace formats

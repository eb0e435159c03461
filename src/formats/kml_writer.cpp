#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "base/remarks.h"
#include "formats/gpx_terms.h"
#include "formats/iso_time.h"
#include "formats/kml.h"
#include "formats/line_texts.h"
#include "formats/symbol_names.h"
#include "formats/writable_items.h"
#include "formats/xml_text.h"

namespace formats {
namespace {

using store::ItemRecord;

// Of store::kColourNames but the last: alpha, blue, green and red in hexadecimal.
constexpr std::array<std::string_view, store::kDefaultColour> kLineColours{
    "ff000000", "ff00008b", "ff006400", "ff008b8b", "ff8b0000", "ff8b008b", "ff8b8b00", "ffd3d3d3",
    "ffa9a9a9", "ff0000ff", "ff00ff00", "ff00ffff", "ffff0000", "ffff00ff", "ffffff00", "ffffffff"};

// A point of a line: all that KML has of it.
struct LinePoint {
  geodesy::Position position;
  float altitude = 0;  // metres
  store::GarminTime time;
};

bool is_wholly_high(const std::vector<LinePoint>& line) {
  return std::ranges::all_of(line, [](const LinePoint& point) { return is_writable_metres(point.altitude); });
}

// Heights are left out where they are not known, since any number would be taken for one.
void append_coordinates(std::string& out, const LinePoint& point, char separator) {
  append_xml_number(out, point.position.longitude);
  out += separator;
  append_xml_number(out, point.position.latitude);
  if (!is_writable_metres(point.altitude)) return;
  out += separator;
  append_xml_number(out, point.altitude);
}

class KmlWriter {
 public:
  KmlWriter(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out)
      : context_(context), options_(options), out_(out) {}

  void write() {
    out_ +=
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<kml xmlns=\"http://www.opengis.net/kml/2.2\" xmlns:gx=\"http://www.google.com/kml/ext/2.2\">\n<Document>\n";
    const store::ItemStore& items = context_.store;
    const auto append_points = [this](std::string_view folder, int count, const auto& item_at) {
      for (int i = 1; i <= count; ++i) append_placemark(folder, item_at(i));
      close_folder();
    };
    if (options_.waypoints)
      append_points("Waypoints", items.waypoint_count(), [&](int i) { return items.waypoint(i); });
    if (options_.routes) append_routes();
    if (options_.tracks) append_tracks();
    if (options_.proximity)
      append_points("Proximity", items.proximity_count(), [&](int i) { return items.proximity(i); });
    if (options_.events) append_points("Events", items.event_count(), [&](int i) { return items.event(i); });
    out_ += "</Document>\n</kml>\n";
    base::Remarks remarks;
    remarks.add(texts_.summary());
    remarks.add(left_out_times_, "times of track segments in which other points have none are not written");
    remarks.say(context_.front_end);
  }

 private:
  // A folder comes with its first item.
  void open_folder(std::string_view name) {
    if (folder_is_open_) return;
    text_ += "<Folder><name>" + std::string(name) + "</name>\n";
    folder_is_open_ = true;
  }

  void close_folder() {
    if (folder_is_open_) out_ += "</Folder>\n";
    folder_is_open_ = false;
  }

  void hand_on() {
    out_ += text_;
    text_.clear();
  }

  void append_text(std::string_view element, std::string_view latin1) {
    std::string text;
    append_xml_text(text, texts_.cleaned(latin1));
    append_element(text_, element, text);
  }

  void append_data(std::string& out, std::string_view name, std::string_view latin1) {
    if (latin1.empty()) return;
    out += "<Data name=\"";
    out += name;
    out += "\"><value>";
    append_xml_text(out, texts_.cleaned(latin1));
    out += "</value></Data>";
  }

  void append_metres_data(std::string& out, std::string_view name, float metres) {
    if (!is_writable_metres(metres)) return;
    std::string text;
    append_xml_number(text, metres);
    append_data(out, name, text);
  }

  void append_placemark(std::string_view folder, const ItemRecord& item) {
    if (!is_writable(item, texts_)) return;
    open_folder(folder);
    text_ += "<Placemark>";
    append_text("name", item.ident);
    append_text("description", item.comment);
    if (item.time.seconds != 0 && !options_.zero_time) {
      text_ += "<TimeStamp><when>";
      append_iso_time(text_, item.time);
      text_ += "</when></TimeStamp>";
    }
    append_details(item);
    append_point({item.position, item.altitude, item.time});
    text_ += "</Placemark>\n";
    hand_on();
  }

  void append_point(const LinePoint& point) {
    text_ += "<Point>";
    if (is_writable_metres(point.altitude)) text_ += "<altitudeMode>absolute</altitudeMode>";
    text_ += "<coordinates>";
    append_coordinates(text_, point, ',');
    text_ += "</coordinates></Point>";
  }

  void append_details(const ItemRecord& item) {
    std::string data;
    const std::string_view symbol = symbol_name(item, context_.settings);
    append_data(data, "symbol", symbol.empty() ? std::to_string(item.symbol) : symbol);
    append_metres_data(data, "depth", item.depth);
    if (item.proximity_distance != 0) append_metres_data(data, "proximity", item.proximity_distance);
    if (item.waypoint_class != 0 && item.waypoint_class != store::kClassNotSet)
      append_data(data, "class", std::to_string(item.waypoint_class));
    const auto append_field = [&](const auto& row) { append_data(data, row.first, item.*row.second); };
    for_each_field(kAddressTexts, append_field);
    for_each_field(kOwnTexts, append_field);
    append_element(text_, "ExtendedData", data);
  }

  void append_routes() {
    for (int number = 0; number < store::kRouteCapacity; ++number) {
      const store::Route& route = context_.store.route(number);
      if (!route.header || route.header->in_use == 0) continue;
      std::vector<LinePoint> line;
      for (const ItemRecord& point : route.points)
        if (is_writable(point, texts_)) line.push_back({point.position, point.altitude, {}});
      open_folder("Routes");
      text_ += "<Placemark>";
      append_text("name", route.header->comment);
      std::string data;
      append_data(data, "number", std::to_string(route.header->route_number));
      append_element(text_, "ExtendedData", data);
      append_line(line);
      text_ += "</Placemark>\n";
      hand_on();
    }
    close_folder();
  }

  void append_tracks() {
    const store::ItemStore& items = context_.store;
    std::vector<LinePoint> segment;
    // A start that was deleted from a list stands before the next point that was not.
    std::optional<ItemRecord> log;
    bool log_is_open = false;
    for (int i = 1; i <= items.track_point_count(); ++i) {
      const ItemRecord point = items.track_point(i);
      if (point.segment_flag != store::kContinues) append_segment(segment, log, log_is_open);
      if (point.segment_flag == store::kStartsNamedTrack) {
        close_log(log_is_open);
        log = point;
      }
      if (is_writable(point, texts_))
        segment.push_back({point.position, point.altitude, options_.zero_time ? store::GarminTime{} : point.time});
    }
    append_segment(segment, log, log_is_open);
    close_log(log_is_open);
    close_folder();
  }

  void close_log(bool& log_is_open) {
    if (log_is_open) out_ += "</Folder>\n";
    log_is_open = false;
  }

  // A track log is a folder of its segments, each of which has its name and colour.
  void append_segment(std::vector<LinePoint>& segment, const std::optional<ItemRecord>& log, bool& log_is_open) {
    if (segment.empty()) return;
    open_folder("Tracks");
    if (log && !log_is_open) {
      text_ += "<Folder>";
      append_text("name", log->ident);
      std::string data;
      append_data(data, "style", std::to_string(log->track_style));
      append_element(text_, "ExtendedData", data);
      text_ += '\n';
      log_is_open = true;
    }
    text_ += "<Placemark>";
    if (log) append_text("name", log->ident);
    if (log && log->colour < kLineColours.size()) {
      text_ += "<Style><LineStyle><color>";
      text_ += kLineColours[log->colour];
      text_ += "</color></LineStyle></Style>";
    }
    const auto times = std::ranges::count_if(segment, [](const LinePoint& point) { return point.time.seconds != 0; });
    const bool is_timed = std::cmp_equal(times, segment.size());
    if (!is_timed) left_out_times_ += static_cast<int>(times);
    is_timed ? append_timed_line(segment) : append_line(segment);
    text_ += "</Placemark>\n";
    hand_on();
    segment.clear();
  }

  void append_line(const std::vector<LinePoint>& line) {
    if (line.empty()) return;
    if (line.size() == 1) return append_point(line.front());  // a line has two points at least
    text_ += is_wholly_high(line) ? "<LineString><altitudeMode>absolute</altitudeMode>"
                                  : "<LineString><tessellate>1</tessellate>";
    text_ += "<coordinates>\n";
    for (const LinePoint& point : line) {
      append_coordinates(text_, point, ',');
      text_ += '\n';
      hand_on();
    }
    text_ += "</coordinates></LineString>";
  }

  // Two lists: every point must have a time, as a list has no empty places.
  void append_timed_line(const std::vector<LinePoint>& line) {
    text_ += "<gx:Track>";
    if (is_wholly_high(line)) text_ += "<altitudeMode>absolute</altitudeMode>";
    text_ += '\n';
    for (const LinePoint& point : line) {
      text_ += "<when>";
      append_iso_time(text_, point.time);
      text_ += "</when>\n";
      hand_on();
    }
    for (const LinePoint& point : line) {
      text_ += "<gx:coord>";
      append_coordinates(text_, point, ' ');
      text_ += "</gx:coord>\n";
      hand_on();
    }
    text_ += "</gx:Track>";
  }

  const store::FileContext& context_;
  const store::OutputOptions& options_;
  base::TextOutput& out_;
  LineTexts texts_;
  int left_out_times_ = 0;
  std::string text_;  // of one item at a time
  bool folder_is_open_ = false;
};

}  // namespace

bool write_kml(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out) {
  KmlWriter(context, options, out).write();
  return true;
}

}  // namespace formats

#include <optional>
#include <pugixml.hpp>

#include "base/reading_progress.h"
#include "formats/gpx.h"
#include "formats/gpx_points.h"
#include "store/symbol_sets.h"

namespace formats {
namespace {

using pugi::xml_node;
using store::ItemRecord;

// What a track says of itself, outside its points.
struct TrackHead {
  bool is_log = false;  // a track log of its own, and not only a segment
  base::FixedText<50> name;
  std::uint8_t colour = store::kDefaultColour;
  std::optional<std::uint8_t> style;
};

class GpxReader {
 public:
  GpxReader(const store::FileContext& context, GpxPointReader& points, base::ReadingProgress& progress)
      : context_(context), store_(context.store), points_(points), progress_(progress) {}

  // The number of items accepted. Says what was passed over or changed, unless the user ended it.
  int read(xml_node root) {
    store_.set_input_time_offset(0);
    store_.clear_route_overflow();
    for (const xml_node element : root.children()) {
      const std::string_view name = points_.gpx_name(element);
      const bool goes_on = name == "wpt"   ? read_waypoint(element)
                           : name == "rte" ? read_route(element)
                           : name == "trk" ? read_track(element)
                                           : true;
      if (!goes_on) break;
    }
    store_.forget_pending_track();
    if (!is_aborted_) points_.remarks().report(context_.front_end);
    return accepted_;
  }

 private:
  // True when the item was stored.
  bool count(int push_result) {
    accepted_ += push_result == 0 ? 1 : 0;
    return push_result == 0;
  }

  bool go_on() {
    is_aborted_ = !progress_.go_on();
    return !is_aborted_;
  }

  void set_current(GpxPoint& point) {
    if (point.item.symbol_mode == store::kSymbolModeNotGiven)
      point.item.symbol_mode = store::mode_of_codes(context_.settings);
    store_.CurrentItem = point.item;
  }

  // Each of these is false when the user ends it.

  bool read_waypoint(xml_node element) {
    if (!go_on()) return false;
    GpxPoint point;
    if (!points_.read_position(element, point.item)) return true;
    points_.read_named_point(element, point);
    set_current(point);
    if (point.type == kEventType) {
      count(store_.push_event());
      return true;
    }
    const bool is_only_proximity = point.type == kProximityType;
    if (!is_only_proximity && !waypoints_full_) waypoints_full_ = !count(store_.push_waypoint(0));
    if (!is_only_proximity && (!point.alarm || point.is_only_waypoint)) return true;
    point.item.proximity_distance = point.alarm.value_or(store::kNotKnown);
    store_.CurrentItem = point.item;
    count(store_.push_proximity());
    return true;
  }

  bool read_route(xml_node route) {
    if (!start_route(route)) {
      points_.leave_out_route();
      return true;
    }
    for (const xml_node element : route.children())
      if (points_.gpx_name(element) == "rtept" && !read_route_point(element)) return false;
    return true;
  }

  // False when there is no room for it; the store says so at the first one.
  bool start_route(xml_node route) {
    if (store_.route_overflow()) return false;
    std::uint32_t wanted = 1;
    std::string name;
    std::optional<std::string> ident;
    for (const xml_node element : route.children()) {
      const std::string_view what = points_.gpx_name(element);
      if (what == "name") name = text_of(element);
      if (what == "number") read_whole_number(text_of(element), wanted);
      if (what != "extensions") continue;
      for (const xml_node extension : element.children())
        if (points_.is_own(extension, "route")) ident = points_.latin1(attribute_of(extension, "ident"));
    }
    const std::uint32_t number = store_.free_route(wanted < store::kRouteCapacity ? wanted : 1);
    store_.start_route(number, ident.value_or(route_number_text(number)), "");
    points_.take_text(name, store_.CurrentItem.comment);
    return count(store_.push_route(true));
  }

  bool read_route_point(xml_node element) {
    if (!go_on()) return false;
    GpxPoint point;
    if (!points_.read_position(element, point.item)) return true;
    points_.read_named_point(element, point);
    set_current(point);
    if (count(store_.push_route(true)) && point.link)
      (void)store_.set_route_link(point.link->link_class, point.link->subclass, point.link->ident);
    return true;
  }

  bool read_track(xml_node track) {
    const TrackHead head = read_head(track);
    store_.forget_pending_track();
    bool starts_log = head.is_log || has_logs_;
    for (const xml_node segment : track.children()) {
      if (points_.gpx_name(segment) != "trkseg") continue;
      bool starts_segment = true;
      for (const xml_node element : segment.children()) {
        if (points_.gpx_name(element) != "trkpt") continue;
        if (!go_on()) return false;
        ItemRecord item = store::blank_item();
        if (track_points_full_ || !points_.read_position(element, item)) continue;
        points_.read_track_point(element, item);
        if (starts_log) {
          store_.start_track_log(head.name, store::kColourNames[head.colour], head.style);
          has_logs_ = true;
        } else if (starts_segment) {
          store_.start_segment();
        }
        starts_log = starts_segment = false;
        store_.CurrentItem = item;
        track_points_full_ = !count(store_.push_track());
      }
    }
    return true;
  }

  TrackHead read_head(xml_node track) {
    TrackHead head;
    for (const xml_node element : track.children()) {
      const std::string_view what = points_.gpx_name(element);
      if (what == "name") points_.take_text(text_of(element), head.name);
      if (what.empty()) read_track_extension(element, head);
      if (what != "extensions") continue;
      for (const xml_node extension : element.children()) read_track_extension(extension, head);
    }
    head.is_log = head.is_log || !head.name.empty() || head.colour != store::kDefaultColour;
    return head;
  }

  void read_track_extension(xml_node extension, TrackHead& head) {
    if (points_.is_own(extension, "track")) {
      head.is_log = true;
      read_whole_number(attribute_of(extension, "style"), head.style.emplace());
    }
    if (local_name(extension) != "TrackExtension") return;
    for (const xml_node element : extension.children()) {
      if (local_name(element) != "DisplayColor" || !points_.is_makers(element)) continue;
      for (std::uint8_t colour = 0; colour < store::kDefaultColour; ++colour)
        if (gpx_colour_name(colour) == value_of(element)) head.colour = colour;
    }
  }

  const store::FileContext& context_;
  store::ItemStore& store_;
  GpxPointReader& points_;
  base::ReadingProgress& progress_;
  int accepted_ = 0;
  bool is_aborted_ = false;
  bool has_logs_ = false;  // to which the points of a track without a name would be added
  bool waypoints_full_ = false, track_points_full_ = false;
};

}  // namespace

bool recognises_gpx(std::string_view first_line) {
  for (const std::string_view mark_of_utf16 : {"\xFF\xFE<", "\xFE\xFF"})
    if (first_line.starts_with(mark_of_utf16)) return true;
  return first_line.find("<?xml") != std::string_view::npos || first_line.find("<gpx") != std::string_view::npos;
}

int read_gpx(const store::FileContext& context, base::TextInput& input, const std::string& file_name) {
  const auto refuse = [&context](const std::string& text) {
    context.front_end.message_box("do_input", text);
    return -1;
  };
  base::ReadingProgress progress(context.front_end, input);
  const XmlDocument document(input.rest());
  if (!document.fault().empty()) return refuse(file_name + " is no whole XML document: " + document.fault());
  const xml_node root = document.root();
  if (local_name(root) != "gpx")
    return refuse(file_name + " holds no GPX data but an XML document '" + base::latin1_from_utf8(root.name()) + "'");
  if (!document.unread_encoding().empty())
    context.front_end.write_line(1, "The file is in the encoding " + document.unread_encoding() +
                                        ", of which only plain letters are read: other letters may be wrong.");
  GpxPointReader points(document);
  return GpxReader(context, points, progress).read(root);
}

}  // namespace formats

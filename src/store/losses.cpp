#include "store/losses.h"

#include <algorithm>
#include <array>
#include <functional>

#include "base/text.h"

namespace store {
namespace {

constexpr std::size_t kLongestSentence = 250;  // an output line has 255 characters

using Walk = std::function<void(const ItemRecord&)>;

// A kind of items: which choice and which properties are its, and every record of it that is in use.
struct Kind {
  std::string_view what;       // "tracks"
  std::string_view one, many;  // what is counted: "track point", "track points"
  bool OutputOptions::*wanted;
  Properties Kept::*kept;
  void (*walk)(const ItemStore& items, const Walk& visit);
};

void walk_if_used(const ItemRecord& item, const Walk& visit) {
  if (item.in_use != 0) visit(item);
}

void walk_routes(const ItemStore& items, const Walk& visit) {
  for (int number = 0; number < kRouteCapacity; ++number) {
    const Route& route = items.route(number);
    if (!route.header || route.header->in_use == 0) continue;
    visit(*route.header);
    for (const ItemRecord& point : route.points) walk_if_used(point, visit);
  }
}

constexpr std::array kKinds{
    Kind{"waypoints", "waypoint", "waypoints", &OutputOptions::waypoints, &Kept::waypoints,
         [](const ItemStore& items, const Walk& visit) {
           for (int i = 1; i <= items.waypoint_count(); ++i) walk_if_used(items.waypoint(i), visit);
         }},
    Kind{"routes", "route", "routes", &OutputOptions::routes, &Kept::routes, walk_routes},
    Kind{"tracks", "track point", "track points", &OutputOptions::tracks, &Kept::tracks,
         [](const ItemStore& items, const Walk& visit) {
           for (int i = 1; i <= items.track_point_count(); ++i) walk_if_used(items.track_point(i), visit);
         }},
    Kind{"proximity waypoints", "proximity waypoint", "proximity waypoints", &OutputOptions::proximity,
         &Kept::proximity,
         [](const ItemStore& items, const Walk& visit) {
           for (int i = 1; i <= items.proximity_count(); ++i) walk_if_used(items.proximity(i), visit);
         }},
    Kind{"events", "event", "events", &OutputOptions::events, &Kept::events,
         [](const ItemStore& items, const Walk& visit) {
           for (int i = 1; i <= items.event_count(); ++i) walk_if_used(items.event(i), visit);
         }},
};

bool is_point(const ItemRecord& item) { return item.kind != 'R' && item.kind != 'T'; }

bool has_details(const ItemRecord& item) {
  const bool has_text = !item.name.empty() || !item.facility.empty() || !item.city.empty() || !item.address.empty() ||
                        !item.cross_road.empty() || !item.state.empty() || !item.country.empty() ||
                        !item.link_ident.empty();
  return is_point(item) && (has_text || (item.waypoint_class != 0 && item.waypoint_class != kClassNotSet));
}

struct PropertyRow {
  Properties property;
  std::string_view one, many;
  bool (*has)(const ItemRecord& item);
};

// In the order in which losses hurt.
constexpr std::array kProperties{
    PropertyRow{kKeepsNames, "name", "names", [](const ItemRecord& i) { return is_point(i) && !i.ident.empty(); }},
    PropertyRow{kKeepsTitles, "route name", "route names",
                [](const ItemRecord& i) { return i.kind == 'R' && !i.comment.empty(); }},
    PropertyRow{
        kKeepsTitles, "track name", "track names",
        [](const ItemRecord& i) { return i.kind == 'T' && i.segment_flag == kStartsNamedTrack && !i.ident.empty(); }},
    PropertyRow{kKeepsTimes, "time", "times", [](const ItemRecord& i) { return i.time.seconds != 0; }},
    PropertyRow{kKeepsAltitudes, "altitude", "altitudes",
                [](const ItemRecord& i) { return i.kind != 'R' && is_known(i.altitude); }},
    PropertyRow{kKeepsDepths, "depth", "depths",
                [](const ItemRecord& i) { return i.kind != 'R' && is_known(i.depth); }},
    PropertyRow{
        kKeepsDistances, "alarm distance", "alarm distances",
        [](const ItemRecord& i) { return is_point(i) && i.proximity_distance != 0 && is_known(i.proximity_distance); }},
    PropertyRow{kKeepsSegments, "track break", "track breaks",
                [](const ItemRecord& i) { return i.kind == 'T' && i.segment_flag != kContinues; }},
    PropertyRow{kKeepsComments, "comment", "comments",
                [](const ItemRecord& i) { return is_point(i) && !i.comment.empty(); }},
    PropertyRow{kKeepsSymbols, "symbol", "symbols", [](const ItemRecord& i) { return is_point(i) && i.symbol != 0; }},
    PropertyRow{kKeepsAddresses, "address or class", "addresses or classes", has_details},
    PropertyRow{kKeepsLinks, "route link", "route links", [](const ItemRecord& i) { return i.has_route_link != 0; }},
    PropertyRow{kKeepsNumbers, "route number", "route numbers", [](const ItemRecord& i) { return i.kind == 'R'; }},
    PropertyRow{kKeepsDisplay, "display mode", "display modes",
                [](const ItemRecord& i) { return is_point(i) && (i.display_mode == 1 || i.display_mode == 3); }},
    PropertyRow{kKeepsColours, "colour", "colours",
                [](const ItemRecord& i) { return is_point(i) && i.colour != 0 && i.colour != kDefaultColour; }},
    PropertyRow{kKeepsLines, "track colour or style", "track colours or styles",
                [](const ItemRecord& i) { return i.kind == 'T' && i.segment_flag == kStartsNamedTrack; }},
};

// 1204 as "1,204".
std::string with_commas(int count) {
  std::string digits = std::to_string(count);
  for (auto place = static_cast<std::ptrdiff_t>(digits.size()) - 3; place > 0; place -= 3)
    digits.insert(static_cast<std::size_t>(place), ",");
  return digits;
}

// What is lost of one kind of items, as "altitude, depth" and "1,204 altitudes, 12 depths".
struct Lost {
  std::string what, counts;

  void add(std::string_view property, int count, std::string_view one, std::string_view many) {
    if (!what.empty()) {
      what += ", ";
      counts += ", ";
    }
    what += property;
    counts += with_commas(count) + ' ' + std::string(count == 1 ? one : many);
  }
  [[nodiscard]] std::string sentence(std::string_view title, const std::string& of) const {
    return std::string(title) + " keeps no " + what + of + ": " + counts + " not written";
  }
};

std::string sentence(std::string_view title, std::string_view what, int count, std::string_view one,
                     std::string_view many) {
  Lost lost;
  lost.add(what, count, one, many);
  return lost.sentence(title, "");
}

int count_of(const ItemStore& items, const Kind& kind) {
  int count = 0;
  kind.walk(items, [&](const ItemRecord& item) { count += kind.walk != walk_routes || item.kind == 'R' ? 1 : 0; });
  return count;
}

// A proximity waypoint is a waypoint too, whose alarm distance is written with the former.
bool is_alarm(const ItemStore& items, const ItemRecord& waypoint) {
  for (int i = 1; i <= items.proximity_count(); ++i) {
    const ItemRecord alarm = items.proximity(i);
    if (alarm.in_use != 0 && alarm.ident == waypoint.ident && alarm.proximity_distance == waypoint.proximity_distance)
      return true;
  }
  return false;
}

// How many records of the kind have each of the properties that are not kept.
void append_property_losses(std::vector<std::string>& sentences, const ItemStore& items, const Kind& kind,
                            std::string_view title, Properties kept, bool distances_of_proximity, bool name_the_kind) {
  const bool keeps_all = std::ranges::all_of(kProperties, [&](const PropertyRow& row) { return kept & row.property; });
  if (keeps_all) return;
  std::array<int, kProperties.size()> counts{};
  kind.walk(items, [&](const ItemRecord& item) {
    for (std::size_t i = 0; i < kProperties.size(); ++i) {
      if ((kept & kProperties[i].property) != 0 || !kProperties[i].has(item)) continue;
      // A waypoint's link is that of the route point whose copy it is.
      if (kProperties[i].property == kKeepsLinks && kind.walk != walk_routes) continue;
      const bool is_elsewhere =
          kProperties[i].property == kKeepsDistances && distances_of_proximity && is_alarm(items, item);
      if (!is_elsewhere) ++counts[i];
    }
  });
  const std::string of = name_the_kind ? " for " + std::string(kind.what) : "";
  Lost lost;
  for (std::size_t i = 0; i < kProperties.size(); ++i) {
    if (counts[i] == 0) continue;
    Lost longer = lost;
    longer.add(kProperties[i].one, counts[i], kProperties[i].one, kProperties[i].many);
    if (longer.sentence(title, of).size() > kLongestSentence) {
      sentences.push_back(lost.sentence(title, of));
      longer = {};
      longer.add(kProperties[i].one, counts[i], kProperties[i].one, kProperties[i].many);
    }
    lost = longer;
  }
  if (!lost.what.empty()) sentences.push_back(lost.sentence(title, of));
}

}  // namespace

std::vector<std::string> losses(const ItemStore& items, const OutputOptions& options, std::string_view title,
                                const Kept& kept) {
  std::vector<std::string> sentences;
  for (const Kind& kind : kKinds) {
    const int count = (kept.*kind.kept & kKeepsItems) == 0 && options.*kind.wanted ? count_of(items, kind) : 0;
    if (count != 0) sentences.push_back(sentence(title, kind.what, count, kind.one, kind.many));
  }
  if ((kept.almanac & kKeepsItems) == 0 && options.almanac && !items.almanac().empty())
    sentences.push_back(sentence(title, "almanac", items.almanac().count(), "satellite", "satellites"));
  const bool writes_distances = options.proximity && (kept.proximity & kKeepsDistances) != 0;
  const auto kinds_kept = std::ranges::count_if(kKinds, [&](const Kind& kind) { return kept.*kind.kept != 0; });
  for (const Kind& kind : kKinds)
    if ((kept.*kind.kept & kKeepsItems) != 0 && options.*kind.wanted)
      append_property_losses(sentences, items, kind, title, kept.*kind.kept, writes_distances, kinds_kept > 1);
  return sentences;
}

}  // namespace store

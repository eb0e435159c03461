#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/text.h"
#include "formats/ozi.h"
#include "formats/ozi_file.h"
#include "formats/ozi_symbols.h"
#include "store/packed_items.h"

namespace formats {
namespace {

using store::FileContext;
using store::ItemRecord;

// The one of our colours that is nearest to a Windows colour (0x00BBGGRR). Red, which track files have without
// anybody's choice, is no colour of the user's.
std::string_view colour_name_of(std::string_view field) {
  constexpr std::array<long long, 16> kColours{0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080,
                                               0x808000, 0xC0C0C0, 0x808080, 0x0000FF, 0x00FF00, 0x00FFFF,
                                               0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};
  constexpr long long kRed = 0x0000FF;
  const long long wanted = base::parse_integer(field).value_or(kRed);
  if (wanted == kRed || wanted < 0 || wanted > 0xFFFFFF) return store::kColourNames[store::kDefaultColour];
  const auto distance = [wanted](long long colour) {
    long long sum = 0;
    for (const int shift : {0, 8, 16}) {
      const long long difference = (wanted >> shift & 0xFF) - (colour >> shift & 0xFF);
      sum += difference * difference;
    }
    return sum;
  };
  std::size_t nearest = 0;
  for (std::size_t i = 1; i < kColours.size(); ++i)
    if (distance(kColours[i]) < distance(kColours[nearest])) nearest = i;
  return store::kColourNames[nearest];
}

// The routes of a file: their points may stand anywhere behind all the routes.
class RouteLines {
 public:
  void add_route(OziFile& file) {
    Header header;
    header.number = base::parse_integer(file.field(1));
    file.set_text(header.name, 2);
    if (header.number) newest_of_number_[*header.number] = headers_.size();
    headers_.push_back(std::move(header));
  }

  // To the route whose number stands in the line, else to the one whose line came last.
  void add_point(const OziFile& file, const ItemRecord& point) {
    const std::optional<long long> number = base::parse_integer(file.field(1));
    if (headers_.empty()) headers_.push_back({number, {}, {}});
    std::size_t route = headers_.size() - 1;
    if (number && headers_[route].number != number)
      if (const auto found = newest_of_number_.find(*number); found != newest_of_number_.end()) route = found->second;
    headers_[route].points.push_back(static_cast<std::uint32_t>(points_.size()));
    points_.push_back(point);
  }

  // The number of headers and points that the store has taken. Routes without points are not real ones.
  int push_into(store::ItemStore& items) const {
    int accepted = 0;
    for (const Header& header : headers_) {
      if (header.points.empty()) continue;
      const long long number = header.number.value_or(0);
      const bool is_row = number >= 0 && number < store::kRouteCapacity;
      const std::uint32_t row = items.free_route(is_row ? static_cast<std::uint32_t>(number) : 0);
      items.start_route(row, base::format_text("%02lld", number), header.name);
      if (items.push_route(true) != 0) break;
      ++accepted;
      for (const std::uint32_t point : header.points) {
        items.CurrentItem = points_[point];
        accepted += 1 - items.push_route(true);
      }
    }
    return accepted;
  }

 private:
  struct Header {
    std::optional<long long> number;
    base::FixedText<ItemRecord{}.comment.longest()> name;
    std::vector<std::uint32_t> points;  // indices
  };
  std::vector<Header> headers_;
  std::unordered_map<long long, std::size_t> newest_of_number_;
  store::PackedItems points_;
};

// The track's name belongs to the first log that the file marks, as our own files do; else to the first point.
void name_track(const FileContext& context, int index, std::string_view name, std::string_view colour) {
  ItemRecord start = context.store.track_point(index);
  start.segment_flag = store::kStartsNamedTrack;
  start.ident = name;
  start.colour = store::colour_number(colour);
  start.track_style = static_cast<std::uint8_t>(context.settings.SA_LineStyle);
  context.store.replace('T', index, start);
}

}  // namespace

int read_ozi_waypoints(const FileContext& context, base::TextInput& input, const std::string& file_name) {
  store::ItemStore& items = context.store;
  OziFile file(context, input, kOziWaypoints);
  if (!file.open(file_name)) return -1;
  int accepted = 0;
  bool takes_proximity = true;
  while (file.next()) {
    ItemRecord item;
    if (!file.set_waypoint(item, 0)) continue;
    items.CurrentItem = item;
    if (items.push_waypoint(0) != 0) break;
    ++accepted;
    if (item.proximity_distance == 0 || !takes_proximity) continue;
    items.CurrentItem = item;
    takes_proximity = items.push_proximity() == 0;
  }
  file.close();
  return accepted;
}

int read_ozi_routes(const FileContext& context, base::TextInput& input, const std::string& file_name) {
  OziFile file(context, input, kOziRoutes);
  if (!file.open(file_name)) return -1;
  RouteLines routes;
  while (file.next()) {
    constexpr std::size_t kWaypointFields = 3;
    ItemRecord point;
    if (file.field(0) == "R") {
      routes.add_route(file);
    } else if (file.field(0) != "W") {
      file.pass_over();
    } else if (file.set_waypoint(point, kWaypointFields)) {
      routes.add_point(file, point);
    }
  }
  const int accepted = routes.push_into(context.store);
  file.close();
  return accepted;
}

int read_ozi_track(const FileContext& context, base::TextInput& input, const std::string& file_name) {
  store::ItemStore& items = context.store;
  OziFile file(context, input, kOziTrack);
  if (!file.open(file_name)) return -1;
  base::FixedText<ItemRecord{}.ident.longest()> name;
  std::string_view colour = store::kColourNames[store::kDefaultColour];
  const int before = items.track_point_count();
  int accepted = 0;
  int first_log = 0;  // index of its point
  while (file.next()) {
    if (file.is_properties()) {
      if (name.empty()) file.set_text(name, 3);
      if (name == kOziUnnamedTrack) name = "";
      colour = colour_name_of(file.field(2));
      if (accepted > 0) items.start_segment();
      continue;
    }
    items.start_item();
    if (!file.set_position(items.CurrentItem, 0)) continue;
    items.CurrentItem.altitude = ozi_altitude(file.field(3), file.metres_per_altitude_unit());
    items.CurrentItem.time = ozi_time(file.field(4));
    const long long break_code = base::leading_integer(file.field(2));
    const bool starts_log = break_code == store::kStartsNamedTrack;
    if (starts_log) {
      items.start_track_log("", colour);
    } else if (break_code != 0 || accepted == 0) {
      items.start_segment();
    }
    if (items.push_track() != 0) break;
    ++accepted;
    if (starts_log && first_log == 0) first_log = items.track_point_count();
  }
  if (accepted > 0 && !name.empty()) name_track(context, first_log != 0 ? first_log : before + 1, name, colour);
  file.close();
  return accepted;
}

int read_ozi_events(const FileContext& context, base::TextInput& input, const std::string& file_name) {
  store::ItemStore& items = context.store;
  OziFile file(context, input, kOziEvents);
  if (!file.open(file_name)) return -1;
  int accepted = 0;
  while (file.next()) {
    items.start_item();
    if (!file.set_position(items.CurrentItem, 1)) continue;
    set_ozi_symbol(items.CurrentItem, base::parse_integer(file.field(3)), context.settings);
    items.CurrentItem.display_mode = 5;
    if (items.push_event() != 0) break;
    ++accepted;
  }
  file.close();
  return accepted;
}

}  // namespace formats

#include "lowrance/route_upload.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace lowrance {
namespace {

using base::format_text;

constexpr int kLargestNumber = 65535;  // of a waypoint in a record
constexpr int kNoPlace = -1;

bool is_digit(char letter) { return letter >= '0' && letter <= '9'; }

bool is_selected(const store::ItemRecord& item) { return item.in_use != 0 && item.selected != 0; }

}  // namespace

std::string unit_route_name(std::string_view name) {
  // Downloaded routes are called "R  03 HARBOUR", or "R  03" where the unit has no name for them.
  constexpr std::size_t kDigitsAt = 3;
  if (name.starts_with("R  ")) {
    const auto* const end = std::find_if_not(name.begin() + kDigitsAt, name.end(), is_digit);
    const auto digits = static_cast<std::size_t>(end - name.begin()) - kDigitsAt;
    if (digits >= 2 && (end == name.end() || *end == ' '))
      name.remove_prefix(std::min(kDigitsAt + digits + 1, name.size()));
  }
  std::string result(name);
  for (char& letter : result)
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  return result;
}

RouteUpload::RouteUpload(const Connection& connection, const store::ItemStore& items, base::Remarks& remarks,
                         base::Remarks& notes, const std::set<int>& not_sent)
    : connection_(connection), items_(items), remarks_(remarks), notes_(notes) {
  int place = 0;
  for (int i = 1; i <= items.waypoint_count(); ++i) {
    const store::ItemRecord waypoint = items.waypoint(i);
    if (waypoint.in_use == 0) continue;
    places_.try_emplace(waypoint.number, ++place);
    if (not_sent.contains(i)) not_sent_.insert(waypoint.number);
  }
}

void RouteUpload::SendLowrRoutes(int waypoint_start) {
  const int slots = std::max<int>(connection_.unit().NumOfRoutes, 0);
  const int points_per_route = std::max<int>(connection_.unit().NumOfWaypointsPerRoute, 0);
  connection_.front_end.set_progress_range(slots * points_per_route);
  for (int row = 0; row < store::kRouteCapacity; ++row) {
    const store::Route& route = items_.route(row);
    const bool is_wanted = route.header && is_selected(*route.header);
    if (row >= slots) {
      if (is_wanted) ++without_slot_;
      continue;
    }
    if (connection_.must_end(kAbortText)) break;
    connection_.front_end.write_progress(4, format_text("Processing Route %d", row));
    if (is_wanted) send(row, route, waypoint_start);
  }
  remark_left_out();
}

void RouteUpload::send(int row, const store::Route& route, int waypoint_start) {
  std::vector<store::ItemRecord> points;
  std::ranges::copy_if(route.points, std::back_inserter(points),
                       [](const store::ItemRecord& point) { return point.in_use != 0; });
  const std::optional<std::vector<std::uint16_t>> numbers = waypoint_numbers(row, points, waypoint_start);
  if (!numbers) return;
  const std::string name = unit_route_name(route.header->comment);
  if (name.size() > kNameSize) ++cut_names_;
  connection_.front_end.write_progress(4, format_text("Sending route point array for route %d", row));
  const RouteRecord record{static_cast<std::uint16_t>(row), static_cast<std::uint8_t>(numbers->size()), name, *numbers};
  const bool answered =
      connection_.link.ask(Command::SendRoute, write_route(record), "SendLowrRoutes") || connection_.port.esc_waits();
  if (!answered) ++silences_;
  ++sent_;
  connection_.front_end.write_progress(4, format_text("R%05d Sent", row));
}

std::optional<std::vector<std::uint16_t>> RouteUpload::waypoint_numbers(int row,
                                                                        const std::vector<store::ItemRecord>& points,
                                                                        int waypoint_start) {
  if (points.empty()) {
    ++empty_;
    return std::nullopt;
  }
  if (std::cmp_greater(points.size(), connection_.unit().NumOfWaypointsPerRoute)) {
    ++too_long_;
    return std::nullopt;
  }
  std::vector<std::uint16_t> numbers;
  for (const store::ItemRecord& point : points) {
    connection_.front_end.step_progress();
    const auto found = places_.find(point.number);
    const int place = found == places_.end() ? kNoPlace : found->second;
    const int number = place + waypoint_start - 2;
    // Deliberate : with waypoints that start at 3 or more a missing one is not noticed by its number.
    if (number < 0 || number > kLargestNumber) {
      const std::string name(point.ident);
      connection_.front_end.write_line(
          1, format_text("Waypoint '%s' missing in route. Route %d skipped.", name.c_str(), row + 1));
      ++lacking_;
      return std::nullopt;
    }
    if (not_sent_.contains(point.number)) {
      ++incomplete_;
      return std::nullopt;
    }
    if (place == kNoPlace) ++points_without_waypoint_;
    if (number >= connection_.unit().NumOfWaypoints) ++points_beyond_;
    numbers.push_back(static_cast<std::uint16_t>(number));
  }
  return numbers;
}

void RouteUpload::remark_left_out() {
  remarks_.add(silences_, "routes were not answered");
  notes_.add(cut_names_, "route names were cut to 13 letters");
  remarks_.add(without_slot_, "routes have a number above those of this unit and were not sent");
  remarks_.add(too_long_, "routes have more points than this unit takes and were not sent");
  remarks_.add(empty_, "routes without points were not sent");
  remarks_.add(lacking_, "routes with a missing waypoint were not sent");
  remarks_.add(incomplete_, "routes with a waypoint that could not be sent were not sent");
  remarks_.add(points_beyond_, "route points name slots behind the last of this unit");
  remarks_.add(points_without_waypoint_, "route points are no waypoint of the store and were sent with a wrong one");
  const int all = static_cast<int>(places_.size());
  const int selected = items_.selected_count('W');
  if (sent_ > 0 && selected < all)
    remarks_.add(format_text("routes count all waypoints, but only %d of %d were sent", selected, all));
}

}  // namespace lowrance

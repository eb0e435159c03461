// Routes of the store into a Lowrance/Eagle unit, which knows their points by the slots of its waypoints.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/remarks.h"
#include "lowrance/connection.h"
#include "lowrance/records.h"
#include "store/item_store.h"

namespace lowrance {

class RouteUpload {
 public:
  static constexpr std::string_view kAbortText = "Operator Abort in SendLowrRoutes";

  // All must outlive the upload. `not_sent`: the indices of waypoints that had to stay behind.
  RouteUpload(const Connection& connection, const store::ItemStore& items, base::Remarks& remarks, base::Remarks& notes,
              const std::set<int>& not_sent);

  // Sends each selected route to the slot of its number. The waypoints of the store stand in the unit from slot
  // `waypoint_start` (from 1) on, in their order. What was left out is added to the remarks, what was changed to the
  // notes.
  void SendLowrRoutes(int waypoint_start);

 private:
  void send(int row, const store::Route& route, int waypoint_start);
  // Nothing, after saying why, when the route cannot be sent.
  std::optional<std::vector<std::uint16_t>> waypoint_numbers(int row, const std::vector<store::ItemRecord>& points,
                                                             int waypoint_start);
  void remark_left_out();

  Connection connection_;
  const store::ItemStore& items_;
  base::Remarks& remarks_;
  base::Remarks& notes_;
  std::unordered_map<std::uint32_t, int> places_;  // of waypoints in the store's list, from 1, by serial number

  std::set<std::uint32_t> not_sent_;  // serial numbers of waypoints

  int sent_ = 0, silences_ = 0, cut_names_ = 0;
  int empty_ = 0, too_long_ = 0, lacking_ = 0, without_slot_ = 0, incomplete_ = 0;  // routes left out
  int points_without_waypoint_ = 0, points_beyond_ = 0;
};

// The name of a route as a unit takes it: in upper case, not cut. What a download has put in front of it is taken off.
[[nodiscard]] std::string unit_route_name(std::string_view name);

}  // namespace lowrance

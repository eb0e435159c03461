#include "simulators/lowrance_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <span>
#include <string_view>

namespace simulators {

namespace {

struct Spot {
  std::string_view name;
  LowrancePlace place;
  std::uint8_t symbol;
};

// Lake Tenkiller in eastern Oklahoma. Symbols above 14 are for units that have 28 of them.
constexpr std::array kSpots = std::to_array<Spot>({
    {"TENKDAM", {35.5964, -95.0490}, 0},        {"OVERLOOK", {35.5985, -95.0520}, 14},
    {"SPILLWAY", {35.5930, -95.0440}, 1},       {"STRAYHRN", {35.6160, -95.0560}, 13},
    {"STRAYHORNRAMP", {35.6148, -95.0532}, 26}, {"PINECOVE", {35.6042, -95.0301}, 6},
    {"COVECAFE", {35.6051, -95.0312}, 8},       {"CATOCRK", {35.6255, -95.0610}, 3},
    {"BRNTCABN", {35.6290, -95.0020}, 13},      {"BURNT CABIN", {35.6302, -95.0011}, 5},
    {"LINDERBD", {35.6420, -95.0250}, 11},      {"SNAKECRK", {35.6490, -94.9720}, 13},
    {"SNAKEDOC", {35.6478, -94.9745}, 6},       {"HUMPBACK", {35.6555, -95.0085}, 3},
    {"SIXSHOOT", {35.6610, -95.0120}, 4},       {"BASSHOLE", {35.6640, -94.9905}, 21},
    {"CRAPPIE", {35.6688, -94.9861}, 22},       {"CHKNCRK", {35.6820, -94.9620}, 13},
    {"CHICKENRAMP", {35.6812, -94.9641}, 26},   {"STUMPS", {35.6795, -94.9732}, 1},
    {"SUNKEN BARN", {35.6850, -94.9795}, 24},   {"SIZEMORE", {35.6925, -94.9890}, 14},
    {"COOKSON", {35.7085, -94.9560}, 6},        {"COOKSONSTORE", {35.7112, -94.9180}, 8},
    {"PHONE", {35.7105, -94.9205}, 7},          {"COOKBEND", {35.7050, -94.9660}, 13},
    {"STNDROCK", {35.7420, -94.9120}, 12},      {"ROCKBRDG", {35.7405, -94.9085}, 15},
    {"PETTBAY", {35.7545, -94.9440}, 13},       {"PETTRAMP", {35.7531, -94.9415}, 26},
    {"DEERSTND", {35.7610, -94.9580}, 16},      {"ELKCREEK", {35.7510, -94.9020}, 13},
    {"ELKFUEL", {35.7522, -94.9011}, 6},        {"LSTANCHR", {35.7655, -94.8985}, 25},
    {"SANDBAR", {35.7760, -94.8930}, 20},       {"CARTERS", {35.7930, -94.8910}, 10},
    {"HORSESHO", {35.8060, -94.8870}, 2},       {"RIVRMOUT", {35.8140, -94.8810}, 0},
    {"AIRSTRIP", {35.7210, -94.8890}, 9},       {"HOME", {35.6390, -95.0480}, 4},
});

// Along the old river from the dam to the head of the lake, and out of Cookson Bend and back.
constexpr std::array kUpTheLake = std::to_array<LowrancePlace>({
    {35.6000, -95.0450},
    {35.6250, -95.0400},
    {35.6440, -95.0110},
    {35.6650, -94.9900},
    {35.6900, -94.9680},
    {35.7100, -94.9500},
    {35.7350, -94.9250},
    {35.7550, -94.9080},
    {35.7800, -94.8920},
    {35.8000, -94.8880},
});
constexpr std::array kRoundTheBend = std::to_array<LowrancePlace>({
    {35.7052, -94.9648},
    {35.7010, -94.9720},
    {35.6930, -94.9770},
    {35.6860, -94.9730},
    {35.6890, -94.9660},
    {35.6980, -94.9600},
    {35.7070, -94.9570},
    {35.7052, -94.9648},
});

constexpr std::array kEvents = std::to_array<LowranceEvent>({
    {{35.6070, -95.0415}, 3},
    {{35.6215, -95.0382}, 1},
    {{35.6388, -95.0190}, 3},
    {{35.6521, -95.0003}, 21},
    {{35.6633, -94.9917}, 11},
    {{35.6702, -94.9850}, 3},
    {{35.6871, -94.9704}, 24},
    {{35.7018, -94.9592}, 13},
    {{35.7196, -94.9401}, 0},
    {{35.7401, -94.9192}, 6},
    {{35.7603, -94.9043}, 14},
    {{35.7884, -94.8903}, 27},
});

LowranceRoute route_through(std::string_view name, std::initializer_list<std::string_view> stops) {
  LowranceRoute route{.name = std::string(name), .waypoints = {}};
  for (const std::string_view stop : stops) {
    const auto spot = std::ranges::find(kSpots, stop, &Spot::name);
    if (spot != kSpots.end()) route.waypoints.push_back(static_cast<int>(spot - kSpots.begin()));
  }
  return route;
}

// Points spread evenly over the legs, with the wander of a boat that trolls.
std::vector<LowrancePlace> trail_along(std::span<const LowrancePlace> way) {
  constexpr std::size_t kPoints = 300;
  constexpr double kWanderDegrees = 0.0006;
  std::vector<LowrancePlace> trail;
  for (std::size_t i = 0; i < kPoints; ++i) {
    const double legs = static_cast<double>(way.size() - 1) * static_cast<double>(i) / (kPoints - 1);
    const std::size_t leg = std::min(static_cast<std::size_t>(legs), way.size() - 2);
    const double part = legs - static_cast<double>(leg);
    const double wander = kWanderDegrees * std::sin(4 * std::numbers::pi * part);
    trail.push_back({std::lerp(way[leg].latitude, way[leg + 1].latitude, part) + wander,
                     std::lerp(way[leg].longitude, way[leg + 1].longitude, part) - wander});
  }
  return trail;
}

}  // namespace

LowranceData believable_season() {
  constexpr std::uint32_t kFirstTrip = 292'401'000;    // 2001-04-07 06:30
  constexpr std::uint32_t kBetween = 259'200 + 1'740;  // seconds from one waypoint to the next: three days and a bit
  LowranceData data;
  for (const Spot& spot : kSpots) {
    const auto time = kFirstTrip + kBetween * static_cast<std::uint32_t>(data.waypoints.size());
    data.waypoints.push_back(
        {.name = std::string(spot.name), .place = spot.place, .symbol = spot.symbol, .time = time});
  }
  data.routes = {
      route_through("UP THE LAKE", {"TENKDAM", "PINECOVE", "LINDERBD", "HUMPBACK", "BASSHOLE", "STUMPS", "CHKNCRK",
                                    "COOKSON", "STNDROCK", "ELKCREEK", "SANDBAR", "CARTERS"}),
      route_through("CRAPPIE RUN", {"SNAKECRK", "BASSHOLE", "CRAPPIE", "STUMPS", "SUNKEN BARN"}),
      route_through("FUEL STOPS", {"STRAYHORNRAMP", "PINECOVE", "SNAKEDOC", "COOKSON", "ELKFUEL"}),
      route_through("HOMEWARD", {"RIVRMOUT", "ELKCREEK", "COOKBEND", "SIXSHOOT", "LINDERBD", "CATOCRK", "HOME"}),
  };
  data.events.assign(kEvents.begin(), kEvents.end());
  data.trails = {trail_along(kUpTheLake), trail_along(kRoundTheBend)};
  return data;
}

}  // namespace simulators

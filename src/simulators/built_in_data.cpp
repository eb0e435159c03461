#include "simulators/built_in_data.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <string_view>

namespace simulators {

namespace {

struct Place {
  std::string_view ident;
  double latitude;
  double longitude;
  float altitude;
  std::uint16_t symbol;
  std::string_view comment;
};

// Coniston in the English Lake District.
constexpr std::array kPlaces = std::to_array<Place>({
    {"CONVIL", 54.36910, -3.07570, 58, 8198, "CONISTON VILLAGE - SHOPS AND BUS"},
    {"WALNA", 54.37130, -3.09750, 225, 158, "WALNA SCAR ROAD CAR PARK"},
    {"GATE", 54.37020, -3.10120, 247, 175, "FELL GATE - PATH LEAVES THE ROAD"},
    {"MNRSBR", 54.37450, -3.08430, 95, 8233, "MINERS BRIDGE"},
    {"COPPER", 54.38030, -3.09370, 160, 173, "COPPERMINES HOSTEL"},
    {"LOWWTR", 54.37220, -3.11600, 545, 8231, "LOW WATER TARN"},
    {"OLDMAN", 54.37010, -3.11890, 803, 8246, "OLD MAN OF CONISTON"},
    {"BRIMFL", 54.37860, -3.12030, 796, 8246, "BRIM FELL"},
    {"GOATHS", 54.37600, -3.12700, 649, 8238, "GOATS HAUSE - PATHS MEET"},
    {"GOATSW", 54.37050, -3.12810, 502, 8231, "GOATS WATER"},
    {"DOWCRG", 54.37030, -3.13490, 778, 166, "DOW CRAG - STEEP EAST FACE"},
    {"COVEBR", 54.36350, -3.11640, 330, 8233, "COVE BRIDGE"},
    {"LEVERH", 54.38790, -3.12170, 685, 8238, "LEVERS HAUSE"},
    {"LEVERW", 54.38360, -3.11140, 411, 164, "LEVERS WATER DAM"},
    {"SWIRLH", 54.39570, -3.12040, 802, 8246, "SWIRL HOW"},
    {"SWHAUS", 54.39700, -3.11200, 615, 8238, "SWIRL HAUSE"},
    {"WETHLM", 54.40100, -3.09950, 763, 8246, "WETHERLAM"},
    {"GREYFR", 54.39680, -3.13660, 773, 8246, "GREY FRIAR"},
    {"CONPIE", 54.36600, -3.06650, 44, 190, "CONISTON PIER AND BOATING CENTRE"},
    {"CAMP", 54.36000, -3.06900, 46, 151, "CAMP - TENT BY THE WALL"},
    {"MNKCON", 54.37710, -3.05600, 45, 150, "MONK CONISTON - HEAD OF THE LAKE"},
    {"BRANTW", 54.35330, -3.05900, 44, 190, "BRANTWOOD JETTY"},
    {"MACHLS", 54.34620, -3.06750, 44, 160, "MACHELLS COPPICE LANDING"},
    {"FIRISL", 54.33950, -3.07880, 44, 8245, "FIR ISLAND"},
    {"TORVER", 54.33850, -3.08600, 44, 190, "TORVER JETTY"},
    {"PARKAM", 54.33000, -3.07900, 44, 163, "PARKAMOOR BEACH"},
    {"PEELIS", 54.32080, -3.08680, 44, 0, "PEEL ISLAND - SECRET HARBOUR"},
    {"BROWNH", 54.31700, -3.09150, 45, 158, "BROWN HOWE - PARKING AND SLIPWAY"},
    {"LAKFT", 54.29600, -3.08800, 44, 7, "FOOT OF THE LAKE - PIKE IN THE REEDS"},
    {"ALLANT", 54.28900, -3.08500, 43, 154, "ALLAN TARN - LAST TAKE-OUT"},
});

const Place& place(std::string_view ident) { return *std::ranges::find(kPlaces, ident, &Place::ident); }

SimWaypoint waypoint_at(const Place& from) {
  SimWaypoint waypoint;
  waypoint.ident = from.ident;
  waypoint.comment = from.comment;
  waypoint.latitude = from.latitude;
  waypoint.longitude = from.longitude;
  waypoint.altitude = from.altitude;
  waypoint.symbol = from.symbol;
  return waypoint;
}

using Idents = std::span<const std::string_view>;
constexpr std::array<std::string_view, 9> kOldMan{"WALNA",  "GATE",   "LOWWTR", "OLDMAN", "GOATHS",
                                                  "DOWCRG", "GOATSW", "COVEBR", "WALNA"};
constexpr std::array<std::string_view, 8> kHorseshoe{"CONVIL", "MNRSBR", "COPPER", "WETHLM",
                                                     "SWHAUS", "SWIRLH", "LEVERH", "LEVERW"};
constexpr std::array<std::string_view, 8> kPaddle{"CONPIE", "BRANTW", "MACHLS", "FIRISL",
                                                  "PARKAM", "PEELIS", "BROWNH", "LAKFT"};

SimRoute route_of(int number, std::string_view name, Idents idents) {
  SimRoute route{.number = number, .name = std::string(name), .points = {}, .links = {}};
  for (const std::string_view ident : idents) route.points.push_back(waypoint_at(place(ident)));
  return route;
}

struct Step {
  double latitude;
  double longitude;
  double altitude;
};

// The uniform Catmull-Rom curve from b (t = 0) to c (t = 1).
double curve(double a, double b, double c, double d, double t) {
  return 0.5 * (2 * b + (c - a) * t + (2 * a - 5 * b + 4 * c - d) * t * t + (3 * b - a - 3 * c + d) * t * t * t);
}

// Metres between neighbours; a plane is enough for so short a way.
double metres_between(const Step& from, const Step& to) {
  constexpr double kMetresPerDegree = 111195.0;
  const double east =
      (to.longitude - from.longitude) * std::cos(from.latitude * std::numbers::pi / 180.0) * kMetresPerDegree;
  const double north = (to.latitude - from.latitude) * kMetresPerDegree;
  return std::hypot(east, north);
}

// A smooth way through the places, in small steps, with the wander of a path or of a canoe in the wind.
std::vector<Step> smooth_way(Idents idents) {
  constexpr int kStepsALeg = 200;
  constexpr double kWanderDegrees = 0.00025;
  std::vector<Step> way;
  const std::size_t last = idents.size() - 1;
  for (std::size_t leg = 0; leg < last; ++leg) {
    const Place& a = place(idents[leg == 0 ? 0 : leg - 1]);
    const Place& b = place(idents[leg]);
    const Place& c = place(idents[leg + 1]);
    const Place& d = place(idents[std::min(leg + 2, last)]);
    for (int i = 0; i < kStepsALeg; ++i) {
      const double t = static_cast<double>(i) / kStepsALeg;
      const double wander = kWanderDegrees * std::sin(6 * std::numbers::pi * t) * (1 - t);
      way.push_back({curve(a.latitude, b.latitude, c.latitude, d.latitude, t) + wander,
                     curve(a.longitude, b.longitude, c.longitude, d.longitude, t) - wander,
                     curve(a.altitude, b.altitude, c.altitude, d.altitude, t)});
    }
  }
  const Place& end = place(idents.back());
  way.push_back({end.latitude, end.longitude, end.altitude});
  return way;
}

// Where the way has led after `metres`; `travelled` holds the metres up to each of its steps.
Step step_at(std::span<const Step> way, std::span<const double> travelled, double metres) {
  const std::span<const double> inner = travelled.subspan(1, travelled.size() - 2);
  const auto index = static_cast<std::size_t>(std::ranges::lower_bound(inner, metres) - inner.begin()) + 1;
  const double part = (metres - travelled[index - 1]) / (travelled[index] - travelled[index - 1]);
  const Step& from = way[index - 1];
  const Step& to = way[index];
  return {std::lerp(from.latitude, to.latitude, part), std::lerp(from.longitude, to.longitude, part),
          std::lerp(from.altitude, to.altitude, part)};
}

// Points at equal distances along the way, timed at `speed` metres a second on the level and slower on slopes.
SimTrack track_along(std::string_view name, std::uint8_t colour, Idents idents, std::uint32_t start, double speed) {
  constexpr std::size_t kPoints = 500;
  const std::vector<Step> way = smooth_way(idents);
  std::vector<double> travelled{0};
  for (std::size_t i = 1; i < way.size(); ++i) {
    travelled.push_back(travelled.back() + metres_between(way[i - 1], way[i]));
  }
  SimTrack track{.name = std::string(name), .colour = colour, .points = {}};
  const double stride = travelled.back() / (kPoints - 1);
  double seconds = 0;
  double altitude_before = way.front().altitude;
  for (std::size_t i = 0; i < kPoints; ++i) {
    const Step at = step_at(way, travelled, stride * static_cast<double>(i));
    const double slope = std::abs(at.altitude - altitude_before) / stride;
    if (i > 0) seconds += stride / speed * (1 + 2 * slope);
    altitude_before = at.altitude;
    const double receiver_error = 1.5 * std::sin(static_cast<double>(i) / 17.0);
    track.points.push_back({.latitude = at.latitude,
                            .longitude = at.longitude,
                            .time = start + static_cast<std::uint32_t>(std::lround(seconds)),
                            .altitude = static_cast<float>(std::round((at.altitude + receiver_error) * 2) / 2),
                            .depth = std::nullopt,
                            .starts_segment = i == 0});
  }
  return track;
}

SimWaypoint proximity_at(std::string_view ident, float metres) {
  SimWaypoint waypoint = waypoint_at(place(ident));
  waypoint.proximity = metres;
  return waypoint;
}

// 28 satellites, spread over six planes as the real ones are, with the small irregularities that orbits have.
SimAlmanac believable_almanac() {
  constexpr std::array kMissing{12, 16, 19, 32};  // PRN numbers
  constexpr int kUnusable = 15;
  constexpr int kPlanes = 6;
  constexpr double kDegree = std::numbers::pi / 180.0;
  const auto angle = [](double degrees) { return static_cast<float>(std::remainder(degrees, 360.0) * kDegree); };
  SimAlmanac almanac;
  int count = 0;
  for (int prn = 1; prn <= static_cast<int>(almanac.size()); ++prn) {
    if (std::ranges::find(kMissing, prn) != kMissing.end()) continue;
    const int plane = count % kPlanes;
    const int slot = count / kPlanes;
    ++count;
    const double wobble = std::sin(7.0 * prn);  // -1 to 1
    const double perigee = 37.0 * prn;
    almanac[static_cast<std::size_t>(prn - 1)] = SimSatellite{
        .week = 92,  // that of the weekend
        .time_of_applicability = 405504,
        .af0 = static_cast<float>(3e-4 * wobble),
        .af1 = static_cast<float>(3.6e-12 * std::round(3 * wobble)),
        .eccentricity = static_cast<float>(0.009 + 0.007 * wobble),
        .sqrt_semi_major_axis = static_cast<float>(5153.6 + 0.05 * wobble),
        .mean_anomaly = angle(72.0 * slot + 28.0 * plane - perigee),
        .argument_of_perigee = angle(perigee),
        .right_ascension = angle(15.0 + 60.0 * plane + wobble),
        .rate_of_right_ascension = static_cast<float>(-7.9e-9 + 2e-10 * wobble),
        .inclination = static_cast<float>((55.0 + wobble) * kDegree),
        .health = prn == kUnusable ? std::uint8_t{63} : std::uint8_t{0},
    };
  }
  return almanac;
}

}  // namespace

SimulatedData believable_weekend() {
  constexpr std::uint32_t kSaturdayMorning = 360401400;  // 2001-06-02 07:30:00 UTC
  constexpr std::uint32_t kSundayMorning = 360490500;    // 2001-06-03 08:15:00 UTC
  constexpr std::uint8_t kRed = 9;
  constexpr std::uint8_t kBlue = 12;
  SimulatedData data;
  for (const Place& each : kPlaces) data.waypoints.push_back(waypoint_at(each));
  data.routes = {route_of(1, "OLD MAN ROUND", kOldMan), route_of(2, "WETHERLAM", kHorseshoe),
                 route_of(3, "DOWN THE LAKE", kPaddle)};
  data.tracks = {track_along("SATURDAY FELLS", kRed, kOldMan, kSaturdayMorning, 1.1),
                 track_along("SUNDAY CANOE", kBlue, kPaddle, kSundayMorning, 1.3)};
  data.proximity = {proximity_at("DOWCRG", 150), proximity_at("LEVERW", 100), proximity_at("PEELIS", 200)};
  data.almanac = believable_almanac();
  return data;
}

}  // namespace simulators

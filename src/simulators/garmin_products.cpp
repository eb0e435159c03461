#include "simulators/garmin_products.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "base/text.h"
#include "simulators/garmin_records.h"

namespace simulators {

namespace {

// After the maker's published list of products without a capability array. Their route points have the format
// of their waypoints, and the link decides the commands.
struct ProductRow {
  std::uint16_t product_id;
  int version_limit;  // n: version n and later (any version in a product's first row); -n: before version n
  int link;
  int waypoint_data;
  int route_header;
  int track_data;
  int proximity_data;
  int almanac_data;
};

constexpr std::array kProducts = std::to_array<ProductRow>({
    {7, 0, 1, 100, 200, 0, 0, 500},         {13, 0, 1, 100, 200, 300, 400, 500},
    {14, 0, 1, 100, 200, 0, 400, 500},      {15, 0, 1, 151, 200, 0, 151, 500},
    {18, 0, 1, 100, 200, 300, 400, 500},    {20, 0, 2, 150, 201, 0, 450, 550},
    {22, 0, 1, 152, 200, 300, 152, 500},    {23, 0, 1, 100, 200, 300, 400, 500},
    {24, 0, 1, 100, 200, 300, 400, 500},    {25, 0, 1, 100, 200, 300, 400, 500},
    {29, -400, 1, 101, 201, 300, 101, 500}, {29, 400, 1, 102, 200, 300, 102, 500},
    {31, 0, 1, 100, 201, 300, 0, 500},      {33, 0, 2, 150, 201, 0, 450, 550},
    {34, 0, 2, 150, 201, 0, 450, 550},      {35, 0, 1, 100, 200, 300, 400, 500},
    {36, -300, 1, 152, 200, 300, 152, 500}, {36, 300, 1, 152, 200, 300, 0, 500},
    {39, 0, 1, 151, 201, 300, 0, 500},      {41, 0, 1, 100, 201, 300, 0, 500},
    {42, 0, 1, 100, 200, 300, 400, 500},    {44, 0, 1, 101, 201, 300, 101, 500},
    {45, 0, 1, 152, 201, 300, 0, 500},      {47, 0, 1, 100, 201, 300, 0, 500},
    {48, 0, 1, 154, 201, 300, 0, 501},      {49, 0, 1, 102, 201, 300, 102, 501},
    {50, 0, 1, 152, 201, 300, 0, 501},      {52, 0, 2, 150, 201, 0, 450, 550},
    {53, 0, 1, 152, 201, 300, 0, 501},      {55, 0, 1, 100, 201, 300, 0, 500},
    {56, 0, 1, 100, 201, 300, 0, 500},      {59, 0, 1, 100, 201, 300, 0, 500},
    {61, 0, 1, 100, 201, 300, 0, 500},      {62, 0, 1, 100, 201, 300, 0, 500},
    {64, 0, 2, 150, 201, 0, 450, 551},      {71, 0, 1, 155, 201, 300, 0, 501},
    {72, 0, 1, 104, 201, 300, 0, 501},      {73, 0, 1, 103, 201, 300, 0, 501},
    {74, 0, 1, 100, 201, 300, 0, 500},      {76, 0, 1, 102, 201, 300, 102, 501},
    {77, -301, 1, 100, 201, 300, 400, 501}, {77, -350, 1, 103, 201, 300, 403, 501},
    {77, -361, 1, 103, 201, 300, 0, 501},   {77, 361, 1, 103, 201, 300, 403, 501},
    {87, 0, 1, 103, 201, 300, 403, 501},    {88, 0, 1, 102, 201, 300, 102, 501},
    {95, 0, 1, 103, 201, 300, 403, 501},    {96, 0, 1, 103, 201, 300, 403, 501},
    {97, 0, 1, 103, 201, 300, 0, 501},      {98, 0, 2, 150, 201, 0, 450, 551},
    {100, 0, 1, 103, 201, 300, 403, 501},   {105, 0, 1, 103, 201, 300, 403, 501},
    {106, 0, 1, 103, 201, 300, 403, 501},   {112, 0, 1, 152, 201, 300, 0, 501},
});
static_assert(std::ranges::is_sorted(kProducts, {}, &ProductRow::product_id));

// Products known to send an array, as far as they differ from kRichSet.
struct ArrayProduct {
  std::uint16_t product_id;
  std::int16_t from_version;
  std::string_view protocols;
};

constexpr std::string_view kRichSet =
    "P000 L001 A010 A100 D108 A201 D202 D108 D210 A301 D310 D301 A400 D108 A500 D501 A600 D600 A700 D700 "
    "A800 D800";
constexpr std::string_view kHandheldSet =
    "P000 L001 A010 A100 D108 A201 D202 D108 D210 A301 D310 D301 A500 D501 A600 D600 A700 D700 A800 D800";
constexpr std::string_view kMarineSet =
    "P000 L001 A010 A100 D109 A201 D202 D109 D210 A301 D310 D301 A400 D109 A500 D501 A600 D600 A700 D700 "
    "A800 D800";
constexpr std::string_view kRoadSet =
    "P000 L001 A010 A100 D109 A201 D202 D109 D210 A301 D310 D301 A500 D501 A600 D600 A700 D700 A800 D800";
constexpr std::string_view kColourSet =
    "P000 L001 A010 A100 D107 A200 D201 D107 A300 D300 A400 D107 A500 D501 A600 D600 A700 D700 A800 D800";
constexpr std::string_view kMapSet =
    "P000 L001 A010 A100 D104 A200 D201 D104 A300 D300 A500 D501 A600 D600 A700 D700 A800 D800";

// A product's later software stands before its earlier.
constexpr std::array kArrayProducts = std::to_array<ArrayProduct>({
    {111, 270, kMarineSet},
    {116, 0, kColourSet},
    {119, 0, kMapSet},
    {126, 0, kMarineSet},
    {129, 0, kMapSet},
    {130, 0, kHandheldSet},
    {136, 0, kRoadSet},
    {141, 0, kHandheldSet},
    {151, 0, kRoadSet},
    {154, 0, kHandheldSet},
    {155, 0, kMarineSet},
    {156, 0, kHandheldSet},
    {169, 0, kHandheldSet},
    {173, 0, kMarineSet},
    {177, 0, kMarineSet},
    {179, 0, kHandheldSet},
});

using Field = int GarminCapabilities::*;
struct DataFormat {
  Field field = nullptr;
  bool (*can_send)(int format) = nullptr;
};
// A transfer protocol and the data formats that follow it in an array.
struct TransferEntry {
  int protocol;
  Field transfer;
  std::array<DataFormat, 3> formats;
};

template <int Format>
bool is(int format) {
  return format == Format;
}
bool is_named_track_header(int format) { return format == 310 || format == 312; }

using C = GarminCapabilities;
constexpr std::array kTransfers = std::to_array<TransferEntry>({
    {100, &C::waypoint_transfer, {{{&C::waypoint_data, is_waypoint_format}}}},
    {200, &C::route_transfer, {{{&C::route_header, is_route_header_format}, {&C::route_waypoint, is_waypoint_format}}}},
    {201,
     &C::route_transfer,
     {{{&C::route_header, is_route_header_format},
       {&C::route_waypoint, is_waypoint_format},
       {&C::route_link, is<210>}}}},
    {300, &C::track_transfer, {{{&C::track_data, is_track_point_format}}}},
    {301, &C::track_transfer, {{{&C::track_header, is_named_track_header}, {&C::track_data, is_track_point_format}}}},
    {302, &C::track_transfer, {{{&C::track_header, is<311>}, {&C::track_data, is_track_point_format}}}},
    {400, &C::proximity_transfer, {{{&C::proximity_data, is_proximity_format}}}},
    {500, &C::almanac_transfer, {{{&C::almanac_data, is_almanac_format}}}},
    {600, &C::date_time_transfer, {{{&C::date_time_data, is<600>}}}},
    {700, &C::position_transfer, {{{&C::position_data, is<700>}}}},
    {800, &C::pvt_transfer, {{{&C::pvt_data, is<800>}}}},
});

struct ArrayEntry {
  char tag;
  int number;
};

std::optional<ArrayEntry> parse_entry(std::string_view word) {
  if (word.size() < 2 || word.size() > 6) return std::nullopt;
  if (std::string_view("ADLPT").find(word[0]) == std::string_view::npos) return std::nullopt;
  if (!std::all_of(word.begin() + 1, word.end(), [](char c) { return c >= '0' && c <= '9'; })) return std::nullopt;
  const auto number = base::parse_integer(word.substr(1));
  if (!number || *number > 0xFFFF) return std::nullopt;
  return ArrayEntry{word[0], static_cast<int>(*number)};
}

// Takes over what the entry at the front of `entries` says; the reason in words where the receiver cannot do that.
std::string apply_entry(std::span<const ArrayEntry> entries, GarminCapabilities& capabilities) {
  const auto [tag, number] = entries.front();
  if (tag == 'L') {
    if (number != 1 && number != 2) return base::format_text("L%03d: the link is L001 or L002", number);
    capabilities.link = number;
  }
  if (tag != 'A') return {};
  if (number >= 10 && number <= 99) {
    if (number != 10 && number != 11) return base::format_text("A%03d: the commands are A010 or A011", number);
    capabilities.command = number;
  }
  const auto transfer = std::ranges::find(kTransfers, number, &TransferEntry::protocol);
  if (transfer == kTransfers.end()) return {};
  capabilities.*transfer->transfer = number;
  for (std::size_t i = 0; i < transfer->formats.size() && transfer->formats[i].field != nullptr; ++i) {
    if (i + 1 >= entries.size() || entries[i + 1].tag != 'D') {
      return base::format_text("A%03d needs %s data format after it", number, i == 0 ? "a" : "one more");
    }
    const int format = entries[i + 1].number;
    if (!transfer->formats[i].can_send(format)) {
      return base::format_text("D%03d is no format that the simulated receiver can send at this place of A%03d", format,
                               number);
    }
    capabilities.*transfer->formats[i].field = format;
  }
  return {};
}

}  // namespace

std::optional<GarminCapabilities> capabilities_from_table(std::uint16_t product_id, std::int16_t software_version) {
  const auto first = std::ranges::find(kProducts, product_id, &ProductRow::product_id);
  const auto row = std::find_if(first, kProducts.end(), [&](const ProductRow& candidate) {
    const int limit = candidate.version_limit;
    if (candidate.product_id != product_id) return false;
    if (limit < 0) return software_version < -limit;
    return &candidate == &*first || software_version >= limit;
  });
  if (row == kProducts.end()) return std::nullopt;
  GarminCapabilities result{.link = row->link, .command = row->link == 1 ? 10 : 11};
  result.waypoint_transfer = 100;
  result.waypoint_data = row->waypoint_data;
  result.route_transfer = 200;
  result.route_header = row->route_header;
  result.route_waypoint = row->waypoint_data;
  result.track_transfer = row->track_data == 0 ? 0 : 300;
  result.track_data = row->track_data;
  result.proximity_transfer = row->proximity_data == 0 ? 0 : 400;
  result.proximity_data = row->proximity_data;
  result.almanac_transfer = 500;
  result.almanac_data = row->almanac_data;
  result.date_time_transfer = 600;
  result.date_time_data = 600;
  result.position_transfer = 700;
  result.position_data = 700;
  return result;
}

std::string_view usual_protocols(std::uint16_t product_id, std::int16_t software_version) {
  if (std::ranges::binary_search(kProducts, product_id, {}, &ProductRow::product_id)) return {};
  const auto product = std::ranges::find_if(kArrayProducts, [&](const ArrayProduct& candidate) {
    return candidate.product_id == product_id && software_version >= candidate.from_version;
  });
  return product == kArrayProducts.end() ? kRichSet : product->protocols;
}

std::optional<CapabilityArray> parse_protocols(std::string_view text, std::string& problem) {
  constexpr std::size_t kMostEntries = 255 / 3;
  std::vector<ArrayEntry> entries;
  for (const std::string_view word : base::split_words(text)) {
    const std::optional<ArrayEntry> entry = parse_entry(word);
    if (!entry) {
      problem = "\"" + std::string(word) + "\" is no protocol: write A, D, L, P or T and a number, such as D108";
      return std::nullopt;
    }
    entries.push_back(*entry);
  }
  if (entries.empty() || entries.size() > kMostEntries) {
    problem = "A capability array has 1 to " + std::to_string(kMostEntries) + " entries, not " +
              std::to_string(entries.size());
    return std::nullopt;
  }
  CapabilityArray result;
  base::ByteWriter out;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    problem = apply_entry(std::span(entries).subspan(i), result.capabilities);
    if (!problem.empty()) return std::nullopt;
    out.u8(static_cast<std::uint8_t>(entries[i].tag)).u16(static_cast<std::uint16_t>(entries[i].number));
  }
  result.data = out.result();
  return result;
}

}  // namespace simulators

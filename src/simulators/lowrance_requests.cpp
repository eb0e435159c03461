#include "simulators/lowrance_requests.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "simulators/big_endian.h"

namespace simulators {

namespace {

constexpr std::size_t kWaypointSize = 29, kRouteSize = 16, kIconSize = 11, kTrailOriginSize = 11;
constexpr std::size_t kMostDeltas = 40, kDeltaSize = 4, kDeltaBlockHead = 3;
constexpr std::size_t kMostBytes = 160;  // of memory at once
constexpr std::uint32_t kRunTime = 1'234'567;

// The answer to whatever stores something.
std::optional<base::Bytes> taken() { return base::Bytes{}; }

std::optional<base::Bytes> record_of(const std::vector<base::Bytes>& records, std::span<const std::uint8_t> number) {
  const std::size_t index = base::ByteReader(number).u16();
  if (index >= records.size()) return std::nullopt;
  return records[index];
}

void keep_record(std::vector<base::Bytes>& records, std::span<const std::uint8_t> record) {
  const std::size_t index = base::ByteReader(record).u16();
  if (index < records.size()) records[index].assign(record.begin(), record.end());
}

// What a stretch of memory at `address` gives to one that was asked for; both end long before the numbers do.
void copy_overlap(base::Bytes& wanted, std::uint64_t wanted_address, std::span<const std::uint8_t> held,
                  std::uint64_t held_address) {
  const std::uint64_t from = std::max(wanted_address, held_address);
  const std::uint64_t to = std::min(wanted_address + wanted.size(), held_address + held.size());
  for (std::uint64_t at = from; at < to; ++at) {
    wanted[static_cast<std::size_t>(at - wanted_address)] = held[static_cast<std::size_t>(at - held_address)];
  }
}

// Whether the header of a trail area at `address` names places in the area's ring, or 0 for none.
bool has_possible_header(std::span<const std::uint8_t> area, std::uint32_t address) {
  const std::size_t ring_size = area.size() - kTrailHeaderSize - kTrailEndSize;
  const auto is_possible = [&](std::uint32_t place, std::size_t last) {
    const std::uint32_t offset = place - address - static_cast<std::uint32_t>(kTrailHeaderSize);
    return place == 0 || (offset <= last && offset % kDeltaSize == 0);
  };
  return is_possible(big_endian(area.subspan(8, 4)), ring_size - kDeltaSize) &&
         is_possible(big_endian(area.subspan(12, 4)), ring_size);
}

}  // namespace

struct LowranceRequests::Request {
  std::uint16_t command;
  std::size_t least, most;  // bytes of data
  Answer (LowranceRequests::*answer)(Data data);
  bool before_login = false;
  bool while_frozen = false;
};

std::span<const LowranceRequests::Request> LowranceRequests::requests() {
  using Self = LowranceRequests;
  static constexpr std::array kRequests = std::to_array<Request>({
      {0x0008, 7, 7, &Self::read_memory, false, true},
      {0x0009, 4 + 1, 4 + kMostBytes, &Self::write_memory},
      {0x000D, 0, 0, &Self::log_in, true, true},
      {0x0301, 0, 0, &Self::freeze_screen, false, true},  // again: the host may have missed the answer
      {0x0302, 0, 0, &Self::unfreeze_screen, false, true},
      {0x0303, 2, 2, &Self::get_waypoint},
      {0x0304, kWaypointSize, kWaypointSize, &Self::keep_waypoint},
      {0x0305, 2, 2, &Self::get_route},
      {0x0306, kRouteSize, kLongestRequest, &Self::keep_route},
      {0x0307, 1, 1, &Self::point_to_trail},
      {0x0308, 0, 0, &Self::count_icons},
      {0x0309, 2, 2, &Self::get_icon},
      {0x030A, 2, 2, &Self::set_icon_count},
      {0x030B, kIconSize, kIconSize, &Self::keep_icon},
      {0x030C, 0, 0, &Self::count_symbols},
      {0x030E, 0, 0, &Self::tell_what_it_is, true, true},
      {0x0312, 1, 1, &Self::start_sending_trail},
      {0x0313, 3, 3, &Self::send_deltas},
      {0x0314, kTrailOriginSize, kTrailOriginSize, &Self::start_taking_trail},
      {0x0315, kDeltaBlockHead, kDeltaBlockHead + kMostDeltas * kDeltaSize, &Self::take_deltas},
  });
  return kRequests;
}

LowranceRequests::LowranceRequests(const LowranceUnit& unit, LowranceMemory memory)
    : unit_(unit), memory_(std::move(memory)), planes_(lowrance_planes(unit)), transfers_(memory_.trails.size()) {}

const LowranceRequests::Request* LowranceRequests::row_of(const LowranceMessage& request) const {
  const std::span<const Request> all = requests();
  const auto row = std::ranges::find(all, request.command, &Request::command);
  if (row == all.end() || request.data.size() < row->least || request.data.size() > row->most) return nullptr;
  if ((!logged_in_ && !row->before_login) || (frozen_ && !row->while_frozen)) return nullptr;
  return &*row;
}

std::optional<base::Bytes> LowranceRequests::answer(const LowranceMessage& request) {
  const Request* row = row_of(request);
  if (row == nullptr) return std::nullopt;
  Answer answer = (this->*row->answer)(request.data);
  if (answer) answer->insert(answer->begin(), 0);
  return answer;
}

LowranceRequests::Answer LowranceRequests::log_in(Data) {
  logged_in_ = true;
  return base::Bytes{1};
}

LowranceRequests::Answer LowranceRequests::tell_what_it_is(Data) {
  base::ByteWriter out;
  out.u16(unit_.product_id).i16(unit_.protocol_version).i16(unit_.screen_type);
  out.i16(unit_.screen_width).i16(unit_.screen_height);
  out.i16(unit_.waypoints).i16(unit_.icons).i16(unit_.routes).i16(unit_.waypoints_per_route);
  out.u8(unit_.trails).u8(unit_.symbols);
  out.u8(static_cast<std::uint8_t>(unit_.rotate_angle));  // deliberate : of 270 the low byte, as the field is one byte
  return out.u32(kRunTime).result();
}

// Where nothing is, zeros are.
LowranceRequests::Answer LowranceRequests::read_memory(Data data) {
  base::ByteReader in(data);
  const std::uint32_t address = in.u32();
  const std::size_t count = in.u16();
  const std::uint8_t cartridge = in.u8();
  if (count > kMostBytes || cartridge != 0) return std::nullopt;
  base::Bytes bytes(count);
  for (std::size_t trail = 0; trail < memory_.areas.size(); ++trail) {
    copy_overlap(bytes, address, memory_.areas[trail], area_address(trail));
  }
  copy_overlap(bytes, address, planes_.black, kBlackPlane);
  copy_overlap(bytes, address, planes_.grey, kGreyPlane);
  return bytes;
}

// Only the trails can be written, and one by one.
LowranceRequests::Answer LowranceRequests::write_memory(Data data) {
  const std::uint32_t address = base::ByteReader(data).u32();
  const Data bytes = data.subspan(4);
  for (std::size_t trail = 0; trail < memory_.areas.size(); ++trail) {
    const std::uint32_t start = area_address(trail);
    if (address < start || address - start + bytes.size() > memory_.areas[trail].size()) continue;
    base::Bytes area = memory_.areas[trail];
    std::ranges::copy(bytes, area.begin() + static_cast<std::ptrdiff_t>(address - start));
    if (!has_possible_header(area, start)) return std::nullopt;
    memory_.areas[trail] = std::move(area);
    return taken();
  }
  return std::nullopt;
}

LowranceRequests::Answer LowranceRequests::freeze_screen(Data) {
  frozen_ = true;
  base::ByteWriter out;
  out.i16(unit_.row_length).u16(static_cast<std::uint16_t>(lowrance_plane_rows(unit_)));
  out.u32(kBlackPlane).u16(static_cast<std::uint16_t>(planes_.black.size()));
  out.u32(planes_.grey.empty() ? 0 : kGreyPlane).u16(static_cast<std::uint16_t>(planes_.grey.size()));
  return out.result();
}

LowranceRequests::Answer LowranceRequests::unfreeze_screen(Data) {
  frozen_ = false;
  return taken();
}

LowranceRequests::Answer LowranceRequests::get_waypoint(Data data) { return record_of(memory_.waypoints, data); }

LowranceRequests::Answer LowranceRequests::keep_waypoint(Data data) {
  const std::uint8_t status = data[2], symbol = data[3];
  if (status > 1 || symbol >= unit_.symbols) return std::nullopt;
  keep_record(memory_.waypoints, data);
  return taken();
}

LowranceRequests::Answer LowranceRequests::get_route(Data data) { return record_of(memory_.routes, data); }

LowranceRequests::Answer LowranceRequests::keep_route(Data data) {
  const std::size_t points = data[2];
  if (points == 0 || points > static_cast<std::size_t>(unit_.waypoints_per_route)) return std::nullopt;
  if (data.size() != kRouteSize + 2 * points) return std::nullopt;
  for (base::ByteReader slots(data.subspan(kRouteSize)); slots.remaining() > 0;) {
    if (slots.u16() >= memory_.waypoints.size()) return std::nullopt;
  }
  keep_record(memory_.routes, data);
  return taken();
}

LowranceRequests::Answer LowranceRequests::get_icon(Data data) { return record_of(memory_.icons, data); }

LowranceRequests::Answer LowranceRequests::keep_icon(Data data) {
  const std::uint8_t symbol = data[10];
  if (symbol >= unit_.symbols) return std::nullopt;
  keep_record(memory_.icons, data);
  return taken();
}

LowranceRequests::Answer LowranceRequests::count_icons(Data) {
  return base::ByteWriter().u16(static_cast<std::uint16_t>(memory_.icons.size())).result();
}

// Those beyond the count are forgotten, new ones have nothing but their number yet.
LowranceRequests::Answer LowranceRequests::set_icon_count(Data data) {
  const std::size_t count = base::ByteReader(data).u16();
  const std::size_t old_count = memory_.icons.size();
  memory_.icons.resize(std::min(count, static_cast<std::size_t>(unit_.icons)));
  for (std::size_t i = old_count; i < memory_.icons.size(); ++i) {
    memory_.icons[i] = base::ByteWriter().u16(static_cast<std::uint16_t>(i)).result();
    memory_.icons[i].resize(kIconSize);
  }
  return taken();
}

LowranceRequests::Answer LowranceRequests::count_symbols(Data) {
  return base::ByteWriter().u16(unit_.symbols).result();
}

LowranceRequests::Answer LowranceRequests::point_to_trail(Data data) {
  const std::size_t trail = data[0];
  if (trail >= memory_.areas.size()) return std::nullopt;
  base::Bytes pointer{data[0]};
  append_big_endian(pointer, area_address(trail), 4);
  append_big_endian(pointer, static_cast<std::uint32_t>(memory_.areas[trail].size()), 2);
  return pointer;
}

LowranceRequests::Answer LowranceRequests::start_sending_trail(Data data) {
  const std::size_t index = data[0];
  if (index >= memory_.trails.size()) return std::nullopt;
  const LowranceTrail& trail = memory_.trails[index];
  transfers_[index].next_sent = 0;
  base::ByteWriter out;
  out.u8(data[0]).i32(trail.y).i32(trail.x).u16(static_cast<std::uint16_t>(trail.deltas.size()));
  return out.result();
}

// A repetition gives the next block too: the unit cannot know that its answer was lost.
LowranceRequests::Answer LowranceRequests::send_deltas(Data data) {
  base::ByteReader in(data);
  const std::uint8_t index = in.u8();
  const std::size_t wanted = in.u16();
  if (index >= memory_.trails.size() || wanted > kMostDeltas) return std::nullopt;
  const auto& deltas = memory_.trails[index].deltas;
  std::size_t& next = transfers_[index].next_sent;
  const std::size_t count = std::min(wanted, deltas.size() - next);
  base::ByteWriter out;
  out.u8(index).u16(static_cast<std::uint16_t>(count));
  for (std::size_t i = next; i < next + count; ++i) out.i16(deltas[i].first).i16(deltas[i].second);
  next += count;
  return out.result();
}

// However many are announced: those beyond its room may never come.
LowranceRequests::Answer LowranceRequests::start_taking_trail(Data data) {
  base::ByteReader in(data);
  const std::size_t index = in.u8();
  if (index >= memory_.trails.size()) return std::nullopt;
  LowranceTrail trail;
  trail.y = in.i32();
  trail.x = in.i32();
  memory_.trails[index] = trail;
  transfers_[index] = {.announced = in.u16()};
  return taken();
}

LowranceRequests::Answer LowranceRequests::take_deltas(Data data) {
  base::ByteReader in(data);
  const std::size_t index = in.u8();
  const std::size_t count = in.u16();
  if (index >= memory_.trails.size() || in.remaining() != count * kDeltaSize) return std::nullopt;
  auto& deltas = memory_.trails[index].deltas;
  const std::size_t all = deltas.size() + count;
  const std::size_t room = static_cast<std::size_t>(unit_.trail_capacity) - 1;  // behind the first point
  if (all > transfers_[index].announced || all > room) return std::nullopt;
  for (std::size_t i = 0; i < count; ++i) {
    const std::int16_t y = in.i16();
    const std::int16_t x = in.i16();
    deltas.emplace_back(y, x);
  }
  return taken();
}

std::uint32_t LowranceRequests::area_address(std::size_t trail) const {
  std::uint32_t address = kTrailAreas;
  for (std::size_t i = 0; i < trail; ++i) address += static_cast<std::uint32_t>(memory_.areas[i].size());
  return address;
}

}  // namespace simulators

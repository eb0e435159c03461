// Whole conversations with a Lowrance/Eagle unit that answers what it likes: nothing may crash, hang, or leave the port
// open or an impossible record in the stores.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

#include "fuzz/fuzz_reader.h"
#include "lowrance/downloads.h"
#include "lowrance/screen.h"
#include "lowrance/uploads.h"
#include "tests/support/scripted_device.h"

namespace {

using base::Bytes;
using base::ByteWriter;
using lowrance::Command;

class Unit {
 public:
  Unit(FuzzedDataProvider& choices, support::ScriptedDevice& device) : choices_(choices), device_(device) {}

  // What it does after the program has sent a header, or data.
  void hear(const Bytes& bytes) {
    if (silent_) return;
    const bool is_header = bytes.size() == lowrance::kHeaderSize && bytes[0] == lowrance::kStart1;
    if (is_header) {
      base::ByteReader in(std::span(bytes).subspan(2));
      command_ = static_cast<Command>(in.u16());
      if (in.u16() > 0) return;  // its data come next
      answer({});
    } else {
      answer(bytes);
    }
  }

 private:
  void answer(const Bytes& request) {
    Bytes data;
    switch (command_) {
      case Command::GetUnitInfo:
        data = unit_info();
        break;
      case Command::GetWaypoint:
        data = record(request, 2, 30);
        break;
      case Command::GetRoute:
        data = route(request);
        break;
      case Command::GetIcon:
        data = record(request, 2, 12);
        break;
      case Command::GetTrailOrigin:
        data = record(request, 1, 12);
        data[11] &= 1;  // 511 deltas at most: more take long and show no more
        break;
      case Command::GetTrailDeltas:
        data = deltas(request);
        break;
      case Command::GetTrailPointer:
        data = trail_pointer(request);
        break;
      case Command::ReadMemory:
        data = memory(request);
        break;
      case Command::ScreenParameters:
        data = screen();
        break;
      default:
        data = choices_.ConsumeBytes<std::uint8_t>(choices_.ConsumeIntegralInRange<std::size_t>(0, 20));
        break;
    }
    disturb_and_send(data);
  }

  Bytes unit_info() {
    ByteWriter out;
    out.u8(0).u16(choices_.ConsumeIntegralInRange<std::uint16_t>(0, 25));
    out.u16(choices_.ConsumeIntegralInRange<std::uint16_t>(0, 2))
        .u16(choices_.ConsumeIntegralInRange<std::uint16_t>(0, 2));
    out.u16(choices_.ConsumeIntegral<std::uint16_t>()).u16(choices_.ConsumeIntegral<std::uint16_t>());
    for (int i = 0; i < 4; ++i)
      out.u16(choices_.ConsumeBool() ? choices_.ConsumeIntegralInRange<std::uint16_t>(0, 6)
                                     : choices_.ConsumeIntegralInRange<std::uint16_t>(0x7FF0, 0x8010) & 0x8001);
    out.u8(choices_.ConsumeIntegralInRange<std::uint8_t>(0, 5)).u8(choices_.ConsumeBool() ? 28 : 15);
    out.u8(choices_.ConsumeIntegral<std::uint8_t>()).u32(1);
    return out.result();
  }

  // Something that begins like the record that was asked for.
  Bytes record(const Bytes& request, std::size_t echoed, std::size_t size) {
    ByteWriter out;
    out.u8(0);
    for (std::size_t i = 0; i < echoed && i < request.size(); ++i) out.u8(request[i]);
    while (out.result().size() < size) out.u8(choices_.ConsumeIntegral<std::uint8_t>());
    return out.result();
  }

  // Mostly a possible area; the addresses in it then mostly lie in it.
  Bytes trail_pointer(const Bytes& request) {
    Bytes data = record(request, 1, 8);
    if (choices_.ConsumeIntegralInRange(0, 7) == 1) return data;
    const auto size = choices_.ConsumeIntegralInRange<std::uint16_t>(20, 400);
    const Bytes area{0, 2, 0, 0, static_cast<std::uint8_t>(size >> 8), static_cast<std::uint8_t>(size & 0xFF)};
    std::copy(area.begin(), area.end(), data.begin() + 2);
    area_size_ = size;
    return data;
  }

  Bytes memory(const Bytes& request) {
    const std::size_t count = request.size() > 5 ? std::size_t{request[4]} : 16;
    Bytes data = record({}, 0, count + 1);
    if (count != 16 || choices_.ConsumeIntegralInRange(0, 7) == 1) return data;
    for (const std::size_t at : {9U, 13U}) {
      const auto steps = choices_.ConsumeIntegralInRange<std::uint16_t>(0, static_cast<std::uint16_t>(area_size_ / 4));
      const auto address = static_cast<std::uint16_t>(16 + 4 * steps);
      const Bytes field{0, 2, static_cast<std::uint8_t>(address >> 8), static_cast<std::uint8_t>(address & 0xFF)};
      std::copy(field.begin(), field.end(), data.begin() + static_cast<std::ptrdiff_t>(at));
    }
    // Not too far from the last place.
    data[1] = data[5] = 0;
    return data;
  }

  Bytes route(const Bytes& request) {
    const auto count = choices_.ConsumeIntegralInRange<std::uint8_t>(0, 3);
    Bytes data = record(request, 2, 17U + 2U * count);
    data[3] = choices_.ConsumeIntegralInRange(0, 9) == 1 ? choices_.ConsumeIntegral<std::uint8_t>() : count;
    return data;
  }

  Bytes deltas(const Bytes& request) {
    const std::size_t wanted = request.size() > 2 ? request[1] : 0;
    const std::size_t count =
        choices_.ConsumeIntegralInRange(0, 9) == 1 ? choices_.ConsumeIntegral<std::uint8_t>() % 60U : wanted;
    Bytes data = record(request, 1, 4 + 4 * count);
    data[2] = static_cast<std::uint8_t>(count);
    data[3] = 0;
    return data;
  }

  Bytes screen() {
    static constexpr std::array<std::uint16_t, 6> kSizes{0, 8, 160, 1000, 0x7FFF, 0xFFFF};
    ByteWriter out;
    const auto size = [this] { return kSizes[choices_.ConsumeIntegralInRange<std::size_t>(0, kSizes.size() - 1)]; };
    out.u8(0).u16(size()).u16(0).u32(choices_.ConsumeIntegral<std::uint32_t>()).u16(size());
    out.u32(choices_.ConsumeIntegral<std::uint32_t>()).u16(size());
    return out.result();
  }

  void disturb_and_send(Bytes data) {
    const int trouble = choices_.ConsumeIntegralInRange(0, 60);
    if (trouble == 1 && !data.empty()) data.resize(data.size() / 2);
    if (trouble == 2) data.resize(data.size() + choices_.ConsumeIntegralInRange<std::size_t>(1, 600));
    const auto code = static_cast<std::uint16_t>(command_) | (trouble == 3 ? 0 : lowrance::kAnswerBit);
    const auto header = lowrance::make_header(static_cast<Command>(code), static_cast<std::uint16_t>(data.size()));
    Bytes message = ByteWriter().bytes(header).bytes(data).result();
    if (!data.empty()) message.push_back(lowrance::checksum(data));
    switch (trouble) {
      case 4:
        message[choices_.ConsumeIntegralInRange<std::size_t>(0, message.size() - 1)] ^= 0x11;
        break;
      case 5:
        device_.queue(message);  // twice
        break;
      case 6:
        silent_ = true;
        return;
      case 7:
        return;  // lost
      case 8:
        device_.queue(choices_.ConsumeBytes<std::uint8_t>(choices_.ConsumeIntegralInRange<std::size_t>(0, 300)));
        break;
      case 9:
        device_.vanish();
        return;
      case 10:
        message.resize(choices_.ConsumeIntegralInRange<std::size_t>(0, message.size()));
        break;
      case 11:
        return device_.queue(message, std::chrono::milliseconds(3500));  // late
      default:
        break;
    }
    device_.queue(message);
  }

  FuzzedDataProvider& choices_;
  support::ScriptedDevice& device_;
  Command command_ = Command::Login;
  bool silent_ = false;
  int area_size_ = 20;
};

// Something of every kind, some of it not to a unit's taste.
void fill(store::ItemStore& items, FuzzedDataProvider& choices) {
  const auto fill_item = [&] {
    items.start_item();
    store::ItemRecord& item = items.CurrentItem;
    item.position = {choices.ConsumeFloatingPointInRange(-90.0, 90.0),
                     choices.ConsumeFloatingPointInRange(-180.0, 180.0)};
    item.ident = choices.ConsumeRandomLengthString(16);
    item.symbol = choices.ConsumeIntegral<std::int16_t>();
    item.symbol_mode = choices.ConsumeIntegralInRange<std::uint8_t>(0, 5);
    item.time = {choices.ConsumeIntegral<std::uint32_t>()};
  };
  items.start_segment();
  for (int i = 0; i < 3; ++i) {
    fill_item();
    (void)items.push_waypoint(0);
    fill_item();
    // Most steps of a track are short enough for a unit.
    items.CurrentItem.position = {47.0 + i * 0.01, choices.ConsumeFloatingPointInRange(8.0, i == 1 ? 30.0 : 8.1)};
    (void)items.push_track();
    fill_item();
    (void)items.push_event();
  }
  items.start_route(1, "01", choices.ConsumeRandomLengthString(30));
  (void)items.push_route(true);
  for (int i = 0; i < 3; ++i) {
    fill_item();
    (void)items.push_route(true);
  }
  for (const char kind : {'W', 'R', 'T', 'I'}) items.select_all(kind, true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider choices(data, size);
  support::SteppingClock clock;
  fuzz::SilentFrontEnd front_end;
  serial::DeviceFlags flags;
  serial::DebugLog debug_log(front_end);
  store::Settings settings;
  settings.SA_SendLowrInactives = choices.ConsumeBool() ? 1 : 0;
  settings.SA_LwrRteStartPt = choices.ConsumeIntegralInRange(-2, 5);
  store::ItemStore items(settings, front_end);
  auto made = std::make_unique<support::ScriptedDevice>(clock);
  support::ScriptedDevice& device = *made;
  Unit unit(choices, device);
  device.on_sent = [&](const Bytes& bytes) { unit.hear(bytes); };
  serial::ComPort port([&](const std::string&) { return std::move(made); }, clock, front_end, flags);
  port.set_family(serial::kLowranceFamily);
  port.set_port_list([] { return std::vector<serial::PortInfo>(); });
  lowrance::LowranceLink link(port, clock, front_end, flags, debug_log);
  lowrance::UnitIdentification identification(link, front_end, flags);
  const lowrance::Connection connection{link, port, identification, front_end, flags};
  lowrance::LowranceDownloads downloads(connection, clock, items, settings);
  lowrance::LowranceUploads uploads(connection, items, settings, [] { return 3600; });
  lowrance::LowranceScreen screen(connection);
  for (int operations = 0; operations < 3; ++operations) {
    switch (choices.ConsumeIntegralInRange(0, 3)) {
      case 0:
      case 1:
        (void)downloads.download(40028);
        break;
      case 2:
        fill(items, choices);
        (void)uploads.upload(40038);
        break;
      default:
        (void)screen.download();
    }
    if (flags.PortOpen || device.is_open) std::abort();
    // Hours of the simulated clock are more than any of these may take.
    if (clock.now > std::chrono::hours(10) * (operations + 1)) std::abort();
  }
  for (int i = 1; i <= items.waypoint_count(); ++i) fuzz::must_be_possible(items.waypoint(i));
  for (int i = 1; i <= items.track_point_count(); ++i) fuzz::must_be_possible(items.track_point(i));
  for (int i = 1; i <= items.event_count(); ++i) fuzz::must_be_possible(items.event(i));
  return 0;
}

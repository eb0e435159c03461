// Whole conversations with a receiver whose every answer the fuzzer chooses: what it is, what it holds, and where it
// refuses, repeats, damages, falls silent or talks nonsense. Each must end, and what is stored must be possible.
#include <fuzzer/FuzzedDataProvider.h>

#include <deque>
#include <memory>

#include "fuzz/fuzz_reader.h"
#include "garmin/display_bitmap.h"
#include "garmin/downloads.h"
#include "garmin/uploads.h"
#include "tests/support/scripted_device.h"

namespace {

using base::Bytes;
using base::ByteWriter;

class Receiver {
 public:
  Receiver(FuzzedDataProvider& choices, support::ScriptedDevice& device) : choices_(choices), device_(device) {}

  // What it does after the program has sent something.
  void hear(const Bytes& frame) {
    if (silent_) return;
    garmin::PacketAssembler assembler;
    assembler.start();
    for (const std::uint8_t byte : frame) (void)assembler.feed(byte);
    if (!garmin::is_intact(assembler.packet())) return;
    const std::uint8_t id = garmin::packet_id(assembler.packet());
    if (id == kAck || id == kNak) {
      if (id == kAck && !pending_.empty()) pending_.pop_front();
    } else {
      answer(id, garmin::packet_data(assembler.packet()));
    }
    if (!pending_.empty()) disturb_and_send(pending_.front());
  }

 private:
  static constexpr std::uint8_t kAck = 6, kNak = 21, kCommand = 10, kProductRequest = 254;

  void answer(std::uint8_t id, std::span<const std::uint8_t> data) {
    const bool refuses = choices_.ConsumeIntegralInRange(0, 15) == 1;
    disturb_and_send(ByteWriter().u8(refuses ? kNak : kAck).u8(2).u8(id).u8(0).result());
    if (id == kProductRequest) introduce_itself();
    if (id == kCommand && !data.empty()) obey(data[0]);
  }

  void introduce_itself() {
    static constexpr std::array<std::uint16_t, 12> kProducts{7, 20, 29, 48, 71, 72, 77, 111, 116, 118, 128, 130};
    const std::uint16_t product = choices_.PickValueInArray({kProducts[0], kProducts[1], kProducts[2], kProducts[3],
                                                             kProducts[4], kProducts[5], kProducts[6], kProducts[7],
                                                             kProducts[8], kProducts[9], kProducts[10], kProducts[11]});
    push(255, ByteWriter().u16(product).i16(choices_.ConsumeIntegral<std::int16_t>()).string("Fuzzed", 10).result());
    if (!choices_.ConsumeBool()) return;
    static constexpr std::array<std::uint16_t, 8> kWaypoints{100, 103, 105, 106, 108, 109, 110, 155};
    const auto waypoints = kWaypoints[choices_.ConsumeIntegralInRange<std::size_t>(0, kWaypoints.size() - 1)];
    ByteWriter array;
    const auto add = [&array](char tag, unsigned number) {
      array.u8(static_cast<std::uint8_t>(tag)).u16(static_cast<std::uint16_t>(number));
    };
    add('L', choices_.ConsumeIntegralInRange(0, 20) == 1 ? 2 : 1);
    add('A', 10);
    add('A', 100), add('D', waypoints);
    add('A', 201), add('D', 202), add('D', waypoints), add('D', 210);
    add('A', 301), add('D', 310), add('D', 300U + choices_.ConsumeIntegralInRange(0U, 2U));
    add('A', 400), add('D', choices_.ConsumeBool() ? 403 : 109);
    add('A', 500), add('D', choices_.ConsumeBool() ? 500 : 501);
    add('A', 800), add('D', 800);
    if (choices_.ConsumeIntegralInRange(0, 7) == 1)
      array.bytes(choices_.ConsumeBytes<std::uint8_t>(choices_.ConsumeIntegralInRange<std::size_t>(0, 30)));
    push(253, array.result());
  }

  void obey(std::uint8_t command) {
    if (command == 0) return pending_.clear();
    static constexpr std::array<std::uint8_t, 12> kIds{35, 34, 29, 30, 98, 99, 19, 31, 69, 14, 17, 51};
    const int count = choices_.ConsumeIntegralInRange(0, 12);
    if (command != 32) push(27, ByteWriter().u16(static_cast<std::uint16_t>(count)).result());
    for (int i = 0; i < count; ++i) {
      const std::uint8_t id = choices_.ConsumeIntegralInRange(0, 15) == 1
                                  ? choices_.ConsumeIntegral<std::uint8_t>()
                                  : kIds[choices_.ConsumeIntegralInRange<std::size_t>(0, kIds.size() - 1)];
      push(id, choices_.ConsumeBytes<std::uint8_t>(choices_.ConsumeIntegralInRange<std::size_t>(0, 255)));
    }
    push(12, ByteWriter().u16(command).result());
  }

  void push(std::uint8_t id, const Bytes& data) {
    const auto size = std::min<std::size_t>(data.size(), 255);
    pending_.push_back(
        ByteWriter().u8(id).u8(static_cast<std::uint8_t>(size)).bytes(std::span(data).first(size)).result());
  }

  void disturb_and_send(const Bytes& message) {
    Bytes frame = garmin::frame_message(message);
    switch (choices_.ConsumeIntegralInRange(0, 40)) {
      case 1:
        frame[frame.size() - 3] ^= 1;
        break;
      case 2:
        device_.queue(frame);  // twice
        break;
      case 3:
        silent_ = true;
        return;
      case 4:
        return;  // lost
      case 5:
        device_.queue(choices_.ConsumeBytes<std::uint8_t>(choices_.ConsumeIntegralInRange<std::size_t>(0, 300)));
        break;
      case 6:
        device_.vanish();
        return;
      default:
        break;
    }
    device_.queue(frame);
  }

  FuzzedDataProvider& choices_;
  support::ScriptedDevice& device_;
  std::deque<Bytes> pending_;  // the first waits for its acknowledgement
  bool silent_ = false;
};

// Something of every kind, some of it not to a receiver's taste.
void fill(store::ItemStore& items, FuzzedDataProvider& choices) {
  const auto fill_item = [&] {
    items.start_item();
    store::ItemRecord& item = items.CurrentItem;
    item.position = {choices.ConsumeFloatingPointInRange(-90.0, 90.0),
                     choices.ConsumeFloatingPointInRange(-180.0, 180.0)};
    item.ident = choices.ConsumeRandomLengthString(12);
    item.comment = choices.ConsumeRandomLengthString(40);
    item.altitude = choices.ConsumeFloatingPoint<float>();
    item.symbol = choices.ConsumeIntegral<std::int16_t>();
    item.waypoint_class = choices.ConsumeIntegral<std::uint8_t>();
    item.record_type = choices.ConsumeBool() ? 154 : 108;
    item.colour = choices.ConsumeIntegral<std::uint8_t>();
    item.selected = 1;
  };
  for (int i = 0; i < 3; ++i) {
    fill_item();
    (void)items.push_waypoint(0);
    fill_item();
    (void)items.push_track();
    fill_item();
    (void)items.push_proximity();
  }
  items.start_route(1, "01", choices.ConsumeRandomLengthString(30));
  (void)items.push_route(true);
  for (int i = 0; i < 3; ++i) {
    fill_item();
    (void)items.push_route(true);
  }
  store::Almanac almanac;
  almanac.satellites[3] = store::AlmanacEntry{};
  items.set_almanac(almanac);
  for (const char kind : {'W', 'R', 'T', 'P'}) items.select_all(kind, true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider choices(data, size);
  support::SteppingClock clock;
  fuzz::SilentFrontEnd front_end;
  serial::DeviceFlags flags;
  serial::DebugLog debug_log(front_end);
  const store::Settings settings;
  store::ItemStore items(settings, front_end);
  auto made = std::make_unique<support::ScriptedDevice>(clock);
  support::ScriptedDevice& device = *made;
  Receiver receiver(choices, device);
  device.on_sent = [&](const Bytes& frame) { receiver.hear(frame); };
  serial::ComPort port([&](const std::string&) { return std::move(made); }, clock, front_end, flags);
  port.set_family(serial::kGarminFamily);
  port.set_port_list([] { return std::vector<serial::PortInfo>(); });
  garmin::GarminLink link(port, clock, front_end, flags, debug_log);
  garmin::ProtocolSelection selection(link, port, front_end, flags);
  const garmin::Connection connection{link, port, selection, front_end, flags};
  garmin::GarminCommands commands(connection, clock);
  garmin::GarminDownloads downloads(connection, clock, items, settings);
  garmin::GarminUploads uploads(connection, commands, items, settings);
  garmin::GarminDisplay screen(connection);
  for (int operations = 0; operations < 3; ++operations) {
    switch (choices.ConsumeIntegralInRange(0, 5)) {
      case 0:
      case 1:
        (void)downloads.download(garmin::Kind::All);
        break;
      case 2:
        (void)downloads.download(garmin::Kind::Almanac);
        break;
      case 3:
        fill(items, choices);
        (void)uploads.upload(choices.ConsumeBool() ? 40038 : 40046);
        break;
      case 4:
        (void)screen.download();
        break;
      default:
        (void)commands.read_time();
        (void)commands.read_position();
        (void)commands.read_voltages();
        (void)commands.follow_position([](std::string_view) { return true; });
    }
    if (flags.PortOpen || device.is_open) std::abort();
    // An hour of the simulated clock is far more than any of these may take.
    if (clock.now > std::chrono::hours(1) * (operations + 1)) std::abort();
  }
  for (int i = 1; i <= items.waypoint_count(); ++i) fuzz::must_be_possible(items.waypoint(i));
  for (int i = 1; i <= items.track_point_count(); ++i) fuzz::must_be_possible(items.track_point(i));
  for (int i = 1; i <= items.proximity_count(); ++i) fuzz::must_be_possible(items.proximity(i));
  return 0;
}

#include "simulators/garmin_simulator.h"

#include <algorithm>
#include <array>
#include <utility>

namespace simulators {

namespace {

using std::chrono::microseconds;

constexpr std::uint8_t kAck = 6;
constexpr std::uint8_t kCommand = 10;
constexpr std::uint8_t kCommandOfLink2 = 11;
constexpr std::uint8_t kNak = 21;
constexpr std::uint8_t kProductRequest = 254;

constexpr std::uint16_t kNoCommand = 0xFFFF;
constexpr microseconds kAckPatience = std::chrono::seconds(2);
constexpr int kMostRepetitions = 3;
constexpr std::size_t kInputCapacity = 4096;
constexpr std::size_t kOutputCapacity = 65536;  // far more than one packet: only an unread port comes near it

// Meaningless bytes, the same ones for the same packet. Without ETX, so that no packet seems to end in them.
base::Bytes noise(int packet_number) {
  constexpr std::size_t kSize = 24;
  constexpr std::uint8_t kEtx = 3;
  base::Bytes bytes;
  std::uint32_t state = static_cast<std::uint32_t>(packet_number);
  while (bytes.size() < kSize) {
    state = state * 1664525U + 1013904223U;
    const auto byte = static_cast<std::uint8_t>(state >> 24);
    if (byte != kEtx) bytes.push_back(byte);
  }
  return bytes;
}

SimWaypoint where_it_stands(const SimulatedData& data) {
  if (!data.waypoints.empty()) return data.waypoints.front();
  SimWaypoint place;
  place.latitude = 54.3691;
  place.longitude = -3.0757;
  return place;
}

}  // namespace

// A command by its number in either command protocol: it sends records, or it runs a function.
struct GarminSimulator::Command {
  std::uint16_t a010;
  std::uint16_t a011;
  GarminMemory::Records GarminMemory::*records;
  void (GarminSimulator::*run)(Time at);
};

std::span<const GarminSimulator::Command> GarminSimulator::commands() {
  static constexpr std::array kCommands = std::to_array<Command>({
      {0, 0, nullptr, &GarminSimulator::abort_transfer},
      {2, kNoCommand, nullptr, &GarminSimulator::send_position},
      {3, 17, &GarminMemory::proximity, nullptr},
      {4, 8, &GarminMemory::routes, nullptr},
      {5, 20, nullptr, &GarminSimulator::send_date_time},
      {6, kNoCommand, &GarminMemory::tracks, nullptr},
      {7, 21, &GarminMemory::waypoints, nullptr},
      {8, 26, nullptr, &GarminSimulator::power_off},
      {17, kNoCommand, nullptr, &GarminSimulator::send_voltages},
      {49, kNoCommand, nullptr, &GarminSimulator::start_pvt},
      {50, kNoCommand, nullptr, &GarminSimulator::stop_pvt},
  });
  return kCommands;
}

GarminSimulator::GarminSimulator(const SimulatedData& data, const GarminOptions& options, const base::Clock& clock)
    : clock_(clock),
      options_(options),
      capabilities_(chosen_capabilities(options)),
      ids_(link_ids(capabilities_.capabilities.link)),
      memory_(fill_memory(data, capabilities_.capabilities)),
      here_(where_it_stands(data)),
      input_(options.baud, kInputCapacity),
      output_(options.baud, kOutputCapacity) {}

void GarminSimulator::receive(std::span<const std::uint8_t> bytes) {
  const Time now = clock_.monotonic();
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.size(), input_room());
    if (size == 0 || unplugged_) return;
    input_.send(bytes.first(size), now);
    bytes = bytes.subspan(size);
  }
  advance();
}

std::size_t GarminSimulator::input_room() {
  advance();
  return input_.room();
}

bool GarminSimulator::output_ready() {
  advance();
  const std::optional<Time> due = output_.front_due();
  return due && *due <= clock_.monotonic();
}

std::optional<std::uint8_t> GarminSimulator::take_output() {
  if (!output_ready()) return std::nullopt;
  return output_.take();
}

microseconds GarminSimulator::next_output_in(microseconds batch) {
  advance();
  std::optional<Time> next = output_.batch_due(batch);
  const std::array others{input_.batch_due(batch), ack_deadline_, pvt_due_};
  for (const std::optional<Time>& other : others) {
    if (other && (!next || *other < *next)) next = other;
  }
  if (!next) return kNever;
  return std::max(*next - clock_.monotonic(), microseconds{0});
}

bool GarminSimulator::unplugged() {
  advance();
  return unplugged_;
}

void GarminSimulator::advance() {
  const Time now = clock_.monotonic();
  while (const std::optional<Time> event = next_event()) {
    const Time at = *event;
    if (at > now) return;
    if (input_.front_due() == at) {
      on_byte(input_.take(), at);
    } else if (ack_deadline_ == at) {
      if (++repetitions_ > kMostRepetitions) {
        stop_sending();
      } else {
        repeat(at);
      }
    } else {
      send_pvt(at);
    }
  }
}

std::optional<GarminSimulator::Time> GarminSimulator::next_event() const {
  std::optional<Time> first = input_.front_due();
  for (const std::optional<Time>& other : {ack_deadline_, pvt_due_}) {
    if (other && (!first || *other < *first)) first = other;
  }
  return first;
}

void GarminSimulator::on_byte(std::uint8_t byte, Time at) {
  if (off_) return;
  const std::optional<PacketFinder::Frame> frame = finder_.feed(byte);
  if (!frame) return;
  if (frame->good) {
    on_packet(frame->packet, at);
  } else {
    answer(kNak, frame->packet.id, at);
  }
}

void GarminSimulator::on_packet(const Packet& packet, Time at) {
  if (packet.id == kAck) return on_acknowledged(packet, at);
  if (packet.id == kNak) {
    if (ack_deadline_) repeat(at);
    return;
  }
  answer(kAck, packet.id, at);
  const bool is_link2 = capabilities_.capabilities.link == 2;
  if (packet.id == kProductRequest) {
    send_product_data(at);
  } else if (packet.id == kCommand || (is_link2 && packet.id == kCommandOfLink2)) {
    on_command(packet, at);
  }
}

void GarminSimulator::on_acknowledged(const Packet& ack, Time at) {
  if (!ack_deadline_) return;
  const std::uint8_t id = ack.data.empty() ? std::uint8_t{0} : ack.data[0];
  if (id != 0 && id == ids_.pvt) return;  // that data goes out unasked and is never repeated
  if (std::exchange(loses_next_ack_, false)) return;
  if (id != outgoing_[next_outgoing_].id) return repeat(at);
  ++next_outgoing_;
  send_next(at);
}

void GarminSimulator::on_command(const Packet& packet, Time at) {
  base::ByteReader in(packet.data);
  const std::uint16_t number = in.u16();
  if (!in.ok()) return;
  const auto numbered = capabilities_.capabilities.command == 11 ? &Command::a011 : &Command::a010;
  const std::span<const Command> all = commands();
  const auto command = std::ranges::find(all, number, numbered);
  if (command == all.end() || number == kNoCommand) return;
  if (command->records != nullptr) {
    send_records(memory_.*command->records, number, at);
  } else {
    (this->*command->run)(at);
  }
}

void GarminSimulator::send_all(std::vector<Packet> packets, Time at) {
  outgoing_ = std::move(packets);
  next_outgoing_ = 0;
  send_next(at);
}

void GarminSimulator::send_next(Time at) {
  loses_next_ack_ = false;
  if (next_outgoing_ == outgoing_.size()) return stop_sending();
  repetitions_ = 0;
  send_new(outgoing_[next_outgoing_], at);
  if (!unplugged_) ack_deadline_ = std::max(at, output_.idle_from()) + kAckPatience;
}

void GarminSimulator::repeat(Time at) {
  put_on_wire(frame_packet(outgoing_[next_outgoing_]), at);
  ack_deadline_ = std::max(at, output_.idle_from()) + kAckPatience;
}

void GarminSimulator::stop_sending() {
  outgoing_.clear();
  next_outgoing_ = 0;
  ack_deadline_.reset();
}

void GarminSimulator::send_new(const Packet& packet, Time at) {
  ++packets_sent_;
  bool damaged = false;
  for (const Fault& fault : options_.faults) {
    if (fault.packet != packets_sent_) continue;
    switch (fault.kind) {
      case Fault::Kind::DropAck:
        loses_next_ack_ = true;
        break;
      case Fault::Kind::BadChecksum:
        damaged = true;
        break;
      case Fault::Kind::Silent:
        silent_ = true;
        break;
      case Fault::Kind::Unplug:
        unplugged_ = true;
        stop_sending();
        pvt_due_.reset();
        input_.clear();
        output_.clear();
        return;
      case Fault::Kind::Noise:
        put_on_wire(noise(packets_sent_), at);
        break;
    }
  }
  put_on_wire(frame_packet(packet, damaged), at);
}

void GarminSimulator::answer(std::uint8_t id, std::uint8_t answered_id, Time at) {
  put_on_wire(frame_packet({id, {answered_id, 0}}), at);
}

void GarminSimulator::put_on_wire(const base::Bytes& bytes, Time at) {
  if (silent_ || off_ || bytes.size() > output_.room()) return;
  output_.send(bytes, at);
}

}  // namespace simulators

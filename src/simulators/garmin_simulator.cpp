#include "simulators/garmin_simulator.h"

#include <algorithm>
#include <array>
#include <utility>

namespace simulators {

namespace {

using std::chrono::microseconds;

constexpr std::uint8_t kCommand = 10;
constexpr std::uint8_t kCommandOfLink2 = 11;
constexpr std::uint8_t kProductRequest = 254;

constexpr microseconds kAckPatience = std::chrono::seconds(2);
constexpr int kMostRepetitions = 3;
constexpr std::size_t kOutputCapacity = 65536;  // far more than one packet: only an unread port comes near it

// It has the same number in both command protocols.
bool is_abort(const Packet& command) {
  base::ByteReader in(command.data);
  return in.u16() == 0 && in.ok();
}

SimWaypoint where_it_stands(const SimulatedData& data) {
  if (!data.waypoints.empty()) return data.waypoints.front();
  SimWaypoint place;
  place.latitude = 54.3691;
  place.longitude = -3.0757;
  return place;
}

}  // namespace

struct GarminSimulator::Function {
  CommandNumbers numbers;
  void (GarminSimulator::*run)(Time at);
};

std::span<const GarminSimulator::Function> GarminSimulator::functions() {
  static constexpr std::array kFunctions = std::to_array<Function>({
      {{0, 0}, &GarminSimulator::abort_transfer},
      {{2, kNoCommand}, &GarminSimulator::send_position},
      {{5, 20}, &GarminSimulator::send_date_time},
      {{8, 26}, &GarminSimulator::power_off},
      {{17, kNoCommand}, &GarminSimulator::send_voltages},
      {{32, kNoCommand}, &GarminSimulator::send_screen},
      {{49, kNoCommand}, &GarminSimulator::start_pvt},
      {{50, kNoCommand}, &GarminSimulator::stop_pvt},
  });
  return kFunctions;
}

GarminSimulator::GarminSimulator(const SimulatedData& data, const GarminOptions& options, const base::Clock& clock,
                                 std::optional<GarminMemory> memory)
    : WiredReceiver(options.baud, kOutputCapacity, options.faults, clock),
      options_(options),
      capabilities_(chosen_capabilities(options)),
      ids_(link_ids(capabilities_.capabilities.link)),
      memory_(memory ? std::move(*memory) : fill_memory(data, capabilities_.capabilities)),
      here_(where_it_stands(data)),
      upload_(capabilities_.capabilities) {}

GarminSimulator::Time GarminSimulator::own_event_due() const {
  return std::min(ack_deadline_.value_or(kNever), pvt_due_.value_or(kNever));
}

void GarminSimulator::on_own_event(Time at) {
  if (ack_deadline_ != at) return send_pvt(at);
  if (++repetitions_ > kMostRepetitions) {
    stop_sending();
  } else {
    repeat(at);
  }
}

void GarminSimulator::on_byte(std::uint8_t byte, Time at) {
  if (is_silent()) return;
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
  if (packet.id == kNak) return on_nak(at);
  const bool is_link2 = capabilities_.capabilities.link == 2;
  const bool is_command = packet.id == kCommand || (is_link2 && packet.id == kCommandOfLink2);
  if (!is_command && packet.id != kProductRequest && is_taken_in(packet.id, at)) return on_reception(packet, at);
  if (packet.id == kProductRequest || (is_command && is_abort(packet))) output().drop_behind_front();
  answer(kAck, packet.id, at);
  if (!is_command && packet.id != kProductRequest) return;
  upload_.stop();
  reception_.reset();
  if (is_command) {
    on_command(packet, at);
  } else {
    send_product_data(at);
  }
}

void GarminSimulator::on_acknowledged(const Packet& ack, Time at) {
  if (!ack_deadline_) return;
  const std::uint8_t id = ack.data.empty() ? std::uint8_t{0} : ack.data[0];
  if (id != 0 && id == ids_.pvt) return;  // that data goes out unasked and is never repeated
  // Hosts may acknowledge a packet twice, or ask for almanac records by acknowledging ahead. The host cannot mean a
  // packet that is still on its way to it, nor is the packet before in want of another acknowledgement.
  if (output().taken() < outgoing_end_) return;
  const std::uint8_t awaited = outgoing_[next_outgoing_].id;
  if (id != awaited && next_outgoing_ > 0 && id == outgoing_[next_outgoing_ - 1].id) return;
  if (std::exchange(loses_next_ack_, false)) return;
  if (id != awaited) return repeat(at);
  ++next_outgoing_;
  send_next(at);
}

// What the host did not understand is the packet that waits, or else the answer to the latest that was taken in.
void GarminSimulator::on_nak(Time at) {
  if (ack_deadline_) return repeat(at);
  if (reception_) answer_again(at);
}

void GarminSimulator::on_command(const Packet& packet, Time at) {
  base::ByteReader in(packet.data);
  const std::uint16_t number = in.u16();
  if (!in.ok() || number == kNoCommand) return;
  // Deliberate : a receiver with an array understands A010 numbers first, whatever command protocol the array names,
  // for hosts that do not look at it. No real receiver has an array that names A011.
  const bool is_a011 = capabilities_.capabilities.command == 11;
  const bool has_array = !capabilities_.data.empty();
  if ((has_array || !is_a011) && obey(number, &CommandNumbers::a010, at)) return;
  if (is_a011) (void)obey(number, &CommandNumbers::a011, at);
}

bool GarminSimulator::obey(std::uint16_t number, std::uint16_t CommandNumbers::*numbered, Time at) {
  const auto has_number = [&](const auto& command) { return command.numbers.*numbered == number; };
  const auto transfer = std::ranges::find_if(kTransferCommands, has_number);
  if (transfer != kTransferCommands.end()) {
    send_records(memory_.*transfer->records, number, at);
    return true;
  }
  const std::span<const Function> all = functions();
  const auto function = std::ranges::find_if(all, has_number);
  if (function == all.end()) return false;
  (this->*function->run)(at);
  return true;
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
  wait_for_ack(at);
}

void GarminSimulator::repeat(Time at) {
  put_on_wire(frame_packet(outgoing_[next_outgoing_]), at);
  wait_for_ack(at);
}

void GarminSimulator::wait_for_ack(Time at) {
  ack_deadline_ = std::max(at, output().idle_from()) + kAckPatience;
  outgoing_end_ = output().sent();
}

void GarminSimulator::stop_sending() {
  outgoing_.clear();
  next_outgoing_ = 0;
  ack_deadline_.reset();
}

void GarminSimulator::send_new(const Packet& packet, Time at) {
  const Trouble trouble = trouble_at_next_packet();
  if (is_silent()) return;
  loses_next_ack_ = trouble.loses_ack;
  if (trouble.noisy) put_noise(at);
  put_on_wire(frame_packet(packet, trouble.damaged), at);
}

void GarminSimulator::answer(std::uint8_t id, std::uint8_t answered_id, Time at) {
  put_on_wire(frame_packet({id, {answered_id, 0}}), at);
}

// Meaningless, but the same for the same packet. Without ETX, so that no packet seems to end in them.
void GarminSimulator::put_noise(Time at) {
  constexpr std::size_t kSize = 24;
  constexpr std::uint8_t kEtx = 3;
  base::Bytes bytes;
  std::uint32_t state = static_cast<std::uint32_t>(packets_counted());
  while (bytes.size() < kSize) {
    state = state * 1664525U + 1013904223U;
    const auto byte = static_cast<std::uint8_t>(state >> 24);
    if (byte != kEtx) bytes.push_back(byte);
  }
  put_on_wire(bytes, at);
}

}  // namespace simulators

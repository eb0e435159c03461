#include "simulators/lowrance_simulator.h"

#include <algorithm>
#include <array>
#include <utility>

namespace simulators {

namespace {

using std::chrono::microseconds;

constexpr std::uint16_t kAnswerBit = 0x80;
constexpr std::size_t kInputCapacity = 4096;
constexpr std::size_t kOutputCapacity = 8192;
constexpr microseconds kLongestPause = std::chrono::seconds(1);  // inside one message

// Single start bytes, one of them right before the answer.
constexpr std::array<std::uint8_t, 8> kNoise{0x0D, 0x81, 0x24, 0x55, 0x00, 0x81, 0xFF, 0x55};

const LowranceUnit& chosen_unit(const LowranceOptions& options) {
  const LowranceUnit* unit = find_lowrance_unit(options.unit);
  return unit != nullptr ? *unit : lowrance_units().front();
}

}  // namespace

LowranceSimulator::LowranceSimulator(const LowranceData& data, const LowranceOptions& options, const base::Clock& clock,
                                     std::optional<LowranceMemory> memory)
    : clock_(clock),
      options_(options),
      requests_(chosen_unit(options), memory ? std::move(*memory) : fill_lowrance_memory(data, chosen_unit(options))),
      input_(options.baud, kInputCapacity),
      output_(options.baud, kOutputCapacity) {}

void LowranceSimulator::set_host_speed(int bits_per_second) {
  advance();
  host_speed_ = bits_per_second;
}

void LowranceSimulator::receive(std::span<const std::uint8_t> bytes) {
  const Time now = clock_.monotonic();
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.size(), input_room());
    if (size == 0 || unplugged_) return;
    input_.send(bytes.first(size), now);
    bytes = bytes.subspan(size);
  }
  advance();
}

std::size_t LowranceSimulator::input_room() {
  advance();
  return input_.room();
}

bool LowranceSimulator::output_ready() {
  advance();
  const std::optional<Time> due = output_.front_due();
  return due && *due <= clock_.monotonic();
}

std::optional<std::uint8_t> LowranceSimulator::take_output() {
  if (!output_ready()) return std::nullopt;
  return output_.take();
}

microseconds LowranceSimulator::next_output_in(microseconds batch) {
  advance();
  const std::optional<Time> in = input_.batch_due(batch);
  const std::optional<Time> out = output_.batch_due(batch);
  if (!in && !out) return kNever;
  const Time next = std::min(in.value_or(kNever), out.value_or(kNever));
  return std::max(next - clock_.monotonic(), microseconds{0});
}

bool LowranceSimulator::unplugged() {
  advance();
  return unplugged_;
}

void LowranceSimulator::advance() {
  const Time now = clock_.monotonic();
  for (std::optional<Time> due = input_.front_due(); due && *due <= now; due = input_.front_due()) {
    on_byte(input_.take(), *due);
  }
}

void LowranceSimulator::on_byte(std::uint8_t byte, Time at) {
  if (options_.echo) put_on_wire(std::span(&byte, 1), at);
  const bool is_understood = options_.baud <= 0 || host_speed_ == 0 || host_speed_ == options_.baud;
  if (silent_ || !is_understood) return;
  if (at - std::exchange(heard_at_, at) > kLongestPause) finder_.forget();
  const std::optional<LowranceMessageFinder::Frame> frame = finder_.feed(byte);
  if (!frame) return;
  if (frame->good) {
    on_request(frame->message, at);
  } else {
    ++refused_;
  }
}

void LowranceSimulator::on_request(const LowranceMessage& request, Time at) {
  std::optional<base::Bytes> answer = requests_.answer(request);
  if (!answer) {
    ++refused_;
    return;
  }
  const Trouble trouble = trouble_at_next_request();
  if (trouble.loses_answer || unplugged_) return;
  if (options_.noise || trouble.noisy) put_on_wire(kNoise, at);
  const auto code = static_cast<std::uint16_t>(request.command | kAnswerBit);
  put_on_wire(frame_lowrance_message({code, std::move(*answer)}, trouble.damaged), at);
}

LowranceSimulator::Trouble LowranceSimulator::trouble_at_next_request() {
  ++requests_counted_;
  Trouble trouble;
  for (const Fault& fault : options_.faults) {
    if (fault.packet != requests_counted_) continue;
    switch (fault.kind) {
      case Fault::Kind::DropAck:
        trouble.loses_answer = true;
        break;
      case Fault::Kind::BadChecksum:
        trouble.damaged = true;
        break;
      case Fault::Kind::Silent:
        silent_ = true;
        break;
      case Fault::Kind::Unplug:
        unplug();
        break;
      case Fault::Kind::Noise:
        trouble.noisy = true;
        break;
    }
  }
  return trouble;
}

void LowranceSimulator::unplug() {
  unplugged_ = true;
  input_.clear();
  output_.clear();
}

void LowranceSimulator::put_on_wire(std::span<const std::uint8_t> bytes, Time at) {
  if (silent_ || bytes.size() > output_.room()) return;
  output_.send(bytes, at);
}

}  // namespace simulators

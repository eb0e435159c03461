#include "simulators/lowrance_simulator.h"

#include <array>
#include <utility>

namespace simulators {

namespace {

constexpr std::uint16_t kAnswerBit = 0x80;
constexpr std::size_t kOutputCapacity = 8192;
constexpr std::chrono::microseconds kLongestPause = std::chrono::seconds(1);  // inside one message

// Single start bytes, one of them right before the answer.
constexpr std::array<std::uint8_t, 8> kNoise{0x0D, 0x81, 0x24, 0x55, 0x00, 0x81, 0xFF, 0x55};

const LowranceUnit& chosen_unit(const LowranceOptions& options) {
  const LowranceUnit* unit = find_lowrance_unit(options.unit);
  return unit != nullptr ? *unit : lowrance_units().front();
}

}  // namespace

LowranceSimulator::LowranceSimulator(const LowranceData& data, const LowranceOptions& options, const base::Clock& clock,
                                     std::optional<LowranceMemory> memory)
    : WiredReceiver(options.baud, kOutputCapacity, options.faults, clock),
      options_(options),
      requests_(chosen_unit(options), memory ? std::move(*memory) : fill_lowrance_memory(data, chosen_unit(options))) {}

void LowranceSimulator::set_host_speed(int bits_per_second) {
  advance();
  host_speed_ = bits_per_second;
}

void LowranceSimulator::on_byte(std::uint8_t byte, Time at) {
  // The adapter between host and unit goes on when the unit is silent.
  if (options_.echo) put_on_wire(std::span(&byte, 1), at);
  const bool is_understood = options_.baud <= 0 || !host_speed_ || *host_speed_ == options_.baud;
  if (is_silent() || !is_understood) return;
  if (at - std::exchange(heard_at_, at) > kLongestPause) finder_.forget();
  const std::optional<LowranceMessageFinder::Frame> frame = finder_.feed(byte);
  if (!frame) return;
  if (frame->good && requests_.understands(frame->message)) {
    on_request(frame->message, at);
  } else {
    ++refused_;
  }
}

void LowranceSimulator::on_request(const LowranceMessage& request, Time at) {
  const Trouble trouble = trouble_at_next_packet();
  if (!is_silent() && !obey(request, trouble, at)) ++refused_;
}

bool LowranceSimulator::obey(const LowranceMessage& request, const Trouble& trouble, Time at) {
  std::optional<base::Bytes> answer = requests_.answer(request);
  if (!answer || trouble.loses_ack) return answer.has_value();
  if (options_.noise || trouble.noisy) put_on_wire(kNoise, at);
  const auto code = static_cast<std::uint16_t>(request.command | kAnswerBit);
  return put_on_wire(frame_lowrance_message({code, std::move(*answer)}, trouble.damaged), at);
}

}  // namespace simulators

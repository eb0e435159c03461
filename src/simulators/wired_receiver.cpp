#include "simulators/wired_receiver.h"

#include <algorithm>

namespace simulators {

using std::chrono::microseconds;

void WiredReceiver::receive(std::span<const std::uint8_t> bytes) {
  const Time now = clock_.monotonic();
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.size(), input_room());
    if (size == 0 || unplugged_) return;
    input_.send(bytes.first(size), now);
    bytes = bytes.subspan(size);
  }
  advance();
}

std::size_t WiredReceiver::input_room() {
  advance();
  return input_.room();
}

bool WiredReceiver::output_ready() {
  advance();
  const std::optional<Time> due = output_.front_due();
  return due && *due <= clock_.monotonic();
}

std::optional<std::uint8_t> WiredReceiver::take_output() {
  if (!output_ready()) return std::nullopt;
  return output_.take();
}

microseconds WiredReceiver::next_output_in(microseconds batch) {
  advance();
  const Time next = std::min({output_.batch_due(batch).value_or(kNever), input_.batch_due(batch).value_or(kNever),
                              silent_ ? kNever : own_event_due()});
  return next == kNever ? kNever : std::max(next - clock_.monotonic(), microseconds{0});
}

bool WiredReceiver::unplugged() {
  advance();
  return unplugged_;
}

void WiredReceiver::advance() {
  const Time now = clock_.monotonic();
  while (true) {
    const Time byte_due = input_.front_due().value_or(kNever);
    const Time event_due = silent_ ? kNever : own_event_due();
    if (std::min(byte_due, event_due) > now) return;
    if (byte_due <= event_due) {
      on_byte(input_.take(), byte_due);
    } else {
      on_own_event(event_due);
    }
  }
}

bool WiredReceiver::put_on_wire(std::span<const std::uint8_t> bytes, Time at) {
  if (bytes.size() > output_.room()) return false;
  output_.send(bytes, at);
  return true;
}

WiredReceiver::Trouble WiredReceiver::trouble_at_next_packet() {
  ++packets_counted_;
  Trouble trouble;
  for (const Fault& fault : faults_) {
    if (fault.packet != packets_counted_) continue;
    switch (fault.kind) {
      case Fault::Kind::DropAck:
        trouble.loses_ack = true;
        break;
      case Fault::Kind::BadChecksum:
        trouble.damaged = true;
        break;
      case Fault::Kind::Silent:
        fall_silent();
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

void WiredReceiver::unplug() {
  fall_silent();
  unplugged_ = true;
  input_.clear();
  output_.clear();
}

}  // namespace simulators

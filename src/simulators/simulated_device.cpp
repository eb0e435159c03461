#include "simulators/simulated_device.h"

#include <algorithm>

namespace simulators {

int SimulatedDevice::open(const std::string& name) {
  constexpr int kNoSuchFile = 2;
  constexpr int kBusy = 16;
  const bool exists = name == port_name_ && !receiver_.unplugged();
  open_problem_ = !exists ? serial::OpenProblem::NoSuchPort
                  : open_ ? serial::OpenProblem::InUse
                          : serial::OpenProblem::None;
  if (!exists) return kNoSuchFile;
  if (open_) return kBusy;
  while (receiver_.take_output()) {
  }
  open_ = true;
  return 0;
}

int SimulatedDevice::close() {
  if (!open_) return serial::kNotOpen;
  open_ = false;
  return 0;
}

int SimulatedDevice::write(std::span<const std::uint8_t> bytes) {
  while (error_when_gone() == 0) {
    const std::size_t size = std::min(bytes.size(), receiver_.input_room());
    receiver_.receive(bytes.first(size));
    bytes = bytes.subspan(size);
    if (bytes.empty()) return 0;
    if (size == 0) clock_.pause(std::chrono::milliseconds(1));
  }
  return serial::kNotOpen;
}

bool SimulatedDevice::input_waiting() { return open_ && receiver_.output_ready(); }

std::optional<std::uint8_t> SimulatedDevice::read_byte() {
  if (!open_) return std::nullopt;
  return receiver_.take_output();
}

void SimulatedDevice::wait_for_input(std::chrono::milliseconds longest) {
  const std::chrono::microseconds end = clock_.monotonic() + longest;
  if (!open_) return clock_.pause(longest);
  while (!receiver_.unplugged() && !receiver_.output_ready()) {
    const std::chrono::microseconds left = end - clock_.monotonic();
    if (left <= std::chrono::microseconds{0}) return;
    clock_.pause(std::min(left, receiver_.next_output_in()));
  }
}

}  // namespace simulators

// A simulated Garmin receiver and what a host says to it, byte for byte, on a clock that the test steps.
#pragma once

#include <gtest/gtest.h>

#include <numeric>
#include <optional>
#include <utility>
#include <vector>

#include "simulators/garmin_simulator.h"
#include "tests/support/stepping_clock.h"

namespace support {

using base::Bytes;

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

// The frame of a packet none of whose data bytes, size and checksum is a DLE.
inline Bytes frame(std::uint8_t id, const Bytes& data) {
  const auto size = static_cast<std::uint8_t>(data.size());
  const int sum = std::accumulate(data.begin(), data.end(), id + size);
  return Bytes{0x10, id, size} + data + Bytes{static_cast<std::uint8_t>(-sum), 0x10, 3};
}
inline Bytes ask(std::uint8_t command) { return frame(10, {command, 0}); }
inline Bytes ack(std::uint8_t id) { return frame(6, {id, 0}); }
inline Bytes nak(std::uint8_t id) { return frame(21, {id, 0}); }

// What a host sends, and what it gets.
inline const Bytes kAskProduct{0x10, 0xFE, 1, 0x20, 0xE1, 0x10, 3};
inline const Bytes kProductAsked{0x10, 6, 2, 0xFE, 0, 0xFA, 0x10, 3};
inline const Bytes kCommandTaken{0x10, 6, 2, 10, 0, 0xEE, 0x10, 3};

class GarminHost : public testing::Test {
 protected:
  // Product 7 sends no array, speaks D100 and D200, and has no tracks.
  void make(const simulators::SimulatedData& data, std::vector<simulators::Fault> faults = {},
            std::uint16_t product = 7) {
    options.product_id = product;
    options.description = "GPS";
    options.faults = std::move(faults);
    receiver.emplace(data, options, clock);
  }
  Bytes heard() {
    Bytes bytes;
    while (const auto byte = receiver->take_output()) bytes.push_back(*byte);
    return bytes;
  }
  Bytes say(const Bytes& bytes) {
    receiver->receive(bytes);
    return heard();
  }

  SteppingClock clock;
  simulators::GarminOptions options;
  std::optional<simulators::GarminSimulator> receiver;
};

}  // namespace support

// A link to a Garmin receiver over a scripted port, and what such a receiver sends: framed by hand, so that the
// program's own framing is not its judge.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "garmin/link.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/scripted_device.h"

namespace support {

class GarminLine : public testing::Test {
 protected:
  static base::Bytes wire(std::uint8_t id, const base::Bytes& data) {
    base::Bytes frame{0x10, id};
    unsigned sum = id;
    const auto put = [&](std::uint8_t byte) {
      sum += byte;
      frame.push_back(byte);
      if (byte == 0x10) frame.push_back(byte);
    };
    put(static_cast<std::uint8_t>(data.size()));
    for (const std::uint8_t byte : data) put(byte);
    put(static_cast<std::uint8_t>(0U - sum));
    frame.insert(frame.end(), {0x10, 3});
    return frame;
  }

  SteppingClock clock;
  RecordingFrontEnd front_end;
  serial::DeviceFlags flags;
  serial::DebugLog log{front_end};
  std::unique_ptr<ScriptedDevice> made = std::make_unique<ScriptedDevice>(clock);
  ScriptedDevice& device = *made;
  serial::ComPort port{[this](const std::string&) { return std::move(made); }, clock, front_end, flags};
  garmin::GarminLink link{port, clock, front_end, flags, log};
};

}  // namespace support

// A session with a simulated Lowrance/Eagle unit behind its port, and what a user does with them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "simulators/lowrance_sim_device.h"
#include "tests/support/transfer_scenario.h"

namespace support {

// A simulated unit that tells whether its port is open.
class ObservedUnit : public simulators::LowranceSimDevice {
 public:
  using LowranceSimDevice::LowranceSimDevice;
  int open(const std::string& name) override {
    const int error = LowranceSimDevice::open(name);
    is_open = error == 0;
    return error;
  }
  int close() override {
    is_open = false;
    return LowranceSimDevice::close();
  }

  bool is_open = false;
};

class LowranceScenario : public TransferScenario {
 protected:
  static constexpr int kDownloadAll = 40028, kDownloadWaypoints = 40029, kUploadAll = 40038;

  LowranceScenario() { family = store::Family::Lowrance; }

  // A new session at a unit that holds these data or, where it is given, the memory of another one.
  ObservedUnit& unit(const simulators::LowranceOptions& options,
                     const simulators::LowranceData& data = simulators::believable_season(),
                     std::optional<simulators::LowranceMemory> memory = std::nullopt) {
    device = &attach(std::make_unique<ObservedUnit>(data, options, clock, std::move(memory)));
    return *device;
  }
  static simulators::LowranceOptions named(std::string_view name) {
    simulators::LowranceOptions options;
    options.unit = name;
    return options;
  }

  bool download(int command_id) {
    return timed([&] { return session->lowrance_downloads.download(command_id); });
  }
  // Uploads all that is there.
  bool upload(int command_id) {
    for (const char kind : {'W', 'R', 'T', 'I'}) items().select_all(kind, true);
    return timed([&] { return session->lowrance_uploads.upload(command_id); });
  }
  void expect_closed() {
    EXPECT_FALSE(device->is_open);
    EXPECT_FALSE(session->flags.PortOpen);
    EXPECT_FALSE(session->flags.UserAbort);
  }

  ObservedUnit* device = nullptr;  // the latest
};

// Little of everything, so that every message of a transfer can have its turn.
inline simulators::LowranceData short_season() {
  simulators::LowranceData data = simulators::believable_season();
  data.waypoints.resize(4);
  data.routes.resize(2);
  for (simulators::LowranceRoute& route : data.routes) route.waypoints = {2, 0, 3};
  data.events.resize(3);
  for (auto& trail : data.trails) trail.resize(60);
  return data;
}

}  // namespace support

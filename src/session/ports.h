// Which device stands behind a port name.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "serial/serial_device.h"
#include "simulators/garmin_memory.h"
#include "simulators/garmin_options.h"
#include "simulators/lowrance_data.h"
#include "simulators/lowrance_memory.h"
#include "simulators/lowrance_options.h"
#include "simulators/simulated_data.h"

namespace session {

// What the simulated receiver of the port "sim:garmin" is and holds.
struct SimulatedGarmin {
  simulators::SimulatedData data;
  simulators::GarminOptions options;
  std::optional<simulators::GarminMemory> memory = std::nullopt;  // what it holds in place of the data, when given
};

// The same for the unit of the port "sim:lowrance".
struct SimulatedLowrance {
  simulators::LowranceData data;
  simulators::LowranceOptions options;
  std::optional<simulators::LowranceMemory> memory = std::nullopt;
};

// A simulated receiver for its name, a port of this machine for any other. Nothing for a simulated receiver
// that does not exist.
[[nodiscard]] std::unique_ptr<serial::SerialDevice> make_device(const std::string& port_name,
                                                                const SimulatedGarmin& garmin,
                                                                const SimulatedLowrance& lowrance, base::Clock& clock);

}  // namespace session

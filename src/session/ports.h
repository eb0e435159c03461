// Which device stands behind a port name.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "serial/serial_device.h"
#include "simulators/garmin_options.h"
#include "simulators/simulated_data.h"

namespace session {

// What the simulated receiver of the port "sim:garmin" is and holds.
struct SimulatedGarmin {
  simulators::SimulatedData data;
  simulators::GarminOptions options;
};

// A simulated receiver for its name, a port of this machine for any other. Nothing for a simulated receiver
// that does not exist.
[[nodiscard]] std::unique_ptr<serial::SerialDevice> make_device(const std::string& port_name,
                                                                const SimulatedGarmin& garmin, base::Clock& clock);

}  // namespace session

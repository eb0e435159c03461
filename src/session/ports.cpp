#include "session/ports.h"

#include "serial/system_device.h"
#include "simulators/garmin_sim_device.h"
#include "simulators/lowrance_sim_device.h"

namespace session {

std::unique_ptr<serial::SerialDevice> make_device(const std::string& port_name, const SimulatedGarmin& garmin,
                                                  const SimulatedLowrance& lowrance, base::Clock& clock) {
  if (port_name == simulators::kGarminPortName)
    return std::make_unique<simulators::GarminSimDevice>(garmin.data, garmin.options, clock, garmin.memory);
  if (port_name == simulators::kLowrancePortName)
    return std::make_unique<simulators::LowranceSimDevice>(lowrance.data, lowrance.options, clock, lowrance.memory);
  if (port_name.starts_with("sim:")) return nullptr;
  return serial::make_system_device();
}

}  // namespace session

// The built-in simulated Garmin receiver as the port "sim:garmin".
#pragma once

#include "simulators/garmin_simulator.h"
#include "simulators/simulated_device.h"

namespace simulators {

class GarminSimDevice : public SimulatedDevice {
 public:
  // The clock must outlive the device.
  GarminSimDevice(const SimulatedData& data, const GarminOptions& options, base::Clock& clock,
                  std::optional<GarminMemory> memory = std::nullopt)
      : SimulatedDevice(std::string(kGarminPortName), simulator_, clock),
        simulator_(data, options, clock, std::move(memory)) {}

  // What the receiver holds now.
  [[nodiscard]] const GarminMemory& memory() const { return simulator_.memory(); }

 private:
  GarminSimulator simulator_;  // the base class keeps a reference only
};

}  // namespace simulators

// The built-in simulated Lowrance/Eagle unit as the port "sim:lowrance".
#pragma once

#include "simulators/lowrance_simulator.h"
#include "simulators/simulated_device.h"

namespace simulators {

class LowranceSimDevice : public SimulatedDevice {
 public:
  // The clock must outlive the device.
  LowranceSimDevice(const LowranceData& data, const LowranceOptions& options, base::Clock& clock,
                    std::optional<LowranceMemory> memory = std::nullopt)
      : SimulatedDevice(std::string(kLowrancePortName), simulator_, clock),
        simulator_(data, options, clock, std::move(memory)) {}

  // What the unit holds now.
  [[nodiscard]] const LowranceMemory& memory() const { return simulator_.memory(); }
  // How many messages it did not answer, though nothing was to go wrong.
  [[nodiscard]] int refused() const { return simulator_.refused(); }

 private:
  LowranceSimulator simulator_;  // the base class keeps a reference only
};

}  // namespace simulators

// A Lowrance/Eagle unit as seen from the wire: answers requests one by one, after the public descriptions of the
// maker's serial interface. Framing, unit table, records and projection are its own, so that a mistake in the program's
// cannot cancel itself out here. A request with a wrong checksum or length is not answered, nor is one that it does not
// know.
#pragma once

#include <optional>
#include <span>

#include "base/clock.h"
#include "simulators/lowrance_memory.h"
#include "simulators/lowrance_options.h"
#include "simulators/simulated_receiver.h"
#include "simulators/wire.h"

namespace simulators {

class LowranceSimulator : public SimulatedReceiver {
 public:
  // The clock must outlive the unit. Options with a problem (lowrance_options_problem) are taken as far as they go. It
  // holds the data or, where it is given, the memory of another unit with the same options.
  LowranceSimulator(const LowranceData& data, const LowranceOptions& options, const base::Clock& clock,
                    std::optional<LowranceMemory> memory = std::nullopt);

  // What it holds now, uploads included.
  [[nodiscard]] const LowranceMemory& memory() const { return memory_; }

  void set_host_speed(int bits_per_second) override;
  void receive(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] std::size_t input_room() override;
  [[nodiscard]] bool output_ready() override;
  std::optional<std::uint8_t> take_output() override;
  [[nodiscard]] std::chrono::microseconds next_output_in(std::chrono::microseconds batch = std::chrono::microseconds{
                                                             0}) override;
  [[nodiscard]] bool unplugged() override;

 private:
  LowranceMemory memory_;
};

}  // namespace simulators

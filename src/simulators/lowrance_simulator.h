// A Lowrance/Eagle unit as seen from the wire: answers requests one by one, after the public descriptions of the
// maker's serial interface. Framing, unit table, records and projection are its own, so that a mistake in the program's
// cannot cancel itself out here. A request with a wrong checksum or length is not answered, nor is one that it does not
// know.
#pragma once

#include <optional>
#include <span>

#include "base/clock.h"
#include "simulators/lowrance_framing.h"
#include "simulators/lowrance_memory.h"
#include "simulators/lowrance_options.h"
#include "simulators/lowrance_requests.h"
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
  [[nodiscard]] const LowranceMemory& memory() const { return requests_.memory(); }
  // How many messages it did not answer since it was made: damaged ones, and requests that it could not do.
  [[nodiscard]] int refused() const { return refused_; }

  void set_host_speed(int bits_per_second) override;
  void receive(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] std::size_t input_room() override;
  [[nodiscard]] bool output_ready() override;
  std::optional<std::uint8_t> take_output() override;
  [[nodiscard]] std::chrono::microseconds next_output_in(std::chrono::microseconds batch = std::chrono::microseconds{
                                                             0}) override;
  [[nodiscard]] bool unplugged() override;

 private:
  using Time = std::chrono::microseconds;
  // What goes wrong at a request, besides what has happened already.
  struct Trouble {
    bool loses_answer = false, damaged = false, noisy = false;
  };

  // Lives through everything that happens up to now. Each byte counts from the moment it was due, however late the host
  // looks, so that delays of the host's scheduling do not add up.
  void advance();
  void on_byte(std::uint8_t byte, Time at);
  void on_request(const LowranceMessage& request, Time at);
  // Counts a request. What silences or unplugs the unit for good happens at once.
  Trouble trouble_at_next_request();
  void unplug();
  void put_on_wire(std::span<const std::uint8_t> bytes, Time at);

  const base::Clock& clock_;
  LowranceOptions options_;
  LowranceRequests requests_;
  Wire input_;
  Wire output_;
  LowranceMessageFinder finder_;
  Time heard_at_{0};    // the latest byte
  int host_speed_ = 0;  // bits per second; 0 while nobody has told it
  int requests_counted_ = 0;
  int refused_ = 0;
  bool silent_ = false;
  bool unplugged_ = false;
};

}  // namespace simulators

// A Lowrance/Eagle unit as seen from the wire: answers requests one by one, after the public descriptions of the
// maker's serial interface. Framing, unit table, records and projection are its own, so that a mistake in the program's
// cannot cancel itself out here. A request with a wrong checksum or length is not answered, nor is one that it does not
// know or cannot do.
#pragma once

#include <optional>

#include "simulators/lowrance_framing.h"
#include "simulators/lowrance_memory.h"
#include "simulators/lowrance_options.h"
#include "simulators/lowrance_requests.h"
#include "simulators/wired_receiver.h"

namespace simulators {

class LowranceSimulator : public WiredReceiver {
 public:
  // The clock must outlive the unit. Options with a problem (lowrance_options_problem) are taken as far as they go. It
  // holds the data or, where it is given, the memory of another unit with the same options.
  LowranceSimulator(const LowranceData& data, const LowranceOptions& options, const base::Clock& clock,
                    std::optional<LowranceMemory> memory = std::nullopt);

  // What it holds now, uploads included.
  [[nodiscard]] const LowranceMemory& memory() const { return requests_.memory(); }
  // How many messages it did not answer since it was made, though nothing was to go wrong: damaged ones, requests that
  // it could not do, and those whose answer found no room behind others that nobody had read.
  [[nodiscard]] int refused() const { return refused_; }

  void set_host_speed(int bits_per_second) override;

 private:
  void on_byte(std::uint8_t byte, Time at) override;
  void on_request(const LowranceMessage& request, Time at);
  // Does what is asked; false when it does not do it, or cannot answer.
  bool obey(const LowranceMessage& request, const Trouble& trouble, Time at);

  LowranceOptions options_;
  LowranceRequests requests_;
  LowranceMessageFinder finder_;
  Time heard_at_{0};               // the latest byte
  std::optional<int> host_speed_;  // bits per second; nothing while nobody has told it
  int refused_ = 0;
};

}  // namespace simulators

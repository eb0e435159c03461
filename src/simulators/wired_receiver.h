// A simulated receiver at the end of two wires: how bytes come and go and when something goes wrong, whatever protocol
// it speaks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "simulators/fault.h"
#include "simulators/simulated_receiver.h"
#include "simulators/wire.h"

namespace simulators {

class WiredReceiver : public SimulatedReceiver {
 public:
  void receive(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] std::size_t input_room() override;
  [[nodiscard]] bool output_ready() override;
  std::optional<std::uint8_t> take_output() override;
  [[nodiscard]] std::chrono::microseconds next_output_in(std::chrono::microseconds batch = std::chrono::microseconds{
                                                             0}) override;
  [[nodiscard]] bool unplugged() override;

 protected:
  using Time = std::chrono::microseconds;
  // What goes wrong at a packet, besides what has happened already.
  struct Trouble {
    bool loses_ack = false, damaged = false, noisy = false;
  };

  // The clock must outlive the receiver. Both wires run at `baud` bits per second, or 0 for no time at all; a host that
  // does not read leaves no more than `output_capacity` bytes on the one to it.
  WiredReceiver(int baud, std::size_t output_capacity, std::vector<Fault> faults, const base::Clock& clock)
      : clock_(clock), faults_(std::move(faults)), input_(baud, kInputCapacity), output_(baud, output_capacity) {}

  // A byte has come through the wire at this time; comes for silent receivers, too.
  virtual void on_byte(std::uint8_t byte, Time at) = 0;
  // When the receiver does something unasked, unless it is silent; kNever when only the host can move it.
  [[nodiscard]] virtual Time own_event_due() const { return kNever; }
  virtual void on_own_event(Time /*at*/) {}

  // Lives through everything that happens up to now. Each event counts from the moment it was due, however late the
  // host looks, so that delays of the host's scheduling do not add up.
  void advance();
  // All of the bytes, or none and false where the wire has no room for them.
  bool put_on_wire(std::span<const std::uint8_t> bytes, Time at);
  // Counts a packet. What silences or unplugs the receiver for good happens at once.
  Trouble trouble_at_next_packet();
  void fall_silent() { silent_ = true; }
  // Nothing is sent or taken any more.
  [[nodiscard]] bool is_silent() const { return silent_; }

  [[nodiscard]] int packets_counted() const { return packets_counted_; }
  [[nodiscard]] const base::Clock& clock() const { return clock_; }
  [[nodiscard]] Wire& output() { return output_; }

 private:
  static constexpr std::size_t kInputCapacity = 4096;

  void unplug();

  const base::Clock& clock_;
  std::vector<Fault> faults_;
  Wire input_;
  Wire output_;
  int packets_counted_ = 0;
  bool silent_ = false;
  bool unplugged_ = false;
};

}  // namespace simulators

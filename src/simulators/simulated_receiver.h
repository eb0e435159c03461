// A receiver as seen from its end of the wire. It never sleeps: whoever hosts it hands over what the host
// computer wrote and collects what has come through the wire by now.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace simulators {

class SimulatedReceiver {
 public:
  // No output will come unless the host sends something.
  static constexpr std::chrono::microseconds kNever = std::chrono::microseconds::max();

  virtual ~SimulatedReceiver() = default;

  // The host has set its end of the line to this speed; 0: to one that no receiver has. Receivers that hear any speed
  // do not care.
  virtual void set_host_speed(int /*bits_per_second*/) {}
  // Bytes that the host starts to send now. Those beyond input_room() are lost, as on an overrun line.
  virtual void receive(std::span<const std::uint8_t> bytes) = 0;
  // How many bytes the line to the receiver takes now.
  [[nodiscard]] virtual std::size_t input_room() = 0;

  [[nodiscard]] virtual bool output_ready() = 0;
  // The next byte that has come through the wire; nothing when none has.
  virtual std::optional<std::uint8_t> take_output() = 0;
  // How long it is worth sleeping: to the next output byte or, if sooner, to the next moment at which the
  // receiver may decide to send something. With a `batch`, bytes due within that time after the first one are
  // waited for too, so that a host need not wake for each. kNever when there is nothing to wait for.
  [[nodiscard]] virtual std::chrono::microseconds next_output_in(
      std::chrono::microseconds batch = std::chrono::microseconds{0}) = 0;

  // True once the port has vanished for good.
  [[nodiscard]] virtual bool unplugged() = 0;
};

}  // namespace simulators

// A simulated receiver in the place of a serial port: opened under one name, it needs no system call.
#pragma once

#include <string>

#include "base/clock.h"
#include "serial/serial_device.h"
#include "simulators/simulated_receiver.h"

namespace simulators {

class SimulatedDevice : public serial::SerialDevice {
 public:
  // The receiver, which stays on while the port is closed, and the clock must outlive the device.
  SimulatedDevice(std::string port_name, SimulatedReceiver& receiver, base::Clock& clock)
      : port_name_(std::move(port_name)), receiver_(receiver), clock_(clock) {}

  // What came through the wire while the port was closed is lost.
  int open(const std::string& name) override;
  [[nodiscard]] serial::OpenProblem open_problem() const override { return open_problem_; }
  int read_settings() override { return error_when_gone(); }
  // Any settings will do; the receiver is told the speed.
  int apply_settings(const serial::LineSettings& settings) override {
    receiver_.set_host_speed(settings.speed_bps);
    return error_when_gone();
  }
  int restore_settings() override { return error_when_gone(); }
  int close() override;

  int write(std::span<const std::uint8_t> bytes) override;
  bool input_waiting() override;
  std::optional<std::uint8_t> read_byte() override;
  void wait_for_input(std::chrono::milliseconds longest) override;
  serial::LineErrors take_line_errors() override { return {}; }
  [[nodiscard]] bool vanished() const override { return receiver_.unplugged(); }

 private:
  [[nodiscard]] int error_when_gone() const { return open_ && !receiver_.unplugged() ? 0 : serial::kNotOpen; }

  std::string port_name_;
  SimulatedReceiver& receiver_;
  base::Clock& clock_;
  bool open_ = false;
  serial::OpenProblem open_problem_ = serial::OpenProblem::None;
};

}  // namespace simulators

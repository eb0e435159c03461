// A serial port of Linux. Held for this program alone by a lock on the open file (every well-behaved program
// of today looks at it) and, where there is a line to keep others off, by the terminal's exclusive mode.
// Pseudo-terminals, which have no modem lines, are good ports.
#pragma once

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "serial/serial_device.h"

struct termios;

namespace serial {

// Why an open that ended with this error number failed.
[[nodiscard]] OpenProblem open_problem_of(int error);

// The destructor restores and closes an open port.
class TermiosDevice : public SerialDevice {
 public:
  TermiosDevice();
  ~TermiosDevice() override;
  TermiosDevice(const TermiosDevice&) = delete;
  TermiosDevice& operator=(const TermiosDevice&) = delete;

  int open(const std::string& name) override;
  [[nodiscard]] OpenProblem open_problem() const override { return problem_; }
  [[nodiscard]] std::string permitted_group() const override { return group_; }
  int read_settings() override;
  // Speeds from 1200 to 115200 in the usual steps, 5 to 8 data bits; anything else is refused.
  int apply_settings(const LineSettings& settings) override;
  int restore_settings() override;
  // Never waits for a line that takes no bytes.
  int close() override;
  int write(std::span<const std::uint8_t> bytes) override;
  bool input_waiting() override;
  std::optional<std::uint8_t> read_byte() override;
  void wait_for_input(std::chrono::milliseconds longest) override;
  LineErrors take_line_errors() override;
  [[nodiscard]] bool vanished() const override { return vanish_error_ != 0; }
  [[nodiscard]] int vanish_error() const override { return vanish_error_; }

 private:
  // The kernel's running counts: breaks, framing, parity, hardware and buffer overruns.
  using ErrorCounts = std::array<int, 5>;

  [[nodiscard]] int claim() const;
  [[nodiscard]] bool has_modem_lines() const;
  [[nodiscard]] std::optional<ErrorCounts> error_counts() const;
  void let_output_leave() const;
  void fill_buffer();
  int note_failure(int error);

  int fd_ = -1;
  OpenProblem problem_ = OpenProblem::None;
  std::string group_;
  std::unique_ptr<termios> found_;  // the line as it was; none before it was read
  std::optional<ErrorCounts> counts_;
  int speed_bps_ = 9600;
  int vanish_error_ = 0;
  std::chrono::steady_clock::time_point output_ends_{};  // when the bytes of the last write have left
  std::array<std::uint8_t, 256> buffer_{};
  std::size_t next_ = 0;
  std::size_t end_ = 0;
};

}  // namespace serial

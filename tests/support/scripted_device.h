// A serial port whose other end is a test: input queued beforehand or in answer to what is sent, every
// operation able to fail, time that of a SteppingClock. A ComPort takes it from a test like this:
//   auto made = std::make_unique<ScriptedDevice>(clock);
//   ScriptedDevice& device = *made;
//   ComPort port([&](const std::string&) { return std::move(made); }, clock, front_end, flags);
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/byte_cursor.h"
#include "serial/serial_device.h"
#include "tests/support/stepping_clock.h"

namespace support {

class ScriptedDevice : public serial::SerialDevice {
 public:
  explicit ScriptedDevice(SteppingClock& clock) : clock_(clock) {}

  // What the operations answer: 0 or an error number.
  int open_error = 0;
  serial::OpenProblem problem = serial::OpenProblem::None;
  std::string group;
  int read_settings_error = 0;
  int apply_error = 0;
  int restore_error = 0;
  int write_error = 0;
  serial::LineErrors line_errors;  // until they are taken

  // What was done.
  std::vector<std::string> opened;
  std::vector<serial::LineSettings> applied;
  std::vector<base::Bytes> sent;
  int restores = 0;
  bool is_open = false;

  // Runs after each write; may queue the answer.
  std::function<void(const base::Bytes&)> on_sent;
  // Runs after each change of the line.
  std::function<void(const serial::LineSettings&)> on_applied;

  // Bytes that can be read `after` from now, behind those queued before them.
  void queue(base::Bytes bytes, std::chrono::milliseconds after = std::chrono::milliseconds(0)) {
    input_.push_back({clock_.now + after, {bytes.begin(), bytes.end()}});
  }
  // The port vanishes `after` from now; what has arrived by then can still be read.
  void vanish(std::chrono::milliseconds after = std::chrono::milliseconds(0)) { vanishes_ = clock_.now + after; }

  int open(const std::string& name) override {
    opened.push_back(name);
    is_open = open_error == 0;
    return open_error;
  }
  [[nodiscard]] serial::OpenProblem open_problem() const override { return problem; }
  [[nodiscard]] std::string permitted_group() const override { return group; }
  int read_settings() override { return is_open ? read_settings_error : serial::kNotOpen; }
  int apply_settings(const serial::LineSettings& settings) override {
    if (!is_open) return serial::kNotOpen;
    applied.push_back(settings);
    if (on_applied) on_applied(settings);
    return apply_error;
  }
  int restore_settings() override {
    if (!is_open) return serial::kNotOpen;
    ++restores;
    return vanished() ? serial::kVanished : restore_error;
  }
  int close() override {
    if (!is_open) return serial::kNotOpen;
    is_open = false;
    return 0;
  }
  int write(std::span<const std::uint8_t> bytes) override {
    if (!is_open) return serial::kNotOpen;
    if (vanished()) return serial::kVanished;
    if (write_error != 0) return write_error;
    sent.emplace_back(bytes.begin(), bytes.end());
    if (on_sent) on_sent(base::Bytes(sent.back()));
    return 0;
  }
  bool input_waiting() override {
    while (!input_.empty() && input_.front().bytes.empty()) input_.pop_front();
    if (!is_open || input_.empty() || input_.front().due > clock_.now) return false;
    return !vanishes_ || input_.front().due <= *vanishes_;
  }
  std::optional<std::uint8_t> read_byte() override {
    if (!input_waiting()) return std::nullopt;
    const std::uint8_t byte = input_.front().bytes.front();
    input_.front().bytes.pop_front();
    return byte;
  }
  void wait_for_input(std::chrono::milliseconds longest) override {
    if (input_waiting()) return;
    std::chrono::microseconds end = clock_.now + longest;
    if (!input_.empty()) end = std::clamp(input_.front().due, clock_.now, end);
    if (vanishes_) end = std::clamp(*vanishes_, clock_.now, end);
    clock_.now = end;
  }
  serial::LineErrors take_line_errors() override { return std::exchange(line_errors, {}); }
  [[nodiscard]] bool vanished() const override { return is_open && vanishes_ && clock_.now >= *vanishes_; }

 private:
  struct Chunk {
    std::chrono::microseconds due;
    std::deque<std::uint8_t> bytes;
  };

  SteppingClock& clock_;
  std::deque<Chunk> input_;
  std::optional<std::chrono::microseconds> vanishes_;
};

}  // namespace support

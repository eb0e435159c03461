// The message layer of the Lowrance/Eagle interface: sends one request and waits for its answer. There is no
// acknowledgement but the answer. Everything above talks to the unit only through this.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/byte_cursor.h"
#include "base/clock.h"
#include "base/front_end.h"
#include "lowrance/message.h"
#include "serial/com_port.h"
#include "serial/debug_log.h"
#include "serial/device_flags.h"

namespace lowrance {

class LowranceLink {
 public:
  // All must outlive the link.
  LowranceLink(serial::ComPort& port, base::Clock& clock, base::FrontEnd& front_end, serial::DeviceFlags& flags,
               serial::DebugLog& debug_log)
      : port_(port), clock_(clock), front_end_(front_end), flags_(flags), debug_log_(debug_log) {}

  // One exchange: sendLowrMessage, then GetLowrMessage with a report. The data of the answer, the leading byte
  // included; nothing when none came. Once given_up(), nothing is sent any more.
  std::optional<base::Bytes> ask(Command command, std::span<const std::uint8_t> data, std::string_view label);

  // Sends a request, which also becomes the one that a silence sends again; the label names it in the debug log. What
  // has come unasked until now is thrown away.
  void sendLowrMessage(Command command, std::span<const std::uint8_t> data, std::string_view label);
  // Waits for the answer to the request. Silence of 3 s (1 s with the divisor at 3) sends it again; after two
  // repetitions (none with the divisor at 3), when the port has vanished or ESC was pressed, ComTimedOut is set. With
  // `report` a time-out is told on line 2.
  void GetLowrMessage(bool report);
  // The data of the latest answer, the leading byte included; nothing when none came.
  [[nodiscard]] const std::optional<base::Bytes>& answer() const { return answer_; }

  // 3 while nobody knows whether a unit is there, so that finding that out does not take long.
  std::int16_t LowrTimeoutDivisor = 1;

  // Before a conversation: old trouble is forgotten.
  void begin_conversation() { time_outs_in_a_row_ = damaged_answers_ = 0; }
  // After ten time-outs in a row, which is told on line 1, or when the port has vanished.
  [[nodiscard]] bool given_up() const;
  // Answers of this conversation with a wrong checksum. They were taken all the same.
  [[nodiscard]] int damaged_answers() const { return damaged_answers_; }
  // Requests that were sent again after a silence, ever. The unit may have acted on both.
  [[nodiscard]] int repetitions() const { return repetitions_; }

 private:
  using Time = std::chrono::microseconds;
  enum class Event { Answer, Silence, TooLong, Stopped };
  enum class Message { Answer, Echo, NotOurs, Garbage, BrokenOff, TooLong };

  void send(std::string_view label);
  Event receive(int& expiries);
  Message take_message();
  bool LowrParse(std::uint16_t code);
  void time_out(bool report);
  void drop_late_answers(int repetitions);
  std::optional<std::uint8_t> next_byte(Time until);
  // Nothing when the message breaks off.
  std::optional<base::Bytes> next_bytes(std::size_t count);

  serial::ComPort& port_;
  base::Clock& clock_;
  base::FrontEnd& front_end_;
  serial::DeviceFlags& flags_;
  serial::DebugLog& debug_log_;
  Command command_ = Command::Login;  // the latest request, to be sent again after a silence
  base::Bytes data_;
  std::optional<base::Bytes> answer_;
  std::deque<std::uint8_t> unread_;  // came already, to be looked at once more
  Time deadline_{0};                 // of the running receive: no unit that has something to say takes longer
  Time next_esc_poll_{0};
  bool stopped_ = false;  // the running receive ended with ESC or with the port
  int time_outs_in_a_row_ = 0;
  int damaged_answers_ = 0;
  int repetitions_ = 0;
};

}  // namespace lowrance

// The short exchanges with a Garmin receiver: a command or two, and what it answers. Each opens the port, which
// identifies the receiver, and closes the link again, so that the next command asks anew who is there.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "base/clock.h"
#include "garmin/connection.h"
#include "geodesy/position.h"

namespace garmin {

struct Voltages {
  double internal = 0;  // volts
  double external = 0;
};

struct PlaceAndTime {
  geodesy::Position position;  // WGS-84
  std::int64_t seconds = 0;    // UTC, from the Garmin epoch; store::format_date_text prints them
};

class GarminCommands {
 public:
  // Takes one line, with its line break; false when there is nobody any more to take the next one.
  using LineSink = std::function<bool(std::string_view line)>;

  // All must outlive the commands, which take the packets with voltages, time, position and
  // position-velocity-time data.
  GarminCommands(const Connection& connection, base::Clock& clock);

  // What the receiver says; nothing when it was not reached, gave no answer or one that is refused, or when the user
  // stopped it. Port, user and refusals are told; a silence is left to the caller.
  [[nodiscard]] std::optional<Voltages> read_voltages();  // 0 and 0 when it only acknowledges
  [[nodiscard]] std::optional<std::int64_t> read_time();  // as PlaceAndTime::seconds
  [[nodiscard]] std::optional<PlaceAndTime> read_position();

  // Prints position-velocity-time data as it comes, one line a record, until the user stops it or the sink has enough;
  // true then. False when the receiver was not reached, has no such data, which is told, or fell silent.
  [[nodiscard]] bool follow_position(const LineSink& sink);

  // Turns the receiver off. It may be gone before it acknowledges: that is no failure.
  [[nodiscard]] bool power_off();

  // On an open link: sends the computer's date and time, and waits for the answer, whatever it is; false without one.
  [[nodiscard]] bool send_utc_time();
  // On an open link: aborts whatever the receiver is doing, closes the port and forgets who was there.
  void close_link();

 private:
  enum class Answer { Came, None, Stopped };  // None: the receiver is there but has nothing to say

  void take_voltages(std::span<const std::uint8_t> data);
  void take_date_time(std::span<const std::uint8_t> data);
  void take_position(std::span<const std::uint8_t> data);
  void take_pvt(std::span<const std::uint8_t> data);

  [[nodiscard]] bool run(const std::function<bool()>& exchange);
  [[nodiscard]] Answer ask(std::uint8_t command, std::string_view label, PacketKind answer);
  [[nodiscard]] Answer ask_time();
  [[nodiscard]] Answer receive_until(PacketKind kind);
  [[nodiscard]] bool receive_pvt();
  [[nodiscard]] bool anything_comes();
  [[nodiscard]] const Commands& numbers() const { return connection_.selection.commands(); }
  void refuse(std::string_view why);

  Connection connection_;
  base::Clock& clock_;
  // What the receiver has said last.
  Voltages voltages_;
  std::optional<std::int64_t> date_time_;
  std::optional<geodesy::Position> position_;
  const LineSink* sink_ = nullptr;  // while data is wanted
  bool sink_has_enough_ = false;
};

}  // namespace garmin

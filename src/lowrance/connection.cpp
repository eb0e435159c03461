#include "lowrance/connection.h"

namespace lowrance {

bool Connection::must_end(std::string_view abort_text) const {
  const bool is_pressed = port.EscPressed();
  if (is_pressed || link.given_up()) front_end.set_progress_range(0);
  if (is_pressed) {
    front_end.write_line(4, abort_text);
    flags.UserAbort = true;
  }
  return stopped();
}

bool Connection::goes_on_after_kind(std::string_view abort_text) const {
  front_end.set_progress_range(0);
  front_end.refresh_title();
  // ESC may have come with the last request.
  return !must_end(abort_text);
}

Conversation::Conversation(const Connection& connection) : connection_(connection) {
  connection_.flags.UserAbort = false;
  connection_.flags.ComTimedOut = false;
  connection_.link.begin_conversation();
  connection_.port.OpenGpsPort(serial::kLowranceFamily, &connection_.identification);
  opened_ = connection_.flags.PortOpen;
  if (opened_) {
    connection_.front_end.set_status(3, "ESC key to abort");
  } else {
    connection_.front_end.write_line(1, "COM port not open!");
  }
}

Conversation::~Conversation() {
  serial::DeviceFlags& flags = connection_.flags;
  // Who answers next may be another unit.
  if (connection_.link.given_up() || flags.ComTimedOut) flags.LowranceIdentified = false;
  if (flags.PortOpen) connection_.port.AsyncStop();
  flags.UserAbort = false;
  connection_.front_end.set_status(3, " ");
}

}  // namespace lowrance

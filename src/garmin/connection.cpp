#include "garmin/connection.h"

namespace garmin {

void Connection::close_port() const {
  if (flags.PortOpen) port.AsyncStop();
  flags.PortOpen = false;
}

Conversation::Conversation(const Connection& connection, std::string_view when_closed) : connection_(connection) {
  connection_.flags.UserAbort = false;
  connection_.flags.ComTimedOut = false;
  connection_.port.OpenGpsPort(serial::kGarminFamily, &connection_.selection);
  connection_.link.begin_conversation();
  opened_ = connection_.flags.PortOpen;
  if (!opened_ && !when_closed.empty()) connection_.front_end.write_line(1, when_closed);
}

Conversation::~Conversation() {
  connection_.close_port();
  connection_.flags.UserAbort = false;
  connection_.front_end.set_status(3, " ");
}

}  // namespace garmin

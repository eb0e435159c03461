// What every exchange with a Garmin receiver is handed, and the open line that it runs on.
#pragma once

#include <string_view>

#include "base/front_end.h"
#include "garmin/link.h"
#include "garmin/protocol_selection.h"
#include "serial/com_port.h"
#include "serial/device_flags.h"

namespace garmin {

// All must outlive whoever holds the connection.
struct Connection {
  GarminLink& link;
  serial::ComPort& port;
  ProtocolSelection& selection;
  base::FrontEnd& front_end;
  serial::DeviceFlags& flags;

  [[nodiscard]] bool stopped() const { return flags.UserAbort || flags.ComTimedOut; }
  // Closes the port if it is open.
  void close_port() const;
};

// The port opened and the receiver identified, for as long as it lives; then the port is closed, the hints are blanked
// and nothing remains of an abort.
class Conversation {
 public:
  // What is said on line 1 when the port stays closed, behind what the port itself has said; empty for nothing.
  explicit Conversation(const Connection& connection, std::string_view when_closed = "Failed to open COM port!");
  ~Conversation();
  Conversation(const Conversation&) = delete;
  Conversation& operator=(const Conversation&) = delete;

  // Whether the port was opened; if not, that was said. The user may have stopped the identification all the same.
  [[nodiscard]] bool is_open() const { return opened_; }

 private:
  Connection connection_;
  bool opened_ = false;
};

}  // namespace garmin

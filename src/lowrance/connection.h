// What every exchange with a Lowrance/Eagle unit is handed, and the open line that it runs on.
#pragma once

#include <string_view>

#include "base/front_end.h"
#include "lowrance/identification.h"
#include "lowrance/link.h"
#include "serial/com_port.h"
#include "serial/device_flags.h"

namespace lowrance {

// All must outlive whoever holds the connection.
struct Connection {
  LowranceLink& link;
  serial::ComPort& port;
  UnitIdentification& identification;
  base::FrontEnd& front_end;
  serial::DeviceFlags& flags;

  [[nodiscard]] const LowrUnitInfo& unit() const { return identification.info(); }
  // The user has stopped the transfer, or the unit does not answer any more.
  [[nodiscard]] bool stopped() const { return flags.UserAbort || link.given_up(); }
  // Ends a kind's progress and shows the new counts; false when the transfer has to end, as below.
  [[nodiscard]] bool goes_on_after_kind(std::string_view abort_text) const;
  // To be asked between two requests: true when the transfer has to end, because the user pressed ESC, which
  // `abort_text` on line 4 says and UserAbort keeps, or because the unit does not answer any more.
  [[nodiscard]] bool must_end(std::string_view abort_text) const;
};

// The port opened and the unit identified, for as long as it lives; then the port is closed, the hints are blanked and
// nothing remains of an abort.
class Conversation {
 public:
  explicit Conversation(const Connection& connection);
  ~Conversation();
  Conversation(const Conversation&) = delete;
  Conversation& operator=(const Conversation&) = delete;

  // Whether the port was opened; if not, "COM port not open!" was said.
  [[nodiscard]] bool is_open() const { return opened_; }

 private:
  Connection connection_;
  bool opened_ = false;
};

}  // namespace lowrance

// Sends one packet of an upload and sees to it that the receiver has taken it.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "garmin/connection.h"

namespace garmin {

class PacketSender {
 public:
  enum class Answer { Accepted, Refused, Stopped };

  explicit PacketSender(const Connection& connection) : connection_(connection) {}

  // Sends the packet, and again up to three times when it is refused or the answer does not come through. Stopped:
  // the user has stopped it or the receiver is silent, see the flags.
  Answer send(std::uint8_t id, std::span<const std::uint8_t> data, std::string_view label);

 private:
  enum class Reply { Accepted, Refused, Lost, Stopped };
  Reply wait_for_reply(std::uint8_t id);
  void let_late_answers_go_by();

  Connection connection_;
};

}  // namespace garmin

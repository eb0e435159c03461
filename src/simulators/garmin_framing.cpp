#include "simulators/garmin_framing.h"

#include <numeric>

namespace simulators {

namespace {

constexpr std::uint8_t kDle = 0x10;
constexpr std::uint8_t kEtx = 0x03;
constexpr std::size_t kLongestBody = 1 + 255 + 1;

}  // namespace

base::Bytes frame_packet(const Packet& packet, bool damaged) {
  base::Bytes body{static_cast<std::uint8_t>(packet.data.size())};
  body.insert(body.end(), packet.data.begin(), packet.data.end());
  const unsigned sum = std::accumulate(body.begin(), body.end(), static_cast<unsigned>(packet.id));
  body.push_back(static_cast<std::uint8_t>(0 - sum + (damaged ? 1 : 0)));

  base::Bytes frame{kDle, packet.id};
  for (const std::uint8_t byte : body) {
    frame.push_back(byte);
    if (byte == kDle) frame.push_back(byte);
  }
  frame.push_back(kDle);
  frame.push_back(kEtx);
  return frame;
}

std::optional<PacketFinder::Frame> PacketFinder::feed(std::uint8_t byte) {
  switch (state_) {
    case State::Outside:
      if (byte == kDle) state_ = State::AtId;
      return std::nullopt;
    case State::AtId:
      if (byte == kDle) return std::nullopt;  // the last of several may be the one that begins a packet
      id_ = byte;
      body_.clear();
      too_long_ = false;
      state_ = byte == kEtx ? State::Outside : State::Inside;  // DLE ETX is the end of something unseen
      return std::nullopt;
    case State::Inside:
      if (byte == kDle) {
        state_ = State::AfterDle;
      } else {
        keep(byte);
      }
      return std::nullopt;
    case State::AfterDle:
      break;
  }
  state_ = State::Inside;
  if (byte == kDle) {
    keep(byte);
  } else if (byte == kEtx) {
    state_ = State::Outside;
    return finish();
  } else {  // a single DLE inside a packet: the rest was lost and this begins the next
    id_ = byte;
    body_.clear();
    too_long_ = false;
  }
  return std::nullopt;
}

void PacketFinder::keep(std::uint8_t byte) {
  if (body_.size() == kLongestBody) {
    too_long_ = true;
  } else {
    body_.push_back(byte);
  }
}

PacketFinder::Frame PacketFinder::finish() const {
  Frame frame;
  frame.packet.id = id_;
  if (too_long_ || body_.size() < 2 || body_[0] != body_.size() - 2) return frame;
  const unsigned sum = std::accumulate(body_.begin(), body_.end(), static_cast<unsigned>(id_));
  frame.good = (sum & 0xFF) == 0;
  if (frame.good) frame.packet.data.assign(body_.begin() + 1, body_.end() - 1);
  return frame;
}

}  // namespace simulators

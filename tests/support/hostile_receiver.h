// A receiver that answers whatever a test likes, packet by packet or without end, at the pace of a line of
// 9600 bits per second. Framing is that of the simulators, not of the program.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "serial/serial_device.h"
#include "simulators/garmin_framing.h"
#include "tests/support/stepping_clock.h"

namespace support {

class HostileReceiver : public serial::SerialDevice {
 public:
  using Packets = std::vector<simulators::Packet>;

  explicit HostileReceiver(SteppingClock& clock) : clock_(clock) {}

  // The answers to the product request (under kIdentification) and to each command number: each packet goes
  // out after the acknowledgement of the one before.
  static constexpr int kIdentification = -1;
  std::map<int, Packets> answers;
  // What comes without end, asked for whenever nothing waits: from the start, or from the command on.
  std::function<base::Bytes()> endless;
  int endless_from = kFromTheStart;
  static constexpr int kFromTheStart = -2;
  bool acknowledges = true;
  std::function<bool(const simulators::Packet&)> refuses;  // which packets it answers with NAK
  // This packet of the answer to a command (from 0) is damaged the first time; a NAK brings it again.
  int damaged_packet = -1;
  int damages_left = 1'000'000;  // in how many answers it is damaged
  // Every ACK stands for the packet under way, whatever it names and whether or not that has arrived; a NAK brings
  // whatever is under way by then.
  bool is_hasty = false;

  // What was done to it.
  std::vector<simulators::Packet> heard;
  int polls = 0;
  [[nodiscard]] bool ran_away() const { return ran_away_; }  // the program would have gone on for ever

  static simulators::Packet product(int id, int version) {
    return {255, base::ByteWriter()
                     .u16(static_cast<std::uint16_t>(id))
                     .i16(static_cast<std::int16_t>(version))
                     .string("Hostile", 20)
                     .result()};
  }
  // "A100 D108" as the data of a capability array.
  static simulators::Packet array(std::string_view text) {
    std::string problem;
    base::ByteWriter out;
    for (const std::string_view word : base::split_words(text))
      out.u8(static_cast<std::uint8_t>(word[0]))
          .u16(static_cast<std::uint16_t>(base::parse_integer(word.substr(1)).value_or(0)));
    return {253, out.result()};
  }
  static simulators::Packet count(int records, std::uint8_t id = 27) {
    return {id, base::ByteWriter().u16(static_cast<std::uint16_t>(records)).result()};
  }
  static simulators::Packet closing(int command) {
    return {12, base::ByteWriter().u16(static_cast<std::uint16_t>(command)).result()};
  }

  int open(const std::string&) override {
    streaming_ = endless_from == kFromTheStart;
    return 0;
  }
  [[nodiscard]] serial::OpenProblem open_problem() const override { return serial::OpenProblem::None; }
  int read_settings() override { return 0; }
  int apply_settings(const serial::LineSettings&) override { return 0; }
  int restore_settings() override { return 0; }
  int close() override { return 0; }
  int write(std::span<const std::uint8_t> bytes) override {
    for (const std::uint8_t byte : bytes)
      if (const auto frame = finder_.feed(byte); frame && frame->good) on_packet(frame->packet);
    return 0;
  }
  bool input_waiting() override {
    constexpr int kMostPolls = 200'000;
    constexpr auto kLongest = std::chrono::minutes(10);
    if (++polls > kMostPolls || clock_.now > kLongest) ran_away_ = true;
    if (ran_away_) return false;
    if (input_.empty() && streaming_ && endless) queue(endless());
    return !input_.empty();
  }
  std::optional<std::uint8_t> read_byte() override {
    if (!input_waiting()) return std::nullopt;
    const std::uint8_t byte = input_.front();
    input_.pop_front();
    clock_.now += std::chrono::microseconds(1042);
    return byte;
  }
  void wait_for_input(std::chrono::milliseconds longest) override {
    if (!input_waiting()) clock_.now += longest;
  }
  serial::LineErrors take_line_errors() override { return {}; }
  [[nodiscard]] bool vanished() const override { return ran_away_; }

 private:
  void queue(const base::Bytes& bytes) { input_.insert(input_.end(), bytes.begin(), bytes.end()); }
  void on_packet(const simulators::Packet& packet) {
    constexpr std::uint8_t kAck = 6, kNak = 21, kCommand = 10, kRequest = 254;
    heard.push_back(packet);
    if (packet.id == kNak && is_hasty) return queue(under_way_);
    if (packet.id == kAck || packet.id == kNak) return send_next();
    const bool refused = refuses && refuses(packet);
    if (acknowledges) queue(simulators::frame_packet({refused ? kNak : kAck, {packet.id, 0}}));
    if (refused) return;
    const int command = packet.id == kRequest ? kIdentification : packet.data.empty() ? 0 : packet.data[0];
    if (packet.id != kRequest && packet.id != kCommand) return;
    if (command == endless_from) streaming_ = true;
    const auto answer = answers.find(command);
    outgoing_.clear();
    if (answer != answers.end()) outgoing_.assign(answer->second.begin(), answer->second.end());
    until_damage_ = command == kIdentification ? -1 : damaged_packet;
    send_next();
  }
  void send_next() {
    if (outgoing_.empty()) return;
    const bool damaged = until_damage_-- == 0 && damages_left-- > 0;
    queue(simulators::frame_packet(outgoing_.front(), damaged));
    under_way_ = simulators::frame_packet(outgoing_.front());
    if (!damaged || is_hasty) outgoing_.pop_front();
  }

  SteppingClock& clock_;
  simulators::PacketFinder finder_;
  std::deque<std::uint8_t> input_;
  std::deque<simulators::Packet> outgoing_;
  base::Bytes under_way_;
  int until_damage_ = -1;
  bool streaming_ = false;
  bool ran_away_ = false;
};

}  // namespace support

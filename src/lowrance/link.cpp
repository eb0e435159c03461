#include "lowrance/link.h"

#include <algorithm>

#include "base/text.h"

namespace lowrance {
namespace {

using namespace std::chrono_literals;

constexpr auto kPollInterval = 20ms;  // between two looks at ESC; a byte ends the wait at once
constexpr std::chrono::seconds kBrokenOff = 3s;
constexpr auto kLateness = 500ms;
constexpr int kMostTimeOuts = 10;
constexpr int kMostStaleBytes = 4096;

}  // namespace

bool LowranceLink::given_up() const { return time_outs_in_a_row_ >= kMostTimeOuts || port_.lost(); }

std::optional<base::Bytes> LowranceLink::ask(Command command, std::span<const std::uint8_t> data,
                                             std::string_view label) {
  if (given_up()) return std::nullopt;
  sendLowrMessage(command, data, label);
  GetLowrMessage(true);
  return answer_;
}

void LowranceLink::sendLowrMessage(Command command, std::span<const std::uint8_t> data, std::string_view label) {
  command_ = command;
  data_.assign(data.begin(), data.end());
  // The answer to an earlier request would be taken for the answer to this one.
  unread_.clear();
  for (int i = 0; i < kMostStaleBytes && port_.AsyncInStat(); ++i) port_.AsyncIn();
  send(label);
}

void LowranceLink::send(std::string_view label) {
  const auto header = make_header(command_, static_cast<std::uint16_t>(data_.size()));
  debug_log_.block("Sending header for: " + std::string(label) + "\n", header);
  port_.AsyncOut(header);
  if (data_.empty()) return;
  base::Bytes data = data_;
  data.push_back(checksum(data));
  debug_log_.block("Sending: " + std::string(label) + "\n", data);
  port_.AsyncOut(data);
}

void LowranceLink::GetLowrMessage(bool report) {
  answer_.reset();
  flags_.ComTimedOut = stopped_ = false;
  const int limit = 3 / LowrTimeoutDivisor;
  deadline_ = clock_.monotonic() + 3s * limit * limit;
  int repetitions = 0;
  for (int expiries = 0;;) {
    switch (receive(expiries)) {
      case Event::Answer:
        time_outs_in_a_row_ = 0;
        drop_late_answers(repetitions);
        return;
      case Event::TooLong:
        return time_out(report);
      case Event::Stopped:
        flags_.ComTimedOut = true;
        return;
      case Event::Silence:
        if (++expiries >= limit || clock_.monotonic() >= deadline_) return time_out(report);
        ++repetitions;
        ++repetitions_;
        send("Re-send");
    }
  }
}

// Up to an answer, a silence or the deadline.
LowranceLink::Event LowranceLink::receive(int& expiries) {
  const std::chrono::seconds silence{3 / LowrTimeoutDivisor};
  std::uint8_t previous = 0;
  for (Time last_sign_of_life = clock_.monotonic();;) {
    const std::optional<std::uint8_t> byte = next_byte(last_sign_of_life + silence);
    if (!byte) return stopped_ ? Event::Stopped : Event::Silence;
    const bool starts = previous == kStart1 && *byte == kStart2;
    previous = *byte;
    Message message = Message::Garbage;
    if (starts) message = take_message();
    switch (message) {
      case Message::Answer:
        return Event::Answer;
      case Message::TooLong:
        return Event::TooLong;
      case Message::BrokenOff:
        return stopped_ ? Event::Stopped : Event::Silence;
      case Message::NotOurs:
        break;
      case Message::Echo:
        last_sign_of_life = clock_.monotonic();
        break;
      case Message::Garbage:
        // What may be the start of a message shows only then what it is worth.
        if (*byte == kStart1) break;
        expiries = 0;
        last_sign_of_life = clock_.monotonic();
    }
  }
}

// What follows the two start bytes.
LowranceLink::Message LowranceLink::take_message() {
  const std::optional<base::Bytes> rest = next_bytes(kHeaderSize - 2);
  if (!rest) return Message::BrokenOff;
  const base::Bytes header = base::ByteWriter().u8(kStart1).u8(kStart2).bytes(*rest).result();
  const std::uint8_t sum = static_cast<std::uint8_t>(-checksum(header));
  if (sum != 0) front_end_.write_line(1, base::format_text("Bad Lowrance Header: sum:%d  ", sum));
  base::ByteReader in(*rest);
  const std::uint16_t code = in.u16();
  const std::size_t length = in.u16();
  if (code == static_cast<std::uint16_t>(command_)) {
    debug_log_.block("Received (and skipped): Header\n", header);
    // The data come back too, and might look like the start of a message.
    if (length > 0 && length == data_.size() && !next_bytes(length + 1)) return Message::BrokenOff;
    return Message::Echo;
  }
  debug_log_.block("Received: Header\n", header);
  base::Bytes data;
  if (length > kLongestAnswer) {
    if (sum != 0) {
      // This was no header; the true one may have begun within it.
      unread_.assign(rest->begin(), rest->end());
      return Message::Garbage;
    }
    front_end_.write_line(1, base::format_text("Lowrance answer too long: %d bytes", static_cast<int>(length)));
    return Message::TooLong;
  }
  if (length > 0) {
    const std::optional<base::Bytes> block = next_bytes(length + 1);
    if (!block) return Message::BrokenOff;
    debug_log_.block("Received:\n", *block);
    data = *block;
  }
  if (!LowrParse(code)) return Message::NotOurs;
  // Deliberate : what is damaged is taken all the same, but whoever asked can tell the user.
  if (sum != 0 || checksum(data) != 0) ++damaged_answers_;
  if (!data.empty()) data.pop_back();
  answer_ = std::move(data);
  return Message::Answer;
}

// Whether the message of this code answers the request; one of an earlier request does not.
bool LowranceLink::LowrParse(std::uint16_t code) {
  if ((code & kAnswerBit) == 0)
    front_end_.write_line(1, base::format_text("Warning: Header command:%04x is not a response command", code));
  const auto command = static_cast<Command>(code & ~kAnswerBit);
  if (command == Command::GetSymbolInfo || command == Command::ChangeSpeed)
    debug_log_.text(base::format_text("LowrParse of %04x not written yet\n", static_cast<unsigned>(command)));
  return command == command_;
}

void LowranceLink::time_out(bool report) {
  flags_.ComTimedOut = true;
  if (!report) return;
  front_end_.write_line(2, "Timeout in GetLowrMessage");
  if (++time_outs_in_a_row_ == kMostTimeOuts) front_end_.write_line(1, "Receiver does not answer");
}

// A slow unit answers each repetition too, as long after it as it did after the request.
void LowranceLink::drop_late_answers(int repetitions) {
  const std::optional<base::Bytes> answer = answer_;
  const int damaged_answers = damaged_answers_;
  deadline_ = clock_.monotonic() + 3s * repetitions + kLateness;
  for (int missing = repetitions, expiries = 0; missing > 0;) {
    const Event event = receive(expiries);
    if (event == Event::Answer) --missing;
    if (event == Event::Stopped || clock_.monotonic() >= deadline_) break;
  }
  answer_ = answer;
  damaged_answers_ = damaged_answers;
}

// Nothing when none came until then, or before the deadline, and after ESC or with the port (stopped_).
std::optional<std::uint8_t> LowranceLink::next_byte(Time until) {
  for (;;) {
    const Time now = clock_.monotonic();
    if (now >= next_esc_poll_) {
      next_esc_poll_ = now + kPollInterval;
      stopped_ = stopped_ || port_.esc_waits();
    }
    if (stopped_ || now >= deadline_) return std::nullopt;
    if (!unread_.empty()) {
      const std::uint8_t byte = unread_.front();
      unread_.pop_front();
      return byte;
    }
    if (port_.AsyncInStat()) {
      const int byte = port_.AsyncIn();
      if (byte < 1000) return static_cast<std::uint8_t>(byte);
    }
    stopped_ = port_.lost();
    if (stopped_ || now >= until) return std::nullopt;
    port_.wait_for_input(std::min(kPollInterval, std::chrono::ceil<std::chrono::milliseconds>(until - now)));
  }
}

std::optional<base::Bytes> LowranceLink::next_bytes(std::size_t count) {
  base::Bytes bytes;
  while (bytes.size() < count) {
    const std::optional<std::uint8_t> byte = next_byte(clock_.monotonic() + kBrokenOff);
    if (!byte) return std::nullopt;
    bytes.push_back(*byte);
  }
  return bytes;
}

}  // namespace lowrance

// The other end of a conversation with a Lowrance/Eagle unit: it logs the program in, tells what it is, has a memory
// that can be read and written, and answers everything else as the test says. Framed by hand, so that the program's own
// framing is not its judge.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lowrance/connection.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/scripted_device.h"

namespace support {

class LowranceConversation : public testing::Test {
 protected:
  static constexpr int kReadMemory = 0x0008, kWriteMemory = 0x0009, kLogin = 0x000D;
  static constexpr int kGetWaypoint = 0x0303, kSendWaypoint = 0x0304, kGetRoute = 0x0305, kSendRoute = 0x0306;
  static constexpr int kGetPointer = 0x0307, kGetIconCount = 0x0308, kGetIcon = 0x0309, kSetIconCount = 0x030A;
  static constexpr int kSendIcon = 0x030B, kGetUnitInfo = 0x030E, kGetOrigin = 0x0312, kGetDeltas = 0x0313;
  static constexpr int kSetOrigin = 0x0314, kSetDeltas = 0x0315;
  using Bytes = base::Bytes;
  struct Request {
    int code;
    Bytes data;
  };
  // The data of the answer, the leading byte included; nothing for silence.
  using Answer = std::optional<Bytes>;
  using Lines = std::map<int, std::string>;

  LowranceConversation() {
    auto made = std::make_shared<std::unique_ptr<ScriptedDevice>>(std::make_unique<ScriptedDevice>(clock));
    device = made->get();
    device->on_sent = [this](const Bytes& bytes) { hear(bytes); };
    port = std::make_unique<serial::ComPort>([made](const std::string&) { return std::move(*made); }, clock, front_end,
                                             flags);
    link = std::make_unique<lowrance::LowranceLink>(*port, clock, front_end, flags, log);
    identification = std::make_unique<lowrance::UnitIdentification>(*link, front_end, flags);
  }
  lowrance::Connection connection() { return {*link, *port, *identification, front_end, flags}; }
  [[nodiscard]] double elapsed() const { return std::chrono::duration<double>(clock.now).count(); }

  // Whatever was said and sent is forgotten, and the unit will be asked again what it is.
  void begin() {
    flags.LowranceIdentified = false;
    front_end.lines.clear();
    front_end.line_writes.clear();
    requests.clear();
  }
  // Code, high byte first, and data of all requests but those that identify the unit.
  [[nodiscard]] Bytes sent() const {
    base::ByteWriter out;
    for (const Request& request : requests)
      out.u8(static_cast<std::uint8_t>(request.code >> 8))
          .u8(static_cast<std::uint8_t>(request.code))
          .bytes(request.data);
    return out.result();
  }
  // The data of those of this code.
  [[nodiscard]] std::vector<Bytes> requests_of(int code) const {
    std::vector<Bytes> found;
    for (const Request& request : requests)
      if (request.code == code) found.push_back(request.data);
    return found;
  }
  // Bytes as digits; a name in quotes is padded to the 13 bytes of its field.
  static Bytes hex(std::string_view text) {
    Bytes bytes;
    for (std::size_t at = 0; at < text.size();) {
      if (text[at] == '\'') {
        const std::string_view name = text.substr(at + 1, text.find('\'', at + 1) - at - 1);
        bytes.insert(bytes.end(), name.begin(), name.end());
        bytes.resize(bytes.size() + 13 - name.size());
        at += name.size() + 2;
      } else if (text[at] == ' ') {
        ++at;
      } else {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(text.substr(at, 2)), nullptr, 16)));
        at += 2;
      }
    }
    return bytes;
  }
  static int number_of(const Bytes& data) { return data.empty() ? 0 : data[0] | (data.size() > 1 ? data[1] << 8 : 0); }
  // The numbers, of slots or trails, that these requests name.
  [[nodiscard]] std::vector<int> numbers_of(int code) const {
    std::vector<int> numbers;
    for (const Bytes& data : requests_of(code)) numbers.push_back(number_of(data));
    return numbers;
  }
  void set_info(std::size_t at, int value) {
    unit_info[at] = static_cast<std::uint8_t>(value);
    unit_info[at + 1] = static_cast<std::uint8_t>(value >> 8);
  }

  // Product 14, 1000 waypoints, 1000 icons, 20 routes of 50 points, 4 trails, 28 symbols.
  Bytes unit_info{0, 14, 0, 1, 0, 1, 0, 159, 0, 239, 0, 0xE8, 3, 0xE8, 3, 20, 0, 50, 0, 4, 28, 0, 1, 0, 0, 0};
  static constexpr std::size_t kVersionAt = 3, kScreenTypeAt = 5, kScreenHeightAt = 9, kWaypointsAt = 11, kIconsAt = 13,
                               kRoutesAt = 15, kRoutePointsAt = 17, kTrailsAt = 19;

  std::uint32_t memory_at = 0;  // the address of memory[0]
  Bytes memory;
  int surplus = 0;  // bytes that answers from the memory have too many
  std::function<Answer(const Request&)> answer = [](const Request&) { return Bytes{0}; };
  std::function<bool(const Request&)> is_lost = [](const Request&) { return false; };  // the answer, after the deed
  std::chrono::milliseconds late{0};  // so long after their requests the answers come
  std::vector<Request> requests;

  SteppingClock clock;
  RecordingFrontEnd front_end;
  serial::DeviceFlags flags;
  serial::DebugLog log{front_end};
  ScriptedDevice* device = nullptr;
  std::unique_ptr<serial::ComPort> port;
  std::unique_ptr<lowrance::LowranceLink> link;
  std::unique_ptr<lowrance::UnitIdentification> identification;

  // What the program writes.
  void hear(const Bytes& bytes) {
    received_.insert(received_.end(), bytes.begin(), bytes.end());
    while (received_.size() >= 8) {
      const std::size_t length = received_[4] | std::size_t{received_[5]} << 8;
      const std::size_t size = length == 0 ? 8 : 8 + length + 1;
      if (received_.size() < size) return;
      const auto end = received_.begin() + static_cast<std::ptrdiff_t>(8 + length);
      take({received_[2] | received_[3] << 8, Bytes(received_.begin() + 8, end)});
      received_.erase(received_.begin(), received_.begin() + static_cast<std::ptrdiff_t>(size));
    }
  }

 private:
  void take(const Request& request) {
    if (request.code == kLogin) return reply(request, {0});
    if (request.code == kGetUnitInfo) return reply(request, unit_info);
    requests.push_back(request);
    const Answer made = request.code == kReadMemory    ? read(request.data)
                        : request.code == kWriteMemory ? write(request.data)
                                                       : answer(request);
    if (made && !is_lost(request)) reply(request, *made, late);
  }
  void reply(const Request& request, const Bytes& data, std::chrono::milliseconds after = {}) {
    const auto byte = [](std::size_t value) { return static_cast<std::uint8_t>(value & 0xFF); };
    const auto sum = [&](const Bytes& part) { return byte(0 - std::accumulate(part.begin(), part.end(), 0U)); };
    const auto code = static_cast<std::size_t>(request.code);
    Bytes message{0x55, 0x81, byte(code | 0x80), byte(code >> 8), byte(data.size()), byte(data.size() >> 8), 0};
    message.push_back(sum(message));
    message.insert(message.end(), data.begin(), data.end());
    message.push_back(sum(data));
    device->queue(message, after);
  }
  [[nodiscard]] std::size_t place_of(const Bytes& data) const { return base::ByteReader(data).u32() - memory_at; }
  [[nodiscard]] Answer read(const Bytes& data) const {
    const std::size_t at = place_of(data), count = data[4] | std::size_t{data[5]} << 8;
    if (at > memory.size() || count > memory.size() - at) return Answer();
    Bytes bytes{0};
    bytes.insert(bytes.end(), memory.begin() + static_cast<std::ptrdiff_t>(at),
                 memory.begin() + static_cast<std::ptrdiff_t>(at + count));
    bytes.resize(bytes.size() + static_cast<std::size_t>(surplus));
    return bytes;
  }
  Answer write(const Bytes& data) {
    const std::size_t at = place_of(data), count = data.size() - 4;
    if (at > memory.size() || count > memory.size() - at) return Answer();
    std::copy(data.begin() + 4, data.end(), memory.begin() + static_cast<std::ptrdiff_t>(at));
    return Bytes{0};
  }

  Bytes received_;
};

}  // namespace support

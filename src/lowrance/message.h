// Messages of the Lowrance/Eagle serial interface: 55 81, command u16, number of data bytes u16, 0, header checksum;
// then, if there are any, the data and their checksum. Checksums are the two's complement of the 8-bit sum, so that
// header and data each sum to 0. An answer has bit 0x80 of its request's command set, and its data begin with one byte
// that says nothing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/byte_cursor.h"

namespace lowrance {

inline constexpr std::uint8_t kStart1 = 0x55;
inline constexpr std::uint8_t kStart2 = 0x81;
inline constexpr std::size_t kHeaderSize = 8;
inline constexpr std::uint16_t kAnswerBit = 0x80;
inline constexpr std::size_t kLongestAnswer = 512;  // data bytes; the longest known, a route of 200 points, has 417

enum class Command : std::uint16_t {
  ReadMemory = 0x0008,        // address u32, count u16, 0
  WriteMemory = 0x0009,       // address u32, bytes
  Login = 0x000D,             // also out of NMEA mode
  ChangeSpeed = 0x010A,       // never sent
  ScreenParameters = 0x0301,  // freezes the screen until UnfreezeScreen
  UnfreezeScreen = 0x0302,
  GetWaypoint = 0x0303,  // number u16
  SendWaypoint = 0x0304,
  GetRoute = 0x0305,  // number u16
  SendRoute = 0x0306,
  GetTrailPointer = 0x0307,  // trail u8, from 0 like all trail numbers on the wire
  GetIconCount = 0x0308,
  GetIcon = 0x0309,       // number u16
  SetIconCount = 0x030A,  // count u16
  SendIcon = 0x030B,
  GetSymbolInfo = 0x030D,  // never sent
  GetUnitInfo = 0x030E,
  GetTrailOrigin = 0x0312,  // trail u8
  GetTrailDeltas = 0x0313,  // trail u8, count u16
  SetTrailOrigin = 0x0314,
  SetTrailDeltas = 0x0315,
};

// What makes the bytes sum to 0 modulo 256.
[[nodiscard]] std::uint8_t checksum(std::span<const std::uint8_t> bytes);
// The header of a request with `length` data bytes.
[[nodiscard]] std::array<std::uint8_t, kHeaderSize> make_header(Command command, std::uint16_t length);

}  // namespace lowrance

// What a Lowrance/Eagle unit says of itself (answer to Command::GetUnitInfo). Every transfer takes its limits from
// this.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace lowrance {

struct LowrUnitInfo {
  std::uint16_t ProductId = 0;
  std::int16_t ProtocolVersion = 0;  // 0: plot trails are read and written in the unit's memory; shown plus 1
  std::int16_t ScreenType = 0;       // 0 black plane only, 1 black and grey, 2 as 1 with other sizes
  std::int16_t ScreenWidth = 0;      // pixels
  std::int16_t ScreenHeight = 0;
  std::int16_t NumOfWaypoints = 0;  // slots; this and the following numbers may be negative, which is none
  std::int16_t NumOfIcons = 0;
  std::int16_t NumOfRoutes = 0;
  std::int16_t NumOfWaypointsPerRoute = 0;
  std::uint8_t NumOfPlotTrails = 0;
  std::uint8_t NumOfIconSym = 0;
  std::uint8_t ScreenRotateAngle = 0;  // 0, 90, 180; 270 as its low byte
  std::uint32_t RunTime = 0;           // seconds
};

inline constexpr std::size_t kUnitInfoSize = 26;  // bytes of the answer's data

// Nothing when the answer is shorter.
[[nodiscard]] std::optional<LowrUnitInfo> read_unit_info(std::span<const std::uint8_t> answer);

// "Unknown" for ids that nobody knows.
[[nodiscard]] std::string_view product_name(std::uint16_t product_id);

}  // namespace lowrance

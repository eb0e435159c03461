#include "lowrance/unit_info.h"

#include "base/byte_cursor.h"

namespace lowrance {
namespace {

constexpr std::array<std::string_view, 20> kProductNames{
    "Unknown",      "GlobalMap Sport", "AirMap",        "AccuMap",       "GlobalNav 310",
    "Eagle View",   "Eagle Explorer",  "GlobalNav 200", "Expedition II", "GlobalNav 212",
    "GlobalMap 12", "Unknown",         "AccuMap 12",    "Unknown",       "GlobalMap 100",
    "Unknown",      "Unknown",         "Unknown",       "Unknown",       "Unknown"};

}  // namespace

std::optional<LowrUnitInfo> read_unit_info(std::span<const std::uint8_t> answer) {
  base::ByteReader in(answer);
  LowrUnitInfo info;
  in.skip(1);
  info.ProductId = in.u16();
  for (std::int16_t LowrUnitInfo::*field :
       {&LowrUnitInfo::ProtocolVersion, &LowrUnitInfo::ScreenType, &LowrUnitInfo::ScreenWidth,
        &LowrUnitInfo::ScreenHeight, &LowrUnitInfo::NumOfWaypoints, &LowrUnitInfo::NumOfIcons,
        &LowrUnitInfo::NumOfRoutes, &LowrUnitInfo::NumOfWaypointsPerRoute})
    info.*field = in.i16();
  info.NumOfPlotTrails = in.u8();
  info.NumOfIconSym = in.u8();
  info.ScreenRotateAngle = in.u8();
  info.RunTime = in.u32();
  if (!in.ok()) return std::nullopt;
  return info;
}

std::string_view product_name(std::uint16_t product_id) {
  return product_id < kProductNames.size() ? kProductNames[product_id] : kProductNames[0];
}

}  // namespace lowrance

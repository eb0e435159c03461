#include "lowrance/identification.h"

#include "base/text.h"

namespace lowrance {
namespace {

constexpr int kDetailLine = 5;
constexpr int kMostAttempts = 3;

}  // namespace

void UnitIdentification::probe() {
  if (flags_.LowranceIdentified) return;
  GetLowrIDLogin();
  if (!flags_.ComTimedOut) GetLowrID();
}

void UnitIdentification::GetLowrIDLogin() {
  link_.sendLowrMessage(Command::Login, {}, "GetLowrIDLogin");
  link_.LowrTimeoutDivisor = 3;
  link_.GetLowrMessage(false);
}

void UnitIdentification::GetLowrID() {
  link_.LowrTimeoutDivisor = 1;
  flags_.ComTimedOut = false;
  // All limits hang on this, so what came damaged is asked for again. What stays damaged is taken, and counted.
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    link_.begin_conversation();
    link_.sendLowrMessage(Command::GetUnitInfo, {}, "GetLowrID");
    link_.GetLowrMessage(true);
    if (!link_.answer() || link_.damaged_answers() == 0) break;
  }
  if (!link_.answer()) return;
  const std::optional<LowrUnitInfo> info = read_unit_info(*link_.answer());
  if (info) {
    info_ = *info;
    flags_.LowranceIdentified = true;
  } else {
    // Nothing can be moved without knowing the unit's limits.
    front_end_.write_line(kDetailLine,
                          base::format_text("The unit information has %d bytes instead of %d.",
                                            static_cast<int>(link_.answer()->size()), static_cast<int>(kUnitInfoSize)));
    flags_.ComTimedOut = true;
  }
}

void UnitIdentification::show() const {
  const LowrUnitInfo& unit = info_;
  const std::string name(product_name(unit.ProductId));
  using base::format_text;
  const std::array<std::string, 8> texts{
      format_text("GPS Is a Lowrance %s", name.c_str()),
      format_text("ProtocolVersion       : %3d     | NumOfWaypoints        : %5d", unit.ProtocolVersion + 1,
                  unit.NumOfWaypoints),
      format_text("ScreenType            : %3d     | NumOfIcons            : %5d", unit.ScreenType, unit.NumOfIcons),
      format_text("ScreenWidth           : %3d     | NumOfRoutes           : %5d", unit.ScreenWidth, unit.NumOfRoutes),
      format_text("ScreenHeight          : %3d     | NumOfWaypointsPerRoute: %5d", unit.ScreenHeight,
                  unit.NumOfWaypointsPerRoute),
      format_text("ScreenRotateAngle     : %3d     | NumOfPlotTrails       : %5d", unit.ScreenRotateAngle,
                  unit.NumOfPlotTrails),
      format_text("                                  NumOfIconSym          : %5d", unit.NumOfIconSym),
      format_text("RunTime               : %u", unit.RunTime)};
  int line = 0;
  for (const std::string& text : texts) front_end_.write_line(++line, text);
}

}  // namespace lowrance

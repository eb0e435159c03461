// Who is there: the exchange that finds out whether a Lowrance/Eagle unit answers, and what it can hold.
#pragma once

#include <array>
#include <string>

#include "base/front_end.h"
#include "lowrance/link.h"
#include "lowrance/unit_info.h"
#include "serial/device_flags.h"
#include "serial/receiver.h"

namespace lowrance {

class UnitIdentification : public serial::Receiver {
 public:
  // All must outlive the identification.
  UnitIdentification(LowranceLink& link, base::FrontEnd& front_end, serial::DeviceFlags& flags)
      : link_(link), front_end_(front_end), flags_(flags) {}

  [[nodiscard]] int family() const override { return serial::kLowranceFamily; }
  // Logs in and asks for the unit information, unless the unit is known (LowranceIdentified); ComTimedOut when it
  // does not answer.
  void probe() override;

  // Of the unit that was identified last.
  [[nodiscard]] const LowrUnitInfo& info() const { return info_; }
  // The unit information in eight texts on lines 1 to 8.
  void show() const;

 private:
  void GetLowrIDLogin();
  void GetLowrID();

  LowranceLink& link_;
  base::FrontEnd& front_end_;
  serial::DeviceFlags& flags_;
  LowrUnitInfo info_;
};

}  // namespace lowrance

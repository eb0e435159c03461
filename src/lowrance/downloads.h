// Downloads from Lowrance/Eagle units: one call moves one kind of item, or all kinds, from the unit into the stores.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "lowrance/connection.h"
#include "lowrance/records.h"
#include "lowrance/transfer_kinds.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace lowrance {

class LowranceDownloads {
 public:
  // All must outlive the downloads.
  LowranceDownloads(const Connection& connection, const base::Clock& clock, store::ItemStore& items,
                    const store::Settings& settings)
      : connection_(connection), clock_(clock), items_(items), settings_(settings) {}

  // Opens the port, downloads what the menu command stands for and closes the port. True when all of it came; on
  // silence or after ESC, which are told to the user, what has arrived stays in the stores.
  [[nodiscard]] bool download(int command_id);

 private:
  Connection connection_;
  const base::Clock& clock_;
  store::ItemStore& items_;
  const store::Settings& settings_;
};

}  // namespace lowrance

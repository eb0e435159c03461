// Uploads to Lowrance/Eagle units: one call moves the selected items of one kind, or of all kinds, into the unit.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "lowrance/connection.h"
#include "lowrance/records.h"
#include "lowrance/transfer_kinds.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace lowrance {

class LowranceUploads {
 public:
  using OffsetSeconds = std::function<std::int64_t()>;  // local time minus UTC

  // All must outlive the uploads.
  LowranceUploads(const Connection& connection, const store::ItemStore& items, const store::Settings& settings,
                  OffsetSeconds offset)
      : connection_(connection), items_(items), settings_(settings), offset_(std::move(offset)) {}

  // Opens the port, sends what the menu command stands for and closes the port. True when the unit has answered
  // everything and nothing was left out; what was is said.
  [[nodiscard]] bool upload(int command_id);

 private:
  Connection connection_;
  const store::ItemStore& items_;
  const store::Settings& settings_;
  OffsetSeconds offset_;
};

}  // namespace lowrance

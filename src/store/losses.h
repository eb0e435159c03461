// What a save leaves out of the items, in words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/item_store.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace store {

// One sentence for each kind of items that the store has, the user wants written and the format cannot hold, or of
// which it cannot hold some property: "IGC keeps no altitude: 1,204 altitudes not written". Whole kinds come first. A
// sentence fits into an output line; what does not fit has another one. `title` names the format.
[[nodiscard]] std::vector<std::string> losses(const ItemStore& items, const OutputOptions& options,
                                              std::string_view title, const Kept& kept);

}  // namespace store

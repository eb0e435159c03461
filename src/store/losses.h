// What a save leaves out of the items, in words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/item_store.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace store {

// One sentence for each kind of items and each property of kept ones that the store has, the user wants
// written and the format cannot hold: "IGC keeps no altitude: 1,204 altitudes not written". Whole kinds come
// first. `title` names the format.
[[nodiscard]] std::vector<std::string> losses(const ItemStore& items, const OutputOptions& options,
                                              std::string_view title, const Kept& kept);

}  // namespace store

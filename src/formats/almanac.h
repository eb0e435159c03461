// Almanac files: YUMA text both ways and SEM text in, both by their descriptions at the US Coast Guard Navigation
// Center ("GPS almanacs"). docs/formats/almanac.md says what is taken and what is written.
#pragma once

#include <string>

#include "base/text_input.h"
#include "base/text_output.h"
#include "store/file_context.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace formats {

inline constexpr store::Kept kAlmanacKeeps{.almanac = store::kKeepsItems};

// The file's almanac in the place of the store's; a first line that begins with a digit makes the file an SEM one.
// The number of satellites. Blocks that are incomplete or out of range are counted on output line 2. With no good
// block the store's almanac stays.
[[nodiscard]] int read_almanac(const store::FileContext& context, base::TextInput& input, const std::string& file_name);

// YUMA text. False, said in a message box, when no satellite is held. Satellites without data (a negative week)
// are left out, and those whose numbers are no orbit too, which output line 2 says.
[[nodiscard]] bool write_almanac(const store::FileContext& context, const store::OutputOptions& options,
                                 base::TextOutput& out);

}  // namespace formats

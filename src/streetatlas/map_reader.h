// Reads the map files of Street Atlas (.SA3 to .SA7): symbols become waypoints, route points or events, texts
// waypoints, lines and areas track segments, circles proximity waypoints.
#pragma once

#include <string>

#include "base/text_input.h"
#include "store/file_context.h"

namespace streetatlas {

// A map of version 3, which ends with its items. The number of records stored; -1, with the stores as they
// were, for a file that is no map (output line 1 says so). Items carry the time of reading.
[[nodiscard]] int read_street_atlas_3(const store::FileContext& context, base::TextInput& input,
                                      const std::string& file_name);
// The same for versions 4 to 7, where routes may follow the items.
[[nodiscard]] int read_street_atlas(const store::FileContext& context, base::TextInput& input,
                                    const std::string& file_name);

}  // namespace streetatlas

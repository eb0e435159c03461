// IGC flight files (.igc) from the track points, in the form that this program has always written. The setting
// IGCStandard turns on the form of the FAI (the document of the FAI on IGC flight recorders, appendix A), which differs
// in dates, altitudes, zone and the first records: docs/formats/igc.md.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/text_output.h"
#include "store/file_context.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace formats {

// False, said in a message box, when there is no track point to write: an IGC file without a fix is none.
[[nodiscard]] bool write_igc_file(const store::FileContext& context, const store::OutputOptions& options,
                                  base::TextOutput& out);

// "0BE4XY11.igc": last digit of the year, month and day in one character each, '4', the competition ID in at least
// three places, flight 1. `seconds` is local time since 1989-12-31. In the FAI's form the maker's character is 'X' and
// the ID has three letters or digits.
[[nodiscard]] std::string make_igc_file_name(std::string_view competition_id, std::int64_t seconds, bool fai_form);

// With IGCCompatibleFilename on, the path with the short name of the flight in place of its own: that of the first
// track point or, in the FAI's form, of the first that is written. Else as it is, and when there is no such point.
[[nodiscard]] std::filesystem::path igc_output_name(const store::FileContext& context,
                                                    const store::OutputOptions& options,
                                                    const std::filesystem::path& path);

// Altitudes are in the FAI's form only.
[[nodiscard]] store::Kept igc_keeps(const store::Settings& settings, const store::OutputOptions& options);

}  // namespace formats

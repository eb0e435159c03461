// Comma-separated values for spreadsheets (.csv): all items in one file, each row with its kind letter first.
//
//   Version 2
//   Datum:,WGS-84
//   ZoneOffset:,1.000000
//   "Type","Name","Lat","Long","Month#","Day#","Year","Hour","Min","Sec","Comment","Symbol#",...
//   W,HARB,54.32500000,10.14500000,6,1,2002,13,0,0,Fuel,18,Black,S+C
//
// Nothing is quoted on writing. The layout of each kind of row is in docs/formats/csv.md.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/text_input.h"
#include "base/text_output.h"
#include "store/file_context.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace formats {

// Reads what write_csv writes, also after a spreadsheet has saved it (quotes, semicolons, decimal commas, rows of
// equal length), and waypoints of other programs' files whose first row names a latitude and a longitude column.
[[nodiscard]] int read_csv(const store::FileContext& context, base::TextInput& input, const std::string& file_name);

// Positions in the options' datum and notation (UTM or degrees), times in their zone.
[[nodiscard]] bool write_csv(const store::FileContext& context, const store::OutputOptions& options,
                             base::TextOutput& out);

inline constexpr store::Properties kCsvWaypoint = store::kKeepsItems | store::kKeepsNames | store::kKeepsComments |
                                                  store::kKeepsSymbols | store::kKeepsDisplay | store::kKeepsColours |
                                                  store::kKeepsTimes;
inline constexpr store::Kept kCsvKeeps{
    .waypoints = kCsvWaypoint,
    .routes = kCsvWaypoint | store::kKeepsTitles | store::kKeepsNumbers,
    .tracks = store::kKeepsItems | store::kKeepsTimes | store::kKeepsSegments,
    .events = store::kKeepsItems | store::kKeepsSymbols,
};

// What reader and writer share.
inline constexpr std::string_view kCsvVersion = "Version 2";
inline constexpr std::string_view kCsvHeader =
    R"("Type","Name","Lat","Long","Month#","Day#","Year","Hour","Min","Sec","Comment","Symbol#",)"
    R"("SymbolColor","SymbolDisplay")";
// The index is the colour number; others are written as black, and counted.
inline constexpr std::array<std::string_view, 5> kCsvColours{"Black", "Red", "Blue", "Green", "Yellow"};
// The index is the display mode; others are written as 5, symbol and comment.
inline constexpr std::array<std::string_view, 6> kCsvDisplays{"", "S", "", "S+N", "", "S+C"};

}  // namespace formats

#include "session/file_formats.h"

#include <array>

namespace session {
namespace {

using textfile::FileFormat;

template <const char* Words>
bool contains(std::string_view first_line) {
  return first_line.find(Words) != std::string_view::npos;
}
constexpr char kOziEvent[] = "OziExplorer Event";
constexpr char kOziTrack[] = "OziExplorer Track";
constexpr char kOziRoute[] = "OziExplorer Route";
constexpr char kOziWaypoint[] = "OziExplorer Waypoint";

// In the order in which first lines are tried on them.
constexpr std::array kFormats{
    FileFormat{.code = 12,
               .name = "an OziExplorer event file",
               .input_extension = ".EVT",
               .output_extension = ".EVT",
               .recognises = contains<kOziEvent>},
    FileFormat{.code = 16,
               .name = "an OziExplorer track file",
               .input_extension = ".PLT",
               .output_extension = ".PLT",
               .recognises = contains<kOziTrack>},
    FileFormat{.code = 18,
               .name = "an OziExplorer route file",
               .input_extension = ".RTE",
               .output_extension = ".RTE",
               .recognises = contains<kOziRoute>},
    FileFormat{.code = 17,
               .name = "an OziExplorer waypoint file",
               .input_extension = ".WPT",
               .output_extension = ".WPT",
               .recognises = contains<kOziWaypoint>},
    FileFormat{.code = 10,
               .name = "a comma-separated waypoint file",
               .input_extension = ".FWP",
               .output_extension = ".FWP",
               .recognises = textfile::recognises_comma_waypoints},
    FileFormat{.code = textfile::kNativeText,
               .name = "a native text file",
               .title = "Native text",
               .output_extension = ".TXT",
               .recognises = textfile::recognises_native_text,
               .read = textfile::read_native_text,
               .write = textfile::write_native_text,
               .keeps_by_choice = textfile::native_text_keeps},
    FileFormat{
        .code = 3, .name = "a Street Atlas map of version 3", .input_extension = ".SA3", .output_extension = ".SA3"},
    FileFormat{
        .code = 6, .name = "a Street Atlas map of version 4", .input_extension = ".SA4", .output_extension = ".SA4"},
    FileFormat{
        .code = 7, .name = "a Street Atlas map of version 5", .input_extension = ".SA5", .output_extension = ".SA5"},
    FileFormat{
        .code = 9, .name = "a Street Atlas map of version 6", .input_extension = ".SA6", .output_extension = ".SA6"},
    FileFormat{
        .code = 21, .name = "a Street Atlas map of version 7", .input_extension = ".SA7", .output_extension = ".SA7"},
    FileFormat{
        .code = 8, .name = "a Street Atlas exchange file", .input_extension = ".GPL", .output_extension = ".GPL"},
    FileFormat{.code = 4, .name = "an almanac file", .input_extension = ".ALM", .output_extension = ".ALM"},
    FileFormat{.code = 5, .name = "a Navigate route file", .input_extension = ".CLG", .output_extension = ".CLG"},
    FileFormat{.code = 11, .name = "a track file", .input_extension = ".TRK", .output_extension = ".TRK"},
    FileFormat{
        .code = 14, .name = "a file of comma-separated values", .input_extension = ".CSV", .output_extension = ".CSV"},
    FileFormat{
        .code = 19, .name = "a bitmap", .input_extension = ".BMP", .output_extension = ".BMP", .is_bitmap = true},
    FileFormat{.name = "an IGC track file", .output_extension = ".IGC"},
    FileFormat{.name = "a .G64 file", .output_extension = ".G64"},
    FileFormat{.name = "a waypoint-to-track file", .output_extension = ".WTT"},
    FileFormat{.name = "a Gardown file", .output_extension = ".GDN"},
    FileFormat{.name = "a Timo file", .output_extension = ".WWW"},
};

}  // namespace

std::span<const textfile::FileFormat> file_formats() { return kFormats; }

}  // namespace session

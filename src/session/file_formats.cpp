#include "session/file_formats.h"

#include <array>

#include "formats/almanac.h"
#include "formats/csv.h"
#include "formats/fugawi.h"
#include "formats/gpx.h"
#include "formats/igc.h"
#include "formats/kml.h"
#include "formats/ozi.h"
#include "formats/picture_files.h"
#include "streetatlas/map_reader.h"

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

constexpr std::string_view kNotPublic = "its layout is not public";
constexpr std::string_view kMapsAreOnlyRead = "maps are only read";

// In the order in which first lines are tried on them.
constexpr std::array kFormats{
    FileFormat{.code = 12,
               .name = "an OziExplorer event file",
               .title = "OziExplorer .evt",
               .input_extension = ".EVT",
               .output_extension = ".EVT",
               .recognises = contains<kOziEvent>,
               .read = formats::read_ozi_events,
               .write = formats::write_ozi_events,
               .keeps = formats::kOziEventKeeps},
    FileFormat{.code = 16,
               .name = "an OziExplorer track file",
               .title = "OziExplorer .plt",
               .input_extension = ".PLT",
               .output_extension = ".PLT",
               .recognises = contains<kOziTrack>,
               .read = formats::read_ozi_track,
               .write = formats::write_ozi_track,
               .keeps = formats::kOziTrackKeeps},
    FileFormat{.code = 18,
               .name = "an OziExplorer route file",
               .title = "OziExplorer .rte",
               .input_extension = ".RTE",
               .output_extension = ".RTE",
               .recognises = contains<kOziRoute>,
               .read = formats::read_ozi_routes,
               .write = formats::write_ozi_routes,
               .keeps = formats::kOziRouteKeeps},
    FileFormat{.code = 17,
               .name = "an OziExplorer waypoint file",
               .title = "OziExplorer .wpt",
               .input_extension = ".WPT",
               .output_extension = ".WPT",
               .recognises = contains<kOziWaypoint>,
               .read = formats::read_ozi_waypoints,
               .write = formats::write_ozi_waypoints,
               .keeps = formats::kOziWaypointKeeps},
    FileFormat{.code = 10,
               .name = "a comma-separated waypoint file",
               .title = "Fugawi .fwp",
               .input_extension = ".FWP",
               .output_extension = ".FWP",
               .recognises = textfile::recognises_comma_waypoints,
               .read = formats::read_fugawi,
               .write = formats::write_fugawi,
               .keeps = formats::kFugawiKeeps},
    FileFormat{.code = textfile::kNativeText,
               .name = "a native text file",
               .title = "Native text",
               .output_extension = ".TXT",
               .recognises = textfile::recognises_native_text,
               .read = textfile::read_native_text,
               .write = textfile::write_native_text,
               .keeps_by_choice = textfile::native_text_keeps},
    FileFormat{.code = 101,
               .name = "a GPX file",
               .title = "GPX",
               .input_extension = ".GPX",
               .output_extension = ".GPX",
               .recognises = formats::recognises_gpx,
               .read = formats::read_gpx,
               .write = formats::write_gpx,
               .keeps = formats::kGpxKeeps},
    FileFormat{.code = 14,
               .name = "a file of comma-separated values",
               .title = "CSV",
               .input_extension = ".CSV",
               .output_extension = ".CSV",
               .read = formats::read_csv,
               .write = formats::write_csv,
               .keeps = formats::kCsvKeeps},
    FileFormat{.code = 4,
               .name = "an almanac file",
               .title = "The almanac file",
               .input_extension = ".ALM",
               .output_extension = ".ALM",
               .read = formats::read_almanac,
               .write = formats::write_almanac,
               .keeps = formats::kAlmanacKeeps},
    FileFormat{.name = "an IGC track file",
               .title = "IGC",
               .output_extension = ".IGC",
               .write = formats::write_igc_file,
               .keeps_by_choice = formats::igc_keeps,
               .output_name = formats::igc_output_name},
    FileFormat{.name = "a KML file",
               .title = "KML",
               .output_extension = ".KML",
               .write = formats::write_kml,
               .keeps = formats::kKmlKeeps},
    FileFormat{.code = 3,
               .name = "a Street Atlas map of version 3",
               .input_extension = ".SA3",
               .output_extension = ".SA3",
               .why_not = kMapsAreOnlyRead,
               .read = streetatlas::read_street_atlas_3},
    FileFormat{.code = 6,
               .name = "a Street Atlas map of version 4",
               .input_extension = ".SA4",
               .output_extension = ".SA4",
               .why_not = kMapsAreOnlyRead,
               .read = streetatlas::read_street_atlas},
    FileFormat{.code = 7,
               .name = "a Street Atlas map of version 5",
               .input_extension = ".SA5",
               .output_extension = ".SA5",
               .why_not = kMapsAreOnlyRead,
               .read = streetatlas::read_street_atlas},
    FileFormat{.code = 9,
               .name = "a Street Atlas map of version 6",
               .input_extension = ".SA6",
               .output_extension = ".SA6",
               .why_not = kMapsAreOnlyRead,
               .read = streetatlas::read_street_atlas},
    FileFormat{.code = 21,
               .name = "a Street Atlas map of version 7",
               .input_extension = ".SA7",
               .output_extension = ".SA7",
               .why_not = kMapsAreOnlyRead,
               .read = streetatlas::read_street_atlas},
    FileFormat{
        .code = 8, .name = "a Street Atlas exchange file", .input_extension = ".GPL", .output_extension = ".GPL"},
    FileFormat{.code = 5,
               .name = "a Navigate route file",
               .input_extension = ".CLG",
               .output_extension = ".CLG",
               .why_not = kNotPublic},
    FileFormat{.code = 11, .name = "a track file", .input_extension = ".TRK", .output_extension = ".TRK"},
    FileFormat{.code = 19,
               .name = "a bitmap",
               .input_extension = ".BMP",
               .output_extension = ".BMP",
               .is_binary = true,
               .is_bitmap = true,
               .read = formats::read_bmp,
               .write = formats::write_bmp},
    FileFormat{.name = "a .png picture",
               .output_extension = ".PNG",
               .is_binary = true,
               .is_bitmap = true,
               .write = formats::write_png},
    FileFormat{.name = "a .G64 file", .output_extension = ".G64", .why_not = kNotPublic},
    FileFormat{.name = "a waypoint-to-track file", .output_extension = ".WTT", .why_not = kNotPublic},
    FileFormat{.name = "a Gardown file", .output_extension = ".GDN", .why_not = kNotPublic},
    FileFormat{.name = "a Timo file", .output_extension = ".WWW", .why_not = kNotPublic},
};

}  // namespace

std::span<const textfile::FileFormat> file_formats() { return kFormats; }

}  // namespace session

#include "ui/options/option_table.h"

#include <algorithm>
#include <array>

namespace ui {
namespace {

using enum OptionKind;

constexpr std::array kFamilies{OptionChoice{"Garmin", "Garmin"}, OptionChoice{"Lowrance", "Lowrance/Eagle"}};
constexpr std::array kSpeeds{
    OptionChoice{"0", "Found out by trying"},
    OptionChoice{"1200", "1200"},
    OptionChoice{"2400", "2400"},
    OptionChoice{"4800", "4800"},
    OptionChoice{"9600", "9600"},
    OptionChoice{"19200", "19200"},
    OptionChoice{"38400", "38400"},
    OptionChoice{"57600", "57600"},
    OptionChoice{"115200", "115200"},
};
constexpr std::array kDuplicates{OptionChoice{"MERGE", "Keep both"},
                                 OptionChoice{"REPLACE", "The new one takes the place of the old one"},
                                 OptionChoice{"IGNORE", "Keep the old one, drop the new one"}};
constexpr std::array kVersions{OptionChoice{"TXT_VER_ONE", "Version 1"}, OptionChoice{"TXT_VER_TWO", "Version 2"}};
constexpr std::array kColumns{OptionChoice{"1", "Leave out the comment column"},
                              OptionChoice{"2", "Leave out the symbol column"}};
constexpr std::array kNotations{OptionChoice{"DMS", "Degrees, minutes and seconds"},
                                OptionChoice{"DMM", "Degrees and minutes"}, OptionChoice{"DDD", "Degrees"},
                                OptionChoice{"UTM", "UTM (zone, easting and northing in metres)"}};
constexpr std::array kHeights{OptionChoice{"METERS", "Metres"}, OptionChoice{"FEET", "Feet"}};
constexpr std::array kDistances{OptionChoice{"STATUTE", "Statute miles"}, OptionChoice{"NAUTICAL", "Nautical miles"},
                                OptionChoice{"KILOMETERS", "Kilometres"}, OptionChoice{"METERS", "Metres"},
                                OptionChoice{"FEET", "Feet"}};
constexpr std::array kSymbolSets{
    OptionChoice{"LEI15", "Lowrance/Eagle, 15 symbols"}, OptionChoice{"LEI28", "Lowrance/Eagle, 28 symbols"},
    OptionChoice{"G12XL", "Garmin GPS 12XL, GPS II+"},   OptionChoice{"GIII", "Garmin GPS III"},
    OptionChoice{"STREETPILOT", "Garmin StreetPilot"},   OptionChoice{"eSERIES", "Garmin e-series"}};
constexpr std::array kColours{
    OptionChoice{"0", "Black"},       OptionChoice{"1", "Dark Red"},      OptionChoice{"2", "Dark Green"},
    OptionChoice{"3", "Dark Yellow"}, OptionChoice{"4", "Dark Blue"},     OptionChoice{"5", "Dark Magenta"},
    OptionChoice{"6", "Dark Cyan"},   OptionChoice{"7", "Light Gray"},    OptionChoice{"8", "Dark Gray"},
    OptionChoice{"9", "Red"},         OptionChoice{"10", "Green"},        OptionChoice{"11", "Yellow"},
    OptionChoice{"12", "Blue"},       OptionChoice{"13", "Magenta"},      OptionChoice{"14", "Cyan"},
    OptionChoice{"15", "White"},      OptionChoice{"16", "Default Color"}};
constexpr std::array kEventColours{OptionChoice{"0", "Black"}, OptionChoice{"1", "Red"}, OptionChoice{"2", "Blue"},
                                   OptionChoice{"3", "Green"}, OptionChoice{"4", "Yellow"}};
constexpr std::array kPlaces{OptionChoice{"0", "Upper left (NW)"},  OptionChoice{"1", "Above (N)"},
                             OptionChoice{"2", "Upper right (NE)"}, OptionChoice{"3", "Left (W)"},
                             OptionChoice{"4", "Right (E)"},        OptionChoice{"5", "Lower left (SW)"},
                             OptionChoice{"6", "Below (S)"},        OptionChoice{"7", "Lower right (SE)"}};

constexpr int kMost = 65535;
constexpr std::string_view kReceiver = "Receiver and port", kFiles = "Files and folders", kTimes = "Items and times",
                           kDatum = "Datum and units", kSymbols = "Symbols", kSymbols16 = "GPS 12XL symbols",
                           kLines = "Street Atlas lines", kMap = "Street Atlas map", kProgram = "Start and exit";

// clang-format off
constexpr std::array kRows{
    OptionRow{kReceiver, "Receiver", "GPS", "Family", Choice, "Who made the receiver", 0, 0, kFamilies},
    OptionRow{kReceiver, "Receiver", "COM", "Port number (COM)", Number, "unless a port name is given", 1, kMost},
    OptionRow{kReceiver, "Receiver", "PortName", "Port name", Port, "For example /dev/ttyUSB0; empty: the port of the number"},
    OptionRow{kReceiver, "Receiver", "port_speed", "Speed (bits per second)", Choice, "Lowrance/Eagle units: the speed that is tried first", 0, 0, kSpeeds},
    OptionRow{kReceiver, "Receiver", "WeekRollover", "Receiver dates are 1024 weeks too early: put them right", Flag, "Old receivers count weeks from 0 again after 1999 and 2019"},
    OptionRow{kReceiver, "Lowrance/Eagle waypoints", "SA_LwrRangeLo", "Download from slot", Number, "counted from 1", 1, kMost},
    OptionRow{kReceiver, "Lowrance/Eagle waypoints", "SA_LwrRangeHi", "Download up to slot", LastSlot, "counted from 1", 1, kMost},
    OptionRow{kReceiver, "Lowrance/Eagle waypoints", "SA_LwrStartPt", "Upload waypoints from slot", Number, "counted from 1", 1, kMost},
    OptionRow{kReceiver, "Lowrance/Eagle waypoints", "SA_LwrRteStartPt", "Upload points of routes from slot", Number, "counted from 1", 1, kMost},
    OptionRow{kReceiver, "Lowrance/Eagle waypoints", "SA_SendLowrInactives", "Empty the slots behind the uploaded waypoints", Flag, "Waypoints that the unit has behind the last uploaded one are deleted in it"},
    OptionRow{kReceiver, "Serial debug file", "EnableDebugFile", "Write all that goes over the port to a file", Flag, "From the moment on when it is turned on"},
    OptionRow{kReceiver, "Serial debug file", "SaveDebugFileWorkingDirectory", "Folder", Directory, "Empty: the current one"},
    OptionRow{kReceiver, "Serial debug file", "DebugFileName", "File name", Text, "Without extension; empty: FileDebug.txt"},
    OptionRow{kReceiver, "Serial debug file", "DebugFileNameExtn", "Extension", Text, "With its dot: .txt"},
    OptionRow{kReceiver, "Serial debug file", "iDebug_Variable", "Debug variable", Number, "0: off", -2147483647, 2147483647},

    OptionRow{kFiles, "Folders", "ReadWorkingDirectory", "Files are opened from", Directory, "Empty: wherever the system proposes"},
    OptionRow{kFiles, "Folders", "SaveWorkingDirectory", "Files are saved to", Directory, "Empty: wherever the system proposes"},
    OptionRow{kFiles, "Folders", "SaveIGCWorkingDirectory", "IGC flights are saved to", Directory, "Empty: wherever the system proposes"},
    OptionRow{kFiles, "Native text files", "This_TXT_File_Version", "Layout", Choice, "Version 1 for programs that do not know version 2", 0, 0, kVersions},
    OptionRow{kFiles, "Native text files", "SA_nameonlytxt", "Waypoint lines", Bits, "", 0, 0, kColumns},
    OptionRow{kFiles, "Native text files", "SA_total_dist", "Write total distances of routes and tracks", Flag},
    OptionRow{kFiles, "Native text files", "SA_nocmdline", "Write no line of command options", Flag},
    OptionRow{kFiles, "Saving", "SelectItemsToSave", "Ask which kinds of items are saved", Flag},
    OptionRow{kFiles, "Saving", "SA_SortBeforeOutput", "Sort waypoints by name before saving", Flag},
    OptionRow{kFiles, "OziExplorer files", "EventColor", "Colour of events", Choice, "", 0, 0, kEventColours},

    OptionRow{kTimes, "Items read or downloaded", "HandleReadDups", "A waypoint whose name is there already", Choice, "", 0, 0, kDuplicates},
    OptionRow{kTimes, "Items read or downloaded", "ForceExactDupeRemoval", "Drop exact duplicates (same name and position)", Flag},
    OptionRow{kTimes, "Items read or downloaded", "SA_SortAfterInput", "Sort waypoints by name after reading", Flag},
    OptionRow{kTimes, "Times", "UseLocalTime", "Show and write local times, not UTC", Flag},
    OptionRow{kTimes, "Times", "TimeOffsetHours", "Local time minus UTC (hours)", Hours, "empty: as the clock says", -48, 48},
    OptionRow{kTimes, "Times", "DontConvertInputTime", "Take times of files as they stand, as UTC", Flag, "The offset that a file names is not taken off then"},
    OptionRow{kTimes, "Times", "ZeroTime", "Write no times", Flag, "Items are saved as if their times were not known"},

    OptionRow{kDatum, "Positions", "externaldatum", "Datum", Datum, "Of positions that are shown and saved"},
    OptionRow{kDatum, "Positions", "DMSMode", "Notation", Choice, "How positions are shown and saved", 0, 0, kNotations},
    OptionRow{kDatum, "Units", "VerticalValues", "Heights and depths", Choice, "", 0, 0, kHeights},
    OptionRow{kDatum, "Units", "DistValues", "Distances", Choice, "", 0, 0, kDistances},

    OptionRow{kSymbols, "Set", "IconSelector", "Symbols of items are those of", Choice, "For items of files that do not say it", 0, 0, kSymbolSets},
    OptionRow{kSymbols, "Where a symbol has no counterpart", "default_GPSIII_icon", "Garmin GPS III", Symbol},
    OptionRow{kSymbols, "Where a symbol has no counterpart", "default_SP_icon", "Garmin StreetPilot", Symbol},
    OptionRow{kSymbols, "Where a symbol has no counterpart", "default_G12_icon", "Garmin GPS 12XL, GPS II+", Symbol16},
    OptionRow{kSymbols, "Where a symbol has no counterpart", "default_LEI15_icon", "Lowrance/Eagle, 15 symbols", Symbol15},
    OptionRow{kSymbols, "Where a symbol has no counterpart", "default_LEI28_icon", "Lowrance/Eagle, 28 symbols", Symbol28},
    OptionRow{kSymbols, "Where a symbol has no counterpart", "default_SA5_icon", "Street Atlas 5 (number)", Number, "as Street Atlas counts them", 0, kMost},
    OptionRow{kSymbols, "Translate symbols of OziExplorer files for", "SA_Ozi_to_12", "Garmin GPS 12XL, GPS II+", Flag},
    OptionRow{kSymbols, "Translate symbols of OziExplorer files for", "SA_Ozi_to_GIII", "Garmin GPS III and later", Flag},
    OptionRow{kSymbols, "Translate symbols of OziExplorer files for", "SA_Ozi_to_LEI15", "Lowrance/Eagle, 15 symbols", Flag},
    OptionRow{kSymbols, "Translate symbols of OziExplorer files for", "SA_Ozi_to_LEI28", "Lowrance/Eagle, 28 symbols", Flag},

    OptionRow{kSymbols16, "What the 16 symbols stand for", "G12XL/II+_Symbol_Mapping", "Symbol", Symbols16, "The symbol that this number of the GPS 12XL and GPS II+ means"},

    OptionRow{kIgcPage, "Pilot and glider", "Pilot", "Pilot", Text},
    OptionRow{kIgcPage, "Pilot and glider", "ContestID", "Competition ID", Text, "Three letters or digits; the file name has them too"},
    OptionRow{kIgcPage, "Pilot and glider", "GliderType", "Glider type", Text},
    OptionRow{kIgcPage, "Pilot and glider", "GliderID", "Glider ID", Text},
    OptionRow{kIgcPage, "Pilot and glider", "Class", "Class", Text},
    OptionRow{kIgcPage, "Pilot and glider", "Site", "Site", Text},
    OptionRow{kIgcPage, "File", "IGCCompatibleFilename", "Name the file by the short rule", Flag, "For example 0BE4XY11.igc, from date and competition ID"},
    OptionRow{kIgcPage, "File", "IGCStandard", "Write the form of the FAI", Flag, "What other programs read: heights, UTC and WGS-84. Off: as earlier versions wrote it"},

    OptionRow{kLines, "Tracks", "SA_draw_track_lines", "Draw lines of tracks", Flag},
    OptionRow{kLines, "Tracks", "SA_LineColor", "Colour", Choice, "", 0, 0, kColours},
    OptionRow{kLines, "Tracks", "SA_LineWidth", "Width", Number, "", 0, 99},
    OptionRow{kLines, "Tracks", "SA_LineStyle", "Style", Number, "", 0, 99},
    OptionRow{kLines, "Tracks", "SA_CycleColors", "Another colour for each track", Flag},
    OptionRow{kLines, "Tracks", "SA_ForceSALineProperties", "These hold for tracks that have their own, too", Flag},
    OptionRow{kLines, "Tracks", "SA_ForceSALinePropertiesAllowCycle", "... but each track may have another colour", Flag},
    OptionRow{kLines, "Routes", "SA_draw_route_0_line", "Draw the line of route 0", Flag},
    OptionRow{kLines, "Routes", "SA_draw_route_1_19_lines", "Draw the lines of routes 1 to 19", Flag},
    OptionRow{kLines, "Routes", "SA_draw_route_0_wpts", "Draw the waypoints of route 0", Flag},
    OptionRow{kLines, "Routes", "SA_draw_route_1_19_wpts", "Draw the waypoints of routes 1 to 19", Flag},
    OptionRow{kLines, "Routes", "SA_send_route_0_as_SA_route", "Send route 0 as a route of Street Atlas", Flag},
    OptionRow{kLines, "Routes", "SA_Route_LineColor", "Colour", Choice, "", 0, 0, kColours},
    OptionRow{kLines, "Routes", "SA_Route_LineWidth", "Width", Number, "", 0, 99},
    OptionRow{kLines, "Routes", "SA_Route_LineStyle", "Style", Number, "", 0, 99},
    OptionRow{kLines, "Circles of proximity waypoints", "SA_DrawProxCircles", "Draw circles", Flag},
    OptionRow{kLines, "Circles of proximity waypoints", "SA_CirLineColor", "Line colour", Choice, "", 0, 0, kColours},
    OptionRow{kLines, "Circles of proximity waypoints", "SA_CirLineWidth", "Line width", Number, "", 0, 99},
    OptionRow{kLines, "Circles of proximity waypoints", "SA_CirFillColor", "Fill colour", Choice, "", 0, 0, kColours},
    OptionRow{kLines, "Circles of proximity waypoints", "SA_CirFillStyle", "Fill style", Number, "", 0, 99},

    OptionRow{kMap, "Waypoints", "SA_DrawWaypoints", "Draw waypoints", Flag},
    OptionRow{kMap, "Waypoints", "SA_SA_IconSize", "Symbol size", Number, "", 0, 99},
    OptionRow{kMap, "Waypoints", "SA_SA_IconColor", "Symbol colour", Choice, "", 0, 0, kColours},
    OptionRow{kMap, "Labels", "SA_TextSize", "Text size", Number, "", 0, 99},
    OptionRow{kMap, "Labels", "SA_TextColor", "Text colour", Choice, "", 0, 0, kColours},
    OptionRow{kMap, "Labels", "SA_TextAlign", "Place beside the symbol", Choice, "", 0, 0, kPlaces},
    OptionRow{kMap, "Labels", "SA_noname", "No names", Flag},
    OptionRow{kMap, "Labels", "SA_nameonly", "Names only, no comments", Flag},
    OptionRow{kMap, "Labels", "SA_timeonsa3", "Times on the map", Flag},
    OptionRow{kMap, "Labels", "SA_nonameonsa3trks", "No names at tracks", Flag},
    OptionRow{kMap, "Map", "SA_SetLat", "Centre, latitude", Latitude, "for example N51 30.0"},
    OptionRow{kMap, "Map", "SA_SetLon", "Centre, longitude", Longitude, "for example W0 07.2"},
    OptionRow{kMap, "Map", "SA_SetMag", "Magnification", Number, "0 to 255; 0: not set", 0, 255},
    OptionRow{kMap, "Map", "SA_ShowGrids", "Show grids", Flag},
    OptionRow{kMap, "Map", "SA_StartWithDefaults", "Start Street Atlas with its own defaults", Flag},
    OptionRow{kMap, "Map", "SendToSAFile", "Send to a file of Street Atlas", Flag},

    OptionRow{kProgram, "Start", "SaveStartupLocation", "Open the main window where it was when the configuration was saved", Flag},
    OptionRow{kProgram, "Exit", "ExitPrompt", "Ask before the program ends", Flag},
    OptionRow{kProgram, "Exit", "SaveConfigurationAtExit", "Save the configuration when the program ends", Flag},
    OptionRow{kProgram, "Output lines", "LogDisplayOutput", "Append all output lines to the file DisplayOutput", Flag},
};
// clang-format on

constexpr std::array<std::string_view, 11> kWithoutOption{
    "SaveFilterNumber",         "ReadFilterNumber",      "SaveFileName",
    "SaveFileNameExtn",         "ReadFileName",          "ReadFileNameExtn",
    "WaypointListColumnWidths", "EventListColumnWidths", "RefRecord",
    "TrackListColumnWidths",    "StartupLocation",
};

}  // namespace

std::span<const OptionRow> option_rows() { return kRows; }

const OptionRow* find_option(std::string_view key) {
  const auto* row = std::ranges::find(kRows, key, &OptionRow::key);
  return row == kRows.end() ? nullptr : row;
}

std::vector<OptionPage> option_pages() {
  std::vector<OptionPage> pages;
  for (const OptionRow& row : kRows) {
    if (pages.empty() || pages.back().title != row.page) pages.push_back({row.page, {}});
    pages.back().rows.push_back(&row);
  }
  return pages;
}

OptionPage option_page(std::string_view title, std::span<const std::string_view> keys) {
  OptionPage page{title, {}};
  for (const std::string_view key : keys) page.rows.push_back(find_option(key));
  return page;
}

std::span<const std::string_view> keys_without_option() { return kWithoutOption; }

}  // namespace ui

// Every setting of the program, with its start value. The fields carry the names of their keys in the
// configuration file; config_file.cpp ties the two together.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "geodesy/distance.h"
#include "geodesy/notation.h"

namespace store {

enum class Family { None = 0, Garmin = 2, Lowrance = 15 };

// The numbers are those of the options pages and of the configuration.
enum class VerticalUnit { Feet = 3, Metres = 4 };
enum class Duplicates { Merge = 0, Replace = 1, Ignore = 2 };
// Symbol sets of receiver models; the numbers are the symbol modes that records carry.
enum class IconSet { Lei15 = 0, Lei28 = 1, G12xl = 2, Giii = 3, StreetPilot = 4, ESeries = 5 };

// A latitude or longitude that no option has set yet.
inline constexpr double kCoordinateNotSet = 1000.0;

struct ReferenceRecord {
  double latitude = 0;  // degrees
  double longitude = 0;
  std::array<long, 3> numbers{};
};

struct WindowRectangle {
  int left = 0, top = 0, width = 0, height = 0;  // pixels
};

struct Settings {
  Family GPS = Family::None;
  int COM = 0;  // counted from 0 here, from 1 in the file
  int port_speed = 0;
  int ExitPrompt = 1;
  int EnableDebugFile = 0;
  int ForceExactDupeRemoval = 0;
  int SelectItemsToSave = 0;
  int iDebug_Variable = 0;
  std::string externaldatum = "WGS-84";
  int SendToSAFile = 1;
  int SaveStartupLocation = 0;
  int SaveConfigurationAtExit = 0;
  std::string SaveWorkingDirectory, SaveIGCWorkingDirectory, SaveDebugFileWorkingDirectory, ReadWorkingDirectory;
  int default_SA5_icon = 46, default_SP_icon = 18, default_GPSIII_icon = 18;
  int default_LEI15_icon = 0, default_LEI28_icon = 0, default_G12_icon = 0;
  int SaveFilterNumber = 0;
  int ZeroTime = 0;
  int UseLocalTime = 0;
  int DontConvertInputTime = 0;
  int LogDisplayOutput = 0;
  VerticalUnit VerticalValues = VerticalUnit::Metres;
  geodesy::DistanceUnit DistValues = geodesy::DistanceUnit::StatuteMiles;
  Duplicates HandleReadDups = Duplicates::Merge;
  int This_TXT_File_Version = 2;
  int ReadFilterNumber = 0;
  std::string SaveFileName, SaveFileNameExtn, DebugFileName, DebugFileNameExtn, ReadFileName, ReadFileNameExtn;
  std::array<int, 12> WaypointListColumnWidths{120, 40, 88, 95, 145, 155, 82, 70, 70, 95, 67, 67};
  std::array<int, 4> EventListColumnWidths{60, 88, 95, 82};
  std::optional<ReferenceRecord> RefRecord;
  std::array<int, 8> TrackListColumnWidths{30, 88, 95, 146, 65, 67, 130, 60};
  std::optional<WindowRectangle> StartupLocation;
  IconSet IconSelector = IconSet::Lei15;
  geodesy::Notation DMSMode = geodesy::Notation::Dmm;
  int SA_LineColor = 0, SA_CycleColors = 0, SA_ForceSALineProperties = 0, SA_ForceSALinePropertiesAllowCycle = 1;
  int SA_LineStyle = 0, SA_LineWidth = 1;
  int SA_CirFillColor = 0, SA_CirLineWidth = 0, SA_CirLineColor = 0, SA_CirFillStyle = 0, SA_DrawProxCircles = 1;
  int SA_DrawWaypoints = 1, SA_ShowGrids = 1, SA_StartWithDefaults = 1;
  double SA_SetLat = kCoordinateNotSet, SA_SetLon = kCoordinateNotSet;
  int SA_SetMag = 0;
  int SA_draw_route_1_19_wpts = 1, SA_draw_route_0_wpts = 1, SA_draw_track_lines = 1;
  int SA_send_route_0_as_SA_route = 1, SA_draw_route_0_line = 1, SA_draw_route_1_19_lines = 1;
  int SA_Route_LineWidth = 1, SA_Route_LineColor = 0, SA_Route_LineStyle = 0;
  int SA_TextSize = 0, SA_noname = 0, SA_timeonsa3 = 0, SA_nameonly = 0, SA_nonameonsa3trks = 0;
  int SA_TextColor = 2, SA_TextAlign = 2, SA_SA_IconSize = 0, SA_SA_IconColor = 0;
  int EventColor = 0;  // in OziExplorer files: 1 red, 2 blue, 3 green, 4 yellow, others black
  int SA_Ozi_to_12 = 0, SA_Ozi_to_GIII = 1, SA_Ozi_to_LEI15 = 0, SA_Ozi_to_LEI28 = 1;
  int SA_SendLowrInactives = 0;
  int SA_nameonlytxt = 0;  // bit 1: no comment column, bit 2: no symbol column in written waypoint lines
  int SA_total_dist = 0;
  int SA_nocmdline = 0;
  int SA_SortBeforeOutput = 1, SA_SortAfterInput = 1;
  int SA_LwrRangeLo = 1, SA_LwrRangeHi = 65535, SA_LwrStartPt = 1, SA_LwrRteStartPt = 1;
  std::string Pilot = "None", ContestID = "---", GliderType = "None", GliderID = "None", Site = "None", Class = "None";
  int IGCCompatibleFilename = 0;
  int IGCStandard = 0;  // 1: IGC files in the form of the FAI
  std::array<int, 16> G12XL_II_Symbol_Mapping{18, 10, 8, 170, 7, 150, 0, 19, 177, 14, 178, 151, 179, 171, 156, 8196};
  std::string PortName;                   // a port by its text; when set it stands for COM
  std::optional<double> TimeOffsetHours;  // not set: the machine's offset or 0, see UseLocalTime
  int WeekRollover = 0;                   // 1: receivers' times are 1024 weeks too early and are put right
  // How often the command option -a was given in this run, which is why they have no key.
  int native_text_output = 0, output_switch = 0;

  static constexpr int kNoCommentColumn = 1;
  static constexpr int kNoSymbolColumn = 2;
};

}  // namespace store

// Everything of a running program but its user interface: settings, stores, geodesy, files, the port and what stands
// behind it. Built once by a main program, which hands it the clock and the front end, and passed on by reference. User
// interfaces reach all below through this header alone.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/front_end.h"
#include "garmin/display_bitmap.h"
#include "garmin/downloads.h"
#include "garmin/link.h"
#include "garmin/protocol_selection.h"
#include "garmin/single_commands.h"
#include "garmin/uploads.h"
#include "geodesy/datum_shift.h"
#include "geodesy/datum_table.h"
#include "geodesy/distance.h"
#include "geodesy/notation.h"
#include "geodesy/position_parser.h"
#include "lowrance/connection.h"
#include "lowrance/downloads.h"
#include "lowrance/identification.h"
#include "lowrance/link.h"
#include "lowrance/screen.h"
#include "lowrance/uploads.h"
#include "picture/bitmap.h"
#include "picture/png.h"
#include "serial/com_port.h"
#include "serial/debug_log.h"
#include "serial/device_flags.h"
#include "serial/port_list.h"
#include "session/ports.h"
#include "store/command_options.h"
#include "store/config_file.h"
#include "store/item_store.h"
#include "store/settings.h"
#include "store/symbol_sets.h"
#include "store/symbols.h"
#include "textfile/file_dispatch.h"
#include "textfile/position_columns.h"
#include "textfile/text_writer.h"

namespace session {

inline constexpr std::string_view kVersion = PELORIX_VERSION;

// What the system tells the program at its start.
struct Surroundings {
  std::filesystem::path start_directory;
  std::vector<std::filesystem::path> datum_directories;  // where the user's datums are looked for, in order
  std::string program_name;
};

class Session {
 public:
  // Clock and front end must outlive the session. `devices` makes the device behind a port name; where it is
  // not given, make_device does.
  Session(base::Clock& clock, base::FrontEnd& front_end, Surroundings surroundings,
          serial::ComPort::DeviceFactory devices = {});
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Takes over what the settings say of family, port and speed; to be called when they have changed.
  void apply_settings();
  // Opens the serial debug log as the settings name it; false, after a message box, when that fails.
  bool open_debug_log();

  // Local time minus UTC for this run, from the settings and, once, the machine.
  [[nodiscard]] double time_offset_hours() const;
  // How native text is written now.
  [[nodiscard]] store::OutputOptions text_options() const;

  // Who is on the port, of the chosen family: true when somebody answered. The texts go to the output lines.
  bool get_gps_id();
  // The single commands of Garmin receivers, likewise.
  bool get_voltages();
  bool get_time();
  bool get_position();  // in the datum, notation and zone of written files
  // Position-velocity-time data into the sink, until the user stops it.
  bool follow_position(const garmin::GarminCommands::LineSink& sink);
  // Asks first.
  bool power_off();
  bool get_supported_protocols();
  // Downloads the screen of a receiver of the chosen family; the old picture stays when that fails, which is said.
  bool get_display_bitmap();

  // The speed at which a Lowrance/Eagle unit was found becomes the one that is tried first, and is saved.
  void keep_port_speed();

  base::Clock& clock;
  base::FrontEnd& front_end;
  const Surroundings surroundings;
  store::Settings settings;
  SimulatedGarmin simulated_garmin;  // taken when its port is first opened
  SimulatedLowrance simulated_lowrance;
  const serial::ComPort::DeviceFactory devices;  // what stands behind a port name
  serial::DeviceFlags flags;
  store::ItemStore items;
  std::optional<::picture::Bitmap> picture;  // the receiver's screen, as it was downloaded or read
  store::CommandOptions command_options;
  geodesy::DatumTable datums;
  geodesy::DatumShift shift;
  textfile::FileDispatch files;
  serial::ByteFormat debug_format = serial::ByteFormat::Hex;  // of the next debug log
  serial::DebugLog debug_log;
  serial::ComPort port;
  garmin::GarminLink garmin_link;
  garmin::ProtocolSelection garmin_selection;
  garmin::Connection garmin_connection;
  garmin::GarminCommands garmin_commands;
  garmin::GarminDownloads garmin_downloads;
  garmin::GarminUploads garmin_uploads;
  garmin::GarminDisplay garmin_display;
  lowrance::LowranceLink lowrance_link;
  lowrance::UnitIdentification lowrance_identification;
  lowrance::Connection lowrance_connection;
  lowrance::LowranceDownloads lowrance_downloads;
  lowrance::LowranceUploads lowrance_uploads;
  lowrance::LowranceScreen lowrance_screen;

 private:
  bool open_garmin();
  bool identify_lowrance();

  const double machine_offset_hours_;
};

}  // namespace session

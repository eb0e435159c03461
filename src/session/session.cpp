#include "session/session.h"

#include "base/text.h"
#include "session/file_formats.h"
#include "simulators/built_in_data.h"

namespace session {
namespace {

constexpr std::string_view kDefaultDebugFile = "FileDebug.txt";

}  // namespace

Session::Session(base::Clock& the_clock, base::FrontEnd& the_front_end, Surroundings the_surroundings,
                 serial::ComPort::DeviceFactory devices)
    : clock(the_clock),
      front_end(the_front_end),
      surroundings(std::move(the_surroundings)),
      simulated_garmin{simulators::believable_weekend(), {}},
      items(settings, front_end),
      command_options(settings, front_end),
      shift(datums, front_end),
      files(file_formats(), store::FileContext{items, shift, datums, settings, front_end, clock,
                                               [this](std::string_view line) { command_options.do_command(line); }}),
      debug_log(front_end),
      port(
          devices ? std::move(devices)
                  : [this](const std::string& name) { return make_device(name, simulated_garmin, clock); },
          clock, front_end, flags),
      garmin_link(port, clock, front_end, flags, debug_log),
      garmin_selection(garmin_link, port, front_end, flags),
      garmin_transfers(garmin_link, port, garmin_selection, items, settings, front_end, flags),
      machine_offset_hours_(clock.utc_offset_seconds() / 3600.0) {
  datums.load_user_datums(surroundings.datum_directories, surroundings.program_name);
  apply_settings();
}

void Session::apply_settings() {
  port.set_port_name(settings.PortName.empty() ? base::format_text("COM%d", settings.COM + 1) : settings.PortName);
  port.set_family(static_cast<int>(settings.GPS));
  port.set_speed(settings.port_speed);
  front_end.refresh_title();
}

bool Session::open_debug_log() {
  std::string name = settings.DebugFileName + settings.DebugFileNameExtn;
  if (name.empty()) name = kDefaultDebugFile;
  const std::filesystem::path path = std::filesystem::path(settings.SaveDebugFileWorkingDirectory) / name;
  return debug_log.open(path, debug_format, kVersion);
}

double Session::time_offset_hours() const {
  if (settings.TimeOffsetHours) return *settings.TimeOffsetHours;
  return settings.UseLocalTime == 1 ? machine_offset_hours_ : 0;
}

store::OutputOptions Session::text_options() const {
  store::OutputOptions options;
  options.datum = settings.externaldatum;
  options.notation = settings.DMSMode;
  options.version = settings.This_TXT_File_Version;
  options.offset_hours = time_offset_hours();
  options.offset_seconds = store::offset_seconds(options.offset_hours);
  options.zero_time = settings.ZeroTime != 0;
  options.distances = settings.SA_total_dist != 0;
  options.no_comments = (settings.SA_nameonlytxt & store::Settings::kNoCommentColumn) != 0;
  options.no_symbols = (settings.SA_nameonlytxt & store::Settings::kNoSymbolColumn) != 0;
  options.now_unix = clock.unix_seconds();
  return options;
}

// Opens the port and identifies the receiver; false when nobody answered, or no protocol could be selected.
bool Session::open_garmin() {
  flags.UserAbort = false;
  port.OpenGpsPort(serial::kGarminFamily, &garmin_selection);
  const bool ready = flags.PortOpen && !flags.UserAbort && !flags.ComTimedOut;
  if (flags.PortOpen) port.AsyncStop();
  flags.PortOpen = false;
  flags.UserAbort = false;
  front_end.set_status(3, " ");
  return ready;
}

bool Session::get_gps_id() {
  flags.GpsIdentified = false;  // whoever asks who is there wants to know it now
  const bool answered = open_garmin();
  if (answered) garmin_selection.show_identification();
  return answered;
}

bool Session::get_supported_protocols() {
  // An array that no transfer can follow is worth seeing all the more.
  const bool answered = open_garmin() || garmin_selection.has_array();
  if (answered) garmin_selection.report();
  return answered;
}

}  // namespace session

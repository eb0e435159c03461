#include "session/session.h"

#include "base/system_file.h"
#include "base/text.h"
#include "session/file_formats.h"
#include "simulators/built_in_data.h"
#include "simulators/lowrance_data.h"

namespace session {
namespace {

constexpr std::string_view kDefaultDebugFile = "FileDebug.txt";

}  // namespace

Session::Session(base::Clock& the_clock, base::FrontEnd& the_front_end, Surroundings the_surroundings,
                 serial::ComPort::DeviceFactory the_devices)
    : clock(the_clock),
      front_end(the_front_end),
      surroundings(std::move(the_surroundings)),
      simulated_garmin{simulators::believable_weekend(), {}},
      simulated_lowrance{simulators::believable_season(), {}},
      devices(the_devices
                  ? std::move(the_devices)
                  : [this](const std::string&
                               name) { return make_device(name, simulated_garmin, simulated_lowrance, clock); }),
      items(settings, front_end),
      command_options(settings, front_end),
      shift(datums, front_end),
      files(file_formats(),
            store::FileContext{items, shift, datums, settings, front_end, clock,
                               [this](std::string_view line) { command_options.do_command(line); }, &picture}),
      debug_log(front_end),
      port(devices, clock, front_end, flags),
      garmin_link(port, clock, front_end, flags, debug_log),
      garmin_selection(garmin_link, port, front_end, flags),
      garmin_connection{garmin_link, port, garmin_selection, front_end, flags},
      garmin_commands(garmin_connection, clock),
      garmin_downloads(garmin_connection, clock, items, settings),
      garmin_uploads(garmin_connection, garmin_commands, items, settings),
      garmin_display(garmin_connection),
      lowrance_link(port, clock, front_end, flags, debug_log),
      lowrance_identification(lowrance_link, front_end, flags),
      lowrance_connection{lowrance_link, port, lowrance_identification, front_end, flags},
      lowrance_downloads(lowrance_connection, clock, items, settings),
      lowrance_uploads(lowrance_connection, items, settings,
                       [this] { return store::offset_seconds(time_offset_hours()); }),
      lowrance_screen(lowrance_connection),
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
  const std::filesystem::path path =
      base::path_from_text(settings.SaveDebugFileWorkingDirectory) / base::path_from_text(name);
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
  const garmin::Conversation conversation(garmin_connection, "");
  return conversation.is_open() && !garmin_connection.stopped();
}

// Whoever asks who is there wants to know it now, so what is known is forgotten first.
bool Session::get_gps_id() {
  if (settings.GPS == store::Family::Lowrance) return identify_lowrance();
  flags.GpsIdentified = false;
  const bool answered = open_garmin();
  if (answered) garmin_selection.show_identification();
  return answered;
}

bool Session::identify_lowrance() {
  flags.LowranceIdentified = false;
  const lowrance::Conversation conversation(lowrance_connection);
  if (conversation.is_open()) {
    lowrance_identification.show();
    if (lowrance_link.damaged_answers() == 0) return true;
    front_end.write_line(9, "The unit information came damaged each time and may be wrong.");
    return false;
  }
  if (flags.ComTimedOut && flags.UserAbort) {  // the port was there, but at no speed did anybody answer
    front_end.write_line(1, "COM port timeout!");
  }
  return false;
}

void Session::keep_port_speed() {
  if (settings.GPS == store::Family::Lowrance && flags.LowranceIdentified) settings.port_speed = port.speed();
}

bool Session::get_display_bitmap() {
  std::optional<picture::Bitmap> downloaded =
      settings.GPS == store::Family::Lowrance ? lowrance_screen.download() : garmin_display.download();
  if (!downloaded) return false;
  picture = std::move(downloaded);
  return true;
}

bool Session::get_supported_protocols() {
  // An array that no transfer can follow is worth seeing all the more.
  const bool answered = open_garmin() || garmin_selection.has_array();
  if (answered) garmin_selection.report();
  return answered;
}

bool Session::get_voltages() {
  const std::optional<garmin::Voltages> voltages = garmin_commands.read_voltages();
  if (!voltages) return false;
  constexpr double kLowest = 1.0;  // volts; a receiver that runs has more at one of its inputs
  const bool readable = voltages->internal >= kLowest || voltages->external >= kLowest;
  front_end.write_line(4, readable
                              ? base::format_text("Int: %5.2f,  Ext: %5.2f", voltages->internal, voltages->external)
                              : "Can't read voltages");
  return readable;
}

bool Session::get_time() {
  const std::optional<std::int64_t> seconds = garmin_commands.read_time();
  if (seconds) front_end.write_line(4, store::format_date_text(*seconds) + " UTC");
  return seconds.has_value();
}

bool Session::get_position() {
  const std::optional<garmin::PlaceAndTime> here = garmin_commands.read_position();
  if (!here) return false;
  shift.set_datum_shift("WGS-84", settings.externaldatum);
  const geodesy::Position shifted = textfile::shift_position(shift, here->position).value_or(here->position);
  const geodesy::PositionTexts texts =
      geodesy::format_position(shifted, settings.DMSMode, shift.projection_ellipsoid());
  const std::string time = store::format_date_text(here->seconds + text_options().offset_seconds);
  front_end.write_line(4, base::format_text("%s %s %s", texts.first.c_str(), texts.second.c_str(), time.c_str()));
  return datums.find(settings.externaldatum) != nullptr;  // if not, WGS-84 took its place, which was said
}

bool Session::follow_position(const garmin::GarminCommands::LineSink& sink) {
  return garmin_commands.follow_position(sink);
}

bool Session::power_off() {
  if (!front_end.ask_yes_no("Turn off GPS", "Turn off the GPS receiver?")) {
    front_end.write_line(1, "The GPS receiver was not turned off.");
    return false;
  }
  const bool told = garmin_commands.power_off();
  if (told) front_end.write_line(4, "The GPS receiver was told to turn off.");
  return told;
}

}  // namespace session

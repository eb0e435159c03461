#include "ui/console/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "base/text.h"

namespace ui::console {
namespace {

using Words = std::vector<std::string>;

const Words kKinds{"all",    "waypoints", "tracks", "routes", "proximity", "almanac",
                   "events", "trails",    "trail1", "trail2", "trail3",    "trail4"};

CLI::App* add_command(CLI::App& app, Arguments& arguments, const std::string& name, const std::string& does) {
  CLI::App* command = app.add_subcommand(name, does);
  command->callback([&arguments, name] { arguments.command = name; });
  command->fallthrough();  // global options may stand behind the command too
  return command;
}

void add_files(CLI::App* command, Arguments& arguments) {
  command->add_option("FILE", arguments.words, "files to read")->required();
}

void add_datum(CLI::App* command, Arguments& arguments, const char* help) {
  command->add_option("--datum", arguments.datum, help)->type_name("DATUM");
}

void add_notation(CLI::App* command, Arguments& arguments) {
  command->add_option("--notation", arguments.notation, "dms, dmm, ddd or utm")
      ->check(CLI::IsMember({"dms", "dmm", "ddd", "utm"}, CLI::ignore_case))
      ->type_name("NAME");
}

void add_kinds(CLI::App* command, Arguments& arguments, const char* help) {
  command->add_option("--kinds", arguments.kinds, help)
      ->delimiter(',')
      ->allow_extra_args(false)
      ->check(CLI::IsMember(kKinds))
      ->type_name("KIND,...");
}

void add_outputs(CLI::App* command, Arguments& arguments) {
  command->add_option("-o,--output", arguments.outputs, "files to write, the type by the extension")
      ->required()
      ->type_name("FILE");
}

void add_rotate_left(CLI::App* command, Arguments& arguments) {
  command->add_flag("--rotate-left", arguments.rotate_left, "turn the picture by 90 degrees");
}

constexpr int kMostSlots = 65535;  // of a Lowrance/Eagle unit

// "LO-HI" or "LO-end".
SlotRange slot_range(const std::string& text) {
  const std::size_t dash = text.find('-');
  const bool to_the_end = dash != std::string::npos && text.substr(dash) == "-end";
  const auto low = base::parse_integer(text.substr(0, dash));
  const auto high = to_the_end || dash == std::string::npos ? low : base::parse_integer(text.substr(dash + 1));
  if (dash == std::string::npos || !low || !high || *low < 1 || *high < *low || *high > kMostSlots)
    throw CLI::ValidationError("--range", text + " is no range such as 1-250 or 20-end");
  return {static_cast<int>(*low), to_the_end ? SlotRange::kToTheEnd : static_cast<int>(*high)};
}

void add_start(CLI::App* command, const char* name, std::optional<int>& slot, const char* help) {
  command->add_option(name, slot, help)->check(CLI::Range(1, kMostSlots))->type_name("N");
}

void add_output_options(CLI::App* command, Arguments& arguments) {
  add_outputs(command, arguments);
  add_datum(command, arguments, "datum of the written positions");
  add_notation(command, arguments);
  command->add_option("--txt-version", arguments.txt_version, "version of native text files, 1 or 2")
      ->check(CLI::Range(1, 2))
      ->type_name("N");
  command->add_option("--time-offset", arguments.time_offset, "local time minus UTC in hours")
      ->check(CLI::Range(-24.0, 24.0))
      ->type_name("HOURS");
  command->add_flag("--distances", arguments.distances, "lengths of routes and tracks as comment lines");
  add_kinds(command, arguments, "write only these kinds, separated by commas");
  command->add_flag("--no-comments", arguments.no_comments, "no comment column");
  command->add_flag("--no-symbols", arguments.no_symbols, "no symbol column");
}

void add_global_options(CLI::App& app, Arguments& arguments) {
  app.add_option("--config", arguments.config, "configuration file")->type_name("FILE");
  app.add_option("--set", arguments.set, "one configuration key for this run; repeatable")
      ->allow_extra_args(false)
      ->type_name("KEY=VALUE");
  app.add_option("--family", arguments.family, "receiver family: garmin or lowrance")
      ->check(CLI::IsMember({"garmin", "lowrance"}))
      ->type_name("NAME");
  app.add_option("--port", arguments.port,
                 "COM1, COM12, /dev/ttyUSB0, ... or a simulated receiver: sim:garmin, sim:lowrance")
      ->type_name("PORT");
  app.add_option("--speed", arguments.speed, "Lowrance/Eagle start speed in bits per second")
      ->check(CLI::IsMember({1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200}))
      ->type_name("N");
  app.add_option("--debug-log", arguments.debug_log, "write the serial debug log")->type_name("FILE");
  app.add_option("--debug-format", arguments.debug_format, "hex or decimal")
      ->check(CLI::IsMember({"hex", "decimal"}))
      ->type_name("NAME");
  app.add_flag("--trace", arguments.trace, "write every display call to standard error");
  app.add_flag("--quiet", arguments.quiet, "no progress; errors still show");
  app.set_version_flag("--version", "Pelorix " PELORIX_VERSION);
}

void add_receiver_commands(CLI::App& app, Arguments& arguments) {
  add_command(app, arguments, "identify", "ask the receiver who it is");
  add_command(app, arguments, "protocols", "list the protocols that the receiver says it speaks");
  add_command(app, arguments, "voltage", "ask the receiver for its supply voltages");
  add_command(app, arguments, "time", "ask the receiver for its date and time");
  CLI::App* position = add_command(app, arguments, "position", "ask the receiver where it is");
  position->add_flag("--follow", arguments.follow, "position-velocity-time data, a line a record, until ESC or Ctrl-C");
  CLI::App* power_off = add_command(app, arguments, "poweroff", "turn the receiver off");
  power_off->add_flag("--yes", arguments.yes, "do not ask first");
  CLI::App* download = add_command(app, arguments, "download", "download, then write the files");
  download
      ->add_option(
          "KIND", arguments.words,
          "what to download: all, waypoints, tracks, routes; proximity or almanac of Garmin receivers; events, "
          "trails or trail1 to trail4 of Lowrance/Eagle units")
      ->required()
      ->check(CLI::IsMember(kKinds));
  download
      ->add_option_function<std::string>(
          "--range", [&arguments](const std::string& text) { arguments.range = slot_range(text); },
          "waypoint slots of a Lowrance/Eagle unit, from 1; HI may be end")
      ->type_name("LO-HI");
  add_output_options(download, arguments);
  CLI::App* upload = add_command(app, arguments, "upload", "read files, then upload what they hold");
  add_files(upload, arguments);
  add_kinds(upload, arguments, "upload only these kinds, separated by commas");
  add_start(upload, "--start", arguments.start, "first waypoint slot of a Lowrance/Eagle unit to upload to");
  add_start(upload, "--route-start", arguments.route_start,
            "the same for the waypoints of routes; that of --start where it is not given");
  upload->add_flag("--inactives", arguments.inactives, "empty the waypoint slots of a Lowrance/Eagle unit behind them");
  CLI::App* screen = add_command(app, arguments, "screen", "download the receiver's screen to .bmp or .png files");
  add_outputs(screen, arguments);
  add_rotate_left(screen, arguments);
  add_command(app, arguments, "ports", "list the serial ports of this machine");
  add_command(app, arguments, "find", "try every port, or that of --port, and say which receiver answers where");
}

void add_file_commands(CLI::App& app, Arguments& arguments) {
  CLI::App* convert = add_command(app, arguments, "convert", "read files and write others");
  add_files(convert, arguments);
  add_output_options(convert, arguments);
  add_rotate_left(convert, arguments);
  // Kind and files in one list: what comes first is the kind.
  CLI::App* list = add_command(app, arguments, "list", "one line of native text an item");
  list->add_option("KIND FILE", arguments.words, "all, waypoints, tracks, routes, proximity or events, then the files")
      ->required()
      ->expected(2, CLI::detail::expected_max_vector_size);
  add_datum(list, arguments, "datum of the written positions");
  add_notation(list, arguments);
  add_files(add_command(app, arguments, "info", "the counts of what the files hold"), arguments);
  add_command(app, arguments, "save-config", "write the configuration file, with the other options' values");
}

void add_position_commands(CLI::App& app, Arguments& arguments) {
  CLI::App* datums = add_command(app, arguments, "datums", "list the datum names");
  datums->add_option("--save", arguments.save, "save the internal datum list")->type_name("FILE");
  CLI::App* shift = add_command(app, arguments, "shift", "shift a position from one datum to another");
  shift->add_option("LAT LON", arguments.words, "degrees")->required()->expected(2);
  shift->add_option("--from", arguments.from_datum, "datum of the position")->required()->type_name("DATUM");
  shift->add_option("--to", arguments.to_datum, "datum of the result")->required()->type_name("DATUM");
  CLI::App* format = add_command(app, arguments, "format", "a WGS-84 position in a datum and notation");
  format->add_option("LAT LON", arguments.words, "degrees")->required()->expected(2);
  add_datum(format, arguments, "datum of the text");
  add_notation(format, arguments);
  CLI::App* parse = add_command(app, arguments, "parse", "a position text in any notation to WGS-84 degrees");
  parse->add_option("TEXT", arguments.words, "the position")->required();
  add_datum(parse, arguments, "datum of the text");
  CLI::App* distance = add_command(app, arguments, "distance", "the great-circle distance of two positions");
  distance->add_option("LAT1 LON1 LAT2 LON2", arguments.words, "degrees")->required()->expected(4);
}

void add_simulate(CLI::App& app, Arguments& arguments) {
  CLI::App* simulate = add_command(app, arguments, "simulate", "serve a simulated receiver on a new pseudo-terminal");
  simulate->add_option("FAMILY", arguments.words, "garmin or lowrance")
      ->required()
      ->expected(1)
      ->check(CLI::IsMember({"garmin", "lowrance"}));
  simulate->add_option("--load", arguments.load, "files with what the receiver holds")->type_name("FILE");
  simulate->add_option("--save", arguments.save_to, "write what it holds when it ends; repeatable")
      ->allow_extra_args(false)
      ->type_name("FILE");
  simulate->add_option("--baud", arguments.baud, "byte rate as on a real wire; 0 is unthrottled")
      ->check(CLI::Range(0, 1000000))
      ->type_name("N");
  simulate->add_option("--product", arguments.product, "Garmin: product id")
      ->check(CLI::Range(0, 65534))
      ->type_name("ID");
  simulate->add_option("--software", arguments.software, "Garmin: software version, such as 2.50")
      ->type_name("VERSION");
  simulate
      ->add_option("--protocols", arguments.protocols,
                   "Garmin: capability array such as \"L001 A010 A100 D108\", or none for a receiver that sends none")
      ->type_name("TEXT");
  simulate->add_option("--unit", arguments.unit, "Lowrance/Eagle: name of the unit, such as \"GlobalMap 100\"")
      ->type_name("NAME");
  simulate->add_flag("--echo", arguments.echo, "Lowrance/Eagle: what the unit hears comes back");
  simulate->add_flag("--noise", arguments.noise, "Lowrance/Eagle: meaningless bytes before every answer");
  simulate->add_option("--link", arguments.link, "a symbolic link to the pseudo-terminal")->type_name("PATH");
  simulate
      ->add_option("--fault", arguments.faults,
                   "drop-ack@N, bad-checksum@N, silent@N, unplug@N or noise@N: what goes wrong at the N-th packet")
      ->allow_extra_args(false)
      ->type_name("KIND@N");
}

}  // namespace

bool is_kind(const std::string& word) { return std::find(kKinds.begin(), kKinds.end(), word) != kKinds.end(); }

std::variant<Arguments, EndNow> parse_arguments(std::vector<std::string> words) {
  Arguments arguments;
  CLI::App app{"Moves waypoints, routes and tracks between GPS receivers and files."};
  app.name("pelorix-cli");
  app.require_subcommand(0, 1);  // none is told below, after a word that is no command
  add_global_options(app, arguments);
  add_receiver_commands(app, arguments);
  add_file_commands(app, arguments);
  add_position_commands(app, arguments);
  add_simulate(app, arguments);
  try {
    // It takes them from the back, without the program's name.
    std::ranges::reverse(words);
    words.pop_back();
    app.parse(std::move(words));
  } catch (const CLI::ParseError& error) {
    std::ostringstream output, complaint;
    const bool asked_for = app.exit(error, output, complaint) == 0;
    return EndNow{asked_for ? 0 : 2, output.str(), complaint.str()};
  }
  if (arguments.command.empty()) return EndNow{2, "", "A command is missing.\n\n" + app.help()};
  return arguments;
}

}  // namespace ui::console

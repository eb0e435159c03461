#include "ui/console/console_program.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "base/system_file.h"
#include "base/text.h"
#include "session/find_receivers.h"
#include "session/simulator_host.h"
#include "ui/commands.h"
#include "ui/ports.h"

namespace ui::console {
namespace {

using base::path_from_text;
using store::OutputOptions;

// Which kinds a writer or a list takes.
struct KindRow {
  std::string_view word;
  bool OutputOptions::*written;
};
constexpr std::array kKinds{
    KindRow{"waypoints", &OutputOptions::waypoints}, KindRow{"routes", &OutputOptions::routes},
    KindRow{"proximity", &OutputOptions::proximity}, KindRow{"tracks", &OutputOptions::tracks},
    KindRow{"events", &OutputOptions::events},       KindRow{"almanac", &OutputOptions::almanac},
};

void choose_kinds(const std::vector<std::string>& kinds, OutputOptions& options) {
  options.kinds_given = !kinds.empty();
  if (kinds.empty() || std::ranges::find(kinds, "all") != kinds.end()) return;
  for (const KindRow& row : kKinds) options.*row.written = std::ranges::find(kinds, row.word) != kinds.end();
  if (std::ranges::any_of(kinds, [](std::string_view kind) { return kind.starts_with("trail"); }))
    options.tracks = true;
}

// Words of commands that have another one in the menus.
struct Alias {
  std::string_view word, command;
};
constexpr std::array kAliases{Alias{"download-trails", "download-tracks"}};

int id_of(std::string_view word) {
  const auto* row = std::ranges::find(kAliases, word, &Alias::word);
  return command_id(row == kAliases.end() ? word : row->command);
}

std::string no_position(const std::string& text, const std::string& problem) {
  return "\"" + text + "\" is no position: " + problem + (problem.ends_with('!') ? "" : ".");
}

// Keys are read from the keyboard as long as it lives.
class KeyReading {
 public:
  explicit KeyReading(Terminal& terminal) : terminal_(terminal) { terminal_.begin_keys(); }
  ~KeyReading() { terminal_.end_keys(); }
  KeyReading(const KeyReading&) = delete;
  KeyReading& operator=(const KeyReading&) = delete;

 private:
  Terminal& terminal_;
};

}  // namespace

struct ConsoleProgram::Command {
  std::string_view word;
  int (ConsoleProgram::*run)(const Arguments& arguments);
};

const ConsoleProgram::Command* ConsoleProgram::find_command(const std::string& name) {
  static constexpr std::array kCommands{
      Command{"identify", &ConsoleProgram::answer},   Command{"protocols", &ConsoleProgram::answer},
      Command{"voltage", &ConsoleProgram::answer},    Command{"time", &ConsoleProgram::answer},
      Command{"position", &ConsoleProgram::position}, Command{"poweroff", &ConsoleProgram::answer},
      Command{"download", &ConsoleProgram::download}, Command{"upload", &ConsoleProgram::upload},
      Command{"screen", &ConsoleProgram::screen},     Command{"convert", &ConsoleProgram::convert},
      Command{"list", &ConsoleProgram::list},         Command{"info", &ConsoleProgram::info},
      Command{"datums", &ConsoleProgram::datums},     Command{"shift", &ConsoleProgram::shift},
      Command{"format", &ConsoleProgram::format},     Command{"parse", &ConsoleProgram::parse},
      Command{"distance", &ConsoleProgram::distance}, Command{"ports", &ConsoleProgram::ports},
      Command{"find", &ConsoleProgram::find},         Command{"save-config", &ConsoleProgram::save_config},
      Command{"simulate", &ConsoleProgram::simulate},
  };
  const auto* row = std::ranges::find(kCommands, name, &Command::word);
  return row == kCommands.end() ? nullptr : row;
}

int ConsoleProgram::run(const Arguments& arguments) {
  const Command* command = find_command(arguments.command);
  if (command == nullptr) return wrong_usage("there is no command " + arguments.command);
  if (!take_settings(arguments)) return kWrongUsage;
  // A log that the configuration asks for stops nobody's transfer; one that the command line asks for must be there.
  if (session_.settings.EnableDebugFile != 0 && !session_.open_debug_log() && !arguments.debug_log.empty())
    return kFailed;
  return (this->*command->run)(arguments);
}

int ConsoleProgram::wrong_usage(const std::string& why) {
  terminal_.write(why + "\nRun with --help for more information.\n");
  return kWrongUsage;
}

int ConsoleProgram::fail(const std::string& why) {
  terminal_.write(base::utf8_text(why) + "\n");
  return kFailed;
}

// Adding zero turns minus zero, which nobody wants to read, into zero.
void ConsoleProgram::print_degrees(const geodesy::Position& position) {
  print(base::format_text("%.9f %.9f", position.latitude + 0.0, position.longitude + 0.0));
}

void ConsoleProgram::print(std::string_view line) { output_ << base::utf8_text(line) << '\n'; }

// The settings for this run: start values, configuration file, then what the command line says.
bool ConsoleProgram::take_settings(const Arguments& arguments) {
  store::Settings& settings = session_.settings;
  store::load_configuration(path_from_text(arguments.config), settings);
  for (const std::string& text : arguments.set) {
    const std::size_t equals = text.find('=');
    const std::string key = text.substr(0, equals);
    const store::KeyResult result = equals == std::string::npos
                                        ? store::KeyResult::BadValue
                                        : store::set_key(settings, key, text.substr(equals + 1));
    if (result == store::KeyResult::Set) continue;
    const std::string value_problem = "--set: " + text + " is not KEY=VALUE with a value that the key can have";
    (void)wrong_usage(result == store::KeyResult::UnknownKey ? "--set: there is no key " + key : value_problem);
    return false;
  }
  if (!arguments.port.empty()) settings.PortName = arguments.port;
  if (arguments.family == "lowrance" || (arguments.family.empty() && settings.PortName == "sim:lowrance")) {
    settings.GPS = store::Family::Lowrance;
  } else if (!arguments.family.empty() || settings.PortName.starts_with("sim:") ||
             settings.GPS == store::Family::None) {
    settings.GPS = store::Family::Garmin;
  }
  if (!take_lowrance_options(arguments)) return false;
  if (!arguments.debug_log.empty()) {
    const std::filesystem::path path = path_from_text(arguments.debug_log);
    settings.EnableDebugFile = 1;
    settings.SaveDebugFileWorkingDirectory = path.parent_path().string();
    settings.DebugFileName = path.stem().string();
    settings.DebugFileNameExtn = path.extension().string();
  }
  if (arguments.debug_format == "decimal") session_.debug_format = serial::ByteFormat::Decimal;
  if (!arguments.datum.empty()) settings.externaldatum = arguments.datum;
  if (!arguments.notation.empty() && store::set_key(settings, "DMSMode", arguments.notation) != store::KeyResult::Set)
    return false;
  if (arguments.txt_version) settings.This_TXT_File_Version = *arguments.txt_version;
  if (arguments.time_offset) settings.TimeOffsetHours = arguments.time_offset;
  if (arguments.distances) settings.SA_total_dist = 1;
  if (arguments.no_comments) settings.SA_nameonlytxt |= store::Settings::kNoCommentColumn;
  if (arguments.no_symbols) settings.SA_nameonlytxt |= store::Settings::kNoSymbolColumn;
  if (settings.LogDisplayOutput != 0) display_.log_to("DisplayOutput");
  session_.apply_settings();
  return true;
}

bool ConsoleProgram::take_lowrance_options(const Arguments& arguments) {
  store::Settings& settings = session_.settings;
  if (arguments.speed) settings.port_speed = *arguments.speed;
  const bool slots_given = arguments.range || arguments.start || arguments.route_start || arguments.inactives;
  if (slots_given && settings.GPS != store::Family::Lowrance) {
    (void)wrong_usage("--range, --start, --route-start and --inactives are for --family lowrance.");
    return false;
  }
  if (arguments.range) {
    settings.SA_LwrRangeLo = arguments.range->low;
    settings.SA_LwrRangeHi = arguments.range->high;
  }
  // Routes name the waypoints where these are, unless somebody wants them elsewhere; slots before them stay as they
  // are.
  if (arguments.start) settings.SA_LwrStartPt = settings.SA_LwrRteStartPt = *arguments.start;
  if (arguments.route_start) settings.SA_LwrRteStartPt = *arguments.route_start;
  if (arguments.inactives) settings.SA_SendLowrInactives = 1;
  return true;
}

bool ConsoleProgram::read_files(const std::vector<std::string>& files) {
  const KeyReading keys(terminal_);
  bool all_read = true;
  for (const std::string& file : files) all_read = session_.files.do_input(path_from_text(file)) && all_read;
  return all_read;
}

bool ConsoleProgram::write_outputs(const Arguments& arguments) {
  OutputOptions options = session_.text_options();
  choose_kinds(arguments.kinds, options);
  bool all_written = true;
  for (const std::string& file : arguments.outputs) {
    display_.clear();  // what is said of one file is said of the next one again
    all_written = session_.files.save(path_from_text(file), options) && all_written;
  }
  // In place of an unknown datum WGS-84 was written, which was said.
  return all_written && session_.datums.find(options.datum) != nullptr;
}

// The lines that these commands write are their results, or the reason why they failed.
int ConsoleProgram::answer(const Arguments& arguments) {
  const KeyReading keys(terminal_);
  screen_.set_lines_are_results(!arguments.trace);
  screen_.set_says_yes(arguments.yes);
  const bool done = run_command(session_, display_, command_id(arguments.command));
  screen_.set_lines_are_results(false);
  bool told = false;
  for (int line = 1; line <= Display::kLines; ++line) {
    const std::string& text = display_.line(line);
    if (text.empty()) continue;
    told = true;
    if (done) {
      print(text);
    } else if (!arguments.trace) {
      (void)fail(text);
    }
  }
  if (done) return kDone;
  return told ? kFailed : no_answer();
}

int ConsoleProgram::position(const Arguments& arguments) {
  if (!arguments.follow) return answer(arguments);
  const KeyReading keys(terminal_);
  const auto print_now = [this](std::string_view line) { return static_cast<bool>(output_ << line << std::flush); };
  return follow_position(session_, display_, print_now) ? kDone : no_answer();
}

// A receiver that falls silent says nothing, so somebody has to.
int ConsoleProgram::no_answer() {
  return screen_.has_told_trouble() ? kFailed
                                    : fail("The receiver on " + session_.port.port_name() + " did not answer.");
}

// A reason that stands where only progress is expected is told in the end, even to those who want no progress.
bool ConsoleProgram::run_word(const std::string& word, const Arguments& arguments) {
  if (run_command(session_, display_, id_of(word))) return true;
  for (int line = 1; arguments.quiet && !screen_.has_told_trouble() && line <= Display::kLines; ++line)
    if (!display_.line(line).empty()) (void)fail(display_.line(line));
  return false;
}

// What the family does not have is refused before anything is moved.
bool ConsoleProgram::can_transfer(const std::string& direction, const std::vector<std::string>& kinds) {
  for (const std::string& kind : kinds) {
    // Who has no first plot trail has none.
    const std::string_view why_not = refusal(session_, id_of(direction + (kind == "trails" ? "trail1" : kind)));
    if (!why_not.empty()) return fail(std::string(why_not)) == kDone;
  }
  return true;
}

int ConsoleProgram::download(const Arguments& arguments) {
  if (!can_transfer("download-", arguments.words)) return kFailed;
  bool all_came = true;
  const KeyReading keys(terminal_);
  for (const std::string& kind : arguments.words) all_came = all_came && run_word("download-" + kind, arguments);
  // What has arrived is written, but an old file is not replaced by nothing.
  if (!all_came && session_.items.empty() && session_.items.almanac().empty()) return kFailed;
  const bool all_written = write_outputs(arguments);
  return all_came && all_written ? kDone : kFailed;
}

// Every kind that the stores hold and the family has; what it does not have is named. None: that was said.
std::vector<std::string> ConsoleProgram::kinds_to_upload() {
  const store::ItemStore& items = session_.items;
  const bool lowrance = session_.settings.GPS == store::Family::Lowrance;
  const int of_both = items.waypoint_count() + items.route_count() + items.track_point_count();
  std::vector<std::string> kinds;
  if (of_both + (lowrance ? items.event_count() : items.proximity_count()) > 0) kinds.emplace_back("all");
  if (!lowrance && !items.almanac().empty()) kinds.emplace_back("almanac");
  std::string refusals;
  const auto look = [&](bool is_held, std::string_view word) {
    if (const std::string_view why_not = refusal(session_, id_of(word)); is_held && !why_not.empty())
      refusals += " " + std::string(why_not);
  };
  look(items.event_count() > 0, "upload-events");
  look(items.proximity_count() > 0, "upload-proximity");
  look(!items.almanac().empty(), "upload-almanac");
  if (kinds.empty()) {
    (void)fail(refusals.empty() ? "The files hold nothing that can be uploaded." : "Nothing was uploaded." + refusals);
  } else if (!refusals.empty()) {
    (void)fail("Not all that the files hold is uploaded." + refusals);
  }
  return kinds;
}

int ConsoleProgram::upload(const Arguments& arguments) {
  std::vector<std::string> kinds = arguments.kinds;
  if (!can_transfer("upload-", kinds)) return kFailed;
  if (!read_files(arguments.words)) return fail("Nothing was uploaded.");
  if (kinds.empty()) {
    kinds = kinds_to_upload();
    if (kinds.empty()) return kFailed;
  }
  const KeyReading keys(terminal_);
  bool all_taken = true;
  const serial::DeviceFlags& flags = session_.flags;
  for (const std::string& kind : kinds) {
    all_taken = run_word("upload-" + kind, arguments) && all_taken;
    // The other kinds still go to a receiver that has refused some of one, but not after an abort, nor to nobody.
    if (screen_.was_aborted() || (!flags.GpsIdentified && !flags.LowranceIdentified)) break;
  }
  return all_taken ? kDone : kFailed;
}

int ConsoleProgram::screen(const Arguments& arguments) {
  for (const std::string& file : arguments.outputs)
    if (!session_.files.would_save_bitmap(path_from_text(file)))
      return wrong_usage(file + ": a screen is saved to files named .bmp or .png.");
  const KeyReading keys(terminal_);
  if (!run_word("screen", arguments)) return kFailed;
  if (arguments.rotate_left && !run_word("rotate-left", arguments)) return kFailed;
  return write_outputs(arguments) ? kDone : kFailed;
}

int ConsoleProgram::convert(const Arguments& arguments) {
  if (!read_files(arguments.words)) return fail("Nothing was written.");
  if (arguments.rotate_left && !run_word("rotate-left", arguments)) return kFailed;
  return write_outputs(arguments) ? kDone : kFailed;
}

int ConsoleProgram::list(const Arguments& arguments) {
  const std::string& kind = arguments.words.front();
  const bool all = kind == "all";
  if (!all && (kind == "almanac" || std::ranges::find(kKinds, kind, &KindRow::word) == kKinds.end())) {
    return is_kind(kind) ? fail("Native text has no lines for " + kind + ".")
                         : wrong_usage("list: there is no kind " + kind);
  }
  const bool all_read = read_files({arguments.words.begin() + 1, arguments.words.end()});
  const OutputOptions options = session_.text_options();
  const store::ItemStore& items = session_.items;
  textfile::TextWriter writer(items, session_.shift, session_.front_end);
  const auto list_items = [&](std::string_view word, int count,
                              store::ItemRecord (store::ItemStore::*item)(int) const) {
    for (int i = 1; (all || kind == word) && i <= count; ++i) print(writer.item_line((items.*item)(i), options));
  };
  list_items("waypoints", items.waypoint_count(), &store::ItemStore::waypoint);
  for (int number = 0; (all || kind == "routes") && number < store::kRouteCapacity; ++number) {
    const store::Route& route = items.route(number);
    if (!route.header) continue;
    print(writer.item_line(*route.header, options));
    for (const store::ItemRecord& point : route.points) print(writer.item_line(point, options, true));
  }
  list_items("proximity", items.proximity_count(), &store::ItemStore::proximity);
  list_items("tracks", items.track_point_count(), &store::ItemStore::track_point);
  list_items("events", items.event_count(), &store::ItemStore::event);
  return all_read ? kDone : kFailed;
}

int ConsoleProgram::info(const Arguments& arguments) {
  const bool all_read = read_files(arguments.words);
  const store::ItemStore& items = session_.items;
  print(base::format_text("W:%d T:%d (TP:%d) P:%d R:%d E:%d", items.waypoint_count(), items.track_count(),
                          items.track_point_count(), items.proximity_count(), items.route_count(),
                          items.event_count()));
  return all_read ? kDone : kFailed;
}

int ConsoleProgram::datums(const Arguments& arguments) {
  if (!arguments.save.empty())
    return geodesy::save_internal_datum_list(path_from_text(arguments.save), session_.front_end) ? kDone : kFailed;
  for (const std::string& name : session_.datums.names()) print(name);
  return kDone;
}

bool ConsoleProgram::read_positions(const std::vector<std::string>& words, std::vector<geodesy::Position>& positions) {
  for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
    const std::string text = words[i] + " " + words[i + 1];
    const geodesy::ParsedPosition parsed = geodesy::parse_position(text, session_.shift.projection_ellipsoid());
    if (!parsed.position) {
      (void)fail(no_position(text, parsed.problem));
      return false;
    }
    positions.push_back(*parsed.position);
  }
  return true;
}

int ConsoleProgram::shift(const Arguments& arguments) {
  std::vector<geodesy::Position> positions;
  if (!read_positions(arguments.words, positions)) return kFailed;
  const geodesy::Position result =
      session_.shift.convert_position_datum(arguments.from_datum, arguments.to_datum, positions[0]);
  print_degrees(result);
  // An unknown datum counted as WGS-84, which was said.
  const bool both_known = session_.datums.find(arguments.from_datum) && session_.datums.find(arguments.to_datum);
  return both_known ? kDone : kFailed;
}

int ConsoleProgram::format(const Arguments& arguments) {
  std::vector<geodesy::Position> positions;
  if (!read_positions(arguments.words, positions)) return kFailed;
  const store::Settings& settings = session_.settings;
  const geodesy::Position shifted =
      session_.shift.convert_position_datum("WGS-84", settings.externaldatum, positions[0]);
  const geodesy::PositionTexts texts =
      geodesy::format_position(shifted, settings.DMSMode, session_.shift.projection_ellipsoid());
  print(texts.first + " " + texts.second);
  return session_.datums.find(settings.externaldatum) ? kDone : kFailed;
}

int ConsoleProgram::parse(const Arguments& arguments) {
  std::string text;
  for (const std::string& word : arguments.words) text += (text.empty() ? "" : " ") + word;
  geodesy::DatumShift& shift = session_.shift;
  const std::string& datum = session_.settings.externaldatum;
  shift.set_datum_shift(datum, "WGS-84");
  const geodesy::ParsedPosition parsed = geodesy::parse_position(text, shift.source_ellipsoid());
  if (!parsed.position) return fail(no_position(text, parsed.problem));
  const geodesy::Position result = shift.convert(*parsed.position);
  print_degrees(result);
  return session_.datums.find(datum) ? kDone : kFailed;
}

int ConsoleProgram::distance(const Arguments& arguments) {
  std::vector<geodesy::Position> positions;
  if (!read_positions(arguments.words, positions)) return kFailed;
  const geodesy::DistanceUnit unit = session_.settings.DistValues;
  const double length = geodesy::great_circle_distance(positions[0], positions[1], unit);
  print(base::format_text("%.6f %s", length, std::string(geodesy::unit_name(unit)).c_str()));
  return kDone;
}

int ConsoleProgram::ports(const Arguments&) {
  const std::vector<serial::PortInfo> ports = serial::list_serial_ports();
  if (ports.empty()) terminal_.write(std::string(kNoPorts) + "\n");
  for (const serial::PortInfo& port : ports) print(port_label(port));
  return kDone;
}

int ConsoleProgram::find(const Arguments& arguments) {
  const std::vector<std::string> ports =
      arguments.port.empty() ? port_names() : std::vector<std::string>{arguments.port};
  if (ports.empty()) return fail(std::string(kNoPorts));
  std::optional<store::Family> only;
  if (!arguments.family.empty()) only = session_.settings.GPS;
  const KeyReading keys(terminal_);
  const auto trying = [&](const std::string& port) {
    if (!arguments.quiet) terminal_.write("Trying " + port + " ...\n");
  };
  const auto done = [this](const session::PortFinding& finding) {
    print(finding.port + "  " + finding.text);
    output_.flush();
  };
  const session::FindResult result = session::find_receivers(session_, ports, only, arguments.trace, trying, done);
  if (result.stopped) return fail("The search was stopped.");
  return result.receivers > 0 ? kDone : fail("No receiver was found.");
}

int ConsoleProgram::save_config(const Arguments& arguments) {
  const std::filesystem::path path = std::filesystem::absolute(path_from_text(arguments.config));
  return store::save_configuration(path, session_.settings, session_.front_end) ? kDone : kFailed;
}

int ConsoleProgram::simulate(const Arguments& arguments) {
  const store::Family family = arguments.words.front() == "lowrance" ? store::Family::Lowrance : store::Family::Garmin;
  const std::string wrong = session::wish_for(session_, family,
                                              {arguments.baud, arguments.faults, arguments.product, arguments.software,
                                               arguments.protocols, arguments.unit, arguments.echo, arguments.noise});
  if (!wrong.empty()) return wrong_usage(wrong);
  for (const std::string& file : arguments.save_to)
    if (const std::string problem = session_.files.save_problem(path_from_text(file)); !problem.empty())
      return fail(problem);
  if (!read_files(arguments.load)) return fail("The simulated receiver was not started.");
  const std::string no_room = arguments.load.empty() ? std::string() : session::load_simulated(session_, family);
  if (!no_room.empty()) terminal_.write("The simulated receiver has no room for these: " + no_room + ".\n");
  const KeyReading keys(terminal_);
  const auto started = [this](const std::string& path) { return static_cast<bool>(output_ << path << std::endl); };
  const std::string problem =
      session::serve_simulated(session_, family, arguments.link, started, [this] { return terminal_.take_esc(); });
  if (!problem.empty()) return fail(problem);
  return arguments.save_to.empty() ? kDone : save_simulated(family, arguments.save_to);
}

// Keys are still taken, so that Ctrl-C does not end the program before the files are there.
int ConsoleProgram::save_simulated(store::Family family, const std::vector<std::string>& files) {
  const session::TakenContents taken = session::take_simulated_contents(session_, family);
  OutputOptions options = session_.text_options();
  options.kinds_given = true;  // there is nobody to choose them
  bool all_saved = true;
  for (const std::string& file : files) {
    display_.clear();
    // Nobody misses the almanac that every simulated receiver starts with, in a file that keeps none.
    options.almanac = taken.almanac_is_new || session_.files.keeps_almanac(path_from_text(file));
    all_saved = session_.files.save(path_from_text(file), options) && all_saved;
  }
  std::string kinds;
  for (const std::string& kind : taken.left_out) kinds += (kinds.empty() ? "" : ", ") + kind;
  if (!kinds.empty()) terminal_.write("Not saved, for they cannot be downloaded from this receiver: " + kinds + ".\n");
  if (!all_saved) return fail("What the receiver holds was not saved.");
  return taken.complete ? kDone : fail("Not all that the receiver holds was saved.");
}

}  // namespace ui::console

#include "session/simulator_host.h"

#include <cmath>

#include "base/quiet_front_end.h"
#include "base/text.h"
#include "session/simulated_lowrance.h"
#include "session/simulated_receivers.h"
#include "simulators/built_in_data.h"

namespace session {
namespace {

// D550 and D551 are not downloaded.
bool has_readable_almanac(const simulators::GarminCapabilities& can) {
  return can.almanac_transfer != 0 && (can.almanac_data == 500 || can.almanac_data == 501);
}

// Whether it is another one than every simulated receiver starts with.
bool has_new_almanac(const SimulatedGarmin& receiver, const simulators::GarminCapabilities& can) {
  if (!receiver.memory || !receiver.memory->almanac || receiver.memory->almanac->empty()) return false;
  return receiver.memory->almanac != simulators::fill_memory(simulators::believable_weekend(), can).almanac;
}

// Settings under which a download neither changes what comes nor puts it in another order, nor leaves out any of it.
store::Settings as_the_receiver_has_it(store::Settings settings, store::Family family, std::string_view port) {
  settings.PortName = port;
  settings.GPS = family;
  settings.WeekRollover = 0;
  settings.HandleReadDups = store::Duplicates::Ignore;  // the points of routes are no waypoints of their own
  settings.ForceExactDupeRemoval = 0;
  settings.SA_SortAfterInput = 0;
  settings.SA_LwrRangeLo = 1;
  settings.SA_LwrRangeHi = -1;
  return settings;
}

// Kinds of which there is something, but nothing came: the program cannot download them from such a receiver.
std::vector<std::string> left_out(const simulators::GarminMemory& memory, const store::ItemStore& items) {
  std::vector<std::string> kinds;
  const auto look = [&](std::string_view kind, const simulators::GarminMemory::Records& held, int count) {
    if (held && !held->empty() && count == 0) kinds.emplace_back(kind);
  };
  look("waypoints", memory.waypoints, items.waypoint_count());
  look("routes", memory.routes, items.route_count());
  look("tracks", memory.tracks, items.track_point_count());
  look("proximity waypoints", memory.proximity, items.proximity_count());
  return kinds;
}

// What goes wrong comes through.
class TroubleFrontEnd : public base::QuietFrontEnd {
 public:
  // `trouble_line` is the one on which downloads of the family tell what went wrong.
  TroubleFrontEnd(base::FrontEnd& outer, int trouble_line) : outer_(outer), trouble_line_(trouble_line) {}

  void write_line(int line, std::string_view text) override {
    if (line == trouble_line_ && !text.empty()) outer_.write_line(line, text);
  }
  void message_box(std::string_view title, std::string_view text) override { outer_.message_box(title, text); }

 private:
  base::FrontEnd& outer_;
  int trouble_line_;
};

TakenContents take_garmin_contents(Session& session) {
  constexpr int kTroubleLine = 2;
  const SimulatedGarmin& receiver = session.simulated_garmin;
  TroubleFrontEnd front_end(session.front_end, kTroubleLine);
  Session reader(session.clock, front_end, {});
  reader.simulated_garmin = receiver;
  reader.simulated_garmin.options.faults.clear();
  reader.simulated_garmin.options.baud = 0;
  reader.settings = as_the_receiver_has_it(session.settings, store::Family::Garmin, simulators::kGarminPortName);
  reader.apply_settings();
  TakenContents taken;
  taken.complete = reader.garmin_downloads.download(garmin::Kind::All);
  const simulators::GarminCapabilities can = simulators::chosen_capabilities(receiver.options).capabilities;
  taken.almanac_is_new = has_new_almanac(receiver, can);
  if (receiver.memory) taken.left_out = left_out(*receiver.memory, reader.items);
  if (has_readable_almanac(can)) {
    taken.complete = reader.garmin_downloads.download(garmin::Kind::Almanac) && taken.complete;
  } else if (taken.almanac_is_new) {
    taken.left_out.emplace_back("almanac");
  }
  session.items.restore(reader.items.contents());
  return taken;
}

TakenContents take_lowrance_contents(Session& session) {
  constexpr int kTroubleLine = 6;
  constexpr int kWaypoints = 40029, kEvents = 40035, kTrails = 40030, kRoutes = 40034;
  TroubleFrontEnd front_end(session.front_end, kTroubleLine);
  Session reader(session.clock, front_end, {});
  reader.simulated_lowrance = session.simulated_lowrance;
  simulators::LowranceOptions& options = reader.simulated_lowrance.options;
  options.baud = 0;
  options.echo = options.noise = false;
  options.faults.clear();
  reader.settings = as_the_receiver_has_it(session.settings, store::Family::Lowrance, simulators::kLowrancePortName);
  reader.apply_settings();
  TakenContents taken;
  taken.complete = true;
  // Two slots may hold waypoints of the same name, unlike the points of routes, which come after them.
  reader.settings.HandleReadDups = store::Duplicates::Merge;
  const auto take = [&](int command_id) {
    taken.complete = reader.lowrance_downloads.download(command_id) && taken.complete;
    reader.settings.HandleReadDups = store::Duplicates::Ignore;
  };
  const simulators::LowranceUnit* unit = simulators::find_lowrance_unit(options.unit);
  take(kWaypoints);
  if (unit != nullptr && unit->icons > 0) take(kEvents);
  if (unit != nullptr && unit->trails > 0) take(kTrails);
  take(kRoutes);
  session.items.restore(reader.items.contents());
  return taken;
}

std::string take_faults(const std::vector<std::string>& texts, std::vector<simulators::Fault>& faults) {
  for (const std::string& text : texts) {
    const std::optional<simulators::Fault> fault = simulators::parse_fault(text);
    if (!fault) return "--fault: " + text + " is none of " + std::string(simulators::kFaultForms) + ".";
    faults.push_back(*fault);
  }
  return {};
}

std::string wish_for_garmin(simulators::GarminOptions& options, const SimulatorWishes& wishes) {
  if (!wishes.unit.empty() || wishes.echo || wishes.noise)
    return "--unit, --echo and --noise are for simulate lowrance.";
  options.baud = wishes.baud;
  if (wishes.product) options.product_id = static_cast<std::uint16_t>(*wishes.product);
  if (!wishes.software.empty()) {
    const std::optional<double> version = base::parse_number(wishes.software);
    if (!version || *version < 0 || *version > 327.67)
      return "--software: " + wishes.software + " is no version such as 2.50.";
    options.software_version = static_cast<std::int16_t>(std::lround(*version * 100));
  }
  if (!wishes.protocols.empty()) options.protocols = wishes.protocols;
  const std::string problem = take_faults(wishes.faults, options.faults);
  return problem.empty() ? simulators::garmin_options_problem(options) : problem;
}

std::string wish_for_lowrance(simulators::LowranceOptions& options, const SimulatorWishes& wishes) {
  if (wishes.product || !wishes.software.empty() || !wishes.protocols.empty())
    return "--product, --software and --protocols are for simulate garmin.";
  options.baud = wishes.baud;
  if (!wishes.unit.empty()) options.unit = wishes.unit;
  options.echo = wishes.echo;
  options.noise = wishes.noise;
  const std::string problem = take_faults(wishes.faults, options.faults);
  return problem.empty() ? simulators::lowrance_options_problem(options) : problem;
}

}  // namespace

std::string wish_for(Session& session, store::Family family, const SimulatorWishes& wishes) {
  return family == store::Family::Lowrance ? wish_for_lowrance(session.simulated_lowrance.options, wishes)
                                           : wish_for_garmin(session.simulated_garmin.options, wishes);
}

std::string load_simulated(Session& session, store::Family family) {
  if (family != store::Family::Lowrance) {
    session.simulated_garmin.data = simulated_data(session.items, session.settings);
    session.simulated_garmin.memory.reset();
    return {};
  }
  SimulatedLowrance& receiver = session.simulated_lowrance;
  const simulators::LowranceUnit* unit = simulators::find_lowrance_unit(receiver.options.unit);
  if (unit == nullptr) return {};  // wish_for() has refused such a name
  receiver.data = lowrance_data(session.items, session.settings, *unit);
  receiver.memory.reset();
  return not_loaded(receiver.data, session.items, *unit);
}

TakenContents take_simulated_contents(Session& session, store::Family family) {
  return family == store::Family::Lowrance ? take_lowrance_contents(session) : take_garmin_contents(session);
}

}  // namespace session

#include "session/simulator_host.h"

#include <cmath>

#include "base/text.h"
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

// Settings under which a download neither changes what comes nor puts it in another order. The points of routes are not
// to become waypoints beside those of their ident.
store::Settings as_the_receiver_has_it(store::Settings settings) {
  settings.PortName = simulators::kGarminPortName;
  settings.GPS = store::Family::Garmin;
  settings.WeekRollover = 0;
  settings.HandleReadDups = store::Duplicates::Ignore;
  settings.SA_SortAfterInput = 0;
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

// Nobody is asked, shown progress or listened to; what goes wrong comes through.
class QuietFrontEnd : public base::FrontEnd {
 public:
  explicit QuietFrontEnd(base::FrontEnd& outer) : outer_(outer) {}

  void write_line(int line, std::string_view text) override {
    constexpr int kTrouble = 2;
    if (line == kTrouble && !text.empty()) outer_.write_line(line, text);
  }
  void write_progress(int, std::string_view) override {}
  void set_status(int, std::string_view) override {}
  void message_box(std::string_view title, std::string_view text) override { outer_.message_box(title, text); }
  bool ask_yes_no(std::string_view, std::string_view) override { return false; }
  bool choose(std::string_view, std::span<base::Choice>) override { return true; }
  void set_progress_range(int) override {}
  void step_progress() override {}
  void show_title(std::string_view) override {}
  void refresh_title() override {}
  bool EscPressed() override { return false; }

 private:
  base::FrontEnd& outer_;
};

}  // namespace

std::string wish_for_garmin(Session& session, const SimulatorWishes& wishes) {
  simulators::GarminOptions& options = session.simulated_garmin.options;
  options.baud = wishes.baud;
  if (wishes.product) options.product_id = static_cast<std::uint16_t>(*wishes.product);
  if (!wishes.software.empty()) {
    const std::optional<double> version = base::parse_number(wishes.software);
    if (!version || *version < 0 || *version > 327.67)
      return "--software: " + wishes.software + " is no version such as 2.50.";
    options.software_version = static_cast<std::int16_t>(std::lround(*version * 100));
  }
  if (!wishes.protocols.empty()) options.protocols = wishes.protocols;
  for (const std::string& text : wishes.faults) {
    const std::optional<simulators::Fault> fault = simulators::parse_fault(text);
    if (!fault) return "--fault: " + text + " is none of " + std::string(simulators::kFaultForms) + ".";
    options.faults.push_back(*fault);
  }
  return simulators::garmin_options_problem(options);
}

void load_simulated_garmin(Session& session) {
  session.simulated_garmin.data = simulated_data(session.items, session.settings);
  session.simulated_garmin.memory.reset();
}

TakenContents take_simulated_contents(Session& session) {
  const SimulatedGarmin& receiver = session.simulated_garmin;
  QuietFrontEnd front_end(session.front_end);
  Session reader(session.clock, front_end, {});
  reader.simulated_garmin = receiver;
  reader.simulated_garmin.options.faults.clear();
  reader.simulated_garmin.options.baud = 0;
  reader.settings = as_the_receiver_has_it(session.settings);
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

}  // namespace session

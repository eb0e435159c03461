#include "session/simulator_host.h"

#include <cmath>

#include "base/text.h"
#include "session/simulated_receivers.h"

namespace session {
namespace {

// D550 and D551 are not downloaded.
bool has_readable_almanac(const simulators::GarminOptions& options) {
  const int format = simulators::chosen_capabilities(options).capabilities.almanac_data;
  return format == 500 || format == 501;
}

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
  session.simulated_garmin.data = simulated_data(session.items);
  session.simulated_garmin.memory.reset();
}

// A receiver without faults and on a fast line gives away all that it holds.
bool take_simulated_contents(Session& session) {
  session.simulated_garmin.options.faults.clear();
  session.simulated_garmin.options.baud = 0;
  session.settings.PortName = simulators::kGarminPortName;
  session.settings.GPS = store::Family::Garmin;
  session.apply_settings();
  session.items.clear_all();
  const bool all_came = session.garmin_downloads.download(garmin::Kind::All);
  if (!has_readable_almanac(session.simulated_garmin.options)) return all_came;
  return session.garmin_downloads.download(garmin::Kind::Almanac) && all_came;
}

}  // namespace session

#include <cmath>
#include <ostream>

#include "base/text.h"
#include "session/simulated_receivers.h"
#include "simulators/garmin_simulator.h"
#include "simulators/pty_host.h"
#include "ui/commands.h"
#include "ui/console/simulator_command.h"

namespace ui::console {
namespace {

// Empty on success, else what is wrong with the options.
std::string read_options(const Arguments& arguments, simulators::GarminOptions& options) {
  options.baud = arguments.baud;
  if (arguments.product) options.product_id = static_cast<std::uint16_t>(*arguments.product);
  if (!arguments.software.empty()) {
    const std::optional<double> version = base::parse_number(arguments.software);
    if (!version || *version < 0 || *version > 327.67)
      return "--software: " + arguments.software + " is no version such as 2.50.";
    options.software_version = static_cast<std::int16_t>(std::lround(*version * 100));
  }
  if (!arguments.protocols.empty()) options.protocols = arguments.protocols;
  for (const std::string& text : arguments.faults) {
    const std::optional<simulators::Fault> fault = simulators::parse_fault(text);
    if (!fault) return "--fault: " + text + " is none of " + std::string(simulators::kFaultForms) + ".";
    options.faults.push_back(*fault);
  }
  return simulators::garmin_options_problem(options);
}

// What a receiver without faults and on a fast line gives away is what it holds.
std::string save_contents(session::Session& session, Display& display, const std::string& file) {
  session.simulated_garmin.options.faults.clear();
  session.simulated_garmin.options.baud = 0;
  session.settings.PortName = session::kSimulatedGarmin;
  session.settings.GPS = store::Family::Garmin;
  session.apply_settings();
  session.items.clear_all();
  if (!run_command(session, display, command_id("download-all"))) return "What the receiver holds could not be read.";
  return session.files.save(file, session.text_options()) ? "" : "What the receiver holds was not saved.";
}

}  // namespace

std::string serve_simulated_garmin(session::Session& session, Display& display, Terminal& terminal,
                                   std::ostream& output, const Arguments& arguments) {
  session::SimulatedGarmin& receiver = session.simulated_garmin;
  std::string problem = read_options(arguments, receiver.options);
  if (!problem.empty()) return problem;
  if (!arguments.load.empty()) receiver.data = session::simulated_data(session.items);
  simulators::GarminSimulator simulator(receiver.data, receiver.options, session.clock);
  {
    simulators::PtyHost host;
    problem = host.open(arguments.link);
    if (!problem.empty()) return "The pseudo-terminal could not be made: " + problem + ".";
    output << host.path() << std::endl;
    host.serve(simulator, [&terminal] { return terminal.take_esc(); });
  }
  return arguments.save.empty() ? "" : save_contents(session, display, arguments.save);
}

}  // namespace ui::console

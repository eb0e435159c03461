#include "session/simulator_host.h"
#include "simulators/garmin_simulator.h"
#include "simulators/pty_host.h"

namespace session {

std::string serve_simulated_garmin(Session& session, const std::string& link,
                                   const std::function<bool(const std::string& path)>& started,
                                   const std::function<bool()>& stop) {
  SimulatedGarmin& receiver = session.simulated_garmin;
  simulators::GarminSimulator simulator(receiver.data, receiver.options, session.clock, receiver.memory);
  simulators::PtyHost host;
  const std::string problem = host.open(link);
  if (!problem.empty()) return "The pseudo-terminal could not be made: " + problem + ".";
  if (!started(host.path())) return "Nobody can be told the path of the pseudo-terminal.";
  host.serve(simulator, stop);
  receiver.memory = simulator.memory();
  return {};
}

}  // namespace session

#include "session/simulator_host.h"
#include "simulators/garmin_simulator.h"
#include "simulators/lowrance_simulator.h"
#include "simulators/pty_host.h"

namespace session {
namespace {

using Started = std::function<bool(const std::string& path)>;
using Stop = std::function<bool()>;

template <typename Simulator, typename Receiver>
std::string serve(Receiver& receiver, base::Clock& clock, const std::string& link, const Started& started,
                  const Stop& stop) {
  Simulator simulator(receiver.data, receiver.options, clock, receiver.memory);
  simulators::PtyHost host;
  const std::string problem = host.open(link);
  if (!problem.empty()) return "The pseudo-terminal could not be made: " + problem + ".";
  if (!started(host.path())) return "Nobody can be told the path of the pseudo-terminal.";
  host.serve(simulator, stop);
  receiver.memory = simulator.memory();
  return {};
}

}  // namespace

std::string serve_simulated(Session& session, store::Family family, const std::string& link, const Started& started,
                            const Stop& stop) {
  if (family == store::Family::Lowrance)
    return serve<simulators::LowranceSimulator>(session.simulated_lowrance, session.clock, link, started, stop);
  return serve<simulators::GarminSimulator>(session.simulated_garmin, session.clock, link, started, stop);
}

}  // namespace session

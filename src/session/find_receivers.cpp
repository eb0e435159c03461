#include "session/find_receivers.h"

#include "base/text.h"
#include "lowrance/unit_info.h"
#include "session/quiet_front_end.h"

namespace session {
namespace {

using base::format_text;

// Listens along with a search of which the user sees nothing but the results.
class FindFrontEnd : public QuietFrontEnd {
 public:
  explicit FindFrontEnd(base::FrontEnd& outer) : outer_(outer) {}

  // The port changes its hint before and after each try, and forgets in between what it has heard.
  void set_status(int, std::string_view) override {
    if (port == nullptr) return;
    heard_anything = heard_anything || port->heard_anything();
    heard_nmea = heard_nmea || port->heard_nmea();
  }
  bool EscPressed() override {
    const bool pressed = outer_.EscPressed();
    stopped = stopped || pressed;
    return pressed;
  }

  const serial::ComPort* port = nullptr;
  bool heard_anything = false, heard_nmea = false;
  bool stopped = false;

 private:
  base::FrontEnd& outer_;
};

// What kept the port from being used.
std::string open_problem_text(const serial::ComPort& port) {
  const std::string group = port.permitted_group();
  const char* const name = group.c_str();
  switch (port.open_problem()) {
    case serial::OpenProblem::NoSuchPort:
      return "no such port";
    case serial::OpenProblem::NotSerial:
      return "not a serial port";
    case serial::OpenProblem::InUse:
      return "in use by another program";
    case serial::OpenProblem::NoPermission:
      if (group.empty()) return "no permission: ask the administrator for access";
      return format_text("no permission: it belongs to the group %s; run sudo usermod -aG %s $USER, then log in again",
                         name, name);
    case serial::OpenProblem::Other:
    case serial::OpenProblem::None:
      break;
  }
  return "cannot be opened or set up";
}

// One port with a session of its own.
class PortSearch {
 public:
  PortSearch(const Session& outer, const std::string& port)
      : front_end_(outer.front_end), session_(outer.clock, front_end_, {}, outer.devices) {
    front_end_.port = &session_.port;
    session_.settings = outer.settings;
    session_.settings.PortName = port;
    finding_.port = port;
  }

  // Nothing when the user stopped it before there was a result.
  std::optional<PortFinding> search(std::optional<store::Family> only) {
    for (const store::Family family : {store::Family::Garmin, store::Family::Lowrance}) {
      if (only && *only != family) continue;
      if (try_family(family)) return finding_;
      if (stopped()) return std::nullopt;
    }
    finding_.text = front_end_.heard_nmea       ? "NMEA text: the receiver's interface is set to NMEA"
                    : front_end_.heard_anything ? "bytes that make no sense"
                                                : "silent";
    return finding_;
  }
  [[nodiscard]] bool stopped() const { return front_end_.stopped; }

 private:
  // Whether there is a result.
  bool try_family(store::Family family) {
    session_.settings.GPS = family;
    session_.apply_settings();
    const bool answered = session_.get_gps_id();
    finding_.text = family == store::Family::Garmin ? garmin_text() : lowrance_text(answered);
    finding_.is_receiver = !finding_.text.empty();
    if (finding_.is_receiver) return true;
    const bool was_asked = session_.flags.ComTimedOut || stopped();
    if (session_.port.lost()) {
      finding_.text = "vanished (adapter unplugged?)";
    } else if (!was_asked || session_.port.open_problem() != serial::OpenProblem::None) {
      finding_.text = open_problem_text(session_.port);
    }
    return !finding_.text.empty();
  }
  // A receiver says who it is even when none of its protocols can be used.
  [[nodiscard]] std::string garmin_text() const {
    const std::string& description = session_.garmin_selection.product().description;
    return description.empty() ? std::string() : "Garmin: " + description;
  }
  [[nodiscard]] std::string lowrance_text(bool answered) const {
    if (!answered) return {};
    const std::string name(lowrance::product_name(session_.lowrance_identification.info().ProductId));
    return format_text("Lowrance/Eagle: %s at %d bits per second", name.c_str(), session_.port.speed());
  }

  FindFrontEnd front_end_;
  Session session_;
  PortFinding finding_;
};

}  // namespace

FindResult find_receivers(const Session& session, std::span<const std::string> ports, std::optional<store::Family> only,
                          const std::function<void(const std::string& port)>& trying,
                          const std::function<void(const PortFinding& finding)>& done) {
  FindResult result;
  for (const std::string& port : ports) {
    trying(port);
    PortSearch search(session, port);
    const std::optional<PortFinding> finding = search.search(only);
    if (finding) done(*finding);
    if (finding && finding->is_receiver) ++result.receivers;
    result.stopped = search.stopped();
    if (result.stopped) break;
  }
  return result;
}

}  // namespace session

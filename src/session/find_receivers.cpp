#include "session/find_receivers.h"

#include "base/quiet_front_end.h"
#include "base/text.h"
#include "lowrance/unit_info.h"

namespace session {
namespace {

using base::format_text;

// The user sees nothing of a search but the results, or all of it, and can stop it.
class FindFrontEnd : public base::QuietFrontEnd {
 public:
  FindFrontEnd(base::FrontEnd& outer, bool shows_all) : outer_(outer), shows_all_(shows_all) {}

  void write_line(int line, std::string_view text) override {
    if (shows_all_) outer_.write_line(line, text);
  }
  void set_status(int field, std::string_view text) override {
    if (shows_all_) outer_.set_status(field, text);
  }
  void message_box(std::string_view title, std::string_view text) override {
    if (shows_all_) outer_.message_box(title, text);
  }
  bool EscPressed() override {
    const bool pressed = outer_.EscPressed();
    stopped = stopped || pressed;
    return pressed;
  }

  bool stopped = false;

 private:
  base::FrontEnd& outer_;
  bool shows_all_;
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
  PortSearch(Session& outer, const std::string& port, bool shows_all)
      : front_end_(outer.front_end, shows_all), session_(outer.clock, front_end_, {}, outer.devices) {
    session_.debug_log.write_into(outer.debug_log);
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
    finding_.text = heard_nmea_       ? "NMEA text: the receiver's interface is set to NMEA"
                    : heard_anything_ ? "bytes that make no sense"
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
    heard_anything_ = heard_anything_ || session_.port.heard_anything();
    heard_nmea_ = heard_nmea_ || session_.port.heard_nmea();
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
  bool heard_anything_ = false, heard_nmea_ = false;
};

}  // namespace

FindResult find_receivers(Session& session, std::span<const std::string> ports, std::optional<store::Family> only,
                          bool shows_all, const std::function<void(const std::string& port)>& trying,
                          const std::function<void(const PortFinding& finding)>& done) {
  FindResult result;
  for (const std::string& port : ports) {
    trying(port);
    PortSearch search(session, port, shows_all);
    const std::optional<PortFinding> finding = search.search(only);
    if (finding) done(*finding);
    if (finding && finding->is_receiver) ++result.receivers;
    result.stopped = search.stopped();
    if (result.stopped) break;
  }
  return result;
}

}  // namespace session

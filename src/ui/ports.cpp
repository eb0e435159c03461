#include "ui/ports.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace ui {
namespace {

struct Simulated {
  std::string_view name, label;
  store::Family family;
};
constexpr std::array kSimulated{
    Simulated{"sim:garmin", "Simulated Garmin receiver", store::Family::Garmin},
    Simulated{"sim:lowrance", "Simulated Lowrance/Eagle unit", store::Family::Lowrance},
};

}  // namespace

std::vector<std::string> port_names() {
  std::vector<std::string> names;
  for (const serial::PortInfo& port : serial::list_serial_ports()) names.push_back(port.name);
  return names;
}

std::string port_label(const serial::PortInfo& port) {
  return port.description.empty() ? port.name : port.name + "  " + port.description;
}

std::vector<PortChoice> port_choices(const session::Session& session) {
  const std::string& chosen = session.port.port_name();
  std::vector<PortChoice> choices;
  for (const serial::PortInfo& port : serial::list_serial_ports()) choices.push_back({port.name, port_label(port)});
  for (const Simulated& row : kSimulated) choices.push_back({std::string(row.name), std::string(row.label)});
  if (std::ranges::find(choices, chosen, &PortChoice::name) == choices.end())
    choices.insert(choices.begin(), {chosen, chosen});
  for (PortChoice& choice : choices) choice.is_chosen = choice.name == chosen;
  return choices;
}

void choose_port(session::Session& session, const std::string& name) {
  store::Settings& settings = session.settings;
  const bool has_number = base::lower_case(name).starts_with("com") &&
                          store::set_key(settings, "COM", std::string_view(name).substr(3)) == store::KeyResult::Set;
  settings.PortName = has_number ? std::string() : name;
  const auto* row = std::ranges::find(kSimulated, name, &Simulated::name);
  if (row != kSimulated.end()) settings.GPS = row->family;
  session.apply_settings();
}

}  // namespace ui

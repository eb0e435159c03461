#include "serial/termios_port_list.h"

#include <algorithm>
#include <tuple>

#include "base/safe_file.h"
#include "base/text.h"

namespace serial {
namespace {

namespace fs = std::filesystem;

// The text of a one-line file; empty when there is none.
std::string line_of(const fs::path& path) {
  std::string text;
  std::string reason;
  if (!base::load_file(path, text, reason)) return {};
  text.resize(std::min(text.find('\n'), text.size()));
  return std::string(base::trim_blanks(text));
}

// Maker and product as the USB device at or above this one names them.
std::string usb_description(fs::path device) {
  for (; device.has_relative_path(); device = device.parent_path()) {
    const std::string product = line_of(device / "product");
    if (product.empty()) continue;
    const std::string maker = line_of(device / "manufacturer");
    return maker.empty() || product.starts_with(maker) ? product : maker + " " + product;
  }
  return {};
}

// Most /dev/ttyS* are names kept for hardware that is not there.
bool is_placeholder(const fs::path& entry) {
  return entry.filename().string().starts_with("ttyS") && line_of(entry / "type") == "0";
}

// ttyUSB2 stands before ttyUSB10.
auto sort_key(const PortInfo& port) {
  const std::size_t digits = port.name.find_last_not_of("0123456789") + 1;
  return std::tuple(port.name.substr(0, digits), port.name.size(), port.name);
}

}  // namespace

std::vector<PortInfo> ports_in(const fs::path& tty_class) {
  std::vector<PortInfo> ports;
  std::error_code error;
  for (fs::directory_iterator entry(tty_class, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code no_device;
    const fs::path device = fs::canonical(entry->path() / "device", no_device);
    if (no_device || is_placeholder(entry->path())) continue;
    ports.push_back({"/dev/" + entry->path().filename().string(), usb_description(device)});
  }
  std::sort(ports.begin(), ports.end(),
            [](const PortInfo& left, const PortInfo& right) { return sort_key(left) < sort_key(right); });
  return ports;
}

std::vector<PortInfo> list_serial_ports() { return ports_in("/sys/class/tty"); }

}  // namespace serial

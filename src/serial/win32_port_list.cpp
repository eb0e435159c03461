// clang-format off
#include <windows.h>
// Needs what the one before declares: the two ids of devices become this file's own.
#include <initguid.h>
#include <devguid.h>
#include <setupapi.h>
// clang-format on

#include <array>
#include <map>
#include <memory>
#include <type_traits>

#include "base/win32_text.h"
#include "serial/port_list.h"

namespace serial {
namespace {

// COM2 stands before COM10.
struct ByNumber {
  bool operator()(const std::string& left, const std::string& right) const {
    return left.size() != right.size() ? left.size() < right.size() : left < right;
  }
};
using Descriptions = std::map<std::string, std::string, ByNumber>;  // by port name

struct CloseKey {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

struct CloseDevices {
  void operator()(HDEVINFO devices) const { SetupDiDestroyDeviceInfoList(devices); }
};
using Devices = std::unique_ptr<std::remove_pointer_t<HDEVINFO>, CloseDevices>;

using Text = std::array<wchar_t, 256>;  // ample: names of ports and devices

// Of a device, by the name that its registry key has for it; empty when it is no port.
std::string port_name(HDEVINFO devices, SP_DEVINFO_DATA& device) {
  HKEY opened = SetupDiOpenDevRegKey(devices, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
  if (opened == INVALID_HANDLE_VALUE) return {};
  const Key key(opened);
  Text name{};
  DWORD size = sizeof name;
  const bool found =
      RegGetValueW(key.get(), nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, name.data(), &size) == ERROR_SUCCESS;
  return found ? base::utf8_from_wide(name.data()) : std::string();
}

// As the Device Manager shows it.
std::string friendly_name(HDEVINFO devices, SP_DEVINFO_DATA& device) {
  Text name{};
  const bool found =
      SetupDiGetDeviceRegistryPropertyW(devices, &device, SPDRP_FRIENDLYNAME, nullptr,
                                        reinterpret_cast<BYTE*>(name.data()), sizeof name - sizeof name[0], nullptr);
  return found ? base::utf8_from_wide(name.data()) : std::string();
}

// Ports that the Device Manager has, but for those of printers.
void add_devices(Descriptions& ports) {
  HDEVINFO found = SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT);
  if (found == INVALID_HANDLE_VALUE) return;
  const Devices devices(found);
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof device;
  for (DWORD index = 0; SetupDiEnumDeviceInfo(devices.get(), index, &device) != 0; ++index) {
    std::string name = port_name(devices.get(), device);
    if (!name.empty() && !name.starts_with("LPT")) ports.emplace(std::move(name), friendly_name(devices.get(), device));
  }
}

// Ports that drivers have announced, virtual ones and modems too: value names are the drivers' devices, values the
// port names.
void add_announced(Descriptions& ports) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, LR"(HARDWARE\DEVICEMAP\SERIALCOMM)", 0, KEY_READ, &opened) != ERROR_SUCCESS)
    return;
  const Key key(opened);
  for (DWORD index = 0;; ++index) {
    Text device{}, name{};
    auto length = static_cast<DWORD>(device.size());
    DWORD size = sizeof name - sizeof name[0];  // a text may come without its NUL
    DWORD type = 0;
    const LSTATUS result = RegEnumValueW(key.get(), index, device.data(), &length, nullptr, &type,
                                         reinterpret_cast<BYTE*>(name.data()), &size);
    if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) return;
    if (result == ERROR_SUCCESS && type == REG_SZ)
      ports.emplace(base::utf8_from_wide(name.data()), base::utf8_from_wide(device.data()));
  }
}

}  // namespace

std::vector<PortInfo> list_serial_ports() {
  Descriptions descriptions;
  add_devices(descriptions);
  add_announced(descriptions);
  std::vector<PortInfo> ports;
  for (const auto& [name, description] : descriptions) ports.push_back({name, description});
  return ports;
}

}  // namespace serial

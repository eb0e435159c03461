#include <windows.h>

#include <algorithm>
#include <array>

#include "serial/port_list.h"

namespace serial {

// The ports that drivers have announced: value names are the drivers' devices, values the port names.
std::vector<PortInfo> list_serial_ports() {
  std::vector<PortInfo> ports;
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, R"(HARDWARE\DEVICEMAP\SERIALCOMM)", 0, KEY_READ, &key) != ERROR_SUCCESS)
    return ports;
  for (DWORD index = 0;; ++index) {
    std::array<char, 256> device{};
    std::array<BYTE, 256> name{};
    auto device_size = static_cast<DWORD>(device.size());
    auto name_size = static_cast<DWORD>(name.size() - 1);  // a text may come without its NUL
    DWORD type = 0;
    const LSTATUS result =
        RegEnumValueA(key, index, device.data(), &device_size, nullptr, &type, name.data(), &name_size);
    if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) break;
    if (result == ERROR_SUCCESS && type == REG_SZ)
      ports.push_back({std::string(reinterpret_cast<const char*>(name.data())), std::string(device.data())});
  }
  RegCloseKey(key);
  // COM2 stands before COM10.
  std::sort(ports.begin(), ports.end(), [](const PortInfo& left, const PortInfo& right) {
    return left.name.size() != right.name.size() ? left.name.size() < right.name.size() : left.name < right.name;
  });
  return ports;
}

}  // namespace serial

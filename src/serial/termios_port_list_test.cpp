#include "serial/termios_port_list.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace serial {
namespace {

namespace fs = std::filesystem;

// A small /sys: class entries are links into the tree of devices, as the kernel makes them.
class FakeSys : public ::testing::Test {
 protected:
  FakeSys() { fs::create_directories(tty_class_); }
  ~FakeSys() override { fs::remove_all(root_); }

  void write(const fs::path& path, const std::string& text) {
    fs::create_directories((root_ / path).parent_path());
    std::ofstream(root_ / path) << text << "\n";
  }
  // A port whose device is that folder of the tree; none for a virtual terminal.
  void add(const std::string& name, const fs::path& device) {
    const fs::path entry = root_ / "devices/tty" / name;
    fs::create_directories(entry);
    fs::create_directory_symlink(entry, tty_class_ / name);
    if (device.empty()) return;
    fs::create_directories(root_ / device);
    fs::create_directory_symlink(root_ / device, entry / "device");
  }

  fs::path root_ = fs::path(::testing::TempDir()) / "fake_sys";
  fs::path tty_class_ = root_ / "class/tty";
};

TEST_F(FakeSys, AnAdapterIsNamedByTheUsbDeviceAboveItsPort) {
  add("ttyUSB0", "devices/usb1/1-2/1-2:1.0/ttyUSB0");
  write("devices/usb1/1-2/manufacturer", "Maker Inc.");
  write("devices/usb1/1-2/product", "Serial Cable");
  write("devices/usb1/product", "Host Controller");
  const std::vector<PortInfo> ports = ports_in(tty_class_);
  ASSERT_EQ(ports.size(), 1u);
  EXPECT_EQ(ports[0].name, "/dev/ttyUSB0");
  EXPECT_EQ(ports[0].description, "Maker Inc. Serial Cable");
}

TEST_F(FakeSys, VirtualTerminalsAndNamesWithoutHardwareAreNoPorts) {
  add("tty0", "");
  add("ttyS0", "devices/platform/serial8250");
  write("devices/tty/ttyS0/type", "4");
  add("ttyS1", "devices/platform/serial8250");
  write("devices/tty/ttyS1/type", "0");
  const std::vector<PortInfo> ports = ports_in(tty_class_);
  ASSERT_EQ(ports.size(), 1u);
  EXPECT_EQ(ports[0].name, "/dev/ttyS0");
  EXPECT_EQ(ports[0].description, "");
}

TEST_F(FakeSys, PortsAreOrderedByNameAndNumber) {
  for (const char* name : {"ttyUSB10", "ttyACM1", "ttyUSB2", "ttyUSB0"}) add(name, "devices/any");
  std::string names;
  for (const PortInfo& port : ports_in(tty_class_)) names += port.name + " ";
  EXPECT_EQ(names, "/dev/ttyACM1 /dev/ttyUSB0 /dev/ttyUSB2 /dev/ttyUSB10 ");
}

TEST_F(FakeSys, AMachineWithoutSuchAFolderHasNoPorts) { EXPECT_TRUE(ports_in(root_ / "nothing").empty()); }

}  // namespace
}  // namespace serial

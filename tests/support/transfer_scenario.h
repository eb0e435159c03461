// A session with a receiver behind its port, and what a user does with them, in verbs. Time is that of a
// clock that stands still until somebody waits.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/safe_file.h"
#include "session/session.h"
#include "simulators/built_in_data.h"
#include "simulators/garmin_sim_device.h"
#include "tests/support/described_store.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"
#include "tests/support/temporary_folder.h"

namespace support {

// A simulated receiver that remembers what it was sent.
class ObservedGarmin : public simulators::GarminSimDevice {
 public:
  using GarminSimDevice::GarminSimDevice;
  int open(const std::string& name) override {
    const int error = GarminSimDevice::open(name);
    is_open = error == 0;
    return error;
  }
  int close() override {
    is_open = false;
    return GarminSimDevice::close();
  }
  int write(std::span<const std::uint8_t> bytes) override {
    sent.emplace_back(bytes.begin(), bytes.end());
    return GarminSimDevice::write(bytes);
  }
  std::optional<std::uint8_t> read_byte() override {
    const std::optional<std::uint8_t> byte = GarminSimDevice::read_byte();
    if (byte)
      if (const auto frame = finder_.feed(*byte); frame && frame->good) packets.push_back(frame->packet);
    return byte;
  }

  bool is_open = false;
  std::vector<base::Bytes> sent;
  std::vector<simulators::Packet> packets;  // that the program has received

 private:
  simulators::PacketFinder finder_;
};

class TransferScenario : public testing::Test {
 protected:
  using Kind = garmin::Kind;

  // A new session, with empty stores, at a port that leads to this device.
  template <typename Device>
  Device& attach(std::unique_ptr<Device> device) {
    Device& attached = *device;
    std::shared_ptr<std::unique_ptr<serial::SerialDevice>> held =
        std::make_shared<std::unique_ptr<serial::SerialDevice>>(std::move(device));
    start([held](const std::string&) { return std::move(*held); });
    return attached;
  }
  ObservedGarmin& simulate(const simulators::SimulatedData& data, const simulators::GarminOptions& options = {}) {
    return attach(std::make_unique<ObservedGarmin>(data, options, clock));
  }
  // A new session without a device of the test's own.
  void start(serial::ComPort::DeviceFactory devices = {}) {
    front_end = {};
    session = std::make_unique<session::Session>(clock, front_end, session::Surroundings{folder_.path(), {}, "pelorix"},
                                                 std::move(devices));
    session->settings.GPS = family;
    session->settings.PortName = family == store::Family::Garmin ? "sim:garmin" : "sim:lowrance";
    session->settings.HandleReadDups = duplicates;
    session->settings.ForceExactDupeRemoval = removes_exact_duplicates ? 1 : 0;
    session->apply_settings();
  }

  bool download(Kind kind) {
    return timed([&] { return session->garmin_downloads.download(kind); });
  }
  // Uploads all that is there, by the command's id.
  bool upload(int command_id) {
    for (const char kind : {'W', 'R', 'T', 'P'}) items().select_all(kind, true);
    return timed([&] { return session->garmin_uploads.upload(command_id); });
  }

  [[nodiscard]] std::filesystem::path file(const std::string& name) const { return folder_.path() / name; }
  bool save(const std::string& name) { return session->files.save(file(name), session->text_options()); }
  bool reread(const std::string& name) {
    session->items.clear_all();
    return session->files.do_input(file(name));
  }
  [[nodiscard]] static std::string contents_of(const std::filesystem::path& path) {
    std::string contents, reason;
    EXPECT_TRUE(base::load_file(path, contents, reason)) << path << ": " << reason;
    return contents;
  }

  [[nodiscard]] store::ItemStore& items() { return session->items; }
  [[nodiscard]] std::vector<std::string> whole_store(Detail detail = Detail::Everything) {
    return described(all_records(items()), detail);
  }
  [[nodiscard]] bool was_said(int line, std::string_view part) const {
    return std::ranges::any_of(front_end.line_writes, [&](const auto& write) {
      return write.first == line && write.second.find(part) != std::string::npos;
    });
  }

  SteppingClock clock;
  RecordingFrontEnd front_end;
  std::unique_ptr<session::Session> session;
  store::Duplicates duplicates = store::Duplicates::Merge;  // of the next session
  bool removes_exact_duplicates = false;                    // likewise
  store::Family family = store::Family::Garmin;             // likewise
  double elapsed = 0;                                       // seconds that the latest transfer took

  template <typename Transfer>
  bool timed(Transfer transfer) {
    const auto begin = clock.now;
    const bool done = transfer();
    elapsed = std::chrono::duration<double>(clock.now - begin).count();
    return done;
  }

 private:
  TemporaryFolder folder_;
};

// The built-in data, cut down so that every packet of a transfer can have its turn.
inline simulators::SimulatedData short_weekend() {
  simulators::SimulatedData data = simulators::believable_weekend();
  data.waypoints.resize(4);
  for (simulators::SimRoute& route : data.routes) route.points.resize(3);
  for (simulators::SimTrack& track : data.tracks) track.points.resize(5);
  data.proximity.resize(2);
  return data;
}

}  // namespace support

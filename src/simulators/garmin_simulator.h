// A Garmin receiver as seen from the wire: identifies itself, sends what it holds, takes what is sent to it and answers
// the single commands, after the maker's published serial interface. Framing, record formats and product table are its
// own, so that a mistake in the program's cannot cancel itself out here. Packets that it has no use for are
// acknowledged and ignored, as early receivers do; those of an upload that it does not take are answered with a NAK.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "simulators/garmin_framing.h"
#include "simulators/garmin_memory.h"
#include "simulators/garmin_options.h"
#include "simulators/garmin_uploads.h"
#include "simulators/simulated_data.h"
#include "simulators/wired_receiver.h"

namespace simulators {

class GarminSimulator : public WiredReceiver {
 public:
  // The clock must outlive the receiver. Options with a problem (garmin_options_problem) are taken as far as they go.
  // It holds the data or, where it is given, the memory of another receiver with the same options.
  GarminSimulator(const SimulatedData& data, const GarminOptions& options, const base::Clock& clock,
                  std::optional<GarminMemory> memory = std::nullopt);

  // What it holds now, uploads included.
  [[nodiscard]] const GarminMemory& memory() const { return memory_; }

 private:
  struct Function;  // what a command runs that sends no records
  static std::span<const Function> functions();
  // The latest packet of those that the receiver takes in.
  struct Reception {
    Packet packet;
    bool taken = false;
    bool may_come_again = false;  // it was refused, or its acknowledgement may not have arrived
  };

  void on_byte(std::uint8_t byte, Time at) override;
  // The end of its patience with the host, or position-velocity-time data.
  [[nodiscard]] Time own_event_due() const override;
  void on_own_event(Time at) override;
  void on_packet(const Packet& packet, Time at);
  void on_acknowledged(const Packet& ack, Time at);
  void on_nak(Time at);
  void on_command(const Packet& packet, Time at);
  bool obey(std::uint16_t number, std::uint16_t CommandNumbers::*numbered, Time at);

  // Whether the packet is for the memory, the clock or the position rather than a request.
  [[nodiscard]] bool is_taken_in(std::uint8_t id, Time at);
  void on_reception(const Packet& packet, Time at);
  void answer_again(Time at);
  bool take_in(const Packet& packet);
  bool set_clock(const Packet& packet);
  bool set_position(const Packet& packet);
  // Whether an upload is under way; one without a sign of life for long is not.
  [[nodiscard]] bool upload_is_open(Time at);
  [[nodiscard]] std::int64_t own_unix_seconds() const { return clock().unix_seconds() + clock_error_; }

  // Starts to send these packets, each after the acknowledgement of the one before; what was under way is dropped.
  void send_all(std::vector<Packet> packets, Time at);
  void send_next(Time at);
  void repeat(Time at);
  void wait_for_ack(Time at);
  void stop_sending();
  // Sends a packet for the first time, with the faults that are due at it.
  void send_new(const Packet& packet, Time at);
  void answer(std::uint8_t id, std::uint8_t answered_id, Time at);
  void put_noise(Time at);

  void send_product_data(Time at);
  void send_records(const GarminMemory::Records& records, std::uint16_t command, Time at);
  void abort_transfer(Time at);
  void send_date_time(Time at);
  void send_position(Time at);
  void send_voltages(Time at);
  void send_screen(Time at);
  void start_pvt(Time at);
  void stop_pvt(Time at);
  void send_pvt(Time at);
  void power_off(Time at);

  GarminOptions options_;
  CapabilityArray capabilities_;
  LinkIds ids_;
  GarminMemory memory_;
  SimWaypoint here_;              // where the receiver believes to be
  std::int64_t clock_error_ = 0;  // seconds that it is fast, after it was set

  PacketFinder finder_;

  std::vector<Packet> outgoing_;
  std::size_t next_outgoing_ = 0;     // the packet that waits for its acknowledgement
  int repetitions_ = 0;               // of that packet, for want of an acknowledgement
  std::optional<Time> ack_deadline_;  // set while a packet waits
  std::uint64_t outgoing_end_ = 0;    // the output byte with which that packet ends
  std::optional<Time> pvt_due_;       // set while position-velocity-time data is on

  GarminUpload upload_;
  Time upload_heard_{0};                // when its latest packet came
  std::optional<Reception> reception_;  // until a request or a command comes

  bool loses_next_ack_ = false;
};

}  // namespace simulators

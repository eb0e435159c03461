// Downloads from Garmin receivers: one call moves one kind of item, or all kinds, from the receiver into the stores.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "garmin/link.h"
#include "garmin/protocol_selection.h"
#include "garmin/record_format.h"
#include "store/item_store.h"

namespace garmin {

// The numbers are the transfer kind codes of the commands.
enum class Kind { All = 1, Tracks = 2, ProximityWaypoints = 3, Routes = 4, Waypoints = 5 };

class GarminTransfers {
 public:
  // All must outlive the transfers, which take the record packets of the link.
  GarminTransfers(GarminLink& link, serial::ComPort& port, ProtocolSelection& selection, store::ItemStore& items,
                  const store::Settings& settings, base::FrontEnd& front_end, serial::DeviceFlags& flags);

  // Opens the port, downloads the kind and closes the port. True when all of it came; on a time-out or after
  // ESC, which are told to the user, what has arrived stays in the stores.
  [[nodiscard]] bool download(Kind kind);

 private:
  // Incomplete: less came than was announced, but the receiver is still there for the next kind.
  enum class Outcome { Done, NotSupported, Incomplete, Failed };
  struct Step;  // one kind's words and ways
  static std::span<const Step> steps();

  void take_records(std::span<const std::uint8_t> data);
  void take_waypoint(std::span<const std::uint8_t> data);
  void take_proximity(std::span<const std::uint8_t> data);
  void take_track_header(std::span<const std::uint8_t> data);
  void take_track_point(std::span<const std::uint8_t> data);
  void take_route_header(std::span<const std::uint8_t> data);
  void take_route_point(std::span<const std::uint8_t> data);
  void take_route_link(std::span<const std::uint8_t> data);
  void take_completion(std::span<const std::uint8_t> data);
  // A record of a format with a row, decoded into CurrentItem; false when it was refused, which is told.
  bool decode_item(std::span<const RecordFormat> formats, std::uint16_t number, std::string_view packet,
                   std::span<const std::uint8_t> data);
  void refused(const std::string& why);

  Outcome run_step(const Step& step);
  Outcome getGPSrecords(const Step& step);
  bool receive_records(const Step& step);
  void show_progress(const Step& step, int index);
  // The next packet that belongs to the running download; false when it has to stop.
  bool receive();
  bool is_repeat(PacketKind kind, std::span<const std::uint8_t> data);
  void expect_next(const Step& step);
  void forget_received();
  void write_progress(int line, std::string_view text);
  void complete(std::string_view text);
  bool stop_after(Outcome outcome);
  void close_port();

  GarminLink& link_;
  serial::ComPort& port_;
  ProtocolSelection& selection_;
  store::ItemStore& items_;
  const store::Settings& settings_;
  base::FrontEnd& front_end_;
  serial::DeviceFlags& flags_;

  // Of the running download.
  const Step* running_ = nullptr;
  std::optional<store::ItemStore::Contents> before_;  // what the stores held when it began
  int expected_ = -1;                                 // records; -1 until the receiver has said
  int received_ = 0;
  int refused_ = 0;
  int route_number_ = -1;
  bool route_open_ = false;  // points belong to the latest header
  int restarts_ = 0;
  bool completed_ = false;                  // the closing packet of this kind came
  bool closed_ = false;                     // a closing packet came
  bool began_anew_ = false;                 // the receiver started over
  base::Bytes previous_packet_;             // record or closing packet, with its kind in front
  std::map<int, std::string> completions_;  // by output line
  int next_line_ = 3;
};

}  // namespace garmin

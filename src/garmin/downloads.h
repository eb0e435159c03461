// Downloads from Garmin receivers: one call moves one kind of item, or all kinds, from the receiver into the stores.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/byte_cursor.h"
#include "base/clock.h"
#include "garmin/connection.h"
#include "garmin/received_records.h"
#include "garmin/transfer_kind.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace garmin {

class GarminDownloads {
 public:
  // All must outlive the downloads, which take the record packets of the link.
  GarminDownloads(const Connection& connection, const base::Clock& clock, store::ItemStore& items,
                  const store::Settings& settings);
  GarminDownloads(const GarminDownloads&) = delete;
  GarminDownloads& operator=(const GarminDownloads&) = delete;

  // Opens the port, downloads the kind and closes the port. True when all of it came; on a time-out or after
  // ESC, which are told to the user, what has arrived stays in the stores.
  [[nodiscard]] bool download(Kind kind);

 private:
  // Incomplete: less came than was announced, but the receiver is still there for the next kind.
  enum class Outcome { Done, NotSupported, Incomplete, Failed };
  struct Step;  // one kind's words and ways
  static std::span<const Step> steps();

  void take_records(std::span<const std::uint8_t> data);
  void take_completion(std::span<const std::uint8_t> data);

  // Why the kind cannot be asked for; empty when it can.
  [[nodiscard]] std::string why_not(const Step& step) const;
  Outcome run_step(const Step& step);
  // Asks for the kind and waits for the count. Where there is one, nothing is returned and the records come.
  std::optional<Outcome> start(const Step& step);
  Outcome getGPSrecords(const Step& step);
  Outcome getAlmanac(const Step& step);
  bool receive_records(const Step& step);
  bool receive_satellites(const Step& step);
  [[nodiscard]] bool is_damaged() const { return connection_.link.damaged_packets() != damaged_before_; }
  void keep_what_is_certain();
  void show_progress(const Step& step, int index);
  // The next packet that belongs to the running download; false when it has to stop.
  bool receive();
  bool is_repeat(PacketKind kind, std::span<const std::uint8_t> data);
  void expect_next(const Step& step);
  void forget_received();
  void write_progress(int line, std::string_view text);
  void complete(std::string_view text);
  bool stop_after(Outcome outcome);
  void abort_transfer();
  void look_for_rollover();
  [[nodiscard]] base::FrontEnd& front_end() const { return connection_.front_end; }

  const Connection connection_;
  const base::Clock& clock_;
  store::ItemStore& items_;
  const store::Settings& settings_;
  ReceivedRecords records_;

  // Of the running download.
  const Step* running_ = nullptr;
  std::optional<store::ItemStore::Contents> before_;  // what the stores held when it began
  int expected_ = -1;                                 // records; -1 until the receiver has said
  int received_ = 0;
  int repeats_ = 0;                   // records equal to the one before, taken for repetitions
  bool takes_equal_records_ = false;  // they are none
  int restarts_ = 0;
  int damaged_before_ = 0;                  // packets of the link, when the count came
  bool completed_ = false;                  // the closing packet of this kind came
  bool closed_ = false;                     // a closing packet came
  bool began_anew_ = false;                 // the receiver started over
  bool lost_count_ = false;                 // which satellite a record is of is no longer known
  bool runs_ahead_ = false;                 // the receiver sends without waiting for us
  base::Bytes previous_packet_;             // record or closing packet, with its kind in front
  std::map<int, std::string> completions_;  // by output line
  int next_line_ = 3;
};

}  // namespace garmin

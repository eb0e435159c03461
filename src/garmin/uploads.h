// Uploads to Garmin receivers: one call moves the selected items of one kind, or of all kinds, from the stores into
// the receiver.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "garmin/connection.h"
#include "garmin/packet_sender.h"
#include "garmin/single_commands.h"
#include "garmin/transfer_kind.h"
#include "garmin/upload_records.h"
#include "store/item_store.h"

namespace garmin {

// What the menu command of this id uploads; nothing for an id that is no upload of Garmin receivers.
[[nodiscard]] std::optional<Kind> upload_kind(int command_id);

class GarminUploads {
 public:
  // All must outlive the uploads.
  GarminUploads(const Connection& connection, GarminCommands& commands, const store::ItemStore& items,
                const store::Settings& settings)
      : connection_(connection), sender_(connection), commands_(commands), items_(items), settings_(settings) {}

  // Opens the port, sends what is selected and closes the port. A record that the receiver refuses is sent again, up
  // to three times, then counted and named; the others go on. True when the receiver has acknowledged everything.
  [[nodiscard]] bool upload(int command_id);

 private:
  // LeftOut: there is nothing of the kind, or the receiver knows no such kind, which among all kinds is no failure.
  enum class Outcome { Done, Incomplete, LeftOut, Stopped };
  using Answer = PacketSender::Answer;
  struct Step;  // one kind's words and ways
  static std::span<const Step> steps();
  struct Receipt {
    int sent = 0, acknowledged = 0;
    std::vector<std::string> refused;
  };

  [[nodiscard]] std::string why_not(const Step& step, const UploadRecords& records) const;
  bool limit(const Step& step, UploadRecordList& records);
  Outcome upload_step(const Step& step, UploadRecords& records, bool asked_for);
  Outcome run_step(const Step& step, const UploadRecordList& records);
  Answer transfer(const Step& step, const UploadRecordList& records, Receipt& receipt);
  Answer bgnxfr(const Step& step, std::uint16_t count);
  [[nodiscard]] bool send_records(const UploadRecordList& records, Receipt& receipt);
  void tell_stop(const Step& step);
  void tell_at_the_end();
  void give_receipt(const Receipt& receipt);
  void complete(std::string_view text);
  [[nodiscard]] base::FrontEnd& front_end() const { return connection_.front_end; }

  Connection connection_;
  PacketSender sender_;
  GarminCommands& commands_;
  const store::ItemStore& items_;
  const store::Settings& settings_;

  // Of the running upload.
  int next_line_ = 3;                  // for the next completion
  std::vector<std::string> problems_;  // said at the end, when progress needs the line no longer
  std::set<std::string> names_changed_;
};

}  // namespace garmin

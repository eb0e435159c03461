// Uploads to Garmin receivers: one call moves the selected items of one kind, or of all kinds, from the stores into
// the receiver.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "garmin/connection.h"
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
      : connection_(connection), commands_(commands), items_(items), settings_(settings) {}

  // Opens the port, sends what is selected and closes the port. A record that the receiver refuses is sent again, up
  // to three times, then counted and named; the others go on. True when the receiver has acknowledged everything.
  [[nodiscard]] bool upload(int command_id);

 private:
  enum class Outcome { Done, Incomplete, Stopped };
  enum class Answer { Accepted, Refused, Stopped };
  struct Step;  // one kind's words and ways
  static std::span<const Step> steps();
  struct Receipt {
    int sent = 0, acknowledged = 0;
    std::vector<std::string> refused;
  };

  [[nodiscard]] std::string why_not(const Step& step, const UploadRecords& records) const;
  void limit(const Step& step, UploadRecordList& records);
  Outcome run_step(const Step& step, const UploadRecordList& records);
  Answer transfer(const Step& step, const UploadRecordList& records, Receipt& receipt);
  Answer bgnxfr(const Step& step, std::uint16_t count);
  [[nodiscard]] bool send_records(const UploadRecordList& records, Receipt& receipt);
  // Sends the packet, and again up to three times when the receiver refuses it.
  Answer send(std::uint8_t id, std::span<const std::uint8_t> data, std::string_view label);
  Answer wait_for_answer();
  void tell_stop(const Step& step);
  void give_receipt(const Receipt& receipt);
  void complete(std::string_view text);
  [[nodiscard]] base::FrontEnd& front_end() const { return connection_.front_end; }

  Connection connection_;
  GarminCommands& commands_;
  const store::ItemStore& items_;
  const store::Settings& settings_;
  int next_line_ = 3;  // for the next completion
};

}  // namespace garmin

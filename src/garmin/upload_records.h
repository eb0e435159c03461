// What goes to a receiver in an upload: the selected items of the stores as the records of its formats, in the order in
// which they are sent.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "garmin/packet_ids.h"
#include "garmin/protocol_selection.h"
#include "garmin/receiver_names.h"
#include "garmin/record_format.h"
#include "garmin/transfer_kind.h"
#include "store/item_store.h"

namespace garmin {

struct UploadRecord {
  // A refused header takes along the records up to the next header, which would else become part of another route or
  // log; a follower goes with the record before it.
  enum class Role { Single, Header, Follower };

  PacketKind packet;
  std::optional<base::Bytes> data;  // none: the item cannot be put in this format
  std::string label;                // where it stands in the store, such as W00012
  std::string name;                 // for the list of the refused
  Role role = Role::Single;
  bool is_renamed = false;  // the receiver's name is not ours to the letter
};
using UploadRecordList = std::vector<UploadRecord>;

// Each list is empty when nothing of the kind is selected or the protocols have no format for it.
class UploadRecords {
 public:
  // All must outlive the object, which serves one upload: an item has the same name in all its lists.
  UploadRecords(const store::ItemStore& items, const store::Settings& settings, const Protocols& protocols)
      : items_(items), settings_(settings), protocols_(protocols) {}

  [[nodiscard]] UploadRecordList almanac() const;  // all satellites, those without data too
  [[nodiscard]] UploadRecordList proximity();
  [[nodiscard]] UploadRecordList waypoints();
  [[nodiscard]] UploadRecordList routes();
  [[nodiscard]] UploadRecordList tracks();

  // Why there are no records of the kind for the protocols' formats; empty when there are.
  [[nodiscard]] std::string problem(Kind kind) const;

 private:
  UploadRecordList waypoint_records(PacketKind packet, std::span<const RecordFormat> formats, std::uint16_t number,
                                    char letter, int count, store::ItemRecord (store::ItemStore::*item)(int) const);
  // The item under a name that the receiver can have, as a record of the format; `place` is that in the list.
  UploadRecord waypoint_record(PacketKind packet, std::span<const RecordFormat> formats, std::uint16_t number,
                               store::ItemRecord item, std::size_t place, std::string label);
  void add_route(const store::Route& route, ReceiverNames& names, UploadRecordList& records);
  [[nodiscard]] UploadRecord link_record(const store::ItemRecord& point, const std::string& label) const;
  // `place` is that of the log in the list, `index` that of the point in the store at which it begins there.
  UploadRecord log_header(const store::ItemRecord& log, int place, int index, ReceiverNames& names);
  ReceiverNames& waypoint_names(const NameRule& rule);
  void for_all_waypoints(const std::function<void(const store::ItemRecord& item)>& take) const;

  const store::ItemStore& items_;
  const store::Settings& settings_;
  const Protocols& protocols_;
  std::map<NameRule, ReceiverNames> waypoint_names_;
};

}  // namespace garmin

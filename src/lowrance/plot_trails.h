// Plot trails between a unit and the store, in both forms: by commands that carry deltas, and as the image that old
// units (ProtocolVersion 0) keep in their memory.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/remarks.h"
#include "lowrance/connection.h"
#include "lowrance/records.h"
#include "lowrance/trail_image.h"
#include "store/item_store.h"

namespace lowrance {

// Trails are numbered from 1 here.
class TrailDownload {
 public:
  // `time` is that of every point, since units keep none. All else must outlive the download.
  TrailDownload(const Connection& connection, store::ItemStore& items, store::GarminTime time, base::Remarks& remarks)
      : connection_(connection), items_(items), time_(time), remarks_(remarks) {}

  // True when the whole trail came, or there is none, which is said. A trail that broke off is kept as far as it
  // came; what is missing is added to the remarks.
  [[nodiscard]] bool download(int trail);

 private:
  // What came of a trail.
  struct Reception {
    std::vector<geodesy::Position> points;
    std::size_t announced = 0;  // points
    [[nodiscard]] bool is_complete() const { return points.size() == announced; }
    bool append(const std::optional<geodesy::Position>& place);  // false: there is none
  };

  bool download_by_commands(int trail);
  std::optional<TrailOrigin> ask_origin(int trail);
  Reception receive_deltas(const TrailOrigin& origin);
  std::optional<DeltaBlock> ask_deltas(std::uint8_t trail, int count);
  bool download_image(int trail);
  Reception receive_image(const GridPoint& origin, const std::array<MemoryRun, 2>& runs);
  bool store_trail(int trail, const Reception& reception);
  bool remark(const std::string& text);  // false, for whoever returns it

  Connection connection_;
  store::ItemStore& items_;
  store::GarminTime time_;
  base::Remarks& remarks_;
};

class TrailUpload {
 public:
  // Remarks and connection must outlive the upload.
  TrailUpload(const Connection& connection, const store::ItemStore& items, base::Remarks& remarks);

  // Sends track `track` of those that are selected, counted from 1, as trail `trail`. True when all of it was taken;
  // what is missing is added to the remarks.
  [[nodiscard]] bool upload(int trail, int track);
  // Tracks of which something is selected.
  [[nodiscard]] int selected_tracks() const { return static_cast<int>(tracks_.size()); }

 private:
  std::vector<Delta> steps_along(int trail, std::span<const GridPoint> points, std::size_t room);
  bool send_by_commands(int trail, std::span<const GridPoint> points);
  bool send_deltas(const TrailOrigin& origin, std::span<const Delta> deltas, bool ends_in_doubt);
  bool is_kept_whole(const TrailOrigin& sent);
  bool send_image(int trail, std::span<const GridPoint> points);
  bool write_image(const TrailArea& area, const GridPoint& origin, std::span<const Delta> deltas);
  bool write_blocks(std::uint32_t address, std::span<const std::uint8_t> bytes,
                    const std::array<std::string_view, 2>& labels,
                    const std::function<std::string(std::size_t)>& progress);
  bool write_memory(std::uint32_t address, std::span<const std::uint8_t> bytes, std::string_view label);
  bool send(Command command, std::span<const std::uint8_t> data, std::string_view label);
  bool broken_off(int trail);            // both false,
  bool remark(const std::string& text);  // for whoever returns it

  Connection connection_;
  base::Remarks& remarks_;
  std::vector<std::vector<GridPoint>> tracks_;  // the points that are sent of each

  // Of the running upload.
  int unanswered_ = 0;        // messages
  bool is_doubtful_ = false;  // the unit may have taken deltas twice
};

}  // namespace lowrance

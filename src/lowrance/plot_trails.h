// Plot trails between a unit and the store, in both forms: by commands that carry deltas, and as the image that old
// units (ProtocolVersion 0) keep in their memory.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/remarks.h"
#include "lowrance/connection.h"
#include "lowrance/records.h"
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
  Connection connection_;
  store::ItemStore& items_;
  store::GarminTime time_;
  base::Remarks& remarks_;
};

class TrailUpload {
 public:
  // All must outlive the upload.
  TrailUpload(const Connection& connection, const store::ItemStore& items, base::Remarks& remarks)
      : connection_(connection), items_(items), remarks_(remarks) {}

  // Sends track `track` of those that are selected, counted from 1, as trail `trail`. True when all of it was taken;
  // what is missing is added to the remarks.
  [[nodiscard]] bool upload(int trail, int track);
  // Tracks of which something is selected.
  [[nodiscard]] int selected_tracks() const;

 private:
  Connection connection_;
  const store::ItemStore& items_;
  base::Remarks& remarks_;
};

}  // namespace lowrance

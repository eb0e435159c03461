#include "lowrance/plot_trails.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/text.h"
#include "lowrance/memory.h"

namespace lowrance {
namespace {

using base::format_text;

constexpr std::string_view kDownloadAbort = "Operator Abort in Plot Trail download";
constexpr std::string_view kUploadAbort = "Operator Abort in Plot Trail upload";
constexpr int kMostRepetitions = 2;                                                // of a trail that did not come whole
constexpr std::size_t kMostAnnounced = std::numeric_limits<std::uint16_t>::max();  // deltas of a trail

std::uint8_t number_on_wire(int trail) { return static_cast<std::uint8_t>(trail - 1); }

// Goes from point to point; nothing when that leads to where no place is.
class Walk {
 public:
  explicit Walk(const GridPoint& origin) : at_(origin) {}

  [[nodiscard]] std::optional<geodesy::Position> place() const { return from_grid(at_); }
  std::optional<geodesy::Position> step(const Delta& delta) {
    const std::int64_t y = std::int64_t{at_.y} + delta.dy, x = std::int64_t{at_.x} + delta.dx;
    if (!std::in_range<std::int32_t>(y) || !std::in_range<std::int32_t>(x)) return std::nullopt;
    at_ = {static_cast<std::int32_t>(y), static_cast<std::int32_t>(x)};
    return place();
  }

 private:
  GridPoint at_;
};

std::optional<Delta> delta_between(const GridPoint& from, const GridPoint& to) {
  const std::int64_t dy = std::int64_t{to.y} - from.y, dx = std::int64_t{to.x} - from.x;
  if (!std::in_range<std::int16_t>(dy) || !std::in_range<std::int16_t>(dx)) return std::nullopt;
  return Delta{static_cast<std::int16_t>(dy), static_cast<std::int16_t>(dx)};
}

std::optional<TrailArea> ask_trail_area(const Connection& connection, int trail) {
  const std::array<std::uint8_t, 1> request{number_on_wire(trail)};
  const auto answer = connection.link.ask(Command::GetTrailPointer, request, "GetPlotTrailPointer");
  return answer ? read_trail_area(*answer) : std::nullopt;
}

// The points that are sent of each track; a track without such is not there.
std::vector<std::vector<GridPoint>> tracks_of(const store::ItemStore& items, int& off_grid) {
  std::vector<std::vector<GridPoint>> tracks;
  bool starts = true;
  for (int i = 1; i <= items.track_point_count(); ++i) {
    const store::ItemRecord point = items.track_point(i);
    starts = starts || point.segment_flag != store::kContinues;
    if (point.in_use == 0 || point.selected == 0) continue;
    if (!is_on_grid(point.position)) {
      ++off_grid;
      continue;
    }
    if (std::exchange(starts, false)) tracks.emplace_back();
    tracks.back().push_back(to_grid(point.position));
  }
  return tracks;
}

}  // namespace

bool TrailDownload::Reception::append(const std::optional<geodesy::Position>& place) {
  if (place) points.push_back(*place);
  return place.has_value();
}

bool TrailDownload::download(int trail) {
  const bool is_complete =
      connection_.unit().ProtocolVersion != 0 ? download_by_commands(trail) : download_image(trail);
  connection_.front_end.set_progress_range(0);
  return is_complete;
}

bool TrailDownload::download_by_commands(int trail) {
  const std::optional<TrailOrigin> origin = ask_origin(trail);
  if (!origin) return remark(format_text("plot trail %d did not come", trail));
  if (origin->deltas == 0) {
    connection_.front_end.write_line(std::min(trail + 6, 10), format_text("No points in trail %d", trail));
    return true;
  }
  // The unit moves on with every block that it sends, so what got lost cannot be asked for by itself.
  Reception best = receive_deltas(*origin);
  for (int i = 0; i < kMostRepetitions && !best.is_complete(); ++i) {
    const std::optional<TrailOrigin> again = ask_origin(trail);
    if (!again || again->deltas == 0) break;
    Reception reception = receive_deltas(*again);
    if (reception.is_complete() || reception.points.size() > best.points.size()) best = std::move(reception);
  }
  return store_trail(trail, best);
}

std::optional<TrailOrigin> TrailDownload::ask_origin(int trail) {
  if (connection_.must_end(kDownloadAbort)) return std::nullopt;
  const std::array<std::uint8_t, 1> request{number_on_wire(trail)};
  const auto answer = connection_.link.ask(Command::GetTrailOrigin, request, "GetLowrTrack");
  const std::optional<TrailOrigin> origin = answer ? read_trail_origin(*answer) : std::nullopt;
  return origin && origin->trail == request[0] ? origin : std::nullopt;
}

// The points before the first block that fails.
TrailDownload::Reception TrailDownload::receive_deltas(const TrailOrigin& origin) {
  Reception reception{{}, std::size_t{origin.deltas} + 1};
  Walk walk(origin.place);
  if (!reception.append(walk.place())) return reception;
  connection_.front_end.set_progress_range(origin.deltas / kMostDeltas);
  int left = origin.deltas;
  // Deliberate : the rest behind the full blocks is asked for even when it is 0.
  for (int wanted = kMostDeltas; left > 0 || wanted == kMostDeltas;) {
    if (connection_.must_end(kDownloadAbort)) break;
    wanted = std::min(left, kMostDeltas);
    const int repetitions = connection_.link.repetitions();
    const std::optional<DeltaBlock> block = ask_deltas(origin.trail, wanted);
    if (wanted == 0) break;
    // To a repeated request the next block may have come. Fewer deltas than asked for are no fault.
    if (!block || block->deltas.empty() || connection_.link.repetitions() != repetitions) break;
    if (block->deltas.size() > static_cast<std::size_t>(wanted)) break;
    for (const Delta& delta : block->deltas)
      if (!reception.append(walk.step(delta))) return reception;
    left -= static_cast<int>(block->deltas.size());
    connection_.front_end.write_progress(4, format_text("T%05d", static_cast<int>(reception.points.size())));
    connection_.front_end.step_progress();
  }
  return reception;
}

std::optional<DeltaBlock> TrailDownload::ask_deltas(std::uint8_t trail, int count) {
  const base::Bytes request = base::ByteWriter().u8(trail).u16(static_cast<std::uint16_t>(count)).result();
  const auto answer = connection_.link.ask(Command::GetTrailDeltas, request, "GetLowrTrack Deltas");
  std::optional<DeltaBlock> block = answer ? read_delta_block(*answer) : std::nullopt;
  if (block && block->trail != trail) block.reset();
  return block;
}

bool TrailDownload::download_image(int trail) {
  if (connection_.must_end(kDownloadAbort)) return remark(format_text("plot trail %d did not come", trail));
  const std::optional<TrailArea> area = ask_trail_area(connection_, trail);
  if (!area) return remark(format_text("the unit does not tell where it keeps plot trail %d", trail));
  base::Bytes start;
  if (!connection_.must_end(kDownloadAbort))
    start = read_memory_block(connection_, area->address, kImageHeaderSize, "GetLowrMem");
  const std::optional<ImageHeader> header = read_image_header(start);
  if (!header) return remark(format_text("plot trail %d did not come", trail));
  if (header->is_empty()) {
    connection_.front_end.write_line(4, "No Tracks to send");
    return true;
  }
  const auto runs = delta_runs(*area, *header);
  if (!runs) return remark(format_text("plot trail %d: the unit's memory makes no sense", trail));
  return store_trail(trail, receive_image(header->origin, *runs));
}

// As far as the memory can be read.
TrailDownload::Reception TrailDownload::receive_image(const GridPoint& origin, const std::array<MemoryRun, 2>& runs) {
  Reception reception{{}, (runs[0].size + runs[1].size) / kDeltaSize + 1};
  Walk walk(origin);
  if (!reception.append(walk.place())) return reception;
  for (const MemoryRun& run : runs) {
    const base::Bytes bytes = read_memory(connection_, run.address, run.size, "deltas");
    for (const Delta& delta : read_image_deltas(bytes))
      if (!reception.append(walk.step(delta))) return reception;
    if (bytes.size() < run.size) break;
  }
  return reception;
}

bool TrailDownload::store_trail(int trail, const Reception& reception) {
  const auto announced = static_cast<int>(reception.announced);
  int stored = 0;
  if (!reception.points.empty()) items_.start_segment();
  for (const geodesy::Position& point : reception.points) {
    items_.start_item();
    items_.CurrentItem.position = point;
    items_.CurrentItem.time = time_;
    if (items_.push_track() != 0)
      return remark(format_text("the store had room for %d of %d points of plot trail %d", stored, announced, trail));
    ++stored;
  }
  if (reception.is_complete()) return true;
  return remark(format_text("plot trail %d broke off after %d of %d points", trail, stored, announced));
}

bool TrailDownload::remark(const std::string& text) {
  remarks_.add(text);
  return false;
}

TrailUpload::TrailUpload(const Connection& connection, const store::ItemStore& items, base::Remarks& remarks)
    : connection_(connection), remarks_(remarks) {
  int off_grid = 0;
  tracks_ = tracks_of(items, off_grid);
  remarks_.add(off_grid, "track points are where the unit has no places and were not sent");
}

bool TrailUpload::upload(int trail, int track) {
  if (track < 1 || track > selected_tracks()) {
    connection_.front_end.write_line(8, format_text("Active track %d does not exist!", track));
    return true;
  }
  const std::vector<GridPoint>& points = tracks_[static_cast<std::size_t>(track) - 1];
  if (points.size() < 2) return remark(format_text("plot trail %d has fewer than 2 points and was not sent", trail));
  unanswered_ = 0;
  const bool is_complete =
      connection_.unit().ProtocolVersion != 0 ? send_by_commands(trail, points) : send_image(trail, points);
  connection_.front_end.set_progress_range(0);
  remarks_.add(unanswered_, format_text("messages of plot trail %d were not answered", trail));
  return is_complete && unanswered_ == 0;
}

// The way along the points: as many steps as the unit has room for, ended before one that is too long for it.
std::vector<Delta> TrailUpload::steps_along(int trail, std::span<const GridPoint> points, std::size_t room) {
  std::vector<Delta> deltas;
  const auto all = static_cast<int>(points.size());
  for (std::size_t i = 1; i < points.size(); ++i) {
    const auto count = static_cast<int>(i);
    if (deltas.size() == room) {
      remark(format_text("the unit has room for the first %d of %d points of plot trail %d", count, all, trail));
      break;
    }
    const std::optional<Delta> delta = delta_between(points[i - 1], points[i]);
    if (!delta) {
      remark(format_text("plot trail %d ends after %d of %d points, as the next is too far away", trail, count, all));
      break;
    }
    deltas.push_back(*delta);
  }
  if (deltas.empty()) remark(format_text("plot trail %d was not sent", trail));
  return deltas;
}

bool TrailUpload::send_by_commands(int trail, std::span<const GridPoint> points) {
  const std::vector<Delta> deltas = steps_along(trail, points, kMostAnnounced);
  if (deltas.empty()) return false;
  const TrailOrigin origin{number_on_wire(trail), points.front(), static_cast<std::uint16_t>(deltas.size())};
  is_doubtful_ = true;
  for (int attempt = 0; attempt <= kMostRepetitions && is_doubtful_; ++attempt)
    if (!send_deltas(origin, deltas, attempt < kMostRepetitions)) return broken_off(trail);
  if (is_doubtful_) remark(format_text("plot trail %d may be damaged: the unit was too slow to answer", trail));
  return !is_doubtful_ && is_kept_whole(origin) && deltas.size() + 1 == points.size();
}

// Units do not say beforehand how much room they have for a trail, so it is asked what has become of it.
bool TrailUpload::is_kept_whole(const TrailOrigin& sent) {
  if (unanswered_ > 0 || connection_.must_end(kUploadAbort)) return false;
  const std::array<std::uint8_t, 1> request{sent.trail};
  const auto answer = connection_.link.ask(Command::GetTrailOrigin, request, "GetLowrTrack");
  const std::optional<TrailOrigin> kept = answer ? read_trail_origin(*answer) : std::nullopt;
  if (!kept || kept->trail != sent.trail || kept->deltas >= sent.deltas) return true;
  return remark(
      format_text("the unit kept %d of %d points of plot trail %d", kept->deltas + 1, sent.deltas + 1, sent.trail + 1));
}

// From the first point on, which makes the unit forget what it has of the trail. False when the upload has to end.
bool TrailUpload::send_deltas(const TrailOrigin& origin, std::span<const Delta> deltas, bool ends_in_doubt) {
  unanswered_ = 0;
  is_doubtful_ = false;
  if (connection_.must_end(kUploadAbort)) return false;
  if (!send(Command::SetTrailOrigin, write_trail_origin(origin), "SetPlotTrailOrigin")) return false;
  connection_.front_end.set_progress_range(static_cast<int>((deltas.size() + kMostDeltas - 1) / kMostDeltas));
  const int repetitions = connection_.link.repetitions();
  for (std::size_t sent = 0; sent < deltas.size();) {
    if (connection_.must_end(kUploadAbort)) return false;
    const auto block = deltas.subspan(sent, std::min(deltas.size() - sent, std::size_t{kMostDeltas}));
    send(Command::SetTrailDeltas, write_delta_block({origin.trail, {block.begin(), block.end()}}),
         "SetPlotTrailDeltas");
    // The unit may have taken the deltas of a repeated message twice.
    is_doubtful_ = connection_.link.repetitions() != repetitions;
    if (is_doubtful_ && ends_in_doubt) return true;
    sent += block.size();
    connection_.front_end.write_progress(4, format_text("T%05d Sent", static_cast<int>(sent) + 1));
    connection_.front_end.step_progress();
  }
  return true;
}

bool TrailUpload::send_image(int trail, std::span<const GridPoint> points) {
  if (connection_.must_end(kUploadAbort)) return broken_off(trail);
  const std::optional<TrailArea> area = ask_trail_area(connection_, trail);
  if (!area) return remark(format_text("the unit does not tell where it keeps plot trail %d", trail));
  const std::vector<Delta> deltas = steps_along(trail, points, area->capacity());
  if (deltas.empty()) return false;
  const bool is_complete = deltas.size() + 1 == points.size();
  if (!is_complete && deltas.size() == area->capacity())
    connection_.front_end.write_line(
        1, format_text("Too many plot points. Sending the first %d points.", static_cast<int>(deltas.size()) + 1));
  return write_image(*area, points.front(), deltas) ? is_complete : broken_off(trail);
}

// False when the upload has to end before all is written.
bool TrailUpload::write_image(const TrailArea& area, const GridPoint& origin, std::span<const Delta> deltas) {
  const base::Bytes image = write_image_deltas(deltas);
  const std::uint32_t end = area.ring() + static_cast<std::uint32_t>(image.size());
  const base::Bytes rest(area.ring_end() - end);
  connection_.front_end.set_progress_range(memory_blocks(image.size()) + memory_blocks(rest.size()));
  if (connection_.must_end(kUploadAbort)) return false;
  const base::Bytes header = write_image_header({origin, area.ring(), end});
  if (!write_memory(area.address, header, "SendLowrTrkHdrs")) return false;
  const auto sent = [](std::size_t deltas_written) {
    return format_text("T%05d Sent", static_cast<int>(deltas_written) + 1);
  };
  if (!write_blocks(area.ring(), image, {"SendLowrTrkMemDeltas", "SendLowrTrkMemDeltas"}, sent)) return false;
  if (rest.empty()) return true;
  connection_.front_end.write_line(3, "Clearing buffer");
  const auto left = [&rest](std::size_t deltas_written) {
    return format_text("T%05d left", static_cast<int>(rest.size() / kDeltaSize - deltas_written));
  };
  return write_blocks(end, rest, {"SendLowrTrkMemDeltas0", "SendLowrTrkMemDeltas02"}, left);
}

// `labels`: of full blocks and of a shorter last one; `progress` makes a text of the number of deltas written.
bool TrailUpload::write_blocks(std::uint32_t address, std::span<const std::uint8_t> bytes,
                               const std::array<std::string_view, 2>& labels,
                               const std::function<std::string(std::size_t)>& progress) {
  for (std::size_t written = 0; written < bytes.size();) {
    if (connection_.must_end(kUploadAbort)) return false;
    const std::size_t count = std::min(bytes.size() - written, kMemoryBlock);
    write_memory(address + static_cast<std::uint32_t>(written), bytes.subspan(written, count),
                 labels[count == kMemoryBlock ? 0 : 1]);
    written += count;
    connection_.front_end.write_progress(4, progress(written / kDeltaSize));
    connection_.front_end.step_progress();
  }
  return true;
}

bool TrailUpload::write_memory(std::uint32_t address, std::span<const std::uint8_t> bytes, std::string_view label) {
  return send(Command::WriteMemory, base::ByteWriter().u32(address).bytes(bytes).result(), label);
}

// Whether the unit answered.
bool TrailUpload::send(Command command, std::span<const std::uint8_t> data, std::string_view label) {
  const bool is_answered = connection_.link.ask(command, data, label).has_value();
  if (!is_answered) ++unanswered_;
  return is_answered;
}

bool TrailUpload::broken_off(int trail) {
  return remark(format_text("plot trail %d was broken off before its end", trail));
}

bool TrailUpload::remark(const std::string& text) {
  remarks_.add(text);
  return false;
}

}  // namespace lowrance

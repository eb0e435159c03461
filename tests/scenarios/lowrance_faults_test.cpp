// Lines that disturb, units that fall silent, adapters that are pulled out, and users who change their mind, at every
// message of a download, of an upload and of a screen.
#include <set>
#include <span>

#include "tests/support/lowrance_scenario.h"

namespace {

using simulators::Fault;
using simulators::LowranceOptions;
using simulators::LowranceUnit;
using testing::AnyOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Things = std::vector<std::string>;  // in alphabetical order

constexpr int kFirstOfTransfer = 3;  // after login and unit information

// What stands in the memory of a unit: records, deltas, words of trail areas.
Things things_in(const simulators::LowranceMemory& memory) {
  Things things;
  const auto add = [&](const char* kind, std::size_t number, std::span<const std::uint8_t> bytes) {
    if (std::ranges::any_of(bytes, [](std::uint8_t byte) { return byte != 0; }))
      things.push_back(std::string(kind) + " " + std::to_string(number) + ": " +
                       std::string(bytes.begin(), bytes.end()));
  };
  for (const auto& [kind, records] :
       {std::pair("waypoint", &memory.waypoints), {"route", &memory.routes}, {"icon", &memory.icons}})
    for (std::size_t i = 0; i < records->size(); ++i) add(kind, i, std::span((*records)[i]).subspan(2));
  for (const simulators::LowranceTrail& trail : memory.trails)
    for (std::size_t i = 0; i < trail.deltas.size(); ++i)
      things.push_back(
          base::format_text("delta %d: %d %d", static_cast<int>(i), trail.deltas[i].first, trail.deltas[i].second));
  for (const base::Bytes& area : memory.areas)
    for (std::size_t at = 0; at < area.size(); at += 4) add("word", at, std::span(area).subspan(at, 4));
  return things;
}

class LowranceFaults : public support::LowranceScenario {
 protected:
  enum class Transfer { Download, Upload, Screen };

  LowranceFaults() { removes_exact_duplicates = true; }

  // At a new unit in which there is little, or nothing; true when all of it came or was taken.
  bool run(Transfer transfer, const LowranceOptions& options, std::function<bool()> esc = {}) {
    unit(options, transfer == Transfer::Upload ? simulators::LowranceData() : support::short_season());
    session->settings.SA_LwrRangeHi = 6;
    items().restore(to_send_);
    front_end.esc = std::move(esc);
    const bool done = transfer == Transfer::Download ? download(kDownloadAll)
                      : transfer == Transfer::Upload ? upload(kUploadAll)
                                                     : timed([this] {
                                                         picture_ = session->lowrance_screen.download();
                                                         return picture_.has_value();
                                                       });
    expect_closed();
    EXPECT_LT(elapsed, 10 * 9 + 30);
    return done;
  }
  bool run_with(Transfer transfer, std::string_view name, Fault::Kind kind, int message) {
    LowranceOptions options = named(name);
    options.faults = {{kind, message}};
    return run(transfer, options);
  }
  // Without any fault; what it moved.
  Things run_well(Transfer transfer, std::string_view name) {
    to_send_ = {};
    if (transfer == Transfer::Upload) {
      run_well(Transfer::Download, name);
      to_send_ = items().contents();
    }
    EXPECT_TRUE(run(transfer, named(name))) << front_end.lines[6] << front_end.lines[9];
    EXPECT_EQ(device->refused(), 0);
    return moved(transfer);
  }
  // Trail points are taken without the time of their download.
  Things moved(Transfer transfer) {
    Things things;
    if (transfer == Transfer::Upload) things = things_in(device->memory());
    if (transfer == Transfer::Screen && picture_)
      things.emplace_back(picture_->bytes().begin(), picture_->bytes().end());
    if (transfer == Transfer::Download) {
      std::vector<store::ItemRecord> records = support::all_records(items());
      for (store::ItemRecord& record : records)
        if (record.kind == 'T') record.time = {};
      things = support::described(records);
    }
    std::ranges::sort(things);
    return things;
  }

  // Every fault at every message.
  void expect_faults_told(Transfer transfer) {
    for (const LowranceUnit& row : units) {
      const Things whole = run_well(transfer, row.name);
      std::size_t kept = 0;
      for (int message = 1;; ++message) {
        SCOPED_TRACE(base::format_text("%s, message %d", std::string(row.name).c_str(), message));
        const auto run_it_with = [&](Fault::Kind kind) { return run_with(transfer, row.name, kind, message); };
        bool done = run_it_with(Fault::Kind::Unplug);
        if (!was_said(3, "vanished")) break;  // there are no more
        // What came before is kept.
        const Things things = moved(transfer);
        EXPECT_TRUE(std::ranges::includes(whole, things));
        EXPECT_GE(things.size(), std::exchange(kept, things.size()));
        // A picture that has come whole needs no answer any more...
        EXPECT_TRUE(!done || (transfer == Transfer::Screen && things == whole));
        done = run_it_with(Fault::Kind::Silent);
        EXPECT_EQ(moved(transfer), things);
        // ... nor does a trail that was sent whole.
        EXPECT_TRUE(!done || (transfer != Transfer::Download && things == whole));
        if (!done) expect_told_silence(transfer, message);
        for (const Fault::Kind kind : {Fault::Kind::DropAck, Fault::Kind::Noise}) {
          EXPECT_TRUE(run_it_with(kind));
          EXPECT_EQ(moved(transfer), whole);
          EXPECT_LT(elapsed, 10);
          expect_goes_on(transfer);
        }
        // What this makes of the data, nobody knows. Who the unit is, is asked again.
        done = run_it_with(Fault::Kind::BadChecksum);
        EXPECT_TRUE(transfer == Transfer::Screen || done == (message < kFirstOfTransfer));
        EXPECT_TRUE(transfer == Transfer::Screen || done == remarks(transfer).empty());
        expect_goes_on(transfer);
      }
      EXPECT_GT(kept, transfer == Transfer::Screen ? 0U : whole.size() - 2);
    }
  }
  const std::string& remarks(Transfer transfer) { return front_end.lines[transfer == Transfer::Download ? 6 : 9]; }
  void expect_told_silence(Transfer transfer, int message) {
    EXPECT_FALSE(session->flags.LowranceIdentified);
    const std::string& line_1 = front_end.lines[1];
    if (message < kFirstOfTransfer || transfer == Transfer::Screen) {
      told_.insert(line_1);
    } else if (session->lowrance_link.given_up()) {
      EXPECT_EQ(line_1, "Receiver does not answer");
      EXPECT_THAT(remarks(transfer),
                  HasSubstr(transfer == Transfer::Download ? "the download broke off: what has arrived is kept"
                                                           : "the upload broke off: the unit keeps what it answered"));
    } else {
      EXPECT_TRUE(was_said(2, "Timeout in GetLowrMessage"));
      EXPECT_THAT(remarks(transfer), HasSubstr(transfer == Transfer::Download ? "did not come" : "not answered"));
    }
  }
  // A unit whose screen is frozen tells nobody its waypoints.
  void expect_goes_on(Transfer transfer) {
    if (transfer != Transfer::Screen) return;
    front_end.esc = {};
    session->settings.SA_LwrRangeHi = 1;
    EXPECT_TRUE(download(kDownloadWaypoints));
  }

  // ESC at each poll in turn.
  void expect_esc_ends(Transfer transfer) {
    for (const LowranceUnit& row : units) {
      const Things whole = run_well(transfer, row.name);
      std::size_t kept = 0;
      LowranceOptions options = named(row.name);
      options.baud = 115200;
      for (int poll = 1;; ++poll) {
        SCOPED_TRACE(base::format_text("%s, poll %d", options.unit.c_str(), poll));
        std::optional<std::chrono::microseconds> pressed;
        const bool done = run(transfer, options, [&, asked = 0]() mutable {
          const bool is_pressed = ++asked == poll;
          if (is_pressed) pressed = clock.now;
          return is_pressed;
        });
        if (!pressed) break;  // it was over before
        EXPECT_LT(clock.now - *pressed, std::chrono::milliseconds(250));
        EXPECT_EQ(front_end.progress_range, 0);
        EXPECT_THAT(remarks(transfer), Not(AnyOf(HasSubstr("s did not come"), ContainsRegex("s w\\w+ not answered"))));
        const Things things = moved(transfer);
        EXPECT_TRUE(std::ranges::includes(whole, things));
        EXPECT_GE(things.size(), std::exchange(kept, things.size()));
        // What ESC leaves of a screen may also be told as a plane that did not come whole.
        if (done || front_end.lines[1].ends_with("did not come whole; the old picture stays.")) {
          EXPECT_EQ(transfer, Transfer::Screen);
        } else {
          told_.insert(front_end.lines[4]);
        }
        expect_goes_on(transfer);
      }
      EXPECT_TRUE(kept == whole.size() || transfer == Transfer::Screen);
    }
  }

  // Those with few slots for routes, so that there are not too many messages: two of either form of plot trails, one of
  // which has no grey plane, and one no events.
  const std::span<const LowranceUnit> units = simulators::lowrance_units().last(4);
  std::set<std::string> told_;  // each text once

 private:
  store::ItemStore::Contents to_send_;
  std::optional<picture::Bitmap> picture_;
};

TEST_F(LowranceFaults, OfADownload) { expect_faults_told(Transfer::Download); }

TEST_F(LowranceFaults, OfAnUpload) { expect_faults_told(Transfer::Upload); }

TEST_F(LowranceFaults, OfAScreen) {
  expect_faults_told(Transfer::Screen);
  EXPECT_THAT(told_, ElementsAre("COM port not open!",
                                 "The black plane of the screen did not come whole; the old picture stays.",
                                 "The grey plane of the screen did not come whole; the old picture stays.",
                                 "The unit does not tell where its screen is; the old picture stays."));
}

TEST_F(LowranceFaults, EscAtEveryPollEndsATransferCleanlyAndAtOnce) {
  for (const Transfer transfer : {Transfer::Download, Transfer::Upload, Transfer::Screen}) expect_esc_ends(transfer);
  EXPECT_THAT(told_, ElementsAre("ESC Pressed!", "Operator Abort in DoLowrRoute", "Operator Abort in GetLowrRts",
                                 "Operator Abort in GetLowrWpts", "Operator Abort in Memory read for deltas",
                                 "Operator Abort in Plot Trail download", "Operator Abort in Plot Trail upload",
                                 "Operator Abort in SendLowrIcons", "Operator Abort in SendLowrRoutes",
                                 "Operator Abort in SendLowrWaypoints", "Operator Abort in Waypoint download",
                                 "Operator Abort in screen download"));
}

}  // namespace

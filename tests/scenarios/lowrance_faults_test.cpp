// Lines that disturb, units that fall silent, adapters that are pulled out, and users who change their mind, at every
// message of a download and of an upload.
#include "tests/support/lowrance_scenario.h"

namespace {

using simulators::Fault;
using simulators::LowranceOptions;

constexpr int kFirstOfTransfer = 3;  // after login and unit information

class LowranceFaults : public support::LowranceScenario {
 protected:
  LowranceFaults() { removes_exact_duplicates = true; }

  static LowranceOptions with_fault(std::string_view name, Fault::Kind kind, int message) {
    LowranceOptions options = named(name);
    options.faults = {{kind, message}};
    return options;
  }
  bool download_with(const LowranceOptions& options) {
    unit(options, support::short_season());
    session->settings.SA_LwrRangeHi = 6;
    return download(kDownloadAll);
  }
  bool upload_with(const LowranceOptions& options) {
    device_ = &unit(options, {});
    items().restore(to_send_);
    return upload(kUploadAll);
  }
  // Trail points have the time of their download.
  std::vector<std::string> without_trail_times() {
    std::vector<store::ItemRecord> records = support::all_records(items());
    for (store::ItemRecord& record : records)
      if (record.kind == 'T') record.time = {};
    return support::described(records, support::Detail::Everything);
  }
  // The messages of a transfer, each of which can have a fault.
  template <typename Transfer>
  int messages_of(Transfer transfer) {
    for (int message = kFirstOfTransfer;; ++message) {
      transfer(message);
      if (!was_said(3, "vanished")) return message - 1;
    }
  }
  void expect_told_silence() {
    EXPECT_TRUE(was_said(2, "Timeout in GetLowrMessage") || was_said(1, "COM port not open!"));
    EXPECT_TRUE(was_said(6, "") || was_said(9, "") || was_said(1, "COM port not open!"));
    EXPECT_LT(elapsed, 10 * 9 + 30);
  }

  store::ItemStore::Contents to_send_;
  support::ObservedUnit* device_ = nullptr;
};

// One unit of either form of plot trails, both with few slots.
constexpr std::array kUnits{"GlobalNav 212", "GlobalMap Sport"};

TEST_F(LowranceFaults, NoFaultOfTheLineChangesWhatIsDownloaded) {
  for (const char* const name : kUnits) {
    ASSERT_TRUE(download_with(named(name))) << front_end.lines[6];
    const std::vector<std::string> whole = without_trail_times();
    const int messages =
        messages_of([&](int message) { download_with(with_fault(name, Fault::Kind::Unplug, message)); });
    EXPECT_GT(messages, 40);
    for (int message = 1; message <= messages; ++message) {
      for (const Fault::Kind kind : {Fault::Kind::DropAck, Fault::Kind::Noise, Fault::Kind::BadChecksum}) {
        SCOPED_TRACE(base::format_text("%s, message %d, fault %d", name, message, static_cast<int>(kind)));
        const bool all_came = download_with(with_fault(name, kind, message));
        // A wrong checksum is told, since nobody knows whether the data are right.
        EXPECT_EQ(all_came, kind != Fault::Kind::BadChecksum || message < kFirstOfTransfer) << front_end.lines[6];
        EXPECT_EQ(without_trail_times(), whole);
        EXPECT_LT(elapsed, 9);
        expect_closed();
      }
    }
  }
}

TEST_F(LowranceFaults, SilenceAndALostPortKeepWhatHasCome) {
  for (const char* const name : kUnits) {
    ASSERT_TRUE(download_with(named(name)));
    const std::vector<std::string> whole = without_trail_times();
    for (int message = 1; message <= 40; ++message) {
      for (const Fault::Kind kind : {Fault::Kind::Silent, Fault::Kind::Unplug}) {
        SCOPED_TRACE(base::format_text("%s, message %d, fault %d", name, message, static_cast<int>(kind)));
        EXPECT_FALSE(download_with(with_fault(name, kind, message)));
        for (const std::string& record : without_trail_times()) EXPECT_THAT(whole, testing::Contains(record));
        if (kind == Fault::Kind::Silent) expect_told_silence();
        EXPECT_EQ(was_said(3, "vanished"), kind == Fault::Kind::Unplug);
        expect_closed();
        EXPECT_FALSE(session->flags.LowranceIdentified);
      }
    }
  }
}

TEST_F(LowranceFaults, NoFaultOfTheLineChangesWhatIsUploaded) {
  for (const char* const name : kUnits) {
    ASSERT_TRUE(download_with(named(name)));
    to_send_ = items().contents();
    ASSERT_TRUE(upload_with(named(name))) << front_end.lines[9];
    const simulators::LowranceMemory whole = device_->memory();
    const int messages = messages_of([&](int message) { upload_with(with_fault(name, Fault::Kind::Unplug, message)); });
    EXPECT_GT(messages, 10);
    for (int message = kFirstOfTransfer; message <= messages; ++message) {
      SCOPED_TRACE(base::format_text("%s, message %d", name, message));
      EXPECT_TRUE(upload_with(with_fault(name, Fault::Kind::DropAck, message))) << front_end.lines[9];
      EXPECT_EQ(device_->memory(), whole);
      EXPECT_TRUE(upload_with(with_fault(name, Fault::Kind::Noise, message)));
      EXPECT_EQ(device_->memory(), whole);
      EXPECT_FALSE(upload_with(with_fault(name, Fault::Kind::Silent, message)));
      expect_told_silence();
      expect_closed();
    }
  }
}

TEST_F(LowranceFaults, EscAtEveryPollEndsATransferCleanlyAndAtOnce) {
  for (const char* const name : kUnits) {
    LowranceOptions options = named(name);
    options.baud = 57600;
    ASSERT_TRUE(download_with(options));
    to_send_ = items().contents();
    const auto abort_everywhere = [&](const auto& transfer) {
      int polls = 0;
      for (int poll = 1; poll <= polls || poll == 1; poll += 7) {
        SCOPED_TRACE(base::format_text("%s, poll %d", name, poll));
        unit(options, support::short_season());
        session->settings.SA_LwrRangeHi = 6;
        items().restore(to_send_);
        std::chrono::microseconds pressed{0};
        int asked = 0;
        front_end.esc = [&] {
          const bool is_pressed = ++asked == poll;
          if (is_pressed) pressed = clock.now;
          return is_pressed;
        };
        const bool done = transfer();
        expect_closed();
        if (pressed == std::chrono::microseconds{0}) break;  // it was over before
        polls = poll + 7;
        EXPECT_FALSE(done);
        EXPECT_LT(clock.now - pressed, std::chrono::milliseconds(250));
        EXPECT_THAT(front_end.lines[4], testing::AnyOf(testing::HasSubstr("Operator Abort"), "ESC Pressed!"));
        EXPECT_EQ(front_end.progress_range, 0);
      }
      EXPECT_GT(polls, 50);
    };
    abort_everywhere([&] { return download(kDownloadAll); });
    abort_everywhere([&] { return upload(kUploadAll); });
  }
}

TEST_F(LowranceFaults, EchoAndNoiseOnTheLineDoNoHarm) {
  LowranceOptions options = named("GlobalMap Sport");
  ASSERT_TRUE(download_with(options));
  to_send_ = items().contents();
  const std::vector<std::string> whole = without_trail_times();
  ASSERT_TRUE(upload_with(options));
  const simulators::LowranceMemory sent = device_->memory();
  options.echo = options.noise = true;
  EXPECT_TRUE(download_with(options)) << front_end.lines[6];
  EXPECT_EQ(without_trail_times(), whole);
  EXPECT_TRUE(upload_with(options)) << front_end.lines[9];
  EXPECT_EQ(device_->memory(), sent);
}

}  // namespace

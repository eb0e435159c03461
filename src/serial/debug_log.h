// The serial debug log (SerialDebugFile): a text file with every packet sent and received, byte by byte.
// What a call has written is in the system's hands when it returns, so the log is complete after a crash.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>

#include "base/front_end.h"

namespace serial {

enum class ByteFormat { Hex, Decimal };

// Calls while no file is open do nothing.
class DebugLog {
 public:
  explicit DebugLog(base::FrontEnd& front_end) : front_end_(front_end) {}

  // Starts a new file, emptying an old one; `version` is the program's. False, with a message box, on failure.
  bool open(const std::filesystem::path& path, ByteFormat format, std::string_view version);
  void close() { file_.close(); }
  [[nodiscard]] bool is_open() const { return other_ != nullptr ? other_->is_open() : file_.is_open(); }
  // From now on all goes into another log, which must outlive this one.
  void write_into(DebugLog& other) {
    other_ = &other;
    format_ = other.format_;
  }

  // A packet as it goes on the wire, under the label that names it.
  void sent(std::string_view label, std::span<const std::uint8_t> wire_bytes);
  // A packet as received, stuffed bytes removed.
  void received(std::span<const std::uint8_t> bytes, bool checksum_ok);
  // Any text as it stands; the caller ends its lines with LF.
  void text(std::string_view text);
  // A title, which ends its own line, and under it bytes with a line break after every 16 and one at the end.
  void block(std::string_view title, std::span<const std::uint8_t> bytes);
  // Bytes in the byte format, 16 to a line, the last line ended too.
  void dump(std::span<const std::uint8_t> bytes);

 private:
  [[nodiscard]] std::string byte_lines(std::span<const std::uint8_t> bytes) const;

  base::FrontEnd& front_end_;
  std::ofstream file_;
  ByteFormat format_ = ByteFormat::Hex;
  DebugLog* other_ = nullptr;
};

}  // namespace serial

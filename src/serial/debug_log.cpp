#include "serial/debug_log.h"

#include "base/safe_file.h"
#include "base/text.h"

namespace serial {
namespace {

constexpr std::size_t kBytesPerLine = 16;

}  // namespace

bool DebugLog::open(const std::filesystem::path& path, ByteFormat format, std::string_view version) {
  file_.close();
  file_.clear();
  format_ = format;
  file_.open(path, std::ios::binary | std::ios::trunc);
  if (!file_) {
    front_end_.message_box("Opening Debug File", base::format_text("Error opening file:'%s'", path.string().c_str()));
    return false;
  }
  text("Program version: " + std::string(version) + "\n");
  return is_open();
}

void DebugLog::sent(std::string_view label, std::span<const std::uint8_t> wire_bytes) {
  if (!is_open()) return;
  // An acknowledgement stands right under the packet that it answers.
  std::string entry = label == "ACK" ? "" : "\n";
  entry.append("Sending: ").append(label).append("\n").append(byte_lines(wire_bytes)).append("\n");
  text(entry);
}

void DebugLog::received(std::span<const std::uint8_t> bytes, bool checksum_ok) {
  if (!is_open()) return;
  text(checksum_ok ? "\nReceived:\n" : "\nReceived: (Checksum is BAD)\n");
  dump(bytes);
}

void DebugLog::block(std::string_view title, std::span<const std::uint8_t> bytes) {
  if (is_open()) text(std::string(title) + byte_lines(bytes) + "\n");
}

void DebugLog::dump(std::span<const std::uint8_t> bytes) {
  if (!is_open()) return;
  std::string lines = byte_lines(bytes);
  if (bytes.size() % kBytesPerLine != 0) lines += '\n';
  text(lines);
}

void DebugLog::text(std::string_view text) {
  if (!is_open()) return;
  if (other_ != nullptr) return other_->text(text);
  file_ << base::with_line_ends(text) << std::flush;
  if (file_) return;
  file_.close();
  front_end_.write_line(1, "Debug file: cannot write, closed");
}

std::string DebugLog::byte_lines(std::span<const std::uint8_t> bytes) const {
  std::string lines;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::uint8_t byte = bytes[i];
    lines += format_ == ByteFormat::Decimal ? base::format_text("%3d", byte) : base::format_text(" %02x", byte);
    if (byte >= 32 && byte <= 126) {
      lines += {static_cast<char>(byte), ' '};
    } else {
      lines += "  ";
    }
    if (i % kBytesPerLine == kBytesPerLine - 1) lines += '\n';
  }
  return lines;
}

}  // namespace serial

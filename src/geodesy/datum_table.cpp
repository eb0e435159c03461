#include "geodesy/datum_table.h"

#include <algorithm>
#include <system_error>

#include "base/safe_file.h"
#include "base/system_file.h"
#include "base/text.h"
#include "geodesy/built_in_datums.h"

namespace geodesy {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUserFile = "pelorixdatums.txt";
constexpr std::string_view kEndOfTable = "FINISXX";

bool is_file(const fs::path& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

// Empty when there is none.
fs::path user_datum_file(std::span<const fs::path> directories, std::string_view program_name) {
  for (const fs::path& directory : directories)
    if (fs::path candidate = directory / kUserFile; is_file(candidate)) return candidate;
  const std::size_t backslash = program_name.rfind('\\');
  if (backslash == std::string_view::npos) return {};
  const fs::path beside =
      base::path_from_text(std::string(program_name.substr(0, backslash + 1)) + std::string(kUserFile));
  return is_file(beside) ? beside : fs::path();
}

// Deliberate : numbers beyond 16 bits wrap, as they always have in this file; nothing in a line is validated.
std::int16_t metres(std::string_view text) { return static_cast<std::int16_t>(base::leading_integer(text)); }

const DatumEntry* find_row(std::span<const DatumEntry> rows, std::string_view name) {
  const auto row = std::ranges::find_if(
      rows, [name](const DatumEntry& entry) { return base::equal_ignoring_case(entry.name, name); });
  return row == rows.end() ? nullptr : &*row;
}

std::string datum_listing() {
  std::string text = base::format_text("%-37s %10s,%13s,%5s,%5s,%5s\n", "Datum", "da", "df", "dx", "dy", "dz");
  for (const DatumEntry& row : kBuiltInDatums) {
    std::string leader = std::string(row.name) + ", " + std::string(37, '-');
    leader.resize(37);
    text +=
        base::format_text("%-37s %10.3f,%13.9f,%5d,%5d,%5d\n", leader.c_str(), row.da, row.df, row.dx, row.dy, row.dz);
  }
  return text;
}

}  // namespace

int DatumTable::load_user_datums(std::span<const fs::path> directories, std::string_view program_name) {
  user_rows_.clear();
  user_names_.clear();
  std::string contents;
  std::string reason;
  const fs::path file = user_datum_file(directories, program_name);
  if (file.empty() || !base::load_file(file, contents, reason)) return 0;
  for (std::string_view line : base::split(contents, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    // Deliberate : a longer line is taken as several lines, each piece judged by itself.
    constexpr std::size_t kLongestPiece = 254;
    do {
      if (!add_user_line(line.substr(0, kLongestPiece))) return 1;
      line.remove_prefix(std::min(kLongestPiece, line.size()));
    } while (!line.empty());
  }
  return 1;
}

bool DatumTable::add_user_line(std::string_view line) {
  line = base::trim_blanks(line);
  if (line.starts_with(';') || std::ranges::count(line, ',') != 5) return true;
  const std::vector<std::string_view> fields = base::split(line, ',');
  if (base::equal_ignoring_case(fields[0], kEndOfTable)) return false;
  user_rows_.push_back({user_names_.emplace_back(fields[0]), base::leading_number(fields[1]),
                        base::leading_number(fields[2]), metres(fields[3]), metres(fields[4]), metres(fields[5])});
  return true;
}

const DatumEntry* DatumTable::find(std::string_view name) const {
  const DatumEntry* const user_row = find_row(user_rows_, name);
  return user_row != nullptr ? user_row : find_row(kBuiltInDatums, name);
}

const DatumEntry* DatumTable::find_alike(std::string_view name) const {
  if (const DatumEntry* const exact = find(name)) return exact;
  const auto key = [](std::string_view text) {
    std::string letters = base::lower_case(text);
    std::erase_if(letters, [](char c) { return c == ' ' || c == '-' || c == '_'; });
    return letters;
  };
  const std::string wanted = key(name);
  if (wanted.empty()) return nullptr;
  const auto alike = [&](const DatumEntry& entry) { return key(entry.name) == wanted; };
  if (const auto row = std::ranges::find_if(user_rows_, alike); row != user_rows_.end()) return &*row;
  const auto* const row = std::ranges::find_if(kBuiltInDatums, alike);
  return row == std::end(kBuiltInDatums) ? nullptr : &*row;
}

std::vector<std::string> DatumTable::names() const {
  std::vector<std::string> result(user_names_.begin(), user_names_.end());
  for (const DatumEntry& row : kBuiltInDatums) result.emplace_back(row.name);
  return result;
}

bool save_internal_datum_list(const fs::path& path, base::FrontEnd& front_end) {
  const std::string reason = base::save_file(path, base::with_line_ends(datum_listing()));
  const std::string name = path.string();
  if (!reason.empty()) {
    front_end.message_box("Saving Datum list", "Error saving datum list");
    front_end.write_line(3, name + ": " + reason);
    return false;
  }
  front_end.write_line(1, "Internal datums saved to: " + name);
  return true;
}

}  // namespace geodesy

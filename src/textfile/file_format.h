// What the program knows of one file type. The session owns the table of all types; a new one is a row there.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/front_end.h"
#include "geodesy/datum_shift.h"
#include "geodesy/datum_table.h"
#include "store/item_store.h"
#include "store/settings.h"
#include "textfile/text_writer.h"

namespace textfile {

// What readers and writers work with; all of it outlives them.
struct FileContext {
  store::ItemStore& store;
  geodesy::DatumShift& shift;
  const geodesy::DatumTable& datums;
  const store::Settings& settings;
  base::FrontEnd& front_end;
  std::function<void(std::string_view)> command_options;  // for lines that begin with '!'; may be empty
};

inline constexpr int kCannotOpen = -2;
inline constexpr int kUnknownType = 0;
inline constexpr int kNativeText = 1;

// Extensions with their dot, in any letter case. A row without reader or writer is a type that is refused by name.
struct FileFormat {
  int code = kUnknownType;                 // of the input type; 0: the type is only written
  std::string_view name = {};              // "an OziExplorer track file"
  std::string_view input_extension = {};   // that chooses this type whatever the file holds; empty: none
  std::string_view output_extension = {};  // that chooses the writer; empty: none
  bool (*recognises)(std::string_view first_line) = nullptr;
  bool is_bitmap = false;  // saved as it is: no line ends, no sorting
  // Reads the whole file into the store; the number of lines or records accepted.
  int (*read)(const FileContext& context, std::string_view contents, const std::string& file_name) = nullptr;
  // The whole file with LF line ends; nothing when the writer has refused and said why.
  std::optional<std::string> (*write)(const FileContext& context, const TextOptions& options) = nullptr;
};

// The row of native text is made of these. Its first line begins with a kind letter, '#', '!', ';', a blank
// or a digit, and does not hold exactly four commas.
[[nodiscard]] bool recognises_native_text(std::string_view first_line);
[[nodiscard]] int read_native_text(const FileContext& context, std::string_view contents, const std::string& file_name);
// An output datum that nobody knows is reported, and the file is in WGS-84 and says so.
[[nodiscard]] std::optional<std::string> write_native_text(const FileContext& context, const TextOptions& options);
// Exactly four commas and a capital, digit or '-' at the start: a comma-separated waypoint file.
[[nodiscard]] bool recognises_comma_waypoints(std::string_view first_line);

}  // namespace textfile

// What the program knows of one file type. The session owns the table of all types; a new one is a row there.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "base/text_input.h"
#include "base/text_output.h"
#include "store/file_context.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace textfile {

inline constexpr int kCannotOpen = -2;
inline constexpr int kUnknownType = 0;
inline constexpr int kNativeText = 1;

// Extensions with their dot, in any letter case. A row without reader or writer is a type that is refused by name.
struct FileFormat {
  int code = kUnknownType;                 // of the input type; 0: the type is only written
  std::string_view name = {};              // "an OziExplorer track file"
  std::string_view title = {};             // "OziExplorer .plt", of a type that is written
  std::string_view input_extension = {};   // that chooses this type whatever the file holds; empty: none
  std::string_view output_extension = {};  // that chooses the writer; empty: none
  std::string_view why_not = {};           // "its layout is not public": of a type without reader or writer
  bool (*recognises)(std::string_view first_line) = nullptr;
  bool is_binary = false;  // saved as it is: no line ends of the system's
  bool is_bitmap = false;  // holds no items, so nothing is sorted or lost
  // Reads the whole file into the store; the number of lines or records accepted, or -1 when the reader has
  // refused the file as a whole and said why.
  int (*read)(const store::FileContext& context, base::TextInput& input, const std::string& file_name) = nullptr;
  // Writes the whole file with LF line ends; false when the writer has refused and said why.
  bool (*write)(const store::FileContext& context, const store::OutputOptions& options,
                base::TextOutput& out) = nullptr;
  // What of the items such a file keeps: always the same...
  store::Kept keeps = {};
  // ... or by what the user chose.
  store::Kept (*keeps_by_choice)(const store::Settings& settings, const store::OutputOptions& options) = nullptr;
  // The name that is written in place of the user's, where the format has a rule for names.
  std::filesystem::path (*output_name)(const store::FileContext& context, const store::OutputOptions& options,
                                       const std::filesystem::path& path) = nullptr;
};

// The row of native text is made of these. Its first line begins with a kind letter, '#', '!', ';', a blank
// or a digit, and does not hold exactly four commas.
[[nodiscard]] bool recognises_native_text(std::string_view first_line);
[[nodiscard]] int read_native_text(const store::FileContext& context, base::TextInput& input,
                                   const std::string& file_name);
// An output datum that nobody knows is reported, and the file is in WGS-84 and says so.
[[nodiscard]] bool write_native_text(const store::FileContext& context, const store::OutputOptions& options,
                                     base::TextOutput& out);
[[nodiscard]] store::Kept native_text_keeps(const store::Settings& settings, const store::OutputOptions& options);
// Exactly four commas and a capital, digit or '-' at the start: a comma-separated waypoint file.
[[nodiscard]] bool recognises_comma_waypoints(std::string_view first_line);

}  // namespace textfile

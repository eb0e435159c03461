// The configuration file: one "key=value" a line, '#' comments, numbers in decimal, lists with commas,
// choices as words. A new setting is one row of the table in config_file.cpp and one field of Settings.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/front_end.h"
#include "store/settings.h"

namespace store {

enum class [[nodiscard]] KeyResult{Set, UnknownKey, BadValue};

// Sets one setting by its key (letter case counts) and its text in the file; anything but Set leaves it as it was.
KeyResult set_key(Settings& settings, std::string_view name, std::string_view value);

// The setting as the file would have it; nothing for an unknown key, or where the file would have no line.
[[nodiscard]] std::optional<std::string> key_text(const Settings& settings, std::string_view name);
// All keys, in the order of the file.
[[nodiscard]] std::vector<std::string_view> key_names();

// Takes over every key that the text holds; unknown lines and bad values are passed over.
void read_configuration(std::string_view contents, Settings& settings);
// All keys in the order of the file, lines ended by LF; settings without a known value have no line.
[[nodiscard]] std::string configuration_text(const Settings& settings);

// A file that cannot be read leaves the settings as they are: start values are no error.
void load_configuration(const std::filesystem::path& path, Settings& settings);
// False when the file could not be written; said in a message box, and the old file is as it was.
bool save_configuration(const std::filesystem::path& path, const Settings& settings, base::FrontEnd& front_end);

}  // namespace store

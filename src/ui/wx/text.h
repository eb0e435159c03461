// Between the texts of records and messages (Latin-1, or UTF-8 where file names are in them) and the toolkit's.
#pragma once

#include <wx/string.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace ui::wx {

[[nodiscard]] wxString wx_text(std::string_view text);
// As records have it; characters without a Latin-1 form become readable substitutes.
[[nodiscard]] std::string record_text(const wxString& text);
[[nodiscard]] wxString wx_path(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path path_of(const wxString& text);

}  // namespace ui::wx

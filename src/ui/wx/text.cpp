#include "ui/wx/text.h"

#include <wx/filename.h>

#include "base/encoding.h"
#include "base/text.h"

namespace ui::wx {

wxString wx_text(std::string_view text) { return wxString::FromUTF8(base::utf8_text(text)); }

std::string record_text(const wxString& text) { return base::latin1_from_utf8(text.utf8_string()); }

#ifdef __WXMSW__
wxString wx_path(const std::filesystem::path& path) { return wxString(path.wstring()); }
std::filesystem::path path_of(const wxString& text) { return text.ToStdWstring(); }
#else
wxString wx_path(const std::filesystem::path& path) { return wxString(path.c_str(), *wxConvFileName); }
std::filesystem::path path_of(const wxString& text) { return std::string(text.fn_str()); }
#endif

}  // namespace ui::wx

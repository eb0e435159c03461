#include "apps/surroundings.h"

#include <cstdlib>

#include "base/system_file.h"
#include "base/text.h"

#ifdef _WIN32
#include <windows.h>
// Needs what the one before declares.
#include <shellapi.h>

#include <memory>

#include "base/win32_text.h"
#endif

namespace apps {
namespace {

#ifdef _WIN32
constexpr char kPathSeparator = ';';

std::string search_path() {
  const wchar_t* const path = _wgetenv(L"PATH");
  return path == nullptr ? std::string() : base::utf8_from_wide(path);
}

// Windows lets a folder stand in quotes.
std::string_view unquoted(std::string_view folder) {
  const bool quoted = folder.size() >= 2 && folder.starts_with('"') && folder.ends_with('"');
  return quoted ? folder.substr(1, folder.size() - 2) : folder;
}
#else
constexpr char kPathSeparator = ':';

std::string search_path() {
  const char* const path = std::getenv("PATH");
  return path == nullptr ? std::string() : path;
}

std::string_view unquoted(std::string_view folder) { return folder; }
#endif

}  // namespace

#ifdef _WIN32
std::vector<std::string> command_line(int, const char* const*) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  std::vector<std::string> result;
  for (int i = 0; i < count; ++i) result.push_back(base::utf8_from_wide(words.get()[i]));
  return result;
}
#else
std::vector<std::string> command_line(int argc, const char* const* argv) { return {argv, argv + argc}; }
#endif

session::Surroundings surroundings(const std::string& program_name) {
  std::error_code error;
  session::Surroundings found{std::filesystem::current_path(error), {}, program_name};
  found.datum_directories.push_back(found.start_directory);
  const std::string path = search_path();
  for (const std::string_view directory : base::split(path, kPathSeparator))
    if (!directory.empty()) found.datum_directories.push_back(base::path_from_text(unquoted(directory)));
  return found;
}

}  // namespace apps

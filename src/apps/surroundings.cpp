#include "apps/surroundings.h"

#include <cstdlib>

#include "base/text.h"

namespace apps {
namespace {

#ifdef _WIN32
constexpr char kPathSeparator = ';';
#else
constexpr char kPathSeparator = ':';
#endif

}  // namespace

session::Surroundings surroundings(const char* program_name) {
  std::error_code error;
  session::Surroundings found{std::filesystem::current_path(error), {}, program_name};
  found.datum_directories.push_back(found.start_directory);
  if (const char* path = std::getenv("PATH"))
    for (const std::string_view directory : base::split(path, kPathSeparator))
      if (!directory.empty()) found.datum_directories.emplace_back(directory);
  return found;
}

}  // namespace apps

// A folder of a test's own, gone with everything in it when the test ends.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

namespace support {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    // Tests run side by side: the first that makes a folder has its name.
    auto number = std::chrono::steady_clock::now().time_since_epoch().count();
    do {
      path_ = std::filesystem::temp_directory_path() / ("pelorix-test-" + std::to_string(number++));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TemporaryFolder() {
    std::error_code error;  // Windows keeps what somebody has open
    std::filesystem::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace support

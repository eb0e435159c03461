// The screen of a Lowrance/Eagle unit, read out of its memory as a picture.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "base/byte_cursor.h"
#include "lowrance/connection.h"
#include "lowrance/unit_info.h"
#include "picture/bitmap.h"

namespace lowrance {

// Where the planes are: answer to Command::ScreenParameters. Offsets behind the leading byte: row length i16 0, not
// used 2, black plane address u32 4 and size i16 8, grey plane address u32 10 and size i16 14.
struct ScreenParameters {
  int row_length = 0;  // pixels
  std::uint32_t black_address = 0;
  int black_size = 0;  // bytes
  std::uint32_t grey_address = 0;
  int grey_size = 0;  // 0 or less: there is none
};
// Nothing when the answer is too short.
[[nodiscard]] std::optional<ScreenParameters> read_screen_parameters(std::span<const std::uint8_t> answer);

// Both planes merged, upright, in the colours of picture::kGreyPalette: 0 black, 2 grey, 3 background. Nothing, and why
// in words, when no picture has such measures.
[[nodiscard]] std::optional<picture::Bitmap> merge_planes(const ScreenParameters& parameters, const LowrUnitInfo& unit,
                                                          std::span<const std::uint8_t> black,
                                                          std::span<const std::uint8_t> grey, std::string& problem);

class LowranceScreen {
 public:
  explicit LowranceScreen(const Connection& connection) : connection_(connection) {}

  // Opens the port, downloads the screen, lets the unit go on and closes the port. Nothing when that failed or the user
  // stopped it, which is told.
  [[nodiscard]] std::optional<picture::Bitmap> download();

 private:
  std::optional<picture::Bitmap> read_screen();
  std::optional<base::Bytes> read_plane(std::uint32_t address, int size, const std::string& name);
  std::nullopt_t refuse(const std::string& why);  // tells it

  Connection connection_;
};

}  // namespace lowrance

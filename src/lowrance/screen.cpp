#include "lowrance/screen.h"

#include <algorithm>
#include <new>
#include <string>
#include <string_view>

#include "base/text.h"
#include "lowrance/memory.h"

namespace lowrance {
namespace {

constexpr std::uint8_t kBlack = 0, kGrey = 2, kBackground = 3;  // in picture::kGreyPalette
constexpr std::uint8_t kAngle270 = 270 & 0xFF;                  // what a byte keeps of it
constexpr std::string_view kAbort = "Operator Abort in screen download";

// Of the picture as it lies in the planes.
struct Measures {
  int width = 0, rows = 0;
};

bool is_side(int length) { return length >= 1 && length <= picture::kLongestSide; }

std::optional<Measures> measure(const ScreenParameters& parameters, const LowrUnitInfo& unit, std::string& problem) {
  if (parameters.row_length < 1) {
    problem = base::format_text("%d pixels are no length for a row", parameters.row_length);
    return std::nullopt;
  }
  const int shown = unit.ScreenHeight + (unit.ScreenType < 2 ? 1 : 0);
  const Measures measures{std::min(shown, parameters.row_length), parameters.black_size * 8 / parameters.row_length};
  if (is_side(measures.width) && is_side(measures.rows)) return measures;
  problem = base::format_text("%d rows of %d pixels are no size for it", measures.rows, measures.width);
  return std::nullopt;
}

// The most significant bit of a byte is its left pixel. What is missing is 0.
bool bit(std::span<const std::uint8_t> plane, std::size_t pixel) {
  return pixel / 8 < plane.size() && (plane[pixel / 8] & 0x80 >> pixel % 8) != 0;
}

void turn_upright(picture::Bitmap& picture, std::uint8_t angle) {
  if (angle == 90) picture.rotate_left();
  if (angle == kAngle270) picture.rotate_clockwise();
  if (angle == 180) {
    picture.rotate_left();
    picture.rotate_left();
  }
}

}  // namespace

std::optional<ScreenParameters> read_screen_parameters(std::span<const std::uint8_t> answer) {
  base::ByteReader in(answer);
  in.skip(1);
  ScreenParameters parameters;
  parameters.row_length = in.i16();
  in.skip(2);
  parameters.black_address = in.u32();
  parameters.black_size = in.i16();
  parameters.grey_address = in.u32();
  parameters.grey_size = in.i16();
  if (!in.ok()) return std::nullopt;
  return parameters;
}

std::optional<picture::Bitmap> merge_planes(const ScreenParameters& parameters, const LowrUnitInfo& unit,
                                            std::span<const std::uint8_t> black, std::span<const std::uint8_t> grey,
                                            std::string& problem) {
  const std::optional<Measures> measures = measure(parameters, unit, problem);
  if (!measures) return std::nullopt;
  picture::Bitmap picture(measures->width, measures->rows, picture::kGreyPalette);
  for (int y = 0; y < measures->rows; ++y) {
    const std::size_t row = static_cast<std::size_t>(y) * static_cast<std::size_t>(parameters.row_length);
    for (int x = 0; x < measures->width; ++x) {
      const std::size_t pixel = row + static_cast<std::size_t>(x);
      picture.set_pixel(x, y, bit(black, pixel) ? kBlack : bit(grey, pixel) ? kGrey : kBackground);
    }
  }
  turn_upright(picture, unit.ScreenRotateAngle);
  return picture;
}

std::optional<picture::Bitmap> LowranceScreen::download() {
  const Conversation conversation(connection_);
  if (!conversation.is_open() || connection_.must_end(kAbort)) return std::nullopt;
  std::optional<picture::Bitmap> picture;
  try {
    picture = read_screen();
  } catch (const std::bad_alloc&) {
    connection_.front_end.write_line(1, "Not enough memory for the screen; the old picture stays.");
  }
  // Whatever became of the picture: the unit must not stay frozen, even if it only seems not to have answered. Whoever
  // has pressed ESC does not wait for its answer.
  connection_.link.sendLowrMessage(Command::UnfreezeScreen, {}, "UnfreezeLowrDisp");
  if (!connection_.flags.UserAbort) connection_.link.GetLowrMessage(true);
  if (picture && connection_.link.damaged_answers() > 0)
    connection_.front_end.write_line(1, "Answers had a wrong checksum: the picture may be wrong.");
  return picture;
}

std::optional<picture::Bitmap> LowranceScreen::read_screen() {
  const auto answer = connection_.link.ask(Command::ScreenParameters, {}, "GetLowrDispParams");
  const std::optional<ScreenParameters> parameters = answer ? read_screen_parameters(*answer) : std::nullopt;
  if (connection_.must_end(kAbort)) return std::nullopt;
  if (!parameters) return refuse("The unit does not tell where its screen is");
  const LowrUnitInfo& unit = connection_.unit();
  std::string problem;
  if (!measure(*parameters, unit, problem)) return refuse("The unit's screen cannot be drawn: " + problem);

  const auto black = read_plane(parameters->black_address, parameters->black_size, "black plane");
  if (!black) return std::nullopt;
  std::optional<base::Bytes> grey = base::Bytes();
  if (unit.ScreenType > 0) grey = read_plane(parameters->grey_address, parameters->grey_size, "grey plane");
  if (!grey) return std::nullopt;
  return merge_planes(*parameters, unit, *black, *grey, problem);
}

// Nothing, which is told, when it did not come whole; empty for a size of 0 or less.
std::optional<base::Bytes> LowranceScreen::read_plane(std::uint32_t address, int size, const std::string& name) {
  const auto count = static_cast<std::size_t>(std::max(size, 0));
  base::Bytes plane = read_memory(connection_, address, count, name);
  if (plane.size() == count) return plane;
  refuse("The " + name + " of the screen did not come whole");
  return std::nullopt;
}

std::nullopt_t LowranceScreen::refuse(const std::string& why) {
  connection_.front_end.write_line(1, why + "; the old picture stays.");
  return std::nullopt;
}

}  // namespace lowrance

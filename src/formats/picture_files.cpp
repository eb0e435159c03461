#include "formats/picture_files.h"

#include <span>
#include <utility>

#include "picture/png.h"

namespace formats {
namespace {

constexpr std::uint64_t kLargestFile = 16'000'000;  // bytes: twice the largest picture

std::optional<picture::Bitmap> bitmap_of(base::TextInput& input, std::string& problem) {
  problem = "it is larger than any picture that is read";
  if (input.size() > kLargestFile) return std::nullopt;
  const std::string_view file = input.rest();
  return picture::Bitmap::read(base::Bytes(file.begin(), file.end()), problem);
}

bool has_picture(const store::FileContext& context) {
  if (context.picture != nullptr && context.picture->has_value()) return true;
  context.front_end.write_line(1, "Save aborted -- No picture of a receiver's screen to save!");
  return false;
}

void write_bytes(std::span<const std::uint8_t> bytes, base::TextOutput& out) {
  out += std::string(bytes.begin(), bytes.end());
}

}  // namespace

int read_bmp(const store::FileContext& context, base::TextInput& input, const std::string& file_name) {
  std::string problem;
  std::optional<picture::Bitmap> read = bitmap_of(input, problem);
  if (!read) {
    context.front_end.message_box("FileReadError", "Error reading file " + file_name);
    context.front_end.write_line(3, "The picture was not read: " + problem + ".");
    return -1;
  }
  if (context.picture != nullptr) *context.picture = std::move(read);
  return 1;
}

bool write_bmp(const store::FileContext& context, const store::OutputOptions&, base::TextOutput& out) {
  if (!has_picture(context)) return false;
  write_bytes((*context.picture)->bytes(), out);
  return true;
}

bool write_png(const store::FileContext& context, const store::OutputOptions&, base::TextOutput& out) {
  if (!has_picture(context)) return false;
  write_bytes(picture::png_file(**context.picture), out);
  return true;
}

}  // namespace formats

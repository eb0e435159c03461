// Files of the receiver's screen: .bmp, of 16 colours without compression, both ways, and .png, which is only written.
#pragma once

#include <string>

#include "base/text_input.h"
#include "base/text_output.h"
#include "store/file_context.h"
#include "store/output_options.h"

namespace formats {

// The file's picture in the place of the context's: 1. Anything but a .bmp file as above: -1, said in a message box
// with the reason on output line 3, and the old picture stays.
[[nodiscard]] int read_bmp(const store::FileContext& context, base::TextInput& input, const std::string& file_name);

// False, said on output line 1, when there is no picture.
[[nodiscard]] bool write_bmp(const store::FileContext& context, const store::OutputOptions& options,
                             base::TextOutput& out);
[[nodiscard]] bool write_png(const store::FileContext& context, const store::OutputOptions& options,
                             base::TextOutput& out);

}  // namespace formats

#include "formats/line_texts.h"

#include <algorithm>

#include "base/text.h"

namespace formats {

std::string LineTexts::cleaned(std::string_view text, std::string_view forbidden) {
  const auto breaks_line = [forbidden](char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F' || forbidden.find(c) != std::string_view::npos;
  };
  std::string result(text);
  if (std::ranges::none_of(text, breaks_line)) return result;
  std::ranges::replace_if(result, breaks_line, '-');
  ++changed_;
  return result;
}

std::string LineTexts::summary() const {
  std::string text;
  if (changed_ > 0)
    text = base::format_text("%d texts hold characters that separate fields or lines: written with '-'", changed_);
  if (left_out_ > 0) {
    if (!text.empty()) text += "; ";
    text += base::format_text("%d items without a position are not written", left_out_);
  }
  return text;
}

void LineTexts::report(base::FrontEnd& front_end) const {
  if (const std::string text = summary(); !text.empty()) front_end.write_line(2, text);
}

}  // namespace formats

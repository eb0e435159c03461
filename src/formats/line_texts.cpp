#include "formats/line_texts.h"

#include <algorithm>

#include "base/remarks.h"

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
  base::Remarks remarks;
  remarks.add(changed_, "texts hold characters that separate fields or lines: written with '-'");
  remarks.add(left_out_, "items without a position are not written");
  return remarks.text();
}

void LineTexts::report(base::FrontEnd& front_end) const {
  if (const std::string text = summary(); !text.empty()) front_end.write_line(2, text);
}

}  // namespace formats

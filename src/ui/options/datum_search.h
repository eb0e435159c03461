// What the choice of a datum offers, and what it shows of each.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

namespace ui {

// All datums, sorted without regard to letter case; a user's datum stands for a built-in one of the same name.
[[nodiscard]] std::vector<std::string> sorted_datums(const geodesy::DatumTable& datums);
// Those that have the typed text in them. Letter case does not count, nor do blanks, underscores and hyphens.
[[nodiscard]] std::vector<std::string> matching_datums(const std::vector<std::string>& names, std::string_view typed);

struct PreviewPlace {
  std::string text;    // a WGS-84 position; empty where there is none yet
  std::string origin;  // in words
};
// The reference position, else the first waypoint in use.
[[nodiscard]] PreviewPlace preview_place(const session::Session& session, geodesy::Notation notation);

struct DatumPreview {
  geodesy::PositionTexts position;  // in the datum
  double metres = 0;                // from there to the place of the same numbers in WGS-84
};
// Nothing, and the problem in words, when the text is no WGS-84 position in any notation.
[[nodiscard]] std::optional<DatumPreview> preview_datum(const session::Session& session, std::string_view datum,
                                                        geodesy::Notation notation, std::string_view position,
                                                        std::string& problem);

}  // namespace ui

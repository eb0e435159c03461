// The lines c1 to c7 below a waypoint line of a native text file: what a Garmin record holds and the columns
// have no room for.
#pragma once

#include <string>
#include <string_view>

#include "base/front_end.h"
#include "store/item_record.h"

namespace textfile {

// Metres as written in files; 1e24 and more, and an empty text, is not known. False, and not known, when the
// text is no number.
[[nodiscard]] bool read_metres(std::string_view text, float& metres);

// Puts what a line that begins with 'c' says into the item. A bad line is reported on output line 1 and
// changes nothing; an unknown one is passed over.
void read_detail_line(std::string_view line, store::ItemRecord& item, base::FrontEnd& front_end);

// Appends the detail lines that the waypoint or route point needs, so that reading them gives the same
// record. No text may hold control characters, and only name and ident a ';'.
void append_detail_lines(std::string& out, const store::ItemRecord& item);

}  // namespace textfile

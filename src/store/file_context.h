// What readers and writers of files work with; all of it outlives them.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "base/clock.h"
#include "base/front_end.h"
#include "geodesy/datum_shift.h"
#include "geodesy/datum_table.h"
#include "picture/bitmap.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace store {

struct FileContext {
  ItemStore& store;
  geodesy::DatumShift& shift;
  const geodesy::DatumTable& datums;
  const Settings& settings;
  base::FrontEnd& front_end;
  const base::Clock& clock;
  std::function<void(std::string_view)> command_options;  // for lines that begin with '!'; may be empty
  std::optional<::picture::Bitmap>* picture = nullptr;    // the receiver's screen; may be missing
};

}  // namespace store

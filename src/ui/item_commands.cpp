#include <algorithm>
#include <array>
#include <new>

#include "base/text.h"
#include "ui/actions.h"
#include "ui/stored_items.h"

namespace ui {
namespace {

using session::Session;

// The menu entries that open a list, or a dialog for a new item, and what they say when there is nothing to list.
struct KindRow {
  int id;
  char kind;
  std::string_view nothing = {};
};
constexpr std::array kLists{
    KindRow{40183, 'W', "No waypoints loaded!"},
    KindRow{40189, 'R', "No routes loaded!"},
    KindRow{40148, 'T', "No tracks loaded!"},
    KindRow{40141, 'I', "No Events (LEI Icons) loaded!"},
    KindRow{40300, 'P', "No proximity waypoints loaded!"},
};
constexpr std::array kCreations{KindRow{40179, 'W'}, KindRow{40142, 'I'}, KindRow{40301, 'P'}};

bool must_have_picture(const Session& session) {
  if (session.picture) return true;
  session.front_end.write_line(1, "There is no picture of a receiver's screen.");
  return false;
}

constexpr int kExactDuplicates = 40134;
constexpr int kSameNames = 40135;

}  // namespace

bool clear(const CommandContext& context, int id) {
  struct Row {
    int id;
    std::string_view kinds;  // of the lists that close
    void (store::ItemStore::*clear)();
  };
  static constexpr std::array kRows{
      Row{40005, "WRTIP", &store::ItemStore::clear_all}, Row{40006, "WR", &store::ItemStore::clear_waypoints},
      Row{40007, "T", &store::ItemStore::clear_tracks},  Row{40008, "R", &store::ItemStore::clear_routes},
      Row{40009, "I", &store::ItemStore::clear_events},  Row{40010, "P", &store::ItemStore::clear_proximity},
      Row{40011, "", &store::ItemStore::clear_almanac},
  };
  const auto* row = std::ranges::find(kRows, id, &Row::id);
  if (row == kRows.end()) return false;
  for (const char kind : row->kinds) context.windows.close_list(kind);
  (context.session.items.*row->clear)();
  return true;
}

bool list(const CommandContext& context, int id) {
  const auto* row = std::ranges::find(kLists, id, &KindRow::id);
  if (row == kLists.end()) return false;
  if (count_of(context.session.items, row->kind) > 0) return context.windows.show_list(row->kind);
  context.session.front_end.write_line(9, row->nothing);
  return false;
}

bool create_item(const CommandContext& context, int id) {
  const auto* row = std::ranges::find(kCreations, id, &KindRow::id);
  return row != kCreations.end() && context.windows.create_item(row->kind);
}

bool create_dummy_route(const CommandContext& context, int) {
  store::ItemStore& items = context.session.items;
  const std::uint32_t number = items.free_route(0);
  items.start_route(number, std::to_string(number), "DUMMY ROUTE");
  return items.push_route(true) == 0;
}

bool create_track(const CommandContext& context, int) {
  store::ItemStore& items = context.session.items;
  items.set_input_time_offset(0);
  items.start_item();
  items.start_segment();
  items.CurrentItem.time = {static_cast<std::uint32_t>(context.session.clock.unix_seconds() - store::kGarminEpochUnix)};
  return items.push_track() == 0;
}

bool remove_duplicates(const CommandContext& context, int id) {
  store::ItemStore& items = context.session.items;
  int removed = 0;
  if (id != kSameNames) removed += items.remove_duplicates(true);
  if (id != kExactDuplicates) removed += items.remove_duplicates(false);
  context.session.front_end.write_line(
      3, base::format_text("%d duplicate waypoint%s removed", removed, removed == 1 ? "" : "s"));
  return true;
}

bool show_picture(const CommandContext& context, int) {
  return must_have_picture(context.session) && context.windows.show_picture();
}

bool rotate_bitmap_left(const CommandContext& context, int) {
  Session& session = context.session;
  if (!must_have_picture(session)) return false;
  try {
    session.picture->rotate_left();
    return true;
  } catch (const std::bad_alloc&) {
    session.front_end.write_line(1, "Not enough memory");
    return false;
  }
}

bool stretch_bitmap(const CommandContext& context, int) {
  context.windows.stretch_picture(!context.windows.picture_is_stretched());
  return true;
}

bool bitmap_is_stretched(const CommandContext& context, int) { return context.windows.picture_is_stretched(); }

bool copy_bitmap(const CommandContext& context, int) {
  return must_have_picture(context.session) && context.windows.copy_picture();
}

bool send_to_street_atlas(const CommandContext& context, int) {
  context.session.front_end.message_box("Street Atlas",
                                        "Sending to a running Street Atlas is not part of this version of Pelorix.");
  return false;
}

}  // namespace ui

// What the commands of the table do.
#pragma once

#include "ui/commands.h"

namespace ui {

// Between receiver and stores (transfer_commands.cpp).
bool download(const CommandContext& context, int id);
bool upload(const CommandContext& context, int id);
// Uploads what is selected.
bool send_selected(const CommandContext& context, int id);
bool get_gps_id(const CommandContext& context, int id);
bool get_voltages(const CommandContext& context, int id);
bool get_time(const CommandContext& context, int id);
bool get_position(const CommandContext& context, int id);
bool get_supported_protocols(const CommandContext& context, int id);
bool power_off(const CommandContext& context, int id);
bool get_display_bitmap(const CommandContext& context, int id);
bool find_receivers(const CommandContext& context, int id);
bool choose_family(const CommandContext& context, int id);
bool is_chosen_family(const CommandContext& context, int id);
// False after a text on line 1.
[[nodiscard]] bool must_have_family(const session::Session& session);

// Files and the configuration (file_commands.cpp).
bool open_input_files(const CommandContext& context, int id);
bool read_files(const CommandContext& context, const std::vector<std::filesystem::path>& files);
bool save_as(const CommandContext& context, int id);
bool save_igc(const CommandContext& context, int id);
bool save_configuration(const CommandContext& context, int id);
// The same for windows that are open while a command runs; the place is that of the main window, if it has one now.
bool write_configuration(session::Session& session, const std::optional<store::WindowRectangle>& place);
bool save_datum_list(const CommandContext& context, int id);
bool name_debug_file(const CommandContext& context, int id);
bool choose_debug_format(const CommandContext& context, int id);
bool is_debug_format(const CommandContext& context, int id);
bool close_debug_file(const CommandContext& context, int id);

// Items, and what shows them (item_commands.cpp).
bool clear(const CommandContext& context, int id);
bool list(const CommandContext& context, int id);
bool create_item(const CommandContext& context, int id);
bool create_dummy_route(const CommandContext& context, int id);
bool create_track(const CommandContext& context, int id);
bool remove_duplicates(const CommandContext& context, int id);
bool show_picture(const CommandContext& context, int id);
bool rotate_bitmap_left(const CommandContext& context, int id);
bool stretch_bitmap(const CommandContext& context, int id);
bool bitmap_is_stretched(const CommandContext& context, int id);
bool copy_bitmap(const CommandContext& context, int id);
bool send_to_street_atlas(const CommandContext& context, int id);

}  // namespace ui

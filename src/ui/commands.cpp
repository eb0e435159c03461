#include "ui/commands.h"

#include <algorithm>
#include <array>

#include "ui/actions.h"

namespace ui {
namespace {

using session::Session;

constexpr Refusal kNoEvents{store::Family::Garmin, "Garmin receivers have no events."};
constexpr Refusal kNoTrails{store::Family::Garmin, "Garmin receivers have no plot trails."};
constexpr Refusal kNoProximity{store::Family::Lowrance, "Lowrance/Eagle units have no proximity waypoints."};
constexpr Refusal kNoAlmanac{store::Family::Lowrance, "Lowrance/Eagle units have no almanac."};
constexpr Refusal kCannotBeAsked{store::Family::Lowrance, "Lowrance/Eagle units cannot be asked for this."};

// When a command makes sense, beyond what the family can do.
bool has_waypoints(const Session& session) { return session.items.waypoint_count() > 0; }
bool has_two_waypoints(const Session& session) { return session.items.waypoint_count() > 1; }
bool has_routes(const Session& session) { return session.items.route_count() > 0; }
bool has_tracks(const Session& session) { return session.items.track_point_count() > 0; }
bool has_events(const Session& session) { return session.items.event_count() > 0; }
bool has_proximity(const Session& session) { return session.items.proximity_count() > 0; }
bool has_almanac(const Session& session) { return !session.items.almanac().empty(); }
bool has_items(const Session& session) { return !session.items.empty(); }
bool has_room_for_waypoint(const Session& session) { return session.items.waypoint_count() < store::kWaypointCapacity; }
bool has_room_for_event(const Session& session) { return session.items.event_count() < store::kEventCapacity; }
bool has_room_for_proximity(const Session& session) {
  return session.items.proximity_count() < store::kProximityCapacity;
}
bool has_anything(const Session& session) { return has_items(session) || has_almanac(session); }
bool has_picture(const Session& session) { return session.picture.has_value(); }
bool can_be_saved(const Session& session) { return has_anything(session) || has_picture(session); }
bool has_debug_file(const Session& session) { return session.debug_log.is_open(); }
bool has_no_debug_file(const Session& session) { return !session.debug_log.is_open(); }

// The common hints.
constexpr std::string_view kReceive = "Download from the receiver; ESC aborts";
constexpr std::string_view kSend = "Upload to the receiver; ESC aborts";
constexpr std::string_view kAsk = "Ask the receiver";
constexpr std::string_view kList = "Show the items in a list, to be looked through, selected and edited";
constexpr std::string_view kStreetAtlas = "Send to a running Street Atlas";

constexpr int kGetPosition = 40050;

constexpr std::array kCommands{
    // Files.
    Command{80, "&Open\tCtrl+O", "", open_input_files, "Read one or more files"},
    Command{40058,
            "&Save As\tCtrl+S",
            "",
            save_as,
            "Save what is loaded, or the display bitmap, to a file",
            {},
            can_be_saved},
    Command{
        40102, "Save &IGC Track File\tCtrl+I", "", save_igc, "Save the tracks as a glider's IGC file", {}, has_tracks},
    Command{kSaveConfiguration, "Save Configuration\tCtrl+F", "", save_configuration,
            "Write all settings to pelorix.ini"},
    Command{40005,
            "&All",
            "",
            clear,
            "Clear loaded waypoints, tracks, routes, events and proximity waypoints",
            {},
            has_anything},
    Command{40006, "&Waypoints", "", clear, "Clear loaded waypoints", {}, has_waypoints},
    Command{40007, "&Tracks", "", clear, "Clear loaded tracks", {}, has_tracks},
    Command{40008, "&Routes", "", clear, "Clear loaded routes", {}, has_routes},
    Command{40009, "&Events (LEI Icons)", "", clear, "Clear loaded LEI events (icons)", {}, has_events},
    Command{40010, "&Proximity", "", clear, "Clear loaded proximity waypoints", {}, has_proximity},
    Command{40011, "Al&manac", "", clear, "Clear Almanac", {}, has_almanac},
    Command{40182, "Con&figuration", "",
            [](const CommandContext& context, int) { return context.windows.show_options(); },
            "Look at the settings and change them"},
    Command{40015, "&Datum", "", [](const CommandContext& context, int) { return context.windows.choose_datum(); },
            "Choose the datum of positions that are shown and saved"},
    Command{100,
            "Serial Debug &Name",
            "",
            name_debug_file,
            "Name the file that logs all serial traffic, and start it",
            {},
            has_no_debug_file},
    Command{40054,
            "&Hex",
            "",
            choose_debug_format,
            "The next debug file shows bytes as hexadecimal numbers",
            {},
            nullptr,
            is_debug_format},
    Command{40055,
            "&Decimal",
            "",
            choose_debug_format,
            "The next debug file shows bytes as decimal numbers",
            {},
            nullptr,
            is_debug_format},
    Command{99, "&Close debug file", "", close_debug_file, "End the serial debug file", {}, has_debug_file},
    Command{40105, "&Save internal datum list", "", save_datum_list,
            "Save the internal datum list to a file for user inspection"},
    Command{kExit, "&Exit\tAlt+F4", "",
            [](const CommandContext& context, int) {
              context.windows.close();
              return true;
            },
            "Leave the program"},
    // The receiver.
    Command{40310, "Gar&min", "", choose_family, "The receiver is a Garmin", {}, nullptr, is_chosen_family},
    Command{40311,
            "&Lowrance/Eagle",
            "",
            choose_family,
            "The receiver is a Lowrance or an Eagle",
            {},
            nullptr,
            is_chosen_family},
    Command{40330, "&Find Receivers", "", find_receivers, "Try every port of this machine; ESC aborts"},
    Command{40028, "&All", "download-all", download, kReceive},
    Command{40029, "&Waypoints", "download-waypoints", download, kReceive},
    Command{40030, "&Tracks (Garmin)", "download-tracks", download, kReceive},
    Command{40032, "Plot Trail &1", "download-trail1", download, kReceive, kNoTrails},
    Command{40033, "Plot Trail &2", "download-trail2", download, kReceive, kNoTrails},
    Command{40185, "Plot Trail &3", "download-trail3", download, kReceive, kNoTrails},
    Command{40186, "Plot Trail &4", "download-trail4", download, kReceive, kNoTrails},
    Command{40034, "&Routes", "download-routes", download, kReceive},
    Command{40035, "&Events (LEI Icons)", "download-events", download, kReceive, kNoEvents},
    Command{40036, "&Proximity Waypoints", "download-proximity", download, kReceive, kNoProximity},
    Command{40037, "Al&manac", "download-almanac", download, kReceive, kNoAlmanac},
    Command{40038, "&All", "upload-all", upload, kSend, {}, has_items},
    Command{40039, "&Waypoints", "upload-waypoints", upload, kSend, {}, has_waypoints},
    Command{40040, "&Tracks (Garmin)", "upload-tracks", upload, kSend, {}, has_tracks},
    Command{40042, "Plot Trail &1", "upload-trail1", upload, kSend, kNoTrails, has_tracks},
    Command{40043, "Plot Trail &2", "upload-trail2", upload, kSend, kNoTrails, has_tracks},
    Command{40187, "Plot Trail &3", "upload-trail3", upload, kSend, kNoTrails, has_tracks},
    Command{40188, "Plot Trail &4", "upload-trail4", upload, kSend, kNoTrails, has_tracks},
    Command{40150, "Plot Trail A&ll", "upload-trails", upload, kSend, {}, has_tracks},
    Command{40044, "&Routes", "upload-routes", upload, kSend, {}, has_routes},
    Command{40045, "&Proximity Waypoints", "upload-proximity", upload, kSend, kNoProximity, has_proximity},
    Command{40046, "Al&manac", "upload-almanac", upload, kSend, kNoAlmanac, has_almanac},
    Command{40059, "&Events (LEI Icons)", "upload-events", upload, kSend, kNoEvents, has_events},
    Command{40116, "&Upload", "", upload, kSend, {}, has_waypoints},
    Command{40117, "&Download", "", download, kReceive},
    Command{40118, "&Upload", "", upload, kSend, {}, has_routes},
    Command{40119, "&Download", "", download, kReceive},
    Command{40156, "&Upload", "", upload, kSend, {}, has_tracks},
    Command{40159, "&Download", "", download, kReceive, kNoEvents},
    Command{40160, "&Upload", "", upload, kSend, kNoEvents, has_events},
    Command{40047, "&Get GPS ID", "identify", get_gps_id, kAsk},
    Command{40048, "Get &Voltage", "voltage", get_voltages, kAsk, kCannotBeAsked},
    Command{40049, "Get &Time (UTC)", "time", get_time, kAsk, kCannotBeAsked},
    Command{kGetPosition, "Get &Position", "position", get_position, kAsk, kCannotBeAsked},
    Command{40051, "Get &Supported Protocols", "protocols", get_supported_protocols, kAsk, kCannotBeAsked},
    Command{40053, "Turn &Off GPS", "poweroff", power_off, "Turn the receiver off, after a question", kCannotBeAsked},
    Command{40052, "Get && Show &Display Bitmap\tCtrl+D", "screen", get_display_bitmap,
            "Download the picture on the receiver's display; ESC aborts"},
    // The display bitmap.
    Command{40184,
            "&Show Display Bitmap",
            "",
            show_picture,
            "Show the display bitmap that was loaded last",
            {},
            has_picture},
    Command{kRotateLeft,
            "&Rotate bitmap Left\tCtrl+L",
            "rotate-left",
            rotate_bitmap_left,
            "Turn the display bitmap to the left",
            {},
            has_picture},
    Command{kStretchBitmap,
            "&Stretch Bitmap\tCtrl+Z",
            "",
            stretch_bitmap,
            "Let the display bitmap fill its window",
            {},
            nullptr,
            bitmap_is_stretched},
    Command{kCopyBitmap,
            "Copy Bitmap to Clipboard\tCtrl-C",
            "",
            copy_bitmap,
            "Put the display bitmap on the clipboard",
            {},
            has_picture},
    // Items.
    Command{40183, "&List", "", list, kList},
    Command{40189, "&List", "", list, kList},
    Command{40148, "&List", "", list, kList},
    Command{40141, "&List", "", list, kList},
    Command{40300, "&List", "", list, kList},
    Command{40179, "&Create", "", create_item, "Enter a new waypoint", {}, has_room_for_waypoint},
    Command{40190, "&Create Dummy Route", "", create_dummy_route, "Add a route without points"},
    Command{40147, "&Create a Track", "", create_track, "Begin a new track, now and nowhere"},
    Command{40142, "&Create an Event", "", create_item, "Enter a new event", {}, has_room_for_event},
    Command{40301,
            "&Create a Proximity Waypoint",
            "",
            create_item,
            "Enter a new proximity waypoint",
            {},
            has_room_for_proximity},
    Command{40134,
            "Remove Exact Duplicate Waypoints",
            "",
            remove_duplicates,
            "Delete waypoints of the same name at the same place",
            {},
            has_two_waypoints},
    Command{40135,
            "Remove Duplicate Waypoints (names)",
            "",
            remove_duplicates,
            "Delete waypoints of the same name",
            {},
            has_two_waypoints},
    Command{40136,
            "Remove Duplicates [Exact then 'names']",
            "",
            remove_duplicates,
            "Delete one after the other",
            {},
            has_two_waypoints},
    Command{40320, "&Map\tCtrl+M", "", [](const CommandContext& context, int) { return context.windows.show_map(); },
            "Draw what is loaded on a map"},
    Command{40321,
            "&Profile\tCtrl+P",
            "",
            [](const CommandContext& context, int) { return context.windows.show_profile(); },
            "Draw altitude and speed of a track",
            {},
            has_tracks},
    // Street Atlas.
    Command{40094, "Send &Waypoints to SA\tCtrl+W", "", send_to_street_atlas, kStreetAtlas},
    Command{40093, "Send &Routes to SA\tCtrl+R", "", send_to_street_atlas, kStreetAtlas},
    Command{40096, "Send Tracks to &SA", "", send_to_street_atlas, kStreetAtlas},
    Command{40097, "&Send Events to SA", "", send_to_street_atlas, kStreetAtlas},
    Command{40095, "&All\tCtrl+A", "", send_to_street_atlas, kStreetAtlas},
    // Help.
    Command{kManual, "Help &Contents", "",
            [](const CommandContext& context, int) { return context.windows.show_manual(); }, "Open the manual"},
    Command{40207, "&About", "",
            [](const CommandContext& context, int) {
              context.windows.show_about();
              return true;
            },
            "Version and licence"},
};

constexpr bool ids_are_unique(std::span<const Command> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (std::size_t j = i + 1; j < rows.size(); ++j)
      if (rows[i].id == rows[j].id) return false;
  return true;
}
static_assert(ids_are_unique(kCommands));

constexpr std::array kAccelerators{
    Accelerator{'A', 40095},
    Accelerator{'C', kCopyBitmap},
    Accelerator{'D', 40052},
    // Deliberate : tracks, as Ctrl+T, and not the events.
    Accelerator{'E', 40096},
    Accelerator{'F', 40107},
    Accelerator{'I', 40102},
    Accelerator{'L', kRotateLeft},
    Accelerator{'O', 80},
    Accelerator{'R', 40093},
    Accelerator{'S', 40058},
    Accelerator{'T', 40096},
    Accelerator{'W', 40094},
    Accelerator{'Z', kStretchBitmap},
    Accelerator{'M', 40320},
    Accelerator{'P', 40321},
};

// What uploads one kind.
struct UploadRow {
  char kind;
  int id;
};
constexpr std::array kUploads{UploadRow{'W', 40039}, UploadRow{'R', 40044}, UploadRow{'T', 40150},
                              UploadRow{'P', 40045}, UploadRow{'I', 40059}};

// What every command does before and after its own.
template <typename Action>
bool between_blank_and_title(Session& session, Display& display, std::string_view why_not, Action action) {
  display.clear();
  if (!why_not.empty()) display.write_line(1, why_not);
  const bool done = why_not.empty() && action();
  session.keep_port_speed();
  display.set_status(3, " ");
  return done;
}

}  // namespace

std::span<const Command> commands() { return kCommands; }

const Command* find_command(int id) {
  const auto* row = std::ranges::find(kCommands, id, &Command::id);
  return row == kCommands.end() ? nullptr : row;
}

std::span<const Accelerator> accelerators() { return kAccelerators; }

std::string_view refusal(const Session& session, int id) {
  const Command* row = find_command(id);
  const bool refused = row != nullptr && row->refusal.family == session.settings.GPS;
  return refused ? row->refusal.why : std::string_view();
}

bool is_offered(const Session& session, const Command& command) {
  return refusal(session, command.id).empty() && (command.makes_sense == nullptr || command.makes_sense(session));
}

bool run_command(Session& session, Display& display, Windows& windows, int id) {
  const Command* row = find_command(id);
  if (row == nullptr) return false;
  const bool done = between_blank_and_title(session, display, refusal(session, id), [&] {
    return row->action({session, windows}, id);
  });
  // A saved configuration stands in the title until something else does.
  if (id != kSaveConfiguration) display.refresh_title();
  return done;
}

bool run_command(Session& session, Display& display, int id) {
  Windows none;
  return run_command(session, display, none, id);
}

bool upload_selected(Session& session, Display& display, Windows& windows, char kind) {
  const auto* row = std::ranges::find(kUploads, kind, &UploadRow::kind);
  if (row == kUploads.end()) return false;
  // Garmin receivers know tracks, but no plot trails.
  const bool garmin_tracks = kind == 'T' && session.settings.GPS == store::Family::Garmin;
  const int id = garmin_tracks ? 40040 : row->id;
  const bool done = between_blank_and_title(session, display, refusal(session, id), [&] {
    return send_selected({session, windows}, id);
  });
  display.refresh_title();
  return done;
}

bool open_files(Session& session, Display& display, Windows& windows, const std::vector<std::filesystem::path>& files) {
  const bool done = between_blank_and_title(session, display, "", [&] {
    return read_files({session, windows}, files);
  });
  display.refresh_title();
  return done;
}

bool follow_position(Session& session, Display& display, const garmin::GarminCommands::LineSink& sink) {
  display.clear();
  const std::string_view why_not = refusal(session, kGetPosition);
  if (!why_not.empty()) display.write_line(1, why_not);
  return why_not.empty() && must_have_family(session) && session.follow_position(sink);
}

int command_id(std::string_view word) {
  const auto* row = std::ranges::find(kCommands, word, &Command::word);
  return word.empty() || row == kCommands.end() ? 0 : row->id;
}

}  // namespace ui

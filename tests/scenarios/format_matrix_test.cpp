// What each file format keeps of each property of each kind of items: its row says so, docs/formats/matrix.md shows
// it, and here every cell is proved by writing a store with and without the property, and reading it back.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <map>

#include "session/file_formats.h"
#include "tests/support/format_fixture.h"

namespace {

using store::ItemRecord;
using support::FileWorld;
using textfile::FileFormat;

struct PropertyRow {
  store::Properties property;
  std::string_view name;
  void (*remove)(ItemRecord& item);
  bool (*same)(const ItemRecord& left, const ItemRecord& right);
};
#define SAME(field) [](const ItemRecord& left, const ItemRecord& right) { return left.field == right.field; }
#define CLEAR(field) [](ItemRecord& item) { item.field = decltype(item.field){}; }
const std::vector<PropertyRow> kProperties{
    {store::kKeepsNames, "names", CLEAR(ident), SAME(ident)},
    {store::kKeepsTitles, "route and track names",
     [](ItemRecord& item) {
       if (item.kind == 'R') {
         item.comment = "";
       } else {
         item.ident = "";
       }
     },
     [](const ItemRecord& left, const ItemRecord& right) {
       return left.kind == 'R' ? left.comment == right.comment : left.ident == right.ident;
     }},
    {store::kKeepsTimes, "times", CLEAR(time), SAME(time)},
    {store::kKeepsAltitudes, "altitudes", [](ItemRecord& item) { item.altitude = store::kNotKnown; }, SAME(altitude)},
    {store::kKeepsDepths, "depths", [](ItemRecord& item) { item.depth = store::kNotKnown; }, SAME(depth)},
    {store::kKeepsDistances, "alarm distances", CLEAR(proximity_distance), SAME(proximity_distance)},
    {store::kKeepsSegments, "segments", CLEAR(segment_flag),
     [](const ItemRecord& left, const ItemRecord& right) {
       return (left.segment_flag != 0) == (right.segment_flag != 0);
     }},
    {store::kKeepsComments, "comments", CLEAR(comment), SAME(comment)},
    {store::kKeepsSymbols, "symbols", [](ItemRecord& item) { item.symbol = 18; }, SAME(symbol)},
    {store::kKeepsAddresses, "addresses, classes",
     [](ItemRecord& item) {
       item.waypoint_class = store::kClassNotSet;
       item.subclass = {};
       item.facility = item.city = item.address = item.cross_road = item.state = item.country = item.name = "";
     },
     [](const ItemRecord& left, const ItemRecord& right) {
       return left.waypoint_class == right.waypoint_class && left.subclass == right.subclass &&
              left.facility == right.facility && left.city == right.city && left.address == right.address &&
              left.cross_road == right.cross_road;
     }},
    {store::kKeepsLinks, "route links", CLEAR(has_route_link),
     [](const ItemRecord& left, const ItemRecord& right) {
       return left.has_route_link == right.has_route_link && left.link_class == right.link_class &&
              left.link_subclass == right.link_subclass && left.route_link_ident == right.route_link_ident;
     }},
    {store::kKeepsNumbers, "route numbers", CLEAR(route_number), SAME(route_number)},
    {store::kKeepsDisplay, "display modes", [](ItemRecord& item) { item.display_mode = 5; }, SAME(display_mode)},
    {store::kKeepsColours, "colours", CLEAR(colour), SAME(colour)},
    {store::kKeepsLines, "track colours and styles", CLEAR(colour),
     [](const ItemRecord& left, const ItemRecord& right) {
       return left.colour == right.colour && left.track_style == right.track_style;
     }},
};

constexpr store::Properties kOfPoints = store::kKeepsItems | store::kKeepsNames | store::kKeepsTimes |
                                        store::kKeepsAltitudes | store::kKeepsDepths | store::kKeepsDistances |
                                        store::kKeepsComments | store::kKeepsSymbols | store::kKeepsAddresses |
                                        store::kKeepsDisplay | store::kKeepsColours;
struct Kind {
  char letter;
  std::string_view name;
  store::Properties store::Kept::*kept;
  store::Properties has;  // the properties that such items can have
};
constexpr std::array kKinds{
    Kind{'W', "waypoints", &store::Kept::waypoints, kOfPoints},
    Kind{'R', "routes", &store::Kept::routes,
         kOfPoints | store::kKeepsTitles | store::kKeepsNumbers | store::kKeepsLinks},
    Kind{'T', "tracks", &store::Kept::tracks,
         store::kKeepsItems | store::kKeepsTitles | store::kKeepsTimes | store::kKeepsAltitudes | store::kKeepsDepths |
             store::kKeepsSegments | store::kKeepsLines},
    Kind{'P', "proximity waypoints", &store::Kept::proximity, kOfPoints},
    Kind{'I', "events", &store::Kept::events,
         store::kKeepsItems | store::kKeepsNames | store::kKeepsTimes | store::kKeepsComments | store::kKeepsSymbols |
             store::kKeepsDisplay | store::kKeepsColours},
};

// One column of the table.
struct Column {
  std::string_view title;
  std::string_view extension;
  std::function<void(store::Settings&, store::OutputOptions&)> choose = [](auto&, auto&) {};
};
const std::vector<Column> kColumns{
    {"native 2", ".TXT"},
    {"native 1", ".TXT", [](auto&, store::OutputOptions& options) { options.version = 1; }},
    {".wpt", ".WPT"},
    {".rte", ".RTE"},
    {".plt", ".PLT"},
    {".evt", ".EVT"},
    {".gpx", ".GPX"},
    {".csv", ".CSV"},
    {".fwp", ".FWP"},
    {".alm", ".ALM"},
    {".kml", ".KML"},
    {".igc", ".IGC"},
    {".igc, FAI form", ".IGC", [](store::Settings& settings, auto&) { settings.IGCStandard = 1; }},
};

class FormatMatrix : public testing::Test {
 protected:
  // Two items with everything: a route has two points, a track two segments, the second of which is a named log.
  static std::vector<ItemRecord> full_items(char letter) {
    ItemRecord item = store::blank_item();
    item.kind = letter == 'R' ? 'W' : letter;
    item.position = {54.325, 10.145};
    item.time = {391867200};
    item.symbol_mode = 3;
    item.proximity_distance = letter == 'W' || letter == 'R' ? 250.0F : 0.0F;
    if (letter != 'T') item.colour = 3;
    if (letter != 'I') {
      item.altitude = 12.5F;
      item.depth = 3.5F;
    }
    if (letter != 'T') {
      item.ident = "HARBOR";
      item.comment = "A fine place";
      item.symbol = 8246;
      item.display_mode = 3;
    }
    if (letter == 'P') item.proximity_distance = 250.0F;
    if (letter == 'W' || letter == 'R' || letter == 'P') {
      item.detail_kind = store::kFullDetails;
      item.record_type = 108;
      item.waypoint_class = 0x40;
      item.subclass.fill(0xAB);
      item.facility = "Light";
      item.city = "Kiel";
      item.address = "Quay 1";
      item.cross_road = "Quay and River";
    }
    ItemRecord second = item;
    second.position = {54.330, 10.150};
    second.time.seconds += 60;
    if (letter != 'T') second.ident = "QUAY";
    if (letter == 'T') {
      second.segment_flag = store::kStartsNamedTrack;
      second.ident = "RIVER";
      second.colour = 2;
      second.track_style = 4;
    }
    if (letter == 'R') {
      item.has_route_link = 1;
      item.link_class = 0x0102;
      item.link_subclass.fill(0xCD);
      item.route_link_ident = "OVER THE HILL";
    }
    if (letter != 'R') return {item, second};
    ItemRecord header = store::blank_item();
    header.kind = 'R';
    header.route_number = 7;
    header.comment = "ROUND THE BAY";
    return {header, item, second};
  }

  static void push(store::ItemStore& items, const ItemRecord& item) {
    if (item.kind == 'R') {
      items.start_route(item.route_number, "07", item.comment);
      ASSERT_EQ(items.push_route(true), 0);
      return;
    }
    if (item.segment_flag == store::kStartsNamedTrack)
      items.start_track_log(item.ident, store::kColourNames[item.colour], item.track_style);
    items.CurrentItem = item;
    const bool in_route = items.route_count() > 0;
    const int refused = item.kind == 'T'   ? items.push_track()
                        : item.kind == 'I' ? items.push_event()
                        : item.kind == 'P' ? items.push_proximity()
                        : in_route         ? items.push_route(true)
                                           : items.push_waypoint(0);
    ASSERT_EQ(refused, 0);
    if (in_route && item.has_route_link != 0) {
      ASSERT_TRUE(items.set_route_link(item.link_class, item.link_subclass, item.route_link_ident));
    }
  }
  // The file of these records alone: points of a route are waypoints too, which is not asked here.
  static std::string written(const Column& column, char letter, const std::vector<ItemRecord>& records) {
    FileWorld world;
    store::OutputOptions options;
    options.waypoints = letter == 'W';
    column.choose(world.settings, options);
    for (const ItemRecord& record : records) push(world.store, record);
    std::string text;
    base::TextOutput out([&](std::string_view block) { text += block; });
    (void)format_of(column).write(world.context, options, out);
    out.flush();
    return text;
  }
  static std::vector<ItemRecord> records_of(const store::ItemStore& items, char letter) {
    const store::ItemStore::Contents& all = items.contents();
    if (letter == 'R') {
      for (const store::Route& route : all.routes) {
        if (!route.header) continue;
        std::vector<ItemRecord> records{*route.header};
        records.insert(records.end(), route.points.begin(), route.points.end());
        return records;
      }
      return {};
    }
    const store::PackedItems& list = letter == 'W'   ? all.waypoints
                                     : letter == 'T' ? all.track_points
                                     : letter == 'P' ? all.proximity
                                                     : all.events;
    return {list.begin(), list.end()};
  }
  static std::vector<ItemRecord> read_back(const Column& column, const std::string& text, char letter) {
    FileWorld world;
    base::TextInput input(text);
    (void)format_of(column).read(world.context, input, "matrix");
    return records_of(world.store, letter);
  }
  static const FileFormat& format_of(const Column& column) {
    for (const FileFormat& format : session::file_formats())
      if (format.output_extension == column.extension) return format;
    throw std::logic_error("no such format");
  }
  static store::Kept kept_by(const Column& column) {
    const FileFormat& format = format_of(column);
    store::Settings settings;
    store::OutputOptions options;
    column.choose(settings, options);
    return format.keeps_by_choice == nullptr ? format.keeps : format.keeps_by_choice(settings, options);
  }
  // The record of the kind that shows the property.
  static bool shows(const PropertyRow& row, const ItemRecord& item) {
    const bool of_header = row.property == store::kKeepsTitles || row.property == store::kKeepsNumbers;
    if (item.kind == 'R') return of_header;
    if (item.kind == 'T' && row.property != store::kKeepsTimes && row.property != store::kKeepsAltitudes &&
        row.property != store::kKeepsDepths)
      return item.segment_flag == store::kStartsNamedTrack;
    return !of_header || item.kind == 'T';
  }
};

TEST_F(FormatMatrix, EveryCellIsTrue) {
  for (const Column& column : kColumns) {
    const FileFormat& format = format_of(column);
    for (const Kind& kind : kKinds) {
      const store::Properties kept = kept_by(column).*kind.kept;
      const std::vector<ItemRecord> full = full_items(kind.letter);
      const std::string whole = written(column, kind.letter, full);
      const std::vector<ItemRecord> read =
          format.read == nullptr ? std::vector<ItemRecord>() : read_back(column, whole, kind.letter);
      SCOPED_TRACE(std::string(column.title) + ", " + std::string(kind.name));
      const bool keeps_items = (kept & store::kKeepsItems) != 0;
      if (format.read != nullptr) {
        ASSERT_EQ(read.size(), keeps_items ? full.size() : 0) << whole;
      } else {
        EXPECT_EQ(keeps_items, whole != written(column, kind.letter, {}));
      }
      EXPECT_EQ(kept & ~kind.has, 0u) << "a property that such items do not have";
      if (!keeps_items) continue;
      for (const PropertyRow& row : kProperties) {
        if ((kind.has & row.property) == 0) continue;
        const bool says_kept = (kept & row.property) != 0;
        std::vector<ItemRecord> lacking = full;
        for (ItemRecord& item : lacking)
          if (shows(row, item)) row.remove(item);
        if (format.read == nullptr || says_kept) {
          EXPECT_EQ(says_kept, written(column, kind.letter, lacking) != whole) << row.name << "\n" << whole;
        }
        if (format.read == nullptr) continue;
        bool all_same = true;
        for (std::size_t i = 0; i < full.size(); ++i)
          if (shows(row, full[i]) && !row.same(read[i], full[i])) all_same = false;
        EXPECT_EQ(says_kept, all_same) << row.name << "\n" << whole;
      }
    }
  }
}

TEST_F(FormatMatrix, TheDocumentShowsIt) {
  std::string table = "| |";
  for (const Column& column : kColumns) table += " " + std::string(column.title) + " |";
  table += "\n|---|";
  for (std::size_t i = 0; i < kColumns.size(); ++i) table += "---|";
  const auto add_row = [&](const std::string& name, store::Properties store::Kept::*kept, store::Properties property) {
    table += "\n| " + name + " |";
    for (const Column& column : kColumns) {
      const bool is_kept = (kept_by(column).*kept & property) != 0;
      table += !is_kept ? " |" : format_of(column).read == nullptr ? " w |" : " x |";
    }
  };
  for (const Kind& kind : kKinds) {
    add_row("**" + std::string(kind.name) + "**", kind.kept, store::kKeepsItems);
    for (const PropertyRow& row : kProperties)
      if ((kind.has & row.property) != 0) add_row(std::string(row.name), kind.kept, row.property);
  }
  add_row("**almanac**", &store::Kept::almanac, store::kKeepsItems);
  table += "\n";
  std::ifstream file("docs/formats/matrix.md", std::ios::binary);
  const std::string document{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  EXPECT_NE(document.find(table), std::string::npos) << "docs/formats/matrix.md should hold this table:\n" << table;
}

// Every writer of items has a column, so that no format comes without its proof.
TEST_F(FormatMatrix, EveryFormatHasItsColumn) {
  for (const FileFormat& format : session::file_formats()) {
    if (format.write == nullptr || format.is_bitmap) continue;
    EXPECT_TRUE(std::ranges::any_of(kColumns, [&](const Column& c) { return c.extension == format.output_extension; }))
        << format.name;
  }
}

}  // namespace
